#pragma once

/// The control rows of an account: rows of DescriptiveTable, one of each kind.
///
///     Balance      running balance, tracker day, last price update, days of use, version, style
///     Style1..5    figures of a commission style; only the style in force is read
///     WebSite      minutes between price updates, name of the quote site
///     Security     login, shifted password, logoff
///
/// A row is written as an insert, or as an update of the fields named here when it is there
/// already.

#include "platform/services.h"
#include "store/account_state.h"
#include "store/connection.h"

#include <functional>

/// Reads every control row into `account` and brings the Balance row up to date: one more day of
/// use when today is not the tracker day, and the version stamp. Kinds that have no row leave their
/// state as it is. An account of a version before 5 is handed to `convertToVersion5` with nothing
/// written to it, and read again afterwards. A field that cannot be read counts as zero and stays as it
/// is. Returns a line for each: table, row, column and value; also for a Balance row that is missing
/// although there are transactions. Throws RuntimeError when the table cannot be read, or an old
/// account cannot be converted.
QStringList LoadDescriptiveTable(Connection &gConnAccount, AccountState &account, QDate today,
                                 const std::function<void()> &convertToVersion5 = {});

/// Field01 of the Balance row that is there; the balance is pending no longer. Throws RuntimeError, and
/// nothing is written then.
void UpdateBalanceRow(Connection &gConnAccount, Currency balance);
/// New Balance row, or a new Field01 of the one that is there.
void InsertBalanceRow(Connection &gConnAccount, Currency balance, Services &services);
/// The commission style in force goes into Field08 of the Balance row.
void UpdateCommissionStyle(Connection &gConnAccount, const QString &style, Services &services);
/// Field01, Field02, Field06 and Field07 of the row named by the style.
void InsertStyleRow(Connection &gConnAccount, const AccountState &account, Services &services);
/// Field06 and Field08.
void InsertWebSiteRow(Connection &gConnAccount, const AccountState &account, Services &services);
/// Everything of the row. Throws RuntimeError 5 when the password cannot be shifted.
void InsertSecurityRow(Connection &gConnAccount, const AccountState &account, Services &services);
