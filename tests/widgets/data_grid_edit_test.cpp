#include "platform/widgets/data_grid.h"
#include "widgets/rows.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QLineEdit>

namespace
{

/// Symbol is shown only; date and time can be edited.
struct Editable
{
    Editable()
    {
        grid.SetSource({{"Symbol", "Symbol"},
                        {"TransDate", "TransDate", Qt::AlignLeft, 0, true},
                        {"Time", "Time", Qt::AlignLeft, 0, true}},
                       &source);
        Show(grid);
        grid.setFocus();
    }
    QLineEdit *Editor() { return grid.findChild<QLineEdit *>(); }

    Rows source{
        std::vector<QStringList>{{"ACME", "1/5/2026", "10:00"}, {"ZETA", "2/2/2026", "11:00"}}};
    DataGrid grid;
};

} // namespace

TEST(DataGridEditing, LeavesColumnsThatAreNotEditableAlone)
{
    Editable with;
    PressFocused(Qt::Key_X, "x");
    EXPECT_EQ(with.Editor(), nullptr);
    EXPECT_FALSE(with.grid.EditCell(0, "NEW"));
    EXPECT_EQ(with.grid.CellText(0, 0), "ACME");
}

TEST(DataGridEditing, OpensACellByTyping)
{
    Editable with;
    PressFocused(Qt::Key_Right);
    PressFocused(Qt::Key_3, "3");
    ASSERT_NE(with.Editor(), nullptr);
    EXPECT_EQ(with.Editor()->text(), "3");
}

TEST(DataGridEditing, StoresTheRowWhenItIsLeftAndNotBefore)
{
    Editable with;
    QStringList told;
    with.grid.OnBeforeUpdate = [&](int row) {
        told << QString("before %1 %2").arg(row).arg(with.grid.EditedText(1));
        return true;
    };
    with.grid.OnAfterUpdate = [&](int row) { told << QString("after %1").arg(row); };
    ASSERT_TRUE(with.grid.EditCell(1, "1/6/2026"));
    EXPECT_EQ(with.grid.CellText(0, 1), "1/6/2026");
    EXPECT_EQ(with.source.All()[0][1], "1/5/2026");
    EXPECT_TRUE(with.grid.IsRowEdited());
    ASSERT_TRUE(with.grid.SelectRow(1));
    EXPECT_EQ(with.source.All()[0][1], "1/6/2026");
    EXPECT_FALSE(with.grid.IsRowEdited());
    EXPECT_EQ(told, QStringList({"before 0 1/6/2026", "after 0"}));
    EXPECT_EQ(with.grid.CurrentRow(), 1);
}

TEST(DataGridEditing, StoresAllCellsOfARowAtOnce)
{
    Editable with;
    with.grid.EditCell(1, "1/6/2026");
    with.grid.EditCell(2, "12:00");
    EXPECT_TRUE(with.grid.CommitRow());
    EXPECT_EQ(with.source.stores, 1);
    EXPECT_EQ(with.source.All()[0], QStringList({"ACME", "1/6/2026", "12:00"}));
}

TEST(DataGridEditing, KeepsTheRowInEditWhileItIsRefused)
{
    struct Case
    {
        const char *name;
        bool handlerAllows;
        bool sourceAccepts;
    };
    for (const Case &refused : {Case{"handler", false, true}, Case{"source", true, false}}) {
        SCOPED_TRACE(refused.name);
        Editable with;
        with.grid.OnBeforeUpdate = [&](int) { return refused.handlerAllows; };
        with.source.accepts = refused.sourceAccepts;
        with.grid.EditCell(1, "31 June");
        with.grid.SelectRow(1);
        EXPECT_EQ(with.grid.CurrentRow(), 0);
        PressFocused(Qt::Key_Down);
        EXPECT_EQ(with.grid.CurrentRow(), 0);
        EXPECT_FALSE(with.grid.SetCurrentRow(1));
        bool headerTold = false;
        with.grid.OnHeaderClick = [&](int) { headerTold = true; };
        with.grid.ClickHeader(0);
        EXPECT_FALSE(headerTold);
        EXPECT_EQ(with.grid.CellText(0, 1), "31 June");
        EXPECT_EQ(with.source.All()[0][1], "1/5/2026");
        PressFocused(Qt::Key_Escape);
        EXPECT_EQ(with.grid.CellText(0, 1), "1/5/2026");
        EXPECT_TRUE(with.grid.SetCurrentRow(1));
    }
}

TEST(DataGridEditing, EndsTheTypingByEnterAndLeavesTheFormsButtonAlone)
{
    struct Page : QWidget
    {
        void keyPressEvent(QKeyEvent *event) override { keys << event->key(); }
        QList<int> keys;
    } page;
    Editable with;
    with.grid.setParent(&page);
    Show(page);
    with.grid.show();
    with.grid.setFocus();
    PressFocused(Qt::Key_Right);
    PressFocused(Qt::Key_3, "3");
    ASSERT_NE(with.Editor(), nullptr);
    page.keys.clear(); // a view ignores the key that opens a cell
    PressFocused(Qt::Key_Return);
    QCoreApplication::processEvents(); // the cell closes a moment after its key
    EXPECT_EQ(with.grid.CellText(0, 1), "3");
    EXPECT_TRUE(with.grid.IsRowEdited());
    EXPECT_TRUE(page.keys.isEmpty());
    PressFocused(Qt::Key_Return);
    EXPECT_EQ(page.keys, QList<int>({Qt::Key_Return}));
    with.grid.setParent(nullptr);
}

TEST(DataGridEditing, TakesTheKeysBackWhenTheRowIsRefused)
{
    QWidget page;
    QLineEdit other(&page);
    Editable with;
    with.grid.OnBeforeUpdate = [](int) { return false; };
    with.grid.setParent(&page);
    Show(page);
    with.grid.show();
    with.grid.EditCell(1, "31 June");
    other.setFocus();
    ASSERT_TRUE(other.hasFocus());
    EXPECT_FALSE(with.grid.CommitRow());
    EXPECT_FALSE(other.hasFocus());
    PressFocused(Qt::Key_Escape);
    EXPECT_FALSE(with.grid.IsRowEdited());
    with.grid.setParent(nullptr);
}

TEST(DataGridEditing, MarksTheRowThatTheDeleteKeyIsFor)
{
    Editable with;
    QStringList told;
    with.grid.OnDeleteKey = [&](int row) {
        QGuiApplication::clipboard()->clear();
        PressFocused(Qt::Key_C, {}, Qt::ControlModifier);
        told << QString("%1 %2").arg(row).arg(QGuiApplication::clipboard()->text());
    };
    PressFocused(Qt::Key_Down, {}, Qt::ShiftModifier); // both rows are marked
    PressFocused(Qt::Key_Delete);
    EXPECT_EQ(told, QStringList({"1 ZETA\t2/2/2026\t11:00"}));
}

TEST(DataGridEditing, KeepsTheRowInEditWhenASearchByLettersIsRefused)
{
    Editable with;
    with.source.accepts = false;
    with.grid.EditCell(1, "31 June");
    PressFocused(Qt::Key_Left);
    PressFocused(Qt::Key_Z, "z");
    EXPECT_EQ(with.grid.CurrentRow(), 0);
    with.source.accepts = true;
    PressFocused(Qt::Key_Z, "z");
    EXPECT_EQ(with.grid.CurrentRow(), 1);
    EXPECT_EQ(with.source.All()[0][1], "31 June");
}

TEST(DataGridEditing, StoresNothingForACellThatWasLeftAsItWas)
{
    Editable with;
    ASSERT_TRUE(with.grid.EditCell(1, "1/5/2026"));
    EXPECT_FALSE(with.grid.IsRowEdited());
    EXPECT_TRUE(with.grid.CommitRow());
    EXPECT_EQ(with.source.stores, 0);
}

TEST(DataGridEditing, TakesWhatIsStillInTheOpenCellWhenTheRowIsLeft)
{
    Editable with;
    PressFocused(Qt::Key_Right);
    PressFocused(Qt::Key_3, "3");
    ASSERT_NE(with.Editor(), nullptr);
    with.Editor()->setText("3/3/2026");
    EXPECT_TRUE(with.grid.SelectRow(1));
    EXPECT_EQ(with.source.All()[0][1], "3/3/2026");
}

TEST(DataGridEditing, KeepsWhatIsBeingTypedOverARefresh)
{
    Editable with;
    PressFocused(Qt::Key_Right);
    PressFocused(Qt::Key_3, "3");
    with.grid.RefreshRows();
    ASSERT_NE(with.Editor(), nullptr);
    EXPECT_EQ(with.Editor()->text(), "3");
    with.grid.EditCell(2, "12:00");
    with.grid.RefreshRows();
    EXPECT_EQ(with.grid.CellText(0, 2), "12:00");
}

TEST(DataGridEditing, GoesToTheNextEditableCellOfTheRowByTab)
{
    Editable with;
    PressFocused(Qt::Key_Right);
    PressFocused(Qt::Key_F2);
    ASSERT_NE(with.Editor(), nullptr);
    Press(with.Editor(), Qt::Key_Tab, "\t");
    EXPECT_EQ(with.grid.CurrentColumn(), 2);
    EXPECT_EQ(with.grid.CurrentRow(), 0);
}

TEST(DataGridEditing, AsksForEveryTypedKeyButNotForAPaste)
{
    Editable with;
    QStringList asked;
    with.grid.OnKeyPress = [&](int column, QChar typed) {
        asked << QString("%1 %2").arg(column).arg(typed.unicode());
        return typed.isDigit() || typed < QChar(' ') ? typed : typed == 'a' ? QChar('A') : QChar();
    };
    PressFocused(Qt::Key_Right);
    PressFocused(Qt::Key_4, "4");
    ASSERT_NE(with.Editor(), nullptr);
    Press(with.Editor(), Qt::Key_X, "x");
    Press(with.Editor(), Qt::Key_A, "a");
    EXPECT_EQ(with.Editor()->text(), "4A");
    EXPECT_EQ(asked, QStringList({"1 52", "1 120", "1 97"}));
    QApplication::clipboard()->setText("xyz");
    Press(with.Editor(), Qt::Key_V, "\x16", Qt::ControlModifier);
    EXPECT_EQ(with.Editor()->text(), "4Axyz");
    EXPECT_EQ(asked.last(), "1 22");
}

TEST(DataGridEditing, LetsTheScreenReworkACellThatWasEdited)
{
    Editable with;
    with.grid.OnCellEdited = [&](int, int column) {
        with.grid.SetEditedText(column, QString::number(with.grid.EditedText(column).size() + 10));
    };
    with.grid.EditCell(1, QString(57, 'x'));
    EXPECT_EQ(with.grid.CellText(0, 1), "67");
    EXPECT_TRUE(with.grid.CommitRow());
    EXPECT_EQ(with.source.All()[0][1], "67");
}

TEST(DataGridEditing, TellsTheDeleteKeyUnlessACellIsOpen)
{
    Editable with;
    int deleted = -1;
    with.grid.OnDeleteKey = [&](int row) { deleted = row; };
    PressFocused(Qt::Key_Right);
    PressFocused(Qt::Key_F2);
    ASSERT_NE(with.Editor(), nullptr);
    Press(with.Editor(), Qt::Key_Delete, "\x7f");
    EXPECT_EQ(deleted, -1);
    EXPECT_EQ(with.Editor()->text(), "");
    Press(with.Editor(), Qt::Key_Escape);
    with.grid.SetCurrentRow(1);
    PressFocused(Qt::Key_Delete, "\x7f");
    EXPECT_EQ(deleted, 1);
}

TEST(DataGridEditing, BeginsANewRowInTheEmptyOne)
{
    Editable with;
    EXPECT_FALSE(with.grid.GoToNewRow());
    with.grid.SetAllowAddNew(true);
    with.grid.OnNewRow = [&] { with.grid.SetEditedText(2, "09:30"); };
    int stored = -1;
    with.grid.OnAfterUpdate = [&](int row) { stored = row; };
    EXPECT_EQ(with.grid.RowCount(), 2);
    ASSERT_TRUE(with.grid.GoToNewRow());
    EXPECT_EQ(with.grid.CurrentRow(), -1);
    ASSERT_TRUE(with.grid.EditCell(1, "3/3/2026"));
    ASSERT_TRUE(with.grid.CommitRow());
    ASSERT_EQ(with.source.All().size(), 3u);
    EXPECT_EQ(with.source.All()[2].mid(1), QStringList({"3/3/2026", "09:30"}));
    EXPECT_EQ(stored, 2);
    EXPECT_EQ(with.grid.CurrentRow(), 2);
    EXPECT_EQ(with.grid.RowCount(), 3);
}

TEST(DataGridEditing, LeavesTheEmptyRowWithoutATrace)
{
    Editable with;
    with.grid.SetAllowAddNew(true);
    ASSERT_TRUE(with.grid.GoToNewRow());
    ASSERT_TRUE(with.grid.SelectRow(0));
    EXPECT_EQ(with.source.stores, 0);
    ASSERT_TRUE(with.grid.GoToNewRow());
    with.grid.EditCell(1, "3/3/2026");
    PressFocused(Qt::Key_Escape);
    ASSERT_TRUE(with.grid.SelectRow(0));
    EXPECT_EQ(with.source.stores, 0);
    EXPECT_EQ(with.grid.RowCount(), 2);
}

TEST(DataGridEditing, KeepsARowThatIsBegunWhenOthersComeAndGo)
{
    Editable with;
    with.grid.SetAllowAddNew(true);
    ASSERT_TRUE(with.grid.GoToNewRow());
    with.grid.EditCell(1, "3/3/2026");
    with.source.All().push_back({"NEW", "4/4/2026", "12:00"});
    with.grid.RefreshRows();
    EXPECT_EQ(with.grid.CurrentRow(), -1);
    EXPECT_TRUE(with.grid.CommitRow());
    ASSERT_EQ(with.source.All().size(), 4u);
    EXPECT_EQ(with.source.All()[2][0], "NEW");
    EXPECT_EQ(with.source.All()[3][1], "3/3/2026");
}

TEST(DataGridEditing, EditsInBothPanesOfSplitMode)
{
    Editable with;
    with.grid.EnterSplit();
    QApplication::processEvents();
    EXPECT_FALSE(with.grid.EditCell(0, "NEW"));
    ASSERT_TRUE(with.grid.EditCell(2, "12:00"));
    ASSERT_TRUE(with.grid.SelectRow(1));
    EXPECT_EQ(with.source.All()[0][2], "12:00");
}
