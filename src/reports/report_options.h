#pragma once

/// The reports of the Excel menu, and what the user can choose for each.
///
///     const ReportEntry *entry = CheckedReport(states);    the one whose menu entry stands checked
///     entry->caption                                       "Summary - Option selection"
///     entry->offers                                        ReportOffers::TaxOptions

#include "platform/command_states.h"

#include <QDate>
#include <QString>

enum class ReportKind
{
    TransactionHistory,
    ProfitLoss,
    HistoricalPriceList,
    Summary,
    CostBasis,
    DailyTracker,
    MonthlyPerformance,
    QuarterlyPerformance,
    YearlyPerformance,
    SelectedSecurityGain,
    PortfolioGain
};

/// Which controls of the options dialog can be used.
enum class ReportOffers
{
    AllOptions,
    AllButTotals, ///< there is nothing to total
    TaxOptions,   ///< all, or a date range; no sort, no totals
    Nothing
};

struct ReportEntry
{
    const char *menuEntry;
    ReportKind kind;
    const char *caption; ///< of the options dialog; empty where it has none
    ReportOffers offers;
    const char *fileName; ///< beside the account; empty: the workbook is not saved
};

/// The report whose menu entry stands checked; nothing without one. Of two, that comes first which
/// stands further up here: the lists, then the tax reports, the tracker, performance and gains.
const ReportEntry *CheckedReport(const CommandStates &commands);
const ReportEntry &EntryOf(ReportKind kind);

enum class ReportRows
{
    All,
    SelectedSecurity,
    DateRange ///< the tax reports' own
};

enum class ReportSort
{
    ByDate,
    BySymbol
};

/// What the user chose in the dialog.
struct ReportChoice
{
    ReportKind kind = ReportKind::TransactionHistory;
    ReportRows rows = ReportRows::All;
    QString symbol;           ///< the selected security; may be empty
    bool byDateRange = false; ///< the lists' check box, along with either choice of rows
    QDate from;               ///< both days belong to the range
    QDate to;
    bool printTotals = false;
    ReportSort sort = ReportSort::ByDate;

    /// The dates limit the rows, and the first comes after the last.
    bool RangeIsReversed() const
    {
        return (byDateRange || rows == ReportRows::DateRange) && from > to;
    }
    bool InRange(QDate date) const { return date.isValid() && date >= from && date <= to; }
};
