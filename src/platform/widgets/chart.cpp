#include "platform/widgets/chart.h"

#include "platform/widgets/chart_numbers.h"
#include "platform/widgets/chart_picture.h"

#include <QAccessibleWidget>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int border = 10; ///< around the picture, where frame and focus are

/// What a screen reader calls it; name and description are the widget's.
QAccessibleInterface *SpokenChart(const QString &, QObject *object)
{
    auto *chart = dynamic_cast<Chart *>(object);
    return chart ? new QAccessibleWidget(chart, QAccessible::Chart) : nullptr;
}

} // namespace

class Chart::Private
{
public:
    explicit Private(Chart &chart) : m_chart(chart) {}

    bool IsPie() const { return style == ChartStyle::Pie; }
    int PointCount() const { return grid.IsEmpty() ? 0 : IsPie() ? 1 : grid.RowCount(); }
    bool HasValue(ChartPoint point) const;

    /// Whatever changed, the picture is laid out anew before it is used next.
    void Change();
    void ReadNumbers();
    ChartPicture &Picture();
    void Paint(QPainter &painter, bool withFocus);

    void Press(QPointF place);
    void SelectNext(const std::vector<ChartPoint> &points);
    void Select(ChartPoint point);
    void ClearSelection();
    bool HandleKey(int key);
    /// `at` or, in steps of `series` and `row`, the next point with a value; none beyond the ends.
    ChartPoint ValueFrom(ChartPoint at, int series, int row) const;
    void GoTo(ChartPoint point);
    void Describe();

    ChartGrid grid;
    SeriesNumbers numbers;
    ChartStyle style = ChartStyle::Bar2D;
    Formats formats{QLocale()};
    ChartColors colors;
    ChartSelection selection;

private:
    Chart &m_chart;
    ChartPicture m_picture;
    bool m_isArranged = false;
};

bool Chart::Private::HasValue(ChartPoint point) const
{
    return point.Series >= 1 && point.Series <= int(numbers.size()) && point.Row >= 1 &&
           point.Row <= PointCount() &&
           !std::isnan(numbers[size_t(point.Series - 1)][size_t(point.Row - 1)]);
}

void Chart::Private::Change()
{
    m_isArranged = false;
    m_chart.update();
}

void Chart::Private::ReadNumbers()
{
    numbers = ChartNumbers(grid, formats);
    ClearSelection();
    Change();
}

ChartPicture &Chart::Private::Picture()
{
    if (!m_isArranged) {
        m_isArranged = true;
        m_picture.Arrange(grid, numbers, style, ChartLook(colors, m_chart.palette()), formats,
                          m_chart.font(),
                          m_chart.rect().adjusted(border, border, -border, -border));
        m_picture.Select(selection);
    }
    return m_picture;
}

void Chart::Private::Paint(QPainter &painter, bool withFocus)
{
    const ChartLook look(colors, m_chart.palette());
    painter.fillRect(m_chart.rect(), look.Backdrop);
    ChartSelection shown = selection;
    shown.HasFocus = withFocus;
    painter.save();
    Picture().Paint(painter, shown);
    painter.restore();
    painter.setPen(withFocus ? QPen(look.Highlight, 2) : QPen(look.AxisLine, 1));
    painter.setBrush(Qt::NoBrush);
    const double inset = withFocus ? 1 : 0.5;
    painter.drawRect(QRectF(m_chart.rect()).adjusted(inset, inset, -inset, -inset));
}

void Chart::Private::Press(QPointF place)
{
    const std::vector<ChartPoint> points = Picture().Hit(place);
    if (points.empty())
        ClearSelection();
    else
        SelectNext(points);
}

/// First the series, then its points; those that share a pixel one after the other.
void Chart::Private::SelectNext(const std::vector<ChartPoint> &points)
{
    if (points.front().Series != selection.Series) {
        selection = {points.front().Series, 0, {}, false};
        m_picture.Select(selection);
        Describe();
        m_chart.update();
        return;
    }
    if (!HasValue(points.front())) // an entry of the legend
        return;
    const auto current =
        std::find(points.begin(), points.end(), ChartPoint{selection.Series, selection.Row});
    const bool isLast = current == points.end() || current + 1 == points.end();
    Select(isLast ? points.front() : *(current + 1));
}

void Chart::Private::Select(ChartPoint point)
{
    selection = {point.Series, point.Row, point, false};
    Picture().Select(selection);
    Describe();
    m_chart.update();
    if (m_chart.OnPointSelected)
        m_chart.OnPointSelected(point.Series, point.Row);
}

void Chart::Private::ClearSelection()
{
    selection = {};
    m_picture.Select(selection);
    Describe();
    m_chart.update();
}

bool Chart::Private::HandleKey(int key)
{
    const ChartPoint at = selection.Cursor;
    // The slices of a pie are series of one point.
    const int series = IsPie() ? 1 : 0, row = IsPie() ? 0 : 1;
    const int ownSeries = std::max(1, at.Series);
    const bool isArrow =
        key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
    if (isArrow && at == ChartPoint())
        key = Qt::Key_Home;
    switch (key) {
    case Qt::Key_Left:
        GoTo(ValueFrom({at.Series - series, at.Row - row}, -series, -row));
        return true;
    case Qt::Key_Right:
        GoTo(ValueFrom({at.Series + series, at.Row + row}, series, row));
        return true;
    case Qt::Key_Up:
        GoTo(ValueFrom({at.Series - 1, at.Row}, -1, 0));
        return true;
    case Qt::Key_Down:
        GoTo(ValueFrom({at.Series + 1, at.Row}, 1, 0));
        return true;
    case Qt::Key_Home:
        GoTo(ValueFrom({IsPie() ? 1 : ownSeries, 1}, series, row));
        return true;
    case Qt::Key_End:
        GoTo(ValueFrom({IsPie() ? int(numbers.size()) : ownSeries, PointCount()}, -series, -row));
        return true;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!HasValue(at))
            return false;
        Select(at);
        return true;
    case Qt::Key_Escape:
        if (selection.Series == 0)
            return false;
        ClearSelection();
        return true;
    default:
        return false;
    }
}

ChartPoint Chart::Private::ValueFrom(ChartPoint at, int series, int row) const
{
    while (at.Series >= 1 && at.Series <= int(numbers.size()) && at.Row >= 1 &&
           at.Row <= PointCount()) {
        if (HasValue(at))
            return at;
        at = {at.Series + series, at.Row + row};
    }
    return {};
}

void Chart::Private::GoTo(ChartPoint point)
{
    if (point == ChartPoint())
        return;
    selection.Cursor = point;
    if (selection.Series != point.Series) {
        selection.Series = point.Series;
        selection.Row = 0;
        Picture().Select(selection);
    }
    Describe();
    m_chart.update();
}

/// For those who hear the chart.
void Chart::Private::Describe()
{
    QString told =
        QStringLiteral("%1 series of %2 points.").arg(grid.ColumnCount()).arg(PointCount());
    const ChartPoint at = selection.Cursor;
    if (HasValue(at))
        told += QStringLiteral(" %1, %2: %3")
                    .arg(grid.ColumnLabel(at.Series), grid.RowLabel(at.Row),
                         grid.Data(at.Row, at.Series));
    else if (selection.Series > 0)
        told += QLatin1Char(' ') + grid.ColumnLabel(selection.Series);
    m_chart.setAccessibleDescription(told);
}

// --- the widget -----------------------------------------------------------------------------------

Chart::Chart(QWidget *parent) : QWidget(parent), m_private(std::make_unique<Private>(*this))
{
    QAccessible::installFactory(SpokenChart); // the first chart does it for all
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("Chart"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_private->Describe();
}

Chart::~Chart() = default;

void Chart::SetGrid(ChartGrid grid)
{
    m_private->grid = std::move(grid);
    m_private->ReadNumbers();
}

const ChartGrid &Chart::Grid() const
{
    return m_private->grid;
}

void Chart::SetStyle(ChartStyle style)
{
    if (m_private->style == style)
        return;
    const bool isOtherKind = (style == ChartStyle::Pie) != m_private->IsPie();
    m_private->style = style;
    if (isOtherKind)
        m_private->ClearSelection();
    m_private->Change();
}

ChartStyle Chart::Style() const
{
    return m_private->style;
}

void Chart::SetFormats(const Formats &formats)
{
    m_private->formats = formats;
    m_private->ReadNumbers();
}

void Chart::SetBackdropColor(const QColor &color)
{
    m_private->colors.Backdrop = color;
    m_private->Change();
}

void Chart::SetBaseColor(const QColor &color)
{
    m_private->colors.Base = color;
    m_private->Change();
}

void Chart::SetWallColor(const QColor &color)
{
    m_private->colors.Wall = color;
    m_private->Change();
}

void Chart::SetSeriesColor(int series, const QColor &color)
{
    m_private->colors.Series[series] = color;
    m_private->Change();
}

int Chart::SelectedSeries() const
{
    return m_private->selection.Series;
}

QImage Chart::Picture(qreal scale) const
{
    QImage image((QSizeF(size()) * scale).toSize().expandedTo({1, 1}),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    m_private->Paint(painter, false);
    return image;
}

std::vector<ShownChart::Value> Chart::Values() const
{
    const ChartGrid &grid = m_private->grid;
    std::vector<Value> values;
    for (int column = 1; column <= grid.ColumnCount(); ++column)
        for (int row = 1; row <= grid.RowCount(); ++row)
            values.push_back(
                {grid.ColumnLabel(column), grid.RowLabel(row), grid.Data(row, column)});
    return values;
}

ShownChart::Target Chart::PointTarget(int series, int index)
{
    if (!m_private->HasValue({series, index}))
        return {};
    const auto place = m_private->Picture().PlaceOf({series, index});
    return place ? Target{this, place->toPoint()} : Target{};
}

bool Chart::IsPointSelected(int series, int index) const
{
    return index > 0 && m_private->selection.Series == series && m_private->selection.Row == index;
}

QSize Chart::sizeHint() const
{
    return {640, 420};
}

QSize Chart::minimumSizeHint() const
{
    return {160, 120};
}

void Chart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    m_private->Paint(painter, hasFocus());
}

void Chart::resizeEvent(QResizeEvent *)
{
    m_private->Change();
}

void Chart::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange ||
        event->type() == QEvent::StyleChange)
        m_private->Change();
    QWidget::changeEvent(event);
}

void Chart::focusInEvent(QFocusEvent *)
{
    update();
}

void Chart::focusOutEvent(QFocusEvent *)
{
    update();
}

void Chart::mousePressEvent(QMouseEvent *event)
{
    if (OnUserAction)
        OnUserAction();
    if (event->button() == Qt::LeftButton)
        m_private->Press(event->position());
}

void Chart::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (OnUserAction)
        OnUserAction();
    if (event->button() != Qt::LeftButton)
        return;
    const auto points = m_private->Picture().Hit(event->position());
    if (!points.empty() && OnSeriesActivated)
        OnSeriesActivated(points.front().Series);
    else if (points.empty() && OnPlotActivated)
        OnPlotActivated();
}

void Chart::contextMenuEvent(QContextMenuEvent *event)
{
    if (!OnContextMenu) {
        event->ignore();
        return;
    }
    const ChartSelection &selected = m_private->selection;
    const Target point = PointTarget(selected.Cursor.Series, selected.Cursor.Row);
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
    OnContextMenu(!isKey ? event->globalPos()
                         : mapToGlobal(point.widget ? point.center : rect().center()));
}

void Chart::keyPressEvent(QKeyEvent *event)
{
    if (OnUserAction)
        OnUserAction();
    if (!m_private->HandleKey(event->key()))
        QWidget::keyPressEvent(event);
}
