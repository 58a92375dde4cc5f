#include "reports/gain_list_report.h"

#include "reports/report_query.h"

namespace
{

ReportQuery GainQuery(const ReportChoice &choice, bool isOfOneSecurity)
{
    QString statement =
        QStringLiteral("SELECT TransDate, SUM(DailyBalance) FROM PortfolioDailyBalance ");
    ReportQuery query;
    const QString joiner = QStringLiteral("AND");
    if (isOfOneSecurity) {
        statement = AppendWhereClause(statement, QStringLiteral("TrackName = ? "), joiner);
        query.values.emplace_back(choice.symbol);
    } else {
        statement =
            AppendWhereClause(statement, QStringLiteral("TrackName <> 'Portfolio' "), joiner);
    }
    if (choice.byDateRange) {
        statement = AppendWhereClause(statement,
                                      QStringLiteral("TransDate >= ? AND TransDate <= ? "), joiner);
        query.values.emplace_back(choice.from);
        query.values.emplace_back(choice.to);
    }
    query.statement = statement + QStringLiteral("GROUP BY TransDate ORDER BY TransDate");
    return query;
}

bool SameMonth(QDate one, QDate other)
{
    return one.year() == other.year() && one.month() == other.month();
}

void WriteTotal(Report &report, const char *caption, Currency total)
{
    report.NextRow();
    report.SetRaw(2, caption);
    report.SetMoney(3, total);
}

} // namespace

void WriteGainList(Report &report, const Connection &gConnAccount, const ReportChoice &choice)
{
    const bool isOfOneSecurity = choice.kind == ReportKind::SelectedSecurityGain ||
                                 choice.rows == ReportRows::SelectedSecurity;
    const QString track = isOfOneSecurity ? choice.symbol : QStringLiteral("Portfolio");
    report.WriteHeader({{"DATE", "SECURITY", "GAIN"}});

    Currency first, last, total, monthTotal;
    QDate month; // a day of the month under way
    const auto endMonth = [&] {
        WriteTotal(report, "TOTAL", monthTotal);
        monthTotal = Currency();
        report.NextRow();
    };
    Statement gains = GainQuery(choice, isOfOneSecurity).Open(gConnAccount);
    while (gains.Step()) {
        const QDate date = gains.Date(0);
        last = gains.Money(1);
        if (!month.isValid())
            first = last;
        else if (choice.printTotals && !SameMonth(date, month))
            endMonth();
        month = date;
        total += last;
        monthTotal += last;
        report.NextRow();
        report.SetDate(1, date);
        report.SetRaw(2, track);
        report.SetMoney(3, last);
    }
    if (!month.isValid())
        return; // nothing to total
    if (choice.printTotals)
        endMonth();
    WriteTotal(report, "TOTAL", total);
    WriteTotal(report, "CHANGE", last - first);
}
