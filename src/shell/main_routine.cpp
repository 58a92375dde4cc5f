#include "shell/main_routine.h"

#include "platform/command_groups.h"
#include "program/compact_databases.h"
#include "program/preferences.h"
#include "program/wait_cursor.h"
#include "shell/account_files.h"
#include "shell/frm_mdi_main.h"
#include "shell/screen_host.h"
#include "store/account_care.h"
#include "store/control_rows.h"
#include "store/conversion.h"
#include "store/failed_write.h"
#include "store/pending_changes.h"
#include "store/recent_accounts.h"
#include "store/unfinished_work.h"
#include "tracking/daily_balances.h"

#include <chrono>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

MainRoutine::MainRoutine(Program &program, frmMDIMain &window, ScreenHost &host,
                         AccountFiles &accountFiles)
    : m_program(program), m_window(window), m_host(host), m_accountFiles(accountFiles)
{
    m_program.tmrLogoff = program.services.clock.CreateTimer([this] { tmrLogoff_Timer(); });
    m_program.tmrLogoff->SetInterval(65000ms); // "a minute" of the logoff
    m_program.tmrLogoff->SetEnabled(false);
}

// --- start ---------------------------------------------------------------------------------------

void MainRoutine::Main()
{
    m_program.run.ClearListDateRange();
    m_note = LoadSettings(m_program);
    CleanUpUnfinishedWork();
    if (!m_program.run.AccountToOpen.isEmpty())
        m_accountFiles.GoOverTo(m_program.run.AccountToOpen);
    m_program.webAddresses = WebAddresses::Load(m_program.services.appPath);
    OpenCurrentDatabases();
    ShowSplash();
    m_window.Load();
    if (m_program.run.NewAccount)
        m_host.ShowModal(QStringLiteral("frmUserSetup")); // OpenAccount follows from there
    else
        OpenAccount();
    const QString tips = QStringLiteral("frmTipOfDay");
    if (m_program.settings.ShowTipOfDay == 1 && !m_program.run.NewAccount &&
        !m_program.run.SignOnCancelled && m_host.Has(tips))
        m_host.ShowModal(tips);
    m_isStarted = true;
    StartLogoff();
}

void MainRoutine::CleanUpUnfinishedWork()
{
    UnfinishedWork::CleanUp(m_program.services.appPath, [this](const QString &backup) {
        m_program.services.dialogs.MsgBox(
            QStringLiteral("The restore from\n%1\nwas cut off before its end: some files are those "
                           "of the backup, others are not yet.\nPlease restore again.")
                .arg(backup),
            Box::Exclamation, EditorTitle());
    });
}

/// Stops it for an account that does not ask for it.
void MainRoutine::StartLogoff()
{
    m_program.tmrLogoff->SetEnabled(m_program.account.LogoffEnabled == 1);
}

void MainRoutine::ShowSplash()
{
    const QString splash = QStringLiteral("frmSplash");
    m_host.Show(splash);
    while (m_host.Loaded(splash))
        m_program.services.clock.Wait(100ms);
}

void MainRoutine::OpenCurrentDatabases()
{
    OpenDatabases(m_program.databases, m_program.settings, m_program.account, m_program.services);
}

void MainRoutine::tmrLogoff_Timer()
{
    ++m_program.run.IdleMinutes;
    // An equality: a limit lowered below the running count waits for the next action of the user.
    if (m_program.account.LogoffEnabled == 1 &&
        m_program.run.IdleMinutes == m_program.account.LogoffMinutes)
        m_program.services.lifetime.End();
    m_window.UpdateStatusBar();
}

// --- an account comes up -------------------------------------------------------------------------

void MainRoutine::OpenAccount()
{
    if (m_program.databases.accountOpenElsewhere) {
        OpenAnotherAccount();
        return;
    }
    QString failure;
    try {
        ReadAndOpen();
        return;
    } catch (const RuntimeError &error) {
        failure = ErrorLines(error);
    }
    do {
        m_program.run.AccountInvalid = true;
        m_program.services.dialogs.MsgBox(
            QStringLiteral("The database Quillon is trying to open is invalid!\n"
                           "Please open a valid database for this application.\n") +
                failure,
            Box::Stop, EditorTitle());
        m_accountFiles.mnuFLOpenExisting_Click();
    } while (m_program.run.AccountInvalid);
}

void MainRoutine::OpenAnotherAccount()
{
    m_program.run.AccountInvalid = true;
    m_accountFiles.TellOpenElsewhere(m_program.settings.CurrentFilePath);
    while (m_program.run.AccountInvalid) {
        // Without an account there is nothing to do here, and nothing to lose.
        if (!m_accountFiles.mnuFLOpenExisting_Click())
            m_program.services.lifetime.End();
    }
}

void MainRoutine::ReadAndOpen()
{
    CommandStates &commands = m_program.services.commands;
    EnableAllMenus(commands, m_program.entry.RebuildRunning);
    if (!m_program.entry.RebuildRunning)
        SetAccountButtonsEnabled(commands, true);
    if (m_program.databases.accountError)
        throw RuntimeError(*m_program.databases.accountError);
    const QStringList problems =
        LoadDescriptiveTable(m_program.databases.gConnAccount, m_program.account,
                             m_program.services.clock.Today(), [this] { ConvertAccount(); });
    if (!problems.isEmpty())
        m_program.services.dialogs.MsgBox(
            QStringLiteral("These values of the account cannot be read and count as zero. Compare "
                           "the account with a copy, and correct or restore it:\n") +
                problems.join(QLatin1Char('\n')),
            Box::Exclamation, EditorTitle());
    if (!m_program.entry.RebuildRunning)
        m_program.undo = UndoState();
    m_program.undo.UndoLast.Balance = m_program.account.AccountBalance;
    m_program.run.SignOnCancelled = false; // of the account before
    if (m_program.account.PasswordProtected == 1) {
        m_host.ShowModal(QStringLiteral("frmPassword"));
        if (m_program.run.SignOnCancelled) {
            DisableMenusForSignOn(commands);
            SetAccountButtonsEnabled(commands, false);
            return;
        }
    }
    const WaitCursor hourglass;
    OpenStartupScreens();
    ArrangeAtStartup();
    commands.SetEnabled(QStringLiteral("UndoLast"), false);
    m_window.UpdateStatusBar(); // no screen may have come up to do it
    if (m_isStarted)            // else Main does it last
        StartLogoff();
    if (!m_program.entry.RebuildRunning)
        CareForOpenAccount();
}

void MainRoutine::CareForOpenAccount()
{
    RememberAccount(m_program.services.settingsStore, m_program.settings.CurrentFilePath);
    // Behind the screens, whose own words would replace the line at once.
    const QStringList lines = {
        std::exchange(m_note, {}),
        CareForAccount(m_program.databases, m_program.services.clock.Today())};
    if (const QString line = lines.join(QLatin1Char(' ')).trimmed(); !line.isEmpty())
        m_program.services.status.Post(line);
}

void MainRoutine::ConvertAccount()
{
    const WaitCursor hourglass;
    ConversionWork work{m_program.databases, m_program.settings, m_program.account,
                        m_program.services, [this] { (void)CloseAllScreens(); }};
    ConvertToVersion5(work);
}

void MainRoutine::OpenStartupScreens()
{
    const Settings &settings = m_program.settings;
    // A list whose rows cannot be shown or summed keeps no account from opening.
    const auto showList = [this](const char *form) {
        try {
            m_host.Show(QString::fromUtf8(form));
        } catch (const RuntimeError &error) {
            m_host.Unload(QString::fromUtf8(form));
            m_program.services.dialogs.MsgBox(
                QStringLiteral("A list of this account cannot be shown.\n") + ErrorLines(error),
                Box::Exclamation, EditorTitle());
        }
    };
    if (settings.DailyTracker == 1)
        m_host.Show(QStringLiteral("frmDailyTracker"));
    if (settings.WebPriceUpdate && !m_program.entry.RebuildRunning)
        m_host.Load(QStringLiteral("frmInternetTran"));
    if (settings.PurchaseList == 1)
        showList("frmPurchaseList");
    if (settings.DailyProfitLoss == 1)
        showList("frmDailyProfitLoss");
    if (settings.HistoryList == 1)
        showList("frmHistoryList");
    if (settings.ChartScreen == 1)
        showList("frmChartScreen");
    if (settings.BrowserScreen == 1)
        m_host.Show(QStringLiteral("frmWebBrowser"));
    if (settings.HistoricalPriceList == 1)
        showList("frmHistoricalPriceList");
}

void MainRoutine::ArrangeAtStartup()
{
    if (m_program.settings.ArgCascade)
        m_host.Arrange(0);
    if (m_program.settings.ArgHorizontal)
        m_host.Arrange(1);
    if (m_program.settings.ArgVertical)
        m_host.Arrange(2);
}

// --- an account goes -----------------------------------------------------------------------------

bool MainRoutine::CloseAllScreens()
{
    const WaitCursor hourglass;
    static const struct
    {
        const char *form;
        const char *viewEntry;
    } viewed[] = {{"frmHistoryList", "mnuVWHistory"},
                  {"frmHistoricalPriceList", "mnuVWHistoricalPriceList"},
                  {"frmPurchaseList", "mnuVWPurchaseList"},
                  {"frmDailyTracker", "mnuVWDailyTracker"},
                  {"frmDailyProfitLoss", "mnuVWDailyProfitLoss"}};
    for (const auto &screen : viewed)
        if (m_program.services.commands.Checked(QString::fromUtf8(screen.viewEntry)) &&
            !m_host.Unload(QString::fromUtf8(screen.form)))
            return false;
    if (!SaveBalance())
        return false;

    // The price cycle goes twice: the screens that suspend it load it again when they go.
    for (const char *form : {"frmDeleteOptions", "frmDateSelect", "frmUserSetup", "frmChartScreen",
                             "frmInternetTran", "frmQuoteServerUpdate", "frmTransactionUpdate",
                             "frmPortfolioSelect", "frmInternetTran"}) {
        const QString name = QString::fromUtf8(form);
        // A rebuild presses the buttons of the entry screen, and needs it all the while.
        if (name == QLatin1String("frmTransactionUpdate") && m_program.entry.RebuildRunning)
            continue;
        m_host.Unload(name);
    }
    CloseDatabases(m_program.databases);
    return true;
}

/// The Daily Tracker closes whether it could write the balance or not.
bool MainRoutine::SaveBalance()
{
    Connection &account = m_program.databases.gConnAccount;
    try {
        if (!m_program.entry.RebuildRunning && account.IsOpen() && HasPendingBalance(account))
            WriteDailyBalance(account, m_program.account.AccountBalance,
                              m_program.services.clock.Today(),
                              m_program.services.clock.TimeOfDay());
    } catch (const RuntimeError &error) {
        m_program.services.dialogs.MsgBox(
            QStringLiteral("The balance of the account could not be saved: %1.\n"
                           "Nothing is lost. Correct the problem and try it again.")
                .arg(ReasonOf(error)),
            Box::Exclamation, EditorTitle());
        return false;
    }
    return true;
}

// --- exit ----------------------------------------------------------------------------------------

bool MainRoutine::QueryUnload()
{
    // Whatever BrowserAlive says: a browser with a page of ours is the user's own, and stays open.
    m_program.run.ExitInProgress = true;
    if (m_program.settings.AccountName == QLatin1String("Empty")) {
        m_program.services.dialogs.MsgBox(
            QStringLiteral("Please create a name for this account using \n"
                           "the 'Save as' option from the 'File' menu.\n"
                           "The name should be the same as the one you use with \n"
                           "your broker. As an example: Fidelity X12-34567."),
            Box::Ok + Box::Information, EditorTitle());
        return false;
    }
    m_program.run.ProgramClosing = true; // the backup, if there is one, ends it too
    const bool backupFirst = RemindOfBackup();
    const int averageBefore = m_program.settings.AverageTrans;
    UpdateAverage();
    m_program.settings.LastRunDate = m_program.services.clock.Today();
    if (!CloseAllScreens()) { // the backup needs the files closed as well
        m_program.settings.AverageTrans = averageBefore; // the next exit counts the day
        m_program.run.ProgramClosing = false;
        return false;
    }
    return !backupFirst;
}

bool MainRoutine::RemindOfBackup()
{
    const Settings &settings = m_program.settings;
    const QDate today = m_program.services.clock.Today();
    const qint64 daysSinceNotify = settings.LastNotify.daysTo(today);
    if (today == settings.LastBackup || today == settings.LastNotify)
        return false;
    if (settings.CheckAverage == 1 && m_program.totals.TransactionsToday > settings.AverageTrans)
        return OfferBackup(QStringLiteral("You've done more transactions today than usual. \n"
                                          "A backup is recommended! Start Backup procedure?"));
    if (settings.CheckNotify == 1 && daysSinceNotify >= settings.NotifyDays)
        return OfferBackup(QStringLiteral("Last backup was done %1 days ago. "
                                          "A backup is recommended!\n"
                                          "Start the backup procedure?")
                               .arg(settings.LastBackup.daysTo(today)));
    return false;
}

bool MainRoutine::OfferBackup(const QString &question)
{
    const Answer answer =
        m_program.services.dialogs.MsgBox(question, Box::YesNo + Box::Question, EditorTitle());
    m_program.settings.LastNotify = m_program.services.clock.Today();
    if (answer != Answer::Yes)
        return false;
    const QString backup = QStringLiteral("frmBackupRestore");
    if (m_host.Has(backup))
        m_program.run.BackupMode = QStringLiteral("Backup");
    return m_host.Show(backup);
}

void MainRoutine::UpdateAverage()
{
    const int today = m_program.totals.TransactionsToday;
    if (today > 0) // halves to the nearest even number
        m_program.settings.AverageTrans =
            int(std::nearbyint((m_program.settings.AverageTrans + today) / 2.0));
}

void MainRoutine::Unload()
{
    SaveSettings(m_program);
    CompactWhenDue();
    CloseDatabases(m_program.databases);
}

void MainRoutine::CompactWhenDue()
{
    const Settings &settings = m_program.settings;
    if (settings.CheckCompact != 1 || m_program.account.ElapsedDays.Value() < settings.CompactDays)
        return;
    m_program.run.BackupMode = QStringLiteral("AutoCompact");
    // Whatever becomes of the account's file, the exit goes on.
    RunGuarded(m_program, [this, &settings] {
        CompactDatabases(m_program);
        Connection &account = m_program.databases.gConnAccount;
        account.Open(settings.CurrentFilePath);
        account.Execute(
            QStringLiteral("UPDATE DescriptiveTable SET Field07 = 1 WHERE TableName = 'Balance'"));
    });
}
