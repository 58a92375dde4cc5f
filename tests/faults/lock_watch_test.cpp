/// The locks of the store on a database, which any other file handle on it takes away as it closes.
/// That no operation of the program does so is looked at in each of its runs (faulty_world.cpp).

#include "faults/lock_watch.h"
#include "support/account_file.h"

#include "store/connection.h"

#include <gtest/gtest.h>

TEST(LocksOfTheStore, AreSeenToGoWithAFileThatIsReadBesideTheConnection)
{
    AccountFile file;
    {
        Connection account;
        account.Open(file.Path());
        account.Execute("INSERT INTO History (Symbol) VALUES ('ACME')");
        AccountFile::Bytes(file.Path());
        EXPECT_EQ(LockWatch::TakeDropped(), QStringList(file.Path()));
    }
}

TEST(LocksOfTheStore, StayWithASecondConnectionThatIsClosed)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    account.Execute("INSERT INTO History (Symbol) VALUES ('ACME')");
    Connection second;
    second.Open(file.Path());
    second.Execute("INSERT INTO History (Symbol) VALUES ('O''NEIL')");
    second.Close();
    AccountFile::Bytes(file.Path() + "-wal");
    account.Close();
    AccountFile::Bytes(file.Path());
    EXPECT_EQ(LockWatch::TakeDropped(), QStringList());
}
