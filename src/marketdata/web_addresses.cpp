#include "marketdata/web_addresses.h"

#include <QFile>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace
{

const QLatin1String Practice("{practice}");

/// "https://host:port" of "https://host:port/path?query". A placeholder is its own origin.
QString OriginOf(const QString &address)
{
    if (address.startsWith(Practice))
        return Practice;
    const QUrl url(address);
    if (url.scheme().isEmpty() || url.host().isEmpty())
        return {};
    return url
        .adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery |
                  QUrl::RemoveFragment)
        .toString();
}

} // namespace

WebAddresses WebAddresses::Load(const QString &appPath)
{
    WebAddresses addresses;
    QFile file(appPath + QStringLiteral("/WebLinks.json"));
    if (!file.open(QIODevice::ReadOnly))
        return addresses;
    const QJsonObject entries = QJsonDocument::fromJson(file.readAll()).object();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        addresses.m_addresses.insert(entry.key(), entry.value().toString().trimmed());
    return addresses;
}

QString WebAddresses::Link(const QString &entry) const
{
    return entry.startsWith(QLatin1String("mnu")) ? m_addresses.value(entry) : QString();
}

QString WebAddresses::MarketMap(const QuoteSite &site) const
{
    const QString origin = HostFor(site, OriginOf(Link(QStringLiteral("mnuIntSmartMoney"))));
    return origin.isEmpty() ? origin : origin + QStringLiteral("/marketmap/");
}

QString WebAddresses::IntradayChart(const QuoteSite &site, const QString &symbol) const
{
    const QString origin = HostFor(site, Host(QStringLiteral("intradayChart")));
    if (origin.isEmpty())
        return origin;
    // A symbol may hold what would end its place in the query.
    return origin + QStringLiteral("/q?s=") +
           QString::fromUtf8(QUrl::toPercentEncoding(symbol, "^=$*:@!'(),;/")) +
           QStringLiteral("&d=c&k=c1&a=v&p=s&t=1d&l=on&z=m&q=l");
}

QString WebAddresses::VersionFile() const
{
    return m_addresses.value(QStringLiteral("versionFile"));
}

QString WebAddresses::Downloads() const
{
    return OfMaker(QStringLiteral("/Downloads.html"));
}

QString WebAddresses::VersionChanges() const
{
    return OfMaker(QStringLiteral("/VersionChanges.html"));
}

QString WebAddresses::DailyPriceHost(const QuoteSite &site) const
{
    return HostFor(site, Host(QStringLiteral("dailyPrices")));
}

QString WebAddresses::DailyPriceFormat(const QuoteSite &site) const
{
    return LoopbackOrigin(site.BegWebAddress).isEmpty()
               ? m_addresses.value(QStringLiteral("dailyPricesFormat"))
               : QStringLiteral("table");
}

QString WebAddresses::Host(const QString &name) const
{
    QString host = m_addresses.value(name);
    while (host.endsWith(u'/'))
        host.chop(1);
    return host;
}

QString WebAddresses::HostFor(const QuoteSite &site, const QString &elsewhere) const
{
    const QString own = LoopbackOrigin(site.BegWebAddress);
    return own.isEmpty() ? elsewhere : own;
}

QString WebAddresses::OfMaker(const QString &page) const
{
    const QString host = Host(QStringLiteral("makerSite"));
    return host.isEmpty() ? host : host + page;
}

bool IsPracticeEntry(const QString &address)
{
    return address.startsWith(Practice);
}

QString ResolveAddress(const QString &address, PracticeServer &server)
{
    return address.startsWith(Practice) ? server.Origin() + address.mid(Practice.size()) : address;
}

QString LoopbackOrigin(const QString &address)
{
    const QUrl url(address.trimmed());
    if (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https"))
        return {};
    const bool isLoopback =
        url.host() == QLatin1String("localhost") || QHostAddress(url.host()).isLoopback();
    return isLoopback ? OriginOf(url.toString()) : QString();
}
