#include "historical_run.h"

#include "support/loopback_server.h"

#include "base/runtime_error.h"

#include <QTimer>

namespace
{

using Texts = std::vector<std::string>;

const QDate LongAgo(2000, 1, 3);

QStringList ManySymbols(int count)
{
    QStringList symbols;
    for (int index = 1; index <= count; ++index)
        symbols << QStringLiteral("S%1").arg(index);
    return symbols;
}

} // namespace

// --- which requests ------------------------------------------------------------------------------

TEST_F(HistoricalRun, ANewSymbolTakesOneRequestForTwoMonthsAndOneForTheNewestDay)
{
    market.Trade("ACME", LongAgo, Today());
    Download({"ACME"});
    EXPECT_EQ(market.Requests(),
              (Texts{"ACME      |2025-12-30|2026-03-02", "ACME      |2026-03-02|2026-03-02"}));
    EXPECT_EQ(Oldest("ACME"), "2025-12-30");
    EXPECT_EQ(Newest("ACME"), "2026-03-02");
    EXPECT_EQ(RowCount("ACME"), 45); // 2 in December, 22 in January, 20 in February, 1 in March
}

TEST_F(HistoricalRun, ANewSymbolWithTwelveMonthsGoesBackwardsUntilTheTargetIsReached)
{
    settings.HistPriceMonths = 12;
    market.Trade("ACME", LongAgo, Today());
    Download({"ACME"});
    Texts older;
    for (const std::string &request : market.Requests())
        if (request.find("|2026-03-02|2026-03-02") == std::string::npos)
            older.push_back(request.substr(11));
    EXPECT_EQ(older,
              (Texts{"2025-12-30|2026-03-02", "2025-10-27|2025-12-30", "2025-08-24|2025-10-27",
                     "2025-06-22|2025-08-25", "2025-04-20|2025-06-23", "2025-02-27|2025-04-21"}));
    EXPECT_EQ(Oldest("ACME"), "2025-02-27");
    EXPECT_EQ(RowCount("ACME"), 263); // every weekday from 27 February 2025 to 2 March 2026
}

TEST_F(HistoricalRun, TwentyYearsComeWholeAndInTheEnd)
{
    settings.HistPriceMonths = 240;
    market.Trade("ACME", LongAgo, Today());
    Download({"ACME"});
    EXPECT_EQ(Oldest("ACME"), "2006-02-27");
    EXPECT_EQ(RowCount("ACME"), 5221); // weekdays from 27 February 2006 on: 1,044 weeks and a day
    EXPECT_EQ(Value("SELECT count(*) FROM HistoricalPrices WHERE Symbol = ? AND "
                    "PriceDate LIKE '%-02-29'",
                    "ACME"),
              "4"); // 2008, 2012, 2016 and 2024; in 2020 it was a Saturday
    EXPECT_LT(market.Requests().size(), 240u);
}

TEST_F(HistoricalRun, NoMonthsToKeepLoadsTheLastDays)
{
    settings.HistPriceMonths = 0;
    market.Trade("ACME", LongAgo, Today());
    Download({"ACME"});
    EXPECT_EQ(market.Requests(),
              (Texts{"ACME      |2026-02-27|2026-03-02", "ACME      |2026-03-02|2026-03-02"}));
    EXPECT_EQ(RowCount("ACME"), 2);
}

TEST_F(HistoricalRun, ASymbolThatTheServiceDoesNotKnowIsLeftForTheNextOne)
{
    settings.HistPriceMonths = 12;
    market.Trade("ZETA", LongAgo, Today());
    Download({"NONE", "ZETA"});
    EXPECT_EQ(market.Requests().front(), "NONE      |2025-12-30|2026-03-02");
    EXPECT_EQ(RowCount("NONE"), 0);
    EXPECT_EQ(Oldest("ZETA"), "2025-02-27");
    Download({"NONE"});
    EXPECT_EQ(market.Requests().size(), 1u);
}

TEST_F(HistoricalRun, ASymbolWithAShortHistoryIsLeftAloneAfterThreeLooksWithoutAChange)
{
    settings.HistPriceMonths = 12;
    market.Trade("ACME", QDate(2026, 2, 2), Today());
    Download({"ACME"});
    int older = 0;
    for (const std::string &request : market.Requests())
        older += request == "ACME      |2025-11-29|2026-02-02" ? 1 : 0;
    EXPECT_EQ(older, 3);
    EXPECT_EQ(RowCount("ACME"), 21);
}

TEST_F(HistoricalRun, AKnownSymbolTakesOneRequestADay)
{
    Stored("ACME", QDate(2025, 12, 30));
    Stored("ACME", QDate(2026, 2, 27));
    market.Trade("ACME", LongAgo, Today());
    Download({"ACME"});
    EXPECT_EQ(market.Requests(), Texts{"ACME      |2026-02-27|2026-03-02"});
    EXPECT_EQ(Newest("ACME"), "2026-03-02");
}

TEST_F(HistoricalRun, AServiceThatGivesTheSameOldRowsWhateverIsAskedComesToAnEnd)
{
    settings.HistPriceMonths = 240;
    const QString page =
        TablePage().Header().Day(QDate(2026, 2, 27), 50).Day(QDate(2026, 2, 26), 49).Text();
    market.Answer = [&](const HistoricalRequest &) { return page; };
    Download({"ACME", "ZETA"});
    EXPECT_LE(market.Requests().size(), 40u);
    EXPECT_EQ(RowCount("ACME"), 2);
    EXPECT_EQ(RowCount("ZETA"), 2);
    EXPECT_FALSE(state.HistoricalRetryNeeded);
}

TEST_F(HistoricalRun, AServiceThatGivesOneFurtherDayAtATimeComesToAnEnd)
{
    settings.HistPriceMonths = 12;
    market.Answer = [&](const HistoricalRequest &request) {
        return TablePage().Day(request.RangeEnd.addDays(-1), 50).Text();
    };
    Download({"ACME"});
    EXPECT_LE(market.Requests().size(), 800u);
    EXPECT_EQ(Oldest("ACME"), "2025-05-30"); // from May on the range is the last one
}

TEST_F(HistoricalRun, RowsDatedInTheFutureDoNotStopTheOthers)
{
    Stored("ACME", QDate(2030, 1, 1));
    market.Trade("ACME", LongAgo, Today());
    market.Trade("ZETA", LongAgo, Today());
    Download({"ACME", "ZETA"});
    EXPECT_EQ(RowCount("ZETA"), 45);
    EXPECT_EQ(state.LatestPriceDate, Today());
}

TEST_F(HistoricalRun, OnALeapDayTheMonthsGoBackFromTheLastOfFebruary)
{
    machine.clock.Set(QDateTime(QDate(2028, 2, 29), QTime(9, 0)));
    settings.HistPriceMonths = 2;
    market.Trade("ACME", QDate(2027, 1, 1), Today());
    Download({"ACME"});
    EXPECT_EQ(market.Requests().front(), "ACME      |2027-12-26|2028-02-29");
    EXPECT_EQ(Newest("ACME"), "2028-02-29");
}

TEST_F(HistoricalRun, SymbolsWithApostropheAccentsAndBlanksAreStoredUnderTheirName)
{
    const QStringList symbols = {"O'NEIL", QString::fromUtf8("ÄÖ É"), "; DROP --", "A%_"};
    for (const QString &symbol : symbols)
        market.Trade(symbol, LongAgo, Today());
    Download(symbols);
    for (const QString &symbol : symbols)
        EXPECT_EQ(RowCount(symbol), 45) << symbol.toStdString();
}

TEST_F(HistoricalRun, ASymbolIsCutAtTenCharacters)
{
    market.Trade("ABCDEFGHIJ", LongAgo, Today());
    Download({"ABCDEFGHIJKLM"});
    EXPECT_EQ(RowCount("ABCDEFGHIJ"), 45);
}

// --- what is stored ------------------------------------------------------------------------------

TEST_F(HistoricalRun, ARowIsStoredWithEveryColumn)
{
    settings.HistPriceMonths = 0;
    market.Answer = [](const HistoricalRequest &) {
        return TablePage()
            .Cells({"27-Feb-26", "213.20", "216.0451", "212.70", "<b>214.37</b>", "18,734,022",
                    "$210.5"})
            .Text();
    };
    Download({"ACME"});
    EXPECT_EQ(
        Value("SELECT PriceDate || ' ' || PriceOpen || ' ' || DayHigh || ' ' || DayLow || ' ' "
              "|| PriceClose || ' ' || Volume || ' ' || AdjClose FROM HistoricalPrices "
              "WHERE Symbol = ?",
              "ACME"),
        "2026-02-27 2132000 2160451 2127000 2143700 18734022 2105000");
}

TEST_F(HistoricalRun, ARedownloadOfAKnownDayUpdatesItsRow)
{
    Stored("ACME", QDate(2025, 12, 30));
    Stored("ACME", QDate(2026, 3, 2), "44");
    market.Trade("ACME", LongAgo, Today(), 55);
    Download({"ACME"});
    EXPECT_EQ(RowCount("ACME"), 2);
    EXPECT_EQ(Value("SELECT PriceClose FROM HistoricalPrices WHERE Symbol = ? AND "
                    "PriceDate = '2026-03-02'",
                    "ACME"),
              "550000");
}

TEST_F(HistoricalRun, ADividendRowInTheMiddleOfThePageDoesNotStopTheRowsBehindIt)
{
    market.Answer = [](const HistoricalRequest &) {
        return TablePage()
            .Header()
            .Day(QDate(2026, 3, 2), 50)
            .Cells({"27-Feb-26", "$0.26 Cash Dividend"})
            .Day(QDate(2026, 2, 27), 51)
            .Day(QDate(2025, 12, 30), 52)
            .Text();
    };
    Download({"ACME"});
    EXPECT_EQ(RowCount("ACME"), 3);
}

TEST_F(HistoricalRun, AVolumeThatDoesNotFitTravelsOnAndTheRowsBeforeItStay)
{
    market.Answer = [](const HistoricalRequest &) {
        return TablePage()
            .Day(QDate(2026, 3, 2), 50)
            .Day(QDate(2026, 2, 27), 51, "3,000,000,000")
            .Day(QDate(2026, 2, 26), 52)
            .Text();
    };
    try {
        Download({"ACME"});
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 6);
    }
    EXPECT_EQ(RowCount("ACME"), 1);
    EXPECT_EQ(machine.dialogs.Boxes(), Texts());
}

TEST_F(HistoricalRun, AWriteThatIsRefusedIsShownAndTravelsOnAndTheRowsBeforeItStay)
{
    gConnHistPrices.ExecuteScript(
        "CREATE TRIGGER Full BEFORE INSERT ON HistoricalPrices WHEN NEW.PriceDate = '2026-02-26' "
        "BEGIN SELECT RAISE(ABORT, 'the disk is full'); END");
    market.Trade("ACME", LongAgo, Today());
    try {
        Download({"ACME"});
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), -2147467259);
    }
    EXPECT_EQ(machine.dialogs.Boxes(),
              Texts{"Quillon Editor|16|"
                    "An error has been encountered while updating the Historical Price "
                    "(HistPrices.mdb) \n"
                    "database. Please take note of this message and contact TechSupport.\n"
                    "Error number -2147467259\nDescription: the disk is full"});
    EXPECT_EQ(RowCount("ACME"), 2); // 2 March and 27 February
}

// --- progress, the end, and how it is stopped ----------------------------------------------------

TEST_F(HistoricalRun, ShowsItsProgressFromTheFirstSymbolToTheLast)
{
    state.HistoricalRetryNeeded = true;
    Download({"A", "B", "C"});
    EXPECT_EQ(screens.calls, (Texts{"show Historical price update... 1 to 3", "move 1", "move 2",
                                    "move 3", "unload progress", "refresh list"}));
    EXPECT_FALSE(state.HistoricalRetryNeeded);
}

TEST_F(HistoricalRun, AnAccountWithOneSecurityHasABarFromOneToTwo)
{
    Download({"A"});
    EXPECT_EQ(screens.calls, (Texts{"show Historical price update... 1 to 2", "move 1",
                                    "unload progress", "refresh list"}));
}

TEST_F(HistoricalRun, StopsBetweenTwoSymbolsAndLeavesTheScreensToTheUnload)
{
    market.OnRequest = [&](const HistoricalRequest &request) {
        StopRequested = request.symbol.startsWith("B");
    };
    state.HistoricalRetryNeeded = true;
    Download({"A", "B", "C"});
    EXPECT_EQ(market.Requests().size(), 2u);
    EXPECT_EQ(screens.calls, (Texts{"show Historical price update... 1 to 3", "move 1", "move 2"}));
    EXPECT_TRUE(state.HistoricalRetryNeeded);
}

TEST_F(HistoricalRun, StopsInTheMiddleOfAPageAndKeepsTheRowsBefore)
{
    market.Trade("ACME", LongAgo, Today());
    QTimer events;
    int count = 0;
    QObject::connect(&events, &QTimer::timeout, [&] { StopRequested = ++count >= 12; });
    events.start(0);
    Download({"ACME"});
    EXPECT_GT(RowCount("ACME"), 0);
    EXPECT_LT(RowCount("ACME"), 45);
    EXPECT_EQ(market.Requests().size(), 1u);
}

TEST_F(HistoricalRun, StopsWithoutAnErrorWhenTheDatabasesWereClosedMeanwhile)
{
    market.Trade("ACME", LongAgo, Today());
    market.OnRequest = [&](const HistoricalRequest &) {
        StopRequested = true;
        gConnHistPrices.Close();
    };
    EXPECT_NO_THROW(Download({"ACME"}));
}

TEST_F(HistoricalRun, WritesAPageInOnePiece)
{
    market.Trade("ACME", LongAgo, Today());
    int seen = -1;
    Connection elsewhere;
    elsewhere.Open(PricePath());
    QTimer events; // looks at the file while the page is walked
    QObject::connect(&events, &QTimer::timeout, [&] {
        Statement statement = elsewhere.Prepare("SELECT count(*) FROM HistoricalPrices");
        statement.Step();
        const int rows = int(statement.Int64(0));
        EXPECT_TRUE(rows == 0 || rows == 45) << rows;
        seen = rows;
    });
    events.start(0);
    Download({"ACME"});
    EXPECT_GE(seen, 0);
}

TEST_F(HistoricalRun, AThousandSymbolsThatAreUpToDateTakeTenTimesTheRequestsOfAHundred)
{
    // Days differ from symbol to symbol, as with purchases of many years; so no look repeats.
    const auto requests = [&](const QStringList &symbols) {
        for (int index = 0; index < symbols.size(); ++index) {
            Stored(symbols[index], QDate(2025, 12, 30));
            Stored(symbols[index], QDate(2026, 2, 26 + index % 2));
        }
        Download(symbols);
        return market.Requests().size();
    };
    gConnHistPrices.BeginTrans();
    EXPECT_EQ(requests(ManySymbols(100)), 100u);
    EXPECT_EQ(requests(ManySymbols(1000)), 1000u);
    gConnHistPrices.CommitTrans();
}

TEST_F(HistoricalRun, EverySymbolGetsItsNewestDayThoughAllHaveTheSameDays)
{
    const QStringList symbols = ManySymbols(40);
    for (const QString &symbol : symbols) {
        Stored(symbol, QDate(2025, 12, 30));
        Stored(symbol, QDate(2026, 2, 27));
        market.Trade(symbol, LongAgo, Today());
    }
    Download(symbols);
    EXPECT_EQ(market.Requests().size(), 40u);
    for (const QString &symbol : symbols)
        EXPECT_EQ(Newest(symbol), "2026-03-02") << symbol.toStdString();
}

// --- days that were not asked for ------------------------------------------------------------------

TEST_F(HistoricalRun, DaysToComeAndDaysOutsideTheRangeAreLeftOut)
{
    market.Answer = [](const HistoricalRequest &) {
        return TablePage()
            .Day(QDate(2027, 1, 4), 50)   // next year
            .Day(QDate(2026, 3, 3), 51)   // tomorrow
            .Day(QDate(2026, 3, 2), 52)   // today
            .Day(QDate(2025, 12, 30), 53) // the first day asked for
            .Day(QDate(2025, 12, 29), 54)
            .Day(QDate(1997, 5, 5), 55)
            .Text();
    };
    Download({"ACME"});
    EXPECT_EQ(RowCount("ACME"), 2);
    EXPECT_EQ(Oldest("ACME"), "2025-12-30");
    EXPECT_EQ(Newest("ACME"), "2026-03-02");
}

TEST_F(HistoricalRun, ADayToComeThatIsStoredAlreadyBlocksNoNewerDays)
{
    Stored("ACME", QDate(2025, 12, 30));
    Stored("ACME", QDate(2026, 2, 26));
    Stored("ACME", QDate(2027, 1, 4));
    market.Trade("ACME", LongAgo, Today());
    Download({"ACME"});
    EXPECT_EQ(market.Requests(), Texts{"ACME      |2026-02-26|2026-03-02"});
    EXPECT_EQ(RowCount("ACME"), 5); // 27 February and 2 March came
}

// --- over the network ----------------------------------------------------------------------------

TEST_F(HistoricalRun, ATimeOutIsShownAndTriedAgainInTheNextCycle)
{
    LoopbackServer server;
    server.On("/d", {LoopbackServer::Page(TablePage().Day(QDate(2025, 12, 30), 50).Text().toUtf8()),
                     LoopbackServer::Page::NeverAnswers()});
    source = MakeHistoricalSource(server.Origin(), QStringLiteral("table"));
    inet.AccessType = Inet::Direct;
    inet.RequestTimeout = std::chrono::milliseconds(300);
    Download({"ACME", "ZETA"});
    EXPECT_EQ(machine.dialogs.Boxes(),
              Texts{"Internet Transfer Editor|64|"
                    "A time out has occured. The cause is usually a slow response from \n"
                    "the server. The application will automatically retry this operation again \n"
                    "in the next price update cycle."});
    EXPECT_TRUE(state.HistoricalRetryNeeded);
    EXPECT_EQ(screens.calls.back(), "unload progress");
    EXPECT_EQ(RowCount("ACME"), 1);
    EXPECT_EQ(server.Requests("/d"), 2);
}

TEST_F(HistoricalRun, AServiceThatCannotBeReachedIsShownOnceAndRestsForTheDay)
{
    source = MakeHistoricalSource(LoopbackServer::RefusedOrigin(), QStringLiteral("table"));
    inet.AccessType = Inet::Direct;
    state.HistoricalRetryNeeded = true;
    Download({"A", "B", "C", "D"});
    EXPECT_EQ(machine.dialogs.Boxes(),
              Texts{"Internet Transfer Editor|48|"
                    "The daily prices could not be loaded: the service cannot be reached.\n"
                    "12029: Connection refused\n\nThe next download of daily prices is tomorrow. "
                    "Current prices are updated as usual."});
    EXPECT_EQ(account.HistoryRestsOn, Today());
    EXPECT_FALSE(state.HistoricalRetryNeeded);
    EXPECT_EQ(screens.calls, (Texts{"show Historical price update... 1 to 4", "move 1",
                                    "unload progress", "refresh list"}));
}

TEST_F(HistoricalRun, AConnectionThatBreaksOffCostsOneSymbolAlone)
{
    LoopbackServer server;
    const QByteArray page = TablePage().Day(QDate(2026, 3, 2), 50).Text().toUtf8();
    server.On("/d", {LoopbackServer::Page(page).ResetAfter(40), LoopbackServer::Page(page)});
    source = MakeHistoricalSource(server.Origin(), QStringLiteral("table"));
    inet.AccessType = Inet::Direct;
    settings.HistPriceMonths = 0;
    Download({"A", "B"});
    EXPECT_EQ(RowCount("A"), 0);
    EXPECT_EQ(RowCount("B"), 1);
    EXPECT_EQ(machine.dialogs.Boxes(), Texts());
    EXPECT_EQ(account.HistoryRestsOn, NoDate());
}

TEST_F(HistoricalRun, AServiceThatAsksToBeLeftAloneIsAskedNoMore)
{
    LoopbackServer server;
    server.On("/d", LoopbackServer::Page("Slow down").Status(429).Header("Retry-After", "600"));
    source = MakeHistoricalSource(server.Origin(), QStringLiteral("table"));
    inet.AccessType = Inet::Direct;
    Download({"A", "B", "C"});
    EXPECT_EQ(server.Requests("/d"), 1);
    EXPECT_EQ(machine.dialogs.Boxes(), Texts());
    EXPECT_TRUE(state.HistoricalRetryNeeded);
    EXPECT_EQ(screens.calls.back(), "refresh list");
}

TEST_F(HistoricalRun, ATablePageThatWasCutShortGivesNoDays)
{
    LoopbackServer server;
    const QByteArray page =
        TablePage().Header().Day(QDate(2026, 3, 2), 50).Day(QDate(2026, 2, 27), 61).Text().toUtf8();
    const qsizetype cuts[] = {page.indexOf("61.00") + 1, page.indexOf("27-Feb"),
                              page.indexOf("</table>")};
    source = MakeHistoricalSource(server.Origin(), QStringLiteral("table"));
    inet.AccessType = Inet::Direct;
    for (const qsizetype cut : cuts) {
        server.On("/d", LoopbackServer::Page(page).WithoutLength().CloseAfter(int(cut)));
        Download({"ACME"});
        EXPECT_EQ(RowCount("ACME"), 0) << page.left(cut).constData();
    }
    server.On("/d", LoopbackServer::Page(page).WithoutLength());
    Download({"ACME"});
    EXPECT_EQ(RowCount("ACME"), 2);
}

TEST_F(HistoricalRun, ASiteIsAskedForItsTableWithTheBlanksOfTheSymbol)
{
    LoopbackServer server;
    server.On("/d", LoopbackServer::Page(TablePage().Day(QDate(2026, 3, 2), 50).Text().toUtf8()));
    source = MakeHistoricalSource(server.Origin(), QStringLiteral("table"));
    inet.AccessType = Inet::Direct;
    Download({QString::fromUtf8("O'N&Ä")});
    const LoopbackServer::Request &request = server.Requests().constFirst();
    EXPECT_EQ(request.Query("s"), QString::fromUtf8("O'N&Ä     "));
    EXPECT_TRUE(request.target.startsWith("/d?a=11&b=30&c=2025&d=2&e=2&f=2026&g=d&s=O"))
        << request.target.constData();
    EXPECT_EQ(RowCount(QString::fromUtf8("O'N&Ä")), 1);
}

TEST_F(HistoricalRun, AChartServiceIsAskedItsOwnWayAndTheWalkStoresItsDays)
{
    machine.clock.Set(QDateTime(QDate(2026, 11, 20), QTime(18, 0)));
    QFile sample(
        QStringLiteral(QUILLON_PROJECT "/tests/marketdata/replies/hist_yahoo_chart_v8.txt"));
    ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
    LoopbackServer server;
    server.On("/v8/finance/chart/%5EQX", LoopbackServer::Page(sample.readAll()));
    source = MakeHistoricalSource(server.Origin(), QStringLiteral("chart-v8"));
    inet.AccessType = Inet::Direct;
    Download({"^QX"});
    const LoopbackServer::Request &request = server.Requests().constFirst();
    EXPECT_EQ(request.Query("period1"), "1789603200"); // 17 September 2026, 0:00 UTC
    EXPECT_EQ(request.Query("period2"), "1795219200"); // 21 November
    EXPECT_EQ(request.Query("interval"), "1d");
    EXPECT_EQ(request.Query("events"), "div,splits");
    EXPECT_EQ(RowCount("^QX"), 3);
    EXPECT_EQ(Value("SELECT group_concat(PriceDate || ' ' || PriceOpen || ' ' || DayHigh || ' ' || "
                    "DayLow || ' ' || PriceClose || ' ' || Volume || ' ' || AdjClose, ', ') FROM "
                    "(SELECT * FROM HistoricalPrices ORDER BY PriceDate) WHERE Symbol = ?",
                    "^QX"),
              "2026-11-17 2095000 2113000 2088400 2106000 16200310 2103413, "
              "2026-11-18 2107500 2120200 2101100 2119200 15011207 2119200, "
              "2026-11-20 2132000 2160400 2127000 2143700 18734022 2143700");
}

TEST_F(HistoricalRun, AnErrorReplyOfTheServiceGivesNoRows)
{
    LoopbackServer server;
    server.On(
        "/v8/finance/chart/NONE",
        LoopbackServer::Page("{\"chart\":{\"result\":null,\"error\":{\"code\":\"Not Found\"}}}")
            .Status(404));
    source = MakeHistoricalSource(server.Origin(), QStringLiteral("chart-v8"));
    inet.AccessType = Inet::Direct;
    Download({"NONE"});
    EXPECT_EQ(server.Requests("/v8/finance/chart/NONE"), 1);
    EXPECT_EQ(RowCount("NONE"), 0);
    EXPECT_EQ(machine.dialogs.Boxes(), Texts());
}

TEST_F(HistoricalRun, WithoutAServiceNothingIsAsked)
{
    for (const auto &[host, format] : {std::pair("", "chart-v8"), std::pair("", "table"),
                                       std::pair("http://127.0.0.1:9", "unheard of")}) {
        source = MakeHistoricalSource(host, format);
        Download({"ACME"});
    }
    EXPECT_EQ(RowCount("ACME"), 0);
    EXPECT_EQ(machine.dialogs.Boxes(), Texts());
}
