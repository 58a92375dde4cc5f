#include "transactions/entry_validation.h"

#include "base/fraction_price.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <functional>

namespace
{

const QString Stock = QStringLiteral("Stock");
const QString MutualFund = QStringLiteral("Mutual Fund");

void Tell(PostingWork &work, const QString &text)
{
    work.services.dialogs.MsgBox(text, Box::Exclamation, EditorTitle());
}

bool Ask(PostingWork &work, const QString &text)
{
    return work.services.dialogs.MsgBox(text, Box::YesNo + Box::Question, EditorTitle()) ==
           Answer::Yes;
}

/// The way out of every failed check.
bool Fail(PostingWork &work)
{
    work.services.status.Post(QStringLiteral("Correct errors found!"));
    return true;
}

bool Fail(PostingWork &work, const QString &text, EntryFiller &filler, EntryField field)
{
    Tell(work, text);
    filler.Focus(field);
    return Fail(work);
}

QString MissingAmountText(Action action)
{
    switch (action) {
    case Action::Deposit:
        return QStringLiteral("Please enter deposit amount");
    case Action::CashWithdrawal:
        return QStringLiteral("Please enter withdrawal amount");
    case Action::BalanceAdjustment:
        return QStringLiteral("Please enter new balance amount. The adjustment \n"
                              "is computed automatically");
    default:
        return QStringLiteral("Please enter dividend received");
    }
}

const TrackerRow *RowOf(const PostingWork &work, const QString &symbol)
{
    for (int i = 0; i < work.rows.RecordCount(); ++i)
        if (work.rows.At(i).Symbol == symbol)
            return &work.rows.At(i);
    return nullptr;
}

} // namespace

bool ActionFitsType(Action action, const QString &securityType)
{
    static const QStringList anyTrade = {QStringLiteral("Bond"), QStringLiteral("Future"),
                                         QStringLiteral("Commodity"), QStringLiteral("Option")};
    if (IsCashAction(action) || anyTrade.contains(securityType))
        return true;
    switch (action) {
    case Action::Buy:
    case Action::Sell:
    case Action::Split:
        return securityType == Stock || securityType == MutualFund;
    case Action::SellShort:
    case Action::BuyToCover:
        return securityType == Stock;
    case Action::DividendReinvestment:
        return securityType == MutualFund;
    default:
        return false;
    }
}

bool ValidateActionForType(PostingWork &work, Action action)
{
    if (work.entry.RebuildMode || ActionFitsType(action, work.entry.CurrentSecurityType))
        return false;
    work.services.dialogs.MsgBox(
        QStringLiteral("Selected transaction type is invalid for this security type: ") +
            work.entry.CurrentSecurityType,
        Box::Information, EditorTitle());
    return Fail(work);
}

bool RefreshEntryFields(PostingWork &work, TransactionEntry &entry)
{
    if (entry.Symbol.isEmpty() || work.entry.RebuildMode)
        return false;
    work.entry.AverageCost = Currency();
    const TrackerRow *row = RowOf(work, entry.Symbol);
    if (!row || !entry.action)
        return false;
    if (ValidateActionForType(work, *entry.action))
        return true;
    work.entry.AverageCost = row->AvrgPrice;

    const bool closes = entry.action == Action::Sell || entry.action == Action::BuyToCover;
    if (closes && entry.NumberOfShares.isEmpty() && !row->Shares.IsZero())
        entry.NumberOfShares =
            work.services.formats.ToText(row->Shares.IsNegative() ? -row->Shares : row->Shares);
    if (entry.action == Action::Split) {
        if (entry.NumberOfShares.isEmpty())
            entry.NumberOfShares = QStringLiteral("2");
        if (entry.PurchasePrice.isEmpty())
            entry.PurchasePrice = QStringLiteral("1");
    }
    return false;
}

namespace
{

/// A price, or each number of a fraction, in the language's own writing.
std::optional<QString> TypedPrice(const QString &text, const Formats &formats)
{
    if (!text.contains(QLatin1Char('/')))
        return formats.TypedNumber(text);
    static const QRegularExpression number(QStringLiteral("[^\\s/]+"));
    QString typed;
    qsizetype end = 0;
    for (auto found = number.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const std::optional<QString> own = formats.TypedNumber(match.captured());
        if (!own)
            return std::nullopt;
        typed += text.mid(end, match.capturedStart() - end) + *own;
        end = match.capturedEnd();
    }
    return typed + text.mid(end);
}

/// Brings what is typed into the language's own writing; false when it is no number. A text that
/// reads the same already stays as its field shows it, with its groups.
bool TakeTyped(QString &text, const Formats &formats)
{
    const std::optional<QString> typed = formats.TypedNumber(text);
    if (!typed)
        return false;
    if (typed->isEmpty() || !formats.IsNumeric(text) ||
        formats.NumberFromText(text) != formats.NumberFromText(*typed))
        text = *typed;
    return true;
}

/// Whether `compute` stays within the types that it computes with.
bool Fits(const std::function<void()> &compute)
{
    try {
        compute();
        return true;
    } catch (const RuntimeError &error) {
        if (error.Number() != RuntimeError::OverflowNumber)
            throw;
        return false;
    }
}

/// The amount, and the balance before and after it.
bool CashFits(const PostingWork &work, const TransactionEntry &entry)
{
    return Fits([&] {
        const Formats &formats = work.services.formats;
        const Currency amount = formats.CurrencyFromText(entry.NumberOfShares);
        (void)Currency::FromDouble(-formats.NumberFromText(entry.NumberOfShares));
        (void)(work.account.AccountBalance + amount);
        (void)(work.account.AccountBalance - amount);
    });
}

/// The position after the trade at the highest price that it is valued at, with all sums of money
/// that it goes into. The sums of a posting are built step by step, so half of the range is kept free.
/// A stored price that the position cannot be valued at does not count: the trade replaces it.
bool TradeFits(const PostingWork &work, const TransactionEntry &entry)
{
    return Fits([&] {
        const Formats &formats = work.services.formats;
        double shares = std::abs(formats.SingleFromText(entry.NumberOfShares).ToDouble());
        double price = std::abs(formats.CurrencyFromText(entry.PurchasePrice).ToDouble());
        if (const TrackerRow *row = RowOf(work, entry.Symbol)) {
            shares += std::abs(row->Shares.ToDouble());
            const double last = std::abs(row->CurrPrice.ToDouble());
            const auto value = [&] { (void)Currency::FromDouble(row->Shares.ToDouble() * last); };
            price = std::max({price, Fits(value) ? last : 0, std::abs(row->AvrgPrice.ToDouble())});
        }
        double money = shares * price;
        for (const Currency sum : {work.account.AccountBalance, work.totals.InvestedValueTotal,
                                   work.totals.InvestedToDateTotal, work.entry.Commission})
            money += std::abs(sum.ToDouble());
        (void)Currency::FromDouble(money * 2);
    });
}

/// Shares and prices of the row, its lots and its ledger after the split. A ratio of zero has an
/// error of its own.
bool SplitFits(const PostingWork &work, const TransactionEntry &entry)
{
    return Fits([&] {
        const Formats &formats = work.services.formats;
        const double oldShares = formats.CurrencyFromText(entry.PurchasePrice).ToDouble();
        const double newShares = formats.SingleFromText(entry.NumberOfShares).ToDouble();
        if (oldShares == 0 || newShares == 0)
            return;
        const auto check = [&](Single shares, Currency price) {
            const Single after = Single::FromDouble(shares.ToDouble() / oldShares * newShares);
            (void)Currency::FromDouble(oldShares * price.ToDouble() / newShares);
            (void)Currency::FromDouble(after.ToDouble() *
                                       price.ToDouble()); // a price of another day
        };
        if (const TrackerRow *row = RowOf(work, entry.Symbol)) {
            check(row->Shares, row->CurrPrice);
            check(row->Shares, row->AvrgPrice);
        }
        for (const Lot &lot : work.gRsLots.LotsOf(entry.Symbol))
            check(lot.Shares, lot.PurchasePrice);
        Statement ledger = work.gConnAccount.Prepare(
            QStringLiteral("SELECT Shares, Price FROM History WHERE Symbol = ?"));
        ledger.BindAll(entry.Symbol);
        while (ledger.Step())
            check(ledger.ShareCount(0), ledger.Money(1));
    });
}

} // namespace

std::optional<QString> ValidatePriceText(const QString &text, const Formats &formats)
{
    if (text.isEmpty())
        return text;
    const std::optional<QString> typed = TypedPrice(text, formats);
    if (!typed || typed->isEmpty())
        return std::nullopt;
    try {
        const Currency price = ParseFractionPrice(*typed, formats);
        if (price < Currency())
            return std::nullopt;
        if (price.IsZero())
            return QString();
        return formats.Format(price, u"###,##0.00000");
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

bool ValidateEntry(PostingWork &work, TransactionEntry &entry, EntryFiller &filler)
{
    if (work.entry.RebuildMode)
        return false;
    work.services.status.Post(QString());
    const Formats &formats = work.services.formats;
    const bool isNumber = TakeTyped(entry.NumberOfShares, formats);
    if (RefreshEntryFields(work, entry))
        return true;
    if (!entry.action)
        return Fail(work, QStringLiteral("Please select transaction type"), filler,
                    EntryField::NumberOfShares);
    if (IsCashAction(*entry.action)) {
        if (!isNumber || entry.NumberOfShares.isEmpty())
            return Fail(work, MissingAmountText(*entry.action), filler, EntryField::NumberOfShares);
        if (!CashFits(work, entry))
            return Fail(work, QStringLiteral("This amount is too large for the account."), filler,
                        EntryField::NumberOfShares);
        return false;
    }
    if (!isNumber || entry.NumberOfShares.isEmpty())
        return Fail(work, QStringLiteral("Please enter number of shares purchased or sold"), filler,
                    EntryField::NumberOfShares);
    const auto noPrice = [&] {
        return Fail(work, QStringLiteral("Price not entered!"), filler, EntryField::PurchasePrice);
    };
    const bool isSplit = entry.action == Action::Split;
    const std::optional<QString> price = isSplit ? formats.TypedNumber(entry.PurchasePrice)
                                                 : ValidatePriceText(entry.PurchasePrice, formats);
    if (!price)
        return Fail(work, QStringLiteral("Please provide a valid stock price!"), filler,
                    EntryField::PurchasePrice);
    entry.PurchasePrice = *price;
    if (price->isEmpty()) // a price of zero is blanked
        return noPrice();
    if (isSplit ? !SplitFits(work, entry) : !TradeFits(work, entry))
        return Fail(work,
                    QStringLiteral("These shares at this price are too large for the account."),
                    filler, EntryField::NumberOfShares);
    const Currency transPrice = formats.CurrencyFromText(entry.PurchasePrice);
    if (transPrice >= Currency("500") &&
        !Ask(work, QStringLiteral("Purchase price is greater than 500! Is this OK?"))) {
        filler.Focus(EntryField::PurchasePrice);
        return Fail(work);
    }
    if (entry.TransDate > work.services.clock.Today())
        return Fail(work, QStringLiteral("Transaction date can not be greater than today's date!"),
                    filler, EntryField::TransDate);
    return false;
}

namespace
{

/// A sale or cover of a flat row: the user may have meant to open a position on the other side.
bool MeansToOpen(PostingWork &work, TransactionEntry &entry, EntryFiller &filler,
                 const QString &question, Action opening, Action otherwise)
{
    const bool yes = Ask(work, question);
    const Action chosen = yes ? opening : otherwise;
    filler.SelectAction(chosen);
    if (yes)
        entry.action = opening;
    return yes;
}

/// Any lot bought after the entered date stops the sale, not only the earliest.
bool PrecedesALot(PostingWork &work, const TransactionEntry &entry, EntryFiller &filler)
{
    for (const Lot &lot : work.gRsLots.LotsOf(entry.Symbol)) {
        if (lot.TransDate <= entry.TransDate)
            continue;
        return Fail(work,
                    QStringLiteral("The sell transaction entered preceeds the earliest purchase "
                                   "made\nfor this security on ") +
                        work.services.formats.ToText(lot.TransDate),
                    filler, EntryField::TransDate);
    }
    return false;
}

} // namespace

bool ValidateSecurityEntry(PostingWork &work, TransactionEntry &entry, Single transShares,
                           Currency transPrice, EntryFiller &filler)
{
    if (work.entry.RebuildMode)
        return false;
    const Currency average = work.entry.AverageCost;
    const Single shares = work.rows.Current().Shares;
    const auto is = [&entry](Action action) { return entry.action == action; };

    if (!average.IsZero() &&
        transPrice > average + Currency::FromDouble(average.ToDouble() * 0.5) &&
        !Ask(work, QStringLiteral("Price is over 50% greater than your average price for this "
                                  "security! Is this OK?"))) {
        filler.Focus(EntryField::PurchasePrice);
        return Fail(work);
    }
    // The count of a sale is negative already, so this cannot hold: a sale beyond the position
    // passes, and its shares beyond the lots are dropped.
    if (is(Action::Sell) && transShares > shares && shares.IsPositive())
        return Fail(
            work,
            QStringLiteral("You're trying to sell more shares than you have for this security!"),
            filler, EntryField::NumberOfShares);
    if ((is(Action::Sell) || is(Action::Buy)) && shares.IsNegative())
        return Fail(work, QStringLiteral("You have existing short positions for this security!"),
                    filler, EntryField::Action);
    if ((is(Action::SellShort) || is(Action::BuyToCover)) && shares.IsPositive())
        return Fail(work, QStringLiteral("You have existing long positions for this security!"),
                    filler, EntryField::Action);
    if (is(Action::BuyToCover) && transShares > -shares && !shares.IsZero())
        return Fail(work, QStringLiteral("You're trying to cover more shares than you sold short!"),
                    filler, EntryField::NumberOfShares);
    if (is(Action::BuyToCover) && shares.IsZero() &&
        !MeansToOpen(work, entry, filler,
                     QStringLiteral("No shares to cover for this security. Do you mean Buy long?"),
                     Action::Buy, Action::SellShort))
        return Fail(work);
    if (is(Action::Sell) && shares.IsZero() &&
        !MeansToOpen(work, entry, filler,
                     QStringLiteral("No shares to sell long for this security. Do you mean Short?"),
                     Action::SellShort, Action::Buy))
        return Fail(work);
    if (is(Action::Split) && shares.IsZero())
        return Fail(work, QStringLiteral("Selected security has no shares to split."), filler,
                    EntryField::NumberOfShares);
    return (is(Action::Sell) || is(Action::BuyToCover)) && PrecedesALot(work, entry, filler);
}
