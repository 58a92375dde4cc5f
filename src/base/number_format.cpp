// Numbers in patterns and in their default form.
//
// A value is turned into its decimal digits first; rounding and shifting happen there, so that no
// binary fraction decides whether a half goes up.

#include "base/decimal.h"
#include "base/formats.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr int DoubleDigits = 15;
constexpr int SingleDigits = 7;

Decimal DecimalOf(Currency value)
{
    return Decimal::FromInteger(value.Units()).Shifted(-4);
}

Decimal DecimalOf(Single value)
{
    return Decimal::FromDouble(value.ToDouble(), SingleDigits);
}

Decimal DecimalOf(double value)
{
    return Decimal::FromDouble(value, DoubleDigits);
}

/// One section of a pattern.
struct Section
{
    QString Prefix;
    QString Suffix;
    qsizetype IntegerDigits = 0;   ///< digits before the point that are always shown
    qsizetype MinimumDecimals = 0; ///< digits behind the point that are always shown
    qsizetype MaximumDecimals = 0;
    int PercentSigns = 0;
    bool Grouped = false;
    bool HasDigitPlaces = false;
    bool HasPoint = false;
    bool Empty = true;
};

using Sections = QVarLengthArray<Section, 3>;

Sections ParsePattern(QStringView pattern)
{
    Sections sections(1);
    for (qsizetype at = 0; at < pattern.size(); ++at) {
        Section &section = sections.back();
        const auto addText = [&](QStringView text) {
            (section.HasDigitPlaces ? section.Suffix : section.Prefix).append(text);
        };
        const QChar symbol = pattern[at];
        if (symbol == u';') {
            sections.append(Section());
            continue;
        }
        section.Empty = false;
        switch (symbol.unicode()) {
        case u'0':
        case u'#':
            section.HasDigitPlaces = true;
            if (section.HasPoint) {
                ++section.MaximumDecimals;
                if (symbol == u'0')
                    section.MinimumDecimals = section.MaximumDecimals;
            } else if (symbol == u'0' || section.IntegerDigits > 0) {
                ++section.IntegerDigits; // a "#" behind a "0" is always shown as well
            }
            break;
        case u'.':
            if (section.HasPoint)
                addText(u".");
            section.HasPoint = section.HasDigitPlaces = true;
            break;
        case u',':
            if (section.HasDigitPlaces && !section.HasPoint)
                section.Grouped = true;
            else
                addText(u",");
            break;
        case u'%':
            ++section.PercentSigns;
            addText(u"%");
            break;
        case u'"': {
            const qsizetype close = pattern.indexOf(u'"', at + 1);
            const qsizetype end = close < 0 ? pattern.size() : close;
            addText(pattern.mid(at + 1, end - at - 1));
            at = end;
            break;
        }
        case u'\\':
            ++at;
            addText(pattern.mid(at, 1));
            break;
        default:
            addText(pattern.mid(at, 1));
        }
    }
    return sections;
}

/// The section, or the first where it is missing or empty.
const Section &SectionOrFirst(const Sections &sections, qsizetype index)
{
    return index < sections.size() && !sections[index].Empty ? sections[index] : sections[0];
}

Decimal RoundedFor(const Section &section, const Decimal &value)
{
    return value.Shifted(2 * section.PercentSigns)
        .Rounded(section.MaximumDecimals, Ties::AwayFromZero);
}

/// The digits of `value` without its sign, at least so many before and behind the point. Without a
/// point the decimals are left out; without a separator nothing is grouped.
QString DigitsOf(const Decimal &value, qint64 minimumIntegers, qint64 minimumDecimals,
                 const QString &point, const QString &groupSeparator)
{
    QString text;
    for (qint64 place = std::max<qint64>(minimumIntegers, value.PointPosition()) - 1; place >= 0;
         --place) {
        text += QLatin1Char(value.DigitAt(place));
        if (place > 0 && place % 3 == 0)
            text += groupSeparator;
    }
    if (!point.isEmpty()) {
        text += point;
        const qint64 decimals = std::max<qint64>(minimumDecimals, value.Decimals());
        for (qint64 place = -1; place >= -decimals; --place)
            text += QLatin1Char(value.DigitAt(place));
    }
    return text;
}

} // namespace

QString Formats::Format(Currency value, QStringView pattern) const
{
    return pattern.isEmpty() ? ToText(value) : FormatDecimal(DecimalOf(value), pattern);
}

QString Formats::Format(Single value, QStringView pattern) const
{
    return pattern.isEmpty() ? ToText(value) : FormatDecimal(DecimalOf(value), pattern);
}

QString Formats::Format(double value, QStringView pattern) const
{
    return pattern.isEmpty() ? ToText(value) : FormatDecimal(DecimalOf(value), pattern);
}

QString Formats::FormatWhole(qint64 value, QStringView pattern) const
{
    return pattern.isEmpty() ? ToText(value) : FormatDecimal(Decimal::FromInteger(value), pattern);
}

QString Formats::Reformat(QStringView text, QStringView pattern) const
{
    const std::optional<Decimal> value = DecimalFromText(text);
    if (!value || !std::isfinite(value->ToDouble()))
        return text.toString();
    return pattern.isEmpty() ? ToText(value->ToDouble()) : FormatDecimal(*value, pattern);
}

QString Formats::FormatDecimal(const Decimal &value, QStringView pattern) const
{
    if (pattern.compare(u"Percent", Qt::CaseInsensitive) == 0)
        pattern = u"0.00%";
    const Sections sections = ParsePattern(pattern);
    const Section *section = &SectionOrFirst(sections, value.IsNegative() ? 1 : 0);
    Decimal shown = RoundedFor(*section, value);
    if (shown.IsZero()) {
        section = &SectionOrFirst(sections, 2);
        shown = RoundedFor(*section, Decimal());
    }

    QString text;
    if (shown.IsNegative() && section == &sections[0])
        text += u'-';
    text += section->Prefix;
    if (section->HasDigitPlaces)
        text += DigitsOf(shown, section->IntegerDigits, section->MinimumDecimals,
                         section->HasPoint ? m_decimalPoint : QString(),
                         section->Grouped ? m_groupSeparator : QString());
    text += section->Suffix;
    return text;
}

QString Formats::ToText(Currency value) const
{
    return DecimalToText(DecimalOf(value), std::numeric_limits<int>::max());
}

QString Formats::ToText(Single value) const
{
    return DecimalToText(DecimalOf(value), SingleDigits);
}

QString Formats::ToText(double value) const
{
    return DecimalToText(DecimalOf(value), DoubleDigits);
}

QString Formats::DecimalToText(const Decimal &value, int largestExponent) const
{
    constexpr int SmallestExponent = -4;
    QString text;
    if (value.IsNegative())
        text += u'-';
    const qint64 exponent = value.IsZero() ? 0 : value.PointPosition() - 1;
    const bool plain = exponent >= SmallestExponent && exponent < largestExponent;
    const Decimal mantissa = plain ? value : value.Shifted(static_cast<int>(-exponent));
    text +=
        DigitsOf(mantissa, 1, 0, mantissa.Decimals() > 0 ? m_decimalPoint : QString(), QString());
    if (!plain) {
        text += u'E';
        text += exponent < 0 ? u'-' : u'+';
        text += QStringLiteral("%1").arg(std::abs(exponent), 2, 10, QLatin1Char('0'));
    }
    return text;
}
