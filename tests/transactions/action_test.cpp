#include "transactions/action.h"

#include <gtest/gtest.h>

TEST(Action, HasTheTenTextsInTheOrderOfTheList)
{
    const QStringList texts = {"Buy",
                               "Sell",
                               "Sell short",
                               "Buy to cover",
                               "Split",
                               "Deposit",
                               "Cash Withdrawal",
                               "Balance Adjustment",
                               "Dividend Received",
                               "Dividend Reinvestment"};
    EXPECT_EQ(ActionTexts(), texts);
    EXPECT_EQ(ActionText(Action::BuyToCover), QStringLiteral("Buy to cover"));
}

TEST(Action, IsFoundByItsTextAlone)
{
    for (int i = 0; i < ActionTexts().size(); ++i)
        EXPECT_EQ(ActionFromText(ActionTexts().at(i)), Action(i));
    EXPECT_EQ(ActionFromText(QStringLiteral("buy")), std::nullopt);
    EXPECT_EQ(ActionFromText(QString()), std::nullopt);
}

TEST(Action, SaysWhatItDoesToAPosition)
{
    struct Row
    {
        Action action;
        bool cash, opensLot, takesAway, shortSide;
    };
    const Row rows[] = {
        {Action::Buy, false, true, false, false},
        {Action::Sell, false, false, true, false},
        {Action::SellShort, false, true, true, true},
        {Action::BuyToCover, false, false, false, true},
        {Action::Split, false, false, false, false},
        {Action::Deposit, true, false, false, false},
        {Action::CashWithdrawal, true, false, false, false},
        {Action::BalanceAdjustment, true, false, false, false},
        {Action::DividendReceived, true, false, false, false},
        {Action::DividendReinvestment, false, true, false, false},
    };
    for (const Row &row : rows) {
        const std::string name = ActionText(row.action).toStdString();
        EXPECT_EQ(IsCashAction(row.action), row.cash) << name;
        EXPECT_EQ(OpensLot(row.action), row.opensLot) << name;
        EXPECT_EQ(TakesSharesAway(row.action), row.takesAway) << name;
        EXPECT_EQ(IsShortSide(row.action), row.shortSide) << name;
    }
}
