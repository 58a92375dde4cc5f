#pragma once

/// The toolbar by keyboard. Its buttons are no stops of Tab, so that they are not in the way of those
/// who type; F6 goes to them, and back to where one was.
///
///     m_toolbarKeys = new ToolbarKeys(*m_toolbar);
///     m_toolbarKeys->Toggle();             on F6
///
/// There Left, Right, Home and End go from button to button, Enter or Space presses one, Down opens
/// its list, and Escape goes back. A press goes back first, so that its command finds the focus where
/// the user had it.

#include <QObject>
#include <QPointer>

class QToolBar;
class QToolButton;

class ToolbarKeys : public QObject
{
public:
    /// `toolbar` owns it.
    explicit ToolbarKeys(QToolBar &toolbar);

    void Toggle();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QList<QToolButton *> Buttons() const;
    bool HandleKey(QToolButton &button, int key);
    void GoBack();

    QToolBar &m_toolbar;
    QPointer<QWidget> m_before; ///< had the focus
};
