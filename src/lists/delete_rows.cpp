#include "lists/delete_rows.h"

#include "store/failed_write.h"
#include "transactions/matching.h"

namespace
{

/// The sales that the choice takes: matched, so that their purchases keep what was not sold, and
/// deleted. Returns their number.
int DeleteMatchedSales(Connection &gConnAccount, const DeleteChoice &choice)
{
    GainMatching matching;
    matching.OpenMatchingRecordsets(gConnAccount);
    int count = 0;
    for (int index = 0; index < matching.SaleCount(); ++index) {
        const MatchSale &sale = matching.Sale(index);
        if (!sale.TransDate.isValid() || sale.TransDate > choice.upTo)
            continue;
        if (choice.option == DeleteOption::SymbolDate && matching.SymbolOf(sale) != choice.symbol)
            continue;
        MatchResult figures; // nobody asks for them
        matching.MatchCurrentSale(index, figures);
        matching.DeleteSale(index);
        ++count;
    }
    matching.WriteBack(gConnAccount);
    return count;
}

int DeleteHistoryRows(Connection &gConnAccount, const DeleteChoice &choice)
{
    const QString usedUp = QStringLiteral("DELETE FROM History WHERE (Description LIKE 'Bought%' "
                                          "OR Description LIKE '%Sale%') AND Shares = 0");
    switch (choice.option) {
    case DeleteOption::CurrentRow:
        return gConnAccount.Execute(
            QStringLiteral("DELETE FROM History WHERE Symbol = ? AND ID = ?"), choice.symbol,
            choice.rowID);
    case DeleteOption::AllSelected:
        return gConnAccount.Execute(QStringLiteral("DELETE FROM History WHERE Symbol = ?"),
                                    choice.symbol);
    case DeleteOption::SymbolDate: {
        const int sales = DeleteMatchedSales(gConnAccount, choice);
        return sales +
               gConnAccount.Execute(usedUp + QStringLiteral(" AND Symbol = ?"), choice.symbol);
    }
    case DeleteOption::AllDate: {
        const int sales = DeleteMatchedSales(gConnAccount, choice);
        return sales + gConnAccount.Execute(usedUp);
    }
    }
    throw RuntimeError(RuntimeError::InvalidArgumentNumber, QStringLiteral("No such option"));
}

int DeletePlainRows(Connection &gConnAccount, const QString &table, const DeleteChoice &choice)
{
    const QString sql = QStringLiteral("DELETE FROM %1 WHERE ").arg(table);
    switch (choice.option) {
    case DeleteOption::CurrentRow:
        return gConnAccount.Execute(sql + QStringLiteral("Symbol = ? AND ID = ?"), choice.symbol,
                                    choice.rowID);
    case DeleteOption::AllSelected:
        return gConnAccount.Execute(sql + QStringLiteral("Symbol = ?"), choice.symbol);
    case DeleteOption::SymbolDate:
        return gConnAccount.Execute(sql + QStringLiteral("Symbol = ? AND TransDate <= ?"),
                                    choice.symbol, choice.upTo);
    case DeleteOption::AllDate:
        return gConnAccount.Execute(sql + QStringLiteral("TransDate <= ?"), choice.upTo);
    }
    throw RuntimeError(RuntimeError::InvalidArgumentNumber, QStringLiteral("No such option"));
}

/// One transaction; returns how many rows went.
int DeleteAll(Connection &gConnAccount, const DeleteChoice &choice)
{
    WriteGuard guard(gConnAccount);
    int count = 0;
    switch (choice.table) {
    case DeleteTable::None:
        break;
    case DeleteTable::History:
        count = DeleteHistoryRows(gConnAccount, choice);
        break;
    case DeleteTable::PriceHistory:
        count = DeletePlainRows(gConnAccount, QStringLiteral("PriceHistory"), choice);
        break;
    case DeleteTable::DailyProfitLoss:
        count = DeletePlainRows(gConnAccount, QStringLiteral("DailyProfitLoss"), choice);
        break;
    }
    guard.Commit();
    return count;
}

} // namespace

QString DeleteCaption(DeleteTable table)
{
    switch (table) {
    case DeleteTable::None:
        return QString();
    case DeleteTable::History:
        return QStringLiteral("Delete History Transactions");
    case DeleteTable::PriceHistory:
        return QStringLiteral("Delete Purchase Price");
    case DeleteTable::DailyProfitLoss:
        return QStringLiteral("Delete Profit and Loss");
    }
    throw RuntimeError(RuntimeError::InvalidArgumentNumber, QStringLiteral("No such table"));
}

bool ConfirmDelete(const Services &services, const DeleteChoice &choice)
{
    QString question;
    int buttons = Box::OkCancel;
    switch (choice.option) {
    case DeleteOption::CurrentRow:
        question = QStringLiteral("Current row will be deleted!");
        buttons += Box::Exclamation;
        break;
    case DeleteOption::AllSelected:
        question = QStringLiteral("All rows for symbol ") + choice.symbol +
                   QStringLiteral(" will be deleted!");
        break;
    case DeleteOption::SymbolDate:
        question = QStringLiteral("Delete of symbol ") + choice.symbol +
                   QStringLiteral(" will begin with oldest date and will end with date of ") +
                   services.formats.ToText(choice.upTo) + QStringLiteral(", Continue?");
        break;
    case DeleteOption::AllDate: // "history", whatever the table
        question = QStringLiteral("All history information starting with oldest date \n"
                                  "and ending with ") +
                   services.formats.ToText(choice.upTo) +
                   QStringLiteral(" will be deleted, Continue?");
        break;
    }
    return services.dialogs.MsgBox(question, buttons, EditorTitle(QStringLiteral("Delete"))) ==
           Answer::Ok;
}

int DeleteRows(Connection &gConnAccount, const DeleteChoice &choice)
{
    int count = 0;
    OrFail(QStringLiteral("The deletion"), [&] { count = DeleteAll(gConnAccount, choice); });
    return count;
}

std::optional<QString> DeleteReminder(const DeleteChoice &choice)
{
    if (choice.table == DeleteTable::History)
        return std::nullopt;
    const QString head =
        QStringLiteral("REMINDER! Make sure to delete existing transaction history for ");
    switch (choice.option) {
    case DeleteOption::CurrentRow:
        return std::nullopt;
    case DeleteOption::AllSelected:
        return head + QLatin1Char('\n') + choice.symbol +
               QStringLiteral(" if you do not need that information.");
    case DeleteOption::SymbolDate:
        return head + choice.symbol +
               QStringLiteral(" in the date range selected if you do not need that information.");
    case DeleteOption::AllDate:
        return head + QStringLiteral("\nall symbols in the date range selected if you do not need "
                                     "that information.");
    }
    throw RuntimeError(RuntimeError::InvalidArgumentNumber, QStringLiteral("No such option"));
}
