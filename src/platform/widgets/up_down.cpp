#include "platform/widgets/up_down.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QTimerEvent>

#include <algorithm>

namespace
{

constexpr int FirstRepeatAfter = 500; // milliseconds, of the hand and not of the program's clock
constexpr int RepeatEvery = 80;

} // namespace

UpDown::UpDown(FieldEdit &buddy, int lowest, int highest)
    : QWidget(buddy.parentWidget()), m_buddy(buddy), m_lowest(lowest), m_highest(highest)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_buddy.OnKeyPress = [this](const QKeyEvent *event) {
        if (event->key() == Qt::Key_Up)
            StepBy(1);
        else if (event->key() == Qt::Key_Down)
            StepBy(-1);
        else
            return false;
        return true;
    };
}

QSize UpDown::sizeHint() const
{
    return {fontMetrics().height() + 2, m_buddy.sizeHint().height()};
}

QRect UpDown::ArrowArea(bool up) const
{
    const int half = height() / 2;
    return up ? QRect(0, 0, width(), half) : QRect(0, half, width(), height() - half);
}

void UpDown::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    for (const bool up : {true, false}) {
        QStyleOptionButton option;
        option.initFrom(this);
        option.rect = ArrowArea(up);
        option.state.setFlag(m_pressed == (up ? 1 : -1) ? QStyle::State_Sunken
                                                        : QStyle::State_Raised);
        style()->drawPrimitive(QStyle::PE_PanelButtonCommand, &option, &painter, this);
        option.rect.adjust(3, 1, -3, -1);
        style()->drawPrimitive(up ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown,
                               &option, &painter, this);
    }
}

void UpDown::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_buddy.setFocus(Qt::OtherFocusReason);
    m_pressed = event->pos().y() <= height() / 2 ? 1 : -1;
    Step();
    m_repeat = startTimer(FirstRepeatAfter);
}

void UpDown::mouseReleaseEvent(QMouseEvent *)
{
    killTimer(m_repeat);
    m_repeat = m_pressed = 0;
    update();
}

void UpDown::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_repeat)
        return;
    killTimer(m_repeat);
    m_repeat = startTimer(RepeatEvery);
    Step();
}

void UpDown::Step()
{
    StepBy(m_pressed);
    update();
}

void UpDown::StepBy(int step)
{
    if (!m_buddy.isEnabled() || m_buddy.isReadOnly())
        return;
    const int now = m_buddy.text().trimmed().toInt(); // 0 for an empty field
    m_buddy.setText(QString::number(std::clamp(now + step, m_lowest, m_highest)));
    m_buddy.selectAll();
}
