#pragma once

/// The folders that a run works on.
///
///     run from the tree or a stick    everything lies beside the executable
///     run from an installation        /usr/lib/quillon/quillon is the executable,
///                                     /usr/share/quillon holds what is delivered, never written to,
///                                     ~/.local/share/Quillon is the user's, made at the first start
///
/// The user's folder gets each delivered file once. A file that is there stays as it is, whatever an
/// update delivers under its name; what an update adds comes at the next start. A database that the
/// user deleted - the sample account, old prices - does not come back, but for the quote sites,
/// without which the program cannot start. The folders icons/ and help/ are read where they were
/// installed, so that they are always those of the program that runs.

#include "base/runtime_error.h"

#include <QString>

struct ApplicationFolder
{
    QString appPath;     ///< templates, shared databases, tips: what `Services::appPath` names
    QString programPath; ///< icons/ and help/
    bool isPerUser = false;

    /// Of the executable in `executableFolder`, links resolved. `sharePath` leads from there to what
    /// an installation delivers ("../../share/quillon"); `userData` is where the desktop keeps the
    /// user's data. The names are absolute, without a slash at their end. Touches nothing.
    static ApplicationFolder Find(const QString &executableFolder, const QString &sharePath,
                                  const QString &userData);

    /// Makes and completes the user's folder; nothing happens to a folder beside the executable. All
    /// in it is the user's alone (modes 0700 and 0600). Each file is there whole or not at all: after
    /// a RuntimeError - a disk that is full, a home that may not be written to - the next start goes
    /// on where this one stopped. Of two programs that start at once, the second waits.
    void Complete() const;
};
