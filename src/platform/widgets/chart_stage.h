#pragma once

/// What a chart's values stand on and before: a wall with a line at each tick; in deep styles a side
/// wall and a base slab, too.

#include "platform/widgets/chart_shapes.h"

/// Under the axes. `ticks` are the values that have a line.
void PaintStage(QPainter &painter, const ChartSpace &space, const ChartLook &look,
                const std::vector<double> &ticks);

/// Under the values: where zero is, and what a flat plot stands on.
void PaintGround(QPainter &painter, const ChartSpace &space, const ChartLook &look);
