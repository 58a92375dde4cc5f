#include "charts/chart_series.h"

#include "marketdata/price_list.h"

std::optional<ChartGrid> ChartSeries::Reload(ChartKind kind, const QString &symbol,
                                             const ChartDates &range, ChartInterval &interval)
{
    m_amounts.NoDataFound = m_prices.NoDataFound = false;
    switch (kind) {
    case ChartKind::PortfolioPL:
        if (m_amounts.LoadPortfolioProfitLoss(range))
            return m_amounts.DrawPortfolioProfitLoss(range);
        break;
    case ChartKind::SelectedSecPL:
        if (m_amounts.LoadSecurityProfitLoss(symbol, range))
            return m_amounts.DrawSecurityProfitLoss(symbol);
        break;
    case ChartKind::Positions:
        if (m_positions.LoadPositions())
            return m_positions.DrawPositions();
        break;
    case ChartKind::AssetAllocation:
        if (m_positions.LoadAssetAllocation())
            return m_positions.DrawAssetAllocation();
        break;
    case ChartKind::HistoricalPrices:
        if (m_prices.LoadHistoricalPrices(symbol, range))
            return m_prices.DrawHistoricalPrices(QStringLiteral("Historical Price for ") + symbol,
                                                 range, interval);
        break;
    case ChartKind::SelectedSecPerf:
        if (m_amounts.LoadPerformance(symbol, range))
            return m_amounts.DrawPerformance(QStringLiteral("Daily Gain for ") + symbol);
        break;
    case ChartKind::PortfolioPerf:
        if (m_amounts.LoadPerformance(QStringLiteral("Portfolio"), range))
            return m_amounts.DrawPerformance(QStringLiteral("Portfolio Daily Gain Total"));
        break;
    }
    return std::nullopt;
}

QString ChartSeries::Readout(ChartKind kind, const ChartGrid &grid, int series, int point) const
{
    const Formats &formats = m_work.services.formats;
    constexpr QStringView valueFormat = u"###,##0.00";
    if (kind == ChartKind::Positions) {
        const QString symbol = grid.ColumnLabel(series);
        return QStringLiteral("Symbol: ") + symbol + QStringLiteral("   Value: ") +
               formats.Format(m_positions.PositionValue(symbol, series), valueFormat);
    }
    if (kind == ChartKind::AssetAllocation) {
        const QString assetClass = grid.ColumnLabel(series).trimmed();
        return QStringLiteral("Asset Class: ") + assetClass + QStringLiteral("   Value: ") +
               formats.Format(m_positions.AllocatedAmount(assetClass), valueFormat);
    }
    return QStringLiteral("Date: ") + grid.RowLabel(point) + QStringLiteral(" Value: ") +
           formats.Reformat(grid.Data(point, series), valueFormat);
}

QStringList ChartSeries::Symbols(ChartKind kind) const
{
    QStringList symbols;
    LoadStep([&] {
        if (kind == ChartKind::HistoricalPrices) {
            symbols = PricedSymbols(m_work.gConnHistPrices);
            return;
        }
        Statement select = m_work.gConnAccount.Prepare(QStringLiteral(
            "SELECT DISTINCT Symbol FROM History WHERE Symbol <> '' ORDER BY Symbol"));
        while (select.Step())
            if (const QString symbol = select.Text(0); !symbol.trimmed().isEmpty())
                symbols << symbol; // a transaction of cash has a blank
    });
    return symbols;
}
