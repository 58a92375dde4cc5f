#pragma once

/// What a person reads on a screen, as lines of text.

#include <QStringList>

class QWidget;
class ShownGrid;

namespace Printing
{

QString YesNo(bool value);

/// The text of a control as it is shown; "0" or "1" for check boxes and option buttons, the chosen
/// item for lists and combo boxes. Throws ScriptWrong for a control without a text.
QString TextOf(const QWidget *control);

/// The captions, then a line a row; cells separated by tabs, with tabs and line ends inside a cell
/// written as \t and \n.
QStringList GridLines(const ShownGrid &grid);

/// `text` on one line, for a cell.
QString CellText(QString text);

} // namespace Printing
