#include "tracking/valuation.h"

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
        ComputeTotals(totals, rows.Current());
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
