#include "lists/history_list.h"

#include "store/sort_clauses.h"

namespace
{

constexpr SortClause historyOrders[] = {
    {"Symbol", "ORDER BY Symbol, TransDate, Time", "ORDER BY Symbol DESC, TransDate, Time"},
    {"Name", "ORDER BY Name, TransDate, Time", "ORDER BY Name DESC, TransDate, Time"},
    {"Description", "ORDER BY Description, Symbol, TransDate, Time",
     "ORDER BY Description DESC, Symbol, TransDate, Time"},
    {"Price", "ORDER BY Price, Symbol, TransDate, Time",
     "ORDER BY Price DESC, Symbol, TransDate, Time"},
    {"Amount", "ORDER BY Amount, Symbol, TransDate, Time",
     "ORDER BY Amount DESC, Symbol, TransDate, Time"},
    {"TransDate", "ORDER BY TransDate, Symbol, Time", "ORDER BY Transdate DESC, Time DESC, Symbol"},
    {"Time", "ORDER BY Time, TransDate, Symbol", "ORDER BY Time DESC, TransDate DESC, Symbol"},
};

} // namespace

RecordsetQuery HistoryQuery(QDate from, QDate to, const QString &historyOrderBy)
{
    RecordsetQuery query;
    query.columns = QStringLiteral("ID, Symbol, Name, Description, Shares, Price, Amount, "
                                   "TransactionCost, TransDate, Time");
    query.table = QStringLiteral("History");
    // Mostly all rows are asked for: fetched one by one in the order of an index they take half as
    // long again as in theirs with a sort behind it.
    query.tail =
        QStringLiteral("NOT INDEXED WHERE TransDate >= ? AND TransDate <= ? ") + historyOrderBy;
    query.values = {from, to};
    return query;
}

QString InitialHistoryOrder()
{
    return *HistoryOrderFor(QStringLiteral("TransDate"), true);
}

std::optional<QString> HistoryOrderFor(const QString &dataField, bool descending)
{
    return ClauseFor(historyOrders, dataField, descending);
}

std::optional<QString> HistoryEditRefusal(const Formats &formats, const QString &transDate,
                                          const QString &time)
{
    if (!formats.DateFromTyped(transDate))
        return QStringLiteral("Date entered is invalid, please correct");
    if (!formats.TimeFromText(time))
        return QStringLiteral("Time entered is invalid, please correct");
    return std::nullopt;
}
