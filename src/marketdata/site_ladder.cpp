#include "marketdata/site_ladder.h"

#include "store/control_rows.h"

namespace
{

constexpr int EmptyAnswersBeforeSwitch = 2;

/// Both fields empty, or both null. A row with one of each is taken, and found out by its cycle.
bool CannotQuoteOptions(const Recordset &sites)
{
    const int prefix = sites.Column(QStringLiteral("OptionPrefix"));
    const int suffix = sites.Column(QStringLiteral("OptionSuffix"));
    return sites.Text(prefix).isEmpty() && sites.Text(suffix).isEmpty() &&
           sites.IsFieldNull(prefix) == sites.IsFieldNull(suffix);
}

bool IsOffLine(int responseCode)
{
    return responseCode == 0 || responseCode == Inet::NameNotResolved;
}

} // namespace

// --- one page -------------------------------------------------------------------------------------

QString SiteLadder::FetchWebPage(const QString &address)
{
    for (;;) {
        SetConnectionState(1, QStringLiteral("Connecting to website ") +
                                  ShortSiteName(m_work.account.CurrentWebSiteName));
        const QString page = Download(address);
        if (m_work.screens.ProgramClosing())
            m_work.services.lifetime.End();
        if (m_work.StopRequested)
            return QString();
        WaitForTransfer();
        if (m_work.state.Waits.Note(m_work.Inet1, address, m_work.services.clock.Now())) {
            ConnectFailures = Integer();
            return QString();
        }
        if (page.contains(QStringLiteral("Authorization"))) {
            if (!LoginAgain())
                return QString();
        } else if (page.isEmpty()) {
            if (!TryAgain())
                return QString();
        } else {
            ConnectFailures = Integer();
            SetConnectionState(2, QStringLiteral("Connection successful..."));
            return page;
        }
    }
}

QString SiteLadder::Download(const QString &address)
{
    Inet &Inet1 = m_work.Inet1;
    if (CurrentSite(m_work.databases.gRsWebParameters).SignUpURL.isEmpty())
        return Inet1.OpenURL(address);
    Inet1.URL = address;
    Inet1.UserName = m_work.state.WebLoginId;
    Inet1.Password = m_work.state.WebPassword;
    const QString page = Inet1.OpenURL();
    Inet1.Execute(QStringLiteral("QUIT"));
    return page;
}

void SiteLadder::WaitForTransfer()
{
    while (m_work.Inet1.StillExecuting() && !m_work.StopRequested)
        m_work.services.clock.Yield();
}

/// False when the user declined.
bool SiteLadder::LoginAgain()
{
    Ask(QStringLiteral("Login authorization failed!\n"
                       "Please enter the proper Login ID and password for\nwebsite: ") +
            ShortSiteName(m_work.account.CurrentWebSiteName),
        Box::Exclamation);
    m_work.screens.ShowWebLogin();
    if (m_work.state.LoginCancelled)
        ConnectFailures += 1;
    return !m_work.state.LoginCancelled;
}

/// After an empty answer: true to ask the site once more, false to leave it for another.
bool SiteLadder::TryAgain()
{
    SetConnectionState(4, QStringLiteral("No connection..."));
    ConnectFailures += 1;
    if (ConnectFailures.Value() > EmptyAnswersBeforeSwitch)
        return false;
    if (!IsOffLine(m_work.Inet1.ResponseCode()))
        TellNoConnection();
    if (Ask(QStringLiteral("Please start your Internet Service Provider (ISP) \n"
                           "to obtain current prices.  'OK' when ready."),
            Box::OkCancel + Box::Information) == Answer::Ok)
        return true;
    if (Ask(QStringLiteral(
                "Would you like to turn off this feature for now? \n\n"
                "This feature will automatically become available next time \n"
                "the application is re-started or you may click on the Connect / Disconnet \n"
                "icon to reset it. You may also disable it permanently in the \n"
                "Setup screen."),
            Box::YesNo + Box::Question) == Answer::Yes)
        throw RuntimeError(GiveUpError, QStringLiteral("The price update was turned off"));
    m_work.state.MinutesSinceUpdate = Integer();
    SetConnectionState(1, QString());
    throw RuntimeError(WaitForNextError, QStringLiteral("The price update waits"));
}

void SiteLadder::TellNoConnection()
{
    const int code = m_work.Inet1.ResponseCode();
    if (code == Inet::CannotConnect)
        Ask(QStringLiteral("A connection to the Internet could not be established.\n"
                           "Problems with connections can be attributed to the type of \n"
                           "internet connection you're using. Please go to the Setup \n"
                           "menu and check the appropriate connection type.  If you're behind a \n"
                           "a Firewall check 'Use Default Setting'. Check 'Proxy Server'\n"
                           "if you're using an ISP provider such as AOL or if you have direct\n"
                           "access to the Internet, check 'Direct access'."),
            Box::Information);
    else
        Ask(QStringLiteral("An Internet connection could not be established.\nErrorCode: %1\n"
                           "Error: ")
                    .arg(code) +
                m_work.Inet1.ResponseInfo(),
            Box::Stop);
    throw RuntimeError(GiveUpError, QStringLiteral("No connection"));
}

// --- logins and other sites -----------------------------------------------------------------------

void SiteLadder::PromptWebLogin()
{
    m_work.state.LoginCancelled = false;
    m_work.screens.ShowWebLogin();
    if (m_work.state.LoginCancelled)
        SwitchToAlternateSite();
}

void SiteLadder::SwitchToAlternateSite()
{
    SetConnectionState(4, QStringLiteral("Obtaining alternate website..."));
    AnnounceSwitch();
    AutoSwitchCount += 1;
    TakeSiteOfGroup(MarkFailed());
    AccountState &account = m_work.account;
    if (account.CurrentWebSiteName.isEmpty()) {
        Ask(QStringLiteral("Attention: The Websites where this application obtains current\n"
                           "price information are no longer functioning properly. This may be \n"
                           "corrected by downloading the latest version of the WebSites database.\n"
                           "The current price download feature will be disabled for now. "),
            Box::Stop);
        m_work.settings.WebPriceUpdate = false;
        throw RuntimeError(GiveUpError, QStringLiteral("No quote site is left"));
    }
    m_work.services.status.Post(QStringLiteral("Switching to ") + account.CurrentWebSiteName);
    InsertWebSiteRow(m_work.databases.gConnAccount, account, m_work.services);
    SetConnectionState(2, QStringLiteral("Success..."));
}

void SiteLadder::AnnounceSwitch()
{
    const QString notice =
        m_work.state.LoginCancelled || OptionUnsupported
            ? QStringLiteral("The application will automatically switch you now to another "
                             "website.  ")
            : QStringLiteral(
                  "Please note: The following web page where this application \n"
                  "obtains current price information have changed, is \n"
                  "invalid for your country of origin or is currently unavailable:\n\n") +
                  m_work.account.CurrentWebSiteName +
                  QStringLiteral("\n\nThe application will automatically switch you now to a "
                                 "similar \nwebsite if available.");
    if (Ask(notice, Box::OkCancel + Box::Exclamation) == Answer::Cancel)
        throw RuntimeError(GiveUpError, QStringLiteral("The switch of site was refused"));
}

/// The group of the site in use, whose name is empty afterwards.
int SiteLadder::MarkFailed()
{
    Recordset &sites = m_work.databases.gRsWebParameters;
    AccountState &account = m_work.account;
    if (!FindSite(sites, account.CurrentWebSiteName)) {
        account.CurrentWebSiteName.clear();
        return 0;
    }
    const QuoteSite failed = CurrentSite(sites);
    if (failed.DeselectFlagTemp &&
        Ask(QStringLiteral("You've had problems with this WebSite before: \n") +
                failed.WebSiteName + QStringLiteral("\nWould you like to disable it permanently?"),
            Box::YesNo + Box::Question) == Answer::Yes) {
        sites.Set(QStringLiteral("DeselectFlagPerm"), true);
        Ask(QStringLiteral("To enable again, go to Setup under the File menu and \n"
                           "just select the website."),
            Box::Information);
    }
    sites.Set(QStringLiteral("DeselectFlagTemp"), true);
    account.CurrentWebSiteName.clear();
    sites.Update();
    return failed.SimilarSite;
}

void SiteLadder::TakeSiteOfGroup(int similarSite)
{
    Recordset &sites = m_work.databases.gRsWebParameters;
    AccountState &account = m_work.account;
    for (sites.MoveFirst(); !sites.AtEnd(); sites.MoveNext()) {
        const QuoteSite site = CurrentSite(sites);
        if (site.DeselectFlagPerm || site.DeselectFlagTemp)
            continue;
        m_work.state.WebLoginId.clear();
        m_work.state.WebPassword.clear();
        if (site.SimilarSite != similarSite)
            continue;
        // The first site of the group ends the search, even when it cannot quote options either.
        if (!OptionUnsupported || !CannotQuoteOptions(sites))
            account.CurrentWebSiteName = site.WebSiteName;
        return;
    }
}

// --- words ----------------------------------------------------------------------------------------

void SiteLadder::SetConnectionState(int state, const QString &status)
{
    m_work.state.ConnectionState = state;
    m_work.services.status.Post(status);
}

Answer SiteLadder::Ask(const QString &text, int buttonsValue)
{
    return m_work.services.dialogs.MsgBox(text, buttonsValue, m_work.title);
}
