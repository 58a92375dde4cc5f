#include "marketdata/chart_page.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QTimeZone>
#include <QUrl>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <optional>

namespace
{

struct ChartDay
{
    double open, high, low, close, volume, adjClose;
};

/// A price that money can hold; nothing for null and whatever else is none.
std::optional<double> PriceOf(const QJsonValue &value)
{
    constexpr double Beyond = 9e14;
    if (!value.isDouble() || !(std::fabs(value.toDouble()) < Beyond))
        return std::nullopt;
    return value.toDouble();
}

double VolumeOf(const QJsonValue &value)
{
    constexpr double Largest = std::numeric_limits<qint32>::max();
    return std::clamp(value.toDouble(0), 0.0, Largest);
}

/// The lists that the reply keeps, one value for each timestamp.
class ChartReply
{
public:
    explicit ChartReply(const QJsonObject &result)
        : m_timestamps(result.value(QLatin1String("timestamp")).toArray())
    {
        const QJsonObject meta = result.value(QLatin1String("meta")).toObject();
        m_offset = meta.value(QLatin1String("gmtoffset")).toInteger();
        const QByteArray zone =
            meta.value(QLatin1String("exchangeTimezoneName")).toString().toLatin1();
        if (!zone.isEmpty()) // which would be a zone, too
            m_zone = QTimeZone(zone);
        const QJsonObject indicators = result.value(QLatin1String("indicators")).toObject();
        m_quote = FirstOf(indicators, QLatin1String("quote"));
        m_adjClose = FirstOf(indicators, QLatin1String("adjclose"))
                         .value(QLatin1String("adjclose"))
                         .toArray();
    }

    qsizetype Count() const { return m_timestamps.size(); }

    /// Invalid before 1970, whose years two digits cannot tell.
    QDate DayAt(qsizetype index) const
    {
        constexpr qint64 Latest = 253402300799; // 9999-12-31
        const qint64 seconds = m_timestamps[index].toInteger(-1);
        if (seconds < 0 || seconds > Latest || std::abs(m_offset) > 24 * 60 * 60)
            return QDate();
        // Daily stamps of futures and currencies are midnight at the exchange: an hour off is a day off.
        if (m_zone.isValid())
            return QDateTime::fromSecsSinceEpoch(seconds, m_zone).date();
        return QDateTime::fromSecsSinceEpoch(seconds + m_offset, Qt::UTC).date();
    }

    std::optional<ChartDay> PricesAt(qsizetype index) const
    {
        const auto price = [&](QLatin1String name) {
            return PriceOf(m_quote.value(name).toArray().at(index));
        };
        const std::optional<double> open = price(QLatin1String("open"));
        const std::optional<double> high = price(QLatin1String("high"));
        const std::optional<double> low = price(QLatin1String("low"));
        const std::optional<double> close = price(QLatin1String("close"));
        if (!open || !high || !low || !close)
            return std::nullopt;
        return ChartDay{*open,
                        *high,
                        *low,
                        *close,
                        VolumeOf(m_quote.value(QLatin1String("volume")).toArray().at(index)),
                        PriceOf(m_adjClose.at(index)).value_or(*close)};
    }

private:
    static QJsonObject FirstOf(const QJsonObject &indicators, QLatin1String name)
    {
        return indicators.value(name).toArray().at(0).toObject();
    }

    QJsonArray m_timestamps;
    qint64 m_offset = 0; ///< of today, in seconds; for a zone that this machine does not know
    QTimeZone m_zone;    ///< of the exchange
    QJsonObject m_quote;
    QJsonArray m_adjClose;
};

QString Cell(const QString &text)
{
    return QStringLiteral("<td><nobr>%1</nobr></td>").arg(text);
}

QString Price(double value)
{
    return QString::number(value, 'f', 4);
}

QString Row(QDate date, const ChartDay &day)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    return QStringLiteral("<tr>") + Cell(english.toString(date, QStringLiteral("d-MMM-yy"))) +
           Cell(Price(day.open)) + Cell(Price(day.high)) + Cell(Price(day.low)) +
           Cell(QStringLiteral("<b>%1</b>").arg(Price(day.close))) +
           Cell(english.toString(qint64(std::llround(day.volume)))) + Cell(Price(day.adjClose)) +
           QStringLiteral("</tr>\n");
}

} // namespace

QString ChartQuery(const HistoricalRequest &request)
{
    const auto seconds = [](QDate day) { return day.startOfDay(Qt::UTC).toSecsSinceEpoch(); };
    const QByteArray symbol = QUrl::toPercentEncoding(request.symbol.trimmed());
    return QStringLiteral(
               "/v8/finance/chart/%1?period1=%2&period2=%3&interval=1d&events=div,splits")
        .arg(QString::fromLatin1(symbol), QString::number(seconds(request.RangeStart)),
             QString::number(seconds(request.RangeEnd.addDays(1))));
}

QString TablePageOfChart(const QByteArray &reply)
{
    const QJsonObject result = QJsonDocument::fromJson(reply)
                                   .object()
                                   .value(QLatin1String("chart"))
                                   .toObject()
                                   .value(QLatin1String("result"))
                                   .toArray()
                                   .at(0)
                                   .toObject();
    const ChartReply chart(result);
    std::map<QDate, ChartDay, std::greater<>> days;
    for (qsizetype index = 0; index < chart.Count(); ++index) {
        const QDate date = chart.DayAt(index);
        const std::optional<ChartDay> day = chart.PricesAt(index);
        if (date.isValid() && day)
            days[date] = *day;
    }

    QString page = QStringLiteral("<html><head><title>Daily prices</title></head><body>\n"
                                  "<table border=\"1\">\n<tr>");
    for (const char *heading : {"Date", "Open", "High", "Low", "Close", "Volume", "Adj. Close"})
        page += Cell(QString::fromUtf8(heading));
    page += QStringLiteral("</tr>\n");
    for (const auto &[date, day] : days)
        page += Row(date, day);
    return page + QStringLiteral("</table></body></html>\n");
}
