#pragma once

/// The date picker of the entry screens and dialogs: typed or pasted as free text, or picked from a
/// calendar. It shows the short date of the user's language, the year with four digits.
///
///     auto *dtpFrom = new DateField(m_program.services, this);
///     dtpFrom->setDate(today);
///     On(dtpFrom, &DateField::dateChanged, [this] { ... });
///
/// What is typed becomes the date when the field is left, as Formats::DateFromTyped reads it. A text
/// that is no date is refused with a sentence, the field keeps the focus, and date() stays what it
/// was. Buttons that act on the date while the focus stays call Commit first (Form::OnClick does).
///
/// Up and Down change the part of the date at the cursor (the day, while all of it is selected), Page
/// Up and Page Down the month. F4 or Alt+Down opens the calendar.

#include "platform/services.h"
#include "platform/widgets/field_edit.h"

#include <QDate>

class QToolButton;

class DateField : public FieldEdit
{
    Q_OBJECT

public:
    /// Today, until another date is set.
    DateField(Services &services, QWidget *parent);

    QDate date() const { return m_date; }
    /// Replaces what is typed; an invalid date changes nothing.
    void setDate(QDate date);
    /// Takes what is typed. False, after a sentence and with the focus here, when it is no date.
    bool Commit();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void dateChanged(QDate date);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString Shown() const { return m_services.formats.ShortDate(m_date); }
    void Refuse();
    void StepPart(int steps);
    void StepTo(QDate date, int part);
    void OpenCalendar();

    Services &m_services;
    QDate m_date;
    QToolButton *m_arrow;
    int m_turned = 0; ///< of the wheel, in eighths of a degree, short of a step
};
