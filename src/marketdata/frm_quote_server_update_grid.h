#pragma once

/// The rows of the quote site editor's grid, with the captions of its query.
///
///     "website Name"           WebSiteName     "CNBC (US, real time)"
///     "Characters to Price"    CharToPrice     "900"
///     "Service Flag"           ServiceFlag     "True"
///
/// Every cell can be edited but the ID, which the store gives to a new row. A cell that is emptied
/// is null in a column of numbers, the empty text in one of texts and False in the flag.

#include "base/formats.h"
#include "platform/widgets/grid_source.h"
#include "store/recordset.h"

#include <functional>

RecordsetQuery QuoteServerQuery();

/// Of the open recordset.
std::vector<GridColumn> QuoteServerColumns(const Recordset &rows);

class QuoteServerGridSource : public GridSource
{
public:
    /// Both must outlive the source; the recordset may be closed and opened anew.
    QuoteServerGridSource(Recordset &rows, const Formats &formats)
        : m_rows(rows), m_formats(formats)
    {}

    int RowCount() const override { return m_rows.RecordCount(); }
    QString Text(int row, int column) const override;
    /// Writes the row at once. A value that its column cannot take is refused.
    bool Store(int row, const QMap<int, QString> &texts) override;

    /// Why the column cannot take the text, in words for the user; nothing when it can.
    std::optional<QString> Refusal(int column, const QString &text) const;

    /// The store refused the row, which stays in edit.
    std::function<void(const RuntimeError &)> OnFailure;

private:
    std::optional<FieldValue> FieldFromText(int column, const QString &text) const;

    Recordset &m_rows;
    const Formats &m_formats;
};
