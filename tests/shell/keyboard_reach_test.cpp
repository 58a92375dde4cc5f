/// What the mouse can do, the keyboard can.

#include "keyboard_run.h"

#include "platform/widgets/chart.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/flex_grid.h"
#include "platform/widgets/folder_list.h"
#include "platform/widgets/print_preview.h"
#include "shell/command_table.h"

#include <QAccessible>
#include <QAction>
#include <QCalendarWidget>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>

namespace
{

class KeyboardReach : public Keyboard
{
protected:
    QString FocusName() const
    {
        const QWidget *focused = QApplication::focusWidget();
        while (focused && focused->objectName().isEmpty())
            focused = focused->parentWidget();
        return focused ? focused->objectName() : QStringLiteral("(nobody)");
    }
    /// What the desktop makes of the Menu key.
    static void PressMenuKey()
    {
        QWidget *focused = QApplication::focusWidget();
        ASSERT_TRUE(focused);
        const QPoint place = focused->rect().center();
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, place, focused->mapToGlobal(place));
        QApplication::sendEvent(focused, &asked);
    }
    static QString OpenMenu()
    {
        const QWidget *popup = QApplication::activePopupWidget();
        return popup ? popup->objectName() : QStringLiteral("(none)");
    }
    /// The window in front is active again; without a desktop nobody else sees to it.
    static void ComeBack()
    {
        for (QWidget *window : QApplication::topLevelWidgets())
            if (window->isVisible() && window->objectName() == QLatin1String("frmMDIMain"))
                QApplication::setActiveWindow(window);
    }
    static void CloseMenus()
    {
        while (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        QCoreApplication::processEvents();
        ComeBack();
    }
    /// Goes through the open menu to this entry, and takes it.
    void ChooseByKeys(const QString &entry)
    {
        const QAction *wanted = run.App().MainWindow().Action(entry);
        for (int step = 0; step < 30; ++step) {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu) << qPrintable(entry);
            if (menu->activeAction() == wanted) {
                QTest::keyClick(menu, Qt::Key_Return);
                QCoreApplication::processEvents();
                ComeBack();
                return;
            }
            const QAction *below = menu->activeAction();
            if (below && below->menu() && below->menu()->actions().contains(wanted))
                QTest::keyClick(menu, Qt::Key_Right);
            else
                QTest::keyClick(menu, Qt::Key_Down);
        }
        FAIL() << qPrintable(entry) << " was not reached";
    }
    QMdiArea &Area() { return *run.App().MainWindow().Area(); }
    QString ActiveScreen()
    {
        const Form *active = run.App().Host().ActiveChild();
        return active ? active->objectName() : QStringLiteral("(none)");
    }
};

struct GridScreen
{
    QString screen;
    QString grid;
    QString popup;
};
const GridScreen gridScreens[] = {
    {"frmDailyTracker", "DataGridStock", "popDailyTracker"},
    {"frmHistoryList", "DataGridHistoryList", "popHistoryList"},
    {"frmPurchaseList", "DataGridPurchaseList", "popPPPurchasePrice"},
    {"frmDailyProfitLoss", "MSHFlexGridPL", "popDailyProfitLoss"},
    {"frmHistoricalPriceList", "DataGridHistoricalPriceList", "popHistoricalPriceList"},
    {"frmQuoteServerUpdate", "DataGridQuoteUpdate", "popQSQuoteServer"}};

QTableView *PaneOf(Form &form, const QString &grid)
{
    QWidget *found = form.findChild<QWidget *>(grid);
    if (auto *view = qobject_cast<QTableView *>(found))
        return view;
    return found ? qobject_cast<QTableView *>(found->focusProxy()) : nullptr;
}

int SortedColumn(const QTableView &view)
{
    const QHeaderView *heading = view.horizontalHeader();
    return heading->isSortIndicatorShown() ? heading->sortIndicatorSection() : -1;
}

} // namespace

// --- the main window ------------------------------------------------------------------------------

TEST_F(KeyboardReach, OpensEachMenuByItsLetter)
{
    Shown("frmDailyTracker");
    for (const QAction *menu : run.App().MainWindow().menuBar()->actions()) {
        const QKeySequence letter = QKeySequence::mnemonic(menu->text());
        ASSERT_EQ(letter.count(), 1) << qPrintable(menu->text());
        Press(letter[0].key(), Qt::AltModifier);
        EXPECT_EQ(OpenMenu(), menu->menu()->objectName());
        CloseMenus();
    }
}

TEST_F(KeyboardReach, OpensTheFirstMenuByF10)
{
    Shown("frmDailyTracker");
    Press(Qt::Key_F10);
    EXPECT_EQ(OpenMenu(), "mnuFile");
    CloseMenus();
}

TEST_F(KeyboardReach, GoesAlongTheToolbarFromF6OnAndPressesAButtonByEnter)
{
    Form *tracker = Shown("frmDailyTracker");
    PaneOf(*tracker, "DataGridStock")->setFocus();
    Press(Qt::Key_F6);
    EXPECT_EQ(FocusName(), "Connect");
    Press(Qt::Key_Right);
    EXPECT_EQ(FocusName(), "New");
    Press(Qt::Key_Left);
    Press(Qt::Key_Left); // from the first one to the last
    EXPECT_EQ(FocusName(), "SplitScreen");
    Press(Qt::Key_Return);
    EXPECT_EQ(FocusName(), "DataGridStock");
    EXPECT_TRUE(run.Control<DataGrid>("frmDailyTracker", "DataGridStock")->IsSplit());
}

TEST_F(KeyboardReach, LeavesTheToolbarByEscapeOrF6ForWhereItCameFrom)
{
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_F6}) {
        Form *list = Shown("frmHistoryList");
        list->findChild<QWidget *>("dtpTo")->setFocus();
        Press(Qt::Key_F6);
        ASSERT_EQ(FocusName(), "Connect");
        Press(key);
        EXPECT_EQ(FocusName(), "dtpTo");
        EXPECT_TRUE(run.App().Host().Loaded("frmHistoryList"));
    }
}

TEST_F(KeyboardReach, OpensTheAccountsOpenedLastFromTheToolbarByDown)
{
    Shown("frmDailyTracker");
    Press(Qt::Key_F6);
    while (FocusName() != "Open")
        Press(Qt::Key_Right);
    QString opened;
    QTimer::singleShot(0, &run.App().MainWindow(), [&] { // the list waits for its user
        opened = OpenMenu();
        CloseMenus();
    });
    Press(Qt::Key_Down);
    EXPECT_EQ(opened, "RecentAccounts");
}

TEST_F(KeyboardReach, PassesByButtonsOfTheToolbarThatAreOff)
{
    Shown("frmDailyTracker");
    ASSERT_FALSE(run.App().MainWindow().Action("UndoLast")->isEnabled());
    Press(Qt::Key_F6);
    QStringList passed;
    do {
        passed << FocusName();
        Press(Qt::Key_Right);
    } while (FocusName() != "Connect" && passed.size() < 20);
    EXPECT_EQ(passed,
              QStringList({"Connect", "New", "Open", "SaveAs", "Setup", "Wizard", "SplitScreen"}));
}

TEST_F(KeyboardReach, GoesFromScreenToScreenByCtrlF6)
{
    for (const char *screen : {"frmDailyTracker", "frmHistoryList", "frmPurchaseList"})
        Shown(screen);
    QStringList visited;
    for (int step = 0; step < 3; ++step) {
        Press(Qt::Key_F6, Qt::ControlModifier);
        visited << ActiveScreen();
    }
    EXPECT_EQ(visited, QStringList({"frmDailyTracker", "frmHistoryList", "frmPurchaseList"}));
    Press(Qt::Key_F6, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(ActiveScreen(), "frmHistoryList");
}

TEST_F(KeyboardReach, GoesToTheScreenUsedBeforeByCtrlTab)
{
    for (const char *screen : {"frmDailyTracker", "frmHistoryList", "frmPurchaseList"})
        Shown(screen);
    for (const char *before : {"frmHistoryList", "frmPurchaseList"}) {
        QTest::keyPress(QApplication::focusWidget(), Qt::Key_Control);
        Press(Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Control);
        EXPECT_EQ(ActiveScreen(), before);
    }
}

TEST_F(KeyboardReach, ClosesTheScreenInFrontByCtrlF4AndByCtrlWOnEveryDesktop)
{
    for (const Qt::Key key : {Qt::Key_F4, Qt::Key_W}) {
        Form *list = Shown("frmPurchaseList");
        PaneOf(*list, "DataGridPurchaseList")->setFocus();
        Press(key, Qt::ControlModifier);
        EXPECT_FALSE(run.App().Host().Loaded("frmPurchaseList"));
        EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    }
}

TEST_F(KeyboardReach, OpensTheMenuOfAScreensFrameByAltMinus)
{
    Shown("frmPurchaseList");
    Press(Qt::Key_Minus, Qt::AltModifier);
    EXPECT_TRUE(QApplication::activePopupWidget());
    CloseMenus();
}

TEST_F(KeyboardReach, ComesBackToTheGridOfTheTrackerWhenTheScreenBeforeItIsClosed)
{
    for (const char *screen : {"frmHistoryList", "frmPurchaseList", "frmDailyProfitLoss"}) {
        Form *tracker = Shown("frmDailyTracker");
        PaneOf(*tracker, "DataGridStock")->setFocus();
        Shown(screen);
        Press(Qt::Key_Escape);
        EXPECT_FALSE(run.App().Host().Loaded(screen));
        EXPECT_EQ(FocusName(), "DataGridStock") << screen;
    }
}

TEST_F(KeyboardReach, HasAWayToEveryCommand)
{
    frmMDIMain &window = run.App().MainWindow();
    QStringList ways{"popChartScreen"}; // the popups that the Menu key opens, and the menu bar
    for (const GridScreen &told : gridScreens)
        ways << told.popup;
    for (const QAction *menu : window.menuBar()->actions())
        ways << menu->menu()->objectName();
    for (const Command &command : CommandTable()) {
        if (command.kind == CommandKind::Separator)
            continue;
        QAction *action = window.Action(command.Name());
        ASSERT_TRUE(action) << command.name;
        if (command.kind == CommandKind::Button) {
            EXPECT_TRUE(window.Toolbar()->actions().contains(action)) << command.name; // by F6
            continue;
        }
        const Command *root = &command;
        while (const Command *parent = FindCommand(root->Parent())) {
            EXPECT_TRUE(
                window.Popup(parent->Name())->actions().contains(window.Action(root->Name())))
                << root->name;
            root = parent;
        }
        EXPECT_TRUE(ways.contains(root->Name())) << command.name;
    }
}

// --- grids ----------------------------------------------------------------------------------------

TEST_F(KeyboardReach, OpensThePopupOfEachGridAtItsCurrentRow)
{
    for (const GridScreen &told : gridScreens) {
        for (const bool byMenuKey : {true, false}) {
            Form *form = Shown(told.screen);
            ASSERT_TRUE(form);
            QTableView *pane = PaneOf(*form, told.grid);
            ASSERT_TRUE(pane) << qPrintable(told.grid);
            pane->setFocus();
            if (byMenuKey)
                PressMenuKey();
            else
                Press(Qt::Key_F10, Qt::ShiftModifier);
            EXPECT_EQ(OpenMenu(), told.popup) << qPrintable(told.screen);
            if (const QWidget *popup = QApplication::activePopupWidget()) {
                const QRect rows(pane->viewport()->mapToGlobal(QPoint()), pane->viewport()->size());
                EXPECT_TRUE(rows.contains(popup->pos())) << qPrintable(told.screen);
            }
            CloseMenus();
        }
        if (told.screen != "frmDailyTracker")
            run.App().Host().Unload(told.screen);
    }
}

TEST_F(KeyboardReach, SortsByTheColumnOfTheCurrentCellByCtrlSpace)
{
    for (const GridScreen &told : gridScreens) {
        if (told.screen == "frmPurchaseList" || told.screen == "frmQuoteServerUpdate")
            continue; // not sorted by the mouse either
        Form *form = Shown(told.screen);
        ASSERT_TRUE(form);
        QTableView *pane = PaneOf(*form, told.grid);
        pane->setFocus();
        Press(Qt::Key_Home);
        Press(Qt::Key_Right);
        const int column = pane->currentIndex().column();
        const int before = SortedColumn(*pane);
        if (before == column)
            Press(Qt::Key_Left);
        const int wanted = pane->currentIndex().column();
        ASSERT_GE(wanted, 0);
        Press(Qt::Key_Space, Qt::ControlModifier);
        EXPECT_EQ(SortedColumn(*pane), wanted) << qPrintable(told.screen);
        const Qt::SortOrder order = pane->horizontalHeader()->sortIndicatorOrder();
        Press(Qt::Key_Space, Qt::ControlModifier);
        EXPECT_EQ(SortedColumn(*pane), wanted) << qPrintable(told.screen);
        EXPECT_NE(pane->horizontalHeader()->sortIndicatorOrder(), order) << qPrintable(told.screen);
    }
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(KeyboardReach, MakesTheCurrentColumnWiderAndNarrowerAndRemembersIt)
{
    for (const GridScreen &told : gridScreens) {
        Form *form = Shown(told.screen);
        QTableView *pane = PaneOf(*form, told.grid);
        pane->setFocus();
        Press(Qt::Key_Home);
        const int column = pane->currentIndex().column();
        ASSERT_GE(column, 0) << qPrintable(told.screen);
        const int before = pane->columnWidth(column);
        Press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        Press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        const int wide = pane->columnWidth(column);
        EXPECT_GT(wide, before) << qPrintable(told.screen);
        Press(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
        const int last = pane->columnWidth(column);
        EXPECT_LT(last, wide) << qPrintable(told.screen);
        EXPECT_EQ(pane->currentIndex().column(), column);
        if (told.screen == "frmDailyTracker" || told.screen == "frmQuoteServerUpdate")
            continue; // these come up with widths of their own
        run.App().Host().Unload(told.screen);
        form = Shown(told.screen);
        EXPECT_EQ(PaneOf(*form, told.grid)->columnWidth(column), last) << qPrintable(told.screen);
    }
}

TEST_F(KeyboardReach, NeverMakesAColumnVanish)
{
    Form *form = Shown("frmHistoryList");
    QTableView *pane = PaneOf(*form, "DataGridHistoryList");
    pane->setFocus();
    const int column = pane->currentIndex().column();
    for (int step = 0; step < 100; ++step)
        Press(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_GE(pane->columnWidth(column), pane->horizontalHeader()->minimumSectionSize());
    EXPECT_GT(pane->columnWidth(column), 0);
}

TEST_F(KeyboardReach, OpensTheEntryOfTheTrackersRowByEnter)
{
    Form *tracker = Shown("frmDailyTracker");
    PaneOf(*tracker, "DataGridStock")->setFocus();
    Press(Qt::Key_End);
    Press(Qt::Key_Return);
    ASSERT_TRUE(run.App().Host().Loaded("frmTransactionUpdate"));
    EXPECT_EQ(run.Control<QLineEdit>("frmTransactionUpdate", "txtSymbol")->text(),
              run.State().selection.CurrentSymbol);
}

TEST_F(KeyboardReach, SelectsTheSecurityOfTheLineThatTheArrowsGoToInTheProfitList)
{
    Form *list = Shown("frmDailyProfitLoss");
    QTableView *pane = PaneOf(*list, "MSHFlexGridPL");
    pane->setFocus();
    Press(Qt::Key_Home);
    QStringList selected;
    for (int row = 0; row < pane->model()->rowCount(); ++row) {
        Press(Qt::Key_Down);
        selected << run.State().selection.CurrentSymbol;
    }
    EXPECT_TRUE(selected.contains("ACME"));
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    Press(Qt::Key_Up);
    EXPECT_EQ(run.State().selection.CurrentSymbol, "BOLT"); // the newest line is the first
}

TEST_F(KeyboardReach, EditsTheCurrentCellOfAListByF2)
{
    for (const GridScreen &told : gridScreens) {
        const bool isEditable = told.screen == "frmHistoryList" ||
                                told.screen == "frmPurchaseList" ||
                                told.screen == "frmQuoteServerUpdate";
        if (!isEditable)
            continue;
        Form *form = Shown(told.screen);
        QTableView *pane = PaneOf(*form, told.grid);
        pane->setFocus();
        bool edited = false;
        for (int step = 0; step < 12 && !edited; ++step) {
            Press(Qt::Key_F2);
            edited = qobject_cast<QLineEdit *>(QApplication::focusWidget()) != nullptr;
            Press(edited ? Qt::Key_Escape : Qt::Key_Right);
        }
        EXPECT_TRUE(edited) << qPrintable(told.screen);
        EXPECT_TRUE(run.App().Host().Loaded(told.screen)); // Escape left the cell alone
    }
}

TEST_F(KeyboardReach, SplitsAGridAndColoursItFromItsPopup)
{
    Form *list = Shown("frmHistoryList");
    PaneOf(*list, "DataGridHistoryList")->setFocus();
    PressMenuKey();
    ChooseByKeys("popHLSplitMode");
    EXPECT_TRUE(run.Control<DataGrid>("frmHistoryList", "DataGridHistoryList")->IsSplit());
    run.boxes.color = 0x123456;
    PressMenuKey();
    ChooseByKeys("popHLHistoryGridColor");
    EXPECT_EQ(run.Control<DataGrid>("frmHistoryList", "DataGridHistoryList")->BackColor() &
                  RGB_MASK,
              0x123456u);
}

// --- the chart ------------------------------------------------------------------------------------

TEST_F(KeyboardReach, ReadsAPointOfTheChartByArrowsAndSpace)
{
    Shown("frmChartScreen");
    auto *chart = run.Control<Chart>("frmChartScreen", "MSChart");
    chart->setFocus();
    Press(Qt::Key_Right);
    const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(chart);
    EXPECT_EQ(spoken->role(), QAccessible::Chart);
    const QString first = spoken->text(QAccessible::Description);
    EXPECT_TRUE(first.contains("ACME") || first.contains("BOLT")) << qPrintable(first);
    Press(Qt::Key_Right);
    EXPECT_NE(spoken->text(QAccessible::Description), first);
    Press(Qt::Key_Space);
    EXPECT_TRUE(chart->toolTip().contains("Value: ")) << qPrintable(chart->toolTip());
    EXPECT_EQ(spoken->text(QAccessible::Description), chart->toolTip());
}

TEST_F(KeyboardReach, ColoursTheSelectedSeriesOfTheChartFromItsPopup)
{
    Shown("frmChartScreen");
    auto *chart = run.Control<Chart>("frmChartScreen", "MSChart");
    chart->setFocus();
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    ASSERT_EQ(chart->SelectedSeries(), 2);
    run.boxes.color = 0x0A0B0C;
    PressMenuKey();
    ASSERT_EQ(OpenMenu(), "popChartScreen");
    ChooseByKeys("popCHSeriesColor");
    const Settings::Components &colour = run.State().settings.ChartSeries;
    EXPECT_EQ(colour.Red, 0x0A);
    EXPECT_EQ(colour.Green, 0x0B);
    EXPECT_EQ(colour.Blue, 0x0C);
}

TEST_F(KeyboardReach, ColoursAnAreaOfTheChartFromItsPopup)
{
    Shown("frmChartScreen");
    run.Control<Chart>("frmChartScreen", "MSChart")->setFocus();
    run.boxes.color = 0x0A0B0C;
    run.WhenModal("frmPlotSelection", [this] {
        QApplication::setActiveWindow(run.App().Host().Find("frmPlotSelection"));
        Press(Qt::Key_Down); // to the base
        Press(Qt::Key_Return);
    });
    Press(Qt::Key_F10, Qt::ShiftModifier);
    ChooseByKeys("popCHAreaColor");
    EXPECT_EQ(run.State().settings.ChartBase.Green, 0x0B);
}

// --- dialogs --------------------------------------------------------------------------------------

TEST_F(KeyboardReach, TurnsThePagesOfTabsByCtrlTab)
{
    const QPair<const char *, const char *> screens[] = {{"frmUserSetup", "SSTab"},
                                                         {"frmSecurityUpdate", "SSTabAssetClass"}};
    for (const auto &[screen, name] : screens) {
        Form *form = Shown(screen);
        ASSERT_TRUE(form);
        auto *tabs = form->findChild<QTabWidget *>(name);
        const int pages = tabs->count();
        for (int page = 0; page < pages; ++page) {
            EXPECT_EQ(tabs->currentIndex(), page) << screen;
            tabs->tabBar()->setFocus();
            if (!tabs->currentWidget()->findChild<QTabWidget *>()) // which has pages of its own
                Press(Qt::Key_Tab);
            Press(Qt::Key_Tab, Qt::ControlModifier);
        }
        EXPECT_EQ(tabs->currentIndex(), 0) << screen;
    }
}

TEST_F(KeyboardReach, OpensTheCalendarOfADateByAltDown)
{
    Form *list = Shown("frmHistoryList");
    auto *date = list->findChild<DateField *>("dtpFrom");
    date->setFocus();
    const QDate before = date->date();
    Press(Qt::Key_Down, Qt::AltModifier);
    QWidget *popup = QApplication::activePopupWidget();
    ASSERT_TRUE(popup);
    auto *calendar = popup->findChild<QCalendarWidget *>();
    ASSERT_TRUE(calendar);
    QWidget *days = QApplication::focusWidget() ? QApplication::focusWidget() : calendar;
    QTest::keyClick(days, Qt::Key_Right);
    QTest::keyClick(days, Qt::Key_Return);
    CloseMenus();
    EXPECT_EQ(date->date(), before.addDays(1));
}

TEST_F(KeyboardReach, GoesThroughDrivesAndFoldersOfABackupByKeys)
{
    run.State().run.BackupMode = QStringLiteral("Backup");
    Form *backup = Shown("frmBackupRestore");
    ASSERT_TRUE(backup);
    auto *folders = backup->findChild<FolderList *>("dirList");
    folders->setFocus();
    const QString before = folders->Path();
    if (folders->currentRow() == 0)
        Press(Qt::Key_Down);
    else
        Press(Qt::Key_Up);
    Press(Qt::Key_Return);
    EXPECT_NE(folders->Path(), before);
    EXPECT_TRUE(run.App().Host().Loaded("frmBackupRestore"));
}

TEST_F(KeyboardReach, LeavesEveryDialogByEscapeThatHasACancelOrCloseButton)
{
    const QStringList screens = Screens();
    for (const QString &screen : screens) {
        if (screen == "frmBackupRestore" || screen == "frmPassword")
            continue; // these end or reopen an account
        Form *form = Shown(screen);
        if (!form)
            continue;
        const bool canBeLeft = form->findChild<QPushButton *>("cmdCancel") ||
                               form->findChild<QPushButton *>("cmdClose") || screen == "frmAbout" ||
                               screen == "frmTipOfDay";
        if (canBeLeft) {
            Press(Qt::Key_Escape);
            EXPECT_FALSE(run.App().Host().Loaded(screen)) << qPrintable(screen);
        }
        run.App().Host().Unload(screen);
    }
}

TEST_F(KeyboardReach, PressesTheDefaultButtonByEnterFromAnyField)
{
    Form *choice = Shown("frmPlotSelection");
    ASSERT_TRUE(choice);
    choice->findChild<QRadioButton *>("optBackdrop")->setFocus();
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_FALSE(run.App().Host().Loaded("frmPlotSelection"));
    EXPECT_EQ(run.State().chart.ChartAreaChosen, "Base");
}

TEST(PrintPreview, IsPrintedFromByTheKeys)
{
    QStringList reached;
    QTimer::singleShot(0, [&reached] {
        QWidget *preview = QApplication::activeModalWidget();
        ASSERT_TRUE(preview);
        QApplication::setActiveWindow(preview);
        for (int step = 0; step < 60 && !reached.contains(QStringLiteral("Print")); ++step) {
            QWidget *focused = QApplication::focusWidget();
            QTest::keyClick(focused ? focused : preview, Qt::Key_Tab);
            if (const auto *button = qobject_cast<QToolButton *>(QApplication::focusWidget()))
                reached << button->text();
        }
        preview->close();
    });
    PreviewPicture(QImage(200, 100, QImage::Format_RGB32));
    EXPECT_TRUE(reached.contains(QStringLiteral("Print"))) << qPrintable(reached.join(", "));
    EXPECT_TRUE(reached.contains(QStringLiteral("Page setup"))) << qPrintable(reached.join(", "));
}
