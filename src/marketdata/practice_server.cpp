// A small web server of its own: it answers GET requests of this machine with a page each, and knows
// neither bodies nor any other method. Everything it reads is bounded, since any program of this machine,
// and any web page in the user's browser, can send something here.

#include "marketdata/practice_server.h"

#include "base/runtime_error.h"
#include "marketdata/practice_pages.h"

#include <QNetworkProxy>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

namespace
{

/// A port next to the one wanted is rather free again in the next run than one that the system picks.
constexpr int NeighboursTried = 10;

constexpr qsizetype LargestHead = 16 * 1024;
/// A browser opens six; the connection that was silent longest makes room for another one.
constexpr size_t MostConnections = 16;

struct Request
{
    QByteArray method;
    QByteArray target;
    QByteArray version;
    std::multimap<QByteArray, QByteArray> headers; ///< by name in small letters

    QByteArray Header(const QByteArray &name) const
    {
        const auto found = headers.find(name);
        return found == headers.end() ? QByteArray() : found->second;
    }
    bool Has(const QByteArray &name) const { return headers.count(name) > 0; }
};

std::optional<Request> ReadRequest(const QByteArray &head)
{
    QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
    if (words.size() != 3 || !words[2].startsWith("HTTP/1."))
        return std::nullopt;
    Request request{words[0], words[1], words[2], {}};
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        if (colon <= 0)
            return std::nullopt;
        request.headers.emplace(line.first(colon).trimmed().toLower(),
                                line.mid(colon + 1).trimmed());
    }
    return request;
}

/// Only a name of this machine: another one has been pointed here by a web page.
bool IsThisMachine(const QString &host)
{
    return host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0 ||
           QHostAddress(host).isLoopback();
}

bool IsMeantForUs(const Request &request)
{
    const auto hosts = request.headers.equal_range("host");
    for (auto header = hosts.first; header != hosts.second; ++header)
        if (!IsThisMachine(
                QUrl(QStringLiteral("http://") + QString::fromLatin1(header->second)).host()))
            return false;
    return true;
}

bool HasBody(const Request &request)
{
    const QByteArray length = request.Header("content-length");
    return (!length.isEmpty() && length != "0") || request.headers.count("content-length") > 1 ||
           request.Has("transfer-encoding");
}

bool WantsClose(const Request &request)
{
    const QByteArray connection = request.Header("connection").toLower();
    return connection.contains("close") ||
           (request.version == "HTTP/1.0" && !connection.contains("keep-alive"));
}

struct Reply
{
    QByteArray status;
    PracticePage page;
    bool closes = false;
};

Reply Refusal(const char *status)
{
    return {status, {QString::fromLatin1(status), "text/plain; charset=utf-8"}, true};
}

Reply AnswerTo(const QByteArray &head, const QDateTime &now)
{
    const std::optional<Request> request = ReadRequest(head);
    if (!request || !request->target.startsWith('/'))
        return Refusal("400 Bad Request");
    if (!IsMeantForUs(*request))
        return Refusal("403 Forbidden");
    if (request->method != "GET")
        return Refusal("405 Method Not Allowed");
    if (HasBody(*request))
        return Refusal("413 Content Too Large");
    const QUrl url = QUrl::fromEncoded("http://127.0.0.1" + request->target);
    const std::optional<PracticePage> page = MakePracticePage(url.path(), QUrlQuery(url), now);
    return {page ? "200 OK" : "404 Not Found", page ? *page : PracticePageNotFound(),
            WantsClose(*request)};
}

QByteArray Bytes(const Reply &reply)
{
    const QByteArray body = reply.page.text.toUtf8();
    return "HTTP/1.1 " + reply.status + "\r\nContent-Type: " + reply.page.mimeType +
           "\r\nContent-Length: " + QByteArray::number(body.size()) +
           (reply.closes ? "\r\nConnection: close" : "") + "\r\n\r\n" + body;
}

} // namespace

/// Answers one request at a time, each in an event of its own, so that a flood of them leaves the window
/// its turns. The next one waits until the last answer has gone out.
class PracticeServer::Connection : public QObject
{
public:
    Connection(QTcpSocket *socket, Clock &clock)
        : QObject(socket), m_socket(*socket), m_clock(clock)
    {
        connect(socket, &QTcpSocket::readyRead, this, [this] { Read(); });
        connect(socket, &QTcpSocket::bytesWritten, this, [this] { AnswerSoon(); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        Read(); // what has come already
    }

private:
    void Read()
    {
        if (m_isClosing) {
            m_socket.readAll();
            return;
        }
        m_received += m_socket.readAll();
        // Requests in advance are one thing, a head without end is another.
        const bool isTooLong = m_received.size() > 4 * LargestHead ||
                               (m_received.size() > LargestHead && HeadEnd() < 0);
        if (isTooLong)
            Send(Refusal("431 Request Header Fields Too Large"));
        else
            AnswerSoon();
    }

    /// Position behind the head of the next request; -1 while it is not there.
    qsizetype HeadEnd() const
    {
        const qsizetype end =
            m_received.first(std::min(m_received.size(), LargestHead)).indexOf("\r\n\r\n");
        return end < 0 ? -1 : end + 4;
    }

    void AnswerSoon()
    {
        if (m_isDue || m_isClosing || m_socket.bytesToWrite() > 0 || HeadEnd() < 0)
            return;
        m_isDue = true;
        QMetaObject::invokeMethod(
            this, [this] { Answer(); }, Qt::QueuedConnection);
    }

    void Answer()
    {
        m_isDue = false;
        const qsizetype end = HeadEnd();
        if (m_isClosing || end < 0)
            return;
        const QByteArray head = m_received.first(end - 4);
        m_received.remove(0, end);
        Send(AnswerTo(head, m_clock.Now()));
        AnswerSoon();
    }

    void Send(const Reply &reply)
    {
        m_socket.write(Bytes(reply));
        m_isClosing = reply.closes;
        if (!m_isClosing)
            return;
        m_received.clear();
        m_socket.disconnectFromHost(); // when all is written
    }

    QTcpSocket &m_socket;
    Clock &m_clock;
    QByteArray m_received;
    bool m_isDue = false; ///< an answer is queued
    bool m_isClosing = false;
};

class PracticeServer::Pages
{
public:
    Pages(Clock &clock, std::unique_ptr<QTcpServer> listener)
        : m_clock(clock), m_listener(std::move(listener))
    {
        QObject::connect(m_listener.get(), &QTcpServer::newConnection, m_listener.get(),
                         [this] { TakeConnections(); });
    }
    quint16 Port() const { return m_listener->serverPort(); }

private:
    void TakeConnections()
    {
        while (QTcpSocket *socket = m_listener->nextPendingConnection()) {
            std::erase_if(m_sockets, [](const QPointer<QTcpSocket> &known) {
                return !known || known->state() == QAbstractSocket::UnconnectedState;
            });
            if (m_sockets.size() >= MostConnections) {
                m_sockets.front()->abort();
                m_sockets.erase(m_sockets.begin());
            }
            m_sockets.push_back(socket);
            QObject::connect(socket, &QTcpSocket::readyRead, m_listener.get(), [this, socket] {
                const auto found = std::find(m_sockets.begin(), m_sockets.end(), socket);
                if (found != m_sockets.end()) // the last one to be given up
                    std::rotate(found, found + 1, m_sockets.end());
            });
            new Connection(socket, m_clock); // goes with its socket
        }
    }

    Clock &m_clock;
    std::unique_ptr<QTcpServer> m_listener;      ///< owns the sockets
    std::vector<QPointer<QTcpSocket>> m_sockets; ///< the one that was silent longest first
};

PracticeServer::PracticeServer(Clock &clock) : m_clock(clock) {}

PracticeServer::~PracticeServer() = default;

void PracticeServer::Listen(quint16 port)
{
    if (IsListening())
        return;
    auto listener = std::make_unique<QTcpServer>();
    listener->setProxy(QNetworkProxy::NoProxy);
    bool isListening = false;
    for (int tried = 0; !isListening && port != 0 && tried < NeighboursTried; ++tried)
        isListening = listener->listen(QHostAddress::LocalHost, quint16(port + tried));
    if (!isListening && !listener->listen(QHostAddress::LocalHost))
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("The practice quotes find no free port: ") +
                               listener->errorString());
    m_pages = std::make_unique<Pages>(m_clock, std::move(listener));
}

bool PracticeServer::IsListening() const
{
    return m_pages != nullptr;
}

quint16 PracticeServer::Port() const
{
    return m_pages ? m_pages->Port() : quint16(0);
}

QString PracticeServer::Origin()
{
    Listen(DeliveredPort);
    return QStringLiteral("http://127.0.0.1:%1").arg(Port());
}
