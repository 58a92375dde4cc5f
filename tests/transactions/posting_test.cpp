#include "test_account.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

Lines OkFailure(const std::string &number, const std::string &description)
{
    return {"Quillon Editor|16|An error has occured while performing 'OK' button logic.\n"
            "Please take note of all steps taken during this transaction \n"
            "and notify technical support.\nError number " +
            number + "\nDescription: " + description};
}

const char *const StoreNumber = "-2147467259";

/// Expects that the posting ends the program with these boxes, and the file is as before.
void ExpectEnds(TestAccount &account, const TransactionEntry &entry, const Lines &boxes)
{
    account.Commit();
    const std::string before = account.FileText();
    EXPECT_THROW(account.Post(entry), ProgramEnded);
    EXPECT_EQ(account.Boxes(), boxes);
    EXPECT_EQ(account.FileText(), before);
}

/// Expects one box with this text, and nothing posted.
void ExpectRefused(TestAccount &account, TransactionEntry entry, const std::string &text)
{
    account.Commit();
    const std::string before = account.FileText();
    EXPECT_EQ(account.Post(entry), PostingOutcome::Rejected);
    EXPECT_EQ(account.Boxes(), Lines{"Quillon Editor|48|" + text});
    EXPECT_EQ(account.FileText(), before);
}

TestAccount LongAcme()
{
    return TestAccount().Row("ACME", "100", "10").Lot("ACME", "100", "10", "2026-01-05");
}

} // namespace

TEST(Posting, MakesThePostingBeforeItFinal)
{
    TestAccount account = TestAccount().Row("ACME");
    account.Buy("ACME", "100", "10");
    EXPECT_EQ(account.StoredLots("ACME"), "");
    account.Buy("ACME", "50", "11");
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
    account.Cash(Action::Deposit, "1");
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000; #2 50 @ 11.0000");
}

TEST(Posting, RejectedByTheFieldsDoesNotEvenCommitTheOneBefore)
{
    TestAccount account = TestAccount().Row("ACME");
    account.Buy("ACME", "100", "10");
    EXPECT_EQ(account.Buy("ACME", "", "10"), PostingOutcome::Rejected);
    EXPECT_EQ(account.StoredLots("ACME"), "");
    EXPECT_TRUE(account.UndoEnabled());
    EXPECT_FALSE(account.Entry().PostingInProgress);
}

TEST(Posting, RejectedByThePositionLeavesEverythingAndTheUndoOff)
{
    TestAccount account = TestAccount().Row("AAA", "10", "1", "3").Row("ACME", "-5", "10");
    account.Totals().BasisTotal = account.Totals().PriorBasisTotal = Single::FromDouble(7);
    const PortfolioTotals totals = account.Totals();
    const TrackerRow other = account.Of("AAA");
    EXPECT_EQ(account.Buy("ACME", "1", "10"), PostingOutcome::Rejected);
    EXPECT_TRUE(account.Entry().PostingInProgress);
    EXPECT_FALSE(account.UndoEnabled());
    EXPECT_EQ(account.Of("AAA"), other);
    EXPECT_EQ(account.Totals().BasisTotal, totals.BasisTotal);
    EXPECT_EQ(account.Totals().PriorBasisTotal, totals.PriorBasisTotal);
    EXPECT_TRUE(account.Totals().TransCost.IsZero());
    // The next posting goes on as if nothing had been.
    EXPECT_EQ(account.SellShort("ACME", "1", "10"), PostingOutcome::Posted);
    EXPECT_TRUE(account.UndoEnabled());
}

TEST(Posting, NeverChargesAMutualFund)
{
    TestAccount account = TestAccount().Row("FUND").SecurityType("Mutual Fund").Commission("5");
    account.Buy("FUND", "10", "10");
    EXPECT_EQ(account.History(), Lines{"FUND|FUND Inc.|Bought|10|0|10|-100|2026-03-02"});
    EXPECT_TRUE(account.State().AccountBalance.IsZero());
    EXPECT_TRUE(account.Entry().Commission.IsZero());
}

TEST(Posting, KeepsTheCommissionForTheNextEntry)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5");
    account.Buy("ACME", "10", "10");
    EXPECT_EQ(account.Entry().Commission, Currency("5"));
    EXPECT_TRUE(account.Totals().TransCost.IsZero());
}

TEST(Posting, ASellWithoutACountSellsTheWholePosition)
{
    TestAccount account = LongAcme();
    account.Sell("ACME", "", "12");
    EXPECT_TRUE(account.Of("ACME").Shares.IsZero());
    EXPECT_EQ(account.Lots("ACME"), "");
}

TEST(Posting, ABackDatedPurchaseIsSoldFirstOnceTheLotsWereRequeried)
{
    TestAccount account = LongAcme();
    account.Buy("ACME", "100", "12", "2026-01-02");
    account.Sell("ACME", "10", "15"); // the lot of 5 January: gain 50
    EXPECT_EQ(account.Lots("ACME"), "100 @ 12.0000; 90 @ 10.0000");
    account.Sell("ACME", "10", "15"); // the lot of 2 January: gain 30
    EXPECT_EQ(account.Of("ACME").ProfitLossToday, Currency("80"));
    EXPECT_EQ(account.Lots("ACME"), "90 @ 12.0000; 90 @ 10.0000");
}

TEST(Posting, PostsOnALeapDayAndAtMidnight)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5").At("2028-02-29 00:00:00");
    account.Buy("ACME", "10", "10");
    EXPECT_EQ(account.ProfitLoss(), Lines{"ACME|ACME Inc.|-5|2028-02-29|00:00:00.000"});
}

TEST(Posting, RefusesACountOrAmountThatIsNoNumber)
{
    TestAccount account = LongAcme();
    ExpectRefused(account, account.EntryOf(Action::Buy, "ACME", "1.2.3", "10"),
                  "Please enter number of shares purchased or sold");
    ExpectRefused(account, account.EntryOf(Action::Deposit, "", "1.2.3", ""),
                  "Please enter deposit amount");
}

TEST(Posting, RefusesMoneyBeyondSixtyFourBits)
{
    TestAccount account = TestAccount().Row("ACME").Balance("922337203685477");
    // 9*10^11 shares at 900,000: 8.1*10^17
    ExpectRefused(account, account.EntryOf(Action::Buy, "ACME", "900000000000", "900000"),
                  "These shares at this price are too large for the account.");
    ExpectRefused(account, account.EntryOf(Action::Deposit, "", "1000", ""),
                  "This amount is too large for the account.");
}

TEST(PostingFailure, ACounterBeyondSixteenBitsIsAnOverflow)
{
    TestAccount account = LongAcme();
    account.Rows().Find("ACME");
    account.Rows().Edit().NumberTransToDate = Integer::FromWide(32'766);
    account.Rows().UpdateBatch();
    account.Sell("ACME", "1", "10");
    EXPECT_EQ(account.Of("ACME").NumberTransToDate.Value(), 32'767);
    ExpectEnds(account, account.EntryOf(Action::Sell, "ACME", "1", "10"),
               OkFailure("6", "Overflow"));
}

TEST(PostingFailure, OfTheLotsHasWordsOfItsOwn)
{
    // The lot cost far more than the row: a loss of 9*10^17 while the row's is small.
    const std::string tail = ".\nPlease check last action performed and notify technical "
                             "support.\nError number 6\nDescription: Overflow";
    TestAccount held = TestAccount()
                           .Row("ACME", "1000000", "10")
                           .Lot("ACME", "1000000", "900000000000", "2026-01-05")
                           .AnswerRest(Answer::Yes);
    held.Commit();
    const std::string before = held.FileText();
    EXPECT_THROW(held.Sell("ACME", "1000000", "10"), ProgramEnded);
    EXPECT_EQ(held.Boxes().back(),
              "Quillon Editor|16|An error has occured while computing price long" + tail);
    EXPECT_EQ(held.FileText(), before);

    TestAccount shorted = TestAccount()
                              .Row("ACME", "-1000000", "10")
                              .Lot("ACME", "-1000000", "900000000000", "2026-01-05")
                              .AnswerRest(Answer::Yes);
    EXPECT_THROW(shorted.Cover("ACME", "1000000", "10"), ProgramEnded);
    EXPECT_EQ(shorted.Boxes().back(),
              "Quillon Editor|16|An error has occured while computing price short" + tail);
}

TEST(PostingFailure, OfDailyProfitLossHasWordsOfItsOwn)
{
    TestAccount account = LongAcme().Commission("5");
    const std::string row = account.FileText().substr(0, account.FileText().find("History\n"));
    account.ExecuteElsewhere("DROP TABLE DailyProfitLoss");
    EXPECT_THROW(account.Sell("ACME", "10", "12"), ProgramEnded);
    EXPECT_EQ(account.Boxes(),
              Lines{"Quillon Editor|16|An error has occured while updating DailyProfitLoss.\n"
                    "Please check last action performed and notify technical support.\n"
                    "Error number -2147467259\nDescription: no such table: DailyProfitLoss"});
    account.ExecuteElsewhere("CREATE TABLE DailyProfitLoss (Symbol TEXT)");
    EXPECT_EQ(account.FileText().substr(0, row.size()), row);
    EXPECT_TRUE(account.History().empty());
}

TEST(PostingFailure, OfTheLedgerLeavesNeitherRowNorProfitLoss)
{
    TestAccount account = LongAcme().Commission("5");
    account.ExecuteElsewhere("CREATE TRIGGER refuse BEFORE INSERT ON History "
                             "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    ExpectEnds(account, account.EntryOf(Action::Sell, "ACME", "10", "12"),
               OkFailure(StoreNumber, "refused"));
}

TEST(PostingFailure, OfTheRowLeavesNoLedgerRow)
{
    TestAccount account = LongAcme().Commission("5");
    account.ExecuteElsewhere("CREATE TRIGGER refuse BEFORE UPDATE ON DailyTracker "
                             "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    ExpectEnds(account, account.EntryOf(Action::Sell, "ACME", "10", "12"),
               OkFailure(StoreNumber, "refused"));
}

TEST(PostingFailure, OfASplitLeavesRowAndLedgerAsTheyWere)
{
    TestAccount account = TestAccount().Row("ACME");
    account.Buy("ACME", "10", "10");
    account.ExecuteElsewhere("CREATE TRIGGER refuse BEFORE UPDATE ON DailyTracker "
                             "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    ExpectEnds(account, account.EntryOf(Action::Split, "ACME", "2", "1"),
               OkFailure(StoreNumber, "refused"));
}

TEST(PostingFailure, OfADroppedTableEndsTheProgram)
{
    TestAccount account = LongAcme();
    account.ExecuteElsewhere("DROP TABLE History");
    EXPECT_THROW(account.Buy("ACME", "1", "10"), ProgramEnded);
    EXPECT_EQ(account.Boxes(), OkFailure(StoreNumber, "no such table: History"));
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
}
