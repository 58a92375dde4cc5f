#pragma once

/// A run of the program on an application folder of its own, with a clock that stands still and
/// boxes that the test answers. It starts on Monday 2026-03-02 at 10:15.

#include "platform/simulated_clock.h"
#include "shell/application.h"
#include "shell/status_bar.h"
#include "support/print_qt.h"
#include "support/scripted_dialogs.h"
#include "support/test_app_folder.h"

#include <QTimer>

/// A screen that only tells when it comes and goes.
class PlainScreen : public Form
{
public:
    PlainScreen(Program &program, const QString &name, const QString &caption, Placement placement,
                QStringList &log)
        : Form(program, name, caption, placement), m_log(log)
    {}
    void Load() override { m_log << QStringLiteral("load ") + objectName(); }
    bool QueryUnload() override { return !refuses; }
    void OnUnload() override { m_log << QStringLiteral("unload ") + objectName(); }

    bool refuses = false;

private:
    QStringList &m_log;
};

class ShellRun
{
public:
    explicit ShellRun(TestAppFolder &folder,
                      const QLocale &locale = QLocale(QLocale::English, QLocale::UnitedStates))
        : clock(QDateTime(QDate(2026, 3, 2), QTime(10, 15))), m_folder(folder), m_locale(locale)
    {
        Renew();
    }

    /// A key of the settings store as it stands before the launch.
    ShellRun &Set(const QString &section, const QString &key, const QString &value)
    {
        SettingsStore store(m_folder.SettingsFile());
        store.SaveSetting(section, key, value);
        store.Flush();
        Renew();
        return *this;
    }
    ShellRun &SetOption(const QString &key, const QString &value)
    {
        return Set(QStringLiteral("Options"), key, value);
    }
    QString Saved(const QString &section, const QString &key) const
    {
        SettingsStore store(m_folder.SettingsFile());
        store.Load();
        return store.GetSetting(section, key, QStringLiteral("(none)"));
    }
    QString SavedOption(const QString &key) const { return Saved(QStringLiteral("Options"), key); }

    /// A new Application on the same folder, clock and boxes; the one before is dropped.
    void Renew()
    {
        m_application.reset();
        m_application = std::make_unique<Application>(clock, boxes, m_end, m_folder.SettingsFile(),
                                                      m_folder.Path(), m_locale);
        m_application->OnEnded = [this] { ++timesEnded; };
        State().services.openInBrowser = [this](const QString &address) {
            openedPages << address;
            return hasBrowser;
        };
    }
    /// Replaces a screen, known or not, by a plain one.
    void AddScreen(const QString &name, Placement placement = Placement::Dialog,
                   const QString &viewEntry = {}, const QString &caption = {})
    {
        m_application->Host().Register(
            name,
            [this, name, placement, caption](Program &program) {
                return std::make_unique<PlainScreen>(program, name, caption, placement, log);
            },
            viewEntry);
    }

    /// Every screen that can come up at the start; the tip closes itself.
    void AddStartupScreens()
    {
        AddScreen("frmDailyTracker", Placement::Child, "mnuVWDailyTracker", "Daily Tracker");
        AddScreen("frmInternetTran", Placement::Hidden);
        AddScreen("frmPurchaseList", Placement::Child, "mnuVWPurchaseList", "Purchase Price List");
        AddScreen("frmDailyProfitLoss", Placement::Child, "mnuVWDailyProfitLoss",
                  "Daily Profit and Loss");
        AddScreen("frmHistoryList", Placement::Child, "mnuVWHistory", "Transaction History");
        AddScreen("frmChartScreen", Placement::Child, {}, "Portfolio Positions Chart");
        AddScreen("frmWebBrowser", Placement::Child, {}, "Browser");
        AddScreen("frmHistoricalPriceList", Placement::Child, "mnuVWHistoricalPriceList",
                  "Historical Price List");
        AddScreen("frmTipOfDay");
        WhenModal("frmTipOfDay", [this] { App().Host().Unload("frmTipOfDay"); });
    }
    /// Runs `act` once the program waits in this modal screen.
    void WhenModal(const QString &name, std::function<void()> act)
    {
        auto *watch = new QTimer(&App().MainWindow());
        QObject::connect(watch, &QTimer::timeout, watch, [this, name, watch, act] {
            if (!App().Host().Loaded(name))
                return;
            watch->stop();
            act();
        });
        watch->start(0);
    }

    /// The control row that an account in use has.
    void GiveBalance(const QString &path, const QString &trackerDay, int daysOfUse)
    {
        m_folder.Execute(path, QStringLiteral("INSERT INTO DescriptiveTable VALUES ('Balance', 0, "
                                              "0, 0, '%1', '2026-02-27', '6018', %2, 'n/a', 'n/a', "
                                              "0, 0, '0')")
                                   .arg(trackerDay)
                                   .arg(daysOfUse));
    }
    /// Login "Ann", password "secret".
    void GiveSecurity(const QString &path, int isProtected, int logoff, int minutes)
    {
        m_folder.Execute(path, QStringLiteral("INSERT INTO DescriptiveTable VALUES ('Security', 0, "
                                              "0, 0, '2026-03-02', '2026-03-02', '%1', 0, 'Ann', "
                                              "'vhfuhw', %2, %3, '0')")
                                   .arg(minutes)
                                   .arg(isProtected)
                                   .arg(logoff));
    }

    Application &App() { return *m_application; }
    Program &State() { return m_application->State(); }
    CommandStates &Commands() { return State().services.commands; }
    QString Panel(int panel) { return App().MainWindow().Status().PanelText(panel); }
    void Choose(const QString &name) { App().MainWindow().Action(name)->trigger(); }
    template <class Widget>
    Widget *Control(const QString &form, const QString &control)
    {
        Form *screen = App().Host().Find(form);
        return screen ? screen->findChild<Widget *>(control) : nullptr;
    }

    /// The plain screens in the order in which they were loaded or unloaded.
    QStringList Loads() const { return Names(QStringLiteral("load ")); }
    QStringList Unloads() const { return Names(QStringLiteral("unload ")); }

    SimulatedClock clock;
    ScriptedBoxes boxes;
    QStringList log; ///< of the plain screens
    int timesEnded = 0;
    QStringList openedPages; ///< addresses handed to the user's browser
    bool hasBrowser = true;

private:
    struct ThrowingEnd : Lifetime
    {
        [[noreturn]] void End() override { throw ProgramEnded(); }
    };

    QStringList Names(const QString &what) const
    {
        QStringList names;
        for (const QString &line : log)
            if (line.startsWith(what))
                names << line.mid(what.size());
        return names;
    }

    TestAppFolder &m_folder;
    QLocale m_locale;
    ThrowingEnd m_end;
    std::unique_ptr<Application> m_application;
};
