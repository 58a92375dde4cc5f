#include "test_account.h"

#include "transactions/commission.h"

#include <gtest/gtest.h>

namespace
{

AccountState Style(const char *style, const char *cost, const char *perShare, double shares = 0)
{
    AccountState account;
    account.CommissionStyle = QString::fromLatin1(style);
    account.CommissionCost = Currency(cost);
    account.CommissionPerShare = Currency(perShare);
    account.CommissionShares = Single::FromDouble(shares);
    return account;
}

Currency Of(const AccountState &account, double shares, const char *amount = "0")
{
    return ComputeCommission(account, Single::FromDouble(shares), Currency(amount));
}

} // namespace

TEST(ComputeCommission, GivesTheExamplesOfTheSettingsScreen)
{
    EXPECT_EQ(Of(Style("Style1", "14.95", "0.02"), 1000), Currency("34.95"));       // + 20
    EXPECT_EQ(Of(Style("Style2", "14.95", "0.01", 1000), 3000), Currency("44.95")); // + 30
    EXPECT_EQ(Of(Style("Style3", "14.95", "0.01", 1000), 3000), Currency("34.95")); // + 20
    EXPECT_EQ(Of(Style("Style4", "14.95", "0.01", 1000), 900), Currency("14.95"));
    EXPECT_EQ(Of(Style("Style4", "14.95", "0.01", 1000), 1300), Currency("14.95")); // > 13.00
    EXPECT_EQ(Of(Style("Style4", "14.95", "0.01", 1000), 2000), Currency("20"));
    EXPECT_EQ(Of(Style("Style5", "0.002", "5"), 100, "3500"), Currency("12")); // 7 + 5
}

TEST(ComputeCommission, IsZeroWithoutAStyle)
{
    EXPECT_EQ(Of(Style("n/a", "14.95", "0.02"), 1000, "3500"), Currency());
    EXPECT_EQ(Of(Style("", "14.95", "0.02"), 1000, "3500"), Currency());
    EXPECT_EQ(Of(Style("style1", "14.95", "0.02"), 1000, "3500"), Currency());
    EXPECT_EQ(Of(AccountState(), 1000, "3500"), Currency());
}

TEST(ComputeCommission, IsFlatAtExactlyTheThreshold)
{
    for (const char *style : {"Style2", "Style3", "Style4"}) {
        EXPECT_EQ(Of(Style(style, "14.95", "0.1", 1000), 1000), Currency("14.95")) << style;
        EXPECT_EQ(Of(Style(style, "14.95", "0.1", 1000), 999.5), Currency("14.95")) << style;
    }
    // One share more: 1001 * 0.1 = 100.10 and 1 * 0.1 = 0.10
    EXPECT_EQ(Of(Style("Style2", "14.95", "0.1", 1000), 1001), Currency("115.05"));
    EXPECT_EQ(Of(Style("Style3", "14.95", "0.1", 1000), 1001), Currency("15.05"));
    EXPECT_EQ(Of(Style("Style4", "14.95", "0.1", 1000), 1001), Currency("100.1"));
}

TEST(ComputeCommission, OfTheFourthStyleStaysFlatWhileTheRateIsBelowIt)
{
    EXPECT_EQ(Of(Style("Style4", "14.95", "0.01", 100), 1000), Currency("14.95")); // 10 < 14.95
    EXPECT_EQ(Of(Style("Style4", "20", "0.01", 100), 2000), Currency("20"));       // equal
}

TEST(ComputeCommission, OfTheFifthStyleIsZeroUntilThePriceIsKnown)
{
    const AccountState account = Style("Style5", "0.002", "5");
    EXPECT_EQ(Of(account, 100, "0"), Currency());
    EXPECT_EQ(Of(account, 100, "-1"), Currency());
    EXPECT_EQ(Of(account, 100, "1000"), Currency("7")); // 2 + 5
    EXPECT_EQ(Of(account, 0, "1000"), Currency("7"));   // the count does not matter
}

TEST(ComputeCommission, OnlyTheFifthStyleLooksAtTheAmount)
{
    EXPECT_EQ(Of(Style("Style1", "5", "0"), 10, "0"), Of(Style("Style1", "5", "0"), 10, "9999"));
}

TEST(ComputeCommission, RoundsTheProductBeforeItIsAdded)
{
    // 0.0001 * 0.5 is not quite a tie: the double of 0.0001 lies above it, 0.00005 -> 0.0001
    EXPECT_EQ(Of(Style("Style1", "1", "0.0001"), 0.5), Currency("1.0001"));
    // factor 0.0001 on 0.5000 in money: 0.00005 is a tie, even is 0
    EXPECT_EQ(Of(Style("Style5", "0.0001", "1"), 1, "0.5"), Currency("1"));
}

TEST(ComputeCommission, ThatDoesNotFitIsAnOverflow)
{
    try {
        Of(Style("Style1", "922337203685477", "1"), 1000);
        FAIL() << "nothing was thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 6);
    }
}
