#pragma once

/// The daily prices of HistPrices.mdb as the list screen reads them.
///
///     AdodcHistoricalPriceList.Open(gConnHistPrices,
///                                   HistoricalQuery("ACME", from, to, InitialPriceOrder()));

#include "store/recordset.h"

#include <QDate>
#include <QStringList>

#include <optional>

/// Fields in the order of HistoricalQuery.
enum HistoricalField
{
    PriceSymbol,
    PriceDate,
    PriceOpen,
    DayHigh,
    DayLow,
    PriceClose,
    Volume,
    AdjClose
};

/// The prices of a symbol, or of all with an empty one, from one day to another, both included.
RecordsetQuery HistoricalQuery(const QString &symbol, QDate from, QDate to,
                               const QString &gridOrderBy);

/// Every symbol that has prices, in alphabetical order.
QStringList PricedSymbols(const Connection &gConnHistPrices);

/// "ORDER BY Symbol, PriceDate DESC"
QString InitialPriceOrder();
/// The clause for a click on the heading of a column; nothing for a column that cannot be sorted.
std::optional<QString> PriceOrderFor(const QString &dataField, bool descending);
