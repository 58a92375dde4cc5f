#include "charts/chart_amounts.h"

void AmountSeries::TellNoDataFound()
{
    ShowNoDataFound(m_work.services);
    NoDataFound = true;
}

// --- profit and loss ----------------------------------------------------------------------------

bool AmountSeries::LoadPortfolioProfitLoss(const ChartDates &range)
{
    NoDataFound = false;
    ChartRecordset.clear();
    return LoadStep([&] {
        // Each entry of a single day is a point, by its time.
        const bool byDay = range.From < range.To;
        Statement select = m_work.gConnAccount.Prepare(
            byDay ? QStringLiteral("SELECT TransDate, SUM(ProfitLoss) AS ProfitLoss FROM "
                                   "DailyProfitLoss WHERE TransDate >= ? AND TransDate <= ? "
                                   "GROUP BY TransDate ORDER BY TransDate")
                  : QStringLiteral("SELECT Time, ProfitLoss FROM DailyProfitLoss WHERE "
                                   "TransDate >= ? AND TransDate <= ? ORDER BY Time"));
        select.BindAll(range.From, range.To);
        while (select.Step())
            ChartRecordset.push_back({byDay ? select.Date(0) : range.From,
                                      byDay ? QTime() : select.Time(0), select.Money(1)});
        if (ChartRecordset.empty())
            TellNoDataFound();
    });
}

ChartGrid AmountSeries::DrawPortfolioProfitLoss(const ChartDates &range) const
{
    const Formats &formats = m_work.services.formats;
    ChartGrid grid = SeriesGrid(QStringLiteral("Daily Profit Loss"),
                                NoDataFound ? 1 : int(ChartRecordset.size()));
    if (NoDataFound) {
        grid.Data(1, 1) = QStringLiteral("0");
        grid.RowLabel(1) = QStringLiteral("No Data");
    } else {
        int row = 0;
        for (const AmountRow &entry : ChartRecordset) {
            grid.Data(++row, 1) = formats.ToText(entry.Amount);
            grid.RowLabel(row) = range.From == range.To ? formats.ToText(entry.Time)
                                                        : PointLabel(m_work, entry.TransDate);
        }
    }
    SetAxisFonts(grid);
    return grid;
}

bool AmountSeries::LoadSecurityProfitLoss(const QString &symbol, const ChartDates &range)
{
    NoDataFound = false;
    ChartRecordset.clear();
    return LoadStep([&] {
        Statement select = m_work.gConnAccount.Prepare(
            QStringLiteral("SELECT TransDate, ProfitLoss FROM DailyProfitLoss WHERE "
                           "TransDate >= ? AND TransDate <= ? AND Symbol = ? ORDER BY TransDate"));
        select.BindAll(range.From, range.To, symbol);
        while (select.Step())
            ChartRecordset.push_back({select.Date(0), QTime(), select.Money(1)});
        if (ChartRecordset.empty()) {
            TellNoDataFound();
            ChartRecordset.push_back({m_work.services.clock.Today(), QTime(), Currency()});
        }
    });
}

ChartGrid AmountSeries::DrawSecurityProfitLoss(const QString &symbol) const
{
    ChartGrid grid =
        SeriesGrid(QStringLiteral("Daily P&L for ") + symbol, int(ChartRecordset.size()));
    int row = 0;
    for (const AmountRow &entry : ChartRecordset) {
        grid.Data(++row, 1) = m_work.services.formats.ToText(entry.Amount);
        grid.RowLabel(row) = PointLabel(m_work, entry.TransDate);
    }
    SetAxisFonts(grid);
    return grid;
}

// --- performance --------------------------------------------------------------------------------

bool AmountSeries::LoadPerformance(const QString &trackName, const ChartDates &range)
{
    NoDataFound = false;
    PerformanceRecordset.clear();
    return LoadStep([&] {
        const bool ofPortfolio = trackName == QLatin1String("Portfolio");
        Statement select = m_work.gConnAccount.Prepare(
            ofPortfolio
                ? QStringLiteral("SELECT SUM(DailyBalance) AS DailyGain, TransDate FROM "
                                 "PortfolioDailyBalance WHERE TransDate >= ? AND TransDate <= ? "
                                 "AND TrackName <> ? GROUP BY TransDate ORDER BY TransDate")
                : QStringLiteral("SELECT DailyBalance AS DailyGain, TransDate FROM "
                                 "PortfolioDailyBalance WHERE TransDate >= ? AND TransDate <= ? "
                                 "AND TrackName = ? ORDER BY TransDate"));
        select.BindAll(range.From, range.To, trackName);
        while (select.Step())
            PerformanceRecordset.push_back({select.Money(0), select.Date(1)});
        if (PerformanceRecordset.empty()) {
            TellNoDataFound();
            PerformanceRecordset.push_back({Currency(), m_work.services.clock.Today()});
        }
        FirstPointDate = PerformanceRecordset.front().TransDate;
        LastPointDate = PerformanceRecordset.back().TransDate;
        PointCount = int(PerformanceRecordset.size());
    });
}

ChartGrid AmountSeries::DrawPerformance(const QString &title) const
{
    ChartGrid grid = SeriesGrid(title, int(PerformanceRecordset.size()));
    int row = 0;
    for (const GainRow &day : PerformanceRecordset) {
        grid.Data(++row, 1) = m_work.services.formats.ToText(day.DailyGain);
        grid.RowLabel(row) = PointLabel(m_work, day.TransDate);
    }
    SetAxisFonts(grid);
    return grid;
}
