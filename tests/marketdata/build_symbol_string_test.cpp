/// The symbols of a request, and the batch that is read back from them.

#include "print_qt.h"

#include "marketdata/extraction.h"

#include <gtest/gtest.h>

namespace
{

QuoteSite JoiningSite(const QString &separator = "+", int updateCount = 20)
{
    QuoteSite site;
    site.AddressBuildCharacters = separator;
    site.UpdateCount = updateCount;
    site.OptionPrefix = "None";
    return site;
}

PortfolioEntry Entry(const QString &symbol, const QString &type = "Stock")
{
    PortfolioEntry entry;
    entry.Symbol = TenCharacters(symbol);
    entry.SecurityType = TenCharacters(type);
    return entry;
}

PortfolioArray Stocks(const QStringList &symbols)
{
    PortfolioArray entries;
    for (const QString &symbol : symbols)
        entries.push_back(Entry(symbol));
    return entries;
}

using Indexes = std::vector<size_t>;

} // namespace

TEST(BuildSymbolString, JoinsTheSymbolsWithoutASeparatorAtTheEnd)
{
    PortfolioArray entries = Stocks({"ACME", "BOLT", "CORE"});
    const SymbolBatch batch = BuildSymbolString(entries, JoiningSite());
    EXPECT_EQ(batch.addressSymbols, "ACME+BOLT+CORE");
    EXPECT_EQ(batch.entries, Indexes({0, 1, 2}));
    EXPECT_FALSE(batch.optionUnsupported);
}

TEST(BuildSymbolString, TakesTheNextDueEntriesUpToUpdateCount)
{
    PortfolioArray entries = Stocks({"A", "B", "C", "D", "E"});
    entries[0].IsDealtWith = entries[2].IsDealtWith = true;
    const SymbolBatch batch = BuildSymbolString(entries, JoiningSite("+", 2));
    EXPECT_EQ(batch.addressSymbols, "B+D");
    EXPECT_EQ(batch.entries, Indexes({1, 3}));
}

TEST(BuildSymbolString, ComesToAnEndWhoeverMarksWhatItGave)
{
    PortfolioArray entries = Stocks({"A", "B", "C", "D", "E"});
    QStringList batches;
    for (;;) {
        const SymbolBatch batch = BuildSymbolString(entries, JoiningSite(",", 2));
        if (batch.entries.empty())
            break;
        batches << batch.addressSymbols;
        for (const size_t index : batch.entries)
            entries[index].IsDealtWith = true;
    }
    EXPECT_EQ(batches, QStringList({"A,B", "C,D", "E"}));
}

TEST(BuildSymbolString, LooksAtTheMarkOfAnEntryAndNotAtItsTime)
{
    // The clock may stand still, or a second pass begin within the same second.
    PortfolioArray entries = Stocks({"A", "B"});
    entries[0].Time = entries[1].Time = QTime(10, 15);
    entries[1].IsDealtWith = true;
    EXPECT_EQ(BuildSymbolString(entries, JoiningSite()).addressSymbols, "A");
}

TEST(BuildSymbolString, TakesOneSymbolWhenUpdateCountIsBelowOne)
{
    for (const int count : {0, -1, -32768}) {
        PortfolioArray entries = Stocks({"A", "B"});
        EXPECT_EQ(BuildSymbolString(entries, JoiningSite("+", count)).addressSymbols, "A") << count;
    }
}

TEST(BuildSymbolString, IsEmptyWhenNothingIsDue)
{
    PortfolioArray none;
    EXPECT_EQ(BuildSymbolString(none, JoiningSite()).addressSymbols, "");
    PortfolioArray entries = Stocks({"A"});
    entries[0].IsDealtWith = true;
    const SymbolBatch batch = BuildSymbolString(entries, JoiningSite());
    EXPECT_EQ(batch.addressSymbols, "");
    EXPECT_TRUE(batch.entries.empty());
}

TEST(BuildSymbolString, AppendsTheSeparatorTrimmedAndCutsItByItsStoredLength)
{
    PortfolioArray entries = Stocks({"ACME", "BOLT"});
    EXPECT_EQ(BuildSymbolString(entries, JoiningSite("+ ")).addressSymbols, "ACME+BOL");
    EXPECT_EQ(BuildSymbolString(entries, JoiningSite(" ")).addressSymbols, "ACMEBOL");
    EXPECT_EQ(BuildSymbolString(entries, JoiningSite("%2C")).addressSymbols, "ACME%2CBOLT");
    PortfolioArray one = Stocks({"A"});
    EXPECT_EQ(BuildSymbolString(one, JoiningSite("     +     ")).addressSymbols, "");
}

TEST(BuildSymbolString, JoinsWithNothingWhenTheSeparatorIsEmpty)
{
    PortfolioArray entries = Stocks({"ACME", "BOLT"});
    EXPECT_EQ(BuildSymbolString(entries, JoiningSite("")).addressSymbols, "ACMEBOLT");
    EXPECT_EQ(BuildSymbolString(entries, JoiningSite("", 1)).addressSymbols, "ACME");
}

TEST(BuildSymbolString, EscapesNothing)
{
    PortfolioArray entries = Stocks({"A&B", "O'NEIL", "^X Y", QString::fromUtf8("É")});
    EXPECT_EQ(BuildSymbolString(entries, JoiningSite()).addressSymbols,
              QString::fromUtf8("A&B+O'NEIL+^X Y+É"));
}

TEST(BuildSymbolString, LeavesAnOptionBareWhereThePrefixIsNone)
{
    PortfolioArray entries = {Entry("ACMEC90", "Option")};
    QuoteSite site = JoiningSite();
    site.OptionPrefix = " None ";
    site.OptionSuffix = ".O";
    EXPECT_EQ(BuildSymbolString(entries, site).addressSymbols, "ACMEC90");
    EXPECT_EQ(entries[0].Symbol, "ACMEC90   ");
}

TEST(BuildSymbolString, PutsThePrefixBeforeAnOptionOrElseTheSuffixBehindIt)
{
    const struct
    {
        const char *prefix, *suffix, *address;
    } rows[] = {
        {" .", " X ", ".ACME+BOLT"},  // both: the prefix alone, trimmed
        {"", " .O ", "ACME.O+BOLT"},  //
        {"  ", ".O", "ACME.O+BOLT"},  // blanks are empty
        {"none", "", "noneACME+BOLT"} // only "None" says so
    };
    for (const auto &row : rows) {
        PortfolioArray entries = {Entry("ACME", "Option"), Entry("BOLT")};
        QuoteSite site = JoiningSite();
        site.OptionPrefix = row.prefix;
        site.OptionSuffix = row.suffix;
        const QString address = BuildSymbolString(entries, site).addressSymbols;
        EXPECT_EQ(address, row.address);
        EXPECT_EQ(entries[0].Symbol, TenCharacters(address.section(u'+', 0, 0)));
    }
}

TEST(BuildSymbolString, CutsTheFormOfAnOptionAtTenCharacters)
{
    PortfolioArray entries = {Entry("ABCDEFGHI", "Option")};
    QuoteSite site = JoiningSite();
    site.OptionPrefix = "@OPT";
    EXPECT_EQ(BuildSymbolString(entries, site).addressSymbols, "@OPTABCDEF");
    EXPECT_EQ(entries[0].Symbol, "@OPTABCDEF");
}

TEST(BuildSymbolString, PutsTheFormOfASecondSiteAroundThatOfTheFirst)
{
    PortfolioArray entries = {Entry("ACME", "Option")};
    QuoteSite site = JoiningSite();
    site.OptionPrefix = "@";
    BuildSymbolString(entries, site);
    site.OptionPrefix = "";
    site.OptionSuffix = ".X";
    EXPECT_EQ(BuildSymbolString(entries, site).addressSymbols, "@ACME.X");
}

TEST(BuildSymbolString, StopsAtAnOptionThatTheSiteDoesNotQuote)
{
    PortfolioArray entries = {Entry("BOLT"), Entry("ACME", "Option"), Entry("CORE")};
    QuoteSite site = JoiningSite();
    site.OptionPrefix = " ";
    SymbolBatch batch = BuildSymbolString(entries, site);
    EXPECT_TRUE(batch.optionUnsupported);
    EXPECT_EQ(batch.addressSymbols, "BOLT");
    // Options that are dealt with, or lie behind the batch, do not matter.
    site.UpdateCount = 1;
    EXPECT_FALSE(BuildSymbolString(entries, site).optionUnsupported);
    site.UpdateCount = 3;
    entries[1].IsDealtWith = true;
    batch = BuildSymbolString(entries, site);
    EXPECT_FALSE(batch.optionUnsupported);
    EXPECT_EQ(batch.addressSymbols, "BOLT+CORE");
}

TEST(BuildSymbolString, TakesOnlyTheTypeOptionInThisWritingForOne)
{
    for (const QString type : {"option", "OPTION", "Options", "Stock", ""}) {
        PortfolioArray entries = {Entry("ACME", type)};
        QuoteSite site = JoiningSite();
        site.OptionPrefix = "@";
        EXPECT_EQ(BuildSymbolString(entries, site).addressSymbols, "ACME") << qPrintable(type);
    }
}

TEST(CommaList, HasACommaBetweenTheSymbolsAndOnBothEnds)
{
    EXPECT_EQ(CommaList("A+B+C", JoiningSite("+")), ",A,B,C,");
    EXPECT_EQ(CommaList("A%2CB", JoiningSite("%2C")), ",A,B,");
    EXPECT_EQ(CommaList("A,B", JoiningSite(",")), ",A,B,");
    EXPECT_EQ(CommaList("AB", JoiningSite("")), ",AB,");
    EXPECT_EQ(CommaList("", JoiningSite("+")), ",,");
}

TEST(CommaList, TakesTheSeparatorAsItIsStored)
{
    EXPECT_EQ(CommaList("A+B", JoiningSite("+ ")), ",A+B,");
    EXPECT_EQ(CommaList("AxBXC", JoiningSite("x")), ",A,BXC,"); // letter for letter
}

TEST(IsInBatch, NeverTakesASymbolForALongerOneThatContainsIt)
{
    EXPECT_FALSE(IsInBatch(",AA,", "A"));
    EXPECT_FALSE(IsInBatch(",AA,BA,", "A"));
    EXPECT_TRUE(IsInBatch(",AA,A,", "A"));
    EXPECT_FALSE(IsInBatch(",A,", "AA"));
}

TEST(IsInBatch, TrimsTheSymbolAndLooksInEitherCase)
{
    EXPECT_TRUE(IsInBatch(",acme,", "ACME      "));
    EXPECT_TRUE(IsInBatch(",ACME,", "acme      "));
    EXPECT_TRUE(IsInBatch(",X,O'NEIL,", "O'Neil"));
    EXPECT_TRUE(IsInBatch(",A,B,C,", "b,c")); // a comma of its own is one like the others
}

TEST(IsInBatch, FindsAnEmptySymbolOnlyInAnEmptyBatch)
{
    EXPECT_TRUE(IsInBatch(",,", "          "));
    EXPECT_FALSE(IsInBatch(",A,", ""));
}
