/// What is done for an account each time it comes up: the check behind a crash, the day's copy, the
/// permissions of its file.

#include "account_file.h"

#include "second_program.h"
#include "store/account_care.h"
#include "store/daily_copy.h"
#include "test_services.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <sys/stat.h>

namespace
{

const char *const InOrder = "The account was not closed properly last time; its file is in order.";
const char *const Damaged = "The account was not closed properly last time; its file is damaged, "
                            "please restore from backup.";

class AccountCare : public testing::Test
{
protected:
    /// Opens the account as the program does, and cares for it on this day.
    std::string OpenOn(QDate day)
    {
        settings.CurrentFilePath = path;
        OpenDatabases(databases, settings, account, machine.services);
        return CareForAccount(databases, day).toStdString();
    }
    std::string Open() { return OpenOn(QDate(2026, 3, 2)); }
    void Close()
    {
        CloseDatabases(databases);
        databases.accountLock.Release();
    }
    /// A program posts on the account and is killed.
    void CrashWhilePosting()
    {
        QProcess poster;
        poster.start(CRASH_POSTER, {path});
        QByteArray told;
        while (told.count('\n') < 10 && poster.waitForReadyRead())
            told += poster.readAllStandardOutput();
        poster.kill();
        poster.waitForFinished();
        ASSERT_EQ(poster.exitStatus(), QProcess::CrashExit);
    }
    int Copies() const { return int(QDir(DailyCopyFolder(path)).entryList(QDir::Files).size()); }
    mode_t Mode() const
    {
        struct stat status
        {};
        EXPECT_EQ(stat(path.toUtf8().constData(), &status), 0);
        return status.st_mode & 07777;
    }

    TestAppFolder folder;
    QString path = folder.AddAccount("Broker.mdb");
    TestServices machine{folder.Path()};
    Settings settings;
    AccountState account;
    Databases databases;
};

} // namespace

TEST_F(AccountCare, SaysNothingOfAnAccountThatWasClosed)
{
    EXPECT_EQ(Open(), "");
    Close();
    EXPECT_EQ(Open(), "");
}

TEST_F(AccountCare, SaysThatTheFileIsInOrderBehindAProgramKilledWhilePosting)
{
    CrashWhilePosting();
    EXPECT_EQ(Open(), InOrder);
    Close();
    EXPECT_EQ(Open(), "");
}

TEST_F(AccountCare, ChecksBehindAProgramThatDiedWithoutWriting)
{
    SecondProgram(path).Kill();
    EXPECT_EQ(Open(), InOrder);
    Close();
    EXPECT_EQ(Open(), "");
}

TEST_F(AccountCare, SaysItOnceThoughTheAccountIsReopened)
{
    SecondProgram(path).Kill();
    EXPECT_EQ(Open(), InOrder);
    CloseDatabases(databases);
    EXPECT_EQ(Open(), "");
}

TEST_F(AccountCare, SaysThatTheFileIsDamagedAndMakesNoCopyOfIt)
{
    folder.Execute(path, "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 5000) "
                         "INSERT INTO History (Symbol, Description) SELECT 'S' || i, 'x' FROM n");
    SecondProgram(path).Kill();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(file.size() / 2 & ~4095));
    file.write(QByteArray(8192, 'Z'));
    file.close();
    EXPECT_EQ(Open(), Damaged);
    EXPECT_EQ(Copies(), 0);
}

TEST_F(AccountCare, MakesOneCopyADay)
{
    EXPECT_EQ(OpenOn(QDate(2026, 3, 2)), "");
    Close();
    EXPECT_EQ(OpenOn(QDate(2026, 3, 2)), "");
    Close();
    EXPECT_EQ(Copies(), 1);
    EXPECT_EQ(OpenOn(QDate(2026, 3, 3)), "");
    EXPECT_EQ(Copies(), 2);
}

TEST_F(AccountCare, MakesTheCopyOfAFileInOrderBehindACrash)
{
    CrashWhilePosting();
    EXPECT_EQ(Open(), InOrder);
    EXPECT_EQ(Copies(), 1);
}

TEST_F(AccountCare, TellsOfACopyThatCannotBeMade)
{
    AccountFile::Write(DailyCopyFolder(path), "in the way");
    EXPECT_EQ(Open().find("Today's copy of the account could not be made: "), 0u);
    Close();
    SecondProgram(path).Kill();
    EXPECT_EQ(Open().find(std::string(InOrder) + " Today's copy"), 0u);
}

TEST_F(AccountCare, TakesTheAccountsFileFromAllOthers)
{
    chmod(path.toUtf8().constData(), 0664);
    Open();
    EXPECT_EQ(Mode(), 0600u);
    struct stat log
    {};
    ASSERT_EQ(stat((path + "-wal").toUtf8().constData(), &log), 0);
    EXPECT_EQ(log.st_mode & 0777, 0600u);
}

TEST_F(AccountCare, LeavesThePermissionsOfAFileThatIsNoAccount)
{
    path = folder.AddFile("notes.txt", "Dear diary");
    chmod(path.toUtf8().constData(), 0664);
    settings.CurrentFilePath = path;
    OpenDatabases(databases, settings, account, machine.services);
    EXPECT_TRUE(databases.accountError);
    EXPECT_EQ(Mode(), 0664u);
    EXPECT_FALSE(QFile::exists(path + ".lock"));
}

TEST_F(AccountCare, KeepsTheLockWhileTheFilesAreClosedForAWhile)
{
    Open();
    CloseDatabases(databases);
    EXPECT_EQ(SecondProgram(path).said, "open elsewhere");
    databases.accountLock.Release();
    EXPECT_EQ(SecondProgram(path).said, "taken");
}

TEST_F(AccountCare, DoesNotOpenAnAccountThatASecondProgramHas)
{
    SecondProgram other(path);
    const QByteArray before = AccountFile::Bytes(path);
    settings.CurrentFilePath = path;
    OpenDatabases(databases, settings, account, machine.services);
    EXPECT_TRUE(databases.accountOpenElsewhere);
    EXPECT_FALSE(databases.gConnAccount.IsOpen());
    EXPECT_FALSE(databases.gConnUndo.IsOpen());
    EXPECT_TRUE(databases.gConnApplControl.IsOpen());
    EXPECT_EQ(AccountFile::Bytes(path), before);
}
