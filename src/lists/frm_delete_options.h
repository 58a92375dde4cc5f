#pragma once

/// Which rows of a ledger to delete: the one selected on its list, those of the security, or what is
/// older than a date. The ledger is that of the list's popup entry which stands checked
/// (program/delete_options.h).

#include "lists/delete_rows.h"
#include "program/form.h"

#include <QLineEdit>
#include <QRadioButton>

class DateField;
class QGroupBox;

class frmDeleteOptions : public Form
{
public:
    explicit frmDeleteOptions(Program &program);

    void Load() override;
    void OnUnload() override;

private:
    void BuildControls();
    void BuildLayout();

    DeleteChoice ReadChoice() const;
    void cmdOK_Click();
    void cmdCancel_Click();

    QLineEdit *txtSelectedSymbol = nullptr;
    QGroupBox *fraDeleteOptions = nullptr;
    QRadioButton *optCurrentRow = nullptr;
    QRadioButton *optAllSelected = nullptr;
    QRadioButton *optSymbolDate = nullptr;
    QRadioButton *optAllDate = nullptr;
    DateField *dtpSelSymTo = nullptr;
    DateField *dtpAllTo = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdHelp = nullptr;

    DeleteTable m_table = DeleteTable::None;
    bool DeleteCanceled = false;
};
