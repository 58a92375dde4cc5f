#include "marketdata/frm_new_version.h"

#include "marketdata/version_check.h"
#include "program/external_browser.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

frmNewVersion::frmNewVersion(Program &program)
    : Form(program, QStringLiteral("frmNewVersion"), QStringLiteral("New Version"),
           Placement::Dialog)
{
    BuildControls();
    OnClick(cmdDownloadNow, [this] { cmdDownloadNow_Click(); });
    OnClick(cmdViewReviewHist, [this] { cmdViewReviewHist_Click(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("NewVersionScreen.html")); });
    OnClick(cmdClose, [this] { UnloadMe(); });
    OnClick(chkReminderOption, [this] { chkReminderOption_Click(); });
}

void frmNewVersion::BuildControls()
{
    txtNewVersionMsg = new QPlainTextEdit(this);
    txtNewVersionMsg->setObjectName(QStringLiteral("txtNewVersionMsg"));
    txtNewVersionMsg->setAccessibleName(QStringLiteral("About the new version"));
    txtNewVersionMsg->setReadOnly(true);
    txtNewVersionMsg->setTabChangesFocus(true);
    txtNewVersionMsg->setMinimumSize(TextSize(86, 16));

    chkReminderOption =
        new QCheckBox(QStringLiteral("&Remind me when there is a new version"), this);
    chkReminderOption->setObjectName(QStringLiteral("chkReminderOption"));
    cmdDownloadNow = MakeButton("cmdDownloadNow", "&Download now");
    cmdDownloadNow->setDefault(true);
    cmdViewReviewHist = MakeButton("cmdViewReviewHist", "&View revision history");
    cmdHelp = MakeButton("cmdHelp", "&Help");
    cmdClose = MakeButton("cmdClose", "&Close");

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdDownloadNow);
    buttons->addWidget(cmdViewReviewHist);
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdClose);
    auto *all = new QVBoxLayout(this);
    all->addWidget(txtNewVersionMsg, 1);
    all->addWidget(chkReminderOption);
    all->addLayout(buttons);
}

void frmNewVersion::Load()
{
    chkReminderOption->setChecked(m_program.settings.ShowReminderScreen != 0);
    txtNewVersionMsg->setPlainText(NewVersionMessage(m_program.priceUpdate.WebVersionText,
                                                     Resolved(m_program.webAddresses.Downloads())));
    cmdDownloadNow->setFocus();
}

void frmNewVersion::cmdDownloadNow_Click()
{
    OpenInternetExplorer(m_program, Resolved(m_program.webAddresses.Downloads()));
    UnloadMe();
}

void frmNewVersion::cmdViewReviewHist_Click()
{
    OpenInternetExplorer(m_program, Resolved(m_program.webAddresses.VersionChanges()));
}

void frmNewVersion::chkReminderOption_Click()
{
    const bool isOn = chkReminderOption->isChecked();
    if (!isOn)
        MsgBox(QStringLiteral("Note: This reminder can be reset again in the setup screen."),
               Box::Information, EditorTitle());
    m_program.settings.ShowReminderScreen = isOn ? 1 : 0;
}

QString frmNewVersion::Resolved(const QString &address)
{
    return ResolveAddress(address, m_program.practiceServer);
}
