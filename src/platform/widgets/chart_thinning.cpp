#include "platform/widgets/chart_thinning.h"

#include <algorithm>
#include <cmath>

std::vector<int> ThinnedRows(const std::vector<double> &values, int from, int to,
                             double rowsPerPixel)
{
    constexpr double rowsForOne = 4; // a column keeps up to four of its rows
    std::vector<int> kept;
    if (rowsPerPixel <= rowsForOne) {
        for (int row = from; row < to; ++row)
            kept.push_back(row);
        return kept;
    }
    for (int row = from; row < to;) {
        const double column = std::floor(row / rowsPerPixel);
        const int first = row;
        int lowest = row, highest = row, last = row;
        for (; row < to && std::floor(row / rowsPerPixel) == column; ++row) {
            if (values[size_t(row)] < values[size_t(lowest)])
                lowest = row;
            if (values[size_t(row)] > values[size_t(highest)])
                highest = row;
            last = row;
        }
        const auto [earlier, later] = std::minmax(lowest, highest);
        for (const int candidate : {first, earlier, later, last})
            if (kept.empty() || candidate > kept.back())
                kept.push_back(candidate);
    }
    return kept;
}

std::vector<BarSpan> ThinnedBars(const std::vector<double> &values, int most)
{
    const auto rows = int(values.size());
    const int bundle = rows <= most ? 1 : (rows + most - 1) / std::max(1, most);
    std::vector<BarSpan> bars;
    for (int first = 0; first < rows; first += bundle) {
        const int end = std::min(first + bundle, rows);
        BarSpan bar{first, end - 1};
        bool hasValue = false;
        for (int row = first; row < end; ++row) {
            if (std::isnan(values[size_t(row)]))
                continue;
            hasValue = true;
            bar.Lowest = std::min(bar.Lowest, values[size_t(row)]);
            bar.Highest = std::max(bar.Highest, values[size_t(row)]);
        }
        if (hasValue)
            bars.push_back(bar);
    }
    return bars;
}

std::vector<ValueRun> ValueRuns(const std::vector<double> &values)
{
    std::vector<ValueRun> runs;
    for (int row = 0; row < int(values.size()); ++row) {
        if (std::isnan(values[size_t(row)]))
            continue;
        if (runs.empty() || runs.back().To != row)
            runs.push_back({row, row});
        runs.back().To = row + 1;
    }
    return runs;
}
