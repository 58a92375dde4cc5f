#pragma once

/// A 16-bit counter (transactions of a day, ticks, minutes) that never wraps: a result beyond
/// -32,768 to 32,767 throws RuntimeError 6, "Overflow".

#include "base/runtime_error.h"

#include <compare>
#include <cstdint>

class Integer
{
public:
    constexpr Integer() = default;

    static Integer FromWide(std::int64_t value)
    {
        if (value < INT16_MIN || value > INT16_MAX)
            throw RuntimeError::Overflow();
        Integer integer;
        integer.m_value = static_cast<std::int16_t>(value);
        return integer;
    }

    constexpr int Value() const { return m_value; }

    friend Integer operator+(Integer left, Integer right)
    {
        return FromWide(std::int64_t{left.m_value} + right.m_value);
    }
    friend Integer operator+(Integer left, int right)
    {
        return FromWide(std::int64_t{left.m_value} + right);
    }
    Integer &operator+=(Integer other) { return *this = *this + other; }
    Integer &operator+=(int other) { return *this = *this + other; }

    friend constexpr auto operator<=>(Integer left, Integer right) = default;

private:
    std::int16_t m_value = 0;
};
