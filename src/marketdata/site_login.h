#pragma once

/// The stored logins of quote sites: rows of ApplicationTable whose TableName is the ID of the site.
/// The login is kept in the clear, the password shifted: that hides it and does not encrypt it.

#include "store/recordset.h"

#include <QDate>
#include <QString>

#include <optional>

struct SiteLogin
{
    QString LoginID;
    QString Password; ///< in plain form
};

/// Nothing when the site has no stored login. Throws RuntimeError 5 when the stored password cannot
/// be read.
std::optional<SiteLogin> StoredSiteLogin(Recordset &gRsApplication, qint64 webSiteId);

/// Writes into the row of the site, or adds one dated `today`. True when there was a row. Throws
/// RuntimeError 5 for a password with characters that cannot be shifted; nothing is written then.
bool StoreSiteLogin(Recordset &gRsApplication, qint64 webSiteId, const SiteLogin &login,
                    QDate today);
