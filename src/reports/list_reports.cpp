#include "reports/list_reports.h"

#include "reports/report_query.h"

namespace
{

constexpr const char *transDateClause = "TransDate >= ? AND TransDate <= ? ";

constexpr ReportQueryParts historyParts{
    "SELECT Symbol, Name, Description, Shares, Price, Amount, TransDate FROM History ",
    transDateClause, "ORDER BY TransDate, Time, Symbol", "ORDER BY Symbol, TransDate, Time"};

constexpr ReportQueryParts profitLossParts{
    "SELECT Symbol, Name, ProfitLoss, TransDate FROM DailyProfitLoss ", transDateClause,
    "ORDER BY TransDate, Time, Symbol", "ORDER BY Symbol, TransDate, Time"};

constexpr ReportQueryParts priceParts{"SELECT Symbol, PriceDate, PriceOpen, DayHigh, DayLow, "
                                      "PriceClose, Volume, AdjClose FROM HistoricalPrices ",
                                      "PriceDate >= ? AND PriceDate <= ? ",
                                      "ORDER BY PriceDate, Symbol", "ORDER BY Symbol, PriceDate"};

/// The totals between the rows of the profit and loss report.
class ProfitLossTotals
{
public:
    ProfitLossTotals(Report &report, const ReportChoice &choice)
        : m_report(report), m_sort(choice.sort), m_isWanted(choice.printTotals)
    {}

    /// Before the first row.
    void Begin(QDate date, const QString &symbol)
    {
        TotalsDate = date;
        TotalsSymbol = symbol;
    }
    /// Before each row: the total of the group before it, when the row begins another one.
    void Step(QDate date, const QString &symbol)
    {
        if (!m_isWanted)
            return;
        const bool isOther =
            m_sort == ReportSort::ByDate ? date != TotalsDate : symbol != TotalsSymbol;
        if (!isOther && !LastRowPassed)
            return;
        m_report.NextRow();
        m_report.SetRaw(3, "TOTAL");
        m_report.SetRaw(4, ProfitLossTotal);
        ProfitLossTotal = Currency();
        Begin(date, symbol);
        m_report.NextRow();
    }
    void Add(Currency profitLoss)
    {
        if (m_isWanted)
            ProfitLossTotal += profitLoss;
    }
    /// Behind the last row.
    void End()
    {
        LastRowPassed = true;
        Step(TotalsDate, TotalsSymbol);
    }

private:
    Report &m_report;
    const ReportSort m_sort;
    const bool m_isWanted;
    Currency ProfitLossTotal;
    QDate TotalsDate;
    QString TotalsSymbol;
    bool LastRowPassed = false;
};

/// A price that is not known leaves its cell empty.
void SetPrice(Report &report, int column, const Statement &prices, int field)
{
    if (!prices.IsNull(field))
        report.SetMoney(column, prices.Money(field));
}

} // namespace

void WriteTransactionHistory(Report &report, const Connection &gConnAccount,
                             const ReportChoice &choice)
{
    report.WriteHeader(
        {{"DATE", "SECURITY", "N A M E", "DESCRIPTION", "QUANTITY", "PRICE PER", "TRANSACTION"},
         {"", "", "", "", "", "UNIT", "AMOUNT"}});
    Statement history = BuildReportQuery(historyParts, choice).Open(gConnAccount);
    while (history.Step()) {
        report.NextRow();
        report.SetDate(1, history.Date(6));
        report.SetRaw(2, history.Text(0));
        report.SetRaw(3, history.Text(1));
        report.SetRaw(4, history.Text(2));
        report.SetRaw(5, history.ShareCount(3));
        report.SetMoney(6, history.Money(4));
        report.SetMoney(7, history.Money(5));
    }
}

void WriteProfitLoss(Report &report, const Connection &gConnAccount, const ReportChoice &choice)
{
    report.WriteHeader({{"DATE", "SECURITY", "N A M E", "PROFIT/LOSS"}});
    ProfitLossTotals totals(report, choice);
    bool isFirst = true;
    Statement entries = BuildReportQuery(profitLossParts, choice).Open(gConnAccount);
    while (entries.Step()) {
        const QString symbol = entries.Text(0);
        const Currency profitLoss = entries.Money(2);
        const QDate date = entries.Date(3);
        if (isFirst)
            totals.Begin(date, symbol);
        isFirst = false;
        totals.Step(date, symbol);
        report.NextRow();
        report.SetDate(1, date);
        report.SetRaw(2, symbol);
        report.SetRaw(3, entries.Text(1));
        report.SetMoney(4, profitLoss);
        totals.Add(profitLoss);
    }
    if (!isFirst)
        totals.End();
}

void WriteHistoricalPriceList(Report &report, const Connection &gConnHistPrices,
                              const ReportChoice &choice)
{
    report.WriteHeader({{"DATE", "SECURITY", "OPEN", "DAY HIGH", "DAY LOW", "CLOSE", "VOLUME"}});
    Statement prices = BuildReportQuery(priceParts, choice).Open(gConnHistPrices);
    while (prices.Step()) {
        report.NextRow();
        report.SetDate(1, prices.Date(1));
        report.SetRaw(2, prices.Text(0));
        SetPrice(report, 3, prices, 2);
        SetPrice(report, 4, prices, 3);
        SetPrice(report, 5, prices, 4);
        SetPrice(report, 6, prices, 5);
        if (!prices.IsNull(6))
            report.SetRaw(7, double(prices.Int64(6)));
    }
}
