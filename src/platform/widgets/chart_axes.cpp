#include "platform/widgets/chart_axes.h"

#include <QCategoryAxis>
#include <QChart>

#include <algorithm>
#include <cmath>

namespace
{

void Fill(QCategoryAxis &axis, const std::vector<AxisLabel> &labels)
{
    const QStringList before = axis.categoriesLabels();
    for (const QString &label : before)
        axis.remove(label);
    int number = 0;
    for (const AxisLabel &label : labels) {
        // The axis reads mark-up, and takes no label twice: rows of one day get invisible tails.
        const QString tail(++number, QChar(0x200B));
        axis.append(label.Text.toHtmlEscaped() + tail, label.Place);
    }
}

} // namespace

std::vector<AxisLabel> CategoryLabels(int count, const std::function<QString(int row)> &label,
                                      const QFontMetricsF &metrics, double width)
{
    constexpr double gap = 14;
    constexpr double usualWidth = 120; ///< wider labels are elided when more then fit
    if (count <= 0)
        return {};
    // Measuring each of thousands takes longer than drawing the chart.
    QString longest;
    for (int row = 1; row <= count; ++row)
        if (const QString text = label(row); text.size() > longest.size())
            longest = text;
    const double widest = metrics.horizontalAdvance(longest) * 1.1;
    const double slot = width / count;
    const double wanted = std::min(widest, std::max(usualWidth, width / 4)) + gap;
    const int step = std::max(1, int(std::ceil(wanted / slot)));
    std::vector<AxisLabel> labels;
    for (int row = 1; row <= count; row += step) {
        const QString text = label(row).simplified();
        labels.push_back({double(row), metrics.elidedText(text, Qt::ElideRight,
                                                          std::max(10.0, step * slot - gap))});
    }
    return labels;
}

ChartAxes::ChartAxes(QChart &chart)
    : m_chart(chart), m_rows(new QCategoryAxis), m_values(new QCategoryAxis)
{
    chart.addAxis(m_rows, Qt::AlignBottom);
    chart.addAxis(m_values, Qt::AlignLeft);
    for (QCategoryAxis *axis : {m_rows, m_values}) {
        axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
        axis->setTruncateLabels(false);
        axis->setGridLineVisible(false);
    }
    m_rows->setLineVisible(false);
}

void ChartAxes::SetLabels(const std::vector<AxisLabel> &rows, const std::vector<AxisLabel> &values)
{
    Fill(*m_rows, rows);
    Fill(*m_values, values);
}

void ChartAxes::SetDress(const QFont &rows, const QFont &values, const ChartLook &look)
{
    m_rows->setLabelsFont(rows);
    m_values->setLabelsFont(values);
    for (QCategoryAxis *axis : {m_rows, m_values}) {
        axis->setLabelsBrush(look.Text);
        axis->setLinePen(QPen(look.AxisLine, 1));
    }
}

void ChartAxes::Fit(const ChartSpace &space)
{
    m_rows->setVisible(true);
    m_values->setVisible(true);
    // Deep styles have their lines on the wall.
    m_values->setLineVisible(!space.IsDeep());
    m_rows->setRange(0.5, space.Rows + 0.5);
    // The labels of the rows stand under the slab, clear of the lowest value's.
    const double slab = space.BaseHeight / space.Front.height() * (space.Maximum - space.Minimum);
    m_values->setRange(space.Minimum - slab, space.Maximum);
    m_chart.setPlotArea(space.Front.adjusted(0, 0, 0, space.BaseHeight));
}

void ChartAxes::Hide()
{
    m_rows->setVisible(false);
    m_values->setVisible(false);
}
