#pragma once

/// Web pages inside the main window: the intraday chart and the map of the market.
///
/// The page follows the interval of the price update: after WebUpdateMinutes ticks (of 65 s) the
/// chart is asked for anew, for the security that is selected by then; any other page is refreshed.
///
/// Without the plug-in that shows pages, wbBrowser names the page instead, and a page that the user
/// asks for opens in his own browser; when none takes it, wbBrowser says so. The timer opens none
/// there: each time would be a further window.

#include "program/browser_screen.h"
#include "program/form.h"

class BrowserView;

class frmWebBrowser : public Form, public BrowserScreen
{
public:
    explicit frmWebBrowser(Program &program);

    void Load() override;
    void Activate() override;
    void OnUnload() override;
    void Navigate(const QString &address) override;

    QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    class PageOutside;
    enum class Asked
    {
        ByUser,
        ByTimer
    };

    void BuildView();
    void ShowPage(const QString &address, Asked asked);
    void OpenOutside();
    void RefreshPage(Asked asked);
    /// A tick counts; the one that reaches WebUpdateMinutes brings the page up to date.
    void CountTick(Asked asked);
    void tmrWebBrowser_Timer() { CountTick(Asked::ByTimer); }
    void cmdRefresh_Click();
    void cmdHelp_Click();

    BrowserView *wbBrowser = nullptr;
    PageOutside *m_pageOutside = nullptr; ///< wbBrowser, unless that is the plug-in's
    bool m_wasShown = false;
    QString m_address; ///< of the page asked for last
    std::unique_ptr<ClockTimer> tmrWebBrowser;
    int RefreshTicks = 0; ///< since the last refresh
};
