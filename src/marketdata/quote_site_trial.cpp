#include "marketdata/quote_site_trial.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr int LongestQuoted = 60;              ///< of a text in a finding
constexpr auto RefusedLogin = "Authorization"; ///< a page with this word asks for a login

QString Quoted(const QString &text)
{
    QString line = text;
    line.replace(QLatin1Char('\n'), QStringLiteral("↵")).remove(QLatin1Char('\r'));
    if (line.size() > LongestQuoted)
        line = line.left(LongestQuoted) + QStringLiteral("…");
    return QStringLiteral("“%1”").arg(line);
}

/// The value of a text that has a decimal comma: "12,50" or "1.234,50"; nothing for another text.
std::optional<double> ValueWithDecimalComma(const QString &priceText)
{
    const qsizetype comma = priceText.lastIndexOf(u',');
    const bool isGroup = priceText.size() - comma - 1 == 3 && !priceText.contains(u'.');
    if (comma <= 0 || priceText.count(u',') > 1 || isGroup || priceText.lastIndexOf(u'.') > comma)
        return std::nullopt;
    bool isNumber = false;
    const double value = QString(priceText).remove(u'.').replace(u',', u'.').toDouble(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

/// The search as it is told, step by step.
class Report
{
public:
    Report(const QuoteSite &site, const QString &symbol, const QString &page,
           const Formats &formats, bool endIsCertain)
        : m_site(site), m_symbol(symbol), m_page(page), m_formats(formats),
          m_endIsCertain(endIsCertain), m_symbolBegText(WithoutBlanks(site.SymbolBegText))
    {}

    TrialReading Write()
    {
        if (m_page.contains(QLatin1String(RefusedLogin)))
            Say(QStringLiteral("The reply holds the word “%1”: a price update takes that for a "
                               "refused login.")
                    .arg(QLatin1String(RefusedLogin)));
        try {
            m_found = ExtractPriceText(m_page, m_symbol, m_site);
        } catch (const RuntimeError &) {
            Say(QStringLiteral("The symbol or its price stands behind character 32,767, which is "
                               "as far as a page is read."));
            return m_reading;
        }
        SayWhereSymbolIs();
        SayWherePriceIs();
        TakePrice();
        return m_reading;
    }

private:
    void Say(const QString &sentence) { m_reading.findings << sentence; }
    QString Count(qsizetype number) const { return m_formats.Format(qint64(number), u"#,##0"); }
    void Mark(PageMark::Kind kind, qsizetype position, qsizetype length)
    {
        const qsizetype end = std::min(position + length, m_page.size() + 1);
        if (position > 0 && end > position)
            m_reading.marks.push_back({kind, int(position), int(end - position)});
    }

    /// Where the walk for the price begins, and the last position that it looks at.
    qsizetype WalkBegin() const { return m_found.symbolMatch + m_symbol.size(); }
    qsizetype WalkEnd() const { return WalkBegin() + m_site.CharToPrice; }

    void SayWhereSymbolIs()
    {
        const QString pattern = m_symbolBegText + m_symbol + m_site.SymbolEndText;
        if (m_found.symbolMatch > 0) {
            const qsizetype symbol = m_found.symbolMatch + m_symbolBegText.size();
            Mark(PageMark::Symbol, symbol, m_symbol.size());
            Say(QStringLiteral("Symbol: %1 stands at character %2.")
                    .arg(Quoted(pattern), Count(m_found.symbolMatch)));
            return;
        }
        Say(QStringLiteral("Symbol: %1 stands nowhere in the reply, so the search for the price "
                           "begins at its head.")
                .arg(Quoted(pattern)));
        const qsizetype bare = m_page.indexOf(m_symbol, 0, Qt::CaseInsensitive) + 1;
        if (bare > 0 && !m_symbol.isEmpty())
            Say(QStringLiteral("The symbol without the texts around it stands at character %1: "
                               "compare Symbol Begin Text and Symbol End Text with the reply.")
                    .arg(Count(bare)));
    }

    void SayWherePriceIs()
    {
        if (!m_found.InPrice) {
            SayWherePriceBegins();
            return;
        }
        const qsizetype price = m_found.priceBegin + m_site.PriceBegText.size();
        Mark(PageMark::Begin, m_found.priceBegin, m_site.PriceBegText.size());
        Say(QStringLiteral("Price begin: %1 stands at character %2.")
                .arg(Quoted(m_site.PriceBegText), Count(m_found.priceBegin)));
        if (m_found.priceEnd > 0) {
            Mark(PageMark::Price, price, m_found.priceEnd - price);
            Mark(PageMark::End, m_found.priceEnd, m_site.PriceEndText.size());
            Say(QStringLiteral("Price end: %1 stands at character %2, %3 characters behind the "
                               "symbol; this row searches %4.")
                    .arg(Quoted(m_site.PriceEndText), Count(m_found.priceEnd),
                         Count(m_found.priceEnd - WalkBegin()), Count(m_site.CharToPrice)));
        } else {
            Mark(PageMark::Price, price, WalkEnd() + 1 - price);
            Say(QStringLiteral("Price end: %1 does not follow within the %2 characters that are "
                               "searched; all digits up to there are taken.")
                    .arg(Quoted(m_site.PriceEndText), Count(m_site.CharToPrice)));
        }
    }

    void SayWherePriceBegins()
    {
        Say(QStringLiteral("Price begin: %1 does not stand within the %2 characters that are "
                           "searched from character %3 on.")
                .arg(Quoted(m_site.PriceBegText), Count(m_site.CharToPrice),
                     Count(std::max<qsizetype>(WalkBegin(), 1))));
        const qsizetype later = m_page.indexOf(m_site.PriceBegText, WalkBegin()) + 1;
        if (later > 0 && m_found.symbolMatch > 0)
            Say(QStringLiteral("It stands further on, %1 characters behind the symbol: a larger "
                               "number in Characters to Price would reach it.")
                    .arg(Count(later - WalkBegin())));
        else if (m_page.contains(m_site.PriceBegText, Qt::CaseInsensitive))
            Say(QStringLiteral("The reply has it elsewhere, or in other capital letters."));
    }

    void TakePrice()
    {
        if (!m_found.Found()) {
            if (m_found.InPrice)
                Say(m_site.PriceEndText.isEmpty()
                        ? QStringLiteral("Price: Price End Text is empty, so nothing is taken.")
                        : QStringLiteral("Price: there is no digit between begin and end."));
            Say(QStringLiteral("No price was taken: the symbol would be reported as not found."));
            return;
        }
        if (m_found.reachesPageEnd && !m_endIsCertain) {
            Say(QStringLiteral("Price: %1 reaches the end of the reply, which does not tell its "
                               "length and may have been cut: the symbol would be reported as not "
                               "found.")
                    .arg(Quoted(m_found.PriceText)));
            return;
        }
        try {
            bool failed = false;
            const Currency price = PriceFromText(m_found.PriceText, m_formats, failed);
            if (failed)
                Say(QStringLiteral("Price: %1 is no number; the price would become 0.")
                        .arg(Quoted(m_found.PriceText)));
            else
                Say(QStringLiteral("Price: %1 was taken from %2.")
                        .arg(m_formats.ToText(price), Quoted(m_found.PriceText)));
            m_reading.price = price;
            const std::optional<double> meant = ValueWithDecimalComma(m_found.PriceText);
            if (meant && std::fabs(*meant - price.ToDouble()) > 0.01)
                Say(QStringLiteral("Attention: %1 seems to have a decimal comma. A price update "
                                   "takes the comma for a separator of thousands.")
                        .arg(Quoted(m_found.PriceText)));
        } catch (const RuntimeError &error) {
            Say(QStringLiteral("Price: %1 is no price (%2); the price update would stop here.")
                    .arg(Quoted(m_found.PriceText), error.Description()));
            return;
        }
        if (m_found.symbolMatch == 0)
            Say(QStringLiteral("Attention: this price stands at the head of the reply and may be "
                               "that of another security."));
    }

    const QuoteSite &m_site;
    QString m_symbol;
    const QString &m_page;
    const Formats &m_formats;
    bool m_endIsCertain;
    QString m_symbolBegText;
    ExtractedText m_found;
    TrialReading m_reading;
};

} // namespace

bool AsksForSeveral(const QuoteSite &site)
{
    return site.UpdateCount != 1;
}

TrialRequest RequestOfTrial(const QuoteSite &site, const QString &symbol,
                            const QString &securityType, const QString &second,
                            const QString &secondType)
{
    PortfolioArray entries(second.trimmed().isEmpty() ? 1 : 2);
    entries[0].Symbol = TenCharacters(symbol.trimmed());
    entries[0].SecurityType = TenCharacters(securityType);
    QuoteSite asked = site;
    if (entries.size() > 1) {
        entries[1].Symbol = TenCharacters(second.trimmed());
        entries[1].SecurityType = TenCharacters(secondType);
        asked.UpdateCount = 2;
    }
    const SymbolBatch batch = BuildSymbolString(entries, asked);
    if (batch.optionUnsupported)
        return {symbol.trimmed(), QString()};
    return {entries[0].Symbol.trimmed(),
            site.BegWebAddress + batch.addressSymbols + site.EndWebAddress,
            entries.size() > 1 ? entries[1].Symbol.trimmed() : QString()};
}

QStringList RowFindings(const QuoteSite &site)
{
    QStringList findings;
    if (site.UpdateCount <= 0)
        findings << QStringLiteral("Update Count is empty: a price update writes 5 there, and then "
                                   "asks for five symbols at once.");
    if (site.AddressBuildCharacters.isEmpty())
        findings << (AsksForSeveral(site)
                         ? QStringLiteral("Address Characters is empty: the symbols of a request "
                                          "run together. Enter a separator, or 1 as Update Count.")
                         : QStringLiteral(
                               "Address Characters is empty, which is right only as long "
                               "as Update Count is 1."));
    return findings;
}

namespace
{

QString WaitInWords(const Inet &inet)
{
    const auto wait = inet.RetryAfter();
    return wait ? QStringLiteral(" The site asks to wait %1 seconds.").arg(wait->count())
                : QString();
}

} // namespace

QString TransferInWords(const Inet &inet, const QString &page, const Formats &formats)
{
    if (!page.isEmpty())
        return QStringLiteral("A reply of %1 characters came. HTTP status %2.")
                   .arg(formats.Format(qint64(page.size()), u"#,##0"))
                   .arg(inet.HttpStatus()) +
               WaitInWords(inet);
    if (inet.ResponseCode() == 0)
        return QStringLiteral("The site sent an empty reply. HTTP status %1.")
            .arg(inet.HttpStatus());
    if (inet.HttpStatus() > 0)
        return QStringLiteral("The site sent an empty reply. HTTP status %1: %2.")
                   .arg(inet.HttpStatus())
                   .arg(inet.ResponseInfo()) +
               WaitInWords(inet);
    return QStringLiteral("No reply came. Code %1: %2")
        .arg(inet.ResponseCode())
        .arg(inet.ResponseInfo());
}

TrialReading ReadReply(const QuoteSite &site, const QString &symbol, const QString &page,
                       const Formats &formats, bool endIsCertain)
{
    return Report(site, symbol, page, formats, endIsCertain).Write();
}
