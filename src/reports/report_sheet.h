#pragma once

/// The sheet that a report is being written to, and the row where it stands.
///
///     Report report(formats);
///     report.WriteHeader({{"DATE", "SECURITY", "PRICE"}, {"", "", "UNIT"}});    ReportRow 2
///     report.NextRow();                                                        ReportRow 3
///     report.SetDate(1, QDate(2026, 3, 2));                     3/2/2026, a date in the workbook
///     report.SetRaw(2, "MAR1");                                 the text as it is
///     report.SetFormatted(3, Currency("1234.565"), u"###,##0.00");   1,234.57, a number
///
/// A formatted value is what the text in the user's locale says: it is rounded as the format rounds.
/// Columns count from 1.

#include "reports/workbook.h"

#include <QDate>

#include <initializer_list>

struct Report
{
    explicit Report(const Formats &formats) : ReportSheet(formats), formats(formats) {}

    using Headings = std::initializer_list<const char *>;
    /// From row 1 and column 1 on; an empty heading leaves its cell empty. ReportRow is the last of
    /// these rows.
    void WriteHeader(std::initializer_list<Headings> rows);
    void NextRow(int rows = 1) { ReportRow += rows; }

    // Cells of the row ReportRow.

    /// In "Short Date", unless it is told; a day that is none leaves the cell empty.
    void SetDate(int column, QDate date, QStringView pattern = u"Short Date");
    template <class Value>
    void SetFormatted(int column, Value value, QStringView pattern)
    {
        ReportSheet.SetTyped(ReportRow, column, formats.Format(value, pattern));
    }
    void SetMoney(int column, Currency value) { SetFormatted(column, value, u"###,##0.00"); }
    void SetRaw(int column, const QString &text) { ReportSheet.SetText(ReportRow, column, text); }
    void SetRaw(int column, const char *text) { SetRaw(column, QString::fromUtf8(text)); }
    template <class Number>
    void SetRaw(int column, Number value)
    {
        ReportSheet.SetNumber(ReportRow, column, value);
    }

    Workbook ReportSheet;
    int ReportRow = 0;    ///< written last; wide, since lists grow past 32,767 rows
    int ReportColumn = 0; ///< written last, where columns are counted
    const Formats &formats;
};
