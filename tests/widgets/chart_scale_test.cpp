/// What a chart computes before it draws: numbers, scales, and which points are drawn of many.

#include "chart_run.h"

#include "platform/widgets/chart_axes.h"
#include "platform/widgets/chart_numbers.h"
#include "platform/widgets/chart_scale.h"
#include "platform/widgets/chart_thinning.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};
constexpr double None = std::numeric_limits<double>::quiet_NaN();

using Doubles = std::vector<double>;

QStringList Texts(const AxisScale &scale)
{
    QStringList texts;
    for (const double tick : scale.Ticks)
        texts << TickText(tick, scale.Step, English);
    return texts;
}

} // namespace

// --- the value axis -------------------------------------------------------------------------------

TEST(ChartScale, EndsOnRoundNumbersAroundTheValues)
{
    struct
    {
        double low, high;
        QStringList ticks;
    } const cases[] = {
        {0, 412, {"0", "100", "200", "300", "400", "500"}},
        {-37, 212, {"-50", "0", "50", "100", "150", "200", "250"}},
        {-950, -100, {"-1,000", "-800", "-600", "-400", "-200", "0"}},
        {0, 1250000, {"0", "250,000", "500,000", "750,000", "1,000,000", "1,250,000"}},
        {0, 0.00031, {"0.0000", "0.0001", "0.0002", "0.0003", "0.0004"}},
        {12.5, 13.75, {"12.50", "12.75", "13.00", "13.25", "13.50", "13.75"}},
    };
    for (const auto &one : cases)
        EXPECT_EQ(Texts(NiceScale(one.low, one.high, 7)), one.ticks) << one.low << ", " << one.high;
}

TEST(ChartScale, NeverHasMoreTicksThanThereIsRoomFor)
{
    for (int most = 2; most <= 12; ++most) {
        for (double low = -1234; low < 1000; low += 77.7) {
            for (double span = 0.01; span < 1e9; span *= 3.7) {
                const AxisScale scale = NiceScale(low, low + span, most);
                EXPECT_LE(int(scale.Ticks.size()), most + 1) << low << " " << span;
                EXPECT_GE(scale.Ticks.size(), 2u) << low << " " << span;
                EXPECT_LE(scale.Minimum, low);
                EXPECT_GE(scale.Maximum, low + span * 0.999999);
            }
        }
    }
}

TEST(ChartScale, GivesEqualValuesRoom)
{
    EXPECT_EQ(Texts(NiceScale(0, 0, 3)), QStringList({"0.0", "0.5", "1.0"}));
    for (const double value : {100.0, -100.0, 1e-9, 1e15, 3.3e290}) {
        const AxisScale scale = NiceScale(value, value, 6);
        EXPECT_LT(scale.Minimum, value);
        EXPECT_GT(scale.Maximum, value);
        EXPECT_LT(scale.Ticks.size(), 10u);
    }
}

TEST(ChartScale, KeepsTheEndsThatAreGiven)
{
    const AxisScale scale = TicksWithin({97.5, 131.2}, 8);
    EXPECT_EQ(scale.Minimum, 97.5);
    EXPECT_EQ(scale.Maximum, 131.2);
    EXPECT_EQ(Texts(scale), QStringList({"100", "105", "110", "115", "120", "125", "130"}));
}

TEST(ChartScale, TakesGivenEndsInEitherOrderAndApart)
{
    EXPECT_EQ(TicksWithin({5, -5}, 6).Minimum, -5);
    const AxisScale one = TicksWithin({0, 0}, 6);
    EXPECT_LT(one.Minimum, one.Maximum);
}

TEST(ChartScale, WritesNumbersAsTheLocaleDoes)
{
    EXPECT_EQ(TickText(12500.5, 0.5, Formats(QLocale(QLocale::German))), "12.500,5");
    EXPECT_EQ(TickText(2e20, 1e20, English), "2E+20");
}

// --- the labels of the rows -----------------------------------------------------------------------

TEST(CategoryLabels, AllStandWhereThereIsRoom)
{
    const QFontMetricsF metrics{QFont()};
    const auto labels = CategoryLabels(
        5, [](int row) { return QString::number(row); }, metrics, 600);
    ASSERT_EQ(labels.size(), 5u);
    EXPECT_EQ(labels[4].Text, "5");
}

TEST(CategoryLabels, DoNotOverlapHoweverManyThereAre)
{
    const QFontMetricsF metrics{QFont()};
    const auto date = [](int row) { return QDate(2026, 1, 1).addDays(row).toString("MMM-dd-yy"); };
    const auto longName = [](int row) { return QString(row % 70, QLatin1Char('W')); };
    for (const auto &name :
         {std::function<QString(int)>(date), std::function<QString(int)>(longName)}) {
        for (const int rows : {1, 2, 3, 7, 30, 365, 10000}) {
            for (const double width : {80.0, 300.0, 900.0}) {
                const auto labels = CategoryLabels(rows, name, metrics, width);
                ASSERT_FALSE(labels.empty());
                double end = -1e9;
                for (const AxisLabel &label : labels) {
                    const double half = metrics.horizontalAdvance(label.Text) / 2;
                    const double x = (label.Place - 0.5) * width / rows;
                    EXPECT_GT(x - half, end) << rows << " rows in " << width;
                    end = x + half;
                }
            }
        }
    }
}

TEST(CategoryLabels, StandAtEvenSteps)
{
    const QFontMetricsF metrics{QFont()};
    const auto labels = CategoryLabels(
        500, [](int) { return QStringLiteral("Mar-02-26"); }, metrics, 600);
    ASSERT_GT(labels.size(), 2u);
    for (size_t at = 2; at < labels.size(); ++at)
        EXPECT_EQ(labels[at].Place - labels[at - 1].Place, labels[1].Place - labels[0].Place);
}

// --- numbers --------------------------------------------------------------------------------------

TEST(ChartNumbers, AreReadInTheLocaleAndAreMissingWhereTheTextIsNone)
{
    const auto read = ChartNumbers(GridOf({{"1,250.5", "", "none", "-3", "1E+06"}}), English);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0][0], 1250.5);
    EXPECT_TRUE(std::isnan(read[0][1]));
    EXPECT_TRUE(std::isnan(read[0][2]));
    EXPECT_EQ(read[0][3], -3);
    EXPECT_EQ(read[0][4], 1000000);
    EXPECT_EQ(ChartNumbers(GridOf({{"1.250,5"}}), Formats(QLocale(QLocale::German)))[0][0], 1250.5);
}

TEST(ChartNumbers, ExtendFromZeroForBarsAndFromTheLowestForLines)
{
    const SeriesNumbers numbers{{None, 120, 150}, {130, None, 190}};
    EXPECT_EQ(ExtentOf(numbers, true), (ValueScale{0, 190}));
    EXPECT_EQ(ExtentOf(numbers, false), (ValueScale{120, 190}));
    EXPECT_EQ(ExtentOf({{-5, -2}}, true), (ValueScale{-5, 0}));
    EXPECT_EQ(ExtentOf({{None}}, false), (ValueScale{0, 0}));
}

TEST(PieShares, AreThoseOfTheSum)
{
    const auto shares = PieShares({30, 50, 20});
    EXPECT_DOUBLE_EQ(shares[0].Part, 0.3);
    EXPECT_DOUBLE_EQ(shares[1].Share, 0.5);
}

TEST(PieShares, GiveANegativeValueTheSizeOfItsAmountAndTheShareOfTheWhole)
{
    // 150 bought with 50 borrowed: the whole is 100, the circle 200.
    const auto shares = PieShares({150, -50});
    EXPECT_DOUBLE_EQ(shares[0].Share, 1.5);
    EXPECT_DOUBLE_EQ(shares[1].Share, -0.5);
    EXPECT_DOUBLE_EQ(shares[0].Part, 0.75);
    EXPECT_DOUBLE_EQ(shares[1].Part, 0.25);
}

TEST(PieShares, AreThoseOfTheAmountsWhenNothingIsLeftInAll)
{
    const auto shares = PieShares({50, -150});
    EXPECT_DOUBLE_EQ(shares[0].Share, 0.25);
    EXPECT_DOUBLE_EQ(shares[1].Share, -0.75);
    EXPECT_DOUBLE_EQ(PieShares({70, -70})[0].Share, 0.5);
}

TEST(PieShares, AreZeroWhenAllAreZero)
{
    const auto shares = PieShares({0, 0});
    EXPECT_EQ(shares[0].Share, 0);
    EXPECT_DOUBLE_EQ(shares[1].Part, 0.5);
    EXPECT_TRUE(shares[0].IsEmpty);
}

TEST(PieShares, StayNumbersForTheLargestValues)
{
    const auto shares = PieShares({1e300, 1e300, -1e300});
    EXPECT_DOUBLE_EQ(shares[0].Share, 1);
    EXPECT_DOUBLE_EQ(shares[2].Part, 1.0 / 3);
}

// --- thinning -------------------------------------------------------------------------------------

TEST(Thinning, KeepsAllOfAFew)
{
    EXPECT_EQ(ThinnedRows({1, 2, 3}, 0, 3, 0.1), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(ThinnedRows({1, 2, 3}, 1, 3, 4), (std::vector<int>{1, 2}));
}

TEST(Thinning, KeepsTheExtremesOfEachPixel)
{
    Doubles values(10000);
    for (int row = 0; row < 10000; ++row)
        values[size_t(row)] = std::sin(row * 0.01) * 100 + (row * 7919 % 13);
    values[4321] = 5000;
    values[8765] = -7000;
    const auto rows = ThinnedRows(values, 0, 10000, 20);
    EXPECT_LE(rows.size(), 10000u / 20 * 4);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));
    EXPECT_EQ(rows.front(), 0);
    EXPECT_EQ(rows.back(), 9999);
    for (int column = 0; column < 500; ++column) {
        const auto [low, high] =
            std::minmax_element(values.begin() + column * 20, values.begin() + column * 20 + 20);
        double keptLow = INFINITY, keptHigh = -INFINITY;
        for (const int row : rows) {
            if (row / 20 != column)
                continue;
            keptLow = std::min(keptLow, values[size_t(row)]);
            keptHigh = std::max(keptHigh, values[size_t(row)]);
        }
        EXPECT_EQ(keptLow, *low);
        EXPECT_EQ(keptHigh, *high);
    }
}

TEST(Thinning, BundlesBarsWithTheirExtremes)
{
    Doubles values(1000, 1.0);
    values[500] = 90;
    values[501] = -40;
    const auto bars = ThinnedBars(values, 100);
    ASSERT_EQ(bars.size(), 100u);
    EXPECT_EQ(bars[50].FirstRow, 500);
    EXPECT_EQ(bars[50].LastRow, 509);
    EXPECT_EQ(bars[50].Highest, 90);
    EXPECT_EQ(bars[50].Lowest, -40);
    EXPECT_EQ(bars[0].Lowest, 0) << "a bar begins at zero";
}

TEST(Thinning, LeavesNoBarWhereThereIsNoValue)
{
    const auto bars = ThinnedBars({1, None, 3}, 100);
    ASSERT_EQ(bars.size(), 2u);
    EXPECT_EQ(bars[1].FirstRow, 2);
}

TEST(Thinning, FindsTheRunsBetweenGaps)
{
    EXPECT_EQ(ValueRuns({None, 1, 2, None, None, 3, None}),
              (std::vector<ValueRun>{{1, 3}, {5, 6}}));
    EXPECT_TRUE(ValueRuns({}).empty());
    EXPECT_TRUE(ValueRuns({None}).empty());
}
