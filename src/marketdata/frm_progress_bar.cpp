#include "marketdata/frm_progress_bar.h"

#include <QScreen>
#include <QVBoxLayout>

frmProgressBar::frmProgressBar(Program &program)
    : Form(program, QStringLiteral("frmProgressBar"), QStringLiteral("What I'm I doing?"),
           Placement::OnTop),
      lblProgressBar(new QLabel(this)), ProgressBar(new QProgressBar(this)),
      cmdQuestion(MakeButton("cmdQuestion", "?"))
{
    lblProgressBar->setObjectName(QStringLiteral("lblProgressBar"));
    ProgressBar->setObjectName(QStringLiteral("ProgressBar"));
    ProgressBar->setTextVisible(false);
    ProgressBar->setMinimumWidth(TextSize(46, 1).width());
    ProgressBar->setAccessibleName(QStringLiteral("Progress"));
    cmdQuestion->setAccessibleName(QStringLiteral("What is being done?"));
    cmdQuestion->setToolTip(QStringLiteral("Explains what is being done"));
    cmdQuestion->setFixedWidth(cmdQuestion->sizeHint().height());

    auto *bar = new QHBoxLayout;
    bar->addWidget(ProgressBar, 1);
    bar->addWidget(cmdQuestion);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblProgressBar);
    layout->addLayout(bar);

    OnClick(cmdQuestion, [this] { cmdQuestion_Click(); });
}

void frmProgressBar::ShowProgress(const QString &text, int first, int last)
{
    lblProgressBar->setText(text);
    ProgressBar->setRange(first, last);
    ProgressBar->setValue(first);
    ProgressBar->setAccessibleDescription(text);
}

void frmProgressBar::MoveProgress(int value)
{
    ProgressBar->setValue(value);
}

/// In the middle of the screen's width, at a quarter of the main window's height.
void frmProgressBar::showEvent(QShowEvent *event)
{
    Form::showEvent(event);
    if (m_placed || !parentWidget())
        return;
    m_placed = true;
    const QWidget *mainWindow = parentWidget()->window();
    move(screen()->geometry().center().x() - width() / 2,
         mainWindow->geometry().top() + mainWindow->height() / 4);
}

void frmProgressBar::cmdQuestion_Click()
{
    const QString doing = lblProgressBar->text();
    if (doing.contains(QStringLiteral("Historical")))
        m_program.screens.ShowHelp(QStringLiteral("HPWhatImDoing.html"));
    else if (doing.contains(QStringLiteral("Build")))
        m_program.screens.ShowHelp(QStringLiteral("DTWhatImDoing.html"));
}

void frmProgressBar::ShowHelp()
{
    cmdQuestion_Click();
}
