#include "store/recordset.h"

#include "store/unreadable_value.h"

#include <algorithm>
#include <utility>

namespace
{

void BindValue(Statement &statement, int index, const FieldValue &value)
{
    std::visit(
        [&](const auto &held) {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::monostate>)
                statement.BindNull(index);
            else
                statement.Bind(index, held);
        },
        value);
}

FieldValue ReadTyped(const Statement &statement, int column, FieldType type)
{
    switch (type) {
    case FieldType::Currency:
        return statement.Money(column);
    case FieldType::Single:
        return statement.ShareCount(column);
    case FieldType::Counter:
        return statement.Counter(column);
    case FieldType::Long:
        return statement.Int64(column);
    case FieldType::YesNo:
        return statement.Flag(column);
    case FieldType::Text:
        return statement.Text(column);
    case FieldType::Date:
        return statement.Date(column);
    case FieldType::Time:
        return statement.Time(column);
    }
    throw RuntimeError::TypeMismatch();
}

/// A value that its column cannot hold comes as the text that it is: a list shows it, and its row can
/// be deleted. Asked for by its type, it throws.
FieldValue ReadValue(const Statement &statement, int column, FieldType type)
{
    if (statement.IsNull(column))
        return std::monostate();
    try {
        return ReadTyped(statement, column, type);
    } catch (const RuntimeError &) {
        return statement.Text(column);
    }
}

} // namespace

void Recordset::Open(Connection &connection, const RecordsetQuery &query)
{
    std::vector<Row> room = std::exchange(m_rows, {}); // Read takes it
    Close();
    m_rows = std::move(room);
    m_connection = &connection;
    m_query = query;
    try {
        Read();
    } catch (...) {
        Close();
        throw;
    }
}

void Recordset::Close()
{
    *this = Recordset();
}

void Recordset::Read()
{
    Statement statement =
        m_connection->Prepare(QStringLiteral("SELECT rowid, %1 FROM %2 %3")
                                  .arg(m_query.columns, m_query.table, m_query.tail));
    for (size_t i = 0; i < m_query.values.size(); ++i)
        BindValue(statement, int(i) + 1, m_query.values[i]);

    m_names.clear();
    m_fields.clear();
    m_columns.clear();
    m_types.clear();
    for (int i = 1; i < statement.ColumnCount(); ++i) {
        m_names << statement.ColumnName(i);
        m_fields << statement.FieldName(i);
        m_columns.insert(statement.ColumnName(i).toLower(), i - 1);
        m_types.push_back(statement.ColumnType(i));
    }
    // In the room of the rows before: a sort reads as many as there were.
    std::vector<Row> rows = std::exchange(m_rows, {});
    size_t count = 0;
    for (; statement.Step(); ++count) {
        if (count == rows.size())
            rows.emplace_back();
        Row &row = rows[count];
        row.id = statement.Int64(0);
        row.values.resize(m_types.size());
        for (size_t i = 0; i < m_types.size(); ++i)
            row.values[i] = ReadValue(statement, int(i) + 1, m_types[i]);
    }
    rows.resize(count);
    m_rows = std::move(rows);
    m_current = m_rows.empty() ? -1 : 0;
}

int Recordset::Checked() const
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    if (AtBegin() || AtEnd())
        throw RuntimeError::NoCurrentRecord();
    return m_current;
}

void Recordset::MoveTo(int row)
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    Update();
    m_current = std::clamp(row, -1, RecordCount());
}

int Recordset::Column(const QString &name) const
{
    const auto found = m_columns.constFind(name.toLower());
    if (found == m_columns.constEnd())
        throw RuntimeError(3265, QStringLiteral("Item cannot be found in the collection "
                                                "corresponding to the requested name or ordinal."));
    return *found;
}

const FieldValue &Recordset::ValueAt(int row, int column) const
{
    return m_rows.at(size_t(row)).values.at(size_t(column));
}

template <class Kind>
Kind Recordset::Get(int column) const
{
    const FieldValue &value = Value(column);
    if (const auto *held = std::get_if<Kind>(&value))
        return *held;
    if (IsNull(value))
        return {};
    if (const auto *text = std::get_if<QString>(&value))
        throw Unreadable(column, *text);
    throw RuntimeError::TypeMismatch();
}

RuntimeError Recordset::Unreadable(int column, const QString &text) const
{
    QStringList keys;
    for (int i = 0; i < m_fields.size(); ++i)
        if (const auto *key = std::get_if<QString>(&Value(i)); key && IsKeyColumn(m_fields[i]))
            keys << *key;
    bool isNumber = false;
    text.toDouble(&isNumber); // one that does not fit, an infinity too
    return UnreadableValue({m_query.table, keys, m_fields[column], text},
                           isNumber ? RuntimeError::OverflowNumber
                                    : RuntimeError::TypeMismatchNumber);
}

QString Recordset::Text(int column) const
{
    return Get<QString>(column);
}

Currency Recordset::Money(int column) const
{
    return Get<Currency>(column);
}

Single Recordset::ShareCount(int column) const
{
    return Get<Single>(column);
}

qint64 Recordset::Number(int column) const
{
    if (const auto *counter = std::get_if<Integer>(&Value(column)))
        return counter->Value();
    return Get<qint64>(column);
}

bool Recordset::Flag(int column) const
{
    return Get<bool>(column);
}

QDate Recordset::Date(int column) const
{
    return Get<QDate>(column);
}

QTime Recordset::Time(int column) const
{
    return Get<QTime>(column);
}

void Recordset::Set(int column, FieldValue value)
{
    Row &row = m_rows[size_t(Checked())];
    if (!m_before)
        m_before = row;
    row.values.at(size_t(column)) = std::move(value);
}

void Recordset::AddNew()
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    Update();
    m_rows.push_back({0, std::vector<FieldValue>(m_types.size())});
    m_current = RecordCount() - 1;
    m_before = m_rows.back();
    m_adding = true;
}

void Recordset::Update()
{
    if (!m_before)
        return;
    if (m_adding)
        Insert();
    else
        Rewrite();
    m_before.reset();
    m_adding = false;
}

void Recordset::Insert()
{
    Row &row = m_rows[size_t(m_current)];
    QStringList names, marks;
    std::vector<const FieldValue *> values;
    for (size_t i = 0; i < row.values.size(); ++i) {
        if (IsNull(row.values[i]))
            continue; // the table's own default
        names << m_fields[int(i)];
        marks << QStringLiteral("?");
        values.push_back(&row.values[i]);
    }
    Statement statement = m_connection->Prepare(
        names.isEmpty()
            ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(m_query.table)
            : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(m_query.table, names.join(QLatin1Char(',')), marks.join(QLatin1Char(','))));
    for (size_t i = 0; i < values.size(); ++i)
        BindValue(statement, int(i) + 1, *values[i]);
    statement.Step();
    row.id = m_connection->LastInsertId();

    // Defaults and an AutoNumber are the store's: take them over.
    Statement stored = m_connection->Prepare(
        QStringLiteral("SELECT %1 FROM %2 WHERE rowid = ?").arg(m_query.columns, m_query.table));
    stored.Bind(1, row.id);
    if (stored.Step())
        for (size_t i = 0; i < row.values.size(); ++i)
            row.values[i] = ReadValue(stored, int(i), m_types[i]);
}

void Recordset::Rewrite()
{
    const Row &row = m_rows[size_t(m_current)];
    QStringList assignments;
    std::vector<const FieldValue *> values;
    for (size_t i = 0; i < row.values.size(); ++i) {
        if (row.values[i] == m_before->values[i])
            continue;
        assignments << m_fields[int(i)] + QStringLiteral(" = ?");
        values.push_back(&row.values[i]);
    }
    if (values.empty())
        return;
    Statement statement =
        m_connection->Prepare(QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?")
                                  .arg(m_query.table, assignments.join(QStringLiteral(", "))));
    for (size_t i = 0; i < values.size(); ++i)
        BindValue(statement, int(i) + 1, *values[i]);
    statement.Bind(int(values.size()) + 1, row.id);
    statement.Step();
}

void Recordset::CancelUpdate()
{
    if (!m_before)
        return;
    if (m_adding) {
        m_rows.pop_back();
        m_current = std::min(m_current, RecordCount() - 1);
    } else {
        m_rows[size_t(m_current)] = *m_before;
    }
    m_before.reset();
    m_adding = false;
}

void Recordset::Delete()
{
    const int row = Checked();
    if (m_adding) {
        CancelUpdate();
        return;
    }
    m_connection->Execute(QStringLiteral("DELETE FROM %1 WHERE rowid = ?").arg(m_query.table),
                          m_rows[size_t(row)].id);
    m_before.reset();
    m_rows.erase(m_rows.begin() + row);
}

void Recordset::Requery()
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    Update();
    Read();
}
