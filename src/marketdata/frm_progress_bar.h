#pragma once

/// The small window that says what takes so long, and how far it has come. It stays on top of all
/// windows; who closes it does not stop the work.

#include "program/form.h"
#include "program/progress_display.h"

#include <QLabel>
#include <QProgressBar>

class frmProgressBar : public Form, public ProgressDisplay
{
public:
    explicit frmProgressBar(Program &program);

    void ShowProgress(const QString &text, int first, int last) override;
    void MoveProgress(int value) override;
    void ShowHelp() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void cmdQuestion_Click();

    QLabel *lblProgressBar;
    QProgressBar *ProgressBar;
    QPushButton *cmdQuestion;
    bool m_placed = false;
};
