/// A chart of 10,000 points in each of its styles, painted at 1000 by 600: again as it is, after a
/// change of its size, and with a new grid; and one of 1,800 points, as many as are drawn one by one.
/// The floor is the bare polyline through all points.
///
///     bench_chart

#include "platform/widgets/chart.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDate>
#include <QPainter>

#include <cmath>

namespace
{

constexpr int Points = 10000;
const QSize Size(1000, 600);

/// Long waves and jags from point to point.
double Value(int row)
{
    return 4000 * std::sin(row * 0.002) + 700 * std::sin(row * 0.37) * std::cos(row * 0.011);
}

ChartGrid Grid(int points)
{
    ChartGrid grid(1, points);
    grid.ColumnLabel(1) = QStringLiteral("Daily Gain");
    for (int row = 1; row <= points; ++row) {
        grid.RowLabel(row) = QDate(1999, 1, 4).addDays(row).toString(QStringLiteral("MMM-dd-yy"));
        grid.Data(row, 1) = QString::number(Value(row), 'f', 2);
    }
    return grid;
}

void Prepare(Chart &chart, ChartStyle style, int points = Points)
{
    chart.resize(Size);
    chart.SetStyle(style);
    chart.SetGrid(Grid(points));
    chart.Picture(1);
}

void BM_FloorPolyline(benchmark::State &state)
{
    QImage image(Size, QImage::Format_ARGB32_Premultiplied);
    QPolygonF line;
    for (int row = 0; row < Points; ++row)
        line.append({row * Size.width() / double(Points), 300 - Value(row) / 20});
    for (auto _ : state) {
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::blue, 2));
        painter.drawPolyline(line);
    }
}
BENCHMARK(BM_FloorPolyline)->Unit(benchmark::kMillisecond);

void BM_Paint(benchmark::State &state)
{
    Chart chart;
    Prepare(chart, ChartStyle(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(chart.Picture(1));
}
BENCHMARK(BM_Paint)->ArgName("style")->DenseRange(0, 5)->Unit(benchmark::kMillisecond);

void BM_PaintOneByOne(benchmark::State &state)
{
    Chart chart;
    Prepare(chart, ChartStyle(state.range(0)), 1800);
    for (auto _ : state)
        benchmark::DoNotOptimize(chart.Picture(1));
}
BENCHMARK(BM_PaintOneByOne)->ArgName("style")->DenseRange(0, 5)->Unit(benchmark::kMillisecond);

void BM_PaintAtDoubleResolution(benchmark::State &state)
{
    Chart chart;
    Prepare(chart, ChartStyle(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(chart.Picture(2));
}
BENCHMARK(BM_PaintAtDoubleResolution)
    ->ArgName("style")
    ->DenseRange(0, 5)
    ->Unit(benchmark::kMillisecond);

void BM_ResizeAndPaint(benchmark::State &state)
{
    Chart chart;
    Prepare(chart, ChartStyle(state.range(0)));
    chart.show();
    int step = 0;
    for (auto _ : state) {
        ++step;
        chart.resize(Size - QSize(step % 100, step % 70));
        benchmark::DoNotOptimize(chart.Picture(1));
    }
}
BENCHMARK(BM_ResizeAndPaint)->ArgName("style")->DenseRange(0, 5)->Unit(benchmark::kMillisecond);

void BM_NewGridAndPaint(benchmark::State &state)
{
    Chart chart;
    Prepare(chart, ChartStyle::Line2D);
    const ChartGrid grid = Grid(Points);
    for (auto _ : state) {
        chart.SetGrid(grid);
        benchmark::DoNotOptimize(chart.Picture(1));
    }
}
BENCHMARK(BM_NewGridAndPaint)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
