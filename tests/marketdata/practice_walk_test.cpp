#include "marketdata/practice_walk.h"

#include "base/formats.h"
#include "base/runtime_error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace
{

const QDate Friday(2026, 11, 20);

const QStringList &Symbols()
{
    static const QStringList symbols = {"ARLN", "BRWK", "Q",      "GRNVX",   "TARN45",
                                        ".PRX", "CPRQ", "ZZ.TOP", "ARLNC90", "O'NEIL"};
    return symbols;
}

/// The weekdays of twelve years, over leap days and the ends of years and months.
template <class Visit>
void ForEachDay(Visit visit)
{
    for (QDate day(2020, 1, 1); day < QDate(2032, 1, 1); day = day.addDays(1))
        if (day.dayOfWeek() <= 5)
            visit(day);
}

double CloseOf(const QString &symbol, QDate day)
{
    return PracticePricesOf(symbol, day).value().Close.ToDouble();
}

/// Of the close, from one weekday to the next, over the twelve years.
struct Moves
{
    double average = 0;
    double largest = 0;
};
Moves MovesOf(const QString &symbol)
{
    Moves moves;
    double before = 0;
    int count = 0;
    ForEachDay([&](QDate day) {
        const double close = CloseOf(symbol, day);
        if (before > 0) {
            const double move = std::fabs(close / before - 1);
            moves.average += move;
            moves.largest = std::max(moves.largest, move);
            ++count;
        }
        before = close;
    });
    moves.average /= count;
    return moves;
}

Currency PriceAt(const QString &symbol, QDate day, QTime time)
{
    return PracticePriceAt(symbol, QDateTime(day, time));
}

} // namespace

TEST(PracticeWalk, HasNoPricesOnWeekends)
{
    EXPECT_TRUE(PracticePricesOf("BRWK", Friday));
    EXPECT_FALSE(PracticePricesOf("BRWK", Friday.addDays(1)));
    EXPECT_FALSE(PracticePricesOf("BRWK", Friday.addDays(2)));
    EXPECT_TRUE(PracticePricesOf("BRWK", Friday.addDays(3)));
    EXPECT_FALSE(PracticePricesOf("BRWK", QDate()));
}

TEST(PracticeWalk, HasPricesOnALeapDay)
{
    EXPECT_TRUE(PracticePricesOf("BRWK", QDate(2028, 2, 29)));
}

TEST(PracticeWalk, KeepsOpenAndCloseBetweenLowAndHighAndAboveZero)
{
    for (const QString &symbol : Symbols()) {
        ForEachDay([&](QDate date) {
            const PracticeDay day = PracticePricesOf(symbol, date).value();
            ASSERT_GT(day.Low, Currency()) << qPrintable(symbol);
            ASSERT_LE(day.Low, std::min(day.Open, day.Close)) << qPrintable(symbol);
            ASSERT_GE(day.High, std::max(day.Open, day.Close)) << qPrintable(symbol);
            ASSERT_GE(day.Volume, 0) << qPrintable(symbol);
            ASSERT_LE(day.Volume, 2147483647) << qPrintable(symbol);
        });
    }
}

TEST(PracticeWalk, GivesWholeCents)
{
    ForEachDay([](QDate date) {
        const PracticeDay day = PracticePricesOf("ARLNC90", date).value();
        for (const Currency price : {day.Open, day.High, day.Low, day.Close})
            ASSERT_EQ(price.Units() % 100, 0);
    });
}

TEST(PracticeWalk, MovesAStockByOneToTwoPercentOnAUsualDayAndNeverByNine)
{
    for (const char *symbol : {"ARLN", "BRWK", "CPRQ", "HLWD", "VSTA"}) {
        const Moves moves = MovesOf(symbol);
        EXPECT_GT(moves.average, 0.008) << symbol;
        EXPECT_LT(moves.average, 0.02) << symbol;
        EXPECT_LT(moves.largest, 0.09) << symbol;
    }
}

TEST(PracticeWalk, MovesABondLessThanAFundAndAnOptionMost)
{
    const double bond = MovesOf("TARN45").average;
    const double fund = MovesOf("GRNVX").average;
    const double stock = MovesOf("ARLN").average;
    const double option = MovesOf("ARLNC90").average;
    EXPECT_LT(bond, fund);
    EXPECT_LT(fund, stock);
    EXPECT_LT(stock, option);
    EXPECT_LT(MovesOf("ARLNP90").largest, 0.25);
}

TEST(PracticeWalk, ContinuesFromFridayToMonday)
{
    double largest = 0;
    for (QDate friday = Friday; friday < Friday.addYears(4); friday = friday.addDays(7))
        largest = std::max(
            largest, std::fabs(CloseOf("ARLN", friday.addDays(3)) / CloseOf("ARLN", friday) - 1));
    EXPECT_LT(largest, 0.09);
}

TEST(PracticeWalk, OpensNearTheCloseOfTheDayBefore)
{
    const double close = CloseOf("BRWK", Friday.addDays(-1));
    EXPECT_NEAR(PracticePricesOf("BRWK", Friday)->Open.ToDouble() / close, 1, 0.01);
}

/// The practice market is the same on every machine and stays what it was.
TEST(PracticeWalk, GivesTheSamePricesForEver)
{
    struct Known
    {
        const char *symbol;
        QDate date;
        const char *open, *high, *low, *close;
        qint64 volume;
    };
    const Known knowns[] = {
        {"BRWK", QDate(2026, 11, 20), "208.38", "209.46", "205.79", "205.98", 188984},
        {"FSKR", QDate(2028, 2, 29), "80.95", "83.06", "80.50", "82.61", 317667},
        {"GRNVX", QDate(2027, 12, 31), "48.52", "48.67", "48.45", "48.46", 0},
        {"TARN45", QDate(2030, 1, 1), "106.42", "106.85", "106.38", "106.71", 2747},
        {"ARLNC90", QDate(2025, 6, 2), "3.92", "4.04", "3.87", "4.00", 389},
        {".PRX", QDate(2026, 11, 20), "2240.13", "2266.46", "2228.30", "2260.25", 203762950},
    };
    for (const Known &known : knowns) {
        const PracticeDay day = PracticePricesOf(known.symbol, known.date).value();
        EXPECT_EQ(day.Open, Currency(known.open)) << known.symbol << day.Open.ToDouble();
        EXPECT_EQ(day.High, Currency(known.high)) << known.symbol << day.High.ToDouble();
        EXPECT_EQ(day.Low, Currency(known.low)) << known.symbol << day.Low.ToDouble();
        EXPECT_EQ(day.Close, Currency(known.close)) << known.symbol << day.Close.ToDouble();
        EXPECT_EQ(day.Volume, known.volume) << known.symbol;
    }
}

TEST(PracticeWalk, TakesSmallLettersAndBlanksAroundASymbolAsTheSameSymbol)
{
    EXPECT_EQ(CloseOf(" brwk   ", Friday), CloseOf("BRWK", Friday));
    EXPECT_NE(CloseOf("BRWL", Friday), CloseOf("BRWK", Friday));
}

TEST(PracticeWalk, StaysPositiveAndFiniteInFarYearsAndForOddSymbols)
{
    for (const char *symbol :
         {"", ".", "X", "C1", "123456", "\u00e9\u00e8", "AVERYLONGSYMBOLINDEED"})
        for (const QDate day : {QDate(1, 1, 1), QDate(1899, 12, 29), QDate(9999, 12, 31)}) {
            const Currency close = PriceAt(symbol, day, QTime(17, 0));
            EXPECT_GT(close, Currency()) << symbol;
            EXPECT_LT(close, Currency("1000000")) << symbol;
        }
}

TEST(PracticePriceAt, BeginsAtTheOpenAndEndsAtTheClose)
{
    const PracticeDay day = PracticePricesOf("BRWK", Friday).value();
    EXPECT_EQ(PriceAt("BRWK", Friday, QTime(9, 30)), day.Open);
    EXPECT_EQ(PriceAt("BRWK", Friday, QTime(16, 0)), day.Close);
    EXPECT_EQ(PriceAt("BRWK", Friday, QTime(23, 59, 59)), day.Close);
}

TEST(PracticePriceAt, StaysWithinTheRangeOfTheDayAndMovesThroughIt)
{
    for (const QString &symbol : Symbols()) {
        const PracticeDay day = PracticePricesOf(symbol, Friday).value();
        std::set<Currency> prices;
        for (int second = 0; second <= 6 * 3600 + 1800; second += 65) {
            const Currency price = PriceAt(symbol, Friday, QTime(9, 30).addSecs(second));
            ASSERT_GE(price, day.Low) << qPrintable(symbol);
            ASSERT_LE(price, day.High) << qPrintable(symbol);
            prices.insert(price);
        }
        EXPECT_GT(prices.size(), 5u) << qPrintable(symbol);
    }
}

TEST(PracticePriceAt, MovesLittleFromOneMinuteToTheNext)
{
    const double range =
        (PracticePricesOf("BRWK", Friday)->High - PracticePricesOf("BRWK", Friday)->Low).ToDouble();
    Currency before = PriceAt("BRWK", Friday, QTime(9, 30));
    for (QTime time(9, 31); time <= QTime(16, 0); time = time.addSecs(60)) {
        const Currency price = PriceAt("BRWK", Friday, time);
        ASSERT_LT(std::fabs((price - before).ToDouble()), 0.6 * range)
            << qPrintable(time.toString());
        before = price;
    }
}

TEST(PracticePriceAt, IsTheLastCloseBeforeTheMarketOpensAndOnWeekends)
{
    const Currency close = PracticePricesOf("BRWK", Friday)->Close;
    EXPECT_EQ(PriceAt("BRWK", Friday.addDays(1), QTime(12, 0)), close);
    EXPECT_EQ(PriceAt("BRWK", Friday.addDays(2), QTime(0, 0)), close);
    EXPECT_EQ(PriceAt("BRWK", Friday.addDays(3), QTime(9, 29, 59, 999)), close);
    EXPECT_NE(PriceAt("BRWK", Friday.addDays(3), QTime(9, 30)), close);
}

TEST(PracticePriceAt, RefusesAnInvalidMoment)
{
    try {
        PracticePriceAt("BRWK", QDateTime());
        FAIL() << "a price at no time";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), RuntimeError::InvalidArgumentNumber);
    }
}

TEST(LatestWeekday, IsTheDayItselfOrTheFridayBefore)
{
    EXPECT_EQ(LatestWeekday(Friday), Friday);
    EXPECT_EQ(LatestWeekday(Friday.addDays(1)), Friday);
    EXPECT_EQ(LatestWeekday(Friday.addDays(2)), Friday);
    EXPECT_EQ(LatestWeekday(Friday.addDays(3)), Friday.addDays(3));
    EXPECT_EQ(LatestWeekday(QDate(2028, 1, 1)), QDate(2027, 12, 31));
}
