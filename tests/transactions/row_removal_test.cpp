#include "test_account.h"

#include "transactions/row_removal.h"

#include <gtest/gtest.h>

namespace
{

class RowRemoval : public testing::Test
{
protected:
    RowRemoval()
    {
        account.Row("ACME", "100", "10", "12").Lot("ACME", "100", "10", "2026-01-05").Row("ZORG");
        account.Sell("ACME", "10", "12"); // gain 20 today
        account.Commit();
        account.At("2026-03-02 11:00:00");
        before = account.Of("ACME");
        profitLoss = account.ProfitLoss();
        account.Rows().Find("ACME");
    }

    TestAccount account;
    TrackerRow before;
    std::vector<std::string> profitLoss;
};

} // namespace

TEST_F(RowRemoval, AClearedRowStaysAtZeroAndItsLotsArePending)
{
    PostingWork work = account.Work();
    ClearRow(work);
    TrackerRow expected;
    expected.Symbol = "ACME";
    expected.Name = "ACME Inc.";
    expected.TransDate = QDate(2026, 3, 2);
    expected.Time = QTime(11, 0);
    EXPECT_EQ(account.Of("ACME"), expected);
    EXPECT_TRUE(account.ProfitLoss().empty());
    EXPECT_EQ(account.Lots("ACME"), "");
    EXPECT_EQ(account.StoredLots("ACME"), "#1 90 @ 10.0000");
    EXPECT_EQ(account.History().size(), 1u);
    account.Commit();
    EXPECT_EQ(account.StoredLots("ACME"), "");
}

TEST_F(RowRemoval, ADeletedRowIsGoneAndComesBackWithTheUndo)
{
    PostingWork work = account.Work();
    DeleteRow(work, [] {});
    EXPECT_THROW(account.Of("ACME"), std::logic_error);
    EXPECT_TRUE(account.ProfitLoss().empty());
    account.Undo();
    EXPECT_EQ(account.Of("ACME"), before);
    EXPECT_EQ(account.Lots("ACME"), "90 @ 10.0000");
    ASSERT_EQ(account.ProfitLoss().size(), 1u);
    EXPECT_EQ(account.ProfitLoss()[0].substr(0, 17), profitLoss[0].substr(0, 17));
}

TEST_F(RowRemoval, TheGainOfAClearedRowPassesToTheBalanceStep)
{
    // 90 shares, (12-10)*100 less 20 realized: Basis 180 passes on as realized
    EXPECT_EQ(account.Of("ACME").Basis, Currency("180"));
    PostingWork work = account.Work();
    ClearRow(work);
    // BasisTotal of the last walk is 200, less 180
    EXPECT_EQ(account.Totals().PriorBasisTotal.ToDouble(), 20);
    EXPECT_TRUE(account.Totals().RealizedPending.IsZero());
}

TEST_F(RowRemoval, MakesThePostingBeforeItFinal)
{
    account.Buy("ZORG", "5", "7");
    account.Rows().Find("ACME");
    PostingWork work = account.Work();
    ClearRow(work);
    EXPECT_EQ(account.StoredLots("ZORG"), "#2 5 @ 7.0000");
    EXPECT_EQ(account.UndoRecords().UndoLast.row.Symbol, QStringLiteral("ACME"));
}
