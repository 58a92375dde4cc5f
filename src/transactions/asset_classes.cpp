#include "transactions/asset_classes.h"

#include "store/failed_write.h"

#include <algorithm>

// --- rows ---------------------------------------------------------------------------------------

void SecurityClasses::Open(Connection &gConnApplControl, const QString &symbol)
{
    m_connection = &gConnApplControl;
    m_symbol = symbol;
    m_rows.clear();
    m_deleted.clear();
    Statement statement = gConnApplControl.Prepare(
        QStringLiteral("SELECT rowid, Symbol, AssetClass, PerCentAllocated FROM SecurityAssetClass "
                       "WHERE Symbol = ? ORDER BY rowid"));
    statement.BindAll(symbol);
    while (statement.Step()) {
        Entry entry;
        entry.id = statement.Int64(0);
        entry.storedSymbol = statement.Text(1);
        entry.stored = {statement.Text(2), statement.ShareCount(3)};
        entry.now = entry.stored;
        m_rows.push_back(std::move(entry));
    }
    SumAllocation();
}

bool SecurityClasses::AllNew() const
{
    return m_deleted.empty() && std::all_of(m_rows.begin(), m_rows.end(),
                                            [](const Entry &entry) { return entry.id == 0; });
}

void SecurityClasses::Add(const AssetClassRow &row)
{
    Entry entry;
    entry.now = row;
    m_rows.push_back(std::move(entry));
}

void SecurityClasses::Set(int row, const AssetClassRow &changed)
{
    m_rows.at(static_cast<size_t>(row)).now = changed;
}

void SecurityClasses::Delete(int row)
{
    const auto entry = m_rows.begin() + row;
    if (entry->id != 0)
        m_deleted.push_back(entry->id);
    m_rows.erase(entry);
}

void SecurityClasses::UpdateBatch()
{
    if (!m_connection)
        throw RuntimeError::ObjectClosed();
    WriteGuard guard(*m_connection);
    for (const qint64 id : m_deleted)
        m_connection->Execute(QStringLiteral("DELETE FROM SecurityAssetClass WHERE rowid = ?"), id);
    std::vector<qint64> ids;
    for (const Entry &entry : m_rows) {
        if (entry.id == 0)
            m_connection->Execute(
                QStringLiteral("INSERT INTO SecurityAssetClass (Symbol, AssetClass, "
                               "PerCentAllocated) VALUES (?, ?, ?)"),
                m_symbol, entry.now.AssetClass, entry.now.PerCentAllocated);
        else if (!(entry.now == entry.stored) || entry.storedSymbol != m_symbol)
            m_connection->Execute(
                QStringLiteral("UPDATE SecurityAssetClass SET Symbol = ?, AssetClass = ?, "
                               "PerCentAllocated = ? WHERE rowid = ?"),
                m_symbol, entry.now.AssetClass, entry.now.PerCentAllocated, entry.id);
        ids.push_back(entry.id == 0 ? m_connection->LastInsertId() : entry.id);
    }
    guard.Commit();
    m_deleted.clear();
    for (size_t i = 0; i < m_rows.size(); ++i) {
        m_rows[i].id = ids[i];
        m_rows[i].storedSymbol = m_symbol;
        m_rows[i].stored = m_rows[i].now;
    }
}

// --- allocation ---------------------------------------------------------------------------------

void SecurityClasses::SumAllocation()
{
    PercentTotal = Single();
    for (const Entry &entry : m_rows)
        PercentTotal = PercentTotal + entry.now.PerCentAllocated;
}

void SecurityClasses::NormalizeAllocation()
{
    for (Entry &entry : m_rows) {
        if (entry.now.AssetClass.isEmpty())
            entry.now.PerCentAllocated = Single();
        else if (entry.now.PerCentAllocated.IsZero())
            entry.now.PerCentAllocated = Single::FromFloat(1);
    }
    SumAllocation();
}

void SecurityClasses::AllocateEvenly()
{
    if (m_rows.empty())
        return;
    const Single share = Single::FromDouble(100.0 / static_cast<double>(m_rows.size()) * 0.01);
    for (Entry &entry : m_rows)
        entry.now.PerCentAllocated = share;
    SumAllocation();
    UpdateBatch();
}

bool SecurityClasses::AllocationIsWhole() const
{
    // The bounds as Singles, so that 0.5 and 0.49 reach the lower one.
    return PercentTotal.IsZero() ||
           (PercentTotal >= Single::FromDouble(0.99) && PercentTotal <= Single::FromDouble(1.01));
}

// --- the list of names --------------------------------------------------------------------------

QStringList AssetClassNames(Connection &gConnApplControl)
{
    Statement statement = gConnApplControl.Prepare(
        QStringLiteral("SELECT Field08 As AssetClass FROM ApplicationTable WHERE TableName = "
                       "'AssetClass' ORDER BY Field08"));
    QStringList names;
    while (statement.Step())
        names << statement.Text(0);
    return names;
}

void AddAssetClassName(Recordset &gRsApplication, const QString &name, QDate today)
{
    OrFail(QStringLiteral("The new asset class"), [&] {
        try {
            gRsApplication.AddNew();
            gRsApplication.Set(QStringLiteral("TableName"), QStringLiteral("AssetClass"));
            gRsApplication.Set(QStringLiteral("Field04"), today);
            gRsApplication.Set(QStringLiteral("Field05"), today);
            gRsApplication.Set(QStringLiteral("Field08"), name);
            gRsApplication.Update();
        } catch (const RuntimeError &) {
            gRsApplication.CancelUpdate();
            throw;
        }
    });
    gRsApplication.Requery();
}

QString NewAssetClassQuestion(const QString &name)
{
    return QStringLiteral("Add this new Asset Class '\n") + name +
           QStringLiteral("\n' permanently to the selection list?\n\n"
                          "NOTE: This will make it possible to view and select this new \n"
                          "asset class from the drop down list for all future selections.");
}

std::optional<Single> AllocationFromText(const QString &text, const Formats &formats)
{
    QString number = text.trimmed();
    if (number.isEmpty())
        return Single();
    const bool isPercentage = number.endsWith(QLatin1Char('%'));
    if (isPercentage)
        number.chop(1);
    const std::optional<QString> typed = formats.TypedNumber(number);
    if (!typed)
        return std::nullopt;
    try {
        const double value = formats.NumberFromText(*typed);
        return Single::FromDouble(isPercentage ? value / 100 : value);
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}
