#include "platform/inet_text.h"

#include <QRegularExpression>
#include <QStringDecoder>

#include <zlib.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace
{

constexpr int AnyFormat = MAX_WBITS + 32; // zlib finds out whether it is gzip or zlib

/// Inflates a body of one or several members, which has to end with the end of one. What stands
/// behind the last member is padding.
Body Inflate(QByteArray &body, qint64 maximumBytes)
{
    const QByteArray packed = std::exchange(body, {});
    z_stream stream{};
    if (inflateInit2(&stream, AnyFormat) != Z_OK)
        return Body::Damaged;
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(packed.constData()));
    stream.avail_in = uInt(packed.size());

    char chunk[64 * 1024];
    int result = Z_OK;
    while (result == Z_OK && body.size() < maximumBytes) {
        stream.next_out = reinterpret_cast<Bytef *>(chunk);
        stream.avail_out = uInt(std::min<qint64>(sizeof chunk, maximumBytes - body.size()));
        result = inflate(&stream, Z_NO_FLUSH);
        body.append(chunk, reinterpret_cast<char *>(stream.next_out) - chunk);
        const bool isFollowed = result == Z_STREAM_END && stream.avail_in > 1 &&
                                stream.next_in[0] == 0x1f && stream.next_in[1] == 0x8b;
        if (isFollowed)
            result = inflateReset(&stream);
    }
    inflateEnd(&stream);
    if (result == Z_OK || result == Z_STREAM_END)
        return Body::Whole; // or as much of it as was wanted
    return result == Z_BUF_ERROR ? Body::CutShort : Body::Damaged;
}

} // namespace

Body Uncompress(QByteArray &body, const QByteArray &contentEncoding, qint64 maximumBytes)
{
    const QByteArray encoding = contentEncoding.trimmed().toLower();
    if (body.isEmpty() || encoding.isEmpty() || encoding == "identity")
        return Body::Whole;
    if (encoding == "gzip" || encoding == "x-gzip" || encoding == "deflate")
        return Inflate(body, maximumBytes);
    return Body::Damaged;
}

QString TextOf(const QByteArray &body, const QString &contentType)
{
    static const QRegularExpression charset(QStringLiteral("charset\\s*=\\s*[\"']?([^\\s\"';]+)"),
                                            QRegularExpression::CaseInsensitiveOption);
    std::optional<QStringConverter::Encoding> encoding = QStringConverter::encodingForData(body);
    if (!encoding)
        encoding = QStringConverter::encodingForName(
            charset.match(contentType).captured(1).toLatin1().constData());
    return QStringDecoder(encoding.value_or(QStringConverter::Utf8))(body);
}
