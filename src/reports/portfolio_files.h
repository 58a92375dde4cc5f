#pragma once

/// Where the accounts of a report over several of them lie: the shared control data has their names
/// alone.
///
///     PortfolioFiles files{currentPath, RecentAccounts(store)};
///     files.PathOf("Savings")       that of the accounts opened last, else beside the open account

#include <QString>
#include <QStringList>

struct PortfolioFiles
{
    QString currentPath;     ///< of the open account
    QStringList recentPaths; ///< the latest first

    /// Empty when no file is found.
    QString PathOf(const QString &name) const;
};
