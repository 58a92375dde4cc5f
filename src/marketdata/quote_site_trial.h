#pragma once

/// A quote site tried out on a symbol, or on two where its row asks for several at once: what is asked for, and what the reply gives, in the words
/// of whoever repairs the site.
///
///     const TrialRequest request = RequestOfTrial(site, "QLLN", "Stock");
///     const QString page = inet.OpenURL(request.address);
///     const TrialReading reading = ReadReply(site, request.symbol, page, formats);
///     reading.price       214.37, or nothing; reading.findings then say what was not found
///
/// Address and price are those of the price cycle. Positions count characters of the page from 1.

#include "marketdata/extraction.h"
#include "platform/inet.h"

#include <QStringList>

#include <optional>

struct TrialRequest
{
    QString symbol;      ///< in the form of the site, cut to its ten characters
    QString address;     ///< empty: the site has no way to quote an option
    QString second = {}; ///< empty: one symbol was asked for
};
/// True when a price update asks the site for several symbols in one request.
bool AsksForSeveral(const QuoteSite &site);
/// `second` is asked for in the same request, unless it is empty.
TrialRequest RequestOfTrial(const QuoteSite &site, const QString &symbol,
                            const QString &securityType, const QString &second = {},
                            const QString &secondType = {});

/// What is missing in the row, whatever the reply.
QStringList RowFindings(const QuoteSite &site);

/// What came of the transfer: "A reply of 1,234 characters came. HTTP status 200.", or why none did.
QString TransferInWords(const Inet &inet, const QString &page, const Formats &formats);

/// A stretch of the page.
struct PageMark
{
    enum Kind
    {
        Symbol,
        Begin,
        Price,
        End
    };
    Kind kind;
    int position;
    int length;
};

struct TrialReading
{
    std::optional<Currency> price; ///< what the cycle would take
    QStringList findings;          ///< sentences, in the order of the search
    std::vector<PageMark> marks;   ///< in the order of the page
};
/// `symbol` as the request has it. A page that the cycle would stop at is a finding like any other.
/// `endIsCertain` is that of the transfer.
TrialReading ReadReply(const QuoteSite &site, const QString &symbol, const QString &page,
                       const Formats &formats, bool endIsCertain = true);
