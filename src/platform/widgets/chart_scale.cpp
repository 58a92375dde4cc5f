#include "platform/widgets/chart_scale.h"

#include <algorithm>
#include <cmath>

namespace
{

/// From here on a number is written with an exponent.
constexpr double hugeNumber = 1e15;
/// Values nearer to each other than this share of their size count as equal.
constexpr double leastSpan = 1e-12;

/// The smallest round step that is no smaller than `least`.
double RoundStep(double least)
{
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double digit : {1.0, 2.0, 2.5, 5.0})
        if (digit * power >= least * (1 - leastSpan))
            return digit * power;
    return 10 * power;
}

bool AreEqual(double lowest, double highest)
{
    return highest - lowest <= std::max(std::abs(lowest), std::abs(highest)) * leastSpan;
}

/// Ends with some room between them.
ValueScale Spread(double lowest, double highest)
{
    if (!AreEqual(lowest, highest))
        return {lowest, highest};
    if (highest == 0)
        return {0, 1};
    const double room = std::abs(highest) * 0.05;
    return {lowest - room, highest + room};
}

std::vector<double> Multiples(double step, double first, double last)
{
    std::vector<double> ticks;
    // By whole numbers: sums of steps would drift.
    for (double count = first; count <= last; ++count)
        ticks.push_back(count == 0 ? 0 : count * step);
    return ticks;
}

} // namespace

AxisScale NiceScale(double lowest, double highest, int mostTicks)
{
    const ValueScale ends = Spread(lowest, highest);
    double step = RoundStep((ends.Maximum - ends.Minimum) / std::max(1, mostTicks - 1));
    double first = std::floor(ends.Minimum / step);
    double last = std::ceil(ends.Maximum / step);
    if (last - first + 1 > mostTicks && mostTicks > 2) {
        step = RoundStep(step * 1.01);
        first = std::floor(ends.Minimum / step);
        last = std::ceil(ends.Maximum / step);
    }
    return {first * step, last * step, step, Multiples(step, first, last)};
}

AxisScale TicksWithin(ValueScale ends, int mostTicks)
{
    const auto [low, high] = std::minmax(ends.Minimum, ends.Maximum);
    ends = Spread(low, high);
    const double step = RoundStep((ends.Maximum - ends.Minimum) / std::max(1, mostTicks - 1));
    return {ends.Minimum, ends.Maximum, step,
            Multiples(step, std::ceil(ends.Minimum / step), std::floor(ends.Maximum / step))};
}

QString TickText(double tick, double step, const Formats &formats)
{
    if (std::abs(tick) >= hugeNumber || step < 1e-6)
        return formats.ToText(tick);
    int decimals = 0;
    for (double scaled = step;
         decimals < 8 && std::abs(scaled - std::round(scaled)) > scaled * 1e-9; scaled *= 10)
        ++decimals;
    QString pattern = QStringLiteral("###,##0");
    if (decimals > 0)
        pattern += QLatin1Char('.') + QString(decimals, QLatin1Char('0'));
    return formats.Format(tick, pattern);
}
