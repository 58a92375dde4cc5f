#include "platform/widgets/chart_legend.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double swatch = 10;
constexpr double swatchGap = 6;
constexpr double entryGap = 18;
constexpr double rowGap = 3;

} // namespace

ChartLegend::ChartLegend(std::vector<Entry> entries, const QFont &font, double width,
                         double mostHeight)
    : m_entries(std::move(entries)), m_font(font)
{
    const QFontMetricsF metrics(font);
    m_rowHeight = std::max(metrics.height(), swatch) + rowGap;
    double widest = 0, sum = 0;
    for (Entry &entry : m_entries) {
        entry.Name = metrics.elidedText(entry.Name, Qt::ElideRight,
                                        std::max(0.0, width - swatch - swatchGap));
        const double own = swatch + swatchGap + std::ceil(metrics.horizontalAdvance(entry.Name));
        widest = std::max(widest, own);
        sum += own + entryGap;
    }
    const auto count = int(m_entries.size());
    if (count == 0 || width <= 0)
        return;
    const int mostRows = std::max(1, int(mostHeight / m_rowHeight));
    if (sum - entryGap <= width) {
        m_rows = 1;
        double x = (width - sum + entryGap) / 2;
        for (const Entry &entry : m_entries) {
            const double own =
                swatch + swatchGap + std::ceil(metrics.horizontalAdvance(entry.Name));
            m_places.push_back({x, 0, own, m_rowHeight});
            x += own + entryGap;
        }
        return;
    }
    // Several rows read best as columns.
    const double cell = widest + entryGap;
    const int columns = std::max(1, int((width + entryGap) / cell));
    m_rows = std::min(mostRows, (count + columns - 1) / columns);
    const double left = (width - columns * cell + entryGap) / 2;
    const int shown = std::min(count, m_rows * columns);
    for (int at = 0; at < shown; ++at)
        m_places.push_back(
            {left + at % columns * cell, at / columns * m_rowHeight, widest, m_rowHeight});
    if (shown < count) {
        m_places.pop_back();
        if (!m_places.empty()) {
            Entry &last = m_entries[m_places.size() - 1];
            last.Name = metrics.elidedText(last.Name + QString(40, QLatin1Char('.')),
                                           Qt::ElideRight, widest - swatch - swatchGap);
        }
    }
}

void ChartLegend::Paint(QPainter &painter, const QColor &text, const QColor &edge,
                        int selected) const
{
    QFont selectedFont = m_font;
    selectedFont.setUnderline(true);
    for (size_t at = 0; at < m_places.size(); ++at) {
        const QRectF place = m_places[at].translated(m_topLeft);
        const QRectF box(place.left(), place.center().y() - swatch / 2, swatch, swatch);
        painter.setPen(QPen(edge, 1));
        painter.setBrush(m_entries[at].Fill);
        painter.drawRect(box);
        painter.setPen(text);
        painter.setFont(int(at) + 1 == selected ? selectedFont : m_font);
        painter.drawText(place.adjusted(swatch + swatchGap, 0, entryGap, 0),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, m_entries[at].Name);
    }
}

std::optional<int> ChartLegend::SeriesAt(QPointF place) const
{
    for (size_t at = 0; at < m_places.size(); ++at)
        if (m_places[at].translated(m_topLeft).contains(place))
            return int(at) + 1;
    return {};
}

std::optional<QPointF> ChartLegend::PlaceOf(int series) const
{
    if (series < 1 || series > int(m_places.size()))
        return {};
    const QRectF place = m_places[size_t(series - 1)].translated(m_topLeft);
    return QPointF(place.left() + swatch / 2, place.center().y());
}

std::vector<QRectF> ChartLegend::Places() const
{
    std::vector<QRectF> places;
    for (const QRectF &place : m_places)
        places.push_back(place.translated(m_topLeft));
    return places;
}
