#include "program/rebuild_wizard.h"

#include "platform/command_groups.h"
#include "program/form.h"
#include "transactions/rebuild.h"
#include "transactions/undo.h"

#include <QElapsedTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

const QString EntryForm = QStringLiteral("frmTransactionUpdate");
constexpr qint64 RefreshMilliseconds = 60;

QString WizardTitle()
{
    return ApplicationTitle() + QStringLiteral(" Wizard");
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
        Box::YesNo + Box::Question, WizardTitle());
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

/// Rows at zero, while the file keeps what it has until the replay is over.
void EmptyRows(Program &program)
{
    PostingWork work = program.Posting();
    RollbackUndoTransaction(work);
    program.services.status.Post(QStringLiteral("Deleting data from tables..."));
    const QDate today = program.services.clock.Today();
    const QTime now = program.services.clock.TimeOfDay();
    TrackerRecordset &rows = program.AdodcStockHistory;
    for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext())
        ResetDailyTrackerRow(rows.Edit(), today, now);
    program.services.status.Post(QStringLiteral("Delete completed..."));
}

/// Every recordset and screen comes up on the emptied tables.
void ReopenAccount(Program &program)
{
    program.accountRoutines->CloseAllScreens();
    OpenDatabases(program.databases, program.settings, program.account, program.services);
    program.accountRoutines->OpenAccount();
    if (!program.AdodcStockHistory.IsOpen())
        program.screens.Show(QStringLiteral("frmDailyTracker"));
}

void ReplayHistory(Program &program, HistoryReplay &replay)
{
    program.services.status.Post(QStringLiteral("Building data from history..."));
    QElapsedTimer sinceRefresh;
    sinceRefresh.start();
    replay.Run([&](qint64 row) {
        if (sinceRefresh.elapsed() < RefreshMilliseconds)
            return;
        if (RebuildScreen *screen = EntryScreen(program))
            screen->ShowReplayed(replay.Entry());
        program.services.status.Post(
            QStringLiteral("Building data from history... %1").arg(row));
        program.services.clock.Yield();
        sinceRefresh.restart();
    });
}

/// The balance is the account's, whatever the replay and the valuation behind it came to.
class KeptBalance
{
public:
    explicit KeptBalance(Program &program)
        : m_program(program), m_balance(program.account.AccountBalance),
          m_priorBasis(Currency::FromDouble(program.totals.PriorBasisTotal.ToDouble()))
    {
    }
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

void RebuildFromHistory(Program &program, const KeptBalance &balance)
{
    std::optional<HistoryReplay> replay;
    program.BeginRebuild = [&] {
        replay.emplace(program.Posting());
        replay->Begin();
    };
    EmptyRows(program);
    DisableFileButtons(program.services.commands);
    ReopenAccount(program);
    program.BeginRebuild = nullptr;
    program.services.clock.Wait(1s);
    ReplayHistory(program, *replay);
    replay->Commit();
    program.gRsLots.Open(program.databases.gConnUndo);
    balance.Restore();
}

/// The file is as it was; the screens show it again.
void ShowFailure(Program &program, const RuntimeError &error, const KeptBalance &balance)
{
    program.BeginRebuild = nullptr;
    program.entry.RebuildMode = false;
    program.services.dialogs.MsgBox(
        QStringLiteral("An error has occured while using the Wizard!\n"
                       "Restore your portfolio using your backup.\n") +
            ErrorLines(error),
        Box::Stop, WizardTitle());
    program.gRsLots.Close();
    program.AdodcStockHistory.Close(); // half built rows must not reach the balance series
    balance.Restore();
    ReopenAccount(program);
}

} // namespace

void StartRebuildFromHistory(Program &program)
{
    EntryState &entry = program.entry;
    if (entry.RebuildRunning)
        return;
    entry.RebuildMode = true;
    if (!program.screens.Loaded(EntryForm))
        program.screens.Show(EntryForm);
    if (!program.AdodcStockHistory.IsOpen())
        program.screens.Show(QStringLiteral("frmDailyTracker"));
    if (!BackupIsSettled(program))
        return;
    if (program.services.dialogs.MsgBox(QStringLiteral("Continue to re-build from history?"),
                                        Box::YesNo + Box::Question, WizardTitle()) != Answer::Yes) {
        program.screens.Unload(EntryForm);
        entry.RebuildMode = false;
        return;
    }
    if (RebuildScreen *screen = EntryScreen(program))
        screen->DisEnaCommandButtons();
    const KeptBalance balance(program);
    entry.RebuildRunning = true;
    bool built = false;
    try {
        RebuildFromHistory(program, balance);
        built = true;
    } catch (const RuntimeError &error) {
        ShowFailure(program, error, balance);
    }
    entry.RebuildMode = entry.RebuildRunning = entry.RebuildNewDay = false;
    program.priceUpdate.HistoricalRetryNeeded = true;
    EnableFileAndServiceButtons(program.services.commands);
    if (built) {
        if (program.UpdatePortfolioTotals)
            program.UpdatePortfolioTotals();
        const QString done = QStringLiteral("Portfolio successfully built!");
        program.services.status.Post(done);
        program.services.dialogs.MsgBox(done, Box::Information, WizardTitle());
    }
    if (RebuildScreen *screen = EntryScreen(program)) {
        screen->ClearObjects();
        screen->DisEnaCommandButtons();
    }
    if (program.ReloadDataGrid) {
        program.ReloadDataGrid();
        balance.Restore();
        if (program.UpdatePortfolioTotals)
            program.UpdatePortfolioTotals();
    }
    EnableUndoCommands(program.services.commands, false);
}
