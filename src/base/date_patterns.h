#pragma once

/// What writing and reading dates share: the language of FormatDate's patterns, and short years.

#include "base/locale_digits.h"

#include <QString>

/// Letters from `at` on that are the same but for their case.
inline qsizetype RunLength(QStringView pattern, qsizetype at)
{
    const QChar letter = pattern[at].toLower();
    qsizetype end = at + 1;
    while (end < pattern.size() && pattern[end].toLower() == letter)
        ++end;
    return end - at;
}

/// A quoted or escaped text at `at`; moves `at` to its last character.
inline QString LiteralText(QStringView pattern, qsizetype &at)
{
    const QChar symbol = pattern[at];
    if (symbol == u'"') {
        const qsizetype begin = at + 1;
        const qsizetype close = pattern.indexOf(u'"', begin);
        at = close < 0 ? pattern.size() : close;
        return pattern.mid(begin, at - begin).toString();
    }
    if (symbol == u'\\')
        return pattern.mid(++at, 1).toString();
    return symbol;
}

/// A format of QLocale in the language of FormatDate: quotes turned, the year with four digits.
inline QString PatternFromLocale(const QString &format)
{
    QString pattern;
    bool quoted = false;
    for (qsizetype at = 0; at < format.size(); ++at) {
        const QChar symbol = format[at];
        if (symbol == u'\'') {
            quoted = !quoted;
            pattern += u'"';
        } else if (symbol == u'y' && !quoted) {
            pattern += QStringLiteral("yyyy");
            at += RunLength(format, at) - 1;
        } else if (!IsDirectionMark(symbol.unicode())) {
            pattern += symbol;
        }
    }
    return pattern;
}

/// The year meant by a number of so many digits: 30 to 99 are of the last century; 0 for none.
inline int YearOf(int number, int digitCount)
{
    constexpr int FirstTwoDigitYear = 30;
    switch (digitCount) {
    case 1:
    case 2:
        return number + (number < FirstTwoDigitYear ? 2000 : 1900);
    case 4:
        return number < 100 ? 0 : number;
    default:
        return 0;
    }
}
