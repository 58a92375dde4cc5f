#include "charts/chart_prices.h"

#include "charts/chart_dates.h"

#include <algorithm>

bool PriceSeries::LoadHistoricalPrices(const QString &symbol, const ChartDates &range)
{
    NoDataFound = false;
    ChartRecordset.clear();
    return LoadStep([&] {
        Statement select = m_work.gConnHistPrices.Prepare(
            QStringLiteral("SELECT Symbol, PriceDate, PriceClose FROM HistoricalPrices WHERE "
                           "Symbol = ? AND PriceDate >= ? AND PriceDate <= ? ORDER BY PriceDate"));
        select.BindAll(symbol, range.From, range.To);
        while (select.Step()) {
            PriceRow price{select.Date(1), std::nullopt};
            if (!price.PriceDate.isValid()) // written by another program
                continue;
            if (!select.IsNull(2))
                price.PriceClose = select.Money(2);
            ChartRecordset.push_back(price);
        }
        if (ChartRecordset.empty()) {
            ShowNoDataFound(m_work.services);
            NoDataFound = true;
            return;
        }
        FirstPointDate = ChartRecordset.front().PriceDate;
        LastPointDate = ChartRecordset.back().PriceDate;
        PointCount = int(ChartRecordset.size());
    });
}

void PriceSeries::ChooseInterval(const ChartDates &range, ChartInterval &interval)
{
    MonthsInRange = MonthsBetween(range.From, range.To);
    if (interval != ChartInterval::None)
        return;
    if (MonthsInRange > 6)
        interval = ChartInterval::Monthly;
    else if (MonthsInRange >= 2 && MonthsInRange <= 5)
        interval = ChartInterval::Weekly;
    else // six months too: a known gap, which users have come to rely on
        interval = ChartInterval::Daily;
}

std::optional<ChartGrid> PriceSeries::DrawHistoricalPrices(const QString &title,
                                                           const ChartDates &range,
                                                           ChartInterval &interval)
{
    ChooseInterval(range, interval);
    if (NoDataFound)
        return std::nullopt;
    const bool IntervalMonthly = interval == ChartInterval::Monthly;
    const bool IntervalWeekly = interval == ChartInterval::Weekly;
    const bool IntervalDaily = !IntervalMonthly && !IntervalWeekly;
    ChartRowCount = IntervalMonthly  ? MonthsBetween(FirstPointDate, LastPointDate) + 1
                    : IntervalWeekly ? WeeksBetween(FirstPointDate, LastPointDate) + 1
                                     : PointCount;

    ChartGrid grid = SeriesGrid(title, ChartRowCount);
    grid.LegendFont.Name = QStringLiteral("Arial");
    if (IntervalDaily) {
        int row = 0;
        for (const PriceRow &price : ChartRecordset)
            PutPoint(grid, ++row, price);
    } else {
        PickPoints(grid, IntervalMonthly);
    }
    FindExtremes();
    ScaleValueAxis(grid);
    SetAxisFonts(grid);
    return grid;
}

void PriceSeries::PutPoint(ChartGrid &grid, int row, const PriceRow &price) const
{
    if (price.PriceClose)
        grid.Data(row, 1) = m_work.services.formats.ToText(*price.PriceClose);
    grid.RowLabel(row) = PointLabel(m_work, price.PriceDate);
}

void PriceSeries::PickPoints(ChartGrid &grid, bool monthly)
{
    const auto after = [&](QDate taken) { return monthly ? taken.addMonths(1) : taken.addDays(7); };
    NextPointDate = after(FirstPointDate);
    int row = 1;
    PutPoint(grid, row, ChartRecordset.front());
    for (const PriceRow &price : ChartRecordset) {
        if (price.PriceDate >= NextPointDate) {
            PutPoint(grid, ++row, price);
            NextPointDate = after(price.PriceDate); // from the day taken, not from the one aimed at
        }
        if (row == ChartRowCount - 1) { // the last row is for the last price
            PutPoint(grid, row + 1, ChartRecordset.back());
            return;
        }
    }
}

void PriceSeries::FindExtremes()
{
    // Of every close, so that the scale does not depend on which of them became points.
    bool isFirst = true;
    for (const PriceRow &price : ChartRecordset) {
        if (!price.PriceClose)
            continue;
        LowestPrice = isFirst ? *price.PriceClose : std::min(LowestPrice, *price.PriceClose);
        HighestPrice = isFirst ? *price.PriceClose : std::max(HighestPrice, *price.PriceClose);
        isFirst = false;
    }
    if (isFirst)
        LowestPrice = HighestPrice = Currency();
}

void PriceSeries::ScaleValueAxis(ChartGrid &grid) const
{
    const auto margin = [](Currency price) {
        return Currency::FromDouble(price.ToDouble() * 0.03);
    };
    try {
        const ValueScale scale{(LowestPrice - margin(LowestPrice)).ToDouble(),
                               (HighestPrice + margin(HighestPrice)).ToDouble()};
        if (scale.Minimum < scale.Maximum) // no price but zero: the chart finds ends of its own
            grid.Scale = scale;
    } catch (const RuntimeError &) {
        // At the end of the range of money there is no room for a margin.
    }
}
