#pragma once

/// What the transaction entry keeps between its routines and from one posting to the next.

#include "base/currency.h"

#include <QString>

struct EntryState
{
    /// Positive commission of the entry. It outlives the posting: without a visit to the price or
    /// commission field the next entry is posted with it.
    Currency Commission;
    /// The row's average price; after a sale or cover that of the lots left.
    Currency AverageCost;
    QString CurrentSecurityType;
    QString CurrentAction;
    /// Difference of the last balance adjustment.
    Currency AdjustmentAmount;
    bool NoCommission = false;
    bool SymbolFound = false;
    bool PostingInProgress = false;
    bool RebuildMode = false;   ///< the ledger is being replayed
    bool RebuildNewDay = false; ///< the replayed row begins a new day
    bool RebuildRunning = false;
};
