#pragma once

/// The rows of a recordset as a grid shows them.
///
///     constexpr ListColumn columns[] = {{"Symbol", "Symbol", Qt::AlignLeft},
///                                       {"Close", "PriceClose", Qt::AlignRight, u"0.0000"}};
///     RecordsetSource source(rows, formats, columns);
///     grid->SetSource(source.Columns(), &source);
///     rows.Open(...);
///     grid->RefreshRows();
///
/// A text is made when its cell comes into view; a null field has the empty text.

#include "base/formats.h"
#include "platform/widgets/grid_source.h"
#include "store/recordset.h"

#include <functional>
#include <optional>
#include <span>

/// The columns stand in the order of the recordset's fields.
struct ListColumn
{
    const char *caption;
    const char *dataField;
    Qt::AlignmentFlag alignment = Qt::AlignRight;
    const char16_t *pattern = u""; ///< of base/formats.h; the empty one gives the shortest text
    const char *sample = "";       ///< the column has room for it
    bool editable = false;         ///< in an EditableRecordsetSource
    bool hidden = false;
};

class RecordsetSource : public GridSource
{
public:
    /// All must outlive the source.
    RecordsetSource(const Recordset &rows, const Formats &formats,
                    std::span<const ListColumn> columns)
        : m_rows(rows), m_formats(formats), m_columns(columns)
    {}

    std::vector<GridColumn> Columns() const;
    int RowCount() const override { return m_rows.RecordCount(); }
    QString Text(int row, int column) const override;

protected:
    const Recordset &m_rows;
    const Formats &m_formats;
    std::span<const ListColumn> m_columns;
};

/// Stores what the user changed, and new rows. A field whose text is the one shown keeps its value,
/// which may be finer than the text; an emptied cell is null, or the empty text in a column of texts.
class EditableRecordsetSource : public RecordsetSource
{
public:
    EditableRecordsetSource(Recordset &rows, const Formats &formats,
                            std::span<const ListColumn> columns)
        : RecordsetSource(rows, formats, columns), m_store(rows)
    {}

    /// Writes the row at once. A text that its column cannot take is refused.
    bool Store(int row, const QMap<int, QString> &texts) override;
    /// Whether the column can take the text.
    bool Takes(int column, const QString &text) const;

    /// Fills what a new row needs beside the user's cells.
    std::function<void(Recordset &newRow)> OnAddNew;
    /// The store refused the row, which stays in edit.
    std::function<void(const RuntimeError &)> OnFailure;

protected:
    /// Nothing for a text that is no value of the column.
    virtual std::optional<FieldValue> FieldFromText(int column, const QString &text) const;

private:
    Recordset &m_store;
};
