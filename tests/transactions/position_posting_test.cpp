#include "test_account.h"

#include <gtest/gtest.h>

namespace
{

/// Two lots that average 15, at a price of 15.
TestAccount TwoLots()
{
    return TestAccount()
        .Row("ACME", "200", "15")
        .Lot("ACME", "100", "10", "2026-01-05")
        .Lot("ACME", "100", "20", "2026-02-02");
}

} // namespace

TEST(LongPosition, ABuyOnAFlatRowCostsTheBalanceItsCommissionOnly)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5").Balance("1000");
    EXPECT_EQ(account.Buy("ACME", "100", "10"), PostingOutcome::Posted);
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.Shares.ToDouble(), 100);
    EXPECT_EQ(row.AvrgPrice, Currency("10"));
    EXPECT_EQ(row.CurrPrice, Currency("10"));
    EXPECT_EQ(row.Basis, Currency());
    EXPECT_EQ(row.ProfitLossToday, Currency("-5"));
    EXPECT_EQ(row.ActualProfitLoss, Currency("-5"));
    EXPECT_EQ(row.TransCostToday, Currency("-5"));
    EXPECT_EQ(row.TransCostToDate, Currency("-5"));
    EXPECT_EQ(row.NumberTransToday.Value(), 1);
    EXPECT_EQ(row.NumberTransToDate.Value(), 1);
    EXPECT_EQ(row.InvestedValue, Currency("1000"));
    EXPECT_EQ(row.InvestedToDate, Currency("1005")); // 100*10 + 5
    EXPECT_EQ(row.TransDate, QDate(2026, 3, 2));
    EXPECT_EQ(row.Time, QTime(10, 15));
    EXPECT_EQ(account.State().AccountBalance, Currency("995"));
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000");
}

TEST(LongPosition, ActualProfitLossAddsWhatTheEarlierDaysBrought)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5");
    account.Rows().Find("ACME");
    account.Rows().Edit().ProfitLossToDate = Currency("100");
    account.Buy("ACME", "100", "10");
    EXPECT_EQ(account.Of("ACME").ActualProfitLoss, Currency("95")); // -5 + 100
}

TEST(LongPosition, ASecondBuyAveragesOverTheRowAndValuesTheOldPosition)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "10").Lot("ACME", "100", "10", "2026-01-05");
    account.Buy("ACME", "100", "12");
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.AvrgPrice, Currency("11")); // (100*10 + 100*12) / 200
    EXPECT_EQ(row.Basis, Currency("200"));    // (12-10)*100, the old position
    EXPECT_FLOAT_EQ(row.PerCentGainToday.Value(), 0.2f);
    EXPECT_EQ(row.InvestedValue, Currency("2400"));  // 200*12
    EXPECT_EQ(row.InvestedToDate, Currency("1200")); // this purchase
    EXPECT_EQ(account.State().AccountBalance, Currency("200"));
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000; 100 @ 12.0000");
}

TEST(LongPosition, ASaleOfAllSharesLeavesAFlatRowInTheTable)
{
    TestAccount account = TwoLots().Commission("5");
    account.Sell("ACME", "200", "18");
    const TrackerRow &row = account.Of("ACME");
    EXPECT_TRUE(row.Shares.IsZero());
    EXPECT_EQ(row.AvrgPrice, Currency());
    EXPECT_EQ(row.Basis, Currency());
    EXPECT_EQ(row.InvestedValue, Currency());
    EXPECT_EQ(row.CurrPrice, Currency("18"));
    EXPECT_TRUE(row.PerCentGainToday.IsZero());
    EXPECT_EQ(row.ProfitLossToday, Currency("595")); // (18-10)*100 + (18-20)*100 - 5
    EXPECT_EQ(row.InvestedToDate, Currency("5"));    // its commission, no proceeds
    EXPECT_EQ(account.Lots("ACME"), "");
    account.Commit();
    EXPECT_EQ(account.StoredLots("ACME"), "");
}

TEST(LongPosition, AClosedRowHasNoGainEvenWhereItsAverageDisagreesWithTheLots)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "12").Lot("ACME", "100", "10", "2026-01-05");
    account.Sell("ACME", "100", "15");
    EXPECT_EQ(account.Of("ACME").ProfitLossToday, Currency("500")); // by the lot
    EXPECT_EQ(account.Of("ACME").Basis, Currency());                // not (15-12)*100 less 500
}

TEST(LongPosition, ASaleOfTheCheapestLotRaisesTheAverageToThatOfTheLotsLeft)
{
    TestAccount account = TwoLots();
    account.Sell("ACME", "150", "18");
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.AvrgPrice, Currency("20"));
    EXPECT_EQ(row.Shares.ToDouble(), 50);
    EXPECT_EQ(row.ProfitLossToday, Currency("700")); // (18-10)*100 + (18-20)*50
    EXPECT_EQ(row.Basis, Currency("-100"));          // (18-15)*200 less 700
    EXPECT_TRUE(row.PerCentGainToday.IsZero());
    EXPECT_EQ(row.InvestedValue, Currency("900")); // 50*18
    EXPECT_EQ(account.Lots("ACME"), "50 @ 20.0000");
}

TEST(LongPosition, TheRealizedGainOfASaleStaysInTheBalance)
{
    TestAccount account = TwoLots().Balance("10000");
    account.Sell("ACME", "150", "18");
    // the walk counts the old position: (18-15)*200
    EXPECT_EQ(account.State().AccountBalance, Currency("10600"));
    EXPECT_EQ(account.Totals().BasisTotal.ToDouble(), 600);
    EXPECT_EQ(account.Totals().PriorBasisTotal.ToDouble(), -100); // 600 less the 700 realized
    EXPECT_TRUE(account.Totals().RealizedPending.IsZero());
}

TEST(LongPosition, AReinvestmentPostsLikeAPurchase)
{
    TestAccount account = TestAccount()
                              .Row("FUND", "100", "10")
                              .Lot("FUND", "100", "10", "2026-01-05")
                              .SecurityType("Mutual Fund")
                              .Commission("5");
    account.Post(Action::DividendReinvestment, "FUND", "2.5", "12");
    const TrackerRow &row = account.Of("FUND");
    EXPECT_EQ(row.Shares.ToDouble(), 102.5);
    EXPECT_EQ(row.AvrgPrice, Currency("10.0488")); // (1000 + 30) / 102.5
    EXPECT_EQ(row.TransCostToday, Currency());     // a fund is never charged
    EXPECT_EQ(row.ProfitLossToday, Currency());
    EXPECT_EQ(row.InvestedToDate, Currency("30"));
    EXPECT_EQ(account.Lots("FUND"), "100 @ 10.0000; 2.5 @ 12.0000");
}

TEST(LongPosition, ASaleBeyondThePositionEndsBelowZeroAndKeepsTheAverage)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "10").Lot("ACME", "100", "10", "2026-01-05");
    EXPECT_EQ(account.Sell("ACME", "200", "12"), PostingOutcome::Posted);
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.Shares.ToDouble(), -100);
    EXPECT_EQ(row.AvrgPrice, Currency("10"));
    EXPECT_EQ(row.ProfitLossToday, Currency("200")); // (12-10)*100, what the lots covered
    EXPECT_TRUE(account.Boxes().empty());
    EXPECT_EQ(account.Lots("ACME"), "");
}

TEST(LongPosition, AFractionThatMissesZeroByTheRoundingOfASingleStaysOpen)
{
    TestAccount account = TestAccount().Row("FUND").SecurityType("Mutual Fund");
    account.Buy("FUND", "1000000.1", "10");  // the Single nearest to it is 1000000.125
    account.Buy("FUND", "0.1", "10");        // 1000000.225 is stored as 1000000.25
    account.Sell("FUND", "1000000.2", "10"); // the Single of the text is 1000000.1875
    EXPECT_EQ(account.Of("FUND").Shares.ToDouble(), 0.0625);
    EXPECT_FALSE(account.Of("FUND").AvrgPrice.IsZero());
}

TEST(LongPosition, InvestedToDateTakesThePriceAsShown)
{
    TestAccount account = TestAccount().Row("ACME").Queue(Answer::Yes);
    account.Buy("ACME", "100", "1234.56");
    // shown as 1,234.56010: the count times the shown text
    EXPECT_EQ(account.Of("ACME").InvestedToDate, Currency("123456.01"));
    EXPECT_EQ(account.Of("ACME").CurrPrice, Currency("1234.5601"));
    EXPECT_EQ(account.Lots("ACME"), "100 @ 1234.5601");
}

TEST(ShortPosition, ASaleOnAFlatRowOpensANegativeLot)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5");
    account.SellShort("ACME", "100", "50");
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.Shares.ToDouble(), -100);
    EXPECT_EQ(row.AvrgPrice, Currency("50"));
    EXPECT_EQ(row.CurrPrice, Currency("50"));
    EXPECT_EQ(row.Basis, Currency());
    EXPECT_EQ(row.InvestedValue, Currency("5000"));
    EXPECT_EQ(row.InvestedToDate, Currency("5005"));
    EXPECT_EQ(row.ProfitLossToday, Currency("-5"));
    EXPECT_EQ(row.TransCostToday, Currency("-5"));
    EXPECT_EQ(account.Lots("ACME"), "-100 @ 50.0000");
    EXPECT_EQ(account.State().AccountBalance, Currency("-5")); // the proceeds never enter it
}

TEST(ShortPosition, ASecondSaleAverages)
{
    TestAccount account = TestAccount().Row("ACME");
    account.SellShort("ACME", "100", "50");
    account.SellShort("ACME", "100", "60");
    EXPECT_EQ(account.Of("ACME").AvrgPrice, Currency("55"));
    EXPECT_EQ(account.Of("ACME").Shares.ToDouble(), -200);
    EXPECT_EQ(account.Of("ACME").Basis, Currency("-1000")); // (60-50)*-100, the old position
}

TEST(ShortPosition, ACoverOfAllClosesTheRow)
{
    TestAccount account = TestAccount().Row("ACME");
    account.SellShort("ACME", "100", "50");
    account.SellShort("ACME", "100", "60");
    account.Cover("ACME", "200", "40");
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.ProfitLossToday, Currency("3000")); // (50-40)*100 + (60-40)*100
    EXPECT_TRUE(row.Shares.IsZero());
    EXPECT_EQ(row.AvrgPrice, Currency());
    EXPECT_EQ(row.Basis, Currency());
    EXPECT_EQ(row.InvestedToDate, Currency("11000")); // the two sales, nothing for the cover
    EXPECT_EQ(account.Lots("ACME"), "");
}

TEST(ShortPosition, ACoverOfAPartTakesTheAverageOfTheShortLotsLeft)
{
    TestAccount account = TestAccount().Row("ACME");
    account.SellShort("ACME", "100", "50");
    account.SellShort("ACME", "100", "60");
    account.Cover("ACME", "50", "40");
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(account.Lots("ACME"), "-50 @ 50.0000; -100 @ 60.0000");
    EXPECT_EQ(row.AvrgPrice, Currency("56.6667"));   // (50*50 + 60*100) / 150
    EXPECT_EQ(row.ProfitLossToday, Currency("500")); // (50-40)*50
    EXPECT_EQ(row.Basis, Currency("2500"));          // (40-55)*-200 less 500
    EXPECT_EQ(row.InvestedValue, Currency("6000"));  // 150*40
}

TEST(ShortPosition, ThatGainsHasAPositivePercentage)
{
    TestAccount account =
        TestAccount().Row("ACME", "-100", "10").Lot("ACME", "-100", "10", "2026-01-05").Row("ZORG");
    account.Rows().Find("ACME");
    account.Rows().Edit().CurrPrice = Currency("8");
    account.Buy("ZORG", "1", "1");                                      // the walk values every row
    EXPECT_EQ(account.Of("ACME").Basis, Currency("200"));               // (8-10)*-100
    EXPECT_FLOAT_EQ(account.Of("ACME").PerCentGainToday.Value(), 0.2f); // 2/10
}
