/// What is to be seen of a chart.

#include "chart_run.h"

#include "platform/widgets/chart_legend.h"
#include "platform/widgets/chart_look.h"
#include "platform/widgets/chart_pie.h"
#include "platform/widgets/colors.h"

#include <QChart>
#include <QGraphicsScene>

#include <cmath>

namespace
{

const QColor Back(255, 255, 250), Base(203, 206, 66), Wall(249, 247, 142), Series(128, 0, 64);

const QStringList SixValues{"120", "340", "-210", "90", "-410", "260"};

void Dress(Chart &chart)
{
    chart.SetBackdropColor(Back);
    chart.SetBaseColor(Base);
    chart.SetWallColor(Wall);
    chart.SetSeriesColor(1, Series);
}

bool IsDeep(ChartStyle style)
{
    return int(style) % 2 == 0;
}

const ChartStyle Plots[] = {ChartStyle::Bar3D,  ChartStyle::Bar2D,  ChartStyle::Line3D,
                            ChartStyle::Line2D, ChartStyle::Area3D, ChartStyle::Area2D};

QPalette DarkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    return palette;
}

/// A pie's labels, without the widget around it.
struct DrawnPie
{
    explicit DrawnPie(const std::vector<double> &values, const QRectF &area = {10, 10, 600, 320})
        : chart(new QChart), look(ChartColors(), QPalette())
    {
        scene.addItem(chart);
        shapes = std::make_unique<PieShapes>(*chart, values, area, look,
                                             Formats(QLocale(QLocale::English)), QFont());
    }

    QStringList Texts() const
    {
        QStringList texts;
        for (int series = 1; series < 100; ++series)
            for (const auto &label : shapes->Labels())
                if (label.Series == series)
                    texts << label.Text;
        return texts;
    }

    QGraphicsScene scene;
    QChart *chart; ///< the scene's
    ChartLook look;
    std::unique_ptr<PieShapes> shapes;
};

void ExpectApart(const std::vector<QRectF> &places, const QRectF &area)
{
    for (size_t at = 0; at < places.size(); ++at) {
        EXPECT_TRUE(area.adjusted(-1, -1, 1, 1).contains(places[at])) << at;
        for (size_t other = 0; other < at; ++other)
            EXPECT_FALSE(places[at].adjusted(0.1, 0.1, -0.1, -0.1).intersects(places[other]))
                << at << " and " << other;
    }
}

} // namespace

// --- colours --------------------------------------------------------------------------------------

TEST(ChartPicture, BearsTheColoursThatWereChosen)
{
    for (const ChartStyle style : Plots) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({SixValues}));
        Dress(run.chart);
        const QImage image = run.chart.Picture(1);
        EXPECT_EQ(image.pixelColor(4, 4), Back);
        EXPECT_GT(CountOf(image, Wall), 20000);
        EXPECT_GT(CountOf(image, Series), 50);
        if (IsDeep(style))
            EXPECT_GT(CountOf(image, Base), 1000) << "of the slab";
        else
            EXPECT_EQ(CountOf(image, Base), 0) << "flat styles stand on nothing";
    }
}

TEST(ChartPicture, HasLitAndShadedFacesInThreeDimensionsOnly)
{
    for (const ChartStyle style : {ChartStyle::Bar3D, ChartStyle::Bar2D}) {
        ShownRun run(style, GridOf({SixValues}));
        Dress(run.chart);
        const QImage image = run.chart.Picture(1);
        const int lit = CountOf(image, Lit(Series, 0.35)),
                  shaded = CountOf(image, Shaded(Series, 0.35));
        EXPECT_EQ(lit > 500, IsDeep(style)) << lit;
        EXPECT_EQ(shaded > 500, IsDeep(style)) << shaded;
    }
}

TEST(ChartPicture, ShowsTheFrontsOfBarsBeforeTheFacesOfTheirNeighbours)
{
    ShownRun run(ChartStyle::Bar3D, GridOf({{"300", "-300", "300", "-300", "0", "300"}}));
    Dress(run.chart);
    const QImage image = run.chart.Picture(1);
    for (const int row : {1, 2, 3, 4, 6})
        EXPECT_EQ(image.pixelColor(run.PlaceOf(1, row)), Series) << row;
}

TEST(ChartPicture, ShowsAreasOverAndUnderTheGround)
{
    for (const ChartStyle style : {ChartStyle::Area2D, ChartStyle::Area3D}) {
        ShownRun run(style, GridOf({{"300", "300", "300", "-300", "-300", "-300"}}));
        Dress(run.chart);
        const QImage image = run.chart.Picture(1);
        EXPECT_EQ(image.pixelColor(run.PlaceOf(1, 2) + QPoint(0, 20)), Series);
        EXPECT_EQ(image.pixelColor(run.PlaceOf(1, 5) - QPoint(0, 20)), Series);
        EXPECT_NE(image.pixelColor(run.PlaceOf(1, 5) + QPoint(0, 6)), Series);
    }
}

TEST(ChartPicture, FollowsThePaletteUntilAColourIsChosen)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({SixValues}));
    run.chart.setPalette(DarkPalette());
    EXPECT_EQ(run.chart.Picture(1).pixelColor(4, 4), QColor(30, 30, 32));
    run.chart.SetBackdropColor(Back);
    EXPECT_EQ(run.chart.Picture(1).pixelColor(4, 4), Back);
    run.chart.SetBackdropColor(QColor());
    EXPECT_EQ(run.chart.Picture(1).pixelColor(4, 4), QColor(30, 30, 32));
}

TEST(ChartLook, HasTextThatCanBeReadOnAnyColour)
{
    for (const QPalette &palette : {QPalette(), DarkPalette()}) {
        for (int color = 0; color < 4096; color += 37) {
            ChartColors colors;
            colors.Backdrop = QColor((color >> 8) * 17, (color >> 4 & 15) * 17, (color & 15) * 17);
            colors.Wall = colors.Backdrop;
            const ChartLook look(colors, palette);
            EXPECT_GE(Contrast(look.Text, look.Backdrop), 4.5);
            EXPECT_GE(Contrast(look.WallText, look.Wall), 4.5);
        }
    }
}

TEST(ChartPicture, ShowsASeriesThatHasTheColourOfItsGround)
{
    for (const int style : {0, 1, 2, 3, 4, 5, 14}) {
        SCOPED_TRACE(style);
        ShownRun run{ChartStyle(style), style == 14 ? PieOf({"30", "70"}) : GridOf({SixValues})};
        Dress(run.chart);
        run.chart.SetBackdropColor(Wall);
        run.chart.SetSeriesColor(1, Wall);
        const QPoint place = run.PlaceOf(1, 1);
        const QImage image = run.chart.Picture(1);
        int seen = 0;
        for (int y = place.y() - 120; y < place.y() + 120; ++y)
            for (int x = place.x() - 20; x < place.x() + 20; ++x)
                seen += image.valid(x, y) && Contrast(image.pixelColor(x, y), Wall) > 2.2;
        EXPECT_GT(seen, 15);
    }
}

TEST(ChartLook, TellsThirtySeriesApart)
{
    const ChartLook look{ChartColors(), QPalette()};
    for (int series = 1; series <= 30; ++series)
        for (int other = 1; other < series; ++other)
            EXPECT_NE(look.Series(series), look.Series(other)) << series << " " << other;
}

TEST(ChartLook, GivesTheChosenColourToItsSeriesOnly)
{
    ChartColors colors;
    colors.Series[1] = Series;
    const ChartLook look(colors, QPalette());
    EXPECT_EQ(look.Series(1), Series);
    EXPECT_EQ(look.Series(2), ChartLook(ChartColors(), QPalette()).Series(2));
}

// --- values ---------------------------------------------------------------------------------------

TEST(ChartPicture, LeavesAGapWhereThereIsNoValue)
{
    for (const ChartStyle style : Plots) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({{"100", "100", "", "100", "100"}}));
        Dress(run.chart);
        const QImage image = run.chart.Picture(1);
        const QPoint left = run.PlaceOf(1, 2), right = run.PlaceOf(1, 4);
        // In the midst of the gap nothing of the series from top to bottom, but its legend.
        const int x = (left.x() + right.x()) / 2 + 8;
        for (int y = 5; y < 360; ++y)
            EXPECT_NE(image.pixelColor(x, y), Series) << y;
    }
}

TEST(ChartPicture, ShowsALonePoint)
{
    for (const ChartStyle style : Plots) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({{"", "1234.5", ""}}));
        Dress(run.chart);
        const QImage before = run.chart.Picture(1);
        run.chart.SetGrid(GridOf({{"", "", ""}}));
        const QImage without = run.chart.Picture(1);
        EXPECT_NE(before, without);
        run.chart.SetGrid(GridOf({{"", "1234.5", ""}}));
        run.chart.SetSeriesColor(1, Qt::green);
        const QImage green = run.chart.Picture(1);
        int changed = 0;
        for (int y = 0; y < 360; ++y)
            for (int x = 0; x < green.width(); ++x)
                changed += green.pixel(x, y) != before.pixel(x, y);
        EXPECT_GT(changed, 15) << "pixels that have the colour of the series";
    }
}

TEST(ChartPicture, ShowsAnExtremeAmongTenThousandPoints)
{
    QStringList values;
    for (int row = 0; row < 10000; ++row)
        values << QString::number(row == 6000 ? 900 : 100);
    for (const ChartStyle style : {ChartStyle::Bar2D, ChartStyle::Line2D, ChartStyle::Area2D}) {
        SCOPED_TRACE(int(style));
        ShownRun run(style, GridOf({values}));
        Dress(run.chart);
        const QPoint peak = run.PlaceOf(1, 6001), usual = run.PlaceOf(1, 3000);
        const QImage image = run.chart.Picture(1);
        const int y = (peak.y() + usual.y()) / 2;
        int seen = 0;
        for (int x = peak.x() - 2; x <= peak.x() + 2; ++x)
            seen += Contrast(image.pixelColor(x, y), Wall) > 2;
        EXPECT_GE(seen, 1);
    }
}

TEST(ChartPicture, CutsOffWhatAFixedScaleLeavesOut)
{
    for (const ChartStyle style : Plots) {
        SCOPED_TRACE(int(style));
        ChartGrid grid = GridOf({{"100", "900", "-900", "110"}});
        grid.Scale = ValueScale{95, 115};
        ShownRun run(style, grid);
        Dress(run.chart);
        const QImage image = run.chart.Picture(1);
        for (int x = 0; x < image.width(); ++x) {
            EXPECT_NE(image.pixelColor(x, 3), Series);
            EXPECT_NE(image.pixelColor(x, 365), Series);
        }
        run.Click(1, 1);
        for (int row = 1; row <= 4; ++row) {
            run.Click(1, row);
            EXPECT_TRUE(run.chart.IsPointSelected(1, row)) << row;
        }
    }
}

TEST(ChartPicture, IsDrawnForAnyValues)
{
    const std::vector<QStringList> cases = {{},
                                            {"0", "0", "0"},
                                            {"-1", "-2"},
                                            {"1E+300", "-1E+300"},
                                            {"1E+300", "1"},
                                            {"0.0000001"},
                                            {"text", "", "more"},
                                            {"5", "5", "5"},
                                            {"999999999999999", "999999999999998"}};
    for (const QStringList &values : cases) {
        for (const int style : {0, 1, 2, 3, 4, 5, 14}) {
            ShownRun run{ChartStyle(style), values.isEmpty() ? ChartGrid() : GridOf({values})};
            for (const QSize size :
                 {QSize(640, 400), QSize(60, 40), QSize(1, 1), QSize(2000, 90)}) {
                run.chart.resize(size);
                EXPECT_FALSE(run.chart.Picture(1).isNull());
            }
        }
    }
}

TEST(ChartPicture, IsAsCrispAsItsScale)
{
    ShownRun run(ChartStyle::Bar2D, GridOf({SixValues}));
    Dress(run.chart);
    const QImage once = run.chart.Picture(1), twice = run.chart.Picture(2);
    EXPECT_EQ(twice.size(), once.size() * 2);
    EXPECT_NE(twice, once.scaled(twice.size())) << "drawn anew, not enlarged";
    EXPECT_NEAR(CountOf(twice, Series) / 4.0, CountOf(once, Series), CountOf(once, Series) * 0.1);
}

TEST(ChartPicture, ShowsThePointsOfTheSelectedSeries)
{
    ShownRun run(ChartStyle::Line2D, GridOf({{"100", "200", "150"}}));
    const QImage before = run.chart.Picture(1);
    run.Click(1, 2);
    const QImage selected = run.chart.Picture(1);
    EXPECT_NE(before.copy(QRect(run.PlaceOf(1, 3) - QPoint(5, 5), QSize(11, 11))),
              selected.copy(QRect(run.PlaceOf(1, 3) - QPoint(5, 5), QSize(11, 11))));
    run.Click(1, 2);
    EXPECT_NE(selected, run.chart.Picture(1)) << "the selected point is larger";
}

TEST(ChartPicture, ShowsLabelsOfTheSameTextAndOfAnyText)
{
    const auto labelled = [](const QString &second) {
        ChartGrid grid = GridOf({{"1", "2"}});
        grid.RowLabel(1) = QStringLiteral("Mar-02-26");
        grid.RowLabel(2) = second;
        ShownRun run(ChartStyle::Bar2D, grid);
        return run.chart.Picture(1);
    };
    const QImage without = labelled(QString());
    EXPECT_NE(labelled(QStringLiteral("Mar-02-26")), without) << "two sales on a day";
    EXPECT_NE(labelled(QStringLiteral("<i></i>")), without) << "no mark-up";
}

TEST(ChartPicture, HasALegendWhenTheGridWantsOne)
{
    ChartGrid grid = GridOf({SixValues});
    ShownRun with(ChartStyle::Line2D, grid);
    grid.ShowLegend = false;
    ShownRun without(ChartStyle::Line2D, grid);
    EXPECT_LT(with.PlaceOf(1, 5).y(), without.PlaceOf(1, 5).y()) << "the legend takes its room";
}

// --- the pie --------------------------------------------------------------------------------------

TEST(PieLabels, GiveTheSharesInWholePercent)
{
    EXPECT_EQ(DrawnPie({30, 50, 20}).Texts(), QStringList({"30%", "50%", "20%"}));
    EXPECT_EQ(DrawnPie({1, 1, 1}).Texts(), QStringList({"33%", "33%", "33%"}));
}

TEST(PieLabels, BearAMinusForANegativeSlice)
{
    EXPECT_EQ(DrawnPie({1.5, -0.5}).Texts(), QStringList({"150%", "-50%"}));
}

TEST(PieLabels, ReadZeroWhenAllIsZero)
{
    EXPECT_EQ(DrawnPie({0}).Texts(), QStringList({"0%"}));
}

TEST(PieLabels, KeepClearOfEachOther)
{
    for (const int count : {1, 2, 5, 12, 13, 30, 200}) {
        SCOPED_TRACE(count);
        std::vector<double> values;
        for (int slice = 0; slice < count; ++slice)
            values.push_back(slice % 3 == 0 ? 0.1 : 10 + slice);
        const QRectF area(10, 10, 600, 320);
        const DrawnPie pie(values, area);
        std::vector<QRectF> places;
        for (const auto &label : pie.shapes->Labels())
            places.push_back(label.Place);
        EXPECT_FALSE(places.empty());
        ExpectApart(places, area);
    }
}

TEST(Pie, HatchesANegativeSlice)
{
    ShownRun run(ChartStyle::Pie, PieOf({"150", "-50"}));
    Dress(run.chart);
    run.chart.SetSeriesColor(2, Qt::blue);
    const QImage image = run.chart.Picture(1);
    const QPoint place = run.PlaceOf(2, 1);
    int colored = 0, other = 0;
    for (int x = place.x() - 15; x < place.x() + 15; ++x)
        ++(image.pixelColor(x, place.y()) == Qt::blue ? colored : other);
    EXPECT_GT(colored, 5);
    EXPECT_GT(other, 5);
    EXPECT_EQ(image.pixelColor(run.PlaceOf(1, 1)), Series) << "a positive one is not";
}

TEST(Pie, MovesTheSelectedSliceOut)
{
    ShownRun run(ChartStyle::Pie, PieOf({"30", "50", "20"}));
    const QPoint before = run.PlaceOf(2, 1);
    run.Click(2, 1);
    EXPECT_NE(run.PlaceOf(2, 1), before);
}

TEST(Pie, BearsTheLabelOfItsRowUnderIt)
{
    const auto inkBelow = [](ShownRun &run) {
        const QImage image = run.chart.Picture(1);
        int ink = 0;
        for (int y = 340; y < 390; ++y)
            for (int x = 270; x < 370; ++x) // clear of the percentages
                ink += qGray(image.pixel(x, y)) < 40;
        return ink;
    };
    ChartGrid grid = PieOf({"30", "70"});
    grid.RowLabel(1) = QStringLiteral("Portfolio Positions");
    ShownRun with(ChartStyle::Pie, grid);
    grid.RowLabel(1).clear();
    ShownRun without(ChartStyle::Pie, grid);
    EXPECT_LT(with.PlaceOf(2, 1).y(), without.PlaceOf(2, 1).y()) << "the label takes its room";
    EXPECT_GT(inkBelow(with), inkBelow(without) + 50);
}

// --- the legend -----------------------------------------------------------------------------------

TEST(ChartLegend, KeepsItsEntriesApartAndWithinItsWidth)
{
    for (const int count : {1, 2, 5, 30, 300}) {
        SCOPED_TRACE(count);
        std::vector<ChartLegend::Entry> entries;
        for (int entry = 0; entry < count; ++entry)
            entries.push_back({QString(entry % 40 + 1, QLatin1Char('m')), Qt::red});
        const ChartLegend legend(entries, QFont(), 500, 100);
        EXPECT_LE(legend.Height(), 100);
        EXPECT_FALSE(legend.Places().empty());
        ExpectApart(legend.Places(), QRectF(0, 0, 500, legend.Height()));
    }
}

TEST(ChartLegend, ShowsAllOfThirtySymbols)
{
    std::vector<ChartLegend::Entry> entries(30, {QStringLiteral("SYMB"), Qt::red});
    EXPECT_EQ(ChartLegend(entries, QFont(), 600, 140).Places().size(), 30u);
}
