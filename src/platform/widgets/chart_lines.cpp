#include "platform/widgets/chart_shapes.h"
#include "platform/widgets/chart_thinning.h"

#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

double DistanceToSegment(QPointF place, QPointF from, QPointF to)
{
    const QPointF along = to - from;
    const double length = QPointF::dotProduct(along, along);
    const double share =
        length == 0 ? 0 : std::clamp(QPointF::dotProduct(place - from, along) / length, 0.0, 1.0);
    const QPointF away = place - (from + share * along);
    return std::hypot(away.x(), away.y());
}

/// A run of values without gaps, on the front of the plot.
struct Stretch
{
    int Series = 1;
    QPolygonF Points; ///< thinned; a single value has two, left and right of its place
    bool IsSingle = false;
};

/// Lines, which become ribbons in a deep space, and areas. Each series has a lane of its own in the
/// depth, the first one in front. Within a lane all is drawn from left to right, from far to near
/// for a viewer on the right, and the fronts last.
class LineShapes : public ChartShapes
{
public:
    LineShapes(const SeriesNumbers &numbers, const ChartSpace &space, const ChartLook &look,
               bool isFilled)
        : m_numbers(numbers), m_space(space), m_look(look), m_isFilled(isFilled),
          m_groundY(std::clamp(space.ZeroY(), space.Front.top(), space.Front.bottom()))
    {
        for (int series = 1; series <= int(numbers.size()); ++series)
            for (const ValueRun run : ValueRuns(numbers[size_t(series - 1)]))
                m_stretches.push_back(StretchOf(series, run));
    }

    void Paint(QPainter &painter, const ChartSelection &selection) const override
    {
        painter.save();
        painter.setClipPath(Silhouette());
        painter.setRenderHint(QPainter::Antialiasing, !IsDense() || !m_space.IsDeep());
        for (int series = int(m_numbers.size()); series >= 1; --series) {
            for (const Stretch &stretch : m_stretches)
                if (stretch.Series == series && m_space.IsDeep())
                    PaintSurfaces(painter, stretch);
            for (const Stretch &stretch : m_stretches)
                if (stretch.Series == series)
                    PaintFront(painter, stretch);
        }
        painter.restore();
        PaintSelection(painter, selection);
    }

    std::vector<ChartPoint> Hit(QPointF place) const override
    {
        for (int series = 1; series <= int(m_numbers.size()); ++series)
            if (const auto x = HitX(series, place))
                return PointsUnder({*x, place.y() - LaneFront(series).y()}, series,
                                   m_numbers[size_t(series - 1)], m_space);
        return {};
    }

    std::optional<QPointF> PlaceOf(ChartPoint point) const override
    {
        if (std::isnan(Value(point.Series, point.Row)))
            return {};
        const QPointF place = Place(point.Series, point.Row);
        return QPointF(place.x(),
                       std::clamp(place.y(), m_space.Front.top(), m_space.Front.bottom()));
    }

private:
    double Value(int series, int row) const
    {
        return m_numbers[size_t(series - 1)][size_t(row - 1)];
    }

    /// Whether several points share a pixel.
    bool IsDense() const { return m_space.Slot() < 0.5; }

    QPointF Lane(int series, double share) const
    {
        return m_space.Depth * ((series - 1 + share) / double(m_numbers.size()));
    }
    QPointF LaneFront(int series) const { return Lane(series, 0); }
    QPointF LaneBack(int series) const { return Lane(series, m_numbers.size() > 1 ? 0.8 : 1); }

    QPointF Place(int series, int row) const
    {
        return QPointF(m_space.X(row), m_space.Y(Value(series, row))) + LaneFront(series);
    }
    double GroundY(int series) const { return m_groundY + LaneFront(series).y(); }

    Stretch StretchOf(int series, ValueRun run) const
    {
        Stretch stretch{series, {}, run.To - run.From == 1};
        if (stretch.IsSingle) {
            const double half = std::clamp(m_space.Slot() * 0.3, 2.0, 14.0);
            const QPointF place = Place(series, run.From + 1);
            stretch.Points = {place - QPointF(half, 0), place + QPointF(half, 0)};
            return stretch;
        }
        const auto rows =
            ThinnedRows(m_numbers[size_t(series - 1)], run.From, run.To, 1 / m_space.Slot());
        stretch.Points.reserve(qsizetype(rows.size()));
        for (const int row : rows)
            stretch.Points.append(Place(series, row + 1));
        return stretch;
    }

    /// Of the whole plot, front to wall, with room for a line on its edge.
    QPainterPath Silhouette() const
    {
        const QRectF front = m_space.Front.adjusted(-2, -2, 2, 2);
        QPainterPath path;
        if (!m_space.IsDeep()) {
            path.addRect(front);
            return path;
        }
        path.addPolygon(QPolygonF(
            {front.topLeft(), front.topLeft() + m_space.Depth, front.topRight() + m_space.Depth,
             front.bottomRight() + m_space.Depth, front.bottomRight(), front.bottomLeft()}));
        path.closeSubpath();
        return path;
    }

    /// Whether a surface that faces up is seen: one that climbs steeper than the depth is not.
    bool IsTopSeen(QPointF from, QPointF to) const
    {
        const QPointF along = to - from;
        return -along.y() * m_space.Depth.x() < -m_space.Depth.y() * along.x();
    }

    QColor SurfaceColor(const QColor &color, QPointF from, QPointF to, bool isTop) const
    {
        if (!isTop)
            return Shaded(color, 0.35);
        // The light comes from above, a little from the right.
        const QPointF along = to - from;
        const double length = std::max(1e-6, std::hypot(along.x(), along.y()));
        const double light = (0.92 * along.x() + 0.25 * along.y()) / length;
        constexpr double levels = 8; // few colours: neighbours of one colour show no seam
        const double level = std::round(std::clamp(light, -0.4, 1.0) * levels) / levels;
        return level > 0.6 ? Lit(color, (level - 0.6) * 1.1) : Shaded(color, (0.6 - level) * 0.5);
    }

    void PaintSurface(QPainter &painter, QPointF from, QPointF to, QPointF depth,
                      const QColor &color) const
    {
        // The pen hides the seams, where they can be seen.
        painter.setPen(IsDense() ? QPen(Qt::NoPen) : QPen(color, 0.6));
        painter.setBrush(color);
        const std::array<QPointF, 4> corners = {from, to, to + depth, from + depth};
        painter.drawConvexPolygon(corners.data(), int(corners.size()));
    }

    void PaintSurfaces(QPainter &painter, const Stretch &stretch) const
    {
        const QColor color = m_look.Series(stretch.Series);
        const QPointF depth = LaneBack(stretch.Series) - LaneFront(stretch.Series);
        const double ground = GroundY(stretch.Series);
        for (qsizetype at = 0; at + 1 < stretch.Points.size(); ++at) {
            const QPointF from = stretch.Points[at], to = stretch.Points[at + 1];
            if (!m_isFilled) {
                PaintSurface(painter, from, to, depth,
                             SurfaceColor(color, from, to, IsTopSeen(from, to)));
                continue;
            }
            const bool crosses = (from.y() < ground) != (to.y() < ground) && from.y() != to.y();
            if (!crosses) {
                PaintBody(painter, from, to, depth, ground, color);
                continue;
            }
            const double share = (ground - from.y()) / (to.y() - from.y());
            const QPointF crossing(from.x() + share * (to.x() - from.x()), ground);
            PaintBody(painter, from, crossing, depth, ground, color);
            PaintBody(painter, crossing, to, depth, ground, color);
        }
        if (!m_isFilled)
            return;
        const QPointF end = stretch.Points.back();
        PaintSurface(painter, end, QPointF(end.x(), ground), depth, Shaded(color, 0.4));
    }

    /// The faces behind the front of a body between a stretch of line and the ground.
    void PaintBody(QPainter &painter, QPointF from, QPointF to, QPointF depth, double ground,
                   const QColor &color) const
    {
        const bool isAbove = std::min(from.y(), to.y()) < ground;
        const bool isTopSeen = IsTopSeen(from, to);
        if (isAbove == isTopSeen)
            PaintSurface(painter, from, to, depth, SurfaceColor(color, from, to, isAbove));
        if (!isAbove) {
            const QPointF left(from.x(), ground), right(to.x(), ground);
            PaintSurface(painter, left, right, depth, SurfaceColor(color, left, right, true));
        }
    }

    void PaintFront(QPainter &painter, const Stretch &stretch) const
    {
        const QColor color = m_look.Series(stretch.Series);
        if (m_isFilled && IsDense()) {
            PaintBand(painter, stretch.Points, color, GroundY(stretch.Series));
        } else if (m_isFilled) {
            QPolygonF body = stretch.Points;
            const double ground = GroundY(stretch.Series);
            body.append({body.back().x(), ground});
            body.append({body.front().x(), ground});
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawPolygon(body);
            PaintLine(painter, stretch.Points, m_look.Edge(color), 1);
        } else if (m_space.IsDeep()) {
            PaintLine(painter, stretch.Points, Shaded(color, 0.3), 2.5);
        } else if (stretch.IsSingle) {
            PaintMarker(painter, (stretch.Points.front() + stretch.Points.back()) / 2, color,
                        m_look.Edge(color), false);
        } else {
            if (ChartLook::IsFaint(color, m_look.Wall))
                PaintLine(painter, stretch.Points, m_look.Edge(color), 4);
            PaintLine(painter, stretch.Points, color, 2);
        }
    }

    void PaintLine(QPainter &painter, const QPolygonF &points, const QColor &color,
                   double width) const
    {
        if (IsDense()) {
            PaintBand(painter, points, color, {});
            return;
        }
        // In pieces: the time that one line takes grows with the square of its jags.
        constexpr qsizetype piece = 8;
        painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        for (qsizetype at = 0; at + 1 < points.size(); at += piece)
            painter.drawPolyline(points.constData() + at,
                                 int(std::min(piece + 1, points.size() - at)));
    }

    /// Many points to a pixel are drawn as the band that they cover, for an area down to the ground:
    /// filled, which is many times faster than following each of them with a pen.
    void PaintBand(QPainter &painter, const QPolygonF &points, const QColor &color,
                   std::optional<double> ground) const
    {
        constexpr double half = 0.7;
        QPolygonF upper, lower;
        for (qsizetype at = 0; at < points.size();) {
            const double x = std::floor(points[at].x());
            // With the point before, so that the band is not torn.
            double top = points[std::max<qsizetype>(0, at - 1)].y(), bottom = top;
            for (; at < points.size() && std::floor(points[at].x()) == x; ++at) {
                top = std::min(top, points[at].y());
                bottom = std::max(bottom, points[at].y());
            }
            top = std::min(top - half, ground.value_or(top));
            bottom = std::max(bottom + half, ground.value_or(bottom));
            upper << QPointF(x, top) << QPointF(x + 1, top);
            lower << QPointF(x, bottom) << QPointF(x + 1, bottom);
        }
        std::reverse(lower.begin(), lower.end());
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPolygon(upper + lower);
    }

    void PaintSelection(QPainter &painter, const ChartSelection &selection) const
    {
        constexpr double leastDistance = 9;
        const auto mark = [&](int series, int row, bool isSelected) {
            if (const auto place = PlaceOf({series, row}))
                PaintMarker(painter, *place, m_look.Series(series), m_look.WallText, isSelected);
        };
        if (selection.Series >= 1 && selection.Series <= int(m_numbers.size())) {
            const int step = std::max(1, int(std::ceil(leastDistance / m_space.Slot())));
            for (int row = 1; row <= m_space.Rows; row += step)
                mark(selection.Series, row, false);
            if (selection.Row > 0)
                mark(selection.Series, selection.Row, true);
        }
        if (selection.HasFocus && selection.Cursor.Row > 0)
            if (const auto place = PlaceOf(selection.Cursor))
                PaintCursor(painter, *place, m_look.WallText);
    }

    /// At which x of its line a series is under `place`, if it is.
    std::optional<double> HitX(int series, QPointF place) const
    {
        const QPointF depth = LaneBack(series) - LaneFront(series);
        const double shift = LaneFront(series).x();
        const auto [first, last] =
            m_space.RowsAround(place.x() - shift - depth.x() / 2, ClickReach + depth.x() / 2);
        const double ground = GroundY(series);
        for (int row = first; row <= last; ++row) {
            if (std::isnan(Value(series, row)))
                continue;
            const QPointF from = Place(series, row);
            const bool isAlone = row == m_space.Rows || std::isnan(Value(series, row + 1));
            const QPointF to = isAlone ? from : Place(series, row + 1);
            // A point that a fixed scale cuts off is where it would leave the plot.
            const QPointF seen = *PlaceOf({series, row});
            if (DistanceToSegment(place, from, to) <= ClickReach ||
                DistanceToSegment(place, seen, seen) <= ClickReach)
                return place.x() - shift;
            if (m_isFilled && from.x() <= place.x() && place.x() <= to.x() && to.x() > from.x()) {
                const double share = (place.x() - from.x()) / (to.x() - from.x());
                const double y = from.y() + share * (to.y() - from.y());
                if (std::min(y, ground) <= place.y() && place.y() <= std::max(y, ground))
                    return place.x() - shift;
            }
            if (m_space.IsDeep() && QPolygonF({from, to, to + depth, from + depth})
                                        .containsPoint(place, Qt::OddEvenFill))
                return place.x() - shift - depth.x() / 2;
        }
        return {};
    }

    const SeriesNumbers &m_numbers;
    ChartSpace m_space;
    ChartLook m_look;
    bool m_isFilled;
    double m_groundY; ///< of zero, on the front
    std::vector<Stretch> m_stretches;
};

} // namespace

std::unique_ptr<ChartShapes> MakeLines(const SeriesNumbers &numbers, const ChartSpace &space,
                                       const ChartLook &look)
{
    return std::make_unique<LineShapes>(numbers, space, look, false);
}

std::unique_ptr<ChartShapes> MakeAreas(const SeriesNumbers &numbers, const ChartSpace &space,
                                       const ChartLook &look)
{
    return std::make_unique<LineShapes>(numbers, space, look, true);
}
