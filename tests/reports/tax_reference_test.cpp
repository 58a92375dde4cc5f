/// The tax reports beside a second reckoning of a random ledger, which knows nothing of the program's
/// matching: each share of a purchase stands in a queue, and a sale takes them from its head.

#include "random_ledger.h"

#include "reports/tax_reports.h"

#include <algorithm>
#include <deque>
#include <map>

namespace
{

struct SaleFigures
{
    QDate acquired;
    QDate sold;
    qint64 proceeds = 0; ///< cents
    qint64 cost = 0;
    int shares = 0;
    bool isShort = false;
    bool inRange = false;
};

std::string Money(qint64 cents)
{
    const Formats formats(QLocale::c());
    return "=" + formats.ToText(Currency::FromUnits(cents * 100)).toStdString();
}

std::string Day(QDate date)
{
    return "@" + date.toString(Qt::ISODate).toStdString();
}

/// One share, and what opening its purchase cost: told by the first share taken.
struct OpenShare
{
    int cents;
    size_t purchase;
    QDate date;
};

class Reference
{
public:
    explicit Reference(std::vector<Trade> trades) : m_trades(std::move(trades)) {}

    std::map<QString, std::vector<SaleFigures>> Sales(QDate from, QDate to) const
    {
        std::map<QString, std::deque<OpenShare>> open;
        std::map<size_t, int> costs; // not told yet
        for (size_t i = 0; i < m_trades.size(); ++i) {
            const Trade &trade = m_trades[i];
            for (int share = 0; share < trade.shares; ++share)
                open[trade.symbol].push_back({trade.cents, i, trade.date});
            if (trade.shares > 0)
                costs[i] = trade.cost;
        }
        std::map<QString, std::vector<SaleFigures>> sales;
        for (const Trade &trade : m_trades) {
            if (trade.shares > 0)
                continue;
            SaleFigures sale;
            sale.sold = trade.date;
            sale.shares = -trade.shares;
            sale.isShort = trade.isShort;
            sale.inRange = trade.date >= from && trade.date <= to;
            qint64 opened = 0;
            std::deque<OpenShare> &queue = open[trade.symbol];
            for (int share = 0; share < sale.shares && !queue.empty(); ++share) {
                const OpenShare taken = queue.front();
                queue.pop_front();
                if (!sale.acquired.isValid())
                    sale.acquired = taken.date;
                opened += taken.cents - (trade.isShort ? costs[taken.purchase] : 0) +
                          (trade.isShort ? 0 : costs[taken.purchase]);
                costs[taken.purchase] = 0;
            }
            const qint64 closed = qint64(sale.shares) * trade.cents;
            sale.proceeds = trade.isShort ? opened : closed - trade.cost;
            sale.cost = trade.isShort ? -(closed + trade.cost) : -opened;
            sales[trade.symbol].push_back(sale);
        }
        return sales;
    }

private:
    std::vector<Trade> m_trades; ///< by date
};

std::string CostBasisLine(const QString &symbol, const SaleFigures &sale, int cents)
{
    return symbol.toStdString() + "|" + Day(sale.acquired) + "|" + Day(sale.sold) + "|" +
           Money(cents) + "|" + (sale.isShort ? "Short" : "") + "|=" + std::to_string(sale.shares) +
           "|" + Money(sale.proceeds) + "|" + Money(sale.cost) + "|" +
           Money(sale.proceeds + sale.cost);
}

/// A part of the ledger's days, or all of it.
ReportChoice ChoiceOf(bool inRange)
{
    ReportChoice choice;
    choice.from = inRange ? QDate(2024, 5, 1) : QDate(2000, 1, 1);
    choice.to = inRange ? QDate(2024, 9, 30) : QDate(2100, 1, 1);
    choice.rows = inRange ? ReportRows::DateRange : ReportRows::All;
    return choice;
}

class TaxReference : public testing::TestWithParam<unsigned>
{};

} // namespace

TEST_P(TaxReference, AgreesOnEverySaleAndTotalOfARandomLedger)
{
    const std::vector<Trade> trades = RandomTrades(GetParam());
    ReportAccount account;
    WriteLedger(account, trades);
    std::map<QString, std::vector<int>> prices; // of the sales
    for (const Trade &trade : trades)
        if (trade.shares < 0)
            prices[trade.symbol].push_back(trade.cents);

    for (const bool inRange : {false, true}) {
        const ReportChoice choice = ChoiceOf(inRange);
        Lines expected;
        SaleFigures all;
        for (const auto &[symbol, sales] : Reference(trades).Sales(choice.from, choice.to)) {
            SaleFigures net;
            for (size_t i = 0; i < sales.size(); ++i) {
                if (!sales[i].inRange)
                    continue;
                expected.push_back(CostBasisLine(symbol, sales[i], prices[symbol][i]));
                net.shares += sales[i].shares;
                net.proceeds += sales[i].proceeds;
                net.cost += sales[i].cost;
            }
            if (net.shares == 0)
                continue;
            expected.push_back("N E T   T O T A L|||||=" + std::to_string(net.shares) + "|" +
                               Money(net.proceeds) + "|" + Money(net.cost) + "|" +
                               Money(net.proceeds + net.cost));
            all.shares += net.shares;
            all.proceeds += net.proceeds;
            all.cost += net.cost;
        }
        expected.push_back("G R A N D   T O T A L|||||=" + std::to_string(all.shares) + "|" +
                           Money(all.proceeds) + "|" + Money(all.cost) + "|" +
                           Money(all.proceeds + all.cost));
        Lines rows = account.Rows(WriteCostBasis, choice);
        rows.erase(rows.begin(), rows.begin() + 2);
        rows.erase(std::remove(rows.begin(), rows.end(), std::string()), rows.end());
        EXPECT_EQ(rows, expected);
        EXPECT_GT(expected.size(), 20u);
    }
}

TEST_P(TaxReference, AgreesOnTheSummaryOfARandomLedger)
{
    const std::vector<Trade> trades = RandomTrades(GetParam());
    ReportAccount account;
    WriteLedger(account, trades);
    for (const bool inRange : {false, true}) {
        const ReportChoice choice = ChoiceOf(inRange);
        Lines expected;
        SaleFigures all;
        for (const auto &[symbol, sales] : Reference(trades).Sales(choice.from, choice.to)) {
            SaleFigures sum;
            for (const SaleFigures &sale : sales) {
                if (!sale.inRange)
                    continue;
                if (!sum.acquired.isValid())
                    sum.acquired = sale.acquired; // the first share taken is the oldest
                sum.sold = sale.sold;
                sum.proceeds += sale.proceeds;
                sum.cost += sale.cost;
            }
            if (!sum.sold.isValid())
                continue;
            all.proceeds += sum.proceeds;
            all.cost += sum.cost;
            expected.push_back(symbol.toStdString() + "|" + Day(sum.acquired) + "|" +
                               Day(sum.sold) + "|" + Money(sum.proceeds) + "|" + Money(sum.cost) +
                               "|" + Money(sum.proceeds + sum.cost));
        }
        EXPECT_GT(expected.size(), 4u);
        expected.push_back("");
        expected.push_back("G R A N D   T O T A L|||" + Money(all.proceeds) + "|" +
                           Money(all.cost) + "|" + Money(all.proceeds + all.cost));
        Lines rows = account.Rows(WriteSummary, choice);
        rows.erase(rows.begin(), rows.begin() + 2);
        EXPECT_EQ(rows, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TaxReference, testing::Values(1u, 2u, 3u, 4u));
