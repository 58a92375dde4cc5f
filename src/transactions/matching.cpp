#include "transactions/matching.h"

#include <QHash>

#include <algorithm>
#include <numeric>
#include <tuple>

namespace
{

/// What a row's Description makes of it, as the store's LIKE compares: whatever the case.
struct Sides
{
    bool purchase; ///< "Bought%" or "%Sale%"
    bool sale;     ///< "Sold%" or "%Cover%"
    bool isShort;  ///< "Short" inside, in just this case

    explicit Sides(const QString &text)
        : purchase(text.startsWith(QLatin1String("Bought"), Qt::CaseInsensitive) ||
                   text.contains(QLatin1String("Sale"), Qt::CaseInsensitive)),
          sale(text.startsWith(QLatin1String("Sold"), Qt::CaseInsensitive) ||
               text.contains(QLatin1String("Cover"), Qt::CaseInsensitive)),
          isShort(text.contains(QLatin1String("Short")))
    {}
};

/// Few different texts stand in many rows: each gets a number, and is converted once.
class TextNumbers
{
public:
    int Of(QByteArrayView text)
    {
        const auto known = m_numbers.constFind(QByteArray::fromRawData(text.data(), text.size()));
        if (known != m_numbers.constEnd())
            return *known;
        texts.push_back(QString::fromUtf8(text));
        m_numbers.insert(text.toByteArray(), int(texts.size()) - 1);
        return int(texts.size()) - 1;
    }
    std::vector<QString> texts; ///< in order of appearance

private:
    QHash<QByteArray, int> m_numbers;
};

/// Rows come in the order of their IDs, which is mostly that of their dates already.
template <class Row>
void SortByDate(std::vector<Row> &rows)
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

    TextNumbers symbolTexts, names, descriptions;
    std::vector<Sides> sides; // of each description
    std::vector<SymbolPurchases> found;
    std::vector<std::vector<MatchSale>> sales;
    Statement statement = gConnAccount.Prepare(
        QStringLiteral("SELECT ID, Symbol, Description, Shares, TransactionCost, Price, Amount, "
                       "TransDate, Time, Name FROM History ORDER BY ID"));
    while (statement.Step()) {
        const size_t description = size_t(descriptions.Of(statement.Utf8(2)));
        if (description == sides.size())
            sides.emplace_back(descriptions.texts.back());
        const Sides &side = sides[description];
        if (!side.purchase && !side.sale)
            continue;
        const size_t symbol = size_t(symbolTexts.Of(statement.Utf8(1)));
        if (symbol == found.size()) {
            found.emplace_back();
            sales.emplace_back();
        }
        if (side.purchase)
            found[symbol].rows.push_back({statement.Int64(0), statement.ShareCount(3),
                                          statement.Money(4), statement.Money(5), statement.Date(7),
                                          statement.Time(8)});
        if (side.sale)
            sales[symbol].push_back({statement.Int64(0), 0, names.Of(statement.Utf8(9)),
                                     side.isShort, false, statement.ShareCount(3),
                                     statement.Money(5), statement.Money(6), statement.Date(7),
                                     statement.Time(8)});
    }
    m_names = std::move(names.texts);

    const std::vector<QString> &symbols = symbolTexts.texts;
    std::vector<size_t> order(found.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::sort(order.begin(), order.end(),
              [&](size_t left, size_t right) { return symbols[left] < symbols[right]; });
    for (const size_t from : order) {
        SortByDate(found[from].rows);
        SortByDate(sales[from]);
        for (MatchSale &sale : sales[from]) {
            sale.symbol = int(m_symbols.size());
            m_sales.push_back(sale);
        }
        m_symbols.push_back(symbols[from]);
        m_purchases.push_back(std::move(found[from]));
    }
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
        moneySide = Currency::FromDouble(-1.0 * shares.ToDouble() * price.ToDouble() +
                                         moneySide.ToDouble());
    };
    std::vector<MatchPurchase> &rows = purchases.rows;
    for (size_t i = purchases.firstOpen; i < rows.size() && !sale.Shares.IsZero(); ++i) {
        MatchPurchase &purchase = rows[i];
        ++m_visited;
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
    // In the order of the IDs, in which the file has the rows: in that of the symbols 100,000 rows
    // take more than twice as long.
    const auto byID = [](const auto *left, const auto *right) { return left->ID < right->ID; };
    std::vector<const MatchPurchase *> changed;
    for (const SymbolPurchases &purchases : m_purchases)
        for (const MatchPurchase &purchase : purchases.rows)
            if (purchase.changed)
                changed.push_back(&purchase);
    std::sort(changed.begin(), changed.end(), byID);
    std::vector<const MatchSale *> gone;
    for (const MatchSale &sale : m_sales)
        if (sale.deleted)
            gone.push_back(&sale);
    std::sort(gone.begin(), gone.end(), byID);

    WriteGuard guard(gConnAccount);
    Statement update = gConnAccount.Prepare(
        QStringLiteral("UPDATE History SET Shares = ?, TransactionCost = ? WHERE ID = ?"));
    for (const MatchPurchase *purchase : changed) {
        update.BindAll(purchase->Shares, purchase->TransactionCost, purchase->ID);
        update.Step();
        update.Reset();
    }
    Statement remove = gConnAccount.Prepare(QStringLiteral("DELETE FROM History WHERE ID = ?"));
    for (const MatchSale *sale : gone) {
        remove.BindAll(sale->ID);
        remove.Step();
        remove.Reset();
    }
    guard.Commit();
}
