#include "program/browser_screen.h"

#include "marketdata/practice_site.h"
#include "program/form.h"

#include <QScopeGuard>

using namespace std::chrono_literals;

namespace
{

const QString Screen = QStringLiteral("frmWebBrowser");

/// The row of the site in use, wherever the cursor stands; an empty one without that row.
QuoteSite SiteInUse(Program &program)
{
    Recordset &sites = program.databases.gRsWebParameters;
    if (!sites.IsOpen())
        return {};
    const auto back = qScopeGuard([&sites, row = sites.Position()] { sites.MoveTo(row); });
    if (!FindSite(sites, program.account.CurrentWebSiteName))
        return {};
    try {
        ServePracticeSite(program.practiceServer, sites);
    } catch (const RuntimeError &) {
        // Without a free port the page cannot be reached; the browser says so in its own words.
    }
    return CurrentSite(sites);
}

} // namespace

QString BuildIntradayChartAddress(Program &program)
{
    return ResolveAddress(
        program.webAddresses.IntradayChart(SiteInUse(program), program.selection.CurrentSymbol),
        program.practiceServer);
}

QString BuildMapOfMarketAddress(Program &program)
{
    return ResolveAddress(program.webAddresses.MarketMap(SiteInUse(program)),
                          program.practiceServer);
}

void NavigateBrowserScreen(Program &program, const QString &address)
{
    if (!program.run.BrowserScreenOpen) {
        program.screens.Show(Screen);
        return;
    }
    if (auto *screen = dynamic_cast<BrowserScreen *>(program.screens.Find(Screen)))
        screen->Navigate(address);
    program.screens.Show(Screen); // it may lie behind the Daily Tracker
    program.services.clock.Wait(750ms);
}
