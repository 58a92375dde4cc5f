#include "platform/widgets/date_field.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QScreen>
#include <QStyle>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int WheelStep = 120; // eighths of a degree
constexpr int NoPart = -1;
constexpr int ArrowSize = 10;

/// Where the numbers of a date stand in its text.
QList<QRegularExpressionMatch> Parts(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("\\d+"));
    QList<QRegularExpressionMatch> parts;
    for (auto found = number.globalMatch(text); found.hasNext();)
        parts << found.next();
    return parts;
}

/// Shows a calendar below the field, and closes as a list that drops down does.
class CalendarPopup : public QFrame
{
public:
    explicit CalendarPopup(QWidget *field) : QFrame(field, Qt::Popup)
    {
        setAttribute(Qt::WA_DeleteOnClose);
        setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(calendar);
    }

    QCalendarWidget *calendar = new QCalendarWidget(this);

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F4)
            close();
        else
            QFrame::keyPressEvent(event);
    }
    /// Not every desktop gives the focus back by itself.
    void hideEvent(QHideEvent *event) override
    {
        QFrame::hideEvent(event);
        parentWidget()->activateWindow();
        parentWidget()->setFocus(Qt::PopupFocusReason);
    }
};

} // namespace

DateField::DateField(Services &services, QWidget *parent)
    : FieldEdit(parent), m_services(services), m_date(services.clock.Today()),
      m_arrow(new QToolButton(this))
{
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    setText(Shown());
    m_arrow->setArrowType(Qt::DownArrow);
    m_arrow->setAutoRaise(true);
    m_arrow->setIconSize(QSize(ArrowSize, ArrowSize));
    m_arrow->setFocusPolicy(Qt::NoFocus);
    m_arrow->setCursor(Qt::ArrowCursor);
    m_arrow->setAccessibleName(QStringLiteral("Calendar"));
    connect(m_arrow, &QToolButton::clicked, this, [this] { OpenCalendar(); });
    OnValidate = [this] { return Commit(); };
}

void DateField::setDate(QDate date)
{
    if (!date.isValid())
        return;
    const bool isOther = date != m_date;
    m_date = date;
    if (text() != Shown()) {
        setText(Shown());
        if (hasFocus())
            selectAll();
    }
    if (isOther)
        emit dateChanged(date);
}

bool DateField::Commit()
{
    if (!isEnabled() || isHidden() || text() == Shown())
        return true;
    if (const std::optional<QDate> typed = m_services.formats.DateFromTyped(text())) {
        setDate(*typed);
        return true;
    }
    Refuse();
    return false;
}

void DateField::Refuse()
{
    const QString example = m_services.formats.ShortDate(m_services.clock.Today());
    const QString sentence =
        text().trimmed().isEmpty()
            ? QStringLiteral("Please enter a date such as %1.").arg(example)
            : QStringLiteral("\"%1\" is not a date. Please enter a date such as %2.")
                  .arg(text().trimmed().left(40), example);
    for (QWidget *page = this; page->parentWidget(); page = page->parentWidget())
        if (auto *tabs = qobject_cast<QTabWidget *>(page->parentWidget()->parentWidget()))
            if (tabs->indexOf(page) >= 0)
                tabs->setCurrentWidget(page);
    setFocus(Qt::OtherFocusReason);
    selectAll();
    m_services.dialogs.MsgBox(sentence, Box::Exclamation, EditorTitle());
}

// --- keys and wheel -----------------------------------------------------------------------------

void DateField::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isPlain = modifiers == Qt::NoModifier;
    if ((isPlain && key == Qt::Key_F4) || (modifiers == Qt::AltModifier && key == Qt::Key_Down))
        OpenCalendar();
    else if (isPlain && (key == Qt::Key_Up || key == Qt::Key_Down))
        StepPart(key == Qt::Key_Up ? 1 : -1);
    else if (isPlain && (key == Qt::Key_PageUp || key == Qt::Key_PageDown))
        StepTo(m_date.addMonths(key == Qt::Key_PageUp ? 1 : -1), NoPart);
    else
        return FieldEdit::keyPressEvent(event);
    event->accept();
}

/// Without the focus the wheel scrolls the page that the field is on.
void DateField::wheelEvent(QWheelEvent *event)
{
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    m_turned += event->angleDelta().y();
    const int steps = m_turned / WheelStep;
    m_turned -= steps * WheelStep;
    if (steps != 0)
        StepPart(steps);
    event->accept();
}

void DateField::StepPart(int steps)
{
    if (text() != Shown()) {
        if (!Commit())
            return;
        selectAll();
    }
    // A date whose numbers all differ tells in which order the language writes them.
    const QDate sample(2003, 11, 25);
    const QList<QRegularExpressionMatch> order = Parts(m_services.formats.ShortDate(sample));
    const QList<QRegularExpressionMatch> parts = Parts(text());
    const bool isWhole = selectedText() == text();
    for (int part = 0; part < std::min(parts.size(), order.size()); ++part) {
        const int number = order[part].captured().toInt();
        if (isWhole ? number != sample.day() : cursorPosition() > parts[part].capturedEnd())
            continue;
        StepTo(number == sample.day()     ? m_date.addDays(steps)
               : number == sample.month() ? m_date.addMonths(steps)
                                          : m_date.addYears(steps),
               part);
        return;
    }
}

void DateField::StepTo(QDate date, int part)
{
    setDate(date);
    const QList<QRegularExpressionMatch> parts = Parts(text());
    if (part >= 0 && part < parts.size())
        setSelection(int(parts[part].capturedStart()), int(parts[part].capturedLength()));
    else
        selectAll();
}

// --- the calendar -------------------------------------------------------------------------------

void DateField::OpenCalendar()
{
    setFocus(Qt::MouseFocusReason);
    if (!hasFocus()) // another field refuses to be left
        return;
    auto *popup = new CalendarPopup(this);
    popup->calendar->setSelectedDate(m_services.formats.DateFromTyped(text()).value_or(m_date));
    const auto pick = [this, popup](QDate date) {
        popup->close();
        setDate(date);
        selectAll();
    };
    connect(popup->calendar, &QCalendarWidget::clicked, this, pick);
    connect(popup->calendar, &QCalendarWidget::activated, this, pick);
    popup->adjustSize();
    const QRect desktop = screen()->availableGeometry();
    QPoint place = mapToGlobal(rect().bottomLeft());
    if (place.y() + popup->height() > desktop.bottom())
        place.setY(mapToGlobal(rect().topLeft()).y() - popup->height());
    place.setX(std::clamp(place.x(), desktop.left(),
                          std::max(desktop.left(), desktop.right() - popup->width())));
    popup->move(place);
    popup->show();
    popup->calendar->setFocus(Qt::PopupFocusReason);
}

// --- look ---------------------------------------------------------------------------------------

QSize DateField::sizeHint() const
{
    const QString widest = m_services.formats.ShortDate(QDate(2888, 12, 28));
    const QSize plain = FieldEdit::sizeHint();
    const int beside = plain.height(); // the arrow and the frame
    return {fontMetrics().horizontalAdvance(widest) + fontMetrics().averageCharWidth() * 2 + beside,
            plain.height()};
}

void DateField::resizeEvent(QResizeEvent *event)
{
    FieldEdit::resizeEvent(event);
    const int frame = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    const int width = height() - 2 * frame;
    const QRect end(rect().right() + 1 - frame - width, frame, width, width);
    m_arrow->setGeometry(QStyle::visualRect(layoutDirection(), rect(), end));
    if (isRightToLeft())
        setTextMargins(width, 0, 0, 0);
    else
        setTextMargins(0, 0, width, 0);
}
