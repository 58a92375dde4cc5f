#include "reports/report_query.h"

QString AppendWhereClause(const QString &statement, const QString &clause, const QString &joiner)
{
    const QString where = QStringLiteral(" WHERE ");
    if (!statement.contains(where))
        return statement + where + clause;
    return statement + QLatin1Char(' ') + joiner + QLatin1Char(' ') + clause;
}

ReportQuery BuildReportQuery(const ReportQueryParts &parts, const ReportChoice &choice)
{
    ReportQuery query{QString::fromUtf8(parts.head), {}};
    if (choice.byDateRange) {
        query.statement = AppendWhereClause(query.statement, QString::fromUtf8(parts.dateClause),
                                            QStringLiteral(" "));
        query.values = {choice.from, choice.to};
    }
    if (choice.rows == ReportRows::SelectedSecurity) {
        query.statement = AppendWhereClause(query.statement, QStringLiteral("Symbol = ? "),
                                            QStringLiteral("AND"));
        query.values.emplace_back(choice.symbol);
    }
    query.statement += QString::fromUtf8(choice.sort == ReportSort::ByDate ? parts.sortByDate
                                                                           : parts.sortBySymbol);
    return query;
}

Statement ReportQuery::Open(const Connection &connection) const
{
    Statement opened = connection.Prepare(statement);
    int index = 0;
    for (const FieldValue &value : values) {
        if (const auto *date = std::get_if<QDate>(&value))
            opened.Bind(++index, *date);
        else
            opened.Bind(++index, std::get<QString>(value));
    }
    return opened;
}
