#pragma once

/// The statement of a list report: a head, the conditions that the user chose, and an order.
///
///     SELECT Symbol, ... FROM History  WHERE TransDate >= ? AND TransDate <= ?  AND Symbol = ?
///     ORDER BY TransDate, Time, Symbol

#include "reports/report_options.h"
#include "store/connection.h"

#include <vector>

/// "statement WHERE clause" while the statement has no " WHERE " yet, else "statement joiner clause".
QString AppendWhereClause(const QString &statement, const QString &clause, const QString &joiner);

/// The fixed parts.
struct ReportQueryParts
{
    const char *head;       ///< "SELECT ... FROM History "
    const char *dateClause; ///< with two question marks: from, to
    const char *sortByDate; ///< "ORDER BY ..."
    const char *sortBySymbol;
};

struct ReportQuery
{
    QString statement;
    std::vector<FieldValue> values; ///< of its question marks

    Statement Open(const Connection &connection) const;
};

/// With the dates if the user limited them, and the symbol if just the selected security is wanted;
/// an empty symbol finds no row.
ReportQuery BuildReportQuery(const ReportQueryParts &parts, const ReportChoice &choice);
