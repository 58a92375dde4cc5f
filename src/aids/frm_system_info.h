#pragma once

/// What the program runs on, as a text that can be copied into a letter.

#include "program/form.h"

class QPlainTextEdit;

class frmSystemInfo : public Form
{
public:
    explicit frmSystemInfo(Program &program);
    void Load() override;
    void ShowHelp() override;

private:
    void BuildControls();
    void cmdCopy_Click();

    QPlainTextEdit *txtSystemInfo;
    QPushButton *cmdCopy;
    QPushButton *cmdClose;
};
