/// The way out: reminders, the moving average, what is saved, and what is not.

#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace
{

const char *const FirstForm = "You've done more transactions today than usual. \n"
                              "A backup is recommended! Start Backup procedure?";

class Exit : public testing::Test
{
protected:
    Exit()
    {
        run.GiveBalance(folder.SampleAccount(), "2026-03-02", 4);
        run.SetOption("ShowTipOfDay", "0").SetOption("CheckCompact", "0");
    }
    /// Last backup and last reminder on these days.
    void LastTimes(const QString &backup, const QString &notify)
    {
        run.SetOption("LastBackup", backup).SetOption("LastNotify", notify);
    }
    /// Launches, enters this many transactions and leaves; whether the program ended.
    bool LaunchAndLeave(int transactionsToday)
    {
        run.App().Launch();
        run.State().totals.TransactionsToday = transactionsToday;
        run.Choose("mnuFLExit");
        return run.App().Ended();
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(Exit, LeavesTheAverageAtTenWithoutATransaction)
{
    EXPECT_TRUE(LaunchAndLeave(0));
    EXPECT_EQ(run.SavedOption("AverageTrans"), "10");
}

TEST_F(Exit, RemindsAfterTwelveTransactionsAndMovesTheAverageToEleven)
{
    LastTimes("2/27/2026", "2/27/2026");
    run.boxes.Prepare("more transactions today", Answer::No);
    EXPECT_TRUE(LaunchAndLeave(12));
    ASSERT_EQ(run.boxes.Texts(), QStringList(FirstForm));
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::YesNo + Box::Question);
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_EQ(run.SavedOption("AverageTrans"), "11"); // (10 + 12) / 2
}

struct Average
{
    const char *name;
    int average, today, expected;
};
class MovingAverage : public Exit, public testing::WithParamInterface<Average>
{};
TEST_P(MovingAverage, RoundsHalvesToTheNearestEvenNumber)
{
    run.SetOption("AverageTrans", QString::number(GetParam().average));
    EXPECT_TRUE(LaunchAndLeave(GetParam().today));
    EXPECT_EQ(run.SavedOption("AverageTrans"), QString::number(GetParam().expected));
}
INSTANTIATE_TEST_SUITE_P(Each, MovingAverage,
                         testing::Values(Average{"Down", 10, 1, 6},     // 5.5
                                         Average{"HalfDown", 10, 3, 6}, // 6.5
                                         Average{"HalfUp", 10, 5, 8},   // 7.5
                                         Average{"Whole", 10, 4, 7}),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(Exit, DoesNotRemindOnADayWithABackup)
{
    LastTimes("3/2/2026", "2/1/2026");
    EXPECT_TRUE(LaunchAndLeave(50));
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(Exit, DoesNotRemindASecondTimeOnOneDay)
{
    LastTimes("2/1/2026", "2/1/2026");
    run.boxes.Prepare("Last backup was done", Answer::No);
    EXPECT_TRUE(LaunchAndLeave(0));
    EXPECT_EQ(run.SavedOption("LastNotify"), "3/2/2026");
    run.Renew();
    EXPECT_TRUE(LaunchAndLeave(50));
    EXPECT_EQ(run.boxes.boxes.size(), 1u);
}

TEST_F(Exit, CountsFromTheLastReminderAndNamesTheDaysSinceTheLastBackup)
{
    LastTimes("1/1/2026", "2/27/2026"); // three days since the reminder, sixty since the backup
    run.boxes.Prepare("Last backup was done", Answer::No);
    EXPECT_TRUE(LaunchAndLeave(0));
    EXPECT_EQ(run.boxes.Texts(),
              QStringList("Last backup was done 60 days ago. A backup is recommended!\n"
                          "Start the backup procedure?"));
}

TEST_F(Exit, DoesNotRemindBeforeTheDaysHavePassed)
{
    LastTimes("1/1/2026", "2/28/2026"); // two days, of three
    EXPECT_TRUE(LaunchAndLeave(0));
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(Exit, RemindsByDaysWhenTheDayWasNotBusy)
{
    LastTimes("1/1/2026", "1/1/2026");
    run.boxes.Prepare("Last backup was done", Answer::No);
    EXPECT_TRUE(LaunchAndLeave(10)); // as many as usual is not more than usual
    EXPECT_EQ(run.boxes.boxes.size(), 1u);
}

TEST_F(Exit, RemindsOfNothingWhenRemindersAreSwitchedOff)
{
    LastTimes("1/1/2026", "1/1/2026");
    run.SetOption("CheckAverage", "0").SetOption("CheckNotify", "0");
    EXPECT_TRUE(LaunchAndLeave(50));
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(Exit, StaysForTheBackupTheUserAskedForWithTheFilesClosed)
{
    LastTimes("1/1/2026", "1/1/2026");
    run.AddStartupScreens();
    run.AddScreen("frmBackupRestore");
    run.boxes.Prepare("Last backup was done", Answer::Yes);
    EXPECT_FALSE(LaunchAndLeave(0));
    EXPECT_TRUE(run.App().Host().Loaded("frmBackupRestore"));
    EXPECT_EQ(run.State().run.BackupMode, "Backup");
    EXPECT_TRUE(run.State().run.ExitInProgress);
    EXPECT_FALSE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_FALSE(run.App().Host().Loaded("frmDailyTracker"));
}

TEST_F(Exit, SavesTheSettingsAndTheDayOfTheRun)
{
    EXPECT_TRUE(LaunchAndLeave(0));
    EXPECT_EQ(run.SavedOption("LastRunDate"), "3/2/2026");
    EXPECT_EQ(run.timesEnded, 1);
    EXPECT_FALSE(run.State().databases.gConnWebSites.IsOpen());
}

TEST_F(Exit, RefusesToLeaveAnAccountCalledEmptyAndSavesNothing)
{
    run.SetOption("CurrentFilePath", folder.AddAccount("Empty.mdb"))
        .SetOption("AccountName", "Empty")
        .SetOption("LastRunDate", "2/1/2026");
    EXPECT_FALSE(LaunchAndLeave(12));
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].text, "Please create a name for this account using \n"
                                       "the 'Save as' option from the 'File' menu.\n"
                                       "The name should be the same as the one you use with \n"
                                       "your broker. As an example: Fidelity X12-34567.");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Information);
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_TRUE(run.App().MainWindow().isVisible());
    EXPECT_EQ(run.SavedOption("LastRunDate"), "2/1/2026");
    EXPECT_EQ(run.State().settings.AverageTrans, 10);
}

TEST_F(Exit, ThatWasRefusedLeavesTheProgramAsItIs)
{
    run.SetOption("CurrentFilePath", folder.AddAccount("Empty.mdb"))
        .SetOption("AccountName", "Empty");
    EXPECT_FALSE(LaunchAndLeave(0));
    EXPECT_TRUE(run.State().run.ExitInProgress);
    EXPECT_FALSE(run.State().run.ProgramClosing); // a price cycle would end the program
    run.boxes.files = {folder.File("Broker.mdb")};
    run.Choose("mnuFLSaveAs");
    run.Choose("mnuFLExit");
    EXPECT_TRUE(run.State().run.ProgramClosing);
    EXPECT_TRUE(run.App().Ended());
}

TEST_F(Exit, OfTheWindowsOwnCloseButtonIsTheSame)
{
    run.App().Launch();
    run.App().MainWindow().close();
    EXPECT_TRUE(run.App().Ended());
    EXPECT_FALSE(run.App().MainWindow().isVisible());
    EXPECT_EQ(run.SavedOption("LastRunDate"), "3/2/2026");
}

TEST_F(Exit, ClosesTheScreensInTheirOrder)
{
    for (const char *key :
         {"PurchaseList", "DailyProfitLoss", "HistoryList", "ChartScreen", "HistoricalPriceList"})
        run.SetOption(key, "1");
    run.AddStartupScreens();
    EXPECT_TRUE(LaunchAndLeave(0));
    EXPECT_EQ(run.Unloads(),
              QStringList({"frmHistoryList", "frmHistoricalPriceList", "frmPurchaseList",
                           "frmDailyTracker", "frmDailyProfitLoss", "frmChartScreen",
                           "frmInternetTran"}));
}

TEST_F(Exit, KeepsTheEntryScreenOfARebuild)
{
    run.AddScreen("frmTransactionUpdate", Placement::OnTop);
    run.App().Launch();
    run.App().Host().Show("frmTransactionUpdate");
    run.State().entry.RebuildRunning = true;
    EXPECT_TRUE(run.State().accountRoutines->CloseAllScreens());
    EXPECT_TRUE(run.App().Host().Loaded("frmTransactionUpdate"));
    run.State().entry.RebuildRunning = false;
    EXPECT_TRUE(run.State().accountRoutines->CloseAllScreens());
    EXPECT_FALSE(run.App().Host().Loaded("frmTransactionUpdate"));
}

TEST_F(Exit, CompactsWhenDueAndCountsTheDaysAnew)
{
    folder.Execute(folder.SampleAccount(), "INSERT INTO History (Symbol, Description, Shares) "
                                           "VALUES ('ACME', 'Bought', 0)");
    run.SetOption("CheckCompact", "1").SetOption("CompactDays", "4");
    run.App().Launch();
    run.Choose("mnuFLExit");
    EXPECT_TRUE(run.App().Ended());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_EQ(run.State().run.BackupMode, "AutoCompact");
    EXPECT_EQ(folder.Value(folder.SampleAccount(), "SELECT count(*) FROM History"), "0");
    EXPECT_EQ(folder.Value(folder.SampleAccount(),
                           "SELECT Field07 FROM DescriptiveTable WHERE TableName = 'Balance'"),
              "1.0");
}

TEST_F(Exit, DoesNotCompactBeforeItsDays)
{
    run.SetOption("CheckCompact", "1").SetOption("CompactDays", "5"); // four days of use, of five
    run.App().Launch();
    run.Choose("mnuFLExit");
    EXPECT_TRUE(run.App().Ended());
    EXPECT_EQ(run.State().run.BackupMode, "");
}

TEST_F(Exit, EndsWithAMessageWhenTheSettingsCannotBeWritten)
{
    run.App().Launch();
    // A folder stands where the settings file should be.
    QFile::remove(folder.SettingsFile());
    ASSERT_TRUE(QDir().mkdir(folder.SettingsFile()));
    run.Choose("mnuFLExit");
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_TRUE(run.boxes.boxes[0].text.startsWith(
        "An error has occured saving information to the Registry \n"
        "the application will be terminated\nError number "))
        << qPrintable(run.boxes.boxes[0].text);
    EXPECT_TRUE(run.App().Ended());
}

TEST_F(Exit, ThatNeverHappensSavesNothing)
{
    run.SetOption("LastRunDate", "2/1/2026");
    run.App().Launch();
    run.State().settings.NotifyDays = 99;
    run.Renew(); // dropped as by a crash
    EXPECT_EQ(run.SavedOption("LastRunDate"), "2/1/2026");
    EXPECT_EQ(run.SavedOption("NotifyDays"), "(none)");
}

TEST_F(Exit, EndsWithAModalScreenStillUp)
{
    run.AddScreen("frmAbout");
    run.App().Launch();
    bool ended = false;
    run.WhenModal("frmAbout", [&] { ended = run.App().Exit(); });
    run.Choose("mnuHelpAbout"); // comes back, though nobody closes the box
    EXPECT_TRUE(ended);
    EXPECT_TRUE(run.App().Ended());
}
