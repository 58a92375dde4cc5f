#pragma once

/// One request for a page and its reply, over HTTP/1.1, on a connection that may be used again.
///
///     HttpExchange exchange;
///     exchange.OnOver = [&] { ... exchange.Reply() ... };
///     exchange.Begin(url, proxy, {{"Accept", "*/*"}});
///
/// Qt's access manager does this as well, but takes a page in chunks for whole now and then when its
/// connection was cut, and hands a part of a price on. Here the end of a reply is known or it is an error:
/// a body has its length or its last chunk. Only a body with neither ends with the connection, and
/// endIsCertain is false then.
///
/// Certificates are verified. Redirects, logins and compression are the caller's.

#include <QByteArray>
#include <QList>
#include <QNetworkProxy>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class QSslSocket;

using HttpHeaders = QList<std::pair<QByteArray, QByteArray>>;

struct HttpReply
{
    int error = 0; ///< one of Inet::Codes; 0: the reply is whole
    QString errorText;
    int status = 0; ///< 0: no head came
    QByteArray reason;
    HttpHeaders headers;
    QByteArray body; ///< up to the largest size; isFull tells that there may be more
    bool isFull = false;
    bool endIsCertain = true;

    /// The first one of this name, in small or capital letters; empty without one.
    QByteArray Header(const QByteArray &name) const;
};

class HttpExchange
{
public:
    /// What a request reaches, in this order.
    enum Progress
    {
        Connecting,
        Sent,
        Receiving
    };

    explicit HttpExchange(qint64 largestBody);
    ~HttpExchange();
    HttpExchange(const HttpExchange &) = delete;
    HttpExchange &operator=(const HttpExchange &) = delete;

    std::function<void(Progress)> OnProgress;
    std::function<void()> OnOver; ///< may begin another exchange

    /// Ends one that is under way, without a call of OnOver.
    void Begin(const QUrl &url, const QNetworkProxy &proxy, const HttpHeaders &headers);
    void Abort();
    const HttpReply &Reply() const { return m_reply; }
    /// Closes the connections that are kept open.
    void CloseConnections();

private:
    enum class Part
    {
        Head,
        ByLength,
        ChunkSize,
        ChunkData,
        ChunkEnd,
        Trailer,
        UntilClose,
        Over
    };

    void Connect();
    void Send();
    void Read();
    bool TakePart();
    bool TakeHead();
    bool TakeChunkSize();
    bool TakeBody(qint64 &left);
    std::optional<QByteArray> TakeLine();
    void BeginBody();
    void Ended(int error, const QString &text);
    void Fail(int error, const QString &text);
    void Finish();
    QString Site() const;

    const qint64 m_largestBody;
    QUrl m_url;
    QNetworkProxy m_proxy;
    HttpHeaders m_requestHeaders;
    std::unique_ptr<QSslSocket> m_socket;
    std::unique_ptr<QSslSocket> m_kept; ///< from the last exchange, for the same site
    QString m_keptSite;
    bool m_isReused = false; ///< the site may have closed it meanwhile
    HttpReply m_reply;
    QByteArray m_received;
    Part m_part = Part::Over;
    qint64 m_left = 0; ///< bytes of the body or chunk
    bool m_isKept = false;
    std::shared_ptr<int> m_turn; ///< a late signal of an earlier connection finds another one here
};
