/// The historical price list: what it opens on, the range, the order of the rows, split mode.

#include "tracking/tracker_screen_run.h"

#include "marketdata/frm_historical_price_list.h"
#include "marketdata/price_list.h"
#include "platform/widgets/date_field.h"
#include "program/list_refresh.h"

#include <QComboBox>
#include <QMenu>

namespace
{

const QString List = QStringLiteral("frmHistoricalPriceList");

class PriceList : public TrackerScreenRun
{
protected:
    /// A day's prices, in whole units; the adjusted close is the close unless it is given.
    void Price(const QString &symbol, const char *date, int open = 10, int high = 10, int low = 10,
               int close = 10, int volume = 100, int adjusted = 0)
    {
        folder.Execute(m_file, Insert(symbol, date, {open, high, low, close}, volume,
                                      adjusted ? adjusted : close));
    }
    /// The same while the program runs.
    void Download(const QString &symbol, const char *date)
    {
        State().databases.gConnHistPrices.Execute(Insert(symbol, date, {10, 10, 10, 10}, 100, 10));
    }
    /// Five days of three securities, with ties in every column.
    void FiveDays()
    {
        Price("ACME", "2026-02-26", 10, 12, 9, 11, 500);
        Price("ACME", "2026-02-27", 11, 13, 10, 12, 400);
        Price("O'NEIL", "2026-02-26", 10, 14, 8, 9, 500);
        Price("O'NEIL", "2024-02-29", 20, 21, 8, 20, 100, 10);
        Price("ZETA", "2026-02-27", 11, 12, 10, 11, 400);
    }

    void OpenList()
    {
        if (!run.App().MainWindow().isVisible())
            Open();
        Choose("mnuVWHistoricalPriceList");
    }
    void CloseList() { run.App().Host().Unload(List); }
    frmHistoricalPriceList &Screen()
    {
        return dynamic_cast<frmHistoricalPriceList &>(*run.App().Host().Find(List));
    }
    DataGrid &Prices() { return *run.Control<DataGrid>(List, "DataGridHistoricalPriceList"); }
    DateField &From() { return *run.Control<DateField>(List, "dtpFrom"); }
    DateField &To() { return *run.Control<DateField>(List, "dtpTo"); }
    QComboBox &Symbols() { return *run.Control<QComboBox>(List, "combSymbolList"); }
    void ClickOK() { run.Control<QPushButton>(List, "cmdOK")->click(); }
    void ChooseSymbol(const QString &symbol)
    {
        Symbols().setCurrentText(symbol);
        emit Symbols().textActivated(symbol);
    }
    QStringList Entries()
    {
        QStringList entries;
        for (int i = 0; i < Symbols().count(); ++i)
            entries << Symbols().itemText(i);
        return entries;
    }
    /// The rows by the first letter of the symbol and the day of the month: "A27 A26".
    QString Rows()
    {
        const int symbol = Prices().ColumnByCaption("Symbol");
        const int date = Prices().ColumnByCaption("Date");
        QStringList rows;
        for (int row = 0; row < Prices().RowCount(); ++row)
            rows << Prices().CellText(row, symbol).left(1) +
                        Prices().CellText(row, date).section(QLatin1Char('/'), 1, 1);
        return rows.join(QLatin1Char(' '));
    }
    void ClickPriceHeader(const char *caption)
    {
        Prices().ClickHeader(Prices().ColumnByCaption(QString::fromUtf8(caption)));
    }
    QString SplitCaption() { return run.Commands().Caption("popHPLSplitMode"); }

private:
    static QString Insert(const QString &symbol, const char *date, std::vector<int> prices,
                          int volume, int adjusted)
    {
        QStringList values{Quoted(symbol), Quoted(QString::fromUtf8(date))};
        for (const int price : prices)
            values << QString::number(price * 10000);
        values << QString::number(volume) << QString::number(adjusted * 10000);
        return QStringLiteral("INSERT INTO HistoricalPrices VALUES (%1)")
            .arg(values.join(QLatin1Char(',')));
    }

    const QString m_file = folder.File(QStringLiteral("HistPrices.xxx")); ///< copied at the start
};

} // namespace

// --- opening ------------------------------------------------------------------------------------

TEST_F(PriceList, ShowsItsColumnsInTheOrderOfTheTable)
{
    Price("ACME", "2026-02-27", 10, 13, 9, 12, 1234567, 6);
    OpenList();
    EXPECT_EQ(run.App().Host().Find(List)->Caption(), "Historical Price List");
    EXPECT_EQ(Prices().Captions(), QStringList({"Symbol", "Date", "Open", "Day High", "Day Low",
                                                "Close", "Volume", "Adj Close"}));
    EXPECT_EQ(Prices().DataFields(), QStringList({"Symbol", "PriceDate", "PriceOpen", "DayHigh",
                                                  "DayLow", "PriceClose", "Volume", "AdjClose"}));
    QStringList cells;
    for (int place = 0; place < 8; ++place)
        cells << Prices().CellText(0, place);
    EXPECT_EQ(cells, QStringList({"ACME", "2/27/2026", "10.0000", "13.0000", "9.0000", "12.0000",
                                  "1,234,567", "6.0000"}));
}

TEST_F(PriceList, ShowsAPriceThatTheSourceLeftOutAsAnEmptyCell)
{
    Price("ACME", "2026-02-27");
    folder.Execute(folder.File("HistPrices.xxx"),
                   "UPDATE HistoricalPrices SET Volume = NULL, AdjClose = NULL");
    OpenList();
    EXPECT_EQ(Prices().CellText(0, Prices().ColumnByCaption("Volume")), "");
    EXPECT_EQ(Prices().CellText(0, Prices().ColumnByCaption("Adj Close")), "");
}

TEST_F(PriceList, OpensOnAllSymbolsWhenNoneIsSelected)
{
    FiveDays();
    OpenList();
    EXPECT_EQ(Entries(), QStringList({"**-All", "ACME", "O'NEIL", "ZETA"}));
    EXPECT_EQ(Symbols().currentText(), "**-All");
    EXPECT_EQ(Rows(), "A27 A26 O26 O29 Z27"); // by symbol, the latest day first
    EXPECT_FALSE(State().run.OneSymbolOnly);
    EXPECT_EQ(CurrentSymbol(), "");
    EXPECT_EQ(Status(), "The transaction Date and time can be changed on the Grid");
    EXPECT_TRUE(run.Commands().Checked("mnuVWHistoricalPriceList"));
}

TEST_F(PriceList, OpensOnTheSymbolSelectedInTheDailyTracker)
{
    TwoPositions();
    FiveDays();
    Open();
    Select("ZETA");
    OpenList();
    EXPECT_EQ(Symbols().currentText(), "ZETA");
    EXPECT_EQ(Rows(), "Z27");
    EXPECT_TRUE(State().run.OneSymbolOnly);
    EXPECT_EQ(Status(), "The transaction Date and time can be changed on the Grid");
}

TEST_F(PriceList, OpensOnTheRowOfTheDailyTrackersPopup)
{
    TwoPositions();
    FiveDays();
    Open();
    Select("ACME");
    Choose("popDTViewHistoricalPrice");
    EXPECT_EQ(Symbols().currentText(), "ACME");
    EXPECT_EQ(Rows(), "A27 A26");
    EXPECT_TRUE(run.Commands().Checked("mnuVWHistoricalPriceList"));
}

TEST_F(PriceList, OpensOnAllSymbolsFromThePopupWithoutASelectedRow)
{
    FiveDays();
    Open();
    Choose("popDTViewHistoricalPrice");
    EXPECT_EQ(Symbols().currentText(), "**-All");
    EXPECT_EQ(Rows(), "A27 A26 O26 O29 Z27");
}

TEST_F(PriceList, StaysWithoutEntriesAndWithoutAllWhenThereAreNoPrices)
{
    OpenList();
    EXPECT_EQ(Entries(), QStringList());
    EXPECT_EQ(Symbols().currentText(), "");
    EXPECT_EQ(Symbols().placeholderText(), "");
    EXPECT_EQ(Prices().RowCount(), 0);
    ClickOK();
    ClickPriceHeader("Close");
    EXPECT_EQ(Status(), "Sort completed");
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(PriceList, NamesASelectedSymbolThatHasNoPrices)
{
    TwoPositions();
    Price("ACME", "2026-02-27");
    Open();
    Select("ZETA");
    OpenList();
    EXPECT_EQ(Entries(), QStringList({"**-All", "ACME"}));
    EXPECT_EQ(Symbols().currentText(), "");
    EXPECT_EQ(Symbols().placeholderText(), "ZETA");
    EXPECT_EQ(Prices().RowCount(), 0);
}

TEST_F(PriceList, LeavesRowsWithoutASymbolOutOfTheList)
{
    Price("", "2026-02-27");
    Price("ACME", "2026-02-26");
    OpenList();
    EXPECT_EQ(Entries(), QStringList({"**-All", "ACME"}));
    EXPECT_EQ(Rows(), "27 A26");
    Prices().SelectRow(0);
    EXPECT_EQ(CurrentSymbol(), "");
}

// --- the range ----------------------------------------------------------------------------------

TEST_F(PriceList, OpensOnEverythingUpToTodayUntilARangeIsChosen)
{
    FiveDays();
    OpenList();
    EXPECT_EQ(From().date(), QDate(1900, 1, 1));
    EXPECT_EQ(To().date(), QDate(2026, 3, 2));
    EXPECT_EQ(From().toolTip(), "1/1/1900");
    EXPECT_EQ(To().toolTip(), "3/2/2026");
    EXPECT_EQ(State().run.ListDateFrom, NoDate());
    EXPECT_EQ(State().run.ListDateTo, QDate(2026, 3, 2));
}

TEST_F(PriceList, ShowsTheRowsOfBothEndsOfTheRange)
{
    FiveDays();
    OpenList();
    From().setDate(QDate(2024, 2, 29)); // a leap day
    To().setDate(QDate(2026, 2, 26));
    EXPECT_EQ(Rows(), "A27 A26 O26 O29 Z27"); // until OK is pressed
    ClickOK();
    EXPECT_EQ(Rows(), "A26 O26 O29");
    EXPECT_EQ(Status(), "New date range selection complete");
    To().setDate(QDate(2024, 2, 28));
    ClickOK();
    EXPECT_EQ(Rows(), "");
}

TEST_F(PriceList, KeepsTheRangeBetweenOpenings)
{
    FiveDays();
    OpenList();
    From().setDate(QDate(2026, 2, 27));
    EXPECT_EQ(From().toolTip(), "2/27/2026");
    To().setDate(QDate(2026, 2, 28));
    EXPECT_EQ(State().run.ListDateFrom, QDate(2026, 2, 27));
    EXPECT_EQ(State().run.ListDateTo, QDate(2026, 2, 28));
    CloseList();
    OpenList();
    EXPECT_EQ(From().date(), QDate(2026, 2, 27));
    EXPECT_EQ(To().date(), QDate(2026, 2, 28));
    EXPECT_EQ(Rows(), "A27 Z27");
}

TEST_F(PriceList, TakesAFromDateOfTodayForNoLowerBound)
{
    FiveDays();
    OpenList();
    From().setDate(run.clock.Today());
    To().setDate(QDate(2026, 2, 26));
    ClickOK();
    EXPECT_EQ(From().date(), QDate(1900, 1, 1));
    EXPECT_EQ(State().run.ListDateFrom, NoDate());
    EXPECT_EQ(Rows(), "A26 O26 O29");
}

TEST_F(PriceList, OpensOnEverythingWhenTodayWasTheLowerBoundKept)
{
    FiveDays();
    OpenList();
    From().setDate(run.clock.Today());
    CloseList();
    OpenList();
    EXPECT_EQ(From().date(), QDate(1900, 1, 1));
    EXPECT_EQ(Rows(), "A27 A26 O26 O29 Z27");
}

TEST_F(PriceList, ShowsNothingWhenTheRangeEndsBeforeItBegins)
{
    FiveDays();
    OpenList();
    From().setDate(QDate(2026, 2, 27));
    To().setDate(QDate(2024, 2, 29));
    ClickOK();
    EXPECT_EQ(Prices().RowCount(), 0);
    EXPECT_TRUE(run.boxes.boxes.empty());
}

// --- the symbol ---------------------------------------------------------------------------------

TEST_F(PriceList, RestrictsItselfToTheSymbolChosen)
{
    FiveDays();
    OpenList();
    ChooseSymbol("O'NEIL");
    EXPECT_EQ(Rows(), "O26 O29");
    EXPECT_TRUE(State().run.OneSymbolOnly);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    EXPECT_EQ(Status(), "New date range selection complete");
    ChooseSymbol("**-All");
    EXPECT_EQ(Rows(), "A27 A26 O26 O29 Z27");
    EXPECT_FALSE(State().run.OneSymbolOnly);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
}

TEST_F(PriceList, SelectsTheNameOfThePositionWithTheSymbol)
{
    TwoPositions();
    FiveDays();
    Open();
    Select("ACME");
    OpenList();
    ChooseSymbol("ZETA");
    EXPECT_EQ(State().selection.CurrentName, "ZETA Inc.");
    ChooseSymbol("O'NEIL"); // no position: not the name of the one before
    EXPECT_EQ(State().selection.CurrentName, "");
}

TEST_F(PriceList, TakesOverTheSymbolSelectedMeanwhile)
{
    TwoPositions();
    FiveDays();
    Open();
    Select("ACME");
    OpenList();
    ChooseSymbol("**-All");
    State().screens.Show("frmDailyTracker");
    Select("ZETA");
    State().screens.Show(List);
    EXPECT_EQ(Symbols().currentText(), "ZETA");
    EXPECT_EQ(Rows(), "Z27");
    EXPECT_TRUE(State().run.OneSymbolOnly);
}

TEST_F(PriceList, ShowsWhatItsListSaysAfterTheMenuEntryWhileItIsOpen)
{
    TwoPositions();
    FiveDays();
    Open();
    Select("ACME");
    OpenList();
    Choose("mnuVWHistoricalPriceList");
    ClickOK();
    EXPECT_EQ(Symbols().currentText(), "ACME");
    EXPECT_EQ(Rows(), "A27 A26");
}

TEST_F(PriceList, SelectsTheSymbolOfTheRowClicked)
{
    FiveDays();
    OpenList();
    Prices().SelectRow(2);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL");
    EXPECT_EQ(Rows(), "A27 A26 O26 O29 Z27"); // still all
    State().priceUpdate.UpdateInProgress = true;
    Prices().SelectRow(4);
    EXPECT_EQ(CurrentSymbol(), "O'NEIL"); // a price cycle keeps its own
}

TEST_F(PriceList, MarksTheSymbolInTheDailyTracker)
{
    TwoPositions();
    FiveDays();
    Open();
    Select("ACME");
    OpenList();
    ChooseSymbol("ZETA");
    EXPECT_EQ(MarkedSymbol(), "ZETA");
    ChooseSymbol("O'NEIL"); // no position
    EXPECT_EQ(MarkedSymbol(), "ZETA");
}

TEST_F(PriceList, LetsTheDailyTrackersPopupWorkOnTheRowMarkedThere)
{
    TwoPositions();
    FiveDays();
    OpenList();
    ChooseSymbol("O'NEIL"); // no position
    State().screens.Show("frmDailyTracker");
    const QString marked = MarkedSymbol();
    Grid().RightClickCurrentRow();
    EXPECT_EQ(CurrentSymbol(), marked);
    run.App().MainWindow().Popup("popDailyTracker")->hide();
}

// --- after a download ---------------------------------------------------------------------------

TEST_F(PriceList, ShowsTheNewRowsOfADownloadWhileItIsOpen)
{
    Price("ACME", "2026-02-26");
    OpenList();
    Download("ACME", "2026-02-27");
    Download("ZETA", "2026-02-27");
    EXPECT_EQ(Rows(), "A26");
    RefreshPriceList(State());
    EXPECT_EQ(Rows(), "A27 A26 Z27");
    EXPECT_EQ(Entries(), QStringList({"**-All", "ACME", "ZETA"}));
    EXPECT_EQ(Symbols().currentText(), "**-All");
    EXPECT_EQ(Status(), "New date range selection complete");
}

TEST_F(PriceList, ShowsTheFirstDownloadEver)
{
    OpenList();
    Download("ACME", "2026-02-27");
    RefreshPriceList(State());
    EXPECT_EQ(Rows(), "A27");
    EXPECT_EQ(Symbols().currentText(), "**-All");
}

TEST_F(PriceList, KeepsItsOrderAndPlaceOverADownload)
{
    FiveDays();
    OpenList();
    ClickPriceHeader("Date");
    Prices().SelectRow(3);
    Download("ACME", "2026-02-20");
    RefreshPriceList(State());
    EXPECT_EQ(Rows(), "A27 Z27 A26 O26 A20 O29");
    EXPECT_EQ(Prices().CurrentRow(), 3);
}

TEST_F(PriceList, IsLeftAloneByADownloadWhileItIsClosed)
{
    Open();
    const QString before = Status();
    RefreshPriceList(State());
    EXPECT_FALSE(run.App().Host().Loaded(List));
    EXPECT_EQ(Status(), before);
}

TEST_F(PriceList, IsNotWaitedForByAPosting)
{
    OpenList();
    const QDateTime before = run.clock.Now();
    RefreshListsAfterPosting(State()); // no posting writes a daily price
    EXPECT_EQ(run.clock.Now(), before);
}

// --- sorting ------------------------------------------------------------------------------------

struct ColumnOrder
{
    const char *caption;
    const char *ascending;
    const char *descending;
};

// The days, as open, high, low, close, volume, adjusted close:
//   A26  10 12  9 11 500 11      A27  11 13 10 12 400 12      Z27  11 12 10 11 400 11
//   O26  10 14  8  9 500  9      O29  20 21  8 20 100 10, of the year 2024
const ColumnOrder columnOrders[] = {
    {"Symbol", "A27 A26 O26 O29 Z27", "Z27 O26 O29 A27 A26"},
    {"Date", "O29 A26 O26 A27 Z27", "A27 Z27 A26 O26 O29"},
    {"Open", "A26 O26 A27 Z27 O29", "O29 A27 Z27 A26 O26"},
    {"Day High", "A26 Z27 A27 O26 O29", "O29 O26 A27 A26 Z27"},
    {"Day Low", "O26 O29 A26 A27 Z27", "A27 Z27 A26 O26 O29"},
    {"Close", "O26 A26 Z27 A27 O29", "O29 A27 A26 Z27 O26"},
    {"Volume", "O29 A27 Z27 A26 O26", "A26 O26 A27 Z27 O29"},
    {"Adj Close", "O26 O29 A26 Z27 A27", "A27 A26 Z27 O29 O26"},
};

TEST_F(PriceList, SortsByEveryHeadingInBothDirections)
{
    FiveDays();
    OpenList();
    for (const ColumnOrder &order : columnOrders) {
        ClickPriceHeader(order.caption);
        EXPECT_EQ(Rows(), order.descending) << order.caption;
        EXPECT_EQ(Status(), "Sort completed");
        ClickPriceHeader(order.caption);
        EXPECT_EQ(Rows(), order.ascending) << order.caption;
    }
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(PriceList, SortsTheSameInSplitMode)
{
    FiveDays();
    OpenList();
    Choose("popHPLSplitMode");
    for (const ColumnOrder &order : columnOrders) {
        ClickPriceHeader(order.caption);
        EXPECT_EQ(Rows(), order.descending) << order.caption;
        ClickPriceHeader(order.caption);
        EXPECT_EQ(Rows(), order.ascending) << order.caption;
    }
}

TEST_F(PriceList, GoesOnWithTheDirectionOnAnotherHeading)
{
    FiveDays();
    OpenList();
    ClickPriceHeader("Open");
    ClickPriceHeader("Close");
    EXPECT_EQ(Rows(), "O26 A26 Z27 A27 O29"); // ascending
}

TEST_F(PriceList, KeepsTheOrderForTheNextQuery)
{
    FiveDays();
    OpenList();
    ClickPriceHeader("Volume");
    To().setDate(QDate(2026, 2, 26));
    ClickOK();
    EXPECT_EQ(Rows(), "A26 O26 O29");
    ChooseSymbol("O'NEIL");
    EXPECT_EQ(Rows(), "O26 O29");
}

TEST_F(PriceList, GoesToTheFirstRowOfTheNewOrder)
{
    FiveDays();
    OpenList();
    Prices().SelectRow(3);
    ClickPriceHeader("Symbol");
    EXPECT_EQ(Prices().CurrentRow(), 0);
    EXPECT_EQ(CurrentSymbol(), "ZETA");
}

TEST(PriceOrder, IsNoneForAFieldThatIsNotOfTheList)
{
    EXPECT_EQ(PriceOrderFor("Name", false), std::nullopt);
    EXPECT_EQ(PriceOrderFor("", true), std::nullopt);
    EXPECT_EQ(PriceOrderFor("PriceDate", true), "ORDER BY PriceDate DESC, Symbol");
    EXPECT_EQ(InitialPriceOrder(), "ORDER BY Symbol, PriceDate DESC");
}

// --- mouse and popup ----------------------------------------------------------------------------

TEST_F(PriceList, GivesItsToolTipForTheFirstTwoClicks)
{
    FiveDays();
    OpenList();
    const QString hint = "Click on column headings to sort that column.";
    Prices().SelectRow(0);
    EXPECT_EQ(Prices().toolTip(), hint);
    Prices().SelectRow(1);
    EXPECT_EQ(Prices().toolTip(), hint);
    Prices().SelectRow(1);
    EXPECT_EQ(Prices().toolTip(), "");
    CloseList();
    OpenList();
    EXPECT_EQ(Prices().toolTip(), hint);
}

TEST_F(PriceList, ShowsItsPopupOnARightClick)
{
    FiveDays();
    OpenList();
    Prices().SelectRow(4);
    Prices().RightClickCurrentRow();
    QMenu *popup = run.App().MainWindow().Popup("popHistoricalPriceList");
    EXPECT_TRUE(popup->isVisible());
    EXPECT_EQ(CurrentSymbol(), "ZETA");
    popup->hide();
}

TEST_F(PriceList, TakesTheColourOfTheUsersChoice)
{
    OpenList();
    EXPECT_NE(State().settings.HPDataGridColor, 0); // the grid's own is captured
    run.boxes.color = 0xFFE0C0;
    Choose("popHPLHistoricalGridColor");
    EXPECT_EQ(Prices().BackColor(), 0xFFFFE0C0);
    EXPECT_EQ(State().settings.HPDataGridColor, 0xC0E0FF); // blue in the highest byte
    run.boxes.color.reset();
    Choose("popHPLHistoricalGridColor"); // cancelled
    EXPECT_EQ(Prices().BackColor(), 0xFFFFE0C0);
    CloseList();
    OpenList();
    EXPECT_EQ(Prices().BackColor(), 0xFFFFE0C0);
}

TEST_F(PriceList, OpensTheChartOfTheDailyPrices)
{
    OpenList();
    Choose("popHPLChart");
    EXPECT_TRUE(run.App().Host().Loaded("frmChartScreen"));
    EXPECT_TRUE(run.Commands().Checked("mnuChartHistoricalPrices"));
}

TEST_F(PriceList, PrintsThroughTheOptionsOfItsReport)
{
    OpenList();
    QString caption;
    run.WhenModal("frmDateSelect", [&] {
        caption = run.App().Host().Find("frmDateSelect")->Caption();
        run.App().Host().Unload("frmDateSelect");
    });
    Choose("popHPLPrintExcel");
    EXPECT_EQ(caption, "Historical Price List - Option selection");
}

TEST_F(PriceList, AsksForTheDialogOfDeletes)
{
    FiveDays();
    OpenList();
    QString caption;
    run.WhenModal("frmDeleteOptions", [&] {
        caption = run.App().Host().Find("frmDeleteOptions")->Caption();
        run.Control<QPushButton>("frmDeleteOptions", "cmdCancel")->click();
    });
    Screen().DeleteRowEntry();
    EXPECT_EQ(Screen().focusWidget(), run.Control<QPushButton>(List, "cmdClose"));
    EXPECT_EQ(caption, "Delete Options"); // daily prices are none of its tables
}

// --- split mode ---------------------------------------------------------------------------------

TEST_F(PriceList, SplitsItsGridAndPutsItTogetherAgain)
{
    FiveDays();
    OpenList();
    const QStringList captions = Prices().Captions();
    EXPECT_EQ(Prices().MarqueeStyle(), Marquee::RowAndCell);
    Choose("popHPLSplitMode");
    EXPECT_TRUE(Prices().IsSplit());
    EXPECT_EQ(Prices().MarqueeStyle(), Marquee::Row);
    EXPECT_EQ(SplitCaption(), "Undo Split");
    Choose("popHPLSplitMode");
    EXPECT_FALSE(Prices().IsSplit());
    EXPECT_EQ(Prices().MarqueeStyle(), Marquee::RowAndCell);
    EXPECT_EQ(SplitCaption(), "Split Mode");
    EXPECT_EQ(Prices().Captions(), captions); // the symbol once
}

TEST_F(PriceList, OpensInOnePaneAfterAClosingInSplitMode)
{
    FiveDays();
    OpenList();
    Choose("popHPLSplitMode");
    CloseList();
    EXPECT_EQ(SplitCaption(), "Split Mode");
    OpenList();
    EXPECT_FALSE(Prices().IsSplit());
    EXPECT_EQ(SplitCaption(), "Split Mode");
}

TEST_F(PriceList, StaysSplitOverAnotherRange)
{
    FiveDays();
    OpenList();
    Choose("popHPLSplitMode");
    ClickOK();
    EXPECT_TRUE(Prices().IsSplit());
    EXPECT_EQ(SplitCaption(), "Undo Split");
}

TEST_F(PriceList, IsSplitByTheToolbarApartFromTheDailyTracker)
{
    TwoPositions();
    FiveDays();
    OpenList();
    Choose("SplitScreen");
    EXPECT_TRUE(Prices().IsSplit());
    EXPECT_FALSE(Grid().IsSplit());
    EXPECT_EQ(run.Commands().Caption("popDTSplitMode"), "Split Mode");
}

// --- closing ------------------------------------------------------------------------------------

TEST_F(PriceList, LeavesNothingBehindWhenItCloses)
{
    TwoPositions();
    FiveDays();
    OpenList();
    ASSERT_TRUE(State().run.OneSymbolOnly);
    State().run.IdleMinutes = 7;
    run.Control<QPushButton>(List, "cmdClose")->click();
    EXPECT_FALSE(run.App().Host().Loaded(List));
    EXPECT_FALSE(State().run.OneSymbolOnly);
    EXPECT_FALSE(run.Commands().Checked("mnuVWHistoricalPriceList"));
    EXPECT_EQ(Status(), "");
    EXPECT_EQ(State().run.IdleMinutes, 0);
}

TEST_F(PriceList, OpensItsHelp)
{
    OpenList();
    run.Control<QPushButton>(List, "cmdHelp")->click();
    // The folder of a test has no help.
    EXPECT_EQ(Status(), "The help topic HPHistoricalPriceList.html was not found");
}
