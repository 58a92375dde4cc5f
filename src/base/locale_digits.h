#pragma once

/// The digits that a locale reads: 0 to 9 and its own, as code points.
///
///     LocaleDigits(QLocale("ar_EG")).ValueOf(U'\u0663')     3
///     LocaleDigits(QLocale("en_US")).ValueOf(U'\u0663')     -1

#include <QLocale>

class LocaleDigits
{
public:
    explicit LocaleDigits(const QLocale &locale) : m_zero(locale.zeroDigit().toUcs4().value(0)) {}

    /// 0 to 9, or -1 for what is no digit.
    int ValueOf(uint symbol) const
    {
        for (const uint zero : {uint{U'0'}, m_zero}) {
            if (symbol >= zero && symbol <= zero + 9)
                return static_cast<int>(symbol - zero);
        }
        return -1;
    }

private:
    uint m_zero;
};

/// Invisible marks that turn the direction of writing; locales put them around signs and dates.
inline bool IsDirectionMark(uint symbol)
{
    return symbol == U'\u200e' || symbol == U'\u200f' || symbol == U'\u061c';
}
