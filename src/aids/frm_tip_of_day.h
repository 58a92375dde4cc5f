#pragma once

/// Shows a tip at each start, and further ones on request.

#include "program/form.h"

class QCheckBox;
class QLabel;

class frmTipOfDay : public Form
{
public:
    explicit frmTipOfDay(Program &program);
    void Load() override;
    void ShowHelp() override;

private:
    void BuildControls();
    void cmdNextTip_Click();
    void DisplayCurrentTip();
    void ShowText(const QString &text);

    QStringList m_tips;
    QLabel *lblTipText;
    QCheckBox *chkLoadTipsAtStartup;
    QPushButton *cmdNextTip;
    QPushButton *cmdOK;
};
