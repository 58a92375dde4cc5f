/// The backup screen in both modes, in a run of the whole program, and compaction from the menu and
/// at exit.

#include "shell/shell_run.h"

#include "platform/drives.h"
#include "platform/widgets/folder_list.h"
#include "store/connection.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

namespace
{

const QString BackupForm = QStringLiteral("frmBackupRestore");
const QString CompactQuestion = QStringLiteral("A backup has not been done today (recommended). \n"
                                               "Continue anyway?");

/// The home folder, where "c:" begins, is a temporary one.
class BackupScreen : public testing::Test
{
protected:
    BackupScreen() : m_home(qgetenv("HOME"))
    {
        qputenv("HOME", QFile::encodeName(home.path()));
        folder.AddFile("TIPOFDAY.TXT", "A tip.\n");
        run.GiveBalance(folder.SampleAccount(), "2026-03-02", 4);
        run.SetOption("ShowTipOfDay", "0").SetOption("CheckCompact", "0");
        run.SetOption("LastBackup", "2/1/2026").SetOption("LastNotify", "3/2/2026");
        run.SetOption("WebPriceUpdate", "False");
    }
    ~BackupScreen() override
    {
        run.boxes.OnBox = nullptr;
        qputenv("HOME", m_home);
    }

    void Open(const char *entry)
    {
        run.App().Launch();
        run.Choose(entry);
    }
    void OpenRestore(Answer ready = Answer::Ok)
    {
        run.boxes.Prepare("Put last backup on drive", ready);
        Open("mnuFLRestore");
    }
    bool IsOpen() { return run.App().Host().Loaded(BackupForm); }
    void Click(const char *button) { run.Control<QPushButton>(BackupForm, button)->click(); }
    QString Text(const char *label) { return run.Control<QLabel>(BackupForm, label)->text(); }
    FolderList &Folders() { return *run.Control<FolderList>(BackupForm, "dirList"); }
    void ChooseFolder(const QString &name)
    {
        const QList<QListWidgetItem *> items = Folders().findItems(name, Qt::MatchExactly);
        ASSERT_FALSE(items.isEmpty()) << qPrintable(name);
        emit Folders().itemClicked(items.last());
    }
    QString Backup(const QString &name = {}) const
    {
        return home.filePath("Quillon Backup/" + QDir(folder.Path()).dirName() + "/" + name);
    }

    TestAppFolder folder;
    QTemporaryDir home;
    ShellRun run{folder};

private:
    QByteArray m_home;
};

} // namespace

using Compacting = BackupScreen;
using ExitThroughBackup = BackupScreen;

// --- it comes up ---------------------------------------------------------------------------------

TEST_F(BackupScreen, ForABackupSaysWhatToSelectAndClosesEverything)
{
    Open("mnuFLBackup");
    EXPECT_EQ(run.App().Host().Find(BackupForm)->Caption(), "Quillon - Backup");
    EXPECT_EQ(Text("lblDrive"), "Select drive to use for backup");
    EXPECT_EQ(Text("lblDirectory"), "Select directory to use for backup");
    EXPECT_EQ(run.Panel(1), "Select OK when backup drive is ready");
    EXPECT_FALSE(run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_FALSE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_FALSE(run.State().databases.gConnWebSites.IsOpen());
    EXPECT_EQ(run.State().run.BackupMode, "Backup");
}

TEST_F(BackupScreen, WithoutARememberedDriveStartsAtC)
{
    Open("mnuFLBackup");
    EXPECT_EQ(run.State().settings.BackupDir, "c:");
    EXPECT_EQ(run.Control<QComboBox>(BackupForm, "drvList")->currentText(), "c: [Home]");
    EXPECT_EQ(Folders().Path(), home.path());
    Click("cmdCancel");
    EXPECT_EQ(run.SavedOption("BackupDir"), "c:"); // it changed
}

TEST_F(BackupScreen, ForARestoreAsksForTheBackupAndGoesToIt)
{
    QDir(home.path()).mkdir("Quillon Backup");
    OpenRestore();
    EXPECT_EQ(run.boxes.Texts(), QStringList("Put last backup on drive, click OK when ready"));
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::OkCancel + Box::Information);
    EXPECT_EQ(run.App().Host().Find(BackupForm)->Caption(), "Quillon - Restore");
    EXPECT_EQ(Text("lblDrive"), "Select drive to restore from");
    EXPECT_EQ(Text("lblDirectory"), "Select directory to restore from");
    EXPECT_EQ(Folders().Path(), home.filePath("Quillon Backup"));
    EXPECT_EQ(run.Panel(1), "Restore procedure is now ready, click OK to continue");
}

TEST_F(BackupScreen, ForARestoreCancelledClosesAndOpensTheAccountAgain)
{
    OpenRestore(Answer::Cancel);
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_EQ(run.State().run.BackupMode, "");
}

TEST_F(BackupScreen, ForARestoreWithoutABackupSaysSoAndGoesOn)
{
    OpenRestore();
    EXPECT_EQ(run.boxes.Texts().last(), "This is not a valid Quillon backup!");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(run.Panel(1), "Select the drive and directory you wish to restore");
}

TEST_F(BackupScreen, StopsTheIdleLogoffWhileItIsOpen)
{
    run.GiveSecurity(folder.SampleAccount(), 0, 1, 15);
    Open("mnuFLBackup");
    EXPECT_FALSE(run.State().tmrLogoff->Enabled());
    EXPECT_EQ(run.State().run.IdleMinutes, 0);
    Click("cmdCancel");
    EXPECT_TRUE(run.State().tmrLogoff->Enabled());
}

TEST_F(BackupScreen, OpensItsHelp)
{
    Open("mnuFLBackup");
    Click("cmdHelp"); // this folder has no help
    EXPECT_EQ(run.Panel(1), "The help topic BRBackupRestore.html was not found");
}

// --- folders -------------------------------------------------------------------------------------

TEST_F(BackupScreen, ShowsFoldersAndFilesOfWhatIsChosen)
{
    QDir(home.path()).mkdir("Letters");
    QFile(home.filePath("Letters/Ann.txt")).open(QIODevice::WriteOnly);
    Open("mnuFLBackup");
    ChooseFolder("Letters");
    EXPECT_EQ(Folders().Path(), home.filePath("Letters"));
    EXPECT_EQ(run.Control<QListWidget>(BackupForm, "filList")->item(0)->text(), "Ann.txt");
    ChooseFolder(QDir(home.path()).dirName());
    EXPECT_EQ(Folders().Path(), home.path());
}

TEST_F(BackupScreen, AFolderThatIsGoneCanBeTriedAgain)
{
    QDir(home.path()).mkdir("Stick");
    Open("mnuFLBackup");
    QDir(home.path()).rmdir("Stick");
    run.boxes.OnBox = [&](const ScriptedBoxes::ShownBox &) { QDir(home.path()).mkdir("Stick"); };
    run.boxes.Prepare("Correct problem", Answer::Retry);
    ChooseFolder("Stick");
    EXPECT_EQ(Folders().Path(), home.filePath("Stick"));
    EXPECT_EQ(run.boxes.Texts(),
              QStringList("Error number 76\nDescription: Path not found: " +
                          home.filePath("Stick") + "\nCorrect problem and reply when completed"));
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::RetryCancel);
}

TEST_F(BackupScreen, AFolderThatStaysGoneLeavesTheOneBefore)
{
    QDir(home.path()).mkdir("Stick");
    Open("mnuFLBackup");
    QDir(home.path()).rmdir("Stick");
    run.boxes.Prepare("Correct problem", Answer::Cancel);
    ChooseFolder("Stick");
    EXPECT_EQ(Folders().Path(), home.path());
}

TEST(MountedDrives, BeginWithTheHomeFolderAndHaveLettersInOrder)
{
    const std::vector<Drive> drives = MountedDrives();
    ASSERT_FALSE(drives.empty());
    EXPECT_EQ(drives[0].Text(), "c: [Home]");
    EXPECT_EQ(drives[0].folder, QDir::homePath());
    EXPECT_TRUE(QDir::homePath().startsWith(drives[0].root));
    for (size_t i = 0; i < drives.size(); ++i) {
        EXPECT_EQ(drives[i].name, QChar(char('c' + int(i))) + QString(":"));
        EXPECT_TRUE(QDir(drives[i].root).exists()) << qPrintable(drives[i].root);
    }
}

// --- backup --------------------------------------------------------------------------------------

TEST_F(BackupScreen, CopiesTheApplicationFolderAndRemembersDayAndDrive)
{
    Open("mnuFLBackup");
    Click("cmdOK");
    EXPECT_EQ(run.boxes.Texts(), QStringList()); // no question of a missing backup either
    EXPECT_EQ(run.Panel(1), "Backup procedure successful!");
    EXPECT_EQ(run.Control<QPushButton>(BackupForm, "cmdCancel")->text(), "&Close");
    EXPECT_EQ(folder.Value(Backup("Sample Portfolio.mdb"), "PRAGMA integrity_check"), "ok");
    EXPECT_TRUE(QFile::exists(Backup("TIPOFDAY.TXT")));
    Click("cmdCancel");
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_EQ(run.State().run.BackupMode, "");
    EXPECT_EQ(run.Panel(1), "");
    EXPECT_EQ(run.SavedOption("LastBackup"), "3/2/2026");
    EXPECT_EQ(run.SavedOption("BackupDir"), "c:");
}

TEST_F(BackupScreen, WithNoDriveChosenSaysSoAndTheDayCountsAllTheSame)
{
    run.SetOption("BackupDir", "z:"); // which is not here
    Open("mnuFLBackup");
    EXPECT_EQ(run.Panel(1), "Select your backup drive, click OK when ready");
    Click("cmdOK");
    EXPECT_EQ(run.boxes.Texts(), QStringList("No backup drive has been selected!"));
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Exclamation);
    EXPECT_EQ(run.Control<QPushButton>(BackupForm, "cmdCancel")->text(), "&Cancel");
    EXPECT_EQ(run.State().settings.LastBackup, QDate(2026, 3, 2));
    Click("cmdCancel");
    EXPECT_EQ(run.SavedOption("LastBackup"), "3/2/2026");
}

TEST_F(BackupScreen, ThatFailsShowsTheErrorAndStays)
{
    QFile(home.filePath("Quillon Backup")).open(QIODevice::WriteOnly); // a file in the way
    Open("mnuFLBackup");
    Click("cmdOK");
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_TRUE(run.boxes.boxes[0].text.startsWith("Error number 75\nDescription: "));
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(run.Panel(1), "Backup procedure was not completed!");
}

TEST_F(BackupScreen, CannotBeLeftWhileItCopies)
{
    Open("mnuFLBackup");
    Click("cmdOK");
    run.boxes.Prepare("Overwrite destination files", Answer::No);
    bool stayed = false;
    run.boxes.OnBox = [&](const ScriptedBoxes::ShownBox &) {
        stayed = !run.App().Host().Unload(BackupForm);
    };
    Click("cmdOK");
    EXPECT_TRUE(stayed);
    EXPECT_EQ(run.Panel(1), "Backup not executed!");
}

// --- restore -------------------------------------------------------------------------------------

TEST_F(BackupScreen, RestoresAFolderNamedQuillon)
{
    Open("mnuFLBackup");
    Click("cmdOK");
    Click("cmdCancel");
    QDir().rename(Backup(), home.filePath("Quillon Backup/Quillon"));
    QFile::remove(folder.File("TIPOFDAY.TXT"));
    run.State().databases.gConnAccount.ExecuteScript("INSERT INTO History (Symbol) VALUES ('NEW')");
    run.boxes.Prepare("Put last backup on drive", Answer::Ok);
    run.Choose("mnuFLRestore");
    run.boxes.Prepare("Overwrite destination files in", Answer::Yes);
    Click("cmdOK");
    EXPECT_EQ(run.Panel(1), "Restore procedure successful!");
    EXPECT_EQ(run.Control<QPushButton>(BackupForm, "cmdCancel")->text(), "&Close");
    Click("cmdCancel");
    EXPECT_TRUE(QFile::exists(folder.File("TIPOFDAY.TXT")));
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    Statement count = run.State().databases.gConnAccount.Prepare("SELECT count(*) FROM History");
    count.Step();
    EXPECT_EQ(count.Int64(0), 0);
}

TEST_F(BackupScreen, DoesNotRestoreFromOutsideABackup)
{
    OpenRestore();
    Click("cmdOK");
    EXPECT_EQ(run.boxes.Texts().last(),
              "The path selected is not a valid backup directory for this application");
    EXPECT_EQ(run.boxes.boxes.back().buttonsValue, Box::Exclamation);
}

// --- on the way out ------------------------------------------------------------------------------

TEST_F(ExitThroughBackup, GoesOnWhenTheScreenIsLeft)
{
    run.SetOption("LastNotify", "1/1/2026");
    run.App().Launch();
    run.boxes.Prepare("Last backup was done", Answer::Yes);
    run.Choose("mnuFLExit");
    EXPECT_FALSE(run.App().Ended());
    ASSERT_TRUE(IsOpen());
    Click("cmdOK");
    EXPECT_EQ(run.Panel(1), "Backup procedure successful!");
    EXPECT_FALSE(run.App().Ended());
    Click("cmdCancel");
    EXPECT_TRUE(run.App().Ended());
    EXPECT_FALSE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_EQ(run.SavedOption("LastBackup"), "3/2/2026");
    EXPECT_EQ(run.SavedOption("LastNotify"), "3/2/2026");
}

TEST_F(ExitThroughBackup, GoesOnWhenTheBackupIsCancelled)
{
    run.SetOption("LastNotify", "1/1/2026");
    run.App().Launch();
    run.boxes.Prepare("Last backup was done", Answer::Yes);
    run.Choose("mnuFLExit");
    Click("cmdCancel");
    EXPECT_TRUE(run.App().Ended());
    EXPECT_EQ(run.boxes.boxes.size(), 1U);
}

TEST_F(ExitThroughBackup, KeepsTheDayOfTheReminderWhenTheBackupIsCancelled)
{
    run.SetOption("LastNotify", "1/1/2026").SetOption("BackupDir", "c:");
    run.App().Launch();
    run.boxes.Prepare("Last backup was done", Answer::Yes);
    run.Choose("mnuFLExit");
    Click("cmdCancel");
    EXPECT_EQ(run.SavedOption("LastNotify"), "3/2/2026");
    EXPECT_EQ(run.SavedOption("LastRunDate"), "3/2/2026");
    EXPECT_EQ(run.SavedOption("LastBackup"), "2/1/2026"); // there was none
}

// --- compaction ----------------------------------------------------------------------------------

TEST_F(Compacting, FromTheMenuAsksWhenNoBackupWasMadeToday)
{
    run.App().Launch();
    run.boxes.Prepare("Continue anyway?", Answer::No);
    run.Choose("mnuFLCompactDBA");
    EXPECT_EQ(run.boxes.Texts(), QStringList(CompactQuestion));
    EXPECT_EQ(run.boxes.boxes[0].title, "MDI Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::YesNo + Box::SecondDefault);
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen()); // nothing was done
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
}

TEST_F(Compacting, FromTheMenuPurgesCompactsAndOpensTheAccountAgain)
{
    folder.Execute(folder.SampleAccount(),
                   "INSERT INTO History (Symbol, Description, Shares, TransDate) "
                   "VALUES ('ACME', 'Bought', 10, '2015-01-05'), "
                   "('ACME', 'Sold', -4, '2016-01-05')");
    run.SetOption("LastBackup", "3/2/2026");
    run.App().Launch();
    run.Choose("mnuFLCompactDBA");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    Statement row = run.State().databases.gConnAccount.Prepare(
        "SELECT group_concat(Description || ' ' || Shares) FROM History");
    row.Step();
    EXPECT_EQ(row.Text(0), "Bought 6.0");
    EXPECT_FALSE(QFile::exists(folder.File("Temp.mdb")));
    EXPECT_FALSE(QFile::exists(folder.File("TempHistPrices.mdb")));
}

TEST_F(Compacting, ThatFailsSaysWhyAndLeavesTheProgramRunning)
{
    // The name of the account is that of its folder too: the new file would go into "Temp".
    const QString path = folder.AddAccount("Broker/Broker.mdb");
    run.SetOption("CurrentFilePath", path).SetOption("AccountName", "Broker");
    run.SetOption("LastBackup", "3/2/2026");
    run.App().Launch();
    run.Choose("mnuFLCompactDBA");
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_TRUE(run.boxes.boxes[0].text.startsWith(
        "An error has occured while compacting the database\n" + path + "\nError number "))
        << qPrintable(run.boxes.boxes[0].text);
    EXPECT_EQ(run.boxes.boxes[0].title, "MDI Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Stop);
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
}

TEST_F(Compacting, NeverTakesTheUsersAccountCalledTempForATemporaryFile)
{
    const QString temp = folder.AddAccount("Temp.mdb"); // of a stick, never opened here
    folder.Execute(temp, "INSERT INTO History (Symbol) VALUES ('KEPT')");
    run.SetOption("LastBackup", "3/2/2026");
    run.App().Launch();
    run.Choose("mnuFLCompactDBA");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_EQ(folder.Value(temp, "SELECT Symbol FROM History"), "KEPT");
}

TEST_F(Compacting, OfAnAccountCalledTempKeepsIt)
{
    run.SetOption("CurrentFilePath", folder.AddAccount("Temp.mdb"))
        .SetOption("AccountName", "Temp")
        .SetOption("LastBackup", "3/2/2026");
    run.App().Launch();
    run.Choose("mnuFLCompactDBA");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_EQ(folder.Value(folder.File("Temp.mdb"), "PRAGMA integrity_check"), "ok");
}

TEST_F(Compacting, AtExitAsksNothingAndTheExitGoesOnWhenItFails)
{
    run.SetOption("CheckCompact", "1").SetOption("CompactDays", "4");
    run.App().Launch();
    QFile::remove(folder.File("HistPrices.mdb"));
    QDir(folder.Path()).mkdir("TempHistPrices.mdb");
    run.Choose("mnuFLExit");
    EXPECT_TRUE(run.App().Ended());
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_TRUE(run.boxes.boxes[0].text.startsWith(
        "An error has occured while compacting the database\n" + folder.File("HistPrices.mdb")))
        << qPrintable(run.boxes.boxes[0].text);
}
