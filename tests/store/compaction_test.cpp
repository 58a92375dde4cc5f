#include "account_file.h"

#include "store/compaction.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

constexpr int Rows = 2000;

class CompactionTest : public testing::Test
{
protected:
    CompactionTest()
    {
        Connection account;
        account.Open(m_file.Path());
        account.ExecuteScript(
            "PRAGMA user_version = 0;"
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) "
            "INSERT INTO History (Symbol, Name, Description, Shares) "
            "SELECT 'S' || i, 'O''Neil é', 'Bought', i FROM n;");
        account.Execute("DELETE FROM History WHERE ID > ?", Rows);
    }
    QString Path() const { return m_file.Path(); }
    QString Target() const { return m_file.In("Temp.mdb"); }
    void Compact() const
    {
        Compaction compaction(Path(), Target());
        compaction.Write();
        compaction.Replace();
    }
    qint64 Size() const { return QFileInfo(Path()).size(); }
    QString Value(const QString &sql) const
    {
        Connection account;
        account.Open(Path());
        Statement row = account.Prepare(sql);
        row.Step();
        return row.Text(0);
    }
    /// All rows of History and how it holds together.
    QString State() const
    {
        return Value("SELECT (SELECT integrity_check FROM pragma_integrity_check) || ' ' || "
                     "count(*) || ' ' || sum(Shares) || ' ' || max(ID) || ' ' || min(Name) "
                     "FROM History");
    }
    const QString whole = QStringLiteral("ok 2000 2001000.0 2000 O'Neil é");

    AccountFile m_file;
};

int NumberOf(const std::function<void()> &act)
{
    try {
        act();
    } catch (const RuntimeError &error) {
        return error.Number();
    }
    return 0;
}

} // namespace

using Compacting = CompactionTest;

TEST_F(Compacting, ShrinksTheFileAndKeepsEveryRow)
{
    const qint64 before = Size();
    Compact();
    EXPECT_LT(Size(), before / 4); // a tenth of the rows is left
    EXPECT_EQ(State(), whole);
    EXPECT_EQ(m_file.Listing(), "Broker.mdb");
}

TEST_F(Compacting, KeepsMarkVersionAndTheNextNumberOfARow)
{
    Compact();
    EXPECT_EQ(Value("PRAGMA application_id").toInt(), ApplicationMark);
    EXPECT_EQ(Value("PRAGMA user_version"), "0");
    Connection account;
    account.Open(Path());
    account.ExecuteScript("INSERT INTO History (Symbol) VALUES ('NEW')");
    EXPECT_EQ(account.LastInsertId(), 20001); // numbers are not given twice
}

TEST_F(Compacting, ACompactFileStillReplacesIt)
{
    Compact();
    struct stat first = {};
    struct stat second = {};
    stat(Path().toUtf8(), &first);
    Compact();
    stat(Path().toUtf8(), &second);
    EXPECT_NE(first.st_ino, second.st_ino);
    EXPECT_EQ(State(), whole);
}

TEST_F(Compacting, KeepsThePermissions)
{
    for (const mode_t mode : {mode_t{0600}, mode_t{0640}}) {
        chmod(Path().toUtf8(), mode);
        Compact();
        struct stat now = {};
        stat(Path().toUtf8(), &now);
        EXPECT_EQ(now.st_mode & 0777, mode);
    }
}

TEST_F(Compacting, TouchesNoFileThatHasTheNameOfItsTarget)
{
    AccountFile::Write(Target(), "an account of the user");
    AccountFile::Write(m_file.In("Temp 2.mdb-wal"), "a log");
    ASSERT_TRUE(QFile::link("nowhere", m_file.In("Temp 3.mdb")));
    {
        Compaction compaction(Path(), Target());
        EXPECT_EQ(compaction.Target(), m_file.In("Temp 4.mdb"));
        compaction.Write();
        compaction.Replace();
    }
    EXPECT_EQ(State(), whole);
    EXPECT_EQ(AccountFile::Bytes(Target()), "an account of the user");
    EXPECT_EQ(AccountFile::Bytes(m_file.In("Temp 2.mdb-wal")), "a log");
    EXPECT_TRUE(QFileInfo(m_file.In("Temp 3.mdb")).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(m_file.In("Temp 4.mdb")));
}

TEST_F(Compacting, BringsWhatADyingProgramLeftInTheLog)
{
    AccountFile other;
    {
        Connection account;
        account.Open(Path());
        account.ExecuteScript("UPDATE History SET Name = 'Logged'");
        AccountFile::Write(other.Path(), AccountFile::Bytes(Path()));
        AccountFile::Write(other.Path() + "-wal", AccountFile::Bytes(Path() + "-wal"));
    }
    Compaction compaction(other.Path(), other.In("Temp.mdb"));
    compaction.Write();
    compaction.Replace();
    Connection account;
    account.Open(other.Path());
    Statement row = account.Prepare("SELECT count(*) FROM History WHERE Name = 'Logged'");
    row.Step();
    EXPECT_EQ(row.Int64(0), Rows);
}

TEST_F(Compacting, AFileInUseIsErrorSeventyAndChangesNothing)
{
    Connection other;
    other.Open(Path());
    other.ExecuteScript("UPDATE History SET Shares = Shares WHERE ID = 1");
    EXPECT_EQ(NumberOf([&] { Compact(); }), RuntimeError::PermissionDeniedNumber);
    other.ExecuteScript("INSERT INTO History (Symbol) VALUES ('NEW')"); // it still works on it
    other.Close();
    EXPECT_EQ(Value("SELECT count(*) FROM History"), "2001");
    EXPECT_EQ(m_file.Listing(), "Broker.mdb");
}

TEST_F(Compacting, KeepsOthersOutUntilTheFileIsReplaced)
{
    Compaction compaction(Path(), Target());
    compaction.Write();
    Connection other;
    EXPECT_THROW(other.Open(Path()), RuntimeError);
    compaction.Replace();
    other.Open(Path());
    EXPECT_TRUE(other.IsOpen());
}

TEST_F(Compacting, WithoutTheTargetsFolderFailsAndKeepsTheFile)
{
    EXPECT_THROW(
        {
            Compaction compaction(Path(), m_file.In("none/Temp.mdb"));
            compaction.Write();
        },
        RuntimeError);
    EXPECT_EQ(State(), whole);
}

TEST_F(Compacting, AMissingFileIsErrorFiftyThree)
{
    EXPECT_EQ(NumberOf([&] { Compaction(m_file.In("None.mdb"), Target()); }),
              RuntimeError::FileNotFoundNumber);
}

TEST_F(Compacting, AForeignFileIsRefusedAndLeftAlone)
{
    const QByteArray letter = "Dear diary, today I bought 100 ACME.\n";
    AccountFile::Write(m_file.In("Diary.mdb"), letter);
    EXPECT_THROW(Compaction(m_file.In("Diary.mdb"), Target()), RuntimeError);
    EXPECT_EQ(AccountFile::Bytes(m_file.In("Diary.mdb")), letter);
}

TEST_F(Compacting, AnAccountBehindALinkLeavesTheLink)
{
    const QString link = m_file.In("Link.mdb");
    ASSERT_TRUE(QFile::link(Path(), link));
    Compaction compaction(link, Target());
    compaction.Write();
    compaction.Replace();
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(State(), whole);
}

TEST_F(Compacting, ThatIsGivenUpBeforeItReplacesLeavesTheFileWholeAndNothingBehind)
{
    {
        Compaction compaction(Path(), Target());
        compaction.Write();
    }
    EXPECT_EQ(State(), whole);
    EXPECT_EQ(m_file.Listing(), "Broker.mdb");
}
