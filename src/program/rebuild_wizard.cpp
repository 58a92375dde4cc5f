#include "program/rebuild_wizard.h"

#include "base/put_back.h"
#include "platform/command_groups.h"
#include "program/form.h"
#include "program/input_hold.h"
#include "program/list_refresh.h"
#include "store/control_rows.h"
#include "store/failed_write.h"
#include "store/pending_changes.h"
#include "tracking/daily_balances.h"
#include "transactions/rebuild.h"
#include "transactions/undo.h"

#include <QElapsedTimer>
#include <QScopeGuard>

#include <chrono>
#include <exception>

using namespace std::chrono_literals;

namespace
{

const QString EntryForm = QStringLiteral("frmTransactionUpdate");
constexpr qint64 RefreshMilliseconds = 60;

QString WizardTitle()
{
    return ApplicationTitle() + QStringLiteral(" Wizard");
}

void Status(Program &program, const QString &text)
{
    program.services.status.Post(text);
}

RebuildScreen *EntryScreen(Program &program)
{
    return dynamic_cast<RebuildScreen *>(program.screens.Find(EntryForm));
}

/// True: go on. The backup question comes once in a run.
bool BackupIsSettled(Program &program)
{
    RunState &run = program.run;
    if (run.BackupOffered || program.settings.LastBackup == program.services.clock.Today())
        return true;
    run.BackupOffered = true;
    const Answer answer = program.services.dialogs.MsgBox(
        QStringLiteral("Caution! You're about to re-build your portfolio from History,\n"
                       "the operation can not be backed out after it is completed.\n\n"
                       "A backup is highly recommended! Start Backup procedure?"),
        Box::YesNo, WizardTitle());
    if (answer != Answer::Yes)
        return true;
    const QString backup = QStringLiteral("frmBackupRestore");
    run.BackupMode = QStringLiteral("Backup");
    if (program.screens.Show(backup))
        return false; // it brings the entry screen back, and clears RebuildMode
    run.BackupMode.clear();
    program.entry.RebuildMode = false;
    return false;
}

/// The balance is the account's, whatever the replay and the valuation behind it came to.
class KeptBalance
{
public:
    explicit KeptBalance(Program &program)
        : m_program(program), m_balance(program.account.AccountBalance),
          m_priorBasis(Currency::FromDouble(program.totals.PriorBasisTotal.ToDouble()))
    {}
    void Restore() const
    {
        m_program.account.AccountBalance = m_program.account.DayBalance =
            m_program.undo.UndoLast.Balance = m_balance;
        m_program.totals.PriorBasisTotal = Single::FromDouble(m_priorBasis.ToDouble());
    }

private:
    Program &m_program;
    Currency m_balance;
    Currency m_priorBasis;
};

/// The day's balances, as a closing Daily Tracker leaves them, here of the emptied rows and in the
/// transaction of the rebuild.
void WriteEmptiedBalances(Program &program)
{
    Connection &account = program.databases.gConnAccount;
    const QDate today = program.services.clock.Today();
    const QString title = EditorTitle(QStringLiteral("Daily Tracker"));
    UpdateDailySecurityBalance(account, program.AdodcStockHistory, today, program.services, title);
    UpdateDailyBalance(account, program.account, today, program.services, title);
}

/// Every recordset and screen of the account comes up anew. True when it is open again, with its
/// rows: the user may not have signed on, or may have gone over to another account.
bool ReopenAccount(Program &program)
{
    const QString account = program.settings.CurrentFilePath;
    if (!program.accountRoutines->CloseAllScreens())
        return false;
    OpenDatabases(program.databases, program.settings, program.account, program.services);
    program.accountRoutines->OpenAccount();
    if (program.run.SignOnCancelled || program.settings.CurrentFilePath != account)
        return false;
    if (!program.AdodcStockHistory.IsOpen())
        program.screens.Show(QStringLiteral("frmDailyTracker"));
    return program.AdodcStockHistory.IsOpen();
}

/// Comes up on emptied tables. An error waits until the account is open: it is the wizard's, and no
/// sign of an invalid account.
bool ReopenEmptied(Program &program, std::optional<HistoryReplay> &replay,
                   const KeptBalance &balance)
{
    const QString account = program.settings.CurrentFilePath;
    std::exception_ptr failure;
    program.BeginRebuild = [&] {
        if (replay || program.settings.CurrentFilePath != account)
            return;
        try {
            Status(program, QStringLiteral("Deleting data from tables..."));
            replay.emplace(program.Posting());
            replay->Begin();
            balance.Restore();
            WriteEmptiedBalances(program);
            Status(program, QStringLiteral("Delete completed..."));
        } catch (const RuntimeError &) {
            failure = std::current_exception();
        }
    };
    const auto forget = qScopeGuard([&program] { program.BeginRebuild = nullptr; });
    const bool open = ReopenAccount(program);
    if (failure)
        std::rethrow_exception(failure);
    return open && replay;
}

void ReplayHistory(Program &program, HistoryReplay &replay)
{
    Status(program, QStringLiteral("Building data from history..."));
    QElapsedTimer sinceRefresh;
    sinceRefresh.start();
    replay.Run([&](qint64 row) {
        if (sinceRefresh.elapsed() < RefreshMilliseconds)
            return;
        if (RebuildScreen *screen = EntryScreen(program))
            screen->ShowReplayed(replay.Entry());
        Status(program, QStringLiteral("Building data from history... %1").arg(row));
        program.services.clock.Yield();
        sinceRefresh.restart();
    });
    RebuildScreen *screen = EntryScreen(program);
    if (screen && replay.RowCount() > 0)
        screen->ShowReplayed(replay.Entry());
}

/// What is pending, while the account can still be written: a rebuild that fails leaves it as it is
/// then. Throws FailedWrite.
void SaveBeforeRebuild(Program &program)
{
    PostingWork work = program.Posting();
    CommitPending(work);
    EnableUndoCommands(program.services.commands, false);
    OrFail(QStringLiteral("The balance of the account"),
           [&] { UpdateBalanceRow(work.gConnAccount, program.account.AccountBalance); });
}

/// False when the account did not come back, so that nothing was begun.
bool RebuildFromHistory(Program &program, const KeptBalance &balance)
{
    DisableFileButtons(program.services.commands);
    std::optional<HistoryReplay> replay;
    if (!ReopenEmptied(program, replay, balance))
        return false;
    const InputHold hold;
    program.services.clock.Wait(1s);
    ReplayHistory(program, *replay);
    replay->Commit();
    program.gRsLots.Open(program.databases.gConnUndo);
    balance.Restore();
    return true;
}

/// The file is as it was; the screens show it again.
void ShowFailure(Program &program, const RuntimeError &error, const KeptBalance &balance)
{
    program.entry.RebuildMode = false;
    program.services.dialogs.MsgBox(QStringLiteral("An error has occured while using the Wizard!\n"
                                                   "Restore your portfolio using your backup.\n") +
                                        ErrorLines(error),
                                    Box::Stop, WizardTitle());
    program.gRsLots.Close();
    program.AdodcStockHistory.Close(); // half built rows must not reach the file
    ReopenAccount(program);
    balance.Restore();
}

/// What follows a rebuild that has come to its end, well or not.
void ShowRebuilt(Program &program, const KeptBalance &balance, bool built)
{
    if (program.UpdatePortfolioTotals)
        program.UpdatePortfolioTotals();
    if (built) {
        RefreshOpenLists(program); // they came up on emptied tables
        const QString done = QStringLiteral("Portfolio successfully built!");
        Status(program, done);
        program.services.dialogs.MsgBox(done, Box::Information, WizardTitle());
    }
    if (RebuildScreen *screen = EntryScreen(program)) {
        screen->ClearObjects();
        screen->DisEnaCommandButtons();
    }
    if (program.ReloadDataGrid) {
        PutBack rows(program.AdodcStockHistory);
        WriteGuard guard(program.databases.gConnAccount); // no balance but the restored one
        program.ReloadDataGrid();
        balance.Restore();
        SavePendingBalance(program.databases.gConnAccount, program.account.AccountBalance);
        guard.Commit();
        rows.Keep();
        if (program.UpdatePortfolioTotals)
            program.UpdatePortfolioTotals();
    }
}

} // namespace

void StartRebuildFromHistory(Program &program)
{
    EntryState &entry = program.entry;
    const RebuildScreen *open = EntryScreen(program);
    if (entry.RebuildRunning || (open && open->IsPosting()))
        return;
    entry.RebuildMode = true;
    if (!program.screens.Loaded(EntryForm))
        program.screens.Show(EntryForm);
    if (!program.AdodcStockHistory.IsOpen())
        program.screens.Show(QStringLiteral("frmDailyTracker"));
    if (!BackupIsSettled(program))
        return;
    const auto leave = qScopeGuard(
        [&] { entry.RebuildMode = entry.RebuildRunning = entry.RebuildNewDay = false; });
    if (program.services.dialogs.MsgBox(QStringLiteral("Continue to re-build from history?"),
                                        Box::YesNo, WizardTitle()) != Answer::Yes) {
        program.screens.Unload(EntryForm);
        return;
    }
    const KeptBalance balance(program);
    SaveBeforeRebuild(program);
    if (RebuildScreen *screen = EntryScreen(program))
        screen->DisEnaCommandButtons();
    entry.RebuildRunning = true;
    bool built = false;
    bool opened = true;
    try {
        built = opened = RebuildFromHistory(program, balance);
    } catch (const RuntimeError &error) {
        ShowFailure(program, error, balance);
    }
    entry.RebuildMode = entry.RebuildRunning = entry.RebuildNewDay = false;
    EnableFileAndServiceButtons(program.services.commands);
    if (program.run.SignOnCancelled)
        SetAccountButtonsEnabled(program.services.commands, false);
    if (built)
        program.priceUpdate.HistoricalRetryNeeded = true;
    if (opened)
        ShowRebuilt(program, balance, built);
    else
        program.screens.Unload(EntryForm);
    EnableUndoCommands(program.services.commands, false);
}
