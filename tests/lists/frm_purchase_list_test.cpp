/// The purchase lots: what is shown, edits with their checks, new lots, deletes.

#include "lists/list_screen_run.h"

#include "lists/frm_purchase_list.h"
#include "lists/purchase_list.h"
#include "program/list_refresh.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

namespace
{

class PurchaseList : public ListScreenRun
{
protected:
    PurchaseList() : ListScreenRun("frmPurchaseList", "DataGridPurchaseList", "mnuVWPurchaseList")
    {}

    void LotOn(const QString &symbol, double shares, const char *price, const char *date,
               const char *time)
    {
        Execute(
            QStringLiteral("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, "
                           "Time) VALUES (%1, %2, %3, '%4', '%5')")
                .arg(Quoted(symbol))
                .arg(shares)
                .arg(Money(price), QString::fromUtf8(date), QString::fromUtf8(time)));
    }
    /// Four lots out of order, one of them a short sale.
    void FourLots()
    {
        LotOn("ZETA", -50, "20", "2026-01-05", "09:30:00.000");
        LotOn("ACME", 100, "12", "2026-02-02", "09:30:00.000");
        LotOn("O'NEIL", 10, "7.125", "2024-02-29", "09:30:00.000");
        LotOn("ACME", 100, "10", "2026-01-05", "09:30:00.000");
    }
    /// "A10 A12": the first letter of the symbol and the price.
    QString Rows()
    {
        QStringList rows;
        for (int row = 0; row < List().RowCount(); ++row)
            rows << CellOf(row, "Symbol").left(1) +
                        CellOf(row, "Purchase Price").section('.', 0, 0);
        return rows.join(' ');
    }
    QString LastBox() { return run.boxes.boxes.empty() ? "" : run.boxes.boxes.back().text; }
};

} // namespace

TEST_F(PurchaseList, ShowsAllLotsBySymbolAndDate)
{
    FourLots();
    OpenScreen();
    EXPECT_EQ(Screen().Caption(), "Purchase Price List");
    EXPECT_EQ(List().DataFields(),
              QStringList({"Symbol", "Shares", "PurchasePrice", "TransDate", "Time"}));
    EXPECT_EQ(Rows(), "A10 A12 O7 Z20");
    QStringList cells;
    for (int place = 0; place < 5; ++place)
        cells << List().CellText(2, place);
    EXPECT_EQ(cells, QStringList({"O'NEIL", "10.0000", "7.1250", "2/29/2024", "9:30:00 AM"}));
    EXPECT_TRUE(run.Commands().Checked("mnuVWPurchaseList"));
}

TEST_F(PurchaseList, SelectsTheRowOnWhichItOpensAndTheOneClicked)
{
    FourLots();
    OpenScreen();
    EXPECT_EQ(CurrentSymbol(), "ACME");
    EXPECT_EQ(State().selection.SelectedRowID, 4);
    List().SelectRow(2);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    EXPECT_EQ(State().selection.SelectedRowID, 3);
}

TEST_F(PurchaseList, OpensEmptyAndLeavesTheSelection)
{
    Open();
    State().selection.CurrentSymbol = "ZETA";
    OpenScreen();
    EXPECT_EQ(List().RowCount(), 0);
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    PressInGrid(Qt::Key_Delete);
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(PurchaseList, DoesNotSortByAHeading)
{
    FourLots();
    OpenScreen();
    const QString before = Status();
    ClickListHeader("Symbol");
    EXPECT_EQ(Rows(), "A10 A12 O7 Z20");
    EXPECT_EQ(Status(), before);
    EXPECT_TRUE(run.boxes.boxes.empty());
}

// --- edits --------------------------------------------------------------------------------------

TEST_F(PurchaseList, StoresEditsForTheNextPosting)
{
    Row("ACME", 200, "11", "12");
    FourLots();
    OpenScreen();
    EXPECT_TRUE(Type(0, "Shares", "60.5"));
    EXPECT_TRUE(Type(0, "Purchase Price", "1,000.1234"));
    EXPECT_TRUE(Type(0, "Trans Date", "2/29/2024"));
    EXPECT_TRUE(Type(0, "Time", "4:05:06 PM"));
    EXPECT_EQ(Value("SELECT Shares || ' ' || PurchasePrice || ' ' || TransDate || ' ' || Time FROM "
                    "PriceHistory WHERE ID = 4"),
              "60.5 10001234 2024-02-29 16:05:06.000");
    EXPECT_EQ(State().gRsLots.LotsOf("ACME").front().PurchasePrice, Currency("1000.1234"));
    EXPECT_TRUE(run.boxes.boxes.size() == 1 || run.boxes.boxes.empty());
}

TEST_F(PurchaseList, RenamesALotToAnotherSymbol)
{
    FourLots();
    OpenScreen();
    EXPECT_TRUE(Type(0, "Symbol", QString::fromUtf8("D'ÉTÉ")));
    EXPECT_EQ(Value("SELECT Symbol FROM PriceHistory WHERE ID = 4"), QString::fromUtf8("D'ÉTÉ"));
    EXPECT_EQ(State().gRsLots.LotsOf(QString::fromUtf8("D'ÉTÉ")).size(), 1U);
    EXPECT_EQ(CurrentSymbol(), QString::fromUtf8("D'ÉTÉ"));
}

TEST_F(PurchaseList, RefusesWhatAColumnCannotTakeAndKeepsTheRowInEdit)
{
    FourLots();
    OpenScreen();
    const struct
    {
        const char *caption;
        const char *text;
        const char *wanted;
    } refused[] = {
        {"Shares", "many", "Please enter a number in the column \"Shares\"."},
        {"Shares", "", "Please enter a number in the column \"Shares\"."},
        {"Purchase Price", "12 3/8", "Please enter a number in the column \"Purchase Price\"."},
        {"Purchase Price", "1E300", "Please enter a number in the column \"Purchase Price\"."},
        {"Trans Date", "2/29/2026", "Please enter a date in the column \"Trans Date\"."},
        {"Time", "noon", "Please enter a time of day in the column \"Time\"."},
        {"Symbol", " ", "Please enter the symbol of the purchase."},
    };
    for (const auto &entry : refused) {
        EXPECT_FALSE(Type(0, entry.caption, QString::fromUtf8(entry.text))) << entry.text;
        EXPECT_TRUE(LastBox().startsWith(QString::fromUtf8(entry.wanted))) << qPrintable(LastBox());
        EXPECT_EQ(run.boxes.boxes.back().title, "Purchase Price List Editor");
        EXPECT_TRUE(List().IsRowEdited());
        PressInGrid(Qt::Key_Escape);
    }
    EXPECT_EQ(Value("SELECT Shares || ' ' || PurchasePrice FROM PriceHistory WHERE ID = 4"),
              "100.0 100000");
}

// The splash takes two seconds and a half.
TEST_F(PurchaseList, GivesANewLotWithoutDateAndTimeTodayAndNow)
{
    FourLots();
    OpenScreen();
    EXPECT_TRUE(TypeNew({{"Symbol", "NEW"}, {"Shares", "5"}, {"Purchase Price", "3.5"}}));
    EXPECT_EQ(Value("SELECT Symbol || ' ' || Shares || ' ' || PurchasePrice || ' ' || TransDate || "
                    "' ' || Time FROM PriceHistory WHERE ID = 5"),
              "NEW 5.0 35000 2026-03-02 10:15:02.000");
    EXPECT_EQ(State().gRsLots.SharesOf("NEW"), Single::FromDouble(5));
    EXPECT_EQ(State().selection.SelectedRowID, 5);
}

TEST_F(PurchaseList, KeepsTheDateAndTimeOfANewLotThatHasThem)
{
    OpenScreen();
    EXPECT_TRUE(TypeNew({{"Symbol", "NEW"},
                         {"Shares", "-5"},
                         {"Purchase Price", "3"},
                         {"Trans Date", "2/29/2024"},
                         {"Time", "0:00"}}));
    EXPECT_EQ(Value("SELECT TransDate || ' ' || Time FROM PriceHistory"),
              "2024-02-29 00:00:00.000");
}

TEST_F(PurchaseList, GivesTodayAndNowToALotWhoseDateAndTimeAreEmptied)
{
    FourLots();
    OpenScreen();
    EXPECT_TRUE(Type(0, "Trans Date", ""));
    EXPECT_TRUE(Type(0, "Time", ""));
    EXPECT_EQ(Value("SELECT TransDate || ' ' || Time FROM PriceHistory WHERE ID = 4"),
              "2026-03-02 10:15:02.000");
}

TEST_F(PurchaseList, WantsASymbolForANewLot)
{
    OpenScreen();
    EXPECT_FALSE(TypeNew({{"Shares", "5"}}));
    EXPECT_EQ(LastBox(), "Please enter the symbol of the purchase.");
    EXPECT_TRUE(List().IsRowEdited());
    ClickClose();
    EXPECT_TRUE(IsOpen());
    CloseScreen();
    EXPECT_EQ(Value("SELECT count(*) FROM PriceHistory"), "0");
}

TEST_F(PurchaseList, LeavesALotAloneThatAPendingPostingHasChanged)
{
    Position("ACME", 100, "10", "12");
    LotOn("ZETA", 50, "20", "2026-01-05", "09:30:00.000");
    OpenScreen();
    Post(Action::Sell, "ACME", "40", "12");
    RefreshOpenLists(State());
    EXPECT_EQ(CellOf(0, "Shares"), "100.0000"); // what the file has
    EXPECT_FALSE(Type(0, "Shares", "70"));
    EXPECT_TRUE(LastBox().startsWith("The last transaction has changed this purchase"));
    List().CancelRow();
    List().SelectRow(0);
    PressInGrid(Qt::Key_Delete); // no question
    EXPECT_EQ(run.boxes.boxes.size(), 2U);
    EXPECT_TRUE(Type(1, "Shares", "70")); // another lot is free
    EXPECT_EQ(State().gRsLots.SharesOf("ZETA"), Single::FromDouble(70));
    EXPECT_EQ(State().gRsLots.SharesOf("ACME"), Single::FromDouble(60));
    State().gRsLots.CommitTrans();
    EXPECT_EQ(Value("SELECT group_concat(Shares) FROM PriceHistory"), "60.0,70.0");
}

TEST_F(PurchaseList, WorksWithoutTheDailyTracker)
{
    FourLots();
    OpenScreen();
    Close();
    EXPECT_TRUE(Type(0, "Shares", "70"));
    EXPECT_EQ(Value("SELECT Shares FROM PriceHistory WHERE ID = 4"), "70.0");
}

// --- deletes ------------------------------------------------------------------------------------

TEST_F(PurchaseList, WarnsBeforeTheDeleteKeyDeletesALot)
{
    FourLots();
    OpenScreen();
    List().SelectRow(2);
    run.boxes.Prepare("Caution!", Answer::No);
    PressInGrid(Qt::Key_Delete);
    EXPECT_EQ(LastBox(), "Caution! Your are about to delete the selected row.  You will not \n"
                         "be able to undo this action. Total shares for this security must \n"
                         "agree with totals shares in Daily tracker screen. Continue anyway?");
    EXPECT_EQ(run.boxes.boxes.back().title, "Purchase Price List Editor");
    EXPECT_EQ(run.boxes.boxes.back().buttonsValue,
              Box::YesNo + Box::Exclamation + Box::SecondDefault);
    EXPECT_EQ(Rows(), "A10 A12 O7 Z20");
    run.boxes.Prepare("Caution!", Answer::Yes);
    PressInGrid(Qt::Key_Delete);
    EXPECT_EQ(Rows(), "A10 A12 Z20");
    EXPECT_EQ(Value("SELECT count(*) FROM PriceHistory WHERE ID = 3"), "0");
    EXPECT_TRUE(State().gRsLots.LotsOf("O'NEIL").empty());
    EXPECT_EQ(CurrentSymbol(), "ZETA");
}

TEST_F(PurchaseList, SaysWhyTheStoreRefusesAnEditOrADeletion)
{
    FourLots();
    OpenScreen();
    RefuseWrites("PriceHistory");
    EXPECT_FALSE(Type(2, "PurchasePrice", "8"));
    EXPECT_EQ(LastBox(), "The row could not be stored: no room.\nIt stays as you typed it.");
    EXPECT_TRUE(List().IsRowEdited());
    run.boxes.Prepare("Caution!", Answer::Yes);
    PressInGrid(Qt::Key_Delete);
    EXPECT_EQ(LastBox(), "The deletion of the purchase could not be saved: no room. "
                         "Nothing was changed.");
    EXPECT_EQ(Rows(), "A10 A12 O7 Z20");
    EXPECT_FALSE(State().gRsLots.LotsOf("O'NEIL").empty());
}

TEST_F(PurchaseList, OpensTheDeleteDialogForTheCurrentRow)
{
    FourLots();
    run.AddScreen("frmDeleteOptions");
    OpenScreen();
    List().SelectRow(3);
    bool wasChecked = false;
    run.WhenModal("frmDeleteOptions", [&] {
        wasChecked = run.Commands().Checked("popPPDelete");
        EXPECT_EQ(CurrentSymbol(), "ZETA");
        EXPECT_EQ(State().selection.SelectedRowID, 1);
        run.App().Host().Unload("frmDeleteOptions");
    });
    Choose("popPPDelete");
    EXPECT_TRUE(wasChecked);
    EXPECT_FALSE(run.Commands().Checked("popPPDelete"));
}

// --- look ---------------------------------------------------------------------------------------

TEST_F(PurchaseList, EmptiesItsToolTipWithTheFirstPopup)
{
    FourLots();
    OpenScreen();
    List().SelectRow(1);
    EXPECT_NE(List().toolTip(), "");
    List().RightClickCurrentRow();
    EXPECT_EQ(List().toolTip(), "");
    EXPECT_TRUE(run.App().MainWindow().Popup("popPPPurchasePrice")->isVisible());
    run.App().MainWindow().Popup("popPPPurchasePrice")->hide();
}

TEST_F(PurchaseList, TakesItsColourFromTheSettingAndTheDialog)
{
    OpenScreen();
    EXPECT_NE(State().settings.PPDataGridColor, 0);
    run.boxes.color = 0x8AFFFF;
    Choose("popPPPriceGridColor");
    EXPECT_EQ(List().BackColor(), 0xFF8AFFFF);
    EXPECT_EQ(State().settings.PPDataGridColor, 0xFFFF8A);
    ClickClose();
    EXPECT_FALSE(run.Commands().Checked("mnuVWPurchaseList"));
    OpenScreen();
    EXPECT_EQ(List().BackColor(), 0xFF8AFFFF);
}

// --- copy, find, widths -------------------------------------------------------------------------

TEST_F(PurchaseList, CopiesTheSelectedRowsAsTextsWithTabs)
{
    FourLots();
    OpenScreen();
    List().SelectRow(2);
    PressInGrid(Qt::Key_Down, Qt::ShiftModifier);
    PressInGrid(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              "O'NEIL\t10.0000\t7.1250\t2/29/2024\t9:30:00 AM\n"
              "ZETA\t-50.0000\t20.0000\t1/5/2026\t9:30:00 AM");
}

TEST_F(PurchaseList, FindsATextWithCtrlF)
{
    FourLots();
    OpenScreen();
    PressInGrid(Qt::Key_F, Qt::ControlModifier);
    auto *line = run.Control<QLineEdit>("frmPurchaseList", "txtFind");
    ASSERT_TRUE(line);
    line->setText("2/29");
    Press(line, Qt::Key_Return);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    Press(line, Qt::Key_Escape);
    EXPECT_FALSE(line->isVisible());
    EXPECT_TRUE(IsOpen());
}

TEST_F(PurchaseList, RemembersTheWidthsOfItsColumns)
{
    FourLots();
    OpenScreen();
    const auto header = [&] {
        return qobject_cast<QTableView *>(List().focusProxy())->horizontalHeader();
    };
    header()->resizeSection(PurchaseColumn::Symbol, 222);
    RefreshOpenLists(State());
    EXPECT_EQ(header()->sectionSize(PurchaseColumn::Symbol), 222);
    CloseScreen();
    OpenScreen();
    EXPECT_EQ(header()->sectionSize(PurchaseColumn::Symbol), 222);
}
