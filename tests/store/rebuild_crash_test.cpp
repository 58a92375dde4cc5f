/// A program that is killed while it rebuilds an account of 20,000 trades: whatever the instant,
/// the file opens and is as it was before, or wholly rebuilt.

#include "killed_program.h"

#include <gtest/gtest.h>

#include <QThread>

#include <random>

namespace
{

/// All rows of all tables; of those that a rebuild makes without their IDs.
std::string DumpOf(const QString &path)
{
    return DumpRows(path, {"SELECT * FROM DailyTracker ORDER BY Symbol",
                           "SELECT Symbol, Shares, PurchasePrice, TransDate, Time FROM "
                           "PriceHistory ORDER BY Symbol, TransDate, Time, ID",
                           "SELECT Symbol, Name, ProfitLoss, TransDate, Time FROM "
                           "DailyProfitLoss ORDER BY Symbol, TransDate",
                           "SELECT * FROM History ORDER BY ID"});
}

class KilledRebuilder : public testing::Test, protected KilledProgram
{
protected:
    KilledRebuilder() : KilledProgram(CRASH_REBUILDER, DumpOf)
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
        LearnBothStates();
    }
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
