#pragma once

/// What taking back the last transaction needs: the row as it was, the balance, and the keys of the
/// History row and the lot that it wrote.

#include "tracking/tracker_rows.h"

#include <optional>

struct UndoRecord
{
    TrackerRow row;   ///< before the transaction; an empty Symbol until there was one
    Currency Balance; ///< of the last balance step
    Single BasisTotal;
    Single PriorBasisTotal;

    qint64 HistoryID = 0; ///< tells rows of one instant apart; 0: no row
    QString HistorySymbol;
    QDate HistoryTransDate;
    QTime HistoryTime;

    QString LastLotSymbol;
    QDate LastLotTransDate;
    QTime LastLotTime;
    bool LotAdded = false;
};

/// A row of DailyProfitLoss.
struct DailyProfitLossRow
{
    qint64 ID = 0;
    QString Symbol;
    QString Name;
    Currency ProfitLoss;
    QDate TransDate;
    QTime Time;
};

/// The two transactions that can stand open between actions of the user.
struct UndoState
{
    UndoRecord UndoLast;
    bool PostingTransactionOpen = false; ///< lots of the last posting, pending on gConnUndo
    bool RowTransactionOpen = false;     ///< lots of a cleared or deleted row, pending
    /// What the open clear or delete removed from DailyProfitLoss.
    std::optional<DailyProfitLossRow> RemovedProfitLoss;
    bool UndoInProgress = false;
};
