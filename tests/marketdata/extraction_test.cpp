/// The walk over a page: which text of it becomes the price of a symbol.

#include "print_qt.h"

#include "marketdata/extraction.h"

#include <gtest/gtest.h>

namespace
{

/// A site whose rows read <s>ACME</s><p>12.5</p>.
QuoteSite TableSite()
{
    QuoteSite site;
    site.AddressBuildCharacters = "+";
    site.SymbolBegText = "<s>";
    site.SymbolEndText = "</s>";
    site.CharToPrice = 40;
    site.PriceBegText = "<p>";
    site.PriceEndText = "</p>";
    site.UpdateCount = 20;
    site.OptionPrefix = "None";
    return site;
}

QString Row(const QString &symbol, const QString &price)
{
    return QStringLiteral("<s>%1</s><p>%2</p>\n").arg(symbol, price);
}

/// The collected text, or "(none)" where the symbol counts as not found.
QString Collected(const QString &page, const QString &symbol, const QuoteSite &site = TableSite())
{
    const ExtractedText text = ExtractPriceText(page, symbol, site);
    return text.Found() ? text.PriceText : QStringLiteral("(none)");
}

/// A page of blanks with a row for ACME whose match is at `position`, counted from 1.
QString PageWithMatchAt(int position)
{
    return QString(position - 1, u' ') + Row("ACME", "12.5");
}

/// Number of the error that the walk ends in; 0 without one.
int ErrorOf(const QString &page, const QString &symbol, const QuoteSite &site)
{
    try {
        ExtractPriceText(page, symbol, site);
        return 0;
    } catch (const RuntimeError &error) {
        return error.Number();
    }
}

} // namespace

TEST(ExtractPriceText, TakesTheNumberBetweenTheMarkersBehindTheSymbol)
{
    const QString page = Row("ABC", "1.5") + Row("ACME", "12.50") + Row("ZZ", "3");
    EXPECT_EQ(Collected(page, "ACME"), "12.50");
    EXPECT_EQ(Collected(page, "ABC"), "1.5");
    EXPECT_EQ(Collected(page, "ZZ"), "3");
}

TEST(ExtractPriceText, TellsWhereSymbolAndMarkersWereFound)
{
    const ExtractedText text = ExtractPriceText("..<s>ACME</s>..<p>12.5</p>", "ACME", TableSite());
    EXPECT_EQ(text.symbolMatch, 3);
    EXPECT_EQ(text.priceBegin, 16);
    EXPECT_EQ(text.priceEnd, 23);
}

TEST(ExtractPriceText, TrimsTheSymbolOfTheTenCharacterField)
{
    EXPECT_EQ(Collected(Row("ACME", "12.5"), "ACME      "), "12.5");
}

TEST(ExtractPriceText, FindsTheSymbolInSmallLettersButThePriceMarkerOnlyAsItIsWritten)
{
    EXPECT_EQ(Collected("<S>acme</S><p>12.5</p>", "ACME"), "12.5");
    EXPECT_EQ(Collected("<s>ACME</s><P>12.5</P>", "ACME"), "(none)");
    EXPECT_EQ(Collected("<s>ACME</s><p>12.5</P>9</p>", "ACME"), "12.59"); // not the end
}

TEST(ExtractPriceText, FindsASymbolThatIsTheBeginningOfAnother)
{
    const QString page = Row("AA", "7.02") + Row("A", "1") + Row("AAA", "9");
    EXPECT_EQ(Collected(page, "A"), "1");
    EXPECT_EQ(Collected(page, "AAA"), "9");
}

TEST(ExtractPriceText, TakesTheFirstOfTwoMatches)
{
    EXPECT_EQ(Collected(Row("ACME", "1") + Row("ACME", "2"), "ACME"), "1");
}

TEST(ExtractPriceText, TrimsTheTextBeforeTheSymbolAndNotTheOneBehindIt)
{
    QuoteSite site = TableSite();
    site.SymbolBegText = "  <s>  ";
    EXPECT_EQ(Collected(Row("ACME", "12.5"), "ACME", site), "12.5");
    site.SymbolEndText = "</s> ";
    EXPECT_EQ(ExtractPriceText(Row("ACME", "12.5"), "ACME", site).symbolMatch, 0);
    EXPECT_EQ(Collected("<s>ACME</s> <p>12.5</p>", "ACME", site), "12.5");
}

TEST(ExtractPriceText, TakesALineBreakBeforeTheSymbolAsPartOfTheText)
{
    QuoteSite site = TableSite();
    site.SymbolBegText = "\n";
    site.SymbolEndText = ";";
    EXPECT_EQ(ExtractPriceText("ACME;<p>1</p>", "ACME", site).symbolMatch, 0);
    EXPECT_EQ(Collected("XACME;<p>1</p>\nACME;<p>2</p>", "ACME", site), "2");
}

TEST(ExtractPriceText, WalksTheHeadOfThePageForASymbolThatIsNotInIt)
{
    const QString head(60, u' ');
    EXPECT_EQ(Collected(head + Row("ACME", "12.5"), "NONE"), "(none)");
    // With a price in the head, that price is taken: CharToPrice is there to bound this.
    const ExtractedText wrong = ExtractPriceText(Row("ACME", "12.5"), "NONE", TableSite());
    EXPECT_EQ(wrong.PriceText, "12.5");
    EXPECT_EQ(wrong.symbolMatch, 0);
}

TEST(ExtractPriceText, BeginsTheWalkOverTheHeadAtTheLengthOfTheSymbol)
{
    EXPECT_EQ(Collected("...<p>12.5</p>", "NONE"), "12.5");  // the marker begins at 4
    EXPECT_EQ(Collected("..<p>12.5</p>", "NONE"), "(none)"); // at 3: passed over
}

TEST(ExtractPriceText, WalksNothingWithoutASymbolThatIsFound)
{
    QuoteSite site = TableSite();
    site.PriceBegText.clear();
    const ExtractedText text = ExtractPriceText("12.5</p>", "", site);
    EXPECT_FALSE(text.InPrice);
    EXPECT_EQ(text.PriceText, "");
}

TEST(ExtractPriceText, CountsTheLimitFromTheSymbolAndNotFromTheEndOfTheMatch)
{
    // <s>ACME</s> at 1: the walk begins at 1 + 4 = 5 and goes to 5 + CharToPrice.
    const QString page = Row("ACME", "12.5"); // the marker begins at 12
    QuoteSite site = TableSite();
    site.CharToPrice = 7;
    EXPECT_EQ(Collected(page, "ACME", site), "1"); // the last position looked at is 12
    site.CharToPrice = 6;
    EXPECT_EQ(Collected(page, "ACME", site), "(none)");
}

TEST(ExtractPriceText, TakesWhatWasCollectedUpToTheLimitWhenThePriceHasNoEnd)
{
    QuoteSite site = TableSite();
    site.CharToPrice = 15; // to position 20
    EXPECT_EQ(Collected("<s>ACME</s><p>123456789", "ACME", site), "123456");
    site.CharToPrice = 400; // beyond the end of the page
    EXPECT_EQ(Collected("<s>ACME</s><p>123456789", "ACME", site), "123456789");
}

TEST(ExtractPriceText, WalksNothingBehindANegativeLimit)
{
    QuoteSite site = TableSite();
    site.CharToPrice = -1;
    site.PriceBegText.clear();
    EXPECT_FALSE(ExtractPriceText(Row("ACME", "12.5"), "ACME", site).InPrice);
    site.CharToPrice = -32768;
    EXPECT_FALSE(ExtractPriceText(Row("ACME", "12.5"), "ACME", site).InPrice);
}

TEST(ExtractPriceText, OpensAtTheFirstPositionWithoutAnOpeningMarker)
{
    QuoteSite site = TableSite();
    site.PriceBegText.clear();
    site.PriceEndText = "|";
    const ExtractedText text = ExtractPriceText("<s>ACME</s>1.5|", "ACME", site);
    EXPECT_EQ(text.priceBegin, 5);
    EXPECT_EQ(text.PriceText, "1.5");
}

TEST(ExtractPriceText, FindsNoPriceWithoutAClosingMarker)
{
    QuoteSite site = TableSite();
    site.PriceEndText.clear();
    const ExtractedText text = ExtractPriceText(Row("ACME", "12.5"), "ACME", site);
    EXPECT_TRUE(text.InPrice);
    EXPECT_EQ(text.PriceText, "");
    EXPECT_FALSE(text.Found());
}

TEST(ExtractPriceText, CollectsDigitsPointsAndCommasAndSkipsTheRest)
{
    const struct
    {
        const char *cell, *price;
    } rows[] = {
        {"$ 1,234.50 USD", "1,234.50"},
        {"-12.5", "12.5"},              // a sign is dropped
        {"12 3/8", "1238"},             // as are blank and slash
        {"<b>12.5</b>", "12.5"},        // a tag without digits
        {"<font size=2>12.5", "212.5"}, // a tag with one lands in the price
        {"N/A", "(none)"},              // nothing collected
        {"", "(none)"},                 //
        {"\u0661\u0662.\uff15", "."},   // digits of other scripts are no digits here
        {"1\u00b2\u00bd5", "15"},       // nor are powers and fractions
        {"1\xC2\xA0"
         "234.5",
         "1234.5"}, // a hard blank between groups
    };
    for (const auto &row : rows)
        EXPECT_EQ(Collected(Row("ACME", QString::fromUtf8(row.cell)), "ACME"), row.price)
            << row.cell;
}

TEST(ExtractPriceText, JumpsOverASecondOpeningMarkerInsideThePrice)
{
    QuoteSite site = TableSite();
    site.PriceBegText = "9:";
    EXPECT_EQ(Collected("<s>ACME</s>9:1 9:2</p>", "ACME", site), "12");
    // Directly behind the first one it is met a character too late, and its digit is collected.
    EXPECT_EQ(Collected("<s>ACME</s>9:9:2</p>", "ACME", site), "92");
}

TEST(ExtractPriceText, EndsAtAClosingMarkerDirectlyBehindTheOpeningOne)
{
    EXPECT_EQ(Collected("<s>ACME</s><p></p><p>12.5</p>", "ACME"), "(none)");
}

TEST(ExtractPriceText, PassesOverAClosingMarkerBeforeThePriceHasBegun)
{
    EXPECT_EQ(Collected("<s>ACME</s></p><p>12.5</p>", "ACME"), "12.5");
}

TEST(ExtractPriceText, TakesTheSameTextForBothMarkersFromTheSecondOn)
{
    QuoteSite site = TableSite();
    site.PriceBegText = site.PriceEndText = "|";
    // The closing marker is tested behind the jump over the opening one: the second one jumps too.
    EXPECT_EQ(Collected("<s>ACME</s>|1|2|", "ACME", site), "12");
    EXPECT_EQ(Collected("<s>ACME</s>||2|", "ACME", site), "(none)");
}

TEST(ExtractPriceText, OverflowsForAMatchBeyondThirtyTwoThousandCharacters)
{
    QuoteSite site = TableSite();
    site.CharToPrice = 0;
    EXPECT_EQ(ErrorOf(PageWithMatchAt(32762), "ACME", site), 0);
    EXPECT_EQ(ErrorOf(PageWithMatchAt(32763), "ACME", site), RuntimeError::OverflowNumber);
    EXPECT_EQ(ErrorOf(PageWithMatchAt(32768), "ACME", site), RuntimeError::OverflowNumber);
    EXPECT_EQ(ErrorOf(PageWithMatchAt(5000000), "ACME", site), RuntimeError::OverflowNumber);
}

TEST(ExtractPriceText, OverflowsWhenTheLimitLeavesSixteenBits)
{
    QuoteSite site = TableSite();
    site.CharToPrice = 40;
    EXPECT_EQ(Collected(PageWithMatchAt(32767 - 40 - 4), "ACME", site), "12.5");
    EXPECT_EQ(ErrorOf(PageWithMatchAt(32767 - 40 - 3), "ACME", site), RuntimeError::OverflowNumber);
    // A short page and a large CharToPrice as well.
    site.CharToPrice = 32767;
    EXPECT_EQ(ErrorOf(Row("ACME", "12.5"), "ACME", site), RuntimeError::OverflowNumber);
}

TEST(ExtractPriceText, OverflowsWhenTheWalkReachesTheLastPosition)
{
    QuoteSite site = TableSite();
    const QString page = QString(32762, u' ') + "ACME 5";
    site.SymbolBegText.clear();
    site.SymbolEndText.clear();
    site.PriceBegText.clear();
    site.PriceEndText = "|";
    site.CharToPrice = 0; // the walk ends at 32,767, and the step behind it has no number
    EXPECT_EQ(ErrorOf(page, "ACME", site), RuntimeError::OverflowNumber);
    site.CharToPrice = -1;
    EXPECT_EQ(ErrorOf(page, "ACME", site), 0);
}

TEST(ExtractPriceText, OverflowsWhenTheJumpOverTheMarkerLeavesSixteenBits)
{
    QuoteSite site = TableSite();
    site.PriceBegText = QString(40, u'#');
    site.CharToPrice = 8;
    const QString page = QString(32740, u' ') + "<s>ACME</s>" + site.PriceBegText + "12.5</p>";
    EXPECT_EQ(ErrorOf(page, "ACME", site), RuntimeError::OverflowNumber);
}

TEST(ExtractPriceText, CountsAPairOfSurrogatesAsTwoCharacters)
{
    const QString moon = QString::fromUtf8("\xF0\x9F\x8C\x99");
    const ExtractedText text = ExtractPriceText(moon + Row("ACME", "12.5"), "ACME", TableSite());
    EXPECT_EQ(text.symbolMatch, 3);
    EXPECT_EQ(text.PriceText, "12.5");
}

TEST(ExtractPriceText, TakesPatternCharactersOfASymbolAsTheyAre)
{
    for (const QString symbol : {"A.B", "A*", "^GSPC", "BRK-B", "[X]", "A|B", "(A)", "\\d", "$X?",
                                 "O'NEIL", "A+B", "EUR=X"}) {
        const QString page = Row("AxB", "1") + Row(symbol, "2") + Row("GSPC", "3");
        EXPECT_EQ(Collected(page, symbol), "2") << qPrintable(symbol);
        EXPECT_EQ(ExtractPriceText(Row("AxB", "1"), symbol, TableSite()).symbolMatch, 0)
            << qPrintable(symbol);
    }
}

TEST(ExtractPriceText, FindsAccentedLettersInEitherCase)
{
    EXPECT_EQ(Collected(Row(QString::fromUtf8("société"), "4"), QString::fromUtf8("SOCIÉTÉ")), "4");
    EXPECT_EQ(ExtractPriceText(Row("SOCIETE", "4"), QString::fromUtf8("SOCIÉTÉ"), TableSite())
                  .symbolMatch,
              0);
}

TEST(ExtractPriceText, TakesTheTurkishLettersIForLettersOfTheirOwn)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    EXPECT_EQ(Collected(Row("isik", "5"), "ISIK"), "5");
    EXPECT_EQ(
        ExtractPriceText(Row(QString::fromUtf8("ısık"), "5"), "ISIK", TableSite()).symbolMatch, 0);
    EXPECT_EQ(
        ExtractPriceText(Row(QString::fromUtf8("İSİK"), "5"), "isik", TableSite()).symbolMatch, 0);
    QLocale::setDefault(before);
}

// --- hostile pages -----------------------------------------------------------------------------------

TEST(ExtractPriceText, ReadsAnEmptyPage)
{
    EXPECT_EQ(Collected("", "ACME"), "(none)");
    EXPECT_EQ(Collected("", ""), "(none)");
    EXPECT_EQ(ExtractPriceText("", "", QuoteSite()).symbolMatch, 0);
}

TEST(ExtractPriceText, ReadsASiteWithoutAnyTexts)
{
    // Everything matches at once: the first position is in the price, and its end as well.
    const ExtractedText text = ExtractPriceText("12.5", "", QuoteSite());
    EXPECT_EQ(text.symbolMatch, 1);
    EXPECT_EQ(text.priceEnd, 1);
    EXPECT_FALSE(text.Found());
}

TEST(ExtractPriceText, ReadsEveryByteValue)
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes += char(i);
    for (const QString &noise : {QString::fromUtf8(bytes), QString::fromLatin1(bytes)}) {
        const QString head = noise + noise;
        EXPECT_EQ(Collected(head, "ACME"), "(none)");
        EXPECT_EQ(Collected(head + Row("ACME", "12.5") + head, "ACME"), "12.5");
        QuoteSite site = TableSite();
        site.CharToPrice = 400;
        EXPECT_EQ(Collected(Row("ACME", noise), "ACME", site), ",.0123456789");
    }
}

TEST(ExtractPriceText, ReadsNulCharactersLikeAnyOther)
{
    const QString nul(1, QChar(0));
    EXPECT_EQ(Collected(nul + Row("ACME", "1" + nul + "2"), "ACME"), "12");
    QuoteSite site = TableSite();
    site.PriceEndText = nul;
    EXPECT_EQ(Collected("<s>ACME</s><p>12.5" + nul + "9", "ACME", site), "12.5");
    EXPECT_EQ(ExtractPriceText(Row("AC" + nul + "ME", "1"), "AC", TableSite()).symbolMatch, 0);
}

TEST(ExtractPriceText, ReadsHalvesOfSurrogatePairs)
{
    const QString high(1, QChar(0xD83C)), low(1, QChar(0xDF19));
    EXPECT_EQ(Collected(high + Row("ACME", high + "12" + low + ".5"), "ACME"), "12.5");
    EXPECT_EQ(Collected(low + high + Row(high, "3"), high), "3");
    EXPECT_EQ(ExtractPriceText(high + low, low + high, TableSite()).symbolMatch, 0);
}

TEST(ExtractPriceText, ReadsMegabytesWithoutMarkersInNoTime)
{
    // The search for "<s>aaaa</s>" is at its slowest where most of it matches everywhere.
    QuoteSite site = TableSite();
    for (const QString &page :
         {QString(8 << 20, u'a'), QString(8 << 20, QChar(0)),
          QStringLiteral("<s>").repeated(2 << 20), QStringLiteral("<s>aaa").repeated(1 << 20)}) {
        EXPECT_EQ(Collected(page, "aaaa", site), "(none)");
        site.SymbolBegText.clear();
        site.SymbolEndText = "</s>";
        EXPECT_EQ(Collected(page, "aaaaaaaaab", site), "(none)");
    }
}

// --- the price of a text -----------------------------------------------------------------------------

namespace
{

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};
const Formats German{QLocale(QLocale::German, QLocale::Germany)};

/// "12.5000", "failed", or "error 13".
std::string PriceOf(const QString &text, const Formats &formats = English)
{
    try {
        bool failed = true;
        const Currency price = PriceFromText(text, formats, failed);
        if (failed)
            return price.IsZero() ? "failed" : "failed, and not zero";
        return English.Format(price, u"0.0000").toStdString();
    } catch (const RuntimeError &error) {
        return "error " + std::to_string(error.Number());
    }
}

} // namespace

TEST(PriceFromText, ReadsCommasAsGroups)
{
    EXPECT_EQ(PriceOf("1,234.50"), "1234.5000");
    EXPECT_EQ(PriceOf("12.5"), "12.5000");
    EXPECT_EQ(PriceOf("0"), "0.0000");
    EXPECT_EQ(PriceOf("7,"), "7.0000");
    EXPECT_EQ(PriceOf(".5"), "0.5000");
    EXPECT_EQ(PriceOf("5."), "5.0000");
}

TEST(PriceFromText, KeepsSevenDigitsOfA32BitFloat)
{
    EXPECT_EQ(PriceOf("1234.56"), "1234.5601");
    EXPECT_EQ(PriceOf("13,128.23"), "13128.2305");
    EXPECT_EQ(PriceOf("63012.44000000"), "63012.4414");
    EXPECT_EQ(PriceOf("123456789"), "123456792.0000");
    EXPECT_EQ(PriceOf("0.00005"), "0.0000"); // the float nearest to it lies just below the tie
}

TEST(PriceFromText, FailsWithAPriceOfZeroForCommasAlone)
{
    EXPECT_EQ(PriceOf(","), "failed");
    EXPECT_EQ(PriceOf(",,,"), "failed");
}

TEST(PriceFromText, ReadsATextThatIsNoNumberOnceMoreWithCommasInPlaceOfPoints)
{
    EXPECT_EQ(PriceOf("1.234.56"), "123456.0000"); // 1,234,56: groups
    EXPECT_EQ(PriceOf("214.37 214.3"), "error 13");
    EXPECT_EQ(PriceOf("..."), "error 13");
    EXPECT_EQ(PriceOf("."), "error 13");
}

TEST(PriceFromText, FailsForAPriceBeyondTheRange)
{
    EXPECT_EQ(PriceOf(QString(25, u'9')), "error 6");
    EXPECT_EQ(PriceOf(QString(30000, u'9')), "error 6");
    EXPECT_EQ(PriceOf(QString(25, u'9') + ".5.5"), "error 6");
}

TEST(PriceFromText, TakesThePointOfAPageForTheDecimalSignWhereThatIsAComma)
{
    EXPECT_EQ(PriceOf("214.37", German), "214.3700");
    EXPECT_EQ(PriceOf("48.905", German), "48.9050");
    EXPECT_EQ(PriceOf("13,128.23", German), "13128.2300"); // straight to money: all its digits
    EXPECT_EQ(PriceOf("214,37", German), "214.3700");      // as a page of that country writes it
    EXPECT_EQ(PriceOf("214", German), "214.0000");
    EXPECT_EQ(PriceOf(",,", German), "failed");
    EXPECT_EQ(PriceOf("1.2.3", German), "error 13");
}
