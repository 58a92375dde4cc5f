#include "loopback_server.h"

#include <QSslServer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <QUrlQuery>

#include <sys/socket.h>
#include <zlib.h>

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

namespace
{

QByteArray UsualReason(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 301:
        return "Moved Permanently";
    case 302:
        return "Found";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 500:
        return "Internal Server Error";
    case 503:
        return "Service Unavailable";
    default:
        return "Status " + QByteArray::number(status);
    }
}

QByteArray GzipOf(const QByteArray &data)
{
    constexpr int gzip = MAX_WBITS + 16;
    z_stream stream{};
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, gzip, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("zlib does not work");
    QByteArray packed(qsizetype(deflateBound(&stream, uLong(data.size()))), Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.constData()));
    stream.avail_in = uInt(data.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data());
    stream.avail_out = uInt(packed.size());
    deflate(&stream, Z_FINISH);
    packed.truncate(qsizetype(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

} // namespace

// --- requests --------------------------------------------------------------------------------------

QByteArray LoopbackServer::Request::Path() const
{
    const qsizetype query = target.indexOf('?');
    return query < 0 ? target : target.first(query);
}

QString LoopbackServer::Request::Query(const QString &key) const
{
    return QUrlQuery(QUrl::fromEncoded(target)).queryItemValue(key, QUrl::FullyDecoded);
}

QByteArray LoopbackServer::Request::Header(const QByteArray &name) const
{
    return headers.value(name.toLower());
}

// --- pages -----------------------------------------------------------------------------------------

LoopbackServer::Page::Page(const QByteArray &body) : m_body(body) {}

LoopbackServer::Page LoopbackServer::Page::NeverAnswers()
{
    Page page;
    page.m_answers = false;
    return page;
}

LoopbackServer::Page LoopbackServer::Page::ClosesAtOnce()
{
    Page page = NeverAnswers();
    page.m_end = End::Close;
    return page;
}

LoopbackServer::Page LoopbackServer::Page::Raw(const QByteArray &bytes)
{
    Page page = ClosesAtOnce();
    page.m_body = bytes;
    page.m_endAfter = bytes.size();
    return page;
}

LoopbackServer::Page LoopbackServer::Page::ResetsAtOnce()
{
    Page page = NeverAnswers();
    page.m_end = End::Reset;
    return page;
}

LoopbackServer::Page LoopbackServer::Page::RedirectTo(const QByteArray &address, int status)
{
    return Page().Status(status).Header("Location", address);
}

LoopbackServer::Page &LoopbackServer::Page::Status(int code, const QByteArray &reason)
{
    m_status = code;
    m_reason = reason;
    return *this;
}

LoopbackServer::Page &LoopbackServer::Page::Header(const QByteArray &name, const QByteArray &value)
{
    m_headers.append({name, value});
    return *this;
}

LoopbackServer::Page &LoopbackServer::Page::Gzip()
{
    m_body = GzipOf(m_body);
    return Header("Content-Encoding", "gzip");
}

LoopbackServer::Page &LoopbackServer::Page::WithoutLength()
{
    m_tellsLength = false;
    return *this;
}

LoopbackServer::Page &LoopbackServer::Page::Drip(int bytes, std::chrono::milliseconds every)
{
    m_dripBytes = bytes;
    m_dripEvery = every;
    return *this;
}

LoopbackServer::Page &LoopbackServer::Page::CloseAfter(int bytes)
{
    m_end = End::Close;
    m_endAfter = bytes;
    return *this;
}

LoopbackServer::Page &LoopbackServer::Page::ResetAfter(int bytes)
{
    m_end = End::Reset;
    m_endAfter = bytes;
    return *this;
}

LoopbackServer::Page &LoopbackServer::Page::AskLogin(const QByteArray &user,
                                                     const QByteArray &password,
                                                     const QByteArray &refusal)
{
    m_login = "Basic " + (user + ':' + password).toBase64();
    m_refusal = refusal;
    return *this;
}

QByteArray LoopbackServer::Page::Head() const
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(m_status) + ' ' +
                      (m_reason.isEmpty() ? UsualReason(m_status) : m_reason) + "\r\n";
    for (const auto &[name, value] : m_headers)
        head += name + ": " + value + "\r\n";
    if (m_tellsLength)
        head += "Content-Length: " + QByteArray::number(m_body.size()) + "\r\n";
    else
        head += "Connection: close\r\n";
    return head + "\r\n";
}

// --- connections -----------------------------------------------------------------------------------

/// Reads the requests of one connection and sends the replies. Goes with its socket.
class LoopbackServer::Connection : public QObject
{
public:
    Connection(LoopbackServer &server, QTcpSocket *socket)
        : QObject(socket), m_server(server), m_socket(*socket)
    {
        connect(socket, &QTcpSocket::readyRead, this, [this] { Read(); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(&m_drip, &QTimer::timeout, this, [this] { SendDrop(); });
        Read(); // what has come already
    }

private:
    void Read()
    {
        m_received += m_socket.readAll();
        for (qsizetype end; (end = m_received.indexOf("\r\n\r\n")) >= 0;) {
            const QByteArray head = m_received.first(end);
            m_received.remove(0, end + 4);
            const Page page = m_server.AnswerTo(RequestOf(head));
            if (!m_socket.isOpen())
                return; // the test has stopped the server in OnRequest
            Reply(page);
        }
    }

    static Request RequestOf(const QByteArray &head)
    {
        QList<QByteArray> lines = head.split('\n');
        const QList<QByteArray> words = lines.takeFirst().trimmed().split(' ');
        Request request;
        request.method = words.value(0);
        request.target = words.value(1);
        for (const QByteArray &line : lines) {
            const qsizetype colon = line.indexOf(':');
            if (colon > 0)
                request.headers[line.first(colon).toLower()] = line.mid(colon + 1).trimmed();
        }
        return request;
    }

    void Reply(const Page &page)
    {
        m_page = page;
        if (page.m_answers)
            m_socket.write(page.Head());
        m_toSend = page.m_body;
        if (page.m_end != Page::End::Whole)
            m_toSend.truncate(page.m_endAfter);
        if (page.m_dripBytes > 0) {
            m_drip.start(page.m_dripEvery);
        } else {
            m_socket.write(std::exchange(m_toSend, {}));
            Finish();
        }
    }

    void SendDrop()
    {
        if (m_socket.state() != QAbstractSocket::ConnectedState)
            return m_drip.stop(); // the other side has had enough
        m_socket.write(m_toSend.first(qMin<qsizetype>(m_page.m_dripBytes, m_toSend.size())));
        m_toSend.remove(0, m_page.m_dripBytes);
        if (m_toSend.isEmpty()) {
            m_drip.stop();
            Finish();
        }
    }

    void Finish()
    {
        if (m_page.m_end == Page::End::Reset) {
            m_socket.flush();
            const linger none{1, 0}; // makes the close a reset, not an orderly end
            ::setsockopt(int(m_socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &none,
                         sizeof none);
            m_socket.abort();
        } else if (m_page.m_end == Page::End::Close ||
                   (m_page.m_answers && !m_page.m_tellsLength)) {
            m_socket.disconnectFromHost();
        }
    }

    LoopbackServer &m_server;
    QTcpSocket &m_socket;
    QByteArray m_received;
    Page m_page;
    QByteArray m_toSend;
    QTimer m_drip;
};

// --- the server ------------------------------------------------------------------------------------

LoopbackServer::LoopbackServer()
    : m_scheme(QStringLiteral("http")), m_listener(std::make_unique<QTcpServer>())
{
    Start();
}

LoopbackServer::LoopbackServer(const QSslConfiguration &tls) : m_scheme(QStringLiteral("https"))
{
    auto listener = std::make_unique<QSslServer>();
    listener->setSslConfiguration(tls);
    m_listener = std::move(listener);
    Start();
}

LoopbackServer::~LoopbackServer()
{
    Stop();
}

void LoopbackServer::Start()
{
    QTcpServer *listener = m_listener.get();
    QObject::connect(listener, &QTcpServer::pendingConnectionAvailable, listener, [this, listener] {
        while (QTcpSocket *socket = listener->nextPendingConnection()) {
            ++m_connections;
            new Connection(*this, socket);
        }
    });
    if (!listener->listen(QHostAddress::LocalHost, m_port))
        throw std::runtime_error(listener->errorString().toStdString());
    m_port = listener->serverPort();
}

void LoopbackServer::Stop()
{
    m_listener->close();
    m_listener->disconnect();
    for (QTcpSocket *socket : m_listener->findChildren<QTcpSocket *>()) {
        socket->disconnect();
        socket->abort();
        socket->deleteLater(); // it may be the one whose request is being answered
    }
}

void LoopbackServer::On(const QByteArray &path, const Page &page)
{
    On(path, [page](const Request &) { return page; });
}

void LoopbackServer::On(const QByteArray &path, std::initializer_list<Page> pages)
{
    On(path, [pages = std::vector<Page>(pages), next = size_t(0)](const Request &) mutable {
        const Page &page = pages.at(next);
        next = std::min(next + 1, pages.size() - 1);
        return page;
    });
}

void LoopbackServer::On(const QByteArray &path, Answer answer)
{
    m_answers[path] = std::move(answer);
}

LoopbackServer::Page LoopbackServer::AnswerTo(const Request &request)
{
    m_requests.append(request);
    if (OnRequest)
        OnRequest(request);

    auto answer = m_answers.find(request.target);
    if (answer == m_answers.end())
        answer = m_answers.find(request.Path());
    if (answer == m_answers.end())
        return Page("There is no page at " + request.target).Status(404);
    const Page page = (*answer)(request);
    if (page.m_login && request.Header("Authorization") != *page.m_login)
        return Page(page.m_refusal)
            .Status(401)
            .Header("WWW-Authenticate", "Basic realm=\"members\"");
    return page;
}

QString LoopbackServer::Origin() const
{
    return m_scheme + QStringLiteral("://127.0.0.1:") + QString::number(m_port);
}

QString LoopbackServer::Address(const QString &pathAndQuery) const
{
    return Origin() + pathAndQuery;
}

int LoopbackServer::Requests(const QByteArray &path) const
{
    return int(std::count_if(m_requests.begin(), m_requests.end(),
                             [&](const Request &request) { return request.Path() == path; }));
}

QString LoopbackServer::RefusedOrigin()
{
    QTcpServer closed; // its port was free a moment ago
    closed.listen(QHostAddress::LocalHost);
    return QStringLiteral("http://127.0.0.1:") + QString::number(closed.serverPort());
}
