#include "platform/widgets/chart_picture.h"

#include "platform/widgets/chart_numbers.h"
#include "platform/widgets/chart_pie.h"
#include "platform/widgets/chart_scale.h"
#include "platform/widgets/chart_stage.h"

#include <QChart>
#include <QGraphicsLayout>
#include <QLegend>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double axisGap = 12;       ///< between the plot and the labels of an axis
constexpr double legendGap = 8;      ///< above the legend
constexpr double legendShare = 0.35; ///< of the height, at most
constexpr double flatBase = 5;       ///< of a plot without a slab: room between labels
constexpr double leastPlot = 20;     ///< smaller plots are not drawn

bool IsDeep(ChartStyle style)
{
    return style == ChartStyle::Bar3D || style == ChartStyle::Line3D || style == ChartStyle::Area3D;
}

bool HasZero(ChartStyle style)
{
    return style != ChartStyle::Line2D && style != ChartStyle::Line3D;
}

/// From the front to the wall: as deep as bars are wide, within bounds.
QPointF DepthOf(ChartStyle style, const QRectF &area, int rows, int series)
{
    const double most = std::min(36.0, std::min(area.width(), area.height()) / 8);
    const double wanted = style == ChartStyle::Bar3D
                              ? 0.75 * area.width() / std::max(1, rows * series)
                              : 16.0 + 8 * series;
    const double right = std::min(most, std::max(12.0, wanted));
    return {right, -right * 0.6};
}

} // namespace

ChartPicture::ChartPicture()
    : m_chart(new QChart), m_axes(*m_chart), m_look(ChartColors(), QPalette())
{
    m_scene.addItem(m_chart);
    m_chart->legend()->hide();
    m_chart->setBackgroundVisible(false);
    m_chart->setMargins(QMargins());
    m_chart->layout()->setContentsMargins(0, 0, 0, 0);
}

ChartPicture::~ChartPicture() = default;

ChartLegend ChartPicture::Legend(const ChartGrid &grid, const QFont &font, const QRectF &area) const
{
    std::vector<ChartLegend::Entry> entries;
    for (int column = 1; column <= grid.ColumnCount(); ++column) {
        const bool isNegativeSlice = m_isPie && m_pieValues[size_t(column - 1)] < 0;
        entries.push_back({grid.ColumnLabel(column).simplified(),
                           SliceFill(m_look.Series(column), m_look.Backdrop, isNegativeSlice)});
    }
    return ChartLegend(std::move(entries), FontOf(grid.LegendFont, font), area.width(),
                       area.height() * legendShare);
}

void ChartPicture::Arrange(const ChartGrid &grid, const SeriesNumbers &numbers, ChartStyle style,
                           const ChartLook &look, const Formats &formats, const QFont &font,
                           const QRectF &area)
{
    m_look = look;
    m_isPie = style == ChartStyle::Pie;
    m_shapes.reset();
    m_ticks.clear();
    m_legend = ChartLegend();
    m_pieValues.clear();
    m_pieLabel.clear();
    m_font = font;
    for (const auto &series : numbers)
        m_pieValues.push_back(series.empty() ? std::numeric_limits<double>::quiet_NaN()
                                             : series.front());
    // From the corner of the widget on, so that both count alike.
    m_chart->setGeometry(QRectF(QPointF(), area.bottomRight()));
    m_scene.setSceneRect(m_chart->geometry());
    QRectF plot = area;
    if (grid.ShowLegend && !grid.IsEmpty()) {
        m_legend = Legend(grid, font, area);
        plot.setBottom(area.bottom() - m_legend.Height() - legendGap);
        m_legend.MoveTo({area.left(), area.bottom() - m_legend.Height()});
    }
    m_axes.Hide();
    if (grid.IsEmpty() || plot.height() < leastPlot || plot.width() < leastPlot)
        return;
    if (m_isPie)
        ArrangePie(grid, formats, font, plot);
    else
        ArrangePlot(grid, numbers, style, formats, font, plot);
    m_chart->layout()->activate();
}

void ChartPicture::ArrangePie(const ChartGrid &grid, const Formats &formats, const QFont &font,
                              QRectF area)
{
    const QFontMetricsF metrics(font);
    if (area.height() - metrics.height() - legendGap >= leastPlot) {
        m_pieLabel =
            metrics.elidedText(grid.RowLabel(1).simplified(), Qt::ElideRight, area.width());
        m_pieLabelPlace =
            QRectF(area.left(), area.bottom() - metrics.height(), area.width(), metrics.height());
    }
    if (!m_pieLabel.isEmpty())
        area.setBottom(m_pieLabelPlace.top() - legendGap);
    std::optional<QFont> labelFont;
    if (grid.PercentLabels) {
        labelFont = font;
        labelFont->setPointSize(grid.PercentLabelSize);
    }
    m_shapes = std::make_unique<PieShapes>(*m_chart, m_pieValues, area, m_look, formats, labelFont);
}

void ChartPicture::ArrangePlot(const ChartGrid &grid, const SeriesNumbers &numbers,
                               ChartStyle style, const Formats &formats, const QFont &font,
                               QRectF area)
{
    const QFont rowFont = FontOf(grid.AxisFonts[0], font);
    const QFont valueFont = FontOf(grid.AxisFonts[1], font);
    const QFontMetricsF rowMetrics(rowFont), valueMetrics(valueFont);
    ChartSpace space;
    space.BaseHeight = flatBase;
    space.Rows = grid.RowCount();
    if (IsDeep(style)) {
        space.Depth = DepthOf(style, area, grid.RowCount(), grid.ColumnCount());
        space.BaseHeight = std::clamp(area.height() / 40, 6.0, 12.0);
    }
    space.Front = area.adjusted(0, valueMetrics.height() / 2 - space.Depth.y() + 2,
                                -axisGap - space.Depth.x(),
                                -rowMetrics.height() - axisGap - space.BaseHeight);

    constexpr double rowsOfTextForOne = 2.2;
    const int mostTicks = std::clamp(
        int(space.Front.height() / (valueMetrics.height() * rowsOfTextForOne)) + 1, 2, 12);
    const ValueScale extent = ExtentOf(numbers, HasZero(style));
    const AxisScale scale = grid.Scale ? TicksWithin(*grid.Scale, mostTicks)
                                       : NiceScale(extent.Minimum, extent.Maximum, mostTicks);
    space.Minimum = scale.Minimum;
    space.Maximum = scale.Maximum;
    m_ticks = scale.Ticks;
    std::vector<AxisLabel> values;
    double widest = 0;
    for (const double tick : scale.Ticks) {
        values.push_back({tick, TickText(tick, scale.Step, formats)});
        widest = std::max(widest, valueMetrics.horizontalAdvance(values.back().Text));
    }
    space.Front.setLeft(area.left() + widest + axisGap);
    if (space.Front.width() < leastPlot || space.Front.height() < leastPlot)
        return;
    const auto label = [&grid](int row) { return grid.RowLabel(row); };
    auto rows = CategoryLabels(space.Rows, label, rowMetrics, space.Front.width());
    // The last label keeps within the picture.
    if (!rows.empty()) {
        const double end =
            space.X(rows.back().Place) + rowMetrics.horizontalAdvance(rows.back().Text) / 2 + 4;
        if (end > area.right()) {
            space.Front.setRight(space.Front.right() - (end - area.right()));
            rows = CategoryLabels(space.Rows, label, rowMetrics, space.Front.width());
        }
    }
    m_axes.SetLabels(rows, values);
    m_axes.SetDress(rowFont, valueFont, m_look);
    m_axes.Fit(space);
    m_space = space;
    switch (style) {
    case ChartStyle::Bar3D:
    case ChartStyle::Bar2D:
        m_shapes = MakeBars(numbers, space, m_look);
        break;
    case ChartStyle::Line3D:
    case ChartStyle::Line2D:
        m_shapes = MakeLines(numbers, space, m_look);
        break;
    case ChartStyle::Area3D:
    case ChartStyle::Area2D:
        m_shapes = MakeAreas(numbers, space, m_look);
        break;
    case ChartStyle::Pie:
        break;
    }
}

void ChartPicture::Select(const ChartSelection &selection)
{
    if (m_shapes)
        m_shapes->Select(selection);
}

void ChartPicture::Paint(QPainter &painter, const ChartSelection &selection)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const bool hasStage = m_shapes && !m_isPie;
    if (hasStage)
        PaintStage(painter, m_space, m_look, m_ticks);
    m_scene.render(&painter, m_scene.sceneRect(), m_scene.sceneRect());
    if (hasStage)
        PaintGround(painter, m_space, m_look);
    if (m_shapes)
        m_shapes->Paint(painter, selection);
    if (!m_pieLabel.isEmpty()) {
        painter.setFont(m_font);
        painter.setPen(m_look.Text);
        painter.drawText(m_pieLabelPlace, Qt::AlignCenter | Qt::TextSingleLine, m_pieLabel);
    }
    m_legend.Paint(painter, m_look.Text, m_look.AxisLine, selection.Series);
}

std::vector<ChartPoint> ChartPicture::Hit(QPointF place) const
{
    if (const auto series = m_legend.SeriesAt(place))
        return {{*series, m_isPie ? 1 : 0}};
    return m_shapes ? m_shapes->Hit(place) : std::vector<ChartPoint>();
}

std::optional<QPointF> ChartPicture::PlaceOf(ChartPoint point) const
{
    if (!m_shapes)
        return {};
    const auto place = m_shapes->PlaceOf(point);
    // A slice too thin to be hit has its entry in the legend.
    return place || !m_isPie || point.Row != 1 ? place : m_legend.PlaceOf(point.Series);
}
