#pragma once

/// The screens by name. One screen opens another through this, and never includes it.
///
///     screens.Show("frmTransactionUpdate");           loads it if need be, brings it to the front
///     screens.ShowModal("frmSecurityUpdate");         comes back when it is closed
///     if (screens.Loaded("frmInternetTran")) ...

#include <QPoint>
#include <QString>

class Form;

class Screens
{
public:
    virtual ~Screens() = default;

    /// False when the program does not have this screen yet; the status bar has said so.
    virtual bool Show(const QString &form) = 0;
    virtual bool ShowModal(const QString &form) = 0;
    /// Loads a screen without showing it; false, without a word, when the program does not have it.
    virtual bool Load(const QString &form) = 0;
    /// Unloads it when it is loaded; false when the screen refused.
    virtual bool Unload(const QString &form) = 0;
    virtual bool Loaded(const QString &form) const = 0;
    /// The loaded screen, or nothing.
    virtual Form *Find(const QString &form) const = 0;

    /// Opens a topic of the help ("DTTransactionUpdate.html").
    virtual void ShowHelp(const QString &topic) = 0;
    /// Shows a popup menu of the main window ("popDailyTracker") at this place of the screen.
    virtual void ShowPopup(const QString &popup, const QPoint &where) = 0;
};
