#pragma once

/// What a person does to a control: real key and mouse events, with the focus where it would be.
///
/// All of them throw Failed when a person could not do it (hidden, disabled, behind a modal form)
/// and ScriptWrong when the control is of a kind that this cannot be done to.

#include <QDate>
#include <QRect>
#include <QWidget>

class QAbstractItemView;

namespace WidgetActions
{

/// Throws Failed unless `control` is visible, enabled and not behind a modal form.
void RequireUsable(QWidget *control);

/// Brings the window and the child form of `control` to the front and gives it the focus. Throws
/// Failed when the focus goes or stays elsewhere, as a field that refuses to be left sees to it.
void Focus(QWidget *control);

/// Gives `control` the focus, selects all, and types `text`; the empty text clears it.
void Type(QWidget *control, const QString &text);
/// Types into the control that has the focus, which may change on the way.
void TypeToFocus(const QString &text);
/// A key or combination by its name ("Delete", "Alt+Q") to the control that has the focus.
void PressKey(const QString &name);

void Click(QWidget *control);
void DoubleClick(QWidget *control);
/// Clicks at the middle of `area` of `target`, which may be the viewport of a view.
void ClickAt(QWidget *target, const QRect &area, Qt::MouseButton button = Qt::LeftButton);
void DoubleClickAt(QWidget *target, const QRect &area);

/// Picks the item with this text from a list, a combo box or the tabs of a tab control.
void Choose(QWidget *control, const QString &item);
void PickDate(QWidget *control, QDate date);

/// `form.control` of a control, for messages.
QString NameOf(const QWidget *control);

} // namespace WidgetActions
