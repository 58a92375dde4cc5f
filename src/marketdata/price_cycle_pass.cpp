/// A pass of the price cycle: batch by batch over all entries, on one site.

#include "marketdata/practice_site.h"
#include "marketdata/price_cycle.h"
#include "marketdata/version_check.h"

namespace
{

bool IsQuiet(int responseCode)
{
    return responseCode == Inet::NameNotResolved || responseCode == Inet::ConnectionReset ||
           responseCode == 12168;
}

} // namespace

void PriceCycle::GetCurrentWebPage()
{
    CheckVersion();
    // A switch of site begins anew, so that all symbols are asked for on the new one.
    while (!StopRequested && !RunPass())
        m_ladder.SwitchToAlternateSite();
}

/// False when the site fails.
bool PriceCycle::RunPass()
{
    NotFoundCount = SymbolsTried = Integer();
    PassTime = m_work.services.clock.TimeOfDay();
    ZeroShareTime = PassTime.addSecs(-1);
    for (PortfolioEntry &entry : CurrPortfolioArray)
        entry.IsDealtWith = false;
    m_ladder.OptionUnsupported = false;
    m_work.state.LoginCancelled = false;
    SelectCurrentSite();
    while (!StopRequested && !PassIsComplete())
        if (!RunBatch())
            return false;
    return true;
}

bool PriceCycle::PassIsComplete() const
{
    return SymbolsTried.Value() >= int(CurrPortfolioArray.size());
}

/// False when the site fails.
bool PriceCycle::RunBatch()
{
    m_work.services.clock.Yield();
    if (StopRequested)
        return true;
    Post(QStringLiteral("Building address string..."));
    const SymbolBatch batch = BuildSymbolString(CurrPortfolioArray, m_site);
    if (batch.optionUnsupported) {
        m_ladder.OptionUnsupported = true;
        m_work.services.dialogs.MsgBox(
            QStringLiteral("The current selected website does not support\noption quotes!"),
            Box::Exclamation, m_work.title);
        return false;
    }
    const QString page =
        m_ladder.FetchWebPage(m_site.BegWebAddress + batch.addressSymbols + m_site.EndWebAddress);
    if (StopRequested)
        return true;
    if (m_ladder.ConnectFailures != Integer())
        return false;
    ExtractBatch(batch, page);
    return StopRequested || NotFoundCount.Value() != int(CurrPortfolioArray.size());
}

/// Positions gRsWebParameters on the site in use, asks for its login, and has the practice server
/// listen where its row says.
void PriceCycle::SelectCurrentSite()
{
    // A login that is declined leads to another site, which may want one as well.
    while (SelectSiteInUse(m_work.databases, m_work.account, m_work.state.WebLoginId,
                           m_work.services)) {
        m_ladder.PromptWebLogin();
        if (!m_work.state.LoginCancelled)
            break;
    }
    ServePracticeSite(m_work.practiceServer, m_work.databases.gRsWebParameters);
    m_site = CurrentSite(m_work.databases.gRsWebParameters);
}

void PriceCycle::ExtractBatch(const SymbolBatch &batch, const QString &page)
{
    const QString AddressSymbols = CommaList(batch.addressSymbols, m_site);
    for (const size_t index : batch.entries) {
        m_work.services.clock.Yield();
        if (StopRequested)
            return;
        PortfolioEntry &entry = CurrPortfolioArray[index];
        // A symbol that its own separator garbled was not asked for; it is not found, once.
        StoreExtractedPrice(entry, IsInBatch(AddressSymbols, entry.Symbol)
                                       ? ExtractPriceText(page, entry.Symbol, m_site)
                                       : ExtractedText());
        SymbolsTried += 1;
    }
}

void PriceCycle::StoreExtractedPrice(PortfolioEntry &entry, const ExtractedText &text)
{
    Post(QStringLiteral("Extracting data..."));
    bool failed = false;
    if (text.Found())
        entry.CurrPrice = PriceFromText(text.PriceText, m_work.services.formats, failed);
    else
        CountNotFound(entry.Symbol.trimmed());
    if (failed)
        NotFoundCount += 1;
    entry.Time = entry.Shares == Integer() ? ZeroShareTime : PassTime;
    entry.IsDealtWith = true;
}

void PriceCycle::CountNotFound(const QString &symbol)
{
    NotFoundCount += 1;
    QString &list = m_work.state.NotFoundList;
    if (list.contains(QStringLiteral(", %1,").arg(symbol), Qt::CaseInsensitive))
        return;
    list += symbol + QStringLiteral(", ");
    NotFoundPending = true;
}

void PriceCycle::CheckVersion()
{
    if (!VersionCheckIsDue(m_work.settings, m_work.state, m_work.services.clock.Today()))
        return; // nor does the practice server start for it
    CheckForNewVersion(m_work.settings, m_work.state, m_work.services, Inet1,
                       ResolveAddress(m_work.webAddresses.VersionFile(), m_work.practiceServer),
                       *m_work.screens);
}

void PriceCycle::UpdateRows()
{
    Post(QStringLiteral("Updating..."));
    UpdateDTRecordset(m_work.rows, CurrPortfolioArray, m_site.OptionPrefix, m_site.OptionSuffix);
    m_work.screens->ReloadDataGrid();
}

void PriceCycle::Inet1_StateChanged(int state)
{
    static const char *const texts[] = {"",
                                        "Looking up IP address...",
                                        "IP address found...",
                                        "Connecting to host computer...",
                                        "Connection succesful...",
                                        "Sending request to host computer...",
                                        "Request sent...",
                                        "Receiving response...",
                                        "Response received...",
                                        "Disconnecting...",
                                        "Disconnect successful..."};
    constexpr int errorState = 11;
    if (state > 0 && state < errorState)
        Post(QString::fromUtf8(texts[state]));
    if (state != errorState || IsQuiet(Inet1.ResponseCode()))
        return;
    m_work.services.dialogs.MsgBox(
        QStringLiteral("An error has occured obtaining current prices.\n%1:")
                .arg(Inet1.ResponseCode()) +
            Inet1.ResponseInfo(),
        Box::Exclamation, m_work.title);
    Post(QStringLiteral("An error has occured..."));
}
