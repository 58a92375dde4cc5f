#include "transactions/security_master.h"

#include "base/put_back.h"
#include "store/failed_write.h"

// --- the master list ----------------------------------------------------------------------------

std::optional<SecurityFields> LoadSecurityDetail(Connection &gConnApplControl,
                                                 const QString &symbol)
{
    Statement statement = gConnApplControl.Prepare(
        QStringLiteral("SELECT Symbol, Name, SecurityType FROM SecurityDetail WHERE Symbol = ?"));
    statement.BindAll(symbol);
    if (!statement.Step())
        return std::nullopt;
    return SecurityFields{statement.Text(0), statement.Text(1), statement.Text(2)};
}

void SaveSecurityDetail(Connection &gConnApplControl, const SecurityFields &fields)
{
    gConnApplControl.Execute(
        QStringLiteral("INSERT INTO SecurityDetail (Symbol, Name, SecurityType) VALUES (?, ?, ?) "
                       "ON CONFLICT (Symbol) DO UPDATE SET Name = excluded.Name, "
                       "SecurityType = excluded.SecurityType"),
        fields.Symbol, fields.Name, fields.SecurityType);
}

namespace
{

const QString ListSeparator = QStringLiteral(" - ");

} // namespace

QStringList SecurityList(Connection &gConnApplControl)
{
    Statement statement = gConnApplControl.Prepare(
        QStringLiteral("SELECT Symbol, Name FROM SecurityDetail WHERE Symbol <> '' "
                       "ORDER BY Symbol"));
    QStringList entries;
    while (statement.Step())
        entries << statement.Text(0) + ListSeparator + statement.Text(1);
    return entries;
}

QString SymbolOfListEntry(const QString &entry)
{
    return entry.section(ListSeparator, 0, 0);
}

// --- checks -------------------------------------------------------------------------------------

SecurityError ValidateSecurity(const SecurityFields &fields, SecurityClasses &classes)
{
    if (fields.Symbol.isEmpty())
        return SecurityError::Symbol;
    if (fields.Name.isEmpty())
        return SecurityError::Name;
    if (fields.SecurityType.isEmpty())
        return SecurityError::SecurityType;
    classes.NormalizeAllocation();
    return classes.AllocationIsWhole() ? SecurityError::None : SecurityError::Allocation;
}

QString SecurityErrorText(SecurityError error)
{
    switch (error) {
    case SecurityError::Symbol:
        return QStringLiteral("Please enter a valid symbol");
    case SecurityError::Name:
        return QStringLiteral("Enter a valid name for this security");
    case SecurityError::SecurityType:
        return QStringLiteral("Please select the type of security for this symbol");
    case SecurityError::Allocation:
        return QStringLiteral("When selecting multiple Market Sectors, the total allocation must "
                              "equal 100 percent.");
    case SecurityError::None:
        break;
    }
    return QString();
}

bool IsInPortfolio(const TrackerRecordset &rows, const QString &symbol, const QString &ownSymbol)
{
    for (int row = 0; row < rows.RecordCount(); ++row) {
        const QString &held = rows.At(row).Symbol;
        if (held != ownSymbol && held.compare(symbol, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

// --- symbol and name everywhere -----------------------------------------------------------------

namespace
{

/// Runs `change` on the account in one transaction; after an error the rows are as they were.
template <class Change>
void InAccount(SecurityWork &work, Change change)
{
    PutBack rows(work.rows);
    WriteGuard guard(work.gConnAccount);
    change();
    guard.Commit();
    rows.Keep();
}

/// Puts the shared file back after the account has refused. A disk that is full may refuse that as
/// well, and leaves an entry of the list that nobody uses.
template <class Change>
void Try(Change change)
{
    try {
        change();
    } catch (const RuntimeError &) {
    }
}

void MoveClasses(Connection &gConnApplControl, const QString &from, const QString &to)
{
    gConnApplControl.Execute(
        QStringLiteral("UPDATE SecurityAssetClass SET Symbol = ? WHERE Symbol = ?"), to, from);
}

void RemoveDetail(Connection &gConnApplControl, const QString &symbol)
{
    gConnApplControl.Execute(QStringLiteral("DELETE FROM SecurityDetail WHERE Symbol = ?"), symbol);
}

/// The master row beside that of the old symbol; false when the new one is known already.
bool AddRenamedDetail(Connection &gConnApplControl, const QString &from, const QString &to)
{
    WriteGuard guard(gConnApplControl);
    const bool isAdded =
        gConnApplControl.Execute(
            QStringLiteral("INSERT INTO SecurityDetail (Symbol, Name, SecurityType) "
                           "SELECT ?, Name, SecurityType FROM SecurityDetail "
                           "WHERE Symbol = ? ON CONFLICT (Symbol) DO NOTHING"),
            to, from) > 0;
    MoveClasses(gConnApplControl, from, to);
    guard.Commit();
    return isAdded;
}

void RenameInAccount(SecurityWork &work, const QString &from, const QString &to)
{
    Connection &account = work.gConnAccount;
    for (const char *table : {"History", "PriceHistory"})
        account.Execute(
            QStringLiteral("UPDATE %1 SET Symbol = ? WHERE Symbol = ?").arg(QLatin1String(table)),
            to, from);
    // A symbol that the account had before may have an entry of the same day.
    account.Execute(
        QStringLiteral("UPDATE OR IGNORE DailyProfitLoss SET Symbol = ? WHERE Symbol = ?"), to,
        from);
    account.Execute(
        QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, "
                       "Time) SELECT ?, Name, ProfitLoss, TransDate, Time "
                       "FROM DailyProfitLoss WHERE Symbol = ? "
                       "ON CONFLICT (Symbol, TransDate) DO UPDATE SET "
                       "ProfitLoss = ProfitLoss + excluded.ProfitLoss"),
        to, from);
    account.Execute(QStringLiteral("DELETE FROM DailyProfitLoss WHERE Symbol = ?"), from);
    if (!work.rows.IsOpen() || !work.rows.Find(from))
        return;
    const QString name = work.rows.Current().Name;
    UpdateDailyTrackerRow(work.rows, from, to, name);
}

} // namespace

void RenameSymbol(SecurityWork &work, const QString &oldSymbol, const QString &newSymbol)
{
    Connection &shared = work.gConnApplControl;
    OrFail(QStringLiteral("The new symbol"), [&] {
        const bool isAdded = AddRenamedDetail(shared, oldSymbol, newSymbol);
        try {
            InAccount(work, [&] { RenameInAccount(work, oldSymbol, newSymbol); });
        } catch (const RuntimeError &) {
            Try([&] {
                WriteGuard guard(shared);
                if (isAdded)
                    RemoveDetail(shared, newSymbol);
                MoveClasses(shared, newSymbol, oldSymbol);
                guard.Commit();
            });
            throw;
        }
        if (isAdded)
            Try([&] { RemoveDetail(shared, oldSymbol); });
    });
    if (work.gRsLots.IsOpen())
        work.gRsLots.Reload();
}

void ChangeName(SecurityWork &work, const QString &symbol, const QString &name)
{
    const auto setName = [&symbol](Connection &connection, const char *table,
                                   const QString &value) {
        connection.Execute(
            QStringLiteral("UPDATE %1 SET Name = ? WHERE Symbol = ?").arg(QLatin1String(table)),
            value, symbol);
    };
    Connection &shared = work.gConnApplControl;
    const std::optional<SecurityFields> before = LoadSecurityDetail(shared, symbol);
    OrFail(QStringLiteral("The new name"), [&] {
        setName(shared, "SecurityDetail", name);
        try {
            InAccount(work, [&] {
                setName(work.gConnAccount, "History", name);
                setName(work.gConnAccount, "DailyProfitLoss", name);
                UpdateDailyTrackerRow(work.rows, symbol, symbol, name);
            });
        } catch (const RuntimeError &) {
            if (before)
                Try([&] { setName(shared, "SecurityDetail", before->Name); });
            throw;
        }
    });
}

// --- the position row ---------------------------------------------------------------------------

void AddDailyTrackerRow(TrackerRecordset &rows, const QString &symbol, const QString &name,
                        Clock &clock)
{
    rows.AddNew(symbol, name, clock.Today(), clock.TimeOfDay());
    try {
        rows.UpdateBatch();
    } catch (...) {
        rows.Delete(); // not stored yet: just the row in memory
        throw;
    }
}

bool UpdateDailyTrackerRow(TrackerRecordset &rows, const QString &oldSymbol, const QString &symbol,
                           const QString &name)
{
    if (!rows.IsOpen() || !rows.Find(oldSymbol))
        return false;
    PutBack before(rows);
    rows.Edit().Symbol = symbol;
    rows.Edit().Name = name;
    rows.Requery();
    before.Keep();
    return rows.Find(symbol);
}

// --- saving -------------------------------------------------------------------------------------

namespace
{

/// The shared tables; they are kept when `writeTrackerRow` has done its part.
template <class WriteTrackerRow>
void Save(SecurityWork &work, const SecurityFields &fields, SecurityClasses &classes,
          WriteTrackerRow writeTrackerRow)
{
    WriteGuard guard(work.gConnApplControl);
    if (LoadSecurityDetail(work.gConnApplControl, fields.Symbol) != fields)
        SaveSecurityDetail(work.gConnApplControl, fields);
    classes.SetSymbol(fields.Symbol);
    classes.UpdateBatch();
    writeTrackerRow();
    guard.Commit();
}

} // namespace

void SaveNewSecurity(SecurityWork &work, const SecurityFields &fields, SecurityClasses &classes)
{
    Save(work, fields, classes,
         [&] { AddDailyTrackerRow(work.rows, fields.Symbol, fields.Name, work.clock); });
}

void SaveSecurity(SecurityWork &work, const SecurityFields &fields, SecurityClasses &classes,
                  const QString &trackerSymbol)
{
    Save(work, fields, classes,
         [&] { UpdateDailyTrackerRow(work.rows, trackerSymbol, fields.Symbol, fields.Name); });
}
