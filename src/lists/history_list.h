#pragma once

/// The transactions of an account as the list screen reads them, and what it takes from the user.
///
///     AdodcHistoryList.Open(gConnAccount, HistoryQuery(from, to, InitialHistoryOrder()));
///
/// Date and time of a transaction can be corrected; everything else was posted and stays.

#include "base/formats.h"
#include "store/recordset.h"

#include <optional>

/// Fields in the order of HistoryQuery.
namespace HistoryColumn
{
enum : int
{
    ID,
    Symbol,
    Name,
    Description,
    Shares,
    Price,
    Amount,
    TransactionCost,
    TransDate,
    Time
};
}

/// The transactions from one day to another, both included.
RecordsetQuery HistoryQuery(QDate from, QDate to, const QString &historyOrderBy);

/// The newest first.
QString InitialHistoryOrder();
/// The clause for a click on the heading of a column; nothing for a column that cannot be sorted.
std::optional<QString> HistoryOrderFor(const QString &dataField, bool descending);

/// What is wrong with the date and time typed for a transaction, in words for the user; nothing
/// when it can be stored. The date comes first.
std::optional<QString> HistoryEditRefusal(const Formats &formats, const QString &transDate,
                                          const QString &time);
