#include "base/currency.h"
#include "base/single.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <type_traits>

// A wrong conversion or a product that nobody rounded does not compile.
static_assert(!std::is_convertible_v<double, Currency>);
static_assert(!std::is_convertible_v<int, Currency>);
static_assert(!std::is_convertible_v<const char *, Currency>);
static_assert(!std::is_constructible_v<Currency, double>);
static_assert(!std::is_constructible_v<Currency, int>);
static_assert(!std::is_convertible_v<Currency, double>);
static_assert(!std::is_constructible_v<double, Currency>);
static_assert(!std::is_convertible_v<Single, Currency>);
static_assert(!std::is_constructible_v<Currency, Single>);

namespace
{

template <class Left, class Right>
concept Multiplies = requires(Left left, Right right)
{
    left *right;
};
template <class Left, class Right>
concept Divides = requires(Left left, Right right)
{
    left / right;
};
template <class Left, class Right>
concept Adds = requires(Left left, Right right)
{
    left + right;
};
template <class Left, class Right>
concept Compares = requires(Left left, Right right)
{
    left < right;
};

static_assert(!Multiplies<Currency, Single> && !Multiplies<Single, Currency>);
static_assert(!Multiplies<Currency, double> && !Multiplies<double, Currency>);
static_assert(!Multiplies<Currency, Currency>);
static_assert(!Divides<Currency, Single> && !Divides<Currency, Currency>);
static_assert(!Adds<Currency, Single> && !Adds<Currency, double> && !Adds<Currency, int>);
static_assert(!Compares<Currency, Single> && !Compares<Currency, double>);
static_assert(Adds<Currency, Currency> && Compares<Currency, Currency>);

__extension__ typedef unsigned __int128 Wide;

constexpr std::int64_t Largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t Smallest = std::numeric_limits<std::int64_t>::min();

/// The ten-thousandth nearest to `value`, worked out bit by bit on the whole number that the double
/// is: mantissa * 10,000 * 2^exponent. Nothing when it does not fit.
std::optional<std::int64_t> SlowUnits(double value)
{
    int exponent = 0;
    const double fraction = std::frexp(std::fabs(value), &exponent);
    Wide scaled = static_cast<Wide>(std::ldexp(fraction, 53)) * 10000;
    exponent -= 53;
    for (; exponent > 0; --exponent) {
        if (scaled >> 100)
            return std::nullopt;
        scaled *= 2;
    }
    bool half = false; // the bit shifted out last
    bool rest = false; // any bit shifted out before it
    for (; exponent < 0; ++exponent) {
        rest = rest || half;
        half = scaled & 1;
        scaled >>= 1;
    }
    if (half && (rest || (scaled & 1)))
        ++scaled;
    const Wide limit = static_cast<Wide>(Largest) + (std::signbit(value) ? 1 : 0);
    if (scaled > limit)
        return std::nullopt;
    const auto magnitude = static_cast<std::uint64_t>(scaled);
    return static_cast<std::int64_t>(std::signbit(value) ? 0 - magnitude : magnitude);
}

int NumberOf(const auto &routine)
{
    try {
        routine();
        return 0;
    } catch (const RuntimeError &error) {
        return error.Number();
    }
}

void ExpectExact(double value)
{
    const std::optional<std::int64_t> units = SlowUnits(value);
    if (!units) {
        ASSERT_EQ(NumberOf([&] { Currency::FromDouble(value); }), 6) << std::hexfloat << value;
        return;
    }
    std::int64_t got = 0;
    ASSERT_EQ(NumberOf([&] { got = Currency::FromDouble(value).Units(); }), 0)
        << std::hexfloat << value;
    ASSERT_EQ(got, *units) << std::hexfloat << value;
}

} // namespace

TEST(CurrencyFromDouble, RoundsTheExactValueOfEveryKindOfDouble)
{
    std::mt19937_64 random(20260302);
    std::uniform_int_distribution<std::uint64_t> bits;
    for (int i = 0; i < 50'000; ++i) { // any bits: from the denormal to the infinite
        const double value = std::bit_cast<double>(bits(random));
        if (std::isfinite(value))
            ExpectExact(value);
    }
    std::uniform_real_distribution<double> exponent(-30, 52);
    for (int i = 0; i < 50'000; ++i) // amounts of money, and what lies below one unit
        ExpectExact(std::ldexp(1.0 + double(bits(random) >> 12) / 4503599627370496.0,
                               int(exponent(random))) *
                    (i % 2 ? 1 : -1));
    for (int i = 0; i < 100'000; ++i) { // at a tie, and the two doubles beside it
        const auto units = static_cast<std::int64_t>(bits(random) >> (12 + i % 50));
        const double tie = (double(units) + 0.5) / 10000.0;
        ExpectExact(tie);
        ExpectExact(std::nextafter(tie, 0.0));
        ExpectExact(-std::nextafter(tie, HUGE_VAL));
    }
}

TEST(CurrencyFromDouble, TakesATrueTieToTheEvenTenThousandth)
{
    // n/16 is exact in binary; 10,000 * n/16 = 625 n is whole, so ties need n/32: 312.5 n.
    EXPECT_EQ(Currency::FromDouble(1.0 / 32), Currency("0.0312")); // 312.5 -> 312
    EXPECT_EQ(Currency::FromDouble(3.0 / 32), Currency("0.0938")); // 937.5 -> 938
    EXPECT_EQ(Currency::FromDouble(-1.0 / 32), Currency("-0.0312"));
    EXPECT_EQ(Currency::FromDouble(-3.0 / 32), Currency("-0.0938"));
    EXPECT_EQ(Currency::FromDouble(100.0 + 1.0 / 32), Currency("100.0312"));
}

TEST(CurrencyFromDouble, DecidesWhatOnlyLooksLikeATieByTheExactValue)
{
    // The double nearest to 0.00005 lies above it: 5.00000000000000023960868e-05.
    EXPECT_EQ(Currency::FromDouble(0.00005), Currency("0.0001"));
    // The double nearest to 0.00015 lies below it: 1.49999999999999993e-04.
    EXPECT_EQ(Currency::FromDouble(0.00015), Currency("0.0001"));
    // The double nearest to 0.00625 lies above it.
    EXPECT_EQ(Currency::FromDouble(0.00625), Currency("0.0063"));
}

TEST(CurrencyFromDouble, HoldsUpToTheEdgeOfSixtyFourBits)
{
    // 2^63 units are 922,337,203,685,477.5808; the doubles around lie 0.125 apart.
    EXPECT_EQ(Currency::FromDouble(922337203685477.5).Units(), 9223372036854775000);
    EXPECT_EQ(NumberOf([] { Currency::FromDouble(922337203685477.625); }), 6);
    EXPECT_EQ(Currency::FromDouble(-922337203685477.5).Units(), -9223372036854775000);
    EXPECT_EQ(NumberOf([] { Currency::FromDouble(-922337203685477.625); }), 6);
}

TEST(CurrencyFromDouble, RefusesWhatIsNoNumber)
{
    for (const double value : {HUGE_VAL, -HUGE_VAL, std::nan(""), 1e300, -1e300})
        EXPECT_EQ(NumberOf([&] { Currency::FromDouble(value); }), 6) << value;
}

TEST(CurrencyFromDouble, MakesNothingOfWhatIsTooSmall)
{
    for (const double value : {0.0, -0.0, 5e-324, -5e-324, 1e-201, 0.00004999})
        EXPECT_TRUE(Currency::FromDouble(value).IsZero()) << value;
}

TEST(CurrencyText, ReadsWhatCodeWrites)
{
    EXPECT_EQ(Currency("2500").Units(), 25'000'000);
    EXPECT_EQ(Currency("-0.0001").Units(), -1);
    EXPECT_EQ(Currency("+12.5").Units(), 125'000);
    EXPECT_EQ(Currency(".5").Units(), 5'000);
    EXPECT_EQ(Currency("922337203685477.5807").Units(), Largest);
    EXPECT_EQ(Currency("-922337203685477.5808").Units(), Smallest);
}

TEST(CurrencyText, RefusesWhatWouldBeRoundedOrDoesNotFit)
{
    for (const char *text : {"1.23456", "1,000", "abc", "1.2.3", "--1", "1 "})
        EXPECT_EQ(NumberOf([&] { Currency value(text); }), 13) << text;
    for (const char *text : {"922337203685477.5808", "-922337203685477.5809",
                             "99999999999999999999999999999999999999999999"})
        EXPECT_EQ(NumberOf([&] { Currency value(text); }), 6) << text;
}

TEST(Currency, SumsAndDifferencesAreExactAndNeverWrap)
{
    const Currency most = Currency::FromUnits(Largest);
    const Currency least = Currency::FromUnits(Smallest);
    const Currency unit = Currency::FromUnits(1);
    EXPECT_EQ(most + (-unit) + unit, most);
    EXPECT_EQ((least + most).Units(), -1);
    EXPECT_EQ(NumberOf([&] { most + unit; }), 6);
    EXPECT_EQ(NumberOf([&] { least - unit; }), 6);
    EXPECT_EQ(NumberOf([&] { -least; }), 6);
    Currency value = most;
    EXPECT_EQ(NumberOf([&] { value += unit; }), 6);
    EXPECT_EQ(value, most); // what failed has changed nothing
    EXPECT_EQ(NumberOf([&] { value -= least; }), 6);
    EXPECT_EQ(value, most);
}

TEST(Currency, OrdersByValue)
{
    EXPECT_LT(Currency("-1"), Currency());
    EXPECT_LT(Currency("499.9999"), Currency("500"));
    EXPECT_EQ(Currency::FromWhole(-3), Currency("-3"));
}

TEST(MultiplyCurrency, GivesTheExactProductWithTiesToEven)
{
    struct Case
    {
        const char *Left, *Right, *Product;
    };
    const Case cases[] = {
        {"0.002", "3500", "7"},
        {"0.0001", "0.0001", "0"},   // 0.00000001
        {"0.0001", "0.5", "0"},      // 0.00005 is a tie: even
        {"0.0003", "0.5", "0.0002"}, // 0.00015 is a tie: even
        {"0.0005", "0.5", "0.0002"}, // 0.00025 is a tie: even
        {"0.0005", "0.5001", "0.0003"},
        {"-0.0001", "0.5", "0"},
        {"-0.0003", "0.5", "-0.0002"},
        {"-0.0005", "0.5", "-0.0002"},
        {"-0.0005", "0.5001", "-0.0003"},
        {"-2.5", "-4", "10"},
        {"922337203685477.5807", "1", "922337203685477.5807"},
        {"-922337203685477.5808", "1", "-922337203685477.5808"},
        {"30000000.0001", "0.0001", "3000"}, // 3000.00000001
        {"9000000.1", "9000000.1", "81000001800000.01"},
    };
    for (const Case &row : cases) {
        EXPECT_EQ(MultiplyCurrency(Currency(row.Left), Currency(row.Right)).Units(),
                  Currency(row.Product).Units())
            << row.Left << " * " << row.Right;
        EXPECT_EQ(MultiplyCurrency(Currency(row.Right), Currency(row.Left)).Units(),
                  Currency(row.Product).Units())
            << row.Right << " * " << row.Left;
    }
}

TEST(MultiplyCurrency, RefusesAProductThatDoesNotFit)
{
    EXPECT_EQ(NumberOf([] { MultiplyCurrency(Currency("31000000"), Currency("31000000")); }), 6);
    EXPECT_EQ(NumberOf([] { MultiplyCurrency(Currency::FromUnits(Smallest), Currency("-1")); }), 6);
}
