#pragma once

/// The shapes that stand for a chart's values: drawn, and found under the mouse.
///
/// Three-dimensional ones are drawn by a slanting projection: what lies deeper stands further right
/// and further up, by the space's `Depth` at the wall. So the fronts keep the measures of the axes,
/// and the viewer sees top and right faces. Flat ones are the same with no depth.

#include "platform/widgets/chart_look.h"

#include <QPainter>
#include <QPointF>
#include <QRectF>

#include <memory>
#include <optional>
#include <vector>

/// A point of the grid, or none; both count from 1.
struct ChartPoint
{
    int Series = 0;
    int Row = 0;

    bool operator==(const ChartPoint &) const = default;
};

struct ChartSelection
{
    int Series = 0;    ///< selected; 0: none
    int Row = 0;       ///< selected point of that series; 0: none
    ChartPoint Cursor; ///< where the keyboard is
    bool HasFocus = false;
};

/// Where rows and values lie in the widget.
struct ChartSpace
{
    QRectF Front;          ///< of the plot, in which values are measured
    QPointF Depth;         ///< from the front to the wall; none in flat styles
    double BaseHeight = 0; ///< of the slab under the front, or of the gap there
    int Rows = 0;
    double Minimum = 0;
    double Maximum = 1;

    double Slot() const { return Front.width() / qMax(1, Rows); }
    double X(double row) const { return Front.left() + (row - 0.5) * Slot(); } ///< from 1
    double Y(double value) const;
    double ZeroY() const { return Y(0); }
    bool IsDeep() const { return !Depth.isNull(); }
    /// The row at `x`, as near as there is one.
    int RowAt(double x) const;
    /// In which range of rows, at most, a click at `x` may find something.
    std::pair<int, int> RowsAround(double x, double reach) const;
};

/// How near to a thin thing a click may be.
constexpr double ClickReach = 8;

class ChartShapes
{
public:
    virtual ~ChartShapes() = default;

    virtual void Paint(QPainter &painter, const ChartSelection &selection) const = 0;
    /// Takes what changes besides the painting, when another point is selected.
    virtual void Select(const ChartSelection &) {}
    /// The points under `place`, nearest first: several when they share a pixel.
    virtual std::vector<ChartPoint> Hit(QPointF place) const = 0;
    /// Where a click hits the point; nothing when it has no shape of its own.
    virtual std::optional<QPointF> PlaceOf(ChartPoint point) const = 0;
};

/// Numbers series by series, in the order of the grid.
using SeriesNumbers = std::vector<std::vector<double>>;

std::unique_ptr<ChartShapes> MakeBars(const SeriesNumbers &numbers, const ChartSpace &space,
                                      const ChartLook &look);
std::unique_ptr<ChartShapes> MakeLines(const SeriesNumbers &numbers, const ChartSpace &space,
                                       const ChartLook &look);
std::unique_ptr<ChartShapes> MakeAreas(const SeriesNumbers &numbers, const ChartSpace &space,
                                       const ChartLook &look);

/// The point of a series that is nearest to the x of `place`; where several share its pixel all of
/// these, nearest to its y first.
std::vector<ChartPoint> PointsUnder(QPointF place, int series, const std::vector<double> &values,
                                    const ChartSpace &space);

/// A dot on a point; the selected one is larger.
void PaintMarker(QPainter &painter, QPointF place, const QColor &color, const QColor &edge,
                 bool isSelected);
/// A ring for the keyboard's place.
void PaintCursor(QPainter &painter, QPointF place, const QColor &color);
