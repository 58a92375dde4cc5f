#include "test_account.h"

#include "store/pending_changes.h"
#include "transactions/row_removal.h"
#include "transactions/undo.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

TestAccount LongAcme()
{
    return TestAccount()
        .Row("ACME", "100", "10")
        .Lot("ACME", "60", "8", "2026-01-05")
        .Lot("ACME", "40", "13", "2026-02-02");
}

} // namespace

TEST(Undo, OfABuyGivesEverythingBackButTheCommission)
{
    TestAccount account = LongAcme().Commission("5").Balance("1000");
    const TrackerRow before = account.Of("ACME");
    account.Buy("ACME", "100", "10");
    EXPECT_TRUE(account.Undo());
    EXPECT_EQ(account.Of("ACME"), before);
    EXPECT_EQ(account.Lots("ACME"), "60 @ 8.0000; 40 @ 13.0000");
    EXPECT_EQ(account.StoredLots("ACME"), "#1 60 @ 8.0000; #2 40 @ 13.0000");
    EXPECT_TRUE(account.History().empty());
    EXPECT_TRUE(account.ProfitLoss().empty());
    EXPECT_EQ(account.State().AccountBalance, Currency("995"));
}

TEST(Undo, BringsTheBookkeepingOfTheBalanceBack)
{
    TestAccount account = LongAcme().Row("AAA", "1", "1", "4"); // gain 3, counted before ACME
    account.Sell("ACME", "60", "12");
    EXPECT_EQ(account.Totals().PriorBasisTotal.ToDouble(), -37); // 3 + (12-10)*100 - (12-8)*60
    account.Undo();
    EXPECT_EQ(account.Totals().PriorBasisTotal.ToDouble(), 3);
    EXPECT_EQ(account.Totals().BasisTotal.ToDouble(), 3); // as the walk had it at the snapshot
}

TEST(Undo, OfASaleBringsADeletedLotBackWithItsID)
{
    TestAccount account = LongAcme();
    account.Sell("ACME", "70", "12");
    EXPECT_EQ(account.Lots("ACME"), "30 @ 13.0000");
    account.Undo();
    account.Commit();
    EXPECT_EQ(account.StoredLots("ACME"), "#1 60 @ 8.0000; #2 40 @ 13.0000");
}

TEST(Undo, AsksFirstWithNoAsTheDefault)
{
    TestAccount account = LongAcme();
    account.Buy("ACME", "1", "10");
    const std::string before = account.FileText();
    account.Queue(Answer::No);
    PostingWork work = account.Work();
    EXPECT_EQ(UndoLastTransaction(work, [] { FAIL() << "the rows were valued anew"; }),
              UndoOutcome::Declined);
    EXPECT_EQ(account.Boxes(), Lines{"Quillon Editor|292|You are about to undo your last "
                                     "transaction. Is this OK?"});
    EXPECT_EQ(account.FileText(), before);
    EXPECT_TRUE(account.UndoEnabled());
}

TEST(Undo, IsOfferedOnceAfterEachPosting)
{
    TestAccount account = LongAcme();
    account.Buy("ACME", "1", "10");
    EXPECT_TRUE(account.UndoEnabled());
    account.Undo();
    EXPECT_FALSE(account.UndoEnabled());
    account.Buy("ACME", "1", "10");
    account.Commit();
    EXPECT_FALSE(account.UndoEnabled());
}

TEST(Undo, TakesBackTheSecondOfTwoBuysOnly)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5");
    account.Buy("ACME", "100", "10");
    account.At("2026-03-02 10:20:00");
    account.Buy("ACME", "50", "11");
    account.Undo();
    EXPECT_EQ(account.Of("ACME").Shares.ToDouble(), 100);
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
    EXPECT_EQ(account.History(), Lines{"ACME|ACME Inc.|Bought|100|-5|10|-1005|2026-03-02"});
    EXPECT_EQ(account.ProfitLoss(), Lines{"ACME|ACME Inc.|-5|2026-03-02|10:20:00.000"});
}

TEST(Undo, TellsTwoBuysOfOneInstantApart)
{
    TestAccount account = TestAccount().Row("ACME").Commission("5");
    account.Buy("ACME", "100", "10");
    account.Buy("ACME", "50", "11"); // the clock stands still
    account.Undo();
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000");
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
    EXPECT_EQ(account.History(), Lines{"ACME|ACME Inc.|Bought|100|-5|10|-1005|2026-03-02"});
}

TEST(Undo, OfAShortSaleAndOfACoverGoesTheSameWay)
{
    TestAccount account = TestAccount().Row("ACME");
    account.SellShort("ACME", "100", "50");
    account.Undo();
    EXPECT_EQ(account.Lots("ACME"), "");
    EXPECT_TRUE(account.Of("ACME").Shares.IsZero());
    account.SellShort("ACME", "100", "50");
    account.Cover("ACME", "100", "40");
    account.Undo();
    EXPECT_EQ(account.Lots("ACME"), "-100 @ 50.0000");
    EXPECT_EQ(account.Of("ACME").ProfitLossToday, Currency());
}

TEST(Undo, OfTheFirstDepositSinceTheStartAddsAnEmptyRow)
{
    TestAccount account = LongAcme().Balance("100");
    account.Cash(Action::Deposit, "50");
    account.Undo();
    EXPECT_EQ(account.Rows().RecordCount(), 2);
    EXPECT_TRUE(account.Of("").Shares.IsZero());
    EXPECT_TRUE(account.History().empty());
    EXPECT_EQ(account.State().AccountBalance, Currency()); // the record never held a balance
}

TEST(Undo, OfADepositWritesTheRowOfTheSecurityPostingBeforeItBack)
{
    TestAccount account = LongAcme().Commission("5").Balance("1000");
    const TrackerRow before = account.Of("ACME");
    account.Buy("ACME", "100", "10");
    account.Cash(Action::Deposit, "50");
    account.Undo();
    EXPECT_EQ(account.Of("ACME"), before); // the row goes back
    EXPECT_EQ(account.Lots("ACME"),
              "60 @ 8.0000; 40 @ 13.0000; 100 @ 10.0000");      // the lot was final
    EXPECT_EQ(account.History().size(), 1u);                    // "Bought" stays
    EXPECT_EQ(account.State().AccountBalance, Currency("995")); // of the last balance step
}

TEST(Undo, OfADepositAfterASplitWritesTheRowBeforeTheSplitBack)
{
    TestAccount account = LongAcme();
    account.Buy("ACME", "100", "10");
    const TrackerRow before = account.Of("ACME");
    account.Split("ACME", "2", "1");
    account.Cash(Action::Deposit, "50");
    account.Undo();
    EXPECT_EQ(account.Of("ACME"), before); // the split of the lots was final
    EXPECT_EQ(account.Lots("ACME"), "120 @ 4.0000; 80 @ 6.5000; 200 @ 5.0000");
}

TEST(Undo, OfAClearTakesTheLedgerRowAndLotOfTheLastPostingAlong)
{
    TestAccount account = LongAcme().Row("BBB");
    account.Sell("ACME", "60", "12");
    account.Buy("BBB", "10", "20");
    EXPECT_EQ(account.History().size(), 2u);
    account.Rows().Find("ACME");
    PostingWork work = account.Work();
    ClearRow(work);
    account.Undo();
    EXPECT_EQ(account.Lots("ACME"), "40 @ 13.0000");
    // The keys of the last posting are still set, and what they name goes.
    ASSERT_EQ(account.History().size(), 1u);
    EXPECT_EQ(account.History().front().substr(0, 5), "ACME|");
    EXPECT_EQ(account.StoredLots("BBB"), "");
    EXPECT_EQ(account.Of("BBB").Shares, Single::FromFloat(10));
}

TEST(Undo, BringsAClearedRowBackWithItsLots)
{
    TestAccount account = LongAcme();
    const TrackerRow before = account.Of("ACME");
    account.Rows().Find("ACME");
    PostingWork work = account.Work();
    ClearRow(work);
    EXPECT_TRUE(account.Of("ACME").Shares.IsZero());
    EXPECT_EQ(account.Lots("ACME"), "");
    account.Undo();
    EXPECT_EQ(account.Of("ACME"), before);
    EXPECT_EQ(account.Lots("ACME"), "60 @ 8.0000; 40 @ 13.0000");
    EXPECT_EQ(account.StoredLots("ACME"), "#1 60 @ 8.0000; #2 40 @ 13.0000");
}

TEST(Undo, ThatCannotDeleteTheLedgerRowSaysSo)
{
    TestAccount account = LongAcme();
    account.Buy("ACME", "1", "10");
    account.ExecuteElsewhere("CREATE TRIGGER refuse BEFORE DELETE ON History "
                             "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    account.Undo();
    EXPECT_EQ(account.Boxes().back(), "Quillon Editor|16|An error has occured while undoing your "
                                      "last transaction!\nError number -2147467259\n"
                                      "Description: refused");
    EXPECT_EQ(account.History().size(), 1u);
    EXPECT_EQ(account.Of("ACME").Shares, Single::FromFloat(101)); // nor is anything else taken back
    EXPECT_EQ(account.Lots("ACME"), "60 @ 8.0000; 40 @ 13.0000; 1 @ 10.0000");
}

TEST(CommitUndoTransaction, DoesNothingInAReplay)
{
    TestAccount account = LongAcme();
    account.Buy("ACME", "1", "10");
    account.Entry().RebuildMode = true;
    account.Commit();
    EXPECT_TRUE(account.gRsLots().InTransaction());
    EXPECT_TRUE(account.UndoEnabled());
}

TEST(UndoPeriod, ThatEndsWithTheProgramLeavesTheLotsToTheNextOpening)
{
    TestAccount account = LongAcme();
    account.Sell("ACME", "70", "10");
    account.Buy("ACME", "1", "10");
    account.gRsLots().Close();
    EXPECT_EQ(account.StoredLots("ACME"), "#2 30 @ 13.0000");
    Connection next;
    next.Open(account.gConnAccount().Path());
    PurchaseLots lots;
    lots.Open(next);
    EXPECT_EQ(lots.SharesOf("ACME"), Single::FromFloat(31));
    EXPECT_EQ(account.StoredLots("ACME"), "#2 30 @ 13.0000; #3 1 @ 10.0000");
}

TEST(UndoPeriod, LeavesNothingPendingOnceItIsOver)
{
    for (const bool undone : {true, false}) {
        TestAccount account = LongAcme();
        account.Sell("ACME", "70", "10");
        if (undone)
            account.Undo();
        else
            account.Commit();
        const std::string lots = account.StoredLots("ACME");
        TakeUpPendingLots(account.gConnAccount());
        EXPECT_EQ(account.StoredLots("ACME"), lots);
    }
}

TEST(Undo, ThatIsRefusedLeavesEverythingAsItWasAndCanBeTriedAgain)
{
    TestAccount account = LongAcme().Commission("5").Balance("1000");
    account.Sell("ACME", "70", "12");
    account.Boxes();
    const TrackerRow row = account.Of("ACME");
    const std::string file = account.FileText();
    const Currency balance = account.State().AccountBalance;
    const PortfolioTotals totals = account.Totals();
    account.ExecuteElsewhere("CREATE TRIGGER refuse BEFORE UPDATE ON DailyTracker "
                             "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    EXPECT_FALSE(account.Undo());
    EXPECT_EQ(account.Boxes().back(), "Quillon Editor|48|The undo could not be saved: refused. "
                                      "Nothing was changed.");
    EXPECT_EQ(account.Of("ACME"), row);
    EXPECT_EQ(account.Lots("ACME"), "30 @ 13.0000");
    EXPECT_EQ(account.State().AccountBalance, balance);
    EXPECT_EQ(account.Totals().PriorBasisTotal, totals.PriorBasisTotal);
    EXPECT_EQ(account.FileText(), file);
    EXPECT_TRUE(account.UndoEnabled());
    account.ExecuteElsewhere("DROP TRIGGER refuse");
    EXPECT_TRUE(account.Undo());
    EXPECT_EQ(account.Of("ACME").Shares, Single::FromFloat(100));
    EXPECT_EQ(account.Lots("ACME"), "60 @ 8.0000; 40 @ 13.0000");
    EXPECT_TRUE(account.History().empty());
}
