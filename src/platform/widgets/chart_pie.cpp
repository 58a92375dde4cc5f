#include "platform/widgets/chart_pie.h"

#include "platform/widgets/chart_numbers.h"
#include "platform/widgets/colors.h"

#include <QChart>
#include <QFontMetricsF>
#include <QPieSeries>
#include <QPieSlice>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{

constexpr double explodeShare = 0.06; ///< of the radius
constexpr double holeShare = 0.75;    ///< of the empty ring
constexpr size_t crowd = 12;          ///< of slices
constexpr double labelGap = 5;
constexpr double wholeCircle = 0.9999;
constexpr double leastArc = 4; ///< of a slice that can be hit

} // namespace

QBrush SliceFill(const QColor &color, const QColor &ground, bool isNegative)
{
    if (!isNegative)
        return color;
    QLinearGradient stripes(0, 0, 5, 5);
    stripes.setSpread(QGradient::RepeatSpread);
    const QColor light = Mixed(ground, color, 0.15);
    stripes.setStops({{0, color}, {0.5, color}, {0.501, light}, {1, light}});
    return stripes;
}

PieShapes::PieShapes(QChart &chart, const std::vector<double> &values, const QRectF &area,
                     const ChartLook &look, const Formats &formats,
                     const std::optional<QFont> &labelFont)
    : m_chart(chart), m_series(new QPieSeries), m_look(look),
      m_labelFont(labelFont.value_or(QFont()))
{
    const std::vector<PieShare> shares = PieShares(values);
    std::vector<QString> texts;
    double widest = 0, high = 0;
    if (labelFont) {
        const QFontMetricsF metrics(*labelFont);
        high = metrics.height();
        for (const PieShare &share : shares) {
            texts.push_back(formats.Format(share.Share, u"0%"));
            widest = std::max(widest, metrics.horizontalAdvance(texts.back()));
        }
    }
    const double besides = widest > 0 ? widest + 3 * labelGap : labelGap;
    const double above = high > 0 ? high + 2 * labelGap : labelGap;
    m_radius = std::max(1.0, std::min(area.width() / 2 - besides, area.height() / 2 - above) /
                                 (1 + explodeShare));
    m_center = area.center();

    const bool isAllZero = std::all_of(shares.begin(), shares.end(),
                                       [](const PieShare &share) { return share.IsEmpty; });
    double from = 0;
    for (size_t at = 0; at < shares.size(); ++at) {
        const PieShare &share = shares[at];
        m_slices.push_back({from, share.Part});
        from += share.Part;
        auto *slice = new QPieSlice(QString(), share.Part);
        const QColor color = m_look.Series(int(at) + 1);
        slice->setBrush(isAllZero ? QBrush(Mixed(look.Backdrop, look.Text, 0.15))
                                  : SliceFill(color, look.Backdrop, share.Share < 0));
        // Set off from its neighbours, if there are any, and if that leaves something of it.
        const double arc = share.Part * 2 * std::numbers::pi * m_radius;
        slice->setPen(share.Part > wholeCircle || arc < leastArc ? QPen(Qt::NoPen)
                      : ChartLook::IsFaint(color, look.Backdrop)
                          ? QPen(look.Edge(color, look.Backdrop), 1)
                          : QPen(look.Backdrop, std::min(1.5, arc / 10)));
        slice->setExplodeDistanceFactor(explodeShare);
        slice->setLabelVisible(false);
        m_series->append(slice);
    }
    // A slice that is drawn out stays within the plot, which would cut it off.
    constexpr double size = 1 / (1 + explodeShare);
    m_series->setPieSize(size);
    m_series->setHoleSize(isAllZero ? holeShare * size : 0);
    chart.addSeries(m_series);
    const QPointF corner(m_radius / size, m_radius / size);
    chart.setPlotArea(QRectF(m_center - corner, m_center + corner));
    if (labelFont)
        MakeLabels(values, texts, area);
}

PieShapes::~PieShapes()
{
    m_chart.removeSeries(m_series);
    delete m_series;
}

QPointF PieShapes::OnCircle(double turn, double radius) const
{
    const double angle = turn * 2 * std::numbers::pi;
    return m_center + QPointF(std::sin(angle), -std::cos(angle)) * radius;
}

QPointF PieShapes::Shift(int series) const
{
    // The one slice that is the whole circle stays where it is.
    if (series != m_selected || m_slices[size_t(series - 1)].Part > wholeCircle)
        return {};
    return OnCircle(m_slices[size_t(series - 1)].Middle(), m_radius * explodeShare) - m_center;
}

/// Each label beside its slice, on a wider circle. On either side of the pie they are pushed apart;
/// when there is no room for all, those of the smallest slices go.
void PieShapes::MakeLabels(const std::vector<double> &values, const std::vector<QString> &texts,
                           const QRectF &area)
{
    const QFontMetricsF metrics(m_labelFont);
    const double high = metrics.height();
    const double radius = m_radius * (1 + explodeShare) + high / 2 + labelGap;
    // In a crowd, slices that would all bear "0%" are left to the legend.
    const auto isCrumb = [this](int at) {
        return m_slices.size() > crowd && m_slices[size_t(at)].Part < 0.005;
    };
    for (const bool isRight : {true, false}) {
        std::vector<int> side;
        for (int at = 0; at < int(m_slices.size()); ++at)
            if (!std::isnan(values[size_t(at)]) && !isCrumb(at) &&
                (m_slices[size_t(at)].Middle() <= 0.5) == isRight)
                side.push_back(at);
        const double top = std::max(area.top(), m_center.y() - radius - high / 2);
        const double bottom = std::min(area.bottom(), m_center.y() + radius + high / 2);
        const auto most = size_t(std::max(0.0, (bottom - top) / high));
        std::stable_sort(side.begin(), side.end(), [this](int one, int other) {
            return m_slices[size_t(one)].Part > m_slices[size_t(other)].Part;
        });
        side.resize(std::min(side.size(), most));
        // From the top down.
        std::sort(side.begin(), side.end(),
                  [isRight](int one, int other) { return isRight ? one < other : one > other; });
        std::vector<double> tops;
        for (const int at : side) {
            const double wanted = OnCircle(m_slices[size_t(at)].Middle(), radius).y() - high / 2;
            tops.push_back(std::max({wanted, top, tops.empty() ? top : tops.back() + high}));
        }
        double limit = bottom - high;
        for (auto place = tops.rbegin(); place != tops.rend(); ++place) {
            *place = std::min(*place, limit);
            limit = *place - high;
        }
        for (size_t at = 0; at < side.size(); ++at) {
            const QString &text = texts[size_t(side[at])];
            const double wide = std::ceil(metrics.horizontalAdvance(text));
            const double off = tops[at] + high / 2 - m_center.y();
            const double beside = std::sqrt(std::max(0.0, radius * radius - off * off)) + labelGap;
            const double left = isRight ? m_center.x() + beside : m_center.x() - beside - wide;
            m_labels.push_back({side[at] + 1, text, QRectF(left, tops[at], wide, high)});
        }
    }
}

void PieShapes::Paint(QPainter &painter, const ChartSelection &selection) const
{
    painter.setFont(m_labelFont);
    for (const Label &label : m_labels) {
        const bool isRight = label.Place.center().x() >= m_center.x();
        const QPointF from =
            OnCircle(m_slices[size_t(label.Series - 1)].Middle(), m_radius) + Shift(label.Series);
        const QPointF to(isRight ? label.Place.left() - 2 : label.Place.right() + 2,
                         label.Place.center().y());
        painter.setPen(QPen(m_look.AxisLine, 1));
        painter.drawLine(from, to);
        painter.setPen(m_look.Text);
        painter.drawText(label.Place, Qt::AlignCenter | Qt::TextDontClip, label.Text);
    }
    if (selection.Row > 0 && selection.Series >= 1 && selection.Series <= int(m_slices.size()))
        PaintMarker(painter,
                    OnCircle(m_slices[size_t(selection.Series - 1)].Middle(), m_radius * 0.65) +
                        Shift(selection.Series),
                    m_look.Backdrop, m_look.Text, true);
    if (selection.HasFocus && selection.Cursor.Series >= 1 &&
        selection.Cursor.Series <= int(m_slices.size()))
        PaintCursor(
            painter,
            OnCircle(m_slices[size_t(selection.Cursor.Series - 1)].Middle(), m_radius * 0.65) +
                Shift(selection.Cursor.Series),
            m_look.Text);
}

void PieShapes::Select(const ChartSelection &selection)
{
    m_selected = selection.Series <= int(m_slices.size()) ? selection.Series : 0;
    const auto slices = m_series->slices();
    for (int at = 0; at < int(slices.size()); ++at)
        slices[at]->setExploded(at + 1 == m_selected && m_slices[size_t(at)].Part <= wholeCircle);
}

std::vector<ChartPoint> PieShapes::Hit(QPointF place) const
{
    const auto isIn = [&](int series) {
        const QPointF away = place - m_center - Shift(series);
        const double turn = std::atan2(away.x(), -away.y()) / (2 * std::numbers::pi);
        const double from = m_slices[size_t(series - 1)].From;
        const double at = (turn < 0 ? turn + 1 : turn) - from;
        return std::hypot(away.x(), away.y()) <= m_radius && at >= 0 &&
               at < m_slices[size_t(series - 1)].Part;
    };
    if (m_selected > 0 && isIn(m_selected))
        return {{m_selected, 1}};
    for (int series = 1; series <= int(m_slices.size()); ++series)
        if (series != m_selected && isIn(series))
            return {{series, 1}};
    return {};
}

std::optional<QPointF> PieShapes::PlaceOf(ChartPoint point) const
{
    constexpr double share = 0.7;
    if (point.Series < 1 || point.Series > int(m_slices.size()) || point.Row != 1)
        return {};
    const Slice &slice = m_slices[size_t(point.Series - 1)];
    if (slice.Part * 2 * std::numbers::pi * m_radius * share < leastArc)
        return {};
    return OnCircle(slice.Middle(), m_radius * share) + Shift(point.Series);
}
