#include "program/compact_databases.h"

#include "program/input_hold.h"
#include "program/preferences.h"
#include "program/wait_cursor.h"
#include "store/compaction.h"
#include "store/conversion.h"
#include "store/unfinished_work.h"
#include "transactions/purge.h"

namespace
{

const QString BoxTitle = QStringLiteral("MDI Editor");

/// A line in the status bar that the user gets to see before the work goes on.
void Status(Program &program, const QString &text)
{
    program.services.status.Post(text);
    program.services.clock.Yield();
}

bool ContinueWithoutBackup(Program &program)
{
    if (program.run.BackupMode == QLatin1String("AutoCompact") ||
        program.settings.LastBackup == program.services.clock.Today())
        return true;
    return program.services.dialogs.MsgBox(
               QStringLiteral("A backup has not been done today (recommended). \n"
                              "Continue anyway?"),
               Box::YesNo + Box::SecondDefault, BoxTitle) == Answer::Yes;
}

QString HistPricesPath(const Program &program, const QString &name = QStringLiteral("HistPrices"))
{
    return QStringLiteral("%1/%2.mdb").arg(program.services.appPath, name);
}

void Purge(Program &program, QString &file)
{
    Databases &databases = program.databases;
    const QString accountFile = file;
    const QDate today = program.services.clock.Today();
    file = HistPricesPath(program);
    if (!databases.gConnHistPrices.IsOpen())
        databases.gConnHistPrices.Open(file);
    file = accountFile;
    if (!databases.gConnAccount.IsOpen())
        databases.gConnAccount.Open(file);
    file = HistPricesPath(program);
    PurgeHistoricalPrices(databases.gConnHistPrices, program.settings.HistPriceMonths, today,
                          program.services.status);
    file = accountFile;
    PurgeAccountData(databases.gConnAccount, program.settings.KeepPortfolioData, today,
                     program.services.status);
}

void CompactFile(Program &program, const QString &path, const QString &target)
{
    Compaction compaction(path, target);
    const UnfinishedWork note(program.services.appPath, {compaction.Target()});
    compaction.Write();
    Status(program, QStringLiteral("Database compacted successfully"));
    compaction.Replace();
}

/// `file` tells which one was at work when an error is thrown. False when the account could not be
/// closed.
bool PurgeAndCompact(Program &program, QString &file)
{
    Purge(program, file);
    if (!program.accountRoutines->CloseAllScreens())
        return false;
    const QString target = TemporaryPathOf(file, program.settings.AccountName);
    Status(program, QStringLiteral("Compacting %1 database...").arg(file));
    CompactFile(program, file, target);
    file = HistPricesPath(program);
    Status(program, QStringLiteral("Compacting Historical Prices database..."));
    CompactFile(program, file, HistPricesPath(program, QStringLiteral("TempHistPrices")));
    return true;
}

void ShowFailure(Program &program, const QString &file, const RuntimeError &error)
{
    program.services.dialogs.MsgBox(
        QStringLiteral("An error has occured while compacting the database\n%1\n").arg(file) +
            ErrorLines(error),
        Box::Stop, BoxTitle);
}

} // namespace

void CompactDatabases(Program &program)
{
    if (!ContinueWithoutBackup(program))
        return;
    {
        const WaitCursor hourglass;
        const InputHold hold;
        QString file = program.settings.CurrentFilePath;
        try {
            if (!PurgeAndCompact(program, file))
                return;
        } catch (const RuntimeError &error) {
            ShowFailure(program, file, error);
            if (!program.accountRoutines->CloseAllScreens()) // the purge may have failed before it
                return;
        }
    }
    const QString &mode = program.run.BackupMode;
    if (mode == QLatin1String("Backup") || mode == QLatin1String("AutoCompact"))
        return; // they open what they need themselves
    SaveSettings(program);
    OpenDatabases(program.databases, program.settings, program.account, program.services);
    program.accountRoutines->OpenAccount();
}
