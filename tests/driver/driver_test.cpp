#include "driver/driver_run.h"

#include <QDir>
#include <QImage>
#include <QSettings>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace
{

// --- exit statuses -------------------------------------------------------------------------------

struct EndingCase
{
    const char *name;
    const char *script;
    int status;
    const char *reason; ///< part of what stands on standard error; empty: nothing does
};

class AScriptsEnd : public testing::TestWithParam<EndingCase>
{};

TEST_P(AScriptsEnd, IsToldByTheExitStatus)
{
    const DriverResult result = DriverRun().Run(GetParam().script);
    EXPECT_EQ(result.status, GetParam().status) << result.errors;
    if (*GetParam().reason)
        EXPECT_NE(result.errors.find(GetParam().reason), std::string::npos) << result.errors;
    else
        EXPECT_EQ(result.errors, "");
}

INSTANTIATE_TEST_SUITE_P(
    Endings, AScriptsEnd,
    testing::Values(
        EndingCase{"NothingToDo", "", 0, ""},
        EndingCase{"RunToItsEnd", "launch\nexpect loaded frmMDIMain = \"yes\"", 0, ""},
        EndingCase{"Quit", "launch\nquit\n", 0, ""},
        EndingCase{"Kill", "launch\nkill\nbogus\n", 0, ""},
        EndingCase{"AnExpectationFails", "launch\nexpect loaded frmMDIMain = \"no\"", 1,
                   "line 6: loaded frmMDIMain is \"yes\", expected \"no\""},
        EndingCase{"NoBoxWithThisText", "expect box \"overdue\"", 1, "no box holds \"overdue\""},
        EndingCase{"UnknownCommand", "launch\n\nbogus", 2, "line 7: no command \"bogus\""},
        EndingCase{"WrongNumberOfWords", "show", 2, "usage: show FORM.CONTROL"},
        EndingCase{"OpenQuote", "echo \"x", 2, "line 5: a double quote is not closed"},
        EndingCase{"UnknownForm", "launch\nshow frmBogus.txtX", 2, "no form \"frmBogus\""},
        EndingCase{"UnknownControl", "launch\nshow frmMDIMain.txtX", 2,
                   "no control \"frmMDIMain.txtX\""},
        EndingCase{"ControlWithoutForm", "launch\nshow txtX", 2, "is not form.control"},
        EndingCase{"FormNotLoaded", "launch\nshow frmPassword.txtLoginID", 1,
                   "frmPassword is not loaded"},
        EndingCase{"UnknownFormLoaded", "launch\nloaded frmBogus", 2, "no form \"frmBogus\""},
        EndingCase{"AFormThatIsNotOpen", "launch\nexpect loaded frmTipOfDay = \"no\"", 0, ""},
        EndingCase{"UnknownMenuEntry", "launch\nmenu mnuBogus", 2, "\"mnuBogus\""},
        EndingCase{"AMenuIsNoEntry", "launch\nmenu mnuFile", 2, "mnuFile is no menu entry"},
        EndingCase{"AnEntryIsNoButton", "launch\ntool mnuFLExit", 2, "is no toolbar button"},
        EndingCase{"DisabledButton", "launch\ntool UndoLast", 1, "UndoLast is disabled"},
        EndingCase{"UnknownKey", "launch\nkey Bogus", 2, "no key \"Bogus\""},
        EndingCase{"UnknownButton", "answer Maybe", 2, "no button \"Maybe\""},
        EndingCase{"UnknownPanel", "launch\nstatus 6", 2, "no panel \"6\""},
        EndingCase{"NoTime", "clock tomorrow", 2, "is no time"},
        EndingCase{"NoSeconds", "advance -1", 2, "is no number of seconds"},
        EndingCase{"NoColour", "color #12345", 2, "is no colour"},
        EndingCase{"ExpectationOfWhatPrintsNothing", "expect launch = \"x\"", 2, "prints nothing"},
        EndingCase{"BeforeTheLaunch", "caption frmMDIMain", 2, "not launched yet"},
        EndingCase{"AfterTheQuit", "launch\nquit\ncaption frmMDIMain", 1, "the program has ended"},
        EndingCase{"LaunchedTwice", "launch\nlaunch", 2, "running already"},
        EndingCase{"SettingsOfARunningProgram", "launch\nset Options NotifyDays 5", 2,
                   "before the program is launched"},
        EndingCase{"NoChart", "launch\nchart", 1, "no chart is shown"}),
    [](const auto &info) { return info.param.name; });

TEST(ACallOfTheDriver, WithoutAFolderOrScriptIsWrong)
{
    const DriverRun run;
    EXPECT_EQ(run.Call({}).status, 2);
    EXPECT_EQ(run.Call({"--app", run.folder.File("nowhere")}).status, 2);
    EXPECT_EQ(run.Call({"--app", run.folder.Path(), run.folder.File("none.drive")}).status, 2);
    EXPECT_EQ(run.Call({"--app", run.folder.Path(), "--bogus"}).status, 2);
    EXPECT_EQ(run.Call({"--app", run.folder.Path(), "--settings", "/nowhere/s.ini"}).status, 2);
}

TEST(ACallOfTheDriver, TakesAScriptFileAndARelativeFolder)
{
    const DriverRun run;
    const QString script = run.folder.AddFile("topic.drive", "echo \"Grüße\" 2\n");
    const QString relative = QDir::current().relativeFilePath(run.folder.Path());
    const DriverResult result = run.Call({"--app", relative, script});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "Grüße 2\n");
}

TEST(ACallOfTheDriver, MakesTheSettingsFileThatIsMissing)
{
    const DriverRun run;
    ASSERT_FALSE(QFileInfo::exists(run.folder.SettingsFile()));
    EXPECT_EQ(run.Run("launch\nquit\n").status, 0);
    EXPECT_TRUE(QFileInfo::exists(run.folder.SettingsFile()));
}

TEST(ACallOfTheDriver, LeavesTheUsersSettingsAloneWithoutASettingsFile)
{
    const DriverRun run;
    const DriverResult result = run.Call({"--app", run.folder.Path()},
                                         "set Options DailyTracker 0\nset Options ShowTipOfDay 0\n"
                                         "set Options WebPriceUpdate 0\nlaunch\nquit\nlaunch\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    const QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    EXPECT_FALSE(QFileInfo::exists(config + "/Quillon/Quillon.ini"));
}

TEST(ACallOfTheDriver, AnswersEachLineBeforeTheNextIsWritten)
{
    const DriverRun run;
    QProcess driver;
    driver.start(QStringLiteral(QUILLON_DRIVE), {"--app", run.folder.Path()});
    for (const QByteArray word : {"first", "second"}) {
        driver.write("echo " + word + "\n");
        ASSERT_TRUE(driver.waitForReadyRead(DriverRun::patience));
        EXPECT_EQ(driver.readAllStandardOutput(), word + "\n");
    }
    driver.closeWriteChannel();
    ASSERT_TRUE(driver.waitForFinished(DriverRun::patience));
    EXPECT_EQ(driver.exitCode(), 0);
}

// --- start and end of the program ----------------------------------------------------------------

TEST(TheProgramUnderAScript, IsLaunchedAnewAfterItsEnd)
{
    const DriverResult result = DriverRun().Run("launch\n"
                                                "quit\n"
                                                "expect loaded frmMDIMain = \"no\"\n"
                                                "launch\n"
                                                "caption frmMDIMain\n"
                                                "quit\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "Quillon - Sample Portfolio\n");
}

TEST(TheProgramUnderAScript, MovesTheClockByTheTwoAndAHalfSecondsOfItsSplash)
{
    for (const auto &[launched, lastRun] :
         {std::pair("23:59:57", "3/2/2026"), std::pair("23:59:58", "3/3/2026")}) {
        const DriverRun run;
        const DriverResult result =
            run.Run(QByteArray("clock \"2026-03-02 ") + launched + "\"\nlaunch\nanswer No\nquit\n");
        EXPECT_EQ(result.status, 0) << result.errors;
        QSettings settings(run.folder.SettingsFile(), QSettings::IniFormat);
        EXPECT_EQ(settings.value("Options/LastRunDate").toString().toStdString(), lastRun);
    }
}

TEST(TheProgramUnderAScript, FiresATimerWhenItFallsDueAndNotBefore)
{
    const DriverRun run;
    run.LogOffAfter(9);
    const DriverResult result = run.Run("launch\n"
                                        "advance 65\nstatus 2\n"
                                        "advance 64.999\nstatus 2\n"
                                        "advance 0.001\nstatus 2\n"
                                        "advance 260\nstatus 2\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "Logoff in: 8 minutes\nLogoff in: 8 minutes\n"
                             "Logoff in: 7 minutes\nLogoff in: 3 minutes\n");
}

TEST(TheProgramUnderAScript, HasEveryHourOfADayOnceWhereSummerTimeBeginsAndEnds)
{
    const DriverRun run;
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "America/New_York");
    const DriverResult result = run.Run("clock \"2026-03-08 02:30:00\"\nlaunch\n"
                                        "clock \"2026-11-01 00:30:00\"\nadvance 84600\n"
                                        "menu mnuEXDetailHistory\n"
                                        "show frmDateSelect.dtpSelectTo\n");
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "11/2/2026\n");
}

TEST(TheProgramUnderAScript, MayEndByItselfAndTheScriptGoesOn)
{
    const DriverRun run;
    run.LogOffAfter(2);
    const DriverResult result = run.Run("launch\n"
                                        "advance 130\n"
                                        "expect loaded frmMDIMain = \"no\"\n"
                                        "expect nobox\n"
                                        "echo over\n"
                                        "launch\n"
                                        "expect loaded frmMDIMain = \"yes\"\n"
                                        "advance 65\n"
                                        "expect status 2 = \"Logoff in: 1 minutes\"\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "over\n");
}

TEST(TheProgramUnderAScript, FiresNoTimerWhenTheClockIsSet)
{
    const DriverRun run;
    run.LogOffAfter(2);
    const DriverResult result = run.Run("launch\n"
                                        "clock \"2026-03-03 10:15:00\"\n"
                                        "expect loaded frmMDIMain = \"yes\"\n"
                                        "advance 65\n"
                                        "expect status 2 = \"Logoff in: 1 minutes\"\n");
    EXPECT_EQ(result.status, 0) << result.errors;
}

// --- modal forms ---------------------------------------------------------------------------------

class AModalForm : public testing::Test
{
protected:
    AModalForm() { run.Protect("jane", "secret", 15); }
    DriverRun run;
};

TEST_F(AModalForm, TakesTheCommandsBehindTheOneThatOpenedIt)
{
    const DriverResult result =
        run.Run("launch\n"
                "expect loaded frmPassword = \"yes\"\n"
                "type frmPassword.txtLoginID \"jane\"\n"
                "type frmPassword.txtPassword \"wrong\"\n"
                "click frmPassword.cmdLogin\n"
                "expect box \"invalid password\"\n"
                "expect loaded frmPassword = \"yes\"\n"
                "type frmPassword.txtPassword \"secret\"\n"
                "key Return\n"
                "expect loaded frmPassword = \"no\"\n"
                "expect enabled mnuView = \"yes\"\n"
                "expect status 2 = \"Logoff in: 15 minutes\"\n" // set once the launch had come back
                "expect nobox\n"
                "quit\n");
    EXPECT_EQ(result.status, 0) << result.errors;
}

TEST_F(AModalForm, IsClosedByItsFrame)
{
    const DriverResult result = run.Run("launch\n"
                                        "close frmPassword\n"
                                        "expect loaded frmPassword = \"no\"\n"
                                        "expect enabled mnuView = \"no\"\n"
                                        "menu mnuVWHistory\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("mnuVWHistory is disabled"), std::string::npos) << result.errors;
}

TEST_F(AModalForm, KeepsTheMenuOutOfReach)
{
    const DriverResult result = run.Run("launch\nmenu mnuFLCompactDBA\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("behind the modal form frmPassword"), std::string::npos)
        << result.errors;
}

TEST_F(AModalForm, IsNoObstacleToTheEndOfTheScript)
{
    EXPECT_EQ(run.Run("launch\n").status, 0);
    EXPECT_EQ(run.Run("launch\nkill\n").status, 0);
    EXPECT_EQ(run.Run("launch\nexpect loaded frmPassword = \"no\"\n").status, 1);
    EXPECT_EQ(run.Run("launch\nbogus\n").status, 2);
}

TEST_F(AModalForm, EndsWithTheProgram)
{
    const DriverResult result =
        run.Run("launch\n"
                "quit\n"
                "expect loaded frmPassword = \"no\"\n"
                "launch\n"
                "type frmPassword.txtLoginID \"jane\"\n"
                "type frmPassword.txtPassword \"secret\"\n"
                "click frmPassword.cmdLogin\n"
                "expect caption frmMDIMain = \"Quillon - Sample Portfolio\"\n"
                "quit\n");
    EXPECT_EQ(result.status, 0) << result.errors;
}

/// Behind the tracker an entry is open; the row chosen last has no type, so that the entry gives way to
/// the security screen as soon as it comes to the front.
TEST(AFormThatGivesWay, FailsTheCommandThatBroughtItToTheFront)
{
    const DriverRun run;
    run.folder.Execute(run.folder.SampleAccount(),
                       "INSERT INTO DailyTracker (Symbol, Name, TransDate, Time) VALUES "
                       "('ACME', 'Acme Corp', '2026-03-02', '09:00:00.000'), "
                       "('NEWCO', 'Newcomb Tools', '2026-03-02', '09:00:00.000')");
    run.folder.Execute(run.folder.File("ApplControl.xxx"),
                       "INSERT INTO SecurityDetail VALUES ('ACME', 'Acme Corp', 'Stock')");
    const QByteArray field = "frmTransactionUpdate.txtNumberOfShares";
    for (const QByteArray &command :
         {"focus " + field, "click " + field, "dblclick " + field, "type " + field + " 5"}) {
        const DriverResult result =
            run.Run("set Options DailyTracker 1\n"
                    "launch\n"
                    "rowdblclick frmDailyTracker.DataGridStock Symbol ACME\n"
                    "select frmDailyTracker.DataGridStock Symbol NEWCO\n" +
                    command +
                    "\n"
                    "expect box \"Security NEWCO does not have a valid type entry!\"\n"
                    "expect loaded frmTransactionUpdate = \"no\"\n"
                    "close frmSecurityUpdate\n"
                    "echo \"not reached\"\n");
        EXPECT_EQ(result.status, 1) << command.constData();
        EXPECT_EQ(result.errors, "line 9: frmTransactionUpdate.txtNumberOfShares cannot be used: "
                                 "its form closed as it came to the front\n");
        EXPECT_EQ(result.output, "");
    }
}

// --- boxes ---------------------------------------------------------------------------------------

class AQuestion : public testing::Test
{
protected:
    /// The exit sequence asks for a backup: the last one is long ago.
    const QByteArray due = "set Options LastBackup 1/1/2026\n"
                           "set Options LastNotify 1/1/2026\n"
                           "launch\n";
    DriverRun run;
};

TEST_F(AQuestion, IsAnsweredAndRecordedWordForWord)
{
    const DriverResult result = run.Run(due + "answer No\nquit\nboxes\nboxes\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "Quillon Editor\t36\tLast backup was done 60 days ago. A backup is "
                             "recommended!\\nStart the backup procedure?\tNo\n");
}

TEST_F(AQuestion, WithoutAnAnswerEndsTheScriptWithItsText)
{
    const DriverResult result = run.Run(due + "quit\necho never\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("line 8: "), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("Start the backup procedure?"), std::string::npos);
    EXPECT_EQ(result.output, "");
}

TEST_F(AQuestion, IsAnUnmatchedBoxUntilItIsExpected)
{
    EXPECT_EQ(run.Run(due + "answer No\nquit\nexpect nobox\n").status, 1);
    EXPECT_EQ(
        run.Run(due + "answer No\nquit\nexpect box \"Start the backup\"\nexpect nobox\n").status,
        0);
}

// --- reading -------------------------------------------------------------------------------------

TEST(TheEyes, CompareSeveralLines)
{
    const DriverResult result = DriverRun().Run("expect echo \"a\\nb\" = \"a\\nb\"\n");
    EXPECT_EQ(result.status, 0) << result.errors;
}

TEST(TheEyes, ReadTheStatusBarPanelByPanel)
{
    const DriverResult result = DriverRun().Run("launch\n"
                                                "expect status 2 = \"Logoff disabled\"\n"
                                                "expect status 4 = \"ConnDisabled.bmp\"\n"
                                                "expect status 5 = \"Price update disabled\"\n"
                                                "status\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 5);
}

TEST(TheEyes, TakeAPictureOfTheWholeWindow)
{
    const DriverRun run;
    const QString picture = run.folder.File("all.png");
    const DriverResult result = run.Run("launch\nshot frmMDIMain \"" + picture.toUtf8() + "\"\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(QImage(picture).size(), QSize(1280, 800));
}

TEST(TheEyes, TakeAPictureOfAFormThatIsUpDuringACommand)
{
    const DriverRun run;
    const QByteArray picture = run.folder.File("about.png").toUtf8();
    const DriverResult result = run.Run("launch\n"
                                        "shotwhile frmAbout.lblVersion \"Version 6.0.18\" \"" +
                                        picture +
                                        "\" menu mnuHelpAbout\n"
                                        "close frmAbout\n"
                                        "expect loaded frmAbout = \"no\"\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_FALSE(QImage(QString::fromUtf8(picture)).isNull());
}

TEST(TheEyes, FailWhenTheFormDidNotShowTheTextDuringTheCommand)
{
    const DriverResult result =
        DriverRun().Run("launch\nshotwhile frmAbout.lblVersion \"Version 1\" a.png advance 5\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("frmAbout.lblVersion did not show \"Version 1\" meanwhile"),
              std::string::npos)
        << result.errors;
    EXPECT_EQ(DriverRun().Run("launch\nshotwhile frmAbout.lblVersion x a.png fly\n").status, 2);
}

TEST(TheEyes, TellThatTheFormThatCameUpHasNoSuchControl)
{
    const DriverResult result =
        DriverRun().Run("launch\nshotwhile frmAbout.lblNone x a.png menu mnuHelpAbout\n"
                        "close frmAbout\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.errors.find("no control \"frmAbout.lblNone\""), std::string::npos)
        << result.errors;
}

} // namespace
