#pragma once

/// A screen that carries out popup and toolbar entries which act on it.
///
///     bool frmDailyTracker::RunCommand(const QString &name)
///     {
///         if (name == QLatin1String("popDTSplitMode")) { SplitMode(); return true; }
///         return false;   the main window then says that the entry is not built yet
///     }
///
/// The main window finds it with dynamic_cast on the loaded screen, counts the user as active and
/// guards the call, so that a RuntimeError may travel out of it.

#include <QString>

class CommandTarget
{
public:
    virtual ~CommandTarget() = default;
    /// False when the screen knows no such entry.
    virtual bool RunCommand(const QString &name) = 0;
};
