#pragma once

/// The ledger of all transactions, and realized profit by day.
///
///     Buy 100 @ 10, commission 5      "Bought"    100  cost -5  price 10  amount -1,005
///     Sell 100 @ 12, commission 5     "Sold"     -100  cost -5  price 12  amount  1,195
///     Deposit 1,000.50                "Deposit"     0                     amount  1,000.50
///
/// Amount is the cash effect. A cash row has one blank as its symbol, so that a filter on the empty
/// text keeps it. The two descriptions of the short side begin with a blank, and " Short  Sale" has
/// two blanks inside: searches and the rebuild know them so.

#include "transactions/entry.h"

/// The description that a row of the action bears; nothing for a split, which leaves no row.
QString HistoryDescription(Action action);

/// Writes the History row of the entry and keeps its key in the undo record. `transShares` is
/// signed; the cost is the TransCost of the totals. The name of a security is that of the undo
/// record's row.
void PostHistoryEntry(PostingWork &work, const TransactionEntry &entry, Single transShares);

/// Brings the day's DailyProfitLoss row of `row.Symbol` to `row.ProfitLossToday`: inserted,
/// updated, or deleted at zero. A failure is shown and ends the program.
void PostDailyProfitLoss(Connection &gConnAccount, const TrackerRow &row, QDate transDate,
                         Services &services);
