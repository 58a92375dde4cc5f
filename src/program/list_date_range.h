#pragma once

/// The date range at the head of a list screen or of the chart: dtpFrom and dtpTo with their labels,
/// and cmdOK, which the user presses to see the rows of another range.
///
///     ListDateRange m_range{*this, m_program};             a member of the screen
///     m_range.AddTo(*head);                                 in the screen's layout
///     head->AddGroup({m_range.cmdOK});
///     OnClick(m_range.cmdOK, [this] { cmdOK_Click(); });
///     m_range.Set(NoDate(), today);                         every row there is
///
/// Each change goes into the picker's tool tip and into a range: the one that history and price list
/// share (RunState::ListDateFrom and ListDateTo), or the screen's own.

#include "program/form.h"

#include <QLabel>

class DateField;
class WrappingRow;

/// What a screen says that cannot use a From date after the To date.
QString FromIsLaterText();

class ListDateRange
{
public:
    /// The controls belong to `form`, which holds this range as a member.
    ListDateRange(Form &form, Program &program)
        : ListDateRange(form, program, program.run.ListDateFrom, program.run.ListDateTo)
    {}
    /// Changes go into `from` and `to`, which must outlive it.
    ListDateRange(Form &form, Program &program, QDate &from, QDate &to);

    /// Labels and pickers; cmdOK stands where the screen puts it.
    void AddTo(WrappingRow &head);

    QDate From() const;
    QDate To() const;
    void Set(QDate from, QDate to);

    QLabel *lblFrom;
    DateField *dtpFrom;
    QLabel *lblTo;
    DateField *dtpTo;
    QPushButton *cmdOK;

private:
    void DateChanged(DateField &picker);

    Program &m_program;
    QDate &m_from;
    QDate &m_to;
};
