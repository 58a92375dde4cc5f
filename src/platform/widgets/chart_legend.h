#pragma once

/// The legend under a chart: a swatch and a name for each series, in centred rows. (That of Qt Charts
/// has one row, and cuts off what does not fit.)

#include <QBrush>
#include <QFont>
#include <QPainter>
#include <QRectF>

#include <optional>
#include <vector>

class ChartLegend
{
public:
    struct Entry
    {
        QString Name;
        QBrush Fill;
    };

    ChartLegend() = default;
    /// Within `width`, and `mostHeight`: entries that do not fit are told by "…" at the end.
    ChartLegend(std::vector<Entry> entries, const QFont &font, double width, double mostHeight);

    double Height() const { return m_rows * m_rowHeight; }
    void MoveTo(QPointF topLeft) { m_topLeft = topLeft; }
    void Paint(QPainter &painter, const QColor &text, const QColor &edge, int selected) const;

    /// Series count from 1.
    std::optional<int> SeriesAt(QPointF place) const;
    std::optional<QPointF> PlaceOf(int series) const;
    /// Of the entries that are shown.
    std::vector<QRectF> Places() const;

private:
    std::vector<Entry> m_entries;
    std::vector<QRectF> m_places; ///< of those that fit, from the top left of the legend
    QFont m_font;
    double m_rowHeight = 0;
    int m_rows = 0;
    QPointF m_topLeft;
};
