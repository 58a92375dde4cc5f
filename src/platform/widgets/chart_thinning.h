#pragma once

/// Thousands of points on some hundred pixels: what to draw of them so that the picture is the same.
///
/// A value that is not there is NaN. Rows count from 0.

#include <vector>

/// Of the rows [from, to), all with a value: for each column of `rowsPerPixel` rows the first, the
/// lowest, the highest and the last one, in their order. All of them when they are few.
std::vector<int> ThinnedRows(const std::vector<double> &values, int from, int to,
                             double rowsPerPixel);

/// Neighbouring rows drawn as one bar.
struct BarSpan
{
    int FirstRow = 0;
    int LastRow = 0;
    double Lowest = 0;  ///< of the values and zero
    double Highest = 0; ///< of the values and zero
};
/// One for each row that has a value or, when there are more rows than `most`, for each bundle of
/// equally many rows.
std::vector<BarSpan> ThinnedBars(const std::vector<double> &values, int most);

/// The stretches [from, to) of rows that have values.
struct ValueRun
{
    int From = 0;
    int To = 0;

    bool operator==(const ValueRun &) const = default;
};
std::vector<ValueRun> ValueRuns(const std::vector<double> &values);
