#pragma once

/// Brings an account of a version below 5, and the shared control file of that time, to the layout
/// of today.
///
///     ApplControl.mdb   has no SecurityDetail: its rows go into a copy of ApplControl.xxx
///     <account>.mdb     DailyTracker has a column SecurityType: the rows go into a copy of
///                       Template.xxx, the types into SecurityDetail
///
/// Each new file is built beside the old one (ApplTemp.mdb; the account's path with its name
/// replaced by "Temp"; another name when a file has that one) and renamed over it when it is complete. After a crash at any instant the
/// old or the new file is there, and the next opening finishes what was begun.
///
/// A failure is shown with the words of the routine in which it happened and ends the program; the
/// old file is then as it was.

#include "platform/services.h"
#include "store/databases.h"

#include <functional>

struct ConversionWork
{
    Databases &databases;
    Settings &settings;
    AccountState &account;
    Services &services;
    std::function<void()> CloseAllScreens; ///< and the databases
};

/// Converts the open account and the control file. Afterwards the databases are open on the new
/// files; the control rows have to be read anew.
void ConvertToVersion5(ConversionWork &work);

/// Nothing but the securities of the account when the control file has today's layout already.
void ConvertApplicationDatabase(ConversionWork &work);
/// Rows get new numbers in the order of their dates.
void ConvertAccountDatabase(ConversionWork &work);

/// Where the account is built anew: its path with every occurrence of its name replaced by "Temp",
/// in the folders too. "/home/ann/Broker.mdb" gives "/home/ann/Temp.mdb". An account of that name
/// itself, or of none, gets a name of its own.
QString TemporaryPathOf(const QString &accountPath, const QString &accountName);
