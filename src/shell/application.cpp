#include "shell/application.h"

#include "shell/command_table.h"
#include "shell/screen_registry.h"

#include <QPixmapCache>

#include <cstdlib>

namespace
{
constexpr int PixmapCacheKilobytes = 2048; ///< the icons of all buttons are less than a tenth of it
}

/// The text of the first status panel.
class Application::StatusText : public StatusLine
{
public:
    explicit StatusText(Application &application) : m_application(application) {}
    void Post(const QString &text) override
    {
        gStatusMessage = text;
        if (m_application.m_window)
            m_application.m_window->UpdateStatusBar();
    }

    QString gStatusMessage;

private:
    Application &m_application;
};

/// The machine's clock as this run has it: a timer's tick is guarded like any event, and a wait
/// during which the program ended does not come back.
class Application::RunClock : public Clock
{
public:
    RunClock(Application &application, Clock &clock) : m_application(application), m_clock(clock) {}

    QDateTime Now() const override { return m_clock.Now(); }
    std::unique_ptr<ClockTimer> CreateTimer(std::function<void()> tick) override
    {
        return m_clock.CreateTimer([this, tick = std::move(tick)] {
            if (!m_application.Ended())
                RunGuarded(m_application.State(), tick);
        });
    }
    void Wait(std::chrono::milliseconds duration) override
    {
        m_clock.Wait(duration);
        ThrowWhenEnded();
    }
    bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit) override
    {
        const bool isDone =
            m_clock.WaitUntil([&] { return m_application.Ended() || done(); }, limit);
        ThrowWhenEnded();
        return isDone;
    }
    void Yield() override
    {
        m_clock.Yield();
        ThrowWhenEnded();
    }

private:
    void ThrowWhenEnded() const
    {
        if (m_application.Ended())
            throw ProgramEnded();
    }

    Application &m_application;
    Clock &m_clock;
};

/// Closes what is open before the process is left.
class Application::RunLifetime : public Lifetime
{
public:
    RunLifetime(Application &application, Lifetime &lifetime)
        : m_application(application), m_lifetime(lifetime)
    {}
    [[noreturn]] void End() override
    {
        m_application.MarkEnded();
        m_lifetime.End();
        std::abort(); // the compiler does not see that End never comes back
    }

private:
    Application &m_application;
    Lifetime &m_lifetime;
};

Application::Application(Clock &clock, Dialogs &dialogs, Lifetime &lifetime,
                         const QString &settingsFile, const QString &appPath, const QLocale &locale)
    : Application(clock, dialogs, lifetime, settingsFile, ApplicationFolder{appPath, appPath},
                  locale)
{}

Application::Application(Clock &clock, Dialogs &dialogs, Lifetime &lifetime,
                         const QString &settingsFile, const ApplicationFolder &folder,
                         const QLocale &locale)
    : m_settingsStore(settingsFile), m_formats(locale),
      m_status(std::make_unique<StatusText>(*this)),
      m_clock(std::make_unique<RunClock>(*this, clock)),
      m_lifetime(std::make_unique<RunLifetime>(*this, lifetime))
{
    // Styles keep drawings of each window's buttons under names that no later window has. What is in
    // use is far less than this; the rest gives way.
    QPixmapCache::setCacheLimit(PixmapCacheKilobytes);
    RegisterCommands(m_commands);
    m_program = std::make_unique<Program>(
        Services{*m_clock, dialogs, *m_status, m_commands, *m_lifetime, m_settingsStore, m_formats,
                 folder.appPath, [this](const QString &topic) { m_host.ShowHelp(topic); }},
        m_host);
    m_program->services.programPath = folder.programPath;
    m_window = std::make_unique<frmMDIMain>(*m_program, m_status->gStatusMessage);
    m_accountFiles = std::make_unique<AccountFiles>(*m_program);
    m_accountFiles->OnGoneOver = [this] { m_window->UpdateCaption(); };
    m_routines = std::make_unique<MainRoutine>(*m_program, *m_window, m_host, *m_accountFiles);
    m_runner = std::make_unique<Commands>(*m_program, *m_window, m_host, *m_accountFiles,
                                          [this] { Exit(); });

    m_program->accountRoutines = m_routines.get();
    m_host.Attach(*m_program, *m_window);
    m_host.OnMissing = [this](const QString &form) { m_runner->PostNotBuilt(form); };
    RegisterScreens(m_host);
    m_commands.OnChange = [this](const QString &name) { m_window->UpdateCommand(name); };
    m_window->OnCommand = [this](const QString &name) {
        RunGuarded(*m_program, [&] { m_runner->Run(name); });
    };
    m_window->OnAccount = [this](const QString &path) {
        RunGuarded(*m_program, [&] {
            m_program->UserActed();
            m_accountFiles->OpenExisting(path);
        });
    };
    m_window->OnClose = [this] { RunGuarded(*m_program, [this] { Exit(); }); };
}

Application::~Application()
{
    m_ended = m_program->run.Ended = true;
    m_commands.OnChange = nullptr;
    m_host.DestroyAll();
}

bool Application::Launch()
{
    return RunGuarded(*m_program, [this] { m_routines->Main(); }) && !m_ended;
}

bool Application::Exit()
{
    // Refused, it goes on; a backup the user asked for ends the program itself when it is done.
    if (m_ended || !m_routines->QueryUnload())
        return m_ended;
    m_routines->Unload();
    MarkEnded();
    if (OnEnded)
        OnEnded();
    return true;
}

void Application::MarkEnded()
{
    m_ended = m_program->run.Ended = true;
    CloseDatabases(m_program->databases);
    m_program->databases.accountLock.Release();
    m_host.EndAll();
}
