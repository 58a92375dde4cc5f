#include "transactions/matching.h"

#include <QHash>

#include <algorithm>
#include <numeric>
#include <tuple>

namespace
{

bool Begins(const QString &text, const char *word)
{
    return text.startsWith(QLatin1String(word), Qt::CaseInsensitive);
}

bool Holds(const QString &text, const char *word)
{
    return text.contains(QLatin1String(word), Qt::CaseInsensitive);
}

/// Rows come in the order of their IDs, which is mostly that of their dates already.
template <class Row> void SortByDate(std::vector<Row> &rows)
{
    const auto earlier = [](const Row &left, const Row &right) {
        return std::tie(left.TransDate, left.Time, left.ID) <
               std::tie(right.TransDate, right.Time, right.ID);
    };
    if (!std::is_sorted(rows.begin(), rows.end(), earlier))
        std::sort(rows.begin(), rows.end(), earlier);
}

struct LongSide
{
    static bool FillsSale(Single sale, Single purchase) { return sale < purchase; }
    static bool IsUsedUp(Single sale, Single purchase) { return sale > purchase; }
};

/// Counts are negative on both sides, so that the comparisons turn.
struct ShortSide
{
    static bool FillsSale(Single sale, Single purchase) { return sale > purchase; }
    static bool IsUsedUp(Single sale, Single purchase) { return sale < purchase; }
};

} // namespace

void GainMatching::OpenMatchingRecordsets(const Connection &gConnAccount)
{
    *this = GainMatching();
    m_connection = &gConnAccount;

    QHash<QString, int> indexes; // in order of appearance
    std::vector<std::vector<MatchSale>> sales;
    Statement statement = gConnAccount.Prepare(
        QStringLiteral("SELECT ID, Symbol, Description, Shares, TransactionCost, Price, Amount, "
                       "TransDate, Time FROM History ORDER BY ID"));
    while (statement.Step()) {
        const QString description = statement.Text(2);
        const bool buys = Begins(description, "Bought") || Holds(description, "Sale");
        const bool sells = Begins(description, "Sold") || Holds(description, "Cover");
        if (!buys && !sells)
            continue;
        const QString symbol = statement.Text(1);
        auto index = indexes.constFind(symbol);
        if (index == indexes.constEnd()) {
            index = indexes.insert(symbol, int(m_symbols.size()));
            m_symbols.push_back(symbol);
            m_purchases.emplace_back();
            sales.emplace_back();
        }
        if (buys)
            m_purchases[size_t(*index)].rows.push_back(
                {statement.Int64(0), statement.ShareCount(3), statement.Money(4),
                 statement.Money(5), statement.Date(7), statement.Time(8)});
        if (sells)
            sales[size_t(*index)].push_back(
                {statement.Int64(0), 0, description.contains(QLatin1String("Short")), false,
                 statement.ShareCount(3), statement.Money(5), statement.Money(6),
                 statement.Date(7), statement.Time(8)});
    }

    std::vector<int> order(m_symbols.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [this](int left, int right) {
        return m_symbols[size_t(left)] < m_symbols[size_t(right)];
    });
    std::vector<QString> symbols;
    std::vector<SymbolPurchases> purchases;
    for (const int from : order) {
        const int symbol = int(symbols.size());
        symbols.push_back(m_symbols[size_t(from)]);
        purchases.push_back(std::move(m_purchases[size_t(from)]));
        SortByDate(purchases.back().rows);
        std::vector<MatchSale> &own = sales[size_t(from)];
        SortByDate(own);
        for (MatchSale &sale : own) {
            sale.symbol = symbol;
            m_sales.push_back(sale);
        }
    }
    m_symbols = std::move(symbols);
    m_purchases = std::move(purchases);
}

QString GainMatching::NameOf(const MatchSale &sale) const
{
    Statement statement =
        m_connection->Prepare(QStringLiteral("SELECT Name FROM History WHERE ID = ?"));
    statement.BindAll(sale.ID);
    return statement.Step() ? statement.Text(0) : QString();
}

const std::vector<MatchPurchase> &GainMatching::PurchasesOf(const QString &symbol) const
{
    static const std::vector<MatchPurchase> none;
    const auto found = std::lower_bound(m_symbols.begin(), m_symbols.end(), symbol);
    if (found == m_symbols.end() || *found != symbol)
        return none;
    return m_purchases[size_t(found - m_symbols.begin())].rows;
}

void GainMatching::MatchCurrentSale(int saleIndex, MatchResult &result)
{
    MatchSale &sale = m_sales[size_t(saleIndex)];
    result.SalePrice = sale.Price;
    result.DateSold = sale.TransDate;
    sale.Shares = -sale.Shares; // now of the sign of the purchases on its side
    result.SoldShares = result.SoldShares + sale.Shares;
    if (sale.isShort) {
        result.CostSide += sale.Amount;
        MatchSalesToPurchasesShort(sale, result);
    } else {
        result.ProceedsSide += sale.Amount;
        MatchSalesToPurchases(sale, result);
    }
}

void GainMatching::MatchSalesToPurchases(MatchSale &sale, MatchResult &result)
{
    MatchToPurchases<LongSide>(sale, m_purchases[size_t(sale.symbol)], result.DateAcquired,
                               result.CostSide);
}

void GainMatching::MatchSalesToPurchasesShort(MatchSale &sale, MatchResult &result)
{
    MatchToPurchases<ShortSide>(sale, m_purchases[size_t(sale.symbol)], result.DateAcquired,
                                result.ProceedsSide);
}

template <class Side>
void GainMatching::MatchToPurchases(MatchSale &sale, SymbolPurchases &purchases,
                                    QDate &dateAcquired, Currency &moneySide)
{
    const auto pay = [&moneySide](Single shares, Currency price) {
        moneySide =
            Currency::FromDouble(-1.0 * shares.ToDouble() * price.ToDouble() + moneySide.ToDouble());
    };
    std::vector<MatchPurchase> &rows = purchases.rows;
    for (size_t i = purchases.firstOpen; i < rows.size() && !sale.Shares.IsZero(); ++i) {
        MatchPurchase &purchase = rows[i];
        if (!purchase.Shares.IsZero()) {
            if (dateAcquired == NoDate())
                dateAcquired = purchase.TransDate;
            moneySide += purchase.TransactionCost;
            purchase.TransactionCost = Currency();
            // Three tests in a row, not a chain: each sees the counts as the one before left them.
            if (sale.Shares == purchase.Shares) {
                pay(sale.Shares, purchase.Price);
                purchase.Shares = sale.Shares = Single();
            }
            if (Side::FillsSale(sale.Shares, purchase.Shares)) {
                pay(sale.Shares, purchase.Price);
                purchase.Shares = purchase.Shares - sale.Shares;
                sale.Shares = Single();
            }
            if (Side::IsUsedUp(sale.Shares, purchase.Shares)) {
                pay(purchase.Shares, purchase.Price);
                sale.Shares = sale.Shares - purchase.Shares;
                purchase.Shares = Single();
            }
            purchase.changed = true;
        }
        if (purchase.Shares.IsZero() && i == purchases.firstOpen)
            ++purchases.firstOpen;
    }
}

void GainMatching::WriteBack(Connection &gConnAccount)
{
    WriteGuard guard(gConnAccount);
    Statement update = gConnAccount.Prepare(
        QStringLiteral("UPDATE History SET Shares = ?, TransactionCost = ? WHERE ID = ?"));
    for (SymbolPurchases &purchases : m_purchases) {
        for (MatchPurchase &purchase : purchases.rows) {
            if (!purchase.changed)
                continue;
            update.BindAll(purchase.Shares, purchase.TransactionCost, purchase.ID);
            update.Step();
            update.Reset();
        }
    }
    Statement remove = gConnAccount.Prepare(QStringLiteral("DELETE FROM History WHERE ID = ?"));
    for (const MatchSale &sale : m_sales) {
        if (!sale.deleted)
            continue;
        remove.BindAll(sale.ID);
        remove.Step();
        remove.Reset();
    }
    guard.Commit();
}
