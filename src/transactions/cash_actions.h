#pragma once

/// Deposit, withdrawal, dividend and balance adjustment: they move the account's balance and touch
/// no position.

#include "transactions/entry.h"

/// Moves AccountBalance by the amount in the entry. A balance adjustment asks first; answered No,
/// the balance stays and the posting goes on all the same.
void PostCashAction(PostingWork &work, const TransactionEntry &entry);
