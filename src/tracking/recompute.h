#pragma once

/// The walk over all position rows that values them, totals them and moves the balance: when the
/// Daily Tracker loads, after each price cycle and after an undo.

#include "platform/services.h"
#include "store/account_state.h"
#include "store/settings.h"
#include "tracking/portfolio_totals.h"
#include "tracking/tracker_rows.h"
#include "transactions/lots.h"

/// What the walk works on; all of it belongs to the program.
struct RecomputeWork
{
    TrackerRecordset &rows;
    PortfolioTotals &totals;
    AccountState &account;
    Settings &settings;
    const PurchaseLots &lots;
    Currency &undoBalance; ///< takes the balance of the balance step
    Services &services;
    QString title; ///< of the boxes
};

/// Rolls the day when today is not the tracker day, values every row, gathers all totals and writes
/// the rows, and with them the balance as pending: after an error rows, totals and balance are as they
/// were. While `loading`, compares the lots with the rows and leaves the balance as it is
/// (PriorBasisTotal takes BasisTotal); otherwise the balance step follows. The cursor ends on the
/// first row. TestToDateReset comes behind it, once the caller has brought its selection up to
/// date.
void RecomputeRows(RecomputeWork &work, bool loading);

/// Shows a box that names the rows which have been left out of the totals since the last call.
void TellRowsLeftOut(RecomputeWork &work);

/// On or after ResetDate: offers to set the ToDate amounts to zero, unless they are never reset,
/// and moves ResetDate on by ResetMonths, whatever the answer.
void TestToDateReset(RecomputeWork &work);

/// Asks whether to read the help when the lots of the row do not sum to its shares, exactly.
/// True: the user wants the help page.
bool CheckPurchasePriceList(const TrackerRow &row, const PurchaseLots &lots, Services &services,
                            const QString &title);

/// Writes today as the tracker day, into the state and the Balance control row, when it has
/// changed.
void UpdateTrackerDay(Connection &gConnAccount, AccountState &account, QDate today);
