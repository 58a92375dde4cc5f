#pragma once

/// The reports that list a table row by row.
///
///     DATE      SECURITY  N A M E    PROFIT/LOSS
///     3/2/2026  ACME      ACME Inc.       250.00
///     3/2/2026  ZETA      ZETA Corp.      -50.00
///                         TOTAL              200         where the user wants totals
///
/// Each writes its header and, below it, a row for each record of the choice, read one by one. They
/// throw RuntimeError when the store fails or a total leaves the range of money.

#include "reports/report_options.h"
#include "reports/report_sheet.h"
#include "store/connection.h"

void WriteTransactionHistory(Report &report, const Connection &gConnAccount,
                             const ReportChoice &choice);
/// With totals, one stands behind each day, or behind each security when sorted by these, and a
/// blank row behind it. A choice without records has none.
void WriteProfitLoss(Report &report, const Connection &gConnAccount, const ReportChoice &choice);
void WriteHistoricalPriceList(Report &report, const Connection &gConnHistPrices,
                              const ReportChoice &choice);
