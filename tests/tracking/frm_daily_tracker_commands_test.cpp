/// The Daily Tracker's commands, and what it does when it goes.

#include "tracker_screen_run.h"

#include "platform/widgets/colors.h"
#include "program/select_security.h"

#include <QLabel>

using DailyTrackerCommands = TrackerScreenRun;

// --- transaction entry --------------------------------------------------------------------------

TEST_F(DailyTrackerCommands, AskForARowBeforeATransaction)
{
    Open();
    Choose("popDTTransactionUpdate");
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].text,
              "You must select a security to enter transactions. \n"
              "To enter new securities, right click the grid and then select\n"
              "'New' from the popup menu options.");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 48);
    EXPECT_EQ(run.boxes.boxes[0].title, "Daily Tracker Editor");
}

TEST_F(DailyTrackerCommands, OpenTheEntryScreenOnADoubleClick)
{
    TwoPositions();
    run.AddScreen("frmTransactionUpdate", Placement::OnTop);
    Open();
    State().databases.gConnApplControl.Execute(
        "INSERT INTO SecurityDetail VALUES ('ZETA', 'ZETA Inc.', 'Stock')");
    Grid().DoubleClickRow(1);
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_TRUE(run.App().Host().Loaded("frmTransactionUpdate"));
}

TEST_F(DailyTrackerCommands, ShowTheSecurityScreenForASecurityWithoutType)
{
    TwoPositions();
    run.AddScreen("frmTransactionUpdate", Placement::OnTop);
    run.AddScreen("frmSecurityUpdate");
    Open();
    run.WhenModal("frmSecurityUpdate", [&] { run.App().Host().Unload("frmSecurityUpdate"); });
    Grid().DoubleClickRow(0);
    EXPECT_EQ(run.log, QStringList({"load frmTransactionUpdate", "unload frmTransactionUpdate",
                                    "load frmSecurityUpdate", "unload frmSecurityUpdate"}));
}

// --- clear --------------------------------------------------------------------------------------

TEST_F(DailyTrackerCommands, AskForARowToClearOrDelete)
{
    Open();
    Choose("popDTClear");
    Choose("popDTDeleteRow");
    EXPECT_EQ(run.boxes.Texts(), QStringList({"No row has been selected, please make selection.",
                                              "No row has been selected, please make selection."}));
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 48);
}

TEST_F(DailyTrackerCommands, LeaveTheRowWhenTheQuestionIsDenied)
{
    TwoPositions();
    Open();
    run.boxes.Prepare("clear the content", Answer::No);
    Choose("popDTClear");
    EXPECT_EQ(run.boxes.boxes[0].text,
              "You are about to clear the content for symbol ACME\nIs this OK?");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 292);
    EXPECT_EQ(run.boxes.boxes[0].title, "Daily Tracker Editor");
    run.boxes.Prepare("delete the current row", Answer::No);
    Choose("popDTDeleteRow");
    EXPECT_EQ(run.boxes.boxes[1].text,
              "You are about to delete the current row for symbol ACME\nIs this OK?");
    EXPECT_EQ(run.boxes.boxes[1].buttonsValue, 292);
    EXPECT_EQ(Cell("ACME", "Shares"), "100.0000");
    EXPECT_FALSE(UndoEnabled());
}

TEST_F(DailyTrackerCommands, ClearARowWhichStaysWithZeros)
{
    TwoPositions();
    Execute("UPDATE DailyTracker SET ProfitLossToDate = 250000");
    Open();
    Select("ZETA");
    run.boxes.Prepare("symbol ZETA\n", Answer::Yes);
    Choose("popDTClear");
    EXPECT_EQ(Cell("ZETA", "Shares"), "0.0000");
    EXPECT_EQ(Cell("ZETA", "Gain"), "0.0000");
    EXPECT_EQ(Cell("ZETA", "P&L To Date"), "0.00");
    EXPECT_EQ(Cell("ZETA", "Trans Date"), "Mon 2 March 2026");
    EXPECT_EQ(Total("P&L ToDate"), "25.00"); // ACME's alone
    EXPECT_EQ(Total("Current Balance*"), "1,000.00");
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(MarkedSymbol(), "ZETA");
    EXPECT_EQ(Status(), "");
    ASSERT_EQ(run.boxes.boxes.size(), 2u);
    EXPECT_EQ(run.boxes.boxes[1].text,
              "REMINDER! Make sure to delete existing transaction history for ZETA if you do not "
              "need that information.");
    EXPECT_EQ(run.boxes.boxes[1].buttonsValue, 64);
    EXPECT_TRUE(UndoEnabled());
    EXPECT_TRUE(run.Commands().Enabled("popDTUndoLast"));
    EXPECT_TRUE(State().gRsLots.LotsOf("ZETA").empty());
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ZETA'"), "1"); // pending
}

TEST_F(DailyTrackerCommands, TakeAClearBack)
{
    TwoPositions();
    Open();
    run.boxes.Prepare("clear the content", Answer::Yes);
    Choose("popDTClear");
    run.boxes.Prepare("undo your last transaction", Answer::Yes);
    Choose("popDTUndoLast");
    EXPECT_EQ(Cell("ACME", "Shares"), "100.0000");
    EXPECT_EQ(Cell("ACME", "Gain"), "200.0000");
    EXPECT_EQ(State().gRsLots.LotsOf("ACME").size(), 1u);
    EXPECT_EQ(Total("Current Balance*"), "1,000.00");
    EXPECT_EQ(Total("Gain Total"), "150.00");
    EXPECT_FALSE(UndoEnabled());
}

TEST_F(DailyTrackerCommands, ClearARowWithAnApostropheAndAnAccent)
{
    Position("O'NÉIL", 10, "5", "6");
    Open();
    run.boxes.Prepare("symbol O'NÉIL\n", Answer::Yes);
    Choose("popDTClear");
    EXPECT_EQ(Cell("O'NÉIL", "Shares"), "0.0000");
    run.boxes.Prepare("undo your last transaction", Answer::No);
    Close();
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory"), "0");
}

TEST_F(DailyTrackerCommands, ClearTheMarkedRowAlsoWhileACycleHoldsTheSelection)
{
    TwoPositions();
    Open();
    State().priceUpdate.UpdateInProgress = true;
    Select("ZETA");
    EXPECT_EQ(CurrentSymbol(), "ACME");
    run.boxes.Prepare("symbol ZETA\n", Answer::Yes);
    Choose("popDTClear");
    EXPECT_EQ(Cell("ZETA", "Shares"), "0.0000");
    EXPECT_EQ(Cell("ACME", "Shares"), "100.0000");
}

// --- delete -------------------------------------------------------------------------------------

TEST_F(DailyTrackerCommands, DeleteARowAndItsLots)
{
    TwoPositions();
    Execute("UPDATE DailyTracker SET ProfitLossToday = 150000 WHERE Symbol = 'ZETA'");
    Execute("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) "
            "VALUES ('ZETA', 'ZETA Inc.', 150000, '2026-03-02', '10:00:00.000')");
    Open();
    Select("ZETA");
    run.boxes.Prepare("symbol ZETA\n", Answer::Yes);
    Choose("popDTDeleteRow");
    EXPECT_EQ(Column("Symbol"), "ACME");
    EXPECT_EQ(CurrentSymbol(), "ACME");
    EXPECT_EQ(Total("Gain Total"), "200.00");
    EXPECT_EQ(Total("Current Balance*"), "1,050.00"); // the loss of 50 has left the gains
    EXPECT_EQ(Total("P&L Today"), "0.00");
    EXPECT_EQ(Value("SELECT COUNT(*) FROM DailyProfitLoss"), "0");
    EXPECT_EQ(Status(), "");
    EXPECT_TRUE(UndoEnabled());

    run.boxes.Prepare("undo your last transaction", Answer::Yes);
    Choose("UndoLast");
    EXPECT_EQ(Column("Symbol"), "ACME ZETA");
    EXPECT_EQ(Cell("ZETA", "P&L Today"), "15.00");
    EXPECT_EQ(State().gRsLots.LotsOf("ZETA").size(), 1u);
    EXPECT_EQ(Value("SELECT ProfitLoss FROM DailyProfitLoss"), "150000");
    EXPECT_FALSE(UndoEnabled());
}

TEST_F(DailyTrackerCommands, DeleteTheOnlyRow)
{
    Position("ACME", 100, "10", "12");
    Open();
    run.boxes.Prepare("symbol ACME\n", Answer::Yes);
    Choose("popDTDeleteRow");
    EXPECT_EQ(Grid().RowCount(), 0);
    EXPECT_EQ(CurrentSymbol(), "");
    EXPECT_EQ(Total("Gain Total"), "0.00");
    run.boxes.Prepare("undo your last transaction", Answer::Yes);
    Choose("UndoLast");
    EXPECT_EQ(Column("Symbol"), "ACME");
}

TEST_F(DailyTrackerCommands, MakeThePostingBeforeThemFinal)
{
    TwoPositions();
    Open();
    Post(Action::Buy, "ACME", "10", "12");
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "1"); // pending
    Select("ZETA");
    run.boxes.Prepare("symbol ZETA\n", Answer::Yes);
    Choose("popDTDeleteRow");
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "2");
}

TEST_F(DailyTrackerCommands, TakeAPostingBack)
{
    TwoPositions();
    Open();
    Post(Action::Buy, "ACME", "10", "12");
    EXPECT_EQ(Cell("ACME", "Shares"), "110.0000");
    run.boxes.Prepare("undo your last transaction", Answer::Yes);
    Choose("popDTUndoLast");
    EXPECT_EQ(Cell("ACME", "Shares"), "100.0000");
    EXPECT_EQ(Value("SELECT COUNT(*) FROM History"), "0");
}

// --- a row without a symbol ---------------------------------------------------------------------

/// The Wizard makes one of the deposits in the history: its symbol is a blank.
struct RowWithoutSymbol : TrackerScreenRun
{
    void Positions()
    {
        TwoPositions();
        Position(" ", 30, "5", "6");
        Execute("UPDATE DailyTracker SET Name = 'Account Deposit' WHERE Symbol = ' '");
    }
};

TEST_F(RowWithoutSymbol, IsDeletedWhenItIsMarkedAndLeavesTheSelectedSecurityAlone)
{
    Positions();
    Open();
    Select("ZETA");
    Select(" ");
    EXPECT_EQ(CurrentSymbol(), "ZETA"); // the last selection stays
    run.boxes.Prepare("delete", Answer::Yes);
    Choose("popDTDeleteRow");
    EXPECT_EQ(run.boxes.Texts(), QStringList("You are about to delete the current row for symbol "
                                             "Account Deposit\nIs this OK?"));
    EXPECT_EQ(Column("Symbol"), "ACME ZETA");
    EXPECT_EQ(Cell("ZETA", "Shares"), "50.0000");
    EXPECT_TRUE(State().gRsLots.LotsOf(" ").empty());
    EXPECT_EQ(State().gRsLots.LotsOf("ZETA").size(), 1u);
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(MarkedSymbol(), "ZETA");

    run.boxes.Prepare("undo your last transaction", Answer::Yes);
    Choose("UndoLast");
    EXPECT_EQ(Column("Symbol"), "ACME ZETA  ");
    EXPECT_EQ(Cell(" ", "Name"), "Account Deposit");
    EXPECT_EQ(State().gRsLots.LotsOf(" ").size(), 1u);
}

TEST_F(RowWithoutSymbol, IsClearedWhenItIsMarked)
{
    Positions();
    Open();
    Select("ZETA");
    Select(" ");
    run.boxes.Prepare("clear", Answer::Yes);
    Choose("popDTClear");
    EXPECT_EQ(run.boxes.Texts(),
              QStringList({"You are about to clear the content for symbol Account Deposit\n"
                           "Is this OK?",
                           "REMINDER! Make sure to delete existing transaction history for "
                           "Account Deposit if you do not need that information."}));
    EXPECT_EQ(Cell(" ", "Shares"), "0.0000");
    EXPECT_EQ(Cell("ZETA", "Shares"), "50.0000");
    EXPECT_EQ(MarkedSymbol(), " ");
}

TEST_F(RowWithoutSymbol, IsNoSecurityThatCouldBeEdited)
{
    Positions();
    run.AddScreen("frmSecurityUpdate");
    Open();
    Select("ZETA");
    Select(" ");
    run.WhenModal("frmSecurityUpdate", [&] { run.App().Host().Unload("frmSecurityUpdate"); });
    Choose("popDTEdit");
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].text, "Please select the security you want to update!");
    EXPECT_EQ(run.boxes.boxes[0].title, "Application Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 48);
    EXPECT_TRUE(run.log.isEmpty());
}

TEST_F(RowWithoutSymbol, CanBeDeletedWhenItIsTheOnlyOne)
{
    Position(" ", 30, "5", "6");
    Open();
    EXPECT_EQ(CurrentSymbol(), "");
    run.boxes.Prepare("delete the current row", Answer::Yes);
    Choose("popDTDeleteRow");
    EXPECT_EQ(Grid().RowCount(), 0);
    Choose("popDTDeleteRow");
    EXPECT_EQ(run.boxes.Texts().last(), "No row has been selected, please make selection.");
}

TEST_F(RowWithoutSymbol, IsAllThatIsLeftAndNoOldSelectionWithIt)
{
    Position("ACME", 100, "10", "12");
    Position(" ", 30, "5", "6");
    Open();
    Select("ACME");
    run.boxes.Prepare("symbol ACME\n", Answer::Yes);
    Choose("popDTDeleteRow");
    EXPECT_EQ(Column("Symbol"), " ");
    EXPECT_EQ(CurrentSymbol(), "");
}

TEST_F(RowWithoutSymbol, StaysMarkedWhenPricesComeAndWhenTheRowsAreSorted)
{
    Positions();
    Open();
    Select("ZETA");
    Select(" ");
    State().UpdatePortfolioTotals();
    State().ReloadDataGrid();
    EXPECT_EQ(MarkedSymbol(), " ");
    Execute("UPDATE DailyTracker SET Shares = 9000 WHERE Symbol = ' '");
    State().AdodcStockHistory.Requery();
    EXPECT_EQ(MarkedSymbol(), " ");
    SelectSecurity(State(), "ACME"); // on a list screen
    EXPECT_EQ(MarkedSymbol(), "ACME");
}

TEST_F(DailyTrackerCommands, EditTheMarkedRowAlsoWhileACycleHoldsTheSelection)
{
    TwoPositions();
    run.AddScreen("frmSecurityUpdate");
    Open();
    State().priceUpdate.UpdateInProgress = true;
    Select("ZETA");
    QString edited;
    run.WhenModal("frmSecurityUpdate", [&] {
        edited = State().selection.CurrentSymbol + ", " + State().selection.CurrentName;
        run.App().Host().Unload("frmSecurityUpdate");
    });
    Choose("popDTEdit");
    EXPECT_EQ(edited, "ZETA, ZETA Inc.");
}

// --- split mode and colours ---------------------------------------------------------------------

TEST_F(DailyTrackerCommands, SplitTheGridAndPutItTogetherAgain)
{
    TwoPositions();
    Open();
    const QStringList captions = Grid().Captions();
    Choose("popDTSplitMode");
    EXPECT_TRUE(Grid().IsSplit());
    EXPECT_EQ(run.Commands().Caption("popDTSplitMode"), "Undo Split");
    ClickHeader("Price");
    EXPECT_EQ(Column("Symbol"), "ZETA ACME");
    Choose("popDTSplitMode");
    EXPECT_FALSE(Grid().IsSplit());
    EXPECT_EQ(Grid().Captions(), captions);
    EXPECT_EQ(run.Commands().Caption("popDTSplitMode"), "Split Mode");
}

TEST_F(DailyTrackerCommands, OpenInOnePaneAfterAClosingInSplitMode)
{
    Open();
    Choose("popDTSplitMode");
    Close();
    EXPECT_EQ(run.Commands().Caption("popDTSplitMode"), "Split Mode");
    State().screens.Show("frmDailyTracker");
    EXPECT_FALSE(Grid().IsSplit());
}

TEST_F(DailyTrackerCommands, ColorTheGridAndTheHeadingOfTheSummary)
{
    Open();
    run.boxes.color = 0x102030;
    Choose("popDTDailyGridColor");
    EXPECT_EQ(Grid().BackColor(), QColor("#102030").rgb());
    EXPECT_EQ(State().settings.DTDataGridColor, 0x302010); // blue stands highest
    auto *heading = run.Control<QLabel>("frmDailyTracker", "lblGrandTotal");
    EXPECT_EQ(heading->palette().color(heading->backgroundRole()), QColor("#102030"));
    Close();
    State().screens.Show("frmDailyTracker");
    EXPECT_EQ(Grid().BackColor(), QColor("#102030").rgb());
}

TEST_F(DailyTrackerCommands, ColorTheBalanceOrTheWholeSummary)
{
    Open();
    run.boxes.color = 0x00ff00;
    run.boxes.Prepare("balance column", Answer::Yes);
    Choose("popDTSummaryGridColor");
    EXPECT_EQ(Totals().CellBackColor(1, 1), QColor("#00ff00").rgb());
    EXPECT_NE(Totals().BackColor(), QColor("#00ff00").rgb());
    EXPECT_EQ(State().settings.DTBalanceColColor, 0x00ff00);
    EXPECT_EQ(run.boxes.boxes[0].text, "Apply selected color to balance column?");
    EXPECT_EQ(run.boxes.boxes[0].title, "Color Selection option");
    EXPECT_EQ(Status(), "Select column to apply the selected color...");

    run.boxes.color = 0x0000ff;
    run.boxes.Prepare("balance column", Answer::No);
    Choose("popDTSummaryGridColor");
    EXPECT_EQ(Totals().CellBackColor(1, 1), QColor("#00ff00").rgb());
    EXPECT_EQ(Totals().BackColor(), QColor("#0000ff").rgb());
    EXPECT_EQ(State().settings.DTTotalGridColor, 0xff0000);
}

TEST_F(DailyTrackerCommands, LeaveTheColorsWhenTheDialogIsCancelled)
{
    Open();
    const QRgb before = Grid().BackColor();
    Choose("popDTDailyGridColor");
    Choose("popDTSummaryGridColor");
    EXPECT_EQ(Grid().BackColor(), before);
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(DailyTrackerCommands, TakeTheColorsOfTheGridsIntoTheSettingsAtFirst)
{
    Open();
    EXPECT_EQ(State().settings.DTDataGridColor, ValueOfColor(Grid().BackColor()));
    EXPECT_EQ(State().settings.DTTotalGridColor, ValueOfColor(Totals().BackColor()));
}

// --- closing ------------------------------------------------------------------------------------

using DailyTrackerClosing = TrackerScreenRun;

TEST_F(DailyTrackerClosing, WritesTheBalancesOfToday)
{
    TwoPositions();
    Row("FLAT", 0, "0", "0");
    Row("TODAY", 0, "0", "0", "2026-03-02");
    Open();
    State().AdodcStockHistory.Find("ACME");
    State().AdodcStockHistory.Edit().CurrPrice = Currency("13");
    State().ReloadDataGrid();
    Close();
    EXPECT_EQ(
        Value("SELECT group_concat(TrackName || ' ' || DailyBalance, ', ') FROM (SELECT * FROM "
              "PortfolioDailyBalance WHERE TransDate = '2026-03-02' ORDER BY TrackName)"),
        "ACME 3000000, Portfolio 11000000, TODAY 0, ZETA -500000");
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable WHERE TableName = 'Balance'"),
              "11000000");
    EXPECT_EQ(Status(), "");
    EXPECT_FALSE(State().AdodcStockHistory.IsOpen());
    EXPECT_FALSE(State().gRsLots.IsOpen());
    EXPECT_FALSE(State().ReloadDataGrid);
    EXPECT_FALSE(run.Commands().Checked("mnuVWDailyTracker"));
}

TEST_F(DailyTrackerClosing, MakesTheLastPostingFinalWithoutAQuestion)
{
    TwoPositions();
    Open();
    Post(Action::Buy, "ACME", "10", "12");
    Close();
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "2");
    EXPECT_FALSE(UndoEnabled());
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(DailyTrackerClosing, OffersToTakeAClearBack)
{
    TwoPositions();
    Open();
    run.boxes.Prepare("symbol ACME\n", Answer::Yes);
    Choose("popDTClear");
    run.boxes.Prepare("undo your last transaction", Answer::Yes);
    Close();
    EXPECT_EQ(Value("SELECT Shares FROM DailyTracker WHERE Symbol = 'ACME'"), "100.0");
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "1");
    EXPECT_FALSE(UndoEnabled());
}

TEST_F(DailyTrackerClosing, MakesAClearFinalWhenTheOfferIsDeclined)
{
    TwoPositions();
    Open();
    run.boxes.Prepare("symbol ACME\n", Answer::Yes);
    Choose("popDTClear");
    run.boxes.Prepare("undo your last transaction", Answer::No);
    Close();
    EXPECT_EQ(Value("SELECT Shares FROM DailyTracker WHERE Symbol = 'ACME'"), "0.0");
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "0");
    EXPECT_FALSE(State().undo.RowTransactionOpen);
}

TEST_F(DailyTrackerClosing, MakesADeleteFinalWithoutAQuestionInSplitMode)
{
    TwoPositions();
    Open();
    Choose("popDTSplitMode");
    run.boxes.Prepare("symbol ACME\n", Answer::Yes);
    Choose("popDTDeleteRow");
    Close();
    EXPECT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "0");
}

TEST_F(DailyTrackerClosing, StopsThePriceCycle)
{
    run.AddScreen("frmInternetTran", Placement::Hidden);
    Open();
    State().screens.Load("frmInternetTran");
    State().priceUpdate.PriceUpdateActive = true;
    Close();
    EXPECT_FALSE(run.App().Host().Loaded("frmInternetTran"));
}

TEST_F(DailyTrackerClosing, IsNotHeldUpByABalanceThatCannotBeWritten)
{
    TwoPositions();
    Open();
    Post(Action::Buy, "ACME", "10", "12");
    Execute("ALTER TABLE PortfolioDailyBalance RENAME TO Elsewhere");
    Close();
    EXPECT_FALSE(run.App().Host().Loaded("frmDailyTracker"));
    ASSERT_EQ(run.boxes.boxes.size(), 2u);
    EXPECT_TRUE(run.boxes.boxes[0].text.startsWith(
        "An error has occured updating security Daily Balance. \n"
        "Please check last action performed and notify technical support.\nError number "));
    EXPECT_TRUE(run.boxes.boxes[1].text.startsWith(
        "An error has occured updating Portfolio Daily Balance. \n"));
    EXPECT_EQ(run.boxes.boxes[1].title, "Daily Tracker Editor");
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "2");
}

TEST_F(DailyTrackerClosing, DoesNothingOnAMereReloadAndLosesNoLots)
{
    TwoPositions();
    Open();
    Post(Action::Buy, "ACME", "10", "12");
    run.Commands().SetChecked("mnuVWDailyTracker", false);
    Close();
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PortfolioDailyBalance"), "0");
    State().screens.Show("frmDailyTracker");
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "2");
    EXPECT_TRUE(run.boxes.boxes.empty()); // rows and lots agree
}
