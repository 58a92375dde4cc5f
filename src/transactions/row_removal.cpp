#include "transactions/row_removal.h"

#include "base/put_back.h"
#include "store/failed_write.h"
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

/// The posting before becomes final; from here on Undo Last means this row. `change` alters it in the
/// open transaction; when that cannot be written, rows, lots, sums and balance are as they were.
template <class Change>
void RunRowTransaction(PostingWork &work, const QString &what, Change change)
{
    CommitUndoTransaction(work);
    PutBack before(work.rows, work.totals, work.account, work.undo);
    const TrackerRow &row = work.rows.Current();
    work.undo.RemovedProfitLoss =
        ReadDailyProfitLoss(work.gConnAccount, row.Symbol, work.services.clock.Today());
    SaveUndoLast(work, row);
    work.gRsLots.BeginTrans();
    work.gRsLots.RemoveAll(row.Symbol);
    try {
        OrFail(what, [&] {
            WriteGuard guard(work.gConnAccount);
            change();
            SavePending(work);
            guard.Commit();
        });
    } catch (...) {
        work.gRsLots.RollbackTrans();
        throw;
    }
    work.undo.RowTransactionOpen = true;
    before.Keep();
}

} // namespace

void ClearRow(PostingWork &work)
{
    RunRowTransaction(work, QStringLiteral("The cleared row"), [&work] {
        const QDate today = work.services.clock.Today();
        TrackerRow &row = work.rows.Edit();
        // A row that is left out has no part in the sums.
        const bool isLeftOut = !work.rows.LeftOut(work.rows.Position()).isEmpty();
        work.totals.RealizedPending = isLeftOut ? Currency() : row.Basis;
        work.rows.MarkLeftOut(work.rows.Position(), QString());
        ResetDailyTrackerRow(row, today, work.services.clock.TimeOfDay());
        PostDailyProfitLoss(work.gConnAccount, row, today, work.services);
        RecomputeTotals(work.totals, work.rows);
        ComputePortfolioBalance(work.account, work.totals, work.undo.UndoLast.Balance);
        work.rows.Requery();
    });
}

void DeleteRow(PostingWork &work, const std::function<void()> &reloadDataGrid)
{
    RunRowTransaction(work, QStringLiteral("The deletion of the row"), [&] {
        work.rows.Edit().ProfitLossToday = Currency();
        PostDailyProfitLoss(work.gConnAccount, work.rows.Current(), work.services.clock.Today(),
                            work.services);
        work.rows.Delete();
        reloadDataGrid();
    });
}
