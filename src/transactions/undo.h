#pragma once

/// One level of undo: the lots of the last posting stay pending until the next commit point, and a
/// copy of the row as it was is kept in memory. History and DailyProfitLoss, which are in the file
/// already, are repaired by statements.
///
/// Commit points: the next OK press, the clearing or deletion of a row, the Daily Tracker going,
/// the security screen coming, the rebuild.

#include "transactions/entry.h"

/// Copies the row, the balance and its bookkeeping into the undo record.
void SaveUndoLast(PostingWork &work, const TrackerRow &row);

/// Makes the open posting, and an open clear or delete, final and disables Undo Last. Nothing while
/// the ledger is being replayed.
void CommitUndoTransaction(PostingWork &work);
/// Drops the lots that are pending, of a clear or delete first.
void RollbackUndoTransaction(PostingWork &work);

/// Asks, and takes the last transaction back. `reloadDataGrid` values the rows anew and shows them.
/// True when it was taken back.
bool UndoLastTransaction(PostingWork &work, const std::function<void()> &reloadDataGrid);

/// The Undo Last commands of popup and toolbar.
void EnableUndoCommands(CommandStates &commands, bool enabled);
