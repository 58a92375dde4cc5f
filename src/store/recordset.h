#pragma once

/// A client-side cursor over the rows of one table.
///
///     Recordset sites;
///     sites.Open(gConnWebSites, {"*", "WebParameters", "ORDER BY WebSiteName"});
///     for (sites.MoveFirst(); !sites.AtEnd(); sites.MoveNext())
///         names << sites.Text(sites.Column("WebSiteName"));
///
/// The rows lie in memory in the order of the query, so that an edit moves no row; Requery reads
/// them anew. An edited row is written when the cursor leaves it, or by Update. Row numbers serve
/// as bookmarks until the next Requery or Delete. Reading a field with no current row throws 3021,
/// any use of a closed recordset 3704. A query may rename columns ("Price AS [Last Price]"): they
/// go by the new name here, and are written to the field behind it.

#include "store/connection.h"
#include "store/field_value.h"

#include <QHash>
#include <QStringList>

#include <optional>
#include <vector>

/// "SELECT columns FROM table tail", with the values of the tail's question marks.
struct RecordsetQuery
{
    QString columns;
    QString table;
    QString tail;
    std::vector<FieldValue> values = {};
};

class Recordset
{
public:
    void Open(Connection &connection, const RecordsetQuery &query);
    /// Drops an edit that was not written.
    void Close();
    bool IsOpen() const { return m_connection != nullptr; }

    int RecordCount() const { return int(m_rows.size()); }
    bool IsEmpty() const { return m_rows.empty(); }
    /// BOF and EOF; without rows both hold.
    bool AtBegin() const { return m_current < 0 || m_rows.empty(); }
    bool AtEnd() const { return m_current >= RecordCount() || m_rows.empty(); }
    void MoveFirst() { MoveTo(0); }
    void MoveNext() { MoveTo(m_current + 1); }
    void MoveLast() { MoveTo(RecordCount() - 1); }
    /// To a row by its number from 0; a number outside the rows stands for BOF or EOF.
    void MoveTo(int row);
    int Position() const { return m_current; }

    /// Index of a column by its name, case-insensitive; throws 3265 for a name that is not there.
    int Column(const QString &name) const;
    const QStringList &ColumnNames() const { return m_names; }
    FieldType Type(int column) const { return m_types[size_t(column)]; }

    const FieldValue &Value(int column) const { return ValueAt(Checked(), column); }
    const FieldValue &ValueAt(int row, int column) const;
    bool IsFieldNull(int column) const { return IsNull(Value(column)); }
    /// Typed access; a null field reads as zero, false, the empty text or an invalid date. A value that its
    /// column cannot have - a text among amounts, an infinity - is kept as a text: these throw RuntimeError
    /// 13 or 6, which names table, row and column.
    QString Text(int column) const;
    Currency Money(int column) const;
    Single ShareCount(int column) const;
    qint64 Number(int column) const;
    bool Flag(int column) const;
    QDate Date(int column) const;
    QTime Time(int column) const;
    QString Text(const QString &column) const { return Text(Column(column)); }

    /// Sets a field of the current (or the new) row.
    void Set(int column, FieldValue value);
    void Set(const QString &column, FieldValue value) { Set(Column(column), std::move(value)); }
    /// A new row at the end, with all fields null; Update writes it, CancelUpdate drops it.
    void AddNew();
    /// Writes the current row, if it was changed. After an error the row keeps its edit.
    void Update();
    void CancelUpdate();
    /// Deletes the current row; the cursor then stands on the row behind it.
    void Delete();
    /// Reads the rows anew and stands on the first one. A pending edit is written before.
    void Requery();

private:
    struct Row
    {
        qint64 id = 0;
        std::vector<FieldValue> values;
    };
    int Checked() const;
    template <class Kind>
    Kind Get(int column) const;
    RuntimeError Unreadable(int column, const QString &text) const;
    void Read();
    void Insert();
    void Rewrite();

    Connection *m_connection = nullptr;
    RecordsetQuery m_query;
    QStringList m_names;
    QStringList m_fields;          ///< what the table calls them
    QHash<QString, int> m_columns; ///< lower case
    std::vector<FieldType> m_types;
    std::vector<Row> m_rows;
    int m_current = -1;
    std::optional<Row> m_before; ///< the current row as stored, while it is being edited
    bool m_adding = false;
};
