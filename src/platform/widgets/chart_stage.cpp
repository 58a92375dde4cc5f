#include "platform/widgets/chart_stage.h"

#include "platform/widgets/colors.h"

namespace
{

void PaintFace(QPainter &painter, const QPolygonF &face, const QColor &color, const QColor &edge)
{
    painter.setPen(QPen(edge, 0.8));
    painter.setBrush(color);
    painter.drawPolygon(face);
}

void PaintWalls(QPainter &painter, const ChartSpace &space, const ChartLook &look)
{
    const QRectF &front = space.Front;
    const QRectF back = front.translated(space.Depth);
    PaintFace(painter,
              QPolygonF({front.topLeft(), back.topLeft(), back.bottomLeft(), front.bottomLeft()}),
              Mixed(look.Wall, look.WallText, 0.1), look.Grid);
    PaintFace(painter, QPolygonF(back), look.Wall, look.Grid);
}

void PaintBase(QPainter &painter, const ChartSpace &space, const ChartLook &look)
{
    const QRectF &front = space.Front;
    const QPointF down(0, space.BaseHeight);
    const QColor edge = Shaded(look.Base, 0.4);
    PaintFace(painter,
              QPolygonF({front.bottomLeft(), front.bottomRight(), front.bottomRight() + space.Depth,
                         front.bottomLeft() + space.Depth}),
              Lit(look.Base, 0.25), edge);
    PaintFace(painter,
              QPolygonF({front.bottomLeft(), front.bottomRight(), front.bottomRight() + down,
                         front.bottomLeft() + down}),
              look.Base, edge);
    PaintFace(painter,
              QPolygonF({front.bottomRight(), front.bottomRight() + space.Depth,
                         front.bottomRight() + space.Depth + down, front.bottomRight() + down}),
              Shaded(look.Base, 0.3), edge);
}

/// Along the side wall, then the wall.
void PaintLevel(QPainter &painter, const ChartSpace &space, double y, const QPen &pen)
{
    const QPointF left(space.Front.left(), y);
    const QPointF right(space.Front.right(), y);
    painter.setPen(pen);
    if (space.IsDeep())
        painter.drawPolyline(QPolygonF({left, left + space.Depth, right + space.Depth}));
    else
        painter.drawLine(left, right);
}

} // namespace

void PaintStage(QPainter &painter, const ChartSpace &space, const ChartLook &look,
                const std::vector<double> &ticks)
{
    if (space.IsDeep())
        PaintWalls(painter, space, look);
    else
        painter.fillRect(space.Front, look.Wall);
    for (const double tick : ticks)
        PaintLevel(painter, space, space.Y(tick), QPen(look.Grid, 1));
    if (space.IsDeep())
        PaintBase(painter, space, look);
}

void PaintGround(QPainter &painter, const ChartSpace &space, const ChartLook &look)
{
    if (!space.IsDeep()) {
        painter.setPen(QPen(look.AxisLine, 1));
        painter.drawLine(space.Front.bottomLeft(), space.Front.bottomRight());
    }
    if (space.Minimum < 0 && space.Maximum > 0)
        PaintLevel(painter, space, space.ZeroY(), QPen(Mixed(look.Wall, look.WallText, 0.55), 1.2));
}
