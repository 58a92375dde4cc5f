#include "platform/widgets/shown_grid.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

namespace
{

void Send(QWidget *widget, QEvent::Type type, QPoint at, Qt::MouseButton button)
{
    const bool down = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, widget->mapToGlobal(at), button,
                      down ? Qt::MouseButtons(button) : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

/// A handler may take the grid away with the first event.
bool Click(const ShownGrid::Target &target, Qt::MouseButton button,
           QEvent::Type press = QEvent::MouseButtonPress)
{
    const QPointer<QWidget> widget = target.widget;
    if (!widget)
        return false;
    Send(widget, press, target.center, button);
    if (widget)
        Send(widget, QEvent::MouseButtonRelease, target.center, button);
    return true;
}

} // namespace

int ShownGrid::ColumnByCaption(const QString &caption) const
{
    const QStringList captions = Captions();
    const int exact = captions.indexOf(caption);
    if (exact >= 0)
        return exact;
    for (int place = 0; place < captions.size(); ++place) {
        if (captions[place].trimmed() == caption.trimmed())
            return place;
    }
    return static_cast<int>(DataFields().indexOf(caption));
}

bool ShownGrid::SelectRow(int row, int place)
{
    return Click(CellTarget(row, place), Qt::LeftButton);
}

bool ShownGrid::DoubleClickRow(int row, int place)
{
    const Target target = CellTarget(row, place);
    const QPointer<QWidget> widget = target.widget;
    if (!Click(target, Qt::LeftButton))
        return false;
    return Click({widget, target.center}, Qt::LeftButton, QEvent::MouseButtonDblClick);
}

bool ShownGrid::ClickHeader(int place)
{
    return Click(HeaderTarget(place), Qt::LeftButton);
}

bool ShownGrid::RightClickCurrentRow()
{
    const Target target = CellTarget(CurrentRow(), 0);
    return Click(target.widget ? target : Target{Viewport(), Viewport()->rect().center()},
                 Qt::RightButton);
}
