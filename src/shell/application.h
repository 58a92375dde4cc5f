#pragma once

/// One run of the program: everything from the settings to the main window, around the machine's
/// clock, boxes and end of the process.
///
///     Application application(clock, dialogs, lifetime, settingsFile, appPath, QLocale());
///     application.Launch();                   Main, until the main window is up and idle
///     application.MainWindow().Action("mnuFLUserSetup")->trigger();
///     application.Exit();                     the exit sequence
///
/// Launch, Exit and all actions of the user may come from inside each other, as modal screens wait
/// in nested event loops. Destroying a run that has not ended is a crash: nothing is saved.

#include "platform/settings_store.h"
#include "program/program.h"
#include "shell/account_files.h"
#include "shell/application_folder.h"
#include "shell/commands.h"
#include "shell/frm_mdi_main.h"
#include "shell/main_routine.h"
#include "shell/screen_host.h"

#include <memory>

class Application
{
public:
    /// `lifetime` says what the end of the program does to the process: its End leaves it, or
    /// throws ProgramEnded. The databases are closed before. `appPath` holds icons and help too.
    Application(Clock &clock, Dialogs &dialogs, Lifetime &lifetime, const QString &settingsFile,
                const QString &appPath, const QLocale &locale);
    /// The same with an application folder that may have these elsewhere.
    Application(Clock &clock, Dialogs &dialogs, Lifetime &lifetime, const QString &settingsFile,
                const ApplicationFolder &folder, const QLocale &locale);
    ~Application();
    Application(const Application &) = delete;
    Application &operator=(const Application &) = delete;

    /// Runs Main. False when the program ended in it.
    bool Launch();
    /// Leaves as File, Exit does. False when the program goes on.
    bool Exit();
    bool Ended() const { return m_ended; }
    /// Called once, when the program has ended by the exit sequence.
    std::function<void()> OnEnded;

    Program &State() { return *m_program; }
    frmMDIMain &MainWindow() { return *m_window; }
    ScreenHost &Host() { return m_host; }
    Commands &CommandRunner() { return *m_runner; }
    MainRoutine &Routines() { return *m_routines; }

private:
    class StatusText;
    class RunClock;
    class RunLifetime;

    void MarkEnded();

    bool m_ended = false;
    SettingsStore m_settingsStore;
    Formats m_formats;
    CommandStates m_commands;
    std::unique_ptr<StatusText> m_status;
    std::unique_ptr<RunClock> m_clock;
    std::unique_ptr<RunLifetime> m_lifetime;
    ScreenHost m_host;
    std::unique_ptr<Program> m_program;
    std::unique_ptr<frmMDIMain> m_window;
    std::unique_ptr<MainRoutine> m_routines;
    std::unique_ptr<AccountFiles> m_accountFiles;
    std::unique_ptr<Commands> m_runner;
};
