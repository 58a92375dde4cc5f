#include "base/currency.h"

#include <cmath>
#include <limits>

namespace
{

__extension__ typedef __int128 Int128;

/// value / 2^bits, to the nearest whole number, ties to even. bits > 0.
Int128 ShiftRightTiesToEven(Int128 value, int bits)
{
    if (bits > 120)
        return 0;
    const Int128 one = Int128{1} << bits;
    const Int128 half = one >> 1;
    Int128 quotient = value >> bits; // floor
    const Int128 rest = value - (quotient << bits);
    if (rest > half || (rest == half && (quotient & 1)))
        ++quotient;
    return quotient;
}

Currency FromWide(Int128 units)
{
    if (units > std::numeric_limits<std::int64_t>::max() ||
        units < std::numeric_limits<std::int64_t>::min())
        throw RuntimeError::Overflow();
    return Currency::FromUnits(static_cast<std::int64_t>(units));
}

Currency FromDoubleWide(double value)
{
    if (!std::isfinite(value))
        throw RuntimeError::Overflow();
    int exponent;
    const double fraction = std::frexp(value, &exponent);
    const auto mantissa = static_cast<std::int64_t>(std::ldexp(fraction, 53));
    exponent -= 53; // value == mantissa * 2^exponent, |mantissa| < 2^53
    const Int128 scaled = Int128{mantissa} * Currency::UnitsPerOne;
    if (scaled == 0)
        return Currency();
    if (exponent < 0)
        return FromWide(ShiftRightTiesToEven(scaled, -exponent));
    if (exponent > 50)
        throw RuntimeError::Overflow();
    return FromWide(scaled * (Int128{1} << exponent));
}

} // namespace

Currency::Currency(const char *decimalText)
{
    bool negative = false;
    const char *at = decimalText;
    if (*at == '-' || *at == '+')
        negative = *at++ == '-';
    Int128 units = 0;
    int decimals = -1;
    for (; *at != '\0'; ++at) {
        if (*at == '.' && decimals < 0) {
            decimals = 0;
            continue;
        }
        if (*at < '0' || *at > '9' || decimals == 4)
            throw RuntimeError::TypeMismatch();
        units = units * 10 + (*at - '0');
        if (decimals >= 0)
            ++decimals;
        if (units > Int128{1} << 70)
            throw RuntimeError::Overflow();
    }
    for (int have = decimals < 0 ? 0 : decimals; have < 4; ++have)
        units *= 10;
    *this = FromWide(negative ? -units : units);
}

Currency Currency::FromDouble(double value)
{
    // The product with 10,000 may be inexact; std::fma gives what it lost, so that the exact value
    // decides ties. `scaled - whole` is exact, and only at one half can the lost part matter.
    const double scaled = value * 10000.0;
    if (std::fabs(scaled) < 4503599627370496.0 && (value == 0.0 || std::fabs(value) > 1e-200)) {
        const double lost = std::fma(value, 10000.0, -scaled);
        double whole = std::nearbyint(scaled);
        const double rest = scaled - whole;
        if (rest == 0.5 && lost > 0.0)
            whole += 1.0;
        else if (rest == -0.5 && lost < 0.0)
            whole -= 1.0;
        return FromUnits(static_cast<std::int64_t>(whole));
    }
    return FromDoubleWide(value);
}

Currency MultiplyCurrency(Currency left, Currency right)
{
    const Int128 product = Int128{left.Units()} * right.Units();
    const Int128 scale = Currency::UnitsPerOne;
    Int128 quotient = product / scale;
    Int128 rest = product % scale;
    if (rest < 0) {
        rest += scale;
        --quotient;
    }
    if (rest * 2 > scale || (rest * 2 == scale && (quotient & 1)))
        ++quotient;
    return FromWide(quotient);
}
