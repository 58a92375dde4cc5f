#pragma once

/// The scale of a value axis: its ends and the round numbers between them.
///
///     NiceScale(-37, 412, 6)             -100 to 500, a tick at each 100
///     TicksWithin({97.5, 131.2}, 6)      97.5 to 131.2, ticks at 100, 105 ... 130
///     TickText(1250, 250, formats)       "1,250"

#include "base/formats.h"
#include "platform/chart_grid.h"

#include <vector>

struct AxisScale
{
    double Minimum = 0;
    double Maximum = 1;
    double Step = 1; ///< 1, 2, 2.5 or 5 times a power of ten
    std::vector<double> Ticks;
};

/// Ends on ticks. Equal values get room around them; `mostTicks` is at least 2.
AxisScale NiceScale(double lowest, double highest, int mostTicks);

/// Keeps the ends that are given, in either order.
AxisScale TicksWithin(ValueScale ends, int mostTicks);

/// With as many decimals as the step needs and groups of thousands.
QString TickText(double tick, double step, const Formats &formats);
