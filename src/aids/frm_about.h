#pragma once

/// Tells what the program is, its version, and on request what it runs on.

#include "aids/system_facts.h"
#include "program/form.h"

class QLabel;

class frmAbout : public Form
{
public:
    explicit frmAbout(Program &program);
    void Load() override;
    void ShowHelp() override;

    /// What is known of the system; nothing when it tells nothing.
    std::function<QList<SystemFact>()> SystemFacts;

private:
    void BuildControls();
    QLabel *MakeLabel(const char *name, const QString &text);
    void StartSysInfo();

    QPushButton *cmdOK;
    QPushButton *cmdSysInfo;
};
