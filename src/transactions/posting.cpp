#include "transactions/posting.h"

#include "store/pending_changes.h"
#include "tracking/valuation.h"
#include "transactions/cash_actions.h"
#include "transactions/entry_validation.h"
#include "transactions/history.h"
#include "transactions/position_posting.h"
#include "transactions/split.h"
#include "transactions/undo.h"

namespace
{

TradeFigures ReadFigures(const TransactionEntry &entry, const Formats &formats)
{
    TradeFigures trade;
    trade.action = *entry.action;
    trade.typedShares = formats.NumberFromText(entry.NumberOfShares);
    trade.typedPrice = formats.NumberFromText(entry.PurchasePrice);
    trade.TransShares = Single::FromDouble(trade.typedShares);
    trade.TransPrice = formats.CurrencyFromText(entry.PurchasePrice);
    if (TakesSharesAway(trade.action))
        trade.TransShares = -trade.TransShares;
    return trade;
}

void AddPurchaseLot(PostingWork &work, const TransactionEntry &entry, const TradeFigures &trade)
{
    const QTime now = work.services.clock.TimeOfDay();
    work.gRsLots.Add(entry.Symbol, {0, trade.TransShares, trade.TransPrice, entry.TransDate, now});
    UndoRecord &last = work.undo.UndoLast;
    last.LastLotSymbol = entry.Symbol;
    last.LastLotTransDate = entry.TransDate;
    last.LastLotTime = now;
}

/// Writes begin with the row of the symbol and end with the History row.
class Sequence
{
public:
    Sequence(PostingWork &work, TransactionEntry &entry, EntryFiller &filler)
        : m_work(work), m_entry(entry), m_filler(filler)
    {}

    PostingOutcome Run()
    {
        EntryState &state = m_work.entry;
        if (m_entry.action)
            state.CurrentAction = ActionText(*m_entry.action);
        if (ValidateEntry(m_work, m_entry, m_filler))
            return PostingOutcome::Rejected;
        state.PostingInProgress = true;
        CommitUndoTransaction(m_work);
        EnableUndoCommands(m_work.services.commands, false);

        if (IsCashAction(*m_entry.action)) {
            PostCashAction(m_work, m_entry);
            return WriteLedgers();
        }
        return RunTrade();
    }

private:
    PostingOutcome RunTrade()
    {
        EntryState &state = m_work.entry;
        if (state.CurrentSecurityType == QLatin1String("Mutual Fund"))
            state.Commission = Currency();
        const PortfolioTotals before = m_work.totals;
        m_work.totals.TransCost = -state.Commission;
        m_trade = ReadFigures(m_entry, m_work.services.formats);
        if (!state.RebuildMode) {
            m_work.gRsLots.BeginTrans();
            m_work.undo.PostingTransactionOpen = true;
        }
        for (;;) {
            switch (Walk()) {
            case WalkEnd::Rejected:
                m_work.rows.CancelBatch();
                m_work.totals = before;
                m_work.totals.TransCost = Currency();
                return PostingOutcome::Rejected;
            case WalkEnd::Split:
                m_work.totals = before;
                return FinishSplit();
            case WalkEnd::AllRows:
                break;
            }
            if (state.SymbolFound || !state.RebuildMode)
                break;
            m_work.rows.AddNew(m_entry.Symbol, m_entry.Name, m_work.services.clock.Today(),
                               m_work.services.clock.TimeOfDay());
        }
        if (state.RebuildMode)
            m_work.totals.RealizedPending = Currency(); // the replay restores the balance itself
        else
            ComputePortfolioBalance(m_work.account, m_work.totals, m_work.undo.UndoLast.Balance);
        return WriteLedgers();
    }

    enum class WalkEnd
    {
        AllRows,
        Rejected,
        Split
    };

    WalkEnd Walk()
    {
        TrackerRecordset &rows = m_work.rows;
        PortfolioTotals &totals = m_work.totals;
        EntryState &state = m_work.entry;
        state.SymbolFound = false;
        if (state.RebuildMode)
            return WalkReplayed();
        InitializeTotals(totals);
        totals.BasisTotal = Single();
        for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext()) {
            totals.RowBasisDone = false;
            if (rows.Current().Symbol == m_entry.Symbol) {
                state.SymbolFound = true;
                if (const QString &columns = rows.Unreadable(rows.Position()); !columns.isEmpty()) {
                    m_work.services.dialogs.MsgBox(
                        QStringLiteral(
                            "%1 has no usable number in the column %2 of its row, so "
                            "nothing can be posted to it. Clear or delete the row first.")
                            .arg(m_entry.Symbol, columns),
                        Box::Exclamation, EditorTitle());
                    return WalkEnd::Rejected;
                }
                if (m_entry.action == Action::Split)
                    return WalkEnd::Split;
                if (ValidateSecurityEntry(m_work, m_entry, m_trade.TransShares, m_trade.TransPrice,
                                          m_filler))
                    return WalkEnd::Rejected;
                m_trade.action = *m_entry.action; // a question may have changed it
                TakeBackIn(totals, rows);
                if (!m_guard)
                    m_guard.emplace(m_work.gConnAccount);
                PostTradeToRow(m_work, m_entry, m_trade);
            }
            OrLeaveOut(totals, rows, [&](TrackerRow &row) {
                if (!row.Shares.IsZero() && !totals.RowBasisDone)
                    ComputeNewBasis(totals, row);
                ComputeTotals(totals, row);
            });
        }
        return WalkEnd::AllRows;
    }

    /// A replay touches the row of the symbol alone: the values of the others, and all totals, are
    /// computed once when it is over.
    WalkEnd WalkReplayed()
    {
        TrackerRecordset &rows = m_work.rows;
        if (m_work.entry.RebuildNewDay)
            for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext())
                RollDayForward(rows.Edit());
        m_work.entry.SymbolFound = rows.Find(m_entry.Symbol);
        if (m_work.entry.SymbolFound)
            PostTradeToRow(m_work, m_entry, m_trade);
        return WalkEnd::AllRows;
    }

    PostingOutcome FinishSplit()
    {
        m_work.totals.TransCost = Currency();
        m_guard.emplace(m_work.gConnAccount);
        PostSplit(m_work, m_entry, m_work.services.formats.NumberFromText(m_entry.NumberOfShares),
                  m_work.services.formats.NumberFromText(m_entry.PurchasePrice));
        CommitWrites();
        return PostingOutcome::PostedSplit;
    }

    void CommitWrites()
    {
        m_work.rows.UpdateBatch();
        SavePending(m_work);
        m_guard->Commit();
    }

    PostingOutcome WriteLedgers()
    {
        const bool addsLot = OpensLot(*m_entry.action);
        if (addsLot)
            AddPurchaseLot(m_work, m_entry, m_trade);
        m_work.undo.UndoLast.LotAdded = addsLot;
        if (m_work.entry.RebuildMode) // History stays; the rows are written when the replay is over
            return PostingOutcome::Posted;
        if (!m_guard)
            m_guard.emplace(m_work.gConnAccount);
        const bool split = m_entry.action == Action::Split; // of a symbol that has no row
        if (!split)
            PostHistoryEntry(m_work, m_entry, m_trade.TransShares);
        CommitWrites();
        m_work.rows.Requery();
        return split ? PostingOutcome::PostedSplit : PostingOutcome::Posted;
    }

    PostingWork &m_work;
    TransactionEntry &m_entry;
    EntryFiller &m_filler;
    TradeFigures m_trade;
    std::optional<WriteGuard> m_guard;
};

} // namespace

PostingOutcome PostTransaction(PostingWork &work, TransactionEntry &entry, EntryFiller &filler)
{
    try {
        return Sequence(work, entry, filler).Run();
    } catch (const RuntimeError &error) {
        EndAfterFailure(
            work.services,
            QStringLiteral("An error has occured while performing 'OK' button logic.\n"
                           "Please take note of all steps taken during this transaction \n"
                           "and notify technical support."),
            error);
    }
}

void FinishPosting(PostingWork &work, PostingOutcome outcome)
{
    work.entry.PostingInProgress = false;
    work.totals.TransCost = Currency();
    if (!work.entry.RebuildMode && outcome == PostingOutcome::Posted)
        EnableUndoCommands(work.services.commands, true);
}
