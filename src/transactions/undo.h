#pragma once

/// One level of undo: the lots of the last posting stay pending until the next commit point, and a
/// copy of the row as it was is kept in memory. History and DailyProfitLoss, which are in the file
/// already, are repaired by statements. What is pending is kept in the file as well, so that a crash
/// loses none of it; it cannot be taken back afterwards.
///
/// Commit points: the next OK press, the clearing or deletion of a row, the Daily Tracker going,
/// the security screen coming, the rebuild.

#include "transactions/entry.h"

/// Copies the row, the balance and its bookkeeping into the undo record.
void SaveUndoLast(PostingWork &work, const TrackerRow &row);

/// Keeps lots and balance as pending changes of the file, in the transaction that is open.
void SavePending(PostingWork &work);

/// Makes the open posting, and an open clear or delete, final and disables Undo Last. Nothing while
/// the ledger is being replayed. Throws FailedWrite when the file refuses the lots: everything is
/// pending as before.
void CommitUndoTransaction(PostingWork &work);
/// The same, whether the ledger is about to be replayed or not.
void CommitPending(PostingWork &work);
enum class UndoOutcome
{
    Declined,
    TakenBack,
    Failed ///< a box said why
};

/// Asks, and takes the last transaction back, whole or not at all: after a failure file, rows, lots,
/// totals and balance are as before, and it can be tried again. `reloadDataGrid` values the rows anew
/// and shows them. The caller shows the totals.
UndoOutcome UndoLastTransaction(PostingWork &work, const std::function<void()> &reloadDataGrid);

/// The Undo Last commands of popup and toolbar.
void EnableUndoCommands(CommandStates &commands, bool enabled);
