#include "shell/window_list.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPointer>

namespace
{

void BringToFront(QMdiArea &area, QMdiSubWindow *child)
{
    if (!child)
        return;
    if (child->isMinimized())
        child->showNormal();
    area.setActiveSubWindow(child);
}

/// Nine have a digit to choose them by.
QString EntryOf(int number, const QString &title)
{
    QString text = title;
    text.replace(QLatin1Char('&'), QLatin1String("&&"));
    return number <= 9 ? QStringLiteral("&%1 %2").arg(number).arg(text) : text;
}

} // namespace

void ListWindowsIn(QMenu &menu, QMdiArea &area)
{
    QObject::connect(
        &menu, &QMenu::aboutToShow, &area, [&menu, &area, listed = QList<QAction *>()]() mutable {
            qDeleteAll(listed);
            listed.clear();
            const QList<QMdiSubWindow *> children = area.subWindowList();
            for (QMdiSubWindow *child : children) {
                if (!child->isVisible())
                    continue;
                if (listed.isEmpty())
                    listed << menu.addSeparator();
                QAction *entry = menu.addAction(EntryOf(int(listed.size()), child->windowTitle()));
                entry->setCheckable(true);
                entry->setChecked(child == area.activeSubWindow());
                QObject::connect(
                    entry, &QAction::triggered, &area,
                    [&area, child = QPointer<QMdiSubWindow>(child)] { BringToFront(area, child); });
                listed << entry;
            }
        });
}
