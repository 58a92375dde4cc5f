/// The profit list on the screen: what it opens on, its totals and colours, sorting, selection.

#include "tracking/tracker_screen_run.h"

#include "lists/frm_daily_profit_loss.h"
#include "platform/widgets/colors.h"
#include "platform/widgets/date_field.h"
#include "program/list_refresh.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

namespace
{

const QString List = QStringLiteral("frmDailyProfitLoss");

class ProfitScreen : public TrackerScreenRun
{
protected:
    static QString Insert(const QString &symbol, const char *date, const char *amount)
    {
        return QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, "
                              "Time) VALUES (%1, %2, %3, '%4', '10:00:00.000')")
            .arg(Quoted(symbol), Quoted(symbol + QStringLiteral(" Corp.")), Money(amount),
                 QString::fromUtf8(date));
    }
    void Profit(const QString &symbol, const char *date, const char *amount)
    {
        Execute(Insert(symbol, date, amount));
    }
    /// Two days of two securities, and a leap day.
    void ThreeDays()
    {
        Profit("ACME", "2026-02-26", "1000.5");
        Profit("O'NEIL", "2026-02-26", "-0.25");
        Profit("ACME", "2026-02-27", "10");
        Profit("ZETA", "2024-02-29", "7");
    }
    void OpenList()
    {
        if (!run.App().MainWindow().isVisible())
            Open();
        Choose("mnuVWDailyProfitLoss");
    }
    void CloseList() { run.App().Host().Unload(List); }
    frmDailyProfitLoss &Screen()
    {
        return dynamic_cast<frmDailyProfitLoss &>(*run.App().Host().Find(List));
    }
    FlexGrid &Profits() { return *run.Control<FlexGrid>(List, "MSHFlexGridPL"); }
    DateField &From() { return *run.Control<DateField>(List, "dtpFrom"); }
    DateField &To() { return *run.Control<DateField>(List, "dtpTo"); }
    void ClickOK() { run.Control<QPushButton>(List, "cmdOK")->click(); }
    QStringList Cells(int row)
    {
        QStringList cells;
        for (int place = 0; place < 4; ++place)
            cells << Profits().CellText(row, place);
        return cells;
    }
    /// The rows by the first letter of the symbol and the amount: "A10.00 T10.00".
    QString Rows()
    {
        QStringList rows;
        for (int row = 0; row < Profits().RowCount(); ++row)
            rows << Cells(row)[1].left(1) +
                        (Cells(row)[1] == "T O T A L" ? Cells(row)[2] : Cells(row)[3]);
        return rows.join(QLatin1Char(' '));
    }
    void ClickListHeader(const char *caption)
    {
        Profits().ClickHeader(Profits().ColumnByCaption(QString::fromUtf8(caption)));
    }
    /// "title|buttons value|text" of the last box.
    QString LastBox()
    {
        if (run.boxes.boxes.empty())
            return QStringLiteral("(none)");
        const auto &box = run.boxes.boxes.back();
        return box.title + QLatin1Char('|') + QString::number(box.buttonsValue) + QLatin1Char('|') +
               box.text;
    }

    const QString byDateNewestFirst =
        QStringLiteral("A10.00 T10.00 A1,000.50 O-0.25 T1,000.25 Z7.00 T7.00");
};

const QString Refusal = QStringLiteral("The selected column is not available for sorting");

} // namespace

// --- opening ------------------------------------------------------------------------------------

TEST_F(ProfitScreen, ShowsDateSymbolNameAndAmountAndATotalUnderTheName)
{
    Profit("O'NEIL", "2024-02-29", "1234.565");
    OpenList();
    EXPECT_EQ(run.App().Host().Find(List)->Caption(), "Daily Profit and Loss");
    EXPECT_EQ(Profits().Captions(), QStringList({"Date", "Symbol", "Name", "ProfitLoss"}));
    EXPECT_EQ(Cells(0),
              QStringList({"Thursday, February 29, 2024", "O'NEIL", "O'NEIL Corp.", "1,234.57"}));
    EXPECT_EQ(Cells(1), QStringList({"", "T O T A L", "1,234.57", ""}));
    EXPECT_EQ(Profits().Text(1, 0), "1"); // the row's ID, out of sight
    EXPECT_EQ(Profits().Text(2, 0), "");
    EXPECT_EQ(Profits().toolTip(),
              "Right click for popup menu options, click column headings to sort.");
    EXPECT_EQ(run.Control<QPushButton>(List, "cmdOK")->toolTip(),
              "Select after changing 'From' and 'To' date.");
    EXPECT_TRUE(run.Commands().Checked("mnuVWDailyProfitLoss"));
}

TEST_F(ProfitScreen, IsWrittenInArialOfNinePoints)
{
    ThreeDays();
    OpenList();
    EXPECT_EQ(Profits().font().pointSize(), 9);
    const auto fontOf = [&](int row, int column) {
        return Profits().model()->index(row, column - 1).data(Qt::FontRole);
    };
    EXPECT_TRUE(fontOf(1, 2).value<QFont>().bold()); // T O T A L
    EXPECT_FALSE(fontOf(1, 3).isValid());            // its sum is not
    EXPECT_FALSE(fontOf(0, 2).isValid());
}

TEST_F(ProfitScreen, OpensOnItsOldestAndNewestRowTheNewestFirst)
{
    ThreeDays();
    OpenList();
    EXPECT_EQ(Rows(), byDateNewestFirst);
    EXPECT_EQ(From().date(), QDate(2024, 2, 29));
    EXPECT_EQ(To().date(), QDate(2026, 2, 27));
}

TEST_F(ProfitScreen, OpensOnEveryDayThereIsWhateverTheRangeOfTheOpeningBefore)
{
    ThreeDays();
    OpenList();
    From().setDate(QDate(2026, 2, 27));
    ClickOK();
    EXPECT_EQ(Rows(), "A10.00 T10.00");
    CloseList();
    EXPECT_FALSE(run.Commands().Checked("mnuVWDailyProfitLoss"));
    OpenList();
    EXPECT_EQ(Rows(), byDateNewestFirst);
}

TEST_F(ProfitScreen, ShowsTheHeaderAndOneTotalOfZeroForAnEmptyTable)
{
    OpenList();
    EXPECT_EQ(Profits().RowCount(), 1);
    EXPECT_EQ(Cells(0), QStringList({"", "T O T A L", "0.00", ""}));
    EXPECT_EQ(From().date(), QDate(1900, 1, 1));
    EXPECT_EQ(To().date(), QDate(2026, 3, 2));
}

// --- the range ----------------------------------------------------------------------------------

TEST_F(ProfitScreen, ShowsTheRowsOfBothEndsOfTheRangeOnceOKIsPressed)
{
    ThreeDays();
    OpenList();
    To().setDate(QDate(2026, 2, 26));
    EXPECT_EQ(Rows(), byDateNewestFirst);
    ClickOK();
    EXPECT_EQ(Rows(), "A1,000.50 O-0.25 T1,000.25 Z7.00 T7.00");
    From().setDate(QDate(2024, 3, 1));
    To().setDate(QDate(2024, 3, 2));
    ClickOK();
    EXPECT_EQ(Rows(), "T0.00");
}

TEST_F(ProfitScreen, LeavesTheRangeOfThePriceListAlone)
{
    ThreeDays();
    Open();
    State().run.ListDateFrom = QDate(2025, 1, 1);
    State().run.ListDateTo = QDate(2025, 12, 31);
    OpenList();
    To().setDate(QDate(2026, 2, 26));
    EXPECT_EQ(To().toolTip(), "2/26/2026");
    ClickOK();
    EXPECT_EQ(State().run.ListDateFrom, QDate(2025, 1, 1));
    EXPECT_EQ(State().run.ListDateTo, QDate(2025, 12, 31));
}

TEST_F(ProfitScreen, ShowsWhatIsRealizedTodayThoughItsPickersEndBefore)
{
    TwoPositions();
    Profit("ZETA", "2026-02-27", "7");
    OpenList();
    Post(Action::Sell, "ACME", "40", "12");
    RefreshOpenLists(State());
    EXPECT_EQ(To().date(), QDate(2026, 2, 27));
    EXPECT_EQ(Cells(0)[0], "Monday, March 2, 2026");
    EXPECT_EQ(Cells(0)[1], "ACME");
    ClickOK(); // the range of the pickers, from here on
    EXPECT_EQ(Rows(), "Z7.00 T7.00");
    RefreshOpenLists(State());
    EXPECT_EQ(Rows(), "Z7.00 T7.00");
}

// --- sorting ------------------------------------------------------------------------------------

TEST_F(ProfitScreen, EndsEachSymbolInATotalWhenSortedBySymbol)
{
    ThreeDays();
    OpenList();
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows(), "A1,000.50 A10.00 T1,010.50 O-0.25 T-0.25 Z7.00 T7.00");
    EXPECT_EQ(Status(), "Sort complete");
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows(), "Z7.00 T7.00 O-0.25 T-0.25 A1,000.50 A10.00 T1,010.50");
}

TEST_F(ProfitScreen, TurnsTheOrderWithEachSortWhateverTheColumn)
{
    ThreeDays();
    OpenList();
    ClickListHeader("Date"); // it opened with the newest day first
    EXPECT_EQ(Rows(), "Z7.00 T7.00 A1,000.50 O-0.25 T1,000.25 A10.00 T10.00");
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows().left(5), "Z7.00");
    ClickListHeader("Date");
    EXPECT_EQ(Rows().left(5), "Z7.00"); // ascending again
}

TEST_F(ProfitScreen, RefusesToSortByNameOrAmountAndStaysAsItIs)
{
    ThreeDays();
    OpenList();
    ClickListHeader("Symbol");
    const QString rows = Rows();
    for (const char *caption : {"Name", "ProfitLoss"}) {
        ClickListHeader(caption);
        EXPECT_EQ(LastBox(), "Daily Profit and Loss Editor|48|" + Refusal);
        EXPECT_EQ(Status(), Refusal);
        EXPECT_EQ(Rows(), rows);
        EXPECT_EQ(Profits().horizontalHeader()->sortIndicatorSection(), 1); // still the symbol
    }
    ClickOK();
    EXPECT_EQ(Rows(), rows); // in the same groups
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows().left(5), "Z7.00"); // the refused ones turned nothing round
}

TEST_F(ProfitScreen, SortsAnEmptyListToo)
{
    OpenList();
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows(), "T0.00");
    EXPECT_EQ(Status(), "Sort complete");
}

// --- selection and popup ------------------------------------------------------------------------

TEST_F(ProfitScreen, SelectsTheSecurityOfTheRowClicked)
{
    ThreeDays();
    OpenList();
    Profits().SelectRow(3);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    EXPECT_EQ(State().selection.CurrentName, "O'NEIL Corp.");
    EXPECT_EQ(State().selection.SelectedRowID, 2);
}

TEST_F(ProfitScreen, LeavesTheSymbolAsItWasAfterAClickOnATotal)
{
    ThreeDays();
    OpenList();
    Profits().SelectRow(3);
    Profits().SelectRow(4);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    EXPECT_EQ(State().selection.SelectedRowID, 2);
}

TEST_F(ProfitScreen, SelectsNothingByOpening)
{
    ThreeDays();
    OpenList();
    EXPECT_EQ(CurrentSymbol(), "");
    EXPECT_EQ(Profits().CurrentRow(), -1);
}

TEST_F(ProfitScreen, BringsUpThePopupForTheRowUnderTheMouse)
{
    ThreeDays();
    OpenList();
    Profits().SelectRow(0);
    Profits().RightClickCurrentRow();
    QMenu *popup = run.App().MainWindow().Popup("popDailyProfitLoss");
    EXPECT_TRUE(popup->isVisible());
    popup->hide();
}

TEST_F(ProfitScreen, KeepsTheMarkOnItsRowWhenTheRowsAreReadAnew)
{
    ThreeDays();
    OpenList();
    Profits().SelectRow(3);
    To().setDate(QDate(2026, 3, 2));
    State().databases.gConnAccount.Execute(Insert("NEWX", "2026-03-02", "5"));
    Screen().ReloadFlexGrid();
    EXPECT_EQ(Rows().left(11), "N5.00 T5.00");
    EXPECT_EQ(Cells(Profits().CurrentRow())[1], "O'NEIL");
}

// --- deleting -----------------------------------------------------------------------------------

TEST_F(ProfitScreen, RefusesToDeleteATotalRow)
{
    ThreeDays();
    OpenList();
    Profits().SelectRow(0);
    Profits().SelectRow(1);
    Choose("popPLDelete");
    EXPECT_EQ(LastBox(), "Daily Profit and Loss Editor|48|Row is invalid. Select rows containing "
                         "symbols.");
    EXPECT_FALSE(run.App().Host().Loaded("frmDeleteOptions"));
}

TEST_F(ProfitScreen, RefusesToDeleteWithoutARow)
{
    TwoPositions();
    OpenList();
    Select("ACME");
    Choose("popPLDelete");
    EXPECT_EQ(LastBox(), "Daily Profit and Loss Editor|48|Row is invalid. Select rows containing "
                         "symbols.");
}

TEST_F(ProfitScreen, OpensTheDeleteOptionsForTheRowMarked)
{
    ThreeDays();
    OpenList();
    Profits().SelectRow(3);
    QString symbol;
    bool checked = false;
    run.WhenModal("frmDeleteOptions", [&] {
        symbol = run.Control<QLineEdit>("frmDeleteOptions", "txtSelectedSymbol")->text();
        checked = run.Commands().Checked("popPLDelete");
        run.Control<QPushButton>("frmDeleteOptions", "cmdCancel")->click();
    });
    Choose("popPLDelete");
    EXPECT_EQ(symbol, "O'NEIL");
    EXPECT_TRUE(checked);
    EXPECT_FALSE(run.Commands().Checked("popPLDelete"));
    EXPECT_EQ(Screen().focusWidget(), run.Control<QPushButton>(List, "cmdClose"));
}

// --- colours ------------------------------------------------------------------------------------

TEST_F(ProfitScreen, CapturesItsOwnColourAndShowsTheTotalsInTheirs)
{
    ThreeDays();
    OpenList();
    EXPECT_EQ(State().settings.DPAllRowColor, ValueOfColor(Profits().BackColor()));
    for (int column = 1; column <= 4; ++column) {
        EXPECT_EQ(Profits().CellBackColor(1, column), Profits().BackColor());
        EXPECT_EQ(Profits().CellBackColor(2, column), 0xFFFFC080); // 0x80C0FF, red lowest
    }
}

TEST_F(ProfitScreen, TakesAColourForTheTotalsAtTheNextOpening)
{
    ThreeDays();
    OpenList();
    run.boxes.color = 0x102030;
    run.boxes.Prepare("Apply selected color to the total Row?", Answer::Yes);
    Choose("popPLProfitLossColor");
    EXPECT_EQ(run.boxes.boxes.front().buttonsValue, Box::YesNo);
    EXPECT_EQ(run.boxes.boxes.front().title, "Color Selection option");
    EXPECT_EQ(LastBox(), "Color Selection option|64|Close and re-open this screen for colors to "
                         "take effect");
    EXPECT_EQ(Status(), "Select row to apply the selected color...");
    EXPECT_EQ(State().settings.DPTotalRowColor, 0x302010);
    EXPECT_EQ(Profits().CellBackColor(2, 2), 0xFFFFC080); // until then
    CloseList();
    OpenList();
    EXPECT_EQ(Profits().CellBackColor(2, 2), 0xFF102030);
    EXPECT_NE(Profits().CellBackColor(1, 2), 0xFF102030);
}

TEST_F(ProfitScreen, TakesAColourForTheOtherRowsAtTheNextOpening)
{
    ThreeDays();
    OpenList();
    const QRgb before = Profits().BackColor();
    run.boxes.color = 0xE0F0FF;
    run.boxes.Prepare("Apply selected color to the total Row?", Answer::No);
    Choose("popPLProfitLossColor");
    EXPECT_EQ(State().settings.DPAllRowColor, 0xFFF0E0);
    EXPECT_EQ(Profits().CellBackColor(1, 1), before);
    CloseList();
    OpenList();
    EXPECT_EQ(Profits().CellBackColor(1, 1), 0xFFE0F0FF);
    EXPECT_EQ(Profits().CellBackColor(2, 1), 0xFFFFC080);
}

TEST_F(ProfitScreen, KeepsItsColoursWhenTheColourDialogIsCancelled)
{
    ThreeDays();
    OpenList();
    const double rows = State().settings.DPAllRowColor;
    Choose("popPLProfitLossColor");
    EXPECT_TRUE(run.boxes.boxes.empty());
    EXPECT_EQ(State().settings.DPAllRowColor, rows);
    EXPECT_EQ(State().settings.DPTotalRowColor, 0x80C0FF);
}

// --- widths -------------------------------------------------------------------------------------

TEST_F(ProfitScreen, KeepsTheWidthsThatTheUserGaveItsColumns)
{
    ThreeDays();
    OpenList();
    Profits().horizontalHeader()->resizeSection(1, 123); // the symbol
    ClickListHeader("Symbol");
    EXPECT_EQ(Profits().columnWidth(1), 123);
    CloseList();
    OpenList();
    EXPECT_EQ(Profits().columnWidth(1), 123);
}

TEST_F(ProfitScreen, KeepsTheWidthsOverANewReadingAndMergesThemWithOthers)
{
    ThreeDays();
    OpenList();
    Profits().horizontalHeader()->resizeSection(1, 123);
    CloseList();
    OpenList();
    Profits().horizontalHeader()->resizeSection(0, 234); // the date, next to the one kept
    ClickOK();
    Screen().RefreshList();
    EXPECT_EQ(Profits().columnWidth(1), 123);
    CloseList();
    EXPECT_EQ(State().services.settingsStore.GetSetting("ColumnWidths", List, ""),
              "Date=234;Symbol=123");
}

// --- copy and find ------------------------------------------------------------------------------

TEST_F(ProfitScreen, CopiesTheSelectedRowsAsTextsWithTabs)
{
    ThreeDays();
    OpenList();
    Profits().SelectRow(0);
    for (const auto &[key, modifiers] :
         {std::pair(Qt::Key_Down, Qt::ShiftModifier), std::pair(Qt::Key_C, Qt::ControlModifier)}) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&Profits(), &press);
    }
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              "Friday, February 27, 2026\tACME\tACME Corp.\t10.00\n\tT O T A L\t10.00\t");
}

TEST_F(ProfitScreen, FindsATextWithCtrlFAndSelectsItsSecurity)
{
    ThreeDays();
    OpenList();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F, Qt::ControlModifier);
    QApplication::sendEvent(&Profits(), &press);
    auto *line = run.Control<QLineEdit>(List, "txtFind");
    ASSERT_TRUE(line);
    line->setText("'neil");
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(line, &enter);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    EXPECT_EQ(State().selection.SelectedRowID, 2);
    line->setText("LEAP");
    QApplication::sendEvent(line, &enter);
    EXPECT_EQ(run.Control<QLabel>(List, "lblFound")->text(), "Not found");
    line->setText("february 29");
    QApplication::sendEvent(line, &enter);
    EXPECT_EQ(CurrentSymbol(), "ZETA");
}
