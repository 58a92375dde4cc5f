#include "charts/frm_chart_screen.h"

#include "charts/frm_chart_screen_picture.h"
#include "platform/command_groups.h"
#include "platform/widgets/chart.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/wrapping_row.h"
#include "program/daily_gains.h"
#include "program/preferences.h"
#include "program/select_security.h"
#include "program/wait_cursor.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QToolTip>
#include <QVBoxLayout>

using namespace std::chrono_literals;

namespace
{

ChartWork WorkOf(Program &program)
{
    Databases &databases = program.databases;
    return {databases.gConnAccount, databases.gConnApplControl, databases.gConnHistPrices,
            program.account, program.services};
}

QColor ColorOf(const Settings::Components &components)
{
    return QColor(components.Red, components.Green, components.Blue);
}

Settings::Components ComponentsOf(Rgb color)
{
    return {int(color >> 16 & 0xFF), int(color >> 8 & 0xFF), int(color & 0xFF)};
}

} // namespace

frmChartScreen::frmChartScreen(Program &program)
    : Form(program, QStringLiteral("frmChartScreen"), QStringLiteral("Chart"), Placement::Child),
      m_series(WorkOf(program)),
      Timer1(program.services.clock.CreateTimer([this] { Guarded([this] { Timer1_Timer(); }); })),
      m_range(*this, program, program.chart.ChartFromDate, program.chart.ChartToDate)
{
    BuildControls();
    BuildLayout();
    ConnectControls();
}

void frmChartScreen::BuildControls()
{
    lblSymbol = new QLabel(QStringLiteral("&Symbol"), this);
    lblSymbol->setObjectName(QStringLiteral("lblSymbol"));
    combSymbol = new QComboBox(this);
    combSymbol->setObjectName(QStringLiteral("combSymbol"));
    combSymbol->setAccessibleName(QStringLiteral("Symbol"));
    combSymbol->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    combSymbol->setMinimumContentsLength(8);
    lblSymbol->setBuddy(combSymbol);

    FrameInterval = new QGroupBox(QStringLiteral("Interval"), this);
    FrameInterval->setObjectName(QStringLiteral("FrameInterval"));
    const auto option = [this](const char *name, const char *caption) {
        auto *button = new QRadioButton(QString::fromUtf8(caption), FrameInterval);
        button->setObjectName(QString::fromUtf8(name));
        button->setAccessibleName(button->text().trimmed());
        return button;
    };
    optDaily = option("optDaily", "Daily");
    optWeekly = option("optWeekly", " Weekly");
    optMonthly = option("optMonthly", "Monthly");

    MSChart = new Chart(this);
    MSChart->setObjectName(QStringLiteral("MSChart"));
    MSChart->setAccessibleName(QStringLiteral("Chart"));
    MSChart->SetFormats(m_program.services.formats); // the series write their texts by it

    cmd3D = MakeButton("cmd3D", "Style");
    cmd3D->setToolTip(QStringLiteral("Changes the current chart style."));
    cmdHelp = MakeButton("cmdHelp", "Hel&p"); // Alt+H and Alt+C are the main menu's
    cmdClose = MakeButton("cmdClose", "C&lose");
}

void frmChartScreen::BuildLayout()
{
    auto *interval = new QHBoxLayout(FrameInterval);
    interval->setContentsMargins(9, 2, 9, 2); // the frame is to be no higher than need be
    for (QRadioButton *button : {optDaily, optWeekly, optMonthly})
        interval->addWidget(button);
    auto *head = new WrappingRow;
    m_range.AddTo(*head);
    head->AddGroup({lblSymbol, combSymbol});
    head->AddGroup({FrameInterval});
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_range.cmdOK); // not in the head, which the pies do without
    buttons->addWidget(cmd3D);
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdClose);
    auto *all = new QVBoxLayout(this);
    all->addLayout(head);
    all->addWidget(MSChart, 1);
    all->addLayout(buttons);

    QWidget *before = m_range.dtpTo;
    for (QWidget *control :
         std::initializer_list<QWidget *>{combSymbol, optDaily, optWeekly, optMonthly, MSChart,
                                          m_range.cmdOK, cmd3D, cmdHelp, cmdClose}) {
        setTabOrder(before, control);
        before = control;
    }
}

void frmChartScreen::ConnectControls()
{
    On(combSymbol, &QComboBox::activated, [this] {
        m_program.UserActed();
        combSymbol_Click();
    });
    OnClick(m_range.cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmd3D, [this] { cmd3D_Click(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QString::fromUtf8(InfoOf(m_kind).helpTopic)); });
    OnClick(cmdClose, [this] { UnloadMe(); });

    MSChart->OnUserAction = [this] { m_program.UserActed(); };
    MSChart->OnPointSelected = [this](int series, int point) {
        Guarded([=, this] { MSChart_PointSelected(series, point); });
    };
    MSChart->OnPlotActivated = [this] { Guarded([this] { MSChart_PlotActivated(); }); };
    MSChart->OnSeriesActivated = [this](int series) {
        Guarded([=, this] { MSChart_SeriesActivated(series); });
    };
    MSChart->OnContextMenu = [this](const QPoint &where) {
        Guarded([&] { m_program.screens.ShowPopup(QStringLiteral("popChartScreen"), where); });
    };
}

QSize frmChartScreen::sizeHint() const
{
    return TenthsOfMainWindow(9, 9);
}

// --- coming and going ---------------------------------------------------------------------------

void frmChartScreen::Load()
{
    Services &services = m_program.services;
    ChartState &chart = m_program.chart;
    chart.ChartScreenOpen = true;
    LoadingChart = true;
    const QDate today = services.clock.Today();
    if (chart.ChartFromDate == NoDate())
        m_range.Set(today.addDays(-30), today);
    else
        m_range.Set(chart.ChartFromDate, chart.ChartToDate);

    if (!CheckedChartKind(services.commands)) // opened at the start of the program
        services.commands.SetChecked(QStringLiteral("mnuChartPositions"), true);
    m_kind = *CheckedChartKind(services.commands);
    RecordTodaysGains(m_program);
    ShowControls();
    ReloadChart();
    ApplyColors();
    LoadingChart = false;
    Timer1->SetInterval(10s);
    Timer1->SetEnabled(true);
    HintCount = 0;
    Status(QString());
}

void frmChartScreen::ShowControls()
{
    const ChartKindInfo &info = InfoOf(m_kind);
    setWindowTitle(QString::fromUtf8(info.caption));
    for (QWidget *control : std::initializer_list<QWidget *>{m_range.lblFrom, m_range.dtpFrom,
                                                             m_range.lblTo, m_range.dtpTo})
        control->setVisible(info.hasDates);
    m_range.cmdOK->setEnabled(info.hasDates);
    cmd3D->setEnabled(info.hasDates);
    if (*info.nextStyle)
        cmd3D->setText(QString::fromUtf8(info.nextStyle));
    FrameInterval->setVisible(info.hasInterval);
    lblSymbol->setVisible(info.hasSymbolList);
    combSymbol->setVisible(info.hasSymbolList);
    if (info.hasSymbolList)
        FillSymbolList();
    MSChart->SetStyle(info.style);
}

void frmChartScreen::ApplyColors()
{
    const Settings &settings = m_program.settings;
    MSChart->SetSeriesColor(1, ColorOf(settings.ChartSeries));
    MSChart->SetBackdropColor(ColorOf(settings.ChartBack));
    MSChart->SetBaseColor(ColorOf(settings.ChartBase));
    MSChart->SetWallColor(ColorOf(settings.ChartWall));
}

void frmChartScreen::Activate()
{
    const QString &symbol = m_program.selection.CurrentSymbol;
    if (InfoOf(m_kind).hasSymbolList && !symbol.isEmpty() && symbol != combSymbol->currentText())
        SetSymbolText(symbol);
}

void frmChartScreen::OnUnload()
{
    Timer1->SetEnabled(false);
    UncheckChartMenuOptions(m_program.services.commands);
    m_program.chart.ChartScreenOpen = false;
    SaveSettings(m_program); // the colours
    Status(QString());
}

bool frmChartScreen::RunCommand(const QString &name)
{
    if (name == QLatin1String("popCHSavePicture"))
        SaveChartPicture(m_program, MSChart->Picture(), Caption());
    else if (name == QLatin1String("popCHCopyPicture"))
        CopyChartPicture(m_program, MSChart->Picture());
    else if (name == QLatin1String("popCHSeriesColor"))
        MSChart_SeriesActivated(std::max(1, MSChart->SelectedSeries()));
    else if (name == QLatin1String("popCHAreaColor"))
        MSChart_PlotActivated();
    else
        return false;
    return true;
}

// --- the series ---------------------------------------------------------------------------------

void frmChartScreen::ReloadChart()
{
    const WaitCursor hourglass;
    ChartInterval interval = ReadInterval();
    std::optional<ChartGrid> grid = m_series.Reload(m_kind, m_program.selection.CurrentSymbol,
                                                    {m_range.From(), m_range.To()}, interval);
    ShowInterval(interval);
    if (grid)
        MSChart->SetGrid(std::move(*grid));
}

ChartInterval frmChartScreen::ReadInterval() const
{
    return optDaily->isChecked()     ? ChartInterval::Daily
           : optWeekly->isChecked()  ? ChartInterval::Weekly
           : optMonthly->isChecked() ? ChartInterval::Monthly
                                     : ChartInterval::None;
}

void frmChartScreen::ShowInterval(ChartInterval interval)
{
    optDaily->setChecked(interval == ChartInterval::Daily);
    optWeekly->setChecked(interval == ChartInterval::Weekly);
    optMonthly->setChecked(interval == ChartInterval::Monthly);
}

// --- controls -----------------------------------------------------------------------------------

void frmChartScreen::FillSymbolList()
{
    combSymbol->clear();
    combSymbol->addItems(m_series.Symbols(m_kind));
    // The first one when none matches: the selection stays as it is.
    const int item = combSymbol->findText(m_program.selection.CurrentSymbol);
    combSymbol->setCurrentIndex(std::max(item, 0));
}

void frmChartScreen::SetSymbolText(const QString &symbol)
{
    const int item = combSymbol->findText(symbol);
    if (item < 0)
        return;
    combSymbol->setCurrentIndex(item);
    combSymbol_Click();
}

void frmChartScreen::combSymbol_Click()
{
    if (LoadingChart)
        return;
    SelectSecurity(m_program, combSymbol->currentText());
    cmdOK_Click();
}

void frmChartScreen::cmdOK_Click()
{
    if (m_range.From() > m_range.To()) {
        MsgBox(FromIsLaterText(), Box::Exclamation, QStringLiteral("Chart Editor"));
        return;
    }
    LoadingChart = true;
    const QString &symbol = m_program.selection.CurrentSymbol;
    if (InfoOf(m_kind).hasSymbolList && !symbol.trimmed().isEmpty())
        SetSymbolText(symbol);
    LoadingChart = false;
    ReloadChart();
}

void frmChartScreen::cmd3D_Click()
{
    const ChartStyleStep step = NextChartStyle(m_kind, cmd3D->text());
    MSChart->SetStyle(step.style);
    cmd3D->setText(step.nextCaption);
}

// --- readout and hints --------------------------------------------------------------------------

void frmChartScreen::MSChart_PointSelected(int series, int point)
{
    ShowTip(m_series.Readout(m_kind, MSChart->Grid(), series, point));
    // At once, beside the point: whoever uses the keyboard has no mouse there.
    if (const auto target = MSChart->PointTarget(series, point); target.widget)
        QToolTip::showText(target.widget->mapToGlobal(target.center), MSChart->toolTip(), MSChart);
    Timer1->SetEnabled(false); // ten seconds from now
    Timer1->SetEnabled(true);
}

void frmChartScreen::Timer1_Timer()
{
    ShowTip(HintCount < 2 ? QString::fromUtf8(InfoOf(m_kind).hint) : QString());
    if (HintCount < 2)
        ++HintCount;
    Timer1->SetEnabled(false);
}

void frmChartScreen::ShowTip(const QString &tip)
{
    MSChart->setToolTip(tip);
    if (!tip.isEmpty()) // else what the chart tells of itself stays
        MSChart->setAccessibleDescription(tip);
}

// --- colours ------------------------------------------------------------------------------------

void frmChartScreen::MSChart_PlotActivated()
{
    Settings &settings = m_program.settings;
    const std::optional<Rgb> color =
        m_program.services.dialogs.PickColor(ColorOf(settings.ChartBack).rgb() & RGB_MASK);
    if (!color)
        return;
    m_program.screens.ShowModal(QStringLiteral("frmPlotSelection"));
    const QString &ChartAreaChosen = m_program.chart.ChartAreaChosen;
    if (ChartAreaChosen == QLatin1String("Backdrop"))
        settings.ChartBack = ComponentsOf(*color);
    else if (ChartAreaChosen == QLatin1String("Base"))
        settings.ChartBase = ComponentsOf(*color);
    else if (ChartAreaChosen == QLatin1String("Wall"))
        settings.ChartWall = ComponentsOf(*color);
    else
        return;
    MSChart->SetBackdropColor(ColorOf(settings.ChartBack));
    MSChart->SetBaseColor(ColorOf(settings.ChartBase));
    MSChart->SetWallColor(ColorOf(settings.ChartWall));
}

void frmChartScreen::MSChart_SeriesActivated(int series)
{
    Settings &settings = m_program.settings;
    const std::optional<Rgb> color =
        m_program.services.dialogs.PickColor(ColorOf(settings.ChartSeries).rgb() & RGB_MASK);
    if (!color)
        return;
    settings.ChartSeries = ComponentsOf(*color);
    MSChart->SetSeriesColor(series, ColorOf(settings.ChartSeries));
}
