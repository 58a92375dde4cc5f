#include "tracking/tracker_rows.h"

#include <algorithm>

namespace
{

/// One list of the columns serves the query, the insert and the update.
const QString Columns = QStringLiteral(
    "Symbol, Name, Shares, CurrPrice, Basis, AvrgPrice, ProfitLossToday, ProfitLossToDate, "
    "ActualProfitLoss, TransCostToday, TransCostToDate, NumberTransToday, NumberTransToDate, "
    "InvestedValue, InvestedToDate, TransDate, Time, PerCentGainToday");

TrackerRow ReadRow(const Statement &s)
{
    TrackerRow row;
    int column = 0; // the row's id
    row.Symbol = s.Text(++column);
    row.Name = s.Text(++column);
    row.Shares = s.ShareCount(++column);
    row.CurrPrice = s.Money(++column);
    row.Basis = s.Money(++column);
    row.AvrgPrice = s.Money(++column);
    row.ProfitLossToday = s.Money(++column);
    row.ProfitLossToDate = s.Money(++column);
    row.ActualProfitLoss = s.Money(++column);
    row.TransCostToday = s.Money(++column);
    row.TransCostToDate = s.Money(++column);
    row.NumberTransToday = s.Counter(++column);
    row.NumberTransToDate = s.Counter(++column);
    row.InvestedValue = s.Money(++column);
    row.InvestedToDate = s.Money(++column);
    row.TransDate = s.Date(++column);
    row.Time = s.Time(++column);
    row.PerCentGainToday = s.ShareCount(++column);
    return row;
}

void BindRow(Statement &s, const TrackerRow &row)
{
    s.BindAll(row.Symbol, row.Name, row.Shares, row.CurrPrice, row.Basis, row.AvrgPrice,
              row.ProfitLossToday, row.ProfitLossToDate, row.ActualProfitLoss, row.TransCostToday,
              row.TransCostToDate, row.NumberTransToday, row.NumberTransToDate, row.InvestedValue,
              row.InvestedToDate, row.TransDate, row.Time, row.PerCentGainToday);
}

QString Marks(int count)
{
    return QStringLiteral("?,").repeated(count).chopped(1);
}

constexpr int ColumnCount = 18;

} // namespace

void TrackerRecordset::Open(Connection &connection, const QString &orderBy)
{
    m_connection = &connection;
    m_orderBy = orderBy;
    Read();
    Notify();
}

void TrackerRecordset::Close()
{
    m_connection = nullptr;
    m_rows.clear();
    m_bySymbol.clear();
    m_current = 0;
    Notify();
}

void TrackerRecordset::Read()
{
    std::vector<Entry> rows;
    Statement statement = m_connection->Prepare(
        QStringLiteral("SELECT rowid, %1 FROM DailyTracker %2").arg(Columns, m_orderBy));
    while (statement.Step()) {
        Entry entry;
        entry.id = statement.Int64(0);
        entry.now = entry.stored = ReadRow(statement);
        rows.push_back(std::move(entry));
    }
    m_rows = std::move(rows);
    m_current = 0;
    IndexRows();
}

void TrackerRecordset::Notify() const
{
    if (OnRowsChanged)
        OnRowsChanged();
}

void TrackerRecordset::MoveTo(int row)
{
    m_current = std::clamp(row, 0, RecordCount());
}

bool TrackerRecordset::Find(const QString &symbol)
{
    const auto found = m_bySymbol.constFind(symbol);
    m_current = found == m_bySymbol.constEnd() ? RecordCount() : *found;
    return found != m_bySymbol.constEnd();
}

void TrackerRecordset::IndexRows()
{
    m_bySymbol.clear();
    for (int i = RecordCount() - 1; i >= 0; --i) // the first row of a symbol stays
        m_bySymbol.insert(m_rows[size_t(i)].now.Symbol, i);
}

const TrackerRow &TrackerRecordset::Current() const
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    if (AtEnd())
        throw RuntimeError::NoCurrentRecord();
    return m_rows[size_t(m_current)].now;
}

TrackerRow &TrackerRecordset::Edit()
{
    return const_cast<TrackerRow &>(Current());
}

void TrackerRecordset::AddNew(const QString &symbol, const QString &name, QDate today, QTime now)
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    Entry entry;
    entry.now.Symbol = symbol;
    entry.now.Name = name;
    ResetDailyTrackerRow(entry.now, today, now);
    m_rows.push_back(std::move(entry));
    m_current = RecordCount() - 1;
    if (!m_bySymbol.contains(symbol))
        m_bySymbol.insert(symbol, m_current);
}

void TrackerRecordset::Delete()
{
    Current();
    const auto entry = m_rows.begin() + m_current;
    if (entry->id != 0)
        m_connection->Execute(QStringLiteral("DELETE FROM DailyTracker WHERE rowid = ?"),
                              entry->id);
    m_rows.erase(entry);
    IndexRows();
    Notify();
}

void TrackerRecordset::UpdateBatch()
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    const auto changed = [](const Entry &entry) {
        return entry.id == 0 || !(entry.now == entry.stored);
    };
    if (std::none_of(m_rows.begin(), m_rows.end(), changed))
        return;

    WriteGuard guard(*m_connection);
    Statement update =
        m_connection->Prepare(QStringLiteral("UPDATE DailyTracker SET (%1) = (%2) WHERE rowid = ?")
                                  .arg(Columns, Marks(ColumnCount)));
    Statement insert =
        m_connection->Prepare(QStringLiteral("INSERT INTO DailyTracker (%1) VALUES (%2)")
                                  .arg(Columns, Marks(ColumnCount)));
    std::vector<qint64> ids;
    for (const Entry &entry : m_rows) {
        qint64 id = entry.id;
        if (changed(entry)) {
            Statement &statement = id == 0 ? insert : update;
            BindRow(statement, entry.now);
            if (id != 0)
                statement.Bind(ColumnCount + 1, id);
            statement.Step();
            statement.Reset();
            if (id == 0)
                id = m_connection->LastInsertId();
        }
        ids.push_back(id);
    }
    guard.Commit();
    bool renamed = false;
    for (size_t i = 0; i < m_rows.size(); ++i) {
        renamed = renamed || m_rows[i].now.Symbol != m_rows[i].stored.Symbol;
        m_rows[i].id = ids[i];
        m_rows[i].stored = m_rows[i].now;
    }
    if (renamed)
        IndexRows();
    Notify();
}

void TrackerRecordset::CancelBatch()
{
    std::erase_if(m_rows, [](const Entry &entry) { return entry.id == 0; });
    for (Entry &entry : m_rows)
        entry.now = entry.stored;
    m_current = std::min(m_current, RecordCount());
    IndexRows();
}

void TrackerRecordset::Requery()
{
    UpdateBatch();
    Read();
    Notify();
}

void ResetDailyTrackerRow(TrackerRow &row, QDate today, QTime now)
{
    TrackerRow reset;
    reset.Symbol = row.Symbol;
    reset.Name = row.Name;
    reset.TransDate = today;
    reset.Time = now;
    row = reset;
}
