#pragma once

/// The two axes of a chart, drawn by Qt Charts, and which labels they bear. (Lines from wall to wall are
/// the stage's, where they turn a corner.)

#include "platform/widgets/chart_look.h"
#include "platform/widgets/chart_shapes.h"

#include <QFontMetricsF>
#include <QStringList>

#include <functional>
#include <vector>

class QCategoryAxis;
class QChart;

struct AxisLabel
{
    double Place = 0; ///< a row, from 1, or a value
    QString Text;
};

/// As many labels of the rows 1 to `count`, at even steps, as stand side by side in `width`; one that
/// is wider than its share is elided.
std::vector<AxisLabel> CategoryLabels(int count, const std::function<QString(int row)> &label,
                                      const QFontMetricsF &metrics, double width);

class ChartAxes
{
public:
    /// `chart` owns the axes.
    explicit ChartAxes(QChart &chart);

    void SetLabels(const std::vector<AxisLabel> &rows, const std::vector<AxisLabel> &values);
    void SetDress(const QFont &rows, const QFont &values, const ChartLook &look);
    /// Puts the chart's plot around the space.
    void Fit(const ChartSpace &space);
    void Hide();

private:
    QChart &m_chart;
    QCategoryAxis *m_rows;
    QCategoryAxis *m_values;
};
