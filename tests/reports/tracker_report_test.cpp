/// The Daily Tracker on a sheet.

#include "report_account.h"

#include "reports/tracker_report.h"

namespace
{

TrackerRow Row()
{
    TrackerRow row;
    row.Symbol = "MAR1";
    row.Name = "O'Neil & Café";
    row.Shares = Single::FromFloat(-100.5f);
    row.AvrgPrice = Currency("10.1234");
    row.CurrPrice = Currency("8");
    row.Basis = Currency("213.4017");
    row.PerCentGainToday = Single::FromFloat(0.20975f);
    row.ProfitLossToday = Currency("1");
    row.ProfitLossToDate = Currency("2");
    row.ActualProfitLoss = Currency("3");
    row.InvestedValue = Currency("804");
    row.InvestedToDate = Currency("5");
    row.TransCostToday = Currency("-6");
    row.TransCostToDate = Currency("-7");
    row.NumberTransToday = Integer::FromWide(8);
    row.NumberTransToDate = Integer::FromWide(9);
    row.TransDate = QDate(2026, 3, 2);
    row.Time = QTime(10, 15);
    return row;
}

TrackerContent Content()
{
    TrackerContent content;
    content.columns = {{"Symbol", "Symbol"},
                       {"Shares", "Shares"},
                       {"SecurityType", "SecurityType"},
                       {"% Gain ", "PerCentGainToday"}};
    content.rows = {Row()};
    content.totalHeadings = {"Current Balance*", "#TransToday"};
    content.totals = {"10,250.50", "3"};
    return content;
}

ReadBack Written(const TrackerContent &content, const QLocale &locale = English())
{
    return ReportAccount().Read(
        [&](Report &report) { WriteDailyTracker(report, content, QDate(2026, 3, 2)); }, locale);
}

} // namespace

TEST(TrackerReport, WritesDateCaptionsRowsAndTotals)
{
    EXPECT_EQ(Written(Content()).Rows(),
              Lines({"Date:02-Mar-26", "", "Symbol|Shares|% Gain ",
                     "MAR1|=-100.5|=10.1234|=8|=213.4017|=0.2098|=1|=2|=3|=804|=5|=-6|=-7|=8|=9|"
                     "O'Neil & Café|@2026-03-02|@10:15:00",
                     "", "Current Balance*|#TransToday", "=10250.5|=3"}));
}

TEST(TrackerReport, WritesTheFormattedColumnsInTheirForms)
{
    const ReadBack book = Written(Content());
    EXPECT_EQ(book.Format(4, 6), "0.00%");
    EXPECT_EQ(book.Format(4, 5), "General");
    EXPECT_EQ(book.Format(4, 17), "dddd, mmmm d, yyyy");
    EXPECT_EQ(book.Format(4, 18), "h:mm:ss AM/PM");
    EXPECT_EQ(book.Format(7, 1), "#,##0.00");
}

TEST(TrackerReport, OfAnEmptyAccountHasCaptionsAndTotals)
{
    TrackerContent content = Content();
    content.rows.clear();
    EXPECT_EQ(Written(content).Rows(), Lines({"Date:02-Mar-26", "", "Symbol|Shares|% Gain ", "",
                                              "Current Balance*|#TransToday", "=10250.5|=3"}));
}

TEST(TrackerReport, WritesTheTotalsOfADecimalCommaAsNumbers)
{
    TrackerContent content = Content();
    content.rows.clear();
    content.totals = {"10.250,50", "-0,25"};
    const Lines rows = Written(content, QLocale(QLocale::German, QLocale::Germany)).Rows();
    EXPECT_EQ(rows.back(), "=10250.5|=-0.25");
}

TEST(TrackerReport, LeavesTheDayAndTimeOfARowWithoutThemEmpty)
{
    TrackerContent content = Content();
    content.rows[0].TransDate = QDate();
    content.rows[0].Time = QTime();
    const std::string row = Written(content).Rows()[3];
    EXPECT_EQ(row.substr(row.rfind('|')), "|O'Neil & Café");
}
