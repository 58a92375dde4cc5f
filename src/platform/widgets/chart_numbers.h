#pragma once

/// The numbers in the texts of a chart's grid.

#include "base/formats.h"
#include "platform/chart_grid.h"

#include <vector>

/// Series by series; a text that is no number is NaN. So that sums and distances stay numbers,
/// none goes beyond 1E+300.
std::vector<std::vector<double>> ChartNumbers(const ChartGrid &grid, const Formats &formats);

/// The lowest and the highest of all, with zero when `withZero`. Without any value, 0 and 0.
ValueScale ExtentOf(const std::vector<std::vector<double>> &numbers, bool withZero);

/// How a pie shows a value: the slice's part of the circle, and the share that its label gives.
struct PieShare
{
    double Part = 0;  ///< 0 to 1
    double Share = 0; ///< negative for a negative value
    bool IsEmpty = false;
};
/// A slice takes the size of its amount. A share is that of the sum of the values, as with a loan
/// beside what it bought; when that sum is not positive, that of the sum of the amounts. When all
/// are zero, they share the circle evenly.
std::vector<PieShare> PieShares(const std::vector<double> &values);
