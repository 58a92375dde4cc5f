#pragma once

/// The open purchase lots of an account as the list screen reads and edits them.
///
///     AdodcPurchaseList.Open(gConnAccount, PurchaseQuery());
///
/// The list shows the lots as the file has them. Those that the last posting took shares from are
/// pending until it can no longer be undone (transactions/lots.h), so an edit of the file's row
/// would be overwritten then: such a lot is not for editing meanwhile.

#include "store/recordset.h"
#include "transactions/lots.h"

/// Fields in the order of PurchaseQuery.
namespace PurchaseColumn
{
enum : int
{
    ID,
    Symbol,
    Shares,
    PurchasePrice,
    TransDate,
    Time
};
}

RecordsetQuery PurchaseQuery();

/// Whether a posting that can still be undone has changed or used up the lot of this row.
bool IsLotPending(const PurchaseLots &gRsLots, const Recordset &rows, int row);
