#include "test_account.h"

#include <gtest/gtest.h>

TEST(BalanceStep, SumsTheGainsAsSinglesInTheOrderOfTheRows)
{
    // Row by row: 16,777,216 (2^24), then 1, then 1. As a Single each 1 is lost; exactly, and in
    // another order, the sum would be 16,777,218.
    TestAccount account = TestAccount()
                              .Row("AAA", "1", "1", "16777217")
                              .Row("BBB", "1", "1", "2")
                              .Row("CCC", "1", "1", "2")
                              .Row("ZZZ");
    account.Totals().PriorBasisTotal = Single();
    account.Buy("ZZZ", "1", "1");
    EXPECT_EQ(account.Totals().BasisTotal.ToDouble(), 16777216.0);
    EXPECT_EQ(account.State().AccountBalance, Currency("16777216")); // it inherits the rounding
}

TEST(BalanceStep, TheSameRowsInAnotherOrderGiveAnotherSum)
{
    TestAccount account = TestAccount()
                              .Row("AAA", "1", "1", "2")
                              .Row("BBB", "1", "1", "2")
                              .Row("CCC", "1", "1", "16777217")
                              .Row("ZZZ");
    account.Totals().PriorBasisTotal = Single();
    account.Buy("ZZZ", "1", "1");
    EXPECT_EQ(account.Totals().BasisTotal.ToDouble(), 16777218.0); // 1 + 1 + 16,777,216
    EXPECT_EQ(account.State().AccountBalance, Currency("16777218"));
}

TEST(BalanceStep, TakesTheDifferenceInSingleArithmetic)
{
    TestAccount account = TestAccount().Row("AAA", "1000", "1", "1235.5678").Row("ZZZ");
    account.Totals().PriorBasisTotal = Single::FromDouble(0.1);
    account.Buy("ZZZ", "1", "1");
    // Basis 1,234,567.8; the Singles around lie 0.125 apart: 1,234,567.75. Less 0.1 -> 567.625
    EXPECT_EQ(account.Totals().BasisTotal.ToDouble(), 1234567.75);
    EXPECT_EQ(account.State().AccountBalance, Currency("1234567.625"));
}

TEST(BalanceStep, APurchaseAmountNeverEntersTheBalance)
{
    TestAccount account = TestAccount().Row("ACME").Balance("100");
    account.Buy("ACME", "1000", "400");
    EXPECT_EQ(account.State().AccountBalance, Currency("100"));
}

TEST(BalanceStep, MovesByTheGainOfTheTradedRowAtItsPrice)
{
    TestAccount account = TestAccount()
                              .Row("ACME", "100", "10", "11")
                              .Lot("ACME", "100", "10", "2026-01-05")
                              .Commission("7");
    account.Buy("ACME", "1", "13");
    EXPECT_EQ(account.State().AccountBalance, Currency("193")); // (13-11)*100 - 7
    EXPECT_EQ(account.State().DayBalance, Currency("193"));
    EXPECT_EQ(account.UndoRecords().UndoLast.Balance, Currency("193"));
}

TEST(BalanceStep, ARowThatASaleClosedStillCountsWithItsOldPosition)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "10").Lot("ACME", "100", "10", "2026-01-05");
    account.Sell("ACME", "100", "12");
    EXPECT_EQ(account.Totals().BasisTotal.ToDouble(), 200);
    EXPECT_TRUE(account.Totals().PriorBasisTotal.IsZero()); // 200 less the 200 realized
    EXPECT_EQ(account.State().AccountBalance, Currency("200"));
}

TEST(BalanceStep, CountsEachRowOnce)
{
    TestAccount account = TestAccount()
                              .Row("ACME", "100", "10", "12")
                              .Lot("ACME", "100", "10", "2026-01-05")
                              .Row("ZORG", "10", "5", "6");
    account.Totals().PriorBasisTotal = Single();
    account.Buy("ACME", "100", "12");
    EXPECT_EQ(account.Totals().BasisTotal.ToDouble(), 210); // (12-10)*100 + (6-5)*10
}

TEST(BalanceStep, LeavesTheTotalsOfAllRowsBehind)
{
    TestAccount account = TestAccount().Row("ACME").Row("ZORG", "10", "5").Commission("3");
    account.Rows().Find("ZORG");
    account.Rows().Edit().ProfitLossToDate = Currency("20");
    account.Rows().Edit().NumberTransToDate = Integer::FromWide(4);
    account.Buy("ACME", "100", "10");
    EXPECT_EQ(account.Totals().ProfitLossTodayTotal, Currency("-3"));
    EXPECT_EQ(account.Totals().ProfitLossToDateTotal, Currency("20"));
    EXPECT_EQ(account.Totals().ActualProfitLossTotal, Currency("17"));
    EXPECT_EQ(account.Totals().TransactionsToday, 1);
    EXPECT_EQ(account.Totals().TransactionsToDate, 5);
    EXPECT_EQ(account.Totals().InvestedToDateTotal, Currency("1003"));
}
