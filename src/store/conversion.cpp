#include "store/conversion.h"

#include "platform/files.h"
#include "store/database_copy.h"
#include "store/unfinished_work.h"

#include <QFileInfo>

/// The rows of an old file are copied by a statement of the store on the new one, to which the old
/// one is attached, in a single transaction. What an old file has as null where today's layout
/// wants a value gets that column's default.

namespace
{

struct CopiedTable
{
    const char *name;
    const char *columns;
    const char *order;
};

constexpr const char *InDateOrder = "TransDate, Time, rowid";
constexpr const char *AsTheyAre = "rowid";

constexpr CopiedTable AccountTables[] = {
    {"DailyTracker",
     "Symbol,Name,Shares,CurrPrice,Basis,AvrgPrice,ProfitLossToday,ProfitLossToDate,"
     "ActualProfitLoss,TransCostToday,TransCostToDate,NumberTransToday,NumberTransToDate,"
     "InvestedValue,InvestedToDate,TransDate,Time,PerCentGainToday",
     AsTheyAre},
    {"DailyProfitLoss", "Symbol,Name,ProfitLoss,TransDate,Time", InDateOrder},
    // Balance has to stay before its style.
    {"DescriptiveTable",
     "TableName,Field01,Field02,Field03,Field04,Field05,Field06,Field07,Field08,Field09,Field10,"
     "Field11,Field12",
     AsTheyAre},
    {"History", "Symbol,Name,Description,Shares,TransactionCost,Price,Amount,TransDate,Time",
     InDateOrder},
    {"PortfolioDailyBalance", "DailyBalance,TransDate,Time,TrackName", InDateOrder},
    {"PriceHistory", "Symbol,Shares,PurchasePrice,TransDate,Time", InDateOrder},
};

constexpr CopiedTable ApplicationTable = {
    "ApplicationTable",
    "TableName,Field01,Field02,Field03,Field04,Field05,Field06,Field07,Field08,Field09,Field10,"
    "Field11,Field12",
    AsTheyAre};

/// Runs a routine of the conversion; its failure is shown and ends the program.
template <class Routine>
void OrEnd(Services &services, const QString &firstLine, Routine routine)
{
    try {
        routine();
    } catch (const RuntimeError &error) {
        services.dialogs.MsgBox(
            firstLine + QStringLiteral("\nPlease contact Tech Support and supply error number and "
                                       "description\nError number: %1\nDescription: %2")
                            .arg(error.Number())
                            .arg(error.Description()),
            Box::Stop, EditorTitle());
        services.lifetime.End();
    }
}

bool HasTable(const Connection &connection, const QString &table)
{
    Statement found = connection.Prepare(QStringLiteral("SELECT 1 FROM pragma_table_info(?)"));
    found.BindAll(table);
    return found.Step();
}

bool HasColumn(const Connection &connection, const QString &table, const QString &column)
{
    Statement found = connection.Prepare(
        QStringLiteral("SELECT 1 FROM pragma_table_info(?) WHERE name = ? COLLATE NOCASE"));
    found.BindAll(table, column);
    return found.Step();
}

/// A file to be filled with the rows of an old one: `pattern` copied to `path`.
class NewFile
{
public:
    NewFile(const QString &pattern, const QString &path, const QString &oldFile) : m_path(path)
    {
        Files::CopyFile(pattern, path, false);
        try {
            QFile::setPermissions(path, QFileInfo(oldFile).permissions());
            m_new.Open(path);
            m_new.Execute(QStringLiteral("ATTACH ? AS old"), oldFile);
            m_new.BeginTrans();
        } catch (...) {
            Remove();
            throw;
        }
    }

    /// What did not take the old file's place goes.
    ~NewFile()
    {
        if (!m_isInPlace)
            Remove();
    }
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    Connection &Rows() { return m_new; }

    void Copy(const CopiedTable &table)
    {
        const QString name = QString::fromUtf8(table.name);
        const QString columns = QString::fromUtf8(table.columns);
        m_new.Execute(QStringLiteral("INSERT INTO main.%1 (%2) SELECT %3 FROM old.%1 ORDER BY %4")
                          .arg(name, columns, WithDefaults(name, columns.split(QLatin1Char(','))),
                               QString::fromUtf8(table.order)));
    }

    /// All rows are in: from here on the file is whole, and nobody has it open.
    void Complete()
    {
        m_new.CommitTrans();
        m_new.Execute(QStringLiteral("DETACH old"));
        m_new.Close();
    }

    /// Takes the place of the old file, which has to be closed by then.
    void Replace(const QString &oldFile)
    {
        RequireNoLog(m_path);
        RequireNoLog(oldFile);
        Files::Name(m_path, oldFile);
        m_isInPlace = true;
        Files::SyncFolderOf(oldFile);
    }

private:
    void Remove()
    {
        m_new.Close();
        try {
            RemoveDatabase(m_path);
        } catch (const RuntimeError &) {
            // The disk that refused the writing may refuse this too.
        }
    }
    QString WithDefaults(const QString &table, const QStringList &columns)
    {
        QStringList selected;
        for (const QString &column : columns) {
            Statement definition = m_new.Prepare(
                QStringLiteral("SELECT dflt_value FROM pragma_table_info(?) "
                               "WHERE name = ? AND \"notnull\" AND dflt_value IS NOT NULL"));
            definition.BindAll(table, column);
            selected << (definition.Step()
                             ? QStringLiteral("IFNULL(%1, %2)").arg(column, definition.Text(0))
                             : column);
        }
        return selected.join(QLatin1Char(','));
    }

    /// Somebody else has the file open, and its last rows are in the log beside it, which would be
    /// taken for that of the file that comes in its place.
    static void RequireNoLog(const QString &path)
    {
        if (Files::FileExists(path + QStringLiteral("-wal")))
            throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                               QStringLiteral("The file is in use: ") + path);
    }

    QString m_path;
    Connection m_new;
    bool m_isInPlace = false;
};

void RebuildApplicationDatabase(ConversionWork &work)
{
    Services &services = work.services;
    const QString path = services.appPath + QStringLiteral("/ApplControl.mdb");
    const QString target = FreeName(services.appPath + QStringLiteral("/ApplTemp.mdb"));
    const UnfinishedWork note(services.appPath, {target});
    services.status.Post(QStringLiteral("Updating Application database to current version..."));
    NewFile file(services.appPath + QStringLiteral("/ApplControl.xxx"), target, path);
    // A row that is delivered with the new file and was in the old one too: the old one counts.
    file.Rows().Execute(QStringLiteral(
        "DELETE FROM main.ApplicationTable WHERE EXISTS (SELECT 1 FROM old.ApplicationTable AS "
        "known WHERE known.TableName = main.ApplicationTable.TableName "
        "AND known.Field08 IS main.ApplicationTable.Field08)"));
    file.Copy(ApplicationTable);
    file.Complete();
    work.databases.gRsApplication.Close();
    work.databases.gConnApplControl.Close();
    file.Replace(path);
    work.databases.gConnApplControl.Open(path);
    services.status.Post(QStringLiteral("Application database conversion completed..."));
}

void AddSecuritiesHeld(const Connection &gConnAccount, Connection &gConnApplControl)
{
    WriteGuard guard(gConnApplControl);
    if (HasColumn(gConnAccount, QStringLiteral("DailyTracker"), QStringLiteral("SecurityType"))) {
        Statement held = gConnAccount.Prepare(
            QStringLiteral("SELECT Symbol, Name, SecurityType FROM DailyTracker ORDER BY rowid"));
        const auto text = [&held](int column) {
            return held.IsNull(column) ? std::nullopt : std::optional(held.Text(column));
        };
        while (held.Step())
            gConnApplControl.Execute(
                QStringLiteral("INSERT INTO SecurityDetail (Symbol, Name, SecurityType) "
                               "VALUES (?, ?, ?) ON CONFLICT (Symbol) DO NOTHING"),
                held.Text(0), text(1), text(2));
    }
    gConnApplControl.Execute(QStringLiteral(
        "UPDATE SecurityDetail SET SecurityType = 'Mutual Fund' WHERE SecurityType = 'Mutual'"));
    guard.Commit();
}

} // namespace

void ConvertToVersion5(ConversionWork &work)
{
    OrEnd(work.services,
          QStringLiteral("A critical error has occured on version 5 convertion logic."), [&] {
              ConvertApplicationDatabase(work);
              // Reopens the databases, and the rows of the application table with them.
              ConvertAccountDatabase(work);
          });
}

void ConvertApplicationDatabase(ConversionWork &work)
{
    OrEnd(work.services,
          QStringLiteral("A critical error has occured on application database convertion logic."),
          [&] {
              if (!HasTable(work.databases.gConnApplControl, QStringLiteral("SecurityDetail")))
                  RebuildApplicationDatabase(work);
              AddSecuritiesHeld(work.databases.gConnAccount, work.databases.gConnApplControl);
          });
}

void ConvertAccountDatabase(ConversionWork &work)
{
    OrEnd(
        work.services,
        QStringLiteral("A critical error has occured on account database convertion logic."), [&] {
            Services &services = work.services;
            const QString path = work.settings.CurrentFilePath;
            const QString target = FreeName(TemporaryPathOf(path, work.settings.AccountName));
            const UnfinishedWork note(services.appPath, {target});
            services.status.Post(QStringLiteral("Updating account database to current version..."));
            NewFile file(services.appPath + QStringLiteral("/Template.xxx"), target, path);
            for (const CopiedTable &table : AccountTables)
                file.Copy(table);
            file.Rows().Execute(QStringLiteral("UPDATE main.DescriptiveTable SET Field06 = ? "
                                               "WHERE TableName = 'Balance'"),
                                ProgramVersion().Text());
            file.Complete();
            work.CloseAllScreens();
            file.Replace(path);
            OpenDatabases(work.databases, work.settings, work.account, services);
            if (work.databases.accountError)
                throw RuntimeError(*work.databases.accountError);
            services.status.Post(QStringLiteral("Account database conversion completed..."));
        });
}

QString TemporaryPathOf(const QString &accountPath, const QString &accountName)
{
    QString path = accountPath;
    if (!accountName.isEmpty())
        path.replace(accountName, QStringLiteral("Temp"));
    return path == accountPath ? accountPath + QStringLiteral(".new") : path;
}
