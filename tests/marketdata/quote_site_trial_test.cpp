/// A quote site tried out: what is asked for, and what the findings say about a reply.

#include "marketdata/quote_site_trial.h"

#include "support/print_qt.h"

#include <gtest/gtest.h>

namespace
{

const Formats Us{QLocale(QLocale::English, QLocale::UnitedStates)};

/// "[ACME] ... $12.50;" with 60 characters searched.
QuoteSite Site()
{
    QuoteSite site;
    site.WebSiteName = "Quotes";
    site.BegWebAddress = "http://quotes.example/q?s=";
    site.EndWebAddress = "&f=1";
    site.AddressBuildCharacters = "+";
    site.SymbolBegText = "[";
    site.SymbolEndText = "]";
    site.CharToPrice = 60;
    site.PriceBegText = "$";
    site.PriceEndText = ";";
    site.UpdateCount = 20;
    site.OptionPrefix = "None";
    return site;
}

TrialReading Read(const QString &page, const QuoteSite &site = Site(),
                  const QString &symbol = "ACME")
{
    return ReadReply(site, symbol, page, Us);
}

bool Says(const TrialReading &reading, const QString &part)
{
    return reading.findings.join('\n').contains(part);
}

/// "symbol=ACME begin=$ price=12.50 end=;"
QString Marked(const QString &page, const TrialReading &reading)
{
    const char *kinds[] = {"symbol", "begin", "price", "end"};
    QStringList marks;
    for (const PageMark &mark : reading.marks)
        marks << QString("%1=%2").arg(kinds[mark.kind], page.mid(mark.position - 1, mark.length));
    return marks.join(' ');
}

} // namespace

TEST(RequestOfTrial, AsksAsThePriceCycleDoes)
{
    EXPECT_EQ(RequestOfTrial(Site(), " ACME ", "Stock").address,
              "http://quotes.example/q?s=ACME&f=1");
    EXPECT_EQ(RequestOfTrial(Site(), " ACME ", "Stock").symbol, "ACME");
    EXPECT_EQ(RequestOfTrial(Site(), "LONGERTHANTEN", "").symbol, "LONGERTHAN");
}

TEST(RequestOfTrial, GivesAnOptionTheFormOfTheSite)
{
    QuoteSite site = Site();
    EXPECT_EQ(RequestOfTrial(site, "ACMEC90", "Option").symbol, "ACMEC90");
    site.OptionPrefix = "@";
    EXPECT_EQ(RequestOfTrial(site, "ACMEC90", "Option").address,
              "http://quotes.example/q?s=@ACMEC90&f=1");
    site.OptionPrefix = "";
    site.OptionSuffix = ".X";
    EXPECT_EQ(RequestOfTrial(site, "ACMEC90", "Option").symbol, "ACMEC90.X");
    site.OptionSuffix = "";
    EXPECT_EQ(RequestOfTrial(site, "ACMEC90", "Option").address, "");
}

TEST(ReadReply, SaysWhereSymbolAndPriceStandAndMarksThem)
{
    const QString page = "<p>[ACME] last $12.50; USD";
    const TrialReading reading = Read(page);
    EXPECT_EQ(reading.price, Currency("12.5"));
    EXPECT_EQ(Marked(page, reading), "symbol=ACME begin=$ price=12.50 end=;");
    EXPECT_EQ(reading.findings,
              QStringList({"Symbol: “[ACME]” stands at character 4.",
                           "Price begin: “$” stands at character 16.",
                           "Price end: “;” stands at character 22, 14 characters behind the "
                           "symbol; this row searches 60.",
                           "Price: 12.5 was taken from “12.50”."}));
}

TEST(ReadReply, WarnsOfAPriceFromTheHeadOfAPageWithoutTheSymbol)
{
    const TrialReading reading = Read("....$99.00; [OTHER]");
    EXPECT_EQ(reading.price, Currency("99"));
    EXPECT_TRUE(Says(reading, "“[ACME]” stands nowhere in the reply"));
    EXPECT_TRUE(Says(reading, "may be that of another security"));
}

TEST(ReadReply, SaysWhereTheSymbolStandsWithoutTheTextsAroundIt)
{
    const TrialReading reading = Read("<b>acme</b> 12.50");
    EXPECT_FALSE(reading.price);
    EXPECT_TRUE(Says(reading, "without the texts around it stands at character 4"));
    EXPECT_EQ(reading.findings.last(),
              "No price was taken: the symbol would be reported as not found.");
}

TEST(ReadReply, SaysHowFarAPriceLiesBeyondWhatIsSearched)
{
    const TrialReading reading = Read("[ACME]" + QString(100, 'x') + "$12.50;");
    EXPECT_FALSE(reading.price);
    EXPECT_TRUE(Says(reading, "“$” does not stand within the 60 characters"));
    // From character 5, where the search begins, to 107.
    EXPECT_TRUE(Says(reading, "It stands further on, 102 characters behind the symbol"));
    QuoteSite site = Site();
    site.CharToPrice = 110;
    EXPECT_EQ(Read("[ACME]" + QString(100, 'x') + "$12.50;", site).price, Currency("12.5"));
}

TEST(ReadReply, TellsAPriceBeginInOtherCapitalLetters)
{
    QuoteSite site = Site();
    site.PriceBegText = "LAST=";
    EXPECT_TRUE(Says(Read("[ACME] last=12.50;", site), "in other capital letters"));
}

TEST(ReadReply, SaysThatTheEndIsMissingAndMarksWhatWasTaken)
{
    const QString page = "[ACME] $12.50 and 7 more";
    const TrialReading reading = Read(page);
    EXPECT_EQ(reading.price, Currency("12.507"));
    EXPECT_TRUE(Says(reading, "“;” does not follow within the 60 characters"));
    EXPECT_EQ(Marked(page, reading), "symbol=ACME begin=$ price=12.50 and 7 more");
}

TEST(ReadReply, SaysWhyNothingWasTakenBetweenTheMarkers)
{
    EXPECT_TRUE(Says(Read("[ACME] $N/A;"), "there is no digit between begin and end"));
    QuoteSite site = Site();
    site.PriceEndText = "";
    EXPECT_TRUE(Says(Read("[ACME] $12.50;", site), "Price End Text is empty"));
}

TEST(RequestOfTrial, AsksForTwoSymbolsAtOnce)
{
    const TrialRequest request = RequestOfTrial(Site(), "ACME", "Stock", " BOND ", "Bond");
    EXPECT_EQ(request.address, "http://quotes.example/q?s=ACME+BOND&f=1");
    EXPECT_EQ(request.second, "BOND");
    QuoteSite site = Site();
    site.AddressBuildCharacters = "";
    EXPECT_EQ(RequestOfTrial(site, "ACME", "", "BOND", "").address,
              "http://quotes.example/q?s=ACMEBOND&f=1");
    EXPECT_TRUE(AsksForSeveral(site));
    site.UpdateCount = 1;
    EXPECT_FALSE(AsksForSeveral(site));
}

TEST(RowFindings, NameAnEmptyUpdateCountAndEmptyAddressCharacters)
{
    EXPECT_EQ(RowFindings(Site()), QStringList());
    QuoteSite site = Site();
    site.UpdateCount = 0; // as an empty field is read
    EXPECT_TRUE(RowFindings(site).join(' ').startsWith("Update Count is empty"));
    site = Site();
    site.AddressBuildCharacters = "";
    EXPECT_TRUE(RowFindings(site).join(' ').contains("the symbols of a request run together"));
    site.UpdateCount = 1;
    EXPECT_TRUE(RowFindings(site).join(' ').contains("right only as long as Update Count is 1"));
}

TEST(ReadReply, NamesADecimalComma)
{
    for (const char *price : {"12,50", "1.234,50", "0,5", "1234,5678"})
        EXPECT_TRUE(Says(Read(QString("[ACME] $%1;").arg(price)), "decimal comma")) << price;
    for (const char *price : {"1,234", "1,234.50", "12.50", "1,234,567", "1234"})
        EXPECT_FALSE(Says(Read(QString("[ACME] $%1;").arg(price)), "decimal comma")) << price;
    const Formats german{QLocale(QLocale::German, QLocale::Germany)};
    const TrialReading reading = ReadReply(Site(), "ACME", "[ACME] $12,50;", german);
    EXPECT_EQ(reading.price, Currency("12.5"));
    EXPECT_FALSE(Says(reading, "decimal comma")); // there it is read as one
}

TEST(ReadReply, SaysThatAPriceAtTheEndOfAReplyMayHaveBeenCut)
{
    const QString page = "[ACME] $612.3";
    EXPECT_EQ(ReadReply(Site(), "ACME", page, Us, true).price, Currency("612.3"));
    const TrialReading reading = ReadReply(Site(), "ACME", page, Us, false);
    EXPECT_FALSE(reading.price);
    EXPECT_TRUE(Says(reading, "may have been cut"));
}

TEST(ReadReply, SaysThatATextOfCommasBecomesZero)
{
    const TrialReading reading = Read("[ACME] $,,;");
    EXPECT_EQ(reading.price, Currency());
    EXPECT_TRUE(Says(reading, "is no number; the price would become 0"));
}

TEST(ReadReply, SaysThatAPageIsReadNoFurtherThan32767Characters)
{
    const TrialReading reading = Read(QString(40'000, ' ') + "[ACME] $12.50;");
    EXPECT_FALSE(reading.price);
    EXPECT_TRUE(Says(reading, "32,767"));
}

TEST(ReadReply, SaysThatAPageIsTakenForARefusedLogin)
{
    EXPECT_TRUE(Says(Read("Authorization: [ACME] $12.50;"), "refused login"));
    EXPECT_FALSE(Says(Read("authorization: [ACME] $12.50;"), "refused login"));
}

TEST(ReadReply, ReadsAnyPageWithoutAnError)
{
    QString bytes;
    for (int value = 0; value < 256; ++value)
        bytes += QChar(value);
    QuoteSite empty;
    for (const QString &page : {QString(), QString("["), bytes, QString(70'000, '$'),
                                QString("[ACME]"), QString("[ACME]$")}) {
        EXPECT_FALSE(Read(page).findings.isEmpty());
        EXPECT_FALSE(Read(page, empty).findings.isEmpty());
        EXPECT_FALSE(Read(page, empty, "").findings.isEmpty());
    }
}
