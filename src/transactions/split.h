#pragma once

/// A share split: the position row, its lots and all its history are restated as if the shares had
/// been split from the start. No ledger row is written; Amount and TransactionCost stay.
///
///     2 for 1 on 100 shares at 50       200 shares at 25; the lots and History rows likewise

#include "transactions/entry.h"

/// On the current row. `newShares` and `oldShares` are the ratio; oldShares of zero throws
/// RuntimeError 11. Counts are stored as Singles, prices to the ten-thousandth.
void PostSplit(PostingWork &work, const TransactionEntry &entry, double newShares,
               double oldShares);
