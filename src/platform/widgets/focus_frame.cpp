#include "platform/widgets/focus_frame.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPushButton>
#include <QSplitter>

namespace
{

constexpr int lineWidth = 2;

bool IsFramed(const QWidget &control)
{
    const auto *button = qobject_cast<const QPushButton *>(&control);
    return button ? button->isDefault()
                  : qobject_cast<const QAbstractScrollArea *>(&control) != nullptr;
}

} // namespace

FocusFrame::FocusFrame(QWidget &window) : QWidget(&window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    connect(qApp, &QApplication::focusChanged, this,
            [this, &window](const QWidget *, QWidget *focused) {
                const bool isHere = focused && window.isAncestorOf(focused) && IsFramed(*focused);
                Follow(isHere ? focused : nullptr);
            });
}

void FocusFrame::Follow(QWidget *control)
{
    if (m_control)
        m_control->removeEventFilter(this);
    m_control = control;
    if (!control) {
        hide();
        return;
    }
    control->installEventFilter(this);
    QWidget *around = control->parentWidget(); // the frame moves, scrolls and hides with it
    while (qobject_cast<QSplitter *>(around))  // which makes a pane of whatever is put into it
        around = around->parentWidget();
    setParent(around);
    Cover();
    show();
}

void FocusFrame::Cover()
{
    setGeometry(QRect(m_control->mapTo(parentWidget(), QPoint()), m_control->size()));
    setMask(QRegion(rect()) - rect().adjusted(lineWidth, lineWidth, -lineWidth, -lineWidth));
    raise();
}

void FocusFrame::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(),
                            m_control ? m_control->palette().highlight() : palette().highlight());
}

bool FocusFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_control) {
        if (event->type() == QEvent::Resize || event->type() == QEvent::Move ||
            event->type() == QEvent::ZOrderChange)
            Cover();
        else if (event->type() == QEvent::Hide)
            hide();
    }
    return QWidget::eventFilter(watched, event);
}
