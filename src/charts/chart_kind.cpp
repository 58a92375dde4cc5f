#include "charts/chart_kind.h"

#include "base/runtime_error.h"

namespace
{

constexpr const char *PieHint =
    "Click once on the pie slice to selected it, then once more to obtain it's value. Double click "
    "on any area to change colors.";
constexpr const char *LineHint =
    "Click once in the plot line to show data points, then click a data point to obtain it's "
    "value.  Double click on any area to change colors.";
constexpr const char *BarHint =
    "Click once on the bar to select it, then once more to obtain it's value.  Double click on any "
    "area to change colors.";

using enum ChartKind;
using enum ChartStyle;

// clang-format off
constexpr ChartKindInfo Kinds[] = {
    {PortfolioPL,      "mnuChartPortfolioPL",      "Profit and Loss Chart",
     "CHDailyProfitLoss.html",       false, true,  false, Bar2D,  "3D Bar",  BarHint},
    {SelectedSecPL,    "mnuChartSelectedSecPL",    "Selected Security P&L Chart",
     "CHSelectedSecPL.html",         true,  true,  false, Bar2D,  "3D Bar",  BarHint},
    {Positions,        "mnuChartPositions",        "Portfolio Positions Chart",
     "CHPortfolioPositions.html",    false, false, false, Pie,    "",        PieHint},
    {AssetAllocation,  "mnuChartAssetAllocation",  "Portfolio Asset Allocation",
     "CHAssetAllocation.html",       false, false, false, Pie,    "",        PieHint},
    {HistoricalPrices, "mnuChartHistoricalPrices", "Historical Price Chart",
     "CHHistoricalPrice.html",       true,  true,  true,  Line2D, "3D Line", LineHint},
    {SelectedSecPerf,  "mnuChartSelectedSecPerf",  "Selected Security Performance Chart",
     "CHSelectedSecPerf.html",       true,  true,  false, Line2D, "3D Line", LineHint},
    {PortfolioPerf,    "mnuChartPortfolioPerf",    "Portfolio Performance Chart",
     "CHPortfolioPerformance.html",  false, true,  false, Line2D, "3D Line", LineHint},
};

struct StylePress
{
    ChartStyle group;     ///< the style that kinds of the group begin with
    const char *caption;  ///< of the button that is pressed
    ChartStyle style;     ///< what it gives
    const char *next;     ///< the caption it then has
};

// Lines begin at two dimensions with "3D Line", so that the two-dimensional area comes last.
constexpr StylePress Presses[] = {
    {Bar2D,  "3D Bar",  Bar3D,  "2D Bar"},
    {Bar2D,  "2D Bar",  Bar2D,  "3D Bar"},
    {Line2D, "2D Line", Line2D, "2D Area"},
    {Line2D, "2D Area", Area2D, "3D Line"},
    {Line2D, "3D Line", Line3D, "3D Area"},
    {Line2D, "3D Area", Area3D, "2D Line"},
};
// clang-format on

} // namespace

const ChartKindInfo &InfoOf(ChartKind kind)
{
    for (const ChartKindInfo &info : Kinds)
        if (info.kind == kind)
            return info;
    throw RuntimeError(RuntimeError::InvalidArgumentNumber, QStringLiteral("No such chart"));
}

std::optional<ChartKind> CheckedChartKind(const CommandStates &commands)
{
    for (const ChartKindInfo &info : Kinds)
        if (commands.Checked(QString::fromUtf8(info.menu)))
            return info.kind;
    return std::nullopt;
}

ChartStyleStep NextChartStyle(ChartKind kind, const QString &caption)
{
    for (const StylePress &press : Presses)
        if (press.group == InfoOf(kind).style && caption == QLatin1String(press.caption))
            return {press.style, QString::fromUtf8(press.next)};
    throw RuntimeError(RuntimeError::InvalidArgumentNumber, caption);
}
