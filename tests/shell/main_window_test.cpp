/// The main window: its commands, its status bar, the idle logoff.

#include "platform/command_groups.h"
#include "program/command_target.h"
#include "shell/command_table.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QImage>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QToolBar>

#include <chrono>
#include <map>
#include <set>

using namespace std::chrono_literals;

namespace
{

class MainWindow : public testing::Test
{
protected:
    MainWindow()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("ArgMaximize", "False");
    }
    /// An account with the idle logoff after this many minutes.
    void LaunchWithLogoff(int minutes)
    {
        run.GiveBalance(folder.SampleAccount(), "2026-03-02", 4);
        run.GiveSecurity(folder.SampleAccount(), 0, 1, minutes);
        run.App().Launch();
    }
    void AddChild(const QString &name, const QString &viewEntry, const QString &caption)
    {
        run.AddScreen(name, Placement::Child, viewEntry, caption);
    }
    QMdiSubWindow *Frame(const QString &form)
    {
        return qobject_cast<QMdiSubWindow *>(run.App().Host().Find(form)->parentWidget());
    }
    /// Three screens inside the main window.
    void LaunchWithThreeChildren()
    {
        AddChild("frmHistoryList", "mnuVWHistory", "Transaction History");
        AddChild("frmPurchaseList", "mnuVWPurchaseList", "Purchase Price List");
        AddChild("frmDailyProfitLoss", "mnuVWDailyProfitLoss", "Daily Profit and Loss");
        run.App().Launch();
        for (const char *entry : {"mnuVWHistory", "mnuVWPurchaseList", "mnuVWDailyProfitLoss"})
            run.Choose(entry);
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

/// A screen that carries popup entries out.
class TargetScreen : public Form, public CommandTarget
{
public:
    TargetScreen(Program &program, const QString &name, const QString &caption, QStringList &log)
        : Form(program, name, caption, Placement::Child), m_log(log)
    {}
    bool RunCommand(const QString &name) override
    {
        m_log << objectName() + ' ' + name;
        return name != QLatin1String("popDTNew");
    }

private:
    QStringList &m_log;
};

} // namespace

// --- the table of commands -----------------------------------------------------------------------

TEST(CommandTable, HasEachNameOnceAndItsParentBeforeIt)
{
    std::set<QString> seen;
    for (const Command &command : CommandTable()) {
        EXPECT_TRUE(command.Parent().isEmpty() || seen.contains(command.Parent())) << command.name;
        EXPECT_TRUE(seen.insert(command.Name()).second) << command.name;
    }
}

TEST(CommandTable, GivesEachMenuMnemonicsOfItsOwn)
{
    std::map<QString, std::set<QChar>> taken;
    for (const Command &command : CommandTable()) {
        const qsizetype at = command.Caption().indexOf('&');
        if (at < 0)
            continue;
        const QChar mnemonic = command.Caption().at(at + 1).toLower();
        EXPECT_TRUE(taken[command.Parent()].insert(mnemonic).second) << command.name;
    }
}

TEST(CommandTable, ForwardsToCommandsThatAreThere)
{
    for (const Command &command : CommandTable()) {
        if (command.verb != CommandVerb::Forward)
            continue;
        EXPECT_NE(FindCommand(command.Target()), nullptr) << command.name;
    }
}

TEST(CommandTable, NamesACommandWithoutMnemonicAndDots)
{
    EXPECT_EQ(PlainCaption("&Database Options..."), "Database Options");
    EXPECT_EQ(PlainCaption("&Summary (IRS Schedule D-1)"), "Summary (IRS Schedule D-1)");
}

TEST_F(MainWindow, ShowsEveryMenuEntryPopupAndButtonOfTheTable)
{
    for (const Command &command : CommandTable()) {
        if (command.kind == CommandKind::Separator)
            continue;
        const QAction *action = run.App().MainWindow().Action(command.Name());
        ASSERT_NE(action, nullptr) << command.name;
        EXPECT_EQ(action->text(), command.Caption());
        EXPECT_EQ(action->isEnabled(), command.Name() != "UndoLast") << command.name;
    }
    EXPECT_EQ(run.App().MainWindow().Popup("popDailyTracker")->actions().size(), 13);
    EXPECT_EQ(run.App().MainWindow().Toolbar()->actions().size(), 8);
}

TEST_F(MainWindow, FollowsTheStateOfItsCommands)
{
    QAction *entry = run.App().MainWindow().Action("popDTSplitMode");
    run.Commands().SetCaption("popDTSplitMode", "Undo Split");
    run.Commands().SetEnabled("popDTSplitMode", false);
    run.Commands().SetChecked("popDTSplitMode", true);
    EXPECT_EQ(entry->text(), "Undo Split");
    EXPECT_FALSE(entry->isEnabled());
    EXPECT_TRUE(entry->isChecked());
}

TEST_F(MainWindow, ReachesNoEntryBelowADisabledMenu)
{
    DisableMenusForSignOn(run.Commands());
    EXPECT_FALSE(CommandUsable(run.Commands(), "mnuVWHistory"));
    EXPECT_FALSE(CommandUsable(run.Commands(), "mnuFLBackup"));
    EXPECT_TRUE(CommandUsable(run.Commands(), "mnuFLExit"));
    EXPECT_FALSE(run.App().MainWindow().Action("mnuView")->isEnabled());
}

TEST_F(MainWindow, EnablesAllMenusUnlessARebuildRuns)
{
    DisableMenusForSignOn(run.Commands());
    EnableAllMenus(run.Commands(), true);
    EXPECT_FALSE(run.Commands().Enabled("mnuView"));
    EnableAllMenus(run.Commands(), false);
    EXPECT_TRUE(run.Commands().Enabled("mnuView"));
}

TEST_F(MainWindow, DisablesTheFileButtonsDuringAPriceUpdateAndTheServiceButtonsOnDemand)
{
    const auto enabled = [this] {
        QStringList names;
        for (const char *name :
             {"Connect", "New", "Open", "SaveAs", "UndoLast", "Setup", "Wizard", "SplitScreen"})
            if (run.Commands().Enabled(name))
                names << name;
        return names.join(' ');
    };
    run.Commands().SetEnabled("UndoLast", true); // a transaction was posted
    DisableFileButtons(run.Commands());
    EXPECT_EQ(enabled(), "Connect UndoLast Wizard SplitScreen");
    DisableServiceButtons(run.Commands());
    EXPECT_EQ(enabled(), "SplitScreen");
    EnableFileAndServiceButtons(run.Commands());
    EXPECT_EQ(enabled(), "Connect New Open SaveAs Setup Wizard SplitScreen");
}

TEST_F(MainWindow, ClearsTheMarksOfOneGroupAtATime)
{
    const QStringList marked = {"mnuEXSummary", "mnuIntLipper", "popDTChartIntraday",
                                "mnuChartPositions", "mnuWinCascade"};
    const auto left = [&] {
        QStringList names;
        for (const QString &name : marked)
            if (run.Commands().Checked(name))
                names << name;
        return names.join(' ');
    };
    for (const QString &name : marked)
        run.Commands().SetChecked(name, true);
    UncheckExcelMenuOptions(run.Commands());
    EXPECT_EQ(left(), "mnuIntLipper popDTChartIntraday mnuChartPositions mnuWinCascade");
    UncheckInternetMenuOptions(run.Commands());
    EXPECT_EQ(left(), "popDTChartIntraday mnuChartPositions mnuWinCascade");
    UncheckPopMenuOptions(run.Commands());
    EXPECT_EQ(left(), "mnuChartPositions mnuWinCascade");
    UncheckChartMenuOptions(run.Commands());
    EXPECT_EQ(left(), "mnuWinCascade");
    UncheckWinMenuOptions(run.Commands());
    EXPECT_EQ(left(), "");
}

// --- what the commands do ------------------------------------------------------------------------

TEST_F(MainWindow, ChecksTheViewEntryWhileItsScreenIsOpen)
{
    AddChild("frmHistoryList", "mnuVWHistory", "Transaction History");
    run.App().Launch();
    run.Choose("mnuVWHistory");
    EXPECT_TRUE(run.App().Host().Loaded("frmHistoryList"));
    EXPECT_TRUE(run.App().MainWindow().Action("mnuVWHistory")->isChecked());
    run.Choose("mnuVWHistory"); // brings it to the front; the mark stays
    EXPECT_TRUE(run.App().MainWindow().Action("mnuVWHistory")->isChecked());
    Frame("frmHistoryList")->close();
    EXPECT_FALSE(run.App().Host().Loaded("frmHistoryList"));
    EXPECT_FALSE(run.App().MainWindow().Action("mnuVWHistory")->isChecked());
}

TEST_F(MainWindow, BringsAnOpenScreenToTheFront)
{
    LaunchWithThreeChildren();
    EXPECT_EQ(run.App().Host().ActiveChild()->objectName(), "frmDailyProfitLoss");
    run.Choose("mnuVWHistory");
    EXPECT_EQ(run.App().Host().ActiveChild()->objectName(), "frmHistoryList");
    EXPECT_EQ(run.Loads().size(), 3);
}

TEST_F(MainWindow, SaysWhichScreenIsNotThereAndDoesNothingElse)
{
    run.App().Launch();
    run.App().CommandRunner().PostNotBuilt("frmTransactionUpdate");
    EXPECT_EQ(run.Panel(1), "Transaction Update is not built yet");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(MainWindow, OpensTheChartOfTheStartAnewWithAnotherAccount)
{
    run.SetOption("ChartScreen", "1");
    run.App().Launch();
    const Form *chart = run.App().Host().Find("frmChartScreen");
    EXPECT_TRUE(chart);
    run.boxes.files = {folder.AddAccount("Other.mdb")};
    run.Choose("mnuFLOpenExisting");
    EXPECT_TRUE(run.App().Host().Loaded("frmChartScreen"));
    EXPECT_NE(run.App().Host().Find("frmChartScreen"), chart);
    EXPECT_TRUE(run.Commands().Checked("mnuChartPositions"));
}

TEST_F(MainWindow, ShowsTheAccountInTheStatusBarAlsoWhenNoScreenComesUp)
{
    LaunchWithLogoff(15);
    EXPECT_EQ(run.Panel(2), "Logoff in: 15 minutes");
    EXPECT_EQ(run.Panel(3), "Last update: 2/27/2026");
}

TEST_F(MainWindow, AsksForASelectedSecurityBeforeTheCommandsThatNeedOne)
{
    run.App().Launch();
    const QString update = "Please select the security you want to update!";
    const QString chart = "No security has been selected, select one now to chart.";
    const QString print = "No security has been selected, select one now to print.";
    const struct
    {
        const char *command;
        QString message;
    } commands[] = {{"popDTEdit", update},
                    {"popDTChartIntraday", update},
                    {"popDTChartMapOfMarket", update},
                    {"mnuChartSelectedSecPL", chart},
                    {"mnuChartSelectedSecPerf", chart},
                    {"popDTChartPLSelectedSec", chart},
                    {"mnuEXDBSelectedSec", print}};
    for (const auto &each : commands) {
        run.boxes.boxes.clear();
        run.Choose(each.command);
        ASSERT_EQ(run.boxes.Texts(), QStringList(each.message)) << each.command;
        EXPECT_EQ(run.boxes.boxes[0].title, "Application Editor");
        EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Exclamation);
        EXPECT_EQ(run.Panel(1), "");
    }
}

TEST_F(MainWindow, MarksTheReportThatItsDialogReads)
{
    run.AddScreen("frmDateSelect");
    run.AddScreen("frmPortfolioSelect");
    run.App().Launch();
    run.Commands().SetChecked("mnuEXCostBasis", true);
    bool summaryAlone = false;
    run.WhenModal("frmDateSelect", [&] {
        summaryAlone =
            run.Commands().Checked("mnuEXSummary") && !run.Commands().Checked("mnuEXCostBasis");
        run.App().Host().Unload("frmDateSelect");
    });
    run.Choose("mnuEXSummary");
    EXPECT_TRUE(summaryAlone);
    run.WhenModal("frmPortfolioSelect", [&] { run.App().Host().Unload("frmPortfolioSelect"); });
    run.Choose("mnuEXPERFYearly");
    EXPECT_EQ(run.Loads(), QStringList({"frmDateSelect", "frmPortfolioSelect"}));
    EXPECT_TRUE(run.Commands().Checked("mnuEXPERFYearly"));
}

TEST_F(MainWindow, ReplacesTheChartThatIsOpen)
{
    AddChild("frmChartScreen", {}, "Chart");
    run.App().Launch();
    run.Choose("mnuChartPositions");
    run.Choose("mnuChartAssetAllocation");
    EXPECT_EQ(run.log,
              QStringList({"load frmChartScreen", "unload frmChartScreen", "load frmChartScreen"}));
    EXPECT_TRUE(run.Commands().Checked("mnuChartAssetAllocation"));
}

TEST_F(MainWindow, SendsPopupEntriesToTheirScreen)
{
    QStringList ran;
    run.App().Host().Register("frmDailyTracker", [&](Program &program) {
        return std::make_unique<TargetScreen>(program, "frmDailyTracker", "Daily Tracker", ran);
    });
    run.App().Launch();
    run.Choose("popDTClear");
    EXPECT_EQ(run.Panel(1), "Clear is not built yet"); // nobody there to do it
    run.App().Host().Show("frmDailyTracker");
    run.Choose("popDTClear");
    run.Choose("popDTUndoLast");
    run.Commands().SetEnabled("UndoLast", true);
    run.Choose("UndoLast");
    run.Choose("popDTNew");
    EXPECT_EQ(ran, QStringList({"frmDailyTracker popDTClear", "frmDailyTracker popDTUndoLast",
                                "frmDailyTracker popDTUndoLast", "frmDailyTracker popDTNew"}));
    EXPECT_EQ(run.Panel(1), "New is not built yet");
}

TEST_F(MainWindow, SplitsTheScreenInFrontByItsCaption)
{
    QStringList ran;
    const auto add = [&](const QString &name, const QString &caption) {
        run.App().Host().Register(name, [&ran, name, caption](Program &program) {
            return std::make_unique<TargetScreen>(program, name, caption, ran);
        });
    };
    add("frmHistoryList", "Transaction History of Historical Trackers");
    add("frmHistoricalPriceList", "Historical Price List");
    add("frmDailyTracker", "Daily Tracker");
    add("frmPurchaseList", "Purchase Price List");
    run.App().Launch();
    run.Choose("SplitScreen"); // with no screen at all
    for (const char *form :
         {"frmHistoryList", "frmHistoricalPriceList", "frmDailyTracker", "frmPurchaseList"}) {
        run.App().Host().Show(form);
        run.Choose("SplitScreen");
    }
    EXPECT_EQ(
        ran, QStringList({"frmHistoryList popHLSplitMode", "frmHistoricalPriceList popHPLSplitMode",
                          "frmDailyTracker popDTSplitMode"}));
}

TEST_F(MainWindow, SwitchesThePriceUpdateWithConnect)
{
    run.SetOption("WebPriceUpdate", "False");
    run.AddScreen("frmInternetTran", Placement::Hidden);
    run.App().Launch();
    run.Choose("Connect");
    EXPECT_TRUE(run.App().Host().Loaded("frmInternetTran"));
    run.State().priceUpdate.PriceUpdateActive = true; // as that form says of itself
    run.Choose("Connect");
    EXPECT_FALSE(run.App().Host().Loaded("frmInternetTran"));
}

TEST_F(MainWindow, TilesFromEdgeToEdgeInRowsAndInColumns)
{
    LaunchWithThreeChildren();
    const QSize area = run.App().MainWindow().Area()->viewport()->size();
    run.Choose("mnuWinHorizontally");
    int height = 0;
    for (const char *form : {"frmHistoryList", "frmPurchaseList", "frmDailyProfitLoss"}) {
        EXPECT_EQ(Frame(form)->width(), area.width());
        EXPECT_EQ(Frame(form)->y(), height);
        height += Frame(form)->height();
    }
    EXPECT_EQ(height, area.height());
    run.Choose("mnuWinTileVertical");
    int width = 0;
    for (const char *form : {"frmHistoryList", "frmPurchaseList", "frmDailyProfitLoss"}) {
        EXPECT_EQ(Frame(form)->height(), area.height());
        EXPECT_EQ(Frame(form)->x(), width);
        width += Frame(form)->width();
    }
    EXPECT_EQ(width, area.width());
    EXPECT_TRUE(run.Commands().Checked("mnuWinTileVertical"));
    EXPECT_FALSE(run.Commands().Checked("mnuWinHorizontally"));
}

TEST_F(MainWindow, CascadesWithEachTitleInView)
{
    LaunchWithThreeChildren();
    run.Choose("mnuWinCascade");
    std::set<std::pair<int, int>> corners;
    for (const char *form : {"frmHistoryList", "frmPurchaseList", "frmDailyProfitLoss"})
        corners.insert({Frame(form)->x(), Frame(form)->y()});
    EXPECT_EQ(corners.size(), 3u);
}

TEST_F(MainWindow, ArrangesNothingWithoutAComplaint)
{
    run.App().Launch();
    run.Choose("mnuWinCascade");
    run.Choose("mnuWinTileVertical");
    EXPECT_TRUE(run.Commands().Checked("mnuWinTileVertical"));
}

TEST_F(MainWindow, SaysWhenAHelpTopicIsNotThere)
{
    run.App().Launch();
    run.Choose("mnuHelpTopics");
    EXPECT_EQ(run.Panel(1), "The help topic AboutQuillon.htm was not found");
}

// --- opening another account ---------------------------------------------------------------------

TEST_F(MainWindow, OpensAnotherAccountUnderTheNameOfItsFile)
{
    const QString other = folder.AddAccount("Broker's Ünion X12.mdb");
    run.App().Launch();
    run.boxes.files = {other};
    run.Choose("mnuFLOpenExisting");
    EXPECT_EQ(run.State().settings.CurrentFilePath, other);
    EXPECT_EQ(run.SavedOption("AccountName"), "Broker's Ünion X12");
    EXPECT_EQ(run.App().MainWindow().Caption(), "Quillon - Broker's Ünion X12");
    EXPECT_FALSE(run.State().run.OpeningExisting);
    ASSERT_EQ(run.boxes.fileRequests.size(), 1u);
    EXPECT_EQ(run.boxes.fileRequests[0].title, "Open existing account");
    EXPECT_EQ(run.boxes.fileRequests[0].filter, "Tracker Databases (*.mdb)|*.mdb");
    EXPECT_EQ(run.boxes.fileRequests[0].initial, folder.Path() + "/*.mdb");
}

TEST_F(MainWindow, KeepsAMixedCaseExtensionInTheName)
{
    EXPECT_EQ(AccountNameOf("/home/ann/Broker.Mdb"), "Broker.Mdb");
    EXPECT_EQ(AccountNameOf("/home/ann/Broker.MDB"), "Broker");
    EXPECT_EQ(AccountNameOf("/home/ann.mdb/Old.mdb.mdb"), "Old");
}

TEST_F(MainWindow, RefusesEveryFileInAFolderCalledWebSite)
{
    const QString inside = folder.AddAccount("My WebSite/Broker.mdb");
    run.App().Launch();
    run.boxes.files = {inside};
    run.Choose("mnuFLOpenExisting");
    ASSERT_EQ(run.boxes.Texts(),
              QStringList("This is an invalid account database, please try again"));
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Exclamation);
    EXPECT_EQ(run.State().settings.AccountName, "Sample Portfolio");
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
}

TEST_F(MainWindow, KeepsTheAccountWhenTheFileDialogIsCancelled)
{
    run.App().Launch();
    run.boxes.files = {std::nullopt};
    run.Choose("Open");
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

// --- status bar ----------------------------------------------------------------------------------

TEST_F(MainWindow, ShowsMessageCountersAndLastUpdateInItsStatusBar)
{
    run.SetOption("WebPriceUpdate", "0");
    LaunchWithLogoff(15);
    run.State().priceUpdate.PriceUpdateActive = true;
    run.State().account.WebUpdateMinutes = Integer::FromWide(5);
    run.State().priceUpdate.MinutesSinceUpdate = Integer::FromWide(2);
    run.State().run.IdleMinutes = 3;
    run.State().services.status.Post("Sort completed");
    EXPECT_EQ(run.Panel(1), "Sort completed");
    EXPECT_EQ(run.Panel(2), "Logoff in: 12 minutes");
    EXPECT_EQ(run.Panel(3), "Last update: 2/27/2026");
    EXPECT_EQ(run.Panel(4), "ConnDisabled.bmp");
    EXPECT_EQ(run.Panel(5), "Update in: 3 minutes");
    const StatusPanels &panels = run.App().MainWindow().Status();
    EXPECT_TRUE(panels.PanelEnabled(2));
    EXPECT_TRUE(panels.PanelEnabled(5));
    run.State().services.status.Post("");
    EXPECT_EQ(run.Panel(1), "");
}

TEST_F(MainWindow, GreysTheCountersThatAreOff)
{
    run.SetOption("WebPriceUpdate", "0").App().Launch();
    EXPECT_EQ(run.Panel(2), "Logoff disabled");
    EXPECT_EQ(run.Panel(5), "Price update disabled");
    EXPECT_FALSE(run.App().MainWindow().Status().PanelEnabled(2));
    EXPECT_FALSE(run.App().MainWindow().Status().PanelEnabled(5));
}

TEST_F(MainWindow, ShowsANegativeNumberWhenAnUpdateIsOverdue)
{
    run.App().Launch();
    run.State().priceUpdate.PriceUpdateActive = true;
    run.State().account.WebUpdateMinutes = Integer::FromWide(5);
    run.State().priceUpdate.MinutesSinceUpdate = Integer::FromWide(7);
    run.State().services.status.Post("");
    EXPECT_EQ(run.Panel(5), "Update in: -2 minutes");
}

TEST_F(MainWindow, ShowsThePictureOfTheConnectionAndLeavesItInAnUnknownState)
{
    run.App().Launch();
    const char *const files[] = {"Connecting.bmp", "ConnStablished.bmp", "ConnDisabled.bmp",
                                 "ConnError.bmp"};
    for (int state = 1; state <= 4; ++state) {
        run.State().priceUpdate.ConnectionState = state;
        run.State().services.status.Post("");
        EXPECT_EQ(run.Panel(4), files[state - 1]);
    }
    run.State().priceUpdate.ConnectionState = 0;
    run.State().services.status.Post("");
    EXPECT_EQ(run.Panel(4), "ConnError.bmp");
}

TEST_F(MainWindow, ReadsEachPictureOfTheConnectionOnce)
{
    QImage square(16, 16, QImage::Format_RGB32);
    square.fill(Qt::gray);
    for (const char *file : {"/Connecting.bmp", "/ConnError.bmp"})
        ASSERT_TRUE(square.save(run.State().services.appPath + file));
    run.App().Launch();
    const auto picture = [&](int state) {
        run.State().priceUpdate.ConnectionState = state;
        run.State().services.status.Post("");
        for (const QLabel *panel : run.App().MainWindow().Status().findChildren<QLabel *>())
            if (!panel->pixmap().isNull())
                return panel->pixmap().cacheKey();
        return qint64(0);
    };
    const qint64 connecting = picture(1);
    const qint64 error = picture(4);
    EXPECT_NE(connecting, 0);
    EXPECT_NE(connecting, error);
    EXPECT_EQ(picture(1), connecting);
    EXPECT_EQ(picture(4), error);
}

// --- the idle logoff -----------------------------------------------------------------------------

TEST_F(MainWindow, EndsTheProcessAfterFifteenTicksWithoutAnAction)
{
    LaunchWithLogoff(15);
    const QString lastRun = run.SavedOption("LastRunDate");
    run.clock.Advance(14 * 65s);
    EXPECT_FALSE(run.App().Ended());
    EXPECT_EQ(run.Panel(2), "Logoff in: 1 minutes");
    run.clock.Advance(64s);
    EXPECT_FALSE(run.App().Ended());
    run.clock.Advance(1s);
    EXPECT_TRUE(run.App().Ended());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_EQ(run.SavedOption("LastRunDate"), lastRun); // nothing saved, nothing asked
    EXPECT_FALSE(run.State().databases.gConnAccount.IsOpen());
}

TEST_F(MainWindow, CountsTheIdleMinutesAnewAfterACommandAndAfterTheMouseOnTheToolbar)
{
    LaunchWithLogoff(15);
    run.clock.Advance(10 * 65s);
    run.Choose("mnuWinCascade");
    EXPECT_EQ(run.State().run.IdleMinutes, 0);
    run.clock.Advance(10 * 65s);
    EXPECT_EQ(run.State().run.IdleMinutes, 10);
    QWidget *toolbar = run.App().MainWindow().Toolbar();
    QMouseEvent move(QEvent::MouseMove, QPointF(3, 3), toolbar->mapToGlobal(QPointF(3, 3)),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(toolbar, &move);
    EXPECT_EQ(run.State().run.IdleMinutes, 0);
    EXPECT_FALSE(run.App().Ended());
}

TEST_F(MainWindow, NeverLogsOffAtALimitBelowTheRunningCount)
{
    LaunchWithLogoff(15);
    run.clock.Advance(10 * 65s);
    run.State().account.LogoffMinutes = 5;
    run.clock.Advance(100 * 65s);
    EXPECT_FALSE(run.App().Ended());
    EXPECT_EQ(run.Panel(2), "Logoff in: -105 minutes");
}

TEST_F(MainWindow, LogsOffInTheMiddleOfAWaitWithoutComingBack)
{
    LaunchWithLogoff(1);
    bool cameBack = false;
    EXPECT_FALSE(RunGuarded(run.State(), [&] {
        run.State().services.clock.Wait(70s);
        cameBack = true;
    }));
    EXPECT_TRUE(run.App().Ended());
    EXPECT_FALSE(cameBack);
}
