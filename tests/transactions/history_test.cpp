#include "test_account.h"

#include "transactions/history.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

} // namespace

TEST(PostHistoryEntry, WritesOneRowForEachTradeInItsOwnWords)
{
    TestAccount account = TestAccount().Row("ACME").Row("ZORG").Commission("5");
    account.Buy("ACME", "100", "10");
    account.Sell("ACME", "100", "12");
    account.SellShort("ZORG", "10", "50");
    account.Cover("ZORG", "10", "40");
    account.SecurityType("Mutual Fund").Row("FUND");
    account.Post(Action::DividendReinvestment, "FUND", "2.5", "12");
    const Lines expected = {
        "ACME|ACME Inc.|Bought|100|-5|10|-1005|2026-03-02",     // -100*10 - 5
        "ACME|ACME Inc.|Sold|-100|-5|12|1195|2026-03-02",       // 100*12 - 5
        "ZORG|ZORG Inc.| Short  Sale|-10|-5|50|495|2026-03-02", // 10*50 - 5
        "ZORG|ZORG Inc.| Short Cover|10|-5|40|-405|2026-03-02", // -10*40 - 5
        "FUND|FUND Inc.|Reinvestment|2.5|0|12|-30|2026-03-02",  // -2.5*12
    };
    EXPECT_EQ(account.History(), expected);
}

TEST(PostHistoryEntry, WritesOneRowForEachCashActionWithABlankAsItsSymbol)
{
    TestAccount account = TestAccount().Balance("1000").AnswerRest(Answer::Yes);
    account.Cash(Action::Deposit, "1,000.50");
    account.Cash(Action::CashWithdrawal, "100");
    account.Cash(Action::BalanceAdjustment, "2000");
    account.Cash(Action::DividendReceived, "12.3456");
    const Lines expected = {
        " |Account Deposit|Deposit|0|0|0|1000.5|2026-03-02",
        " |Cash Withdrawal|Withdrawal|0|0|0|-100|2026-03-02",
        " |Balance Adjustment|Adjustment|0|0|0|99.5|2026-03-02", // 2000 - 1900.50
        " |Dividend Received|Dividend|0|0|0|12.3456|2026-03-02",
    };
    EXPECT_EQ(account.History(), expected);
}

TEST(PostHistoryEntry, WritesNothingForASplit)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "50").Lot("ACME", "100", "50", "2026-01-05");
    account.Split("ACME", "2", "1");
    EXPECT_EQ(account.History(), Lines());
}

TEST(PostHistoryEntry, TakesTheNameOfTheRowNotThatOfTheScreen)
{
    TestAccount account = TestAccount().Row("ACME");
    TransactionEntry entry = account.EntryOf(Action::Buy, "ACME", "1", "10");
    entry.Name = "Typed over";
    account.Post(entry);
    EXPECT_EQ(account.History()[0].substr(0, 15), "ACME|ACME Inc.|");
}

TEST(PostHistoryEntry, KeepsApostrophesAccentsCaseAndPercentSigns)
{
    const char *symbols[] = {"O'NEIL", "acme", "ACME", "50%", "%1", "ÉLAN", "A;B--\""};
    TestAccount account;
    for (const char *symbol : symbols)
        account.Row(QString::fromUtf8(symbol));
    for (const char *symbol : symbols)
        account.Buy(QString::fromUtf8(symbol), "10", "10");
    account.Commission("1");
    account.Sell("acme", "4", "12");
    EXPECT_EQ(account.Lots("ACME"), "10 @ 10.0000");
    EXPECT_EQ(account.Lots("acme"), "6 @ 10.0000");
    const Lines history = account.History();
    ASSERT_EQ(history.size(), 8u);
    for (size_t i = 0; i < std::size(symbols); ++i)
        EXPECT_EQ(history[i], std::string(symbols[i]) + "|" + symbols[i] +
                                  " Inc.|Bought|10|0|10|-100|2026-03-02");
    EXPECT_EQ(account.ProfitLoss(), Lines{"acme|acme Inc.|7|2026-03-02|10:15:00.000"}); // 2*4 - 1
}

TEST(PostHistoryEntry, ASymbolWithAnApostropheIsSoldSplitAndUndoneLikeAnyOther)
{
    TestAccount account = TestAccount().Row("O'NEIL");
    account.Buy("O'NEIL", "10", "10");
    account.Split("O'NEIL", "2", "1");
    account.Sell("O'NEIL", "5", "6");
    EXPECT_EQ(account.Lots("O'NEIL"), "15 @ 5.0000");
    EXPECT_TRUE(account.Undo());
    EXPECT_EQ(account.Lots("O'NEIL"), "20 @ 5.0000");
    EXPECT_EQ(account.History(), Lines{"O'NEIL|O'NEIL Inc.|Bought|20|0|5|-100|2026-03-02"});
    EXPECT_TRUE(account.ProfitLoss().empty());
}

TEST(HistoryDescription, IsTheVocabularyOfTheSearches)
{
    EXPECT_EQ(HistoryDescription(Action::SellShort), QStringLiteral(" Short  Sale"));
    EXPECT_EQ(HistoryDescription(Action::BuyToCover), QStringLiteral(" Short Cover"));
    EXPECT_EQ(HistoryDescription(Action::Split), QString());
}

TEST(PostDailyProfitLoss, EntersTheCommissionOfTheFirstPurchaseOfADay)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5");
    account.Buy("ACME", "100", "10");
    EXPECT_EQ(account.ProfitLoss(), Lines{"ACME|ACME Inc.|-5|2026-03-02|10:15:00.000"});
}

TEST(PostDailyProfitLoss, KeepsOneRowForTheSalesOfADayWithTheTimeOfTheLater)
{
    TestAccount account = TestAccount()
                              .Row("ACME", "100", "10")
                              .Lot("ACME", "100", "10", "2026-01-05")
                              .Commission("1");
    account.Sell("ACME", "10", "12"); // 20 - 1
    account.At("2026-03-02 15:30:00");
    account.Sell("ACME", "10", "14"); // 40 - 1
    EXPECT_EQ(account.ProfitLoss(), Lines{"ACME|ACME Inc.|58|2026-03-02|15:30:00.000"});
}

TEST(PostDailyProfitLoss, EntersNothingWithoutGainOrCommission)
{
    TestAccount account = TestAccount().Row("FUND").SecurityType("Mutual Fund").Commission("5");
    account.Buy("FUND", "100", "10");
    EXPECT_TRUE(account.ProfitLoss().empty());
}

TEST(PostDailyProfitLoss, RemovesTheRowOfADayThatEndsAtZero)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "10").Lot("ACME", "100", "10", "2026-01-05");
    account.Sell("ACME", "10", "12"); // 20
    EXPECT_EQ(account.ProfitLoss().size(), 1u);
    account.Sell("ACME", "10", "8"); // -20
    EXPECT_TRUE(account.ProfitLoss().empty());
}

TEST(PostDailyProfitLoss, GivesABackDatedSaleTheFigureOfTheWholeDay)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "10").Lot("ACME", "100", "10", "2026-01-05");
    account.Sell("ACME", "10", "12");               // 20
    account.Sell("ACME", "10", "12", "2026-02-27"); // 20 more, posted to the Friday before
    const Lines expected = {"ACME|ACME Inc.|40|2026-02-27|10:15:00.000",
                            "ACME|ACME Inc.|20|2026-03-02|10:15:00.000"};
    EXPECT_EQ(account.ProfitLoss(), expected);
}
