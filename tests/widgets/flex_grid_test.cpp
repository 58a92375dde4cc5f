#include "platform/widgets/colors.h"
#include "platform/widgets/flex_grid.h"
#include "widgets/rows.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QFontInfo>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

#include <set>

namespace
{

/// Two rows of totals: a heading and its values.
struct Totals
{
    Totals()
    {
        grid.SetSize(2, 4);
        grid.SetFont("Arial", 10);
        grid.SetColumnWidth(0, 300);
        const QStringList captions = {"", "Current Balance*", "P&L Today", "#TransToday"};
        const QStringList values = {"", "10,250.00", "-12.50", "3"};
        for (int column = 0; column < 4; ++column) {
            grid.SetText(0, column, captions[column]);
            grid.SetText(1, column, values[column]);
        }
        for (const int column : {1, 2, 3})
            grid.SetColumnWidth(column, 1800);
    }
    FlexGrid grid;
};

} // namespace

TEST(FlexGrid, KeepsTheTextOfEveryCell)
{
    Totals totals;
    EXPECT_EQ(totals.grid.Text(0, 1), "Current Balance*");
    EXPECT_EQ(totals.grid.Text(1, 3), "3");
    EXPECT_EQ(totals.grid.Text(1, 0), "");
    totals.grid.SetText(1, 0, "x");
    EXPECT_EQ(totals.grid.Text(1, 0), "x");
    EXPECT_EQ(totals.grid.Text(2, 0), "");
    EXPECT_EQ(totals.grid.Text(0, -1), "");
    totals.grid.SetText(7, 7, "nowhere");
    EXPECT_EQ(totals.grid.Rows(), 2);
    EXPECT_EQ(totals.grid.Columns(), 4);
}

TEST(FlexGrid, IsShownAsCaptionsAndRowsBelowThem)
{
    Totals totals;
    EXPECT_EQ(totals.grid.Captions(),
              QStringList({"Current Balance*", "P&L Today", "#TransToday"}));
    EXPECT_EQ(totals.grid.RowCount(), 1);
    EXPECT_EQ(totals.grid.CellText(0, 0), "10,250.00");
    EXPECT_EQ(totals.grid.CellText(0, totals.grid.ColumnByCaption("P&L Today")), "-12.50");
    EXPECT_EQ(totals.grid.CellText(1, 0), "");
    EXPECT_EQ(totals.grid.CellText(-1, 0), "");
    totals.grid.HideColumn(1);
    EXPECT_EQ(totals.grid.Captions(), QStringList({"P&L Today", "#TransToday"}));
    EXPECT_EQ(totals.grid.CellText(0, 0), "-12.50");
}

TEST(FlexGrid, KeepsItsCellsWhenItGrowsAndShrinks)
{
    Totals totals;
    EXPECT_EQ(totals.grid.AddRow(), 2);
    totals.grid.SetText(2, 1, "below");
    totals.grid.SetSize(3, 6);
    EXPECT_EQ(totals.grid.Text(2, 1), "below");
    EXPECT_EQ(totals.grid.Text(0, 5), "");
    totals.grid.SetSize(1, 6);
    EXPECT_EQ(totals.grid.Rows(), 1);
    EXPECT_EQ(totals.grid.Text(0, 1), "Current Balance*");
    totals.grid.SetSize(0, 0);
    EXPECT_EQ(totals.grid.Rows(), 1);
    EXPECT_EQ(totals.grid.Columns(), 1);
}

TEST(FlexGrid, MeasuresWidthsInTwips)
{
    Totals totals;
    // 1800 twips are an inch and a quarter.
    EXPECT_EQ(totals.grid.columnWidth(0), qRound(1.25 * totals.grid.logicalDpiX()));
    EXPECT_EQ(totals.grid.verticalHeader()->width(),
              qRound(300 * totals.grid.logicalDpiX() / 1440.0));
    EXPECT_GE(totals.grid.rowHeight(0), totals.grid.fontMetrics().height() + 4);
    EXPECT_EQ(totals.grid.rowHeight(0), totals.grid.horizontalHeader()->height());
    totals.grid.SetRowHeight(1440);
    EXPECT_EQ(totals.grid.rowHeight(0), qRound(1.0 * totals.grid.logicalDpiY()));
}

TEST(FlexGrid, MakesRoomForALongAmountAndNeverLessThanThereWas)
{
    Totals totals;
    const int before = totals.grid.columnWidth(0);
    totals.grid.MakeRoomFor(1, QStringLiteral("0.00"));
    EXPECT_EQ(totals.grid.columnWidth(0), before);
    const QString amount = QStringLiteral("-922,337,203,685,477.58");
    totals.grid.MakeRoomFor(1, amount);
    EXPECT_GT(totals.grid.columnWidth(0), totals.grid.fontMetrics().horizontalAdvance(amount));
    EXPECT_TRUE(totals.grid.UserWidths().isEmpty());
    totals.grid.MakeRoomFor(0, amount); // no column of cells
    totals.grid.MakeRoomFor(99, amount);
}

TEST(FlexGrid, WritesItsHeadingsInTheLettersOfItsCells)
{
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSize(16);
    QApplication::setFont(large);
    {
        Totals totals;
        EXPECT_EQ(totals.grid.horizontalHeader()->font().pointSize(), 10);
    }
    QApplication::setFont(before);
}

TEST(FlexGrid, UsesAFamilyThatIsThere)
{
    Totals totals;
    const QFont font = totals.grid.font();
    EXPECT_EQ(font.pointSize(), 10);
    EXPECT_FALSE(font.bold());
    EXPECT_EQ(QFontInfo(font).family(), font.families().value(0));
    EXPECT_EQ(totals.grid.horizontalHeader()->font().pointSize(), 10);
}

TEST(FlexGrid, ColoursOneCellOrAll)
{
    Totals totals;
    const QRgb yellow = ColorOfValue(0x8AFFFF);
    const QRgb navy = qRgb(0, 0, 128);
    const QRgb plain = totals.grid.BackColor();
    totals.grid.SetCellBackColor(1, 1, yellow);
    EXPECT_EQ(totals.grid.CellBackColor(1, 1), yellow);
    EXPECT_EQ(totals.grid.CellBackColor(1, 2), plain);
    totals.grid.SetBackColor(navy);
    EXPECT_EQ(totals.grid.BackColor(), navy);
    EXPECT_EQ(totals.grid.CellBackColor(1, 2), navy);
    EXPECT_EQ(totals.grid.CellBackColor(1, 1), yellow);

    Show(totals.grid);
    const QImage picture = totals.grid.viewport()->grab().toImage();
    const QPoint left = totals.grid.CellTarget(0, 0).center - QPoint(0, 6);
    const QPoint right = totals.grid.CellTarget(0, 1).center - QPoint(0, 6);
    EXPECT_EQ(picture.pixel(QPoint(left.x() + 50, left.y())), yellow);
    EXPECT_EQ(picture.pixel(QPoint(right.x() + 50, right.y())), navy);
    const QColor text = totals.grid.palette().color(QPalette::Text);
    EXPECT_GE(Contrast(QColor(navy), text), 4.5);
}

TEST(FlexGrid, ShowsTextThatCanBeReadOnAColouredCell)
{
    Totals totals;
    QPalette dark;
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    QWidget form;
    form.setPalette(dark);
    FlexGrid *grid = new FlexGrid(&form);
    grid->SetSize(2, 2);
    grid->SetCellBackColor(1, 1, qRgb(255, 255, 138));
    const QColor text = grid->model()->index(0, 0).data(Qt::ForegroundRole).value<QBrush>().color();
    EXPECT_GE(Contrast(text, QColor(255, 255, 138)), 4.5);
}

TEST(FlexGrid, ScrollsSidewaysWhenItIsTooNarrow)
{
    Totals totals;
    Show(totals.grid, {200, totals.grid.FullHeight()});
    EXPECT_TRUE(totals.grid.horizontalScrollBar()->isVisible());
    EXPECT_FALSE(totals.grid.verticalScrollBar()->isVisible());
    const auto target = totals.grid.CellTarget(0, 2);
    EXPECT_TRUE(target.widget->rect().contains(target.center));
}

TEST(FlexGrid, PointsTheSortArrowUpWhereValuesRise)
{
    Totals totals;
    Show(totals.grid);
    totals.grid.SetSortIndicator(2, false);
    EXPECT_EQ(SortArrow(*totals.grid.horizontalHeader()), "up");
    totals.grid.SetSortIndicator(2, true);
    EXPECT_EQ(SortArrow(*totals.grid.horizontalHeader()), "down");
}

TEST(FlexGrid, CannotBeEdited)
{
    Totals totals;
    Show(totals.grid);
    EXPECT_EQ(totals.grid.editTriggers(), QAbstractItemView::NoEditTriggers);
    EXPECT_FALSE(totals.grid.model()->flags(totals.grid.model()->index(0, 0)) & Qt::ItemIsEditable);
}

TEST(FlexGrid, TellsClicksHeadingsAndThePopup)
{
    Totals totals;
    totals.grid.AddRow();
    totals.grid.SetSelectsRows(true);
    QStringList told;
    totals.grid.OnClick = [&](int row, int column) {
        told << QString("click %1 %2").arg(row).arg(column);
    };
    totals.grid.OnDoubleClick = [&](int row, int) { told << QString("double %1").arg(row); };
    totals.grid.OnHeaderClick = [&](int column) { told << QString("header %1").arg(column); };
    totals.grid.OnMouseUp = [&](Qt::MouseButton button) { told << QString("up %1").arg(button); };
    totals.grid.OnContextMenu = [&](const QPoint &) {
        told << QString("menu %1").arg(totals.grid.CurrentRow());
    };
    Show(totals.grid);
    EXPECT_TRUE(totals.grid.SelectRow(1, 2));
    EXPECT_EQ(told, QStringList({"up 1", "click 2 3"}));
    told.clear();
    EXPECT_TRUE(totals.grid.RightClickCurrentRow());
    EXPECT_EQ(told, QStringList({"up 2", "menu 1"}));
    told.clear();
    EXPECT_TRUE(totals.grid.ClickHeader(1));
    EXPECT_EQ(told, QStringList({"header 2"}));
    told.clear();
    EXPECT_TRUE(totals.grid.DoubleClickRow(0));
    EXPECT_EQ(told, QStringList({"up 1", "click 1 1", "double 1", "up 1"}));
    EXPECT_FALSE(totals.grid.SelectRow(2));
}

TEST(FlexGrid, CopiesTheMarkedRow)
{
    Totals totals;
    totals.grid.SetSelectsRows(true);
    Show(totals.grid);
    totals.grid.SelectRow(0);
    Press(&totals.grid, Qt::Key_C, "\x03", Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "10,250.00\t-12.50\t3");
}

TEST(FlexGrid, SetsACellInBold)
{
    Totals totals;
    EXPECT_FALSE(totals.grid.model()->index(0, 1).data(Qt::FontRole).value<QFont>().bold());
    totals.grid.SetCellBold(1, 2, true);
    const QFont font = totals.grid.model()->index(0, 1).data(Qt::FontRole).value<QFont>();
    EXPECT_TRUE(font.bold());
    EXPECT_EQ(font.pointSize(), 10);
}

TEST(FlexGrid, TellsItsCellsToAScreenReader)
{
    Totals totals;
    Show(totals.grid);
    auto *table = QAccessible::queryAccessibleInterface(&totals.grid);
    ASSERT_NE(table, nullptr);
    ASSERT_NE(table->tableInterface(), nullptr);
    EXPECT_EQ(table->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), "10,250.00");
    EXPECT_EQ(table->tableInterface()->columnDescription(0), "Current Balance*");
}

// --- rows that are made ---------------------------------------------------------------------------

namespace
{

/// 100,000 rows, each a number and its square, which are counted as they are asked for.
struct Squares
{
    Squares()
    {
        grid.SetSize(1, 3);
        grid.SetText(0, 1, "Number");
        grid.SetText(0, 2, "Square");
        grid.SetSelectsRows(true);
        Fill(100001);
    }
    void Fill(int rows)
    {
        grid.SetMadeRows(rows, [this](int row, int column) {
            asked.insert(row);
            FlexCell cell;
            cell.text = QString::number(column == 1 ? row : qint64{row} * row);
            cell.bold = row == 2;
            if (row == 3)
                cell.back = 0xFF102030;
            return cell;
        });
    }
    FlexGrid grid;
    std::set<int> asked;
};

} // namespace

TEST(FlexGridOfMadeRows, MakesTheRowsInViewAlone)
{
    Squares squares;
    squares.grid.resize(300, 200);
    Show(squares.grid);
    EXPECT_EQ(squares.grid.Rows(), 100001);
    EXPECT_EQ(squares.grid.RowCount(), 100000);
    EXPECT_TRUE(squares.asked.count(1));
    EXPECT_LT(squares.asked.size(), 400u); // with some for the width of the hidden row header
    squares.asked.clear();
    squares.grid.SetCurrentRow(99999);
    QCoreApplication::processEvents();
    EXPECT_TRUE(squares.asked.count(100000));
    EXPECT_LT(squares.asked.size(), 60u);
}

TEST(FlexGridOfMadeRows, ShowsTextBoldAndColourOfEachCell)
{
    Squares squares;
    EXPECT_EQ(squares.grid.Text(0, 2), "Square"); // the heading is kept
    EXPECT_EQ(squares.grid.Text(100000, 2), "10000000000");
    EXPECT_EQ(squares.grid.CellText(4, 1), "25");
    EXPECT_EQ(squares.grid.CellText(100000, 0), "");
    EXPECT_TRUE(squares.grid.model()->index(1, 0).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(squares.grid.model()->index(2, 0).data(Qt::FontRole).isValid());
    EXPECT_EQ(squares.grid.CellBackColor(3, 1), 0xFF102030);
    EXPECT_EQ(squares.grid.CellBackColor(4, 1), squares.grid.BackColor());
}

TEST(FlexGridOfMadeRows, LeavesNoRowCurrentAndTakesNoText)
{
    Squares squares;
    squares.grid.SetCurrentRow(7);
    squares.Fill(11);
    EXPECT_EQ(squares.grid.CurrentRow(), -1);
    EXPECT_EQ(squares.grid.RowCount(), 10);
    squares.grid.SetText(3, 1, "x");
    EXPECT_EQ(squares.grid.Text(3, 1), "3");
    squares.grid.SetText(0, 1, "Count");
    EXPECT_EQ(squares.grid.Captions(), QStringList({"Count", "Square"}));
}

TEST(FlexGridOfMadeRows, EndsWithTheNextSize)
{
    Squares squares;
    squares.grid.SetSize(3, 3);
    EXPECT_EQ(squares.grid.RowCount(), 2);
    EXPECT_EQ(squares.grid.Text(2, 1), "");
    squares.grid.SetText(2, 1, "x");
    EXPECT_EQ(squares.grid.Text(2, 1), "x");
    EXPECT_EQ(squares.grid.Text(0, 1), "Number");
}

TEST(FlexGridOfMadeRows, HasAHeadingAtLeast)
{
    Squares squares;
    squares.Fill(0);
    EXPECT_EQ(squares.grid.Rows(), 1);
    EXPECT_EQ(squares.grid.Captions(), QStringList({"Number", "Square"}));
}

TEST(FlexGridOfMadeRows, KeepsTheWidthsOfItsColumnsWhenItsRowsAreOthers)
{
    Squares squares;
    squares.grid.SetUserResizesColumns(2);
    Show(squares.grid);
    squares.grid.horizontalHeader()->resizeSection(0, 77);
    squares.Fill(11);
    EXPECT_EQ(squares.grid.columnWidth(0), 77);
    EXPECT_EQ(squares.grid.UserWidths(), (QMap<QString, int>{{"Number", 77}}));
    squares.grid.resize(500, 300); // the stretched column takes the rest, and is nobody's wish
    QCoreApplication::processEvents();
    EXPECT_EQ(squares.grid.columnWidth(0), 77);
    EXPECT_EQ(squares.grid.UserWidths().size(), 1);
}

TEST(FlexGridOfMadeRows, LeavesAColumnAsTheUserDrewIt)
{
    Squares squares;
    squares.grid.SetUserResizesColumns(2);
    Show(squares.grid);
    squares.grid.horizontalHeader()->resizeSection(0, 77);
    squares.grid.MakeRoomFor(1, QStringLiteral("-922,337,203,685,477.58"));
    EXPECT_EQ(squares.grid.columnWidth(0), 77);
}

TEST(FlexGridOfMadeRows, CopiesAStretchOfRows)
{
    Squares squares;
    Show(squares.grid);
    squares.grid.SelectRow(3);
    Press(&squares.grid, Qt::Key_Down, "", Qt::ShiftModifier);
    Press(&squares.grid, Qt::Key_C, "\x03", Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "4\t16\n5\t25");
}

TEST(FlexGrid, ShowsTheWholeOfATextThatIsCutOffInsteadOfItsToolTip)
{
    Totals totals;
    totals.grid.setToolTip("Totals");
    totals.grid.SetText(1, 2, "<b>" + QString(120, 'a'));
    Show(totals.grid);
    const auto tipOver = [&](int place) {
        const auto target = totals.grid.CellTarget(0, place);
        QHelpEvent help(QEvent::ToolTip, target.center, target.widget->mapToGlobal(target.center));
        QApplication::sendEvent(target.widget, &help);
        const QString tip = QToolTip::text();
        QToolTip::hideText();
        return tip;
    };
    EXPECT_EQ(tipOver(1), "<qt>&lt;b&gt;" + QString(120, 'a') + "</qt>");
    EXPECT_EQ(tipOver(0), "Totals");
}
