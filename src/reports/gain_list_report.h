#pragma once

/// The unrealized gain of each day, from the balance series: of the selected security, or of all
/// securities together.
///
///     DATE      SECURITY   GAIN
///     3/2/2026  Portfolio  200.00
///     3/3/2026  Portfolio  350.00
///               TOTAL      550.00    the sum of the column
///               CHANGE     150.00    the last day's gain less the first day's
///
/// Days without a record are left out. The series "Portfolio", which holds the account's balance, is
/// no gain and not among the securities. With totals wanted, each month has a TOTAL of its own, and a
/// blank row behind it. Throws RuntimeError when the store fails or a sum leaves the range of money.

#include "reports/report_options.h"
#include "reports/report_sheet.h"
#include "store/connection.h"

/// Of the selected security when the report is of that kind, or when the choice is of its rows.
void WriteGainList(Report &report, const Connection &gConnAccount, const ReportChoice &choice);
