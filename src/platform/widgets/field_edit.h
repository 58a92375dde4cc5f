#pragma once

/// The text field of the entry screens. It selects its text when it is entered, stands out while it
/// has the focus, and takes only the keys it is meant for.
///
///     price->SetAllowedKeys("0123456789./ ,");
///     price->OnValidate = [this] { return PriceIsValid(); };     false: the focus stays here
///
/// Only typing is held back: a text that is pasted arrives as it is, and the checks of the screen
/// meet it when the field is left.
///
/// Entering and leaving mean the focus within the screen: a box, a menu, another window or another
/// screen of the main window in between is neither. The handlers must not throw; they may unload the field.

#include <QLineEdit>

#include <functional>

class FieldEdit : public QLineEdit
{
public:
    explicit FieldEdit(QWidget *parent = nullptr);

    /// The characters that can be typed; the empty text, as at first, allows all. Backspace and the
    /// other editing keys always pass.
    void SetAllowedKeys(const QString &keys) { m_allowedKeys = keys; }

    /// Of these characters the text takes one, whatever is typed; the empty text, as at first, holds
    /// none back.
    void SetSingleKeys(const QString &keys) { m_singleKeys = keys; }

    /// Off: disabled and in the colour of the form.
    void SetOn(bool on);
    bool IsOn() const { return isEnabled(); }

    std::function<void()> OnGotFocus;
    /// The field is about to be left for another one, and still has the focus.
    std::function<bool()> OnValidate;
    std::function<void()> OnLostFocus;
    /// Before the key does its work; true: the handler has done it.
    std::function<bool(QKeyEvent *)> OnKeyPress;
    std::function<void(QKeyEvent *)> OnKeyUp;
    /// A key was refused. Sounds the beep, unless another one is put in.
    std::function<void()> OnRefused;

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    bool Allows(const QString &text) const;
    void Validate(QWidget *next, Qt::FocusReason reason);
    void Leave();
    void HighlightControl();
    void RestoreControlColor();
    void SetGround(const QColor &ground);

    QString m_allowedKeys;
    QString m_singleKeys;
    bool m_isEntered = false;
    bool m_isValidating = false;
    bool m_isValid = false; ///< the check has just passed: the field may be left
    bool m_selectsOnRelease = false;
};
