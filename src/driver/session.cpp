#include "driver/session.h"

#include "driver/failure.h"
#include "shell/application.h"
#include "shell/command_table.h"
#include "shell/status_bar.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QMenu>

#include <cstdlib>
#include <utility>

namespace
{

const QString mainWindow = QStringLiteral("frmMDIMain");
constexpr int panels = 5;

/// Where a script begins that sets no clock: now, in whole seconds.
QDateTime StartOfClock()
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.addMSecs(-now.time().msec());
}

/// Menu entries are controls of the main window, and may be written as such.
const Command *CommandOf(QString name)
{
    const QLatin1String window("frmMDIMain.");
    if (name.startsWith(window))
        name.remove(0, window.size());
    return FindCommand(name);
}

const Command &KnownCommand(const QString &name)
{
    const Command *command = CommandOf(name);
    if (!command)
        throw ScriptWrong(QStringLiteral("no menu entry or toolbar button \"%1\"").arg(name));
    return *command;
}

/// The popup menu that an entry belongs to; empty for entries of the menu bar.
QString PopupOf(const Command &entry)
{
    const Command *above = &entry;
    while (above && above->kind != CommandKind::Popup)
        above = FindCommand(above->Parent());
    return above ? above->Name() : QString();
}

void RequireNoModalForm(const QString &name)
{
    if (const QWidget *modal = QApplication::activeModalWidget())
        throw Failed(
            QStringLiteral("%1 is behind the modal form %2").arg(name, modal->objectName()));
}

/// As a click on it, which a disabled menu above it does not let through either.
void Trigger(Application &program, const QString &name)
{
    if (!CommandUsable(program.State().services.commands, name))
        throw Failed(QStringLiteral("%1 is disabled").arg(name));
    program.MainWindow().Action(name)->trigger();
}

} // namespace

Session::Session(const QString &appPath, const QString &settingsFile,
                 std::function<void(int)> leave)
    : m_appPath(appPath), m_settingsFile(settingsFile), m_leave(std::move(leave)),
      m_clock(StartOfClock()), m_dialogs([this](const QString &reason) {
          if (OnUnanswered)
              OnUnanswered(reason);
          Leave(1);
      })
{}

Session::~Session() = default;

void Session::Leave(int status)
{
    m_leave(status);
    std::_Exit(status);
}

// --- the run -------------------------------------------------------------------------------------

void Session::Launch()
{
    if (m_application)
        throw ScriptWrong(QStringLiteral("the program is running already"));
    m_wasLaunched = true;
    m_application = std::make_unique<Application>(m_clock, m_dialogs, m_endOfRun, m_settingsFile,
                                                  m_appPath, QLocale());
    m_application->State().services.openInBrowser = [this](const QString &address) {
        m_pages << address;
        return true;
    };
    m_application->State().services.openDocument = [this](const QString &path) {
        // A script knows its working folder by no other name.
        const QString fromHere = QDir::current().relativeFilePath(path);
        m_pages << (fromHere.startsWith(QLatin1String("..")) ? path : fromHere);
        return true;
    };
    m_application->State().services.printPicture = [this](const QImage &picture) {
        m_prints << QStringLiteral("%1x%2").arg(picture.width()).arg(picture.height());
    };
    m_application->Launch();
}

void Session::Quit()
{
    Application &program = Program();
    RunGuarded(program.State(), [&program] { program.Exit(); });
}

bool Session::Running() const
{
    return m_application && !m_application->Ended();
}

void Session::RequireProgram()
{
    if (Running())
        return;
    if (!m_wasLaunched)
        throw ScriptWrong(QStringLiteral("the program is not launched yet"));
    throw Failed(QStringLiteral("the program has ended"));
}

void Session::ForgetEndedProgram(bool stackIsClear)
{
    if (m_application && m_application->Ended() && stackIsClear)
        m_application.reset();
}

void Session::SaveSetting(const QString &section, const QString &key, const QString &value)
{
    if (Running())
        throw ScriptWrong(QStringLiteral("settings are set before the program is launched"));
    SettingsStore store(m_settingsFile);
    store.SaveSetting(section, key, value);
    store.Flush();
}

Application &Session::Program()
{
    RequireProgram();
    return *m_application;
}

// --- forms and controls --------------------------------------------------------------------------

QWidget *Session::Form(const QString &name)
{
    Application &program = Program();
    if (name == mainWindow)
        return &program.MainWindow();
    if (!program.Host().Has(name))
        throw ScriptWrong(QStringLiteral("no form \"%1\"").arg(name));
    QWidget *form = program.Host().Find(name);
    if (!form)
        throw Failed(QStringLiteral("%1 is not loaded").arg(name));
    return form;
}

QWidget *Session::LoadedForm(const QString &name)
{
    return Program().Host().Find(name);
}

QWidget *Session::Control(const QString &name)
{
    const qsizetype dot = name.indexOf(QLatin1Char('.'));
    if (dot < 0)
        throw ScriptWrong(QStringLiteral("\"%1\" is not form.control").arg(name));
    QWidget *form = Form(name.left(dot));
    auto *control = form->findChild<QWidget *>(name.mid(dot + 1));
    if (!control)
        throw ScriptWrong(QStringLiteral("no control \"%1\"").arg(name));
    return control;
}

bool Session::IsLoaded(const QString &form)
{
    if (!Running())
        return false;
    if (form == mainWindow)
        return true;
    if (!m_application->Host().Has(form))
        throw ScriptWrong(QStringLiteral("no form \"%1\"").arg(form));
    return m_application->Host().Loaded(form);
}

QStringList Session::TakePages()
{
    return std::exchange(m_pages, {});
}

QStringList Session::TakePrints()
{
    return std::exchange(m_prints, {});
}

QStringList Session::StatusPanels()
{
    const auto &status = Program().MainWindow().Status();
    QStringList texts;
    for (int panel = 1; panel <= panels; ++panel)
        texts += status.PanelText(panel);
    return texts;
}

// --- menus, popups, toolbar ----------------------------------------------------------------------

void Session::TriggerMenu(const QString &name)
{
    Application &program = Program();
    if (KnownCommand(name).kind != CommandKind::Entry)
        throw ScriptWrong(QStringLiteral("%1 is no menu entry").arg(name));
    RequireNoModalForm(name);
    Trigger(program, name);
}

void Session::TriggerPopup(const QString &name, const std::function<void()> &rightClick)
{
    Application &program = Program();
    const QString popup = PopupOf(KnownCommand(name));
    if (popup.isEmpty())
        throw ScriptWrong(QStringLiteral("%1 is no entry of a popup menu").arg(name));
    rightClick();
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        throw Failed(QStringLiteral("no popup menu came up"));
    const bool isItsMenu = menu == program.MainWindow().Popup(popup);
    menu->hide();
    if (!isItsMenu)
        throw Failed(QStringLiteral("%1 is not in the popup menu that came up").arg(name));
    Trigger(program, name);
}

void Session::PressTool(const QString &key)
{
    Application &program = Program();
    if (KnownCommand(key).kind != CommandKind::Button)
        throw ScriptWrong(QStringLiteral("%1 is no toolbar button").arg(key));
    RequireNoModalForm(key);
    Trigger(program, key);
}

bool Session::IsCommand(const QString &name)
{
    return CommandOf(name) != nullptr;
}

QString Session::CommandCaption(const QString &name)
{
    return Program().State().services.commands.Caption(KnownCommand(name).Name());
}

bool Session::IsCommandEnabled(const QString &name)
{
    return Program().State().services.commands.Enabled(KnownCommand(name).Name());
}

bool Session::IsCommandVisible(const QString &name)
{
    const QAction *action = Program().MainWindow().Action(KnownCommand(name).Name());
    return action && action->isVisible();
}

bool Session::IsCommandChecked(const QString &name)
{
    return Program().State().services.commands.Checked(KnownCommand(name).Name());
}
