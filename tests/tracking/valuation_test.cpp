/// What a position is worth and has gained, the totals, and the balance step.

#include "tracking/valuation.h"

#include "account_file.h"

#include <gtest/gtest.h>

namespace
{

TrackerRow Position(const char *shares, const char *average, const char *price)
{
    TrackerRow row;
    row.Symbol = "ACME";
    row.Shares = Single::FromDouble(Currency(shares).ToDouble());
    row.AvrgPrice = Currency(average);
    row.CurrPrice = Currency(price);
    return row;
}

Single Percent(double fraction)
{
    return Single::FromDouble(fraction);
}

/// Basis and PerCentGainToday of a position.
TrackerRow Valued(TrackerRow row)
{
    PortfolioTotals totals;
    ComputeNewBasis(totals, row);
    return row;
}

} // namespace

TEST(ComputeNewBasis, OfALongPositionIsTheRiseOfThePriceTimesTheShares)
{
    const TrackerRow row = Valued(Position("100", "10", "12"));
    EXPECT_EQ(row.Basis, Currency("200")); // (12-10)*100
    EXPECT_EQ(row.PerCentGainToday, Percent(0.2));
}

TEST(ComputeNewBasis, OfAShortPositionIsPositiveWhenThePriceHasFallen)
{
    const TrackerRow row = Valued(Position("-100", "10", "8"));
    EXPECT_EQ(row.Basis, Currency("200")); // (8-10)*-100
    EXPECT_EQ(row.PerCentGainToday, Percent(0.2));
}

TEST(ComputeNewBasis, AtAPriceOfZeroIsMinusTheCostOfThePosition)
{
    EXPECT_EQ(Valued(Position("100", "10", "0")).Basis, Currency("-1000"));
    EXPECT_EQ(Valued(Position("100", "10", "0")).PerCentGainToday, Percent(-1));
}

TEST(ComputeNewBasis, WithoutAnAverageKeepsThePercentage)
{
    TrackerRow row = Position("100", "0", "12");
    row.PerCentGainToday = Percent(0.5);
    EXPECT_EQ(Valued(row).PerCentGainToday, Percent(0.5));
    EXPECT_EQ(Valued(row).Basis, Currency("1200"));
}

TEST(ComputeNewBasis, OfAShortPositionWithoutAnAverageTurnsTheSignEachTime)
{
    TrackerRow row = Position("-100", "0", "12");
    row.PerCentGainToday = Percent(0.5);
    row = Valued(row);
    EXPECT_EQ(row.PerCentGainToday, Percent(-0.5));
    EXPECT_EQ(Valued(row).PerCentGainToday, Percent(0.5));
}

TEST(ComputeNewBasis, OfFractionalSharesIsRoundedToTheTenThousandth)
{
    // 33.3333 as a 32-bit float is 33.333301544...; times 0.0001
    EXPECT_EQ(Valued(Position("33.3333", "10", "10.0001")).Basis, Currency("0.0033"));
    EXPECT_EQ(Valued(Position("0.25", "10", "10.0003")).Basis, Currency("0.0001")); // 0.000075
}

TEST(ComputeNewBasis, AddsToTheSumAndMarksTheRowAsDone)
{
    PortfolioTotals totals;
    TrackerRow first = Position("100", "10", "12");
    TrackerRow second = Position("10", "10", "9");
    ComputeNewBasis(totals, first);
    EXPECT_TRUE(totals.RowBasisDone);
    ComputeNewBasis(totals, second);
    EXPECT_EQ(totals.BasisTotal, Single::FromFloat(190)); // 200 - 10
}

TEST(ComputeNewBasis, LosesWhatLiesBeyondTheSeventhDigitOfTheSum)
{
    PortfolioTotals totals;
    TrackerRow large = Position("1", "0", "12345678");
    TrackerRow small = Position("1", "0", "0.4");
    ComputeNewBasis(totals, large);
    ComputeNewBasis(totals, small);
    EXPECT_EQ(totals.BasisTotal, Single::FromFloat(12345678)); // 12,345,678.4
    // The order of the rows decides what is lost.
    PortfolioTotals other;
    TrackerRow step = Position("1", "0", "0.6");
    for (TrackerRow *row : {&small, &step, &large})
        ComputeNewBasis(other, *row);
    EXPECT_EQ(other.BasisTotal, Single::FromFloat(12345679)); // (0.4 + 0.6) + 12,345,678
}

TEST(ComputeNewBasis, BeyondTheRangeOfMoneyIsAnOverflow)
{
    EXPECT_THROW(Valued(Position("100000000", "0", "100000000")), RuntimeError);
}

TEST(MarketValue, IsPositiveOnBothSides)
{
    EXPECT_EQ(MarketValue(Position("100", "10", "12"), Currency()), Currency("1200"));
    EXPECT_EQ(MarketValue(Position("-100", "10", "8"), Currency()), Currency("800"));
}

TEST(MarketValue, WithoutAPriceOrSharesIsWhatTheCallerSays)
{
    EXPECT_EQ(MarketValue(Position("100", "10", "0"), Currency("7")), Currency("7"));
    EXPECT_EQ(MarketValue(Position("100", "10", "-1"), Currency("7")), Currency("7"));
    EXPECT_EQ(MarketValue(Position("0", "10", "12"), Currency("7")), Currency("7"));
}

TEST(ComputeTotals, SumsEveryColumnOfTheRows)
{
    TrackerRow row;
    row.ProfitLossToday = Currency("1");
    row.ProfitLossToDate = Currency("20");
    row.ActualProfitLoss = Currency("999"); // not summed
    row.TransCostToday = Currency("-3");
    row.TransCostToDate = Currency("-4");
    row.NumberTransToday = Integer::FromWide(5);
    row.NumberTransToDate = Integer::FromWide(6);
    row.InvestedValue = Currency("7.0001");
    row.InvestedToDate = Currency("8");
    PortfolioTotals totals;
    ComputeTotals(totals, row);
    ComputeTotals(totals, row);
    EXPECT_EQ(totals.ProfitLossTodayTotal, Currency("2"));
    EXPECT_EQ(totals.ProfitLossToDateTotal, Currency("40"));
    EXPECT_EQ(totals.ActualProfitLossTotal, Currency("42"));
    EXPECT_EQ(totals.TransCostTodayTotal, Currency("-6"));
    EXPECT_EQ(totals.TransCostToDateTotal, Currency("-8"));
    EXPECT_EQ(int(totals.TransactionsToday), 10);
    EXPECT_EQ(int(totals.TransactionsToDate), 12);
    EXPECT_EQ(totals.InvestedValueTotal, Currency("14.0002"));
    EXPECT_EQ(totals.InvestedToDateTotal, Currency("16"));
}

TEST(ComputeTotals, CountsMoreTransactionsThanOneRowCan)
{
    TrackerRow row;
    row.NumberTransToDate = Integer::FromWide(32767);
    PortfolioTotals totals;
    ComputeTotals(totals, row);
    ComputeTotals(totals, row);
    EXPECT_EQ(int(totals.TransactionsToDate), 65534);
}

TEST(InitializeTotals, LeavesTheBookkeepingOfTheBalance)
{
    PortfolioTotals totals;
    TrackerRow row;
    row.InvestedValue = Currency("7");
    ComputeTotals(totals, row);
    totals.BasisTotal = totals.PriorBasisTotal = Single::FromFloat(5);
    totals.TransCost = totals.RealizedPending = Currency("3");
    InitializeTotals(totals);
    EXPECT_TRUE(totals.InvestedValueTotal.IsZero());
    EXPECT_EQ(totals.BasisTotal, Single::FromFloat(5));
    EXPECT_EQ(totals.PriorBasisTotal, Single::FromFloat(5));
    EXPECT_EQ(totals.TransCost, Currency("3"));
    EXPECT_EQ(totals.RealizedPending, Currency("3"));
}

namespace
{

struct BalanceStep
{
    AccountState account;
    PortfolioTotals totals;
    Currency undoBalance;

    void Run() { ComputePortfolioBalance(account, totals, undoBalance); }
};

} // namespace

TEST(ComputePortfolioBalance, MovesByTheChangeOfTheGains)
{
    BalanceStep step;
    step.account.AccountBalance = Currency("10000");
    step.totals.BasisTotal = Single::FromFloat(250);
    step.totals.PriorBasisTotal = Single::FromFloat(200);
    step.Run();
    EXPECT_EQ(step.account.AccountBalance, Currency("10050"));
    EXPECT_EQ(step.account.DayBalance, Currency("10050"));
    EXPECT_EQ(step.undoBalance, Currency("10050"));
    EXPECT_EQ(step.totals.PriorBasisTotal, Single::FromFloat(250));
    step.Run(); // nothing has changed since
    EXPECT_EQ(step.account.AccountBalance, Currency("10050"));
}

TEST(ComputePortfolioBalance, TakesTheCostOfThePosting)
{
    BalanceStep step;
    step.account.AccountBalance = Currency("10000");
    step.totals.TransCost = Currency("-9.95");
    step.Run();
    EXPECT_EQ(step.account.AccountBalance, Currency("9990.05"));
}

TEST(ComputePortfolioBalance, TakesARealizedGainOutOfTheGainsOnce)
{
    BalanceStep step;
    step.totals.BasisTotal = Single::FromFloat(300);
    step.totals.PriorBasisTotal = Single::FromFloat(300);
    step.totals.RealizedPending = Currency("75");
    step.Run();
    EXPECT_EQ(step.account.AccountBalance, Currency("0"));
    EXPECT_EQ(step.totals.PriorBasisTotal, Single::FromFloat(225));
    EXPECT_TRUE(step.totals.RealizedPending.IsZero());
}

TEST(ComputePortfolioBalance, InheritsTheRoundingOfTheSum)
{
    BalanceStep step;
    step.totals.BasisTotal = Single::FromFloat(12345679.0f);
    step.totals.PriorBasisTotal = Single::FromFloat(0.25f);
    step.Run();
    EXPECT_EQ(step.account.AccountBalance, Currency("12345679")); // 12,345,678.75 has 10 digits
}

TEST(ComputePortfolioBalance, ThatOverflowsChangesNothing)
{
    BalanceStep step;
    step.account.AccountBalance = Currency::FromUnits(INT64_MAX);
    step.account.DayBalance = Currency("1");
    step.totals.BasisTotal = Single::FromFloat(1);
    step.totals.RealizedPending = Currency("2");
    EXPECT_THROW(step.Run(), RuntimeError);
    EXPECT_EQ(step.account.AccountBalance, Currency::FromUnits(INT64_MAX));
    EXPECT_EQ(step.account.DayBalance, Currency("1"));
    EXPECT_TRUE(step.totals.PriorBasisTotal.IsZero());
    EXPECT_EQ(step.totals.RealizedPending, Currency("2"));
}

TEST(RollDayForward, FoldsTheProfitOfTodayAndBeginsTheDayAtZero)
{
    TrackerRow row = Position("100", "10", "12");
    row.ProfitLossToday = Currency("5");
    row.ProfitLossToDate = Currency("20");
    row.TransCostToday = Currency("-3");
    row.TransCostToDate = Currency("-4");
    row.NumberTransToday = Integer::FromWide(2);
    row.NumberTransToDate = Integer::FromWide(9);
    row.InvestedToDate = Currency("1000");
    TrackerRow expected = row;
    expected.ProfitLossToday = expected.TransCostToday = Currency();
    expected.NumberTransToday = Integer();
    expected.ProfitLossToDate = Currency("25");
    RollDayForward(row);
    EXPECT_TRUE(row == expected);
    RollDayForward(row); // a second time changes nothing
    EXPECT_TRUE(row == expected);
}

TEST(RecomputeTotals, LeavesTheRowsAsTheyAre)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    account.Execute("INSERT INTO DailyTracker (Symbol, Shares, CurrPrice, InvestedValue) "
                    "VALUES ('ACME', 100, 120000, 5), ('BOLT', 1, 1, 7)");
    TrackerRecordset rows;
    rows.Open(account, "ORDER BY Symbol");
    PortfolioTotals totals;
    totals.InvestedValueTotal = Currency("99");
    RecomputeTotals(totals, rows);
    EXPECT_EQ(totals.InvestedValueTotal, Currency("0.0012"));
    EXPECT_EQ(rows.At(0).InvestedValue, Currency("0.0005"));
    EXPECT_TRUE(rows.AtEnd());
}
