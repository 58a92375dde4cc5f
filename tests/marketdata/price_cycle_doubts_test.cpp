/// Prices that are not to be trusted as they come: cut off, too large, jumping, or none at all; and sites
/// that ask to be left alone.

#include "cycle_run.h"

#include "marketdata/historical_rows.h"

using Page = LoopbackServer::Page;
using Texts = std::vector<std::string>;

namespace
{

std::string MarkOf(CycleRun &run, const QString &symbol)
{
    EXPECT_TRUE(run.rows.Find(symbol));
    const PriceMark mark = run.rows.MarkOfPrice(run.rows.Position());
    return (mark.why.isEmpty() ? "" : mark.isOld ? "old: " : "") + mark.why.toStdString();
}

} // namespace

// --- a connection that was cut --------------------------------------------------------------------

TEST(PriceCycle, TakesNoPriceThatMayHaveLostItsEnd)
{
    const QByteArray page = QByteArray(200, '.') + "[ACME]$612.34;";
    for (int cut = page.size() - 7; cut < page.size(); ++cut) {
        SCOPED_TRACE(page.mid(200, cut - 200).constData());
        CycleRun run;
        run.Site("Quotes", "/q").Position("ACME", 1, 600).Position("BOND", 1, 10);
        run.server.On("/q", Page(page).WithoutLength().CloseAfter(cut));
        run.boxes.Prepare("Please note", Answer::Cancel); // for neither symbol a price was found
        run.FirstCycle();
        EXPECT_EQ(run.PriceOf("ACME"), "600.0000");
    }
}

TEST(PriceCycle, TakesAPriceThatIsWholeFromAPageThatDoesNotTellItsLength)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 600);
    run.server.On("/q", Page(QByteArray(200, '.') + "[ACME]$612.34;").WithoutLength());
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "612.3400");
}

TEST(PriceCycle, TakesAPriceAtTheVeryEndOfAPageThatTellsItsLength)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 600);
    run.server.On("/q", Page(QByteArray(200, '.') + "[ACME]$612.34"));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "612.3400");
}

TEST(PriceCycle, StoresNoPartOfAPriceFromChunksThatWereCut)
{
    const QByteArray body = QByteArray(200, '.') + "[ACME]$612.34;";
    for (int length = 207; length < body.size(); ++length) {
        SCOPED_TRACE(length);
        CycleRun run;
        run.Site("Quotes", "/q").Position("ACME", 1, 600).Position("BOND", 1, 10);
        run.server.On("/q",
                      Page::Raw("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" +
                                QByteArray::number(body.size(), 16) + "\r\n" + body.left(length)));
        for (const char *part : {"Please note", "ISP", "turn off"})
            run.boxes.Prepare(part, Answer::Cancel);
        run.FirstCycle();
        EXPECT_EQ(run.PriceOf("ACME"), "600.0000");
    }
}

// --- a price that does not fit -----------------------------------------------------------------------

TEST(PriceCycle, CountsAPriceAtWhichThePositionCannotBeValuedAsNotFound)
{
    for (const char *price : {"3,450,000,000,000.00", "99999999999999999999.00",
                              "99999999999999999999999999999999999999999999"}) {
        SCOPED_TRACE(price);
        CycleRun run;
        run.Site("Quotes", "/q").Position("ACME", 300, 10).Position("BOND", 1, 10);
        run.server.On("/q", Quotes({{"ACME", price}, {"BOND", "11.00"}}));
        run.FirstCycle();
        EXPECT_EQ(run.PriceOf("ACME"), "10.0000");
        EXPECT_EQ(run.PriceOf("BOND"), "11.0000");
        EXPECT_EQ(run.TakeBoxes(),
                  Texts{"48|The current price for the following symbol(s) were not found: \n"
                        " ACME\nVerify symbol(s) to be correct."});
        EXPECT_TRUE(run.IsOn());
    }
}

TEST(PriceCycle, TakesALargePriceThatFits)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 2, 1).Position("BOND", 0, 1);
    run.server.On("/q", Quotes({{"ACME", "345,000,000,000"}, {"BOND", "345,000,000,000,000"}}));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME").substr(0, 5), "34499"); // by way of a 32-bit float
    EXPECT_EQ(run.PriceOf("BOND").substr(0, 5), "34499");
}

// --- a price that jumps ------------------------------------------------------------------------------

TEST(PriceCycle, MarksAPriceThatJumpsUpToTheNextPriceAndNamesItAtTheEnd)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("AAA", 1, 50).Position("BBB", 1, 50);
    run.server.On("/q", {Quotes({{"AAA", "123,456.00"}, {"BBB", "149.00"}}),
                         Quotes({{"AAA", "123,456.00"}, {"BBB", "49.00"}})});
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("AAA"), "123456.0000"); // taken all the same
    EXPECT_EQ(MarkOf(run, "AAA"), "50.00 -> 123,456.00, please check this price");
    EXPECT_EQ(MarkOf(run, "BBB"), ""); // less than threefold
    EXPECT_EQ(run.Status(), "AAA: 50.00 -> 123,456.00, please check");
    EXPECT_TRUE(run.TakeStatus().contains("Price update complete"));
    EXPECT_EQ(run.TakeBoxes(), Texts());
    run.NextCycle();
    EXPECT_EQ(MarkOf(run, "AAA"), "");
    EXPECT_EQ(MarkOf(run, "BBB"), "149.00 -> 49.00, please check this price");
    EXPECT_EQ(run.Status(), "BBB: 149.00 -> 49.00, please check");
}

TEST(PriceCycle, MarksAPriceOfZeroAndNoFirstPrice)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("NEW", 1, 0).Position("ZERO", 1, 0.5);
    run.server.On("/q", Quotes({{"NEW", "12.50"}, {"ZERO", "0.00"}}));
    run.FirstCycle();
    EXPECT_EQ(MarkOf(run, "NEW"), "");
    EXPECT_EQ(MarkOf(run, "ZERO"), "0.5000 -> 0.0000, please check this price");
    EXPECT_EQ(run.PriceOf("ZERO"), "0.0000");
}

TEST(PriceCycle, NamesThreeOfManyPricesThatJump)
{
    CycleRun run;
    run.Site("Quotes", "/q");
    std::vector<std::pair<QByteArray, QByteArray>> quotes;
    for (const char *symbol : {"A", "B", "C", "D", "E"}) {
        run.Position(symbol, 1, 1);
        quotes.push_back({symbol, "9.00"});
    }
    run.server.On("/q", Quotes(quotes));
    run.FirstCycle();
    EXPECT_EQ(run.Status(), "A: 1.00 -> 9.00; B: 1.00 -> 9.00; C: 1.00 -> 9.00; and 2 more, please "
                            "check");
}

TEST(PriceCycle, ExpectsAJumpAfterASplit)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 40, 2.5).Position("BOND", 1, 2.5);
    run.server.On("/q", Quotes({{"ACME", "10.00"}, {"BOND", "10.00"}}));
    run.Load();
    MarkPricesToReload(run.databases.gConnHistPrices, "ACME"); // as the posting of a split does
    run.Advance(5);
    EXPECT_EQ(MarkOf(run, "ACME"), "");
    EXPECT_EQ(run.Status(), "BOND: 2.50 -> 10.00, please check");
}

TEST(PriceCycle, ForgetsTheMarkWhenTheRowGetsAnotherPriceByATrade)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 1);
    run.server.On("/q", Quotes({{"ACME", "9.00"}}));
    run.FirstCycle();
    EXPECT_NE(MarkOf(run, "ACME"), "");
    run.rows.Requery(); // as each posting does
    EXPECT_NE(MarkOf(run, "ACME"), "");
    run.rows.Edit().CurrPrice = Currency("1.05");
    EXPECT_EQ(MarkOf(run, "ACME"), "");
}

// --- no price ----------------------------------------------------------------------------------------

TEST(PriceCycle, MarksTheRowsThatGotNoPriceUntilTheyGetOne)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 10).Position("BOND", 1, 10);
    run.server.On("/q",
                  {Quotes({{"ACME", "11.00"}}), Quotes({{"ACME", "11.00"}, {"BOND", "11.00"}})});
    run.FirstCycle();
    EXPECT_EQ(MarkOf(run, "ACME"), "");
    EXPECT_EQ(MarkOf(run, "BOND"),
              "old: No price in the update of 10:15:05 AM: the page of the site has none");
    run.NextCycle();
    EXPECT_EQ(MarkOf(run, "BOND"), "");
}

TEST(PriceCycle, MarksAllRowsWhenACycleBreaksOff)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 10);
    run.server.On("/q", Page::NeverAnswers());
    run.requestTimeout = std::chrono::milliseconds(60);
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn());
    EXPECT_EQ(MarkOf(run, "ACME").substr(0, 25), "old: No price in the upda");
}

// --- sites that ask to be left alone -----------------------------------------------------------------

TEST(PriceCycle, AsksASiteAgainOnlyWhenTheTimeItAskedForHasPassed)
{
    for (const int status : {429, 503}) {
        SCOPED_TRACE(status);
        CycleRun run;
        run.Site("Quotes (free)", "/q").Position("ACME", 1, 10).Position("BOND", 1, 10);
        run.account.CurrentWebSiteName = "Quotes (free)";
        run.server.On("/q", {Page("Too many requests").Status(status).Header("Retry-After", "600"),
                             Quotes({{"ACME", "11.00"}, {"BOND", "11.00"}})});
        run.FirstCycle();
        EXPECT_EQ(run.TakeBoxes(), Texts()); // the symbols are not wrong
        EXPECT_TRUE(run.IsOn());
        EXPECT_EQ(run.PriceOf("ACME"), "10.0000");
        EXPECT_EQ(run.TimeOf("ACME"), "16:00:00.000");
        EXPECT_EQ(MarkOf(run, "ACME"),
                  "old: No price in the update of 10:15:05 AM: the site asks to wait");
        EXPECT_EQ(run.Status(), "Quotes asks to wait until 10:25:05 AM");
        run.NextCycle(); // 10:20:30
        EXPECT_EQ(run.server.Requests("/q"), 1);
        run.Unload();
        run.FirstCycle(); // switched off and on again
        EXPECT_EQ(run.server.Requests("/q"), 1);
        run.NextCycle(); // 10:26:00
        EXPECT_EQ(run.server.Requests("/q"), 2);
        EXPECT_EQ(run.PriceOf("ACME"), "11.0000");
        EXPECT_EQ(run.TakeBoxes(), Texts());
    }
}

TEST(PriceCycle, KeepsThePricesThatCameBeforeTheSiteAskedToWait)
{
    CycleRun run;
    run.Site("Quotes", "/q", "UpdateCount = 1").Position("ACME", 1, 10).Position("BOND", 1, 10);
    run.server.On("/q?s=ACME", Quotes({{"ACME", "11.00"}}));
    run.server.On("/q?s=BOND", Page().Status(503).Header("Retry-After", "60"));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "11.0000");
    EXPECT_EQ(run.PriceOf("BOND"), "10.0000");
    EXPECT_EQ(run.TakeBoxes(), Texts());
}

TEST(PriceCycle, DoesNotCountADayAsUpdatedOnWhichTheSiteAsksToWait)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 10);
    run.account.LastPriceUpdate = QDate(2026, 2, 27);
    run.server.On("/d", Page("<table></table>"));
    run.server.On("/q",
                  {Page("x").Status(503).Header("Retry-After", "60"), Quotes({{"ACME", "11.00"}})});
    run.FirstCycle();
    EXPECT_EQ(run.account.LastPriceUpdate, QDate(2026, 2, 27));
    const int dailyPages = run.server.Requests("/d");
    run.NextCycle();
    EXPECT_EQ(run.account.LastPriceUpdate, QDate(2026, 3, 2));
    EXPECT_EQ(run.server.Requests("/d"), dailyPages); // once a day is enough
}

TEST(PriceCycle, SwitchesForNoSiteThatOnlySlowsDown)
{
    CycleRun run;
    run.Site("Quotes", "/q").Site("Other", "/o").Position("ACME", 1, 10);
    run.server.On("/q", Page("x").Status(429).Header("Retry-After", "60"));
    run.FirstCycle();
    EXPECT_EQ(run.server.Requests("/o"), 0);
    EXPECT_EQ(run.account.CurrentWebSiteName, "Quotes");
}

// --- hosts that cannot be reached --------------------------------------------------------------------

TEST(PriceCycle, ShowsOneBoxForTheDailyPricesOfADayWhenTheirHostCannotBeReached)
{
    CycleRun run;
    run.Site("Quotes", "/q");
    for (const char *symbol : {"A", "B", "C"})
        run.Position(symbol, 1, 10);
    run.account.LastPriceUpdate = QDate(2026, 2, 27);
    run.server.Stop();
    run.FirstCycle();
    const auto count = [](const Texts &boxes, const char *part) {
        return std::count_if(boxes.begin(), boxes.end(), [part](const std::string &box) {
            return box.find(part) != std::string::npos;
        });
    };
    Texts boxes = run.TakeBoxes();
    EXPECT_EQ(count(boxes, "The daily prices could not be loaded"), 1);
    EXPECT_EQ(count(boxes, "An error has occured obtaining current prices."), 1); // of the quotes
    run.FirstCycle(); // the same day, after Connect
    boxes = run.TakeBoxes();
    EXPECT_EQ(count(boxes, "The daily prices could not be loaded"), 0);
    run.server.Start();
    run.server.On("/d", Page("<table></table>"));
    run.server.On("/q", Quotes({{"A", "11"}, {"B", "11"}, {"C", "11"}}));
    run.FirstCycle();
    EXPECT_EQ(run.server.Requests("/d"), 0);
    run.clock.Set(QDateTime(QDate(2026, 3, 3), QTime(9, 0)));
    run.NextCycle();
    EXPECT_GT(run.server.Requests("/d"), 0);
}

// --- minutes -----------------------------------------------------------------------------------------

TEST(PriceCycle, NeverWaitsLessThanNoMinutes)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 1, 10);
    run.server.On("/q", Quotes({{"ACME", "11.00"}}));
    run.FirstCycle();
    run.screens->posting = true; // the entry screen posts, with a question up
    run.Advance(65 * 9);
    EXPECT_EQ(run.state.MinutesSinceUpdate.Value(), 5); // "Update in: 0 minutes"
    run.screens->posting = false;
    run.Advance(65);
    EXPECT_EQ(run.state.MinutesSinceUpdate.Value(), 0);
    EXPECT_EQ(run.server.Requests("/q"), 2);
}
