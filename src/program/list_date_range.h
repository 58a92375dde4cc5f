#pragma once

/// The date range at the head of a list screen: dtpFrom and dtpTo with their labels, and cmdOK,
/// which the user presses to see the rows of another range.
///
///     ListDateRange m_range{*this, m_program};             a member of the screen
///     head->addWidget(m_range.lblFrom);                     and so on, in the screen's layout
///     OnClick(m_range.cmdOK, [this] { cmdOK_Click(); });
///     m_range.Set(NoDate(), today);                         every row there is
///
/// Each change goes into the range that the list screens share (RunState::ListDateFrom, ListDateTo) and
/// into the picker's tool tip.

#include "program/form.h"

#include <QLabel>

class DateField;

class ListDateRange
{
public:
    /// The controls belong to `form`, which holds this range as a member.
    ListDateRange(Form &form, Program &program);

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
};
