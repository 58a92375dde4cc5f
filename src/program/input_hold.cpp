#include "program/input_hold.h"

#include <QApplication>
#include <QEvent>

InputHold::InputHold()
{
    qApp->installEventFilter(this);
}

InputHold::~InputHold()
{
    qApp->removeEventFilter(this);
}

bool InputHold::eventFilter(QObject *, QEvent *event)
{
    if (QApplication::activeModalWidget())
        return false; // which holds the rest back itself
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Close:
        event->ignore();
        return true;
    default:
        return false;
    }
}
