#pragma once

/// Which daily prices of a symbol are still wanted: older ones, back to the first of the months to
/// keep, and newer ones, up to today. A request covers about two months, so that a long gap takes
/// several looks.
///
///     keep 12 months, nothing stored, 21 Nov     18 Sep to 21 Nov, and more
///     stored from 18 Sep on                      15 Jul to 18 Sep, and more
///     ...                                        until the oldest day is 21 Nov of last year or before
///
/// Months between two dates are the ends of months between them: one from 30 Nov to 1 Dec.

#include "base/dates.h"
#include "base/integer.h"
#include "store/connection.h"

#include <QDate>

/// Kept from look to look of one symbol; each symbol begins with a fresh one.
struct HistoricalRanges
{
    QDate RangeStart;
    QDate RangeEnd;
    bool MoreOlderRows = false; ///< the gap is longer than the range: look again
    bool MoreNewerRows = false;
    QDate LastMinDate = NoDate(); ///< found by the look before
    QDate LastMaxDate = NoDate();
    Integer MinRepeatCount; ///< looks in a row that found no change
    Integer MaxRepeatCount;
};

/// True when older prices are to be asked for, from RangeStart to RangeEnd. The third look in a row
/// that finds the same oldest day gives up: the service has no older rows.
bool GetOlderPriceRange(HistoricalRanges &ranges, Connection &gConnHistPrices,
                        const QString &symbol, QDate today, int histPriceMonths);
/// The same for newer prices, from the newest day on, which so is asked for again; days after today,
/// which no market has had, do not count. False for a symbol without rows. Raises `latestPriceDate`
/// to the newest day found.
bool GetNewerPriceRange(HistoricalRanges &ranges, Connection &gConnHistPrices,
                        const QString &symbol, QDate today, QDate &latestPriceDate);
