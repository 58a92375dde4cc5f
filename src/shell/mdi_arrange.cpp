#include "shell/mdi_arrange.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace
{

constexpr int Cascade = 0;
constexpr int TileHorizontally = 1;

QList<QMdiSubWindow *> TakingPart(QMdiArea &area)
{
    QList<QMdiSubWindow *> windows;
    const QList<QMdiSubWindow *> all = area.subWindowList();
    for (QMdiSubWindow *window : all)
        if (window->isVisible() && !window->isMinimized())
            windows << window;
    return windows;
}

} // namespace

void ArrangeWindows(QMdiArea &area, int arrangement)
{
    const QList<QMdiSubWindow *> windows = TakingPart(area);
    if (windows.isEmpty())
        return;
    for (QMdiSubWindow *window : windows)
        if (window->isMaximized())
            window->showNormal();
    if (arrangement == Cascade) {
        area.cascadeSubWindows();
        return;
    }
    const bool inRows = arrangement == TileHorizontally;
    const QSize space = area.viewport()->size();
    const int count = int(windows.size());
    for (int i = 0; i < count; ++i) {
        // From edge to edge, so that no pixel is left over by the division.
        const int extent = inRows ? space.height() : space.width();
        const int from = extent * i / count;
        const int to = extent * (i + 1) / count;
        windows[i]->setGeometry(inRows ? QRect(0, from, space.width(), to - from)
                                       : QRect(from, 0, to - from, space.height()));
    }
}
