#include "base/decimal.h"

#include "base/runtime_error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

Decimal Decimal::FromInteger(std::int64_t value)
{
    const bool negative = value < 0;
    const auto bits = static_cast<std::uint64_t>(value);
    std::string digits = std::to_string(negative ? 0 - bits : bits);
    const auto count = static_cast<std::int64_t>(digits.size());
    return FromDigits(negative, std::move(digits), count);
}

Decimal Decimal::FromDouble(double value, int significantDigits)
{
    if (!std::isfinite(value))
        throw RuntimeError::Overflow();
    std::array<char, 64> buffer;
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                      std::chars_format::scientific, significantDigits - 1);
    Q_ASSERT(error == std::errc());
    // "d.dddE+XX": the digits without their point, then the exponent of the first one.
    const std::string text(buffer.data(), end);
    const std::size_t exponentMark = text.find('e');
    std::string digits = text.substr(0, exponentMark);
    std::erase(digits, '.');
    return FromDigits(std::signbit(value), std::move(digits),
                      std::stoi(text.substr(exponentMark + 1)) + 1);
}

Decimal Decimal::FromDigits(bool negative, std::string digits, std::int64_t pointPosition)
{
    Decimal decimal;
    const std::size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos)
        return decimal;
    digits.erase(digits.find_last_not_of('0') + 1);
    digits.erase(0, first);
    decimal.m_negative = negative;
    decimal.m_digits = std::move(digits);
    decimal.m_pointPosition = pointPosition - static_cast<std::int64_t>(first);
    return decimal;
}

std::int64_t Decimal::Decimals() const
{
    return std::max<std::int64_t>(0, DigitCount() - m_pointPosition);
}

char Decimal::DigitAt(std::int64_t place) const
{
    const std::int64_t index = m_pointPosition - 1 - place;
    return index < 0 || index >= DigitCount() ? '0' : m_digits[static_cast<std::size_t>(index)];
}

Decimal Decimal::Shifted(int places) const
{
    Decimal shifted = *this;
    if (!IsZero())
        shifted.m_pointPosition += places;
    return shifted;
}

Decimal Decimal::Rounded(std::int64_t places, Ties ties) const
{
    const std::int64_t keep = m_pointPosition + places;
    if (keep >= DigitCount())
        return *this;
    if (keep < 0)
        return Decimal();

    const auto kept = static_cast<std::size_t>(keep);
    const char next = m_digits[kept];
    const bool tie = next == '5' && kept + 1 == m_digits.size();
    const bool lastIsOdd = kept > 0 && (m_digits[kept - 1] - '0') % 2 == 1;
    const bool up = tie && ties == Ties::ToEven ? lastIsOdd : next >= '5';

    std::string digits = m_digits.substr(0, kept);
    std::int64_t pointPosition = m_pointPosition;
    if (up) {
        while (!digits.empty() && digits.back() == '9')
            digits.pop_back();
        if (digits.empty()) { // 9.99 becomes 10, 0.5 becomes 1
            digits = "1";
            ++pointPosition;
        } else {
            ++digits.back();
        }
    }
    return FromDigits(m_negative, std::move(digits), pointPosition);
}

double Decimal::ToDouble() const
{
    constexpr std::int64_t BeyondAnyDouble = 400;
    double value = 0;
    if (m_pointPosition > BeyondAnyDouble) {
        value = std::numeric_limits<double>::infinity();
    } else if (!IsZero() && m_pointPosition > -BeyondAnyDouble) {
        const std::string text = "0." + m_digits + "e" + std::to_string(m_pointPosition);
        const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
        if (result.ec == std::errc::result_out_of_range)
            value = m_pointPosition > 0 ? std::numeric_limits<double>::infinity() : 0;
    }
    return m_negative ? 0 - value : value;
}

std::int64_t Decimal::ToInteger(int places) const
{
    const Decimal whole = Shifted(places).Rounded(0, Ties::ToEven);
    constexpr std::int64_t DigitsOfLargest = std::numeric_limits<std::int64_t>::digits10 + 1;
    if (whole.m_pointPosition > DigitsOfLargest)
        throw RuntimeError::Overflow();
    std::uint64_t magnitude = 0; // 19 digits always fit
    for (std::int64_t place = whole.m_pointPosition - 1; place >= 0; --place)
        magnitude = magnitude * 10 + static_cast<std::uint64_t>(whole.DigitAt(place) - '0');
    const std::uint64_t largest =
        static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) + (m_negative ? 1 : 0);
    if (magnitude > largest)
        throw RuntimeError::Overflow();
    return static_cast<std::int64_t>(m_negative ? 0 - magnitude : magnitude);
}
