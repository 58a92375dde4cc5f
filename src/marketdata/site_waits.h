#pragma once

/// Sites that ask to be left alone for a while: a reply of status 429 or 503 with Retry-After. They are
/// known by scheme, host and port, for this run.
///
///     if (waits.Until(address, now))                  do not ask
///     inet.OpenURL(address);
///     if (waits.Note(inet, address, now))             the reply is no page of prices

#include <QDateTime>
#include <QHash>
#include <QString>

#include <optional>

class Inet;

class SiteWaits
{
public:
    /// True when the last reply of `inet`, to a request for `address`, asks for a while; which is noted,
    /// up to a day.
    bool Note(const Inet &inet, const QString &address, const QDateTime &now);
    /// The moment from which the site of `address` may be asked again; nothing when it may now.
    std::optional<QDateTime> Until(const QString &address, const QDateTime &now) const;

private:
    QHash<QString, QDateTime> m_until; ///< by origin
};
