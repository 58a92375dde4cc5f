#include "charts/frm_plot_selection.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

frmPlotSelection::frmPlotSelection(Program &program)
    : Form(program, QStringLiteral("frmPlotSelection"), QStringLiteral("Plot Object Selection"),
           Placement::Dialog)
{
    auto *frame = new QGroupBox(QStringLiteral("Select object to apply color"), this);
    auto *options = new QVBoxLayout(frame);
    const auto option = [&](const char *name, const char *caption) {
        auto *button = new QRadioButton(QString::fromUtf8(caption), frame);
        button->setObjectName(QString::fromUtf8(name));
        options->addWidget(button);
        return button;
    };
    optBackdrop = option("optBackdrop", "Backdrop");
    optBase = option("optBase", "Plot Base");
    optWall = option("optWall", "Plot Wall");
    optBackdrop->setChecked(true);

    QPushButton *cmdOK = MakeButton("cmdOK", "&OK");
    QPushButton *cmdCancel = MakeButton("cmdCancel", "&Cancel");
    cmdOK->setDefault(true);
    OnClick(cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdCancel, [this] { UnloadMe(); });

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto *all = new QVBoxLayout(this);
    all->addWidget(frame);
    all->addLayout(buttons);
}

void frmPlotSelection::Load()
{
    m_program.chart.ChartAreaChosen.clear();
    Status(QStringLiteral("Select object to apply color."));
}

void frmPlotSelection::cmdOK_Click()
{
    QString &ChartAreaChosen = m_program.chart.ChartAreaChosen;
    if (optBackdrop->isChecked())
        ChartAreaChosen = QStringLiteral("Backdrop");
    else if (optBase->isChecked())
        ChartAreaChosen = QStringLiteral("Base");
    else if (optWall->isChecked())
        ChartAreaChosen = QStringLiteral("Wall");
    UnloadMe();
}

void frmPlotSelection::ShowHelp()
{
    m_program.screens.ShowHelp(QStringLiteral("CHChartScreen.html"));
}
