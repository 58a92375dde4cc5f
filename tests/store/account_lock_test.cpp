/// One program at a time works on an account.

#include "account_file.h"

#include "second_program.h"
#include "store/account_lock.h"

#include <gtest/gtest.h>

#include <cstdio>

#include <sched.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

using Outcome = AccountLock::Outcome;

TEST(AccountLock, HoldsOffASecondProgramUntilItIsGivenBack)
{
    AccountFile file;
    AccountLock lock;
    EXPECT_EQ(lock.Acquire(file.Path()), Outcome::Taken);
    EXPECT_EQ(SecondProgram(file.Path()).said, "open elsewhere");
    lock.Release();
    EXPECT_EQ(SecondProgram(file.Path()).said, "taken");
}

TEST(AccountLock, IsRefusedWhileASecondProgramHoldsIt)
{
    AccountFile file;
    SecondProgram other(file.Path());
    AccountLock lock;
    EXPECT_TRUE(lock.IsOpenElsewhere(file.Path()));
    EXPECT_EQ(lock.Acquire(file.Path()), Outcome::OpenElsewhere);
    EXPECT_FALSE(lock.Holds(file.Path()));
    other.Close();
    EXPECT_FALSE(lock.IsOpenElsewhere(file.Path()));
    EXPECT_EQ(lock.Acquire(file.Path()), Outcome::Taken);
    EXPECT_TRUE(lock.Holds(file.Path()));
}

TEST(AccountLock, IsTakenOverFromAProgramThatDied)
{
    AccountFile file;
    SecondProgram other(file.Path());
    other.Kill();
    EXPECT_EQ(file.Listing(), "Broker.mdb Broker.mdb.lock");
    AccountLock lock;
    EXPECT_FALSE(lock.IsOpenElsewhere(file.Path()));
    EXPECT_EQ(lock.Acquire(file.Path()), Outcome::TakenOver);
    lock.Release();
    EXPECT_EQ(lock.Acquire(file.Path()), Outcome::Taken);
}

TEST(AccountLock, LeavesNoFileBehind)
{
    AccountFile file;
    {
        AccountLock lock;
        lock.Acquire(file.Path());
        EXPECT_EQ(file.Listing(), "Broker.mdb Broker.mdb.lock");
    }
    EXPECT_EQ(file.Listing(), "Broker.mdb");
    SecondProgram(file.Path()).Close();
    EXPECT_EQ(file.Listing(), "Broker.mdb");
    EXPECT_EQ(AccountFile::Bytes(file.Path()), AccountFile::EmptyAccount());
}

TEST(AccountLock, StandsAgainstAnotherInTheSameProcess)
{
    AccountFile file;
    AccountLock first, second;
    first.Acquire(file.Path());
    EXPECT_EQ(second.Acquire(file.Path()), Outcome::OpenElsewhere);
    second.Release(); // what it does not hold it cannot give back
    EXPECT_EQ(SecondProgram(file.Path()).said, "open elsewhere");
}

TEST(AccountLock, IsTakenAgainByItsHolder)
{
    AccountFile file;
    AccountLock lock;
    lock.Acquire(file.Path());
    EXPECT_FALSE(lock.IsOpenElsewhere(file.Path()));
    EXPECT_EQ(lock.Acquire(file.Path()), Outcome::Taken);
    EXPECT_EQ(SecondProgram(file.Path()).said, "open elsewhere");
}

TEST(AccountLock, MovesToAnotherAccount)
{
    AccountFile file;
    const QString other = file.In("Ann's Börse.mdb");
    AccountFile::Write(other, AccountFile::EmptyAccount());
    AccountLock lock;
    lock.Acquire(file.Path());
    lock.Acquire(other);
    EXPECT_EQ(SecondProgram(file.Path()).said, "taken");
    EXPECT_EQ(SecondProgram(other).said, "open elsewhere");
}

TEST(AccountLock, TellsAccountsOfOneNameInTwoFoldersApart)
{
    AccountFile here, there;
    AccountLock first, second;
    EXPECT_EQ(first.Acquire(here.Path()), Outcome::Taken);
    EXPECT_EQ(second.Acquire(there.Path()), Outcome::Taken);
}

TEST(AccountLock, KnowsAnAccountThroughASymbolicLink)
{
    AccountFile file;
    QTemporaryDir elsewhere;
    const QString link = elsewhere.filePath("My account.mdb");
    ASSERT_TRUE(QFile::link(file.Path(), link));
    AccountLock lock;
    lock.Acquire(link);
    EXPECT_TRUE(lock.Holds(file.Path()));
    EXPECT_EQ(SecondProgram(file.Path()).said, "open elsewhere");
    EXPECT_EQ(SecondProgram(link).said, "open elsewhere");
    EXPECT_EQ(QDir(elsewhere.path()).entryList(QDir::Files), QStringList("My account.mdb"));
}

TEST(AccountLock, DoesWithoutWhereNothingCanBeWritten)
{
    AccountFile file;
    const QByteArray folder = file.Folder().toUtf8();
    ASSERT_EQ(chmod(folder.constData(), 0555), 0);
    const bool wasRoot = geteuid() == 0;
    // An ordinary user, who owns nothing here; root may write everywhere.
    if (wasRoot) {
        ASSERT_EQ(setresuid(65534, 65534, 0), 0);
    }
    AccountLock lock;
    const Outcome outcome = lock.Acquire(file.Path());
    if (wasRoot) {
        ASSERT_EQ(setresuid(0, 0, 0), 0);
    }
    chmod(folder.constData(), 0755);
    EXPECT_EQ(outcome, Outcome::Unguarded);
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

TEST(AccountLock, MakesNoFileForAnAccountThatIsNotThere)
{
    AccountFile file;
    AccountLock lock;
    EXPECT_EQ(lock.Acquire(file.In("Gone.mdb")), Outcome::Unguarded);
    EXPECT_FALSE(lock.IsOpenElsewhere(file.In("Gone.mdb")));
    EXPECT_EQ(lock.Acquire(QString()), Outcome::Unguarded);
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

TEST(AccountLock, FollowsNoLinkThatSomebodyLaidInItsPlace)
{
    AccountFile file;
    AccountFile::Write(file.In("precious.txt"), "precious");
    ASSERT_TRUE(QFile::link(file.In("precious.txt"), file.Path() + ".lock"));
    {
        AccountLock lock;
        EXPECT_EQ(lock.Acquire(file.Path()), Outcome::Unguarded);
    }
    EXPECT_EQ(AccountFile::Bytes(file.In("precious.txt")), QByteArray("precious"));
}

TEST(AccountLock, IsHeldByOneOfManyThatComeAndGo)
{
    AccountFile file;
    // Each child takes the lock 100 times and, holding it, must be alone with the folder.
    std::vector<pid_t> children;
    for (int child = 0; child < 4; ++child) {
        const pid_t id = fork();
        if (id == 0) {
            const QByteArray inside = file.In("inside").toUtf8();
            AccountLock lock;
            for (int taken = 0; taken < 100;) {
                const Outcome outcome = lock.Acquire(file.Path());
                if (outcome == Outcome::OpenElsewhere) {
                    sched_yield();
                    continue;
                }
                if (outcome == Outcome::Unguarded || mkdir(inside.constData(), 0700) != 0)
                    _exit(1);
                if (rmdir(inside.constData()) != 0)
                    _exit(2);
                lock.Release();
                ++taken;
            }
            _exit(0);
        }
        children.push_back(id);
    }
    for (const pid_t id : children) {
        int status = -1;
        waitpid(id, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

// --- one file under two names ---------------------------------------------------------------------

namespace
{

class HardLinkedAccount : public testing::Test
{
protected:
    HardLinkedAccount() { EXPECT_EQ(link(m_file.Path().toUtf8(), Other().toUtf8()), 0); }
    QString Other() const { return m_file.In("Other.mdb"); }

    AccountFile m_file;
};

} // namespace

TEST_F(HardLinkedAccount, IsOneAccountUnderBothNames)
{
    SecondProgram other(m_file.Path());
    AccountLock lock;
    EXPECT_TRUE(lock.IsOpenElsewhere(Other()));
    EXPECT_EQ(lock.Acquire(Other()), Outcome::OpenElsewhere);
    EXPECT_FALSE(QFile::exists(Other() + ".lock"));
    other.Close();
    EXPECT_FALSE(lock.IsOpenElsewhere(Other()));
    EXPECT_EQ(lock.Acquire(Other()), Outcome::Taken);
    EXPECT_EQ(SecondProgram(m_file.Path()).said, "open elsewhere");
    EXPECT_FALSE(lock.IsOpenElsewhere(Other())); // it is ours
}

TEST_F(HardLinkedAccount, IsFreeAfterAProgramThatDied)
{
    SecondProgram other(m_file.Path());
    other.Kill();
    AccountLock lock;
    EXPECT_EQ(lock.Acquire(Other()), Outcome::Taken);
}

TEST_F(HardLinkedAccount, IsLockedAsTheFileThatItIsAfterACompaction)
{
    AccountLock lock;
    EXPECT_EQ(lock.Acquire(m_file.Path()), Outcome::Taken);
    AccountFile::Write(m_file.In("Temp.mdb"), AccountFile::EmptyAccount());
    ASSERT_EQ(rename(m_file.In("Temp.mdb").toUtf8(), m_file.Path().toUtf8()), 0);
    EXPECT_EQ(lock.Acquire(m_file.Path()), Outcome::Taken);
    EXPECT_EQ(SecondProgram(Other()).said, "taken"); // the file of before
    EXPECT_EQ(SecondProgram(m_file.Path()).said, "open elsewhere");
}

TEST(AnAccountThatIsDeleted, WhileItIsLockedLeavesNoLockOnTheFileThatGetsItsPlace)
{
    AccountFile deleted;
    AccountLock lock;
    EXPECT_EQ(lock.Acquire(deleted.Path()), Outcome::Taken);
    ASSERT_TRUE(QFile::remove(deleted.Path()));
    for (int i = 0; i < 20; ++i) { // many a file system gives the number to the next one
        const QString next = deleted.In(qPrintable(QStringLiteral("Next %1.mdb").arg(i)));
        AccountFile::Write(next, AccountFile::EmptyAccount());
        EXPECT_EQ(AccountLock().Acquire(next), Outcome::Taken) << i;
    }
}
