#include "transactions/undo.h"

#include "transactions/history.h"

namespace
{

void RestoreUndoLast(PostingWork &work)
{
    const UndoRecord &last = work.undo.UndoLast;
    work.rows.Edit() = last.row;
    work.account.AccountBalance = last.Balance;
    work.totals.BasisTotal = last.BasisTotal;
    work.totals.PriorBasisTotal = last.PriorBasisTotal;
}

/// `lotRolledBack`: the lot was still pending and is gone; what the file holds under its key is
/// another lot of the same instant.
void DeleteLastHistoryEntries(PostingWork &work, bool lotRolledBack)
{
    const UndoRecord &last = work.undo.UndoLast;
    try {
        WriteGuard guard(work.gConnAccount);
        if (last.LotAdded && !lotRolledBack)
            work.gConnAccount.Execute(
                QStringLiteral(
                    "DELETE FROM PriceHistory WHERE Symbol = ? AND TransDate = ? AND Time = ?"),
                last.LastLotSymbol, last.LastLotTransDate, last.LastLotTime);
        work.gConnAccount.Execute(
            QStringLiteral("DELETE FROM History WHERE ID = ? AND Symbol = ? AND TransDate = ? "
                           "AND Time = ?"),
            last.HistoryID, last.HistorySymbol, last.HistoryTransDate, last.HistoryTime);
        guard.Commit();
    } catch (const RuntimeError &error) {
        work.services.dialogs.MsgBox(
            QStringLiteral("An error has occured while undoing your last transaction!\n") +
                ErrorLines(error),
            Box::Stop, EditorTitle());
    }
}

/// The day's entry that a clear or delete removed comes back with the rest of its transaction.
void RestoreDailyProfitLoss(PostingWork &work)
{
    std::optional<DailyProfitLossRow> removed = std::move(work.undo.RemovedProfitLoss);
    work.undo.RemovedProfitLoss.reset();
    if (!removed)
        return;
    work.gConnAccount.Execute(
        QStringLiteral("INSERT OR REPLACE INTO DailyProfitLoss "
                       "(ID, Symbol, Name, ProfitLoss, TransDate, Time) VALUES (?, ?, ?, ?, ?, ?)"),
        removed->ID, removed->Symbol, removed->Name, removed->ProfitLoss, removed->TransDate,
        removed->Time);
}

} // namespace

void SaveUndoLast(PostingWork &work, const TrackerRow &row)
{
    UndoRecord &last = work.undo.UndoLast;
    last.row = row;
    last.Balance = work.account.AccountBalance;
    last.BasisTotal = work.totals.BasisTotal;
    last.PriorBasisTotal = work.totals.PriorBasisTotal;
}

void CommitUndoTransaction(PostingWork &work)
{
    if (work.entry.RebuildMode)
        return;
    if (work.undo.PostingTransactionOpen || work.undo.RowTransactionOpen)
        work.gRsLots.CommitTrans();
    if (work.undo.PostingTransactionOpen) {
        work.undo.PostingTransactionOpen = false;
        EnableUndoCommands(work.services.commands, false);
    }
    work.undo.RowTransactionOpen = false;
    work.undo.RemovedProfitLoss.reset();
}

void RollbackUndoTransaction(PostingWork &work)
{
    if (work.undo.RowTransactionOpen) {
        RestoreDailyProfitLoss(work);
        work.undo.RowTransactionOpen = false;
    }
    if (work.gRsLots.InTransaction())
        work.gRsLots.RollbackTrans();
    work.undo.PostingTransactionOpen = false;
}

bool UndoLastTransaction(PostingWork &work, const std::function<void()> &reloadDataGrid)
{
    if (work.services.dialogs.MsgBox(
            QStringLiteral("You are about to undo your last transaction. Is this OK?"),
            Box::YesNo + Box::Question + Box::SecondDefault, EditorTitle()) != Answer::Yes)
        return false;
    const bool lotRolledBack = work.undo.PostingTransactionOpen;
    WriteGuard guard(work.gConnAccount); // taken back whole, or not at all
    RollbackUndoTransaction(work);
    work.undo.UndoInProgress = true;
    UndoRecord &last = work.undo.UndoLast;
    if (!last.row.TransDate.isValid()) { // a record that never held a row
        last.row.TransDate = work.services.clock.Today();
        last.row.Time = work.services.clock.TimeOfDay();
    }
    if (!work.rows.Find(last.row.Symbol))
        work.rows.AddNew(last.row.Symbol, last.row.Name, last.row.TransDate, last.row.Time);
    RestoreUndoLast(work);
    PostDailyProfitLoss(work.gConnAccount, work.rows.Current(), last.row.TransDate, work.services);
    reloadDataGrid();
    work.rows.Requery();
    DeleteLastHistoryEntries(work, lotRolledBack);
    guard.Commit();
    work.gRsLots.Reload();
    EnableUndoCommands(work.services.commands, false);
    work.undo.UndoInProgress = false;
    return true;
}

void EnableUndoCommands(CommandStates &commands, bool enabled)
{
    commands.SetEnabled(QStringLiteral("popDTUndoLast"), enabled);
    commands.SetEnabled(QStringLiteral("UndoLast"), enabled);
}
