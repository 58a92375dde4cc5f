#include "transactions/history.h"

#include <cstdlib>

namespace
{

const QString CashSymbol = QStringLiteral(" ");

QString CashName(Action action)
{
    return action == Action::Deposit ? QStringLiteral("Account Deposit") : ActionText(action);
}

Currency CashAmount(const PostingWork &work, const TransactionEntry &entry)
{
    const Formats &formats = work.services.formats;
    switch (*entry.action) {
    case Action::CashWithdrawal:
        return Currency::FromDouble(formats.NumberFromText(entry.NumberOfShares) * -1.0);
    case Action::BalanceAdjustment:
        return work.entry.AdjustmentAmount;
    default:
        return formats.CurrencyFromText(entry.NumberOfShares);
    }
}

} // namespace

void EndAfterFailure(Services &services, const QString &lines, const RuntimeError &error)
{
    services.dialogs.MsgBox(lines + QLatin1Char('\n') + ErrorLines(error), Box::Stop,
                            EditorTitle());
    services.lifetime.End();
    std::abort(); // the compiler does not see that End never comes back
}

QString HistoryDescription(Action action)
{
    switch (action) {
    case Action::Buy:
        return QStringLiteral("Bought");
    case Action::DividendReinvestment:
        return QStringLiteral("Reinvestment");
    case Action::BuyToCover:
        return QStringLiteral(" Short Cover");
    case Action::SellShort:
        return QStringLiteral(" Short  Sale");
    case Action::Sell:
        return QStringLiteral("Sold");
    case Action::Deposit:
        return QStringLiteral("Deposit");
    case Action::CashWithdrawal:
        return QStringLiteral("Withdrawal");
    case Action::BalanceAdjustment:
        return QStringLiteral("Adjustment");
    case Action::DividendReceived:
        return QStringLiteral("Dividend");
    case Action::Split:
        return QString();
    }
    throw RuntimeError::TypeMismatch();
}

void PostHistoryEntry(PostingWork &work, const TransactionEntry &entry, Single transShares)
{
    const bool cash = IsCashAction(*entry.action);
    const QString symbol = cash ? CashSymbol : entry.Symbol;
    const QString name = cash ? CashName(*entry.action) : work.undo.UndoLast.row.Name;
    const Single shares = cash ? Single() : transShares;
    const Currency cost = cash ? Currency() : work.totals.TransCost;
    const Currency price =
        cash ? Currency() : work.services.formats.CurrencyFromText(entry.PurchasePrice);
    const Currency amount =
        cash ? CashAmount(work, entry)
             : Currency::FromDouble(-1.0 * shares.ToDouble() * price.ToDouble() + cost.ToDouble());
    const QTime now = work.services.clock.TimeOfDay();

    work.gConnAccount.Execute(
        QStringLiteral("INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, "
                       "Price, Amount, TransDate, Time) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        symbol, name, HistoryDescription(*entry.action), shares, cost, price, amount,
        entry.TransDate, now);

    UndoRecord &last = work.undo.UndoLast;
    last.HistoryID = work.gConnAccount.LastInsertId();
    last.HistorySymbol = symbol;
    last.HistoryTransDate = entry.TransDate;
    last.HistoryTime = now;
}

void PostDailyProfitLoss(Connection &gConnAccount, const TrackerRow &row, QDate transDate,
                         Services &services)
{
    try {
        if (row.ProfitLossToday.IsZero()) {
            gConnAccount.Execute(
                QStringLiteral("DELETE FROM DailyProfitLoss WHERE Symbol = ? AND TransDate = ?"),
                row.Symbol, transDate);
            return;
        }
        gConnAccount.Execute(
            QStringLiteral(
                "INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) "
                "VALUES (?, ?, ?, ?, ?) ON CONFLICT (Symbol, TransDate) DO UPDATE SET "
                "ProfitLoss = excluded.ProfitLoss, Time = excluded.Time"),
            row.Symbol, row.Name, row.ProfitLossToday, transDate, services.clock.TimeOfDay());
    } catch (const RuntimeError &error) {
        EndAfterFailure(
            services,
            QStringLiteral("An error has occured while updating DailyProfitLoss.\n"
                           "Please check last action performed and notify technical support."),
            error);
    }
}
