#pragma once

/// How forms and controls look and where they are, as the texts that the script reads.

#include <QStringList>

class QWidget;

namespace Looks
{

/// "#text #background" of a control as shown, disabled or not: "#000000 #ffffff". Of a grid or list
/// those of its rows; of a control that paints no ground of its own what is behind it. Throws Failed
/// for one that is not visible.
QString Colors(QWidget *control);

/// Family and size in points as the control asks for them, then "bold" or "regular": "Arial 9 regular".
QString Font(const QWidget *control);

/// "x y width height" of the outer frame, a child form's within the area of the main window, any
/// other's on the screen. Throws Failed for a form that is not visible.
QString Geometry(const QWidget *form);

/// The names of the controls at which Tab stops, in its order, from the beginning of the form.
QStringList TabOrder(const QWidget *form);

} // namespace Looks
