#pragma once

/// The copy of an account that is made when it is opened for the first time on a day.
///
///     /home/ann/Broker X12.mdb
///     /home/ann/Broker X12 copies/2026-11-20.mdb
///     /home/ann/Broker X12 copies/2026-11-21.mdb       today's
///
/// A copy is an account like any other: it can be opened, and copied back over the account while
/// that is closed. Today's and the six before it stay. No other file of the folder is touched, nor a
/// copy that is open.

#include "store/connection.h"

/// The folder of an account's copies, whatever way leads to the account.
QString DailyCopyFolder(const QString &accountPath);

/// Makes today's copy of an open account, unless it is there already or the account is such a copy
/// itself. Throws RuntimeError when the copy cannot be made; those of the days before are then all
/// there.
void MakeDailyCopy(Connection &account, QDate today);
