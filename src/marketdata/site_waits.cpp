#include "marketdata/site_waits.h"

#include "platform/inet.h"

#include <QUrl>

#include <algorithm>

namespace
{

QString OriginOf(const QString &address)
{
    const QUrl url(address.trimmed());
    return url.scheme() + QLatin1String("://") + url.authority();
}

} // namespace

bool SiteWaits::Note(const Inet &inet, const QString &address, const QDateTime &now)
{
    constexpr qint64 LongestWait =
        24 * 60 * 60; // a slip of the site must not switch it off for good
    const auto wait = inet.RetryAfter();
    if (!wait)
        return false;
    m_until[OriginOf(address)] = now.addSecs(std::min<qint64>(wait->count(), LongestWait));
    return true;
}

std::optional<QDateTime> SiteWaits::Until(const QString &address, const QDateTime &now) const
{
    const auto found = m_until.constFind(OriginOf(address));
    return found != m_until.constEnd() && *found > now ? std::optional(*found) : std::nullopt;
}
