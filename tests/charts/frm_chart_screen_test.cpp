/// The chart screen: what it shows of each kind, its dates, symbols, styles, hints and colours.

#include "tracking/tracker_screen_run.h"

#include "charts/frm_chart_screen.h"
#include "platform/widgets/chart.h"
#include "platform/widgets/date_field.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QRadioButton>

#include <set>

namespace
{

using namespace std::chrono_literals;

const QString Screen = QStringLiteral("frmChartScreen");

class ChartScreen : public TrackerScreenRun
{
protected:
    // The account before the program starts.

    void Traded(const QString &symbol)
    {
        Execute(QStringLiteral("INSERT INTO History (Symbol, TransDate) VALUES (%1, '2026-02-02')")
                    .arg(Quoted(symbol)));
    }
    void Profit(const QString &symbol, const char *date, const char *amount,
                const char *time = "10:15:00.000")
    {
        Execute(QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, ProfitLoss, TransDate, Time) "
                               "VALUES (%1, %2, '%3', '%4')")
                    .arg(Quoted(symbol), Money(amount), QString::fromUtf8(date),
                         QString::fromUtf8(time)));
    }
    void Price(const QString &symbol, const char *date, const char *close)
    {
        folder.Execute(folder.File(QStringLiteral("HistPrices.xxx")),
                       QStringLiteral("INSERT INTO HistoricalPrices (Symbol, PriceDate, "
                                      "PriceClose) VALUES (%1, '%2', %3)")
                           .arg(Quoted(symbol), QString::fromUtf8(date), Money(close)));
    }
    /// ACME and ZETA held and traded, each with an entry and a price in the last thirty days.
    void TwoSecurities()
    {
        Position("ACME", 50, "10", "10"); // invested 500 and 300
        Position("ZETA", 50, "6", "6");
        for (const char *symbol : {"ACME", "ZETA"})
            Traded(QString::fromUtf8(symbol));
        Profit("ACME", "2026-02-27", "25");
        Profit("ZETA", "2026-02-27", "-5");
        Profit("ACME", "2026-02-26", "7", "09:30:00.000");
        Price("ACME", "2026-02-20", "10"); // weekly points leave the second close out
        Price("ACME", "2026-02-25", "12");
        Price("ACME", "2026-02-27", "11");
        Price("ZETA", "2026-02-27", "6");
    }

    // The screen.

    void OpenChart(const char *menu)
    {
        if (!run.App().MainWindow().isVisible())
            Open();
        Choose(menu);
    }
    void CloseChart() { run.App().Host().Unload(Screen); }
    bool IsOpen() { return run.App().Host().Loaded(Screen); }
    frmChartScreen &Shown()
    {
        return dynamic_cast<frmChartScreen &>(*run.App().Host().Find(Screen));
    }
    template <class Widget>
    Widget &Control(const char *name)
    {
        return *run.Control<Widget>(Screen, QString::fromUtf8(name));
    }
    Chart &MSChart() { return Control<Chart>("MSChart"); }
    DateField &From() { return Control<DateField>("dtpFrom"); }
    DateField &To() { return Control<DateField>("dtpTo"); }
    QComboBox &Symbols() { return Control<QComboBox>("combSymbol"); }
    void Click(const char *button) { Control<QPushButton>(button).click(); }
    void ChooseSymbol(const QString &symbol)
    {
        Symbols().setCurrentIndex(Symbols().findText(symbol));
        emit Symbols().activated(Symbols().currentIndex());
    }
    /// "Daily Profit Loss: Feb-26-26 7, Feb-27-26 20".
    QString Values()
    {
        QStringList values;
        QString title;
        for (const ShownChart::Value &value : MSChart().Values()) {
            const bool isPie = MSChart().Style() == ChartStyle::Pie;
            title = isPie ? value.rowLabel : value.columnLabel;
            values << (isPie ? value.columnLabel : value.rowLabel) + QLatin1Char(' ') + value.text;
        }
        return title + QStringLiteral(": ") + values.join(QStringLiteral(", "));
    }
    QString Tip() { return MSChart().toolTip(); }
    void Seconds(int seconds) { run.clock.Advance(std::chrono::seconds(seconds)); }
    QStringList CheckedCharts()
    {
        QStringList checked;
        for (const char *name :
             {"mnuChartPortfolioPL", "mnuChartSelectedSecPL", "mnuChartPositions",
              "mnuChartAssetAllocation", "mnuChartHistoricalPrices", "mnuChartSelectedSecPerf",
              "mnuChartPortfolioPerf"})
            if (run.Commands().Checked(QString::fromUtf8(name)))
                checked << QString::fromUtf8(name);
        return checked;
    }
    QString SavedColor(const char *area)
    {
        QStringList parts;
        for (const char *part : {"Red", "Green", "Blue"})
            parts << run.Saved(
                QStringLiteral("Colors"),
                QStringLiteral("Chart%1%2").arg(QLatin1String(area), QLatin1String(part)));
        return parts.join(QLatin1Char(','));
    }
    /// The area and its colour as a double click, the colour dialog and the plot selection give it.
    void Recolor(Rgb color, const char *option, const char *button)
    {
        run.boxes.color = color;
        run.WhenModal("frmPlotSelection", [=, this] {
            EXPECT_EQ(Status(), "Select object to apply color.");
            run.Control<QRadioButton>("frmPlotSelection", QString::fromUtf8(option))
                ->setChecked(true);
            run.Control<QPushButton>("frmPlotSelection", QString::fromUtf8(button))->click();
        });
        MSChart().OnPlotActivated();
    }
};

} // namespace

// --- what a kind shows --------------------------------------------------------------------------

TEST_F(ChartScreen, ShowsTheControlsOfEachKind)
{
    TwoSecurities();
    Open();
    Select("ACME");
    const struct
    {
        const char *menu, *caption, *style;
        bool symbols, dates, interval;
        int type;
    } kinds[] = {
        {"mnuChartPortfolioPL", "Profit and Loss Chart", "3D Bar", false, true, false, 1},
        {"mnuChartSelectedSecPL", "Selected Security P&L Chart", "3D Bar", true, true, false, 1},
        {"mnuChartPositions", "Portfolio Positions Chart", "", false, false, false, 14},
        {"mnuChartAssetAllocation", "Portfolio Asset Allocation", "", false, false, false, 14},
        {"mnuChartHistoricalPrices", "Historical Price Chart", "3D Line", true, true, true, 3},
        {"mnuChartSelectedSecPerf", "Selected Security Performance Chart", "3D Line", true, true,
         false, 3},
        {"mnuChartPortfolioPerf", "Portfolio Performance Chart", "3D Line", false, true, false, 3},
    };
    for (const auto &kind : kinds) {
        OpenChart(kind.menu);
        EXPECT_EQ(CheckedCharts(), QStringList(kind.menu));
        EXPECT_EQ(Shown().Caption(), kind.caption);
        EXPECT_EQ(MSChart().ChartType(), kind.type) << kind.menu;
        if (kind.dates) {
            EXPECT_EQ(Control<QPushButton>("cmd3D").text(), kind.style) << kind.menu;
        }
        for (const char *name : {"dtpFrom", "dtpTo", "lblFrom", "lblTo"})
            EXPECT_EQ(Control<QWidget>(name).isVisible(), kind.dates) << kind.menu << name;
        for (const char *name : {"cmdOK", "cmd3D"})
            EXPECT_EQ(Control<QWidget>(name).isEnabled(), kind.dates) << kind.menu << name;
        for (const char *name : {"combSymbol", "lblSymbol"})
            EXPECT_EQ(Control<QWidget>(name).isVisible(), kind.symbols) << kind.menu << name;
        EXPECT_EQ(Control<QGroupBox>("FrameInterval").isVisible(), kind.interval) << kind.menu;
    }
    EXPECT_TRUE(run.boxes.Texts().size() <= 2) << "performance alone has no data";
}

TEST_F(ChartScreen, ShowsPositionsWhenItIsOpenedAtTheStart)
{
    TwoSecurities();
    run.SetOption("ChartScreen", "1");
    Open();
    ASSERT_TRUE(IsOpen());
    EXPECT_EQ(CheckedCharts(), QStringList("mnuChartPositions"));
    EXPECT_EQ(Values(), "Portfolio Positions: ZETA 0.3, ACME 0.5, Cash 0.2"); // of 1,000
}

TEST_F(ChartScreen, ShowsProfitsAndLossesOfTheLastThirtyDays)
{
    TwoSecurities();
    Profit("ACME", "2026-01-30", "1000"); // 31 days before March 2
    Profit("ACME", "2026-01-31", "1");
    OpenChart("mnuChartPortfolioPL");
    EXPECT_EQ(Values(), "Daily Profit Loss: Jan-31-26 1, Feb-26-26 7, Feb-27-26 20");
    EXPECT_EQ(From().toolTip(), "1/31/2026");
    EXPECT_EQ(To().toolTip(), "3/2/2026");
    EXPECT_EQ(Control<QPushButton>("cmdOK").toolTip(),
              "Select after changing 'From' and 'To' date.");
    EXPECT_EQ(Control<QPushButton>("cmd3D").toolTip(), "Changes the current chart style.");
}

TEST_F(ChartScreen, IsReplacedByAScreenOfTheKindAskedForNext)
{
    TwoSecurities();
    OpenChart("mnuChartPositions");
    const frmChartScreen *before = &Shown();
    OpenChart("mnuChartAssetAllocation");
    EXPECT_NE(&Shown(), before);
    EXPECT_EQ(CheckedCharts(), QStringList("mnuChartAssetAllocation"));
    EXPECT_TRUE(State().chart.ChartScreenOpen);
}

TEST_F(ChartScreen, IsAskedForByThePopupsOfOtherScreens)
{
    TwoSecurities();
    Open();
    Select("ACME");
    const std::pair<const char *, const char *> entries[] = {
        {"popDTChartHistoricalPrice", "mnuChartHistoricalPrices"},
        {"popHPLChart", "mnuChartHistoricalPrices"},
        {"popDTChartPerPortfolio", "mnuChartPortfolioPerf"},
        {"popDTChartPerSelectedSec", "mnuChartSelectedSecPerf"},
        {"popDTChartPLPortfolio", "mnuChartPortfolioPL"},
        {"popPLChartPLPortfolio", "mnuChartPortfolioPL"},
        {"popDTChartPLSelectedSec", "mnuChartSelectedSecPL"},
        {"popPLChartPLSelectedSec", "mnuChartSelectedSecPL"},
    };
    for (const auto &[popup, menu] : entries) {
        CloseChart();
        Choose(popup);
        EXPECT_EQ(CheckedCharts(), QStringList(menu)) << popup;
    }
}

TEST_F(ChartScreen, NeedsASelectedSecurityForItsProfitsAndPerformanceButNotForItsPrices)
{
    Execute("DELETE FROM DailyTracker");
    Open();
    Choose("mnuChartSelectedSecPL");
    Choose("mnuChartSelectedSecPerf");
    EXPECT_FALSE(IsOpen());
    ASSERT_EQ(run.boxes.boxes.size(), 2u);
    for (const auto &box : run.boxes.boxes) {
        EXPECT_EQ(box.text, "No security has been selected, select one now to chart.");
        EXPECT_EQ(box.title, "Application Editor");
        EXPECT_EQ(box.buttonsValue, Box::Exclamation);
    }
    Choose("mnuChartHistoricalPrices");
    EXPECT_TRUE(IsOpen());
}

TEST_F(ChartScreen, WritesTodaysSecurityBalancesBeforeItReadsThem)
{
    Position("ACME", 100, "10", "12"); // a gain of 200
    Open();
    Execute("DELETE FROM PortfolioDailyBalance");
    OpenChart("mnuChartPortfolioPerf");
    EXPECT_EQ(Values(), "Portfolio Daily Gain Total: Mar-02-26 200");
    CloseChart();
    Close(); // without the Daily Tracker nothing is written
    Execute("DELETE FROM PortfolioDailyBalance");
    OpenChart("mnuChartPortfolioPerf");
    EXPECT_EQ(Values(), "Portfolio Daily Gain Total: Mar-02-26 0");
}

// --- dates --------------------------------------------------------------------------------------

TEST_F(ChartScreen, ChangesTheChartForNewDatesOnlyWhenOKIsPressed)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    const QString before = Values();
    From().setDate(QDate(2026, 2, 27));
    EXPECT_EQ(From().toolTip(), "2/27/2026");
    EXPECT_EQ(Values(), before);
    Click("cmdOK");
    EXPECT_EQ(Values(), "Daily Profit Loss: Feb-27-26 20");
}

TEST_F(ChartScreen, RefusesAFromLaterThanToAndAllowsOneDay)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    const QString before = Values();
    To().setDate(QDate(2026, 2, 26));
    From().setDate(QDate(2026, 2, 27));
    Click("cmdOK");
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].text, "'From' date can not be greater than 'To' date. \n"
                                       "Please make another selection.");
    EXPECT_EQ(run.boxes.boxes[0].title, "Chart Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Exclamation);
    EXPECT_EQ(Values(), before);
    From().setDate(QDate(2026, 2, 26));
    Click("cmdOK");
    EXPECT_EQ(Values(), "Daily Profit Loss: 9:30:00 AM 7"); // one day: by its times
}

TEST_F(ChartScreen, KeepsItsDatesForTheRestOfTheRun)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    From().setDate(QDate(2026, 2, 27));
    To().setDate(QDate(2026, 2, 28));
    CloseChart();
    OpenChart("mnuChartPortfolioPerf");
    EXPECT_EQ(From().date(), QDate(2026, 2, 27));
    EXPECT_EQ(To().date(), QDate(2026, 2, 28));
    EXPECT_EQ(To().toolTip(), "2/28/2026");
    CloseChart();
    run.App().Exit();
    run.Renew();
    OpenChart("mnuChartPortfolioPerf");
    EXPECT_EQ(From().date(), QDate(2026, 1, 31)); // thirty days again
    EXPECT_EQ(To().date(), QDate(2026, 3, 2));
}

TEST_F(ChartScreen, LeavesTheRangeOfTheListsAlone)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    EXPECT_EQ(State().run.ListDateFrom, NoDate());
    EXPECT_EQ(State().run.ListDateTo, NoDate());
}

// --- symbols ------------------------------------------------------------------------------------

TEST_F(ChartScreen, TakesTheSymbolChosenInItsList)
{
    TwoSecurities();
    Open();
    Select("ACME");
    OpenChart("mnuChartSelectedSecPL");
    EXPECT_EQ(Symbols().currentText(), "ACME");
    EXPECT_EQ(Values(), "Daily P&L for ACME: Feb-26-26 7, Feb-27-26 25");
    ChooseSymbol("ZETA");
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    EXPECT_EQ(State().selection.CurrentName, "ZETA Inc."); // the name goes with its symbol
    EXPECT_EQ(Values(), "Daily P&L for ZETA: Feb-27-26 -5");
}

TEST_F(ChartScreen, ShowsTheFirstSymbolOfItsListWhenTheSelectedOneIsNotInIt)
{
    TwoSecurities();
    Position("NEWS", 1, "1", "1"); // never traded, no prices
    Open();
    Select("NEWS");
    OpenChart("mnuChartHistoricalPrices");
    EXPECT_EQ(Symbols().currentText(), "ACME");
    EXPECT_EQ(CurrentSymbol(), "NEWS");
    EXPECT_EQ(run.boxes.boxes.size(), 1u); // no data, once
    EXPECT_TRUE(MSChart().Values().empty());
    ChooseSymbol("ACME"); // the one that is shown already
    EXPECT_EQ(Values(), "Historical Price for ACME: Feb-20-26 10, Feb-27-26 11");
}

TEST_F(ChartScreen, FollowsTheSecuritySelectedElsewhereWhenItComesToTheFront)
{
    TwoSecurities();
    Open();
    Select("ACME");
    OpenChart("mnuChartHistoricalPrices");
    EXPECT_EQ(Values(), "Historical Price for ACME: Feb-20-26 10, Feb-27-26 11");
    run.App().Host().Show("frmDailyTracker");
    Select("ZETA");
    EXPECT_EQ(Symbols().currentText(), "ACME");
    run.App().Host().Show(Screen);
    EXPECT_EQ(Symbols().currentText(), "ZETA");
    EXPECT_EQ(Values(), "Historical Price for ZETA: Feb-27-26 6");
}

TEST_F(ChartScreen, StaysWhenTheSecuritySelectedElsewhereHasNothingToShow)
{
    TwoSecurities();
    Position("NEWS", 1, "1", "1");
    Open();
    Select("ACME");
    OpenChart("mnuChartHistoricalPrices");
    run.App().Host().Show("frmDailyTracker");
    Select("NEWS");
    run.App().Host().Show(Screen);
    EXPECT_EQ(Values(), "Historical Price for ACME: Feb-20-26 10, Feb-27-26 11");
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(ChartScreen, KeepsTheEarlierPictureOfARangeWithoutPrices)
{
    TwoSecurities();
    Open();
    Select("ACME");
    OpenChart("mnuChartHistoricalPrices");
    To().setDate(QDate(2026, 2, 19));
    Click("cmdOK");
    EXPECT_EQ(run.boxes.Texts(),
              QStringList("No data was found for selected symbol or in the requested\ndate range. "
                          " Please make another selection or increase date \nrange selection."));
    EXPECT_EQ(Values(), "Historical Price for ACME: Feb-20-26 10, Feb-27-26 11");
}

TEST_F(ChartScreen, KeepsTheIntervalThatTheFirstChartChoseUntilTheUserChangesIt)
{
    TwoSecurities();
    Open();
    Select("ACME");
    OpenChart("mnuChartHistoricalPrices"); // February and March begin in the range: weekly
    const QString weekly = "Historical Price for ACME: Feb-20-26 10, Feb-27-26 11";
    EXPECT_TRUE(Control<QRadioButton>("optWeekly").isChecked());
    EXPECT_EQ(Values(), weekly);
    From().setDate(QDate(2025, 2, 1));
    Click("cmdOK");
    EXPECT_TRUE(Control<QRadioButton>("optWeekly").isChecked());
    Control<QRadioButton>("optDaily").click();
    EXPECT_EQ(Values(), weekly); // not yet
    Click("cmdOK");
    EXPECT_EQ(Values(), "Historical Price for ACME: Feb-20-26 10, Feb-25-26 12, Feb-27-26 11");
    Control<QRadioButton>("optMonthly").click();
    Click("cmdOK");
    EXPECT_EQ(Values(), "Historical Price for ACME: Feb-20-26 10");
    EXPECT_EQ(Control<QRadioButton>("optWeekly").text(), " Weekly");
    EXPECT_EQ(Control<QGroupBox>("FrameInterval").title(), "Interval");
}

// --- style, readout and hints -------------------------------------------------------------------

TEST_F(ChartScreen, ChangesTheStyleAndNotTheData)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPerf");
    const QString values = Values();
    QString round;
    for (int press = 0; press < 5; ++press) {
        Click("cmd3D");
        round += QStringLiteral("%1 %2, ")
                     .arg(MSChart().ChartType())
                     .arg(Control<QPushButton>("cmd3D").text());
        EXPECT_EQ(Values(), values);
    }
    EXPECT_EQ(round, "2 3D Area, 4 2D Line, 3 2D Area, 5 3D Line, 2 3D Area, ");
}

TEST_F(ChartScreen, ShowsTwoHintsAfterTenSecondsEachAndReadsOutSelectedPoints)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    const QString hint = "Click once on the bar to select it, then once more to obtain it's "
                         "value.  Double click on any area to change colors.";
    EXPECT_EQ(Tip(), "");
    Seconds(9);
    EXPECT_EQ(Tip(), "");
    Seconds(1);
    EXPECT_EQ(Tip(), hint);
    Seconds(60); // until a point is selected
    EXPECT_EQ(Tip(), hint);
    MSChart().OnPointSelected(1, 2);
    EXPECT_EQ(Tip(), "Date: Feb-27-26 Value: 20.00");
    Seconds(8);
    MSChart().OnPointSelected(1, 1); // its ten seconds begin anew
    Seconds(9);
    EXPECT_EQ(Tip(), "Date: Feb-26-26 Value: 7.00");
    Seconds(1);
    EXPECT_EQ(Tip(), hint);
    MSChart().OnPointSelected(1, 1);
    Seconds(10);
    EXPECT_EQ(Tip(), "");
}

TEST_F(ChartScreen, ReadsOutAmountsOnThePies)
{
    TwoSecurities();
    OpenChart("mnuChartPositions");
    MSChart().OnPointSelected(1, 1);
    EXPECT_EQ(Tip(), "Symbol: ZETA   Value: 300.00");
    MSChart().OnPointSelected(3, 1);
    EXPECT_EQ(Tip(), "Symbol: Cash   Value: 200.00");
    OpenChart("mnuChartAssetAllocation");
    MSChart().OnPointSelected(1, 1);
    EXPECT_EQ(Tip(), "Asset Class: Not allocated   Value: 800.00");
}

TEST_F(ChartScreen, ReadsItsValuesAsTheCountryWritesThem)
{
    Profit("ACME", "2026-02-26", "10.5");
    Profit("ACME", "2026-02-27", "100");
    ShellRun german(folder, QLocale(QLocale::German, QLocale::Germany));
    ASSERT_TRUE(german.App().Launch());
    german.Choose(QStringLiteral("mnuChartPortfolioPL"));
    Chart &chart = *german.Control<Chart>(Screen, QStringLiteral("MSChart"));
    ASSERT_EQ(chart.Values().size(), 2u);
    EXPECT_EQ(chart.Values()[0].text, "10,5");
    // Not 105: the first bar is the lower one.
    EXPECT_GT(chart.PointTarget(1, 1).center.y(), chart.PointTarget(1, 2).center.y());
    chart.OnPointSelected(1, 1);
    EXPECT_TRUE(chart.toolTip().endsWith(" Value: 10,50")) << qPrintable(chart.toolTip());
}

TEST_F(ChartScreen, TellsTheLastReadoutToThoseWhoHearItWhenTheTipIsGone)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    for (int selection = 0; selection < 3; ++selection) {
        MSChart().OnPointSelected(1, 2);
        Seconds(10);
    }
    EXPECT_EQ(Tip(), "");
    EXPECT_EQ(MSChart().accessibleDescription(), "Date: Feb-27-26 Value: 20.00");
}

// --- colours ------------------------------------------------------------------------------------

TEST_F(ChartScreen, RecolorsTheAreaChosenAndKeepsItInTheSettings)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    Recolor(0x010203, "optBackdrop", "cmdOK");
    EXPECT_EQ(State().chart.ChartAreaChosen, "Backdrop");
    Recolor(0x0405FF, "optBase", "cmdOK");
    EXPECT_EQ(State().chart.ChartAreaChosen, "Base");
    Recolor(0xFF0809, "optWall", "cmdOK");
    EXPECT_EQ(State().chart.ChartAreaChosen, "Wall");
    EXPECT_EQ(SavedColor("Back"), "(none),(none),(none)"); // it goes with the screen
    CloseChart();
    EXPECT_EQ(SavedColor("Back"), "1,2,3");
    EXPECT_EQ(SavedColor("Base"), "4,5,255");
    EXPECT_EQ(SavedColor("Wall"), "255,8,9");
    EXPECT_EQ(SavedColor("Series"), "128,0,64");
}

TEST_F(ChartScreen, LeavesTheColorsWhenEitherDialogIsCancelled)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    Recolor(0x010203, "optBase", "cmdCancel");
    EXPECT_EQ(State().chart.ChartAreaChosen, "");
    run.boxes.color = std::nullopt;
    MSChart().OnPlotActivated();
    EXPECT_FALSE(run.App().Host().Loaded("frmPlotSelection"));
    MSChart().OnSeriesActivated(1);
    CloseChart();
    EXPECT_EQ(SavedColor("Back"), "255,255,255");
    EXPECT_EQ(SavedColor("Base"), "203,206,66");
    EXPECT_EQ(SavedColor("Wall"), "249,247,142");
    EXPECT_EQ(SavedColor("Series"), "128,0,64");
}

TEST_F(ChartScreen, RecolorsASeriesWithoutAskingForTheArea)
{
    TwoSecurities();
    OpenChart("mnuChartPositions");
    run.boxes.color = 0x0A0B0C;
    MSChart().OnSeriesActivated(2);
    CloseChart();
    EXPECT_EQ(SavedColor("Series"), "10,11,12");
}

// --- pictures -----------------------------------------------------------------------------------

TEST_F(ChartScreen, SavesItsPictureAsAFile)
{
    TwoSecurities();
    OpenChart("mnuChartPositions");
    run.boxes.files = {folder.File("my chart")};
    Choose("popCHSavePicture");
    ASSERT_EQ(run.boxes.fileRequests.size(), 1u);
    EXPECT_EQ(run.boxes.fileRequests[0].kind, FileRequest::Kind::Save);
    EXPECT_TRUE(run.boxes.fileRequests[0].initial.endsWith("/Portfolio Positions Chart.png"));
    const QImage saved(folder.File("my chart.png"));
    EXPECT_EQ(saved.size(), MSChart().size() * 2);
    EXPECT_EQ(Status(), "The picture was saved as my chart.png");
}

TEST_F(ChartScreen, SaysWhenItsPictureCannotBeSaved)
{
    TwoSecurities();
    OpenChart("mnuChartPositions");
    run.boxes.files = {folder.File("no folder/chart.png"), std::nullopt};
    Choose("popCHSavePicture");
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_TRUE(run.boxes.boxes[0].text.startsWith("The picture could not be saved as\n"));
    EXPECT_EQ(run.boxes.boxes[0].title, "Chart Editor");
    Choose("popCHSavePicture"); // cancelled
    EXPECT_EQ(run.boxes.boxes.size(), 1u);
}

TEST_F(ChartScreen, CopiesItsPicture)
{
    TwoSecurities();
    OpenChart("mnuChartPositions");
    QApplication::clipboard()->clear();
    Choose("popCHCopyPicture");
    EXPECT_EQ(QApplication::clipboard()->image().size(), MSChart().size() * 2);
    EXPECT_EQ(Status(), "The picture was copied");
}

TEST_F(ChartScreen, OffersPicturesAndColoursOnARightClick)
{
    TwoSecurities();
    OpenChart("mnuChartPositions");
    QMenu *popup = run.App().MainWindow().Popup("popChartScreen");
    ASSERT_TRUE(popup);
    MSChart().OnContextMenu(QPoint());
    EXPECT_TRUE(popup->isVisible());
    QStringList captions;
    for (const QAction *action : popup->actions())
        captions << action->text();
    EXPECT_EQ(captions,
              QStringList({"Save picture…", "Copy picture", "", "Series color…", "Area color…"}));
    popup->close();
}

// --- going --------------------------------------------------------------------------------------

TEST_F(ChartScreen, ClearsItsMarkAndTheStatusWhenItGoes)
{
    TwoSecurities();
    OpenChart("mnuChartPortfolioPL");
    EXPECT_EQ(Status(), "");
    EXPECT_TRUE(State().chart.ChartScreenOpen);
    State().services.status.Post("something");
    Click("cmdClose");
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(State().chart.ChartScreenOpen);
    EXPECT_EQ(CheckedCharts(), QStringList());
    EXPECT_EQ(Status(), "");
    Seconds(60); // no timer is left
}

TEST_F(ChartScreen, OpensOnAnAccountThatCannotBeRead)
{
    TwoSecurities();
    Open();
    Select("ACME");
    Execute("DROP TABLE History; DROP TABLE DailyProfitLoss");
    OpenChart("mnuChartSelectedSecPL");
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(ChartScreen, HasANameForEveryControlAndOneKeyForEachMnemonic)
{
    TwoSecurities();
    Open();
    Select("ACME");
    OpenChart("mnuChartHistoricalPrices");
    std::set<QChar> keys;
    const auto take = [&](const QString &text) {
        const qsizetype mark = text.indexOf(QLatin1Char('&'));
        if (mark >= 0) {
            EXPECT_TRUE(keys.insert(text[mark + 1].toLower()).second) << qPrintable(text);
        }
    };
    for (const QLabel *label : Shown().findChildren<QLabel *>())
        if (label->buddy())
            take(label->text());
    for (const QAbstractButton *button : Shown().findChildren<QAbstractButton *>())
        if (button->isVisible() && !button->text().contains(QLatin1String("&&")))
            take(button->text());
    for (const char *name : {"dtpFrom", "dtpTo", "combSymbol", "MSChart", "optDaily"})
        EXPECT_FALSE(Control<QWidget>(name).accessibleName().isEmpty()) << name;
}
