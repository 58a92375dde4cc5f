#pragma once

/// The five connections of a run and the two recordsets that stay open on them.
///
///     account file       gConnAccount, gConnUndo      posting, and the lots of the open posting
///     WebSites.mdb       gConnWebSites                gRsWebParameters, by site name
///     ApplControl.mdb    gConnApplControl             gRsApplication, by TableName and Field08
///     HistPrices.mdb     gConnHistPrices
///
/// To move to another account, set Settings::CurrentFilePath and AccountName between CloseDatabases
/// and OpenDatabases.

#include "platform/services.h"
#include "store/account_lock.h"
#include "store/account_state.h"
#include "store/recordset.h"
#include "store/settings.h"

struct Databases
{
    /// Taken when an account is opened and kept while its files are closed for a while; it goes with
    /// the next account or the end of the program.
    AccountLock accountLock;
    bool accountOpenElsewhere = false; ///< another program works on it: accountError says so
    bool accountLeftOpen = false;      ///< it was not closed properly, and is not checked yet
    bool accountUnguarded = false; ///< its folder has no locks: nothing keeps other programs away
    bool accountHasOtherNames = false; ///< hard links lead to its file
    Connection gConnAccount;
    Connection gConnUndo;
    Connection gConnWebSites;
    Connection gConnApplControl;
    Connection gConnHistPrices;
    Recordset gRsApplication;
    Recordset gRsWebParameters;
    /// Why the account could not be opened; the first read of its control rows throws it.
    std::optional<RuntimeError> accountError;
};

/// Opens the five connections; makes ApplControl.mdb and HistPrices.mdb from their templates when
/// they are missing. A shared file that cannot be opened can be replaced (shared_file_repair.h), or it ends
/// the program after a message. The
/// account is locked against other programs, and its file becomes the user's alone (mode 0600).
void OpenDatabases(Databases &databases, Settings &settings, AccountState &account,
                   Services &services);
/// Closes the files; the account stays locked.
void CloseDatabases(Databases &databases);

/// Opens gRsWebParameters; without a chosen site takes the last one, by name, that holds
/// "Yahoo Finance"; gives sites that failed in an earlier run a fresh chance. When the table cannot
/// be read, says so and switches the price update off.
void LoadWebParameters(Databases &databases, Settings &settings, AccountState &account,
                       Services &services);
/// Opens gRsApplication on its first row and adds the "Portfolio" row of an account that is new
/// here.
void LoadApplicationTable(Databases &databases, const QString &accountName, QDate today);
