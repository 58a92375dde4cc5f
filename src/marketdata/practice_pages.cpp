#include "marketdata/practice_pages.h"

#include "base/formats.h"
#include "marketdata/practice_walk.h"
#include "store/settings.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{

/// So long that who looks for a symbol that is not in the page has read none of its prices before
/// he gives up.
const char Notice[] =
    "These prices are simulated. They are made by the program itself on this machine, for practice "
    "and for tests, and belong to no market. ";

/// No range asked for gives a longer page: ten years.
constexpr int MostRows = 2610;

const Formats &Plain()
{
    static const Formats formats{QLocale::c()};
    return formats;
}

QString PriceText(Currency price)
{
    return Plain().Format(price, u"#,##0.00");
}

/// "20-Nov-26"; years that two digits do not tell have all four.
QString DayText(QDate day)
{
    const bool isNear = day.year() >= 1930 && day.year() <= 2029;
    return Plain().FormatDate(day, isNear ? u"dd-mmm-yy" : u"dd-mmm-yyyy");
}

QString QuotesPage(const QStringList &symbols, const QDateTime &now)
{
    QString page = QStringLiteral("<!DOCTYPE html>\n"
                                  "<html><head><meta charset=\"utf-8\">"
                                  "<title>Practice quotes (simulated)</title></head>\n"
                                  "<body>\n<!-- %1-->\n"
                                  "<h1>Practice quotes (simulated)</h1>\n<table>\n")
                       .arg(QString::fromUtf8(Notice).repeated(3));
    for (const QString &symbol : symbols) {
        const QString price = IsPracticeSymbol(symbol) ? PriceText(PracticePriceAt(symbol, now))
                                                       : QStringLiteral("N/A");
        page += QStringLiteral("<tr><td class=\"sym\">") + EscapedForHtml(symbol) +
                QStringLiteral("</td><td class=\"last\">") + price + QStringLiteral("</td></tr>\n");
    }
    return page + QStringLiteral("</table>\n</body></html>\n");
}

QString TableRow(const QStringList &cells)
{
    QString row = QStringLiteral("<tr>");
    for (const QString &cell : cells)
        row += QStringLiteral("<td><nobr>") + cell + QStringLiteral("</nobr></td>");
    return row + QStringLiteral("</tr>\n");
}

QString DailyPricesPage(const QString &symbol, QDate from, QDate to, const QDateTime &now)
{
    QString rows;
    // A day has its row only when its prices are settled, so that a row never changes.
    const QDate settled = now.time() < PracticeClose() ? now.date().addDays(-1) : now.date();
    const bool hasRows = IsPracticeSymbol(symbol) && from.isValid() && to.isValid();
    int count = 0;
    for (QDate day = std::min(to, settled); hasRows && day >= from && count < MostRows;
         day = day.addDays(-1)) {
        const std::optional<PracticeDay> prices = PracticePricesOf(symbol, day);
        if (!prices)
            continue;
        const QString close = PriceText(prices->Close);
        rows += TableRow({DayText(day), PriceText(prices->Open), PriceText(prices->High),
                          PriceText(prices->Low), QStringLiteral("<b>%1</b>").arg(close),
                          Plain().Format(prices->Volume, u"#,##0"), close});
        ++count;
    }
    return QStringLiteral("<html><head><meta charset=\"utf-8\">"
                          "<title>Practice: daily prices (simulated)</title></head><body>\n"
                          "<h1>Practice: daily prices of %1 (simulated)</h1>\n"
                          "<table border=\"1\">\n")
               .arg(EscapedForHtml(symbol)) +
           TableRow({QStringLiteral("Date"), QStringLiteral("Open"), QStringLiteral("High"),
                     QStringLiteral("Low"), QStringLiteral("Close"), QStringLiteral("Volume"),
                     QStringLiteral("Adj. Close")}) +
           rows + QStringLiteral("</table></body></html>\n");
}

/// Year, month (from 0) and day of the query's items with these names.
QDate DateOfQuery(const QUrlQuery &query, const char *year, const char *month, const char *day)
{
    const auto number = [&](const char *name) {
        return query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded).trimmed().toInt();
    };
    const int monthFromZero = number(month);
    return monthFromZero >= 0 && monthFromZero < 12
               ? QDate(number(year), monthFromZero + 1, number(day))
               : QDate();
}

/// "/version.xml?number=6.1.0" plays a newer version, so that the notice of it can be looked at.
QString VersionPage(const QUrlQuery &query)
{
    const QString number = query.queryItemValue(QStringLiteral("number"));
    static const QRegularExpression dotted(QStringLiteral("^[0-9.]+$"));
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<!-- Practice: the version of the program that serves this file. -->\n"
                          "<Quillon>\n<Program_Version>%1</Program_Version>\n</Quillon>\n")
        .arg(dotted.match(number).hasMatch() ? number : ProgramVersion().Dotted());
}

QString DownloadsPage()
{
    return PracticeHtml(
        QStringLiteral("Practice: downloads"),
        QStringLiteral(
            "<p>This page is made by the program itself, on this machine. Nothing can be "
            "downloaded "
            "here.</p>\n"
            "<p>You are running Quillon %1. New versions of it come from where you got this copy: "
            "your distribution's packages, or the people who gave it to you.</p>\n"
            "<p>Who packages Quillon can put the address of a real page in place of this one, in "
            "the "
            "file WebLinks.json beside the program.</p>\n"
            "<p><a href=\"/VersionChanges.html\">Changes by version</a></p>\n")
            .arg(ProgramVersion().Dotted()));
}

QString VersionChangesPage()
{
    return PracticeHtml(
        QStringLiteral("Practice: changes by version"),
        QStringLiteral(
            "<p>This page is made by the program itself, on this machine. It knows of one "
            "version only: Quillon %1, the one that you are running.</p>\n"
            "<p>What changed in other versions is told where you got this copy.</p>\n"
            "<p><a href=\"/Downloads.html\">Downloads</a></p>\n")
            .arg(ProgramVersion().Dotted()));
}

} // namespace

bool IsPracticeSymbol(const QString &symbol)
{
    const QString name = symbol.trimmed();
    const auto isKnown = [](QChar c) {
        return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') ||
               c == u'.' || c == u'-' || c == u'^' || c == u'=';
    };
    return !name.isEmpty() && name.size() <= 10 && std::all_of(name.begin(), name.end(), isKnown) &&
           !name.startsWith(QLatin1String("ZZ"), Qt::CaseInsensitive);
}

PracticeSession SessionAt(const QDateTime &now)
{
    const QDate latest = LatestWeekday(now.date());
    if (latest != now.date())
        return {latest, PracticeClose()};
    if (now.time() < PracticeOpen())
        return {LatestWeekday(latest.addDays(-1)), PracticeClose()};
    return {latest, std::min(now.time(), PracticeClose())};
}

QString EscapedForHtml(const QString &text)
{
    QString escaped = text.toHtmlEscaped();
    escaped.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    return escaped;
}

QString PracticeHtml(const QString &title, const QString &body)
{
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
                          "<meta name=\"viewport\" "
                          "content=\"width=device-width\">\n<title>%1</title>\n<style>\n"
                          ":root { color-scheme: light dark; --line: #1f5fbf; --grid: #d5dae2; "
                          "--soft: #5a6472; }\n"
                          "@media (prefers-color-scheme: dark) {\n"
                          ":root { --line: #7db1ff; --grid: #3a4250; --soft: #a3adbb; } }\n"
                          "body { font-family: sans-serif; margin: 16px; }\n"
                          "h1 { font-size: 1.3em; margin: 0 0 4px 0; }\n"
                          "p { margin: 4px 0 10px 0; max-width: 60em; }\n"
                          ".soft { color: var(--soft); }\n"
                          "svg { width: 100%; max-height: 84vh; }\n"
                          "</style></head>\n<body>\n<h1>%1</h1>\n")
               .replace(QStringLiteral("%1"), title) +
           body + QStringLiteral("</body></html>\n");
}

std::optional<PracticePage> MakePracticePage(const QString &path, const QUrlQuery &query,
                                             const QDateTime &now)
{
    const QString symbols = query.queryItemValue(QStringLiteral("s"), QUrl::FullyDecoded);
    const auto html = [](const QString &text) {
        return PracticePage{text, QByteArrayLiteral("text/html; charset=utf-8")};
    };
    if (path == QLatin1String("/quotes")) {
        QStringList names;
        for (const QString &part : QString(symbols).replace(u'+', u',').split(u','))
            if (!part.trimmed().isEmpty())
                names << part.trimmed();
        return html(QuotesPage(names, now));
    }
    if (path == QLatin1String("/d"))
        return html(DailyPricesPage(symbols.trimmed(), DateOfQuery(query, "c", "a", "b"),
                                    DateOfQuery(query, "f", "d", "e"), now));
    if (path == QLatin1String("/q"))
        return html(IntradayChartPage(symbols.trimmed(), now));
    if (path == QLatin1String("/marketmap/"))
        return html(MarketMapPage(now));
    if (path == QLatin1String("/version.xml"))
        return PracticePage{VersionPage(query), QByteArrayLiteral("text/xml; charset=utf-8")};
    if (path == QLatin1String("/Downloads.html"))
        return html(DownloadsPage());
    if (path == QLatin1String("/VersionChanges.html"))
        return html(VersionChangesPage());
    return std::nullopt;
}

PracticePage PracticePageNotFound()
{
    return {PracticeHtml(QStringLiteral("Practice: Not Found"),
                         QStringLiteral("<p>The practice market has no such page.</p>\n")),
            QByteArrayLiteral("text/html; charset=utf-8")};
}
