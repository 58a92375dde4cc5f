#pragma once

/// The program under the script's hands: its clock, its boxes, its settings, and its runs, one
/// after the other, each launched anew.
///
///     session.Launch();
///     session.TriggerMenu("mnuVWHistory");
///     session.Control("frmHistoryList.cmdClose")->...
///     session.Quit();                               session.Launch() may follow
///
/// Before the first launch a command that needs the program is ScriptWrong; once the program has
/// ended, it is Failed.

#include "driver/scripted_dialogs.h"
#include "platform/lifetime.h"
#include "platform/simulated_clock.h"

#include <functional>
#include <memory>

class Application;
class QMenu;
class QWidget;

class Session
{
public:
    /// `appPath` and `settingsFile` are absolute. `leave` flushes what is written and leaves the
    /// process with this status, whatever stands on the stack.
    Session(const QString &appPath, const QString &settingsFile,
            std::function<void(int status)> leave);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    SimulatedClock &Clock() { return m_clock; }
    ScriptedDialogs &Dialogs() { return m_dialogs; }

    /// Leaves the process at once, with no clean-up of the program.
    [[noreturn]] void Leave(int status);
    /// Told with the reason when the program asks what no answer is queued for.
    std::function<void(const QString &reason)> OnUnanswered;

    // --- the run -------------------------------------------------------------------------------

    /// ScriptWrong while the program runs.
    void Launch();
    /// The exit sequence. The program goes on when it refuses to end.
    void Quit();
    bool Running() const;
    void RequireProgram();
    /// A program that has ended is taken down once nothing of it is left on the stack.
    void ForgetEndedProgram(bool stackIsClear);
    void SaveSetting(const QString &section, const QString &key, const QString &value);

    // --- forms and controls --------------------------------------------------------------------

    /// `frmMDIMain`, or a loaded screen. ScriptWrong for a name the program does not know, Failed
    /// for a screen that is not loaded.
    QWidget *Form(const QString &name);
    /// A screen that the script need not know to be loaded; nothing when it is not.
    QWidget *LoadedForm(const QString &name);
    /// By `form.control`; as Form.
    QWidget *Control(const QString &name);
    /// ScriptWrong for a name the program does not know.
    bool IsLoaded(const QString &form);
    /// The addresses that went to the user's browser, and the files that went to another program of
    /// his, since the last call. None is started.
    QStringList TakePages();
    /// The sizes of the pictures that went to the printer since the last call: "1280x800".
    QStringList TakePrints();
    /// The panels of the status bar; the fourth is the file name of its picture.
    QStringList StatusPanels();

    // --- menus, popups, toolbar, by name -------------------------------------------------------

    /// As a click on the entry, from the menu bar or a popup menu. Failed when it is disabled.
    void TriggerMenu(const QString &name);
    /// Runs `rightClick`, which brings a popup menu up, and picks the entry from it.
    void TriggerPopup(const QString &name, const std::function<void()> &rightClick);
    void PressTool(const QString &key);
    static bool IsCommand(const QString &name);
    QString CommandCaption(const QString &name);
    bool IsCommandEnabled(const QString &name);
    bool IsCommandVisible(const QString &name);
    bool IsCommandChecked(const QString &name);

private:
    /// The end of a run leaves the process where it is.
    struct EndOfRun : Lifetime
    {
        [[noreturn]] void End() override { throw ProgramEnded(); }
    };

    Application &Program();

    QString m_appPath;
    QString m_settingsFile;
    std::function<void(int)> m_leave;
    SimulatedClock m_clock;
    ScriptedDialogs m_dialogs;
    EndOfRun m_endOfRun;
    bool m_wasLaunched = false;
    QStringList m_pages;
    QStringList m_prints;
    std::unique_ptr<Application> m_application;
};
