#pragma once

/// The two small arrows beside a field with a whole number: up adds one, down takes one away.
///
///     auto *updBackupDays = new UpDown(*txtBackupDays, 0, 999);
///
/// The arrow keys of the field do the same. The range binds the arrows alone: a number that was
/// typed beyond it stays, and the next step brings it back to the nearest end.

#include "platform/widgets/field_edit.h"

class UpDown : public QWidget
{
public:
    /// Stands beside `buddy`, whose parent becomes its own.
    UpDown(FieldEdit &buddy, int lowest, int highest);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void Step();
    void StepBy(int step);
    QRect ArrowArea(bool up) const;

    FieldEdit &m_buddy;
    int m_lowest;
    int m_highest;
    int m_pressed = 0; ///< 1 up, -1 down, 0 neither
    int m_repeat = 0;  ///< timer of a held arrow
};
