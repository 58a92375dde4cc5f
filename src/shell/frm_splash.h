#pragma once

/// The picture at the start; it goes by itself after 2.5 seconds.

#include "program/form.h"

#include <QPixmap>

class frmSplash : public Form
{
public:
    explicit frmSplash(Program &program);
    void Load() override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    /// No key and no button ends it early.
    void keyPressEvent(QKeyEvent *event) override;

private:
    QPixmap m_picture;
    std::unique_ptr<ClockTimer> TimerSplash;
};
