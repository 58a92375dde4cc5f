#include "marketdata/price_cycle.h"

#include "marketdata/historical.h"
#include "marketdata/historical_rows.h"
#include "platform/command_groups.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace
{

constexpr auto FirstInterval = 5000ms;
/// "A minute": longer than a request may take.
constexpr auto Interval = 65000ms;

/// Failures that switch the price update off without a word: the user has seen a message already,
/// or closed the account.
bool IsSilent(int error)
{
    constexpr int transferControlErrors[] = {35755, 35758};
    return error == GiveUpError || error == RuntimeError::NoCurrentRecordNumber ||
           error == RuntimeError::ObjectClosedNumber || error == transferControlErrors[0] ||
           error == transferControlErrors[1];
}

QString TimeOutMessage(const RuntimeError &error)
{
    return ErrorLines(error) +
           QStringLiteral("\nA time out may be due to the type of connection specified \n"
                          "in the User Setup options or the website is not responding. \n"
                          "Change the connection type if this is the first time executing the \n"
                          "application or change the website in User Setup.");
}

} // namespace

int InetAccess(int accessType)
{
    switch (accessType) {
    case 2:
        return Inet::NamedProxy;
    case 3:
        return Inet::Direct;
    default:
        return Inet::SystemDefault;
    }
}

PriceCycle::PriceCycle(PriceCycleWork work)
    : m_work(std::move(work)), Inet1(m_work.services.clock),
      m_ladder({m_work.databases, m_work.settings, m_work.account, m_work.state, m_work.services,
                *m_work.screens, Inet1, StopRequested, m_work.title})
{
    Inet1.RequestTimeout = m_work.requestTimeout;
    Inet1.StateChanged = [this](int state) { Inet1_StateChanged(state); };
}

// --- on and off -----------------------------------------------------------------------------------

void PriceCycle::Load()
{
    PriceUpdateState &state = m_work.state;
    state.PriceUpdateActive = true;
    m_work.settings.WebPriceUpdate = true;
    ForceUpdate = true;
    state.MinutesSinceUpdate = Integer::FromWide(m_work.account.WebUpdateMinutes.Value() - 1);
    state.ConnectionState = 1;
    state.NotFoundList = QStringLiteral(", ");
    // The form may go in the tick: the cycle stays until the tick has come back.
    tmrGetCurrPrice = m_work.services.clock.CreateTimer([this] {
        const auto keep = shared_from_this();
        tmrGetCurrPrice_Timer();
    });
    tmrGetCurrPrice->SetInterval(FirstInterval);
    tmrGetCurrPrice->SetEnabled(true);
    Post(QString());
}

void PriceCycle::Unload()
{
    m_work.settings.LastRunDate = m_work.services.clock.Today();
    m_work.screens->UnloadProgress();
    if (!StopRequested) {
        Inet1.Cancel();
        tmrGetCurrPrice->SetEnabled(false);
    }
    StopRequested = true;
    PriceUpdateState &state = m_work.state;
    state.PriceUpdateActive = false;
    state.ConnectionState = 3;
    state.MinutesSinceUpdate = Integer();
    SetMenusEnabled(true);
    Post(QString());
}

// --- a tick ---------------------------------------------------------------------------------------

void PriceCycle::tmrGetCurrPrice_Timer()
{
    if (StopRequested) {
        Stop();
        return;
    }
    if (!CycleIsDue() || StopRequested)
        return;
    ForceUpdate = false;
    m_work.state.UpdateInProgress = true;
    tmrGetCurrPrice->SetInterval(Interval);
    try {
        RunCycle();
    } catch (const RuntimeError &error) {
        HandleError(error);
    }
    m_work.state.UpdateInProgress = false;
}

bool PriceCycle::CycleIsDue()
{
    PriceUpdateState &state = m_work.state;
    // What keeps a cycle that is due, such as a box of the one before, is not counted.
    if (state.MinutesSinceUpdate < m_work.account.WebUpdateMinutes)
        state.MinutesSinceUpdate += 1;
    state.ConnectionState = 1;
    Post(QString());
    if (state.UpdateInProgress) // this tick fires in a wait of the cycle before
        return false;
    if (state.MinutesSinceUpdate < m_work.account.WebUpdateMinutes && !ForceUpdate)
        return false;
    // The Daily Tracker may still be coming up, with a question on the screen.
    return !m_work.screens->PostingInProgress() &&
           (!m_work.rows.IsOpen() || m_work.screens->TrackerReady());
}

void PriceCycle::RunCycle()
{
    PriceUpdateState &state = m_work.state;
    const auto today = [this] { return m_work.services.clock.Today(); };
    SetMenusEnabled(false);
    RowsAreWritten = false;
    Inet1.AccessType = InetAccess(m_work.settings.AccessType);
    CurrPortfolioArray = LoadCurrPortfolioArray(m_work.rows, m_work.databases.gConnApplControl);
    SplitSymbols = PricesToReload(m_work.databases.gConnHistPrices); // before they are loaded
    if (HistoryIsDue())
        UpdateHistory();
    m_work.screens->UnloadProgress();
    if (!StopRequested)
        GetCurrentWebPage();
    if (m_work.screens->ProgramClosing())
        m_work.services.lifetime.End();
    if (!StopRequested)
        CheckVersion();
    if (StopRequested) {
        Post(QString());
        Stop();
        return;
    }
    if (NotFoundPending)
        ShowNotFound();
    state.MinutesSinceUpdate = Integer();
    Post(QStringLiteral("Ready to update..."));
    UpdateRows();
    if (today() != m_work.account.LastPriceUpdate) {
        if (WaitsUntil) // the day goes on, without a second download of daily prices
            m_work.account.HistoryRestsOn = today();
        else
            FinishDay();
    }
    SetMenusEnabled(true);
    CheckVersion();
    Post(QStringLiteral("Price update complete"));
    if (const QString remarks = ClosingStatus(); !remarks.isEmpty())
        Post(remarks);
}

bool PriceCycle::HistoryIsDue() const
{
    const QDate today = m_work.services.clock.Today();
    return m_work.state.HistoricalRetryNeeded ||
           (today != m_work.account.LastPriceUpdate && today != m_work.account.HistoryRestsOn);
}

void PriceCycle::UpdateHistory()
{
    m_work.screens->UnloadTips();
    SelectCurrentSite();
    const QString host =
        ResolveAddress(m_work.webAddresses.DailyPriceHost(m_site), m_work.practiceServer);
    if (m_work.state.Waits.Until(host, m_work.services.clock.Now())) {
        m_work.state.HistoricalRetryNeeded = true;
        return;
    }
    const std::unique_ptr<HistoricalSource> source =
        MakeHistoricalSource(host, m_work.webAddresses.DailyPriceFormat(m_site));
    const QScopedValueRollback loading(LoadingHistory, true);
    HistoricalWork work{m_work.databases.gConnHistPrices,
                        m_work.settings,
                        m_work.account,
                        m_work.state,
                        m_work.services,
                        Inet1,
                        *m_work.screens,
                        *source,
                        StopRequested,
                        m_work.title,
                        host};
    GetHistoricalPrices(work, CurrPortfolioArray);
}

/// The day counts as updated only at the end of a cycle that came through.
void PriceCycle::FinishDay()
{
    m_work.account.LastPriceUpdate = m_work.services.clock.Today();
    m_work.databases.gConnAccount.Execute(
        QStringLiteral("UPDATE DescriptiveTable SET Field05 = ? WHERE TableName = 'Balance'"),
        m_work.account.LastPriceUpdate);
}

/// Most failures switch the price update off.
void PriceCycle::HandleError(const RuntimeError &error)
{
    m_work.screens->UnloadProgress();
    if (m_work.screens->ProgramClosing())
        m_work.services.lifetime.End();
    SetMenusEnabled(true);
    PriceUpdateState &state = m_work.state;
    state.LastError = error.Number();
    state.UpdateInProgress = false;
    state.MinutesSinceUpdate = Integer();
    MarkRowsWithoutPrice();
    Dialogs &dialogs = m_work.services.dialogs;
    if (error.Number() == WaitForNextError) {
        Post(QString());
        return;
    }
    if (error.Number() == Inet::TimeOutError)
        dialogs.MsgBox(TimeOutMessage(error), Box::Exclamation, m_work.title);
    else if (!IsSilent(error.Number()))
        dialogs.MsgBox(error.Description(), Box::Information, m_work.title);
    Stop();
}

/// A cycle that broke off leaves old prices behind, which the rows show.
void PriceCycle::MarkRowsWithoutPrice()
{
    TrackerRecordset &rows = m_work.rows;
    if (!rows.IsOpen() || RowsAreWritten)
        return;
    PassTime = m_work.services.clock.TimeOfDay();
    for (int row = 0; row < rows.RecordCount(); ++row)
        rows.MarkPrice(row, NoPriceRemark(QStringLiteral("the update broke off")));
    rows.MarksChanged();
}

/// A form that was loaded anew in the meantime has a cycle of its own.
void PriceCycle::Stop()
{
    tmrGetCurrPrice->SetEnabled(false);
    if (!StopRequested)
        m_work.screens->UnloadCycle();
}

void PriceCycle::ShowNotFound()
{
    const QString &list = m_work.state.NotFoundList; // ", AAA, BBB, "
    qsizetype length = list.size();
    while (length > 0 && list[length - 1] == QLatin1Char(' '))
        --length;
    m_work.services.dialogs.MsgBox(
        QStringLiteral("The current price for the following symbol(s) were not found: \n") +
            list.mid(1, std::max<qsizetype>(length - 2, 0)) +
            QStringLiteral("\nVerify symbol(s) to be correct."),
        Box::Exclamation, m_work.title);
    NotFoundPending = false;
}

void PriceCycle::SetMenusEnabled(bool enabled)
{
    CommandStates &commands = m_work.services.commands;
    if (!enabled) {
        DisableFileButtons(commands);
        DisableMenusForPriceUpdate(commands);
        return;
    }
    if (m_work.screens->RebuildRunning()) // which has disabled them for its own length
        return;
    EnableFileAndServiceButtons(commands);
    EnableAllMenus(commands, false);
    commands.SetEnabled(QStringLiteral("popDTUndoLast"),
                        commands.Enabled(QStringLiteral("UndoLast")));
}
