#pragma once

/// Clearing and deleting a position row. History is not touched; the lots go, pending until the
/// next commit point, so that Undo Last can bring row and lots back.

#include "transactions/entry.h"

#include <functional>

/// Each works on the current row and leaves its transaction open. The row, and today's
/// DailyProfitLoss entry, are changed in the file at once and together; lots and balance are kept
/// there as pending. Throws FailedWrite when the file refuses: everything is as it was.
///
/// Sets all amounts of the row to zero; its unrealized gain passes to the balance step, which runs
/// on the BasisTotal of the last walk. The rows are requeried.
void ClearRow(PostingWork &work);
/// Removes the row; `reloadDataGrid` values the rows anew, in the same transaction.
void DeleteRow(PostingWork &work, const std::function<void()> &reloadDataGrid);
