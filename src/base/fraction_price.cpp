#include "base/fraction_price.h"

namespace
{

/// "whole numerator/denominator" or "numerator/denominator".
Currency ParseFraction(const QString &text, const Formats &formats)
{
    const qsizetype slash = text.indexOf(QLatin1Char('/'));
    const QStringList before =
        text.left(slash).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const QString after = text.mid(slash + 1).trimmed();
    if (before.isEmpty() || before.size() > 2)
        throw RuntimeError::TypeMismatch();
    const Currency whole =
        before.size() == 2 ? formats.CurrencyFromText(before.first()) : Currency();
    const double numerator = formats.NumberFromText(before.last());
    const double denominator = formats.NumberFromText(after);
    if (denominator == 0)
        throw RuntimeError::DivisionByZero();
    return whole + Currency::FromDouble(numerator / denominator);
}

} // namespace

Currency ParseFractionPrice(const QString &text, const Formats &formats)
{
    if (text.isEmpty())
        return Currency();
    const Single narrowed = text.contains(QLatin1Char('/'))
                                ? Single::FromDouble(ParseFraction(text, formats).ToDouble())
                                : formats.SingleFromText(text);
    return Currency::FromDouble(narrowed.ToDouble());
}
