/// Profit and loss, and performance: their points, labels and what stands for nothing.

#include "chart_series_run.h"

namespace
{

using ProfitLossChart = ChartSeriesRun;
using PerformanceChart = ChartSeriesRun;
using enum ChartKind;

} // namespace

// --- profit and loss of the portfolio -----------------------------------------------------------

TEST_F(ProfitLossChart, SumsEachDayOfARangeOverAllSecurities)
{
    Profit("ACME", "2026-02-27", "250.5");
    Profit("ZETA", "2026-02-27", "-50.0001");
    Profit("ACME", "2026-03-02", "-10");
    EXPECT_EQ(Points(PortfolioPL, "2026-02-27", "2026-03-02"),
              "Feb-27-26 200.4999, Mar-02-26 -10"); // 250.5 - 50.0001
    EXPECT_EQ(grid->ColumnLabel(1), "Daily Profit Loss");
    EXPECT_EQ(grid->ColumnCount(), 1);
}

TEST_F(ProfitLossChart, LabelsTheEntriesOfASingleDayByTheirTimesAndSumsNone)
{
    Profit("ZETA", "2026-03-02", "-50", "15:30:01");
    Profit("ACME", "2026-03-02", "250", "09:05:00");
    Profit("BETA", "2026-02-27", "7");
    EXPECT_EQ(Points(PortfolioPL, "2026-03-02", "2026-03-02"), "9:05:00 AM 250, 3:30:01 PM -50");
}

TEST_F(ProfitLossChart, ShowsOnePointNoDataForAnEmptyRange)
{
    Profit("ACME", "2026-03-02", "250");
    EXPECT_EQ(Points(PortfolioPL, "2026-01-01", "2026-03-01"), "No Data 0");
    EXPECT_EQ(machine.dialogs.TakeBoxes(), std::vector<std::string>{noDataBox});
    EXPECT_TRUE(series.NoDataFound());
    EXPECT_EQ(Points(PortfolioPL, "2026-01-01", "2026-01-01"), "No Data 0"); // one day
    EXPECT_EQ(machine.dialogs.TakeBoxes(), std::vector<std::string>{noDataBox});
    EXPECT_EQ(Points(PortfolioPL, "2026-01-01", "2026-03-02"), "Mar-02-26 250");
    EXPECT_FALSE(series.NoDataFound());
    EXPECT_TRUE(machine.dialogs.TakeBoxes().empty());
}

TEST_F(ProfitLossChart, TakesBothEndsOfTheRangeALeapDayToo)
{
    Profit("ACME", "2024-02-28", "1");
    Profit("ACME", "2024-02-29", "2");
    Profit("ACME", "2024-03-01", "4");
    Profit("ACME", "2024-03-02", "8");
    EXPECT_EQ(Points(PortfolioPL, "2024-02-29", "2024-03-01"), "Feb-29-24 2, Mar-01-24 4");
}

TEST_F(ProfitLossChart, HasNoPointsInARangeThatEndsBeforeItBegins)
{
    Profit("ACME", "2026-02-27", "250");
    EXPECT_EQ(Points(PortfolioPL, "2026-03-02", "2026-02-01"), "No Data 0");
}

TEST_F(ProfitLossChart, KeepsAnEntryWithoutATime)
{
    Profit("ACME", "2026-03-02", "250");
    gConnAccount.Execute("UPDATE DailyProfitLoss SET Time = NULL");
    EXPECT_EQ(Points(PortfolioPL, "2026-03-02", "2026-03-02"), "? 250");
}

TEST_F(ProfitLossChart, IsDressedWithABoldLegendAndItsAxisFonts)
{
    Reload(PortfolioPL, "2026-01-01", "2026-03-02");
    EXPECT_TRUE(grid->ShowLegend);
    EXPECT_EQ(grid->LegendFont, (ChartFont{"", 9, true}));
    EXPECT_EQ(grid->AxisFonts[0], (ChartFont{"Ariel", 10, false}));
    EXPECT_EQ(grid->AxisFonts[1], (ChartFont{"Ariel", 9, false}));
    EXPECT_EQ(grid->AxisFonts[2], (ChartFont{"Ariel", 9, false}));
    EXPECT_FALSE(grid->Scale);
    EXPECT_FALSE(grid->PercentLabels);
}

TEST_F(ProfitLossChart, StaysAsItIsWhenADaysSumLeavesTheRangeOfMoney)
{
    Profit("ACME", "2026-02-27", "900000000000000");
    Profit("BETA", "2026-02-27", "900000000000000");
    EXPECT_EQ(Points(PortfolioPL, "2026-02-01", "2026-03-02"), "(stays)");
    EXPECT_TRUE(machine.dialogs.TakeBoxes().empty());
}

// --- profit and loss of one security ------------------------------------------------------------

TEST_F(ProfitLossChart, ShowsTheEntriesOfOneSecurityAlone)
{
    Profit("ACME", "2026-02-27", "250");
    Profit("ZETA", "2026-02-27", "-50");
    Profit("ACME", "2026-03-02", "-10");
    EXPECT_EQ(Points(SelectedSecPL, "2026-02-01", "2026-03-02", "ACME"),
              "Feb-27-26 250, Mar-02-26 -10");
    EXPECT_EQ(grid->ColumnLabel(1), "Daily P&L for ACME");
    EXPECT_EQ(grid->LegendFont, (ChartFont{"", 9, true}));
}

TEST_F(ProfitLossChart, KeepsTwoEntriesOfASecurityOnOneDayApart)
{
    gConnAccount.Execute("DROP INDEX DailyProfitLossByDay"); // as other programs may leave a file
    Profit("ACME", "2026-03-02", "1");
    Profit("ACME", "2026-03-02", "2");
    EXPECT_EQ(Points(SelectedSecPL, "2026-02-01", "2026-03-02", "ACME"),
              "Mar-02-26 1, Mar-02-26 2");
    EXPECT_EQ(Points(SelectedSecPL, "2026-03-02", "2026-03-02", "ACME"),
              "Mar-02-26 1, Mar-02-26 2"); // of a single day too: no times here
}

TEST_F(ProfitLossChart, ShowsZeroTodayForASecurityWithoutEntriesAndWritesNothing)
{
    Profit("ACME", "2026-02-27", "250");
    const qint64 before = ChangeCount();
    EXPECT_EQ(Points(SelectedSecPL, "2025-02-01", "2025-03-02", "ACME"), "Mar-02-26 0");
    EXPECT_EQ(machine.dialogs.TakeBoxes(), std::vector<std::string>{noDataBox});
    EXPECT_EQ(ChangeCount(), before);
}

TEST_F(ProfitLossChart, TakesSymbolsWithApostrophesAndAccents)
{
    Profit("O'NEIL", "2026-02-27", "250");
    Profit(QStringLiteral("Ärzte"), "2026-02-27", "7");
    EXPECT_EQ(Points(SelectedSecPL, "2026-02-01", "2026-03-02", "O'NEIL"), "Feb-27-26 250");
    EXPECT_EQ(Points(SelectedSecPL, "2026-02-01", "2026-03-02", QStringLiteral("Ärzte")),
              "Feb-27-26 7");
}

// --- performance --------------------------------------------------------------------------------

TEST_F(PerformanceChart, ShowsEachBalanceRowOfASecurity)
{
    Balance("ACME", "2026-02-26", "12.3456");
    Balance("ACME", "2026-03-02", "-7");
    Balance("ZETA", "2026-03-02", "100");
    Balance("Portfolio", "2026-03-02", "50000");
    EXPECT_EQ(Points(SelectedSecPerf, "2026-02-01", "2026-03-02", "ACME"),
              "Feb-26-26 12.3456, Mar-02-26 -7");
    EXPECT_EQ(grid->ColumnLabel(1), "Daily Gain for ACME");
    EXPECT_EQ(grid->LegendFont, (ChartFont{"", 9, true}));
    EXPECT_EQ(grid->AxisFonts[0].Size, 10);
    EXPECT_FALSE(grid->Scale);
}

TEST_F(PerformanceChart, SumsTheSecuritiesOfADayAndLeavesTheAccountsBalanceOut)
{
    Balance("ACME", "2026-02-27", "12.5");
    Balance("ZETA", "2026-02-27", "-2.25");
    Balance("Portfolio", "2026-02-27", "50000");
    Balance("Portfolio", "2026-02-28", "50000");
    Balance("ZETA", "2026-03-02", "3");
    EXPECT_EQ(Points(PortfolioPerf, "2026-02-01", "2026-03-02"),
              "Feb-27-26 10.25, Mar-02-26 3"); // 12.5 - 2.25
    EXPECT_EQ(grid->ColumnLabel(1), "Portfolio Daily Gain Total");
}

TEST_F(PerformanceChart, ShowsZeroTodayForAnEmptyRange)
{
    Balance("Portfolio", "2026-02-27", "50000");
    EXPECT_EQ(Points(PortfolioPerf, "2026-02-01", "2026-03-02"), "Mar-02-26 0");
    EXPECT_EQ(machine.dialogs.TakeBoxes(), std::vector<std::string>{noDataBox});
    EXPECT_TRUE(series.NoDataFound());
    EXPECT_EQ(Points(SelectedSecPerf, "2026-02-01", "2026-03-02", "ACME"), "Mar-02-26 0");
    EXPECT_EQ(machine.dialogs.TakeBoxes(), std::vector<std::string>{noDataBox});
}

TEST_F(PerformanceChart, HasNoIntervalEveryDayIsAPoint)
{
    for (int day = 0; day < 400; ++day)
        Balance("ACME", qPrintable(Day("2025-01-01").addDays(day).toString(Qt::ISODate)), "1");
    Reload(SelectedSecPerf, "2025-01-01", "2026-03-02", "ACME");
    EXPECT_EQ(grid->RowCount(), 400);
    EXPECT_EQ(interval, ChartInterval::None);
}

TEST_F(PerformanceChart, KeepsTheLargestAmounts)
{
    Balance("ACME", "2026-03-02", "922337203685477.5807");
    EXPECT_EQ(Points(PortfolioPerf, "2026-03-02", "2026-03-02"), "Mar-02-26 922337203685477.5807");
}

TEST_F(PerformanceChart, StaysAsItIsWhenTheStoreFails)
{
    gConnAccount.Execute("DROP TABLE PortfolioDailyBalance");
    EXPECT_EQ(Points(PortfolioPerf, "2026-02-01", "2026-03-02"), "(stays)");
    EXPECT_TRUE(machine.dialogs.TakeBoxes().empty());
}

// --- readout ------------------------------------------------------------------------------------

TEST_F(ProfitLossChart, ReadsOutTheDateAndTheAmountInHundredths)
{
    Profit("ACME", "2026-02-27", "1234567.885");
    Profit("ACME", "2026-03-02", "-0.5");
    Reload(PortfolioPL, "2026-02-01", "2026-03-02");
    EXPECT_EQ(Readout(PortfolioPL, 1, 1), "Date: Feb-27-26 Value: 1,234,567.89");
    EXPECT_EQ(Readout(PortfolioPL, 1, 2), "Date: Mar-02-26 Value: -0.50");
    Reload(PortfolioPL, "2026-03-01", "2026-03-01");
    EXPECT_EQ(Readout(PortfolioPL, 1, 1), "Date: No Data Value: 0.00");
}
