#include "platform/widgets/field_edit.h"

#include "platform/widgets/colors.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace
{

/// The screen that a control is on: a window, or a child of the main window's area.
const QWidget *ScreenOf(const QWidget *control)
{
    while (control && !control->isWindow() && !qobject_cast<const QMdiSubWindow *>(control))
        control = control->parentWidget();
    return control;
}

/// A box, a menu, another window or another screen takes the focus for a while.
bool IsAway(const QWidget &field, const QWidget *next, Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
           reason == Qt::MenuBarFocusReason || (next && ScreenOf(next) != ScreenOf(&field));
}

} // namespace

FieldEdit::FieldEdit(QWidget *parent) : QLineEdit(parent)
{
    OnRefused = [] { QApplication::beep(); };
}

// --- keys ---------------------------------------------------------------------------------------

bool FieldEdit::Allows(const QString &text) const
{
    const auto isSingle = [this](QChar typed) { return m_singleKeys.contains(typed); };
    QString kept = this->text(); // behind what is typed over
    kept.remove(std::max(0, selectionStart()), selectedText().size());
    const auto singles = std::count_if(text.begin(), text.end(), isSingle);
    if (singles > 1 || (singles == 1 && std::any_of(kept.begin(), kept.end(), isSingle)))
        return false;
    return m_allowedKeys.isEmpty() || std::all_of(text.begin(), text.end(), [this](QChar typed) {
               return !typed.isPrint() || m_allowedKeys.contains(typed);
           });
}

void FieldEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() == Qt::AltModifier) {
        event->ignore(); // a shortcut of the form, not typing
        return;
    }
    const QPointer<FieldEdit> alive = this;
    if (OnKeyPress && OnKeyPress(event))
        return;
    if (!alive)
        return;
    if (Allows(event->text())) {
        QLineEdit::keyPressEvent(event);
    } else {
        event->accept();
        if (OnRefused)
            OnRefused();
    }
}

void FieldEdit::keyReleaseEvent(QKeyEvent *event)
{
    QLineEdit::keyReleaseEvent(event);
    if (OnKeyUp)
        OnKeyUp(event);
}

void FieldEdit::inputMethodEvent(QInputMethodEvent *event)
{
    if (Allows(event->commitString())) {
        QLineEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent nothing; // takes back what the input method shows so far
    QLineEdit::inputMethodEvent(&nothing);
    if (OnRefused)
        OnRefused();
}

// --- focus --------------------------------------------------------------------------------------

void FieldEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (m_isEntered)
        return;
    m_isEntered = true;
    HighlightControl();
    selectAll();
    // The press that brought the focus is yet to come, and would put the selection away.
    m_selectsOnRelease = event->reason() == Qt::MouseFocusReason;
    if (OnGotFocus)
        OnGotFocus();
}

void FieldEdit::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(m_selectsOnRelease, false) && !hasSelectedText())
        selectAll();
}

void FieldEdit::focusOutEvent(QFocusEvent *event)
{
    QWidget *next = QApplication::focusWidget();
    // A click beside the controls of a child screen gives the focus to the frame, which has no use for
    // it; elsewhere such a click does nothing.
    if (event->reason() == Qt::MouseFocusReason && next && next->isAncestorOf(this) &&
        isEnabled() && isVisible()) {
        setFocus(Qt::OtherFocusReason);
        return;
    }
    const bool isLeft = m_isEntered && !m_isValidating && !IsAway(*this, next, event->reason());
    if (isLeft && !m_isValid && OnValidate && isEnabled() && isVisible() && next && next != this) {
        Validate(next, event->reason());
        return;
    }
    QLineEdit::focusOutEvent(event);
    if (isLeft)
        Leave();
}

void FieldEdit::Leave()
{
    m_isEntered = false;
    RestoreControlColor();
    if (OnLostFocus)
        OnLostFocus();
}

void FieldEdit::Validate(QWidget *next, Qt::FocusReason reason)
{
    // Back first, so that the check has the focus here and a box it shows returns to this field;
    // `next` has not been told of the focus yet.
    const QPointer<FieldEdit> alive = this;
    const QPointer<QWidget> target = next;
    m_isValidating = true;
    setFocus(Qt::OtherFocusReason);
    const bool isValid = OnValidate();
    if (!alive)
        return;
    m_isValidating = false;
    if (!isValid || !target)
        return;
    m_isValid = true;
    const bool hadFocus = hasFocus();
    target->setFocus(reason);
    if (!alive)
        return;
    m_isValid = false;
    if (!hadFocus)
        Leave(); // the check has moved the focus itself, so nobody said so
}

// --- look ---------------------------------------------------------------------------------------

void FieldEdit::SetOn(bool on)
{
    setEnabled(on);
}

void FieldEdit::HighlightControl()
{
    const QPalette plain = QApplication::palette(this);
    SetGround(Mixed(plain.color(QPalette::Base), plain.color(QPalette::Highlight), 0.22));
}

void FieldEdit::RestoreControlColor()
{
    if (isEnabled()) {
        setPalette(QPalette());
    } else {
        SetGround(QApplication::palette(this).color(QPalette::Disabled, QPalette::Window));
    }
}

void FieldEdit::SetGround(const QColor &ground)
{
    setPalette(PaletteOn(ground, QApplication::palette(this)));
}

void FieldEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    const bool concerns =
        event->type() == QEvent::EnabledChange || event->type() == QEvent::PaletteChange;
    if (!concerns)
        return;
    if (m_isEntered && isEnabled())
        HighlightControl();
    else
        RestoreControlColor();
}
