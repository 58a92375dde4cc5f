#pragma once

/// Differences of dates as counts of boundaries between them, whatever the days.
///
///     MonthsBetween(Jan 31, Feb 1)     1, a new month began
///     WeeksBetween(Fri, Mon)           1, a Sunday lies between; a Sunday at the end counts, one at
///                                         the beginning does not
///
/// Negative when `to` is before `from`.

#include <QDate>

inline int MonthsBetween(QDate from, QDate to)
{
    return (to.year() - from.year()) * 12 + to.month() - from.month();
}

inline int WeeksBetween(QDate from, QDate to)
{
    const auto sundayBefore = [](QDate date) { return date.addDays(-(date.dayOfWeek() % 7)); };
    return int(sundayBefore(from).daysTo(sundayBefore(to)) / 7);
}
