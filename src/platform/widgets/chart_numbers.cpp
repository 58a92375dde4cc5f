#include "platform/widgets/chart_numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

std::vector<std::vector<double>> ChartNumbers(const ChartGrid &grid, const Formats &formats)
{
    constexpr double most = 1e300;
    std::vector<std::vector<double>> numbers;
    for (int column = 1; column <= grid.ColumnCount(); ++column) {
        std::vector<double> &series = numbers.emplace_back();
        series.reserve(size_t(grid.RowCount()));
        for (int row = 1; row <= grid.RowCount(); ++row) {
            const QString &text = grid.Data(row, column);
            series.push_back(formats.IsNumeric(text)
                                 ? std::clamp(formats.NumberFromText(text), -most, most)
                                 : std::numeric_limits<double>::quiet_NaN());
        }
    }
    return numbers;
}

ValueScale ExtentOf(const std::vector<std::vector<double>> &numbers, bool withZero)
{
    ValueScale extent;
    bool isFirst = !withZero;
    for (const auto &series : numbers) {
        for (const double value : series) {
            if (std::isnan(value))
                continue;
            extent.Minimum = isFirst ? value : std::min(extent.Minimum, value);
            extent.Maximum = isFirst ? value : std::max(extent.Maximum, value);
            isFirst = false;
        }
    }
    return extent;
}

std::vector<PieShare> PieShares(const std::vector<double> &values)
{
    double largest = 0;
    for (const double value : values)
        if (!std::isnan(value))
            largest = std::max(largest, std::abs(value));
    // By parts of the largest, so that no sum overflows.
    double sum = 0, amounts = 0;
    std::vector<double> parts;
    for (const double value : values) {
        parts.push_back(largest == 0 || std::isnan(value) ? 0 : value / largest);
        sum += parts.back();
        amounts += std::abs(parts.back());
    }
    constexpr double leastSum = 1e-9; // below, a sum of values that cancel out is but rounding
    const double whole = sum > amounts * leastSum ? sum : amounts;
    std::vector<PieShare> shares;
    for (const double part : parts) {
        if (amounts > 0)
            shares.push_back({std::abs(part) / amounts, part / whole, part == 0});
        else
            shares.push_back({1.0 / double(parts.size()), 0, true});
    }
    return shares;
}
