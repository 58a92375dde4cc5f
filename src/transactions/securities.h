#pragma once

/// The master list of securities, shared by all accounts.

#include "store/connection.h"

#include <QStringList>

#include <optional>

/// "Bond", "Commodity", "Future", "Mutual Fund", "Option", "Stock", "Index".
const QStringList &SecurityTypes();

/// The type of the symbol; nothing when the list has no row of it, or a row without a type.
std::optional<QString> GetSecurityType(Connection &gConnApplControl, const QString &symbol);
