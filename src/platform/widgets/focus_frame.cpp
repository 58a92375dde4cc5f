#include "platform/widgets/focus_frame.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPointer>
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

/// Where the frame of a control belongs, to move, scroll, hide and go with it.
QWidget *Around(const QWidget &control)
{
    QWidget *around = control.parentWidget();
    while (qobject_cast<QSplitter *>(around)) // which makes a pane of whatever is put into it
        around = around->parentWidget();
    return around;
}

class FocusFrame : public QWidget
{
public:
    explicit FocusFrame(QWidget &control) : QWidget(Around(control)), m_control(&control)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        control.installEventFilter(this);
        Cover();
        show();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (m_control)
            QPainter(this).fillRect(rect(), m_control->palette().highlight());
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::Resize:
        case QEvent::Move:
        case QEvent::ZOrderChange:
            Cover();
            break;
        case QEvent::Hide:
        case QEvent::Show:
            setVisible(!m_control->isHidden());
            break;
        default:
            break;
        }
        return QWidget::eventFilter(watched, event);
    }

private:
    void Cover()
    {
        setGeometry(QRect(m_control->mapTo(parentWidget(), QPoint()), m_control->size()));
        setMask(QRegion(rect()) - rect().adjusted(lineWidth, lineWidth, -lineWidth, -lineWidth));
        raise();
    }

    QPointer<QWidget> m_control;
};

} // namespace

void FrameFocusIn(QWidget &window)
{
    QObject::connect(
        qApp, &QApplication::focusChanged, &window,
        [&window, frame = QPointer<FocusFrame>()](const QWidget *, QWidget *focused) mutable {
            delete frame;
            if (focused && window.isAncestorOf(focused) && IsFramed(*focused))
                frame = new FocusFrame(*focused);
        });
}
