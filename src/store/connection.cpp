#include "store/connection.h"

#include "store/unreadable_value.h"

#include <QFile>
#include <QHash>
#include <QtEndian>

#include <sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <utility>

namespace
{

RuntimeError LastError(sqlite3 *database)
{
    return RuntimeError::Store(QString::fromUtf8(sqlite3_errmsg(database)));
}

void Check(sqlite3 *database, int result)
{
    if (result != SQLITE_OK)
        throw LastError(database);
}

/// Looks into the header alone, so that a foreign file is not even locked. It reads through the
/// store's own file: closing another one would drop the locks that this process has on the account.
void RequireOurFile(sqlite3 *database, const QString &path)
{
    sqlite3_file *file = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    QByteArray header(100, '\0');
    sqlite3_int64 size = 0;
    constexpr int pageSizeOffset = 16;
    constexpr int markOffset = 68;
    if (!file->pMethods || // ":memory:"
        file->pMethods->xRead(file, header.data(), int(header.size()), 0) != SQLITE_OK ||
        file->pMethods->xFileSize(file, &size) != SQLITE_OK ||
        !header.startsWith(QByteArray("SQLite format 3\0", 16)) ||
        qFromBigEndian<qint32>(header.constData() + markOffset) != ApplicationMark)
        throw RuntimeError::Store(QStringLiteral("Unrecognized database format '%1'.").arg(path));
    constexpr int layoutOffset = 60;
    if (const int layout = qFromBigEndian<qint32>(header.constData() + layoutOffset);
        layout > LayoutVersion)
        throw RuntimeError::Store(
            QStringLiteral(
                "The file '%1' was written by a newer version of Quillon and has another "
                "layout (%2; this version knows %3). Please install the newer version.")
                .arg(path)
                .arg(layout)
                .arg(LayoutVersion));
    // The store reads a last page that was cut short as zeros. With a log beside the file it may
    // be just that page which the log completes.
    const int pageSize =
        std::max<int>(1, qFromBigEndian<quint16>(header.constData() + pageSizeOffset));
    if (size % pageSize != 0 && !QFile::exists(path + QStringLiteral("-wal")))
        throw RuntimeError::Store(QStringLiteral("The file is cut short: '%1'.").arg(path));
}

/// Why the store could not open a file, in the words of the system.
RuntimeError CannotOpen(sqlite3 *database, const QString &path)
{
    const int error = database ? sqlite3_system_errno(database) : ENOMEM;
    return RuntimeError::Store(QStringLiteral("Could not open file '%1': %2")
                                   .arg(path, error != 0
                                                  ? qt_error_string(error)
                                                  : QString::fromUtf8(sqlite3_errmsg(database))));
}

/// Connections share the index of a write-ahead log in memory, by a file that is mapped and locked. Some
/// file systems can do neither.
bool IsWithoutSharedMemory(int extendedError)
{
    return extendedError == SQLITE_IOERR_SHMMAP || extendedError == SQLITE_IOERR_SHMLOCK ||
           extendedError == SQLITE_IOERR_SHMOPEN || extendedError == SQLITE_PROTOCOL;
}

} // namespace

Statement::Statement(sqlite3 *database, const QString &sql) : m_database(database)
{
    const QByteArray text = sql.toUtf8();
    Check(database,
          sqlite3_prepare_v2(database, text.constData(), int(text.size()), &m_statement, nullptr));
}

Statement::Statement(Statement &&other) noexcept
    : m_database(other.m_database), m_statement(std::exchange(other.m_statement, nullptr))
{}

Statement::~Statement()
{
    sqlite3_finalize(m_statement);
}

void Statement::Bind(int index, Currency value)
{
    Bind(index, qint64{value.Units()});
}

void Statement::Bind(int index, Single value)
{
    Bind(index, value.ToDouble());
}

void Statement::Bind(int index, Integer value)
{
    Bind(index, qint64{value.Value()});
}

void Statement::Bind(int index, qint64 value)
{
    Check(m_database, sqlite3_bind_int64(m_statement, index, value));
}

void Statement::Bind(int index, double value)
{
    Check(m_database, sqlite3_bind_double(m_statement, index, value));
}

void Statement::Bind(int index, const QString &value)
{
    const QByteArray text = value.toUtf8();
    Check(m_database,
          sqlite3_bind_text64(m_statement, index, text.constData(), sqlite3_uint64(text.size()),
                              SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::Bind(int index, QDate value)
{
    if (value.isValid())
        Bind(index, value.toString(Qt::ISODate));
    else
        BindNull(index);
}

void Statement::Bind(int index, QTime value)
{
    if (value.isValid())
        Bind(index, value.toString(QStringLiteral("HH:mm:ss.zzz")));
    else
        BindNull(index);
}

void Statement::BindNull(int index)
{
    Check(m_database, sqlite3_bind_null(m_statement, index));
}

bool Statement::Step()
{
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        throw LastError(m_database);
    return false;
}

void Statement::Reset()
{
    sqlite3_reset(m_statement);
}

int Statement::ColumnCount() const
{
    return sqlite3_column_count(m_statement);
}

QString Statement::ColumnName(int column) const
{
    return QString::fromUtf8(sqlite3_column_name(m_statement, column));
}

QString Statement::FieldName(int column) const
{
    return QString::fromUtf8(sqlite3_column_origin_name(m_statement, column));
}

FieldType Statement::ColumnType(int column) const
{
    static const QHash<QByteArray, FieldType> types = {
        {"INTEGER CURRENCY", FieldType::Currency},
        {"REAL SINGLE", FieldType::Single},
        {"INTEGER COUNTER", FieldType::Counter},
        {"INTEGER LONG", FieldType::Long},
        {"INTEGER", FieldType::Long},
        {"INTEGER YESNO", FieldType::YesNo},
        {"TEXT DATE", FieldType::Date},
        {"TEXT TIME", FieldType::Time},
    };
    return types.value(sqlite3_column_decltype(m_statement, column), FieldType::Text);
}

bool Statement::IsNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

qint64 Statement::Int64(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

double Statement::Double(int column) const
{
    return sqlite3_column_double(m_statement, column);
}

bool Statement::IsTextOfATable(int column) const
{
    const int type = sqlite3_column_type(m_statement, column);
    return (type == SQLITE_TEXT || type == SQLITE_BLOB) &&
           sqlite3_column_origin_name(m_statement, column) &&
           ColumnType(column) != FieldType::Text; // a control row may hold a number as a text
}

RuntimeError Statement::Unreadable(int column, int number) const
{
    QStringList keys;
    for (int i = 0; i < ColumnCount(); ++i)
        if (IsKeyColumn(FieldName(i)) && !IsNull(i))
            keys << Text(i);
    return UnreadableValue({QString::fromUtf8(sqlite3_column_table_name(m_statement, column)), keys,
                            FieldName(column), Text(column)},
                           number);
}

Currency Statement::Money(int column) const
{
    if (IsTextOfATable(column))
        throw Unreadable(column, RuntimeError::TypeMismatchNumber);
    constexpr double beyond = 9223372036854775808.0; // which reads as the largest number there is
    if (sqlite3_column_type(m_statement, column) == SQLITE_FLOAT &&
        !(std::fabs(Double(column)) < beyond))
        throw Unreadable(column, RuntimeError::OverflowNumber);
    return Currency::FromUnits(Int64(column));
}

Single Statement::ShareCount(int column) const
{
    if (IsTextOfATable(column))
        throw Unreadable(column, RuntimeError::TypeMismatchNumber);
    try {
        return Single::FromDouble(Double(column));
    } catch (const RuntimeError &error) {
        throw Unreadable(column, error.Number());
    }
}

Integer Statement::Counter(int column) const
{
    if (IsTextOfATable(column))
        throw Unreadable(column, RuntimeError::TypeMismatchNumber);
    try {
        return Integer::FromWide(Int64(column));
    } catch (const RuntimeError &error) {
        throw Unreadable(column, error.Number());
    }
}

QString Statement::Text(int column) const
{
    const QByteArrayView text = Utf8(column);
    return text.isNull() ? QString() : QString::fromUtf8(text);
}

QByteArrayView Statement::Utf8(int column) const
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return {text, text ? sqlite3_column_bytes(m_statement, column) : 0};
}

namespace
{

int Digits(const char *text, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i) {
        if (text[i] < '0' || text[i] > '9')
            return -1;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

} // namespace

QDate Statement::Date(int column) const
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    if (!text || sqlite3_column_bytes(m_statement, column) < 10)
        return {};
    const int year = Digits(text, 4);
    if (year < 0) // a year before our era to QDate
        return {};
    return QDate(year, Digits(text + 5, 2), Digits(text + 8, 2));
}

QTime Statement::Time(int column) const
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    const int size = sqlite3_column_bytes(m_statement, column);
    if (!text || size < 8)
        return {};
    return QTime(Digits(text, 2), Digits(text + 3, 2), Digits(text + 6, 2),
                 size >= 12 ? Digits(text + 9, 3) : 0);
}

Connection::Connection() = default;

Connection::~Connection()
{
    Close();
}

void Connection::OpenFile(const QString &path, int access)
{
    Close();
    if (path.isEmpty())
        throw RuntimeError::Store(QStringLiteral("Could not open file '': no name"));
    const QByteArray name = QFile::encodeName(path);
    // The program has one thread: without its locks the store reads long lists a fifth faster.
    const int result =
        sqlite3_open_v2(name.constData(), &m_database, access | SQLITE_OPEN_NOMUTEX, nullptr);
    try {
        if (result != SQLITE_OK)
            throw CannotOpen(m_database, path);
        RequireOurFile(m_database, path);
        Check(m_database, sqlite3_extended_result_codes(m_database, 0));
        sqlite3_busy_timeout(m_database, 2000);
    } catch (...) {
        sqlite3_close_v2(std::exchange(m_database, nullptr));
        throw;
    }
    m_path = path;
}

void Connection::Open(const QString &path, Durability durability)
{
    OpenFile(path, SQLITE_OPEN_READWRITE);
    try {
        if (sqlite3_db_readonly(m_database, "main") == 1)
            throw RuntimeError::Store(
                QStringLiteral("Cannot update. Database or object is read-only: '%1'.").arg(path));
        try {
            UseLog(durability);
        } catch (const RuntimeError &) {
            if (!IsWithoutSharedMemory(sqlite3_extended_errcode(m_database)))
                throw;
            UseRollbackJournal();
        }
        // With up to 32 MB of memory long lists are sorted there and not in a file.
        ExecuteScript(QStringLiteral("PRAGMA cache_size=-32768;"));
    } catch (...) {
        sqlite3_close_v2(std::exchange(m_database, nullptr));
        m_path.clear();
        throw;
    }
}

/// It costs one sync of the disk for each commit and keeps every commit.
void Connection::UseLog(Durability durability)
{
    ExecuteScript(QStringLiteral("PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=4000; "
                                 "PRAGMA synchronous=%1; SELECT count(*) FROM sqlite_schema;")
                      .arg(durability == Durability::AtOnce ? QStringLiteral("FULL")
                                                            : QStringLiteral("NORMAL")));
}

/// The attempt has marked the file as one with a log. Held alone it needs no shared memory, and gives up the
/// log, after bringing home what another machine may have left there.
void Connection::UseRollbackJournal()
{
    const QString path = m_path;
    sqlite3_close_v2(std::exchange(m_database, nullptr));
    QFile::remove(path + QStringLiteral("-shm")); // of use to nobody
    OpenFile(path, SQLITE_OPEN_READWRITE);
    ExecuteScript(QStringLiteral("PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=DELETE; "
                                 "PRAGMA locking_mode=NORMAL; PRAGMA synchronous=FULL; "
                                 "SELECT count(*) FROM sqlite_schema;"));
}

void Connection::OpenForReading(const QString &path)
{
    OpenFile(path, SQLITE_OPEN_READONLY);
}

void Connection::Close()
{
    if (!m_database)
        return;
    // The last connection brings the log home and removes it; before that the store refuses.
    sqlite3_busy_timeout(m_database, 0);
    sqlite3_exec(m_database, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
    sqlite3_close_v2(std::exchange(m_database, nullptr));
    m_path.clear();
}

sqlite3 *Connection::Checked() const
{
    if (!m_database)
        throw RuntimeError::ObjectClosed();
    return m_database;
}

Statement Connection::Prepare(const QString &sql) const
{
    return Statement(Checked(), sql);
}

int Connection::Run(Statement &statement)
{
    const int before = sqlite3_total_changes(m_database);
    while (statement.Step()) {
    }
    return sqlite3_total_changes(m_database) - before;
}

void Connection::ExecuteScript(const QString &sql)
{
    Check(Checked(), sqlite3_exec(m_database, sql.toUtf8().constData(), nullptr, nullptr, nullptr));
}

qint64 Connection::LastInsertId() const
{
    return sqlite3_last_insert_rowid(Checked());
}

void Connection::BeginTrans()
{
    ExecuteScript(QStringLiteral("BEGIN IMMEDIATE"));
}

void Connection::CommitTrans()
{
    ExecuteScript(QStringLiteral("COMMIT"));
}

void Connection::RollbackTrans()
{
    // An error of the store may have rolled back on its own already.
    if (InTransaction())
        ExecuteScript(QStringLiteral("ROLLBACK"));
}

bool Connection::InTransaction() const
{
    return m_database && sqlite3_get_autocommit(m_database) == 0;
}

WriteGuard::WriteGuard(Connection &connection)
    : m_connection(connection), m_owner(!connection.InTransaction())
{
    if (m_owner)
        m_connection.BeginTrans();
}

WriteGuard::~WriteGuard()
{
    if (!m_owner)
        return;
    try {
        m_connection.RollbackTrans();
    } catch (const RuntimeError &) {
        // The store drops the open transaction with the connection.
    }
}

void WriteGuard::Commit()
{
    if (!m_owner)
        return;
    m_connection.CommitTrans();
    m_owner = false;
}
