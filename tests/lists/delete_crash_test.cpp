/// A program that is killed while it deletes rows of an account of 6,000 trades: whatever the
/// instant, the account is as it was before, or all that was to go is gone and every purchase is
/// lowered by what its sales took.

#include "killed_program.h"

#include "lists/delete_rows.h"

#include <gtest/gtest.h>

#include <QThread>

#include <random>

namespace
{

std::string DumpOf(const QString &path)
{
    return DumpRows(path,
                    {"SELECT * FROM History ORDER BY ID", "SELECT * FROM PriceHistory ORDER BY ID",
                     "SELECT * FROM DailyProfitLoss ORDER BY ID"});
}

struct Delete
{
    const char *name;
    DeleteTable table;
    DeleteOption option;
    const char *symbol;
};

class KilledDeleter : public testing::TestWithParam<Delete>, protected KilledProgram
{
protected:
    KilledDeleter() : KilledProgram(CRASH_DELETER, DumpOf)
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
        m_deleteTime = LearnBothStates(Choice());
    }
    static QStringList Choice()
    {
        return {QString::number(int(GetParam().table)), QString::number(int(GetParam().option)),
                QString::fromUtf8(GetParam().symbol)};
    }

    qint64 m_deleteTime = 0; ///< microseconds
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
        Start(file, Choice());
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
        Start(file, Choice() << QString::number(write));
        WaitForLines(2);
        const bool lived = HasToldItsEnd();
        m_program.kill();
        if (!ExpectWhole(file))
            ++asItWas;
        if (lived)
            break;
    }
    EXPECT_GT(asItWas, 2) << "too few writes to die in";
}
