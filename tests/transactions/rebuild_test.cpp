#include "replay_account.h"

#include "transactions/row_removal.h"

#include <gtest/gtest.h>

namespace
{

Currency ToDate(const TestAccount &account, const char *symbol)
{
    return account.Of(symbol).ProfitLossToDate;
}
Currency Today(const TestAccount &account, const char *symbol)
{
    return account.Of(symbol).ProfitLossToday;
}

} // namespace

// --- what is left of the account ----------------------------------------------------------------

TEST(Rebuild, AnEmptyLedgerSetsAllRowsToZeroAndKeepsThem)
{
    TestAccount account = TestAccount()
                              .Row("ACME", "100", "10", "12")
                              .Lot("ACME", "100", "10", "2026-01-05")
                              .Row("BETA", "-5", "50");
    account.gConnAccount().Execute("INSERT INTO DailyProfitLoss (Symbol, ProfitLoss, TransDate) "
                                   "VALUES ('ACME', 50000, '2026-01-05')");
    account.At("2026-03-04 11:00:00");
    Replay(account);
    for (const char *symbol : {"ACME", "BETA"}) {
        TrackerRow zero;
        zero.Symbol = symbol;
        zero.Name = symbol + QStringLiteral(" Inc.");
        zero.TransDate = QDate(2026, 3, 4);
        zero.Time = QTime(11, 0);
        EXPECT_EQ(account.Of(symbol), zero);
    }
    EXPECT_EQ(account.StoredLots("ACME"), "");
    EXPECT_TRUE(account.ProfitLoss().empty());
}

TEST(Rebuild, ASymbolOfTheLedgerWithoutARowGetsOneWithItsName)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"}});
    Replay(account);
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.Name, "ACME Inc.");
    EXPECT_EQ(row.Shares, Single::FromFloat(100));
    EXPECT_EQ(row.AvrgPrice, Currency("10"));
    EXPECT_EQ(row.InvestedToDate, Currency("1005")); // 100*10 + 5
    EXPECT_EQ(row.TransDate, QDate(2026, 1, 5));
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
}

TEST(Rebuild, ARowWithoutLedgerStaysAtZeroShares)
{
    TestAccount account = TestAccount().Row("ACME", "100", "10").Row("BETA", "7", "10");
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Of("ACME").Shares, Single::FromFloat(100));
    EXPECT_TRUE(account.Of("BETA").Shares.IsZero());
}

TEST(Rebuild, OfTwoDaysTheFirstEndsInToDateAndTheSecondInToday)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {"ACME", "Sold", "-40", "-5", "12", "475", "2026-01-06"}});
    Replay(account);
    const TrackerRow &row = account.Of("ACME");
    EXPECT_EQ(row.ProfitLossToDate, Currency("-5"));
    EXPECT_EQ(row.ProfitLossToday, Currency("75")); // (12-10)*40 - 5
    EXPECT_EQ(row.ActualProfitLoss, Currency("70"));
    EXPECT_EQ(row.TransCostToday, Currency("-5"));
    EXPECT_EQ(row.TransCostToDate, Currency("-10"));
    EXPECT_EQ(row.NumberTransToday.Value(), 1);
    EXPECT_EQ(row.NumberTransToDate.Value(), 2);
    EXPECT_EQ(account.ProfitLoss(),
              (std::vector<std::string>{"ACME|ACME Inc.|-5|2026-01-05|10:15:00.000",
                                        "ACME|ACME Inc.|75|2026-01-06|10:15:00.000"}));
}

TEST(Rebuild, AccountBalanceAndPriorBasisAreTheSameBeforeAndAfter)
{
    TestAccount account = TestAccount().Row("ACME", "100", "10", "12.3456").Balance("1234.5678");
    const Single prior = account.Totals().PriorBasisTotal;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {" ", "Deposit", "0", "0", "0", "500", "2026-01-05"},
                           {"ACME", "Sold", "-100", "-5", "12", "1195", "2026-01-06"}});
    Replay(account);
    EXPECT_EQ(account.State().AccountBalance, Currency("1234.5678"));
    EXPECT_EQ(account.Totals().PriorBasisTotal, prior);
}

TEST(Rebuild, ALotHasTheLedgersDateAndTheClocksTime)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"}});
    account.At("2026-03-02 14:30:15");
    Replay(account);
    const std::vector<Lot> &lots = account.gRsLots().LotsOf("ACME");
    ASSERT_EQ(lots.size(), 1U);
    EXPECT_EQ(lots[0].TransDate, QDate(2026, 1, 5));
    EXPECT_EQ(lots[0].Time, QTime(14, 30, 15));
}

TEST(Rebuild, WhatIsPostedHasTheTimeOfTheReplayAndTheOtherRowsThatOfTheEmptying)
{
    TestAccount account = TestAccount().Row("ACME").Row("BETA");
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"}});
    account.At("2026-03-02 14:30:15");
    account.Entry().RebuildMode = true;
    HistoryReplay replay(account.Work());
    replay.Begin();
    account.At("2026-03-02 14:30:16"); // the wizard reopens the account, and waits
    replay.Run([](qint64) {});
    replay.Commit();
    EXPECT_EQ(account.gRsLots().LotsOf("ACME").at(0).Time, QTime(14, 30, 16));
    EXPECT_EQ(account.Of("ACME").Time, QTime(14, 30, 16));
    EXPECT_EQ(account.Of("BETA").Time, QTime(14, 30, 15));
}

TEST(Rebuild, AnAddedRowStandsInItsPlaceAfterwards)
{
    TestAccount account = TestAccount().Row("BETA").Row("DELTA"); // by symbol
    WriteHistory(account, {{"ACME", "Bought", "300", "0", "10", "-3000", "2026-01-05"}});
    Replay(account);
    QStringList symbols;
    TrackerRecordset &rows = account.Rows();
    for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext())
        symbols += rows.Current().Symbol;
    EXPECT_EQ(symbols.join(' '), "ACME BETA DELTA");
}

TEST(Rebuild, TheLotsOfADayFollowTheReplayEvenOverMidnight)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "1", "0", "10", "-10", "2026-01-05"},
                           {"ACME", "Bought", "2", "0", "20", "-40", "2026-01-05"},
                           {"ACME", "Bought", "3", "0", "30", "-90", "2026-01-05"},
                           {"ACME", "Sold", "-1", "0", "30", "30", "2026-01-06"}});
    account.At("2026-03-02 23:59:59");
    Replay(account, [&](qint64) { account.Clock().Advance(std::chrono::seconds(1)); });
    EXPECT_EQ(account.Lots("ACME"), "2 @ 20.0000; 3 @ 30.0000");
    account.gRsLots().Reload();
    EXPECT_EQ(account.Lots("ACME"), "2 @ 20.0000; 3 @ 30.0000");
}

TEST(Rebuild, TheOrderIsThatOfDateAndTimeOverAllSymbols)
{
    TestAccount account; // by symbol, or as written, each sale would come before its purchase
    WriteHistory(account, {{"ZETA", "Sold", "-10", "0", "12", "120", "2026-01-07"},
                           {"ACME", "Sold", "-10", "0", "12", "120", "2026-01-07"},
                           {"ZETA", "Bought", "10", "0", "10", "-100", "2026-01-05"},
                           {"ACME", "Bought", "10", "0", "10", "-100", "2026-01-06"}});
    Replay(account);
    EXPECT_EQ(Today(account, "ZETA"), Currency("20")); // (12-10)*10
    EXPECT_EQ(Today(account, "ACME"), Currency("20"));
}

// --- what a ledger row becomes ------------------------------------------------------------------

TEST(RebuildMapping, ABoughtRowBecomesABuy)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10.125", "-1017.5", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.1250");
    EXPECT_EQ(Today(account, "ACME"), Currency("-5"));
}

TEST(RebuildMapping, ASoldRowBecomesASellOfMinusItsShares)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"},
                           {"ACME", "Sold", "-30", "0", "12", "360", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Lots("ACME"), "70 @ 10.0000");
    EXPECT_EQ(Today(account, "ACME"), Currency("60")); // (12-10)*30
}

TEST(RebuildMapping, AShortSaleRowBecomesASellShortOfMinusItsShares)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", " Short  Sale", "-100", "-5", "50", "4995", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Lots("ACME"), "-100 @ 50.0000");
    EXPECT_EQ(account.Of("ACME").Shares, Single::FromFloat(-100));
}

TEST(RebuildMapping, AShortCoverRowBecomesABuyToCover)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", " Short  Sale", "-100", "-5", "50", "4995", "2026-01-05"},
                           {"ACME", " Short Cover", "60", "-5", "40", "-2405", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Lots("ACME"), "-40 @ 50.0000");
    EXPECT_EQ(Today(account, "ACME"), Currency("590")); // (50-40)*60 - 5 - 5
}

TEST(RebuildMapping, AReinvestmentRowBecomesADividendReinvestment)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Reinvestment", "2.5", "0", "20", "-50", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Lots("ACME"), "2.5 @ 20.0000");
}

TEST(RebuildMapping, ADividendRowBecomesAReinvestmentOfItsAmountAtPriceZero)
{
    TestAccount account;
    WriteHistory(account, {{" ", "Dividend", "0", "0", "0", "12.5", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Lots(" "), "12.5 @ 0.0000");
    EXPECT_EQ(account.Of(" ").Shares, Single::FromFloat(12.5F));
}

TEST(RebuildMapping, ADepositLeavesActionAndCountOfTheRowBefore)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {" ", "Deposit", "0", "0", "0", "500", "2026-01-06"}});
    Replay(account);
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000");
    EXPECT_EQ(account.Lots(" "), "100 @ 0.0000"); // bought once more, of the blank symbol
    EXPECT_EQ(account.Of(" ").Name, "  Inc.");
    EXPECT_EQ(account.Of(" ").TransCostToDate, Currency()); // the deposit's own commission
}

TEST(RebuildMapping, AWithdrawalBehindASaleIsSoldOnceMore)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"},
                           {"ACME", "Sold", "-40", "0", "12", "480", "2026-01-05"},
                           {" ", "Withdrawal", "0", "0", "0", "-100", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Lots("ACME"), "60 @ 10.0000");
    EXPECT_EQ(account.Of(" ").Shares, Single::FromFloat(-40));
    EXPECT_EQ(account.Lots(" "), "");
}

TEST(RebuildMapping, AnAdjustmentKeepsTheDayRollOfItsDate)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {" ", "Adjustment", "0", "0", "0", "250", "2026-01-06"}});
    Replay(account);
    EXPECT_EQ(ToDate(account, "ACME"), Currency("-5"));
    EXPECT_EQ(Today(account, "ACME"), Currency());
}

TEST(RebuildMapping, ACashRowAtTheHeadIsABuyOfNothing)
{
    TestAccount account;
    WriteHistory(account, {{" ", "Deposit", "0", "0", "0", "500", "2026-01-04"},
                           {"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"}});
    Replay(account);
    EXPECT_TRUE(account.Of(" ").Shares.IsZero());
    EXPECT_EQ(account.Of(" ").NumberTransToDate.Value(), 1);
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000");
    EXPECT_TRUE(account.Boxes().empty());
}

TEST(RebuildMapping, BlanksAroundADescriptionDoNotCountAndThoseInsideDo)
{
    struct Row
    {
        const char *description;
        std::optional<Action> action;
    };
    const Row rows[] = {{"Bought", Action::Buy},
                        {"  Bought ", Action::Buy},
                        {"Sold", Action::Sell},
                        {" Short  Sale", Action::SellShort},
                        {" Short Sale", std::nullopt},
                        {" Short Cover", Action::BuyToCover},
                        {"Reinvestment", Action::DividendReinvestment},
                        {"Dividend", Action::DividendReinvestment},
                        {"Deposit", std::nullopt},
                        {"Withdrawal", std::nullopt},
                        {"Adjustment", std::nullopt},
                        {"bought", std::nullopt},
                        {"", std::nullopt}};
    for (const Row &row : rows) {
        const std::optional<ReplayedAction> replayed = ReplayedActionOf(row.description);
        const auto action =
            replayed ? std::optional<Action>(replayed->action) : std::optional<Action>();
        EXPECT_TRUE(action == row.action) << row.description;
    }
}

TEST(RebuildMapping, ARowOfTheEmptySymbolIsLeftOut)
{
    TestAccount account;
    WriteHistory(account, {{"", "Bought", "100", "0", "10", "-1000", "2026-01-05"}});
    qint64 rows = 0;
    Replay(account, [&](qint64 row) { rows = row; });
    EXPECT_EQ(rows, 0);
    EXPECT_TRUE(account.Rows().IsEmpty());
}

// --- what a replay does differently -------------------------------------------------------------

TEST(RebuildDifferences, ASaleBeyondTheLotsPasses)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"},
                           {"ACME", "Sold", "-150", "0", "12", "1800", "2026-01-06"}});
    Replay(account);
    EXPECT_EQ(account.Of("ACME").Shares, Single::FromFloat(-50));
    EXPECT_EQ(account.Lots("ACME"), "");
    EXPECT_EQ(Today(account, "ACME"), Currency("200")); // (12-10)*100
    EXPECT_TRUE(account.Boxes().empty());
}

TEST(RebuildDifferences, DatesOfTheFuturePass)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2099-12-31"}});
    Replay(account);
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000");
    EXPECT_TRUE(account.Boxes().empty());
}

TEST(RebuildDifferences, TheCommissionIsThatOfTheLedger)
{
    TestAccount account = TestAccount().Commission("99");
    WriteHistory(account, {{"ACME", "Bought", "100", "-7.25", "10", "-1007.25", "2026-01-05"},
                           {"ACME", "Sold", "-100", "0", "10", "1000", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Of("ACME").TransCostToDate, Currency("-7.25"));
}

TEST(RebuildDifferences, AMutualFundHeldAtTheBeginningTakesEveryCommissionAway)
{
    TestAccount account = TestAccount().SecurityType("Mutual Fund");
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {"BETA", "Bought", "100", "-5", "10", "-1005", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Of("ACME").TransCostToDate, Currency());
    EXPECT_EQ(account.Of("BETA").TransCostToDate, Currency());
    EXPECT_TRUE(account.ProfitLoss().empty());
}

TEST(RebuildDifferences, AnyOtherTypeHeldAtTheBeginningKeepsTheLedgersCommissions)
{
    TestAccount account = TestAccount().SecurityType("");
    WriteHistory(account, {{"FUND", "Bought", "100", "-5", "10", "-1005", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Of("FUND").TransCostToDate, Currency("-5"));
}

TEST(RebuildDifferences, NothingIsLeftToUndo)
{
    TestAccount account = TestAccount().Row("ACME");
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"}});
    Replay(account);
    EXPECT_FALSE(account.UndoEnabled());
    EXPECT_FALSE(account.UndoRecords().PostingTransactionOpen);
    EXPECT_FALSE(account.gRsLots().InTransaction());
    EXPECT_FALSE(account.gConnAccount().InTransaction());
}

TEST(RebuildDifferences, TheLedgerIsNotTouched)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {" ", "Deposit", "0", "0", "0", "500", "2026-01-06"},
                           {"ACME", "Sold", "-40", "-5", "12", "475", "2026-01-07"}});
    const std::vector<std::string> before = account.History();
    Replay(account);
    EXPECT_EQ(account.History(), before);
}

TEST(RebuildDifferences, ANewDayRollsEveryRowForward)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {"BETA", "Bought", "100", "-3", "10", "-1003", "2026-01-05"},
                           {"BETA", "Bought", "1", "-1", "10", "-11", "2026-01-06"}});
    Replay(account);
    EXPECT_EQ(ToDate(account, "ACME"), Currency("-5"));
    EXPECT_EQ(account.Of("ACME").TransCostToday, Currency());
    EXPECT_EQ(account.Of("ACME").NumberTransToday.Value(), 0);
    EXPECT_EQ(ToDate(account, "BETA"), Currency("-3"));
    EXPECT_EQ(Today(account, "BETA"), Currency("-1"));
}

TEST(RebuildDifferences, ANewDayThatBeginsWithANewSymbolRollsOnce)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {"BETA", "Bought", "100", "-3", "10", "-1003", "2026-01-06"}});
    Replay(account);
    EXPECT_EQ(ToDate(account, "ACME"), Currency("-5"));
    EXPECT_EQ(Today(account, "BETA"), Currency("-3"));
    EXPECT_EQ(ToDate(account, "BETA"), Currency());
}

TEST(RebuildDifferences, AMissingNameDoesNotStopTheReplay)
{
    TestAccount account;
    account.gConnAccount().Execute(
        "INSERT INTO History (Symbol, Name, Description, Shares, Price, TransDate, Time) "
        "VALUES ('ACME', NULL, 'Bought', 100, 100000, '2026-01-05', NULL)");
    Replay(account);
    EXPECT_EQ(account.Of("ACME").Name, "");
    EXPECT_EQ(account.Lots("ACME"), "100 @ 10.0000");
}

TEST(RebuildDifferences, ARowWithoutADateBelongsToTheDayBeforeIt)
{
    TestAccount account;
    account.gConnAccount().Execute(
        "INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price) "
        "VALUES ('ACME', 'Acme', 'Bought', 100, -50000, 100000)");
    Replay(account);
    EXPECT_EQ(account.ProfitLoss(), (std::vector<std::string>{"ACME|Acme|-5|2026-03-02|"
                                                              "10:15:00.000"}));
}

TEST(RebuildDifferences, TheAverageOfAnEarlierSaleStandsWhereNoLotIsLeft)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"},
                           {"ACME", "Sold", "-40", "0", "12", "480", "2026-01-05"},
                           {"BETA", "Sold", "-7", "0", "99", "693", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.Of("BETA").AvrgPrice, Currency("10")); // ACME's
}

TEST(RebuildDifferences, SymbolsKeepTheirApostrophesAccentsAndCase)
{
    TestAccount account;
    const QString accented = QString::fromUtf8("CRÉDIT");
    WriteHistory(account, {{"O'NEIL", "Bought", "1", "0", "10", "-10", "2026-01-05"},
                           {accented, "Bought", "2", "0", "10", "-20", "2026-01-05"},
                           {"acme", "Bought", "3", "0", "10", "-30", "2026-01-05"},
                           {"ACME", "Bought", "4", "0", "10", "-40", "2026-01-05"}});
    Replay(account);
    EXPECT_EQ(account.StoredLots("O'NEIL").substr(3), "1 @ 10.0000");
    EXPECT_EQ(account.StoredLots(accented).substr(3), "2 @ 10.0000");
    EXPECT_EQ(account.StoredLots("acme").substr(3), "3 @ 10.0000");
    EXPECT_EQ(account.StoredLots("ACME").substr(3), "4 @ 10.0000");
}

TEST(RebuildDifferences, AnUndoOfAClearTakesNoReplayedLot)
{
    TestAccount account = TestAccount().Row("ACME").Row("BETA");
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"}});
    Replay(account);
    ASSERT_TRUE(account.Rows().Find("BETA"));
    PostingWork work = account.Work();
    ClearRow(work);
    account.Undo();
    EXPECT_EQ(account.StoredLots("ACME"), "#1 100 @ 10.0000");
}

// --- whole or not at all ------------------------------------------------------------------------

TEST(Rebuild, TheFileIsUntouchedUntilTheCommit)
{
    TestAccount account = TestAccount().Row("ACME", "7", "1").Lot("ACME", "7", "1", "2026-01-02");
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"}});
    const std::string before = account.FileText();
    account.Entry().RebuildMode = true;
    {
        HistoryReplay replay(account.Work());
        replay.Begin();
        EXPECT_EQ(account.FileText(), before);
        replay.Run([](qint64) {});
        EXPECT_EQ(account.FileText(), before);
    }
    EXPECT_EQ(account.FileText(), before);
    EXPECT_FALSE(account.gConnAccount().InTransaction());
}

TEST(Rebuild, AStoreThatRefusesALotLeavesTheFileAsItWas)
{
    TestAccount account = TestAccount().Row("ACME", "7", "1").Lot("ACME", "7", "1", "2026-01-02");
    WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"},
                           {"ACME", "Bought", "13", "-5", "10", "-135", "2026-01-05"}});
    account.ExecuteElsewhere("CREATE TRIGGER Refuse BEFORE INSERT ON PriceHistory WHEN "
                             "NEW.Shares = 13 BEGIN SELECT RAISE(ABORT, 'unlucky'); END");
    const std::string before = account.FileText();
    EXPECT_THROW(Replay(account), RuntimeError);
    EXPECT_EQ(account.FileText(), before);
}

TEST(Rebuild, MorePostingsOfASymbolThanItsCounterHoldsEndTheProgramAndLeaveTheFileAsItWas)
{
    TestAccount account;
    account.gConnAccount().Execute(
        "INSERT INTO History (Symbol, Description, Shares, Price, TransDate) "
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32768) "
        "SELECT 'ACME', 'Bought', 1, 10000, '2026-01-05' FROM n");
    const std::string before = account.FileText();
    EXPECT_THROW(Replay(account), ProgramEnded);
    const std::vector<std::string> boxes = account.Boxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_NE(boxes[0].find("An error has occured while performing 'OK' button logic."),
              std::string::npos);
    EXPECT_NE(boxes[0].find("Error number 6\nDescription: Overflow"), std::string::npos);
    EXPECT_EQ(account.FileText(), before);
}

TEST(Rebuild, ProgressIsToldForEachRow)
{
    TestAccount account;
    WriteHistory(account, {{"ACME", "Bought", "100", "0", "10", "-1000", "2026-01-05"},
                           {" ", "Deposit", "0", "0", "0", "500", "2026-01-06"}});
    std::vector<qint64> told;
    Replay(account, [&](qint64 row) { told.push_back(row); });
    EXPECT_EQ(told, (std::vector<qint64>{1, 2}));
}
