/// The entry screen's fields: amounts with two decimals, prices that are checked before they are
/// left, and the commission that is proposed, changed and shown.

#include "platform/widgets/click_list.h"
#include "platform/widgets/field_edit.h"
#include "transactions/entry_fields.h"
#include "transactions/entry_validation.h"
#include "transactions/frm_transaction_update.h"

void frmTransactionUpdate::txtNumberOfShares_LostFocus()
{
    const Formats &formats = m_program.services.formats;
    const std::optional<QString> typed = formats.TypedNumber(txtNumberOfShares->text());
    if (IsCashAction(CurrentAction()) && typed && !typed->isEmpty())
        txtNumberOfShares->setText(formats.Reformat(*typed, u"###,##0.00"));
}

void frmTransactionUpdate::txtPurchasePrice_GotFocus()
{
    ShowProposedCommission(QString()); // the price is not in yet
}

/// False, after a message, when the price has to be corrected. Without a count nothing can be
/// posted yet, and the price may wait.
bool frmTransactionUpdate::txtPurchasePrice_Validate()
{
    if (CurrentAction() == Action::Split)
        return true;
    const std::optional<QString> price =
        ValidatePriceText(txtPurchasePrice->text(), m_program.services.formats);
    if (price) {
        if (*price != txtPurchasePrice->text())
            txtPurchasePrice->setText(*price);
        return true;
    }
    if (txtSymbol->text().isEmpty() || txtNumberOfShares->text().isEmpty())
        return true;
    MsgBox(QStringLiteral("Please provide a valid stock price!"), Box::Exclamation, EditorTitle());
    txtPurchasePrice->selectAll();
    return false;
}

void frmTransactionUpdate::ShowProposedCommission(const QString &price)
{
    if (m_program.entry.NoCommission) {
        ShowZeroCommission();
        return;
    }
    const Formats &formats = m_program.services.formats;
    const std::optional<Currency> proposed =
        ProposeCommission(m_program.account, txtNumberOfShares->text(), price, formats);
    if (!proposed)
        return;
    m_program.entry.Commission = *proposed;
    txtCommCost->setText(formats.Format(*proposed, u"###,##0.00"));
}

void frmTransactionUpdate::ShowZeroCommission()
{
    m_program.entry.Commission = Currency();
    txtCommCost->setText(QStringLiteral("0"));
}

void frmTransactionUpdate::txtCommCost_GotFocus()
{
    ShowProposedCommission(txtPurchasePrice->text());
    txtCommCost->selectAll();
    Status(QStringLiteral("Commission amount may be changed if needed."));
}

void frmTransactionUpdate::txtCommCost_KeyUp()
{
    const Formats &formats = m_program.services.formats;
    const QString text = txtCommCost->text();
    const std::optional<Currency> typed = AmountFromText(text, formats);
    m_program.entry.Commission = typed.value_or(Currency());
    if (typed || (!text.isEmpty() && AmountFromText(text + QLatin1Char('0'), formats)))
        return; // a number, or its beginning: "." on the way to ".50"
    ShowZeroCommission();
    txtCommCost->selectAll();
}

void frmTransactionUpdate::txtCommCost_LostFocus()
{
    const Formats &formats = m_program.services.formats;
    const std::optional<QString> typed = formats.TypedNumber(txtCommCost->text());
    const QString shown = formats.Reformat(typed.value_or(QString()), u"###,##0.00");
    const std::optional<Currency> commission = AmountFromText(shown, formats);
    if (!commission) {
        ShowZeroCommission();
        return;
    }
    txtCommCost->setText(shown);
    m_program.entry.Commission = *commission;
}
