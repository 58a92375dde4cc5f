#include "marketdata/historical_page.h"

#include "historical_market.h"
#include "marketdata/chart_page.h"
#include "support/print_qt.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

#include <QFile>

namespace
{

const QDate Today(2026, 11, 21);

std::string RowText(const HistPrice &row)
{
    const Formats plain{QLocale::c()};
    QStringList parts = {row.Symbol, row.PriceDate.toString(Qt::ISODate)};
    for (const Currency price : {row.PriceOpen, row.DayHigh, row.DayLow, row.PriceClose})
        parts << plain.ToText(price);
    parts << QString::number(row.Volume) << plain.ToText(row.AdjClose);
    return parts.join(QLatin1Char('|')).toStdString();
}

std::vector<std::string> RowsOf(const QString &text)
{
    std::vector<std::string> rows;
    HistoricalPage page(text, QStringLiteral("QLLN"), Today);
    while (page.FindCell())
        if (page.ReadRow())
            rows.push_back(RowText(page.Row()));
    return rows;
}

std::vector<std::string> DatesOf(const QString &text)
{
    std::vector<std::string> dates;
    for (const std::string &row : RowsOf(text))
        dates.push_back(row.substr(5, 10));
    return dates;
}

QString Reply(const char *name)
{
    QFile file(QStringLiteral(QUILLON_PROJECT "/tests/marketdata/replies/") +
               QString::fromUtf8(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return QString::fromUtf8(file.readAll());
}

using Texts = std::vector<std::string>;

} // namespace

TEST(HistoricalPage, GivesTheDaysOfATablePageWithoutHeadingsAndDividends)
{
    EXPECT_EQ(RowsOf(Reply("hist_table_page.txt")),
              (Texts{"QLLN|2026-11-20|213.2|216.04|212.7|214.37|18734022|214.37",
                     "QLLN|2026-11-18|210.75|212.02|210.11|211.92|15011207|211.92",
                     "QLLN|2026-11-17|209.5|211.3|208.84|210.6|16200310|210.34"}));
}

TEST(HistoricalPage, DoesNotStopAtADividendRowInTheMiddle)
{
    const QString page =
        TablePage()
            .Header()
            .Day(QDate(2026, 11, 20), 50)
            .Cells({QStringLiteral("19-Nov-26"), QStringLiteral("$0.26 Cash Dividend")})
            .Day(QDate(2026, 11, 19), 51)
            .Day(QDate(2026, 11, 18), 52)
            .Text();
    EXPECT_EQ(DatesOf(page), (Texts{"2026-11-20", "2026-11-19", "2026-11-18"}));
}

TEST(HistoricalPage, PassesOverASplitRow)
{
    const QString page =
        TablePage()
            .Day(QDate(2026, 11, 20), 50)
            .Cells({QStringLiteral("19-Nov-26"), QStringLiteral("2 : 1 Stock Split")})
            .Day(QDate(2026, 11, 18), 100)
            .Text();
    EXPECT_EQ(DatesOf(page), (Texts{"2026-11-20", "2026-11-18"}));
}

TEST(HistoricalPage, PassesOverSeveralRowsThatAreNoDaysAndLieTogether)
{
    const QString page =
        TablePage()
            .Header()
            .Cells({QStringLiteral("20-Nov-26"), QStringLiteral("$0.26 Cash Dividend")})
            .Cells({QStringLiteral("20-Nov-26"), QStringLiteral("2 : 1 Stock Split")})
            .Header()
            .Day(QDate(2026, 11, 19), 50)
            .Text();
    EXPECT_EQ(DatesOf(page), Texts{"2026-11-19"});
}

TEST(HistoricalPage, EndsAtARowThatThePageBreaksOff)
{
    QString page = TablePage().Day(QDate(2026, 11, 20), 50).Day(QDate(2026, 11, 19), 51).Text();
    const qsizetype second = page.lastIndexOf(QStringLiteral("19-Nov-26"));
    for (qsizetype length = page.size(); length > second; --length) {
        const Texts dates = DatesOf(page.left(length));
        EXPECT_LE(dates.size(), 2u) << length;
        ASSERT_GE(dates.size(), 1u) << length;
        EXPECT_EQ(dates.front(), "2026-11-20");
    }
}

TEST(HistoricalPage, EndsWhenTheOldestRowIsADividend)
{
    const QString page = TablePage()
                             .Day(QDate(2026, 11, 20), 50)
                             .Cells({QStringLiteral("19-Nov-26"), QStringLiteral("$0.26 Dividend")})
                             .Text();
    EXPECT_EQ(DatesOf(page), Texts{"2026-11-20"});
}

TEST(HistoricalPage, DropsARowWhoseLastCellIsNoPrice)
{
    const QString page = TablePage()
                             .Cells({QStringLiteral("20-Nov-26"), QStringLiteral("1"),
                                     QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"),
                                     QStringLiteral("1"), QStringLiteral("N/A")})
                             .Day(QDate(2026, 11, 19), 51)
                             .Text();
    EXPECT_EQ(DatesOf(page), Texts{"2026-11-19"});
}

TEST(HistoricalPage, FindsItsTagsInAnyLettersAndWithNothingBetweenThem)
{
    QString page = TablePage().Day(QDate(2026, 11, 20), 50).Day(QDate(2026, 11, 19), 51).Text();
    page.replace(QStringLiteral("nobr"), QStringLiteral("NoBr"))
        .replace(QStringLiteral("<b>"), QStringLiteral("<B>"));
    EXPECT_EQ(DatesOf(page), (Texts{"2026-11-20", "2026-11-19"}));
    for (const char *tag : {"<td>", "</td>", "<tr>", "</tr>", "\n"})
        page.remove(QString::fromUtf8(tag));
    EXPECT_EQ(DatesOf(page), (Texts{"2026-11-20", "2026-11-19"}));
}

TEST(HistoricalPage, TakesTheVolumeAsAWholeNumberOf32Bits)
{
    const auto volume = [](const char *text) {
        const Texts rows =
            RowsOf(TablePage().Day(QDate(2026, 11, 20), 50, QString::fromUtf8(text)).Text());
        return rows.empty() ? std::string("(no row)") : rows.front();
    };
    EXPECT_EQ(volume("2,147,483,647"), "QLLN|2026-11-20|49|52|48|50|2147483647|50");
    EXPECT_EQ(volume("12.5"), "QLLN|2026-11-20|49|52|48|50|12|50"); // halves to the even number
    EXPECT_EQ(volume("0"), "QLLN|2026-11-20|49|52|48|50|0|50");
    EXPECT_EQ(volume("none"), "(no row)");
    EXPECT_EQ(volume(""), "(no row)");
}

TEST(HistoricalPage, RaisesWhatDoesNotFitItsColumn)
{
    const auto error = [](const QString &text) {
        try {
            RowsOf(text);
            return 0;
        } catch (const RuntimeError &raised) {
            return raised.Number();
        }
    };
    EXPECT_EQ(
        error(TablePage().Day(QDate(2026, 11, 20), 50, QStringLiteral("2,147,483,648")).Text()), 6);
    EXPECT_EQ(
        error(TablePage().Cells({QStringLiteral("20-Nov-26"), QStringLiteral("1E+30")}).Text()), 6);
}

TEST(HistoricalPage, IsDoneAtOnceWithoutCells)
{
    for (const char *text : {"", "nobr>", "<nobr>", "<nobr></nobr>", "<html>busy</html>",
                             "</nobr></nobr></nobr>", "          nobr>", "<nobr><nobr><nobr>"})
        EXPECT_EQ(RowsOf(QString::fromUtf8(text)), Texts()) << text;
}

TEST(HistoricalPage, WalksMegabytesOfHostileCellsOnce)
{
    const QString cells = QStringLiteral("<nobr>20-Nov-26</nobr><nobr>x</nobr>").repeated(50000);
    EXPECT_EQ(RowsOf(cells), Texts());
    const QString oneCell =
        QStringLiteral("<nobr>%1</nobr>").arg(QString(2000000, QLatin1Char('9')));
    EXPECT_EQ(RowsOf(oneCell), Texts());
    EXPECT_EQ(RowsOf(QStringLiteral("<nobr>").repeated(300000)), Texts());
}

TEST(PageDate, ReadsDatesAsAnEnglishPageWritesThem)
{
    const auto date = [](const char *text) {
        const std::optional<QDate> found = PageDate(QString::fromUtf8(text), Today);
        return found ? found->toString(Qt::ISODate).toStdString() : "(no date)";
    };
    const char *written[] = {"20-Nov-26",        "20-nov-2026", "20 November 2026", "Nov 20, 2026",
                             "November 20 2026", "11/20/26",    "11/20/2026",       "2026-11-20",
                             " 20-Nov-26 ",      "20-NOV-26"};
    for (const char *text : written)
        EXPECT_EQ(date(text), "2026-11-20") << text;
    EXPECT_EQ(date("29-Feb-24"), "2024-02-29");
    EXPECT_EQ(date("3-Jan-99"), "1999-01-03");
    EXPECT_EQ(date("4-Jan-27"), "2027-01-04");
    EXPECT_EQ(date("4-Jan-28"), "1928-01-04");
    const char *others[] = {"",
                            "Date",
                            "29-Feb-26",
                            "32-Nov-26",
                            "20-Foo-26",
                            "213.20",
                            "18,734,022",
                            "20-Nov",
                            "2 : 1 Split",
                            "20-Nov-26-1",
                            "0026-11-20",
                            "1/2/3/4",
                            "20-Nov-026",
                            "Nov-Nov-26",
                            "--",
                            "20-Nov-26 $0.26 Cash Dividend of this quarter and no more"};
    for (const char *text : others)
        EXPECT_EQ(date(text), "(no date)") << text;
}

TEST(PageDate, ReadsTwoDigitsAsAYearOfThePastWheneverThatIs)
{
    EXPECT_EQ(PageDate(u"20-Nov-31", QDate(2031, 12, 1)), QDate(2031, 11, 20));
    EXPECT_EQ(PageDate(u"30-Dec-99", QDate(2100, 1, 4)), QDate(2099, 12, 30));
    EXPECT_EQ(PageDate(u"4-Jan-00", QDate(2099, 12, 30)), QDate(2100, 1, 4));
}

// --- the adapter of the chart service ------------------------------------------------------------

TEST(ChartPage, GivesTheDaysOfTheReplyNumberForNumber)
{
    // 19 November is null; of the two entries of the 20th the last counts; 14:30 UTC less five hours
    // is the morning of the same day.
    const QString page = TablePageOfChart(Reply("hist_yahoo_chart_v8.txt").toUtf8());
    EXPECT_EQ(RowsOf(page), (Texts{"QLLN|2026-11-20|213.2|216.04|212.7|214.37|18734022|214.37",
                                   "QLLN|2026-11-18|210.75|212.02|210.11|211.92|15011207|211.92",
                                   "QLLN|2026-11-17|209.5|211.3|208.84|210.6|16200310|210.3413"}));
    EXPECT_TRUE(page.contains(
        QStringLiteral("<tr><td><nobr>20-Nov-26</nobr></td><td><nobr>213.2000</nobr></td>"
                       "<td><nobr>216.0400</nobr></td><td><nobr>212.7000</nobr></td>"
                       "<td><nobr><b>214.3700</b></nobr></td><td><nobr>18,734,022</nobr></td>"
                       "<td><nobr>214.3700</nobr></td></tr>")))
        << page.toStdString();
}

namespace
{

/// A reply with one day: 20 November 2026, 14:30 UTC.
QByteArray OneDay(const QByteArray &meta, const QByteArray &prices,
                  const QByteArray &adjclose = "[{\"adjclose\":[5]}]",
                  const QByteArray &timestamp = "1795185000")
{
    return "{\"chart\":{\"result\":[{\"meta\":{" + meta + "},\"timestamp\":[" + timestamp +
           "],\"indicators\":{\"quote\":[{" + prices + "}],\"adjclose\":" + adjclose +
           "}}],\"error\":null}}";
}
const QByteArray Prices = "\"open\":[1],\"high\":[3],\"low\":[0.5],\"close\":[2],\"volume\":[7]";

} // namespace

TEST(ChartPage, TakesTheDayInTheExchangesOwnOffset)
{
    const auto day = [](const QByteArray &meta) {
        return DatesOf(TablePageOfChart(OneDay(meta, Prices)));
    };
    EXPECT_EQ(day("\"gmtoffset\":-18000"), Texts{"2026-11-20"});
    EXPECT_EQ(day("\"gmtoffset\":36000"), Texts{"2026-11-21"}); // 0:30 of the next day in Sydney
    EXPECT_EQ(day("\"gmtoffset\":-54000"), Texts{"2026-11-19"});
    EXPECT_EQ(day(""), Texts{"2026-11-20"});
}

TEST(ChartPage, TakesTheDayOfAStampInTheSummerTimeThatHeldThen)
{
    const auto day = [](const char *zone, const char *offset, const QByteArray &stamp) {
        const QByteArray meta =
            QByteArray("\"gmtoffset\":") + offset + ",\"exchangeTimezoneName\":\"" + zone + "\"";
        return DatesOf(TablePageOfChart(OneDay(meta, Prices, "[{\"adjclose\":[5]}]", stamp))).at(0);
    };
    // Midnight in London: 23:00 UTC of the day before in summer, 0:00 UTC in winter.
    EXPECT_EQ(day("Europe/London", "0", "1783983600"), "2026-07-14");
    EXPECT_EQ(day("Europe/London", "3600", "1796860800"), "2026-12-10");
    // Midnight in New York: 4:00 UTC in summer, 5:00 UTC in winter.
    EXPECT_EQ(day("America/New_York", "-18000", "1784001600"), "2026-07-14");
    EXPECT_EQ(day("America/New_York", "-14400", "1796878800"), "2026-12-10");
    // A zone that no machine knows: the offset of the reply is all there is.
    EXPECT_EQ(day("Mars/Olympus", "-18000", "1784001600"), "2026-07-13");
    EXPECT_EQ(day("", "-18000", "1796878800"), "2026-12-10");
}

TEST(ChartPage, CapsAVolumeThatTheColumnCannotHold)
{
    const auto row = [](const QByteArray &volume) {
        return RowsOf(TablePageOfChart(
            OneDay("", "\"open\":[1],\"high\":[3],\"low\":[0.5],\"close\":[2],\"volume\":[" +
                           volume + "]")));
    };
    EXPECT_EQ(row("2147483647"), Texts{"QLLN|2026-11-20|1|3|0.5|2|2147483647|5"});
    EXPECT_EQ(row("5123456789"), Texts{"QLLN|2026-11-20|1|3|0.5|2|2147483647|5"});
    EXPECT_EQ(row("1e300"), Texts{"QLLN|2026-11-20|1|3|0.5|2|2147483647|5"});
    EXPECT_EQ(row("null"), Texts{"QLLN|2026-11-20|1|3|0.5|2|0|5"});
    EXPECT_EQ(row("-4"), Texts{"QLLN|2026-11-20|1|3|0.5|2|0|5"});
}

TEST(ChartPage, TakesTheCloseWhereThereIsNoAdjustedOne)
{
    EXPECT_EQ(RowsOf(TablePageOfChart(OneDay("", Prices, "[]"))),
              Texts{"QLLN|2026-11-20|1|3|0.5|2|7|2"});
    EXPECT_EQ(RowsOf(TablePageOfChart(OneDay("", Prices, "[{\"adjclose\":[null]}]"))),
              Texts{"QLLN|2026-11-20|1|3|0.5|2|7|2"});
}

TEST(ChartPage, HasNoRowsForAReplyThatSaysAnErrorOrIsNone)
{
    const QByteArray deep = QByteArray("[").repeated(100000);
    for (const QByteArray &reply :
         {QByteArray(), QByteArray("Too Many Requests"), QByteArray("<html>"), QByteArray("{}"),
          QByteArray("[1,2]"), QByteArray("\0\xff\x7f", 3), deep,
          QByteArray("{\"chart\":{\"result\":null,\"error\":{\"code\":\"Not Found\"}}}"),
          OneDay("", ""), OneDay("", Prices, "[]", "-5"), OneDay("", Prices, "[]", "null"),
          OneDay("", Prices, "[]", "99999999999999"), OneDay("\"gmtoffset\":1e15", Prices),
          OneDay("", "\"open\":[1e30],\"high\":[3],\"low\":[1],\"close\":[2],\"volume\":[7]"),
          OneDay("", "\"open\":[\"1\"],\"high\":[3],\"low\":[1],\"close\":[2],\"volume\":[7]")}) {
        const QString page = TablePageOfChart(reply);
        EXPECT_FALSE(page.isEmpty());
        EXPECT_EQ(RowsOf(page), Texts()) << reply.left(200).constData();
    }
}

TEST(ChartQuery, AsksUpToTheDayBehindTheLastOne)
{
    // 1788220800 is 1 September 2026, 0:00 UTC; 1795219200 is 21 November, the day behind.
    EXPECT_EQ(ChartQuery({QStringLiteral("QLLN      "), QDate(2026, 9, 1), QDate(2026, 11, 20)}),
              QStringLiteral("/v8/finance/chart/QLLN?period1=1788220800&period2=1795219200"
                             "&interval=1d&events=div,splits"));
}

TEST(ChartQuery, EscapesWhatAnAddressCannotHold)
{
    const auto path = [](const char *symbol) {
        return ChartQuery({QString::fromUtf8(symbol), QDate(2026, 9, 1), QDate(2026, 9, 1)})
            .section(QLatin1Char('?'), 0, 0)
            .toStdString();
    };
    EXPECT_EQ(path("^QX       "), "/v8/finance/chart/%5EQX");
    EXPECT_EQ(path("A/B&C?#%1 "), "/v8/finance/chart/A%2FB%26C%3F%23%251");
    EXPECT_EQ(path("Ä ÖL      "), "/v8/finance/chart/%C3%84%20%C3%96L");
    EXPECT_EQ(path("O'NEIL    "), "/v8/finance/chart/O%27NEIL");
}

TEST(HistoricalQuery, CountsMonthsFromZeroAndKeepsTheBlanksOfTheSymbol)
{
    EXPECT_EQ(
        HistoricalQuery({QStringLiteral("QLLN      "), QDate(2026, 2, 17), QDate(2026, 4, 20)}),
        QStringLiteral("/d?a=1&b=17&c=2026&d=3&e=20&f=2026&g=d&s=QLLN      "));
    EXPECT_EQ(
        HistoricalQuery({QStringLiteral("A&B#1     "), QDate(2024, 2, 29), QDate(2024, 12, 31)}),
        QStringLiteral("/d?a=1&b=29&c=2024&d=11&e=31&f=2024&g=d&s=A%26B%231     "));
}
