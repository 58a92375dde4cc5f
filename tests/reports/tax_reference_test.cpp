/// The tax reports beside a second reckoning of a random ledger, which knows nothing of the program's
/// matching: each share of a purchase stands in a queue, and a sale takes them from its head.

#include "report_account.h"

#include "reports/tax_reports.h"

#include <algorithm>
#include <deque>
#include <map>
#include <random>

namespace
{

struct Trade
{
    QString symbol;
    int shares; ///< above zero opens, below closes
    int cents;  ///< price
    int cost;   ///< cents
    QDate date;
    bool isShort;
};

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

/// Trades of a symbol never sell more than is open, so that all shares are matched.
std::vector<Trade> RandomTrades(unsigned seed)
{
    std::mt19937 random(seed);
    const auto up = [&](int below) { return int(random() % unsigned(below)); };
    std::vector<Trade> trades;
    std::map<QString, int> open;
    QDate date(2024, 1, 2);
    for (int i = 0; i < 400; ++i) {
        date = date.addDays(up(3));
        const int number = up(8);
        const QString symbol = QString(QChar('A' + number));
        const bool isShort = number >= 6; // these two are always sold short
        const bool closes = open[symbol] > 0 && up(2) == 0;
        const int shares = closes ? -(1 + up(open[symbol])) : 1 + up(120);
        open[symbol] += shares;
        trades.push_back({symbol, shares, 100 + up(20000), up(3) * 495, date, isShort});
    }
    return trades;
}

void WriteLedger(ReportAccount &account, const std::vector<Trade> &trades)
{
    account.account.BeginTrans();
    int second = 0;
    for (const Trade &trade : trades) {
        const int sign = trade.isShort ? -1 : 1;
        const qint64 amount = -qint64(sign) * trade.shares * trade.cents - trade.cost;
        account.account.Execute(
            "INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, "
            "Amount, TransDate, Time) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
            trade.symbol, trade.symbol,
            QString(trade.isShort ? (trade.shares > 0 ? " Short  Sale" : " Short Cover")
                                  : (trade.shares > 0 ? "Bought" : "Sold")),
            Single::FromDouble(sign * trade.shares), Currency::FromUnits(-trade.cost * 100),
            Currency::FromUnits(trade.cents * 100), Currency::FromUnits(amount * 100), trade.date,
            QTime(9, 30).addSecs(++second % 20000));
    }
    account.account.CommitTrans();
}

std::string CostBasisLine(const QString &symbol, const SaleFigures &sale, int cents)
{
    return symbol.toStdString() + "|" + Day(sale.acquired) + "|" + Day(sale.sold) + "|" +
           Money(cents) + "|" + (sale.isShort ? "Short" : "") + "|=" + std::to_string(sale.shares) +
           "|" + Money(sale.proceeds) + "|" + Money(sale.cost) + "|" +
           Money(sale.proceeds + sale.cost);
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
        ReportChoice choice;
        choice.from = inRange ? QDate(2024, 5, 1) : QDate(2000, 1, 1);
        choice.to = inRange ? QDate(2024, 9, 30) : QDate(2100, 1, 1);
        choice.rows = inRange ? ReportRows::DateRange : ReportRows::All;
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
    Lines expected;
    SaleFigures all;
    for (const auto &[symbol, sales] :
         Reference(trades).Sales(QDate(2000, 1, 1), QDate(2100, 1, 1))) {
        SaleFigures sum;
        for (const SaleFigures &sale : sales) {
            sum.proceeds += sale.proceeds;
            sum.cost += sale.cost;
        }
        all.proceeds += sum.proceeds;
        all.cost += sum.cost;
        expected.push_back(symbol.toStdString() + "|" + Day(sales.front().acquired) + "|" +
                           Day(sales.back().sold) + "|" + Money(sum.proceeds) + "|" +
                           Money(sum.cost) + "|" + Money(sum.proceeds + sum.cost));
    }
    expected.push_back("");
    expected.push_back("G R A N D   T O T A L|||" + Money(all.proceeds) + "|" + Money(all.cost) +
                       "|" + Money(all.proceeds + all.cost));
    Lines rows = account.Rows(WriteSummary, ReportChoice());
    rows.erase(rows.begin(), rows.begin() + 2);
    EXPECT_EQ(rows, expected);
}

INSTANTIATE_TEST_SUITE_P(Seeds, TaxReference, testing::Values(1u, 2u, 3u, 4u));
