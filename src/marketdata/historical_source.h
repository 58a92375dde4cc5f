#pragma once

/// Where daily prices come from: a table page of "<nobr>" cells, one request per symbol and range.
///
/// A site on this machine (the practice site) answers with that page itself, at the host of its
/// quotes. No service of today does: for every other site the configured service is asked in its
/// own way, and an adapter turns its reply into the table page, so that one walk reads them all.

#include "platform/inet.h"

#include <QDate>
#include <QString>

#include <memory>

struct HistoricalRequest
{
    QString symbol; ///< ten characters
    QDate RangeStart;
    QDate RangeEnd;
};
/// "/d?a=1&b=17&c=2026&d=3&e=20&f=2026&g=d&s=QLLN      ": months count from 0, the symbol comes with
/// its blanks, as ten characters. Characters that would end it in an address are escaped.
QString HistoricalQuery(const HistoricalRequest &request);

class HistoricalSource
{
public:
    virtual ~HistoricalSource() = default;
    /// The table page; the empty text when the transfer failed or the page was cut short: newer days
    /// come first, so the days that are missing would never be asked for again. Throws RuntimeError 35761 when it
    /// took too long.
    virtual QString FetchTable(Inet &inet, const HistoricalRequest &request) = 0;
};

/// The source for a host ("http://127.0.0.1:8917") and the way that it is asked: "table" for the
/// query above, "chart-v8" for a chart service with JSON replies (chart_page.h). Without a host, or
/// with another format, nothing is asked and every page is empty.
std::unique_ptr<HistoricalSource> MakeHistoricalSource(const QString &host, const QString &format);
