#pragma once

/// Money and prices: a signed 64-bit count of ten-thousandths.
///
///     Currency("12.5").Units()          125000
///     Currency::FromDouble(0.00625)     0.0063, since that double lies above its tie
///     Currency::FromDouble(2.00005)     2.0000 or 2.0001 by the exact value of the double
///
/// Sums and differences are exact. Products and quotients run in double precision and come back
/// through FromDouble, which rounds the exact value of the double to the nearest ten-thousandth,
/// ties to even. Whatever does not fit 64 bits throws RuntimeError 6, "Overflow".

#include "base/runtime_error.h"

#include <compare>
#include <cstdint>

class Currency
{
public:
    constexpr Currency() = default;
    /// Decimal text with a point, for values written in code: Currency("2500"),
    /// Currency("-0.0001").
    explicit Currency(const char *decimalText);

    static constexpr Currency FromUnits(std::int64_t units)
    {
        Currency value;
        value.m_units = units;
        return value;
    }
    static constexpr Currency FromWhole(std::int32_t whole)
    {
        return FromUnits(std::int64_t{whole} * UnitsPerOne);
    }
    /// Rounds the exact value of `value` to the nearest ten-thousandth, ties to even.
    static Currency FromDouble(double value);

    constexpr std::int64_t Units() const { return m_units; }
    constexpr bool IsZero() const { return m_units == 0; }
    /// The nearest double; exact up to 2^53 ten-thousandths.
    constexpr double ToDouble() const
    {
        return static_cast<double>(m_units) / static_cast<double>(UnitsPerOne);
    }

    friend Currency operator+(Currency left, Currency right)
    {
        std::int64_t sum;
        if (__builtin_add_overflow(left.m_units, right.m_units, &sum))
            throw RuntimeError::Overflow();
        return FromUnits(sum);
    }
    friend Currency operator-(Currency left, Currency right)
    {
        std::int64_t difference;
        if (__builtin_sub_overflow(left.m_units, right.m_units, &difference))
            throw RuntimeError::Overflow();
        return FromUnits(difference);
    }
    friend Currency operator-(Currency value) { return Currency() - value; }
    Currency &operator+=(Currency other) { return *this = *this + other; }
    Currency &operator-=(Currency other) { return *this = *this - other; }

    friend constexpr auto operator<=>(Currency left, Currency right) = default;

    static constexpr std::int64_t UnitsPerOne = 10000;

private:
    std::int64_t m_units = 0;
};

/// Money times a factor kept as money (four decimals each): the exact product, ties to even.
Currency MultiplyCurrency(Currency left, Currency right);
