#include "reports/performance_report.h"

#include "reports/report_query.h"

#include <algorithm>
#include <optional>

namespace
{

/// Equal for the days of a period, greater for a later one.
int PeriodOf(QDate date, ReportKind kind)
{
    switch (kind) {
    case ReportKind::YearlyPerformance:
        return date.year();
    case ReportKind::QuarterlyPerformance:
        return date.year() * 4 + (date.month() - 1) / 3;
    default:
        return date.year() * 12 + date.month() - 1;
    }
}

QString PeriodName(QDate date, ReportKind kind, const Formats &formats)
{
    switch (kind) {
    case ReportKind::YearlyPerformance:
        return QString::number(date.year());
    case ReportKind::QuarterlyPerformance:
        return QStringLiteral("Q%1 %2").arg((date.month() - 1) / 3 + 1).arg(date.year());
    default:
        return formats.FormatDate(date, u"mmm yyyy");
    }
}

/// Deposits less withdrawals.
class CashFlows
{
public:
    explicit CashFlows(const Connection &account)
    {
        Statement rows = account.Prepare(
            QStringLiteral("SELECT TransDate, SUM(Amount) FROM History WHERE Description IN "
                           "('Deposit', 'Withdrawal') GROUP BY TransDate ORDER BY TransDate"));
        Currency sum;
        while (rows.Step()) {
            sum += rows.Money(1);
            m_sums.push_back({rows.Date(0), sum});
        }
    }
    CashFlows() = default;

    Currency Between(QDate after, QDate upTo) const { return UpTo(upTo) - UpTo(after); }

private:
    struct Sum
    {
        QDate date;
        Currency sum; ///< of all days up to this one
    };
    Currency UpTo(QDate date) const
    {
        const auto later =
            std::upper_bound(m_sums.begin(), m_sums.end(), date,
                             [](QDate day, const Sum &entry) { return day < entry.date; });
        return later == m_sums.begin() ? Currency() : std::prev(later)->sum;
    }

    std::vector<Sum> m_sums;
};

struct DayBalance
{
    QDate date;
    Currency balance;
};

/// The first and the last balance of some days.
struct Span
{
    DayBalance first;
    DayBalance last;
};

class PerformanceBlock
{
public:
    PerformanceBlock(Report &report, const ReportChoice &choice, const CashFlows &flows)
        : m_report(report), m_choice(choice), m_flows(flows)
    {}

    /// In the order of the days.
    void Add(const DayBalance &day)
    {
        if (m_period &&
            PeriodOf(m_period->last.date, m_choice.kind) != PeriodOf(day.date, m_choice.kind))
            EndPeriod();
        Extend(m_period, day);
        Extend(m_all, day);
    }
    void End()
    {
        if (m_period)
            EndPeriod();
        if (m_all && m_choice.printTotals)
            WriteSpan(QStringLiteral("TOTAL"), *m_all);
    }

private:
    static void Extend(std::optional<Span> &span, const DayBalance &day)
    {
        if (!span)
            span = Span{day, day};
        span->last = day;
    }
    void EndPeriod()
    {
        WriteSpan(PeriodName(m_period->last.date, m_choice.kind, m_report.formats), *m_period);
        m_period.reset();
    }
    void WriteSpan(const QString &caption, const Span &span)
    {
        const Currency change = span.last.balance - span.first.balance;
        const Currency deposits = m_flows.Between(span.first.date, span.last.date);
        m_report.NextRow();
        m_report.SetRaw(1, caption);
        m_report.SetMoney(2, span.first.balance);
        m_report.SetMoney(3, span.last.balance);
        m_report.SetMoney(4, change);
        if (span.first.balance > Currency())
            m_report.SetFormatted(5, change.ToDouble() / span.first.balance.ToDouble(), u"Percent");
        m_report.SetMoney(6, deposits);
        m_report.SetMoney(7, change - deposits);
    }

    Report &m_report;
    const ReportChoice &m_choice;
    const CashFlows &m_flows;
    std::optional<Span> m_period;
    std::optional<Span> m_all;
};

void WriteBlock(Report &report, const QString &name, const Connection &account,
                const ReportChoice &choice)
{
    const bool isOfOneSecurity = choice.rows == ReportRows::SelectedSecurity;
    const QString track = isOfOneSecurity ? choice.symbol : QStringLiteral("Portfolio");
    ReportQuery query{QStringLiteral("SELECT TransDate, DailyBalance FROM PortfolioDailyBalance "
                                     "WHERE TrackName = ? "),
                      {track}};
    if (choice.byDateRange) {
        query.statement =
            AppendWhereClause(query.statement, QStringLiteral("TransDate >= ? AND TransDate <= ? "),
                              QStringLiteral("AND"));
        query.values.emplace_back(choice.from);
        query.values.emplace_back(choice.to);
    }
    query.statement += QStringLiteral("ORDER BY TransDate");

    const CashFlows flows = isOfOneSecurity ? CashFlows() : CashFlows(account);
    PerformanceBlock block(report, choice, flows);
    bool isFirst = true;
    Statement balances = query.Open(account);
    while (balances.Step()) {
        if (isFirst) {
            report.NextRow(2);
            report.SetRaw(1, name);
            if (isOfOneSecurity)
                report.SetRaw(2, track);
        }
        isFirst = false;
        block.Add({balances.Date(0), balances.Money(1)});
    }
    block.End();
}

void WriteUnread(Report &report, const QString &name, const QString &reason)
{
    report.NextRow(2);
    report.SetRaw(1, name);
    report.SetRaw(2, reason);
}

} // namespace

void WritePerformance(Report &report, const PerformanceAccounts &accounts,
                      const ReportChoice &choice)
{
    report.WriteHeader(
        {{"PORTFOLIO", "FIRST", "LAST", "CHANGE IN", "CHANGE IN", "DEPOSITS LESS", "CHANGE"},
         {"PERIOD", "BALANCE", "BALANCE", "MONEY", "PERCENT", "WITHDRAWALS", "WITHOUT THEM"}});
    for (const Portfolio &portfolio : accounts.portfolios) {
        if (!portfolio.isSelected)
            continue;
        if (portfolio.name == accounts.openName) {
            WriteBlock(report, portfolio.name, accounts.gConnAccount, choice);
            continue;
        }
        const QString path = accounts.files.PathOf(portfolio.name);
        if (path.isEmpty()) {
            WriteUnread(report, portfolio.name,
                        QStringLiteral("The file of this account was not found"));
            continue;
        }
        try {
            Connection other;
            other.OpenForReading(path);
            WriteBlock(report, portfolio.name, other, choice);
        } catch (const RuntimeError &error) {
            WriteUnread(report, portfolio.name, error.Description());
        }
    }
}
