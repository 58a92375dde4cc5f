#pragma once

/// The fetch of a quote page, and what a failed one means: from the soft to the hard, another try
/// on an empty answer, the connection to be started, a login, another site of the same group, and
/// at last the price update switched off.
///
/// Where it gives up it throws one of two numbers that the cycle's handler understands; the user has
/// seen the message by then.

#include "marketdata/price_cycle_screens.h"
#include "marketdata/price_update_state.h"
#include "marketdata/quote_sites.h"
#include "platform/inet.h"

constexpr int GiveUpError = 1001;      ///< switch the price update off
constexpr int WaitForNextError = 1003; ///< wait for the next interval

/// What the ladder works on; all of it belongs to the price cycle or the program.
struct SiteWork
{
    Databases &databases;
    Settings &settings;
    AccountState &account;
    PriceUpdateState &state;
    Services &services;
    PriceCycleScreens &screens;
    Inet &Inet1;
    const bool &StopRequested; ///< the cycle was unloaded: leave at the next look
    QString title;             ///< of the boxes
};

class SiteLadder
{
public:
    explicit SiteLadder(SiteWork work) : m_work(std::move(work)) {}

    /// The page at `address`, asked for as the current row of gRsWebParameters wants it; empty when
    /// StopRequested, when ConnectFailures asks for a switch of site, and when the site asks to be left
    /// alone for a while (PriceUpdateState::Waits).
    QString FetchWebPage(const QString &address);
    /// Asks for the login of the site in use; switches to another site when the user declines.
    void PromptWebLogin();
    /// Marks the site in use as failed and takes the first one, by name, of its group that has not.
    /// The user may refuse.
    void SwitchToAlternateSite();

    Integer ConnectFailures;        ///< empty answers in a row, or a cancelled login
    bool OptionUnsupported = false; ///< the site in use has no way to quote an option
    Integer AutoSwitchCount;        ///< switches since the cycle was loaded

private:
    QString Download(const QString &address);
    void WaitForTransfer();
    bool LoginAgain();
    bool TryAgain();
    void TellNoConnection();
    void AnnounceSwitch();
    int MarkFailed();
    void TakeSiteOfGroup(int similarSite);
    void SetConnectionState(int state, const QString &status);
    Answer Ask(const QString &text, int buttonsValue);

    SiteWork m_work;
};
