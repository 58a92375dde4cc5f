#include "driver/grid_actions.h"

#include "driver/failure.h"
#include "driver/widget_actions.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QLineEdit>
#include <QPointer>

namespace GridActions
{

namespace
{

int Place(const ShownGrid &grid, const QString &caption)
{
    const int place = grid.ColumnByCaption(caption);
    if (place < 0)
        throw ScriptWrong(QStringLiteral("the grid has no column \"%1\"").arg(caption));
    return place;
}

QRect Spot(const ShownGrid::Target &target)
{
    if (!target.widget)
        throw Failed(QStringLiteral("the grid shows nothing there"));
    return QRect(target.center, QSize(1, 1));
}

void Click(const ShownGrid::Target &target, Qt::MouseButton button = Qt::LeftButton)
{
    WidgetActions::ClickAt(target.widget, Spot(target), button);
}

ShownGrid::Target FindRow(ShownGrid &grid, const QString &caption, const QString &value)
{
    const int place = Place(grid, caption);
    WidgetActions::RequireUsable(grid.Viewport());
    for (int row = 0; row < grid.RowCount(); ++row)
        if (grid.CellText(row, place) == value)
            return grid.CellTarget(row, place);
    throw Failed(QStringLiteral("no row shows \"%1\" under \"%2\"").arg(value, caption));
}

/// The row stays in edit.
void TypeInCell(DataGrid &grid, int row, const QString &caption, const QString &text)
{
    const int place = Place(grid, caption);
    if (!grid.Columns()[grid.ColumnAt(place)].editable)
        throw Failed(QStringLiteral("the column \"%1\" cannot be edited").arg(caption));
    WidgetActions::RequireUsable(&grid);
    Click(grid.CellTarget(row, place));
    WidgetActions::PressKey(QStringLiteral("F2"));
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    if (!editor || !grid.isAncestorOf(editor))
        throw Failed(QStringLiteral("the cell under \"%1\" does not open").arg(caption));
    WidgetActions::Type(editor, text);
}

} // namespace

void ClickRow(ShownGrid &grid, const QString &caption, const QString &value)
{
    Click(FindRow(grid, caption, value));
}

void DoubleClickRow(ShownGrid &grid, const QString &caption, const QString &value)
{
    const ShownGrid::Target target = FindRow(grid, caption, value);
    WidgetActions::DoubleClickAt(target.widget, Spot(target));
}

void ClickHeader(ShownGrid &grid, const QString &caption)
{
    Click(grid.HeaderTarget(Place(grid, caption)));
}

void RightClick(ShownGrid &grid)
{
    const ShownGrid::Target cell = grid.CellTarget(grid.CurrentRow(), 0);
    if (cell.widget) {
        Click(cell, Qt::RightButton);
        return;
    }
    // Below the rows a grid has its popup menu as well.
    const ShownGrid::Target header = grid.HeaderTarget(0);
    if (!header.widget)
        throw Failed(QStringLiteral("the grid shows nothing"));
    auto *view = qobject_cast<QAbstractScrollArea *>(header.widget->parentWidget()->parentWidget());
    if (!view)
        throw Failed(QStringLiteral("the grid has no rows"));
    WidgetActions::ClickAt(view->viewport(), view->viewport()->rect(), Qt::RightButton);
}

void EditCell(DataGrid &grid, const QString &caption, const QString &text)
{
    const int row = grid.CurrentRow();
    if (row < 0)
        throw Failed(QStringLiteral("the grid has no current row"));
    const QPointer<DataGrid> stillThere = &grid;
    TypeInCell(grid, row, caption, text);
    if (stillThere)
        grid.CommitRow();
}

void FillNewRow(DataGrid &grid, const QStringList &cells)
{
    WidgetActions::RequireUsable(&grid);
    const QPointer<DataGrid> stillThere = &grid;
    if (!grid.GoToNewRow())
        throw Failed(QStringLiteral("the grid takes no new row"));
    const int newRow = grid.RowCount();
    for (const QString &cell : cells) {
        const qsizetype equals = cell.indexOf(QLatin1Char('='));
        if (equals < 0)
            throw ScriptWrong(QStringLiteral("\"%1\" is not COLUMN=VALUE").arg(cell));
        TypeInCell(grid, newRow, cell.left(equals), cell.mid(equals + 1));
        if (!stillThere)
            return;
    }
    grid.CommitRow();
}

} // namespace GridActions
