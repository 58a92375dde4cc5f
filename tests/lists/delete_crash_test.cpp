/// A program that is killed while it deletes rows of an account of 6,000 trades: whatever the
/// instant, the account is as it was before, or all that was to go is gone and every purchase is
/// lowered by what its sales took.

#include "account_file.h"

#include "lists/delete_rows.h"
#include "store/connection.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <random>

namespace
{

std::string Dump(const QString &path)
{
    Connection account;
    account.Open(path);
    std::string text;
    for (const char *query :
         {"PRAGMA integrity_check", "SELECT * FROM History ORDER BY ID",
          "SELECT * FROM PriceHistory ORDER BY ID", "SELECT * FROM DailyProfitLoss ORDER BY ID"}) {
        Statement row = account.Prepare(QString::fromLatin1(query));
        while (row.Step()) {
            for (int i = 0; i < row.ColumnCount(); ++i)
                text += row.Text(i).toStdString() + "|";
            text += "\n";
        }
    }
    return text;
}

struct Delete
{
    const char *name;
    DeleteTable table;
    DeleteOption option;
    const char *symbol;
};

class KilledDeleter : public testing::TestWithParam<Delete>
{
protected:
    KilledDeleter()
    {
        Connection account;
        account.Open(m_original.Path());
        account.ExecuteScript(
            "INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, "
            "TransDate, Time) "
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 5999) "
            "SELECT CASE i % 50 WHEN 7 THEN 'O''NEIL' ELSE 'S' || (i % 50) END, 'Name', "
            "CASE WHEN i / 50 % 3 = 2 THEN 'Sold' ELSE 'Bought' END, "
            "CASE WHEN i / 50 % 3 = 2 THEN -15 ELSE 10 END, -49500, 100000 + i % 997 * 100, "
            "date('2016-01-04', (i / 3) || ' days'), '10:00:00.000' FROM n; "
            "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) "
            "SELECT Symbol, 10, Price, TransDate, Time FROM History WHERE Description = 'Bought'; "
            "INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) "
            "SELECT Symbol, Name, Price, TransDate, Time FROM History WHERE Description = 'Sold'");
        account.Close();
        m_before = Dump(m_original.Path());
        AccountFile shorter;
        Copy(shorter);
        Start(shorter, {});
        QElapsedTimer timer;
        timer.start();
        WaitForLines(2);
        m_deleteTime = timer.nsecsElapsed() / 1000;
        m_program.kill();
        m_program.waitForFinished();
        m_after = Dump(shorter.Path());
        EXPECT_LT(m_after.size(), m_before.size());
    }
    void Copy(const AccountFile &file) const
    {
        AccountFile::Write(file.Path(), AccountFile::Bytes(m_original.Path()));
    }
    void Start(const AccountFile &file, const QStringList &more)
    {
        m_told.clear();
        m_program.start(CRASH_DELETER,
                        QStringList{file.Path(), QString::number(int(GetParam().table)),
                                    QString::number(int(GetParam().option)),
                                    QString::fromUtf8(GetParam().symbol)} +
                            more);
        WaitForLines(1);
    }
    void WaitForLines(int lines)
    {
        while (m_told.count('\n') < lines && m_program.waitForReadyRead())
            m_told += m_program.readAllStandardOutput();
    }
    /// True: all is deleted. Anything but that and the account as it was fails.
    bool ExpectWhole(const AccountFile &file)
    {
        EXPECT_TRUE(m_program.state() == QProcess::NotRunning || m_program.waitForFinished());
        EXPECT_EQ(m_program.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(m_program.readAllStandardError(), QByteArray());
        m_told += m_program.readAllStandardOutput();
        const std::string now = Dump(file.Path());
        EXPECT_TRUE(now == m_before || now == m_after);
        const bool told = m_told.count('\n') > 1; // the end of the delete
        EXPECT_TRUE(!told || now == m_after);
        EXPECT_EQ(file.Listing(), "Broker.mdb");
        return now == m_after;
    }

    AccountFile m_original;
    std::string m_before, m_after;
    qint64 m_deleteTime = 0; ///< microseconds
    QProcess m_program;
    QByteArray m_told;
};

using enum DeleteOption;

INSTANTIATE_TEST_SUITE_P(
    Choices, KilledDeleter,
    testing::Values(Delete{"HistoryOfAllSymbols", DeleteTable::History, AllDate, ""},
                    Delete{"HistoryOfASymbol", DeleteTable::History, SymbolDate, "O'NEIL"},
                    Delete{"LotsOfAllSymbols", DeleteTable::PriceHistory, AllDate, ""},
                    Delete{"ProfitsOfASymbol", DeleteTable::DailyProfitLoss, AllSelected,
                           "O'NEIL"}),
    [](const auto &info) { return info.param.name; });

} // namespace

TEST_P(KilledDeleter, AtAnyTimeLeavesTheAccountAsItWasOrWithoutAllThatWasToGo)
{
    std::mt19937 random(20260302);
    std::uniform_int_distribution<qint64> delay(0, m_deleteTime);
    for (int run = 0; run < 8; ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        AccountFile file;
        Copy(file);
        Start(file, {});
        QThread::usleep(static_cast<unsigned long>(delay(random)));
        m_program.kill();
        ExpectWhole(file);
    }
}

TEST_P(KilledDeleter, InTheMiddleOfAnyWriteLeavesTheAccountAsItWasOrWithoutAllThatWasToGo)
{
    // From write to write, in longer steps further on, until it lives to tell.
    int asItWas = 0;
    for (int write = 1;; write += 1 + write / 5) {
        SCOPED_TRACE("write " + std::to_string(write));
        AccountFile file;
        Copy(file);
        Start(file, {QString::number(write)});
        while (m_told.count('\n') < 2 && m_program.state() == QProcess::Running &&
               m_program.waitForReadyRead())
            m_told += m_program.readAllStandardOutput();
        const bool lived = m_told.count('\n') > 1;
        m_program.kill();
        if (!ExpectWhole(file))
            ++asItWas;
        if (lived)
            break;
    }
    EXPECT_GT(asItWas, 2) << "too few writes to die in";
}
