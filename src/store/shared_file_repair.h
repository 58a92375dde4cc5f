#pragma once

/// What a user can do when one of the files that all accounts share does not open: the box names the file
/// and the reason, and offers another file in its place.
///
///     /opt/Quillon/HistPrices.mdb              damaged
///     Yes      /media/.../HistPrices.mdb       of a backup
///     No       /opt/Quillon/HistPrices.xxx     the template
///     Cancel                                   quit
///     /opt/Quillon/HistPrices damaged.mdb      where the old one is afterwards, with its logs

#include "platform/services.h"

struct SharedFile
{
    QString path;
    QString pattern; ///< the template; there need not be one
};

/// "HistPrices": HistPrices.mdb and HistPrices.xxx in the application folder.
SharedFile SharedFileOf(const Services &services, const QString &name);

/// True when another file is in the place of the one that failed with `error`, so that opening it can be
/// tried again. False when the user quits, when there is no such file, or when another program uses it.
bool OfferRepair(Services &services, const SharedFile &file, const RuntimeError &error);
