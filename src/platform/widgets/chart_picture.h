#pragma once

/// A chart laid out in a rectangle: where axes, values and legend lie, how they are painted, and what
/// is under a place. The widget around it takes the clicks and keys.

#include "platform/widgets/chart_axes.h"
#include "platform/widgets/chart_legend.h"
#include "platform/widgets/chart_look.h"
#include "platform/widgets/chart_shapes.h"

#include "base/formats.h"
#include "platform/chart_grid.h"

#include <QGraphicsScene>

#include <memory>

class QChart;

class ChartPicture
{
public:
    ChartPicture();
    ~ChartPicture();

    /// `grid` and `numbers` stay the caller's, for as long as the picture shows them.
    void Arrange(const ChartGrid &grid, const SeriesNumbers &numbers, ChartStyle style,
                 const ChartLook &look, const Formats &formats, const QFont &font,
                 const QRectF &area);
    void Select(const ChartSelection &selection);
    void Paint(QPainter &painter, const ChartSelection &selection);

    /// Nearest first; of the legend's entries, the series with its only or no row.
    std::vector<ChartPoint> Hit(QPointF place) const;
    std::optional<QPointF> PlaceOf(ChartPoint point) const;

    const ChartSpace &Space() const { return m_space; }

private:
    void ArrangePie(const ChartGrid &grid, const Formats &formats, const QFont &font, QRectF area);
    void ArrangePlot(const ChartGrid &grid, const SeriesNumbers &numbers, ChartStyle style,
                     const Formats &formats, const QFont &font, QRectF area);
    ChartLegend Legend(const ChartGrid &grid, const QFont &font, const QRectF &area) const;

    QGraphicsScene m_scene;
    QChart *m_chart; ///< the scene's
    ChartAxes m_axes;
    std::unique_ptr<ChartShapes> m_shapes;
    ChartLegend m_legend;
    ChartLook m_look;
    ChartSpace m_space;
    std::vector<double> m_ticks;
    std::vector<double> m_pieValues;
    QFont m_font;
    QString m_pieLabel; ///< what the pie shows: the label of its row, under it
    QRectF m_pieLabelPlace;
    bool m_isPie = false;
};
