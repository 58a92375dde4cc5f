#pragma once

/// A service of daily prices for tests: it has a market of weekdays for each symbol, and makes the
/// table page for what it is asked, as a service does: newest day first, with headings.
///
///     market.Trade("ACME", QDate(2026, 1, 1), QDate(2026, 3, 2));
///     GetHistoricalPrices(work, entries);
///     market.Requests()          {"ACME      |2025-12-30|2026-03-02", ...}

#include "marketdata/historical_source.h"

#include <QLocale>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// A page cell by cell.
class TablePage
{
public:
    TablePage &Cells(const QStringList &texts)
    {
        m_text += QStringLiteral("<tr>");
        for (const QString &text : texts)
            m_text += QStringLiteral("<td><nobr>%1</nobr></td>").arg(text);
        m_text += QStringLiteral("</tr>\n");
        return *this;
    }
    TablePage &Header()
    {
        return Cells({QStringLiteral("Date"), QStringLiteral("Open"), QStringLiteral("High"),
                      QStringLiteral("Low"), QStringLiteral("Close"), QStringLiteral("Volume"),
                      QStringLiteral("Adj. Close")});
    }
    /// A day whose prices lie around `close`.
    TablePage &Day(QDate day, double close, const QString &volume = QStringLiteral("1,000"))
    {
        const auto price = [](double value) { return QString::number(value, 'f', 2); };
        return Cells({DayText(day), price(close - 1), price(close + 2), price(close - 2),
                      QStringLiteral("<b>%1</b>").arg(price(close)), volume, price(close)});
    }
    QString Text() const
    {
        return QStringLiteral("<html><head><title>Daily prices</title></head><body>\n"
                              "<table>\n%1</table></body></html>\n")
            .arg(m_text);
    }
    static QString DayText(QDate day)
    {
        return QLocale(QLocale::English, QLocale::UnitedStates)
            .toString(day, QStringLiteral("d-MMM-yy"));
    }

private:
    QString m_text;
};

class HistoricalMarket : public HistoricalSource
{
public:
    /// The symbol is traded on every weekday from `first` to `last`, at `close`.
    void Trade(const QString &symbol, QDate first, QDate last, double close = 50)
    {
        for (QDate day = first; day <= last; day = day.addDays(1))
            if (day.dayOfWeek() <= 5)
                m_closes[symbol][day] = close;
    }

    /// What was asked since the last call.
    std::vector<std::string> Requests() { return std::exchange(m_requests, {}); }

    std::function<void(const HistoricalRequest &)> OnRequest;
    /// Answers every request instead of the market.
    std::function<QString(const HistoricalRequest &)> Answer;

    QString FetchTable(Inet &, const HistoricalRequest &request) override
    {
        m_requests.push_back((request.symbol + QLatin1Char('|') +
                              request.RangeStart.toString(Qt::ISODate) + QLatin1Char('|') +
                              request.RangeEnd.toString(Qt::ISODate))
                                 .toStdString());
        if (OnRequest)
            OnRequest(request);
        return Answer ? Answer(request) : Page(request);
    }

private:
    QString Page(const HistoricalRequest &request) const
    {
        TablePage page;
        page.Header();
        const auto found = m_closes.find(request.symbol.trimmed());
        if (found != m_closes.end())
            for (auto day = found->second.rbegin(); day != found->second.rend(); ++day)
                if (day->first >= request.RangeStart && day->first <= request.RangeEnd)
                    page.Day(day->first, day->second);
        return page.Text();
    }

    std::map<QString, std::map<QDate, double>> m_closes;
    std::vector<std::string> m_requests;
};
