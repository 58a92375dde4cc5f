#pragma once

/// A connection to one of our database files, and the statements that run on it.
///
///     Connection account;
///     account.Open("/home/ann/Broker.mdb");
///     account.Execute("UPDATE DailyProfitLoss SET ProfitLoss = ? WHERE Symbol = ?",
///                     Currency("12.5"), symbol);                        rows affected
///
/// Values are bound, never pasted. They are stored as: money as a whole number of ten-thousandths,
/// share counts as the 32-bit value, dates "YYYY-MM-DD", times "HH:MM:SS.zzz", flags 0 or 1, texts
/// as they are. Every error is a RuntimeError with number 0x80004005 and the store's description;
/// an operation on a closed connection is number 3704.
///
/// A file of ours carries the application's mark in its header. A file without it is refused before
/// anything is written to it, and stays byte for byte as it was; so is one of a newer layout.

#include "store/field_value.h"

#include <QByteArrayView>
#include <QDate>
#include <QString>

#include <optional>

struct sqlite3;
struct sqlite3_stmt;

/// The mark in the header of each kind of file (PRAGMA application_id): "Quil".
constexpr int ApplicationMark = 0x5175696c;
/// The layout of the tables that this program knows (PRAGMA user_version).
constexpr int LayoutVersion = 1;

/// A prepared statement; bound from 1, read by column from 0. It must not outlive its connection.
class Statement
{
public:
    Statement(sqlite3 *database, const QString &sql);
    Statement(Statement &&other) noexcept;
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;
    ~Statement();

    template <class... Values>
    Statement &BindAll(const Values &...values)
    {
        int index = 0;
        (Bind(++index, values), ...);
        return *this;
    }
    void Bind(int index, Currency value);
    void Bind(int index, Single value);
    void Bind(int index, Integer value);
    void Bind(int index, qint64 value);
    void Bind(int index, int value) { Bind(index, qint64{value}); }
    void Bind(int index, bool value) { Bind(index, qint64{value ? 1 : 0}); }
    void Bind(int index, double value);
    void Bind(int index, const QString &value);
    void Bind(int index, const char *value) = delete; ///< would pass for a flag
    void Bind(int index, QDate value);
    void Bind(int index, QTime value);
    void BindNull(int index);
    template <class Value>
    void Bind(int index, const std::optional<Value> &value)
    {
        if (value)
            Bind(index, *value);
        else
            BindNull(index);
    }

    /// Moves to the next row; false behind the last one.
    bool Step();
    /// Ready to be bound and run again.
    void Reset();

    int ColumnCount() const;
    QString ColumnName(int column) const;
    /// The name of the table's own column behind one that a query renames; empty for an expression.
    QString FieldName(int column) const;
    /// From the declared type; an expression counts as a text.
    FieldType ColumnType(int column) const;

    bool IsNull(int column) const;
    qint64 Int64(int column) const;
    bool Flag(int column) const { return Int64(column) != 0; }
    double Double(int column) const;
    /// A value of a table that is no such number (a text, an infinity) throws RuntimeError 13 or 6, which
    /// names table, row and column; NULL reads as zero.
    Currency Money(int column) const;
    Single ShareCount(int column) const;
    Integer Counter(int column) const;
    QString Text(int column) const;
    /// The text as it is stored, until the next Step or Reset; empty for NULL.
    QByteArrayView Utf8(int column) const;
    QDate Date(int column) const;
    QTime Time(int column) const;

private:
    bool IsTextOfATable(int column) const;
    RuntimeError Unreadable(int column, int number) const;

    sqlite3 *m_database;
    sqlite3_stmt *m_statement = nullptr;
};

/// When a commit is safe against a power failure: at once, or with the next commit of another
/// connection to the file that is. Either way it is there whole or not at all.
enum class Durability
{
    AtOnce,
    WithNextSync
};

class Connection
{
public:
    Connection();
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Opens an existing file of ours for reading and writing. In a folder without shared memory a rollback
    /// journal takes the place of the write-ahead log.
    void Open(const QString &path, Durability durability = Durability::AtOnce);
    /// As Open; nothing can be written, and the file stays as it is. Others may be writing to it.
    void OpenForReading(const QString &path);
    /// Afterwards the account is one file that can be copied, if no other connection holds it.
    void Close();
    bool IsOpen() const { return m_database != nullptr; }
    const QString &Path() const { return m_path; }
    /// What the store's own library works on; throws 3704 when closed. For this floor alone.
    sqlite3 *Handle() const { return Checked(); }

    Statement Prepare(const QString &sql) const;
    /// Runs a statement; the number of rows it affected.
    template <class... Values>
    int Execute(const QString &sql, const Values &...values)
    {
        Statement statement = Prepare(sql);
        statement.BindAll(values...);
        return Run(statement);
    }
    /// Runs several statements separated by semicolons (schema).
    void ExecuteScript(const QString &sql);
    qint64 LastInsertId() const;

    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();
    bool InTransaction() const;

private:
    void OpenFile(const QString &path, int access);
    void UseLog(Durability durability);
    void UseRollbackJournal();
    int Run(Statement &statement);
    sqlite3 *Checked() const;

    sqlite3 *m_database = nullptr;
    QString m_path;
};

/// The writes of one user action: Commit() at the end keeps them all, every other way out keeps
/// none. Inside an open transaction it joins that one, which then decides.
class WriteGuard
{
public:
    explicit WriteGuard(Connection &connection);
    ~WriteGuard();
    WriteGuard(const WriteGuard &) = delete;
    WriteGuard &operator=(const WriteGuard &) = delete;
    void Commit();

private:
    Connection &m_connection;
    bool m_owner;
};
