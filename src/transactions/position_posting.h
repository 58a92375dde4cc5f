#pragma once

/// What a trade does to its position row.
///
///     Buy 100 @ 12 on 100 @ 10       AvrgPrice 11, Basis 200 (the old position at the new price)
///     Sell short 100 @ 60 on -100 @ 50      AvrgPrice 55, Shares -200
///     Buy to cover 200 @ 40 of those        RealizedGain 3,000, the row is flat
///
/// Column arithmetic runs in double precision and is rounded where it is stored. Commission is
/// never in AvrgPrice; purchase amounts never enter the balance. Whether a row is flat is decided
/// on the Single sum of the counts, exactly.

#include "transactions/entry.h"

/// The figures of one entry, as numbers.
struct TradeFigures
{
    Action action = Action::Buy;
    Single TransShares; ///< negative for Sell and Sell short
    Currency TransPrice;
    /// Positive count and price as typed, in double precision.
    double typedShares = 0;
    double typedPrice = 0;
};

/// All steps of the matching row: undo snapshot, costs, price, position, values, counters, date,
/// and the day's DailyProfitLoss. The row is edited, not yet written; lots are consumed.
/// AverageCost of the entry state goes in as the row's average and comes out as that of the lots
/// left.
void PostTradeToRow(PostingWork &work, const TransactionEntry &entry, const TradeFigures &trade);
