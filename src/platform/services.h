#pragma once

/// The services of the machine that routines share, and the words that every box uses.

#include "base/formats.h"
#include "platform/clock.h"
#include "platform/command_states.h"
#include "platform/dialogs.h"
#include "platform/lifetime.h"
#include "platform/settings_store.h"
#include "platform/status_line.h"

#include <functional>

class QImage;

/// References only: the application, the driver or the test owns what stands behind them.
struct Services
{
    Clock &clock;
    Dialogs &dialogs;
    StatusLine &status;
    CommandStates &commands;
    Lifetime &lifetime;
    SettingsStore &settingsStore;
    const Formats &formats;
    QString appPath; ///< folder of the shared files, without a slash at its end
    std::function<void(const QString &topic)> showHelp = {}; ///< "DTDailyTrackerScreen.html"
    /// Opens a page in the user's browser; false when none took it, or when there is no browser.
    std::function<bool(const QString &address)> openInBrowser = {};
    /// Opens a file in the program that the user has for its kind; false when none took it.
    std::function<bool(const QString &path)> openDocument = {};
    /// Prints a picture on a page of its own, after a preview; throws RuntimeError 482 when that fails.
    std::function<void(const QImage &picture)> printPicture = {};
    /// Folder of icons/ and help/, which an installed program reads where they were installed.
    QString programPath = appPath;
};

/// The application's title, and the title of its boxes: "Quillon Editor".
inline QString ApplicationTitle()
{
    return QStringLiteral("Quillon");
}
inline QString EditorTitle(const QString &subject = ApplicationTitle())
{
    return subject + QStringLiteral(" Editor");
}

/// "Error number N" and "Description: D", on two lines.
inline QString ErrorLines(const RuntimeError &error)
{
    return QStringLiteral("Error number %1\nDescription: %2")
        .arg(error.Number())
        .arg(error.Description());
}
