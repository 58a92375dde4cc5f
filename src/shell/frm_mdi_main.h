#pragma once

/// The main window: menus, toolbar, status bar, and the area in which the screens stand.
///
/// It shows the commands' state (CommandStates) and passes what the user chooses on by name; what a
/// command does stands in commands.cpp.

#include "program/program.h"

#include <QHash>
#include <QIcon>
#include <QMainWindow>

class QAction;
class QMdiArea;
class QMenu;
class QToolBar;
class StatusPanels;

class frmMDIMain : public QMainWindow
{
public:
    /// `gStatusMessage` is the text of the first panel, owned by the status line.
    frmMDIMain(Program &program, const QString &gStatusMessage);

    /// Before it is shown for the first time.
    void Load();
    /// "Quillon - " and the account's name; a maximized screen's caption is added by its frame.
    QString Caption() const;
    void UpdateCaption();

    void UpdateStatusBar();
    const StatusPanels &Status() const { return *m_statusBar; }

    /// Brings the menu entry or button up to date with its state.
    void UpdateCommand(const QString &name);

    QMdiArea *Area() const { return m_area; }
    /// The entry, submenu or toolbar button of this name, or nothing.
    QAction *Action(const QString &name) const { return m_actions.value(name); }
    /// The popup menu of this name, or nothing.
    QMenu *Popup(const QString &name) const { return m_menus.value(name); }
    QToolBar *Toolbar() const { return m_toolbar; }

    /// The user chose a command.
    std::function<void(const QString &name)> OnCommand;
    /// The user chose an account's file: from the Open button's drop-down, or by dropping it on the
    /// window.
    std::function<void(const QString &path)> OnAccount;
    /// The window's own close button; the window stays unless the program ends.
    std::function<void()> OnClose;

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    /// One file that ends in ".mdb" can be dropped while an account can be opened.
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void BuildCommands();
    void AddRecentAccounts();
    void AddKeys();
    void ChooseAccount(const QString &path);
    /// The account that is dragged over the window; empty when it cannot be opened.
    QString DroppedAccount(const QDropEvent &event) const;
    void UpdateConnectIcon();
    void TakeDesktopColor();

    Program &m_program;
    const QString &m_statusMessage;
    QMdiArea *m_area;
    QToolBar *m_toolbar;
    StatusPanels *m_statusBar;
    QHash<QString, QAction *> m_actions;
    QHash<QString, QMenu *> m_menus;
    /// Each icon is drawn once: a new one for every switch would fill the cache of drawings.
    QIcon m_connectOn;
    QIcon m_connectOff;
    std::optional<bool> m_connectIconOn;
};
