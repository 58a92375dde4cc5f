#include "marketdata/practice_server.h"

#include "base/runtime_error.h"
#include "marketdata/practice_pages.h"

#include <QHttpServer>
#include <QHttpServerResponder>
#include <QNetworkProxy>
#include <QTcpServer>

using Status = QHttpServerResponder::StatusCode;

namespace
{

/// A port next to the one wanted is rather free again in the next run than one that the system picks.
constexpr int NeighboursTried = 10;

} // namespace

class PracticeServer::Pages
{
public:
    Pages(Clock &clock, std::unique_ptr<QTcpServer> listener)
        : m_clock(clock), m_port(listener->serverPort())
    {
        m_server.setMissingHandler(
            [this](const QHttpServerRequest &request, QHttpServerResponder &&responder) {
                Answer(request, std::move(responder));
            });
        m_server.bind(listener.release());
    }
    quint16 Port() const { return m_port; }

private:
    void Answer(const QHttpServerRequest &request, QHttpServerResponder &&responder) const
    {
        if (request.method() != QHttpServerRequest::Method::Get) {
            responder.write(Status::MethodNotAllowed);
            return;
        }
        const std::optional<PracticePage> page =
            MakePracticePage(request.url().path(), request.query(), m_clock.Now());
        if (page)
            responder.write(page->text.toUtf8(), page->mimeType);
        else
            responder.write(PracticePageNotFound().text.toUtf8(), PracticePageNotFound().mimeType,
                            Status::NotFound);
    }

    Clock &m_clock;
    quint16 m_port;
    QHttpServer m_server;
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
