#pragma once

/// The options of a report of the Excel menu, and the report itself behind OK. Which report it is goes
/// by the menu entry that stands checked (reports/report_options.h).

#include "program/form.h"
#include "reports/report_options.h"
#include "reports/tracker_report.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

class DateField;
class QGroupBox;
class QLabel;

class frmDateSelect : public Form
{
public:
    explicit frmDateSelect(Program &program);

    void Load() override;
    void OnUnload() override;

private:
    void BuildOptions();
    void BuildRange();
    void BuildSort();
    void BuildLayout();
    QRadioButton *MakeOption(const char *name, const char *caption, QWidget *parent);
    DateField *MakePicker(const char *name, const char *labelName, const char *caption);

    void SetDefaults();
    void SetControls(ReportOffers offers);
    bool IsTaxReport() const;
    void CheckTaxOptions();
    void ChooseDateRange();
    void optSelectedSec_Click();
    void cmdOK_Click();

    ReportChoice ReadChoice() const;
    /// Opens the Daily Tracker when it is closed.
    TrackerContent ReadTracker();

    const ReportEntry *m_entry = nullptr; ///< nothing: no entry stands checked

    QGroupBox *fraOptions = nullptr;
    QRadioButton *optAll = nullptr;
    QRadioButton *optSelectedSec = nullptr;
    QLineEdit *txtSelectedSec = nullptr;
    QCheckBox *chkDateRange = nullptr;
    QRadioButton *optDateRange = nullptr;
    QLabel *lblFrom = nullptr;
    DateField *dtpSelectFrom = nullptr;
    QLabel *lblTo = nullptr;
    DateField *dtpSelectTo = nullptr;
    QGroupBox *fraSort = nullptr;
    QRadioButton *optSortByDate = nullptr;
    QRadioButton *optSortBySymbol = nullptr;
    QCheckBox *chkPrintTotals = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdHelp = nullptr;
};
