#pragma once

/// Clearing and deleting a position row. History is not touched; the lots go, pending until the
/// next commit point, so that Undo Last can bring row and lots back.

#include "transactions/entry.h"

/// Each works on the current row and leaves its transaction open. The row, and today's
/// DailyProfitLoss entry, are changed in the file at once and together.
///
/// Sets all amounts of the row to zero; its unrealized gain passes to the balance step, which runs
/// on the BasisTotal of the last walk. The rows are requeried.
void ClearRow(PostingWork &work);
/// Removes the row. The caller values the rows anew.
void DeleteRow(PostingWork &work);
