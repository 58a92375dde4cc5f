#pragma once

/// The date picker of the entry screens and dialogs: typed, or picked from a calendar; the year
/// always has four digits. Tab leaves it, as it leaves any other field; the arrow keys go from day
/// to month, F4 or Alt+Down opens the calendar.

#include <QDateEdit>

class DateField : public QDateEdit
{
public:
    explicit DateField(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override { return QWidget::focusNextPrevChild(next); }
};
