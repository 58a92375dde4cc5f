#include "cycle_run.h"

using Page = LoopbackServer::Page;
using Texts = std::vector<std::string>;

namespace
{

/// An account with one position of ACME on a site that quotes it at 12.50.
void GiveAcme(CycleRun &run)
{
    run.Site("Quotes", "/q").Position("ACME", 100, 10);
    run.server.On("/q", Quotes({{"ACME", "12.50"}}));
}

} // namespace

// --- when a cycle comes ---------------------------------------------------------------------------

TEST(PriceCycle, ComesFiveSecondsAfterTheLoadAndWritesPriceAndTime)
{
    CycleRun run;
    GiveAcme(run);
    run.Load();
    EXPECT_TRUE(run.state.PriceUpdateActive);
    run.Advance(4);
    EXPECT_EQ(run.server.Requests().size(), 0);
    run.Advance(1);
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
    EXPECT_EQ(run.TimeOf("ACME"), "10:15:05.000");
    EXPECT_EQ(run.Status(), "Price update complete");
    EXPECT_EQ(run.state.MinutesSinceUpdate.Value(), 0);
    EXPECT_TRUE(run.screens->log.contains("reload"));
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST(PriceCycle, ComesAgainAfterFiveTicksOf65SecondsWithFiveMinutesBetweenUpdates)
{
    CycleRun run;
    GiveAcme(run);
    run.FirstCycle();
    for (int tick = 1; tick <= 4; ++tick) {
        run.Advance(65);
        EXPECT_EQ(run.server.Requests("/q"), 1);
        EXPECT_EQ(run.state.MinutesSinceUpdate.Value(), tick); // "Update in:" counts down by ticks
    }
    run.Advance(64);
    EXPECT_EQ(run.server.Requests("/q"), 1);
    run.Advance(1);
    EXPECT_EQ(run.server.Requests("/q"), 2);
}

TEST(PriceCycle, WaitsWhileTheEntryScreenPosts)
{
    CycleRun run;
    GiveAcme(run);
    run.screens->posting = true;
    run.FirstCycle();
    EXPECT_EQ(run.server.Requests().size(), 0);
    run.screens->posting = false;
    run.Advance(5);
    EXPECT_EQ(run.server.Requests("/q"), 1);
}

TEST(PriceCycle, WaitsUntilTheDailyTrackerIsUp)
{
    CycleRun run;
    GiveAcme(run);
    run.screens->ready = false;
    run.FirstCycle();
    EXPECT_EQ(run.server.Requests().size(), 0);
    EXPECT_TRUE(run.IsOn());
    run.screens->ready = true;
    run.Advance(5);
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
}

TEST(PriceCycle, NeverStartsInsideAnother)
{
    CycleRun run;
    GiveAcme(run);
    run.account.WebUpdateMinutes = Integer::FromWide(1);
    int inside = 0;
    run.server.OnRequest = [&](const LoopbackServer::Request &) {
        if (++inside == 1)
            run.clock.Advance(std::chrono::seconds(200)); // three ticks in the midst of a transfer
    };
    run.FirstCycle();
    EXPECT_EQ(run.TakeStatus().count(""), 1 + 1 + 3); // the load, the tick, and these three
    EXPECT_EQ(run.server.Requests("/q"), 1);
    run.Advance(65);
    EXPECT_EQ(run.server.Requests("/q"), 2);
}

TEST(PriceCycle, DisablesFileCommandsWhileItRuns)
{
    CycleRun run;
    GiveAcme(run);
    run.commands.SetEnabled("UndoLast", false);
    run.commands.SetEnabled("popDTUndoLast", false);
    bool seen = false;
    run.server.OnRequest = [&](const LoopbackServer::Request &) {
        seen = true;
        for (const char *name : {"New", "Open", "SaveAs", "Setup", "mnuFLNew", "mnuFLOpenExisting",
                                 "mnuView", "mnuFLCompactDBA"})
            EXPECT_FALSE(run.commands.Enabled(name)) << name;
        EXPECT_TRUE(run.commands.Enabled("mnuFLExit"));
        EXPECT_TRUE(run.state.UpdateInProgress);
    };
    run.FirstCycle();
    EXPECT_TRUE(seen);
    for (const char *name : {"New", "Open", "SaveAs", "Setup", "mnuFLNew", "mnuView"})
        EXPECT_TRUE(run.commands.Enabled(name)) << name;
    EXPECT_FALSE(run.commands.Enabled("popDTUndoLast")); // nothing to undo
    EXPECT_FALSE(run.state.UpdateInProgress);
}

// --- accounts -------------------------------------------------------------------------------------

TEST(PriceCycle, GoesOffWithoutAWordForAnAccountWithoutRows)
{
    CycleRun run;
    run.Site("Quotes", "/q");
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn());
    EXPECT_FALSE(run.state.PriceUpdateActive);
    EXPECT_EQ(run.state.ConnectionState, 3);
    EXPECT_TRUE(run.boxes.boxes.empty());
    EXPECT_TRUE(run.settings.WebPriceUpdate);
}

TEST(PriceCycle, GoesOffWithoutAWordWhenTheAccountIsClosedUnderIt)
{
    CycleRun run;
    GiveAcme(run);
    run.Load();
    run.rows.Close();
    run.Advance(5);
    EXPECT_FALSE(run.IsOn());
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST(PriceCycle, GoesOffWithTheOverflowOfAPositionBeyond32767Shares)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 32768, 10);
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn());
    EXPECT_EQ(run.TakeBoxes(), Texts{"64|Overflow"});
}

TEST(PriceCycle, StampsAPositionOfLessThanHalfAShareASecondBefore)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("ACME", 0.25, 10).Position("BOND", 3, 10);
    run.server.On("/q", Quotes({{"ACME", "12.50"}, {"BOND", "99.00"}}));
    run.FirstCycle();
    EXPECT_EQ(run.TimeOf("ACME"), "10:15:04.000");
    EXPECT_EQ(run.TimeOf("BOND"), "10:15:05.000");
}

TEST(PriceCycle, LeavesTheRowsBehindAChangeOfOrderAsTheyAre)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("A", 1, 1).Position("C", 1, 1).Position("D", 1, 1);
    run.server.On("/q", Quotes({{"A", "2.00"}, {"C", "3.00"}, {"D", "4.00"}}));
    run.server.OnRequest = [&](const LoopbackServer::Request &) { // a click on a heading
        run.rows.SetOrderBy("ORDER BY Symbol = 'D' DESC, Symbol");
        run.rows.Requery();
    };
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("D"), "1.0000"); // now in the place of A
    EXPECT_EQ(run.PriceOf("A"), "2.0000");
    EXPECT_EQ(run.PriceOf("C"), "3.0000");
    EXPECT_TRUE(run.IsOn());
}

TEST(PriceCycle, StopsMatchingAtARowThatWasDeletedMeanwhile)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("A", 1, 1).Position("C", 1, 1).Position("D", 1, 1);
    run.server.On("/q", Quotes({{"A", "2.00"}, {"C", "3.00"}, {"D", "4.00"}}));
    run.server.OnRequest = [&](const LoopbackServer::Request &) {
        run.rows.Find("C");
        run.rows.Delete();
    };
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("A"), "2.0000");
    EXPECT_EQ(run.PriceOf("D"), "1.0000");
}

TEST(PriceCycle, PricesASymbolWithAnApostrophe)
{
    CycleRun run;
    run.Site("Quotes", "/q").Position("O'NEIL", 10, 1);
    run.server.On("/q", Quotes({{"O'NEIL", "7.25"}}));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("O''NEIL"), "7.2500");
}

// --- batches --------------------------------------------------------------------------------------

TEST(PriceCycle, AsksForNoMoreSymbolsAtOnceThanTheSiteTakes)
{
    CycleRun run;
    run.Site("Quotes", "/q", "UpdateCount = 2");
    for (const char *symbol : {"A", "AA", "B", "C", "D"})
        run.Position(symbol, 1, 1);
    run.server.On("/q", [](const LoopbackServer::Request &request) {
        std::vector<std::pair<QByteArray, QByteArray>> quotes;
        for (const QString &symbol : request.Query("s").split(','))
            quotes.push_back({symbol.toUtf8(), "5.00"});
        return Quotes(quotes);
    });
    run.FirstCycle();
    QStringList asked;
    for (const LoopbackServer::Request &request : run.server.Requests())
        asked << request.Query("s");
    EXPECT_EQ(asked, QStringList({"A,AA", "B,C", "D"}));
    for (const char *symbol : {"A", "AA", "B", "C", "D"})
        EXPECT_EQ(run.PriceOf(symbol), "5.0000") << symbol;
}

TEST(PriceCycle, EndsOnASiteWhoseSeparatorGarblesItsSymbols)
{
    CycleRun run;
    run.Site("Quotes", "/q", "AddressBuildCharacters = ',  ', UpdateCount = 1");
    run.Position("ABC", 1, 1).Position("GOOD", 1, 1);
    run.server.On("/q", Quotes({{"ABC", "5.00"}}));
    run.boxes.Prepare("Please note", Answer::Cancel);
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn()); // no symbol was found, and the user refused another site
    EXPECT_EQ(run.server.Requests("/q"), 2);
}

// --- symbols not found ----------------------------------------------------------------------------

TEST(PriceCycle, ReportsASymbolThatWasNotFoundOnceUntilItIsLoadedAgain)
{
    CycleRun run;
    GiveAcme(run);
    run.Position("BAD1", 1, 7).Position("BAD2", 1, 8);
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes(),
              Texts{"48|The current price for the following symbol(s) were not found: \n"
                    " BAD1, BAD2\nVerify symbol(s) to be correct."});
    EXPECT_EQ(run.PriceOf("BAD1"), "7.0000");
    EXPECT_EQ(run.TimeOf("BAD1"), "10:15:05.000"); // stamped like one that was found
    run.NextCycle();
    EXPECT_EQ(run.server.Requests("/q"), 2);
    EXPECT_TRUE(run.boxes.boxes.empty());
    run.Unload();
    run.FirstCycle();
    EXPECT_EQ(run.TakeBoxes().size(), 1u);
}

TEST(PriceCycle, StoresNoPriceForATextOfCommasAloneAndCountsItAsNotFound)
{
    CycleRun run;
    GiveAcme(run);
    run.Position("COMMA", 1, 7);
    run.server.On("/q", Quotes({{"ACME", "12.50"}, {"COMMA", ",,,"}}));
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("COMMA"), "0.0000");
    EXPECT_TRUE(run.boxes.boxes.empty()); // it is on no list
}

// --- the day --------------------------------------------------------------------------------------

TEST(PriceCycle, MarksTheDayAsUpdatedAtItsEndOnly)
{
    CycleRun run;
    GiveAcme(run);
    run.account.LastPriceUpdate = QDate(2026, 2, 27);
    run.server.On("/q", Page::ResetsAtOnce());
    run.boxes.Prepare("Internet connection could not", Answer::Ok);
    run.FirstCycle();
    EXPECT_FALSE(run.IsOn());
    EXPECT_EQ(run.account.LastPriceUpdate, QDate(2026, 2, 27));

    run.server.On("/q", Quotes({{"ACME", "12.50"}}));
    run.FirstCycle();
    EXPECT_EQ(run.account.LastPriceUpdate, QDate(2026, 3, 2));
    EXPECT_EQ(run.folder.Value(run.folder.SampleAccount(),
                               "SELECT Field05 FROM DescriptiveTable WHERE TableName = 'Balance'"),
              "2026-03-02");
}

TEST(PriceCycle, LoadsDailyPricesBeforeTheFirstCurrentPricesOfADay)
{
    CycleRun run;
    GiveAcme(run);
    run.account.LastPriceUpdate = QDate(2026, 2, 27);
    run.FirstCycle();
    ASSERT_GE(run.server.Requests().size(), 2);
    EXPECT_EQ(run.server.Requests().first().Path(), "/d");
    EXPECT_EQ(run.server.LastRequest().Path(), "/q");
    EXPECT_TRUE(run.screens->log.contains("unload tips"));
    EXPECT_TRUE(run.screens->log.contains("progress 1 to 2: Historical price update..."));
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");

    const int dailyRequests = run.server.Requests("/d");
    run.NextCycle();
    EXPECT_EQ(run.server.Requests("/d"), dailyRequests); // once a day
    run.state.HistoricalRetryNeeded = true;
    run.NextCycle();
    EXPECT_GT(run.server.Requests("/d"), dailyRequests);
    EXPECT_FALSE(run.state.HistoricalRetryNeeded);
}

TEST(PriceCycle, LoadsDailyPricesAgainOnTheDayThatBeginsAtMidnight)
{
    CycleRun run;
    GiveAcme(run);
    run.account.WebUpdateMinutes = Integer::FromWide(1);
    run.clock.Set(QDateTime(QDate(2026, 3, 2), QTime(23, 59, 30)));
    run.FirstCycle();
    EXPECT_EQ(run.server.Requests("/d"), 0);
    run.Advance(65);
    EXPECT_GT(run.server.Requests("/d"), 0);
    EXPECT_EQ(run.account.LastPriceUpdate, QDate(2026, 3, 3));
}

TEST(PriceCycle, PricesRowsStampedAtTheSameSecondOfAnotherDay)
{
    CycleRun run;
    GiveAcme(run);
    run.folder.Execute(run.folder.SampleAccount(), "UPDATE DailyTracker SET Time = '10:15:05.000'");
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
}

// --- off ------------------------------------------------------------------------------------------

TEST(PriceCycle, LeavesTheRowsAloneWhenItIsUnloadedInTheMidstOfATransfer)
{
    CycleRun run;
    GiveAcme(run);
    run.server.OnRequest = [&](const LoopbackServer::Request &) { run.Unload(); };
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "10.0000");
    EXPECT_FALSE(run.state.PriceUpdateActive);
    EXPECT_FALSE(run.state.UpdateInProgress);
    EXPECT_EQ(run.state.ConnectionState, 3);
    EXPECT_EQ(run.Status(), "");
    EXPECT_TRUE(run.commands.Enabled("mnuFLNew"));
    EXPECT_EQ(run.settings.LastRunDate, QDate(2026, 3, 2));
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST(PriceCycle, BeginsAnewWhenItIsUnloadedAndLoadedInTheMidstOfATransfer)
{
    CycleRun run;
    GiveAcme(run);
    bool once = true;
    run.server.OnRequest = [&](const LoopbackServer::Request &) {
        if (!std::exchange(once, false))
            return;
        run.Unload();
        run.Load();
    };
    run.FirstCycle();
    EXPECT_EQ(run.PriceOf("ACME"), "10.0000");
    run.Advance(5);
    EXPECT_EQ(run.PriceOf("ACME"), "12.5000");
    EXPECT_TRUE(run.IsOn());
}

TEST(PriceCycle, EndsTheProgramWhenItIsClosingInTheMidstOfATransfer)
{
    CycleRun run;
    GiveAcme(run);
    run.server.OnRequest = [&](const LoopbackServer::Request &) { run.screens->closing = true; };
    run.Load();
    EXPECT_THROW(run.Advance(5), ProgramEnded);
    EXPECT_EQ(run.PriceOf("ACME"), "10.0000");
}

TEST(PriceCycle, TakesTheAccessTypeOfTheSettings)
{
    for (const int type : {1, 2, 3}) { // loopback pages come whatever the proxy
        CycleRun run;
        GiveAcme(run);
        run.settings.AccessType = type;
        run.FirstCycle();
        EXPECT_EQ(run.PriceOf("ACME"), "12.5000") << type;
    }
}

TEST(PriceCycle, TellsInTheStatusLineWhatItIsDoing)
{
    CycleRun run;
    GiveAcme(run);
    run.FirstCycle();
    const QStringList texts = run.TakeStatus();
    qsizetype at = 0;
    for (const char *text :
         {"Building address string...", "Connecting to website Quotes", "Looking up IP address...",
          "IP address found...", "Connecting to host computer...", "Connection succesful...",
          "Sending request to host computer...", "Request sent...", "Receiving response...",
          "Response received...", "Connection successful...", "Extracting data...",
          "Ready to update...", "Updating...", "Price update complete"}) {
        at = texts.indexOf(QString::fromUtf8(text), at);
        ASSERT_GE(at, 0) << text << " in " << qPrintable(texts.join("|"));
    }
}
