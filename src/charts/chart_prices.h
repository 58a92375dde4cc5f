#pragma once

/// The series of a security's daily closes: each of them, or one a week or a month.
///
///     closes of Mar 2, 3, 9, 10, 16, 17      weekly points: Mar 2, 9, 17
///
/// The first point is the first close; the next one is the first close a week (a month) or more after
/// the one taken, so that a holiday shifts all that follow; the last close always ends the row. The
/// number of points is counted from the calendar, by weeks or months that begin between the first and
/// the last close. When there are too few closes for it, the points left over have no value, and the
/// last close is not added.

#include "charts/chart_work.h"

#include <vector>

/// The interval of the points; None: not chosen yet.
enum class ChartInterval
{
    None,
    Daily,
    Weekly,
    Monthly
};

class PriceSeries
{
public:
    explicit PriceSeries(const ChartWork &work) : m_work(work) {}

    /// Says so in a box when there are no prices. False when the store failed; what is shown has to
    /// stay then.
    bool LoadHistoricalPrices(const QString &symbol, const ChartDates &range);
    /// Chooses an interval when it is None, from the months that begin in the range: 2 to 5 weekly, more than
    /// 6 monthly, else (6 too) daily. Nothing when no prices were loaded.
    std::optional<ChartGrid> DrawHistoricalPrices(const QString &title, const ChartDates &range,
                                                  ChartInterval &interval);

    bool NoDataFound = false; ///< of the last load step
    QDate FirstPointDate;
    QDate LastPointDate;
    int PointCount = 0;    ///< closes
    int ChartRowCount = 0; ///< points
    Currency LowestPrice;  ///< of all closes, drawn or not
    Currency HighestPrice;
    int MonthsInRange = 0;

private:
    struct PriceRow
    {
        QDate PriceDate;
        std::optional<Currency> PriceClose;
    };
    void ChooseInterval(const ChartDates &range, ChartInterval &interval);
    void FindExtremes();
    void PutPoint(ChartGrid &grid, int row, const PriceRow &price) const;
    void PickPoints(ChartGrid &grid, bool monthly);
    void ScaleValueAxis(ChartGrid &grid) const;

    ChartWork m_work;
    std::vector<PriceRow> ChartRecordset;
    QDate NextPointDate; ///< the first day on which the next point may be taken
};
