#pragma once

/// While it lives the user's keys, clicks and closings reach no window, so that long work which
/// lets events be handled is not changed under its hands; windows go on being painted, moved and
/// sized. A message box or modal screen that comes up meanwhile takes input as ever.

#include <QObject>

class InputHold : public QObject
{
public:
    InputHold();
    ~InputHold() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
