#include "tracking/valuation.h"

#include <cmath>

void valuation::LeaveOut(PortfolioTotals &totals, TrackerRecordset &rows)
{
    const int at = rows.Position();
    if (rows.LeftOut(at).isEmpty())
        totals.PriorBasisTotal =
            totals.PriorBasisTotal - Single::FromDouble(rows.Current().Basis.ToDouble());
    const QString &unreadable = rows.Unreadable(at);
    rows.MarkLeftOut(
        at,
        unreadable.isEmpty()
            ? QStringLiteral("Left out of the totals: its amounts are too large.")
            : QStringLiteral("Left out of the totals: no usable number in %1.").arg(unreadable));
}

void valuation::CheckBasisTotal(const PortfolioTotals &totals)
{
    constexpr double LargestAmount = 9e14;
    if (std::fabs(totals.BasisTotal.ToDouble()) > LargestAmount)
        throw RuntimeError::Overflow();
}

void TakeBackIn(PortfolioTotals &totals, TrackerRecordset &rows)
{
    if (rows.LeftOut(rows.Position()).isEmpty())
        return;
    totals.PriorBasisTotal =
        totals.PriorBasisTotal + Single::FromDouble(rows.Current().Basis.ToDouble());
    rows.MarkLeftOut(rows.Position(), QString());
}

void InitializeTotals(PortfolioTotals &totals)
{
    totals.ProfitLossTodayTotal = totals.ProfitLossToDateTotal = totals.ActualProfitLossTotal =
        Currency();
    totals.TransCostTodayTotal = totals.TransCostToDateTotal = Currency();
    totals.TransactionsToday = totals.TransactionsToDate = 0;
    totals.InvestedValueTotal = totals.InvestedToDateTotal = Currency();
}

void ComputeTotals(PortfolioTotals &totals, const TrackerRow &row)
{
    totals.ProfitLossTodayTotal += row.ProfitLossToday;
    totals.ProfitLossToDateTotal += row.ProfitLossToDate;
    totals.ActualProfitLossTotal = totals.ProfitLossTodayTotal + totals.ProfitLossToDateTotal;
    totals.TransCostTodayTotal += row.TransCostToday;
    totals.TransCostToDateTotal += row.TransCostToDate;
    totals.TransactionsToday += row.NumberTransToday.Value();
    totals.TransactionsToDate += row.NumberTransToDate.Value();
    totals.InvestedValueTotal += row.InvestedValue;
    totals.InvestedToDateTotal += row.InvestedToDate;
}

void RecomputeTotals(PortfolioTotals &totals, TrackerRecordset &rows)
{
    InitializeTotals(totals);
    for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext())
        if (rows.LeftOut(rows.Position()).isEmpty())
            OrLeaveOut(totals, rows, [&](TrackerRow &row) { ComputeTotals(totals, row); });
}

void ComputeNewBasis(PortfolioTotals &totals, TrackerRow &row)
{
    const double gainOfShare = (row.CurrPrice - row.AvrgPrice).ToDouble();
    row.Basis = Currency::FromDouble(gainOfShare * row.Shares.ToDouble());
    if (!row.AvrgPrice.IsZero())
        row.PerCentGainToday = Single::FromDouble(gainOfShare / row.AvrgPrice.ToDouble());
    if (row.Shares.IsNegative())
        row.PerCentGainToday = -row.PerCentGainToday;
    totals.BasisTotal = Single::FromDouble(totals.BasisTotal.ToDouble() + row.Basis.ToDouble());
    totals.RowBasisDone = true;
}

bool FitsAt(const TrackerRow &row, Currency price)
{
    TrackerRow valued = row;
    valued.CurrPrice = price;
    PortfolioTotals alone;
    try {
        MarketValue(valued, Currency());
        ComputeNewBasis(alone, valued);
        return true;
    } catch (const RuntimeError &) {
        return false;
    }
}

Currency MarketValue(const TrackerRow &row, Currency otherwise)
{
    if (row.Shares.IsZero() || row.CurrPrice <= Currency())
        return otherwise;
    const double shares = row.Shares.IsNegative() ? -row.Shares.ToDouble() : row.Shares.ToDouble();
    return Currency::FromDouble(shares * row.CurrPrice.ToDouble());
}

void ComputePortfolioBalance(AccountState &account, PortfolioTotals &totals, Currency &undoBalance)
{
    const Single difference = totals.BasisTotal - totals.PriorBasisTotal;
    const Currency balance =
        account.AccountBalance + Currency::FromDouble(difference.ToDouble()) + totals.TransCost;
    const Currency prior =
        Currency::FromDouble(totals.BasisTotal.ToDouble()) - totals.RealizedPending;

    account.AccountBalance = account.DayBalance = undoBalance = balance;
    totals.PriorBasisTotal = Single::FromDouble(prior.ToDouble());
    totals.RealizedPending = Currency();
}

void RollDayForward(TrackerRow &row)
{
    row.ProfitLossToDate += row.ProfitLossToday;
    row.ProfitLossToday = Currency();
    row.TransCostToday = Currency();
    row.NumberTransToday = Integer();
}
