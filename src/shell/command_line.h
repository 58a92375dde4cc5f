#pragma once

/// What the user typed behind the program's name.
///
///     quillon "Broker X12.mdb"     opens this account in place of the one of the last run
///     quillon --version            says it and ends, with no display
///
/// Read before anything of the desktop exists, and without an application object.

#include <QString>
#include <QStringList>

#include <optional>

struct CommandLine
{
    QString account;               ///< absolute; empty: none was named
    std::optional<int> exitStatus; ///< there when the program has nothing more to do than to tell
    QString output;                ///< for the standard output, or on a failure for the other one

    /// `arguments` begins with the program's name. The desktop's own options ("-platform xcb",
    /// "-style fusion") pass; a wrong one gives status 2.
    static CommandLine Read(const QStringList &arguments, const QString &version);
};
