/// The row of controls at the head of a screen, in wide windows and in narrow ones.

#include "platform/widgets/wrapping_row.h"
#include "support/print_qt.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>

namespace
{

/// From, To and OK at the left, Count at the right; each 100 by 20 and its caption 40 wide.
struct Head
{
    Head()
    {
        row->AddGroup({Piece(40), from = Piece(100)});
        row->AddGroup({Piece(40), to = Piece(100)});
        row->AddGroup({ok = Piece(100)});
        row->AddStretch();
        row->AddGroup({Piece(40), count = Piece(100)});
        auto *all = new QVBoxLayout(&window);
        all->setContentsMargins(0, 0, 0, 0);
        all->addLayout(row);
        all->addWidget(below, 1);
    }
    QWidget *Piece(int width, int height = 20)
    {
        auto *piece = new QWidget(&window);
        piece->setFixedSize(width, height);
        return piece;
    }
    void Resize(int width)
    {
        window.resize(width, 300);
        window.show();
        window.layout()->activate();
    }
    int Line(const QWidget *piece) const { return piece->y() - from->y(); }

    QWidget window;
    WrappingRow *row = new WrappingRow;
    QWidget *below = new QWidget(&window);
    QWidget *from, *to, *ok, *count;
};

} // namespace

TEST(WrappingRow, StandsInOneLineWhereThereIsRoom)
{
    Head head;
    head.Resize(900);
    for (const QWidget *piece : {head.to, head.ok, head.count})
        EXPECT_EQ(head.Line(piece), 0);
    EXPECT_EQ(head.count->geometry().right(), 899);
    EXPECT_LT(head.ok->geometry().right(), 500);
}

TEST(WrappingRow, GoesOnInAFurtherLineWithoutCuttingAnythingOff)
{
    Head head;
    head.Resize(320); // two fields with their captions
    EXPECT_EQ(head.Line(head.to), 0);
    EXPECT_GE(head.Line(head.ok), 20);
    EXPECT_EQ(head.Line(head.count), head.Line(head.ok));
    EXPECT_EQ(head.count->geometry().right(), 319);
    for (const QWidget *piece : {head.from, head.to, head.ok, head.count})
        EXPECT_EQ(piece->size(), QSize(100, 20));
    EXPECT_GT(head.below->y(), head.ok->geometry().bottom());
}

TEST(WrappingRow, KeepsACaptionWithItsField)
{
    Head head;
    head.Resize(270); // a field, and the caption of the next
    EXPECT_GE(head.Line(head.to), 20);
    for (const QWidget *child : head.window.findChildren<QWidget *>()) {
        if (child->width() == 40) {
            EXPECT_EQ(child->childAt(0, 0), nullptr);
            bool besideAField = false;
            for (const QWidget *field : {head.from, head.to, head.count})
                besideAField = besideAField || (field->y() == child->y() &&
                                                field->x() > child->geometry().right() &&
                                                field->x() < child->geometry().right() + 20);
            EXPECT_TRUE(besideAField) << child->x() << ", " << child->y();
        }
    }
}

TEST(WrappingRow, NeedsNoMoreThanItsWidestGroup)
{
    Head head;
    EXPECT_GE(head.row->minimumSize().width(), 140);
    EXPECT_LT(head.row->minimumSize().width(), 170);
    EXPECT_GE(head.row->sizeHint().width(), 520);
    EXPECT_GT(head.row->heightForWidth(200), 3 * 20);
    EXPECT_EQ(head.row->heightForWidth(1000), 20);
}

TEST(WrappingRow, LeavesNoPlaceForWhatIsHidden)
{
    Head head;
    head.Resize(900);
    const int before = head.ok->x();
    for (QWidget *child : head.window.findChildren<QWidget *>())
        if (child == head.to || (child->width() == 40 && child->x() > head.from->x() &&
                                 child->geometry().right() < head.to->x()))
            child->hide();
    head.window.layout()->activate();
    EXPECT_LE(head.ok->x(), before - 140);
}

TEST(WrappingRow, StandsOnOneBase)
{
    Head head;
    QWidget *frame = head.Piece(60, 50);
    head.row->AddGroup({frame});
    head.Resize(900);
    EXPECT_EQ(frame->geometry().bottom(), head.from->geometry().bottom());
    EXPECT_EQ(frame->y(), 0);
}

TEST(WrappingRow, GoesWithItsWindow)
{
    auto *window = new QWidget;
    auto *label = new QLabel(window);
    auto *row = new WrappingRow;
    row->AddGroup({label});
    row->AddGroup({new QLabel(window)});
    const QPointer<QLayout> alive = row;
    window->setLayout(row);
    delete window;
    EXPECT_TRUE(alive.isNull());
}
