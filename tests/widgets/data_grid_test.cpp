#include "platform/widgets/colors.h"
#include "platform/widgets/data_grid.h"
#include "widgets/rows.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QToolTip>

namespace
{

/// A shown grid with the three positions, which writes down what it tells.
struct Shown
{
    explicit Shown(int rows = 3, std::vector<GridColumn> columns = PositionColumns())
        : source(Positions(rows))
    {
        grid.SetSource(std::move(columns), &source);
        grid.OnRowColChange = [this] {
            told << QString("row %1 column %2").arg(grid.CurrentRow()).arg(grid.CurrentColumn());
        };
        grid.OnClick = [this](int row) { told << QString("click %1").arg(row); };
        grid.OnHeaderClick = [this](int column) { told << QString("header %1").arg(column); };
        grid.OnMouseUp = [this](Qt::MouseButton button) { told << QString("up %1").arg(button); };
        grid.OnContextMenu = [this](const QPoint &) {
            told << QString("menu %1").arg(grid.CurrentRow());
        };
        Show(grid);
    }
    void HandleDoubleClicks()
    {
        grid.OnDoubleClick = [this](int row) { told << QString("double %1").arg(row); };
    }
    QTableView *Pane(int place)
    {
        return dynamic_cast<QTableView *>(grid.CellTarget(0, place).widget->parent());
    }

    Rows source;
    DataGrid grid;
    QStringList told;
};

int ShownTables(DataGrid &grid)
{
    int shown = 0;
    for (auto *table : grid.findChildren<QTableView *>())
        shown += table->isVisible() ? 1 : 0;
    return shown;
}

} // namespace

TEST(DataGrid, ShowsTheColumnsThatAreNotHiddenWithTheirCaptionsAsTheyStand)
{
    Shown shown;
    EXPECT_EQ(shown.grid.Captions(), QStringList({"Symbol", "% Gain ", "P&L To Date ", "Name"}));
    EXPECT_EQ(shown.grid.RowCount(), 3);
    EXPECT_EQ(shown.grid.CellText(1, 0), "O'NEIL");
    EXPECT_EQ(shown.grid.CellText(1, 3), "O'Neil & Sons");
    EXPECT_EQ(shown.grid.ColumnAt(3), 4);
}

TEST(DataGrid, FindsAColumnByItsCaptionWithAndWithoutTheBlanks)
{
    Rows source;
    DataGrid grid;
    grid.SetSource({{"Trans Today ", "A"}, {"Trans Today", "B"}, {"% Gain ", "C"}}, &source);
    EXPECT_EQ(grid.ColumnByCaption("Trans Today"), 1);
    EXPECT_EQ(grid.ColumnByCaption("Trans Today "), 0);
    EXPECT_EQ(grid.ColumnByCaption("% Gain"), 2);
    EXPECT_EQ(grid.ColumnByCaption("Price"), -1);
}

TEST(DataGrid, HasEmptyTextsAndTakesNoClicksOutOfRange)
{
    Shown shown;
    EXPECT_EQ(shown.grid.CellText(3, 0), "");
    EXPECT_EQ(shown.grid.CellText(-1, 0), "");
    EXPECT_EQ(shown.grid.CellText(0, 4), "");
    EXPECT_EQ(shown.grid.CellText(0, -1), "");
    EXPECT_FALSE(shown.grid.SelectRow(3));
    EXPECT_FALSE(shown.grid.SelectRow(-1));
    EXPECT_FALSE(shown.grid.ClickHeader(4));
    EXPECT_FALSE(shown.grid.SetCurrentRow(3));
    EXPECT_EQ(shown.told, QStringList());
}

TEST(DataGrid, OpensOnItsFirstRowAndTellsNobody)
{
    Shown shown;
    EXPECT_EQ(shown.grid.CurrentRow(), 0);
    EXPECT_EQ(shown.told, QStringList());
}

TEST(DataGrid, HasNoCurrentRowWhenItIsEmptyAndStillBringsUpThePopup)
{
    Shown shown(0);
    EXPECT_EQ(shown.grid.CurrentRow(), -1);
    EXPECT_TRUE(shown.grid.RightClickCurrentRow());
    EXPECT_EQ(shown.told, QStringList({"up 2", "menu -1"}));
}

TEST(DataGrid, TellsTheRowBeforeTheClickThatMadeItCurrent)
{
    Shown shown;
    ASSERT_TRUE(shown.grid.SelectRow(1));
    EXPECT_EQ(shown.told, QStringList({"row 1 column 0", "up 1", "click 1"}));
    shown.told.clear();
    ASSERT_TRUE(shown.grid.SelectRow(1)); // the same row again: a click alone
    EXPECT_EQ(shown.told, QStringList({"up 1", "click 1"}));
}

TEST(DataGrid, TellsNoClickWhenTheMouseGoesUpOnAnotherRow)
{
    Shown shown;
    const auto from = shown.grid.CellTarget(0, 0);
    const auto to = shown.grid.CellTarget(2, 0);
    for (const auto &[type, at] : {std::pair(QEvent::MouseButtonPress, from.center),
                                   std::pair(QEvent::MouseButtonRelease, to.center)}) {
        QMouseEvent event(type, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(from.widget, &event);
    }
    EXPECT_EQ(shown.told, QStringList({"up 1"}));
}

TEST(DataGrid, SelectsTheRowUnderTheMouseBeforeThePopupComes)
{
    Shown shown;
    const auto target = shown.grid.CellTarget(2, 0);
    QMouseEvent release(QEvent::MouseButtonRelease, target.center, target.center, Qt::RightButton,
                        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(target.widget, &release);
    EXPECT_EQ(shown.told, QStringList({"row 2 column 0", "up 2", "menu 2"}));
}

TEST(DataGrid, BringsUpThePopupOfTheCurrentRowOnceForARightClick)
{
    Shown shown;
    shown.grid.SetCurrentRow(1);
    shown.told.clear();
    ASSERT_TRUE(shown.grid.RightClickCurrentRow());
    EXPECT_EQ(shown.told, QStringList({"up 2", "menu 1"}));
}

TEST(DataGrid, BringsUpThePopupForTheMenuKey)
{
    Shown shown;
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(shown.Pane(0), &key);
    EXPECT_EQ(shown.told, QStringList({"menu 0"}));
}

TEST(DataGrid, TellsOneClickAndThenTheDoubleClick)
{
    Shown shown;
    shown.HandleDoubleClicks();
    ASSERT_TRUE(shown.grid.DoubleClickRow(1));
    EXPECT_EQ(shown.told, QStringList({"row 1 column 0", "up 1", "click 1", "double 1", "up 1"}));
}

TEST(DataGrid, TellsADoubleClickBelowTheRowsWithoutARow)
{
    Shown shown;
    shown.HandleDoubleClicks();
    QWidget *viewport = shown.grid.CellTarget(0, 0).widget;
    QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier,
                       viewport->rect().bottomLeft() + QPoint(5, -5));
    EXPECT_EQ(shown.told, QStringList({"double -1"}));
}

TEST(DataGrid, MayBeTakenAwayByAHandler)
{
    for (const char *event : {"row", "click", "double", "menu", "header"}) {
        Rows source(Positions());
        QPointer<DataGrid> grid = new DataGrid;
        grid->SetSource(PositionColumns(), &source);
        Show(*grid);
        const auto unload = [grid] { delete grid; };
        const QString name = event;
        if (name == "row")
            grid->OnMouseUp = [unload](Qt::MouseButton) { unload(); };
        else if (name == "click")
            grid->OnClick = [unload](int) { unload(); };
        else if (name == "double")
            grid->OnDoubleClick = [unload](int) { unload(); };
        else if (name == "menu")
            grid->OnContextMenu = [unload](const QPoint &) { unload(); };
        else
            grid->OnHeaderClick = [grid](int) { grid->deleteLater(); };
        if (name == "double")
            grid->DoubleClickRow(1);
        else if (name == "menu")
            grid->RightClickCurrentRow();
        else if (name == "header")
            grid->ClickHeader(0);
        else
            grid->SelectRow(1);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(grid.isNull()) << event;
    }
}

TEST(DataGrid, MovesByTheKeysOverRowsAndShownColumns)
{
    Shown shown(1000);
    shown.HandleDoubleClicks();
    QWidget *pane = shown.Pane(0);
    Press(pane, Qt::Key_Down);
    Press(pane, Qt::Key_Right);
    EXPECT_EQ(shown.grid.CurrentRow(), 1);
    EXPECT_EQ(shown.grid.CurrentColumn(), 1);
    Press(pane, Qt::Key_End);
    EXPECT_EQ(shown.grid.CurrentRow(), 999);
    Press(pane, Qt::Key_Down);
    EXPECT_EQ(shown.grid.CurrentRow(), 999);
    Press(pane, Qt::Key_PageUp);
    const int page = 999 - shown.grid.CurrentRow();
    EXPECT_GT(page, 5);
    EXPECT_LT(page, 30);
    Press(pane, Qt::Key_PageDown);
    EXPECT_EQ(shown.grid.CurrentRow(), 999);
    Press(pane, Qt::Key_Home);
    EXPECT_EQ(shown.grid.CurrentRow(), 0);
    for (int step = 0; step < 9; ++step)
        Press(pane, Qt::Key_Right);
    EXPECT_EQ(shown.grid.CurrentColumn(), 4); // the hidden column was passed over
    shown.told.clear();
    Press(pane, Qt::Key_Return);
    EXPECT_EQ(shown.told, QStringList({"double 0"}));
}

TEST(DataGrid, LeavesEnterEscapeAndAltToTheForm)
{
    struct Window : QWidget
    {
        void keyPressEvent(QKeyEvent *event) override { keys << event->key(); }
        QList<int> keys;
    } form;
    Rows source(Positions());
    DataGrid grid(&form);
    grid.SetSource(PositionColumns(), &source);
    Show(form);
    grid.setFocus();
    PressFocused(Qt::Key_Return);
    PressFocused(Qt::Key_Escape);
    PressFocused(Qt::Key_Q, "q", Qt::AltModifier);
    EXPECT_EQ(form.keys, QList<int>({Qt::Key_Return, Qt::Key_Escape, Qt::Key_Q}));
    EXPECT_EQ(grid.CurrentRow(), 0);
}

TEST(DataGrid, FindsARowByItsFirstLetters)
{
    Shown shown;
    Press(shown.Pane(0), Qt::Key_Z, "z");
    EXPECT_EQ(shown.grid.CurrentRow(), 2);
}

TEST(DataGrid, CopiesTheSelectedRowsAsTabSeparatedText)
{
    Shown shown;
    Press(shown.Pane(0), Qt::Key_Down, {}, Qt::ShiftModifier);
    Press(shown.Pane(0), Qt::Key_C, "\x03", Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "ACME\t1.25%\t250.00\tAcme Works\n"
                                                 "O'NEIL\t-3.10%\t-12.50\tO'Neil & Sons");
    Press(shown.Pane(0), Qt::Key_Down, {}, Qt::ShiftModifier);
    Press(shown.Pane(0), Qt::Key_Up, {}, Qt::ShiftModifier);
    Press(shown.Pane(0), Qt::Key_Up, {}, Qt::ShiftModifier);
    Press(shown.Pane(0), Qt::Key_C, "\x03", Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "ACME\t1.25%\t250.00\tAcme Works");
}

TEST(DataGrid, TellsAClickOnAHeadingAndShowsOnlyTheArrowItIsTold)
{
    Shown shown;
    auto *header = shown.Pane(0)->horizontalHeader();
    ASSERT_TRUE(shown.grid.ClickHeader(3));
    EXPECT_EQ(shown.told, QStringList({"header 4"}));
    EXPECT_FALSE(header->isSortIndicatorShown());
    shown.grid.SetSortIndicator(1, true);
    ASSERT_TRUE(shown.grid.ClickHeader(0));
    EXPECT_TRUE(header->isSortIndicatorShown());
    EXPECT_EQ(header->sortIndicatorSection(), 1);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
    shown.grid.SetSortIndicator(-1, false);
    EXPECT_FALSE(header->isSortIndicatorShown());
    EXPECT_EQ(shown.grid.CellText(0, 0), "ACME"); // nothing was sorted here
}

TEST(DataGrid, KeepsRowAndPlaceOverARefresh)
{
    Shown shown(1000);
    auto *bar = shown.Pane(0)->verticalScrollBar();
    shown.grid.SetCurrentRow(500);
    bar->setValue(300);
    shown.told.clear();
    shown.source.All()[500][0] = "NEW";
    shown.source.All().resize(1200);
    shown.grid.RefreshRows();
    EXPECT_EQ(shown.grid.CurrentRow(), 500);
    EXPECT_EQ(bar->value(), 300);
    EXPECT_EQ(shown.grid.CellText(500, 0), "NEW");
    shown.source.All().resize(700);
    shown.grid.RefreshRows();
    EXPECT_EQ(shown.grid.CurrentRow(), 500);
    EXPECT_EQ(bar->value(), 300);
    EXPECT_EQ(shown.grid.RowCount(), 700);
    EXPECT_EQ(shown.told, QStringList());
}

TEST(DataGrid, FallsBackToTheLastRowWhenTheCurrentOneIsGone)
{
    Shown shown;
    shown.grid.SetCurrentRow(2);
    shown.told.clear();
    shown.source.All().resize(2);
    EXPECT_EQ(shown.grid.CellText(2, 0), ""); // gone already, and the grid not yet told
    shown.grid.RefreshRows();
    EXPECT_EQ(shown.grid.CurrentRow(), 1);
    shown.source.All().clear();
    shown.grid.RefreshRows();
    EXPECT_EQ(shown.grid.CurrentRow(), -1);
    shown.source.All() = Positions();
    shown.grid.RefreshRows();
    EXPECT_EQ(shown.grid.CurrentRow(), 0);
    EXPECT_EQ(shown.told, QStringList());
}

TEST(DataGrid, AsksForTheRowsInViewAlone)
{
    // 200 rows of 4 shown columns are measured; some 15 rows are in view, drawn a few times.
    Rows source(Positions(100'000));
    DataGrid grid;
    grid.SetSource(PositionColumns(), &source);
    Show(grid);
    EXPECT_LE(source.asked, 200 * 4 + 2000);
    EXPECT_GT(source.asked, 200 * 4);

    source.asked = 0;
    grid.SetCurrentRow(99'999);
    QApplication::processEvents();
    grid.RefreshRows();
    QApplication::processEvents();
    grid.EnterSplit();
    QApplication::processEvents();
    grid.SelectRow(50'000);
    QApplication::processEvents();
    EXPECT_LE(source.asked, 6000);
    EXPECT_EQ(grid.CurrentRow(), 50'000);
    EXPECT_EQ(grid.findChildren<QWidget *>().size(), [] {
        Rows few(Positions(3));
        DataGrid small;
        small.SetSource(PositionColumns(), &few);
        Show(small);
        small.EnterSplit();
        QApplication::processEvents();
        return small.findChildren<QWidget *>().size();
    }());
}

TEST(DataGrid, WidensAColumnForItsCaptionAndItsFirstRows)
{
    Rows source(std::vector<QStringList>{{"AB", QString(40, 'W')}, {"AB", QString(4000, 'W')}});
    DataGrid grid;
    grid.SetSource({{"A caption that is long", "A"}, {"B", "B"}, {"C", "C", Qt::AlignLeft, 77}},
                   &source);
    auto *header = grid.findChildren<QTableView *>().last()->horizontalHeader();
    const int caption = grid.fontMetrics().horizontalAdvance("A caption that is long");
    EXPECT_GT(header->sectionSize(0), caption);
    EXPECT_GT(header->sectionSize(1), 100);
    EXPECT_LT(header->sectionSize(1), 600); // one long text does not push the others out of view
    EXPECT_EQ(header->sectionSize(2), 77);
}

TEST(DataGrid, ShowsTextThatCanBeReadOnEveryBackColour)
{
    for (const bool dark : {false, true}) {
        QPalette palette;
        palette.setColor(QPalette::Base, dark ? QColor(30, 30, 30) : QColor(Qt::white));
        palette.setColor(QPalette::Text, dark ? QColor(Qt::white) : QColor(Qt::black));
        Shown shown;
        shown.grid.setPalette(palette);
        EXPECT_EQ(shown.grid.BackColor(), palette.color(QPalette::Base).rgb());
        for (const QRgb color : {0xFFFFFFFFu, 0xFF000000u, 0xFFFFFF8Au, 0xFF000080u, 0xFF808080u,
                                 0xFF308CC6u, 0xFFFF0000u}) {
            shown.grid.SetBackColor(color);
            EXPECT_EQ(shown.grid.BackColor(), color);
            const QPalette used = shown.Pane(0)->palette();
            EXPECT_EQ(used.color(QPalette::Base).rgb(), color);
            const QColor text = used.color(QPalette::Text);
            EXPECT_GE(Contrast(QColor(color), text), 4.5) << std::hex << color;
            EXPECT_GE(Contrast(used.color(QPalette::AlternateBase), text), 4.5)
                << std::hex << color;
            EXPECT_GE(Contrast(used.color(QPalette::Highlight), QColor(color)), 1.5)
                << std::hex << color;
        }
    }
}

TEST(DataGrid, TurnsAColourValueIntoAColourAndBack)
{
    EXPECT_EQ(ColorOfValue(0x8AFFFF), qRgb(255, 255, 0x8A));
    EXPECT_EQ(ColorOfValue(0x80C0FF), qRgb(255, 0xC0, 0x80));
    EXPECT_EQ(ValueOfColor(qRgb(255, 255, 0x8A)), 0x8AFFFF);
    EXPECT_EQ(ColorOfValue(ValueOfColor(qRgb(1, 2, 3))), qRgb(1, 2, 3));
}

TEST(DataGrid, ShowsTheToolTipOfTheGridOverItsCells)
{
    Shown shown;
    shown.grid.setToolTip("Click to select row");
    const auto target = shown.grid.CellTarget(0, 0);
    QHelpEvent help(QEvent::ToolTip, target.center, target.widget->mapToGlobal(target.center));
    QApplication::sendEvent(target.widget, &help);
    EXPECT_EQ(QToolTip::text(), "Click to select row");
    QToolTip::hideText();
}

TEST(DataGrid, ShowsTheWholeOfATextThatIsCutOffInsteadOfItsToolTip)
{
    const QString address = QString(120, 'a') + "<b>";
    Rows source(std::vector<QStringList>{{"ACME", address}});
    DataGrid grid;
    grid.setToolTip("Click to select row");
    grid.SetSource({{"Symbol", "Symbol"}, {"Address", "Address", Qt::AlignLeft, 80}}, &source);
    Show(grid);
    const auto tipOver = [&](int place) {
        const auto target = grid.CellTarget(0, place);
        QHelpEvent help(QEvent::ToolTip, target.center, target.widget->mapToGlobal(target.center));
        QApplication::sendEvent(target.widget, &help);
        const QString tip = QToolTip::text();
        QToolTip::hideText();
        return tip;
    };
    EXPECT_EQ(tipOver(1), "<qt>" + address.toHtmlEscaped() + "</qt>");
    EXPECT_EQ(tipOver(0), "Click to select row");
}

TEST(DataGrid, TellsItsNameToAScreenReader)
{
    Rows source(Positions());
    DataGrid grid;
    grid.setAccessibleName("Positions");
    grid.SetSource(PositionColumns(), &source);
    Show(grid);
    EXPECT_EQ(grid.Viewport()->parentWidget()->accessibleName(), "Positions");
}

TEST(DataGrid, PointsTheSortArrowUpWhereValuesRise)
{
    Shown shown;
    auto *heading = shown.Pane(0)->horizontalHeader();
    shown.grid.SetSortIndicator(0, false);
    EXPECT_EQ(SortArrow(*heading), "up");
    shown.grid.SetSortIndicator(0, true);
    EXPECT_EQ(SortArrow(*heading), "down");
    shown.grid.SetSortIndicator(-1, false);
    EXPECT_EQ(SortArrow(*heading), "none");
}

// --- split mode ---------------------------------------------------------------------------------

TEST(DataGridSplit, HoldsTheSymbolAloneOnTheLeft)
{
    Shown shown;
    shown.grid.EnterSplit();
    QApplication::processEvents();
    EXPECT_TRUE(shown.grid.IsSplit());
    EXPECT_EQ(ShownTables(shown.grid), 2);
    EXPECT_EQ(shown.grid.Captions(), QStringList({"Symbol", "% Gain ", "P&L To Date ", "Name"}));
    EXPECT_NE(shown.Pane(0), shown.Pane(1));
    EXPECT_EQ(shown.Pane(1), shown.Pane(3));
    EXPECT_EQ(shown.grid.MarqueeStyle(), Marquee::Row);
    EXPECT_EQ(shown.Pane(0)->viewport()->height(), shown.Pane(1)->viewport()->height());
    EXPECT_EQ(shown.Pane(0)->horizontalHeader()->height(),
              shown.Pane(1)->horizontalHeader()->height());
}

TEST(DataGridSplit, HasAScrollBarOnlyWhereThereIsSomethingToScroll)
{
    Shown wide;
    wide.grid.EnterSplit();
    QApplication::processEvents();
    EXPECT_FALSE(wide.Pane(0)->horizontalScrollBar()->isVisible());
    EXPECT_FALSE(wide.Pane(1)->horizontalScrollBar()->isVisible());

    Shown narrow(500);
    narrow.grid.resize(260, 300);
    narrow.grid.EnterSplit();
    QApplication::processEvents();
    EXPECT_FALSE(narrow.Pane(0)->horizontalScrollBar()->isVisible());
    EXPECT_TRUE(narrow.Pane(1)->horizontalScrollBar()->isVisible());
}

TEST(DataGridSplit, HasTheSameRowsSideBySideInEverySize)
{
    Shown shown(500);
    shown.grid.EnterSplit();
    // With a scroll bar below the columns, and without.
    for (const QSize size : {QSize(600, 300), QSize(260, 300), QSize(260, 120), QSize(900, 300),
                             QSize(250, 200), QSize(900, 120)}) {
        shown.grid.resize(size);
        QApplication::processEvents();
        QApplication::processEvents(); // the scroll bar has come or gone in the first
        for (const int row : {0, 499}) {
            ASSERT_TRUE(shown.grid.SelectRow(row, 1));
            const auto left = shown.grid.CellTarget(row, 0);
            const auto right = shown.grid.CellTarget(row, 1);
            EXPECT_EQ(left.widget->mapToGlobal(left.center).y(),
                      right.widget->mapToGlobal(right.center).y())
                << size.width() << "x" << size.height();
        }
        EXPECT_EQ(shown.Pane(0)->viewport()->height(), shown.Pane(1)->viewport()->height());
    }
    shown.grid.hide();
    shown.grid.resize(400, 80); // which the panes learn one after the other, when they are shown
    shown.grid.show();
    QApplication::processEvents();
    EXPECT_EQ(shown.Pane(0)->viewport()->height(), shown.Pane(1)->viewport()->height());
    shown.grid.LeaveSplit();
    QApplication::processEvents();
    EXPECT_EQ(shown.Pane(1)->height(), shown.grid.height());
}

TEST(DataGridSplit, ShowsTheSymbolOnceAfterTwoToggles)
{
    Shown shown;
    const QStringList before = shown.grid.Captions();
    shown.grid.EnterSplit();
    shown.grid.LeaveSplit();
    QApplication::processEvents();
    EXPECT_FALSE(shown.grid.IsSplit());
    EXPECT_EQ(ShownTables(shown.grid), 1);
    EXPECT_EQ(shown.grid.Captions(), before);
    EXPECT_EQ(shown.Pane(0), shown.Pane(3));
    EXPECT_EQ(shown.grid.MarqueeStyle(), Marquee::RowAndCell);
}

TEST(DataGridSplit, PutsTheSymbolFirstWhereverItStands)
{
    Rows source(std::vector<QStringList>{{"Acme Works", "ACME"}});
    DataGrid grid;
    grid.SetSource({{"Name", "Name"}, {"Symbol", "Symbol"}}, &source);
    Show(grid);
    grid.EnterSplit();
    EXPECT_EQ(grid.Captions(), QStringList({"Symbol", "Name"}));
    EXPECT_EQ(grid.CellText(0, 0), "ACME");
    grid.LeaveSplit();
    EXPECT_EQ(grid.Captions(), QStringList({"Name", "Symbol"}));
}

TEST(DataGridSplit, DoesNothingWithoutASymbolColumn)
{
    Rows source(std::vector<QStringList>{{"Acme Works"}});
    DataGrid grid;
    grid.SetSource({{"Name", "Name"}}, &source);
    grid.EnterSplit();
    EXPECT_FALSE(grid.IsSplit());
    EXPECT_EQ(grid.Captions(), QStringList({"Name"}));
}

TEST(DataGridSplit, SharesRowSelectionAndScrollPosition)
{
    Shown shown(500);
    shown.grid.EnterSplit();
    QApplication::processEvents();
    ASSERT_TRUE(shown.grid.SelectRow(300, 2));
    EXPECT_EQ(shown.told, QStringList({"row 300 column 2", "up 1", "click 300"}));
    EXPECT_EQ(shown.Pane(0)->currentIndex().row(), 300);
    const auto *left = shown.Pane(0)->verticalScrollBar();
    auto *right = shown.Pane(1)->verticalScrollBar();
    right->setValue(120);
    EXPECT_EQ(left->value(), 120);
    right->setValue(right->maximum());
    EXPECT_EQ(left->value(), right->value());
    shown.told.clear();
    ASSERT_TRUE(shown.grid.SelectRow(301, 0));
    EXPECT_EQ(shown.told, QStringList({"row 301 column 0", "up 1", "click 301"}));
    Press(shown.Pane(1), Qt::Key_PageDown); // from a cell that this pane hides
    EXPECT_GT(shown.grid.CurrentRow(), 305);
}

TEST(DataGridSplit, TellsHeadingsOfBothPanes)
{
    Shown shown;
    shown.grid.EnterSplit();
    QApplication::processEvents();
    shown.grid.ClickHeader(0);
    shown.grid.ClickHeader(1);
    EXPECT_EQ(shown.told, QStringList({"header 0", "header 1"}));
}

TEST(DataGridSplit, EndsWithANewSource)
{
    Shown shown;
    shown.grid.EnterSplit();
    shown.grid.SetSource(PositionColumns(), &shown.source);
    EXPECT_FALSE(shown.grid.IsSplit());
    EXPECT_EQ(shown.grid.Captions().count("Symbol"), 1);
}
