#include "tracking/tracker_rows.h"

#include <algorithm>

namespace
{

/// One list of the columns serves the query, the insert and the update.
const QString Columns = QStringLiteral(
    "Symbol, Name, Shares, CurrPrice, Basis, AvrgPrice, ProfitLossToday, ProfitLossToDate, "
    "ActualProfitLoss, TransCostToday, TransCostToDate, NumberTransToday, NumberTransToDate, "
    "InvestedValue, InvestedToDate, TransDate, Time, PerCentGainToday");

/// An expression for the names of the columns whose values no number of the program can hold, each
/// followed by ", ". Basis, ActualProfitLoss, InvestedValue and PerCentGainToday are not among them:
/// they follow from the others.
QString UnreadableColumns()
{
    const struct
    {
        QStringList columns;
        QString range;
    } kinds[] = {
        {{QStringLiteral("Shares")}, QStringLiteral("-3.4e38 AND 3.4e38")},
        {{QStringLiteral("CurrPrice"), QStringLiteral("AvrgPrice"),
          QStringLiteral("ProfitLossToday"), QStringLiteral("ProfitLossToDate"),
          QStringLiteral("TransCostToday"), QStringLiteral("TransCostToDate"),
          QStringLiteral("InvestedToDate")},
         QStringLiteral("-9223372036854775807 AND 9223372036854775806")},
        {{QStringLiteral("NumberTransToday"), QStringLiteral("NumberTransToDate")},
         QStringLiteral("-32768 AND 32767")},
    };
    QStringList names;
    for (const auto &[columns, range] : kinds)
        for (const QString &column : columns) // a text is above every number, so in no range
            names << QStringLiteral("CASE WHEN %1 BETWEEN %2 THEN '' ELSE '%1, ' END")
                         .arg(column, range);
    return names.join(QStringLiteral(" || "));
}

/// Zero for what does not fit.
template <class Read>
auto OrZero(Read read)
{
    try {
        return read();
    } catch (const RuntimeError &) {
        return decltype(read())();
    }
}

TrackerRow ReadRow(const Statement &s)
{
    const auto money = [&s](int column) { return OrZero([&] { return s.Money(column); }); };
    const auto single = [&s](int column) { return OrZero([&] { return s.ShareCount(column); }); };
    const auto counter = [&s](int column) { return OrZero([&] { return s.Counter(column); }); };
    TrackerRow row;
    int column = 0; // the row's id
    row.Symbol = s.Text(++column);
    row.Name = s.Text(++column);
    row.Shares = single(++column);
    row.CurrPrice = money(++column);
    row.Basis = money(++column);
    row.AvrgPrice = money(++column);
    row.ProfitLossToday = money(++column);
    row.ProfitLossToDate = money(++column);
    row.ActualProfitLoss = money(++column);
    row.TransCostToday = money(++column);
    row.TransCostToDate = money(++column);
    row.NumberTransToday = counter(++column);
    row.NumberTransToDate = counter(++column);
    row.InvestedValue = money(++column);
    row.InvestedToDate = money(++column);
    row.TransDate = s.Date(++column);
    row.Time = s.Time(++column);
    row.PerCentGainToday = single(++column);
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

Connection &TrackerRecordset::File() const
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    return *m_connection;
}

void TrackerRecordset::Read()
{
    QHash<qint64, const Entry *> before;
    for (const Entry &entry : m_rows)
        before.insert(entry.id, &entry);
    std::vector<Entry> rows;
    Statement statement =
        m_connection->Prepare(QStringLiteral("SELECT rowid, %1, %2 FROM DailyTracker %3")
                                  .arg(Columns, UnreadableColumns(), m_orderBy));
    while (statement.Step()) {
        const qint64 id = statement.Int64(0);
        const auto marked = before.constFind(id);
        Entry entry = marked != before.constEnd() ? **marked : Entry(); // for its marks
        entry.id = id;
        entry.now = entry.stored = ReadRow(statement);
        entry.unreadable = statement.Text(ColumnCount + 1);
        entry.unreadable.chop(2); // the last comma
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

void TrackerRecordset::SetPrice(Currency price, QTime time)
{
    TrackerRow &row = Edit();
    row.CurrPrice = price;
    row.Time = time;
    QString &unreadable = m_rows[size_t(m_current)].unreadable;
    if (unreadable == QLatin1String("CurrPrice"))
        unreadable.clear();
}

PriceMark TrackerRecordset::MarkOfPrice(int row) const
{
    const Entry &entry = m_rows[size_t(row)];
    return entry.now.CurrPrice == entry.markedPrice ? entry.priceMark : PriceMark();
}

void TrackerRecordset::MarkPrice(int row, const PriceMark &mark)
{
    Entry &entry = m_rows[size_t(row)];
    entry.priceMark = mark;
    entry.markedPrice = entry.now.CurrPrice;
}

void TrackerRecordset::MarkLeftOut(int row, const QString &why)
{
    Entry &entry = m_rows[size_t(row)];
    entry.leftOut = why;
    if (why.isEmpty())
        entry.isLeftOutKnown = false;
}

std::vector<int> TrackerRecordset::TakeNewlyLeftOut()
{
    std::vector<int> rows;
    for (int row = 0; row < RecordCount(); ++row) {
        Entry &entry = m_rows[size_t(row)];
        if (entry.leftOut.isEmpty() || entry.isLeftOutKnown)
            continue;
        entry.isLeftOutKnown = true;
        rows.push_back(row);
    }
    return rows;
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
        if (!(m_rows[i].stored == m_rows[i].now))
            m_rows[i].unreadable.clear(); // every column was written
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
