#pragma once

/// A number as its decimal digits: the ground between values and their texts.
///
///     Decimal::FromDouble(2.675, 15).Rounded(2, Ties::AwayFromZero)    2.68; binary lies below
///     Decimal::FromInteger(125000).Shifted(-4)                         12.5
///     Decimal::FromDigits(true, "0050", 2)                             -0.5, PointPosition 0
///
/// The digits are kept exact whatever their count, without zeros at either end; zero has no digits
/// and no sign.

#include <cstdint>
#include <string>

enum class Ties
{
    AwayFromZero,
    ToEven
};

class Decimal
{
public:
    Decimal() = default;
    static Decimal FromInteger(std::int64_t value);
    /// `value` at so many significant digits. RuntimeError 6 "Overflow" for an infinity or a NaN.
    static Decimal FromDouble(double value, int significantDigits);
    /// The ASCII `digits` with the point behind the first `pointPosition` of them (which may lie
    /// outside of them).
    static Decimal FromDigits(bool negative, std::string digits, std::int64_t pointPosition);

    bool IsZero() const { return m_digits.empty(); }
    bool IsNegative() const { return m_negative; }
    /// Digits before the point: 3 for 250, 0 for 0.5, -1 for 0.05.
    std::int64_t PointPosition() const { return m_pointPosition; }
    /// Digits behind the point up to the last that is not zero: 0 for 250, 2 for 0.05.
    std::int64_t Decimals() const;
    /// The digit '0' to '9' that counts 10^place; '0' outside of the digits kept.
    char DigitAt(std::int64_t place) const;

    /// Times 10^places.
    Decimal Shifted(int places) const;
    /// To so many places behind the point.
    Decimal Rounded(std::int64_t places, Ties ties) const;

    /// The nearest double; infinite beyond the range of a double.
    double ToDouble() const;
    /// Times 10^places, rounded to the nearest whole number, ties to even. RuntimeError 6
    /// "Overflow" beyond 64 bits.
    std::int64_t ToInteger(int places) const;

private:
    std::int64_t DigitCount() const { return static_cast<std::int64_t>(m_digits.size()); }

    bool m_negative = false;
    std::string m_digits;             // value = 0.<digits> * 10^m_pointPosition
    std::int64_t m_pointPosition = 0; // zero for zero
};
