#include "driver/grid_actions.h"

#include "driver/failure.h"
#include "driver/printing.h"

#include <QApplication>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>

namespace
{

/// Three columns, of which the first two can be edited; a note that is "refused" is not stored.
class Rows : public GridSource
{
public:
    QList<QStringList> rows;

    int RowCount() const override { return static_cast<int>(rows.size()); }
    QString Text(int row, int column) const override { return rows[row][column]; }
    bool Store(int row, const QMap<int, QString> &texts) override
    {
        if (texts.value(1) == "refused")
            return false;
        if (row == RowCount())
            rows.append({QString(), QString(), "new"});
        for (auto text = texts.begin(); text != texts.end(); ++text)
            rows[row][text.key()] = text.value();
        return true;
    }
};

class TheHandsOnAGrid : public testing::Test
{
protected:
    TheHandsOnAGrid()
    {
        form.setObjectName("frmSample");
        auto *layout = new QVBoxLayout(&form);
        grid = new DataGrid(&form);
        layout->addWidget(grid);
        source.rows = {{"ACME", "a\tb", "1"}, {"BETA", "two\nlines", "2"}, {"BETA", "", "3"}};
        grid->SetSource({{"Symbol", "Symbol", Qt::AlignLeft, 0, true},
                         {"Note ", "Note", Qt::AlignLeft, 0, true},
                         {"Shares", "Shares"}},
                        &source);
        form.resize(600, 400);
        form.show();
        QApplication::processEvents();
    }
    static int StatusOf(const std::function<void()> &action)
    {
        try {
            action();
        } catch (const Failure &failure) {
            return failure.Status();
        }
        return 0;
    }

    Rows source;
    QWidget form;
    DataGrid *grid;
};

TEST_F(TheHandsOnAGrid, ClickTheFirstRowThatShowsAValue)
{
    GridActions::ClickRow(*grid, "Symbol", "BETA");
    EXPECT_EQ(grid->CurrentRow(), 1);
    GridActions::ClickRow(*grid, "Shares", "3");
    EXPECT_EQ(grid->CurrentRow(), 2);
    EXPECT_EQ(StatusOf([&] { GridActions::ClickRow(*grid, "Symbol", "beta"); }), 1);
    EXPECT_EQ(StatusOf([&] { GridActions::ClickRow(*grid, "Symbols", "BETA"); }), 2);
}

TEST_F(TheHandsOnAGrid, DoubleClickOnceAndClickOnce)
{
    QList<int> clicks, doubleClicks;
    grid->OnClick = [&](int row) { clicks += row; };
    grid->OnDoubleClick = [&](int row) { doubleClicks += row; };
    GridActions::DoubleClickRow(*grid, "Shares", "2");
    EXPECT_EQ(clicks, QList<int>{1});
    EXPECT_EQ(doubleClicks, QList<int>{1});
}

TEST_F(TheHandsOnAGrid, ClickAHeadingWithOrWithoutItsBlanks)
{
    QList<int> headings;
    grid->OnHeaderClick = [&](int column) { headings += column; };
    GridActions::ClickHeader(*grid, "Note ");
    GridActions::ClickHeader(*grid, "Note");
    EXPECT_EQ(headings, (QList<int>{1, 1}));
}

TEST_F(TheHandsOnAGrid, BringUpThePopupOnTheCurrentRowAndBelowAnEmptyGrid)
{
    int popups = 0;
    grid->OnContextMenu = [&](const QPoint &) { ++popups; };
    GridActions::ClickRow(*grid, "Shares", "3");
    GridActions::RightClick(*grid);
    EXPECT_EQ(grid->CurrentRow(), 2);
    source.rows.clear();
    grid->RefreshRows();
    GridActions::RightClick(*grid);
    EXPECT_EQ(popups, 2);
}

TEST_F(TheHandsOnAGrid, EditACellKeyByKeyAndLeaveTheRow)
{
    grid->OnKeyPress = [](int column, QChar typed) {
        return column == 0 ? typed.toUpper() : typed;
    };
    GridActions::ClickRow(*grid, "Shares", "2");
    GridActions::EditCell(*grid, "Symbol", "gamma");
    EXPECT_EQ(source.rows[1][0], "GAMMA");
    EXPECT_FALSE(grid->IsRowEdited());
}

TEST_F(TheHandsOnAGrid, LeaveARefusedRowInEdit)
{
    GridActions::EditCell(*grid, "Note", "refused");
    EXPECT_TRUE(grid->IsRowEdited());
    EXPECT_EQ(source.rows[0][1], "a\tb");
}

TEST_F(TheHandsOnAGrid, CannotEditAColumnThatIsOnlyShown)
{
    EXPECT_EQ(StatusOf([&] { GridActions::EditCell(*grid, "Shares", "9"); }), 1);
}

TEST_F(TheHandsOnAGrid, FillTheEmptyRow)
{
    EXPECT_EQ(StatusOf([&] { GridActions::FillNewRow(*grid, {"Symbol=NEW"}); }), 1);
    grid->SetAllowAddNew(true);
    GridActions::FillNewRow(*grid, {"Symbol=NEW", "Note=x = y"});
    ASSERT_EQ(source.rows.size(), 4);
    EXPECT_EQ(source.rows[3], (QStringList{"NEW", "x = y", "new"}));
    EXPECT_EQ(StatusOf([&] { GridActions::FillNewRow(*grid, {"Symbol"}); }), 2);
}

TEST_F(TheHandsOnAGrid, AreFollowedByEyesThatSeeOneLineARow)
{
    grid->SetAllowAddNew(true);
    EXPECT_EQ(Printing::GridLines(*grid), (QStringList{"Symbol\tNote \tShares", "ACME\ta\\tb\t1",
                                                       "BETA\ttwo\\nlines\t2", "BETA\t\t3"}));
}

} // namespace
