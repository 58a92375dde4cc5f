#include "test_account.h"

#include <gtest/gtest.h>

namespace
{

const QDate January5(2026, 1, 5);
const QTime Morning(9, 30);

Lot NewLot(double shares, const char *price, QDate date = January5, QTime time = Morning)
{
    return {0, Single::FromDouble(shares), Currency(price), date, time};
}

std::vector<qint64> Ids(TestAccount &account, const QString &symbol)
{
    std::vector<qint64> ids;
    for (const Lot &lot : account.gRsLots().LotsOf(symbol))
        ids.push_back(lot.ID);
    return ids;
}

} // namespace

TEST(PurchaseLots, StandInTheOrderOfDateAndTime)
{
    TestAccount account = TestAccount()
                              .Lot("ACME", "1", "10", "2026-02-02")
                              .Lot("ACME", "2", "20", "2026-01-05", "12:00:00")
                              .Lot("ZORG", "9", "90", "2025-01-05")
                              .Lot("ACME", "3", "30", "2026-01-05", "09:30:00");
    EXPECT_EQ(account.Lots("ACME"), "3 @ 30.0000; 2 @ 20.0000; 1 @ 10.0000");
    EXPECT_EQ(account.Lots("ZORG"), "9 @ 90.0000");
    EXPECT_EQ(account.Lots("NONE"), "");
}

TEST(PurchaseLots, OfOneMomentKeepTheOrderOfTheirIDs)
{
    TestAccount account =
        TestAccount().Lot("ACME", "1", "10", "2026-01-05").Lot("ACME", "2", "20", "2026-01-05");
    account.gRsLots().BeginTrans();
    account.gRsLots().Add("ACME", NewLot(3, "30"));
    account.gRsLots().Add("ACME", NewLot(4, "40"));
    account.gRsLots().Requery();
    EXPECT_EQ(account.Lots("ACME"), "1 @ 10.0000; 2 @ 20.0000; 3 @ 30.0000; 4 @ 40.0000");
    account.gRsLots().CommitTrans();
    account.gRsLots().Reload();
    EXPECT_EQ(account.Lots("ACME"), "1 @ 10.0000; 2 @ 20.0000; 3 @ 30.0000; 4 @ 40.0000");
    EXPECT_EQ(Ids(account, "ACME"), (std::vector<qint64>{1, 2, 3, 4}));
}

TEST(PurchaseLots, APendingLotIsInvisibleToOtherReadersUntilTheCommit)
{
    TestAccount account = TestAccount().Lot("ACME", "100", "10", "2026-01-05");
    account.gRsLots().BeginTrans();
    account.gRsLots().Add("ACME", NewLot(50, "20"));
    account.gRsLots().EditLotsOf("ACME")[0].Shares = Single::FromDouble(40);
    EXPECT_EQ(account.Lots("ACME"), "40 @ 10.0000; 50 @ 20.0000");
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
    account.gRsLots().CommitTrans();
    EXPECT_EQ(account.StoredLots("ACME"), "#1 40 @ 10.0000; #2 50 @ 20.0000");
    EXPECT_FALSE(account.gRsLots().InTransaction());
}

TEST(PurchaseLots, PendingChangesKeepNoLockOnTheFile)
{
    TestAccount account = TestAccount().Lot("ACME", "100", "10", "2026-01-05");
    account.gRsLots().BeginTrans();
    account.gRsLots().RemoveAll("ACME");
    account.ExecuteElsewhere("INSERT INTO History (Symbol) VALUES ('OTHER')");
    EXPECT_EQ(account.History().size(), 1u);
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
}

TEST(PurchaseLots, ARollbackGivesEveryLotBackWithItsID)
{
    TestAccount account = TestAccount()
                              .Lot("ACME", "100", "10", "2026-01-05")
                              .Lot("ACME", "50", "20", "2026-02-02")
                              .Lot("ZORG", "7", "1", "2026-01-05");
    account.gRsLots().BeginTrans();
    std::vector<Lot> &lots = account.gRsLots().EditLotsOf("ACME");
    lots[0].Shares = Single();
    lots[1].PurchasePrice = Currency("99");
    account.gRsLots().RemoveEmpty("ACME");
    account.gRsLots().Add("ACME", NewLot(5, "5"));
    account.gRsLots().RemoveAll("ZORG");
    account.gRsLots().Add("NEWCO", NewLot(5, "5"));
    account.gRsLots().Requery();
    account.gRsLots().RollbackTrans();

    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000; 50 @ 20.0000");
    EXPECT_EQ(Ids(account, "ACME"), (std::vector<qint64>{1, 2}));
    EXPECT_EQ(account.Lots("ZORG"), "7 @ 1.0000");
    EXPECT_EQ(account.Lots("NEWCO"), "");
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000; #2 50 @ 20.0000");
}

TEST(PurchaseLots, AnAddedLotStandsAtTheEndUntilTheRequeryWhateverItsDate)
{
    TestAccount account = TestAccount().Lot("ACME", "100", "10", "2026-01-05");
    account.gRsLots().BeginTrans();
    account.gRsLots().Add("ACME", NewLot(5, "5", QDate(2020, 1, 1)));
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000; 5 @ 5.0000");
    account.gRsLots().CommitTrans(); // a commit is no requery
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000; 5 @ 5.0000");
    account.gRsLots().Requery();
    EXPECT_EQ(account.Lots("ACME"), "5 @ 5.0000; 100 @ 10.0000");
}

TEST(PurchaseLots, ALotAddedBeforeARollbackStillFindsItsPlaceAtTheNextRequery)
{
    TestAccount account = TestAccount().Lot("ACME", "100", "10", "2026-01-05");
    account.gRsLots().Add("ACME", NewLot(5, "5", QDate(2020, 1, 1))); // written at once
    account.gRsLots().BeginTrans();
    account.gRsLots().Add("ZORG", NewLot(1, "1"));
    account.gRsLots().RollbackTrans();
    account.gRsLots().Requery();
    EXPECT_EQ(account.Lots("ACME"), "5 @ 5.0000; 100 @ 10.0000");
}

TEST(PurchaseLots, ALotThatComesBackUnsortedFindsItsPlaceAtTheNextRequery)
{
    TestAccount account = TestAccount().Lot("ACME", "100", "10", "2026-01-05");
    account.gRsLots().Add("ACME", NewLot(5, "5", QDate(2020, 1, 1)));
    account.gRsLots().BeginTrans();
    account.gRsLots().EditLotsOf("ACME")[0].Shares = Single::FromDouble(40);
    account.gRsLots().Requery();
    account.gRsLots().RollbackTrans(); // as they stood before: the added one behind
    account.gRsLots().Requery();
    EXPECT_EQ(account.Lots("ACME"), "5 @ 5.0000; 100 @ 10.0000");
}

TEST(PurchaseLots, OutsideATransactionAChangeIsWrittenAtOnce)
{
    TestAccount account;
    account.gRsLots().Add("ACME", NewLot(5, "5"));
    EXPECT_EQ(account.StoredLots("ACME"), "#1 5 @ 5.0000");
    account.gRsLots().EditLotsOf("ACME")[0].Shares = Single::FromDouble(3);
    account.gRsLots().Requery();
    EXPECT_EQ(account.StoredLots("ACME"), "#1 3 @ 5.0000");
    account.gRsLots().RemoveAll("ACME");
    EXPECT_EQ(account.StoredLots("ACME"), "");
}

TEST(PurchaseLots, ReloadSeesWhatOthersWroteAndKeepsWhatIsPending)
{
    TestAccount account = TestAccount()
                              .Lot("ACME", "100", "10", "2026-01-05")
                              .Lot("ACME", "50", "20", "2026-02-02")
                              .Lot("ACME", "25", "30", "2026-02-03");
    account.gRsLots().BeginTrans();
    account.gRsLots().EditLotsOf("ACME")[0].Shares = Single::FromDouble(60); // a sale of 40
    account.gRsLots().Add("ACME", NewLot(7, "7", QDate(2026, 3, 2)));
    account.ExecuteElsewhere("UPDATE PriceHistory SET Shares = 55 WHERE ID = 2;"
                             "DELETE FROM PriceHistory WHERE ID = 3;"
                             "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, "
                             "Time) VALUES ('ACME', 9, 90000, '2026-02-20', '10:00:00.000')");
    account.gRsLots().Reload();
    EXPECT_EQ(account.Lots("ACME"), "60 @ 10.0000; 55 @ 20.0000; 9 @ 9.0000; 7 @ 7.0000");
    account.gRsLots().CommitTrans();
    EXPECT_EQ(account.StoredLots("ACME"),
              "#1 60 @ 10.0000; #2 55 @ 20.0000; #4 9 @ 9.0000; #5 7 @ 7.0000");
}

TEST(PurchaseLots, ReloadAndThenRollbackLeavesWhatTheOthersWrote)
{
    TestAccount account =
        TestAccount().Lot("ACME", "100", "10", "2026-01-05").Lot("ACME", "50", "20", "2026-02-02");
    account.gRsLots().BeginTrans();
    account.gRsLots().EditLotsOf("ACME")[0].Shares = Single();
    account.gRsLots().RemoveEmpty("ACME");
    account.ExecuteElsewhere("UPDATE PriceHistory SET Shares = 55 WHERE ID = 2");
    account.gRsLots().Reload();
    EXPECT_EQ(account.Lots("ACME"), "55 @ 20.0000");
    account.gRsLots().RollbackTrans();
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000; 55 @ 20.0000");
}

TEST(PurchaseLots, SumTheirSharesInSingleArithmetic)
{
    TestAccount account = TestAccount()
                              .Lot("ACME", "16777216", "1", "2026-01-05")
                              .Lot("ACME", "1", "1", "2026-01-06")
                              .Lot("ACME", "1", "1", "2026-01-07");
    // 2^24 + 1 is no Single: each of the two is lost
    EXPECT_EQ(account.gRsLots().SharesOf("ACME").ToDouble(), 16777216.0);
    EXPECT_TRUE(account.gRsLots().SharesOf("NONE").IsZero());
}

TEST(PurchaseLots, KeepSymbolsApartThatDifferInCase)
{
    TestAccount account =
        TestAccount().Lot("acme", "1", "10", "2026-01-05").Lot("ACME", "2", "20", "2026-01-05");
    account.gRsLots().RemoveAll("acme");
    EXPECT_EQ(account.Lots("ACME"), "2 @ 20.0000");
    EXPECT_EQ(account.StoredLots("ACME"), "#2 2 @ 20.0000");
    EXPECT_EQ(account.StoredLots("acme"), "");
}

TEST(PurchaseLots, RefuseToBeChangedWhileClosed)
{
    PurchaseLots lots;
    for (const auto &change : std::vector<std::function<void()>>{
             [&] { lots.Add("ACME", NewLot(1, "1")); }, [&] { lots.BeginTrans(); },
             [&] { lots.Reload(); }, [&] { lots.EditLotsOf("ACME"); }}) {
        try {
            change();
            ADD_FAILURE() << "nothing was thrown";
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.Number(), 3704);
        }
    }
    EXPECT_TRUE(lots.LotsOf("ACME").empty());
}

TEST(PurchaseLots, AStoreThatRefusesTheCommitLeavesTheFileAsItWas)
{
    TestAccount account = TestAccount().Lot("ACME", "100", "10", "2026-01-05");
    account.gRsLots().BeginTrans();
    account.gRsLots().EditLotsOf("ACME")[0].Shares = Single::FromDouble(1);
    account.gRsLots().Add("ZORG", NewLot(5, "5"));
    account.ExecuteElsewhere("CREATE TRIGGER refuse BEFORE INSERT ON PriceHistory "
                             "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    EXPECT_THROW(account.gRsLots().CommitTrans(), RuntimeError);
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
    account.ExecuteElsewhere("DROP TRIGGER refuse");
    account.gRsLots().CommitTrans(); // nothing was lost meanwhile
    EXPECT_EQ(account.StoredLots("ACME"), "#1 1 @ 10.0000");
    EXPECT_EQ(account.StoredLots("ZORG"), "#2 5 @ 5.0000");
}
