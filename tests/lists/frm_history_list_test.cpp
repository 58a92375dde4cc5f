/// The transaction history: what it opens on, its range and order, corrections, deletes, split mode.

#include "lists/list_screen_run.h"

#include "lists/frm_history_list.h"
#include "platform/widgets/date_field.h"
#include "program/list_refresh.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

namespace
{

class HistoryList : public ListScreenRun
{
protected:
    HistoryList() : ListScreenRun("frmHistoryList", "DataGridHistoryList", "mnuVWHistory") {}

    /// Five transactions, the newest last, with ties in every column.
    void FiveTransactions()
    {
        Transaction("ZETA", "Bought", 50, "20", "-1005", "2024-02-29", "09:30:00.000");
        Transaction("ACME", "Bought", 100, "10", "-1005", "2026-02-26", "09:30:00.000");
        Transaction(" ", "Deposit", 0, "0", "1000", "2026-02-26", "11:00:00.000");
        Transaction("O'NEIL", "Bought", 10, "10", "-105", "2026-02-27", "09:30:00.000");
        Transaction("ACME", "Sold", -40, "12", "475", "2026-02-27", "10:00:00.000");
    }
    frmHistoryList &History() { return dynamic_cast<frmHistoryList &>(Screen()); }
    DateField &From() { return *run.Control<DateField>("frmHistoryList", "dtpFrom"); }
    DateField &To() { return *run.Control<DateField>("frmHistoryList", "dtpTo"); }
    QString Count() { return run.Control<QLineEdit>("frmHistoryList", "txtTransCount")->text(); }
    QString SplitCaption() { return run.Commands().Caption("popHLSplitMode"); }
    /// The rows by the first letter of the symbol and the share count: "A-40 O10".
    QString Rows()
    {
        QStringList rows;
        for (int row = 0; row < List().RowCount(); ++row)
            rows << CellOf(row, "Symbol").left(1) + CellOf(row, "Shares").section('.', 0, 0);
        return rows.join(' ');
    }
    const QString m_newestFirst = "A-40 O10  0 A100 Z50";
};

} // namespace

// --- opening ------------------------------------------------------------------------------------

TEST_F(HistoryList, ShowsItsColumnsWithoutTheId)
{
    Transaction("ACME", "Bought", 100, "10.5", "-1055", "2026-02-27", "21:30:15.250");
    OpenScreen();
    EXPECT_EQ(Screen().Caption(), "Transaction History");
    EXPECT_EQ(List().DataFields(), QStringList({"Symbol", "Name", "Description", "Shares", "Price",
                                                "Amount", "TransactionCost", "TransDate", "Time"}));
    QStringList cells;
    for (int place = 0; place < 9; ++place)
        cells << List().CellText(0, place);
    EXPECT_EQ(cells, QStringList({"ACME", "ACME Inc.", "Bought", "100.0000", "10.5000", "-1055.00",
                                  "-5.00", "2/27/2026", "9:30:15 PM"}));
}

TEST_F(HistoryList, OpensOnEveryTransactionNewestFirst)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_EQ(Rows(), m_newestFirst);
    EXPECT_EQ(Count(), "5");
    EXPECT_EQ(Status(), "The transaction Date and time can be changed on the Grid");
    EXPECT_TRUE(run.Commands().Checked("mnuVWHistory"));
}

TEST_F(HistoryList, OpensWithTheOldestAndTheNewestDateInItsPickers)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_EQ(From().date(), QDate(2024, 2, 29));
    EXPECT_EQ(To().date(), QDate(2026, 2, 27));
    EXPECT_EQ(From().toolTip(), "2/29/2024");
}

TEST_F(HistoryList, OpensWith1900InFromWhenThereIsNoTransaction)
{
    Open();
    State().selection.CurrentSymbol = "ZETA";
    OpenScreen();
    EXPECT_EQ(From().date(), QDate(1900, 1, 1));
    EXPECT_EQ(To().date(), QDate(2026, 3, 2));
    EXPECT_EQ(Count(), "0");
    EXPECT_EQ(CurrentSymbol(), "ZETA"); // stays as it was
    ClickListHeader("Symbol");
    EXPECT_EQ(Status(), "Sort completed");
    PressInGrid(Qt::Key_Delete);
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(HistoryList, LeavesTransactionsOfTheFutureOut)
{
    FiveTransactions();
    Transaction("ACME", "Bought", 7, "1", "-7", "2026-03-03", "09:00:00.000");
    OpenScreen();
    EXPECT_EQ(Rows(), m_newestFirst);
}

TEST_F(HistoryList, SelectsTheFirstRowWhenItOpens)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_EQ(CurrentSymbol(), "ACME");
    EXPECT_EQ(State().selection.CurrentName, "ACME Inc.");
    EXPECT_EQ(State().selection.SelectedRowID, 5);
}

// --- the range ----------------------------------------------------------------------------------

TEST_F(HistoryList, ShowsTheRangeOfItsPickersAfterOK)
{
    FiveTransactions();
    OpenScreen();
    To().setDate(QDate(2026, 2, 26));
    EXPECT_EQ(Rows(), m_newestFirst); // until OK is pressed
    Button("cmdOK").click();
    EXPECT_EQ(Rows(), " 0 A100 Z50");
    EXPECT_EQ(Count(), "3");
    EXPECT_EQ(Status(), "New date range selection complete");
    EXPECT_EQ(Button("cmdOK").toolTip(), "Select after changing 'From' and 'To' date.");
    From().setDate(QDate(2026, 3, 1));
    Button("cmdOK").click();
    EXPECT_EQ(Count(), "0");
}

// --- sorting ------------------------------------------------------------------------------------

struct HistoryOrder
{
    const char *caption;
    const char *descending;
    const char *ascending;
};

const HistoryOrder historyOrders[] = {
    {"Symbol", "Z50 O10 A100 A-40  0", " 0 A100 A-40 O10 Z50"},
    {"Name", "Z50 O10 A100 A-40  0", " 0 A100 A-40 O10 Z50"},
    {"Description", "A-40  0 A100 O10 Z50", "A100 O10 Z50  0 A-40"},
    {"Price", "Z50 A-40 A100 O10  0", " 0 A100 O10 A-40 Z50"},
    {"Amount", " 0 A-40 O10 A100 Z50", "A100 Z50 O10 A-40  0"},
    {"Trans Date", "A-40 O10  0 A100 Z50", "Z50  0 A100 A-40 O10"},
    {"Time", " 0 A-40 O10 A100 Z50", "Z50 A100 O10 A-40  0"},
};

TEST_F(HistoryList, SortsByEveryHeadingDescendingFirst)
{
    FiveTransactions();
    OpenScreen();
    for (const HistoryOrder &order : historyOrders) {
        ClickListHeader(order.caption);
        EXPECT_EQ(Rows(), order.descending) << order.caption;
        EXPECT_EQ(Status(), "Sort completed");
        ClickListHeader(order.caption);
        EXPECT_EQ(Rows(), order.ascending) << order.caption;
    }
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(HistoryList, GoesOnWithTheOtherDirectionOnAnotherHeading)
{
    FiveTransactions();
    OpenScreen();
    ClickListHeader("Symbol");
    ClickListHeader("Amount");
    EXPECT_EQ(Rows(), "A100 Z50 O10 A-40  0"); // ascending
}

TEST_F(HistoryList, RefusesColumnsThatCannotBeSortedAndKeepsTheDirection)
{
    FiveTransactions();
    OpenScreen();
    for (const char *caption : {"Shares", "Trans Cost"}) {
        ClickListHeader(caption);
        EXPECT_EQ(Status(), "The selected column is not available for sorting");
        EXPECT_EQ(run.boxes.boxes.back().text, Status());
        EXPECT_EQ(run.boxes.boxes.back().title, "Transaction History Editor");
        EXPECT_EQ(run.boxes.boxes.back().buttonsValue, Box::Exclamation);
    }
    EXPECT_EQ(Rows(), m_newestFirst);
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows(), "Z50 O10 A100 A-40  0"); // descending still
}

TEST_F(HistoryList, SortsWithinTheRangeOfItsPickers)
{
    FiveTransactions();
    OpenScreen();
    From().setDate(QDate(2026, 2, 27));
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows(), "O10 A-40");
    EXPECT_EQ(Count(), "2");
}

TEST_F(HistoryList, SelectsTheFirstRowOfTheNewOrder)
{
    FiveTransactions();
    OpenScreen();
    ClickListHeader("Symbol");
    EXPECT_EQ(List().CurrentRow(), 0);
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(State().selection.SelectedRowID, 1);
}

TEST_F(HistoryList, OrdersTransactionsOfTheSameSecondByTheirMilliseconds)
{
    Transaction("ACME", "Bought", 1, "1", "-1", "2026-02-27", "09:30:00.900");
    Transaction("ACME", "Bought", 2, "1", "-1", "2026-02-27", "09:30:00.100");
    Transaction("ACME", "Bought", 3, "1", "-1", "2026-02-27", "09:30:00.900");
    OpenScreen();
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows().section(' ', 0, 0), "A2");
    EXPECT_EQ(Count(), "3");
}

// --- selection ----------------------------------------------------------------------------------

TEST_F(HistoryList, SelectsTheRowClicked)
{
    FiveTransactions();
    OpenScreen();
    List().SelectRow(1);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    EXPECT_EQ(State().selection.CurrentName, "O'NEIL Inc.");
    EXPECT_EQ(State().selection.SelectedRowID, 4);
}

TEST_F(HistoryList, SelectsTheBlankSymbolOfACashTransactionWhichNoCommandTakesForASecurity)
{
    FiveTransactions();
    OpenScreen();
    List().SelectRow(2);
    EXPECT_EQ(CurrentSymbol(), " ");
    EXPECT_EQ(State().selection.SelectedRowID, 3);
    Choose("mnuChartSelectedSecPL");
    EXPECT_EQ(run.boxes.Texts(),
              QStringList("No security has been selected, select one now to chart."));
}

TEST_F(HistoryList, MarksTheSecurityInTheDailyTracker)
{
    TwoPositions();
    FiveTransactions();
    OpenScreen();
    List().SelectRow(4);
    EXPECT_EQ(MarkedSymbol(), "ZETA");
}

// --- corrections --------------------------------------------------------------------------------

TEST_F(HistoryList, StoresACorrectedDateAndTime)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_TRUE(Type(0, "Trans Date", "2/28/2024"));
    EXPECT_EQ(Value("SELECT TransDate || ' ' || Time FROM History WHERE ID = 5"),
              "2024-02-28 10:00:00.000");
    EXPECT_TRUE(Type(0, "Time", "23:15"));
    EXPECT_EQ(Value("SELECT Time FROM History WHERE ID = 5"), "23:15:00.000");
    EXPECT_EQ(CellOf(0, "Time"), "11:15:00 PM");
    EXPECT_EQ(Rows(), m_newestFirst); // no row moves before the next sort
}

TEST_F(HistoryList, KeepsTheMillisecondsWhenOnlyTheDateIsCorrected)
{
    Transaction("ACME", "Bought", 1, "1", "-1", "2026-02-27", "09:30:00.900");
    OpenScreen();
    EXPECT_TRUE(Type(0, "Trans Date", "2/26/2026"));
    EXPECT_EQ(Value("SELECT Time FROM History"), "09:30:00.900");
}

TEST_F(HistoryList, LetsNothingBeChangedButDateAndTime)
{
    FiveTransactions();
    OpenScreen();
    for (const GridColumn &column : List().Columns())
        EXPECT_EQ(column.editable, column.dataField == "TransDate" || column.dataField == "Time");
    EXPECT_FALSE(Type(0, "Shares", "1"));
}

TEST_F(HistoryList, KeepsTheRowInEditWhenADateIsMistyped)
{
    FiveTransactions();
    OpenScreen();
    for (const char *mistyped : {"2/30/2026", "2/29/2026", "tomorrow", ""}) {
        EXPECT_FALSE(Type(0, "Trans Date", QString::fromUtf8(mistyped)));
        EXPECT_EQ(run.boxes.boxes.back().text, "Date entered is invalid, please correct");
        EXPECT_EQ(run.boxes.boxes.back().title, "Transaction History Editor");
        EXPECT_TRUE(List().IsRowEdited());
    }
    EXPECT_EQ(List().EditedText(HistoryColumn::TransDate), "");
    EXPECT_EQ(Value("SELECT TransDate FROM History WHERE ID = 5"), "2026-02-27");
    PressInGrid(Qt::Key_Escape);
    EXPECT_FALSE(List().IsRowEdited());
    EXPECT_TRUE(IsOpen());
}

TEST_F(HistoryList, KeepsTheRowInEditWhenATimeIsMistyped)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_FALSE(Type(0, "Time", "25:00"));
    EXPECT_EQ(run.boxes.Texts(), QStringList("Time entered is invalid, please correct"));
    EXPECT_TRUE(List().IsRowEdited());
    PressInGrid(Qt::Key_Escape);
}

TEST_F(HistoryList, ChecksTheDateBeforeTheTime)
{
    FiveTransactions();
    OpenScreen();
    List().SelectRow(0);
    List().SetEditedText(HistoryColumn::TransDate, "never");
    List().SetEditedText(HistoryColumn::Time, "never");
    EXPECT_FALSE(List().CommitRow());
    EXPECT_EQ(run.boxes.Texts(), QStringList("Date entered is invalid, please correct"));
    List().CancelRow();
}

TEST_F(HistoryList, StaysOpenWhenAMistypedRowCannotBeStored)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_FALSE(Type(0, "Trans Date", "never"));
    ClickClose();
    EXPECT_TRUE(IsOpen());
    CloseScreen(); // the program goes: nothing keeps it
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Value("SELECT TransDate FROM History WHERE ID = 5"), "2026-02-27");
}

TEST_F(HistoryList, StoresTheRowInEditWhenItCloses)
{
    FiveTransactions();
    OpenScreen();
    List().SelectRow(0);
    List().EditCell(HistoryColumn::TransDate, "2/20/2026");
    ClickClose();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Value("SELECT TransDate FROM History WHERE ID = 5"), "2026-02-20");
}

// The splash takes two seconds and a half.
TEST_F(HistoryList, GivesANewRowTodayAndThePresentTime)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_TRUE(TypeNew({{"Time", "9:00"}}));
    EXPECT_EQ(Value("SELECT TransDate || ' ' || Time || Symbol FROM History WHERE ID = 6"),
              "2026-03-02 09:00:00.000");
    EXPECT_TRUE(TypeNew({{"Trans Date", "2/29/2024"}}));
    EXPECT_EQ(Value("SELECT TransDate || ' ' || Time FROM History WHERE ID = 7"),
              "2024-02-29 10:15:02.000");
    EXPECT_EQ(Count(), "7");
    EXPECT_EQ(State().selection.SelectedRowID, 7);
}

// --- deletes ------------------------------------------------------------------------------------

TEST_F(HistoryList, AsksBeforeTheDeleteKeyDeletesARow)
{
    FiveTransactions();
    OpenScreen();
    List().SelectRow(1);
    run.boxes.Prepare("Your are about to delete", Answer::No);
    PressInGrid(Qt::Key_Delete);
    EXPECT_EQ(run.boxes.boxes.back().text,
              "Your are about to delete the selected row.  You will not \n"
              "be able to undo this action. Continue anyway?");
    EXPECT_EQ(run.boxes.boxes.back().title, "Transaction History Editor");
    EXPECT_EQ(run.boxes.boxes.back().buttonsValue, Box::YesNo + Box::Question + Box::SecondDefault);
    EXPECT_EQ(Rows(), m_newestFirst);
    run.boxes.Prepare("Your are about to delete", Answer::Yes);
    PressInGrid(Qt::Key_Delete);
    EXPECT_EQ(Rows(), "A-40  0 A100 Z50");
    EXPECT_EQ(Value("SELECT count(*) FROM History WHERE Symbol = 'O''NEIL'"), "0");
    EXPECT_EQ(Count(), "4");
    EXPECT_EQ(CurrentSymbol(), " "); // the row that is current now
}

TEST_F(HistoryList, SaysWhyTheStoreRefusesAnEditOrADeletion)
{
    FiveTransactions();
    OpenScreen();
    RefuseWrites("History");
    EXPECT_FALSE(Type(0, "Trans Date", "2/25/2026"));
    EXPECT_EQ(run.boxes.boxes.back().text, "The row could not be stored: no room.\n"
                                           "It stays as you typed it.");
    EXPECT_TRUE(List().IsRowEdited());
    run.boxes.Prepare("Your are about to delete", Answer::Yes);
    PressInGrid(Qt::Key_Delete);
    EXPECT_EQ(run.boxes.boxes.back().text, "The deletion of the transaction could not be saved: "
                                           "no room. Nothing was changed.");
    EXPECT_EQ(Rows(), m_newestFirst);
    EXPECT_EQ(Value("SELECT count(*) FROM History"), "5");
}

TEST_F(HistoryList, DeletesARowThatHoldsAMistypedDate)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_FALSE(Type(0, "Trans Date", "never"));
    run.boxes.Prepare("Your are about to delete", Answer::Yes);
    PressInGrid(Qt::Key_Delete);
    EXPECT_FALSE(List().IsRowEdited());
    EXPECT_EQ(Rows(), "O10  0 A100 Z50");
}

TEST_F(HistoryList, OpensTheDeleteDialogForTheCurrentRow)
{
    FiveTransactions();
    run.AddScreen("frmDeleteOptions");
    OpenScreen();
    List().SelectRow(4);
    State().selection.CurrentSymbol = "ACME";
    bool wasChecked = false;
    run.WhenModal("frmDeleteOptions", [&] {
        wasChecked = run.Commands().Checked("popHLDelete");
        EXPECT_EQ(CurrentSymbol(), "ZETA");
        EXPECT_EQ(State().selection.SelectedRowID, 1);
        run.App().Host().Unload("frmDeleteOptions");
    });
    Choose("popHLDelete");
    EXPECT_TRUE(wasChecked);
    EXPECT_FALSE(run.Commands().Checked("popHLDelete"));
}

// --- after a posting ----------------------------------------------------------------------------

TEST_F(HistoryList, ShowsWhatWasPostedTodayThoughItsPickersEndBefore)
{
    Position("ACME", 100, "10", "12");
    FiveTransactions();
    OpenScreen();
    List().SelectRow(1);
    Post(Action::Buy, "ACME", "7", "12");
    RefreshOpenLists(State());
    EXPECT_EQ(Rows(), "A7 " + m_newestFirst);
    EXPECT_EQ(Count(), "6");
    EXPECT_EQ(To().date(), QDate(2026, 2, 27));
    EXPECT_EQ(CellOf(List().CurrentRow(), "Symbol"), "O'NEIL"); // the same row as before
}

TEST_F(HistoryList, WaitsWithNewRowsUntilTheRowInEditIsStored)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_FALSE(Type(0, "Trans Date", "never"));
    State().databases.gConnAccount.Execute(QStringLiteral("DELETE FROM History WHERE ID = 4"));
    RefreshOpenLists(State());
    EXPECT_EQ(List().EditedText(HistoryColumn::TransDate), "never");
    EXPECT_EQ(Count(), "5");
    EXPECT_TRUE(Type(0, "Trans Date", "2/27/2026"));
    EXPECT_EQ(Count(), "4");
}

// --- look and keys ------------------------------------------------------------------------------

TEST_F(HistoryList, HintsAtCorrectionsForTheFirstTwoClicks)
{
    FiveTransactions();
    OpenScreen();
    EXPECT_EQ(List().toolTip(), "Click to select row then right click for popup menu options. "
                                "Click headings to sort");
    List().RightClickCurrentRow(); // not a click of the left button
    run.App().MainWindow().Popup("popHistoryList")->hide();
    for (int click = 0; click < 2; ++click) {
        List().SelectRow(click);
        EXPECT_EQ(List().toolTip(), "The transaction Date and time can be changed");
    }
    List().SelectRow(0);
    EXPECT_EQ(List().toolTip(), "");
}

TEST_F(HistoryList, TakesItsColourFromTheSettingAndTheDialog)
{
    OpenScreen();
    EXPECT_NE(State().settings.THDataGridColor, 0); // the grid's own
    run.boxes.color = std::nullopt;
    Choose("popHLHistoryGridColor");
    run.boxes.color = 0x8AFFFF;
    Choose("popHLHistoryGridColor");
    EXPECT_EQ(List().BackColor(), 0xFF8AFFFF);
    EXPECT_EQ(State().settings.THDataGridColor, 0xFFFF8A);
    CloseScreen();
    OpenScreen();
    EXPECT_EQ(List().BackColor(), 0xFF8AFFFF);
}

TEST_F(HistoryList, SplitsTheSymbolsOffAndBackAgain)
{
    FiveTransactions();
    OpenScreen();
    const QStringList before = List().DataFields();
    Choose("popHLSplitMode");
    EXPECT_TRUE(List().IsSplit());
    EXPECT_EQ(SplitCaption(), "Undo Split");
    Choose("popHLSplitMode");
    EXPECT_FALSE(List().IsSplit());
    EXPECT_EQ(SplitCaption(), "Split Mode");
    EXPECT_EQ(List().DataFields(), before);
    EXPECT_EQ(List().DataFields().count("Symbol"), 1);
}

TEST_F(HistoryList, SortsTheSameInSplitMode)
{
    FiveTransactions();
    OpenScreen();
    Choose("SplitScreen"); // the button of the toolbar
    EXPECT_TRUE(List().IsSplit());
    for (const HistoryOrder &order : historyOrders) {
        ClickListHeader(order.caption);
        EXPECT_EQ(Rows(), order.descending) << order.caption;
        ClickListHeader(order.caption);
        EXPECT_EQ(Rows(), order.ascending) << order.caption;
    }
}

TEST_F(HistoryList, OpensInOnePaneAfterItWasClosedInTwo)
{
    FiveTransactions();
    OpenScreen();
    Choose("popHLSplitMode");
    ClickClose();
    EXPECT_EQ(SplitCaption(), "Split Mode");
    EXPECT_FALSE(run.Commands().Checked("mnuVWHistory"));
    EXPECT_EQ(Status(), "");
    OpenScreen();
    EXPECT_FALSE(List().IsSplit());
}

TEST_F(HistoryList, CopiesTheSelectedRowsAsTextsWithTabs)
{
    FiveTransactions();
    OpenScreen();
    List().SelectRow(3);
    PressInGrid(Qt::Key_Down, Qt::ShiftModifier);
    PressInGrid(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              "ACME\tACME Inc.\tBought\t100.0000\t10.0000\t-1005.00\t-5.00\t2/26/2026\t9:30:00 AM\n"
              "ZETA\tZETA Inc.\tBought\t50.0000\t20.0000\t-1005.00\t-5.00\t2/29/2024\t9:30:00 AM");
}

TEST_F(HistoryList, FindsATextWithCtrlF)
{
    FiveTransactions();
    Transaction(QString::fromUtf8("CAFÉ"), "Bought", 1, "1", "-1", "2024-02-28", "09:30:00.000");
    OpenScreen();
    PressInGrid(Qt::Key_F, Qt::ControlModifier);
    auto *line = run.Control<QLineEdit>("frmHistoryList", "txtFind");
    ASSERT_TRUE(line);
    auto *found = run.Control<QLabel>("frmHistoryList", "lblFound");
    line->setText("bought");
    Press(line, Qt::Key_Return);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    Press(line, Qt::Key_Return);
    EXPECT_EQ(CurrentSymbol(), "ACME");
    Press(line, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    line->setText(QString::fromUtf8("café"));
    Press(line, Qt::Key_Return);
    EXPECT_EQ(CurrentSymbol(), QString::fromUtf8("CAFÉ"));
    line->setText("'neil"); // behind the last row it goes on with the first
    Press(line, Qt::Key_Return);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    line->setText("nowhere");
    Press(line, Qt::Key_Return);
    EXPECT_EQ(found->text(), "Not found");
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    Press(line, Qt::Key_Escape);
    EXPECT_FALSE(line->isVisible());
    EXPECT_TRUE(IsOpen());
}

TEST_F(HistoryList, RemembersTheWidthsOfItsColumns)
{
    FiveTransactions();
    OpenScreen();
    const auto header = [&] {
        return qobject_cast<QTableView *>(List().focusProxy())->horizontalHeader();
    };
    const int price = header()->sectionSize(HistoryColumn::Price);
    header()->resizeSection(HistoryColumn::Name, 333);
    Choose("popHLSplitMode");
    CloseScreen();
    EXPECT_EQ(State().services.settingsStore.GetSetting("ColumnWidths", "frmHistoryList", ""),
              "Name=333");
    OpenScreen();
    EXPECT_EQ(header()->sectionSize(HistoryColumn::Name), 333);
    EXPECT_EQ(header()->sectionSize(HistoryColumn::Price), price);
}
