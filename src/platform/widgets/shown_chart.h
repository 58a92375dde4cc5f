#pragma once

/// A chart as its user has it: the values that are drawn, as texts, and the mouse on its points.
///
/// Series and points count from 1, as they are drawn. What is out of range has no target.

#include <QPoint>
#include <QString>

#include <vector>

class QWidget;

class ShownChart
{
public:
    virtual ~ShownChart() = default;

    struct Value
    {
        QString columnLabel; ///< of the series
        QString rowLabel;    ///< of the point
        QString text;
    };

    virtual int ChartType() const = 0;
    /// Series by series, each from its first point on.
    virtual std::vector<Value> Values() const = 0;

    /// Where a mouse event for a point goes.
    struct Target
    {
        QWidget *widget = nullptr;
        QPoint center; ///< in `widget`
    };
    virtual Target PointTarget(int series, int index) = 0;
    virtual bool IsPointSelected(int series, int index) const = 0;
};
