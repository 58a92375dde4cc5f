#include "transactions/cash_actions.h"

namespace
{

/// The amount is the new balance. AdjustmentAmount keeps the exact difference, while the balance
/// takes the amount with two decimals.
void AdjustBalance(PostingWork &work, const TransactionEntry &entry)
{
    const Formats &formats = work.services.formats;
    Currency &balance = work.account.AccountBalance;
    work.entry.AdjustmentAmount = formats.CurrencyFromText(entry.NumberOfShares) - balance;
    const Answer answer = work.services.dialogs.MsgBox(
        QStringLiteral("NOTE: The current balance will be changed by ") +
            formats.ToText(work.entry.AdjustmentAmount) +
            QStringLiteral(".\nIs this adjustment correct?"),
        Box::YesNo + Box::Information, EditorTitle());
    if (answer == Answer::Yes)
        balance = formats.CurrencyFromText(formats.Reformat(entry.NumberOfShares, u"###,##0.00"));
    else
        work.services.dialogs.MsgBox(QStringLiteral("The current balance not changed!"),
                                     Box::Information, EditorTitle());
}

} // namespace

void PostCashAction(PostingWork &work, const TransactionEntry &entry)
{
    const auto amount = [&] {
        return work.services.formats.CurrencyFromText(entry.NumberOfShares);
    };
    switch (*entry.action) {
    case Action::Deposit:
    case Action::DividendReceived:
        work.account.AccountBalance += amount();
        break;
    case Action::CashWithdrawal:
        work.account.AccountBalance -= amount();
        break;
    case Action::BalanceAdjustment:
        AdjustBalance(work, entry);
        break;
    default:
        throw RuntimeError::TypeMismatch();
    }
}
