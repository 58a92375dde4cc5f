#pragma once

/// A list of which each choice of the user is told: by the mouse, on the chosen item too, and by a
/// key that moves the choice. What code chooses is not told.
///
/// A field that refuses to be left keeps the focus, and the list its choice.

#include <QListWidget>

#include <functional>

class ClickList : public QListWidget
{
public:
    using QListWidget::QListWidget;

    std::function<void()> OnClick;

    /// As large as its items.
    QSize sizeHint() const override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool m_pressed = false;
};
