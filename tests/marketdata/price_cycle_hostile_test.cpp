/// Price cycles on odd symbols and broken sites, and ones that are switched off at any point.

#include "cycle_run.h"

using Page = LoopbackServer::Page;
using Texts = std::vector<std::string>;

namespace
{

/// An answer to each question that a cycle can ask; every switch is refused.
void RefuseEverything(CycleRun &run)
{
    run.boxes.Prepare("Please note", Answer::Cancel);
    run.boxes.Prepare("another website", Answer::Cancel);
    run.boxes.Prepare("ISP", Answer::Cancel);
    run.boxes.Prepare("turn off", Answer::Yes);
}

} // namespace

// --- symbols --------------------------------------------------------------------------------------

TEST(PriceCycle, PricesSymbolsOfOddCharactersEachInARequestOfItsOwn)
{
    CycleRun run;
    run.Site("Quotes", "/q", "UpdateCount = 1");
    const QStringList symbols = {"#1",     "50%",  "A B", "A,B", "A|B^",   "B&Q=?",
                                 "C/D\\E", "D\"E", "<b>", "É1",  "O'NEIL", "日本"};
    std::vector<std::pair<QByteArray, QByteArray>> quotes;
    for (const QString &symbol : symbols) {
        run.Position(symbol, 1, 1);
        quotes.push_back({symbol.toUtf8(), "7.25"});
    }
    run.server.On("/q", Quotes(quotes));
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(), Texts());
    for (QString symbol : symbols)
        EXPECT_EQ(run.PriceOf(symbol.replace("'", "''")), "7.2500") << qPrintable(symbol);
    EXPECT_EQ(run.server.Requests("/q"), int(symbols.size()));
}

TEST(PriceCycle, AsksForSymbolsOfOddCharactersAsTheyReadInOneRequest)
{
    CycleRun run;
    run.Site("Quotes", "/q");
    run.Position("#1", 1, 1).Position("A B", 1, 1).Position("É1", 1, 1);
    run.server.On("/q", Quotes({{"#1", "2.00"}, {"A B", "3.00"}, {"É1", "4.00"}}));
    run.FirstCycle();
    EXPECT_EQ(run.server.LastRequest().Query("s"), QString::fromUtf8("#1,A B,É1"));
    EXPECT_EQ(run.PriceOf("A B"), "3.0000");
}

TEST(PriceCycle, LosesTheRowsFromASymbolOfElevenCharactersOnAndNoOthers)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 1);
    run.Position("LONGSYMBOL1", 1, 1).Position("LONGSYMBOL2", 1, 1).Position("ZED", 1, 1);
    run.server.On("/q", Quotes({{"ACME", "2.00"}, {"LONGSYMBOL", "3.00"}, {"ZED", "4.00"}}));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "2.0000");
    for (const char *symbol : {"LONGSYMBOL1", "LONGSYMBOL2", "ZED"})
        EXPECT_EQ(run.PriceOf(symbol), "1.0000") << symbol;
    EXPECT_EQ(run.server.LastRequest().Query("s"), "ACME,LONGSYMBOL,LONGSYMBOL,ZED");
    EXPECT_TRUE(run.IsOn());
}

TEST(PriceCycle, ComesToItsEndWithASymbolOfBlanks)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("   ", 1, 1).Position("ACME", 1, 1);
    run.server.On("/q", Quotes({{"ACME", "2.00"}}));
    run.FirstCycle();
    EXPECT_FALSE(run.state.UpdateInProgress);
    EXPECT_TRUE(run.IsOn());
}

// --- sites ----------------------------------------------------------------------------------------

TEST(PriceCycle, SurvivesASiteWithANullInAnyColumn)
{
    for (const char *column :
         {"WebSiteName", "EndWebAddress", "AddressBuildCharacters", "SymbolBegText",
          "SymbolEndText", "CharToPrice", "PriceBegText", "PriceEndText", "DelayTime",
          "UpdateCount", "SignUpURL", "OptionPrefix", "OptionSuffix", "SimilarSite"}) {
        SCOPED_TRACE(column);
        CycleRun run;
        run.Site("Quotes", "/q", QStringLiteral("%1 = NULL").arg(column));
        run.Position("ACME", 1, 10).Position("OPT", 1, 2, "Option");
        run.server.On("/q", Quotes({{"ACME", "12.50"}, {"OPT", "2.50"}}));
        RefuseEverything(run);
        run.FirstCycle();
        EXPECT_FALSE(run.state.UpdateInProgress);
        const std::string price = run.PriceOf("ACME");
        EXPECT_TRUE(price == "10.0000" || price == "12.5000") << price;
    }
}

TEST(PriceCycle, SurvivesASiteWithoutAnAddress)
{
    CycleRun run; // so the first symbol is the host: this machine, where nobody listens
    run.Site("Quotes", "/q", "BegWebAddress = NULL").Position("127.0.0.1", 1, 10);
    RefuseEverything(run);
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn());
    EXPECT_EQ(run.PriceOf("127.0.0.1"), "10.0000");
}

TEST(PriceCycle, SurvivesASiteOfNothingButNulls)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("127.0.0.1", 1, 10);
    run.folder.Execute(run.folder.File("WebSites.mdb"),
                       "INSERT INTO WebParameters (ID) VALUES (9); "
                       "UPDATE WebParameters SET ID = 5 WHERE ID = 1; "
                       "UPDATE WebParameters SET ID = 1 WHERE ID = 9");
    run.account.CurrentWebSiteName = "Gone"; // so the row of ID 1 takes its place
    RefuseEverything(run);
    run.FirstCycle();
    EXPECT_FALSE(run.state.UpdateInProgress);
    EXPECT_EQ(run.PriceOf("127.0.0.1"), "10.0000");
}

TEST(PriceCycle, TakesAnyUpdateCount)
{
    for (const int count : {0, -1, -32768, 1, 32767}) {
        CycleRun run;
        run.Site("Quotes", "/q", QStringLiteral("UpdateCount = %1").arg(count));
        run.Position("ACME", 1, 10).Position("BOND", 1, 10);
        run.server.On("/q", Quotes({{"ACME", "12.50"}, {"BOND", "99.00"}}));
        run.FirstCycle();
        EXPECT_EQ(run.PriceOf("BOND"), "99.0000") << count;
        EXPECT_EQ(run.server.Requests("/q"), count > 1 ? 1 : 2) << count;
    }
}

TEST(PriceCycle, FindsNothingWithinANegativeReachAndOverflowsAtOneTooFar)
{
    for (const int reach : {-1, -32768, 32767}) {
        CycleRun run;
        run.Site("Quotes", "/q", QStringLiteral("CharToPrice = %1").arg(reach));
        run.Position("ACME", 1, 10);
        run.server.On("/q", Quotes({{"ACME", "12.50"}}));
        RefuseEverything(run);
        run.FirstCycle();
        EXPECT_EQ(run.PriceOf("ACME"), "10.0000") << reach;
        EXPECT_FALSE(run.IsOn()) << reach;
        EXPECT_EQ(run.TakeBoxes() == Texts{"64|Overflow"}, reach > 0) << reach;
    }
}

TEST(PriceCycle, GoesOffWithoutAWordWhenTheStoredSiteIsGoneAndNoneHasIdOne)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 10);
    run.folder.Execute(run.folder.File("WebSites.mdb"), "UPDATE WebParameters SET ID = 5");
    run.account.CurrentWebSiteName = "Gone";
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn());
    EXPECT_EQ(run.TakeBoxes(), Texts());
    EXPECT_EQ(run.state.LastError, 3021);
    EXPECT_EQ(run.account.CurrentWebSiteName, "Gone");
}

// --- switched off at any point --------------------------------------------------------------------

TEST(PriceCycle, WritesAllPricesOrNoneWhereverItIsSwitchedOff)
{
    bool cameThrough = false;
    int count = 0;
    for (; !cameThrough; ++count) {
        ASSERT_LT(count, 500);
        SCOPED_TRACE(count);
        CycleRun run;
        run.Site("Quotes", "/q", "UpdateCount = 1");
        run.Position("ACME", 1, 10).Position("BOND", 1, 10);
        run.account.LastPriceUpdate = QDate(2026, 2, 27); // daily prices come first
        run.server.On("/q", Quotes({{"ACME", "12.50"}, {"BOND", "99.00"}}));
        run.Load();
        int left = count;
        bool wasOff = false;
        run.OnStatus = [&] {
            if (left-- == 0) {
                wasOff = true;
                run.Unload();
            }
        };
        run.Advance(5);
        run.OnStatus = nullptr;
        cameThrough = !wasOff;
        EXPECT_EQ(run.IsOn(), cameThrough);
        EXPECT_EQ(run.state.PriceUpdateActive, cameThrough);
        EXPECT_FALSE(run.state.UpdateInProgress);
        EXPECT_TRUE(run.commands.Enabled("mnuFLNew"));
        EXPECT_EQ(run.TakeBoxes(), Texts());
        const std::string prices = run.PriceOf("ACME") + " " + run.PriceOf("BOND");
        EXPECT_TRUE(prices == "10.0000 10.0000" || prices == "12.5000 99.0000") << prices;

        run.FirstCycle(); // and it can be switched on again
        EXPECT_EQ(run.PriceOf("BOND"), "99.0000");
        EXPECT_EQ(run.account.LastPriceUpdate, QDate(2026, 3, 2));
    }
    EXPECT_GT(count, 30); // so many texts are posted
}
