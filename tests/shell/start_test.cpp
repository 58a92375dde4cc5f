/// From the first instruction to the idle main window, and an account coming up.

#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QDir>

#include <QFile>
#include <QLineEdit>

namespace
{

const char *const TenMenus[] = {
    "mnuFLNew", "mnuFLOpenExisting", "mnuFLSaveAs", "mnuFLUserSetup", "mnuFLDatabaseOptions",
    "mnuView",  "mnuExcel",          "mnuCharts",   "mnuInternet",    "mnuWindow"};

class Start : public testing::Test
{
protected:
    Start() { run.SetOption("ShowTipOfDay", "0"); }
    /// Answers the sign-on when it comes up: types both texts and presses a button.
    void SignOnWith(const QString &login, const QString &password, const QString &button)
    {
        run.WhenModal("frmPassword", [=, this] {
            run.Control<QLineEdit>("frmPassword", "txtLoginID")->setText(login);
            run.Control<QLineEdit>("frmPassword", "txtPassword")->setText(password);
            run.Control<QPushButton>("frmPassword", button)->click();
        });
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

QByteArray Content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

} // namespace

TEST_F(Start, BringsTheMainWindowUpOnTheSampleAccount)
{
    EXPECT_TRUE(run.App().Launch());
    EXPECT_TRUE(run.App().MainWindow().isVisible());
    EXPECT_EQ(run.App().MainWindow().Caption(), "Quillon - Sample Portfolio");
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_TRUE(run.State().databases.gConnHistPrices.IsOpen());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(Start, ShowsTheSplashForTwoAndAHalfSeconds)
{
    run.App().Launch();
    EXPECT_EQ(run.clock.Now(), QDateTime(QDate(2026, 3, 2), QTime(10, 15, 2, 500)));
    EXPECT_FALSE(run.App().Host().Loaded("frmSplash"));
}

TEST_F(Start, ClearsTheDateRangeOfTheLists)
{
    run.State().run.ListDateFrom = run.State().run.ListDateTo = QDate(2025, 12, 31);
    run.App().Launch();
    EXPECT_EQ(run.State().run.ListDateFrom, QDate(1900, 1, 1));
    EXPECT_EQ(run.State().run.ListDateTo, QDate(1900, 1, 1));
}

TEST_F(Start, OpensTheScreensOfTheSettingsInTheirOrder)
{
    for (const char *key : {"PurchaseList", "DailyProfitLoss", "HistoryList", "ChartScreen",
                            "BrowserScreen", "HistoricalPriceList", "ShowTipOfDay"})
        run.SetOption(key, "1");
    run.AddStartupScreens();
    run.App().Launch();
    EXPECT_EQ(run.Loads(), QStringList({"frmDailyTracker", "frmInternetTran", "frmPurchaseList",
                                        "frmDailyProfitLoss", "frmHistoryList", "frmChartScreen",
                                        "frmWebBrowser", "frmHistoricalPriceList", "frmTipOfDay"}));
}

TEST_F(Start, OpensTheTrackerAloneOnAFirstRunAndMaximized)
{
    run.SetOption("ShowTipOfDay", "1").AddStartupScreens();
    run.App().Launch();
    EXPECT_EQ(run.Loads(), QStringList({"frmDailyTracker", "frmInternetTran", "frmTipOfDay"}));
    EXPECT_TRUE(run.App().Host().ActiveChild()->parentWidget()->isMaximized());
}

TEST_F(Start, LoadsNoPriceCycleWhenItIsSwitchedOff)
{
    run.SetOption("WebPriceUpdate", "False");
    run.AddStartupScreens();
    run.App().Launch();
    EXPECT_FALSE(run.Loads().contains("frmInternetTran"));
}

TEST_F(Start, LoadsNoPriceCycleDuringARebuild)
{
    run.AddStartupScreens();
    run.State().entry.RebuildRunning = true;
    run.App().Launch();
    EXPECT_FALSE(run.Loads().contains("frmInternetTran"));
}

TEST_F(Start, ShowsNoTipWhenTipsAreSwitchedOff)
{
    run.AddStartupScreens();
    run.App().Launch();
    EXPECT_FALSE(run.Loads().contains("frmTipOfDay"));
}

TEST_F(Start, SaysNothingOfItsOwn)
{
    run.SetOption("DailyTracker", "0").SetOption("WebPriceUpdate", "0").App().Launch();
    EXPECT_EQ(run.Panel(1), "");
    EXPECT_EQ(run.Panel(5), "Price update disabled");
    EXPECT_EQ(run.State().priceUpdate.ConnectionState, 3);
}

TEST_F(Start, DisablesUndoLastInAnAccountThatHasJustBeenOpened)
{
    run.App().Launch();
    EXPECT_FALSE(run.Commands().Enabled("UndoLast"));
    EXPECT_TRUE(run.Commands().Enabled("Wizard"));
}

TEST_F(Start, RunsTheIdleLogoffOnlyForAnAccountThatAsksForIt)
{
    run.App().Launch();
    EXPECT_FALSE(run.State().tmrLogoff->Enabled());
    run.Renew();
    run.GiveSecurity(folder.SampleAccount(), 0, 1, 15);
    run.App().Launch();
    EXPECT_TRUE(run.State().tmrLogoff->Enabled());
}

TEST_F(Start, EndsWithAMessageWhenTheSettingsCannotBeRead)
{
    folder.AddFile("settings.ini", "no settings at all\n");
    run.Renew();
    EXPECT_FALSE(run.App().Launch());
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].text,
              "An error has occured obtaining information from the Registry \n"
              "the application will be terminated\n"
              "Error number 5\nDescription: Not a settings file: " +
                  folder.SettingsFile());
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Stop);
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_TRUE(run.App().Ended());
}

TEST_F(Start, NamesSettingsThatCannotBeReadInTheStatusBar)
{
    run.SetOption("NotifyDays", "often").Set("Colors", "ChartBackRed", "256");
    run.SetOption("DailyTracker", "0").SetOption("WebPriceUpdate", "0");
    EXPECT_TRUE(run.App().Launch());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_EQ(run.Panel(1), "Settings that cannot be read have their default: NotifyDays, "
                            "ChartBackRed.");
    EXPECT_EQ(run.State().settings.NotifyDays, 3);
    run.App().Exit();
    EXPECT_EQ(run.SavedOption("NotifyDays"), "3");
}

TEST_F(Start, CountsADayOfUseOnceADay)
{
    run.GiveBalance(folder.SampleAccount(), "2026-03-02", 4);
    run.App().Launch();
    EXPECT_EQ(run.State().account.ElapsedDays.Value(), 4);
}

// --- a shared file that does not open -------------------------------------------------------------

class DamagedSharedFile : public Start
{
protected:
    DamagedSharedFile() { run.SetOption("DailyTracker", "0").SetOption("WebPriceUpdate", "0"); }
    QByteArray Bytes(const char *name) const
    {
        QFile file(folder.File(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(not there)");
    }
};

TEST_F(DamagedSharedFile, IsReplacedByAFreshOneFromTheTemplate)
{
    folder.AddFile("HistPrices.mdb", "no database");
    run.boxes.Prepare("No: begin with a fresh one from the template", Answer::No);
    EXPECT_TRUE(run.App().Launch());
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_TRUE(run.boxes.boxes[0].text.startsWith("Quillon cannot open the file\n" +
                                                   folder.File("HistPrices.mdb") +
                                                   "\nThe file is damaged. ("))
        << qPrintable(run.boxes.boxes[0].text);
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::YesNoCancel + Box::Exclamation);
    EXPECT_TRUE(run.State().databases.gConnHistPrices.IsOpen());
    EXPECT_EQ(Bytes("HistPrices damaged.mdb"), "no database");
}

TEST_F(DamagedSharedFile, IsBroughtBackFromABackup)
{
    const QString backup = folder.File("stick/Quillon Backup/Quillon");
    QDir().mkpath(backup);
    QFile::copy(folder.File("ApplControl.xxx"), backup + "/ApplControl.mdb");
    folder.Execute(backup + "/ApplControl.mdb",
                   "INSERT INTO SecurityDetail (Symbol) VALUES ('KEPT')");
    folder.AddFile("ApplControl.mdb", "no database");
    QDir().mkpath(folder.File("empty"));
    run.boxes.Prepare("Yes: bring the file back from a backup", Answer::Yes);
    run.boxes.Prepare("Yes: bring the file back from a backup", Answer::Yes);
    run.boxes.files = {folder.File("empty"), folder.File("stick")};
    EXPECT_TRUE(run.App().Launch());
    ASSERT_EQ(run.boxes.boxes.size(), 3u);
    EXPECT_EQ(run.boxes.boxes[1].text,
              "There is no backup of ApplControl.mdb in\n" + folder.File("empty"));
    Statement row =
        run.State().databases.gConnApplControl.Prepare("SELECT Symbol FROM SecurityDetail");
    ASSERT_TRUE(row.Step());
    EXPECT_EQ(row.Text(0), "KEPT");
}

TEST_F(DamagedSharedFile, StaysWhenTheUserQuits)
{
    folder.AddFile("WebSites.mdb", "no database"); // there is no template for it here
    run.boxes.Prepare("No: quit, and change nothing", Answer::No);
    EXPECT_FALSE(run.App().Launch());
    EXPECT_TRUE(run.App().Ended());
    ASSERT_EQ(run.boxes.boxes.size(), 2u);
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::YesNo + Box::Exclamation);
    EXPECT_TRUE(run.boxes.boxes[1].text.startsWith(
        "An error has occured connecting to the websites database (WebSites.mdb).\n"
        "Please restore from backup.\nError number "));
    EXPECT_EQ(Bytes("WebSites.mdb"), "no database");
}

// --- sign-on -------------------------------------------------------------------------------------

TEST_F(Start, OpensAProtectedAccountAfterACorrectSignOn)
{
    run.GiveSecurity(folder.SampleAccount(), 1, 0, 15);
    run.AddStartupScreens();
    SignOnWith("Ann", "secret", "cmdLogin");
    run.App().Launch();
    EXPECT_FALSE(run.State().run.SignOnCancelled);
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
}

TEST_F(Start, LeavesTheMainWindowWithTenMenusDisabledAndNoTipWhenTheSignOnIsCancelled)
{
    run.SetOption("ShowTipOfDay", "1");
    run.GiveSecurity(folder.SampleAccount(), 1, 0, 15);
    run.AddStartupScreens();
    SignOnWith("Ann", "secret", "cmdCancel");
    EXPECT_TRUE(run.App().Launch());
    EXPECT_TRUE(run.App().MainWindow().isVisible());
    for (const char *name : TenMenus)
        EXPECT_FALSE(run.Commands().Enabled(name)) << name;
    for (const char *name :
         {"mnuFile", "mnuHelp", "mnuFLExit", "mnuFLCompactDBA", "mnuFLScreenPrint", "mnuHelpAbout"})
        EXPECT_TRUE(run.Commands().Enabled(name)) << name;
    EXPECT_EQ(run.log, QStringList()); // no tracker, no price cycle, no tip
}

TEST_F(Start, LetsNoToolbarButtonReachTheAccountAfterACancelledSignOn)
{
    run.GiveSecurity(folder.SampleAccount(), 1, 0, 15);
    run.AddScreen("frmUserSetup");
    SignOnWith("", "", "cmdCancel");
    run.App().Launch();
    const QString status = run.Panel(1);
    for (const char *button : {"Connect", "Setup", "SaveAs", "Wizard", "UndoLast", "SplitScreen"}) {
        EXPECT_FALSE(run.Commands().Enabled(button)) << button;
        run.Choose(button);
    }
    EXPECT_EQ(run.log, QStringList());
    EXPECT_EQ(run.boxes.Texts(), QStringList()); // the rebuild did not ask
    EXPECT_EQ(run.Panel(1), status);
}

TEST_F(Start, EnablesAllMenusAndButtonsAgainForTheNextAccount)
{
    run.GiveSecurity(folder.SampleAccount(), 1, 0, 15);
    const QString other = folder.AddAccount("Other.mdb");
    run.GiveSecurity(other, 0, 0, 15);
    SignOnWith("", "", "cmdCancel");
    run.App().Launch();
    run.boxes.files = {other};
    run.Choose("Open");
    for (const char *name : TenMenus)
        EXPECT_TRUE(run.Commands().Enabled(name)) << name;
    for (const char *button : {"Connect", "SaveAs", "Setup", "Wizard", "SplitScreen"})
        EXPECT_TRUE(run.Commands().Enabled(button)) << button;
}

// --- an account named at the start ---------------------------------------------------------------

TEST_F(Start, OpensTheAccountNamedInPlaceOfTheLastOne)
{
    run.State().run.AccountToOpen = folder.AddAccount("Broker X12.mdb");
    EXPECT_TRUE(run.App().Launch());
    EXPECT_EQ(run.App().MainWindow().Caption(), "Quillon - Broker X12");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    run.App().Exit();
    EXPECT_EQ(run.SavedOption("CurrentFilePath"), folder.File("Broker X12.mdb"));
    EXPECT_EQ(run.SavedOption("AccountName"), "Broker X12");
}

TEST_F(Start, TellsThatTheAccountNamedIsNotThereAndMakesNone)
{
    run.State().run.AccountToOpen = folder.File("Gone.mdb");
    run.boxes.files = {folder.SampleAccount()};
    EXPECT_TRUE(run.App().Launch());
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_TRUE(
        run.boxes.boxes[0].text.startsWith("The database Quillon is trying to open is invalid!\n"));
    EXPECT_FALSE(QFile::exists(folder.File("Gone.mdb")));
    EXPECT_EQ(run.State().settings.AccountName, "Sample Portfolio");
}

// --- an account that is none ---------------------------------------------------------------------

TEST_F(Start, AsksForAnotherFileUntilOneIsAnAccount)
{
    const QString broken = folder.AddFile("Broken.mdb", "this is a letter, not an account");
    run.SetOption("CurrentFilePath", broken).SetOption("AccountName", "Broken");
    const QString good = folder.AddAccount("Good.mdb");
    // Cancelled, refused by its name, no account, and at last one.
    run.boxes.files = {std::nullopt, folder.File("ApplControl.xxx"), broken, good};
    EXPECT_TRUE(run.App().Launch());
    const QString invalid = "The database Quillon is trying to open is invalid!\n"
                            "Please open a valid database for this application.\n"
                            "Error number -2147467259\nDescription: ";
    const QStringList texts = run.boxes.Texts();
    ASSERT_EQ(texts.size(), 5);
    EXPECT_TRUE(texts[0].startsWith(invalid)) << qPrintable(texts[0]);
    EXPECT_TRUE(texts[1].startsWith(invalid));
    EXPECT_EQ(texts[2], "This is an invalid account database, please try again");
    EXPECT_TRUE(texts[3].startsWith(invalid));
    EXPECT_TRUE(texts[4].startsWith(invalid));
    EXPECT_EQ(run.State().settings.AccountName, "Good");
    EXPECT_FALSE(run.State().run.AccountInvalid);
    EXPECT_EQ(Content(broken), "this is a letter, not an account");
}

TEST_F(Start, AsksForAnotherFileWhenTheAccountIsGone)
{
    const QString good = folder.AddAccount("Good.mdb");
    run.SetOption("CurrentFilePath", folder.File("Gone.mdb"));
    run.boxes.files = {good};
    EXPECT_TRUE(run.App().Launch());
    EXPECT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_FALSE(QFile::exists(folder.File("Gone.mdb")));
}
