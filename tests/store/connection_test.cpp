/// Connections to our files: values bound and read back, statements, guards, the file after
/// closing.

#include "account_file.h"

#include "store/connection.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

constexpr qint64 Largest = std::numeric_limits<qint64>::max();
constexpr qint64 Smallest = std::numeric_limits<qint64>::min();

class OpenAccount : public testing::Test
{
protected:
    OpenAccount()
    {
        m_account.Open(m_file.Path());
        m_account.ExecuteScript("CREATE TABLE Probe (Value)");
    }

    /// Binds the value, and gives the row back to be read from column 0.
    template <class Value>
    Statement Stored(const Value &value)
    {
        m_account.Execute("DELETE FROM Probe");
        m_account.Execute("INSERT INTO Probe VALUES (?)", value);
        Statement row = m_account.Prepare("SELECT Value, typeof(Value) FROM Probe");
        EXPECT_TRUE(row.Step());
        return row;
    }
    qint64 Count(const QString &from)
    {
        Statement row = m_account.Prepare("SELECT COUNT(*) FROM " + from);
        row.Step();
        return row.Int64(0);
    }
    void InsertLot(const QString &symbol)
    {
        m_account.Execute("INSERT INTO PriceHistory (Symbol) VALUES (?)", symbol);
    }

    AccountFile m_file;
    Connection m_account;
};

using Binding = OpenAccount;
using Guard = OpenAccount;
using Execute = OpenAccount;

} // namespace

TEST_F(Binding, KeepsMoneyAsTenThousandthsExactly)
{
    for (const qint64 units : {qint64{0}, qint64{1}, qint64{-125000}, Largest, Smallest}) {
        const Statement row = Stored(Currency::FromUnits(units));
        EXPECT_EQ(row.Money(0).Units(), units);
        EXPECT_EQ(row.Text(1), "integer");
    }
}

TEST_F(Binding, KeepsAShareCountWithSevenDigitsOnly)
{
    const Statement row = Stored(Single::FromDouble(1234567.89));
    EXPECT_EQ(row.ShareCount(0), Single::FromDouble(1234567.89));
    EXPECT_EQ(row.Double(0), 1234567.875);
    EXPECT_EQ(row.Text(1), "real");
}

TEST_F(Binding, KeepsTheSmallestAndTheLargestShareCount)
{
    for (const float value : {std::numeric_limits<float>::denorm_min(), 0.1f, -33.3333f,
                              std::numeric_limits<float>::max()})
        EXPECT_EQ(Stored(Single::FromFloat(value)).ShareCount(0).Value(), value);
}

TEST_F(Binding, KeepsCountersFlagsAndWholeNumbers)
{
    EXPECT_EQ(Stored(Integer::FromWide(-32768)).Counter(0), Integer::FromWide(-32768));
    EXPECT_EQ(Stored(true).Int64(0), 1);
    EXPECT_FALSE(Stored(false).Flag(0));
    EXPECT_EQ(Stored(Largest).Int64(0), Largest);
    EXPECT_EQ(Stored(7).Int64(0), 7);
    EXPECT_EQ(Stored(0.1).Double(0), 0.1);
}

TEST_F(Binding, ACounterBeyond16BitsIsAnOverflow)
{
    const Statement row = Stored(qint64{32768});
    EXPECT_THROW(row.Counter(0), RuntimeError);
}

TEST_F(Binding, KeepsTextsAsTheyAre)
{
    const QString texts[] = {
        "",
        " ",
        "O'NEIL",
        "\"; DROP TABLE History; --",
        "?",
        QString::fromUtf8("Crédit Générale Zürich ß"),
        QString::fromUtf8("日本 \xF0\x9F\x92\xB6"),
        QString::fromUtf8("before\0behind", 13),
        QString(1'000'000, 'x'),
    };
    for (const QString &text : texts) {
        const Statement row = Stored(text);
        EXPECT_EQ(row.Text(0), text);
        EXPECT_FALSE(row.IsNull(0));
        EXPECT_EQ(row.Text(1), "text");
    }
}

TEST_F(Binding, KeepsNullApartFromTheEmptyText)
{
    const Statement null = Stored(std::optional<QString>());
    EXPECT_TRUE(null.IsNull(0));
    EXPECT_TRUE(null.Text(0).isNull());

    const Statement empty = Stored(std::optional<QString>(""));
    EXPECT_FALSE(empty.IsNull(0));
    EXPECT_FALSE(empty.Text(0).isNull());
    EXPECT_FALSE(Stored(QString()).IsNull(0));
}

TEST_F(Binding, WritesDatesAndTimesThatSortAsTexts)
{
    const Statement date = Stored(QDate(2028, 2, 29));
    EXPECT_EQ(date.Text(0), "2028-02-29");
    EXPECT_EQ(date.Date(0), QDate(2028, 2, 29));
    EXPECT_EQ(Stored(QDate(1900, 1, 1)).Date(0), QDate(1900, 1, 1));

    const Statement time = Stored(QTime(9, 5, 7, 30));
    EXPECT_EQ(time.Text(0), "09:05:07.030");
    EXPECT_EQ(time.Time(0), QTime(9, 5, 7, 30));
    EXPECT_EQ(Stored(QTime(0, 0)).Time(0), QTime(0, 0));
    EXPECT_EQ(Stored(QTime(23, 59, 59, 999)).Time(0), QTime(23, 59, 59, 999));
}

TEST_F(Binding, AnInvalidDateOrTimeIsNull)
{
    EXPECT_TRUE(Stored(QDate()).IsNull(0));
    EXPECT_TRUE(Stored(QTime()).IsNull(0));
    EXPECT_FALSE(Stored(QDate()).Date(0).isValid());
    EXPECT_FALSE(Stored(QTime()).Time(0).isValid());
}

TEST_F(Binding, ATextThatIsNoDateReadsAsNone)
{
    for (const char *text : {"", "2026", "2026-02-30", "someday 12", "20xx-01-05"})
        EXPECT_FALSE(Stored(QString(text)).Date(0).isValid()) << text;
    for (const char *text : {"", "10:15", "25:00:00", "aa:bb:cc"})
        EXPECT_FALSE(Stored(QString(text)).Time(0).isValid()) << text;
}

TEST_F(Binding, ATimeWithoutMillisecondsIsRead)
{
    EXPECT_EQ(Stored(QString("10:15:00")).Time(0), QTime(10, 15));
}

TEST_F(Binding, AValueWithoutAPlaceIsAnError)
{
    EXPECT_THROW(m_account.Execute("INSERT INTO Probe VALUES (?)", 1, 2), RuntimeError);
}

TEST_F(Execute, TellsHowManyRowsItAffected)
{
    for (const char *symbol : {"ACME", "ACME", "BOLT"})
        InsertLot(symbol);
    EXPECT_EQ(
        m_account.Execute("UPDATE PriceHistory SET Shares = 5 WHERE Symbol = ?", QString("ACME")),
        2);
    EXPECT_EQ(m_account.Execute("UPDATE PriceHistory SET Shares = 5 WHERE Symbol = 'NONE'"), 0);
    EXPECT_EQ(m_account.Execute("SELECT * FROM PriceHistory"), 0);
    EXPECT_EQ(m_account.Execute("DELETE FROM PriceHistory"), 3);
}

TEST_F(Execute, RefusesABrokenStatementWithTheStoresDescription)
{
    try {
        m_account.Execute("UPDATE NoSuchTable SET Shares = 1");
        FAIL() << "ran";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), int(0x80004005));
        EXPECT_EQ(error.Description(), "no such table: NoSuchTable");
    }
}

TEST_F(Execute, ARowThatIsThereAlreadyHasTheNumberOfARefusedInsert)
{
    const char *insert = "INSERT INTO DescriptiveTable (TableName) VALUES ('Balance')";
    m_account.Execute(insert);
    try {
        m_account.Execute(insert);
        FAIL() << "inserted twice";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), int(0x80004005));
    }
}

TEST_F(Execute, NeverGivesTheIdOfADeletedLotToANewOne)
{
    InsertLot("ACME");
    InsertLot("ACME");
    const qint64 last = m_account.LastInsertId();
    m_account.Execute("DELETE FROM PriceHistory");
    InsertLot("ACME");
    EXPECT_EQ(m_account.LastInsertId(), last + 1);
}

TEST_F(Execute, OnAClosedConnectionIsError3704)
{
    m_account.Close();
    for (const auto &use : std::initializer_list<std::function<void()>>{
             [&] { m_account.Execute("SELECT 1"); }, [&] { m_account.ExecuteScript("SELECT 1"); },
             [&] { m_account.BeginTrans(); }, [&] { m_account.LastInsertId(); }})
        try {
            use();
            ADD_FAILURE() << "ran on a closed connection";
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.Number(), 3704);
        }
}

TEST_F(Guard, CommitKeepsAllWrites)
{
    {
        WriteGuard guard(m_account);
        InsertLot("ACME");
        InsertLot("BOLT");
        guard.Commit();
    }
    EXPECT_EQ(Count("PriceHistory"), 2);
    EXPECT_FALSE(m_account.InTransaction());
}

TEST_F(Guard, EveryOtherWayOutKeepsNone)
{
    try {
        WriteGuard guard(m_account);
        InsertLot("ACME");
        throw std::runtime_error("on the way");
    } catch (const std::runtime_error &) {
    }
    EXPECT_EQ(Count("PriceHistory"), 0);
    EXPECT_FALSE(m_account.InTransaction());
}

TEST_F(Guard, InsideAnotherLeavesTheDecisionToTheOuterOne)
{
    {
        WriteGuard outer(m_account);
        {
            WriteGuard inner(m_account);
            InsertLot("ACME");
            inner.Commit();
        }
        EXPECT_TRUE(m_account.InTransaction());
    }
    EXPECT_EQ(Count("PriceHistory"), 0);

    {
        WriteGuard outer(m_account);
        {
            WriteGuard inner(m_account);
            InsertLot("BOLT");
        }
        outer.Commit();
    }
    EXPECT_EQ(Count("PriceHistory"), 1);
}

TEST_F(Guard, AfterARefusedStatementTheWritesBeforeItCanStillBeDropped)
{
    {
        WriteGuard guard(m_account);
        InsertLot("ACME");
        EXPECT_THROW(m_account.Execute("INSERT INTO PriceHistory (Symbol) VALUES (NULL)"),
                     RuntimeError);
    }
    EXPECT_EQ(Count("PriceHistory"), 0);
}

TEST_F(Guard, IsSeenByTheOtherConnectionOnlyAfterItsCommit)
{
    Connection other;
    other.Open(m_file.Path());
    const auto seen = [&other] {
        Statement row = other.Prepare("SELECT COUNT(*) FROM PriceHistory");
        row.Step();
        return row.Int64(0);
    };
    WriteGuard guard(m_account);
    InsertLot("ACME");
    EXPECT_EQ(seen(), 0);
    guard.Commit();
    EXPECT_EQ(seen(), 1);
}

TEST_F(Guard, KeepsASecondWriterOutWithAnErrorNotForever)
{
    Connection other;
    other.Open(m_file.Path());
    WriteGuard guard(m_account);
    InsertLot("ACME");
    EXPECT_THROW(WriteGuard second(other), RuntimeError);
    guard.Commit();
    EXPECT_NO_THROW(WriteGuard third(other));
}

TEST(Connection, LeavesOneFileThatOpensAsACopyAfterClose)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    EXPECT_EQ(account.Path(), file.Path());
    account.Execute("INSERT INTO PriceHistory (Symbol) VALUES ('ACME')");
    account.Close();
    EXPECT_EQ(file.Listing(), "Broker.mdb");
    EXPECT_FALSE(account.IsOpen());
    EXPECT_TRUE(account.Path().isEmpty());

    ASSERT_TRUE(QFile::rename(file.Path(), file.In("Copy of Ann's.mdb")));
    account.Open(file.In("Copy of Ann's.mdb"));
    Statement row = account.Prepare("SELECT Symbol FROM PriceHistory");
    ASSERT_TRUE(row.Step());
    EXPECT_EQ(row.Text(0), "ACME");
}

TEST(Connection, TheLastOfTwoBringsTheFileHome)
{
    AccountFile file;
    Connection first, second;
    first.Open(file.Path());
    second.Open(file.Path());
    second.Execute("INSERT INTO PriceHistory (Symbol) VALUES ('ACME')");
    first.Close();
    second.Execute("INSERT INTO PriceHistory (Symbol) VALUES ('BOLT')");
    second.Close();
    EXPECT_EQ(file.Listing(), "Broker.mdb");
    first.Open(file.Path());
    EXPECT_EQ(first.Execute("DELETE FROM PriceHistory"), 2);
}

TEST(Connection, AClosedTransactionIsDropped)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    account.BeginTrans();
    account.Execute("INSERT INTO PriceHistory (Symbol) VALUES ('ACME')");
    account.Close();
    EXPECT_EQ(file.Listing(), "Broker.mdb");
    account.Open(file.Path());
    EXPECT_EQ(account.Execute("DELETE FROM PriceHistory"), 0);
}

TEST(Connection, OpensAFileWithQuotesBlanksAndAccentsInItsName)
{
    AccountFile file;
    const QString name = file.In("Zürich's \"100 %\" & co?.mdb");
    ASSERT_TRUE(QFile::rename(file.Path(), name));
    Connection account;
    account.Open(name);
    account.Execute("INSERT INTO PriceHistory (Symbol) VALUES ('ACME')");
    account.Close();
    account.Open(name);
    EXPECT_EQ(account.Execute("DELETE FROM PriceHistory"), 1);
}

TEST(Connection, OpenedForReadingLeavesTheFileAsItIsAndRefusesEveryWrite)
{
    AccountFile file;
    {
        Connection account;
        account.Open(file.Path());
        account.Execute("INSERT INTO PriceHistory (Symbol, Shares) VALUES ('ACME', 1)");
    }
    const QByteArray before = AccountFile::Bytes(file.Path());
    {
        Connection reader;
        reader.OpenForReading(file.Path());
        Statement row = reader.Prepare("SELECT Symbol FROM PriceHistory");
        ASSERT_TRUE(row.Step());
        EXPECT_EQ(row.Text(0), "ACME");
        EXPECT_THROW(reader.Execute("DELETE FROM PriceHistory"), RuntimeError);
        EXPECT_EQ(file.Listing(), "Broker.mdb");
    }
    EXPECT_EQ(AccountFile::Bytes(file.Path()), before);
    EXPECT_EQ(file.Listing(), "Broker.mdb");
}

TEST(Connection, OpenedForReadingSeesWhatAnotherHasCommittedMeanwhile)
{
    AccountFile file;
    Connection writer;
    writer.Open(file.Path());
    Connection reader;
    reader.OpenForReading(file.Path());
    writer.Execute("INSERT INTO PriceHistory (Symbol, Shares) VALUES ('ACME', 1)");
    Statement row = reader.Prepare("SELECT Symbol FROM PriceHistory");
    ASSERT_TRUE(row.Step());
    EXPECT_EQ(row.Text(0), "ACME");
}

TEST(Connection, OpenedForReadingRefusesAForeignFile)
{
    AccountFile file;
    AccountFile::Write(file.In("Other.mdb"), QByteArray(8192, 'x'));
    Connection reader;
    EXPECT_THROW(reader.OpenForReading(file.In("Other.mdb")), RuntimeError);
    EXPECT_FALSE(reader.IsOpen());
    EXPECT_THROW(reader.OpenForReading(file.In("Missing.mdb")), RuntimeError);
}

TEST(Connection, OpenedAgainMovesToTheOtherFile)
{
    AccountFile one, other;
    Connection account;
    account.Open(one.Path());
    account.Execute("INSERT INTO PriceHistory (Symbol) VALUES ('ACME')");
    account.Open(other.Path());
    EXPECT_EQ(account.Execute("DELETE FROM PriceHistory"), 0);
    EXPECT_EQ(one.Listing(), "Broker.mdb");
}
