#include "shell/toolbar_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>

ToolbarKeys::ToolbarKeys(QToolBar &toolbar) : QObject(&toolbar), m_toolbar(toolbar)
{
    for (QToolButton *button : m_toolbar.findChildren<QToolButton *>())
        button->installEventFilter(this);
}

/// Those that can be pressed, from left to right.
QList<QToolButton *> ToolbarKeys::Buttons() const
{
    QList<QToolButton *> buttons;
    for (QAction *action : m_toolbar.actions()) {
        auto *button = qobject_cast<QToolButton *>(m_toolbar.widgetForAction(action));
        if (button && button->isEnabled() && button->isVisible())
            buttons << button;
    }
    return buttons;
}

void ToolbarKeys::Toggle()
{
    QWidget *focused = QApplication::focusWidget();
    if (focused && m_toolbar.isAncestorOf(focused)) {
        GoBack();
        return;
    }
    const QList<QToolButton *> buttons = Buttons();
    if (buttons.isEmpty())
        return;
    m_before = focused;
    buttons.first()->setFocus(Qt::ShortcutFocusReason);
}

void ToolbarKeys::GoBack()
{
    if (m_before)
        m_before->setFocus(Qt::ShortcutFocusReason);
    else if (QWidget *focused = QApplication::focusWidget())
        focused->clearFocus();
}

bool ToolbarKeys::HandleKey(QToolButton &button, int key)
{
    const QList<QToolButton *> buttons = Buttons();
    const int count = int(buttons.size());
    const int at = int(buttons.indexOf(&button));
    const auto goTo = [&](int place) {
        buttons[(place + count) % count]->setFocus(Qt::TabFocusReason);
        return true;
    };
    switch (key) {
    case Qt::Key_Left:
        return goTo(at - 1);
    case Qt::Key_Right:
        return goTo(at + 1);
    case Qt::Key_Home:
        return goTo(0);
    case Qt::Key_End:
        return goTo(count - 1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        GoBack();
        button.click();
        return true;
    case Qt::Key_Down:
        if (!button.menu())
            return false;
        GoBack();
        button.showMenu();
        return true;
    case Qt::Key_Escape:
        GoBack();
        return true;
    default:
        return false;
    }
}

bool ToolbarKeys::eventFilter(QObject *watched, QEvent *event)
{
    auto *button = qobject_cast<QToolButton *>(watched);
    if (event->type() != QEvent::KeyPress || !button || !Buttons().contains(button))
        return QObject::eventFilter(watched, event);
    return HandleKey(*button, static_cast<QKeyEvent *>(event)->key());
}
