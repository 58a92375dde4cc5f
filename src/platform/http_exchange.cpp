#include "platform/http_exchange.h"

#include "platform/inet.h"

#include <QSocketNotifier>
#include <QTimerEvent>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <new>

namespace
{

constexpr qsizetype LargestHead = 64 * 1024;
/// Kerberos is left out: it would give the login of the desktop to a quote site.
constexpr long LoginMethods = CURLAUTH_BASIC | CURLAUTH_DIGEST | CURLAUTH_NTLM;

void PrepareLibrary()
{
    static const bool isPrepared = [] {
        // A connection that is closed while TLS writes to it must not end the program.
        std::signal(SIGPIPE, SIG_IGN);
        return curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    }();
    if (!isPrepared)
        throw std::bad_alloc();
}

int CodeOf(CURLcode result, int systemError, const QString &text)
{
    switch (result) {
    case CURLE_OK:
        return 0;
    case CURLE_URL_MALFORMAT:
        return Inet::AddressInvalid;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return Inet::NameNotResolved;
    case CURLE_COULDNT_CONNECT:
        // Out of reach is what a machine finds that is not on line, as a name that is not found.
        if (systemError == ENETUNREACH || systemError == EHOSTUNREACH || systemError == ENETDOWN)
            return Inet::NameNotResolved;
        return systemError == ETIMEDOUT ? Inet::TimedOut : Inet::CannotConnect;
    case CURLE_OPERATION_TIMEDOUT:
        return Inet::TimedOut;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
        return Inet::SecurityFailed;
    case CURLE_RECV_ERROR: // libcurl has no code of its own for chunks that are none
        return text.contains(QLatin1String("chunk")) ? Inet::InvalidReply : Inet::ConnectionReset;
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_UNSUPPORTED_PROTOCOL: // the reply is no web page
        return Inet::ConnectionReset;
    default:
        return Inet::InvalidReply;
    }
}

} // namespace

QByteArray HttpReply::Header(const QByteArray &name) const
{
    for (const auto &[known, value] : headers)
        if (known.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    return {};
}

/// Wakes the exchange when a socket of libcurl can be read or written. It stays for the next socket of
/// that number, since it may not be deleted in its own signal.
struct HttpExchange::SocketWatch
{
    SocketWatch(HttpExchange &exchange, curl_socket_t socket)
        : read(socket, QSocketNotifier::Read), write(socket, QSocketNotifier::Write)
    {
        const auto wake = [&](QSocketNotifier &notifier, int activity) {
            QObject::connect(
                &notifier, &QSocketNotifier::activated, &exchange,
                [&exchange, socket, activity] { exchange.HandleSocket(socket, activity); });
        };
        wake(read, CURL_CSELECT_IN);
        wake(write, CURL_CSELECT_OUT);
    }
    void WaitFor(int what)
    {
        read.setEnabled(what == CURL_POLL_IN || what == CURL_POLL_INOUT);
        write.setEnabled(what == CURL_POLL_OUT || what == CURL_POLL_INOUT);
    }

    QSocketNotifier read;
    QSocketNotifier write;
};

HttpExchange::HttpExchange(qint64 largestBody) : m_largestBody(largestBody)
{
    PrepareLibrary();
    m_transfer.reset(curl_easy_init());
    if (!m_transfer)
        throw std::bad_alloc();
    CreateConnections();
}

HttpExchange::~HttpExchange()
{
    Abort();
    m_connections.reset();
}

// --- the event loop -------------------------------------------------------------------------------

/// libcurl says here which sockets to watch and when to call it again.
void HttpExchange::CreateConnections()
{
    m_connections.reset(curl_multi_init());
    if (!m_connections)
        throw std::bad_alloc();
    constexpr auto watch = +[](CURL *, curl_socket_t socket, int what, void *self, void *) {
        auto &exchange = *static_cast<HttpExchange *>(self);
        exchange.m_watches.try_emplace(socket, exchange, socket).first->second.WaitFor(what);
        return 0;
    };
    constexpr auto setTimer = +[](CURLM *, long milliseconds, void *self) {
        auto &exchange = *static_cast<HttpExchange *>(self);
        exchange.StopTimer();
        if (milliseconds >= 0)
            exchange.m_timer = exchange.startTimer(int(milliseconds));
        return 0;
    };
    curl_multi_setopt(m_connections.get(), CURLMOPT_SOCKETFUNCTION, watch);
    curl_multi_setopt(m_connections.get(), CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(m_connections.get(), CURLMOPT_TIMERFUNCTION, setTimer);
    curl_multi_setopt(m_connections.get(), CURLMOPT_TIMERDATA, this);
}

void HttpExchange::CloseConnections()
{
    Abort();
    CreateConnections();
}

void HttpExchange::StopTimer()
{
    if (m_timer != 0)
        killTimer(m_timer);
    m_timer = 0;
}

void HttpExchange::timerEvent(QTimerEvent *)
{
    StopTimer(); // libcurl expects it once
    HandleSocket(CURL_SOCKET_TIMEOUT, 0);
}

void HttpExchange::HandleSocket(curl_socket_t socket, int activity)
{
    int running = 0;
    curl_multi_socket_action(m_connections.get(), socket, activity, &running);
    int queued = 0;
    const CURLMsg *message = curl_multi_info_read(m_connections.get(), &queued);
    if (message && message->msg == CURLMSG_DONE)
        Finish(message->data.result);
}

// --- request --------------------------------------------------------------------------------------

template <typename Value>
void HttpExchange::Set(CURLoption option, Value value)
{
    curl_easy_setopt(m_transfer.get(), option, value);
}

void HttpExchange::Begin(const HttpRequest &request)
{
    Abort();
    m_reply = HttpReply();
    m_errorText[0] = 0;
    m_isHeadWhole = false;
    curl_easy_reset(m_transfer.get()); // cookies stay

    const QUrl url = request.url.adjusted(QUrl::RemoveFragment | QUrl::RemoveUserInfo);
    Set(CURLOPT_URL, url.toEncoded().constData());
    Set(CURLOPT_PROTOCOLS_STR, "http,https");
    Set(CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_QUICK_EXIT, 1L); // Abort does not wait for the look-up of a name
    if (qEnvironmentVariableIsSet("SSL_CERT_FILE"))
        Set(CURLOPT_CAINFO, qgetenv("SSL_CERT_FILE").constData());
    Set(CURLOPT_COOKIEFILE, ""); // keeps cookies, but in no file
    SetProxy(request.proxy);
    if (request.login) {
        Set(CURLOPT_HTTPAUTH, LoginMethods);
        Set(CURLOPT_USERNAME, request.login->user.toUtf8().constData());
        Set(CURLOPT_PASSWORD, request.login->password.toUtf8().constData());
    }
    curl_slist *headers = nullptr;
    for (const auto &[name, value] : request.headers)
        headers = curl_slist_append(headers, (name + ": " + value).constData());
    m_headers.reset(headers);
    Set(CURLOPT_HTTPHEADER, headers);
    SetNotes();

    m_isUnderWay = true;
    curl_multi_add_handle(m_connections.get(), m_transfer.get());
}

/// Nothing of the environment: which proxy to take has been settled.
void HttpExchange::SetProxy(const QNetworkProxy &proxy)
{
    Set(CURLOPT_NOPROXY, "");
    Set(CURLOPT_PROXY, "");
    const bool isSocks = proxy.type() == QNetworkProxy::Socks5Proxy;
    const bool isHttp =
        proxy.type() == QNetworkProxy::HttpProxy || proxy.type() == QNetworkProxy::HttpCachingProxy;
    if (!isSocks && !isHttp)
        return;
    Set(CURLOPT_PROXY, QUrl::toAce(proxy.hostName()).constData());
    Set(CURLOPT_PROXYPORT, long(proxy.port()));
    Set(CURLOPT_PROXYTYPE, long(isSocks ? CURLPROXY_SOCKS5_HOSTNAME : CURLPROXY_HTTP));
    Set(CURLOPT_SOCKS5_AUTH, long(CURLAUTH_BASIC));
    Set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (proxy.user().isEmpty())
        return;
    Set(CURLOPT_PROXYAUTH, LoginMethods);
    Set(CURLOPT_PROXYUSERNAME, proxy.user().toUtf8().constData());
    Set(CURLOPT_PROXYPASSWORD, proxy.password().toUtf8().constData());
}

/// What libcurl reports while it works on the request.
void HttpExchange::SetNotes()
{
    constexpr auto connecting = +[](void *self, curl_socket_t, curlsocktype) {
        static_cast<HttpExchange *>(self)->Note(Connecting);
        return CURL_SOCKOPT_OK;
    };
    constexpr auto sending = +[](void *self, char *, char *, int, int) {
        static_cast<HttpExchange *>(self)->Note(Sent);
        return CURL_PREREQFUNC_OK;
    };
    // Another count than what came ends the transfer.
    constexpr auto head = +[](char *line, size_t, size_t count, void *self) -> size_t {
        const bool isTaken =
            static_cast<HttpExchange *>(self)->TakeHeadLine(QByteArray(line, qsizetype(count)));
        return isTaken ? count : 0;
    };
    constexpr auto body = +[](char *bytes, size_t, size_t count, void *self) -> size_t {
        return static_cast<HttpExchange *>(self)->TakeBody(bytes, qint64(count)) ? count : 0;
    };
    Set(CURLOPT_ERRORBUFFER, m_errorText);
    Set(CURLOPT_SOCKOPTFUNCTION, connecting);
    Set(CURLOPT_SOCKOPTDATA, this);
    Set(CURLOPT_PREREQFUNCTION, sending);
    Set(CURLOPT_PREREQDATA, this);
    Set(CURLOPT_HEADERFUNCTION, head);
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_WRITEFUNCTION, body);
    Set(CURLOPT_WRITEDATA, this);
}

void HttpExchange::Note(Progress progress)
{
    if (OnProgress)
        OnProgress(progress);
}

// --- reply ----------------------------------------------------------------------------------------

bool HttpExchange::TakeHeadLine(const QByteArray &line)
{
    if (line.startsWith(
            "HTTP/")) { // the first one, after an interim reply or after a demanded login
        m_reply = HttpReply();
        m_isHeadWhole = false;
        m_headBytes = 0;
        const qsizetype space = line.indexOf(' ');
        m_reply.status = line.mid(space + 1, 3).toInt();
        m_reply.reason = line.mid(space + 5).trimmed();
    } else if (m_isHeadWhole) {
        return true; // behind the last chunk
    } else if (line.trimmed().isEmpty()) {
        m_isHeadWhole = m_reply.status >= 200;
        if (m_isHeadWhole)
            Note(Receiving);
    } else if (const qsizetype colon = line.indexOf(':'); colon > 0) {
        m_reply.headers.append({line.first(colon).trimmed(), line.mid(colon + 1).trimmed()});
    }
    m_headBytes += line.size();
    return m_headBytes <= LargestHead;
}

bool HttpExchange::TakeBody(const char *bytes, qint64 count)
{
    m_reply.body.append(bytes, std::min(count, m_largestBody - m_reply.body.size()));
    m_reply.isFull = m_reply.body.size() == m_largestBody;
    return !m_reply.isFull;
}

// --- end ------------------------------------------------------------------------------------------

void HttpExchange::Finish(CURLcode result)
{
    long systemError = 0;
    long proxyStatus = 0; // of a tunnel
    curl_off_t length = -1;
    curl_easy_getinfo(m_transfer.get(), CURLINFO_OS_ERRNO, &systemError);
    curl_easy_getinfo(m_transfer.get(), CURLINFO_HTTP_CONNECTCODE, &proxyStatus);
    curl_easy_getinfo(m_transfer.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    Abort();
    if (m_reply.isFull)
        result = CURLE_OK; // ended by us
    else if (result == CURLE_OK && !m_isHeadWhole)
        result = CURLE_PARTIAL_FILE; // libcurl takes a cut head for a reply without a body
    const char *text = m_errorText[0] ? m_errorText : curl_easy_strerror(result);
    if (result != CURLE_OK)
        m_reply.errorText = result == CURLE_COULDNT_CONNECT && systemError != 0
                                ? qt_error_string(int(systemError)) // "Connection refused"
                                : QString::fromUtf8(text);
    m_reply.error = CodeOf(result, int(systemError), m_reply.errorText);
    if (proxyStatus >= 300)
        m_reply.error = Inet::InvalidReply;
    const bool hasNoBody = m_reply.status == 204 || m_reply.status == 304;
    m_reply.endIsCertain = length >= 0 || hasNoBody ||
                           m_reply.Header("Transfer-Encoding").toLower().contains("chunked");
    if (OnOver)
        OnOver();
}

void HttpExchange::Abort()
{
    if (m_isUnderWay)
        curl_multi_remove_handle(m_connections.get(), m_transfer.get());
    m_isUnderWay = false;
}
