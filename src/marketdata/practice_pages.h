#pragma once

/// The pages of the practice market, as texts (practice_server.h serves them). They follow from the
/// request and the moment alone, and each says that it is simulated.

#include <QDateTime>
#include <QString>
#include <QUrlQuery>

#include <optional>

struct PracticePage
{
    QString text;
    QByteArray mimeType;
};

/// The page at this path ("/quotes"); nothing for a path that there is not. A query may be anything:
/// what is missing or makes no sense gives a page with less on it.
std::optional<PracticePage> MakePracticePage(const QString &path, const QUrlQuery &query,
                                             const QDateTime &now);
PracticePage PracticePageNotFound();

/// Whether the practice market has this symbol, blanks around it aside: one to ten letters and
/// digits of the English alphabet, ".", "-", "^" and "="; nothing that begins with "ZZ".
bool IsPracticeSymbol(const QString &symbol);

/// The day that a chart shows, and how far it has come: today from the open on, before that and on
/// weekends the whole weekday before.
struct PracticeSession
{
    QDate day;
    QTime until;

    QDateTime Moment() const { return QDateTime(day, until); }
};
PracticeSession SessionAt(const QDateTime &now);

/// practice_drawings.cpp
QString IntradayChartPage(const QString &symbol, const QDateTime &now);
QString MarketMapPage(const QDateTime &now);

/// A page with the common head. `title` and `body` are HTML.
QString PracticeHtml(const QString &title, const QString &body);
/// The text as it may stand in HTML, without characters that no text has.
QString EscapedForHtml(const QString &text);
