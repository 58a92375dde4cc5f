#include "test_account.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

const char *const Adjusted250 = "Quillon Editor|68|NOTE: The current balance will be changed by "
                                "250.\nIs this adjustment correct?";

} // namespace

TEST(CashActions, MoveTheBalanceByTheAmount)
{
    TestAccount account = TestAccount().Balance("1000");
    account.Cash(Action::Deposit, "250.50");
    EXPECT_EQ(account.State().AccountBalance, Currency("1250.5"));
    account.Cash(Action::CashWithdrawal, "50");
    EXPECT_EQ(account.State().AccountBalance, Currency("1200.5"));
    account.Cash(Action::DividendReceived, "9.5");
    EXPECT_EQ(account.State().AccountBalance, Currency("1210"));
}

TEST(CashActions, AcceptGroupsInTheAmount)
{
    TestAccount account;
    account.Cash(Action::Deposit, "1,000.50");
    EXPECT_EQ(account.State().AccountBalance, Currency("1000.5"));
}

TEST(CashActions, AWithdrawalMayPassTheBalance)
{
    TestAccount account = TestAccount().Balance("100");
    EXPECT_EQ(account.Cash(Action::CashWithdrawal, "250"), PostingOutcome::Posted);
    EXPECT_EQ(account.State().AccountBalance, Currency("-150"));
    EXPECT_TRUE(account.Boxes().empty());
}

TEST(CashActions, TouchNoPositionAndOpenNoTransaction)
{
    TestAccount account = TestAccount().Row("ACME", "100", "10", "12").Commission("5");
    const TrackerRow before = account.Of("ACME");
    account.Cash(Action::DividendReceived, "40");
    EXPECT_EQ(account.Of("ACME"), before);
    EXPECT_TRUE(account.ProfitLoss().empty());
    EXPECT_FALSE(account.gRsLots().InTransaction());
    EXPECT_EQ(account.State().AccountBalance, Currency("40")); // never a commission
    EXPECT_TRUE(account.UndoEnabled());
}

TEST(BalanceAdjustment, TakesTheAmountAsTheNewBalance)
{
    TestAccount account = TestAccount().Balance("1000").Queue(Answer::Yes);
    account.Cash(Action::BalanceAdjustment, "1250");
    EXPECT_EQ(account.Boxes(), Lines{Adjusted250});
    EXPECT_EQ(account.State().AccountBalance, Currency("1250"));
    EXPECT_EQ(account.Entry().AdjustmentAmount, Currency("250"));
    EXPECT_EQ(account.History(), Lines{" |Balance Adjustment|Adjustment|0|0|0|250|2026-03-02"});
}

TEST(BalanceAdjustment, AnsweredNoKeepsTheBalanceAndWritesTheRowAllTheSame)
{
    TestAccount account = TestAccount().Balance("1000").Queue(Answer::No);
    EXPECT_EQ(account.Cash(Action::BalanceAdjustment, "1250"), PostingOutcome::Posted);
    const Lines boxes = account.Boxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0], Adjusted250);
    EXPECT_NE(boxes[1].find("The current balance not changed!"), std::string::npos);
    EXPECT_EQ(account.State().AccountBalance, Currency("1000"));
    EXPECT_EQ(account.History(), Lines{" |Balance Adjustment|Adjustment|0|0|0|250|2026-03-02"});
}

TEST(BalanceAdjustment, RoundsTheBalanceToTwoDecimalsButNotTheDifference)
{
    TestAccount account = TestAccount().Balance("1000").Queue(Answer::Yes);
    account.Cash(Action::BalanceAdjustment, "1000.126");
    EXPECT_EQ(account.State().AccountBalance, Currency("1000.13"));
    EXPECT_EQ(account.Entry().AdjustmentAmount, Currency("0.126"));
}

TEST(BalanceAdjustment, ShowsADifferenceBelowZero)
{
    TestAccount account = TestAccount().Balance("1000").Queue(Answer::Yes);
    account.Cash(Action::BalanceAdjustment, "0");
    EXPECT_EQ(account.Boxes()[0], "Quillon Editor|68|NOTE: The current balance will be changed by "
                                  "-1000.\nIs this adjustment correct?");
    EXPECT_TRUE(account.State().AccountBalance.IsZero());
}
