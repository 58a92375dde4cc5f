/// A program that is killed while it rebuilds an account of 20,000 trades: whatever the instant,
/// the file opens and is as it was before, or wholly rebuilt.

#include "account_file.h"

#include "store/connection.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QThread>

#include <random>

namespace
{

/// All rows of all tables; of those that a rebuild makes without their IDs.
std::string Dump(const QString &path)
{
    Connection account;
    account.Open(path);
    std::string text;
    for (const char *query :
         {"PRAGMA integrity_check", "SELECT * FROM DailyTracker ORDER BY Symbol",
          "SELECT Symbol, Shares, PurchasePrice, TransDate, Time FROM PriceHistory "
          "ORDER BY Symbol, TransDate, Time, ID",
          "SELECT Symbol, Name, ProfitLoss, TransDate, Time FROM DailyProfitLoss "
          "ORDER BY Symbol, TransDate",
          "SELECT * FROM History ORDER BY ID"}) {
        Statement row = account.Prepare(QString::fromLatin1(query));
        while (row.Step()) {
            for (int i = 0; i < row.ColumnCount(); ++i)
                text += row.Text(i).toStdString() + "|";
            text += "\n";
        }
    }
    return text;
}

class KilledRebuilder : public testing::Test
{
protected:
    KilledRebuilder()
    {
        Connection account;
        account.Open(m_original.Path());
        // A position and a lot that the ledger does not know, so that each rebuild shows.
        account.ExecuteScript(
            "INSERT INTO DailyTracker (Symbol, Name, Shares) VALUES ('OLD', 'Old Inc.', 7); "
            "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) "
            "VALUES ('OLD', 7, 10000, '2020-01-02', '09:00:00.000'); "
            "INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, "
            "TransDate, Time) "
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 19999) "
            "SELECT 'S' || (i % 50), 'Name', CASE WHEN i / 50 % 3 = 2 THEN 'Sold' ELSE 'Bought' "
            "END, CASE WHEN i / 50 % 3 = 2 THEN -15 ELSE 10 END, -49500, 100000 + i % 997 * 100, "
            "date('2016-01-04', (i / 20) || ' days'), '10:00:00.000' FROM n");
        account.Close();
        m_before = Dump(m_original.Path());
        AccountFile rebuilt;
        Copy(rebuilt);
        Start(rebuilt, {});
        WaitForRebuilds(1);
        m_program.kill();
        m_program.waitForFinished();
        m_after = Dump(rebuilt.Path());
        EXPECT_NE(m_before, m_after);
    }
    void Copy(const AccountFile &file) const
    {
        AccountFile::Write(file.Path(), AccountFile::Bytes(m_original.Path()));
    }
    void Start(const AccountFile &file, const QStringList &more)
    {
        m_told.clear();
        m_program.start(CRASH_REBUILDER, QStringList(file.Path()) + more);
        WaitForRebuilds(0);
    }
    void WaitForRebuilds(int rebuilds)
    {
        while (m_told.count('\n') < rebuilds + 1 && m_program.waitForReadyRead())
            m_told += m_program.readAllStandardOutput();
    }
    /// True: the file is rebuilt. Anything but that and the file as it was fails.
    bool ExpectWhole(const AccountFile &file)
    {
        EXPECT_TRUE(m_program.waitForFinished());
        EXPECT_EQ(m_program.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(m_program.readAllStandardError(), QByteArray());
        m_told += m_program.readAllStandardOutput();
        const std::string now = Dump(file.Path());
        EXPECT_TRUE(now == m_before || now == m_after);
        const bool told = m_told.count('\n') > 1; // the end of a rebuild
        EXPECT_TRUE(!told || now == m_after);
        EXPECT_EQ(file.Listing(), "Broker.mdb");
        return now == m_after;
    }

    AccountFile m_original;
    std::string m_before, m_after;
    QProcess m_program;
    QByteArray m_told;
};

} // namespace

TEST_F(KilledRebuilder, AtAnyTimeLeavesTheAccountAsItWasOrWhollyRebuilt)
{
    std::mt19937 random(20260302);
    std::uniform_int_distribution<unsigned long> delay(0, 250000); // microseconds
    int asItWas = 0;
    for (int run = 0; run < 12; ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        AccountFile file;
        Copy(file);
        Start(file, {});
        QThread::usleep(delay(random));
        m_program.kill();
        asItWas += ExpectWhole(file) ? 0 : 1;
    }
    EXPECT_GT(asItWas, 0) << "no run was killed within its rebuild";
}

TEST_F(KilledRebuilder, InTheMiddleOfAWriteLeavesTheAccountAsItWasOrWhollyRebuilt)
{
    int asItWas = 0;
    int rebuilt = 0;
    for (const char *write : {"1", "2", "50", "500", "1000", "2000", "4000", "8000"}) {
        SCOPED_TRACE(write);
        AccountFile file;
        Copy(file);
        Start(file, {write});
        (ExpectWhole(file) ? rebuilt : asItWas) += 1;
    }
    EXPECT_GT(asItWas, 3);
    EXPECT_GT(rebuilt, 0);
}
