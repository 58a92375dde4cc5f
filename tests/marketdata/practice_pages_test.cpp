#include "marketdata/practice_pages.h"

#include "base/formats.h"
#include "marketdata/extraction.h"
#include "marketdata/historical_page.h"
#include "marketdata/practice_walk.h"
#include "marketdata/version_check.h"
#include "store/settings.h"
#include "support/print_qt.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRectF>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

namespace
{

const QDate Friday(2026, 11, 20);
const QDateTime Noon(Friday, QTime(12, 0));
const QDateTime Evening(Friday, QTime(16, 0));

QString Page(const QString &address, const QDateTime &now = Noon)
{
    const QString path = address.section(u'?', 0, 0);
    const std::optional<PracticePage> page =
        MakePracticePage(path, QUrlQuery(address.section(u'?', 1)), now);
    EXPECT_TRUE(page) << address.toStdString();
    return page ? page->text : QString();
}

QString DailyPage(const QString &symbol, QDate from, QDate to, const QDateTime &now = Evening)
{
    return Page(QStringLiteral("/d?a=%1&b=%2&c=%3&d=%4&e=%5&f=%6&g=d&s=%7")
                    .arg(from.month() - 1)
                    .arg(from.day())
                    .arg(from.year())
                    .arg(to.month() - 1)
                    .arg(to.day())
                    .arg(to.year())
                    .arg(symbol),
                now);
}

QStringList Captures(const QString &text, const QString &pattern)
{
    QStringList found;
    QRegularExpressionMatchIterator matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

/// "QLLN 214.37" for each row of a page of quotes.
QStringList QuoteRows(const QString &page)
{
    QStringList rows;
    QRegularExpressionMatchIterator matches =
        QRegularExpression("<tr><td class=\"sym\">(.*)</td><td class=\"last\">(.*)</td></tr>")
            .globalMatch(page);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        rows << match.captured(1) + u' ' + match.captured(2);
    }
    return rows;
}

/// The rows of a table of daily prices below its header, their cells joined by "|".
QStringList DailyRows(const QString &page)
{
    QStringList rows;
    for (const QString &row : Captures(page, QStringLiteral("<tr>(.*)</tr>")))
        rows << Captures(row, QStringLiteral("<nobr>(.*?)</nobr>")).join(u'|');
    EXPECT_EQ(rows.value(0), QStringLiteral("Date|Open|High|Low|Close|Volume|Adj. Close"));
    return rows.mid(1);
}

/// Dates of the rows.
QStringList Days(const QString &page)
{
    QStringList days;
    for (const QString &row : DailyRows(page))
        days << row.section(u'|', 0, 0);
    return days;
}

std::string WalkPrice(const QString &symbol, const QDateTime &now)
{
    const Formats english{QLocale(QLocale::English, QLocale::UnitedStates)};
    return english.Format(PracticePriceAt(symbol, now), u"#,##0.00").toStdString();
}

/// The practice site as it is delivered.
QuoteSite DeliveredSite()
{
    QFile file(QStringLiteral(QUILLON_DATA "/quote_sites.json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    for (const QJsonValue &value : QJsonDocument::fromJson(file.readAll()).array()) {
        const QJsonObject row = value.toObject();
        if (!row["WebSiteName"].toString().startsWith(QLatin1String("Practice")))
            continue;
        QuoteSite site;
        site.AddressBuildCharacters = row["AddressBuildCharacters"].toString();
        site.SymbolBegText = row["SymbolBegText"].toString();
        site.SymbolEndText = row["SymbolEndText"].toString();
        site.CharToPrice = row["CharToPrice"].toInt();
        site.PriceBegText = row["PriceBegText"].toString();
        site.PriceEndText = row["PriceEndText"].toString();
        site.UpdateCount = row["UpdateCount"].toInt();
        return site;
    }
    ADD_FAILURE() << "no practice site is delivered";
    return {};
}

const char *const AllPages[] = {
    "/quotes?s=BRWK",      "/d?a=10&b=2&c=2026&d=10&e=20&f=2026&g=d&s=BRWK",
    "/q?s=BRWK",           "/q?s=",
    "/q?s=ZZZZ",           "/marketmap/",
    "/version.xml",        "/Downloads.html",
    "/VersionChanges.html"};

} // namespace

TEST(PracticePages, SayThatTheyArePractice)
{
    for (const char *address : AllPages)
        EXPECT_TRUE(Page(address).contains(QLatin1String("Practice"))) << address;
}

TEST(PracticePages, AreWellFormedThroughout)
{
    for (const char *address : {"/q?s=BRWK", "/q?s=<b>'\"", "/marketmap/"}) {
        // The drawing is XML, whatever the page around it.
        const QString page = Page(address);
        QXmlStreamReader xml(
            page.mid(page.indexOf(QLatin1String("<svg"))).section(QLatin1String("</svg>"), 0, 0) +
            (page.contains(QLatin1String("<svg")) ? "</svg>" : "<none/>"));
        while (!xml.atEnd())
            xml.readNext();
        EXPECT_FALSE(page.contains(QLatin1String("<svg")) && xml.hasError())
            << address << ": " << xml.errorString().toStdString();
    }
    QXmlStreamReader version(Page("/version.xml"));
    while (!version.atEnd())
        version.readNext();
    EXPECT_FALSE(version.hasError()) << version.errorString().toStdString();
}

TEST(PracticePages, AreNoneAtOtherPaths)
{
    for (const char *path : {"/", "", "/quote", "/quotes/", "/QUOTES", "/d/", "/marketmap",
                             "/versionxxml", "/../version.xml", "quotes"})
        EXPECT_FALSE(MakePracticePage(path, QUrlQuery("s=A"), Noon)) << path;
}

TEST(PracticePages, TakeAnyQuery)
{
    for (int byte = 0; byte < 256; ++byte) {
        for (const char *path : {"/quotes", "/d", "/q"}) {
            const QString value = QString(QChar(byte)).repeated(3);
            QUrlQuery query;
            for (const char *name : {"s", "a", "b", "c", "d", "e", "f"})
                query.addQueryItem(name, QUrl::toPercentEncoding(value));
            EXPECT_TRUE(MakePracticePage(path, query, Noon)) << path << byte;
        }
    }
    for (const char *address : {"/quotes", "/quotes?", "/quotes?s", "/quotes?s=%", "/quotes?s=%00",
                                "/quotes?s=%FF%FE", "/d", "/d?s=A", "/q", "/q?s=%00"})
        EXPECT_FALSE(Page(address).isEmpty()) << address;
}

// --- current prices ------------------------------------------------------------------------------

TEST(PracticeQuotes, NameEachSymbolWithThePriceOfTheWalkAtThatMoment)
{
    for (const QDateTime &now : {QDateTime(Friday, QTime(9, 0)), Noon, Evening,
                                 QDateTime(Friday.addDays(1), QTime(12, 0))})
        EXPECT_EQ(QuoteRows(Page("/quotes?s=BRWK,.PRX,GRNVX", now)),
                  (QStringList{"BRWK " + QString::fromStdString(WalkPrice("BRWK", now)),
                               ".PRX " + QString::fromStdString(WalkPrice(".PRX", now)),
                               "GRNVX " + QString::fromStdString(WalkPrice("GRNVX", now))}))
            << now.toString().toStdString();
}

TEST(PracticeQuotes, AreSeparatedByACommaOrAPlus)
{
    const QStringList rows = QuoteRows(Page("/quotes?s=BRWK,LMNT"));
    ASSERT_EQ(rows.size(), 2);
    for (const char *symbols :
         {"BRWK+LMNT", "BRWK%2BLMNT", "BRWK%20%20+LMNT%20", ",BRWK,,LMNT+", "%2CBRWK%2CLMNT"})
        EXPECT_EQ(QuoteRows(Page(QStringLiteral("/quotes?s=") + symbols)), rows) << symbols;
}

TEST(PracticeQuotes, EchoAnUnknownSymbolAsNotAvailable)
{
    EXPECT_EQ(QuoteRows(Page("/quotes?s=ZZZZ,zzb,O'NEIL,ELEVENCHARS,A B,Z%C3%9CRI")),
              (QStringList{"ZZZZ N/A", "zzb N/A", "O'NEIL N/A", "ELEVENCHARS N/A", "A B N/A",
                           QString::fromUtf8("Z\xC3\x9CRI N/A")}));
}

TEST(PracticeQuotes, EchoNothingThatIsMarkup)
{
    const QString page = Page("/quotes?s=%3Cscript%3Ealert(1)%3C/script%3E,%26amp;,%22%00%0A");
    EXPECT_FALSE(page.contains(QLatin1String("<script")));
    EXPECT_EQ(QuoteRows(page), (QStringList{"&lt;script&gt;alert(1)&lt;/script&gt; N/A",
                                            "&amp;amp; N/A", "&quot; N/A"}));
}

TEST(PracticeQuotes, StandBeyondTheReachOfASymbolThatIsMissing)
{
    const QuoteSite site = DeliveredSite();
    const QString longest(10, u'A');
    EXPECT_GT(Page("/quotes?s=BRWK").indexOf(site.PriceBegText), longest.size() + site.CharToPrice);
    EXPECT_FALSE(ExtractPriceText(Page("/quotes?s=BRWK"), longest, site).Found());
}

TEST(PracticeQuotes, GiveTheExtractionThePricesOfTheWalk)
{
    const QuoteSite site = DeliveredSite();
    const QStringList symbols = {"A",    "AA",    "BRWK",   "brwk",    ".PRX",  "^PRX",
                                 "BR-B", "GRNVX", "TARN45", "ARLNC90", "PRX=F", "ABCDEFGHIJ"};
    const QString page =
        Page(QStringLiteral("/quotes?s=") + symbols.join(site.AddressBuildCharacters) +
             site.AddressBuildCharacters + QStringLiteral("ZZZZ"));
    for (const QString &symbol : symbols)
        EXPECT_EQ(ExtractPriceText(page, symbol, site).PriceText.toStdString(),
                  WalkPrice(symbol, Noon))
            << symbol.toStdString();
    EXPECT_FALSE(ExtractPriceText(page, "ZZZZ", site).Found());
    EXPECT_FALSE(ExtractPriceText(page, "NOTASKED", site).Found());
}

TEST(PracticeQuotes, OfAFullBatchFitSixteenBits)
{
    const int most = DeliveredSite().UpdateCount;
    EXPECT_LT(
        Page(QStringLiteral("/quotes?s=") + QStringLiteral("ABCDEFGHIJ+").repeated(most)).size(),
        32767);
}

// --- daily prices --------------------------------------------------------------------------------

TEST(PracticeDailyPrices, AreThoseOfTheWalkNewestFirst)
{
    const QStringList rows = DailyRows(DailyPage("BRWK", Friday.addDays(-3), Friday));
    ASSERT_EQ(rows.size(), 4);
    const Formats formats{QLocale::c()};
    for (int i = 0; i < 4; ++i) {
        const QDate day = Friday.addDays(-i);
        const PracticeDay prices = PracticePricesOf("BRWK", day).value();
        const auto text = [&](Currency price) { return formats.Format(price, u"#,##0.00"); };
        const QString close = text(prices.Close);
        EXPECT_EQ(rows[i],
                  (QStringList{QStringLiteral("%1-Nov-26").arg(day.day()), text(prices.Open),
                               text(prices.High), text(prices.Low), "<b>" + close + "</b>",
                               formats.Format(prices.Volume, u"#,##0"), close}
                       .join(u'|')));
    }
}

TEST(PracticeDailyPrices, HaveNoRowOfAWeekend)
{
    EXPECT_EQ(Days(DailyPage("BRWK", QDate(2026, 11, 12), QDate(2026, 11, 17))),
              (QStringList{"17-Nov-26", "16-Nov-26", "13-Nov-26", "12-Nov-26"}));
    EXPECT_EQ(Days(DailyPage("BRWK", QDate(2026, 11, 14), QDate(2026, 11, 15))), QStringList());
}

TEST(PracticeDailyPrices, HaveTodaysRowOnceTheMarketHasClosed)
{
    const auto newest = [](QTime time) {
        return Days(DailyPage("BRWK", Friday.addDays(-1), Friday.addDays(9), {Friday, time}))
            .value(0);
    };
    EXPECT_EQ(newest(QTime(0, 0)), "19-Nov-26");
    EXPECT_EQ(newest(QTime(15, 59, 59, 999)), "19-Nov-26");
    EXPECT_EQ(newest(QTime(16, 0)), "20-Nov-26");
    EXPECT_EQ(newest(QTime(23, 59, 59, 999)), "20-Nov-26");
}

TEST(PracticeDailyPrices, GiveTheSameDayTheSameRowWheneverItIsAskedFor)
{
    const QString row = DailyRows(DailyPage("BRWK", Friday, Friday)).value(0);
    ASSERT_FALSE(row.isEmpty());
    for (const int daysLater : {1, 3, 40, 1000})
        EXPECT_EQ(DailyRows(DailyPage("BRWK", Friday, Friday, Evening.addDays(daysLater))),
                  QStringList(row));
    EXPECT_EQ(DailyRows(DailyPage("BRWK", Friday.addDays(-300), Friday.addDays(300))).value(0),
              row);
}

TEST(PracticeDailyPrices, TakeTheSymbolWithItsBlanks)
{
    EXPECT_EQ(DailyRows(DailyPage("BRWK%20%20%20%20%20%20", Friday, Friday)),
              DailyRows(DailyPage("BRWK", Friday, Friday)));
    EXPECT_EQ(DailyRows(DailyPage("BRWK      ", Friday, Friday)).size(), 1);
}

TEST(PracticeDailyPrices, HaveNoRowsOfAnUnknownSymbol)
{
    for (const char *symbol : {"ZZZZ", "", "%3Cb%3E", "ELEVENCHARS"}) {
        const QString page = DailyPage(symbol, Friday.addDays(-30), Friday);
        EXPECT_EQ(DailyRows(page), QStringList()) << symbol;
        EXPECT_FALSE(page.contains(QLatin1String("<b>"))) << symbol;
    }
}

TEST(PracticeDailyPrices, HaveNoRowsOfARangeThatIsNone)
{
    EXPECT_EQ(DailyRows(DailyPage("BRWK", Friday, Friday.addDays(-1))), QStringList());
    for (const char *range :
         {"", "a=10&b=2&c=2026&", "a=1&b=30&c=2026&d=10&e=20&f=2026&",
          "a=12&b=1&c=2025&d=10&e=20&f=2026&", "a=-1&b=1&c=2026&d=10&e=20&f=2026&",
          "a=x&b=y&c=z&d=10&e=20&f=2026&", "a=0&b=1&c=99999999999&d=10&e=20&f=2026&"})
        EXPECT_EQ(DailyRows(Page(QStringLiteral("/d?") + range + QStringLiteral("g=d&s=BRWK"))),
                  QStringList())
            << range;
}

TEST(PracticeDailyPrices, ReachBackTenYearsAtMost)
{
    const QString page = DailyPage("BRWK", QDate(1, 1, 1), QDate(9999, 12, 31));
    EXPECT_EQ(DailyRows(page).size(), 2610);
    EXPECT_EQ(Days(page).first(), "20-Nov-26");
    EXPECT_LT(page.size(), 1024 * 1024);
}

TEST(PracticeDailyPrices, KnowLeapDays)
{
    EXPECT_EQ(Days(DailyPage("BRWK", QDate(2024, 2, 28), QDate(2024, 3, 1))),
              (QStringList{"01-Mar-24", "29-Feb-24", "28-Feb-24"}));
}

TEST(PracticeDailyPrices, TellAYearThatTwoDigitsWouldMistakeInFull)
{
    const QDateTime later(QDate(2031, 6, 30), QTime(20, 0));
    EXPECT_EQ(Days(DailyPage("BRWK", later.date(), later.date(), later)),
              QStringList("30-Jun-2031"));
}

TEST(PracticeDailyPrices, AreEnglishInEveryLocale)
{
    const QString english = DailyPage("TARN45", Friday.addDays(-30), Friday);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(DailyPage("TARN45", Friday.addDays(-30), Friday), english);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

TEST(PracticeDailyPrices, ReadAsThePricesOfTheWalk)
{
    for (const QDate today : {Friday, QDate(2028, 2, 29), QDate(2031, 6, 30)}) {
        for (const char *symbol : {"BRWK", ".PRX", "GRNVX", "TARN45", "ARLNC90"}) {
            const QDateTime now(today, QTime(20, 0));
            HistoricalPage page(DailyPage(symbol, today.addDays(-90), today, now), symbol, today);
            QDate day = today;
            int rows = 0;
            while (page.FindCell()) {
                if (!page.ReadRow())
                    continue;
                const HistPrice &row = page.Row();
                const PracticeDay prices = PracticePricesOf(symbol, day).value();
                ASSERT_EQ(row.PriceDate, day) << symbol;
                EXPECT_EQ(row.PriceOpen, prices.Open);
                EXPECT_EQ(row.DayHigh, prices.High);
                EXPECT_EQ(row.DayLow, prices.Low);
                EXPECT_EQ(row.PriceClose, prices.Close);
                EXPECT_EQ(row.Volume, prices.Volume);
                EXPECT_EQ(row.AdjClose, prices.Close);
                day = LatestWeekday(day.addDays(-1));
                ++rows;
            }
            EXPECT_GE(rows, 64) << symbol;
        }
    }
}

// --- the chart of the day ------------------------------------------------------------------------

namespace
{

int PointsOf(const QString &page)
{
    const QStringList lines = Captures(page, QStringLiteral("<polyline[^>]* points=\"([^\"]*)\""));
    EXPECT_LE(lines.size(), 1);
    return lines.isEmpty() ? 0 : int(lines.first().split(u' ').size());
}

} // namespace

TEST(PracticeChart, DrawsALineFromTheOpenUntilNow)
{
    EXPECT_EQ(PointsOf(Page("/q?s=BRWK", {Friday, QTime(9, 30)})), 1);
    EXPECT_EQ(PointsOf(Page("/q?s=BRWK", {Friday, QTime(9, 31)})), 2);
    EXPECT_EQ(PointsOf(Page("/q?s=BRWK", Noon)), 151);
    EXPECT_EQ(PointsOf(Page("/q?s=BRWK", Evening)), 391);
    EXPECT_EQ(PointsOf(Page("/q?s=BRWK", {Friday, QTime(22, 0)})), 391);
}

TEST(PracticeChart, ShowsTheWholeDayBeforeWhenTodayHasNoPricesYet)
{
    const struct
    {
        QDateTime now;
        const char *day;
    } cases[] = {{{Friday, QTime(9, 29)}, "Thursday, November 19, 2026, at the close"},
                 {{QDate(2026, 11, 16), QTime(0, 0)}, "Friday, November 13, 2026, at the close"},
                 {{Friday.addDays(1), QTime(12, 0)}, "Friday, November 20, 2026, at the close"},
                 {{Friday.addDays(2), QTime(23, 0)}, "Friday, November 20, 2026, at the close"},
                 {Evening, "Friday, November 20, 2026, at the close"},
                 {Noon, "Friday, November 20, 2026, 12:00"}};
    for (const auto &[now, day] : cases) {
        const QString page = Page("/q?s=BRWK", now);
        EXPECT_TRUE(page.contains(QLatin1String(day))) << day;
        EXPECT_EQ(PointsOf(page), now == Noon ? 151 : 391) << day;
    }
}

TEST(PracticeChart, NamesSymbolPriceAndTimes)
{
    const QString page = Page("/q?s=BRWK&d=c&k=c1&a=v&p=s&t=1d&l=on&z=m&q=l");
    for (const char *text : {"<title>BRWK - Practice (simulated)</title>", ">9:30<", ">16:00<"})
        EXPECT_TRUE(page.contains(QLatin1String(text))) << text;
    EXPECT_TRUE(page.contains(QString::fromStdString("<b>" + WalkPrice("BRWK", Noon) + "</b>")));
}

TEST(PracticeChart, WithoutASymbolSaysWhatToDo)
{
    for (const char *address : {"/q?s=", "/q?s=%20%20", "/q", "/q?s=&d=c"}) {
        const QString page = Page(address);
        EXPECT_TRUE(page.contains(QLatin1String("Choose a row in the Daily Tracker"))) << address;
        EXPECT_EQ(PointsOf(page), 0) << address;
    }
}

TEST(PracticeChart, OfAnUnknownSymbolSaysSo)
{
    const QString page = Page("/q?s=%3Ci%3EZZ");
    EXPECT_TRUE(page.contains(QLatin1String("has no security &lt;i&gt;ZZ.")));
    EXPECT_FALSE(page.contains(QLatin1String("<i>")));
    EXPECT_EQ(PointsOf(page), 0);
}

TEST(PracticeChart, HasRoundPricesBesideItForEveryKindOfSecurity)
{
    for (const char *symbol : {"BRWK", ".PRX", "GRNVX", "TARN45", "ARLNC90"}) {
        for (const QTime time : {QTime(9, 30), QTime(10, 0), QTime(16, 0)}) {
            const QStringList prices =
                Captures(Page(QStringLiteral("/q?s=") + symbol, {Friday, time}),
                         QStringLiteral("text-anchor=\"end\"[^>]*>([^<]*)<"));
            EXPECT_GE(prices.size(), 3) << symbol;
            EXPECT_LE(prices.size(), 11) << symbol;
            EXPECT_EQ(QSet<QString>(prices.begin(), prices.end()).size(), prices.size()) << symbol;
        }
    }
}

// --- the map of the market -----------------------------------------------------------------------

TEST(PracticeMap, HasATileForEachOfAFewDozenCompanies)
{
    const QStringList symbols =
        Captures(Page("/marketmap/"), QStringLiteral("href=\"/q\\?s=(\\w+)\""));
    EXPECT_GE(symbols.size(), 24);
    EXPECT_EQ(QSet<QString>(symbols.begin(), symbols.end()).size(), symbols.size());
    for (const QString &symbol : symbols)
        EXPECT_TRUE(IsPracticeSymbol(symbol)) << symbol.toStdString();
}

TEST(PracticeMap, FillsItsPictureWithTilesThatDoNotOverlap)
{
    std::vector<QRectF> tiles;
    double area = 0;
    QRegularExpressionMatchIterator matches =
        QRegularExpression("<rect x=\"(.*?)\" y=\"(.*?)\" width=\"(.*?)\" height=\"(.*?)\"")
            .globalMatch(Page("/marketmap/"));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QRectF tile(match.captured(1).toDouble(), match.captured(2).toDouble(),
                          match.captured(3).toDouble(), match.captured(4).toDouble());
        EXPECT_TRUE(QRectF(0, 0, 1200, 640).contains(tile));
        EXPECT_GT(std::min(tile.width(), tile.height()), 24);
        for (const QRectF &other : tiles)
            EXPECT_FALSE(tile.intersects(other));
        area += tile.width() * tile.height();
        tiles.push_back(tile);
    }
    EXPECT_GT(area, 0.8 * 1200 * 640); // the rest are names of sectors and gaps
}

TEST(PracticeMap, TellsTheChangeSinceTheCloseBefore)
{
    const double before = PracticePricesOf("BRWK", Friday.addDays(-1)).value().Close.ToDouble();
    const double change = (PracticePriceAt("BRWK", Noon).ToDouble() / before - 1) * 100;
    const QString text = QString::number(std::fabs(change), 'f', 2);
    const QString tile =
        Page("/marketmap/").section(QLatin1String("s=BRWK\""), 1).section("</a>", 0, 0);
    EXPECT_TRUE(tile.contains((change < 0 ? u'-' : u'+') + text + u'%')) << tile.toStdString();
}

// --- version and pages of the maker --------------------------------------------------------------

TEST(PracticeVersionFile, NamesTheVersionThatRuns)
{
    EXPECT_TRUE(
        Page("/version.xml").contains(QLatin1String("<Program_Version>6.0.18</Program_Version>")));
    EXPECT_EQ(VersionTextOf(Page("/version.xml")), ProgramVersion().Dotted());
    EXPECT_FALSE(Page("/version.xml").contains(QLatin1String("Not Found")));
}

TEST(PracticeVersionFile, PlaysAnotherVersionWhenItsAddressNamesOne)
{
    EXPECT_EQ(VersionTextOf(Page("/version.xml?number=6.1.0")), "6.1.0");
    for (const char *noNumber : {"", "new", "6.1<br>"})
        EXPECT_EQ(VersionTextOf(Page(QStringLiteral("/version.xml?number=%1").arg(noNumber))),
                  ProgramVersion().Dotted())
            << noNumber;
}

TEST(PracticeDownloads, TellTheVersionAndLeadToTheOtherPage)
{
    EXPECT_TRUE(Page("/Downloads.html").contains(ProgramVersion().Dotted()));
    EXPECT_TRUE(Page("/VersionChanges.html").contains(ProgramVersion().Dotted()));
    for (const QString &link : Captures(Page("/Downloads.html") + Page("/VersionChanges.html"),
                                        QStringLiteral("href=\"([^\"]*)\"")))
        EXPECT_TRUE(MakePracticePage(link, {}, Noon)) << link.toStdString();
}
