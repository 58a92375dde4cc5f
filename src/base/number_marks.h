#pragma once

/// The marks of a locale's numbers, as code points: digits, decimal point, group sign, currency sign.

#include "base/locale_digits.h"

#include <QList>

struct NumberMarks
{
    explicit NumberMarks(const QLocale &locale)
        : Digits(locale), Point(FirstOf(locale.decimalPoint())),
          Group(FirstOf(locale.groupSeparator())), Currency(locale.currencySymbol().toUcs4())
    {}

    /// Where a blank groups every kind of blank does, and a typed apostrophe stands for the
    /// typographic one.
    bool IsGroup(uint symbol) const
    {
        if (QChar::isSpace(Group))
            return QChar::isSpace(symbol);
        constexpr uint TypographicApostrophe = U'\u2019';
        return symbol == Group || (Group == TypographicApostrophe && symbol == U'\'');
    }

    LocaleDigits Digits;
    uint Point;
    uint Group;
    QList<uint> Currency;

private:
    static uint FirstOf(const QString &text) { return text.toUcs4().value(0); }
};
