/// Random ledgers, and random deletes from them, one after the other: rows, remaining shares and
/// the gains of the sales left are those of a second, plain computation that walks all rows for
/// each sale.

#include "account_file.h"

#include "lists/delete_rows.h"
#include "print_qt.h"
#include "transactions/matching.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <tuple>

namespace
{

struct Row
{
    qint64 ID;
    std::string symbol;
    std::string description;
    double shares; ///< quarters, so that their sums are exact
    qint64 cost;   ///< ten-thousandths, as the next two
    qint64 price;  ///< a multiple of four
    qint64 amount;
    QDate date;
    int minute;

    bool Has(const char *word) const { return description.find(word) != std::string::npos; }
    bool IsPurchase() const { return Has("Bought") || Has("Sale"); }
    bool IsSale() const { return Has("Sold") || Has("Cover"); }
};

using Ledger = std::vector<Row>;

/// Pointers to the rows that `wanted` takes, by symbol, date, time and ID.
template <class Wanted>
std::vector<Row *> Ordered(Ledger &ledger, Wanted wanted)
{
    std::vector<Row *> rows;
    for (Row &row : ledger)
        if (wanted(row))
            rows.push_back(&row);
    std::sort(rows.begin(), rows.end(), [](const Row *left, const Row *right) {
        return std::tie(left->symbol, left->date, left->minute, left->ID) <
               std::tie(right->symbol, right->date, right->minute, right->ID);
    });
    return rows;
}

/// What the purchases of a sale cost; they are lowered by it.
qint64 Match(Ledger &ledger, const Row &sale)
{
    qint64 money = 0;
    double left = -sale.shares;
    const bool isShort = sale.Has("Short");
    for (Row *purchase : Ordered(ledger, [](const Row &row) { return row.IsPurchase(); })) {
        if (left == 0)
            break;
        if (purchase->symbol != sale.symbol || purchase->shares == 0)
            continue;
        money += std::exchange(purchase->cost, 0);
        const auto take = [&](double shares) { money -= qint64(shares * double(purchase->price)); };
        if (left == purchase->shares) {
            take(left);
            left = purchase->shares = 0;
        }
        if (isShort ? left > purchase->shares : left < purchase->shares) {
            take(left);
            purchase->shares -= left;
            left = 0;
        }
        if (isShort ? left < purchase->shares : left > purchase->shares) {
            take(purchase->shares);
            left -= purchase->shares;
            purchase->shares = 0;
        }
    }
    return money;
}

int DeletePlainly(Ledger &ledger, const DeleteChoice &choice)
{
    const std::string symbol = choice.symbol.toStdString();
    const bool isOneSymbol = choice.option != DeleteOption::AllDate;
    std::vector<qint64> gone;
    if (choice.option == DeleteOption::SymbolDate || choice.option == DeleteOption::AllDate)
        for (const Row *sale : Ordered(ledger, [](const Row &row) { return row.IsSale(); }))
            if (sale->date <= choice.upTo && (!isOneSymbol || sale->symbol == symbol)) {
                Match(ledger, *sale);
                gone.push_back(sale->ID);
            }
    return int(std::erase_if(ledger, [&](const Row &row) {
        const bool isHere = !isOneSymbol || row.symbol == symbol;
        switch (choice.option) {
        case DeleteOption::CurrentRow:
            return isHere && row.ID == choice.rowID;
        case DeleteOption::AllSelected:
            return isHere;
        case DeleteOption::SymbolDate:
        case DeleteOption::AllDate:
            break;
        }
        return std::find(gone.begin(), gone.end(), row.ID) != gone.end() ||
               (isHere && row.IsPurchase() && row.shares == 0);
    }));
}

class RandomDeletes : public testing::TestWithParam<unsigned>
{
protected:
    RandomDeletes() : m_random(GetParam())
    {
        account.Open(m_file.Path());
        WriteGuard guard(account);
        const char *descriptions[] = {"Bought",       "Bought",       "Sold",     " Short  Sale",
                                      " Short Cover", "Reinvestment", "Dividend", "Deposit"};
        for (int id = 1; id <= 250; ++id) {
            Row row{id, Symbol(), descriptions[Number(0, 7)], 0, 0, 0, 0, Date(), Number(0, 3)};
            const double sign = row.Has("Sold") || row.Has("Short  Sale") ? -1 : 1;
            row.shares = row.Has("D") ? 0 : sign * Number(0, 80) / 4.0;
            row.cost = -Number(0, 2) * 49500;
            row.price = Number(1, 500000) * 4;
            row.amount = qint64(-row.shares * double(row.price)) + row.cost;
            account.Execute(
                "INSERT INTO History (ID, Symbol, Name, Description, Shares, TransactionCost, "
                "Price, Amount, TransDate, Time) VALUES (?, ?, 'Name', ?, ?, ?, ?, ?, ?, ?)",
                row.ID, QString::fromStdString(row.symbol), QString::fromStdString(row.description),
                row.shares, row.cost, row.price, row.amount, row.date, QTime(10, row.minute));
            ledger.push_back(row);
        }
        guard.Commit();
    }
    int Number(int least, int most)
    {
        return std::uniform_int_distribution<int>(least, most)(m_random);
    }
    std::string Symbol()
    {
        const char *symbols[] = {"ACME", "O'NEIL", "ZETA", "acme", "CAF\u00c9"};
        return symbols[Number(0, 4)];
    }
    QDate Date() { return QDate(2024, 2, 20).addDays(Number(0, 30)); } // over a leap day
    DeleteChoice Choice()
    {
        return {DeleteTable::History, DeleteOption(Number(0, 3)), QString::fromStdString(Symbol()),
                Number(1, 250), Date()};
    }

    QStringList Stored()
    {
        QStringList rows;
        Statement select =
            account.Prepare("SELECT ID, Symbol, Shares, TransactionCost FROM History ORDER BY ID");
        while (select.Step())
            rows << QString("%1 %2 %3 %4")
                        .arg(select.Int64(0))
                        .arg(select.Text(1))
                        .arg(select.Double(2))
                        .arg(select.Int64(3));
        return rows;
    }
    QStringList Expected() const
    {
        QStringList rows;
        for (const Row &row : ledger)
            rows << QString("%1 %2 %3 %4")
                        .arg(row.ID)
                        .arg(QString::fromStdString(row.symbol))
                        .arg(row.shares)
                        .arg(row.cost);
        return rows;
    }
    /// The gain of each sale that is left, by ID.
    std::map<qint64, qint64> Gains()
    {
        std::map<qint64, qint64> gains;
        GainMatching matching;
        matching.OpenMatchingRecordsets(account);
        for (int sale = 0; sale < matching.SaleCount(); ++sale) {
            MatchResult figures;
            matching.MatchCurrentSale(sale, figures);
            gains[matching.Sale(sale).ID] = figures.Gain().Units();
        }
        return gains;
    }
    std::map<qint64, qint64> ExpectedGains() const
    {
        std::map<qint64, qint64> gains;
        Ledger copy = ledger; // figures only
        for (const Row *sale : Ordered(copy, [](const Row &row) { return row.IsSale(); }))
            gains[sale->ID] = sale->amount + Match(copy, *sale);
        return gains;
    }

    Connection account;
    Ledger ledger;

private:
    AccountFile m_file;
    std::mt19937 m_random;
};

INSTANTIATE_TEST_SUITE_P(Ledgers, RandomDeletes, testing::Range(1u, 31u));

} // namespace

TEST_P(RandomDeletes, LeaveTheRowsAndGainsOfAPlainComputation)
{
    EXPECT_EQ(Gains(), ExpectedGains());
    for (int step = 0; step < 12; ++step) {
        const DeleteChoice choice = Choice();
        SCOPED_TRACE(QString("step %1: option %2 of %3, row %4, up to %5")
                         .arg(step)
                         .arg(int(choice.option))
                         .arg(choice.symbol)
                         .arg(choice.rowID)
                         .arg(choice.upTo.toString(Qt::ISODate))
                         .toStdString());
        EXPECT_EQ(DeleteRows(account, choice), DeletePlainly(ledger, choice));
        ASSERT_EQ(Stored(), Expected());
        ASSERT_EQ(Gains(), ExpectedGains());
    }
}
