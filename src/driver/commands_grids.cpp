#include "driver/commands.h"
#include "driver/failure.h"
#include "driver/grid_actions.h"
#include "driver/printing.h"

namespace
{

using Lines = QStringList;

ShownGrid &Grid(Session &session, const QString &name)
{
    auto *grid = dynamic_cast<ShownGrid *>(session.Control(name));
    if (!grid)
        throw ScriptWrong(QStringLiteral("%1 is no grid").arg(name));
    return *grid;
}

DataGrid &EditableGrid(Session &session, const QString &name)
{
    auto *grid = dynamic_cast<DataGrid *>(session.Control(name));
    if (!grid)
        throw ScriptWrong(QStringLiteral("%1 is no grid that can be edited").arg(name));
    return *grid;
}

Lines Select(Session &session, const QStringList &arguments)
{
    GridActions::ClickRow(Grid(session, arguments[0]), arguments[1], arguments[2]);
    return {};
}

Lines DoubleClickRow(Session &session, const QStringList &arguments)
{
    GridActions::DoubleClickRow(Grid(session, arguments[0]), arguments[1], arguments[2]);
    return {};
}

Lines ClickHeader(Session &session, const QStringList &arguments)
{
    GridActions::ClickHeader(Grid(session, arguments[0]), arguments[1]);
    return {};
}

Lines Popup(Session &session, const QStringList &arguments)
{
    ShownGrid &grid = Grid(session, arguments[0]);
    session.TriggerPopup(arguments[1], [&grid] { GridActions::RightClick(grid); });
    return {};
}

Lines EditCell(Session &session, const QStringList &arguments)
{
    GridActions::EditCell(EditableGrid(session, arguments[0]), arguments[1], arguments[2]);
    return {};
}

Lines FillNewRow(Session &session, const QStringList &arguments)
{
    GridActions::FillNewRow(EditableGrid(session, arguments[0]), arguments.mid(1));
    return {};
}

Lines ShowGrid(Session &session, const QStringList &arguments)
{
    return Printing::GridLines(Grid(session, arguments[0]));
}

} // namespace

QList<ScriptCommand> GridCommands()
{
    return {
        {"select", "FORM.GRID COLUMN VALUE", 3, 3, false, Select},
        {"rowdblclick", "FORM.GRID COLUMN VALUE", 3, 3, false, DoubleClickRow},
        {"header", "FORM.GRID COLUMN", 2, 2, false, ClickHeader},
        {"popup", "FORM.GRID ENTRY", 2, 2, false, Popup},
        {"cell", "FORM.GRID COLUMN \"text\"", 3, 3, false, EditCell},
        {"newrow", "FORM.GRID COLUMN=VALUE …", 2, -1, false, FillNewRow},
        {"grid", "FORM.GRID", 1, 1, true, ShowGrid},
    };
}
