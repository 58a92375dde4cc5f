#include "reports/report_options.h"

#include "base/runtime_error.h"

namespace
{

using enum ReportKind;
using enum ReportOffers;

constexpr ReportEntry entries[] = {
    {"mnuEXDetailHistory", TransactionHistory, "Transaction History - Option selection",
     AllButTotals, "Transaction History.xls"},
    {"mnuEXProfitLoss", ProfitLoss, "Daily Profit & Loss - Option selection", AllOptions,
     "Daily Profit Loss.xls"},
    {"mnuEXHistoricalPriceList", HistoricalPriceList, "Historical Price List - Option selection",
     AllButTotals, "Historical Price List.xls"},
    {"mnuEXSummary", Summary, "Summary - Option selection", TaxOptions, "Summary.xls"},
    // Each of the two tax reports takes the other's place in the folder.
    {"mnuEXCostBasis", CostBasis, "", TaxOptions, "Summary.xls"},
    {"mnuEXDailyTracker", DailyTracker, "Daily Tracker Report", Nothing, ""},
    {"mnuEXPERFMonthly", MonthlyPerformance, "Monthly Performance - Option selection", AllOptions,
     "Performance.xls"},
    {"mnuEXPERFQuarterly", QuarterlyPerformance, "Quarterly Performance - Option selection",
     AllOptions, "Performance.xls"},
    {"mnuEXPERFYearly", YearlyPerformance, "Yearly Performance - Option selection", AllOptions,
     "Performance.xls"},
    {"mnuEXDBSelectedSec", SelectedSecurityGain,
     "Selected Security Daily Balance List - Option selection", AllOptions, "Amount Gain List.xls"},
    {"mnuEXDBPortfolio", PortfolioGain, "Portfolio Daily Balance List - Option selection",
     AllOptions, "Amount Gain List.xls"},
};

} // namespace

const ReportEntry *CheckedReport(const CommandStates &commands)
{
    for (const ReportEntry &entry : entries)
        if (commands.Checked(QString::fromUtf8(entry.menuEntry)))
            return &entry;
    return nullptr;
}

const ReportEntry &EntryOf(ReportKind kind)
{
    for (const ReportEntry &entry : entries)
        if (entry.kind == kind)
            return entry;
    throw RuntimeError(RuntimeError::InvalidArgumentNumber, QStringLiteral("No such report"));
}
