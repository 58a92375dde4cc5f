#include "charts/chart_work.h"

bool LoadStep(const std::function<void()> &step)
{
    try {
        step();
        return true;
    } catch (const RuntimeError &) {
        return false;
    }
}

void ShowNoDataFound(Services &services)
{
    services.dialogs.MsgBox(
        QStringLiteral("No data was found for selected symbol or in the requested\n"
                       "date range.  Please make another selection or increase date \n"
                       "range selection."),
        Box::Exclamation, QStringLiteral("Chart Editor"));
}

ChartGrid SeriesGrid(const QString &title, int rows)
{
    ChartGrid grid(1, rows);
    grid.ColumnLabel(1) = title;
    grid.LegendFont.Size = 9;
    grid.LegendFont.Bold = true;
    return grid;
}

QString PointLabel(const ChartWork &work, QDate date)
{
    return work.services.formats.FormatDate(date, u"mmm-dd-yy");
}

void SetAxisFonts(ChartGrid &grid)
{
    // No such font: the system puts its plain one in its place, as it always did on these charts.
    const QString name = QStringLiteral("Ariel");
    grid.AxisFonts[0] = {name, 10, false};
    grid.AxisFonts[1] = {name, 9, false};
    grid.AxisFonts[2] = {name, 9, false};
}
