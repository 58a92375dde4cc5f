#include "historical_run.h"

#include "marketdata/historical_ranges.h"

namespace
{

class HistoricalRangesTest : public HistoricalRun
{
protected:
    /// "2025-12-30..2026-03-02", with " and more" behind it; "none" when nothing is to be asked.
    std::string Older(const QString &symbol, int months)
    {
        const bool needed = GetOlderPriceRange(ranges, gConnHistPrices, symbol, Today(), months);
        return needed ? Range(ranges.MoreOlderRows) : "none";
    }
    std::string Newer(const QString &symbol)
    {
        const bool needed = GetNewerPriceRange(ranges, gConnHistPrices, symbol, Today(), latest);
        return needed ? Range(ranges.MoreNewerRows) : "none";
    }
    std::string Range(bool more) const
    {
        return (ranges.RangeStart.toString(Qt::ISODate) + QStringLiteral("..") +
                ranges.RangeEnd.toString(Qt::ISODate))
                   .toStdString() +
               (more ? " and more" : "");
    }

    HistoricalRanges ranges;
    QDate latest = NoDate();
};

} // namespace

TEST_F(HistoricalRangesTest, AskForAllMonthsOfANewSymbolWhenTheyAreTwo)
{
    EXPECT_EQ(Older("ACME", 2), "2025-12-30..2026-03-02"); // two months and three days
    EXPECT_EQ(Newer("ACME"), "none");
}

TEST_F(HistoricalRangesTest, AskForNoMonthsWithTheirThreeDays)
{
    EXPECT_EQ(Older("ACME", 0), "2026-02-27..2026-03-02");
    Stored("ACME", QDate(2026, 3, 2));
    EXPECT_EQ(Older("ACME", 0), "none");
}

TEST_F(HistoricalRangesTest, AskForTwoMonthsAtATimeWhenMoreAreWanted)
{
    EXPECT_EQ(Older("ACME", 12), "2025-12-30..2026-03-02 and more");
    Stored("ACME", QDate(2025, 12, 30));
    EXPECT_EQ(Older("ACME", 12), "2025-10-27..2025-12-30 and more");
    Stored("ACME", QDate(2025, 5, 2));
    EXPECT_EQ(Older("ACME", 12), "2025-02-27..2025-05-02"); // two ends of months: the last piece
    Stored("ACME", QDate(2025, 3, 2));
    EXPECT_EQ(Older("ACME", 12), "none");
}

TEST_F(HistoricalRangesTest, CountTheEndsOfMonthsBetweenTwoDates)
{
    // From 2 March 2025 to 31 May are nearly three months, and two ends of months.
    Stored("ACME", QDate(2025, 5, 31));
    EXPECT_EQ(Older("ACME", 12), "2025-02-27..2025-05-31");
    Stored("ZETA", QDate(2025, 6, 1));
    EXPECT_EQ(Older("ZETA", 12), "2025-03-29..2025-06-01 and more");
}

TEST_F(HistoricalRangesTest, GiveUpAtTheThirdLookThatFindsTheSameOldestDay)
{
    Stored("ACME", QDate(2026, 2, 2));
    EXPECT_EQ(Older("ACME", 12), "2025-11-29..2026-02-02 and more");
    EXPECT_EQ(Older("ACME", 12), "2025-11-29..2026-02-02 and more");
    EXPECT_EQ(Older("ACME", 12), "2025-11-29..2026-02-02 and more");
    EXPECT_EQ(Older("ACME", 12), "none");
    EXPECT_FALSE(ranges.MoreOlderRows);
    EXPECT_EQ(ranges.LastMinDate, NoDate());
    EXPECT_EQ(ranges.MinRepeatCount.Value(), 0);
    EXPECT_EQ(Older("ACME", 12), "2025-11-29..2026-02-02 and more"); // and count anew
}

TEST_F(HistoricalRangesTest, AskForTheNewestDayAgain)
{
    Stored("ACME", QDate(2026, 2, 27));
    EXPECT_EQ(Newer("ACME"), "2026-02-27..2026-03-02");
    Stored("ACME", QDate(2026, 3, 2));
    EXPECT_EQ(Newer("ACME"), "2026-03-02..2026-03-02");
    EXPECT_EQ(latest, QDate(2026, 3, 2));
}

TEST_F(HistoricalRangesTest, CatchUpTwoMonthsAtATime)
{
    Stored("ACME", QDate(2025, 8, 31));
    EXPECT_EQ(Newer("ACME"), "2025-08-31..2025-10-31 and more");
    Stored("ACME", QDate(2025, 12, 31));
    EXPECT_EQ(Newer("ACME"), "2025-12-31..2026-02-28 and more");
    Stored("ACME", QDate(2026, 1, 2));
    EXPECT_EQ(Newer("ACME"), "2026-01-02..2026-03-02");
}

TEST_F(HistoricalRangesTest, GiveUpAtTheThirdLookThatFindsTheSameNewestDay)
{
    Stored("ACME", QDate(2025, 8, 29));
    for (int look = 1; look <= 3; ++look)
        EXPECT_EQ(Newer("ACME"), "2025-08-29..2025-10-29 and more");
    EXPECT_EQ(Newer("ACME"), "none");
    EXPECT_FALSE(ranges.MoreNewerRows);
    EXPECT_EQ(ranges.RangeEnd, QDate(2025, 8, 29));
    EXPECT_EQ(ranges.LastMaxDate, NoDate());
}

TEST_F(HistoricalRangesTest, CountLooksFromOneSymbolToTheNext)
{
    for (const char *symbol : {"A", "B", "C", "D", "E"})
        Stored(QString::fromUtf8(symbol), QDate(2026, 2, 27));
    for (const char *symbol : {"A", "B", "C"})
        EXPECT_EQ(Newer(QString::fromUtf8(symbol)), "2026-02-27..2026-03-02") << symbol;
    EXPECT_EQ(Newer("D"), "none");
    EXPECT_EQ(Newer("E"), "2026-02-27..2026-03-02");
}

TEST_F(HistoricalRangesTest, TakeNoRowsDatedInTheFutureAsTheNewest)
{
    Stored("ACME", QDate(2026, 3, 2));
    Stored("ACME", QDate(2026, 12, 31));
    EXPECT_EQ(Newer("ACME"), "2026-03-02..2026-03-02");
    EXPECT_EQ(latest, QDate(2026, 3, 2));
    latest = QDate(2027, 1, 1);
    EXPECT_EQ(Newer("ACME"), "2026-03-02..2026-03-02");
    EXPECT_EQ(latest, QDate(2027, 1, 1));
    // With nothing but such rows the range ends at them.
    Stored("ZETA", QDate(2026, 4, 1));
    EXPECT_EQ(Older("ZETA", 2), "2026-01-29..2026-04-01 and more");
}

TEST_F(HistoricalRangesTest, GoBackFromALeapDayToTheEndOfFebruary)
{
    machine.clock.Set(QDateTime(QDate(2028, 2, 29), QTime(9, 0)));
    EXPECT_EQ(Older("ACME", 2), "2027-12-26..2028-02-29");
    Stored("ACME", QDate(2027, 2, 28)); // twelve months before 29 February
    EXPECT_EQ(Older("ACME", 12), "none");
    machine.clock.Set(QDateTime(QDate(2026, 4, 30), QTime(9, 0)));
    EXPECT_EQ(Older("ZETA", 2), "2026-02-25..2026-04-30"); // 28 February less three days
}

TEST_F(HistoricalRangesTest, KnowASymbolWithApostropheAndAccents)
{
    Stored("O'NEIL", QDate(2026, 2, 27));
    Stored(QString::fromUtf8("ÄÖ"), QDate(2026, 2, 26));
    EXPECT_EQ(Newer("O'NEIL"), "2026-02-27..2026-03-02");
    EXPECT_EQ(Newer(QString::fromUtf8("ÄÖ")), "2026-02-26..2026-03-02");
}
