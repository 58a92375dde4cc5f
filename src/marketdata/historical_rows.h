#pragma once

/// The rows of HistoricalPrices, one for each symbol and day, and the symbols whose rows are to be
/// loaded anew because a split has made them wrong.

#include "marketdata/historical_page.h"
#include "platform/services.h"
#include "store/connection.h"

#include <QStringList>

#include <vector>

/// Invalid for a symbol without rows; the newest one, without rows up to `last`.
QDate OldestPriceDate(Connection &gConnHistPrices, const QString &symbol);
QDate NewestPriceDate(Connection &gConnHistPrices, const QString &symbol,
                      QDate last = QDate(9999, 12, 31));

/// Writes the row, over the one that the day has. A write that the store refuses is shown, and the
/// error raised again.
void InsertHistoricalPrice(Connection &gConnHistPrices, const HistPrice &price, Services &services);
/// Writes the rows in one piece; when one is refused, those before it stay.
void InsertHistoricalPrices(Connection &gConnHistPrices, const std::vector<HistPrice> &prices,
                            Services &services);

/// The daily prices of `symbol` are those of before a split. Remembered in HistPrices.mdb until they
/// have been loaded anew.
void MarkPricesToReload(Connection &gConnHistPrices, const QString &symbol);
QStringList PricesToReload(Connection &gConnHistPrices);
/// Replaces all rows of `symbol` by `prices` and takes the mark away, all or nothing.
void ReplaceHistoricalPrices(Connection &gConnHistPrices, const QString &symbol,
                             const std::vector<HistPrice> &prices, Services &services);
