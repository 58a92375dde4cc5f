#include "shell/screen_registry.h"

#include "marketdata/frm_historical_price_list.h"
#include "marketdata/frm_internet_tran.h"
#include "marketdata/frm_new_version.h"
#include "marketdata/frm_progress_bar.h"
#include "marketdata/frm_quote_server_update.h"
#include "marketdata/frm_quote_site_trial.h"
#include "marketdata/frm_web_browser.h"
#include "marketdata/frm_web_login.h"
#include "shell/frm_password.h"
#include "shell/frm_splash.h"
#include "shell/screen_host.h"
#include "tracking/frm_daily_tracker.h"
#include "transactions/frm_security_update.h"
#include "transactions/frm_transaction_update.h"

#include <algorithm>
#include <iterator>

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

constexpr const char *ScreensToCome[] = {
    "frmAbout",           "frmBackupRestore", "frmChartScreen", "frmDailyProfitLoss",
    "frmDateSelect",      "frmDeleteOptions", "frmHistoryList", "frmPlotSelection",
    "frmPortfolioSelect", "frmPurchaseList",  "frmTipOfDay",    "frmUserSetup",
};

} // namespace

bool IsScreenToCome(const QString &form)
{
    return std::any_of(std::begin(ScreensToCome), std::end(ScreensToCome),
                       [&](const char *name) { return form == QLatin1String(name); });
}

void RegisterScreens(ScreenHost &host)
{
    Register<frmSplash>(host, "frmSplash");
    Register<frmPassword>(host, "frmPassword");
    Register<frmDailyTracker>(host, "frmDailyTracker", "mnuVWDailyTracker");
    Register<frmHistoricalPriceList>(host, "frmHistoricalPriceList", "mnuVWHistoricalPriceList");
    Register<frmNewVersion>(host, "frmNewVersion");
    Register<frmProgressBar>(host, "frmProgressBar");
    Register<frmQuoteServerUpdate>(host, "frmQuoteServerUpdate", "mnuVWQuoteServerUpdate");
    Register<frmQuoteSiteTrial>(host, "frmQuoteSiteTrial");
    Register<frmSecurityUpdate>(host, "frmSecurityUpdate");
    Register<frmTransactionUpdate>(host, "frmTransactionUpdate");
    Register<frmWebBrowser>(host, "frmWebBrowser");
    Register<frmInternetTran>(host, "frmInternetTran");
    Register<frmWebLogin>(host, "frmWebLogin");
}
