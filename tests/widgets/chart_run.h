#pragma once

/// A chart with a grid in it, as the tests look at it and click on it.

#include "platform/widgets/chart.h"

#include <gtest/gtest.h>

#include <QtTest>

#include <utility>
#include <vector>

/// One series for each list of values; rows are labelled "Row 1" and so on.
inline ChartGrid GridOf(const std::vector<QStringList> &series)
{
    ChartGrid grid(int(series.size()), series.empty() ? 0 : int(series[0].size()));
    for (int column = 1; column <= grid.ColumnCount(); ++column) {
        grid.ColumnLabel(column) = QStringLiteral("Series %1").arg(column);
        for (int row = 1; row <= grid.RowCount(); ++row) {
            grid.RowLabel(row) = QStringLiteral("Row %1").arg(row);
            grid.Data(row, column) = series[size_t(column - 1)][row - 1];
        }
    }
    return grid;
}

/// One column for each value, with percent labels.
inline ChartGrid PieOf(const QStringList &values)
{
    std::vector<QStringList> columns;
    for (const QString &value : values)
        columns.push_back({value});
    ChartGrid grid = GridOf(columns);
    grid.PercentLabels = true;
    return grid;
}

class ShownRun
{
public:
    ShownRun(ChartStyle style, ChartGrid grid)
    {
        chart.resize(640, 400);
        chart.SetFormats(Formats(QLocale(QLocale::English, QLocale::UnitedStates)));
        chart.SetStyle(style);
        chart.SetGrid(std::move(grid));
        chart.OnPointSelected = [this](int series, int point) {
            selected << QPoint(series, point);
        };
        chart.OnSeriesActivated = [this](int series) { activatedSeries << series; };
        chart.OnPlotActivated = [this] { ++plotActivated; };
        chart.OnUserAction = [this] { ++userActions; };
        chart.show();
    }

    void Click(QPoint place) { QTest::mouseClick(&chart, Qt::LeftButton, {}, place); }
    void Click(int series, int point) { Click(PlaceOf(series, point)); }
    void DoubleClick(QPoint place) { QTest::mouseDClick(&chart, Qt::LeftButton, {}, place); }
    void Press(Qt::Key key) { QTest::keyClick(&chart, key); }

    QPoint PlaceOf(int series, int point)
    {
        const auto target = chart.PointTarget(series, point);
        EXPECT_EQ(target.widget, &chart) << "point " << point << " of series " << series;
        return target.center;
    }

    Chart chart;
    QList<QPoint> selected; ///< series, point
    QList<int> activatedSeries;
    int plotActivated = 0;
    int userActions = 0;
};

/// How many pixels have the colour.
inline int CountOf(const QImage &image, const QColor &color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == color.rgb();
    return count;
}
