/// How often a posting waits for the disk.

#include "account_file.h"
#include "sync_counter.h"

#include "crash/posting_loop.h"
#include "old_account.h"
#include "test_services.h"

#include "platform/files.h"
#include "store/backup.h"
#include "store/conversion.h"
#include "store/daily_copy.h"
#include "store/database_copy.h"

#include <gtest/gtest.h>

TEST(Posting, WaitsForTheDiskTwiceAtMost)
{
    AccountFile file;
    PostingLoop loop(file.Path());
    loop.PostNext(); // the first write of a run also syncs the folder of the log
    for (int posting = 2; posting <= 30; ++posting) {
        SyncCounter::Reset();
        loop.PostNext();
        EXPECT_GE(SyncCounter::Count(), 1)
            << "posting " << posting << " is not safe against a power failure";
        EXPECT_LE(SyncCounter::Count(), 2)
            << "posting " << posting; // the lots before it, and itself
    }
}

TEST(Connection, SyncsOnceForACommitAndNeverForReading)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    account.Execute("INSERT INTO PriceHistory (Symbol) VALUES ('first')"); // starts the log
    SyncCounter::Reset();
    {
        WriteGuard guard(account);
        for (int i = 0; i < 1000; ++i)
            account.Execute("INSERT INTO PriceHistory (Symbol) VALUES ('ACME')");
        EXPECT_EQ(SyncCounter::Count(), 0);
        guard.Commit();
    }
    EXPECT_EQ(SyncCounter::Count(), 1);
    account.Execute("SELECT * FROM PriceHistory");
    EXPECT_EQ(SyncCounter::Count(), 1);
}

// --- a power failure takes no name that the user was told of ---------------------------------------

namespace
{

class NamesOnDisk : public testing::Test
{
protected:
    NamesOnDisk() { SyncCounter::unsyncedFolders.clear(); }
    ~NamesOnDisk() override
    {
        // In the temporary folder alone: the rest of the program has its own.
        EXPECT_EQ(SyncCounter::unsyncedFolders, std::set<std::string>());
    }
    TestAppFolder m_folder;
    TestServices m_services{m_folder.Path()};
    QTemporaryDir m_stick;
};

} // namespace

TEST_F(NamesOnDisk, ComeWithACopyOfAnAccount)
{
    CopyDatabase(m_folder.SampleAccount(), m_folder.File("Copy.mdb"));
}

TEST_F(NamesOnDisk, ComeWithTheDailyCopyAndItsNewFolder)
{
    Connection account;
    account.Open(m_folder.SampleAccount());
    SyncCounter::Reset();
    MakeDailyCopy(account, QDate(2026, 3, 2));
    EXPECT_GE(SyncCounter::Count(), 3); // the copy, its name, the name of its folder
}

TEST_F(NamesOnDisk, ComeWithANewFile)
{
    Files::CopyFile(m_folder.SampleAccount(), m_folder.File("New.mdb"), false);
    Files::WriteFile(m_folder.File("sites.json"), "{}");
}

TEST_F(NamesOnDisk, ComeWithABackupAndARestore)
{
    QDir().mkpath(m_folder.File("help/pictures"));
    m_folder.AddFile("help/pictures/one.png", "1");
    BackUp(m_services.services, BackupTarget(m_stick.path()), [] {});
    EXPECT_EQ(m_services.Status(), "Backup procedure successful!");
    EXPECT_EQ(SyncCounter::unsyncedFolders, std::set<std::string>());
    const QString backup = m_stick.path() + "/Quillon Backup";
    QFile::rename(backup + '/' + QDir(m_folder.Path()).dirName(), backup + "/Quillon");
    SyncCounter::unsyncedFolders.clear();
    m_services.dialogs.AnswerRest(Answer::Yes);
    EXPECT_TRUE(Restore(m_services.services, AccountLock(), backup, [] {}));
}

TEST_F(NamesOnDisk, ComeWithAConversion)
{
    MakeControlFileOld(m_folder);
    Databases databases;
    AccountState account;
    Settings settings;
    settings.CurrentFilePath = AddOldAccount(m_folder, "Broker.mdb");
    settings.AccountName = "Broker";
    OpenDatabases(databases, settings, account, m_services.services);
    ConversionWork work{databases, settings, account, m_services.services,
                        [&] { CloseDatabases(databases); }};
    ConvertToVersion5(work);
}
