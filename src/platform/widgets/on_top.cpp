#include "platform/widgets/on_top.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

void PutOnTop(QWidget &dialog)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        if (window == &dialog || !window->isVisible() ||
            !window->windowFlags().testFlag(Qt::WindowStaysOnTopHint))
            continue;
        dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
        if (QApplication::activeModalWidget())
            return; // it belongs to that one, which is on top itself
        // Of two windows on top the desktop would show either; one that belongs to the other is above.
        dialog.winId(); // makes the handle
        dialog.windowHandle()->setTransientParent(window->windowHandle());
        return;
    }
}
