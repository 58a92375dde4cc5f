// Numbers as users write them, and pages as well.
//
// The reader goes over the code points once: what may stand before the digits, the digits with
// their groups and point, an exponent, what may stand behind. The result is exact, so that money
// never passes through a double.

#include "base/decimal.h"
#include "base/formats.h"
#include "base/number_marks.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace
{

bool IsBlank(uint symbol)
{
    return QChar::isSpace(symbol) || IsDirectionMark(symbol);
}

bool IsMinus(uint symbol)
{
    return symbol == U'-' || symbol == U'\u2212';
}

class NumberReader
{
public:
    NumberReader(QStringView text, const NumberMarks &marks) : m_text(text.toUcs4()), m_marks(marks)
    {}

    std::optional<Decimal> Read()
    {
        ReadPrefix();
        if (!ReadDigits())
            return std::nullopt;
        const qint64 exponent = ReadExponent();
        ReadSuffix();
        if (m_at < m_text.size() || m_parenthesisOpen)
            return std::nullopt;
        return Decimal::FromDigits(m_negative, std::move(m_digits), m_pointPosition + exponent);
    }

private:
    uint Here() const { return m_at < m_text.size() ? m_text[m_at] : 0; }

    bool TakeCurrencySign()
    {
        if (m_currencySeen)
            return false;
        const QList<uint> &sign = m_marks.Currency;
        if (!sign.isEmpty() && m_text.size() - m_at >= sign.size() &&
            std::equal(sign.begin(), sign.end(), m_text.begin() + m_at))
            m_at += sign.size();
        else if (Here() == U'$')
            ++m_at;
        else
            return false;
        return m_currencySeen = true;
    }

    /// Blanks, one sign or opening parenthesis, one currency sign, in any order.
    void ReadPrefix()
    {
        bool signSeen = false;
        for (; m_at < m_text.size();) {
            const uint symbol = Here();
            if (IsBlank(symbol)) {
                ++m_at;
            } else if (!signSeen && (symbol == U'+' || symbol == U'(' || IsMinus(symbol))) {
                signSeen = true;
                m_negative = symbol != U'+';
                m_parenthesisOpen = symbol == U'(';
                ++m_at;
            } else if (!TakeCurrencySign()) {
                return;
            }
        }
    }

    bool ReadDigits()
    {
        bool pointSeen = false;
        for (; m_at < m_text.size(); ++m_at) {
            const uint symbol = Here();
            if (const int digit = m_marks.Digits.ValueOf(symbol); digit >= 0) {
                m_digits += static_cast<char>('0' + digit);
                if (!pointSeen)
                    ++m_pointPosition;
            } else if (symbol == m_marks.Point && !pointSeen) {
                pointSeen = true;
            } else if (pointSeen || !m_marks.IsGroup(symbol)) {
                break;
            }
        }
        return !m_digits.empty();
    }

    /// "E+3" or "D-3"; a letter without digits behind it is left where it is.
    qint64 ReadExponent()
    {
        constexpr qint64 Enough = 1'000'000'000'000; // larger than any text is long
        const uint letter = Here();
        if (letter != U'E' && letter != U'e' && letter != U'D' && letter != U'd')
            return 0;
        qsizetype at = m_at + 1;
        const bool negative = at < m_text.size() && IsMinus(m_text[at]);
        if (at < m_text.size() && (negative || m_text[at] == U'+'))
            ++at;
        const qsizetype firstDigit = at;
        qint64 exponent = 0;
        for (; at < m_text.size() && m_marks.Digits.ValueOf(m_text[at]) >= 0; ++at)
            exponent = std::min(Enough, exponent * 10 + m_marks.Digits.ValueOf(m_text[at]));
        if (at == firstDigit)
            return 0;
        m_at = at;
        return negative ? -exponent : exponent;
    }

    /// Blanks, a currency sign, the closing parenthesis.
    void ReadSuffix()
    {
        for (; m_at < m_text.size();) {
            if (IsBlank(Here())) {
                ++m_at;
            } else if (m_parenthesisOpen && Here() == U')') {
                m_parenthesisOpen = false;
                ++m_at;
            } else if (!TakeCurrencySign()) {
                return;
            }
        }
    }

    const QList<uint> m_text;
    const NumberMarks &m_marks;
    qsizetype m_at = 0;
    bool m_negative = false;
    bool m_parenthesisOpen = false;
    bool m_currencySeen = false;
    std::string m_digits;
    qint64 m_pointPosition = 0;
};

Decimal ValueOrMismatch(const std::optional<Decimal> &value)
{
    if (!value)
        throw RuntimeError::TypeMismatch();
    return *value;
}

} // namespace

std::optional<Decimal> Formats::DecimalFromText(QStringView text) const
{
    return NumberReader(text, NumberMarks(m_locale)).Read();
}

bool Formats::IsNumeric(QStringView text) const
{
    const std::optional<Decimal> value = DecimalFromText(text);
    return value && std::isfinite(value->ToDouble());
}

double Formats::NumberFromText(QStringView text) const
{
    const double value = ValueOrMismatch(DecimalFromText(text)).ToDouble();
    if (!std::isfinite(value))
        throw RuntimeError::Overflow();
    return value;
}

Currency Formats::CurrencyFromText(QStringView text) const
{
    constexpr int CurrencyDecimals = 4;
    return Currency::FromUnits(ValueOrMismatch(DecimalFromText(text)).ToInteger(CurrencyDecimals));
}

Single Formats::SingleFromText(QStringView text) const
{
    return Single::FromDouble(NumberFromText(text));
}

Integer Formats::IntegerFromText(QStringView text) const
{
    return Integer::FromWide(ValueOrMismatch(DecimalFromText(text)).ToInteger(0));
}
