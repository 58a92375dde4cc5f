#pragma once

/// The screens that are loaded, and how they come and go.
///
/// Show and ShowModal create a screen by its name, run Load, place it and bring it to the front;
/// Unload asks QueryUnload, runs OnUnload and takes the screen out of the list before it returns.
/// An error in Load leaves the screen unloaded and travels to the caller; one in OnUnload travels
/// too, but the screen is gone all the same. A screen may unload itself in its own Load.
///
/// The View menu's entry of a screen is checked for as long as it is loaded.

#include "program/form.h"
#include "program/screens.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

class frmMDIMain;
class HelpWindow;
class QEventLoop;
class QMdiSubWindow;

class ScreenHost : public Screens
{
public:
    using Factory = std::function<std::unique_ptr<Form>(Program &)>;

    ScreenHost();
    ~ScreenHost() override;

    void Attach(Program &program, frmMDIMain &window);
    /// Makes a screen known; `viewEntry` is its entry of the View menu, if it has one.
    void Register(const QString &form, Factory factory, const QString &viewEntry = {});
    /// Whether the program has this screen.
    bool Has(const QString &form) const { return m_known.contains(form); }
    /// All that it has, in no order.
    QStringList KnownScreens() const { return m_known.keys(); }

    bool Show(const QString &form) override;
    bool ShowModal(const QString &form) override;
    bool Load(const QString &form) override;
    bool Unload(const QString &form) override;
    bool Loaded(const QString &form) const override { return Find(form) != nullptr; }
    Form *Find(const QString &form) const override;
    void ShowHelp(const QString &topic) override;
    void ShowPopup(const QString &popup, const QPoint &where) override;

    /// In the order of loading.
    QStringList LoadedScreens() const;
    /// The screen in front inside the main window, or nothing.
    Form *ActiveChild() const;
    /// Arranges the screens inside the main window: 0 cascade, 1 in rows, 2 in columns.
    void Arrange(int arrangement);

    /// Called when a screen was to be shown that the program does not have.
    std::function<void(const QString &form)> OnMissing;

    /// The program has ended: modal screens come back by ProgramEnded, all windows go from view.
    void EndAll();
    /// Removes every screen as it is, without its unload routines. No screen outlives this call, not
    /// even one that was unloaded just before: its timers belong to the clock of this run.
    void DestroyAll();

private:
    struct Known
    {
        Factory factory;
        QString viewEntry;
    };
    struct LoadedScreen;

    LoadedScreen *Entry(const QString &form) const;
    /// The loaded screen, or nothing when it unloaded itself while it loaded.
    LoadedScreen *LoadEntry(const QString &form);
    void Display(LoadedScreen &screen, bool modal);
    void DisplayChild(LoadedScreen &screen);
    void DisplayWindow(LoadedScreen &screen, Qt::WindowFlags type);
    void Remove(const QString &form);
    void OnChildActivated(QMdiSubWindow *subWindow);

    Program *m_program = nullptr;
    frmMDIMain *m_window = nullptr;
    QHash<QString, Known> m_known;
    std::vector<std::unique_ptr<LoadedScreen>> m_loaded;
    QList<QPointer<QWidget>> m_removed; ///< until the event loop has deleted them
    std::unique_ptr<HelpWindow> m_help;
    QString m_activeChild;
    bool m_ended = false;
};
