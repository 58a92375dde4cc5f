#pragma once

/// The balance series: one row of PortfolioDailyBalance for each day and tracked name.
///
///     "Portfolio"    the account's balance          UpdateDailyBalance
///     a symbol       the row's unrealized gain      UpdateDailySecurityBalance
///
/// A day's row is updated in place however often it is written; its last value stays. Both routines
/// show an error in a box titled `title` and go on, so that a failed write does not keep a screen
/// open.

#include "platform/services.h"
#include "store/account_state.h"
#include "store/connection.h"
#include "tracking/tracker_rows.h"

/// Also writes the balance into the Balance control row, where it is pending no longer.
void UpdateDailyBalance(Connection &gConnAccount, const AccountState &account, QDate date,
                        Services &services, const QString &title);
/// The same without a box: throws RuntimeError, and nothing is written then.
void WriteDailyBalance(Connection &gConnAccount, Currency balance, QDate date, QTime now);
/// For every row with a gain, or with a transaction dated `date`.
void UpdateDailySecurityBalance(Connection &gConnAccount, const TrackerRecordset &rows, QDate date,
                                Services &services, const QString &title);
