#pragma once

/// A spreadsheet workbook: cells set by row and column, saved as a true .xls file (BIFF8 records in
/// an OLE compound file).
///
///     Workbook book(formats);
///     book.SetText(1, 1, "DATE");
///     book.SetTyped(2, 1, "3/2/2026");      a date, shown as m/d/yyyy
///     book.SetTyped(2, 2, "1,234.50");      the number 1234.5, shown as #,##0.00
///     book.SetText(2, 3, "1E5");            stays a text
///     book.SetNumber(2, 4, 12.5);
///     book.Save("Summary.xls");
///
/// Rows and columns count from 1. Past 65,536 rows a further sheet begins, as many as it takes; a
/// column past 256, or a place before the first, throws RuntimeError 9. A cell set twice has the
/// later value. A text is cut at 32,767 characters, which is what a cell can hold. The file is
/// written beside and renamed, so that a failed save leaves the old one: RuntimeError 61 (disk full),
/// 70 (not permitted), 76 (no such folder) or 75, with the file's name in the description. Memory
/// grows with the cells, about 16 bytes each and every distinct text once.

#include "base/currency.h"
#include "base/formats.h"
#include "base/single.h"

#include <QString>

#include <memory>

class Workbook
{
public:
    /// Texts that are typed are read by these formats.
    explicit Workbook(const Formats &formats);
    ~Workbook();
    Workbook(const Workbook &) = delete;
    Workbook &operator=(const Workbook &) = delete;

    /// The text as it is, whatever it looks like. An empty text leaves the cell empty.
    void SetText(int row, int column, const QString &text);
    /// As typed into a cell: numbers, percentages, dates and times become values with the number
    /// format that they were written in; all else is a text. typed_text.h has the rules.
    void SetTyped(int row, int column, const QString &text);
    /// A value without a format. A number that is not finite leaves the cell empty; a Single is the
    /// shortest decimal that means it.
    void SetNumber(int row, int column, double value);
    void SetNumber(int row, int column, Currency value);
    void SetNumber(int row, int column, Single value);

    int RowCount() const; ///< last row with a cell set; 0: none

    /// Throws RuntimeError; see above.
    void Save(const QString &path) const;

private:
    class Private;
    std::unique_ptr<Private> m_private;
};
