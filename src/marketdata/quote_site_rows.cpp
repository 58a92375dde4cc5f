#include "marketdata/quote_site_rows.h"

#include "marketdata/quote_sites.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace
{

const QString IdColumn = QStringLiteral("ID");
const QString NameColumn = QStringLiteral("WebSiteName");

struct Column
{
    QString name;
    FieldType type;
};

/// The columns of WebParameters in their order.
std::vector<Column> Columns(Connection &sites)
{
    const Statement select = sites.Prepare(QStringLiteral("SELECT * FROM WebParameters"));
    std::vector<Column> columns;
    for (int i = 0; i < select.ColumnCount(); ++i)
        columns.push_back({select.ColumnName(i), select.ColumnType(i)});
    return columns;
}

RuntimeError Unsound(const QString &description)
{
    return {RuntimeError::InvalidArgumentNumber, description};
}

// --- reading ---------------------------------------------------------------------------------------

/// The values of one row, in the order of the columns; nothing where the row leaves one out.
struct SiteRow
{
    QString title; ///< "Row 3 (Our broker)", for messages
    qint64 id = 0; ///< 0: none
    QString name;
    std::vector<std::optional<QJsonValue>> values;
};

bool IsWhole(const QJsonValue &value, qint64 least, qint64 most)
{
    const double number = value.toDouble(std::nan(""));
    return number >= double(least) && number <= double(most) && std::floor(number) == number;
}

/// What the column must hold; empty when the value is sound.
QString Demand(const Column &column, const QJsonValue &value)
{
    if (column.name == IdColumn) // our other tables keep it in 32 bits
        return IsWhole(value, 1, INT32_MAX)
                   ? QString()
                   : QStringLiteral("a whole number from 1 to %1").arg(INT32_MAX);
    if (column.type == FieldType::YesNo)
        return value.isBool() ? QString() : QStringLiteral("true or false");
    if (column.type == FieldType::Counter)
        return value.isNull() || IsWhole(value, INT16_MIN, INT16_MAX)
                   ? QString()
                   : QStringLiteral("a whole number from %1 to %2").arg(INT16_MIN).arg(INT16_MAX);
    return value.isNull() || value.isString() ? QString() : QStringLiteral("a text");
}

SiteRow ReadRow(const QJsonObject &object, int number, const std::vector<Column> &columns)
{
    SiteRow row;
    row.name = object[NameColumn].toString();
    row.title = QStringLiteral("Row %1").arg(number);
    if (!row.name.isEmpty())
        row.title += QStringLiteral(" (%1)").arg(row.name);
    QSet<QString> unknown;
    for (const QString &key : object.keys())
        unknown.insert(key);
    for (const Column &column : columns) {
        unknown.remove(column.name);
        if (!object.contains(column.name)) {
            row.values.push_back(std::nullopt);
            continue;
        }
        const QJsonValue value = object[column.name];
        if (const QString demand = Demand(column, value); !demand.isEmpty())
            throw Unsound(
                QStringLiteral("%1: column %2 must be %3.").arg(row.title, column.name, demand));
        row.values.push_back(value);
    }
    if (!unknown.isEmpty())
        throw Unsound(
            QStringLiteral("%1: there is no column %2.").arg(row.title, *unknown.constBegin()));
    if (row.name.trimmed().isEmpty())
        throw Unsound(QStringLiteral("%1: column %2 must hold a name.").arg(row.title, NameColumn));
    row.id = object[IdColumn].toInteger();
    return row;
}

QByteArray ReadBytes(const QString &path)
{
    constexpr qint64 MostBytes = 16 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(RuntimeError::FileNotFoundNumber,
                           QStringLiteral("File not found: ") + path);
    const QByteArray bytes = file.read(MostBytes + 1);
    if (bytes.size() > MostBytes)
        throw Unsound(QStringLiteral("%1: the file is too large for quote sites.").arg(path));
    return bytes;
}

std::vector<SiteRow> ReadRows(const QString &path, const std::vector<Column> &columns)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(ReadBytes(path), &error);
    if (document.isNull())
        throw Unsound(
            QStringLiteral("%1: %2 at byte %3").arg(path, error.errorString()).arg(error.offset));
    const QJsonValue list = document.isArray() ? QJsonValue(document.array())
                                               : document.object()[QStringLiteral("rows")];
    if (!list.isArray())
        throw Unsound(QStringLiteral("%1: the file has no list of rows.").arg(path));

    std::vector<SiteRow> rows;
    QSet<qint64> ids;
    for (const QJsonValue &entry : list.toArray()) {
        const int number = int(rows.size()) + 1;
        const QJsonValue inner = entry[QStringLiteral("row")];
        const QJsonValue row = inner.isUndefined() ? entry : inner;
        if (!row.isObject())
            throw Unsound(QStringLiteral("Row %1: it holds no columns.").arg(number));
        rows.push_back(ReadRow(row.toObject(), number, columns));
        const qint64 id = rows.back().id;
        if (id != 0 && ids.contains(id))
            throw Unsound(QStringLiteral("%1: the ID %2 stands in the file twice.")
                              .arg(rows.back().title)
                              .arg(id));
        ids.insert(id);
    }
    // First those with an ID, so that no new row is given one that the file holds as well.
    std::stable_partition(rows.begin(), rows.end(), [](const SiteRow &row) { return row.id != 0; });
    return rows;
}

// --- storing ---------------------------------------------------------------------------------------

struct StoredSite
{
    qint64 id;
    QString name;
};

std::vector<StoredSite> StoredSites(Connection &sites)
{
    std::vector<StoredSite> stored;
    Statement select =
        sites.Prepare(QStringLiteral("SELECT ID, WebSiteName FROM WebParameters ORDER BY ID"));
    while (select.Step())
        stored.push_back({select.Int64(0), select.Text(1)});
    return stored;
}

/// The stored row that a row of the file replaces; 0 without one. A row whose ID stands in the file
/// is left to that one.
qint64 FindStored(const SiteRow &row, const std::vector<StoredSite> &stored,
                  const QSet<qint64> &idsOfFile)
{
    for (const StoredSite &site : stored)
        if (site.id == row.id)
            return site.id;
    for (const StoredSite &site : stored)
        if (!idsOfFile.contains(site.id) &&
            site.name.trimmed().compare(row.name.trimmed(), Qt::CaseInsensitive) == 0)
            return site.id;
    return 0;
}

void BindJson(Statement &statement, int index, const QJsonValue &value)
{
    if (value.isBool())
        statement.Bind(index, value.toBool());
    else if (value.isDouble())
        statement.Bind(index, qint64{value.toInteger()});
    else if (value.isString())
        statement.Bind(index, value.toString());
    else
        statement.BindNull(index);
}

/// Writes the columns that the row has; `id` is the row to replace, 0 for a new one.
void StoreRow(Connection &sites, const SiteRow &row, const std::vector<Column> &columns, qint64 id)
{
    QStringList names;
    std::vector<QJsonValue> values;
    for (size_t i = 0; i < columns.size(); ++i) {
        if (!row.values[i] || (id != 0 && columns[i].name == IdColumn))
            continue;
        names << columns[i].name;
        values.push_back(*row.values[i]);
    }
    const QString list = names.join(QStringLiteral(", "));
    const QString marks = QStringLiteral("?, ").repeated(names.size()).chopped(2);
    Statement statement = sites.Prepare(
        id == 0
            ? QStringLiteral("INSERT INTO WebParameters (%1) VALUES (%2)").arg(list, marks)
            : QStringLiteral("UPDATE WebParameters SET (%1) = (%2) WHERE ID = ?").arg(list, marks));
    int index = 0;
    for (const QJsonValue &value : values)
        BindJson(statement, ++index, value);
    if (id != 0)
        statement.Bind(++index, id);
    statement.Step();
}

// --- writing ---------------------------------------------------------------------------------------

QJsonValue ReadValue(const Statement &select, int column)
{
    if (select.IsNull(column))
        return {};
    switch (select.ColumnType(column)) {
    case FieldType::YesNo:
        return select.Flag(column);
    case FieldType::Counter:
    case FieldType::Long:
        return select.Int64(column);
    default:
        return select.Text(column);
    }
}

QByteArray JsonText(const QJsonValue &value)
{
    const QByteArray inBrackets = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return inBrackets.mid(1, inBrackets.size() - 2);
}

/// By hand, since a JSON object of the library forgets the order of its keys.
QByteArray RowText(const Statement &select)
{
    QByteArrayList lines;
    for (int i = 0; i < select.ColumnCount(); ++i)
        lines << "    " + JsonText(select.ColumnName(i)) + ": " + JsonText(ReadValue(select, i));
    return "  {\n   \"row\": {\n" + lines.join(",\n") + "\n   }\n  }";
}

} // namespace

LoadedRows LoadQuoteSiteRows(Connection &gConnWebSites, const QString &path)
{
    const std::vector<Column> columns = Columns(gConnWebSites);
    const std::vector<SiteRow> rows = ReadRows(path, columns);
    QSet<qint64> idsOfFile;
    for (const SiteRow &row : rows)
        idsOfFile.insert(row.id);

    LoadedRows loaded;
    WriteGuard guard(gConnWebSites);
    std::vector<StoredSite> stored = StoredSites(gConnWebSites);
    for (const SiteRow &row : rows) {
        const qint64 id = FindStored(row, stored, idsOfFile);
        StoreRow(gConnWebSites, row, columns, id);
        ++(id == 0 ? loaded.added : loaded.replaced);
        std::erase_if(stored, [id](const StoredSite &site) { return site.id == id; });
    }
    guard.Commit();
    return loaded;
}

void SaveQuoteSiteRows(Connection &gConnWebSites, const QString &path)
{
    QByteArrayList rows;
    Statement select =
        gConnWebSites.Prepare(QStringLiteral("SELECT * FROM WebParameters ORDER BY ID"));
    while (select.Step())
        rows << RowText(select);

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                           QStringLiteral("%1: %2").arg(path, file.errorString()));
    file.write("{\n \"rows\": [\n" + rows.join(",\n") + "\n ]\n}\n");
    if (!file.commit())
        throw RuntimeError(RuntimeError::PathAccessNumber,
                           QStringLiteral("%1: %2").arg(path, file.errorString()));
}
