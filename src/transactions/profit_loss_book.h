#pragma once

/// DailyProfitLoss of a whole replay, gathered in memory and written in one piece. Each Post has
/// the outcome of PostDailyProfitLoss: inserted, updated, or removed at zero.

#include "transactions/undo_record.h"

#include <QHash>

#include <utility>
#include <vector>

class ProfitLossBook
{
public:
    void Post(const TrackerRow &row, QDate transDate, QTime now);
    /// Inserts the rows in the order in which they came to be.
    void Write(Connection &gConnAccount) const;

private:
    std::vector<DailyProfitLossRow> m_rows; ///< one that was removed has a zero ProfitLoss
    QHash<std::pair<QString, QDate>, size_t> m_index;
};
