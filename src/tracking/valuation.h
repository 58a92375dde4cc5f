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

/// All sums of PortfolioTotals that ComputeTotals gathers to zero.
void InitializeTotals(PortfolioTotals &totals);
/// Adds the row to the sums.
void ComputeTotals(PortfolioTotals &totals, const TrackerRow &row);
/// InitializeTotals and ComputeTotals over all rows; the cursor ends behind the last one.
void RecomputeTotals(PortfolioTotals &totals, TrackerRecordset &rows);

/// Basis and PerCentGainToday from price, average and count; Basis is added to BasisTotal, and
/// RowBasisDone set. With no average price the percentage keeps its value.
void ComputeNewBasis(PortfolioTotals &totals, TrackerRow &row);

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
