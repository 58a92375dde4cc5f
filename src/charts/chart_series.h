#pragma once

/// The series of the seven chart kinds, from the account's tables and the daily prices to the grid of
/// values that the chart shows. No widgets: the screen hands over its dates and interval and takes
/// the grid.
///
///     ChartSeries series(work);
///     if (auto grid = series.Reload(ChartKind::HistoricalPrices, "GHI", range, interval))
///         MSChart->SetGrid(*grid);                 nothing: what is shown stays
///     tip = series.Readout(ChartKind::HistoricalPrices, *grid, 1, point);
///
/// A range without data is told in a box, once a reload. A failure of the store ends the load
/// without a word, and what is shown stays. Money is summed exactly; values go into the grid as the
/// text of the value, in the user's locale. Nothing is ever written.

#include "charts/chart_amounts.h"
#include "charts/chart_kind.h"
#include "charts/chart_positions.h"
#include "charts/chart_prices.h"

#include <QStringList>

class ChartSeries
{
public:
    explicit ChartSeries(const ChartWork &work)
        : m_work(work), m_amounts(work), m_prices(work), m_positions(work)
    {}

    /// Clears NoDataFound, then loads and draws the kind. `symbol` counts for the kinds that have one.
    /// `interval` is switched on when it was None and the kind has intervals, even when nothing was
    /// found. Nothing when what is shown has to stay.
    std::optional<ChartGrid> Reload(ChartKind kind, const QString &symbol, const ChartDates &range,
                                    ChartInterval &interval);

    /// What the tool tip says of a selected point of the grid that was drawn last; both from 1.
    QString Readout(ChartKind kind, const ChartGrid &grid, int series, int point) const;

    /// What the symbol list offers, in alphabetical order; what could be read when the store fails.
    QStringList Symbols(ChartKind kind) const;

    bool NoDataFound() const { return m_amounts.NoDataFound || m_prices.NoDataFound; }

private:
    ChartWork m_work;
    AmountSeries m_amounts;
    PriceSeries m_prices;
    PositionSeries m_positions;
};
