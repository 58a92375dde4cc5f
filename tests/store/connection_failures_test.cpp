/// What the store refuses, and what a file has to survive: foreign and broken files, no permission,
/// a full disk, a process that is killed.

#include "account_file.h"
#include "full_disk.h"

#include "crash/posting_loop.h"
#include "store/connection.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cerrno>

#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

namespace
{

QByteArray OtherProgramsDatabase()
{
    AccountFile folder;
    const QString path = folder.In("other.db");
    sqlite3 *database = nullptr;
    sqlite3_open(path.toUtf8().constData(), &database);
    sqlite3_exec(database, "CREATE TABLE DailyTracker (Symbol TEXT)", nullptr, nullptr, nullptr);
    sqlite3_close(database);
    return AccountFile::Bytes(path);
}

QByteArray Overwritten(qsizetype from, qsizetype count)
{
    QByteArray bytes = AccountFile::EmptyAccount();
    std::memset(bytes.data() + from, 0x5A, size_t(count));
    return bytes;
}

struct Foreign
{
    const char *name;
    QByteArray (*content)();
};

const Foreign ForeignFiles[] = {
    {"AnEmptyFile", [] { return QByteArray(); }},
    {"ATextFile", [] { return QByteArray("Dear diary, today I bought 100 ACME.\n"); }},
    {"ALongTextFile", [] { return QByteArray("Symbol;Shares\n").repeated(5000); }},
    {"ADatabaseOfAnotherProgram", OtherProgramsDatabase},
    {"ADatabaseOfAnOlderKind",
     [] { return QByteArray("\0\1\0\0Standard Jet DB\0", 20).leftJustified(4096, '\0'); }},
    {"HalfAHeader", [] { return AccountFile::EmptyAccount().left(50); }},
    {"TheHeaderAlone", [] { return AccountFile::EmptyAccount().left(100); }},
    {"HalfAFile",
     [] { return AccountFile::EmptyAccount().left(AccountFile::EmptyAccount().size() / 2); }},
    {"AFileWithoutItsLastByte", [] { return AccountFile::EmptyAccount().chopped(1); }},
    {"AFileWithABrokenHeader", [] { return Overwritten(16, 40); }},
    {"AFileWithABrokenFirstPage", [] { return Overwritten(100, 3900); }},
};

class RefusedFile : public testing::TestWithParam<Foreign>
{};

/// The test goes on as a user without rights, when it runs as one with all of them.
class AsOrdinaryUser
{
public:
    AsOrdinaryUser() : m_wasRoot(geteuid() == 0)
    {
        if (m_wasRoot && setresuid(65534, 65534, 0) != 0)
            m_wasRoot = false;
    }
    ~AsOrdinaryUser()
    {
        if (m_wasRoot && setresuid(0, 0, 0) != 0)
            std::abort();
    }

private:
    bool m_wasRoot;
};

/// Nothing in the folder can be written, or only the file cannot.
void MakeReadOnly(const AccountFile &file, mode_t folderMode)
{
    ASSERT_EQ(chmod(file.Path().toUtf8().constData(), 0444), 0);
    ASSERT_EQ(chmod(file.Folder().toUtf8().constData(), folderMode), 0);
}

void InsertLots(Connection &account, int count)
{
    WriteGuard guard(account);
    for (int i = 0; i < count; ++i)
        account.Execute("INSERT INTO PriceHistory (Symbol, Shares) VALUES (?, 1)",
                        QString(1000, 'x'));
    guard.Commit();
}

qint64 LotCount(Connection &account)
{
    Statement row = account.Prepare("SELECT COUNT(*) FROM PriceHistory");
    row.Step();
    return row.Int64(0);
}

QString Integrity(Connection &account)
{
    Statement row = account.Prepare("PRAGMA integrity_check");
    row.Step();
    return row.Text(0);
}

} // namespace

TEST_P(RefusedFile, StaysByteForByteAsItWas)
{
    AccountFile file;
    const QByteArray content = GetParam().content();
    AccountFile::Write(file.Path(), content);
    Connection account;
    try {
        account.Open(file.Path());
        ADD_FAILURE() << "opened";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), int(0x80004005));
        EXPECT_FALSE(error.Description().isEmpty());
    }
    EXPECT_FALSE(account.IsOpen());
    EXPECT_EQ(AccountFile::Bytes(file.Path()), content);
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

INSTANTIATE_TEST_SUITE_P(Connection, RefusedFile, testing::ValuesIn(ForeignFiles),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(Connection, RefusesAMissingFileAndMakesNone)
{
    AccountFile file;
    Connection account;
    EXPECT_THROW(account.Open(file.In("Missing.mdb")), RuntimeError);
    EXPECT_THROW(account.Open(file.In("No folder/Missing.mdb")), RuntimeError);
    EXPECT_THROW(account.Open(QString()), RuntimeError);
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

TEST(Connection, RefusesAFolder)
{
    AccountFile file;
    Connection account;
    EXPECT_THROW(account.Open(file.Folder()), RuntimeError);
}

TEST(Connection, RefusesToFollowAFailedOpenWithStatements)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    EXPECT_THROW(account.Open(file.In("Missing.mdb")), RuntimeError);
    EXPECT_FALSE(account.IsOpen());
    EXPECT_THROW(account.Execute("SELECT 1"), RuntimeError);
}

TEST(Connection, ReportsABrokenPageWhenItIsRead)
{
    AccountFile file;
    {
        Connection account;
        account.Open(file.Path());
        InsertLots(account, 100);
    }
    // Everything behind the tables' first pages holds lots.
    QByteArray bytes = AccountFile::Bytes(file.Path());
    const qsizetype from = AccountFile::EmptyAccount().size();
    std::memset(bytes.data() + from, 0x5A, size_t(bytes.size() - from));
    AccountFile::Write(file.Path(), bytes);

    Connection account;
    account.Open(file.Path());
    EXPECT_THROW(account.Execute("SELECT * FROM PriceHistory"), RuntimeError);
}

TEST(Connection, RefusesAReadOnlyFileAndLeavesItAlone)
{
    AccountFile file;
    MakeReadOnly(file, 0777);
    const AsOrdinaryUser user;
    Connection account;
    EXPECT_THROW(account.Open(file.Path()), RuntimeError);
    EXPECT_EQ(AccountFile::Bytes(file.Path()), AccountFile::EmptyAccount());
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

TEST(Connection, RefusesAFileInAReadOnlyFolderAndLeavesItAlone)
{
    AccountFile file;
    MakeReadOnly(file, 0555);
    {
        const AsOrdinaryUser user;
        Connection account;
        EXPECT_THROW(account.Open(file.Path()), RuntimeError);
        EXPECT_EQ(AccountFile::Bytes(file.Path()), AccountFile::EmptyAccount());
        EXPECT_EQ(file.Listing(), "Broker.mdb");
    }
    chmod(file.Folder().toUtf8().constData(), 0755);
}

TEST(Connection, RefusesAWritableFileInAReadOnlyFolderAndLeavesItAlone)
{
    AccountFile file;
    ASSERT_EQ(chmod(file.Path().toUtf8().constData(), 0666), 0);
    ASSERT_EQ(chmod(file.Folder().toUtf8().constData(), 0555), 0);
    {
        const AsOrdinaryUser user;
        Connection account;
        EXPECT_THROW(account.Open(file.Path()), RuntimeError);
        EXPECT_EQ(AccountFile::Bytes(file.Path()), AccountFile::EmptyAccount());
        EXPECT_EQ(file.Listing(), "Broker.mdb");
    }
    chmod(file.Folder().toUtf8().constData(), 0755);
}

TEST(Connection, RefusesAFileThatNobodyMayRead)
{
    AccountFile file;
    ASSERT_EQ(chmod(file.Path().toUtf8().constData(), 0), 0);
    ASSERT_EQ(chmod(file.Folder().toUtf8().constData(), 0755), 0);
    const AsOrdinaryUser user;
    Connection account;
    EXPECT_THROW(account.Open(file.Path()), RuntimeError);
}

TEST(Connection, LosesNothingOfAnAccountWhenTheDiskIsFull)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    InsertLots(account, 10);
    {
        const FullDisk disk(AccountFile::EmptyAccount().size() + 20000);
        EXPECT_THROW(InsertLots(account, 1000), RuntimeError);
        EXPECT_FALSE(account.InTransaction());
        EXPECT_EQ(LotCount(account), 10);
    }
    InsertLots(account, 1000);
    EXPECT_EQ(LotCount(account), 1010);
    EXPECT_EQ(Integrity(account), "ok");
    account.Close();
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

TEST(Connection, ClosesAndOpensAgainAfterTheDiskWasFull)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    InsertLots(account, 10);
    {
        const FullDisk disk(AccountFile::EmptyAccount().size());
        EXPECT_THROW(InsertLots(account, 1000), RuntimeError);
        account.Close();
    }
    account.Open(file.Path());
    EXPECT_EQ(LotCount(account), 10);
    EXPECT_EQ(Integrity(account), "ok");
}

TEST(Connection, KeepsWhatWasStoredWhenTheFileMayNotGrow)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    InsertLots(account, 10);
    account.ExecuteScript("PRAGMA max_page_count = 1"); // at most the pages that it has
    try {
        InsertLots(account, 1000);
        ADD_FAILURE() << "grew";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Description(), "database or disk is full");
    }
    EXPECT_EQ(LotCount(account), 10);
}

TEST(Connection, OpensAFileWhoseProgramWasKilledInTheMiddleOfATransaction)
{
    AccountFile file;
    const pid_t child = fork();
    if (child == 0) {
        Connection account;
        account.Open(file.Path());
        InsertLots(account, 10); // committed, but still in the log beside the file
        account.BeginTrans();
        for (int i = 0; i < 20000; ++i) // more than the cache holds, so that pages reach the log
            account.Execute("INSERT INTO PriceHistory (Symbol) VALUES (?)", QString(500, 'x'));
        raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_NE(file.Listing(), "Broker.mdb");

    Connection account;
    account.Open(file.Path());
    EXPECT_EQ(LotCount(account), 10);
    EXPECT_EQ(Integrity(account), "ok");
    account.Close();
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

// --- a newer layout -------------------------------------------------------------------------------

TEST(NewerLayout, IsRefusedWithASentenceAndLeftAlone)
{
    AccountFile file;
    {
        Connection account;
        account.Open(file.Path());
        account.ExecuteScript(QStringLiteral("PRAGMA user_version = %1").arg(LayoutVersion + 1));
    }
    const QByteArray before = AccountFile::Bytes(file.Path());
    Connection account;
    try {
        account.Open(file.Path());
        FAIL() << "opened";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), RuntimeError::StoreNumber);
        EXPECT_EQ(error.Description(),
                  QStringLiteral("The file '%1' was written by a newer version of Quillon and has "
                                 "another layout (%2; this version knows %3). Please install the "
                                 "newer version.")
                      .arg(file.Path())
                      .arg(LayoutVersion + 1)
                      .arg(LayoutVersion));
    }
    EXPECT_THROW(account.OpenForReading(file.Path()), RuntimeError);
    EXPECT_EQ(AccountFile::Bytes(file.Path()), before);
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

// --- a folder without shared memory ---------------------------------------------------------------

namespace
{

void *NoSharedMapping(void *place, size_t size, int protection, int flags, int file, off_t offset)
{
    if (flags & MAP_SHARED) {
        errno = ENODEV;
        return MAP_FAILED;
    }
    return mmap(place, size, protection, flags, file, offset);
}

/// As on a file system that maps no files.
class NoSharedMemory
{
public:
    NoSharedMemory() { Set(reinterpret_cast<sqlite3_syscall_ptr>(NoSharedMapping)); }
    ~NoSharedMemory() { Set(nullptr); }
    NoSharedMemory(const NoSharedMemory &) = delete;
    NoSharedMemory &operator=(const NoSharedMemory &) = delete;

private:
    static void Set(sqlite3_syscall_ptr call)
    {
        sqlite3_vfs *system = sqlite3_vfs_find(nullptr);
        ASSERT_EQ(system->xSetSystemCall(system, "mmap", call), SQLITE_OK);
    }
};

std::string LotsAndTrades(const QString &path)
{
    Connection account;
    account.Open(path);
    Statement row = account.Prepare("SELECT (SELECT count(*) FROM History) || ' ' || (SELECT "
                                    "count(*) FROM PriceHistory) || ' ' "
                                    "|| (SELECT group_concat(Symbol || Shares) FROM DailyTracker)");
    row.Step();
    return row.Text(0).toStdString();
}

} // namespace

TEST(FolderWithoutSharedMemory, TakesPostingsWithARollbackJournal)
{
    constexpr int postings = 40;
    AccountFile expected, file;
    {
        PostingLoop loop(expected.Path());
        for (int i = 0; i < postings; ++i)
            loop.PostNext();
    }
    {
        const NoSharedMemory folder;
        PostingLoop loop(file.Path());
        for (int i = 0; i < postings; ++i)
            loop.PostNext();
        EXPECT_EQ(file.Listing(), "Broker.mdb"); // no log, and nothing of the attempt
    }
    EXPECT_EQ(LotsAndTrades(file.Path()), LotsAndTrades(expected.Path()));
}

TEST(FolderWithoutSharedMemory, GetsTheLogOfAnotherMachineHome)
{
    AccountFile file, moved;
    {
        Connection account;
        account.Open(file.Path());
        account.ExecuteScript("INSERT INTO PriceHistory (Symbol) VALUES ('LOGGED')");
        AccountFile::Write(moved.Path(), AccountFile::Bytes(file.Path()));
        AccountFile::Write(moved.Path() + "-wal", AccountFile::Bytes(file.Path() + "-wal"));
    }
    const NoSharedMemory folder;
    Connection account, other;
    account.Open(moved.Path());
    other.Open(moved.Path());
    Statement row = account.Prepare("SELECT Symbol FROM PriceHistory");
    ASSERT_TRUE(row.Step());
    EXPECT_EQ(row.Text(0), "LOGGED");
    EXPECT_EQ(moved.Listing(), "Broker.mdb");
}
