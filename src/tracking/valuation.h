#pragma once

/// What each position is worth, what it has gained, and how the account's balance follows.
///
///     long 100 @ 10, price 12      Basis 200, PerCentGainToday 0.2, InvestedValue 1,200
///     short -100 @ 10, price 8     Basis 200, PerCentGainToday 0.2, InvestedValue 800
///
/// The balance is a running figure: it moves by the change of the sum of unrealized gains since the
/// last balance step, plus the (negative) cost of the transaction being posted. BasisTotal and
/// PriorBasisTotal are Singles, so that the balance carries their rounding.

#include "store/account_state.h"
#include "tracking/portfolio_totals.h"
#include "tracking/tracker_rows.h"

/// Carries out `step` for the current row: a part of a walk that values the row and adds it to the sums.
/// When a value or a sum does not fit its type, or a column of the row cannot be read, the row is left
/// out: row and sums are as before, and the row is marked. PriorBasisTotal follows a row that goes out
/// or comes back in, so that neither moves the balance.
template <class Step>
void OrLeaveOut(PortfolioTotals &totals, TrackerRecordset &rows, Step step);
/// The row is in the sums again, before a trade values it: PriorBasisTotal takes its gain.
void TakeBackIn(PortfolioTotals &totals, TrackerRecordset &rows);

/// All sums of PortfolioTotals that ComputeTotals gathers to zero.
void InitializeTotals(PortfolioTotals &totals);
/// Adds the row to the sums.
void ComputeTotals(PortfolioTotals &totals, const TrackerRow &row);
/// InitializeTotals, and ComputeTotals over all rows but those that are left out; the cursor ends behind
/// the last one.
void RecomputeTotals(PortfolioTotals &totals, TrackerRecordset &rows);

/// Basis and PerCentGainToday from price, average and count; Basis is added to BasisTotal, and
/// RowBasisDone set. With no average price the percentage keeps its value.
void ComputeNewBasis(PortfolioTotals &totals, TrackerRow &row);

/// Whether the position can be valued at `price`.
bool FitsAt(const TrackerRow &row, Currency price);

/// InvestedValue at the current price: positive for a short position too; with no shares or no
/// price above zero, `otherwise`.
Currency MarketValue(const TrackerRow &row, Currency otherwise);

/// The balance step behind a walk:
///     AccountBalance += Currency(BasisTotal - PriorBasisTotal) + TransCost
///     PriorBasisTotal = Single(Currency(BasisTotal) - RealizedPending), RealizedPending = 0
/// DayBalance and `undoBalance` take the new balance. After an overflow nothing has changed.
void ComputePortfolioBalance(AccountState &account, PortfolioTotals &totals, Currency &undoBalance);

/// The day has changed: ProfitLossToday is folded into ProfitLossToDate, the other Today columns
/// begin at zero.
void RollDayForward(TrackerRow &row);

// --- the template ---------------------------------------------------------------------------------

namespace valuation
{
/// Marks the current row; why, from the columns that cannot be read or the amounts.
void LeaveOut(PortfolioTotals &totals, TrackerRecordset &rows);
/// Throws RuntimeError 6 when the sum of gains is no amount of money any more.
void CheckBasisTotal(const PortfolioTotals &totals);
} // namespace valuation

template <class Step>
void OrLeaveOut(PortfolioTotals &totals, TrackerRecordset &rows, Step step)
{
    if (!rows.Unreadable(rows.Position()).isEmpty())
        return valuation::LeaveOut(totals, rows);
    TrackerRow &row = rows.Edit();
    const TrackerRow before = row;
    const PortfolioTotals sumsBefore = totals;
    try {
        step(row);
        valuation::CheckBasisTotal(totals);
    } catch (const RuntimeError &error) {
        if (error.Number() != RuntimeError::OverflowNumber)
            throw;
        row = before;
        totals = sumsBefore;
        return valuation::LeaveOut(totals, rows);
    }
    if (rows.LeftOut(rows.Position()).isEmpty())
        return;
    totals.PriorBasisTotal = totals.PriorBasisTotal + Single::FromDouble(before.Basis.ToDouble());
    rows.MarkLeftOut(rows.Position(), QString());
}
