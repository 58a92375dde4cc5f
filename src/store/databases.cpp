#include "store/databases.h"

#include "platform/files.h"
#include "store/failed_write.h"
#include "store/pending_changes.h"
#include "store/shared_file_repair.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace
{

/// Before anything reads the account.
void TakeUpTheLastRun(Connection &account)
{
    try {
        TakeUpPendingChanges(account);
    } catch (const RuntimeError &error) {
        throw RuntimeError(error.Number(),
                           QStringLiteral("The last changes of the account could not be saved: %1. "
                                          "They are kept; please open it again later.")
                               .arg(ReasonOf(error)));
    }
}

/// Runs one step of opening; its failure is shown and ends the program.
template <class Step>
void OrEnd(Services &services, const QString &firstLine, const SharedFile &file,
           Connection &connection, Step step)
{
    try {
        step();
    } catch (const RuntimeError &error) {
        connection.Close(); // a damaged file may have been opened
        if (OfferRepair(services, file, error))
            return OrEnd(services, firstLine, file, connection, step);
        services.dialogs.MsgBox(firstLine + QStringLiteral("\nPlease restore from backup.\n") +
                                    ErrorLines(error),
                                Box::Stop, EditorTitle());
        services.lifetime.End();
    }
}

void CopyTemplateWhenMissing(const QString &database, const QString &pattern)
{
    if (!Files::FileExists(database))
        Files::CopyFile(pattern, database, false);
}

void OpenAccountFile(Databases &databases, const QString &path)
{
    const bool isReopening = databases.accountLock.Holds(path);
    // A log beside the file is what a program leaves that dies in the middle of its work.
    const bool hasLog = QFileInfo(path + QStringLiteral("-wal")).size() > 0 ||
                        QFileInfo(path + QStringLiteral("-journal")).size() > 0;
    const AccountLock::Outcome lock = databases.accountLock.Acquire(path);
    databases.accountUnguarded = lock == AccountLock::Outcome::Unguarded;
    databases.accountOpenElsewhere = lock == AccountLock::Outcome::OpenElsewhere;
    if (databases.accountOpenElsewhere)
        throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                           QStringLiteral("Another program works on '%1'.").arg(path));
    try {
        databases.gConnAccount.Open(path);
        Files::RestrictToOwner(path); // before there is a log, which takes over the permissions
        TakeUpTheLastRun(databases.gConnAccount);
        // The lots of a posting are written when the next one begins, whose own commit syncs both.
        databases.gConnUndo.Open(path, Durability::WithNextSync);
    } catch (...) {
        databases.gConnAccount.Close();
        databases.accountLock.Release();
        throw;
    }
    struct stat file;
    databases.accountHasOtherNames =
        stat(QFile::encodeName(path).constData(), &file) == 0 && file.st_nlink > 1;
    databases.accountLeftOpen = !isReopening && (hasLog || lock == AccountLock::Outcome::TakenOver);
}

} // namespace

void OpenDatabases(Databases &databases, Settings &settings, AccountState &account,
                   Services &services)
{
    databases.accountError.reset();
    try {
        OpenAccountFile(databases, settings.CurrentFilePath);
    } catch (const RuntimeError &error) {
        databases.accountError = error; // shown when the control rows are read
    }

    const SharedFile webSites = SharedFileOf(services, QStringLiteral("WebSites"));
    OrEnd(
        services,
        QStringLiteral("An error has occured connecting to the websites database (WebSites.mdb)."),
        webSites, databases.gConnWebSites, [&] {
            databases.gConnWebSites.Open(webSites.path);
            LoadWebParameters(databases, settings, account, services);
        });
    const SharedFile control = SharedFileOf(services, QStringLiteral("ApplControl"));
    OrEnd(services,
          QStringLiteral("An error has occured connecting to this application control database "
                         "(ApplControl.mdb)."),
          control, databases.gConnApplControl, [&] {
              CopyTemplateWhenMissing(control.path, control.pattern);
              databases.gConnApplControl.Open(control.path);
              LoadApplicationTable(databases, settings.AccountName, services.clock.Today());
          });
    const SharedFile prices = SharedFileOf(services, QStringLiteral("HistPrices"));
    OrEnd(services,
          QStringLiteral("An error has occured connecting to the Historical Price database "
                         "(HistPrice.mdb)."),
          prices, databases.gConnHistPrices, [&] {
              CopyTemplateWhenMissing(prices.path, prices.pattern);
              databases.gConnHistPrices.Open(prices.path);
          });
}

void CloseDatabases(Databases &databases)
{
    databases.gRsWebParameters.Close();
    databases.gRsApplication.Close();
    databases.gConnAccount.Close();
    databases.gConnUndo.Close();
    databases.gConnWebSites.Close();
    databases.gConnApplControl.Close();
    databases.gConnHistPrices.Close();
}

void LoadWebParameters(Databases &databases, Settings &settings, AccountState &account,
                       Services &services)
{
    Recordset &sites = databases.gRsWebParameters;
    try {
        sites.Open(databases.gConnWebSites, {QStringLiteral("*"), QStringLiteral("WebParameters"),
                                             QStringLiteral("ORDER BY WebSiteName")});
        if (account.CurrentWebSiteName.trimmed().isEmpty()) {
            const int id = sites.Column(QStringLiteral("ID"));
            const int name = sites.Column(QStringLiteral("WebSiteName"));
            const int delay = sites.Column(QStringLiteral("DelayTime"));
            for (sites.MoveFirst(); !sites.AtEnd(); sites.MoveNext()) {
                if (!sites.Text(name).contains(QStringLiteral("Yahoo Finance")))
                    continue;
                account.CurrentWebSiteId = sites.Number(id);
                account.WebUpdateMinutes = Integer::FromWide(sites.Number(delay));
                account.CurrentWebSiteName = sites.Text(name);
            }
        }
        databases.gConnWebSites.Execute(QStringLiteral(
            "UPDATE WebParameters SET DeselectFlagTemp = 0 WHERE DeselectFlagTemp = 1"));
        sites.Requery();
    } catch (const RuntimeError &) {
        services.dialogs.MsgBox(
            QStringLiteral("An error has occured with the 'WebSites.mdb' database. \n"
                           "The current price update option will be disabled. \n"
                           "Please determine if this database is located in this \n"
                           "application's folder or if corrupted. Restore from backup."),
            Box::Exclamation, EditorTitle());
        settings.WebPriceUpdate = false;
    }
}

void LoadApplicationTable(Databases &databases, const QString &accountName, QDate today)
{
    Recordset &application = databases.gRsApplication;
    application.Open(databases.gConnApplControl,
                     {QStringLiteral("*"), QStringLiteral("ApplicationTable"),
                      QStringLiteral("ORDER BY TableName, Field08")});
    const QString portfolio = QStringLiteral("Portfolio");
    const int tableName = application.Column(QStringLiteral("TableName"));
    const int name = application.Column(QStringLiteral("Field08"));
    bool known = false;
    for (application.MoveFirst(); !application.AtEnd() && !known; application.MoveNext())
        known = application.Text(tableName) == portfolio &&
                application.Text(name) == accountName.trimmed();
    if (!known) {
        application.AddNew();
        application.Set(tableName, portfolio);
        application.Set(QStringLiteral("Field04"), today);
        application.Set(QStringLiteral("Field05"), today);
        application.Set(name, accountName.trimmed());
        application.Set(QStringLiteral("Field09"), QStringLiteral("N/A"));
        application.Set(QStringLiteral("Field10"), false);
        application.Set(QStringLiteral("Field11"), false);
        application.Update();
    }
    application.MoveFirst();
}
