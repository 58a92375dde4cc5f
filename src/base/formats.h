#pragma once

/// Text from values and values from text in the user's locale: the one place for both.
///
///     const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
///     formats.Format(Currency("1234.565"), u"###,##0.00")     "1,234.57"
///     formats.Format(0.0825, u"0.00%")                        "8.25%"
///     formats.FormatDate(QDate(2026, 3, 2), u"mmm-dd-yy")     "Mar-02-26"
///     formats.ToText(Single::FromFloat(33.3333f))             "33.3333"
///     formats.CurrencyFromText(u"$1,000.50")                  Currency("1000.5")
///     formats.NumberFromText(u"12 3/8")                       throws RuntimeError 13
///
/// In a pattern "." and "," stand for the locale's decimal point and group separator ("1.234,57" in
/// German). Numbers are written with the digits 0 to 9; the locale's own digits are read as well.
/// Formats{QLocale::c()} is the neutral form: point, comma, dates as 2026-03-02.
///
/// Every input has an outcome: a value that is no number (infinite, NaN) throws RuntimeError 6
/// "Overflow", an invalid date or time has the empty text. The work is done in number_format.cpp,
/// date_format.cpp, text_numbers.cpp, typed_numbers.cpp and typed_dates.cpp.

#include "base/currency.h"
#include "base/integer.h"
#include "base/single.h"

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <concepts>
#include <optional>

class Decimal;

class Formats
{
public:
    explicit Formats(const QLocale &locale);

    /// A number in a pattern: "0" a digit always shown, "#" a digit shown when needed, "," among
    /// them groups of three, "." the decimal point, "%" times 100; "Percent" is "0.00%". What
    /// stands before the first digit place is written before the number, all other text behind it;
    /// text in quotes or after a backslash is taken as it is. With sections separated by ";" the
    /// first is for positive values, the second for negative ones (which then have no minus), the
    /// third for zero; an empty section is as the first. The empty pattern gives ToText.
    ///
    /// Halves are rounded away from zero, on the decimal value: a double counts with 15 digits, a
    /// Single with 7, so that 2.675 gives "2.68". What is rounded to zero is zero and has no minus.
    QString Format(Currency value, QStringView pattern) const;
    QString Format(Single value, QStringView pattern) const;
    QString Format(double value, QStringView pattern) const;
    QString Format(Integer value, QStringView pattern) const
    {
        return FormatWhole(value.Value(), pattern);
    }
    QString Format(std::integral auto value, QStringView pattern) const
    {
        return FormatWhole(value, pattern);
    }
    /// What a user typed, in a pattern; a text that is no number comes back as it is.
    QString Reformat(QStringView text, QStringView pattern) const;

    /// "d" "dd" day, "ddd" "dddd" its name, "m" "mm" month, "mmm" "mmmm" its name, "yy" "yyyy"
    /// year, small or capital; "Short Date", "Medium Date" (02-Mar-26), "Long Date"; all else is
    /// literal.
    QString FormatDate(QDate date, QStringView pattern) const;
    /// "h" "hh" hour, "m" "mm" (or "n") minute, "s" "ss" second; with "AMPM" (the locale's words)
    /// or "AM/PM" the hours run from 12 to 11; "Long Time" is h:mm:ss AMPM or hh:mm:ss, as the
    /// locale counts its hours.
    QString FormatTime(QTime time, QStringView pattern) const;
    /// As FormatDate with "Short Date": 3/2/2026; the year always has four digits.
    QString ShortDate(QDate date) const;

    /// The shortest decimal text, without groups: "250", "-12.5", "0.0001".
    QString ToText(Currency value) const;
    /// At most 7 digits; from 1E+07 on and below 0.0001 with an exponent: "1.234568E+07", "1E-05".
    QString ToText(Single value) const;
    /// At most 15 digits; from 1E+15 on and below 0.0001 with an exponent.
    QString ToText(double value) const;
    QString ToText(Integer value) const { return ToText(value.Value()); }
    QString ToText(std::integral auto value) const { return QString::number(value); }
    QString ToText(QDate date) const { return ShortDate(date); } ///< "3/2/2026"
    QString ToText(QTime time) const;                            ///< "10:15:00 AM"
    QString ToText(const QDateTime &moment) const; ///< "3/2/2026 10:15:00 AM", at midnight the date

    /// A number as a user writes it: blanks around it, a sign before it or parentheses for a
    /// negative, the locale's currency sign or "$", group separators anywhere left of the decimal
    /// point, an exponent with E or D. In a locale that groups with a blank every kind of blank
    /// groups. Anything else throws RuntimeError 13 "Type mismatch"; what does not fit the type
    /// throws RuntimeError 6 "Overflow".
    double NumberFromText(QStringView text) const;
    /// Whether NumberFromText gives a number.
    bool IsNumeric(QStringView text) const;
    /// Exact to the ten-thousandth, ties to even; never by way of a double.
    Currency CurrencyFromText(QStringView text) const;
    /// The 32-bit float nearest to NumberFromText.
    Single SingleFromText(QStringView text) const;
    /// The nearest whole number, ties to even.
    Integer IntegerFromText(QStringView text) const;

    /// A number typed into a field for an amount, a count or a price, in the writing that the readers
    /// above take: decimal point of the locale, no groups. Signs, currency and exponent stay.
    ///
    ///     German.TypedNumber(u"1.5")           "1,5"     the sign is not followed by three digits
    ///     German.TypedNumber(u"1.234")         "1234"    the point groups there
    ///     German.TypedNumber(u"1,234")         "1,234"   and the comma is the decimal point
    ///     French.TypedNumber(u"1.234")         nothing   the point is neither: 1.234 or 1,234?
    ///
    /// A single point or comma that is not followed by exactly three digits is the decimal sign in
    /// every locale, and so is one with nothing but zeros before it: 0.125. Nothing for a text that
    /// is no number, can be read in two ways, or has a group sign in a wrong place; the empty text
    /// for blanks and for a decimal sign alone.
    std::optional<QString> TypedNumber(QStringView text) const;
    /// The keys of such a field: 0 to 9, the digits of the locale, the point and the locale's own.
    QString NumberKeys() const;
    /// What counts as decimal sign while a number is typed: the locale's, and the point where it
    /// does not group.
    QString DecimalSigns() const;

    /// A date in the order of the locale's short date (separated by "/", "-", "." or a blank), or
    /// year first as 2026-03-02. Years of one or two digits mean 1930 to 2029; years before 100 and
    /// days that no calendar has give nothing.
    std::optional<QDate> DateFromText(QStringView text) const;
    /// A date typed into a field: as DateFromText, but years have two digits or four; or with the
    /// name of the month and, if any, of the weekday, as in the locale's long date: "2 March 2026",
    /// "Monday, March 2, 2026". A weekday must be that of the date.
    std::optional<QDate> DateFromTyped(QStringView text) const;
    /// A time of day as hours, minutes and seconds separated by ":" or ".", the seconds may be
    /// missing: 10:15, 22:15:30. With AM or PM, or the locale's words, in front or behind, the hours
    /// run from 1 to 12 and may stand alone: 10 PM. Anything else gives nothing.
    std::optional<QTime> TimeFromText(QStringView text) const;

private:
    QString FormatWhole(qint64 value, QStringView pattern) const;
    QString FormatDecimal(const Decimal &value, QStringView pattern) const;
    /// From 10^largestExponent on and below 0.0001 with an exponent.
    QString DecimalToText(const Decimal &value, int largestExponent) const;
    /// Nothing when the text is no number.
    std::optional<Decimal> DecimalFromText(QStringView text) const;
    std::optional<QDate> DateFromNumbers(QStringView text, int fewestYearDigits) const;

    QLocale m_locale;
    QString m_decimalPoint;
    QString m_groupSeparator;
    QString m_shortDatePattern; ///< in the language of FormatDate, as are the two below
    QString m_longDatePattern;
    QString m_longTimePattern;
};
