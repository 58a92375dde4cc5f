#include "shell/screen_registry.h"

#include "aids/frm_about.h"
#include "aids/frm_system_info.h"
#include "aids/frm_tip_of_day.h"
#include "charts/frm_chart_screen.h"
#include "charts/frm_plot_selection.h"
#include "lists/frm_daily_profit_loss.h"
#include "lists/frm_delete_options.h"
#include "lists/frm_history_list.h"
#include "lists/frm_purchase_list.h"
#include "marketdata/frm_historical_price_list.h"
#include "marketdata/frm_internet_tran.h"
#include "marketdata/frm_new_version.h"
#include "marketdata/frm_progress_bar.h"
#include "marketdata/frm_quote_server_update.h"
#include "marketdata/frm_quote_site_trial.h"
#include "marketdata/frm_web_browser.h"
#include "marketdata/frm_web_login.h"
#include "reports/frm_date_select.h"
#include "reports/frm_portfolio_select.h"
#include "shell/frm_backup_restore.h"
#include "shell/frm_password.h"
#include "shell/frm_splash.h"
#include "shell/frm_user_setup.h"
#include "shell/screen_host.h"
#include "tracking/frm_daily_tracker.h"
#include "transactions/frm_security_update.h"
#include "transactions/frm_transaction_update.h"

namespace
{

template <class Screen>
void Register(ScreenHost &host, const char *name, const char *viewEntry = "")
{
    host.Register(
        QString::fromUtf8(name),
        [](Program &program) -> std::unique_ptr<Form> { return std::make_unique<Screen>(program); },
        QString::fromUtf8(viewEntry));
}

} // namespace

void RegisterScreens(ScreenHost &host)
{
    Register<frmSplash>(host, "frmSplash");
    Register<frmPassword>(host, "frmPassword");
    Register<frmBackupRestore>(host, "frmBackupRestore");
    Register<frmDailyTracker>(host, "frmDailyTracker", "mnuVWDailyTracker");
    Register<frmDailyProfitLoss>(host, "frmDailyProfitLoss", "mnuVWDailyProfitLoss");
    Register<frmChartScreen>(host, "frmChartScreen");
    Register<frmPlotSelection>(host, "frmPlotSelection");
    Register<frmDeleteOptions>(host, "frmDeleteOptions");
    Register<frmHistoryList>(host, "frmHistoryList", "mnuVWHistory");
    Register<frmPurchaseList>(host, "frmPurchaseList", "mnuVWPurchaseList");
    Register<frmHistoricalPriceList>(host, "frmHistoricalPriceList", "mnuVWHistoricalPriceList");
    Register<frmNewVersion>(host, "frmNewVersion");
    Register<frmProgressBar>(host, "frmProgressBar");
    Register<frmDateSelect>(host, "frmDateSelect");
    Register<frmPortfolioSelect>(host, "frmPortfolioSelect");
    Register<frmQuoteServerUpdate>(host, "frmQuoteServerUpdate", "mnuVWQuoteServerUpdate");
    Register<frmQuoteSiteTrial>(host, "frmQuoteSiteTrial");
    Register<frmSecurityUpdate>(host, "frmSecurityUpdate");
    Register<frmTransactionUpdate>(host, "frmTransactionUpdate");
    Register<frmUserSetup>(host, "frmUserSetup");
    Register<frmWebBrowser>(host, "frmWebBrowser");
    Register<frmInternetTran>(host, "frmInternetTran");
    Register<frmWebLogin>(host, "frmWebLogin");
    Register<frmTipOfDay>(host, "frmTipOfDay");
    Register<frmAbout>(host, "frmAbout");
    Register<frmSystemInfo>(host, "frmSystemInfo");
}
