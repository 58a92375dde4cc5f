#pragma once

/// The price update: a timer counts minutes (of 65 seconds); when the minutes between updates have
/// passed, a cycle fetches a page for each batch of symbols, takes the prices out of it and writes
/// them, with their time, into the position rows. The first cycle of a day loads daily prices before.
///
///     auto cycle = std::make_shared<PriceCycle>(work);
///     cycle->Load();        switches the price update on; the first cycle comes 5 seconds later
///     cycle->Unload();      switches it off; a cycle that runs leaves at its next look
///
/// A cycle runs in a tick of the timer and handles events while it waits for pages, so the whole
/// program can go on in between. A second one never starts inside it. Whatever goes wrong ends in one
/// handler, most of it with the price update switched off until the user presses Connect.
///
/// Owned by shared pointers: the form that carries it may go while a cycle runs, which then ends
/// by itself.

#include "marketdata/extraction.h"
#include "marketdata/portfolio_array.h"
#include "marketdata/site_ladder.h"
#include "marketdata/web_addresses.h"

#include <memory>

/// What the cycle works on; all of it belongs to the program.
struct PriceCycleWork
{
    Databases &databases;
    Settings &settings;
    AccountState &account;
    TrackerRecordset &rows;
    PriceUpdateState &state;
    Services &services;
    PracticeServer &practiceServer;
    const WebAddresses &webAddresses;
    std::shared_ptr<PriceCycleScreens> screens;
    QString title; ///< of the boxes
    std::chrono::milliseconds requestTimeout{60000};
};

/// The setting AccessType, as Inet counts the ways into the network.
int InetAccess(int accessType);

class PriceCycle : public std::enable_shared_from_this<PriceCycle>
{
public:
    explicit PriceCycle(PriceCycleWork work);
    PriceCycle(const PriceCycle &) = delete;
    PriceCycle &operator=(const PriceCycle &) = delete;

    void Load();
    void Unload();

private:
    void tmrGetCurrPrice_Timer();
    bool CycleIsDue();
    void RunCycle();
    bool HistoryIsDue() const;
    void UpdateHistory();
    void FinishDay();
    void HandleError(const RuntimeError &error);
    void Stop();
    void ShowNotFound();
    void SetMenusEnabled(bool enabled);

    void GetCurrentWebPage();
    bool RunPass();
    bool RunBatch();
    void SelectCurrentSite();
    void ExtractBatch(const SymbolBatch &batch, const QString &page, bool endIsCertain);
    void StoreExtractedPrice(PortfolioEntry &entry, const ExtractedText &text);
    std::optional<Currency> PriceTaken(const PortfolioEntry &entry, const ExtractedText &text);
    void CountNotFound(const QString &symbol);
    void RemarkOn(PortfolioEntry &entry);
    PriceMark NoPriceRemark(const QString &why) const;
    QString ClosingStatus() const;
    void MarkRowsWithoutPrice();
    bool PassIsComplete() const;
    void UpdateRows();
    void CheckVersion();
    void Inet1_StateChanged(int state);
    void Post(const QString &status) { m_work.services.status.Post(status); }

    PriceCycleWork m_work;
    Inet Inet1;
    bool StopRequested = false; ///< the form was unloaded
    SiteLadder m_ladder;
    std::unique_ptr<ClockTimer> tmrGetCurrPrice;
    bool ForceUpdate = false; ///< the next tick updates at once

    PortfolioArray CurrPortfolioArray;
    QuoteSite m_site;      ///< the site in use, in this pass
    QTime PassTime;        ///< stamp of an entry with shares
    QTime ZeroShareTime;   ///< of one without, a second before
    Integer SymbolsTried;  ///< entries dealt with in this pass
    Integer NotFoundCount; ///< entries without a price in this pass
    /// The site asks to be left alone until then: the pass has ended before all symbols were asked for.
    std::optional<QDateTime> WaitsUntil;
    QStringList SplitSymbols;     ///< whose daily prices wait to be loaded again after a split
    QStringList SuspiciousPrices; ///< "AAA: 50.00 -> 123,456.00" of this pass
    bool LoadingHistory = false;  ///< the download shows its own failures
    bool RowsAreWritten = false;  ///< of this cycle
    bool NotFoundPending = false; ///< a symbol not reported yet was not found in this cycle
};
