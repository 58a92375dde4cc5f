#pragma once

/// The sample portfolio, posted by the program's own engine: the clock is moved from weekday to
/// weekday, and each day goes as with a user who keeps his books.
///
///     morning      the account is opened: lots compared with positions, the day rolled
///     through it   the day's transactions, at the practice market's price of their time
///     16:00        every position at the day's close, the balances written
///
/// On the day of the build the last step is at 10:00, since that day is not over. On a weekend the
/// day is rolled and nothing is traded.
///
/// Practice prices know no splits, as the adjusted prices of a quote service; what was traded
/// before a split of the plan was traded at the price times its ratio.

#include "datamaker/sample_plan.h"

/// When the positions are valued on a day before today, and today.
inline QTime ValuationTime(QDate day, QDate today)
{
    return day == today ? QTime(10, 0) : QTime(16, 0);
}

/// Fills the account `path`, a copy of the template. `siteMinutes`: between price updates of the
/// plan's quote site. Throws RuntimeError when the engine refuses a transaction or shows a failure.
void PostSampleAccount(const QString &path, const SamplePlan &plan, int siteMinutes, QDate today);
