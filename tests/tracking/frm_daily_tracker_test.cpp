/// The Daily Tracker's grids: what they show, the order of the rows, and the selection.

#include "tracker_screen_run.h"

#include "platform/widgets/colors.h"
#include "shell/help_window.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QTableView>

using DailyTrackerScreen = TrackerScreenRun;

// --- what is shown ------------------------------------------------------------------------------

TEST_F(DailyTrackerScreen, ShowsItsColumnsInTheirOrder)
{
    Open();
    EXPECT_EQ(run.App().Host().Find("frmDailyTracker")->Caption(), "Daily Tracker");
    EXPECT_EQ(Grid().Captions(),
              QStringList({"Symbol", "Shares", "Avg Price", "Price", "Gain", "% Gain ", "P&L Today",
                           "P&L To Date ", "Actual P&L ", "Invested Value", "Invested To Date",
                           "Trans Cost Today", "Trans Cost To Date", "Trans Today ",
                           "Trans To Date", "Name", "SecurityType", "Trans Date", "Time"}));
}

TEST_F(DailyTrackerScreen, ShowsARowInTheFormatsOfItsColumns)
{
    Row("ACME", 1234.5, "10.125", "12", "2026-02-03", "14:05:09.250");
    Lot("ACME", 1234.5, "10.125");
    Execute("UPDATE DailyTracker SET ProfitLossToday = -125000, ProfitLossToDate = 20000000, "
            "InvestedToDate = 5000000, TransCostToday = -49500, TransCostToDate = -99000, "
            "NumberTransToday = 1, NumberTransToDate = 12");
    Open();
    QStringList cells;
    for (int place = 0; place < 19; ++place)
        cells << Grid().CellText(0, place);
    // 1,234.5 * (12 - 10.125) = 2,314.6875; 1.875 / 10.125 = 18.52%; 1,234.5 * 12 = 14,814
    EXPECT_EQ(cells,
              QStringList({"ACME", "1234.5000", "10.1250", "12.0000", "2314.6875", "18.52%",
                           "-12.50", "2000.00", "1987.50", "14814.00", "500.00", "-4.95", "-9.90",
                           "1", "12", "ACME Inc.", "", "Tue 3 February 2026", "2:05:09 PM"}));
}

TEST_F(DailyTrackerScreen, ShowsAShortPositionWithItsGainAndAPositiveValue)
{
    Position("ACME", -100, "10", "8");
    Open();
    EXPECT_EQ(Cell("ACME", "Gain"), "200.0000");
    EXPECT_EQ(Cell("ACME", "% Gain"), "20.00%");
    EXPECT_EQ(Cell("ACME", "Invested Value"), "800.00");
}

TEST_F(DailyTrackerScreen, ShowsNoValuesForARowWithoutSharesButItsProfitToDate)
{
    Row("ACME", 0, "10", "12");
    Execute(
        "UPDATE DailyTracker SET ProfitLossToDate = 750000, Basis = 10000, InvestedValue = 10000");
    Open();
    EXPECT_EQ(Cell("ACME", "Gain"), "0.0000");
    EXPECT_EQ(Cell("ACME", "% Gain"), "0.00%");
    EXPECT_EQ(Cell("ACME", "Invested Value"), "0.00");
    EXPECT_EQ(Cell("ACME", "P&L To Date"), "75.00");
}

TEST_F(DailyTrackerScreen, ShowsTheTotalsBelow)
{
    TwoPositions();
    Execute("UPDATE DailyTracker SET ProfitLossToday = 15000000, NumberTransToday = 2");
    Open();
    EXPECT_EQ(Totals().Rows(), 2);
    EXPECT_EQ(Totals().Captions(),
              QStringList({"Current Balance*", "Gain Total", "P&L Today", "P&L ToDate",
                           "Actual P&L", "TransCostToday", "TransCostToDate", "InvestedValue",
                           "InvestedToDate", "#TransToday", "#TransToDate"}));
    EXPECT_EQ(Total("Current Balance*"), "1,000.00");
    EXPECT_EQ(Total("Gain Total"), "150.00"); // 200 - 50
    EXPECT_EQ(Total("P&L Today"), "3,000.00");
    EXPECT_EQ(Total("InvestedValue"), "2,150.00"); // 1,200 + 950
    EXPECT_EQ(Total("#TransToday"), "4");
    EXPECT_EQ(Totals().CellBackColor(1, 1), ColorOfValue(0x8AFFFF));
    EXPECT_FALSE(Totals().font().bold());
    EXPECT_EQ(Totals().font().pointSize(), 10);
    auto *heading = run.Control<QLabel>("frmDailyTracker", "lblGrandTotal");
    EXPECT_EQ(heading->text(), "P O R T F O L I O     S U M M A R Y");
}

TEST_F(DailyTrackerScreen, ShowsEmptyGridsForAnEmptyAccount)
{
    Open();
    EXPECT_EQ(Grid().RowCount(), 0);
    EXPECT_EQ(Total("Gain Total"), "0.00");
    EXPECT_EQ(Total("#TransToDate"), "0");
    EXPECT_EQ(CurrentSymbol(), "");
    ClickHeader("Symbol");
    EXPECT_EQ(Status(), "Sort completed");
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(DailyTrackerScreen, TellsAtItsLoadHowToGoOn)
{
    Open();
    Close();
    State().run.IdleMinutes = 7;
    EXPECT_TRUE(State().screens.Show("frmDailyTracker"));
    EXPECT_EQ(Status(), "Right click on the grid for popup menu selection");
    EXPECT_EQ(State().run.IdleMinutes, 0);
    EXPECT_FALSE(UndoEnabled());
    EXPECT_FALSE(run.Commands().Enabled("popDTUndoLast"));
}

TEST_F(DailyTrackerScreen, GivesItsToolTipUntilTheThirdClick)
{
    TwoPositions();
    Open();
    const QString hint = "Click to select row then right click for popup menu options";
    EXPECT_EQ(Grid().toolTip(), hint);
    Grid().SelectRow(0);
    Grid().SelectRow(1);
    EXPECT_EQ(Grid().toolTip(), hint);
    Grid().SelectRow(0);
    EXPECT_EQ(Grid().toolTip(), "");
}

// --- load
TEST_F(DailyTrackerScreen, HasRoomForAmountsThatGrow)
{
    Position("ACME", 100, "10", "10"); // a gain of zero at load
    Open();
    auto *cells = dynamic_cast<QTableView *>(Grid().CellTarget(0, 4).widget->parentWidget());
    ASSERT_TRUE(cells);
    EXPECT_GT(cells->columnWidth(4), Grid().fontMetrics().horizontalAdvance("-98765.4321"));
}

// -------------------------------------------------------------------------------------------

TEST_F(DailyTrackerScreen, LeavesTheBalanceAtLoadAndMovesItFromThereOn)
{
    TwoPositions();
    Open();
    EXPECT_EQ(State().totals.PriorBasisTotal, State().totals.BasisTotal);
    EXPECT_EQ(Total("Current Balance*"), "1,000.00");

    State().AdodcStockHistory.Find("ACME");
    State().AdodcStockHistory.Edit().CurrPrice = Currency("13");
    State().ReloadDataGrid();
    EXPECT_EQ(Total("Current Balance*"), "1,100.00"); // 100 shares, one up
    EXPECT_EQ(Total("Gain Total"), "250.00");
    EXPECT_EQ(Cell("ACME", "Gain"), "300.0000");
}

TEST_F(DailyTrackerScreen, RollsTheRowsToANewDayAtLoad)
{
    TwoPositions();
    Execute("UPDATE DailyTracker SET ProfitLossToday = 100000, ProfitLossToDate = 200000, "
            "TransCostToday = -50000, NumberTransToday = 3");
    Execute("UPDATE DescriptiveTable SET Field04 = '2026-02-27' WHERE TableName = 'Balance'");
    Open();
    EXPECT_EQ(Column("P&L Today"), "0.00 0.00");
    EXPECT_EQ(Column("P&L To Date"), "30.00 30.00");
    EXPECT_EQ(Column("Trans Cost Today"), "0.00 0.00");
    EXPECT_EQ(Column("Trans Today"), "0 0");
    EXPECT_EQ(Value("SELECT Field04 FROM DescriptiveTable WHERE TableName = 'Balance'"),
              "2026-03-02");
}

TEST_F(DailyTrackerScreen, TellsOfEachRowWhoseLotsDoNotSumToItsSharesAtEachOpening)
{
    TwoPositions();
    Row("OMNI", 7, "5", "5");
    Lot("OMNI", 6, "5");
    Row("PLAZA", 1, "5", "5");
    run.boxes.Prepare("for symbol OMNI.", Answer::No);
    run.boxes.Prepare("for symbol PLAZA.", Answer::No);
    Open();
    ASSERT_EQ(run.boxes.boxes.size(), 2u);
    const ScriptedBoxes::ShownBox &box = run.boxes.boxes.front();
    EXPECT_EQ(box.text, "Message number: 100\n"
                        "ATTENTION: There is an imbalance in the total number \n"
                        "of shares in the Price History and the Daily Tracker information \n"
                        "for symbol OMNI.\n"
                        "To fix this problem you must delete invalid information in the \n"
                        "Purchase Price List screen.\n\n"
                        "If you need further help click 'Yes'");
    EXPECT_EQ(box.buttonsValue, 276);
    EXPECT_EQ(box.title, "Daily Tracker Editor");

    Close();
    Execute("UPDATE PriceHistory SET Shares = 7 WHERE Symbol = 'OMNI'");
    run.boxes.Prepare("for symbol PLAZA.", Answer::No);
    State().screens.Show("frmDailyTracker");
    EXPECT_EQ(run.boxes.boxes.size(), 3u);
}

TEST_F(DailyTrackerScreen, OpensTheHelpOnAnImbalanceWhenAsked)
{
    QDir(folder.Path()).mkdir("help");
    folder.AddFile("help/ErrorMessageHelp.html", "<title>Error messages</title>");
    Row("OMNI", 7, "5", "5");
    run.boxes.Prepare("for symbol OMNI.", Answer::Yes);
    Open();
    const auto isHelp = [](const QWidget *widget) {
        return widget->isVisible() && dynamic_cast<const HelpWindow *>(widget);
    };
    const QWidgetList windows = QApplication::topLevelWidgets();
    EXPECT_TRUE(std::any_of(windows.begin(), windows.end(), isHelp));
}

TEST_F(DailyTrackerScreen, ResetsAllRowsWhicheverIsSelected)
{
    Open();
    Close();
    TwoPositions();
    Position("OMNI", 10, "5", "5");
    Execute("UPDATE DailyTracker SET ProfitLossToDate = 250000, NumberTransToDate = 4");
    State().screens.Show("frmDailyTracker");
    Select("OMNI");
    State().settings.NeverReset = 0;
    State().settings.ResetDate = QDate(2026, 3, 1);
    run.boxes.Prepare("Continue?", Answer::Yes);
    State().ReloadDataGrid();
    EXPECT_EQ(Column("P&L To Date"), "0.00 0.00 0.00");
    EXPECT_EQ(Column("Trans To Date"), "0 0 0");
    EXPECT_EQ(Total("P&L ToDate"), "75.00"); // taken before the reset, until the next walk
    EXPECT_EQ(State().settings.ResetDate, QDate(2027, 3, 1));
    EXPECT_EQ(MarkedSymbol(), "OMNI");
}

TEST_F(DailyTrackerScreen, LeavesNothingOpenWhenItCannotBeLoaded)
{
    Open();
    Close();
    Execute("ALTER TABLE PriceHistory RENAME TO Elsewhere");
    EXPECT_THROW(State().screens.Show("frmDailyTracker"), RuntimeError);
    EXPECT_FALSE(run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_FALSE(State().AdodcStockHistory.IsOpen());
    EXPECT_FALSE(State().ReloadDataGrid);
    Execute("ALTER TABLE Elsewhere RENAME TO PriceHistory");
    EXPECT_TRUE(State().screens.Show("frmDailyTracker"));
}

// --- order --------------------------------------------------------------------------------------

TEST_F(DailyTrackerScreen, BeginsWithTheLargestPositions)
{
    Position("ACME", 10, "10", "10");
    Position("BOLT", 30, "10", "10");
    Position("AAA", 30, "10", "10");
    Open();
    EXPECT_EQ(Column("Symbol"), "AAA BOLT ACME");
}

TEST_F(DailyTrackerScreen, SortsInBothDirectionsWithTwoClicksOnOneHeading)
{
    TwoPositions();
    Open();
    ClickHeader("Price");
    EXPECT_EQ(Column("Symbol"), "ZETA ACME"); // descending at first
    ClickHeader("Price");
    EXPECT_EQ(Column("Symbol"), "ACME ZETA");
    EXPECT_EQ(Status(), "Sort completed");
}

TEST_F(DailyTrackerScreen, GoesOnFromTheDirectionOfTheLastHeading)
{
    TwoPositions();
    Open();
    ClickHeader("Price");
    ClickHeader("Symbol"); // ascending, though it is the first click on it
    EXPECT_EQ(Column("Symbol"), "ACME ZETA");
    EXPECT_EQ(State().AdodcStockHistory.OrderBy(), "ORDER BY Symbol, TransDate DESC, Time DESC");
    ClickHeader("Name");
    EXPECT_EQ(State().AdodcStockHistory.OrderBy(), "ORDER BY Name DESC, TransDate DESC, Time DESC");
}

TEST_F(DailyTrackerScreen, SortsByTimeWithoutAFurtherKey)
{
    Row("NOON", 0, "0", "0", "2026-01-05", "12:00:00.000");
    Row("DAWN", 0, "0", "0", "2026-02-05", "06:00:00.000");
    Row("DUSK", 0, "0", "0", "2025-02-05", "18:00:00.000");
    Open();
    ClickHeader("Time");
    EXPECT_EQ(Column("Symbol"), "DUSK NOON DAWN");
    EXPECT_EQ(State().AdodcStockHistory.OrderBy(), "ORDER BY Time DESC");
    ClickHeader("Time");
    EXPECT_EQ(Column("Symbol"), "DAWN NOON DUSK");
    EXPECT_EQ(State().AdodcStockHistory.OrderBy(), "ORDER BY Time");
    ClickHeader("Trans Date");
    EXPECT_EQ(Column("Symbol"), "DAWN NOON DUSK");
}

TEST_F(DailyTrackerScreen, RefusesToSortBySecurityTypeAndStillTurnsTheDirection)
{
    TwoPositions();
    Open();
    ClickHeader("SecurityType");
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].text, "The selected column is not available for sorting");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 48);
    EXPECT_EQ(run.boxes.boxes[0].title, "Daily Tracker Editor");
    EXPECT_EQ(Status(), "The selected column is not available for sorting");
    ClickHeader("Price"); // the direction was turned twice by now
    EXPECT_EQ(Column("Symbol"), "ACME ZETA");
}

TEST_F(DailyTrackerScreen, KeepsEditsOfTheRowsWhenTheyAreSorted)
{
    TwoPositions();
    Open();
    State().AdodcStockHistory.Find("ZETA");
    State().AdodcStockHistory.Edit().CurrPrice = Currency("99");
    ClickHeader("Price");
    EXPECT_EQ(Cell("ZETA", "Price"), "99.0000");
}

// --- selection ----------------------------------------------------------------------------------

TEST_F(DailyTrackerScreen, SelectsTheFirstRowAtLoadAndThenTheOneClicked)
{
    TwoPositions();
    Open();
    EXPECT_EQ(CurrentSymbol(), "ACME");
    Select("ZETA");
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(State().selection.CurrentName, "ZETA Inc.");
    EXPECT_EQ(State().AdodcStockHistory.Current().Symbol, "ZETA");
}

TEST_F(DailyTrackerScreen, SelectsTheFirstRowAfterASort)
{
    TwoPositions();
    Open();
    ClickHeader("Symbol");
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(MarkedSymbol(), "ZETA");
    EXPECT_EQ(State().AdodcStockHistory.Position(), 0);
}

TEST_F(DailyTrackerScreen, KeepsTheSelectionDuringAPriceCycle)
{
    TwoPositions();
    Open();
    State().priceUpdate.UpdateInProgress = true;
    State().AdodcStockHistory.MoveFirst();
    Select("ZETA");
    EXPECT_EQ(CurrentSymbol(), "ACME");
    EXPECT_EQ(State().AdodcStockHistory.Position(), 0); // the cycle's cursor
    State().ReloadDataGrid();
    EXPECT_EQ(CurrentSymbol(), "ACME");
    EXPECT_EQ(MarkedSymbol(), "ACME");
}

TEST_F(DailyTrackerScreen, KeepsTheSelectionDuringAPosting)
{
    TwoPositions();
    Open();
    State().entry.PostingInProgress = true;
    Select("ZETA");
    EXPECT_EQ(CurrentSymbol(), "ACME");
}

TEST_F(DailyTrackerScreen, KeepsTheLastSelectionOnARowWithABlankSymbol)
{
    TwoPositions();
    Row(" ", 1000, "0", "0");
    Lot(" ", 1000, "0");
    Open();
    Select("ZETA");
    Select(" ");
    EXPECT_EQ(CurrentSymbol(), "ZETA");
}

TEST_F(DailyTrackerScreen, MarksTheSelectedRowWhereverAPostingPutsIt)
{
    TwoPositions();
    Open();
    Select("ZETA");
    Post(Action::Buy, "ZETA", "500", "19"); // now the largest position
    EXPECT_EQ(Column("Symbol"), "ZETA ACME");
    EXPECT_EQ(MarkedSymbol(), "ZETA");
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(Cell("ZETA", "Shares"), "550.0000");
}

TEST_F(DailyTrackerScreen, StaysOnTheSelectedRowWhenPricesChange)
{
    TwoPositions();
    Open();
    Select("ZETA");
    State().ReloadDataGrid();
    EXPECT_EQ(MarkedSymbol(), "ZETA");
    EXPECT_EQ(State().AdodcStockHistory.Current().Symbol, "ZETA");
}

TEST_F(DailyTrackerScreen, ForgetsTheSelectionOfAnotherAccount)
{
    Open();
    Close();
    State().selection.CurrentSymbol = "GONE";
    State().screens.Show("frmDailyTracker");
    EXPECT_EQ(CurrentSymbol(), "");
}

// --- keys ---------------------------------------------------------------------------------------

TEST_F(DailyTrackerScreen, OpensQuoteSitesAndSettingsByKey)
{
    TwoPositions();
    run.AddScreen("frmQuoteServerUpdate");
    run.AddScreen("frmUserSetup");
    Open();
    QWidget *inGrid = Grid().CellTarget(0, 0).widget->parentWidget();
    QKeyEvent altQ(QEvent::KeyPress, Qt::Key_Q, Qt::AltModifier, "q");
    QApplication::sendEvent(inGrid, &altQ);
    EXPECT_TRUE(run.App().Host().Loaded("frmQuoteServerUpdate"));

    bool wasModal = false;
    run.WhenModal("frmUserSetup", [&] {
        wasModal = run.App().Host().Find("frmUserSetup")->isModal();
        run.App().Host().Unload("frmUserSetup");
    });
    QKeyEvent altS(QEvent::KeyPress, Qt::Key_S, Qt::AltModifier, "s");
    QApplication::sendEvent(inGrid, &altS);
    EXPECT_TRUE(wasModal);
}

TEST_F(DailyTrackerScreen, ShowsItsPopupOnARightClick)
{
    TwoPositions();
    Open();
    Grid().RightClickCurrentRow();
    QMenu *popup = run.App().MainWindow().Popup("popDailyTracker");
    EXPECT_TRUE(popup->isVisible());
    popup->close();
}
