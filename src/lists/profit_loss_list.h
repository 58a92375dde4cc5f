#pragma once

/// The realized profits and losses as their list shows them: in groups of a day or of a symbol, each
/// with its total behind it.
///
///     March 2   ACME    ACME Inc.      250.00
///     March 2   ZETA    ZETA Corp.     -50.00
///               T O T A L   200.00                 under the names, not under the amounts
///
/// Amounts are those of the file, to the ten-thousandth; so are the totals. Without entries there is
/// one total, of zero.

#include "base/currency.h"
#include "store/connection.h"

#include <QDate>

#include <optional>
#include <vector>

/// What keeps a group together; also the column of the grid that it is sorted by.
enum class ProfitLossGroup
{
    Date = 1,
    Symbol = 2
};

struct ProfitLossOrder
{
    ProfitLossGroup group;
    QString clause; ///< "ORDER BY TransDate DESC, Symbol ASC"
};

/// The order that a click on the heading of a grid column asks for; nothing for one that the list
/// cannot be sorted by.
std::optional<ProfitLossOrder> ProfitLossOrderFor(int column, bool descending);

struct ProfitLossLine
{
    qint64 ID = 0; ///< 0: the total of the lines before it
    QDate TransDate;
    QString Symbol;
    QString Name;
    Currency ProfitLoss; ///< of a total, the sum of its group

    bool IsTotal() const { return ID == 0; }
};

/// The entries from one day to another, both included, in this order, with a total behind each group.
/// Throws RuntimeError, "Overflow", when a group's sum leaves the range of money.
std::vector<ProfitLossLine> ReadProfitLoss(const Connection &gConnAccount, QDate from, QDate to,
                                           const ProfitLossOrder &order);
