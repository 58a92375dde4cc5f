#pragma once

/// A frame around the control that takes the keys, for those that do not show it by themselves: grids,
/// texts that can only be read, and the button that Enter presses, which looks the same at all times.
///
///     new FocusFrame(*this);               in the constructor of a window, which owns it
///
/// It lies over the edge of the control and lets the mouse through.

#include <QPointer>
#include <QWidget>

class FocusFrame : public QWidget
{
public:
    explicit FocusFrame(QWidget &window);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Follow(QWidget *control);
    void Cover();

    QPointer<QWidget> m_control;
};
