#pragma once

/// Arranging the screens inside the main window.
///
///     0  cascade, each with its title bar in view
///     1  tile horizontally: full width, one below the other
///     2  tile vertically: full height, side by side
///
/// Minimized screens stay so; a maximized one takes its place among the others.

class QMdiArea;

void ArrangeWindows(QMdiArea &area, int arrangement);
