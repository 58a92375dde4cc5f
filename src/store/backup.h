#pragma once

/// The backup of the application folder to a chosen place, and the way back, with what the user is
/// asked and told on the way.
///
///     application folder    /opt/Quillon
///     chosen                /media/ann/STICK
///     backup                /media/ann/STICK/Quillon Backup/Quillon/...
///
/// The folder is copied under its own name, while a restore takes its files from the subfolder
/// "Quillon": it finds them only if the application folder bears that name. Accounts that lie
/// elsewhere are not touched by either. All databases of this program are closed meanwhile.
///
/// Errors that the routines do not tell themselves are thrown as RuntimeErrors; each file is then
/// whole, the old one or the new one (store/folder_copy.h).

#include "platform/services.h"
#include "store/account_lock.h"
#include "store/folder_copy.h"

/// "/media/ann/STICK/Quillon Backup/": where a backup goes when this folder is chosen.
QString BackupTarget(const QString &chosen);
/// The part of the chosen path up to its folder "Quillon Backup"; empty when it leads into none.
QString BackupSource(const QString &chosen);

/// True when the backup was made. False when the user did not want the old one to be overwritten, or
/// when the target is inside the application folder or inside a backup, which a message says.
bool BackUp(Services &services, const QString &target, const AfterFile &afterFile);
/// True when the procedure came to its end. A backup without files for it gets a message before that.
/// Nothing is brought back when another program than the one that holds `accountLock` has one of the
/// accounts.
bool Restore(Services &services, const AccountLock &accountLock, const QString &source,
             const AfterFile &afterFile);
