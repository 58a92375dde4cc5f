#pragma once

/// The rows of the quote site editor's grid, with the captions of its query.
///
///     "website Name"           WebSiteName     "CNBC (US, real time)"
///     "Characters to Price"    CharToPrice     "900"
///     "Service Flag"           ServiceFlag     "True"
///
/// Every cell can be edited but the ID, which the store gives to a new row. A cell that is emptied
/// is null in a column of numbers, the empty text in one of texts and False in the flag.

#include "platform/widgets/recordset_source.h"

RecordsetQuery QuoteServerQuery();

/// Of the open recordset.
std::vector<GridColumn> QuoteServerColumns(const Recordset &rows);

class QuoteServerGridSource : public EditableRecordsetSource
{
public:
    /// Both must outlive the source; the recordset may be closed and opened anew.
    QuoteServerGridSource(Recordset &rows, const Formats &formats)
        : EditableRecordsetSource(rows, formats, {})
    {}

    QString Text(int row, int column) const override;

    /// Why the column cannot take the text, in words for the user; nothing when it can.
    std::optional<QString> Refusal(int column, const QString &text) const;

private:
    std::optional<FieldValue> FieldFromText(int column, const QString &text) const override;
};
