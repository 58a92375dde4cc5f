/// The copy of each day's first opening.

#include "account_file.h"

#include "store/daily_copy.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

const QDate Day(2026, 11, 21);

class DailyCopy : public testing::Test
{
protected:
    DailyCopy() { account.Open(file.Path()); }

    /// The copies' folder by name.
    std::string Copies() const
    {
        return QDir(file.In("Broker copies"))
            .entryList(QDir::Files)
            .join(QLatin1Char(' '))
            .toStdString();
    }
    QString Copy(const char *name) const { return file.In("Broker copies/") + name; }
    void Put(const char *name) const
    {
        QDir().mkpath(file.In("Broker copies"));
        AccountFile::Write(Copy(name), "a copy");
    }
    static mode_t Mode(const QString &path)
    {
        struct stat status
        {};
        EXPECT_EQ(stat(path.toUtf8().constData(), &status), 0) << qPrintable(path);
        return status.st_mode & 07777;
    }
    /// What MakeDailyCopy says; "made" when it says nothing.
    std::string Make(QDate day)
    {
        try {
            MakeDailyCopy(account, day);
        } catch (const RuntimeError &error) {
            return error.Description().toStdString();
        }
        return "made";
    }

    AccountFile file;
    Connection account;
};

} // namespace

TEST_F(DailyCopy, LiesBesideTheAccountUnderTheDayAndOpensAsAnAccount)
{
    account.Execute("INSERT INTO PriceHistory (Symbol, Shares) VALUES ('O''NEIL', 1)");
    MakeDailyCopy(account, Day);
    EXPECT_EQ(Copies(), "2026-11-21.mdb");
    Connection copy;
    copy.Open(Copy("2026-11-21.mdb"));
    Statement rows = copy.Prepare("SELECT Symbol FROM PriceHistory");
    ASSERT_TRUE(rows.Step());
    EXPECT_EQ(rows.Text(0), "O'NEIL");
}

TEST_F(DailyCopy, IsForItsOwnerAlone)
{
    MakeDailyCopy(account, Day);
    EXPECT_EQ(Mode(Copy("2026-11-21.mdb")), 0600u);
    EXPECT_EQ(Mode(file.In("Broker copies")), 0700u);
}

TEST_F(DailyCopy, IsMadeOnceADay)
{
    MakeDailyCopy(account, Day);
    const QByteArray morning = AccountFile::Bytes(Copy("2026-11-21.mdb"));
    account.Execute("INSERT INTO PriceHistory (Symbol, Shares) VALUES ('ACME', 1)");
    MakeDailyCopy(account, Day);
    EXPECT_EQ(AccountFile::Bytes(Copy("2026-11-21.mdb")), morning);
    MakeDailyCopy(account, Day.addDays(1));
    EXPECT_EQ(Copies(), "2026-11-21.mdb 2026-11-22.mdb");
}

TEST_F(DailyCopy, KeepsTheLastSevenAndEveryFileThatIsNoneOfThem)
{
    for (const char *name :
         {"2025-01-01.mdb", "2026-02-28.mdb", "2026-02-30.mdb", "2026-11-21.mdb.txt", "notes.txt",
          "Broker.mdb", "x2026-01-01.mdb", "2026-1-1.mdb", "2026-01-01.MDB"})
        Put(name);
    for (int day = 9; day >= 1; --day)
        MakeDailyCopy(account, Day.addDays(-day));
    MakeDailyCopy(account, Day);
    EXPECT_EQ(Copies(), "2026-01-01.MDB 2026-02-30.mdb 2026-1-1.mdb 2026-11-15.mdb 2026-11-16.mdb "
                        "2026-11-17.mdb 2026-11-18.mdb 2026-11-19.mdb 2026-11-20.mdb "
                        "2026-11-21.mdb 2026-11-21.mdb.txt Broker.mdb notes.txt x2026-01-01.mdb");
}

TEST_F(DailyCopy, LetsCopiesOfDaysToComeStay)
{
    for (int day = 1; day <= 8; ++day)
        MakeDailyCopy(account, Day.addYears(1).addDays(day)); // the clock was wrong
    MakeDailyCopy(account, Day);
    EXPECT_EQ(Copies(), "2026-11-21.mdb 2027-11-23.mdb 2027-11-24.mdb 2027-11-25.mdb "
                        "2027-11-26.mdb 2027-11-27.mdb 2027-11-28.mdb 2027-11-29.mdb");
}

TEST_F(DailyCopy, LetsACopyStayThatIsOpen)
{
    for (int day = 7; day >= 1; --day)
        MakeDailyCopy(account, Day.addDays(-day));
    AccountFile::Write(Copy("2026-11-14.mdb.lock"), "");
    MakeDailyCopy(account, Day);
    EXPECT_TRUE(QFile::exists(Copy("2026-11-14.mdb")));
}

TEST_F(DailyCopy, OfACopyIsNotMade)
{
    MakeDailyCopy(account, Day);
    Connection copy;
    copy.Open(Copy("2026-11-21.mdb"));
    MakeDailyCopy(copy, Day.addDays(1));
    EXPECT_EQ(QDir(file.In("Broker copies")).entryList(QDir::Dirs | QDir::NoDotAndDotDot),
              QStringList());
}

TEST_F(DailyCopy, IsFoundBesideTheFileThatALinkLeadsTo)
{
    QTemporaryDir elsewhere;
    const QString link = elsewhere.filePath("My account.mdb");
    ASSERT_TRUE(QFile::link(file.Path(), link));
    Connection linked;
    linked.Open(link);
    MakeDailyCopy(linked, Day);
    EXPECT_EQ(Copies(), "2026-11-21.mdb");
    EXPECT_EQ(DailyCopyFolder(link), DailyCopyFolder(file.Path()));
}

TEST_F(DailyCopy, KeepsTwoSpellingsOfTheExtensionApart)
{
    AccountFile::Write(file.In("Broker.MDB"), AccountFile::EmptyAccount());
    EXPECT_NE(DailyCopyFolder(file.In("Broker.MDB")), DailyCopyFolder(file.Path()));
}

TEST_F(DailyCopy, StartsAnewBehindOneThatWasBrokenOff)
{
    Put("2026-11-21.mdb.new");
    EXPECT_EQ(Make(Day), "made");
    EXPECT_EQ(Copies(), "2026-11-21.mdb");
}

TEST_F(DailyCopy, ThatFailsSaysSoAndLeavesTheOthers)
{
    for (int day = 9; day >= 1; --day)
        MakeDailyCopy(account, Day.addDays(-day));
    const std::string before = Copies();
    const QByteArray folder = file.In("Broker copies").toUtf8();
    ASSERT_EQ(chmod(folder.constData(), 0555), 0);
    const bool wasRoot = geteuid() == 0;
    // As a user who may not write there; root may.
    if (wasRoot) {
        ASSERT_EQ(setresuid(65534, 65534, 0), 0);
    }
    const std::string said = Make(Day);
    if (wasRoot) {
        ASSERT_EQ(setresuid(0, 0, 0), 0);
    }
    chmod(folder.constData(), 0700);
    EXPECT_NE(said, "made");
    EXPECT_EQ(Copies(), before);
}

TEST_F(DailyCopy, WhoseFolderIsAFileSaysSo)
{
    AccountFile::Write(file.In("Broker copies"), "in the way");
    EXPECT_EQ(Make(Day).find("Path"), 0u);
    EXPECT_EQ(AccountFile::Bytes(file.In("Broker copies")), QByteArray("in the way"));
}
