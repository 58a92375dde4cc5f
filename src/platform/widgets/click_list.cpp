#include "platform/widgets/click_list.h"

#include <QMouseEvent>

#include <utility>

QSize ClickList::sizeHint() const
{
    const int frame = 2 * frameWidth();
    const int rows = count() * qMax(0, sizeHintForRow(0));
    return QSize(sizeHintForColumn(0) + frame + fontMetrics().horizontalAdvance(QLatin1Char('M')),
                 rows + frame);
}

void ClickList::mousePressEvent(QMouseEvent *event)
{
    // The press gives the focus; it stays elsewhere when the field there has to be corrected first.
    if (event->button() != Qt::LeftButton || window()->focusWidget() != this)
        return;
    m_pressed = true;
    QListWidget::mousePressEvent(event);
}

void ClickList::mouseMoveEvent(QMouseEvent *event)
{
    if (m_pressed)
        QListWidget::mouseMoveEvent(event);
}

void ClickList::mouseReleaseEvent(QMouseEvent *event)
{
    if (!std::exchange(m_pressed, false))
        return;
    QListWidget::mouseReleaseEvent(event);
    // Told at the release alone: the list has then finished with the choice, and what hears of it
    // may ask the user or choose another item.
    if (OnClick && currentRow() >= 0)
        OnClick();
}

void ClickList::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void ClickList::keyPressEvent(QKeyEvent *event)
{
    const int before = currentRow();
    QListWidget::keyPressEvent(event);
    if (OnClick && currentRow() != before)
        OnClick();
}
