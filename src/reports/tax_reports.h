#pragma once

/// The realized gains for the tax return, computed afresh from the History ledger: every sale of the
/// account is matched to the purchases before it, oldest first (transactions/matching.h).
///
///     Summary       a line for each security, all its sales together
///     Cost Basis    a line for each sale, a net total behind each security
///
///     Bought 100 @ 10, cost -5; Sold 100 @ 12, Amount 1,195
///         sales 1,195.00   cost -1,005.00   gain/loss 190.00
///
/// Costs are negative throughout. "Short" marks the cover of a short sale; nothing looks at how long
/// a security was held. With a date range the sales before it use up their lots as well, unprinted.
/// The day acquired is that of the oldest lot that the sales of the line used up; without a purchase it
/// is 1/1/1900. The matching works on copies: nothing in the account changes. RuntimeError, "Overflow",
/// when a sum leaves the range of money.

#include "reports/report_options.h"
#include "reports/report_sheet.h"
#include "store/connection.h"

void WriteSummary(Report &report, const Connection &gConnAccount, const ReportChoice &choice);
void WriteCostBasis(Report &report, const Connection &gConnAccount, const ReportChoice &choice);
