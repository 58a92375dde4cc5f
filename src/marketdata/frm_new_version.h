#pragma once

/// Tells that there is a new version, and leads to the page where it can be had.

#include "program/form.h"

class QCheckBox;
class QPlainTextEdit;

class frmNewVersion : public Form
{
public:
    explicit frmNewVersion(Program &program);
    void Load() override;

private:
    void BuildControls();
    void cmdDownloadNow_Click();
    void cmdViewReviewHist_Click();
    void chkReminderOption_Click();
    /// The whole address of a page of the maker's site.
    QString Resolved(const QString &address);

    QPlainTextEdit *txtNewVersionMsg;
    QPushButton *cmdDownloadNow;
    QPushButton *cmdViewReviewHist;
    QPushButton *cmdHelp;
    QPushButton *cmdClose;
    QCheckBox *chkReminderOption;
};
