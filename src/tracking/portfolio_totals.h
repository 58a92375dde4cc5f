#pragma once

/// Sums over the position rows, and the bookkeeping that moves the account's balance.

#include "base/currency.h"
#include "base/single.h"

struct PortfolioTotals
{
    // Cleared by InitializeTotals.
    Currency ProfitLossTodayTotal;
    Currency ProfitLossToDateTotal;
    Currency ActualProfitLossTotal; ///< the two above, not the sum of the column
    Currency TransCostTodayTotal;
    Currency TransCostToDateTotal;
    /// Wider than the rows' 16-bit counters: an account may well hold more than 32,767 transactions.
    int TransactionsToday = 0;
    int TransactionsToDate = 0;
    Currency InvestedValueTotal;
    Currency InvestedToDateTotal;

    /// Sum of Basis in row order, a Single after each row; reset before each walk.
    Single BasisTotal;
    /// The gain that the balance already holds; shown as "Gain Total".
    Single PriorBasisTotal;
    /// Minus the commission of the posting under way; zero outside one.
    Currency TransCost;
    /// Realized gain of a posting on its way to the balance step.
    Currency RealizedPending;
    /// ComputeNewBasis ran for the current row of the walk.
    bool RowBasisDone = false;
};
