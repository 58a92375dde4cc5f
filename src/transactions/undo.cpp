#include "transactions/undo.h"

#include "base/put_back.h"
#include "store/failed_write.h"
#include "store/pending_changes.h"
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

/// `lotIsPending`: the lot goes with the rollback; what the file holds under its key is another lot
/// of the same instant. False, after a message, when the file refuses.
bool DeleteLastHistoryEntries(PostingWork &work, bool lotIsPending)
{
    const UndoRecord &last = work.undo.UndoLast;
    try {
        if (last.LotAdded && !lotIsPending)
            work.gConnAccount.Execute(
                QStringLiteral(
                    "DELETE FROM PriceHistory WHERE Symbol = ? AND TransDate = ? AND Time = ?"),
                last.LastLotSymbol, last.LastLotTransDate, last.LastLotTime);
        work.gConnAccount.Execute(
            QStringLiteral("DELETE FROM History WHERE ID = ? AND Symbol = ? AND TransDate = ? "
                           "AND Time = ?"),
            last.HistoryID, last.HistorySymbol, last.HistoryTransDate, last.HistoryTime);
        return true;
    } catch (const RuntimeError &error) {
        work.services.dialogs.MsgBox(
            QStringLiteral("An error has occured while undoing your last transaction!\n") +
                ErrorLines(error),
            Box::Stop, EditorTitle());
        return false;
    }
}

/// The day's entry that a clear or delete removed comes back with the rest of its transaction.
void RestoreDailyProfitLoss(PostingWork &work)
{
    if (!work.undo.RowTransactionOpen)
        return;
    const auto removed = std::exchange(work.undo.RemovedProfitLoss, std::nullopt);
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

void SavePending(PostingWork &work)
{
    work.gRsLots.SavePending(work.gConnAccount);
    SavePendingBalance(work.gConnAccount, work.account.AccountBalance);
}

void CommitUndoTransaction(PostingWork &work)
{
    if (!work.entry.RebuildMode)
        CommitPending(work);
}

void CommitPending(PostingWork &work)
{
    if (work.undo.PostingTransactionOpen || work.undo.RowTransactionOpen)
        OrFail(QStringLiteral("The lots of the last transaction"),
               [&] { work.gRsLots.CommitTrans(); });
    if (work.undo.PostingTransactionOpen) {
        work.undo.PostingTransactionOpen = false;
        EnableUndoCommands(work.services.commands, false);
    }
    work.undo.RowTransactionOpen = false;
    work.undo.RemovedProfitLoss.reset();
}

namespace
{

/// All of it but the lots, in the transaction that is open. False, after a message, when the ledger
/// row cannot be deleted.
bool TakeBack(PostingWork &work, const std::function<void()> &reloadDataGrid)
{
    RestoreDailyProfitLoss(work);
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
    if (!DeleteLastHistoryEntries(work, work.undo.PostingTransactionOpen))
        return false;
    ClearPendingLots(work.gConnAccount);
    SavePendingBalance(work.gConnAccount, work.account.AccountBalance);
    return true;
}

bool TakeBackWhole(PostingWork &work, const std::function<void()> &reloadDataGrid)
{
    PutBack before(work.rows, work.totals, work.account, work.undo);
    try {
        WriteGuard guard(work.gConnAccount);
        if (!TakeBack(work, reloadDataGrid))
            return false;
        guard.Commit();
    } catch (const RuntimeError &error) {
        work.services.dialogs.MsgBox(FailedWrite(QStringLiteral("The undo"), error).Text(),
                                     Box::Exclamation, EditorTitle());
        return false;
    }
    before.Keep();
    return true;
}

/// The lots that the transaction consumed come back, and the one that it added is dropped.
void RollbackUndoTransaction(PostingWork &work)
{
    if (work.gRsLots.InTransaction())
        work.gRsLots.RollbackTrans();
    work.undo.PostingTransactionOpen = work.undo.RowTransactionOpen = false;
}

} // namespace

UndoOutcome UndoLastTransaction(PostingWork &work, const std::function<void()> &reloadDataGrid)
{
    if (work.services.dialogs.MsgBox(
            QStringLiteral("You are about to undo your last transaction. Is this OK?"),
            Box::YesNo + Box::Question + Box::SecondDefault, EditorTitle()) != Answer::Yes)
        return UndoOutcome::Declined;
    if (!TakeBackWhole(work, reloadDataGrid)) {
        if (work.rows.OnRowsChanged)
            work.rows.OnRowsChanged(); // shows them as they were
        return UndoOutcome::Failed;
    }
    RollbackUndoTransaction(work);
    work.gRsLots.Reload();
    EnableUndoCommands(work.services.commands, false);
    work.undo.UndoInProgress = false;
    return UndoOutcome::TakenBack;
}

void EnableUndoCommands(CommandStates &commands, bool enabled)
{
    commands.SetEnabled(QStringLiteral("popDTUndoLast"), enabled);
    commands.SetEnabled(QStringLiteral("UndoLast"), enabled);
}
