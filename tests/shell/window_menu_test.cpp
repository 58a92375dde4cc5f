/// Several screens in the main window: the list in the Window menu, and the letters that the menu bar keeps.

#include "keyboard_run.h"

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>

namespace
{

class WindowMenu : public Keyboard
{
protected:
    QMenu &Menu() { return *run.App().MainWindow().Popup(QStringLiteral("mnuWindow")); }
    /// The entries below the arrangements, as the menu shows them now; a star at the checked one.
    QStringList Listed()
    {
        emit Menu().aboutToShow();
        QStringList listed;
        const QList<QAction *> entries = Menu().actions().mid(3);
        for (const QAction *entry : entries)
            listed << (entry->isSeparator() ? QStringLiteral("-")
                                            : entry->text() + (entry->isChecked() ? "*" : ""));
        return listed;
    }
};

} // namespace

TEST_F(WindowMenu, ListsTheOpenScreensWithADigitEachAndMarksTheOneInFront)
{
    run.App().Host().Show("frmHistoryList");
    EXPECT_EQ(Listed(), QStringList({"-", "&1 Daily Tracker", "&2 Transaction History*"}));
    EXPECT_EQ(Listed().size(), 3) << "listed once, however often the menu is shown";
    run.App().Host().Unload("frmHistoryList");
    QCoreApplication::processEvents();
    EXPECT_EQ(Listed(), QStringList({"-", "&1 Daily Tracker*"}));
    run.App().Host().Unload("frmDailyTracker");
    QCoreApplication::processEvents();
    EXPECT_TRUE(Listed().isEmpty());
}

TEST_F(WindowMenu, BringsTheChosenScreenToTheFrontAlsoWhenItIsMinimized)
{
    run.App().Host().Show("frmHistoryList");
    auto *tracker =
        qobject_cast<QMdiSubWindow *>(run.App().Host().Find("frmDailyTracker")->parentWidget());
    ASSERT_EQ(run.App().Host().ActiveChild()->objectName(), "frmHistoryList");
    Listed();
    Menu().actions().at(4)->trigger();
    EXPECT_EQ(run.App().Host().ActiveChild()->objectName(), "frmDailyTracker");
    tracker->showMinimized();
    run.App().Host().Show("frmHistoryList");
    Listed();
    Menu().actions().at(4)->trigger();
    EXPECT_EQ(run.App().Host().ActiveChild()->objectName(), "frmDailyTracker");
    EXPECT_FALSE(tracker->isMinimized());
}

TEST_F(WindowMenu, KeepsItsLettersFromTheScreensInTheMainWindow)
{
    QList<QKeySequence> kept;
    const QList<QAction *> menus = run.App().MainWindow().menuBar()->actions();
    for (const QAction *menu : menus)
        kept << QKeySequence::mnemonic(menu->text());
    ASSERT_EQ(kept.size(), 7);
    int children = 0;
    const QStringList screens = Screens();
    for (const QString &screen : screens) {
        const Form *form = Loaded(screen);
        if (!form || form->Where() != Placement::Child)
            continue;
        ++children;
        const QList<QAbstractButton *> buttons = form->findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : buttons)
            EXPECT_FALSE(!button->shortcut().isEmpty() && kept.contains(button->shortcut()))
                << qPrintable(screen) << " " << qPrintable(button->text());
        const QList<QLabel *> labels = form->findChildren<QLabel *>();
        for (const QLabel *label : labels)
            EXPECT_FALSE(label->buddy() && kept.contains(QKeySequence::mnemonic(label->text())))
                << qPrintable(screen) << " " << qPrintable(label->text());
    }
    EXPECT_GE(children, 7);
}
