/// Tab goes through every screen in the order in which one reads it.

#include "keyboard_run.h"

#include "platform/widgets/data_grid.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QPointer>
#include <QRadioButton>
#include <QTabWidget>

#include <algorithm>

namespace
{

using Widgets = QList<QWidget *>;

QString NameOf(const QWidget *widget)
{
    for (const QWidget *named = widget; named; named = named->parentWidget())
        if (!named->objectName().isEmpty() &&
            !named->objectName().startsWith(QLatin1String("qt_tabwidget")))
            return named->objectName();
    return QStringLiteral("(nobody)");
}

QStringList NamesOf(const Widgets &widgets)
{
    QStringList names;
    for (const QWidget *widget : widgets)
        names << NameOf(widget);
    return names;
}

/// Of radio buttons that go together Tab stops at the one that is on; arrows go to the others.
bool IsOffInItsGroup(const QWidget &widget)
{
    const auto *radio = qobject_cast<const QRadioButton *>(&widget);
    if (!radio || radio->isChecked())
        return false;
    const auto group =
        radio->parentWidget()->findChildren<QRadioButton *>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(group.begin(), group.end(),
                       [](const QRadioButton *other) { return other->isChecked(); });
}

/// Where Tab has to stop.
bool IsStop(const QWidget &widget, const QWidget &window)
{
    if (!(widget.focusPolicy() & Qt::TabFocus) || widget.focusProxy() || !widget.isEnabled() ||
        !widget.isVisibleTo(&window) || widget.size().isEmpty() || IsOffInItsGroup(widget))
        return false;
    return !qobject_cast<const QComboBox *>(widget.parentWidget()) &&
           !qobject_cast<const QAbstractSpinBox *>(widget.parentWidget());
}

/// A control, or a group of them that is read as a whole.
struct Block
{
    QRect Place;
    Widgets Stops; ///< in reading order
};

void ReadInto(Widgets &stops, std::vector<Block> blocks);

/// The controls below `parent` as blocks; a box with a frame, or a page of tabs, is one.
void Gather(QWidget *parent, const QWidget &window, std::vector<Block> &blocks)
{
    for (QObject *child : parent->children()) {
        auto *widget = qobject_cast<QWidget *>(child);
        if (!widget || widget->isWindow() || !widget->isVisibleTo(&window))
            continue;
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        if (IsStop(*widget, window))
            blocks.push_back({place, {widget}});
        const bool isWhole =
            qobject_cast<QGroupBox *>(widget) || qobject_cast<QTabWidget *>(widget);
        std::vector<Block> inside;
        Gather(widget, window, isWhole ? inside : blocks);
        Block whole{place, {}};
        ReadInto(whole.Stops, inside);
        if (!whole.Stops.isEmpty())
            blocks.push_back(whole);
    }
}

/// The blocks between gaps that go right through, across `vertical` or the other way.
std::vector<std::vector<Block>> Bands(std::vector<Block> blocks, bool vertical)
{
    const auto first = [vertical](const Block &block) {
        return vertical ? block.Place.top() : block.Place.left();
    };
    const auto last = [vertical](const Block &block) {
        return vertical ? block.Place.bottom() : block.Place.right();
    };
    std::sort(blocks.begin(), blocks.end(),
              [&](const Block &one, const Block &other) { return first(one) < first(other); });
    std::vector<std::vector<Block>> bands;
    int end = 0;
    for (const Block &block : blocks) {
        if (bands.empty() || first(block) > end)
            bands.emplace_back();
        bands.back().push_back(block);
        end = std::max(bands.back().size() == 1 ? 0 : end, last(block));
    }
    return bands;
}

/// Rows from the top; what stands side by side, from the left.
void ReadInto(Widgets &stops, std::vector<Block> blocks)
{
    for (const bool vertical : {true, false}) {
        const auto bands = Bands(blocks, vertical);
        if (bands.size() < 2)
            continue;
        for (const auto &band : bands)
            ReadInto(stops, band);
        return;
    }
    for (const Block &block : blocks)
        stops += block.Stops;
}

Widgets ReadingOrder(QWidget &window)
{
    std::vector<Block> blocks;
    Gather(&window, window, blocks);
    Widgets stops;
    ReadInto(stops, blocks);
    return stops;
}

/// The controls that Tab goes to, from the first of the screen on until it comes round.
Widgets TabOrder(QWidget *start, Qt::Key key, int most)
{
    Widgets order;
    start->setFocus(Qt::TabFocusReason);
    for (int step = 0; step <= most; ++step) {
        QWidget *focused = QApplication::focusWidget();
        if (!focused || (step > 0 && focused == start))
            break;
        if (order.isEmpty() || order.last() != focused) // a page goes from link to link first
            order << focused;
        QTest::keyClick(focused, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QCoreApplication::processEvents();
    }
    return order;
}

} // namespace

class FocusOrder : public Keyboard
{
protected:
    void ExpectReadingOrder(const QString &what, QWidget &window)
    {
        const Widgets read = ReadingOrder(window);
        if (read.isEmpty())
            return;
        const int most = 200;
        EXPECT_EQ(NamesOf(TabOrder(read.first(), Qt::Key_Tab, most)), NamesOf(read))
            << qPrintable(what) << ", by Tab";
        Widgets back = TabOrder(read.first(), Qt::Key_Backtab, most);
        std::reverse(back.begin() + std::min<qsizetype>(1, back.size()), back.end());
        EXPECT_EQ(NamesOf(back), NamesOf(read)) << qPrintable(what) << ", by Shift+Tab";
        stops += int(read.size());
    }
    /// Of each page, and of the pages on it.
    void ExpectReadingOrderOfPages(const QString &what, QWidget &window)
    {
        ExpectReadingOrder(what, window);
        for (QTabWidget *tabs : window.findChildren<QTabWidget *>()) {
            if (!tabs->isVisibleTo(&window))
                continue;
            for (int page = tabs->count() - 1; page >= 0; --page) {
                tabs->setCurrentIndex(page);
                QCoreApplication::processEvents();
                const QString where = what + QLatin1Char('/') + tabs->tabText(page);
                ExpectReadingOrder(where, window);
                for (QTabWidget *inner : tabs->currentWidget()->findChildren<QTabWidget *>())
                    for (int place = 0; place < inner->count(); ++place) {
                        inner->setCurrentIndex(place);
                        QCoreApplication::processEvents();
                        ExpectReadingOrder(where + QLatin1Char('/') + inner->tabText(place),
                                           window);
                    }
            }
        }
    }
    void ExpectVisibleFocus(const QString &what, QWidget &window)
    {
        const Widgets read = ReadingOrder(window);
        if (read.size() < 2)
            return;
        read.first()->setFocus();
        Press(Qt::Key_Tab); // buttons show the focus to those who use the keys
        for (QWidget *stop : read) {
            const QRect place(stop->mapTo(&window, QPoint()), stop->size());
            const auto picture = [&] { return window.grab(place).toImage(); };
            stop->setFocus(Qt::TabFocusReason);
            ASSERT_TRUE(stop->hasFocus()) << qPrintable(NameOf(stop));
            const QImage with = picture();
            (stop == read.first() ? read.last() : read.first())->setFocus(Qt::TabFocusReason);
            EXPECT_FALSE(picture() == with) << qPrintable(what) << "." << qPrintable(NameOf(stop));
        }
    }
    int stops = 0;
};

TEST_F(FocusOrder, IsTheReadingOrderOfEveryScreen)
{
    const QStringList screens = Screens();
    for (const QString &screen : screens) {
        const QPointer<Form> form = Shown(screen);
        if (!form)
            continue;
        ExpectReadingOrderOfPages(screen, *form);
        if (form && screen != "frmDailyTracker") // the others need it
            run.App().Host().Unload(screen);
    }
    EXPECT_GT(stops, 150);
}

TEST_F(FocusOrder, IsTheReadingOrderOfTheHelp)
{
    run.App().Host().ShowHelp(QStringLiteral("AboutQuillon.htm"));
    QWidget *help = HelpPage()->window();
    QApplication::setActiveWindow(help);
    ExpectReadingOrderOfPages(QStringLiteral("help"), *help);
}

TEST_F(FocusOrder, StopsOnceInAGridInSplitMode)
{
    Form *list = Shown("frmHistoryList");
    run.Control<DataGrid>("frmHistoryList", "DataGridHistoryList")->EnterSplit();
    QCoreApplication::processEvents();
    ExpectReadingOrder(QStringLiteral("split"), *list);
}

/// Every stop looks otherwise with the focus than without it.
TEST_F(FocusOrder, ShowsWhereTheFocusIsOnEveryScreen)
{
    const QStringList screens = Screens();
    for (const QString &screen : screens) {
        const QPointer<Form> form = Shown(screen);
        if (form)
            ExpectVisibleFocus(screen, *form);
        if (form && screen != "frmDailyTracker")
            run.App().Host().Unload(screen);
    }
}

TEST_F(FocusOrder, ShowsWhereTheFocusIsInTheHelp)
{
    run.App().Host().ShowHelp(QStringLiteral("AboutQuillon.htm"));
    QWidget *help = HelpPage()->window();
    QApplication::setActiveWindow(help);
    ExpectVisibleFocus(QStringLiteral("help"), *help);
    help->findChild<QTabWidget *>()->setCurrentIndex(1);
    ExpectVisibleFocus(QStringLiteral("search"), *help);
}

/// Where the user will want to begin, and never nowhere.
TEST_F(FocusOrder, BeginsOnAControlOfTheScreenThatComesUp)
{
    const QStringList screens = Screens();
    for (const QString &screen : screens) {
        const QPointer<Form> form = Shown(screen);
        if (!form || ReadingOrder(*form).isEmpty())
            continue;
        QWidget *focused = QApplication::focusWidget();
        EXPECT_TRUE(focused && form->isAncestorOf(focused))
            << qPrintable(screen) << ": " << qPrintable(NameOf(focused));
        EXPECT_FALSE(focused && focused->objectName() == "cmdHelp") << qPrintable(screen);
        if (screen != "frmDailyTracker")
            run.App().Host().Unload(screen);
    }
}
