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

/// The posting before becomes final; from here on Undo Last means this row. Unless the change is kept,
/// rows, lots and sums are as they were.
class RowTransaction
{
public:
    explicit RowTransaction(PostingWork &work) : m_work(work), m_totals(work.totals)
    {
        CommitUndoTransaction(work);
        const TrackerRow &row = work.rows.Current();
        work.undo.RemovedProfitLoss =
            ReadDailyProfitLoss(work.gConnAccount, row.Symbol, work.services.clock.Today());
        SaveUndoLast(work, row);
        work.gRsLots.BeginTrans();
        work.undo.RowTransactionOpen = true;
        work.gRsLots.RemoveAll(row.Symbol);
    }
    ~RowTransaction()
    {
        if (m_kept)
            return;
        m_work.gRsLots.RollbackTrans();
        m_work.undo.RowTransactionOpen = false;
        m_work.undo.RemovedProfitLoss.reset();
        m_work.totals = m_totals;
        m_work.rows.CancelBatch();
        try {
            m_work.rows.Requery();
        } catch (const RuntimeError &) {
            // The error on its way out says what is wrong with the file.
        }
    }
    RowTransaction(const RowTransaction &) = delete;
    RowTransaction &operator=(const RowTransaction &) = delete;
    void Keep() { m_kept = true; }

private:
    PostingWork &m_work;
    PortfolioTotals m_totals;
    bool m_kept = false;
};

} // namespace

void ClearRow(PostingWork &work)
{
    RowTransaction transaction(work);
    const QDate today = work.services.clock.Today();
    TrackerRow &row = work.rows.Edit();
    // A row that is left out has no part in the sums.
    const bool isLeftOut = !work.rows.LeftOut(work.rows.Position()).isEmpty();
    work.totals.RealizedPending = isLeftOut ? Currency() : row.Basis;
    work.rows.MarkLeftOut(work.rows.Position(), QString());
    ResetDailyTrackerRow(row, today, work.services.clock.TimeOfDay());
    WriteGuard guard(work.gConnAccount);
    PostDailyProfitLoss(work.gConnAccount, row, today, work.services);
    work.rows.UpdateBatch();
    guard.Commit();
    transaction.Keep();
    RecomputeTotals(work.totals, work.rows);
    ComputePortfolioBalance(work.account, work.totals, work.undo.UndoLast.Balance);
    work.rows.Requery();
}

void DeleteRow(PostingWork &work)
{
    RowTransaction transaction(work);
    work.rows.Edit().ProfitLossToday = Currency();
    WriteGuard guard(work.gConnAccount);
    PostDailyProfitLoss(work.gConnAccount, work.rows.Current(), work.services.clock.Today(),
                        work.services);
    work.rows.Delete();
    guard.Commit();
    transaction.Keep();
}
