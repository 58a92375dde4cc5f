#include "transactions/action.h"

const QStringList &ActionTexts()
{
    static const QStringList texts = {
        QStringLiteral("Buy"),
        QStringLiteral("Sell"),
        QStringLiteral("Sell short"),
        QStringLiteral("Buy to cover"),
        QStringLiteral("Split"),
        QStringLiteral("Deposit"),
        QStringLiteral("Cash Withdrawal"),
        QStringLiteral("Balance Adjustment"),
        QStringLiteral("Dividend Received"),
        QStringLiteral("Dividend Reinvestment"),
    };
    return texts;
}

std::optional<Action> ActionFromText(const QString &text)
{
    const qsizetype index = ActionTexts().indexOf(text);
    if (index < 0)
        return std::nullopt;
    return static_cast<Action>(index);
}

bool IsCashAction(Action action)
{
    return action == Action::Deposit || action == Action::CashWithdrawal ||
           action == Action::BalanceAdjustment || action == Action::DividendReceived;
}

bool OpensLot(Action action)
{
    return action == Action::Buy || action == Action::DividendReinvestment ||
           action == Action::SellShort;
}

bool TakesSharesAway(Action action)
{
    return action == Action::Sell || action == Action::SellShort;
}

bool IsShortSide(Action action)
{
    return action == Action::SellShort || action == Action::BuyToCover;
}
