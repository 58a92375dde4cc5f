#include "marketdata/frm_internet_tran.h"

#include "program/list_refresh.h"
#include "program/progress_display.h"

namespace
{

/// The screens of the program, for a cycle that may outlive its form.
class ProgramScreens : public PriceCycleScreens
{
public:
    explicit ProgramScreens(Program &program) : m_program(program) {}

    void UnloadCycle() override { Unload("frmInternetTran"); }
    bool ProgramClosing() const override { return m_program.run.ProgramClosing; }
    bool PostingInProgress() const override { return m_program.entry.PostingInProgress; }
    bool RebuildRunning() const override { return m_program.entry.RebuildRunning; }
    bool TrackerReady() const override { return bool(m_program.ReloadDataGrid); }
    void ReloadDataGrid() override
    {
        if (m_program.ReloadDataGrid)
            m_program.ReloadDataGrid();
    }

    void ShowWebLogin() override { m_program.screens.ShowModal(QStringLiteral("frmWebLogin")); }
    void ShowNewVersion() override { m_program.screens.ShowModal(QStringLiteral("frmNewVersion")); }
    void UnloadTips() override { Unload("frmTipOfDay"); }
    void RefreshHistoricalPriceList() override { RefreshPriceList(m_program); }

    void ShowProgress(const QString &text, int first, int last) override
    {
        ShowProgressBar(m_program, text, first, last);
    }
    void MoveProgress(int value) override { MoveProgressBar(m_program, value); }
    void UnloadProgress() override { Unload("frmProgressBar"); }

private:
    void Unload(const char *form) { m_program.screens.Unload(QString::fromUtf8(form)); }

    Program &m_program;
};

} // namespace

frmInternetTran::frmInternetTran(Program &program)
    : Form(program, QStringLiteral("frmInternetTran"), QStringLiteral("Internet Transfer"),
           Placement::Hidden),
      m_cycle(std::make_shared<PriceCycle>(PriceCycleWork{
          program.databases, program.settings, program.account, program.AdodcStockHistory,
          program.priceUpdate, program.services, program.practiceServer, program.webAddresses,
          std::make_shared<ProgramScreens>(program), CaptionEditor()}))
{}

void frmInternetTran::Load()
{
    m_program.priceUpdate.Pause = nullptr; // a pause that somebody has cut short
    m_cycle->Load();
}

void frmInternetTran::OnUnload()
{
    m_cycle->Unload();
    m_program.UserActed();
}
