#include "platform/http_exchange.h"

#include "platform/inet.h"

#include <QSslSocket>

#include <algorithm>
#include <utility>

namespace
{

constexpr qsizetype LargestLine = 64 * 1024;

int CodeOf(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
    case QAbstractSocket::ProxyConnectionRefusedError:
        return Inet::CannotConnect;
    case QAbstractSocket::RemoteHostClosedError:
    case QAbstractSocket::ProxyConnectionClosedError:
        return Inet::ConnectionReset;
    case QAbstractSocket::SocketTimeoutError:
    case QAbstractSocket::ProxyConnectionTimeoutError:
        return Inet::TimedOut;
    case QAbstractSocket::SslHandshakeFailedError:
    case QAbstractSocket::SslInternalError:
    case QAbstractSocket::SslInvalidUserDataError:
        return Inet::SecurityFailed;
    case QAbstractSocket::ProxyAuthenticationRequiredError:
    case QAbstractSocket::ProxyProtocolError:
        return Inet::InvalidReply;
    default: // a name that is not found, a network or host that is out of reach
        return Inet::NameNotResolved;
    }
}

bool IsSecure(const QUrl &url)
{
    return url.scheme() == QLatin1String("https");
}

int PortOf(const QUrl &url)
{
    return url.port(IsSecure(url) ? 443 : 80);
}

QByteArray HostHeader(const QUrl &url)
{
    QByteArray host = url.host(QUrl::FullyEncoded).toLatin1();
    if (host.contains(':'))
        host = '[' + host + ']';
    return url.port() < 0 ? host : host + ':' + QByteArray::number(url.port());
}

/// A page of http goes to the proxy itself, by its whole address; all else through a tunnel.
bool IsAskedOfProxy(const QUrl &url, const QNetworkProxy &proxy)
{
    const bool speaksHttp =
        proxy.type() == QNetworkProxy::HttpProxy || proxy.type() == QNetworkProxy::HttpCachingProxy;
    return speaksHttp && !IsSecure(url);
}

/// Later: it may be the one whose signal is being handled.
void Drop(std::unique_ptr<QSslSocket> &socket)
{
    if (!socket)
        return;
    socket->disconnect();
    socket->abort();
    socket.release()->deleteLater();
}

} // namespace

QByteArray HttpReply::Header(const QByteArray &name) const
{
    for (const auto &[known, value] : headers)
        if (known.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    return {};
}

HttpExchange::HttpExchange(qint64 largestBody) : m_largestBody(largestBody) {}

HttpExchange::~HttpExchange()
{
    Abort();
    CloseConnections();
}

QString HttpExchange::Site() const
{
    return m_url.scheme() + QLatin1Char('|') + m_url.host() + QLatin1Char('|') +
           QString::number(PortOf(m_url)) + QLatin1Char('|') + QString::number(m_proxy.type()) +
           m_proxy.hostName() + QString::number(m_proxy.port());
}

// --- request --------------------------------------------------------------------------------------

void HttpExchange::Begin(const QUrl &url, const QNetworkProxy &proxy, const HttpHeaders &headers)
{
    Abort();
    m_url = url;
    m_proxy = proxy;
    m_requestHeaders = headers;
    const bool isOpen = m_kept && m_kept->state() == QAbstractSocket::ConnectedState &&
                        m_kept->bytesAvailable() == 0;
    m_isReused = isOpen && m_keptSite == Site();
    if (!m_isReused)
        CloseConnections();
    Connect();
}

void HttpExchange::Connect()
{
    m_reply = HttpReply();
    m_received.clear();
    m_part = Part::Head;
    m_socket = m_isReused ? std::move(m_kept) : std::make_unique<QSslSocket>();
    QSslSocket *socket = m_socket.get();
    socket->disconnect();
    QObject::connect(socket, &QSslSocket::readyRead, socket, [this] { Read(); });
    // Later, when what came before the end has been read.
    m_turn = std::make_shared<int>(0);
    const std::weak_ptr<int> turn = m_turn;
    QObject::connect(
        socket, &QSslSocket::errorOccurred, socket,
        [this, socket, turn](QAbstractSocket::SocketError error) {
            if (!turn.expired())
                Ended(CodeOf(error), socket->errorString());
        },
        Qt::QueuedConnection);
    QObject::connect(
        socket, &QSslSocket::disconnected, socket,
        [this, turn] {
            if (!turn.expired())
                Ended(Inet::ConnectionReset, QStringLiteral("The connection was closed"));
        },
        Qt::QueuedConnection);
    if (m_isReused) {
        Send();
        return;
    }
    QObject::connect(socket, &QSslSocket::hostFound, socket, [this] {
        if (OnProgress)
            OnProgress(Connecting);
    });
    if (IsAskedOfProxy(m_url, m_proxy)) {
        socket->setProxy(QNetworkProxy::NoProxy);
        QObject::connect(socket, &QSslSocket::connected, socket, [this] { Send(); });
        socket->connectToHost(m_proxy.hostName(), m_proxy.port());
        return;
    }
    socket->setProxy(m_proxy);
    if (IsSecure(m_url)) {
        QObject::connect(socket, &QSslSocket::encrypted, socket, [this] { Send(); });
        socket->connectToHostEncrypted(m_url.host(), quint16(PortOf(m_url)));
    } else {
        QObject::connect(socket, &QSslSocket::connected, socket, [this] { Send(); });
        socket->connectToHost(m_url.host(), quint16(PortOf(m_url)));
    }
}

void HttpExchange::Send()
{
    QUrl target = m_url.adjusted(QUrl::RemoveFragment);
    if (target.path().isEmpty())
        target.setPath(QStringLiteral("/"));
    const bool isAskedOfProxy = IsAskedOfProxy(m_url, m_proxy);
    if (!isAskedOfProxy)
        target = target.adjusted(QUrl::RemoveScheme | QUrl::RemoveAuthority);
    QByteArray request =
        "GET " + target.toEncoded() + " HTTP/1.1\r\nHost: " + HostHeader(m_url) + "\r\n";
    for (const auto &[name, value] : m_requestHeaders)
        request += name + ": " + value + "\r\n";
    if (isAskedOfProxy && !m_proxy.user().isEmpty())
        request += "Proxy-Authorization: Basic " +
                   (m_proxy.user() + QLatin1Char(':') + m_proxy.password()).toUtf8().toBase64() +
                   "\r\n";
    m_socket->write(request + "\r\n");
    if (OnProgress)
        OnProgress(Sent);
}

// --- reply ----------------------------------------------------------------------------------------

void HttpExchange::Read()
{
    if (m_part == Part::Over)
        return;
    m_received += m_socket->readAll();
    while (m_part != Part::Over && TakePart()) {
    }
}

/// False when more has to come first.
bool HttpExchange::TakePart()
{
    switch (m_part) {
    case Part::Head:
        return TakeHead();
    case Part::ByLength:
        if (!TakeBody(m_left))
            return false;
        Finish();
        return false;
    case Part::ChunkSize:
        return TakeChunkSize();
    case Part::ChunkData:
        if (!TakeBody(m_left))
            return false;
        m_part = Part::ChunkEnd;
        return true;
    case Part::ChunkEnd: {
        const std::optional<QByteArray> line = TakeLine();
        if (line && !line->isEmpty())
            Fail(Inet::InvalidReply, QStringLiteral("The page came damaged"));
        else if (line)
            m_part = Part::ChunkSize;
        return line.has_value();
    }
    case Part::Trailer: {
        const std::optional<QByteArray> line = TakeLine();
        if (line && line->isEmpty())
            Finish();
        return line.has_value();
    }
    case Part::UntilClose: {
        qint64 unlimited = m_largestBody + 1;
        TakeBody(unlimited);
        return false;
    }
    case Part::Over:
        return false;
    }
    return false;
}

/// Without its end; nothing while it has not come.
std::optional<QByteArray> HttpExchange::TakeLine()
{
    const qsizetype end = m_received.indexOf('\n');
    if (end > LargestLine || (end < 0 && m_received.size() > LargestLine)) {
        Fail(Inet::InvalidReply, QStringLiteral("The page came damaged"));
        return std::nullopt;
    }
    if (end < 0)
        return std::nullopt;
    QByteArray line = m_received.first(end);
    m_received.remove(0, end + 1);
    if (line.endsWith('\r'))
        line.chop(1);
    return line;
}

bool HttpExchange::TakeHead()
{
    const qsizetype windows = m_received.indexOf("\r\n\r\n");
    if (windows < 0) {
        const bool isNoPage = m_received.size() >= 5 && !m_received.startsWith("HTTP/");
        if (isNoPage || m_received.size() > LargestLine)
            Fail(Inet::ConnectionReset, QStringLiteral("The reply is no web page"));
        return false;
    }
    const QList<QByteArray> lines = m_received.first(windows).split('\n');
    const QByteArray first = lines[0].trimmed();
    m_received.remove(0, windows + 4);
    if (!first.startsWith("HTTP/1.")) {
        Fail(Inet::ConnectionReset, QStringLiteral("The reply is no web page"));
        return false;
    }
    m_reply.status = first.mid(9, 3).toInt();
    m_reply.reason = first.mid(13);
    m_reply.headers.clear();
    for (const QByteArray &line : lines.mid(1)) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0)
            m_reply.headers.append({line.first(colon).trimmed(), line.mid(colon + 1).trimmed()});
    }
    if (m_reply.status >= 100 && m_reply.status < 200)
        return true; // another head follows
    const QByteArray connection = m_reply.Header("Connection").toLower();
    m_isKept = first.startsWith("HTTP/1.1") ? !connection.contains("close")
                                            : connection.contains("keep-alive");
    if (OnProgress)
        OnProgress(Receiving);
    BeginBody();
    return true;
}

void HttpExchange::BeginBody()
{
    bool isNumber = false;
    m_left = m_reply.Header("Content-Length").toLongLong(&isNumber);
    if (m_reply.status == 204 || m_reply.status == 304) {
        Finish();
    } else if (m_reply.Header("Transfer-Encoding").toLower().contains("chunked")) {
        m_part = Part::ChunkSize;
    } else if (isNumber && m_left >= 0) {
        m_part = Part::ByLength;
    } else {
        m_part = Part::UntilClose;
        m_isKept = false;
        m_reply.endIsCertain = false;
    }
}

bool HttpExchange::TakeChunkSize()
{
    const std::optional<QByteArray> line = TakeLine();
    if (!line)
        return false;
    const qsizetype extension = line->indexOf(';');
    bool isNumber = false;
    m_left = (extension < 0 ? *line : line->first(extension)).trimmed().toLongLong(&isNumber, 16);
    if (!isNumber || m_left < 0)
        Fail(Inet::InvalidReply, QStringLiteral("The page came damaged"));
    else
        m_part = m_left == 0 ? Part::Trailer : Part::ChunkData;
    return true;
}

/// True when nothing of `left` is left.
bool HttpExchange::TakeBody(qint64 &left)
{
    const qint64 count = std::min<qint64>(left, m_received.size());
    m_reply.body += m_received.first(count);
    m_received.remove(0, count);
    left -= count;
    if (m_reply.body.size() < m_largestBody)
        return left == 0;
    m_reply.body.truncate(m_largestBody);
    m_reply.isFull = true;
    m_isKept = false;
    Finish();
    return false;
}

// --- end ------------------------------------------------------------------------------------------

void HttpExchange::Ended(int error, const QString &text)
{
    if (m_part == Part::Over)
        return;
    Read();
    if (m_part == Part::Over)
        return;
    if (m_part == Part::UntilClose && error == Inet::ConnectionReset) {
        Finish();
        return;
    }
    const bool nothingCame = m_part == Part::Head && m_received.isEmpty();
    if (m_isReused && nothingCame) { // it was closed before the request came there
        m_isReused = false;
        Connect();
        return;
    }
    Fail(error, text);
}

void HttpExchange::Fail(int error, const QString &text)
{
    m_reply.error = error;
    m_reply.errorText = text;
    m_isKept = false;
    Finish();
}

void HttpExchange::Finish()
{
    m_part = Part::Over;
    m_turn.reset();
    if (m_isKept && m_received.isEmpty() && m_socket->state() == QAbstractSocket::ConnectedState) {
        m_socket->disconnect();
        m_kept = std::move(m_socket);
        m_keptSite = Site();
    }
    if (OnOver)
        OnOver();
}

void HttpExchange::Abort()
{
    m_part = Part::Over;
    m_turn.reset();
    Drop(m_socket);
}

void HttpExchange::CloseConnections()
{
    Drop(m_kept);
}
