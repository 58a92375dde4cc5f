#pragma once

/// Deleting rows of one of the three ledgers that have a list screen: the question, the deletion
/// with its count, the reminder behind it.
///
///     DeleteChoice{History, SymbolDate, "ACME", 0, 2026-01-31}
///         ACME: Bought 100, Bought 100, Sold 150 (all in January)    the sale and the first purchase
///         go, 2 rows; the second purchase stays with 50 shares
///
/// From History a date takes the sales up to it, and of the purchases those that these sales used
/// up wholly: each sale is matched to its purchases before it goes (transactions/matching.h).
/// Whatever else the ledger holds - dividends, cash, purchases with shares left - stays.

#include "platform/services.h"
#include "store/connection.h"

#include <QDate>

#include <optional>

enum class DeleteTable
{
    None, ///< nobody said which
    History,
    PriceHistory,
    DailyProfitLoss
};

enum class DeleteOption
{
    CurrentRow,
    AllSelected, ///< all rows of the symbol
    SymbolDate,  ///< those up to a date, included
    AllDate      ///< of all symbols, up to a date, included
};

struct DeleteChoice
{
    DeleteTable table = DeleteTable::None;
    DeleteOption option = DeleteOption::CurrentRow;
    QString symbol;   ///< ignored by AllDate
    qint64 rowID = 0; ///< for CurrentRow; a row of another symbol is not deleted
    QDate upTo;       ///< for SymbolDate and AllDate
};

/// "Delete History Transactions"; empty for None.
QString DeleteCaption(DeleteTable table);

/// Asks whether this is to be deleted; false unless the user agrees.
bool ConfirmDelete(const Services &services, const DeleteChoice &choice);

/// Deletes, all of it in one transaction, and returns how many rows went; purchases that were only
/// lowered do not count. A table of None deletes nothing. Throws FailedWrite when the store refuses;
/// the file then has every row as it was. Cost is linear in the rows of the table.
int DeleteRows(Connection &gConnAccount, const DeleteChoice &choice);

/// Lots and profits are mirrored in History, which nobody else clears: what to think of then.
/// Nothing for History itself and for a single row.
std::optional<QString> DeleteReminder(const DeleteChoice &choice);
