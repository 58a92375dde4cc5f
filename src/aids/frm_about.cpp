#include "aids/frm_about.h"

#include "aids/about_texts.h"
#include "platform/widgets/app_icon.h"

#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

namespace
{

constexpr int IconSize = 64;

} // namespace

frmAbout::frmAbout(Program &program)
    : Form(program, QStringLiteral("frmAbout"), QStringLiteral("About ") + ApplicationTitle(),
           Placement::Dialog)
{
    SystemFacts = [this] { return ReadSystemFacts(m_program.services.appPath); };
    BuildControls();
    OnClick(cmdOK, [this] { UnloadMe(); });
    OnClick(cmdSysInfo, [this] { StartSysInfo(); });
    On(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, [this] { cmdOK->click(); });
}

QLabel *frmAbout::MakeLabel(const char *name, const QString &text)
{
    auto *label = new QLabel(text, this);
    label->setObjectName(QString::fromUtf8(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void frmAbout::BuildControls()
{
    auto *picIcon = new QLabel(this);
    picIcon->setObjectName(QStringLiteral("picIcon"));
    picIcon->setAccessibleName(ApplicationTitle());
    picIcon->setPixmap(AppIcon(m_program.services.programPath, QStringLiteral("quillon"))
                           .pixmap(QSize(IconSize, IconSize), devicePixelRatioF()));
    auto *lblTitle = MakeLabel("lblTitle", ApplicationTitle());
    QFont heading = lblTitle->font();
    heading.setPointSizeF(QFontInfo(heading).pointSizeF() * 1.8);
    heading.setBold(true);
    lblTitle->setFont(heading);
    auto *lblVersion = MakeLabel("lblVersion", VersionLine());
    lblVersion->setTextInteractionFlags(Qt::TextSelectableByMouse); // for a letter to the maker
    auto *lblDescription = MakeLabel("lblDescription", DescriptionText());
    lblDescription->setMinimumWidth(TextSize(60, 1).width());

    cmdOK = MakeButton("cmdOK", "&OK");
    cmdOK->setDefault(true);
    cmdSysInfo = MakeButton("cmdSysInfo", "&System Info...");

    auto *texts = new QVBoxLayout;
    texts->addWidget(lblTitle);
    texts->addWidget(lblVersion);
    texts->addSpacing(8);
    texts->addWidget(lblDescription);
    texts->addStretch();
    auto *top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(picIcon, 0, Qt::AlignTop);
    top->addLayout(texts, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdSysInfo);
    auto *all = new QVBoxLayout(this);
    all->addLayout(top, 1);
    all->addSpacing(8);
    all->addLayout(buttons);
}

void frmAbout::Load()
{
    Status(QString());
    m_program.UserActed();
    cmdOK->setFocus();
}

void frmAbout::StartSysInfo()
{
    if (SystemFacts().isEmpty())
        MsgBox(QStringLiteral("System Information Is Unavailable At This Time"), Box::Information,
               EditorTitle());
    else
        m_program.screens.ShowModal(QStringLiteral("frmSystemInfo"));
}

void frmAbout::ShowHelp()
{
    m_program.screens.ShowHelp(QStringLiteral("TATipsAbout.html"));
}
