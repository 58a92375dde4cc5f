#include "marketdata/price_list.h"

#include "store/sort_clauses.h"

namespace
{

constexpr SortClause priceOrders[] = {
    {"Symbol", "ORDER BY Symbol, PriceDate DESC", "ORDER BY Symbol DESC, PriceDate DESC"},
    {"PriceDate", "ORDER BY PriceDate, Symbol", "ORDER BY PriceDate DESC, Symbol"},
    {"PriceOpen", "ORDER BY PriceOpen, Symbol, PriceDate DESC",
     "ORDER BY PriceOpen DESC, Symbol, PriceDate DESC"},
    {"DayHigh", "ORDER BY DayHigh, Symbol, PriceDate DESC",
     "ORDER BY DayHigh DESC, Symbol, PriceDate DESC"},
    {"DayLow", "ORDER BY DayLow, Symbol, PriceDate DESC",
     "ORDER BY DayLow DESC, Symbol, PriceDate DESC"},
    {"PriceClose", "ORDER BY PriceClose, Symbol, PriceDate DESC",
     "ORDER BY PriceClose DESC, Symbol, PriceDate DESC"},
    {"Volume", "ORDER BY Volume, Symbol, PriceDate DESC",
     "ORDER BY Volume DESC, Symbol, PriceDate DESC"},
    {"AdjClose", "ORDER BY AdjClose, Symbol, PriceDate DESC",
     "ORDER BY AdjClose DESC, Symbol, PriceDate DESC"},
};

} // namespace

RecordsetQuery HistoricalQuery(const QString &symbol, QDate from, QDate to,
                               const QString &gridOrderBy)
{
    RecordsetQuery query;
    query.columns = QStringLiteral(
        "Symbol, PriceDate, PriceOpen, DayHigh, DayLow, PriceClose, Volume, AdjClose");
    query.table = QStringLiteral("HistoricalPrices");
    if (symbol.isEmpty()) {
        // The plus keeps the index by date out: most often nearly all rows are asked for, and one
        // by one they take three times as long.
        query.tail = QStringLiteral("WHERE +PriceDate >= ? AND +PriceDate <= ? ") + gridOrderBy;
        query.values = {from, to};
    } else {
        query.tail =
            QStringLiteral("WHERE Symbol = ? AND PriceDate >= ? AND PriceDate <= ? ") + gridOrderBy;
        query.values = {symbol, from, to};
    }
    return query;
}

QStringList PricedSymbols(const Connection &gConnHistPrices)
{
    QStringList symbols;
    Statement select = gConnHistPrices.Prepare(QStringLiteral(
        "SELECT DISTINCT Symbol FROM HistoricalPrices WHERE Symbol <> '' ORDER BY Symbol"));
    while (select.Step())
        symbols << select.Text(0);
    return symbols;
}

QString InitialPriceOrder()
{
    return *PriceOrderFor(QStringLiteral("Symbol"), false);
}

std::optional<QString> PriceOrderFor(const QString &dataField, bool descending)
{
    return ClauseFor(priceOrders, dataField, descending);
}
