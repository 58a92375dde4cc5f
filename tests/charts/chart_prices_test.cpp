/// Historical prices: the choice of the interval, which closes become points, and the scale.

#include "chart_series_run.h"

#include "charts/chart_dates.h"

namespace
{

using enum ChartKind;

class PriceChart : public ChartSeriesRun
{
protected:
    /// A close on every weekday, 100 on the first one and a cent more on each.
    void EveryWeekday(const char *from, const char *to)
    {
        int count = 0;
        for (QDate day = Day(from); day <= Day(to); day = day.addDays(1))
            if (day.dayOfWeek() <= 5)
                Close("ACME", day, Currency::FromUnits(1000000 + 100 * count++));
    }
    QString Prices(const char *from, const char *to)
    {
        return Points(HistoricalPrices, from, to, "ACME");
    }
    /// The scale as "9.7 to 20.6"; "automatic".
    QString Scale()
    {
        return grid->Scale
                   ? QStringLiteral("%1 to %2").arg(grid->Scale->Minimum).arg(grid->Scale->Maximum)
                   : QStringLiteral("automatic");
    }
};

} // namespace

// --- the interval -------------------------------------------------------------------------------

TEST_F(PriceChart, ChoosesTheIntervalByTheMonthsThatBeginInTheRange)
{
    const struct
    {
        const char *from, *to;
        ChartInterval chosen;
    } cases[] = {
        {"2025-01-01", "2025-01-31", ChartInterval::Daily},   // none begins
        {"2025-01-31", "2025-02-01", ChartInterval::Daily},   // one
        {"2025-01-31", "2025-03-01", ChartInterval::Weekly},  // two
        {"2025-01-15", "2025-06-14", ChartInterval::Weekly},  // five
        {"2025-01-15", "2025-07-15", ChartInterval::Daily},   // exactly six
        {"2025-01-01", "2025-07-31", ChartInterval::Daily},   // six
        {"2025-01-31", "2025-08-01", ChartInterval::Monthly}, // seven
        {"1900-01-01", "2026-03-02", ChartInterval::Monthly},
    };
    Close("ACME", "2025-01-31", "10");
    for (const auto &range : cases) {
        interval = ChartInterval::None;
        Reload(HistoricalPrices, range.from, range.to, "ACME");
        EXPECT_EQ(interval, range.chosen) << range.from << " to " << range.to;
    }
}

TEST_F(PriceChart, KeepsTheIntervalThatWasChosenBefore)
{
    Close("ACME", "2025-01-31", "10");
    Reload(HistoricalPrices, "2025-01-01", "2025-01-31", "ACME");
    Reload(HistoricalPrices, "2025-01-01", "2025-12-31", "ACME");
    EXPECT_EQ(interval, ChartInterval::Daily);
}

TEST_F(PriceChart, ChoosesTheIntervalEvenWhenNothingIsFound)
{
    EXPECT_EQ(Prices("2025-01-01", "2025-12-31"), "(stays)");
    EXPECT_EQ(interval, ChartInterval::Monthly);
}

// --- the points ---------------------------------------------------------------------------------

TEST_F(PriceChart, DrawsEveryCloseDaily)
{
    Close("ACME", "2026-02-26", "10");
    Close("ACME", "2026-02-27", "10.125");
    Close("ACME", "2026-03-02", "9.0001");
    Close("ZETA", "2026-03-02", "500");
    EXPECT_EQ(Prices("2026-02-26", "2026-03-02"),
              "Feb-26-26 10, Feb-27-26 10.125, Mar-02-26 9.0001");
    EXPECT_EQ(grid->ColumnLabel(1), "Historical Price for ACME");
    EXPECT_EQ(grid->LegendFont, (ChartFont{"Arial", 9, true}));
    EXPECT_EQ(grid->AxisFonts[0], (ChartFont{"Ariel", 10, false}));
}

TEST_F(PriceChart, DrawsOnePointForASingleDay)
{
    Close("ACME", "2026-03-02", "10");
    EXPECT_EQ(Prices("2026-03-02", "2026-03-02"), "Mar-02-26 10");
}

TEST_F(PriceChart, LeavesThePictureWhenNothingIsFound)
{
    Close("ACME", "2026-03-02", "10");
    EXPECT_EQ(Prices("2026-01-01", "2026-03-01"), "(stays)");
    EXPECT_EQ(machine.dialogs.TakeBoxes(), std::vector<std::string>{noDataBox});
    EXPECT_TRUE(series.NoDataFound());
    EXPECT_EQ(Prices("2026-01-01", "2026-03-02"), "Mar-02-26 10");
    EXPECT_FALSE(series.NoDataFound());
}

TEST_F(PriceChart, TakesAPointAWeekAndEndsInTheLastClose)
{
    // Mondays: Mar 2, 9, 16, 23. From Mon 2 to Wed 25 three Sundays: four points, the last of which
    // is the last close.
    EveryWeekday("2026-03-02", "2026-03-25");
    interval = ChartInterval::Weekly;
    EXPECT_EQ(Prices("2026-03-01", "2026-03-31"),
              "Mar-02-26 100, Mar-09-26 100.05, Mar-16-26 100.1, Mar-25-26 100.17");
}

TEST_F(PriceChart, GoesOnFromTheDayTakenAfterAHoliday)
{
    // Monday the 9th is a holiday: Tuesday the 10th is taken, and then the 17th, not the 16th.
    EveryWeekday("2026-03-02", "2026-03-31");
    gConnHistPrices.Execute("DELETE FROM HistoricalPrices WHERE PriceDate = '2026-03-09'");
    interval = ChartInterval::Weekly;
    EXPECT_EQ(Prices("2026-03-01", "2026-03-31"),
              "Mar-02-26 100, Mar-10-26 100.06, Mar-17-26 100.11, Mar-24-26 100.16, "
              "Mar-31-26 100.21");
}

TEST_F(PriceChart, TakesAPointAMonthFromTheDayTaken)
{
    // Jan 5 + 1 month = Feb 5; + 1 month = Mar 5; five months, the last point is the last close.
    EveryWeekday("2026-01-05", "2026-05-20");
    interval = ChartInterval::Monthly;
    Prices("2026-01-01", "2026-05-31");
    QStringList days;
    for (int row = 1; row <= grid->RowCount(); ++row)
        days << grid->RowLabel(row);
    EXPECT_EQ(days, QStringList({"Jan-05-26", "Feb-05-26", "Mar-05-26", "Apr-06-26", "May-20-26"}));
}

TEST_F(PriceChart, CountsAMonthFromTheLastOfAMonthToTheLastOfAShorterOne)
{
    Close("ACME", "2024-01-31", "1");
    Close("ACME", "2024-02-28", "2");
    Close("ACME", "2024-02-29", "3"); // Jan 31 + 1 month in a leap year
    Close("ACME", "2024-03-29", "4"); // Feb 29 + 1 month
    Close("ACME", "2024-04-30", "5");
    interval = ChartInterval::Monthly;
    EXPECT_EQ(Prices("2024-01-01", "2024-04-30"),
              "Jan-31-24 1, Feb-29-24 3, Mar-29-24 4, Apr-30-24 5");
    Close("ACME", "2025-01-31", "6");
    Close("ACME", "2025-02-27", "7");
    Close("ACME", "2025-02-28", "8"); // Jan 31 + 1 month in another year
    Close("ACME", "2025-03-03", "9");
    EXPECT_EQ(Prices("2025-01-01", "2025-03-31"), "Jan-31-25 6, Feb-28-25 8, Mar-03-25 9");
}

TEST_F(PriceChart, LeavesRowsWithoutAValueWhenThePicksFallBehind)
{
    // Fri 6, Mon 16 (ten days on), Mon 23, Sun 29 would be a new week: four Sundays, five rows.
    Close("ACME", "2026-03-06", "1");
    Close("ACME", "2026-03-16", "2");
    Close("ACME", "2026-03-27", "3");
    Close("ACME", "2026-03-29", "4");
    interval = ChartInterval::Weekly;
    EXPECT_EQ(Prices("2026-03-01", "2026-03-31"),
              "Mar-06-26 1, Mar-16-26 2, Mar-27-26 3, ? none, ? none");
}

TEST_F(PriceChart, DrawsOnlyTheFirstCloseOfARangeWithinOneWeekOrMonth)
{
    EveryWeekday("2026-03-02", "2026-03-06");
    interval = ChartInterval::Weekly;
    EXPECT_EQ(Prices("2026-03-01", "2026-03-31"), "Mar-02-26 100");
    interval = ChartInterval::Monthly;
    EXPECT_EQ(Prices("2026-03-01", "2026-03-31"), "Mar-02-26 100");
}

TEST_F(PriceChart, EndsInTheLastCloseWhenTheRangeTouchesTwoWeeks)
{
    Close("ACME", "2026-03-06", "1");
    Close("ACME", "2026-03-09", "2");
    Close("ACME", "2026-03-10", "3");
    interval = ChartInterval::Weekly;
    EXPECT_EQ(Prices("2026-03-01", "2026-03-31"), "Mar-06-26 1, Mar-10-26 3");
}

TEST_F(PriceChart, LeavesAGapForADayWithoutAClose)
{
    Close("ACME", "2026-02-26", "10");
    Close("ACME", "2026-02-27", "0");
    Close("ACME", "2026-03-02", "12");
    gConnHistPrices.Execute(
        "UPDATE HistoricalPrices SET PriceClose = NULL WHERE PriceDate = '2026-02-27'");
    EXPECT_EQ(Prices("2026-02-26", "2026-03-02"), "Feb-26-26 10, Feb-27-26 none, Mar-02-26 12");
    EXPECT_EQ(Scale(), "9.7 to 12.36");
    gConnHistPrices.Execute("UPDATE HistoricalPrices SET PriceClose = NULL");
    EXPECT_EQ(Prices("2026-02-26", "2026-03-02"), "Feb-26-26 none, Feb-27-26 none, Mar-02-26 none");
    EXPECT_EQ(Scale(), "automatic");
}

TEST_F(PriceChart, LeavesOutDaysThatNoCalendarHas)
{
    Close("ACME", "2026-02-27", "10");
    Close("ACME", "2026-02-28", "11");
    gConnHistPrices.Execute("UPDATE HistoricalPrices SET PriceDate = '2026-02-30' "
                            "WHERE PriceDate = '2026-02-28'");
    for (const ChartInterval each : {ChartInterval::Daily, ChartInterval::Monthly}) {
        interval = each;
        EXPECT_EQ(Prices("2026-01-01", "2026-03-31"), "Feb-27-26 10");
    }
}

TEST_F(PriceChart, HoldsTenThousandCloses)
{
    gConnHistPrices.BeginTrans();
    const QDate first = Day("1990-01-01");
    for (int day = 0; day < 10000; ++day)
        Close("ACME", first.addDays(day), Currency::FromUnits(10000 + day));
    gConnHistPrices.CommitTrans();
    interval = ChartInterval::Daily;
    Prices("1900-01-01", "2026-03-02");
    ASSERT_EQ(grid->RowCount(), 10000);
    EXPECT_EQ(grid->Data(10000, 1), "1.9999");
    interval = ChartInterval::Weekly;
    Prices("1900-01-01", "2026-03-02");
    EXPECT_EQ(grid->RowCount(), 1429); // 9,999 days from a Monday: 1,428 Sundays
    EXPECT_EQ(grid->Data(1429, 1), "1.9999");
}

TEST_F(PriceChart, TakesSymbolsWithApostrophes)
{
    Close("O'NEIL", "2026-03-02", "10");
    EXPECT_EQ(Points(HistoricalPrices, "2026-03-02", "2026-03-02", "O'NEIL"), "Mar-02-26 10");
}

TEST_F(PriceChart, StaysAsItIsWhenTheStoreFails)
{
    gConnHistPrices.Execute("DROP TABLE HistoricalPrices");
    EXPECT_EQ(Prices("2026-03-02", "2026-03-02"), "(stays)");
    EXPECT_TRUE(machine.dialogs.TakeBoxes().empty());
    EXPECT_TRUE(series.Symbols(HistoricalPrices).isEmpty());
}

// --- the scale ----------------------------------------------------------------------------------

TEST_F(PriceChart, ScalesThreePercentBelowTheLowestAndAboveTheHighestClose)
{
    Close("ACME", "2026-02-26", "10.05");
    Close("ACME", "2026-02-27", "8.3333");
    Close("ACME", "2026-03-02", "20");
    Prices("2026-02-26", "2026-03-02");
    EXPECT_EQ(Scale(), "8.0833 to 20.6"); // 8.3333 - 0.2500 (0.249999 as money), 20 + 0.6
}

TEST_F(PriceChart, ScalesOverEveryCloseAndNotJustThePointsTaken)
{
    EveryWeekday("2026-03-02", "2026-03-25");
    gConnHistPrices.Execute(
        "UPDATE HistoricalPrices SET PriceClose = 500000 WHERE PriceDate = '2026-03-04'");
    gConnHistPrices.Execute(
        "UPDATE HistoricalPrices SET PriceClose = 2000000 WHERE PriceDate = '2026-03-24'");
    interval = ChartInterval::Weekly;
    Prices("2026-03-01", "2026-03-31");
    EXPECT_EQ(Scale(), "48.5 to 206"); // 50 and 200, neither of them a point
}

TEST_F(PriceChart, LeavesTheScaleToTheChartWithoutARange)
{
    Close("ACME", "2026-03-02", "0");
    Prices("2026-03-02", "2026-03-02");
    EXPECT_EQ(Scale(), "automatic");
    Close("BIG", "2026-03-02", "922337203685477.5807"); // no room for three percent more
    EXPECT_EQ(Points(HistoricalPrices, "2026-03-02", "2026-03-02", "BIG"),
              "Mar-02-26 922337203685477.5807");
    EXPECT_EQ(Scale(), "automatic");
}

// --- readout and symbols ------------------------------------------------------------------------

TEST_F(PriceChart, ReadsOutTheDateAndThePriceInHundredths)
{
    Close("ACME", "2026-03-02", "10.125");
    Prices("2026-03-02", "2026-03-02");
    EXPECT_EQ(Readout(HistoricalPrices, 1, 1), "Date: Mar-02-26 Value: 10.13");
}

TEST_F(PriceChart, OffersTheSymbolsThatHavePrices)
{
    Close("ZETA", "2026-02-27", "1");
    Close("ZETA", "2026-03-02", "1");
    Close("ACME", "2026-03-02", "1");
    Close("", "2026-03-02", "1");
    EXPECT_EQ(series.Symbols(HistoricalPrices), QStringList({"ACME", "ZETA"}));
}

TEST_F(PriceChart, OffersTheSymbolsOfTheLedgerToTheOtherKinds)
{
    Close("PRICED", "2026-03-02", "1");
    for (const char *symbol : {"ZETA", "ACME", "ZETA", " ", "", "O'NEIL"}) // a blank: cash
        gConnAccount.Execute(QStringLiteral("INSERT INTO History (Symbol) VALUES (?)"),
                             QString::fromUtf8(symbol));
    for (const ChartKind kind : {SelectedSecPL, SelectedSecPerf})
        EXPECT_EQ(series.Symbols(kind), QStringList({"ACME", "O'NEIL", "ZETA"}));
}

// --- the calendar -------------------------------------------------------------------------------

TEST(MonthsBetween, CountsTheMonthsThatBegin)
{
    EXPECT_EQ(MonthsBetween(QDate(2026, 1, 31), QDate(2026, 2, 1)), 1);
    EXPECT_EQ(MonthsBetween(QDate(2026, 1, 1), QDate(2026, 1, 31)), 0);
    EXPECT_EQ(MonthsBetween(QDate(2025, 12, 31), QDate(2026, 1, 1)), 1);
    EXPECT_EQ(MonthsBetween(QDate(2024, 2, 29), QDate(2026, 2, 28)), 24);
    EXPECT_EQ(MonthsBetween(QDate(2026, 2, 1), QDate(2026, 1, 31)), -1);
}

TEST(WeeksBetween, CountsTheSundaysCrossedTheLastDayIncluded)
{
    const QDate friday(2026, 2, 27), sunday(2026, 3, 1);
    EXPECT_EQ(WeeksBetween(friday, friday), 0);
    EXPECT_EQ(WeeksBetween(friday, sunday.addDays(-1)), 0);
    EXPECT_EQ(WeeksBetween(friday, sunday), 1);
    EXPECT_EQ(WeeksBetween(sunday, sunday.addDays(6)), 0);
    EXPECT_EQ(WeeksBetween(sunday, sunday.addDays(7)), 1);
    EXPECT_EQ(WeeksBetween(friday, sunday.addDays(8)), 2);
    EXPECT_EQ(WeeksBetween(sunday, friday), -1);
    EXPECT_EQ(WeeksBetween(QDate(2024, 2, 25), QDate(2024, 3, 3)), 1); // over a leap day
}
