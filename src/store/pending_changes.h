#pragma once

/// What a run has done and not yet written where it belongs: the balance, which reaches its control
/// row when the Daily Tracker closes, and the lots of the last posting, which wait for the next
/// commit point. A posting writes both here, in its own transaction.
///
///     table            holds                                           until
///     PendingBalance   the account's balance                           it is in the Balance row
///     PendingLots      lots to be added, changed and removed           they are in PriceHistory
///
/// However a run ends, the next opening takes them up before anything reads, so that the account is as
/// the last finished posting left it. Nothing else reads these tables, and a file without them has
/// nothing pending: they are made by the first write. A copy of the file takes them along.
///
/// Every routine throws RuntimeError when the store refuses, and joins an open transaction.

#include "store/connection.h"

#include <optional>
#include <vector>

/// A row of PriceHistory as it is to become.
struct PendingLot
{
    qint64 ID = 0; ///< 0: a new one
    QString Symbol;
    std::optional<Single> Shares; ///< nothing: the lot goes
    Currency PurchasePrice;
    QDate TransDate;
    QTime Time;
};

void SavePendingBalance(Connection &account, Currency balance);
bool HasPendingBalance(const Connection &account);
/// Together with the write of the Balance row.
void ClearPendingBalance(Connection &account);

/// In place of those saved before.
void SavePendingLots(Connection &account, const std::vector<PendingLot> &lots);
/// Together with the write of the lots, or with the undo of their posting.
void ClearPendingLots(Connection &account);

/// Write what is pending where it belongs, in one transaction; they write nothing when nothing is.
void TakeUpPendingLots(Connection &account);
void TakeUpPendingChanges(Connection &account);
