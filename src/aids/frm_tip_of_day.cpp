#include "aids/frm_tip_of_day.h"

#include "aids/tips.h"

#include <QCheckBox>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

frmTipOfDay::frmTipOfDay(Program &program)
    : Form(program, QStringLiteral("frmTipOfDay"), QStringLiteral("Tip of the Day"),
           Placement::Dialog)
{
    BuildControls();
    OnClick(cmdNextTip, [this] { cmdNextTip_Click(); });
    OnClick(chkLoadTipsAtStartup, [this] {
        m_program.settings.ShowTipOfDay = chkLoadTipsAtStartup->isChecked() ? 1 : 0;
    });
    OnClick(cmdOK, [this] { UnloadMe(); });
    On(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, [this] { cmdOK->click(); });
}

void frmTipOfDay::BuildControls()
{
    auto *lblDidYouKnow = new QLabel(QStringLiteral("Did you know..."), this);
    lblDidYouKnow->setObjectName(QStringLiteral("lblDidYouKnow"));
    QFont heading = lblDidYouKnow->font();
    heading.setPointSizeF(QFontInfo(heading).pointSizeF() * 1.4);
    heading.setBold(true);
    lblDidYouKnow->setFont(heading);

    lblTipText = new QLabel(this);
    lblTipText->setObjectName(QStringLiteral("lblTipText"));
    lblTipText->setTextFormat(Qt::PlainText);
    lblTipText->setWordWrap(true);
    lblTipText->setMargin(8);
    lblTipText->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblTipText->setBackgroundRole(QPalette::Base);
    lblTipText->setForegroundRole(QPalette::Text);

    // The user's own file may hold a tip of any length.
    auto *tip = new QScrollArea(this);
    tip->setObjectName(QStringLiteral("fraTip"));
    tip->setAccessibleName(QStringLiteral("Tip"));
    tip->setBackgroundRole(QPalette::Base);
    tip->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tip->setWidgetResizable(true);
    tip->setWidget(lblTipText);
    tip->setMinimumSize(TextSize(76, 9));

    chkLoadTipsAtStartup = new QCheckBox(QStringLiteral("&Show Tips at Startup"), this);
    chkLoadTipsAtStartup->setObjectName(QStringLiteral("chkLoadTipsAtStartup"));
    cmdNextTip = MakeButton("cmdNextTip", "&Next Tip");
    cmdOK = MakeButton("cmdOK", "&OK");
    cmdOK->setDefault(true);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(chkLoadTipsAtStartup);
    buttons->addStretch();
    buttons->addWidget(cmdNextTip);
    buttons->addWidget(cmdOK);
    auto *all = new QVBoxLayout(this);
    all->addWidget(lblDidYouKnow);
    all->addWidget(tip, 1);
    all->addLayout(buttons);
}

void frmTipOfDay::Load()
{
    chkLoadTipsAtStartup->setChecked(m_program.settings.ShowTipOfDay == 1);
    if (const auto tips = LoadTips(TipFile(m_program.services.appPath))) {
        m_tips = *tips;
        cmdNextTip_Click();
    } else {
        ShowText(TipsNotFoundText());
    }
    cmdOK->setFocus();
}

void frmTipOfDay::cmdNextTip_Click()
{
    int &CurrentTip = m_program.settings.CurrentTip;
    CurrentTip = NextTip(CurrentTip, int(m_tips.size()));
    DisplayCurrentTip();
}

void frmTipOfDay::DisplayCurrentTip()
{
    if (!m_tips.isEmpty())
        ShowText(TipText(m_tips, m_program.settings.CurrentTip));
}

void frmTipOfDay::ShowText(const QString &text)
{
    lblTipText->setText(text);
    setAccessibleDescription(text); // which a screen reader speaks when the screen comes up
}

void frmTipOfDay::ShowHelp()
{
    m_program.screens.ShowHelp(QStringLiteral("TATipsAbout.html"));
}
