#include "marketdata/historical_ranges.h"

#include "marketdata/historical_rows.h"

namespace
{

constexpr int MonthsOfRange = 2;
/// Over a weekend and a holiday, so that neighbouring ranges meet.
constexpr int DaysOfOverlap = 3;
constexpr int MostRepeats = 3;

int MonthsBetween(QDate from, QDate to)
{
    return (to.year() - from.year()) * 12 + to.month() - from.month();
}

QDate MonthsBack(QDate date, int months)
{
    return date.addMonths(-months).addDays(-DaysOfOverlap);
}

/// Counts looks that find the same date; true when there were too many, and begins to count anew.
bool RepeatsTooOften(QDate found, QDate &last, Integer &count)
{
    if (found != last) {
        last = found;
        return false;
    }
    count += 1;
    if (count.Value() < MostRepeats)
        return false;
    last = NoDate();
    count = Integer();
    return true;
}

} // namespace

bool GetOlderPriceRange(HistoricalRanges &ranges, Connection &gConnHistPrices,
                        const QString &symbol, QDate today, int histPriceMonths)
{
    ranges.MoreOlderRows = false;
    const QDate MinPriceDate = OldestPriceDate(gConnHistPrices, symbol);
    const bool hasRows = MinPriceDate.isValid();
    ranges.RangeStart = today.addMonths(-histPriceMonths);
    if (hasRows) {
        if (RepeatsTooOften(MinPriceDate, ranges.LastMinDate, ranges.MinRepeatCount))
            return false;
        if (MinPriceDate <= ranges.RangeStart)
            return false;
    }
    ranges.RangeEnd = hasRows ? MinPriceDate : today;
    ranges.MoreOlderRows = MonthsBetween(ranges.RangeStart, ranges.RangeEnd) > MonthsOfRange;
    ranges.RangeStart = ranges.MoreOlderRows ? MonthsBack(ranges.RangeEnd, MonthsOfRange)
                                             : MonthsBack(today, histPriceMonths);
    return true;
}

bool GetNewerPriceRange(HistoricalRanges &ranges, Connection &gConnHistPrices,
                        const QString &symbol, QDate today, QDate &latestPriceDate)
{
    ranges.MoreNewerRows = false;
    const QDate MaxPriceDate = NewestPriceDate(gConnHistPrices, symbol, today);
    if (!MaxPriceDate.isValid())
        return false;
    latestPriceDate = qMax(latestPriceDate, MaxPriceDate);
    ranges.RangeStart = MaxPriceDate;
    ranges.RangeEnd = MaxPriceDate;
    if (RepeatsTooOften(MaxPriceDate, ranges.LastMaxDate, ranges.MaxRepeatCount))
        return false;
    ranges.MoreNewerRows = MonthsBetween(MaxPriceDate, today) > MonthsOfRange;
    ranges.RangeEnd = ranges.MoreNewerRows ? MaxPriceDate.addMonths(MonthsOfRange) : today;
    return true;
}
