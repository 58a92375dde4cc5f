#include "transactions/row_removal.h"

#include "tracking/valuation.h"
#include "transactions/history.h"
#include "transactions/undo.h"

namespace
{

std::optional<DailyProfitLossRow> ReadDailyProfitLoss(Connection &gConnAccount,
                                                      const QString &symbol, QDate day)
{
    Statement statement = gConnAccount.Prepare(
        QStringLiteral("SELECT ID, Symbol, Name, ProfitLoss, TransDate, Time FROM DailyProfitLoss "
                       "WHERE Symbol = ? AND TransDate = ?"));
    statement.BindAll(symbol, day);
    if (!statement.Step())
        return std::nullopt;
    return DailyProfitLossRow{statement.Int64(0), statement.Text(1), statement.Text(2),
                              statement.Money(3), statement.Date(4), statement.Time(5)};
}

/// The posting before becomes final; from here on Undo Last means this row.
void OpenRowTransaction(PostingWork &work)
{
    CommitUndoTransaction(work);
    SaveUndoLast(work, work.rows.Current());
    work.gRsLots.BeginTrans();
    work.undo.RowTransactionOpen = true;
    work.undo.RemovedProfitLoss = ReadDailyProfitLoss(work.gConnAccount, work.rows.Current().Symbol,
                                                      work.services.clock.Today());
    work.gRsLots.RemoveAll(work.rows.Current().Symbol);
}

} // namespace

void ClearRow(PostingWork &work)
{
    OpenRowTransaction(work);
    const QDate today = work.services.clock.Today();
    TrackerRow &row = work.rows.Edit();
    work.totals.RealizedPending = row.Basis;
    ResetDailyTrackerRow(row, today, work.services.clock.TimeOfDay());
    WriteGuard guard(work.gConnAccount);
    PostDailyProfitLoss(work.gConnAccount, row, today, work.services);
    work.rows.UpdateBatch();
    guard.Commit();
    RecomputeTotals(work.totals, work.rows);
    ComputePortfolioBalance(work.account, work.totals, work.undo.UndoLast.Balance);
    work.rows.Requery();
}

void DeleteRow(PostingWork &work)
{
    OpenRowTransaction(work);
    work.rows.Edit().ProfitLossToday = Currency();
    WriteGuard guard(work.gConnAccount);
    PostDailyProfitLoss(work.gConnAccount, work.rows.Current(), work.services.clock.Today(),
                        work.services);
    work.rows.Delete();
    guard.Commit();
}
