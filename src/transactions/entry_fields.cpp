#include "transactions/entry_fields.h"

#include "transactions/commission.h"

namespace
{

EntryFields TradeFields()
{
    EntryFields fields;
    fields.SharesCaption = QStringLiteral("Shares");
    fields.PriceCaption = QStringLiteral("Price");
    fields.SharesTip = QStringLiteral("Number of shares");
    fields.PriceTip = QStringLiteral("Enter price");
    fields.SharesStatus = QStringLiteral("Enter number of shares for this transaction");
    fields.PriceStatus = QStringLiteral("Enter purchase or sales price...");
    return fields;
}

EntryFields ReinvestmentFields()
{
    EntryFields fields = TradeFields();
    fields.CommissionOn = false;
    return fields;
}

EntryFields SplitFields()
{
    EntryFields fields;
    fields.SharesCaption = QStringLiteral("New Shares");
    fields.PriceCaption = QStringLiteral("Old Shares");
    fields.SharesTip = QStringLiteral("New share ratio");
    fields.PriceTip = QStringLiteral("Existing share ratio");
    fields.SharesStatus = QStringLiteral("Enter split ratio of new to old shares");
    fields.PriceStatus = QStringLiteral("Enter split ratio of old to new shares");
    fields.CommissionOn = false;
    return fields;
}

EntryFields CashFields(const QString &caption, const QString &tip, const QString &status)
{
    EntryFields fields;
    fields.SharesCaption = caption;
    fields.SharesTip = tip;
    fields.SharesStatus = status;
    fields.SecurityOn = false;
    fields.CommissionOn = false;
    return fields;
}

} // namespace

const EntryFields &FieldsOf(Action action)
{
    static const EntryFields trade = TradeFields();
    static const EntryFields reinvestment = ReinvestmentFields();
    static const EntryFields split = SplitFields();
    static const EntryFields deposit =
        CashFields(QStringLiteral("Deposit Amount"), QStringLiteral("Enter deposit amount"),
                   QStringLiteral("Enter deposit amount"));
    static const EntryFields withdrawal =
        CashFields(QStringLiteral("Amount"), QStringLiteral("Enter withdrawal amount"),
                   QStringLiteral("Enter withdrawal amount"));
    static const EntryFields adjustment = CashFields(
        QStringLiteral("New balance"), QStringLiteral("Enter new portfolio balance amount"),
        QStringLiteral("Enter new portfolio balance, the adjustment is computed "
                       "automatically."));
    static const EntryFields dividend =
        CashFields(QStringLiteral("Dividend Amount"), QStringLiteral("Enter dividend received"),
                   QStringLiteral("Enter divendend received"));
    switch (action) {
    case Action::Buy:
    case Action::Sell:
    case Action::SellShort:
    case Action::BuyToCover:
        return trade;
    case Action::DividendReinvestment:
        return reinvestment;
    case Action::Split:
        return split;
    case Action::Deposit:
        return deposit;
    case Action::CashWithdrawal:
        return withdrawal;
    case Action::BalanceAdjustment:
        return adjustment;
    case Action::DividendReceived:
        return dividend;
    }
    throw RuntimeError::TypeMismatch();
}

bool IsFreeOfCommission(Action action, const QString &securityType)
{
    return securityType == QLatin1String("Mutual Fund") || action == Action::Split ||
           action == Action::DividendReinvestment;
}

std::optional<Currency> ProposeCommission(const AccountState &account, const QString &count,
                                          const QString &price, const Formats &formats)
{
    if (count.isEmpty())
        return std::nullopt;
    const std::optional<QString> shares = formats.TypedNumber(count);
    const std::optional<QString> perShare = formats.TypedNumber(price);
    if (!shares || !perShare)
        return std::nullopt;
    try {
        const Currency tradeAmount = perShare->isEmpty()
                                         ? Currency()
                                         : Currency::FromDouble(formats.NumberFromText(*shares) *
                                                                formats.NumberFromText(*perShare));
        return ComputeCommission(account, formats.SingleFromText(*shares), tradeAmount);
    } catch (const RuntimeError &) {
        return std::nullopt; // the posting says what is wrong with the texts
    }
}

std::optional<Currency> AmountFromText(const QString &text, const Formats &formats)
{
    const std::optional<QString> typed = formats.TypedNumber(text);
    if (!typed)
        return std::nullopt;
    try {
        return formats.CurrencyFromText(*typed);
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

QString BalanceAdjustmentQuestion()
{
    return QStringLiteral("Balance adjustments should be done when the markets are closed \n"
                          "and Quillon has updated all the securities with current prices.\n\n"
                          "Continue?\n\n"
                          "For more information click on 'Help'.");
}

QString MissingTypeMessage(const QString &symbol)
{
    return QStringLiteral("Security ") + symbol +
           QStringLiteral(" does not have a valid type entry!\n\n"
                          "The security update screen will now be displayed.\n"
                          "When finished, try entering your transaction again.");
}
