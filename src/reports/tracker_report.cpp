#include "reports/tracker_report.h"

namespace
{

void WriteRow(Report &report, const TrackerRow &row)
{
    report.ReportColumn = 0;
    const auto next = [&report] { return ++report.ReportColumn; };
    report.SetRaw(next(), row.Symbol);
    report.SetRaw(next(), row.Shares);
    report.SetRaw(next(), row.AvrgPrice);
    report.SetRaw(next(), row.CurrPrice);
    report.SetRaw(next(), row.Basis);
    report.SetFormatted(next(), row.PerCentGainToday, u"Percent");
    for (const Currency amount :
         {row.ProfitLossToday, row.ProfitLossToDate, row.ActualProfitLoss, row.InvestedValue,
          row.InvestedToDate, row.TransCostToday, row.TransCostToDate})
        report.SetRaw(next(), amount);
    report.SetRaw(next(), double(row.NumberTransToday.Value()));
    report.SetRaw(next(), double(row.NumberTransToDate.Value()));
    report.SetRaw(next(), row.Name);
    report.SetDate(next(), row.TransDate, u"Long Date");
    if (const int column = next(); row.Time.isValid())
        report.ReportSheet.SetTyped(report.ReportRow, column,
                                    report.formats.FormatTime(row.Time, u"Long Time"));
}

} // namespace

void WriteDailyTracker(Report &report, const TrackerContent &content, QDate today)
{
    report.ReportRow = 1;
    report.SetRaw(1, QStringLiteral("Date:") + report.formats.FormatDate(today, u"Medium Date"));

    report.ReportRow = 3;
    report.ReportColumn = 0;
    for (const TrackerContent::Column &column : content.columns)
        if (column.dataField != QLatin1String("SecurityType"))
            report.SetRaw(++report.ReportColumn, column.caption);
    for (const TrackerRow &row : content.rows) {
        report.NextRow();
        WriteRow(report, row);
    }

    report.NextRow(2);
    for (int column = 0; column < content.totalHeadings.size(); ++column)
        report.SetRaw(column + 1, content.totalHeadings[column]);
    report.NextRow();
    for (int column = 0; column < content.totals.size(); ++column)
        report.ReportSheet.SetTyped(report.ReportRow, column + 1, content.totals[column]);
}
