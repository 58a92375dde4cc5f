#pragma once

/// The colours of a chart: those that the user chose, the widget's own for the rest, and what can be
/// read on them.

#include <QColor>
#include <QFont>
#include <QPalette>

#include <map>

struct ChartFont;

/// What was chosen; invalid or missing: the widget's own.
struct ChartColors
{
    QColor Backdrop;
    QColor Base;
    QColor Wall;
    std::map<int, QColor> Series; ///< from 1
};

struct ChartLook
{
    ChartLook(const ChartColors &colors, const QPalette &palette);

    QColor Backdrop;
    QColor Base;
    QColor Wall;
    QColor Text;      ///< on the backdrop
    QColor WallText;  ///< what stands out on the wall
    QColor Grid;      ///< lines on the wall
    QColor AxisLine;  ///< on the backdrop
    QColor Highlight; ///< of the focus, on the backdrop

    QColor Series(int series) const; ///< from 1
    /// Whether `color` can hardly be told from what is behind it.
    static bool IsFaint(const QColor &color, const QColor &ground);
    /// An edge for an area of `color` that sets it off from itself and from `ground`.
    QColor Edge(const QColor &color, const QColor &ground) const;
    QColor Edge(const QColor &color) const { return Edge(color, Wall); }

private:
    std::map<int, QColor> m_chosen;
};

QColor Lit(const QColor &color, double share);
QColor Shaded(const QColor &color, double share);

/// The grid's font, else `own`.
QFont FontOf(const ChartFont &font, const QFont &own);
