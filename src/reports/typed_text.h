#pragma once

/// Texts read as a spreadsheet reads what is typed into a cell, in the user's locale.
///
///     "1,234.50"                  1234.5    #,##0.00
///     "-12.5"                     -12.5     General
///     "12.50"                     12.5      0.00, since General would show 12.5
///     "12.34%"                    0.1234    0.00%
///     "1E5"                       100000    0.00E+00
///     "3/2/2026"                  46083     m/d/yyyy, the reader's own short date
///     "2026-03-02"                46083     yyyy-mm-dd
///     "02-Mar-26"                 46083     d-mmm-yy
///     "Monday, March 2, 2026"     46083     dddd, mmmm d, yyyy
///     "10:15:00 AM"               0.427...  h:mm:ss AM/PM
///     "3/2/2026 10:15:00 AM"      46083.427...
///
/// All else is a text: groups that are not of three digits, a currency sign, "MAR1", "12 3/8", a
/// number beyond the range of a double. So are dates before 1 March 1900, on which spreadsheet
/// programs do not agree, and after 9999.
///
/// Numbers are the doubles nearest to the decimal text. A date counts days, 2 January 1900 being 2.

#include "base/formats.h"
#include "reports/number_formats.h"

#include <QHash>

#include <optional>

class TypedText
{
public:
    struct Value
    {
        double Number;
        quint16 Format; ///< a place in the number formats
    };

    /// New number formats are added to `numberFormats`, which must outlive this.
    TypedText(const Formats &formats, NumberFormats &numberFormats);

    /// Nothing for what stays a text.
    std::optional<Value> Read(const QString &text);

private:
    std::optional<Value> ReadNumber(QStringView text);
    std::optional<Value> ReadMoment(const QString &text);
    std::optional<Value> ReadDate(const QString &text);
    std::optional<Value> ReadTime(QStringView text);
    std::optional<QDate> DateOfPattern(const QString &text, QStringView pattern) const;
    quint16 DecimalFormat(bool grouped, qsizetype decimals, bool percent);

    const Formats m_formats;
    NumberFormats &m_numberFormats;
    QChar m_point;
    QChar m_group;
    QChar m_dateMark; ///< between the numbers of a short date; "/" and "-" are read everywhere
    QHash<quint32, quint16> m_decimalFormats;       ///< by what DecimalFormat gets
    QHash<QString, std::optional<Value>> m_moments; ///< those read last; reports repeat their dates
};
