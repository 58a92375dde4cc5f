#include "transactions/security_master.h"

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

/// Each statement on its own: a table that refuses keeps what it has, the others go on.
void UpdateTables(Connection &connection, std::initializer_list<const char *> tables,
                  const QString &assignment, const QString &value, const QString &symbol)
{
    try {
        WriteGuard guard(connection);
        for (const char *table : tables) {
            try {
                connection.Execute(QStringLiteral("UPDATE %1 SET %2 = ? WHERE Symbol = ?")
                                       .arg(QString::fromUtf8(table), assignment),
                                   value, symbol);
            } catch (const RuntimeError &) {
            }
        }
        guard.Commit();
    } catch (const RuntimeError &) {
        // The file as a whole refuses; it is as it was.
    }
}

} // namespace

void RenameSymbol(SecurityWork &work, const QString &oldSymbol, const QString &newSymbol)
{
    const QString symbol = QStringLiteral("Symbol");
    UpdateTables(work.gConnAccount, {"History", "DailyProfitLoss", "PriceHistory"}, symbol,
                 newSymbol, oldSymbol);
    UpdateTables(work.gConnApplControl, {"SecurityDetail", "SecurityAssetClass"}, symbol, newSymbol,
                 oldSymbol);
    if (work.gRsLots.IsOpen())
        work.gRsLots.Reload();
}

void ChangeName(SecurityWork &work, const QString &symbol, const QString &name)
{
    const QString column = QStringLiteral("Name");
    UpdateTables(work.gConnAccount, {"History", "DailyProfitLoss"}, column, name, symbol);
    UpdateTables(work.gConnApplControl, {"SecurityDetail"}, column, name, symbol);
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
    const int position = rows.Position();
    const TrackerRow before = rows.Current();
    rows.Edit().Symbol = symbol;
    rows.Edit().Name = name;
    try {
        rows.Requery();
    } catch (...) {
        rows.MoveTo(position);
        rows.Edit() = before;
        throw;
    }
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
