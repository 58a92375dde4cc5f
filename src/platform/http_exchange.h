#pragma once

/// One request for a page and its reply, by libcurl within the program's own event loop.
///
///     HttpExchange exchange(largestBody);
///     exchange.OnOver = [&] { ... exchange.Reply() ... };
///     exchange.Begin({url, proxy, {{"Accept", "*/*"}}});
///
/// A reply that was cut short is an error: a body has its length or its last chunk. Only a body with
/// neither ends with the connection, and endIsCertain is false then.
///
/// Certificates are verified, by the system's store or the file that SSL_CERT_FILE names. Cookies are
/// kept in memory as long as the object lives. Redirects and compression are left to the caller.

#include <QByteArray>
#include <QList>
#include <QNetworkProxy>
#include <QObject>
#include <QUrl>

#include <curl/curl.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>

class QSocketNotifier;

using HttpHeaders = QList<std::pair<QByteArray, QByteArray>>;

/// Given when the server asks for it, as Basic, Digest or NTLM.
struct HttpLogin
{
    QString user;
    QString password;
};

struct HttpRequest
{
    QUrl url;
    QNetworkProxy proxy;
    HttpHeaders headers;
    std::optional<HttpLogin> login;
};

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

class HttpExchange : private QObject
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
    ~HttpExchange() override;

    std::function<void(Progress)> OnProgress; ///< may take notes, but begin and end nothing
    std::function<void()> OnOver;             ///< may begin another exchange

    /// Ends one that is under way, without a call of OnOver. Nothing is called before it returns.
    void Begin(const HttpRequest &request);
    void Abort();
    const HttpReply &Reply() const { return m_reply; }
    /// Closes all connections; ends an exchange that is under way.
    void CloseConnections();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct SocketWatch;
    template <typename Value>
    void Set(CURLoption option, Value value);
    void SetProxy(const QNetworkProxy &proxy);
    void SetNotes();
    void CreateConnections();
    void StopTimer();
    void HandleSocket(curl_socket_t socket, int activity);
    void Finish(CURLcode result);
    void Note(Progress progress);
    bool TakeHeadLine(const QByteArray &line);
    bool TakeBody(const char *bytes, qint64 count);

    const qint64 m_largestBody;
    HttpReply m_reply;
    bool m_isUnderWay = false;
    bool m_isHeadWhole = false;
    qsizetype m_headBytes = 0;
    char m_errorText[CURL_ERROR_SIZE] = {};
    int m_timer = 0; ///< 0: none runs
    std::map<curl_socket_t, SocketWatch> m_watches;
    std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> m_headers{nullptr,
                                                                          curl_slist_free_all};
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> m_transfer{nullptr, curl_easy_cleanup};
    std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> m_connections{nullptr,
                                                                        curl_multi_cleanup};
};
