/// What the screen shows of each kind, and how its style goes round.

#include "charts/chart_kind.h"

#include "base/runtime_error.h"
#include "support/print_qt.h"

#include <gtest/gtest.h>

namespace
{

using enum ChartKind;

/// The chart types that presses of the button give from the beginning on, and the captions.
QString Presses(ChartKind kind, int count)
{
    QStringList steps;
    QString caption = QString::fromUtf8(InfoOf(kind).nextStyle);
    for (int press = 0; press < count; ++press) {
        const ChartStyleStep step = NextChartStyle(kind, caption);
        caption = step.nextCaption;
        steps << QStringLiteral("%1 %2").arg(int(step.style)).arg(caption);
    }
    return steps.join(QStringLiteral(", "));
}

} // namespace

TEST(ChartKindInfo, TellsCaptionHelpAndControlsOfEachKind)
{
    const struct
    {
        ChartKind kind;
        const char *menu, *caption, *helpTopic;
        bool symbols, dates, interval;
        int type;
        const char *button;
    } kinds[] = {
        {PortfolioPL, "mnuChartPortfolioPL", "Profit and Loss Chart", "CHDailyProfitLoss.html",
         false, true, false, 1, "3D Bar"},
        {SelectedSecPL, "mnuChartSelectedSecPL", "Selected Security P&L Chart",
         "CHSelectedSecPL.html", true, true, false, 1, "3D Bar"},
        {Positions, "mnuChartPositions", "Portfolio Positions Chart", "CHPortfolioPositions.html",
         false, false, false, 14, ""},
        {AssetAllocation, "mnuChartAssetAllocation", "Portfolio Asset Allocation",
         "CHAssetAllocation.html", false, false, false, 14, ""},
        {HistoricalPrices, "mnuChartHistoricalPrices", "Historical Price Chart",
         "CHHistoricalPrice.html", true, true, true, 3, "3D Line"},
        {SelectedSecPerf, "mnuChartSelectedSecPerf", "Selected Security Performance Chart",
         "CHSelectedSecPerf.html", true, true, false, 3, "3D Line"},
        {PortfolioPerf, "mnuChartPortfolioPerf", "Portfolio Performance Chart",
         "CHPortfolioPerformance.html", false, true, false, 3, "3D Line"},
    };
    for (const auto &expected : kinds) {
        const ChartKindInfo &info = InfoOf(expected.kind);
        EXPECT_STREQ(info.menu, expected.menu);
        EXPECT_STREQ(info.caption, expected.caption);
        EXPECT_STREQ(info.helpTopic, expected.helpTopic);
        EXPECT_EQ(info.hasSymbolList, expected.symbols) << info.menu;
        EXPECT_EQ(info.hasDates, expected.dates) << info.menu;
        EXPECT_EQ(info.hasInterval, expected.interval) << info.menu;
        EXPECT_EQ(int(info.style), expected.type) << info.menu;
        EXPECT_STREQ(info.nextStyle, expected.button) << info.menu;
    }
}

TEST(ChartKindInfo, HasAHintForPiesLinesAndBars)
{
    for (const ChartKind kind : {Positions, AssetAllocation})
        EXPECT_STREQ(InfoOf(kind).hint,
                     "Click once on the pie slice to selected it, then once more to obtain it's "
                     "value. Double click on any area to change colors.");
    for (const ChartKind kind : {SelectedSecPerf, PortfolioPerf, HistoricalPrices})
        EXPECT_STREQ(InfoOf(kind).hint,
                     "Click once in the plot line to show data points, then click a data point to "
                     "obtain it's value.  Double click on any area to change colors.");
    for (const ChartKind kind : {PortfolioPL, SelectedSecPL})
        EXPECT_STREQ(InfoOf(kind).hint,
                     "Click once on the bar to select it, then once more to obtain it's value.  "
                     "Double click on any area to change colors.");
}

TEST(NextChartStyle, GoesBetweenTheTwoBars)
{
    for (const ChartKind kind : {PortfolioPL, SelectedSecPL})
        EXPECT_EQ(Presses(kind, 3), "0 2D Bar, 1 3D Bar, 0 2D Bar");
}

TEST(NextChartStyle, GoesFromLinesToThreeDimensionsFirstAndToTheFlatAreaLast)
{
    for (const ChartKind kind : {HistoricalPrices, SelectedSecPerf, PortfolioPerf})
        EXPECT_EQ(Presses(kind, 5), "2 3D Area, 4 2D Line, 3 2D Area, 5 3D Line, 2 3D Area");
}

TEST(NextChartStyle, KnowsNoOtherCaption)
{
    EXPECT_THROW(NextChartStyle(PortfolioPL, "3D Line"), RuntimeError);
    EXPECT_THROW(NextChartStyle(PortfolioPerf, "3D Bar"), RuntimeError);
    EXPECT_THROW(NextChartStyle(Positions, ""), RuntimeError);
}

TEST(CheckedChartKind, IsTheKindWhoseEntryIsChecked)
{
    CommandStates commands;
    EXPECT_FALSE(CheckedChartKind(commands));
    commands.SetChecked("mnuChartDailyProfiLoss", true); // a menu, no chart
    EXPECT_FALSE(CheckedChartKind(commands));
    commands.SetChecked("mnuChartSelectedSecPerf", true);
    EXPECT_EQ(CheckedChartKind(commands), SelectedSecPerf);
}
