#pragma once

/// The chart of a grid of values, in one of seven styles, on Qt Charts where it serves.
///
///     MSChart->SetStyle(ChartStyle::Line2D);
///     MSChart->SetGrid(grid);
///     MSChart->OnPointSelected = [...](int series, int point) { ... };
///
/// The first click on a series selects it and shows its points (each slice of a pie is a series),
/// the next one on a point selects that: OnPointSelected. A double click on a series asks for its
/// colour: OnSeriesActivated; one anywhere else in the chart for that of an area: OnPlotActivated.
/// With the keyboard: arrows go from point to point, Space or Return selects.
///
/// Many points are thinned by pixels for drawing, so that no extreme is lost; the grid keeps all.
/// The three-dimensional styles extrude bars, ribbons and areas on a base and a wall. A negative
/// slice takes the size of its amount, is hatched, and its label bears the minus.

#include "base/formats.h"
#include "platform/chart_grid.h"
#include "platform/widgets/shown_chart.h"

#include <QColor>
#include <QImage>
#include <QWidget>

#include <functional>
#include <memory>

class Chart : public QWidget, public ShownChart
{
public:
    explicit Chart(QWidget *parent = nullptr);
    ~Chart() override;

    void SetGrid(ChartGrid grid);
    const ChartGrid &Grid() const;
    void SetStyle(ChartStyle style);
    ChartStyle Style() const;
    /// By which texts of the grid are read, and axis values written; to begin with the system's.
    void SetFormats(const Formats &formats);

    // Colours; invalid (to begin with): the widget's own, which follow the palette.
    void SetBackdropColor(const QColor &color); ///< of the whole chart
    void SetBaseColor(const QColor &color);     ///< what the three-dimensional styles stand on
    void SetWallColor(const QColor &color);     ///< behind the values
    void SetSeriesColor(int series, const QColor &color); ///< from 1

    std::function<void(int series, int point)> OnPointSelected;
    std::function<void(int series)> OnSeriesActivated;
    std::function<void()> OnPlotActivated;
    /// A right click, or the Menu key, at this place of the screen.
    std::function<void(const QPoint &where)> OnContextMenu;
    /// Any click or key of the user.
    std::function<void()> OnUserAction;

    /// By mouse or keys; 0: none.
    int SelectedSeries() const;

    /// The chart as shown, at `scale` pixels for each of its own.
    QImage Picture(qreal scale = 2) const;

    // ShownChart
    int ChartType() const override { return int(Style()); }
    std::vector<Value> Values() const override;
    Target PointTarget(int series, int index) override;
    bool IsPointSelected(int series, int index) const override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> m_private;
};
