#pragma once

/// What a person does to a grid. Columns go by the captions that are shown; an unknown one is
/// ScriptWrong, a row or cell that is not there or cannot be edited is Failed.

#include "platform/widgets/data_grid.h"

#include <QString>
#include <QStringList>

namespace GridActions
{

/// The first row that shows `value` under the caption.
void ClickRow(ShownGrid &grid, const QString &caption, const QString &value);
void DoubleClickRow(ShownGrid &grid, const QString &caption, const QString &value);
void ClickHeader(ShownGrid &grid, const QString &caption);
/// The right button on the current row; in an empty grid on the grid itself.
void RightClick(ShownGrid &grid);

/// Types into a cell of the current row and leaves the row. When the screen refuses that, the row
/// stays in edit, as it does for a person.
void EditCell(DataGrid &grid, const QString &caption, const QString &text);
/// Fills the empty row at the end from "CAPTION=TEXT" and leaves it, likewise.
void FillNewRow(DataGrid &grid, const QStringList &cells);

} // namespace GridActions
