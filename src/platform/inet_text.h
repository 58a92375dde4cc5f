#pragma once

/// From the bytes of a reply to the text of a page.

#include <QByteArray>
#include <QString>

enum class Body
{
    Whole,
    CutShort, ///< its compressed form ends before its end
    Damaged   ///< it is not what it says
};

/// Undoes the compression that `contentEncoding` names: none, "gzip" or "deflate", the body then
/// being as long as `maximumBytes` at most; the rest is left out. Another one is Damaged.
Body Uncompress(QByteArray &body, const QByteArray &contentEncoding, qint64 maximumBytes);

/// By the mark at its begin, the charset that `contentType` names ("text/html; charset=UTF-8"), or
/// as UTF-8. The mark is dropped; bytes that mean nothing in UTF-8 become U+FFFD.
QString TextOf(const QByteArray &body, const QString &contentType);
