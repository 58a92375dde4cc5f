/// The frame around what takes the keys.

#include "platform/widgets/focus_frame.h"
#include "support/print_qt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTest>

namespace
{

/// Keeps the focus while it is hidden, as the frame of a screen does.
class Page : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    bool focusNextPrevChild(bool next) override
    {
        return isVisible() && QWidget::focusNextPrevChild(next);
    }
};

/// A list on a page of its own, a field and two buttons.
struct Framed
{
    Framed()
    {
        page->setGeometry(20, 30, 200, 150);
        list->setGeometry(10, 10, 120, 80);
        field->setGeometry(250, 10, 100, 24);
        plain->setGeometry(250, 50, 100, 24);
        chosen->setGeometry(250, 90, 100, 24);
        chosen->setDefault(true);
        FrameFocusIn(window);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    /// Where there is one: what it frames, in the window; else nothing.
    QRect Frame() const
    {
        for (const QWidget *child : window.findChildren<QWidget *>())
            if (child->isVisible() && child->testAttribute(Qt::WA_TransparentForMouseEvents))
                return {child->mapTo(&window, QPoint()), child->size()};
        return {};
    }

    QWidget window;
    QWidget *page = new Page(&window);
    QListWidget *list = new QListWidget(page);
    QLineEdit *field = new QLineEdit(&window);
    QPushButton *plain = new QPushButton(QStringLiteral("Help"), &window);
    QPushButton *chosen = new QPushButton(QStringLiteral("OK"), &window);
};

} // namespace

TEST(FocusFrame, StandsAroundAListAndTheButtonOfEnterAlone)
{
    Framed framed;
    framed.list->setFocus();
    EXPECT_EQ(framed.Frame(), QRect(30, 40, 120, 80));
    framed.chosen->setFocus();
    EXPECT_EQ(framed.Frame(), framed.chosen->geometry());
    for (QWidget *other :
         {static_cast<QWidget *>(framed.field), static_cast<QWidget *>(framed.plain)}) {
        other->setFocus();
        EXPECT_EQ(framed.Frame(), QRect());
    }
}

TEST(FocusFrame, MovesWithItsControl)
{
    Framed framed;
    framed.list->setFocus();
    framed.list->resize(60, 40);
    framed.page->move(0, 0);
    EXPECT_EQ(framed.Frame(), QRect(10, 10, 60, 40));
}

TEST(FocusFrame, ComesBackWithAPageThatWasHidden)
{
    Framed framed;
    framed.list->setFocus();
    framed.page->hide();
    EXPECT_EQ(framed.Frame(), QRect());
    framed.page->show();
    EXPECT_EQ(framed.Frame(), QRect(30, 40, 120, 80));
}

TEST(FocusFrame, GoesOnWhenAPageIsDeletedWithTheControlThatHadIt)
{
    Framed framed;
    framed.list->setFocus();
    delete framed.page;
    EXPECT_EQ(framed.Frame(), QRect());
    framed.chosen->setFocus();
    EXPECT_EQ(framed.Frame(), framed.chosen->geometry());
}

TEST(FocusFrame, IsNoPaneOfASplitter)
{
    QWidget window;
    QSplitter panes(&window);
    auto *left = new QListWidget, *right = new QListWidget;
    panes.addWidget(left);
    panes.addWidget(right);
    FrameFocusIn(window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    right->setFocus();
    EXPECT_EQ(panes.count(), 2);
}
