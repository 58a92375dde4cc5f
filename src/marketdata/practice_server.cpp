// The protocol is libmicrohttpd's, within the program's own event loop. It answers GET requests of this
// machine with a page each. Everything it reads is bounded, since any program of this machine, and any web
// page in the user's browser, can send something here.

#include "marketdata/practice_server.h"

#include "base/runtime_error.h"
#include "marketdata/practice_pages.h"

#include <QHostAddress>
#include <QSocketNotifier>
#include <QUrl>
#include <QUrlQuery>

#include <microhttpd.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <list>
#include <optional>
#include <utility>

namespace
{

/// A port next to the one wanted is rather free again in the next run than one that the system picks.
constexpr int NeighboursTried = 10;

constexpr size_t LargestHead = 16 * 1024;
/// Of one connection: the head as it came and as it was read, and the head of the reply.
constexpr size_t MemoryLimit = 2 * LargestHead;
/// A browser opens six; the connection that was silent longest makes room for another one.
constexpr size_t MostConnections = 16;

QList<QByteArray> HeaderValues(MHD_Connection *connection, const QByteArray &name)
{
    struct Search
    {
        const QByteArray &name;
        QList<QByteArray> values;
    } search{name, {}};
    constexpr auto look = +[](void *wanted, MHD_ValueKind, const char *key, const char *value) {
        Search &search = *static_cast<Search *>(wanted);
        if (search.name.compare(key, Qt::CaseInsensitive) == 0)
            search.values.append(value);
        return MHD_YES;
    };
    MHD_get_connection_values(connection, MHD_HEADER_KIND, look, &search);
    return search.values;
}

/// Only a name of this machine: another one has been pointed here by a web page.
bool IsThisMachine(const QByteArray &hostHeader)
{
    const QString host = QUrl(QStringLiteral("http://") + QString::fromLatin1(hostHeader)).host();
    return host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0 ||
           QHostAddress(host).isLoopback();
}

bool IsMeantForUs(MHD_Connection *connection)
{
    const QList<QByteArray> hosts = HeaderValues(connection, "Host");
    return std::all_of(hosts.begin(), hosts.end(), IsThisMachine);
}

bool HasBody(MHD_Connection *connection)
{
    const QList<QByteArray> lengths = HeaderValues(connection, "Content-Length");
    return std::any_of(lengths.begin(), lengths.end(),
                       [](const QByteArray &length) { return length != "0"; }) ||
           !HeaderValues(connection, "Transfer-Encoding").isEmpty();
}

struct Request
{
    QByteArray target; ///< as it came: what libmicrohttpd makes of it takes "+" for a blank
    bool isRead = false;
};

struct Reply
{
    unsigned status;
    PracticePage page;
    bool closes = false;
};

Reply Refusal(unsigned status)
{
    const char *reason = MHD_get_reason_phrase_for(status);
    return {status, {QString::fromLatin1(reason), "text/plain; charset=utf-8"}, true};
}

Reply AnswerTo(MHD_Connection *connection, const QByteArray &method, const QByteArray &target,
               const QDateTime &now)
{
    const MHD_ConnectionInfo *head =
        MHD_get_connection_info(connection, MHD_CONNECTION_INFO_REQUEST_HEADER_SIZE);
    if (!head || head->header_size > LargestHead)
        return Refusal(MHD_HTTP_REQUEST_HEADER_FIELDS_TOO_LARGE);
    if (!target.startsWith('/'))
        return Refusal(MHD_HTTP_BAD_REQUEST);
    if (!IsMeantForUs(connection))
        return Refusal(MHD_HTTP_FORBIDDEN);
    if (method != "GET")
        return Refusal(MHD_HTTP_METHOD_NOT_ALLOWED);
    if (HasBody(connection))
        return Refusal(MHD_HTTP_CONTENT_TOO_LARGE);
    const QUrl url = QUrl::fromEncoded("http://127.0.0.1" + target);
    const std::optional<PracticePage> page = MakePracticePage(url.path(), QUrlQuery(url), now);
    return page ? Reply{MHD_HTTP_OK, *page} : Reply{MHD_HTTP_NOT_FOUND, PracticePageNotFound()};
}

MHD_Result Send(MHD_Connection *connection, const Reply &reply)
{
    QByteArray body = reply.page.text.toUtf8();
    MHD_Response *response =
        MHD_create_response_from_buffer(size_t(body.size()), body.data(), MHD_RESPMEM_MUST_COPY);
    MHD_add_response_header(response, "Content-Type", reply.page.mimeType.constData());
    if (reply.closes)
        MHD_add_response_header(response, "Connection", "close");
    const MHD_Result isQueued = MHD_queue_response(connection, reply.status, response);
    MHD_destroy_response(response);
    return isQueued;
}

} // namespace

class PracticeServer::Pages : private QObject
{
public:
    explicit Pages(Clock &clock) : m_clock(clock) {}

    /// At any free port for 0. False when it is taken.
    bool Listen(quint16 port);
    quint16 Port() const
    {
        return MHD_get_daemon_info(m_daemon.get(), MHD_DAEMON_INFO_BIND_PORT)->port;
    }

protected:
    void timerEvent(QTimerEvent *) override { Run(); }

private:
    void Run();
    void NoteConnection(MHD_Connection *connection, MHD_ConnectionNotificationCode event);
    MHD_Result Answer(MHD_Connection *connection, const char *method, Request &request);

    Clock &m_clock;
    std::list<MHD_Connection *> m_connections; ///< the one that was silent longest first
    std::unique_ptr<MHD_Daemon, decltype(&MHD_stop_daemon)> m_daemon{nullptr, MHD_stop_daemon};
    std::unique_ptr<QSocketNotifier> m_activity;
    int m_next = 0; ///< timer for the requests that are waiting; 0: none is
};

bool PracticeServer::Pages::Listen(quint16 port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);

    constexpr auto note =
        +[](void *self, MHD_Connection *connection, void **, MHD_ConnectionNotificationCode event) {
            static_cast<Pages *>(self)->NoteConnection(connection, event);
        };
    constexpr auto begin =
        +[](void *, const char *target, MHD_Connection *) -> void * { return new Request{target}; };
    constexpr auto end = +[](void *, MHD_Connection *, void **request, MHD_RequestTerminationCode) {
        delete static_cast<Request *>(*request);
        *request = nullptr;
    };
    constexpr auto answer =
        +[](void *self, MHD_Connection *connection, const char *, const char *method, const char *,
            const char *, size_t *, void **request) {
            return static_cast<Pages *>(self)->Answer(connection, method,
                                                      *static_cast<Request *>(*request));
        };
    // More than MostConnections, so that one that is to be given up can go.
    m_daemon.reset(MHD_start_daemon(
        MHD_USE_EPOLL | MHD_USE_SUPPRESS_DATE_NO_CLOCK, 0, nullptr, nullptr, answer, this,
        MHD_OPTION_SOCK_ADDR, reinterpret_cast<sockaddr *>(&address), MHD_OPTION_CONNECTION_LIMIT,
        unsigned(2 * MostConnections), MHD_OPTION_CONNECTION_MEMORY_LIMIT, MemoryLimit,
        MHD_OPTION_NOTIFY_CONNECTION, note, this, MHD_OPTION_URI_LOG_CALLBACK, begin, nullptr,
        MHD_OPTION_NOTIFY_COMPLETED, end, nullptr, MHD_OPTION_END));
    if (!m_daemon)
        return false;
    const int epoll = MHD_get_daemon_info(m_daemon.get(), MHD_DAEMON_INFO_EPOLL_FD)->epoll_fd;
    m_activity = std::make_unique<QSocketNotifier>(epoll, QSocketNotifier::Read);
    connect(m_activity.get(), &QSocketNotifier::activated, this, [this] { Run(); });
    return true;
}

/// A little of the work; what is left waits for its turn among the events, so that a flood of requests
/// leaves the window its turns.
void PracticeServer::Pages::Run()
{
    MHD_run(m_daemon.get());
    MHD_UNSIGNED_LONG_LONG wait = 0;
    const bool isLeft = MHD_get_timeout(m_daemon.get(), &wait) == MHD_YES;
    if (isLeft && m_next == 0) {
        m_next = startTimer(0);
    } else if (!isLeft && m_next != 0) {
        killTimer(m_next);
        m_next = 0;
    }
}

void PracticeServer::Pages::NoteConnection(MHD_Connection *connection,
                                           MHD_ConnectionNotificationCode event)
{
    m_connections.remove(connection);
    if (event == MHD_CONNECTION_NOTIFY_CLOSED)
        return;
    m_connections.push_back(connection);
    if (m_connections.size() <= MostConnections)
        return;
    const MHD_ConnectionInfo *silent =
        MHD_get_connection_info(m_connections.front(), MHD_CONNECTION_INFO_CONNECTION_FD);
    shutdown(silent->connect_fd, SHUT_RDWR); // libmicrohttpd then closes it
    m_connections.pop_front();
}

MHD_Result PracticeServer::Pages::Answer(MHD_Connection *connection, const char *method,
                                         Request &request)
{
    // It is called again when all is read. An answer before that ends the connection: it refuses a body.
    if (!std::exchange(request.isRead, true) && !HasBody(connection))
        return MHD_YES;
    const auto found = std::find(m_connections.begin(), m_connections.end(), connection);
    if (found != m_connections.end()) // the last one to be given up
        m_connections.splice(m_connections.end(), m_connections, found);
    return Send(connection, AnswerTo(connection, method, request.target, m_clock.Now()));
}

PracticeServer::PracticeServer(Clock &clock) : m_clock(clock) {}

PracticeServer::~PracticeServer() = default;

void PracticeServer::Listen(quint16 port)
{
    if (IsListening())
        return;
    auto pages = std::make_unique<Pages>(m_clock);
    bool isListening = false;
    for (int tried = 0; !isListening && port != 0 && tried < NeighboursTried; ++tried)
        isListening = port + tried <= 65535 && pages->Listen(quint16(port + tried));
    if (!isListening && !pages->Listen(0))
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("The practice quotes find no free port: ") +
                               qt_error_string());
    m_pages = std::move(pages);
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
