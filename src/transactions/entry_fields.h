#pragma once

/// What the fields of a transaction are called, which of them an action uses, and what they
/// explain.
///
///                        count                 price          commission
///     Buy                Shares                Price          on, but off for a mutual fund
///     Split              New Shares            Old Shares     off
///     Deposit            Deposit Amount        off            off

#include "store/account_state.h"
#include "transactions/entry.h"

struct EntryFields
{
    QString SharesCaption;
    QString PriceCaption;
    QString SharesTip;
    QString PriceTip;
    QString SharesStatus; ///< status text on entering the field
    QString PriceStatus;
    bool SecurityOn = true;   ///< symbol, name and price
    bool CommissionOn = true; ///< for a security that pays commission
};

const EntryFields &FieldsOf(Action action);

/// No commission is charged: on a mutual fund, for a split, for a reinvested dividend.
bool IsFreeOfCommission(Action action, const QString &securityType);

/// The commission that the account's style proposes for the texts of the entry; without a price
/// text only a cost by shares or a flat one. Nothing when there is no count, or a text that is no
/// number.
std::optional<Currency> ProposeCommission(const AccountState &account, const QString &count,
                                          const QString &price, const Formats &formats);

/// What a user typed as an amount of money; nothing when it is none, or does not fit.
std::optional<Currency> AmountFromText(const QString &text, const Formats &formats);

/// The question before a balance adjustment is offered, and the message for a security that the
/// master list does not know.
QString BalanceAdjustmentQuestion();
QString MissingTypeMessage(const QString &symbol);
