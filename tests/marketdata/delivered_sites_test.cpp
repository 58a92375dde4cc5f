/// The delivered quote sites against replies of their services (their shape is real, securities and
/// numbers are invented).

#include "print_qt.h"
#include "test_app_folder.h"

#include "marketdata/extraction.h"
#include "marketdata/quote_site_rows.h"
#include "marketdata/quote_sites.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSet>

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};

class DeliveredSites : public testing::Test
{
protected:
    DeliveredSites()
    {
        m_connection.Open(m_folder.File("WebSites.mdb"));
        LoadQuoteSiteRows(m_connection, QUILLON_DATA "/quote_sites.json");
        m_rows.Open(m_connection, {"*", "WebParameters", "ORDER BY ID"});
        for (m_rows.MoveFirst(); !m_rows.AtEnd(); m_rows.MoveNext())
            m_sites.push_back(CurrentSite(m_rows));
    }
    const QuoteSite &Site(qint64 id) const
    {
        for (const QuoteSite &site : m_sites)
            if (site.ID == id)
                return site;
        throw std::logic_error("no site " + std::to_string(id));
    }

    TestAppFolder m_folder;
    Connection m_connection;
    Recordset m_rows;
    std::vector<QuoteSite> m_sites;
};

QString Reply(const char *name)
{
    QFile file(QStringLiteral(QUILLON_PROJECT "/tests/marketdata/replies/%1.txt").arg(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return QString::fromUtf8(file.readAll());
}

constexpr qint64 NotFound = -1;

/// The price in ten-thousandths.
qint64 PriceIn(const QString &page, const QString &symbol, const QuoteSite &site)
{
    const ExtractedText text = ExtractPriceText(page, symbol, site);
    bool failed = false;
    const Currency price = PriceFromText(text.PriceText, English, failed);
    EXPECT_FALSE(failed);
    return text.Found() ? price.Units() : NotFound;
}

} // namespace

TEST_F(DeliveredSites, FindThePriceInTheReplyOfTheirService)
{
    const struct
    {
        qint64 site;
        const char *reply, *symbol;
        qint64 price;
    } rows[] = {
        {1, "yahoo_chart_v8", "QLLN", 2143700},
        {1, "yahoo_chart_v8_unknown", "ZZZZ", NotFound},
        {2, "yahoo_chart_v8", "QLLN", 2143700},
        {2, "yahoo_chart_v8_unknown", "ZZZZ", NotFound},
        {3, "cnbc_rest", "QLLN", 2143700},
        {3, "cnbc_rest_unknown", "ZZZZ", NotFound},
        {4, "cboe_quote", "QLLN", 2143600},
        {4, "cboe_quote_unknown", "ZZZZ", NotFound},
        {5, "nasdaq_info", "QLLN", 2143700},
        {5, "nasdaq_info_unknown", "ZZZZ", NotFound},
        {6, "nasdaq_info", "QLLN", 2143700},
        {6, "nasdaq_info_unknown", "ZZZZ", NotFound},
        {7, "coingecko_simple", "bitcoin", 630124414},
        {7, "coingecko_unknown", "nocoin", NotFound},
        {8, "binance_ticker", "BTCUSDT", 630124414},
        {8, "binance_unknown", "ZZZZ", NotFound},
        {9, "alphavantage_global", "QLLN", 2143700},
        {9, "alphavantage_limit", "QLLN", NotFound},
        {10, "practice_quotes", "QLLN", 2143700},
        {10, "practice_quotes", "ZZZZ", NotFound}, // echoed with N/A
        {10, "practice_quotes", "PRCT", 489050},
        {10, "practice_quotes", "A", 12345000},
        {10, "practice_quotes", "AA", 70200},
        {10, "practice_quotes", "QLX", 131282305},
        {10, "practice_quotes", "NOTASKED", NotFound}, // the head of that page holds no price
    };
    QSet<qint64> checked;
    for (const auto &row : rows) {
        EXPECT_EQ(PriceIn(Reply(row.reply), row.symbol, Site(row.site)), row.price)
            << row.site << " " << row.reply << " " << row.symbol;
        checked.insert(row.site);
    }
    for (const QuoteSite &site : m_sites)
        EXPECT_TRUE(checked.contains(site.ID)) << "no reply for " << qPrintable(site.WebSiteName);
}

TEST_F(DeliveredSites, FindThePriceForASymbolInSmallLettersAndInTheTenCharacterField)
{
    EXPECT_EQ(PriceIn(Reply("yahoo_chart_v8"), TenCharacters("qlln"), Site(1)), 2143700);
    EXPECT_EQ(PriceIn(Reply("practice_quotes"), TenCharacters("qlx"), Site(10)), 131282305);
}

TEST_F(DeliveredSites, TakeOneSymbolARequestUnlessTheyEchoUnknownOnes)
{
    // In a reply for several symbols the head of the page holds the price of another security.
    for (const QuoteSite &site : m_sites)
        EXPECT_EQ(site.UpdateCount, site.ID == 10 ? 20 : 1) << qPrintable(site.WebSiteName);
}

TEST_F(DeliveredSites, TakeOptionsBare)
{
    for (const QuoteSite &site : m_sites) {
        PortfolioArray entries(1);
        entries[0].Symbol = TenCharacters("ACMEC90");
        entries[0].SecurityType = TenCharacters("Option");
        const SymbolBatch batch = BuildSymbolString(entries, site);
        EXPECT_FALSE(batch.optionUnsupported) << qPrintable(site.WebSiteName);
        EXPECT_EQ(batch.addressSymbols, "ACMEC90") << qPrintable(site.WebSiteName);
    }
}

TEST_F(DeliveredSites, HaveSoundTexts)
{
    for (const QuoteSite &site : m_sites) {
        SCOPED_TRACE(qPrintable(site.WebSiteName));
        EXPECT_FALSE(site.AddressBuildCharacters.isEmpty());
        EXPECT_FALSE(site.AddressBuildCharacters.contains(u' '));
        EXPECT_FALSE(site.PriceBegText.isEmpty());
        EXPECT_FALSE(site.PriceEndText.isEmpty());
        EXPECT_NE(site.PriceBegText, site.PriceEndText);
        EXPECT_GT(site.CharToPrice, 0);
        EXPECT_LT(site.CharToPrice, 1000);
        EXPECT_FALSE(site.DeselectFlagTemp);
    }
}

TEST_F(DeliveredSites, NeverReplaceARealSiteByThePracticeSite)
{
    EXPECT_FALSE(Site(1).WebSiteName.contains("Practice")); // replaces a name that is gone
    int yahooFinance = 0;
    for (const QuoteSite &site : m_sites) {
        yahooFinance += site.WebSiteName.contains("Yahoo Finance");
        EXPECT_EQ(site.SimilarSite == Site(10).SimilarSite, site.ID == 10)
            << qPrintable(site.WebSiteName);
    }
    EXPECT_EQ(yahooFinance, 1);
}
