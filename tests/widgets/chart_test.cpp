/// The chart under its user's mouse and keys.

#include "chart_run.h"

#include <cmath>

namespace
{

const ChartStyle FlatAndDeep[] = {ChartStyle::Bar3D,  ChartStyle::Bar2D,  ChartStyle::Line3D,
                                  ChartStyle::Line2D, ChartStyle::Area3D, ChartStyle::Area2D};

const QStringList Ups{"120", "340", "-210", "90", "410", "260"};
const QStringList Others{"500", "620", "470", "580", "550", "690"};

QStringList Many(int count)
{
    QStringList values;
    for (int row = 0; row < count; ++row)
        values << QString::number(std::sin(row * 0.003) * 1000 + row % 7);
    return values;
}

} // namespace

// --- the grid -------------------------------------------------------------------------------------

TEST(Chart, TellsItsValuesSeriesBySeriesAsTexts)
{
    ShownRun run(ChartStyle::Line2D, GridOf({{"1.50", ""}, {"x", "-2"}}));
    const auto values = run.chart.Values();
    ASSERT_EQ(values.size(), 4u);
    EXPECT_EQ(values[0].columnLabel, "Series 1");
    EXPECT_EQ(values[0].rowLabel, "Row 1");
    EXPECT_EQ(values[0].text, "1.50");
    EXPECT_EQ(values[1].text, "");
    EXPECT_EQ(values[2].text, "x");
    EXPECT_EQ(values[3].columnLabel, "Series 2");
    EXPECT_EQ(values[3].rowLabel, "Row 2");
}

TEST(Chart, TellsItsStyleByNumber)
{
    ShownRun run(ChartStyle::Pie, PieOf({"1"}));
    EXPECT_EQ(run.chart.ChartType(), 14);
    run.chart.SetStyle(ChartStyle::Bar3D);
    EXPECT_EQ(run.chart.ChartType(), 0);
}

// --- the mouse ------------------------------------------------------------------------------------

TEST(Chart, SelectsTheSeriesWithTheFirstClickAndThePointWithTheSecond)
{
    for (const ChartStyle style : FlatAndDeep) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({Ups}));
        run.Click(1, 3);
        EXPECT_TRUE(run.selected.empty());
        EXPECT_FALSE(run.chart.IsPointSelected(1, 3));
        run.Click(1, 3);
        EXPECT_EQ(run.selected, QList<QPoint>({{1, 3}}));
        EXPECT_TRUE(run.chart.IsPointSelected(1, 3));
    }
}

TEST(Chart, SelectsAnotherPointOfTheSelectedSeriesWithOneClick)
{
    for (const ChartStyle style : FlatAndDeep) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({Ups}));
        run.Click(1, 1);
        for (int row = 1; row <= Ups.size(); ++row) {
            run.Click(1, row);
            EXPECT_TRUE(run.chart.IsPointSelected(1, row)) << row;
        }
        EXPECT_EQ(run.selected.size(), Ups.size());
    }
}

TEST(Chart, TellsAPointAgainWhenItIsClickedAgain)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({Ups}));
    for (int click = 0; click < 3; ++click)
        run.Click(1, 2);
    EXPECT_EQ(run.selected, QList<QPoint>({{1, 2}, {1, 2}}));
}

TEST(Chart, SelectsTheOtherSeriesBeforeItsPoints)
{
    for (const ChartStyle style : FlatAndDeep) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({Ups, Others}));
        run.Click(1, 5);
        run.Click(1, 5);
        run.Click(2, 4);
        EXPECT_FALSE(run.chart.IsPointSelected(1, 5));
        EXPECT_EQ(run.selected.size(), 1);
        run.Click(2, 4);
        EXPECT_TRUE(run.chart.IsPointSelected(2, 4));
    }
}

TEST(Chart, TakesClicksNearAThinLine)
{
    ShownRun run(ChartStyle::Line2D, GridOf({{"100", "200", "300"}}));
    const QPoint place = run.PlaceOf(1, 2);
    run.Click(place + QPoint(0, 7));
    run.Click(place + QPoint(-6, 0));
    EXPECT_TRUE(run.chart.IsPointSelected(1, 2));
}

TEST(Chart, GivesTheNearestPointOfALineThatIsClickedBetweenTwo)
{
    ShownRun run(ChartStyle::Line2D, GridOf({{"100", "100", "100"}}));
    const QPoint second = run.PlaceOf(1, 2), third = run.PlaceOf(1, 3);
    run.Click(second);
    run.Click(second + (third - second) * 2 / 5);
    EXPECT_TRUE(run.chart.IsPointSelected(1, 2));
    run.Click(second + (third - second) * 3 / 5);
    EXPECT_TRUE(run.chart.IsPointSelected(1, 3));
}

TEST(Chart, TakesClicksOnTheDepthOfARibbonAndOfAnArea)
{
    for (const ChartStyle style : {ChartStyle::Line3D, ChartStyle::Area3D}) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({{"100", "100", "100"}}));
        run.Click(1, 1);
        // Too far above the front for a near miss.
        run.Click(run.PlaceOf(1, 2) + QPoint(20, -12));
        EXPECT_TRUE(run.chart.IsPointSelected(1, 2));
    }
}

TEST(Chart, TakesClicksOnTheTopOfABar)
{
    ShownRun run(ChartStyle::Bar3D, GridOf({{"100", "50", "100"}}));
    run.Click(1, 1);
    const QImage image = run.chart.Picture(1);
    const QPoint front = run.PlaceOf(1, 2);
    const QColor color = image.pixelColor(front);
    QPoint top = front;
    while (image.pixelColor(top) == color)
        top.ry() -= 1;
    run.Click(top + QPoint(12, -11));
    EXPECT_TRUE(run.chart.IsPointSelected(1, 2));
    run.Click(top + QPoint(12, -40));
    EXPECT_FALSE(run.chart.IsPointSelected(1, 2)) << "above it is the wall";
}

TEST(Chart, DropsTheSelectionWithAClickBesideTheSeries)
{
    for (const ChartStyle style : FlatAndDeep) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({Ups}));
        run.Click(1, 3);
        run.Click(1, 3);
        run.Click(QPoint(4, 4));
        EXPECT_FALSE(run.chart.IsPointSelected(1, 3));
    }
}

TEST(Chart, HasNoTargetWhereThereIsNoPoint)
{
    for (const ChartStyle style : FlatAndDeep) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({{"1", "", "text", "4"}}));
        EXPECT_NE(run.chart.PointTarget(1, 1).widget, nullptr);
        for (const auto &[series, row] : {std::pair{1, 2}, {1, 3}, {1, 5}, {1, 0}, {2, 1}, {0, 1}})
            EXPECT_EQ(run.chart.PointTarget(series, row).widget, nullptr) << series << " " << row;
    }
}

TEST(Chart, SelectsEachOfAThousandPoints)
{
    // More points than pixels, so that several share one: each click goes on to the next of them.
    for (const ChartStyle style : {ChartStyle::Line2D, ChartStyle::Bar2D, ChartStyle::Area2D}) {
        ShownRun run(style, GridOf({Many(1000)}));
        run.Click(1, 1);
        for (int row = 1; row <= 1000; row += 37) {
            for (int click = 0; click < 3 && !run.chart.IsPointSelected(1, row); ++click)
                run.Click(1, row);
            EXPECT_TRUE(run.chart.IsPointSelected(1, row)) << row << " style " << int(style);
        }
    }
}

TEST(Chart, SelectsTheBarOfAZeroAndTheLonePoint)
{
    for (const ChartStyle style : FlatAndDeep) {
        for (const QString &value : QStringList{"0", "1234", "-7"}) {
            SCOPED_TRACE(QStringLiteral("%1: %2").arg(int(style)).arg(value).toStdString());
            ShownRun run(style, GridOf({{value}}));
            run.Click(1, 1);
            run.Click(1, 1);
            EXPECT_TRUE(run.chart.IsPointSelected(1, 1));
        }
    }
}

TEST(Chart, SelectsTheSeriesByItsEntryInTheLegend)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({Ups}));
    const QPoint legend(320, 400 - 18);
    run.Click(legend);
    EXPECT_TRUE(run.selected.empty());
    run.Click(1, 2);
    EXPECT_TRUE(run.chart.IsPointSelected(1, 2)) << "the series was selected already";
}

TEST(Chart, AsksForTheColourOfTheSeriesThatIsDoubleClicked)
{
    for (const ChartStyle style : FlatAndDeep) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({Ups, Others}));
        run.DoubleClick(run.PlaceOf(2, 6));
        EXPECT_EQ(run.activatedSeries, QList<int>({2}));
        EXPECT_EQ(run.plotActivated, 0);
        EXPECT_TRUE(run.selected.empty()) << "the second click of a double click selects no point";
    }
}

TEST(Chart, AsksForTheColourOfAnAreaElsewhere)
{
    for (const ChartStyle style : FlatAndDeep) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({Ups}));
        run.DoubleClick(QPoint(4, 4));
        EXPECT_EQ(run.plotActivated, 1);
        EXPECT_TRUE(run.activatedSeries.empty());
    }
}

TEST(Chart, CountsClicksAndKeysAsActionsOfTheUser)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({Ups}));
    run.Click(QPoint(4, 4));
    EXPECT_EQ(run.userActions, 1);
    run.Press(Qt::Key_A);
    EXPECT_EQ(run.userActions, 2);
    QTest::mouseClick(&run.chart, Qt::RightButton, {}, QPoint(4, 4));
    EXPECT_EQ(run.userActions, 3);
    EXPECT_TRUE(run.selected.empty());
}

TEST(Chart, AsksForTheContextMenuWhereItIsRightClicked)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({Ups}));
    QList<QPoint> asked;
    run.chart.OnContextMenu = [&asked](const QPoint &where) { asked << where; };
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(30, 40), QPoint(130, 140));
    QCoreApplication::sendEvent(&run.chart, &event);
    EXPECT_EQ(asked, QList<QPoint>({{130, 140}}));
}

TEST(Chart, ForgetsTheSelectionWithANewGridAndKeepsItInAnotherStyle)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({Ups}));
    run.Click(1, 2);
    run.Click(1, 2);
    run.chart.SetStyle(ChartStyle::Bar3D);
    EXPECT_TRUE(run.chart.IsPointSelected(1, 2));
    run.chart.SetGrid(GridOf({Ups}));
    EXPECT_FALSE(run.chart.IsPointSelected(1, 2));
}

// --- the pie --------------------------------------------------------------------------------------

TEST(Pie, SelectsTheSliceWithTheFirstClickAndItsPointWithTheSecond)
{
    ShownRun run(ChartStyle::Pie, PieOf({"30", "50", "20"}));
    run.Click(2, 1);
    EXPECT_TRUE(run.selected.empty());
    run.Click(2, 1);
    EXPECT_EQ(run.selected, QList<QPoint>({{2, 1}}));
    run.Click(3, 1);
    EXPECT_EQ(run.selected.size(), 1);
    run.Click(3, 1);
    EXPECT_TRUE(run.chart.IsPointSelected(3, 1));
}

TEST(Pie, SelectsEverySliceHoweverThin)
{
    QStringList values;
    for (int slice = 0; slice < 30; ++slice)
        values << QString::number(slice < 10 ? 0.01 * slice : 5.0);
    ShownRun run(ChartStyle::Pie, PieOf(values));
    for (int slice = 1; slice <= 30; ++slice) {
        run.Click(slice, 1);
        run.Click(slice, 1);
        EXPECT_TRUE(run.chart.IsPointSelected(slice, 1)) << slice;
    }
}

TEST(Pie, SelectsANegativeSliceAndTheEmptyRing)
{
    ShownRun margin(ChartStyle::Pie, PieOf({"150", "-50"}));
    margin.Click(2, 1);
    margin.Click(2, 1);
    EXPECT_TRUE(margin.chart.IsPointSelected(2, 1));
    ShownRun empty(ChartStyle::Pie, PieOf({"0"}));
    empty.Click(1, 1);
    empty.Click(1, 1);
    EXPECT_TRUE(empty.chart.IsPointSelected(1, 1));
}

TEST(Pie, HasNothingToTellOfASliceWithoutAValue)
{
    ShownRun run(ChartStyle::Pie, PieOf({"30", ""}));
    EXPECT_EQ(run.chart.PointTarget(2, 1).widget, nullptr);
    for (int x = 300; x < 420; x += 4)
        for (int click = 0; click < 2; ++click)
            run.Click(QPoint(x, 400 - 18)); // along the legend
    for (const QPoint &point : run.selected)
        EXPECT_EQ(point, QPoint(1, 1));
}

TEST(Pie, AsksForColoursWhereItIsDoubleClicked)
{
    ShownRun run(ChartStyle::Pie, PieOf({"30", "50", "20"}));
    run.DoubleClick(run.PlaceOf(2, 1));
    EXPECT_EQ(run.activatedSeries, QList<int>({2}));
    run.DoubleClick(QPoint(4, 4));
    EXPECT_EQ(run.plotActivated, 1);
}

// --- the keyboard ---------------------------------------------------------------------------------

TEST(ChartKeys, GoFromPointToPointOverGapsAndSelectWithSpaceOrReturn)
{
    ShownRun run(ChartStyle::Line2D, GridOf({{"1", "", "3", "4"}, {"5", "6", "7", "8"}}));
    run.Press(Qt::Key_Right);
    run.Press(Qt::Key_Space);
    run.Press(Qt::Key_Right);
    run.Press(Qt::Key_Return);
    run.Press(Qt::Key_Down);
    run.Press(Qt::Key_Enter);
    run.Press(Qt::Key_Left);
    run.Press(Qt::Key_Space);
    EXPECT_EQ(run.selected, QList<QPoint>({{1, 1}, {1, 3}, {2, 3}, {2, 2}}));
}

TEST(ChartKeys, StayWithinTheChart)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({{"1", "2"}}));
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Left, Qt::Key_Up, Qt::Key_Down})
        run.Press(key);
    run.Press(Qt::Key_Space);
    for (int press = 0; press < 5; ++press)
        run.Press(Qt::Key_Right);
    run.Press(Qt::Key_Space);
    run.Press(Qt::Key_Home);
    run.Press(Qt::Key_Space);
    run.Press(Qt::Key_End);
    run.Press(Qt::Key_Space);
    EXPECT_EQ(run.selected, QList<QPoint>({{1, 1}, {1, 2}, {1, 1}, {1, 2}}));
}

TEST(ChartKeys, GoFromSliceToSlice)
{
    ShownRun run(ChartStyle::Pie, PieOf({"30", "50", "20"}));
    run.Press(Qt::Key_Right);
    run.Press(Qt::Key_Right);
    run.Press(Qt::Key_Space);
    run.Press(Qt::Key_End);
    run.Press(Qt::Key_Space);
    run.Press(Qt::Key_Left);
    run.Press(Qt::Key_Home);
    run.Press(Qt::Key_Space);
    EXPECT_EQ(run.selected, QList<QPoint>({{2, 1}, {3, 1}, {1, 1}}));
}

TEST(ChartKeys, DropTheSelectionWithEscape)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({Ups}));
    run.Press(Qt::Key_Right);
    run.Press(Qt::Key_Space);
    run.Press(Qt::Key_Escape);
    EXPECT_FALSE(run.chart.IsPointSelected(1, 1));
}

TEST(ChartKeys, DoNothingInAnEmptyChart)
{
    ShownRun run(ChartStyle::Bar2D, ChartGrid());
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Home, Qt::Key_End,
                              Qt::Key_Space, Qt::Key_Escape})
        run.Press(key);
    run.Click(QPoint(300, 200));
    EXPECT_TRUE(run.selected.empty());
}

TEST(ChartKeys, AreToldToThoseWhoHearTheChart)
{
    ShownRun run(ChartStyle::Line2D, GridOf({{"1.5", "2.5"}}));
    EXPECT_EQ(run.chart.accessibleName(), "Chart");
    run.Press(Qt::Key_Right);
    run.Press(Qt::Key_Right);
    EXPECT_EQ(run.chart.accessibleDescription(), "1 series of 2 points. Series 1, Row 2: 2.5");
}
