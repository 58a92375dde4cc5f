#include "marketdata/historical_source.h"

#include "marketdata/chart_page.h"

namespace
{

class TableSource : public HistoricalSource
{
public:
    explicit TableSource(const QString &host) : m_host(host) {}

    QString FetchTable(Inet &inet, const HistoricalRequest &request) override
    {
        // As they are, the blanks at its end would be cut off the address.
        const QString page = inet.OpenURL(
            m_host + HistoricalQuery(request).replace(QLatin1Char(' '), QLatin1String("%20")));
        const bool isCut =
            !inet.EndIsCertain() && !page.contains(QLatin1String("</table"), Qt::CaseInsensitive);
        return isCut ? QString() : page;
    }

private:
    QString m_host;
};

class ChartSource : public HistoricalSource
{
public:
    explicit ChartSource(const QString &host) : m_host(host) {}

    QString FetchTable(Inet &inet, const HistoricalRequest &request) override
    {
        const QString reply = inet.OpenURL(m_host + ChartQuery(request));
        return reply.isEmpty() ? QString() : TablePageOfChart(reply.toUtf8());
    }

private:
    QString m_host;
};

/// An installation whose file of addresses names no service that we know how to ask.
class NoSource : public HistoricalSource
{
public:
    QString FetchTable(Inet &, const HistoricalRequest &) override { return QString(); }
};

/// The symbol keeps its blanks; only what would end or change it in an address is escaped.
QString EscapedSymbol(const QString &symbol)
{
    QString escaped;
    for (const QChar character : symbol) {
        if (QStringLiteral("%&#+").contains(character))
            escaped += QLatin1Char('%') + QString::number(character.unicode(), 16).toUpper();
        else
            escaped += character;
    }
    return escaped;
}

} // namespace

QString HistoricalQuery(const HistoricalRequest &request)
{
    const auto date = [](char month, char day, char year, QDate value) {
        return QStringLiteral("%1=%2&%3=%4&%5=%6&")
            .arg(QLatin1Char(month))
            .arg(value.month() - 1)
            .arg(QLatin1Char(day))
            .arg(value.day())
            .arg(QLatin1Char(year))
            .arg(value.year());
    };
    return QStringLiteral("/d?") + date('a', 'b', 'c', request.RangeStart) +
           date('d', 'e', 'f', request.RangeEnd) + QStringLiteral("g=d&s=") +
           EscapedSymbol(request.symbol);
}

std::unique_ptr<HistoricalSource> MakeHistoricalSource(const QString &host, const QString &format)
{
    if (host.isEmpty())
        return std::make_unique<NoSource>();
    if (format == QLatin1String("table"))
        return std::make_unique<TableSource>(host);
    if (format == QLatin1String("chart-v8"))
        return std::make_unique<ChartSource>(host);
    return std::make_unique<NoSource>();
}
