/// A pass of the price cycle: batch by batch over all entries, on one site.

#include "marketdata/practice_site.h"
#include "marketdata/price_cycle.h"
#include "marketdata/version_check.h"
#include "tracking/valuation.h"

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
    WaitsUntil.reset();
    SuspiciousPrices.clear();
    PassTime = m_work.services.clock.TimeOfDay();
    ZeroShareTime = PassTime.addSecs(-1);
    for (PortfolioEntry &entry : CurrPortfolioArray)
        entry.IsDealtWith = false;
    m_ladder.OptionUnsupported = false;
    m_work.state.LoginCancelled = false;
    SelectCurrentSite();
    while (!StopRequested && !WaitsUntil && !PassIsComplete())
        if (!RunBatch())
            return false;
    for (PortfolioEntry &entry : CurrPortfolioArray)
        if (!entry.IsDealtWith)
            entry.Remark = NoPriceRemark(QStringLiteral("the site asks to wait"));
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
    const QString address = m_site.BegWebAddress + batch.addressSymbols + m_site.EndWebAddress;
    const auto isToldToWait = [&] {
        WaitsUntil = m_work.state.Waits.Until(address, m_work.services.clock.Now());
        return WaitsUntil.has_value();
    };
    if (isToldToWait())
        return true;
    const QString page = m_ladder.FetchWebPage(address);
    if (StopRequested || isToldToWait())
        return true;
    if (m_ladder.ConnectFailures != Integer())
        return false;
    ExtractBatch(batch, page, Inet1.EndIsCertain());
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

void PriceCycle::ExtractBatch(const SymbolBatch &batch, const QString &page, bool endIsCertain)
{
    const QString AddressSymbols = CommaList(batch.addressSymbols, m_site);
    for (const size_t index : batch.entries) {
        m_work.services.clock.Yield();
        if (StopRequested)
            return;
        PortfolioEntry &entry = CurrPortfolioArray[index];
        // A symbol that its own separator garbled was not asked for; it is not found, once.
        ExtractedText text;
        if (IsInBatch(AddressSymbols, entry.Symbol))
            text = ExtractPriceText(page, entry.Symbol, m_site);
        if (text.reachesPageEnd && !endIsCertain)
            text = ExtractedText(); // a connection that was cut inside "612.34" gives 6
        StoreExtractedPrice(entry, text);
        SymbolsTried += 1;
    }
}

void PriceCycle::StoreExtractedPrice(PortfolioEntry &entry, const ExtractedText &text)
{
    Post(QStringLiteral("Extracting data..."));
    if (const std::optional<Currency> price = PriceTaken(entry, text)) {
        entry.CurrPrice = *price;
        RemarkOn(entry);
    } else {
        CountNotFound(entry.Symbol.trimmed());
        entry.Remark = NoPriceRemark(QStringLiteral("the page of the site has none"));
    }
    entry.Time = entry.Shares == Integer() ? ZeroShareTime : PassTime;
    entry.IsDealtWith = true;
}

/// Nothing when the text holds no price, or one at which the position cannot be valued.
std::optional<Currency> PriceCycle::PriceTaken(const PortfolioEntry &entry,
                                               const ExtractedText &text)
{
    if (!text.Found())
        return std::nullopt;
    bool failed = false;
    Currency price;
    try {
        price = PriceFromText(text.PriceText, m_work.services.formats, failed);
    } catch (const RuntimeError &error) {
        if (error.Number() != RuntimeError::OverflowNumber)
            throw;
        return std::nullopt;
    }
    if (failed)
        NotFoundCount += 1;
    return FitsAt(entry.Row, price) ? std::optional(price) : std::nullopt;
}

/// A price that jumps is taken, and the user asked to look at it. After a split that the user has
/// posted the site may still quote the old shares.
void PriceCycle::RemarkOn(PortfolioEntry &entry)
{
    entry.Remark = PriceMark();
    const Currency last = entry.Row.CurrPrice;
    if (!IsSuspicious(last, entry.CurrPrice) || SplitSymbols.contains(entry.Symbol.trimmed()))
        return;
    const Formats &formats = m_work.services.formats;
    const auto text = [&formats](Currency price) {
        return formats.Format(price, price < Currency::FromWhole(1) ? u"0.0000" : u"#,##0.00");
    };
    const QString change = text(last) + QStringLiteral(" -> ") + text(entry.CurrPrice);
    SuspiciousPrices << entry.Row.Symbol + QStringLiteral(": ") + change;
    entry.Remark = {change + QStringLiteral(", please check this price"), false};
}

PriceMark PriceCycle::NoPriceRemark(const QString &why) const
{
    return {QStringLiteral("No price in the update of %1: %2")
                .arg(m_work.services.formats.FormatTime(PassTime, u"Long Time"), why),
            true};
}

/// What the user should know at the end of a cycle.
QString PriceCycle::ClosingStatus() const
{
    constexpr qsizetype MostNamed = 3;
    QStringList texts;
    if (WaitsUntil)
        texts << QStringLiteral("%1 asks to wait until %2")
                     .arg(ShortSiteName(m_site.WebSiteName).trimmed(),
                          m_work.services.formats.FormatTime(WaitsUntil->time(), u"Long Time"));
    if (!SuspiciousPrices.isEmpty()) {
        QString prices = SuspiciousPrices.mid(0, MostNamed).join(QStringLiteral("; "));
        if (SuspiciousPrices.size() > MostNamed)
            prices += QStringLiteral("; and %1 more").arg(SuspiciousPrices.size() - MostNamed);
        texts << prices + QStringLiteral(", please check");
    }
    return texts.join(QStringLiteral("; "));
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
    const QString address = m_work.webAddresses.VersionFile();
    // The practice server has no news for who works with a real site.
    if (IsPracticeEntry(address) && !IsPracticeAddress(m_site.BegWebAddress))
        return;
    CheckForNewVersion(m_work.settings, m_work.state, m_work.services, Inet1,
                       ResolveAddress(address, m_work.practiceServer), *m_work.screens);
}

void PriceCycle::UpdateRows()
{
    Post(QStringLiteral("Updating..."));
    UpdateDTRecordset(m_work.rows, CurrPortfolioArray, m_site.OptionPrefix, m_site.OptionSuffix,
                      NoPriceRemark(QStringLiteral("the row was not asked for")));
    RowsAreWritten = true;
    m_work.screens->ReloadDataGrid(); // writes prices, gains and balance together
    if (m_work.rows.IsOpen())
        m_work.rows.UpdateBatch();
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
    if (state != errorState || LoadingHistory || IsQuiet(Inet1.ResponseCode()))
        return;
    m_work.services.dialogs.MsgBox(
        QStringLiteral("An error has occured obtaining current prices.\n%1:")
                .arg(Inet1.ResponseCode()) +
            Inet1.ResponseInfo(),
        Box::Exclamation, m_work.title);
    Post(QStringLiteral("An error has occured..."));
}
