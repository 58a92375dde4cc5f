#include "aids/frm_system_info.h"

#include "aids/system_facts.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

namespace
{

/// Size as the programs see it, and how much larger than that the device is.
QList<SystemFact> ReadDesktopFacts()
{
    QList<SystemFact> facts{{QStringLiteral("Desktop"), QGuiApplication::platformName() +
                                                            QStringLiteral(", style ") +
                                                            QApplication::style()->name()}};
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        const QSize size = screen->size();
        facts.append({QStringLiteral("Screen"), QStringLiteral("%1 x %2 at %3 percent, %4 dpi")
                                                    .arg(size.width())
                                                    .arg(size.height())
                                                    .arg(qRound(screen->devicePixelRatio() * 100))
                                                    .arg(qRound(screen->logicalDotsPerInch()))});
    }
    facts.append({QStringLiteral("Language"), QLocale().name()});
    return facts;
}

} // namespace

frmSystemInfo::frmSystemInfo(Program &program)
    : Form(program, QStringLiteral("frmSystemInfo"), QStringLiteral("System Information"),
           Placement::Dialog)
{
    BuildControls();
    OnClick(cmdCopy, [this] { cmdCopy_Click(); });
    OnClick(cmdClose, [this] { UnloadMe(); });
}

void frmSystemInfo::BuildControls()
{
    txtSystemInfo = new QPlainTextEdit(this);
    txtSystemInfo->setObjectName(QStringLiteral("txtSystemInfo"));
    txtSystemInfo->setAccessibleName(windowTitle());
    txtSystemInfo->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtSystemInfo->setReadOnly(true);
    txtSystemInfo->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                           Qt::TextSelectableByKeyboard);
    txtSystemInfo->setTabChangesFocus(true);
    txtSystemInfo->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtSystemInfo->setMinimumSize(TextSize(113, 21));

    cmdCopy = MakeButton("cmdCopy", "C&opy");
    cmdClose = MakeButton("cmdClose", "&Close");
    cmdClose->setDefault(true);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdCopy);
    buttons->addStretch();
    buttons->addWidget(cmdClose);
    auto *all = new QVBoxLayout(this);
    all->addWidget(txtSystemInfo, 1);
    all->addLayout(buttons);
}

void frmSystemInfo::Load()
{
    const QString &appPath = m_program.services.appPath;
    txtSystemInfo->setPlainText(
        FactsText(ReadProgramFacts(appPath) + ReadSystemFacts(appPath) + ReadDesktopFacts()));
    txtSystemInfo->setFocus();
}

void frmSystemInfo::cmdCopy_Click()
{
    QGuiApplication::clipboard()->setText(txtSystemInfo->toPlainText());
    Status(QStringLiteral("System information copied"));
}

void frmSystemInfo::ShowHelp()
{
    m_program.screens.ShowHelp(QStringLiteral("TATipsAbout.html"));
}
