#include "test_account.h"

#include "transactions/lot_consumption.h"

#include <gtest/gtest.h>

namespace
{

LotSale SellLots(TestAccount &account, const QString &symbol, double count, const char *price,
                 const char *average = "0")
{
    account.gRsLots().BeginTrans();
    return ComputePriceLong(account.gRsLots(), symbol, Single::FromDouble(count), Currency(price),
                            Currency(average));
}

LotSale CoverLots(TestAccount &account, const QString &symbol, double count, const char *price,
                  const char *average = "0")
{
    account.gRsLots().BeginTrans();
    return ComputePriceShort(account.gRsLots(), symbol, Single::FromDouble(count), Currency(price),
                             Currency(average));
}

TestAccount TwoLots()
{
    return TestAccount()
        .Lot("ACME", "100", "10", "2026-01-05")
        .Lot("ACME", "100", "20", "2026-02-02");
}

TestAccount TwoShortLots()
{
    return TestAccount()
        .Lot("ACME", "-100", "50", "2026-01-05")
        .Lot("ACME", "-100", "60", "2026-02-02");
}

} // namespace

TEST(ComputePriceLong, TakesTheOldestLotFirstAndDeletesIt)
{
    TestAccount account = TwoLots();
    const LotSale sale = SellLots(account, "ACME", 150, "30");
    EXPECT_EQ(sale.RealizedGain, Currency("2500")); // (30-10)*100 + (30-20)*50
    EXPECT_EQ(sale.AverageCost, Currency("20"));
    EXPECT_EQ(account.Lots("ACME"), "50 @ 20.0000");
}

TEST(ComputePriceLong, DeletesALotThatIsSoldExactly)
{
    TestAccount account = TwoLots();
    const LotSale sale = SellLots(account, "ACME", 100, "30");
    EXPECT_EQ(sale.RealizedGain, Currency("2000")); // (30-10)*100
    EXPECT_EQ(account.Lots("ACME"), "100 @ 20.0000");
    account.gRsLots().CommitTrans();
    EXPECT_EQ(account.StoredLots("ACME"), "#2 100 @ 20.0000");
}

TEST(ComputePriceLong, LeavesNoLotAndThePriorAverageWhenAllIsSold)
{
    TestAccount account = TwoLots();
    const LotSale sale = SellLots(account, "ACME", 200, "30", "15");
    EXPECT_EQ(sale.RealizedGain, Currency("3000")); // (30-10)*100 + (30-20)*100
    EXPECT_EQ(sale.AverageCost, Currency("15"));
    EXPECT_EQ(account.Lots("ACME"), "");
}

TEST(ComputePriceLong, DropsSharesBeyondTheOpenLots)
{
    TestAccount account = TwoLots();
    const LotSale sale = SellLots(account, "ACME", 1000, "30", "15");
    EXPECT_EQ(sale.RealizedGain, Currency("3000"));
    EXPECT_EQ(sale.AverageCost, Currency("15"));
    EXPECT_EQ(account.Lots("ACME"), "");
}

TEST(ComputePriceLong, WithoutLotsGainsNothing)
{
    TestAccount account = TwoLots();
    const LotSale sale = SellLots(account, "ZORG", 10, "30", "12");
    EXPECT_EQ(sale.RealizedGain, Currency());
    EXPECT_EQ(sale.AverageCost, Currency("12"));
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000; 100 @ 20.0000");
}

TEST(ComputePriceLong, AveragesTheLotsThatAreLeft)
{
    TestAccount account = TwoLots();
    const LotSale sale = SellLots(account, "ACME", 40, "5");
    EXPECT_EQ(sale.RealizedGain, Currency("-200")); // (5-10)*40
    EXPECT_EQ(sale.AverageCost, Currency("16.25")); // (60*10 + 100*20) / 160
    EXPECT_EQ(account.Lots("ACME"), "60 @ 10.0000; 100 @ 20.0000");
}

TEST(ComputePriceLong, TakesALotAddedSinceTheLastRequeryLast)
{
    TestAccount account = TwoLots();
    account.gRsLots().BeginTrans();
    account.gRsLots().Add(
        "ACME", {0, Single::FromDouble(100), Currency("1"), QDate(2020, 1, 1), QTime(9, 0)});
    const LotSale first = SellLots(account, "ACME", 50, "30");
    EXPECT_EQ(first.RealizedGain, Currency("1000")); // (30-10)*50: not the one of 2020
    EXPECT_EQ(account.Lots("ACME"), "100 @ 1.0000; 50 @ 10.0000; 100 @ 20.0000");
    const LotSale second = SellLots(account, "ACME", 50, "30");
    EXPECT_EQ(second.RealizedGain, Currency("1450")); // (30-1)*50: requeried by the first sale
}

TEST(ComputePriceLong, RemovesAnEmptyLotOfAnotherSymbol)
{
    TestAccount account = TwoLots();
    account.ExecuteElsewhere("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, "
                             "Time) VALUES ('ZORG', 0, 10000, '2026-01-05', '09:30:00.000')");
    account.gRsLots().Reload();
    EXPECT_EQ(account.Lots("ZORG"), "0 @ 1.0000");
    SellLots(account, "ACME", 10, "30");
    EXPECT_EQ(account.Lots("ZORG"), "");
    account.gRsLots().CommitTrans();
    EXPECT_EQ(account.StoredLots("ZORG"), "");
}

TEST(ComputePriceLong, AnEmptyLotThatARollbackGaveBackGoesWithTheNextSale)
{
    TestAccount account = TwoLots().Lot("ZORG", "0", "1", "2026-01-05");
    SellLots(account, "ACME", 10, "30");
    account.gRsLots().RollbackTrans();
    EXPECT_EQ(account.Lots("ZORG"), "0 @ 1.0000");
    SellLots(account, "NONE", 10, "30");
    EXPECT_EQ(account.Lots("ZORG"), "");
}

TEST(ComputePriceLong, RoundsTheGainOfEachLotToTheTenThousandth)
{
    TestAccount account = TestAccount()
                              .Lot("FUND", "33.3333", "10.0001", "2026-01-05")
                              .Lot("FUND", "33.3333", "10.0002", "2026-01-06");
    // 0.0001 * 33.33330154 = 0.00333... -> 0.0033; no gain on the second lot
    EXPECT_EQ(SellLots(account, "FUND", 40, "10.0002").RealizedGain, Currency("0.0033"));
}

TEST(ComputePriceLong, ThatOverflowsThrowsNumberSix)
{
    TestAccount account = TestAccount().Lot("ACME", "1000000", "1", "2026-01-05");
    try {
        SellLots(account, "ACME", 1000000, "900000000000");
        FAIL() << "nothing was thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 6);
    }
    account.gRsLots().RollbackTrans();
    EXPECT_EQ(account.Lots("ACME"), "1000000 @ 1.0000");
}

TEST(ComputePriceShort, CoversBothLots)
{
    TestAccount account = TwoShortLots();
    const LotSale cover = CoverLots(account, "ACME", 200, "40", "55");
    EXPECT_EQ(cover.RealizedGain, Currency("-3000")); // -((50-40)*100 + (60-40)*100)
    EXPECT_EQ(cover.AverageCost, Currency("55"));
    EXPECT_EQ(account.Lots("ACME"), "");
}

TEST(ComputePriceShort, LowersTheOlderLotOnly)
{
    TestAccount account = TwoShortLots();
    const LotSale cover = CoverLots(account, "ACME", 50, "40");
    EXPECT_EQ(cover.RealizedGain, Currency("-500"));   // -(50-40)*50
    EXPECT_EQ(cover.AverageCost, Currency("56.6667")); // (50*50 + 60*100) / 150
    EXPECT_EQ(account.Lots("ACME"), "-50 @ 50.0000; -100 @ 60.0000");
}

TEST(ComputePriceShort, KeepsTheSignOfWhatIsLeft)
{
    TestAccount account = TestAccount().Lot("ACME", "-100", "50", "2026-01-05");
    const LotSale cover = CoverLots(account, "ACME", 40, "30");
    EXPECT_EQ(cover.RealizedGain, Currency("-800")); // UnitGain 20 times -40
    EXPECT_EQ(account.Lots("ACME"), "-60 @ 50.0000");
}

TEST(ComputePriceShort, AtALossComesBackPositive)
{
    TestAccount account = TwoShortLots();
    EXPECT_EQ(CoverLots(account, "ACME", 100, "70").RealizedGain, Currency("2000"));
}

TEST(ComputePriceShort, DropsSharesBeyondTheOpenLots)
{
    TestAccount account = TwoShortLots();
    EXPECT_EQ(CoverLots(account, "ACME", 900, "40").RealizedGain, Currency("-3000"));
    EXPECT_EQ(account.Lots("ACME"), "");
}

TEST(ComputePriceShort, CrossesFromOneLotIntoTheNext)
{
    TestAccount account = TwoShortLots();
    const LotSale cover = CoverLots(account, "ACME", 150, "40");
    EXPECT_EQ(cover.RealizedGain, Currency("-2000")); // -((50-40)*100 + (60-40)*50)
    EXPECT_EQ(cover.AverageCost, Currency("60"));
    EXPECT_EQ(account.Lots("ACME"), "-50 @ 60.0000");
}
