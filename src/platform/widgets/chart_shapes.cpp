#include "platform/widgets/chart_shapes.h"

#include <algorithm>
#include <cmath>

double ChartSpace::Y(double value) const
{
    const double share = (value - Minimum) / (Maximum - Minimum);
    // What a fixed scale cuts off ends outside of the picture, not at the end of the numbers.
    return Front.bottom() - std::clamp(share, -10.0, 10.0) * Front.height();
}

int ChartSpace::RowAt(double x) const
{
    return std::clamp(int(std::floor((x - Front.left()) / Slot())) + 1, 1, std::max(1, Rows));
}

std::pair<int, int> ChartSpace::RowsAround(double x, double reach) const
{
    return {std::max(1, RowAt(x - reach) - 1), std::min(Rows, RowAt(x + reach) + 1)};
}

std::vector<ChartPoint> PointsUnder(QPointF place, int series, const std::vector<double> &values,
                                    const ChartSpace &space)
{
    constexpr double samePixel = 0.51;
    std::vector<ChartPoint> points;
    ChartPoint nearest;
    double least = INFINITY;
    const auto [first, last] = space.RowsAround(place.x(), 3 * ClickReach + space.Slot());
    for (int row = first; row <= last; ++row) {
        if (std::isnan(values[size_t(row - 1)]))
            continue;
        const double distance = std::abs(space.X(row) - place.x());
        if (distance <= samePixel)
            points.push_back({series, row});
        if (distance < least) {
            least = distance;
            nearest = {series, row};
        }
    }
    if (points.empty() && nearest.Row > 0)
        return {nearest};
    const auto away = [&](ChartPoint point) {
        return std::abs(space.Y(values[size_t(point.Row - 1)]) - place.y());
    };
    std::stable_sort(points.begin(), points.end(),
                     [&away](ChartPoint one, ChartPoint other) { return away(one) < away(other); });
    return points;
}

void PaintMarker(QPainter &painter, QPointF place, const QColor &color, const QColor &edge,
                 bool isSelected)
{
    const double radius = isSelected ? 5.5 : 3.5;
    painter.setPen(QPen(edge, isSelected ? 2 : 1));
    painter.setBrush(color);
    painter.drawEllipse(place, radius, radius);
}

void PaintCursor(QPainter &painter, QPointF place, const QColor &color)
{
    constexpr double radius = 8.5;
    painter.setPen(QPen(color, 1.5, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(place, radius, radius);
}
