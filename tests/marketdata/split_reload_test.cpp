/// After a split the daily prices of the symbol are loaded anew; until new ones have come, the ones
/// from before stay.

#include "historical_run.h"

#include "base/runtime_error.h"

namespace
{

using Texts = std::vector<std::string>;

class SplitReload : public HistoricalRun
{
protected:
    /// Two months of days at 100, from before the split, which ACME has as well as ZETA.
    SplitReload()
    {
        WriteGuard guard(gConnHistPrices);
        for (const char *symbol : {"ACME", "ZETA"})
            for (QDate day(2025, 12, 30); day < Today(); day = day.addDays(1))
                if (day.dayOfWeek() <= 5)
                    Stored(QString::fromUtf8(symbol), day, "100");
        guard.Commit();
        for (const char *symbol : {"ACME", "ZETA"})
            market.Trade(QString::fromUtf8(symbol), QDate(2000, 1, 3), Today());
    }

    void Split(const QString &symbol) { MarkPricesToReload(gConnHistPrices, symbol); }
    /// "45 rows from 49 to 51" by their closes.
    std::string Closes(const QString &symbol)
    {
        return Value("SELECT count(*) || ' rows from ' || (min(PriceClose) / 10000) || ' to ' || "
                     "(max(PriceClose) / 10000) FROM HistoricalPrices WHERE Symbol = ?",
                     symbol);
    }
    bool IsMarked(const QString &symbol)
    {
        return PricesToReload(gConnHistPrices).contains(symbol);
    }

    const std::string kept =
        "The daily prices of ACME before its split are kept: no new ones came. "
        "The next update of daily prices tries again.";
};

} // namespace

TEST_F(SplitReload, ReplacesAllDaysOfTheSymbolAndNoOthers)
{
    ASSERT_EQ(Closes("ACME"), "44 rows from 100 to 100");
    Split("ACME");
    Download({"ACME", "ZETA"});
    EXPECT_EQ(Closes("ACME"), "45 rows from 50 to 50");
    EXPECT_EQ(Closes("ZETA"), "45 rows from 50 to 100"); // the newest two days as every day
    EXPECT_TRUE(WasPosted("Loading the daily prices of ACME anew after its split..."));
    EXPECT_TRUE(WasPosted("The daily prices of ACME were loaded anew after its split"));
    EXPECT_EQ(machine.dialogs.Boxes(), Texts()); // without a question
}

TEST_F(SplitReload, HappensOnce)
{
    Split("ACME");
    Split("ACME");
    Download({"ACME"});
    EXPECT_EQ(market.Requests().front(), "ACME      |2025-12-30|2026-03-02");
    EXPECT_FALSE(IsMarked("ACME"));
    Download({"ACME"});
    EXPECT_EQ(market.Requests(), Texts{"ACME      |2026-03-02|2026-03-02"});
}

TEST_F(SplitReload, GathersAYearInPiecesOfTwoMonths)
{
    settings.HistPriceMonths = 12;
    Stored("ACME", QDate(2025, 3, 3), "100");
    Split("ACME");
    Download({"ACME"});
    EXPECT_EQ(Closes("ACME"), "263 rows from 50 to 50");
    EXPECT_EQ(Oldest("ACME"), "2025-02-27");
}

TEST_F(SplitReload, GoesBackAsFarAsTheDaysThatAreStoredBeyondTheMonthsToKeep)
{
    Stored("ACME", QDate(2025, 3, 3), "100");
    ASSERT_EQ(settings.HistPriceMonths, 2);
    Split("ACME");
    Download({"ACME"});
    EXPECT_EQ(Closes("ACME"), "261 rows from 50 to 50");
    EXPECT_EQ(Oldest("ACME"), "2025-03-03");
}

TEST_F(SplitReload, TakesTheMonthsToKeepWhenTheServiceGoesNoFurtherBack)
{
    Stored("NEWC", QDate(2025, 3, 3), "100");
    market.Trade("NEWC", QDate(2025, 12, 1), Today());
    Split("NEWC");
    Download({"NEWC"});
    EXPECT_EQ(Oldest("NEWC"), "2025-12-01"); // nothing is left of before the split
    EXPECT_FALSE(IsMarked("NEWC"));
}

TEST_F(SplitReload, KeepsTheDaysOfBeforeWhenNothingComes)
{
    Split("ACME");
    market.Answer = [](const HistoricalRequest &) { return QString(); };
    Download({"ACME"});
    EXPECT_EQ(Closes("ACME"), "44 rows from 100 to 100");
    EXPECT_TRUE(WasPosted(kept));
    market.Answer = nullptr;
    Download({"ACME"});
    EXPECT_EQ(Closes("ACME"), "45 rows from 50 to 50");
}

TEST_F(SplitReload, KeepsTheDaysOfBeforeWhenTheServiceStopsHalfway)
{
    settings.HistPriceMonths = 12;
    Stored("ACME", QDate(2025, 3, 3), "100");
    Split("ACME");
    int request = 0;
    market.Answer = [&](const HistoricalRequest &) {
        return ++request == 1 ? TablePage().Day(QDate(2026, 2, 27), 50).Text() : QString();
    };
    Download({"ACME"});
    EXPECT_TRUE(WasPosted(kept));
    EXPECT_EQ(RowCount("ACME"), 45);
    EXPECT_EQ(Oldest("ACME"), "2025-03-03");
    EXPECT_TRUE(IsMarked("ACME"));
}

TEST_F(SplitReload, KeepsTheDaysOfBeforeWhenTheRequestTimesOut)
{
    Split("ACME");
    market.OnRequest = [](const HistoricalRequest &) {
        throw RuntimeError(Inet::TimeOutError, QStringLiteral("Request timed out"));
    };
    Download({"ACME"});
    EXPECT_EQ(Closes("ACME"), "44 rows from 100 to 100");
    EXPECT_TRUE(IsMarked("ACME"));
    EXPECT_TRUE(state.HistoricalRetryNeeded);
}

TEST_F(SplitReload, KeepsTheDaysOfBeforeWhenItIsStopped)
{
    Split("ACME");
    market.OnRequest = [&](const HistoricalRequest &) { StopRequested = true; };
    Download({"ACME"});
    EXPECT_EQ(Closes("ACME"), "44 rows from 100 to 100");
    EXPECT_TRUE(IsMarked("ACME"));
}

TEST_F(SplitReload, KeepsTheDaysOfBeforeWhenAWriteIsRefused)
{
    Split("ACME");
    gConnHistPrices.ExecuteScript(
        "CREATE TRIGGER Full BEFORE INSERT ON HistoricalPrices WHEN NEW.PriceDate = '2026-01-15' "
        "BEGIN SELECT RAISE(ABORT, 'the disk is full'); END");
    EXPECT_THROW(Download({"ACME"}), RuntimeError);
    EXPECT_EQ(Closes("ACME"), "44 rows from 100 to 100");
    EXPECT_TRUE(IsMarked("ACME"));
}

TEST_F(SplitReload, EndsWithAServiceThatGivesTheSameRowsWhateverIsAsked)
{
    settings.HistPriceMonths = 240;
    Split("ACME");
    market.Answer = [](const HistoricalRequest &) {
        return TablePage().Day(QDate(2026, 2, 27), 50).Text();
    };
    Download({"ACME"});
    EXPECT_LE(market.Requests().size(), 30u);
    EXPECT_EQ(RowCount("ACME"), 44);
}

TEST_F(SplitReload, OfASymbolWithoutDaysIsAFirstDownload)
{
    gConnHistPrices.Execute("DELETE FROM HistoricalPrices");
    Split("ACME");
    Download({"ACME"});
    EXPECT_EQ(Closes("ACME"), "45 rows from 50 to 50");
    EXPECT_FALSE(IsMarked("ACME"));
}

TEST_F(SplitReload, IsRememberedByThePriceFile)
{
    Split("ACME");
    gConnHistPrices.Close();
    gConnHistPrices.Open(PricePath());
    EXPECT_TRUE(IsMarked("ACME"));
}

TEST_F(SplitReload, WorksOnAPriceFileThatHasNoPlaceForItYet)
{
    Download({"ACME"});
    EXPECT_FALSE(IsMarked("ACME"));
    Split("ACME");
    EXPECT_TRUE(IsMarked("ACME"));
}

TEST_F(SplitReload, KnowsALongSymbolAsTheDownloadDoes)
{
    Split("ABCDEFGHIJKLM");
    EXPECT_TRUE(IsMarked("ABCDEFGHIJ"));
    Split("O'NEIL ");
    EXPECT_TRUE(IsMarked("O'NEIL"));
}
