#pragma once

/// Asks which area of the chart a colour is for. ChartState::ChartAreaChosen has the answer once the
/// dialog is gone: "Backdrop", "Base" or "Wall", and nothing when it was cancelled.

#include "program/form.h"

class QRadioButton;

class frmPlotSelection : public Form
{
public:
    explicit frmPlotSelection(Program &program);

    void Load() override;
    void ShowHelp() override;

private:
    void cmdOK_Click();

    QRadioButton *optBackdrop = nullptr;
    QRadioButton *optBase = nullptr;
    QRadioButton *optWall = nullptr;
};
