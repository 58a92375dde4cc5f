#include "platform/widgets/chart_shapes.h"
#include "platform/widgets/chart_thinning.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double groupShare = 0.7;   ///< of a slot that its bars take
constexpr double leastGapSlot = 3;   ///< narrower slots have no gaps
constexpr double leastEdgeWidth = 4; ///< narrower bars have no edges
constexpr double mostWidth = 90;     ///< of a bar among few
constexpr double leastHeight = 2.5;  ///< of the bar of a zero

struct Bar
{
    int Series = 1;
    int FirstRow = 1; ///< from 1, as LastRow
    int LastRow = 1;
    QRectF Front;
    bool IsBelow = false; ///< hangs from zero
};

class BarShapes : public ChartShapes
{
public:
    BarShapes(const SeriesNumbers &numbers, const ChartSpace &space, const ChartLook &look)
        : m_numbers(numbers), m_space(space), m_look(look)
    {
        const double group = space.Slot() < leastGapSlot ? space.Slot() : space.Slot() * groupShare;
        m_width = std::min(mostWidth, group / double(std::max<size_t>(1, numbers.size())));
        for (int series = 1; series <= int(numbers.size()); ++series)
            for (const BarSpan &span :
                 ThinnedBars(numbers[size_t(series - 1)], std::max(1, int(space.Front.width()))))
                m_bars.push_back(BarOf(series, span));
        // From left to right, which is from far to near for a viewer on the right.
        std::stable_sort(m_bars.begin(), m_bars.end(), [](const Bar &one, const Bar &other) {
            return one.Front.left() < other.Front.left();
        });
        if (space.IsDeep())
            m_depth = space.Depth * std::min(0.9, std::max(6.0, m_width) * 0.9 / space.Depth.x());
    }

    void Paint(QPainter &painter, const ChartSelection &selection) const override
    {
        // Narrow bars stand on whole pixels, or they would shimmer.
        painter.setRenderHint(QPainter::Antialiasing, m_width >= leastEdgeWidth);
        if (m_space.IsDeep())
            for (const Bar &bar : m_bars)
                PaintFaces(painter, bar);
        for (const Bar &bar : m_bars)
            PaintFront(painter, bar, selection);
        painter.setRenderHint(QPainter::Antialiasing);
        PaintSelection(painter, selection);
    }

    std::vector<ChartPoint> Hit(QPointF place) const override
    {
        // The fronts hide what is behind them; of the faces the right ones do.
        for (const Bar &bar : m_bars)
            if (bar.Front.contains(place))
                return PointsOf(bar, place);
        if (m_space.IsDeep())
            for (auto bar = m_bars.rbegin(); bar != m_bars.rend(); ++bar)
                if (Top(bar->Front).containsPoint(place, Qt::WindingFill) ||
                    Right(bar->Front).containsPoint(place, Qt::WindingFill))
                    return PointsOf(*bar, place);
        const Bar *nearest = nullptr;
        double least = ClickReach;
        for (const Bar &bar : m_bars) {
            const QRectF &front = bar.Front;
            const double across =
                std::max({0.0, front.left() - place.x(), place.x() - front.right()});
            const double along =
                std::max({0.0, front.top() - place.y(), place.y() - front.bottom()});
            // Beside a wide bar is beside it; a thin or a flat one is hard to hit.
            if (across > 0 && front.width() >= ClickReach)
                continue;
            if (const double distance = std::hypot(across, along); distance <= least) {
                least = distance;
                nearest = &bar;
            }
        }
        return nearest ? PointsOf(*nearest, place) : std::vector<ChartPoint>();
    }

    std::optional<QPointF> PlaceOf(ChartPoint point) const override
    {
        for (const Bar &bar : m_bars) {
            if (bar.Series != point.Series || point.Row < bar.FirstRow || point.Row > bar.LastRow)
                continue;
            const double value = Value(point);
            if (std::isnan(value))
                return {};
            if (m_space.Slot() >= leastGapSlot)
                return bar.Front.center();
            return QPointF(m_space.X(point.Row), InFront(m_space.Y(value)));
        }
        return {};
    }

private:
    double Value(ChartPoint point) const
    {
        return m_numbers[size_t(point.Series - 1)][size_t(point.Row - 1)];
    }

    double InFront(double y) const
    {
        return std::clamp(y, m_space.Front.top(), m_space.Front.bottom());
    }

    Bar BarOf(int series, const BarSpan &span) const
    {
        const int first = span.FirstRow + 1, last = span.LastRow + 1;
        const double group = m_width * double(m_numbers.size());
        const double middle = (m_space.X(first) + m_space.X(last)) / 2;
        double left = middle - group / 2 + (series - 1) * m_width;
        double width = m_width;
        if (first != last) {
            left = m_space.X(first - 0.5);
            width = m_space.X(last + 0.5) - left;
        }
        double top = InFront(m_space.Y(span.Highest));
        double bottom = InFront(m_space.Y(span.Lowest));
        const bool isBelow = span.Lowest < 0 && span.Highest <= 0;
        if (bottom - top < leastHeight)
            (isBelow ? bottom : top) = isBelow ? top + leastHeight : bottom - leastHeight;
        return {series, first, last, QRectF(left, top, width, bottom - top), isBelow};
    }

    QPolygonF Top(const QRectF &front) const
    {
        return QPolygonF({front.topLeft(), front.topRight(), front.topRight() + m_depth,
                          front.topLeft() + m_depth});
    }

    QPolygonF Right(const QRectF &front) const
    {
        return QPolygonF({front.topRight(), front.topRight() + m_depth,
                          front.bottomRight() + m_depth, front.bottomRight()});
    }

    void PaintFaces(QPainter &painter, const Bar &bar) const
    {
        const QColor color = m_look.Series(bar.Series);
        const bool hasEdges = m_width >= leastEdgeWidth;
        painter.setPen(hasEdges ? QPen(m_look.Edge(color), 0.7) : QPen(Qt::NoPen));
        painter.setBrush(Shaded(color, 0.35));
        painter.drawPolygon(Right(bar.Front));
        painter.setBrush(Lit(color, 0.35));
        painter.drawPolygon(Top(bar.Front));
    }

    void PaintFront(QPainter &painter, const Bar &bar, const ChartSelection &selection) const
    {
        const QColor color = m_look.Series(bar.Series);
        const bool isSelected = selection.Series == bar.Series && selection.Row >= bar.FirstRow &&
                                selection.Row <= bar.LastRow;
        const QColor fill = isSelected ? Lit(color, 0.3) : color;
        if (m_width < leastEdgeWidth) {
            painter.fillRect(bar.Front, isSelected ? m_look.WallText : fill);
            return;
        }
        painter.setPen(
            QPen(isSelected ? m_look.WallText : m_look.Edge(color), isSelected ? 2 : 0.7));
        painter.setBrush(fill);
        painter.drawRect(bar.Front);
    }

    QPointF End(const Bar &bar) const
    {
        return {bar.Front.center().x(), bar.IsBelow ? bar.Front.bottom() : bar.Front.top()};
    }

    void PaintSelection(QPainter &painter, const ChartSelection &selection) const
    {
        constexpr double leastDistance = 9;
        double lastMarked = -leastDistance;
        for (const Bar &bar : m_bars) {
            const bool isSelected = bar.Series == selection.Series &&
                                    selection.Row >= bar.FirstRow && selection.Row <= bar.LastRow;
            const bool hasRoom = End(bar).x() - lastMarked >= leastDistance;
            if (bar.Series == selection.Series && (hasRoom || isSelected)) {
                lastMarked = End(bar).x();
                PaintMarker(painter, End(bar), m_look.Series(bar.Series), m_look.WallText,
                            isSelected);
            }
            if (selection.HasFocus && selection.Cursor.Series == bar.Series &&
                selection.Cursor.Row >= bar.FirstRow && selection.Cursor.Row <= bar.LastRow)
                PaintCursor(painter, End(bar), m_look.WallText);
        }
    }

    std::vector<ChartPoint> PointsOf(const Bar &bar, QPointF place) const
    {
        if (m_space.Slot() >= leastGapSlot)
            return {{bar.Series, bar.FirstRow}};
        return PointsUnder(place, bar.Series, m_numbers[size_t(bar.Series - 1)], m_space);
    }

    const SeriesNumbers &m_numbers;
    ChartSpace m_space;
    ChartLook m_look;
    double m_width = 1; ///< of one bar
    QPointF m_depth;    ///< of the bars
    std::vector<Bar> m_bars;
};

} // namespace

std::unique_ptr<ChartShapes> MakeBars(const SeriesNumbers &numbers, const ChartSpace &space,
                                      const ChartLook &look)
{
    return std::make_unique<BarShapes>(numbers, space, look);
}
