#pragma once

/// A share count or a running total of gains: a 32-bit float, about seven significant digits.
///
///     Single::FromDouble(1234567.89).ToDouble()     1234567.875
///     Single sums are rounded to a Single after each addition, so their order matters.
///
/// Sum and difference of two Singles are Single arithmetic. Everything mixed with money or a price
/// runs in double precision: say ToDouble, and FromDouble or Currency::FromDouble where it is
/// stored.

#include "base/runtime_error.h"

#include <cmath>
#include <compare>

class Single
{
public:
    constexpr Single() = default;

    static constexpr Single FromFloat(float value)
    {
        Single single;
        single.m_value = value;
        return single;
    }
    /// The nearest 32-bit float; RuntimeError 6 "Overflow" beyond its range.
    static Single FromDouble(double value)
    {
        const float narrow = static_cast<float>(value);
        if (!std::isfinite(narrow))
            throw RuntimeError::Overflow();
        return FromFloat(narrow);
    }

    constexpr float Value() const { return m_value; }
    constexpr double ToDouble() const { return static_cast<double>(m_value); }
    constexpr bool IsZero() const { return m_value == 0.0f; }
    constexpr bool IsPositive() const { return m_value > 0.0f; }
    constexpr bool IsNegative() const { return m_value < 0.0f; }

    friend Single operator+(Single left, Single right)
    {
        return FromDouble(left.ToDouble() + right.ToDouble());
    }
    friend Single operator-(Single left, Single right)
    {
        return FromDouble(left.ToDouble() - right.ToDouble());
    }
    friend constexpr Single operator-(Single value) { return FromFloat(0.0f - value.m_value); }

    friend constexpr auto operator<=>(Single left, Single right) = default;

private:
    float m_value = 0.0f;
};
