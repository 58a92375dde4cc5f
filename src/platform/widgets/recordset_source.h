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

#include <span>

/// The columns stand in the order of the recordset's fields.
struct ListColumn
{
    const char *caption;
    const char *dataField;
    Qt::AlignmentFlag alignment = Qt::AlignRight;
    const char16_t *pattern = u""; ///< of base/formats.h; the empty one gives the shortest text
    const char *sample = "";       ///< the column has room for it
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

private:
    const Recordset &m_rows;
    const Formats &m_formats;
    std::span<const ListColumn> m_columns;
};
