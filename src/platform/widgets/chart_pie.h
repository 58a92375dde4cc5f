#pragma once

/// A pie of one value for each series: its slices by Qt Charts, its labels here, where they keep clear
/// of each other. A negative slice is hatched; when all are zero there is an empty ring.

#include "base/formats.h"
#include "platform/widgets/chart_shapes.h"

#include <memory>

class QChart;
class QPieSeries;

/// How a series is filled; a negative one in a pie is hatched.
QBrush SliceFill(const QColor &color, const QColor &ground, bool isNegative);

class PieShapes : public ChartShapes
{
public:
    struct Label
    {
        int Series = 1;
        QString Text;
        QRectF Place;
    };

    /// Within `area`; `labelFont` is that of the percent labels, if there are to be any. `chart`
    /// holds the slices as long as this lives.
    PieShapes(QChart &chart, const std::vector<double> &values, const QRectF &area,
              const ChartLook &look, const Formats &formats, const std::optional<QFont> &labelFont);
    ~PieShapes() override;

    void Paint(QPainter &painter, const ChartSelection &selection) const override;
    void Select(const ChartSelection &selection) override;
    std::vector<ChartPoint> Hit(QPointF place) const override;
    std::optional<QPointF> PlaceOf(ChartPoint point) const override;
    const std::vector<Label> &Labels() const { return m_labels; }

private:
    struct Slice
    {
        double From = 0; ///< of the circle, from the top clockwise, 0 to 1
        double Part = 0;
        double Middle() const { return From + Part / 2; }
    };

    void MakeLabels(const std::vector<double> &values, const std::vector<QString> &texts,
                    const QRectF &area);
    QPointF OnCircle(double turn, double radius) const;
    QPointF Shift(int series) const; ///< of the selected slice

    QChart &m_chart;
    QPieSeries *m_series; ///< the chart's
    ChartLook m_look;
    QFont m_labelFont;
    std::vector<Slice> m_slices;
    std::vector<Label> m_labels;
    QPointF m_center;
    double m_radius = 0;
    int m_selected = 0;
};
