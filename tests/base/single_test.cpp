#include "base/currency.h"
#include "base/single.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <type_traits>

static_assert(!std::is_convertible_v<double, Single>);
static_assert(!std::is_convertible_v<float, Single>);
static_assert(!std::is_convertible_v<int, Single>);
static_assert(!std::is_constructible_v<Single, double>);
static_assert(!std::is_convertible_v<Single, double>);
static_assert(!std::is_constructible_v<double, Single>);
static_assert(!std::is_convertible_v<Currency, Single>);
static_assert(!std::is_constructible_v<Single, Currency>);

namespace
{

int NumberOf(const auto &routine)
{
    try {
        routine();
        return 0;
    } catch (const RuntimeError &error) {
        return error.Number();
    }
}

} // namespace

TEST(Single, KeepsAboutSevenDigits)
{
    EXPECT_EQ(Single::FromDouble(1234567.89).ToDouble(), 1234567.875);
    EXPECT_EQ(Single::FromDouble(16777217.0).ToDouble(), 16777216.0); // 2^24 + 1
    EXPECT_NE(Single::FromDouble(0.1).ToDouble(), 0.1);
}

TEST(Single, ASumIsRoundedAfterEachAddition)
{
    const Single large = Single::FromDouble(16777216);
    const Single one = Single::FromDouble(1);
    EXPECT_EQ(large + one + one, large);                     // each one is lost
    EXPECT_EQ((large + (one + one)).ToDouble(), 16777218.0); // together they count
}

TEST(Single, ASumOfFractionsCanMissZero)
{
    const Single tenth = Single::FromDouble(0.1);
    const Single seventh = Single::FromDouble(0.7);
    // 0.7 less seven times 0.1, each step rounded to a Single
    Single left = seventh;
    for (int i = 0; i < 7; ++i)
        left = left - tenth;
    EXPECT_FALSE(left.IsZero());
    EXPECT_LT(std::abs(left.ToDouble()), 1e-6);
}

TEST(Single, KnowsItsSign)
{
    EXPECT_TRUE(Single().IsZero());
    EXPECT_TRUE(Single::FromDouble(-0.0).IsZero());
    EXPECT_FALSE(std::signbit((-Single()).Value())); // minus nothing is nothing
    EXPECT_TRUE(Single::FromDouble(-2).IsNegative());
    EXPECT_TRUE((-Single::FromDouble(-2)).IsPositive());
    EXPECT_LT(Single::FromDouble(-100), Single::FromDouble(-50));
}

TEST(Single, RefusesWhatIsBeyondItsRange)
{
    EXPECT_EQ(NumberOf([] { Single::FromDouble(3.5e38); }), 6);
    EXPECT_EQ(NumberOf([] { Single::FromDouble(-3.5e38); }), 6);
    EXPECT_EQ(NumberOf([] { Single::FromDouble(std::nan("")); }), 6);
    const Single most = Single::FromFloat(FLT_MAX);
    EXPECT_EQ(NumberOf([&] { most + most; }), 6);
    EXPECT_EQ(NumberOf([&] { -most - most; }), 6);
    EXPECT_EQ((most - most).ToDouble(), 0.0);
}
