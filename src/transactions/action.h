#pragma once

/// The ten actions, in the order of the list, and what each does to a position.

#include <QString>
#include <QStringList>

#include <optional>

enum class Action
{
    Buy,
    Sell,
    SellShort,
    BuyToCover,
    Split,
    Deposit,
    CashWithdrawal,
    BalanceAdjustment,
    DividendReceived,
    DividendReinvestment
};

/// "Buy", "Sell", "Sell short" and so on, by the value of Action.
const QStringList &ActionTexts();
inline QString ActionText(Action action)
{
    return ActionTexts().at(int(action));
}
std::optional<Action> ActionFromText(const QString &text);

/// Deposit, Cash Withdrawal, Balance Adjustment, Dividend Received: no security is touched.
bool IsCashAction(Action action);
/// Buy, Dividend Reinvestment, Sell short: a lot is opened.
bool OpensLot(Action action);
/// Sell, Sell short: the count is posted as a negative number.
bool TakesSharesAway(Action action);
/// Sell short, Buy to cover.
bool IsShortSide(Action action);
