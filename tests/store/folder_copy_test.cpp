/// Copies of the application folder and back: complete, whole file by file, whatever happens.

#include "account_file.h"
#include "full_disk.h"
#include "test_services.h"

#include "store/backup.h"
#include "store/connection.h"
#include "store/unfinished_work.h"

#include <gtest/gtest.h>

#include <cstring>

#include <sys/mount.h>
#include <unistd.h>

namespace
{

void Nothing() {}

int NumberOf(const std::function<void()> &act)
{
    try {
        act();
    } catch (const RuntimeError &error) {
        return error.Number();
    }
    return 0;
}

/// An application folder "Quillon" and a place for its backup.
class FolderCopies : public testing::Test
{
protected:
    FolderCopies()
    {
        QDir().mkpath(App("help"));
        QDir().mkpath(Place(""));
        AccountFile::Write(App("Broker.mdb"), AccountFile::EmptyAccount());
        AccountFile::Write(App("Template.xxx"), AccountFile::EmptyAccount());
        AccountFile::Write(App("TIPOFDAY.TXT"), "A tip.\n");
        AccountFile::Write(App("Picture.bmp"), "BM");
        AccountFile::Write(App("help/Über uns.html"), "<html>");
        AccountFile::Write(App("quillon"), "#!/bin/sh\n");
        QFile::setPermissions(App("quillon"), QFile::Permissions(0x7555 | 0x7000));
        QFile::setPermissions(App("Broker.mdb"), QFile::ReadOwner | QFile::WriteOwner);
        Buy("ACME", App("Broker.mdb"));
        machine.services.appPath = App("");
        machine.services.appPath.chop(1);
    }
    QString App(const QString &name) const { return m_folder.filePath("Quillon/" + name); }
    QString Place(const QString &name) const { return m_folder.filePath("stick/" + name); }
    QString Copied(const QString &name) const { return Place("Quillon Backup/Quillon/" + name); }

    static void Buy(const QString &symbol, const QString &path)
    {
        Connection account;
        account.Open(path);
        account.Execute("INSERT INTO History (Symbol) VALUES (?)", symbol);
    }
    static QString Symbols(const QString &path)
    {
        Connection account;
        account.Open(path);
        Statement row = account.Prepare(
            "SELECT integrity_check || ' ' || (SELECT group_concat(Symbol, ' ') FROM History) "
            "FROM pragma_integrity_check");
        row.Step();
        return row.Text(0);
    }
    bool Backup() { return BackUp(machine.services, BackupTarget(Place("")), Nothing); }
    bool RestoreIt() { return Restore(machine.services, lock, Place("Quillon Backup"), Nothing); }
    static QString Names(const QString &folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(' ');
    }
    static void Break(const QString &path)
    {
        QByteArray bytes = AccountFile::Bytes(path);
        std::memset(bytes.data() + 4096, 0x5A, 20000);
        AccountFile::Write(path, bytes);
    }

    QTemporaryDir m_folder;
    TestServices machine;
    AccountLock lock; ///< this program's
};

} // namespace

using ABackup = FolderCopies;
using ARestore = FolderCopies;

TEST_F(ABackup, GoesIntoAFolderOfItsOwnUnderTheApplicationsName)
{
    EXPECT_TRUE(Backup());
    EXPECT_EQ(machine.Status(), "Backup procedure successful!");
    EXPECT_TRUE(machine.dialogs.Boxes().empty());
    EXPECT_EQ(Names(Place("Quillon Backup")), "Quillon");
    EXPECT_EQ(Names(Copied("")), Names(App("")));
    EXPECT_EQ(AccountFile::Bytes(Copied("help/Über uns.html")), "<html>");
    EXPECT_EQ(Symbols(Copied("Broker.mdb")), "ok ACME");
}

TEST_F(ABackup, KeepsPermissions)
{
    Backup();
    for (const char *name : {"quillon", "Broker.mdb"})
        EXPECT_EQ(QFile::permissions(Copied(name)), QFile::permissions(App(name))) << name;
}

TEST_F(ABackup, HasWhatADyingProgramLeftInTheLog)
{
    {
        Connection account;
        account.Open(App("Broker.mdb"));
        account.ExecuteScript("INSERT INTO History (Symbol) VALUES ('LOGGED')");
        for (const char *end : {"", "-wal"})
            AccountFile::Write(App(QString("Died.mdb") + end),
                               AccountFile::Bytes(App(QString("Broker.mdb") + end)));
    }
    EXPECT_TRUE(Backup());
    EXPECT_EQ(Symbols(Copied("Died.mdb")), "ok ACME LOGGED");
    EXPECT_FALSE(QFileInfo::exists(Copied("Died.mdb-wal")));
}

TEST_F(ABackup, OverAnExistingOneAnsweredNoLeavesItAsItIs)
{
    Backup();
    Buy("NEW", App("Broker.mdb"));
    machine.dialogs.Queue(Answer::No);
    EXPECT_FALSE(Backup());
    EXPECT_EQ(machine.Status(), "Backup not executed!");
    EXPECT_EQ(Symbols(Copied("Broker.mdb")), "ok ACME");
    const std::string question = "Quillon Restore|260|Overwrite destination files in " +
                                 Place("Quillon Backup/\nwith files from ").toStdString() +
                                 App("").toStdString() + " directory?";
    EXPECT_EQ(machine.dialogs.Boxes(), std::vector<std::string>{question});
}

TEST_F(ABackup, OverAnExistingOneAnsweredYesReplacesItsFilesAndKeepsOthers)
{
    Backup();
    Buy("NEW", App("Broker.mdb"));
    AccountFile::Write(Copied("Old.mdb"), "kept");
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_TRUE(Backup());
    EXPECT_EQ(Symbols(Copied("Broker.mdb")), "ok ACME NEW");
    EXPECT_EQ(AccountFile::Bytes(Copied("Old.mdb")), "kept");
}

TEST_F(ABackup, InTheApplicationFolderIsRefused)
{
    ASSERT_TRUE(QFile::link(App("help"), Place("link")));
    for (const QString &chosen : {App("."), App("help"), Place("link")}) {
        EXPECT_FALSE(BackUp(machine.services, BackupTarget(chosen), Nothing)) << qPrintable(chosen);
        EXPECT_EQ(machine.Status(), "Backup not executed!");
        EXPECT_FALSE(QFileInfo::exists(BackupTarget(chosen)));
    }
    EXPECT_EQ(machine.dialogs.Boxes()[1], "Quillon Editor|48|A backup cannot be made in the folder "
                                          "that it copies:\n" +
                                              App("help").toStdString() +
                                              "\nPlease select another directory.");
    EXPECT_EQ(machine.dialogs.Boxes().size(), 3U);
}

TEST_F(ABackup, OfAProgramThatRunsFromItsBackupIsNotMadeOverIt)
{
    Backup();
    machine.services.appPath = Copied("").chopped(1);
    EXPECT_FALSE(Backup());
    EXPECT_NE(machine.dialogs.Boxes().back().find("cannot be made"), std::string::npos);
    EXPECT_EQ(Symbols(Copied("Broker.mdb")), "ok ACME");
}

TEST_F(ABackup, InsideABackupIsRefused)
{
    Backup();
    QDir().mkpath(Place("Quillon Backup 2025"));
    for (const char *chosen : {"Quillon Backup", "Quillon Backup/Quillon/help"}) {
        EXPECT_FALSE(BackUp(machine.services, BackupTarget(Place(chosen)), Nothing)) << chosen;
        EXPECT_EQ(machine.dialogs.Boxes().back(),
                  "Quillon Editor|48|This directory is part of a backup:\n" +
                      Place(chosen).toStdString() + "\nPlease select a directory outside of it.");
        EXPECT_FALSE(QFileInfo::exists(BackupTarget(Place(chosen))));
    }
    EXPECT_TRUE(
        BackUp(machine.services, BackupTarget(Place("Quillon Backup 2025")), Nothing)); // a name
}

TEST_F(ABackup, DoesNotFollowALinkThatLeadsBackUp)
{
    ASSERT_TRUE(QFile::link(App(""), App("help/up")));
    EXPECT_TRUE(Backup());
    EXPECT_FALSE(QFileInfo::exists(Copied("help/up")));
}

TEST_F(ABackup, LeavesLocksOut)
{
    AccountFile::Write(App("Broker.mdb.lock"), "");
    EXPECT_TRUE(Backup());
    EXPECT_FALSE(QFileInfo::exists(Copied("Broker.mdb.lock")));
}

TEST_F(ABackup, LeavesTemporaryFilesOut)
{
    for (const char *name : {"Copy.mdb.new", "Copy.mdb.new-journal", "Picture.bmp.new",
                             "TempHistPrices.mdb", "ApplTemp.mdb", "Temp 2.mdb"})
        AccountFile::Write(App(name), "half");
    AccountFile::Write(App("Ideas.new"), "the user's own"); // beside no "Ideas"
    const UnfinishedWork note(machine.services.appPath, {App("Temp 2.mdb")});
    EXPECT_TRUE(Backup());
    const QStringList copied = QDir(Copied("")).entryList(QDir::Files);
    EXPECT_EQ(copied.filter("Temp").join(' '), "Template.xxx");
    EXPECT_EQ(copied.filter(".new").join(' '), "Ideas.new");
    EXPECT_EQ(copied.filter("unfinished").join(' '), "");
    EXPECT_TRUE(copied.contains("Picture.bmp"));
}

TEST_F(ABackup, NeverPutsADamagedDatabaseOverAGoodOneAndCopiesTheRest)
{
    Backup();
    Break(App("Broker.mdb"));
    AccountFile::Write(App("Zuletzt.txt"), "new");
    machine.dialogs.Queue(Answer::Yes);
    try {
        Backup();
        ADD_FAILURE() << "said nothing";
    } catch (const RuntimeError &error) {
        EXPECT_TRUE(error.Description().contains("Broker.mdb")) << qPrintable(error.Description());
    }
    EXPECT_EQ(Symbols(Copied("Broker.mdb")), "ok ACME");
    EXPECT_EQ(AccountFile::Bytes(Copied("Zuletzt.txt")), "new");
}

TEST_F(ABackup, OfADatabaseInUseIsErrorSeventy)
{
    Connection other;
    other.Open(App("Broker.mdb"));
    other.ExecuteScript("INSERT INTO History (Symbol) VALUES ('OTHER')");
    EXPECT_EQ(NumberOf([&] { Backup(); }), RuntimeError::PermissionDeniedNumber);
    other.Close();
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME OTHER");
}

TEST_F(ABackup, OnAFullDiskIsErrorSixtyOneAndLeavesNoHalfFile)
{
    if (mount("tmpfs", Place("").toUtf8(), "tmpfs", 0, "size=60k") != 0)
        GTEST_SKIP() << "a small disk cannot be mounted here";
    EXPECT_EQ(NumberOf([&] { Backup(); }), RuntimeError::DiskFullNumber);
    for (const QString &name : QDir(Copied("")).entryList(QDir::Files))
        EXPECT_EQ(AccountFile::Bytes(Copied(name)), AccountFile::Bytes(App(name)));
    umount(Place("").toUtf8());
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME");
}

TEST_F(ABackup, CannotBeMadeInAFolderThatIsGone)
{
    EXPECT_EQ(NumberOf([&] { BackUp(machine.services, BackupTarget(Place("none")), Nothing); }),
              RuntimeError::PathAccessNumber);
}

TEST(BackupPaths, HaveNoDoubleSeparatorAndEndAtTheMarker)
{
    EXPECT_EQ(BackupTarget("/"), "/Quillon Backup/");
    EXPECT_EQ(BackupTarget("/home/ann"), "/home/ann/Quillon Backup/");
    EXPECT_EQ(BackupSource("/home/ann"), "");
    EXPECT_EQ(BackupSource("/home/Quillon Backup"), "/home/Quillon Backup");
    EXPECT_EQ(BackupSource("/home/Quillon Backup/Quillon/help"), "/home/Quillon Backup");
    EXPECT_EQ(BackupSource("/home/Quillon Backup 2025/Quillon"), "/home/Quillon Backup 2025");
}

// --- restore -------------------------------------------------------------------------------------

TEST_F(ARestore, AnsweredYesBringsBackTextsDatabasesTemplatesAndPictures)
{
    Backup();
    for (const char *name : {"TIPOFDAY.TXT", "Template.xxx", "Picture.bmp"})
        QFile::remove(App(name));
    Buy("NEW", App("Broker.mdb"));
    AccountFile::Write(App("quillon"), "newer");
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_TRUE(RestoreIt());
    EXPECT_EQ(machine.Status(), "Restore procedure successful!");
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME");
    EXPECT_EQ(AccountFile::Bytes(App("TIPOFDAY.TXT")), "A tip.\n");
    EXPECT_TRUE(QFileInfo::exists(App("Template.xxx")));
    EXPECT_TRUE(QFileInfo::exists(App("Picture.bmp")));
    EXPECT_EQ(AccountFile::Bytes(App("quillon")), "newer"); // of no kind that is restored
    const std::string question = "Quillon Restore|259|Overwrite destination files in " +
                                 App("").toStdString() + "\nwith files from " +
                                 Place("Quillon Backup/ directory?").toStdString();
    EXPECT_EQ(machine.dialogs.Boxes(), std::vector<std::string>{question});
}

TEST_F(ARestore, AnsweredNoCopiesOnlyWhatIsMissing)
{
    Backup();
    Buy("NEW", App("Broker.mdb"));
    QFile::remove(App("TIPOFDAY.TXT"));
    machine.dialogs.Queue(Answer::No);
    EXPECT_TRUE(RestoreIt());
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME NEW");
    EXPECT_EQ(AccountFile::Bytes(App("TIPOFDAY.TXT")), "A tip.\n");
    EXPECT_EQ(machine.dialogs.Boxes().back(),
              "Quillon Editor|48|Like name files will not be replaced...");
    EXPECT_EQ(machine.Status(), "Restore procedure successful!");
}

TEST_F(ARestore, AnsweredCancelDoesNothing)
{
    Backup();
    Buy("NEW", App("Broker.mdb"));
    machine.dialogs.Queue(Answer::Cancel);
    EXPECT_FALSE(RestoreIt());
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME NEW");
    EXPECT_EQ(machine.Status(), "Commencing restore procedure...");
}

TEST_F(ARestore, PassesOverAKindThatTheBackupDoesNotHave)
{
    Backup();
    for (const char *name : {"TIPOFDAY.TXT", "Picture.bmp", "Template.xxx"})
        QFile::remove(Copied(name));
    Buy("NEW", App("Broker.mdb"));
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_TRUE(RestoreIt());
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME");
}

TEST_F(ARestore, OfAnApplicationFolderOfAnotherNameSaysThatNothingWasRestoredAndEnds)
{
    Backup();
    QDir().rename(Place("Quillon Backup/Quillon"), Place("Quillon Backup/app"));
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_TRUE(RestoreIt());
    EXPECT_EQ(machine.Status(), "Restore procedure successful!");
    EXPECT_NE(machine.dialogs.Boxes().back().find("rename it to Quillon"), std::string::npos);
}

TEST_F(ARestore, OverADatabaseInUseSaysSoAndLeavesIt)
{
    Backup();
    Connection other;
    other.Open(App("Broker.mdb"));
    other.ExecuteScript("INSERT INTO History (Symbol) VALUES ('OTHER')");
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_FALSE(RestoreIt());
    EXPECT_EQ(machine.dialogs.Boxes().back(),
              "Quillon Editor|48|Restore was not successful because \n"
              "the database is in use by another application!");
    other.Close();
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME OTHER");
}

TEST_F(ARestore, OverAnAccountThatAnotherProgramHasSaysSoAndBringsBackNothing)
{
    Backup();
    Buy("NEW", App("Broker.mdb"));
    AccountFile::Write(App("TIPOFDAY.TXT"), "newer");
    AccountLock other; // its files are closed for a while, as in a rebuild
    other.Acquire(App("Broker.mdb"));
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_FALSE(RestoreIt());
    EXPECT_EQ(machine.dialogs.Boxes().back(),
              "Quillon Editor|48|Restore was not successful because \n"
              "the database is in use by another application!");
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME NEW");
    EXPECT_EQ(AccountFile::Bytes(App("TIPOFDAY.TXT")), "newer");
}

TEST_F(ARestore, OverTheAccountOfThisProgramIsMade)
{
    Backup();
    Buy("NEW", App("Broker.mdb"));
    lock.Acquire(App("Broker.mdb"));
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_TRUE(RestoreIt());
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME");
}

TEST_F(ARestore, OnAFullDiskLosesNoRowThatIsStillInTheLog)
{
    Backup();
    {
        // A program that died: its last trade is in the log.
        QTemporaryDir aside;
        const QString copy = aside.filePath("Broker.mdb");
        AccountFile::Write(copy, AccountFile::Bytes(App("Broker.mdb")));
        Connection dying;
        dying.Open(copy);
        dying.Execute("INSERT INTO History (Symbol) SELECT 'LOGGED' FROM "
                      "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                      "WHERE i < 20000) SELECT i FROM n)");
        AccountFile::Write(App("Broker.mdb"), AccountFile::Bytes(copy));
        AccountFile::Write(App("Broker.mdb-wal"), AccountFile::Bytes(copy + "-wal"));
    }
    machine.dialogs.Queue(Answer::Yes);
    int error = 0;
    {
        const FullDisk disk(AccountFile::EmptyAccount().size() + 8192);
        error = NumberOf([&] { RestoreIt(); });
    }
    EXPECT_EQ(error, RuntimeError::DiskFullNumber);
    Connection account;
    account.Open(App("Broker.mdb"));
    Statement row = account.Prepare("SELECT count(*) FROM History WHERE Symbol = 'LOGGED'");
    row.Step();
    EXPECT_EQ(row.Int64(0), 20000);
}

TEST_F(ARestore, MendsADamagedDatabaseAndDropsItsLog)
{
    Backup();
    Break(App("Broker.mdb"));
    AccountFile::Write(App("Broker.mdb-wal"), "rubbish");
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_TRUE(RestoreIt());
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME");
}

TEST_F(ARestore, OfADamagedBackupKeepsTheGoodFile)
{
    Backup();
    Buy("NEW", App("Broker.mdb"));
    Break(Copied("Broker.mdb"));
    machine.dialogs.Queue(Answer::Yes);
    EXPECT_EQ(NumberOf([&] { RestoreIt(); }), RuntimeError::StoreNumber);
    EXPECT_EQ(Symbols(App("Broker.mdb")), "ok ACME NEW");
}
