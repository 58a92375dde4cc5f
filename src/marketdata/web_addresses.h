#pragma once

/// The addresses of pages beside the quote sites: links of the Internet menu, intraday chart, map of
/// the market, daily price service, version file, download pages. Hosts are data: WebLinks.json in
/// the application folder, which a user or packager may change; "{practice}" at the begin of an
/// address stands for the practice server.
///
///     "mnuIntLipper": "https://host/"         a menu entry: the whole address
///     "intradayChart": "https://host"         the path is added here, as for "dailyPrices"
///     "dailyPricesFormat": "chart-v8"         how that service is asked and answers
///     "versionFile": "https://host/version.xml"
///     "makerSite": "https://host"             where Downloads.html and VersionChanges.html are
///
/// The map of the market is on the host of "mnuIntSmartMoney".
///
/// A quote site on this machine (a loopback address) serves charts, map and daily prices itself, at
/// the host of its quotes.

#include "marketdata/practice_server.h"
#include "marketdata/quote_sites.h"

#include <QHash>
#include <QString>

class WebAddresses
{
public:
    /// What the file does not name stays empty, and so do the addresses on it; a file that is missing
    /// or broken leaves all empty.
    static WebAddresses Load(const QString &appPath);

    /// Of a menu entry ("mnuIntLipper"), host and path; empty when there is none.
    QString Link(const QString &entry) const;
    QString MarketMap(const QuoteSite &site) const;
    /// The intraday chart of the symbol, which may be empty.
    QString IntradayChart(const QuoteSite &site, const QString &symbol) const;
    QString VersionFile() const;
    QString Downloads() const;
    QString VersionChanges() const;
    /// Host of the daily price service, and how it is asked: "table" or "chart-v8".
    QString DailyPriceHost(const QuoteSite &site) const;
    QString DailyPriceFormat(const QuoteSite &site) const;

private:
    QString Host(const QString &name) const; ///< without a slash at its end
    QString HostFor(const QuoteSite &site, const QString &elsewhere) const;
    QString OfMaker(const QString &page) const;

    QHash<QString, QString> m_addresses;
};

/// Whether an entry of the file names the practice server.
bool IsPracticeEntry(const QString &address);

/// "{practice}" replaced by the server's own address, on which it begins to listen; other addresses
/// as they are. Throws as PracticeServer::Listen does.
QString ResolveAddress(const QString &address, PracticeServer &server);

/// "http://host:port" of an address on 127.0.0.1, ::1 or localhost; empty for any other.
QString LoopbackOrigin(const QString &address);
