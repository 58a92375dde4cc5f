#pragma once

/// One chart of the account: profits and losses, positions, asset classes, prices or performance. Its
/// kind is that of the entry of the Charts menu which is checked when the screen loads, and stays for
/// as long as it is open.
///
/// The chart follows the security selected elsewhere when the screen comes to the front. A change of
/// dates or interval shows with cmdOK. The chart's tool tip has the readout of a selected point for
/// ten seconds, before and after it a hint.

#include "charts/chart_series.h"
#include "program/command_target.h"
#include "program/form.h"
#include "program/list_date_range.h"

class Chart;
class QComboBox;
class QGroupBox;
class QRadioButton;

class frmChartScreen : public Form, public CommandTarget
{
public:
    explicit frmChartScreen(Program &program);

    void Load() override;
    void Activate() override;
    void OnUnload() override;
    bool RunCommand(const QString &name) override;

    /// Loads and draws the kind anew, for CurrentSymbol where it has one.
    void ReloadChart();

    QSize sizeHint() const override;

private:
    void BuildControls();
    void BuildLayout();
    void ConnectControls();
    void ShowControls();
    void ApplyColors();

    void FillSymbolList();
    /// As a click on this item of the list; nothing when the list does not have it.
    void SetSymbolText(const QString &symbol);
    void combSymbol_Click();
    void cmdOK_Click();
    void cmd3D_Click();
    void MSChart_PointSelected(int series, int point);
    void MSChart_PlotActivated();
    void MSChart_SeriesActivated(int series);
    void Timer1_Timer();
    void ShowTip(const QString &tip);
    ChartInterval ReadInterval() const;
    void ShowInterval(ChartInterval interval);

    ChartSeries m_series;
    ChartKind m_kind = ChartKind::Positions;
    bool LoadingChart = false; ///< the screen itself sets combSymbol
    int HintCount = 0;         ///< hints shown
    std::unique_ptr<ClockTimer> Timer1;

    ListDateRange m_range;
    QLabel *lblSymbol = nullptr;
    QComboBox *combSymbol = nullptr;
    QGroupBox *FrameInterval = nullptr;
    QRadioButton *optDaily = nullptr;
    QRadioButton *optWeekly = nullptr;
    QRadioButton *optMonthly = nullptr;
    Chart *MSChart = nullptr;
    QPushButton *cmd3D = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdClose = nullptr;
};
