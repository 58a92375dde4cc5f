#pragma once

/// How the balances of the selected accounts moved by month, quarter or year: a block for each
/// account, a row for each period that has balances.
///
///     PORTFOLIO  FIRST      LAST       CHANGE IN  CHANGE IN  DEPOSITS LESS  CHANGE
///     PERIOD     BALANCE    BALANCE    MONEY      PERCENT    WITHDRAWALS    WITHOUT THEM
///
///     Savings
///     Mar 2026   10,000.00  11,500.00  1,500.00   15.00%     1,000.00       500.00
///
/// First and last are the balances of the first and the last recorded day of the period. A balance
/// stands at the end of its day, so a deposit of the first day is in it already: those behind that
/// day count, up to the last one. The percentage is of the first balance, and left out unless that is
/// above zero. With totals wanted, a row for all the periods together ends the block.
///
/// An account without balances has no block; one that cannot be read has a line that says why.
/// Throws RuntimeError when the open account fails or an amount leaves the range of money.

#include "reports/portfolio_files.h"
#include "reports/portfolio_selection.h"
#include "reports/report_options.h"
#include "reports/report_sheet.h"
#include "store/connection.h"

struct PerformanceAccounts
{
    std::vector<Portfolio> portfolios; ///< the selected ones are taken
    QString openName;                  ///< the account that is open
    const Connection &gConnAccount;
    PortfolioFiles files; ///< of the others, which are read and stay as they are
};

/// Of the series of the selected security when the choice is of its rows: deposits are none of its.
void WritePerformance(Report &report, const PerformanceAccounts &accounts,
                      const ReportChoice &choice);
