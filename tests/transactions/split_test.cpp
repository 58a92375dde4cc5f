#include "test_account.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

} // namespace

TEST(Split, TwoForOneRestatesRowLotsAndHistory)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5");
    account.Buy("ACME", "50", "40");
    account.Buy("ACME", "50", "60"); // average 50
    EXPECT_EQ(account.Split("ACME", "2", "1"), PostingOutcome::PostedSplit);
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.Shares.ToDouble(), 200);
    EXPECT_EQ(row.AvrgPrice, Currency("25"));
    EXPECT_EQ(row.CurrPrice, Currency("30"));
    EXPECT_EQ(account.Lots("ACME"), "100 @ 20.0000; 100 @ 30.0000");
    EXPECT_EQ(account.History()[0], "ACME|ACME Inc.|Bought|100|-5|20|-2005|2026-03-02");
    EXPECT_EQ(account.History()[1], "ACME|ACME Inc.|Bought|100|-5|30|-3005|2026-03-02");
}

TEST(Split, ChangesNothingElseOfTheRow)
{
    TestAccount account = TestAccount().Row("ACME").Row("ZORG", "10", "5", "6").Commission("5");
    account.Buy("ACME", "100", "50");
    account.Balance("1000").At("2026-03-04 11:00:00");
    TrackerRow expected = account.Of("ACME");
    account.Split("ACME", "2", "1");
    expected.Shares = Single::FromDouble(200);
    expected.AvrgPrice = expected.CurrPrice = Currency("25");
    EXPECT_EQ(account.Of("ACME"), expected);
    EXPECT_EQ(account.State().AccountBalance, Currency("1000"));
    EXPECT_EQ(account.ProfitLoss().size(), 1u); // of the purchase
    EXPECT_EQ(account.History().size(), 1u);
}

TEST(Split, ThreeForTwoKeepsTheFraction)
{
    TestAccount account =
        TestAccount().Row("ACME", "101", "50").Lot("ACME", "101", "50", "2026-01-05");
    account.Split("ACME", "3", "2");
    EXPECT_EQ(account.Of("ACME").Shares.ToDouble(), 151.5);
    EXPECT_EQ(account.Of("ACME").AvrgPrice, Currency("33.3333")); // 2*50/3
    EXPECT_EQ(account.Lots("ACME"), "151.5 @ 33.3333");
}

TEST(Split, OneForTenRunsTheSameWay)
{
    TestAccount account =
        TestAccount().Row("ACME", "1000", "0.5", "0.7").Lot("ACME", "1000", "0.5", "2026-01-05");
    account.Split("ACME", "1", "10");
    EXPECT_EQ(account.Of("ACME").Shares.ToDouble(), 100);
    EXPECT_EQ(account.Of("ACME").AvrgPrice, Currency("5"));
    EXPECT_EQ(account.Of("ACME").CurrPrice, Currency("7"));
    EXPECT_EQ(account.Lots("ACME"), "100 @ 5.0000");
}

TEST(Split, KeepsAShortPositionNegative)
{
    TestAccount account =
        TestAccount().Row("ACME", "-100", "50").Lot("ACME", "-100", "50", "2026-01-05");
    account.Split("ACME", "2", "1");
    EXPECT_EQ(account.Of("ACME").Shares.ToDouble(), -200);
    EXPECT_EQ(account.Lots("ACME"), "-200 @ 25.0000");
}

TEST(Split, OfAFlatRowIsCarriedOut)
{
    TestAccount account = TestAccount().Row("ACME", "0", "0", "60");
    EXPECT_EQ(account.Split("ACME", "2", "1"), PostingOutcome::PostedSplit);
    EXPECT_TRUE(account.Of("ACME").Shares.IsZero());
    EXPECT_EQ(account.Of("ACME").CurrPrice, Currency("30"));
    EXPECT_TRUE(account.Boxes().empty());
}

TEST(Split, RestatesTheHistoryOfItsSymbolAlone)
{
    TestAccount account = TestAccount().Row("ACME").Row("acme").Row("ZORG");
    account.Buy("ACME", "10", "10");
    account.Sell("ACME", "4", "11");
    account.Buy("acme", "10", "10");
    account.Cash(Action::Deposit, "5");
    account.Split("ACME", "2", "1");
    const Lines expected = {
        "ACME|ACME Inc.|Bought|20|0|5|-100|2026-03-02",
        "ACME|ACME Inc.|Sold|-8|0|5.5|44|2026-03-02",
        "acme|acme Inc.|Bought|10|0|10|-100|2026-03-02",
        " |Account Deposit|Deposit|0|0|0|5|2026-03-02",
    };
    EXPECT_EQ(account.History(), expected);
    EXPECT_EQ(account.Lots("acme"), "10 @ 10.0000");
}

TEST(Split, CannotBeUndoneAndIsFinalAtTheNextCommit)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "50").Lot("ACME", "100", "50", "2026-01-05");
    account.Split("ACME", "2", "1");
    EXPECT_FALSE(account.UndoEnabled());
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 50.0000");
    account.Commit();
    EXPECT_EQ(account.StoredLots("ACME"), "#1 200 @ 25.0000");
}

TEST(Split, OfASymbolWithoutARowLeavesNoTrace)
{
    TestAccount account = TestAccount().Row("ZORG", "10", "5");
    const std::string before = account.FileText();
    EXPECT_EQ(account.Split("ACME", "2", "1"), PostingOutcome::PostedSplit);
    EXPECT_EQ(account.FileText(), before);
    EXPECT_FALSE(account.UndoEnabled());
}

TEST(Split, ByAnOldCountOfZeroEndsTheProgramAndChangesNothing)
{
    TestAccount account =
        TestAccount().Row("ACME", "100", "50").Lot("ACME", "100", "50", "2026-01-05");
    const std::string before = account.FileText();
    EXPECT_THROW(account.Split("ACME", "2", "0"), ProgramEnded);
    EXPECT_EQ(account.Boxes(),
              Lines{"Quillon Editor|16|An error has occured while performing 'OK' button logic.\n"
                    "Please take note of all steps taken during this transaction \n"
                    "and notify technical support.\nError number 11\n"
                    "Description: Division by zero"});
    EXPECT_EQ(account.FileText(), before);
}
