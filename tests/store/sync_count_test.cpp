/// How often a posting waits for the disk.

#include "account_file.h"
#include "sync_counter.h"

#include "crash/posting_loop.h"

#include <gtest/gtest.h>

TEST(Posting, WaitsForTheDiskTwiceAtMost)
{
    AccountFile file;
    PostingLoop loop(file.Path());
    loop.PostNext(); // the first write of a run also syncs the folder of the log
    for (int posting = 2; posting <= 30; ++posting) {
        SyncCounter::Reset();
        loop.PostNext();
        EXPECT_GE(SyncCounter::Count(), 1) << "posting " << posting << " is not safe against a power failure";
        EXPECT_LE(SyncCounter::Count(), 2) << "posting " << posting; // the lots before it, and itself
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
