#include "base/integer.h"

#include <gtest/gtest.h>

#include <type_traits>

static_assert(!std::is_convertible_v<int, Integer>);
static_assert(!std::is_constructible_v<Integer, int>);
static_assert(!std::is_convertible_v<Integer, int>);

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

TEST(Integer, CountsToTheEdgeOfSixteenBitsAndNeverWraps)
{
    Integer count = Integer::FromWide(32'766);
    count += 1;
    EXPECT_EQ(count.Value(), 32'767);
    EXPECT_EQ(NumberOf([&] { count += 1; }), 6);
    EXPECT_EQ(count.Value(), 32'767); // what failed has changed nothing
    EXPECT_EQ(NumberOf([&] { count += Integer::FromWide(1); }), 6);
    EXPECT_EQ((count + Integer::FromWide(-32'768)).Value(), -1);
}

TEST(Integer, TakesOnlyWhatFits)
{
    EXPECT_EQ(Integer::FromWide(-32'768).Value(), -32'768);
    for (const std::int64_t value :
         {std::int64_t{32'768}, std::int64_t{-32'769}, std::int64_t{65'536}, std::int64_t{1} << 62})
        EXPECT_EQ(NumberOf([&] { Integer::FromWide(value); }), 6) << value;
}

TEST(Integer, OverflowSaysWhatItIs)
{
    try {
        Integer::FromWide(40'000);
        FAIL() << "nothing was thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 6);
        EXPECT_EQ(error.Description(), QStringLiteral("Overflow"));
    }
}

TEST(Integer, OrdersByValue)
{
    EXPECT_LT(Integer::FromWide(-1), Integer());
    EXPECT_GT(Integer::FromWide(2), Integer::FromWide(1));
}
