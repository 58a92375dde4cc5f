#include "marketdata/practice_server.h"

#include "base/runtime_error.h"
#include "marketdata/practice_pages.h"
#include "platform/clock_wait.h"
#include "platform/simulated_clock.h"
#include "support/print_qt.h"

#include <gtest/gtest.h>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTcpSocket>

using namespace std::chrono_literals;

namespace
{

struct Reply
{
    int status = 0; ///< 0: none came
    QByteArray mimeType;
    QString text;
};

class PracticeServerTest : public testing::Test
{
protected:
    Reply Ask(const QString &address, const QByteArray &method = "GET")
    {
        const std::unique_ptr<QNetworkReply> reply(
            m_network.sendCustomRequest(QNetworkRequest(QUrl(address)), method));
        EXPECT_TRUE(HandleEventsUntil([&] { return reply->isFinished(); }, 10s));
        return {reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
                reply->header(QNetworkRequest::ContentTypeHeader).toByteArray(),
                QString::fromUtf8(reply->readAll())};
    }
    Reply Get(const QString &path) { return Ask(server.Origin() + path); }

    /// What comes back on these bytes until the server closes, says "enough", or is silent.
    QByteArray Send(const QByteArray &bytes, const QByteArray &enough = "</html>")
    {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, server.Port());
        QByteArray all;
        bool isSent = false;
        HandleEventsUntil(
            [&] {
                if (!isSent && socket.state() == QTcpSocket::ConnectedState) {
                    socket.write(bytes);
                    isSent = true;
                }
                all += socket.readAll();
                return all.contains(enough) ||
                       (isSent && socket.state() == QTcpSocket::UnconnectedState);
            },
            300ms);
        return all;
    }
    bool IsWell() { return Get("/quotes?s=BRWK").status == 200; }

    static bool Answers(const QHostAddress &host, quint16 port)
    {
        QTcpSocket socket;
        socket.connectToHost(host, port);
        HandleEventsUntil([&] { return socket.state() != QTcpSocket::ConnectingState; }, 2s);
        return socket.state() == QTcpSocket::ConnectedState;
    }

    SimulatedClock clock{QDateTime(QDate(2026, 11, 20), QTime(12, 0))};
    PracticeServer server{clock};

private:
    QNetworkAccessManager m_network;
};

/// A port that somebody else has.
class TakenPort
{
public:
    TakenPort() { EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost)); }
    quint16 Port() const { return m_server.serverPort(); }

private:
    QTcpServer m_server;
};

quint16 FreePort()
{
    return TakenPort().Port();
}

} // namespace

TEST_F(PracticeServerTest, ListensOnlyWhenItIsAsked)
{
    EXPECT_FALSE(server.IsListening());
    EXPECT_EQ(server.Port(), 0);
    const quint16 port = FreePort();
    server.Listen(port);
    EXPECT_TRUE(server.IsListening());
    EXPECT_EQ(server.Port(), port);
    EXPECT_EQ(server.Origin(), QStringLiteral("http://127.0.0.1:%1").arg(port));
    server.Listen(FreePort()); // it does already
    EXPECT_EQ(server.Port(), port);
}

TEST_F(PracticeServerTest, TakesAnotherPortWhenItsOwnIsTaken)
{
    const TakenPort taken;
    server.Listen(taken.Port());
    EXPECT_NE(server.Port(), 0);
    EXPECT_NE(server.Port(), taken.Port());
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, TakesAPortNextToItsOwnBeforeAnyOther)
{
    const TakenPort taken;
    server.Listen(taken.Port());
    if (Answers(QHostAddress::LocalHost, quint16(taken.Port() + 1)) &&
        server.Port() != taken.Port() + 1)
        GTEST_SKIP() << "the next port has somebody else";
    EXPECT_EQ(server.Port(), taken.Port() + 1);
}

TEST_F(PracticeServerTest, TakesAnyPortBehindTheLast)
{
    QTcpServer last;
    last.listen(QHostAddress::LocalHost, 65535); // ours or somebody else's
    server.Listen(65535);
    EXPECT_NE(server.Port(), 65535);
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, TakesAnyPortForZero)
{
    server.Listen(0);
    EXPECT_NE(server.Port(), 0);
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, BeginsToListenWhenItsAddressIsAskedFor)
{
    const QString origin = server.Origin();
    EXPECT_TRUE(server.IsListening());
    EXPECT_EQ(origin, QStringLiteral("http://127.0.0.1:%1").arg(server.Port()));
}

TEST_F(PracticeServerTest, IsToBeHadOnThisMachineAlone)
{
    server.Listen(0);
    EXPECT_TRUE(Answers(QHostAddress::LocalHost, server.Port()));
    EXPECT_FALSE(Answers(QHostAddress("127.0.0.2"), server.Port()));
    EXPECT_FALSE(Answers(QHostAddress::LocalHostIPv6, server.Port()));
}

TEST_F(PracticeServerTest, LeavesItsPortWhenItGoes)
{
    quint16 port = 0;
    {
        PracticeServer other(clock);
        other.Listen(0);
        port = other.Port();
    }
    EXPECT_FALSE(Answers(QHostAddress::LocalHost, port));
    server.Listen(port);
    EXPECT_EQ(server.Port(), port);
}

TEST_F(PracticeServerTest, RunsBesideAnotherOneInTheSameProcess)
{
    SimulatedClock evening(QDateTime(QDate(2026, 11, 20), QTime(16, 0)));
    PracticeServer other(evening);
    server.Listen(0);
    other.Listen(server.Port());
    EXPECT_NE(other.Port(), server.Port());
    const QString here = Ask(server.Origin() + "/q?s=BRWK").text;
    const QString there = Ask(other.Origin() + "/q?s=BRWK").text;
    EXPECT_TRUE(here.contains("2026, 12:00"));
    EXPECT_TRUE(there.contains("2026, at the close"));
}

TEST_F(PracticeServerTest, AnswersWithItsPages)
{
    for (const char *path : {"/quotes", "/d", "/q", "/marketmap/", "/Downloads.html",
                             "/VersionChanges.html", "/version.xml"}) {
        const Reply reply = Get(path);
        EXPECT_EQ(reply.status, 200) << path;
        EXPECT_EQ(reply.text, MakePracticePage(path, {}, clock.Now())->text) << path;
        EXPECT_EQ(reply.mimeType, path == QByteArray("/version.xml") ? "text/xml; charset=utf-8"
                                                                     : "text/html; charset=utf-8");
    }
}

TEST_F(PracticeServerTest, HandsTheQueryOn)
{
    QUrlQuery query("s=BRWK+LMNT,^PRX,O'NEIL");
    EXPECT_EQ(Get("/quotes?s=BRWK+LMNT,^PRX,O'NEIL").text,
              MakePracticePage("/quotes", query, clock.Now())->text);
    EXPECT_TRUE(Get("/d?a=10&b=20&c=2026&d=10&e=20&f=2026&g=d&s=BRWK      ").status == 200);
    EXPECT_TRUE(
        Get("/d?a=10&b=19&c=2026&d=10&e=20&f=2026&g=d&s=BRWK      ").text.contains("19-Nov-26"));
}

TEST_F(PracticeServerTest, FollowsTheClock)
{
    const QString noon = Get("/quotes?s=BRWK").text;
    EXPECT_EQ(Get("/quotes?s=BRWK").text, noon);
    clock.Advance(3h);
    EXPECT_NE(Get("/quotes?s=BRWK").text, noon);
}

TEST_F(PracticeServerTest, SaysThatThereIsNoOtherPage)
{
    for (const char *path : {"/", "/index.html", "/versionXxml", "/..%2Fetc/passwd"}) {
        const Reply reply = Get(path);
        EXPECT_EQ(reply.status, 404) << path;
        EXPECT_TRUE(reply.text.contains("Not Found")) << path;
    }
}

TEST_F(PracticeServerTest, RefusesWhatIsNotAQuestion)
{
    for (const char *method : {"POST", "PUT", "DELETE"})
        EXPECT_EQ(Ask(server.Origin() + "/quotes?s=BRWK", method).status, 405) << method;
    EXPECT_TRUE(IsWell());
}

// --- requests that no browser makes --------------------------------------------------------------

TEST_F(PracticeServerTest, StandsAQueryOfAMegabyte)
{
    server.Listen(0);
    Send("GET /quotes?s=" + QByteArray(1024 * 1024, 'A') + " HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_TRUE(IsWell());
    Send("GET /quotes?s=" + QByteArray("A,").repeated(20000) + " HTTP/1.1\r\nHost: x\r\n\r\n");
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, StandsAHeaderOfAMegabyte)
{
    server.Listen(0);
    Send("GET /quotes HTTP/1.1\r\nHost: " + QByteArray(1024 * 1024, 'h') + "\r\n\r\n");
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, StandsEveryByteInAQuery)
{
    server.Listen(0);
    QByteArray escaped;
    QByteArray bare;
    for (int byte = 0; byte < 256; ++byte) {
        escaped += '%' + QByteArray::number(byte, 16).rightJustified(2, '0');
        bare += char(byte);
    }
    for (const QByteArray &path :
         {QByteArray("/quotes?s="), QByteArray("/q?s="), QByteArray("/d?s="), QByteArray("/")}) {
        Send("GET " + path + escaped + " HTTP/1.1\r\nHost: x\r\n\r\n");
        Send("GET " + path + bare + " HTTP/1.1\r\nHost: x\r\n\r\n");
        Send("GET " + path + "%F0%9F%98%80%ED%A0%80%C0%80 HTTP/1.1\r\nHost: x\r\n\r\n");
    }
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, AnswersWithoutAHostHeader)
{
    server.Listen(0);
    EXPECT_TRUE(Send("GET /quotes?s=BRWK HTTP/1.0\r\n\r\n").contains(">BRWK<"));
    EXPECT_TRUE(Send("GET /quotes?s=BRWK HTTP/1.1\r\n\r\n").contains(">BRWK<"));
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, ReadsNoMoreThanSixteenKilobytesOfAHead)
{
    server.Listen(0);
    const QByteArray begin = "GET /quotes?s=BRWK HTTP/1.1\r\nHost: localhost\r\nX: ";
    const auto status = [&](int size) {
        const QByteArray head = begin + QByteArray(size - begin.size() - 4, 'x') + "\r\n\r\n";
        return Send(head, "\r\n\r\n").left(12);
    };
    EXPECT_EQ(status(16 * 1024), "HTTP/1.1 200");
    EXPECT_EQ(status(16 * 1024 + 1), "HTTP/1.1 431");
    EXPECT_EQ(Send(begin + QByteArray(32 * 1024, 'x'), "\r\n\r\n").left(12),
              "HTTP/1.1 431"); // no end
    EXPECT_EQ(Send(QByteArray(32 * 1024, 'x'), "\r\n\r\n").left(12), "HTTP/1.1 414");
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, TakesNoBody)
{
    server.Listen(0);
    for (const char *body : {"Content-Length: 5\r\n\r\nhello", "Content-Length: 5\r\n\r\n",
                             "Transfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n"})
        EXPECT_EQ(Send(QByteArray("GET /quotes HTTP/1.1\r\nHost: localhost\r\n") + body, "\r\n\r\n")
                      .left(12),
                  "HTTP/1.1 413")
            << body;
    EXPECT_TRUE(Send("GET /quotes HTTP/1.1\r\nContent-Length: 0\r\n\r\n").contains("200 OK"));
}

TEST_F(PracticeServerTest, AnswersToTheNamesOfThisMachineAlone)
{
    server.Listen(0);
    const auto status = [this](const QByteArray &host) {
        return Send("GET /quotes HTTP/1.1\r\nHost: " + host + "\r\n\r\n", "\r\n\r\n").mid(9, 3);
    };
    for (const char *host :
         {"127.0.0.1", "127.0.0.1:8917", "localhost", "LocalHost:8917", "[::1]:8917", "127.0.0.2"})
        EXPECT_EQ(status(host), "200") << host;
    for (const char *host :
         {"quotes.example", "quotes.example:8917", "localhost.quotes.example", "10.0.0.1",
          "127.0.0.1.quotes.example", "127.0.0.1@quotes.example", "[", "a b", "0.0.0.0"})
        EXPECT_EQ(status(host), "403") << host;
    EXPECT_EQ(Send("GET /quotes HTTP/1.1\r\nHost: localhost\r\nHost: x.example\r\n\r\n", "\r\n\r\n")
                  .mid(9, 3),
              "403");
}

TEST_F(PracticeServerTest, ClosesTheConnectionWhenItIsAskedTo)
{
    server.Listen(0);
    const auto closes = [this](const QByteArray &request) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, server.Port());
        socket.write(request);
        QByteArray answer;
        const bool isClosed = HandleEventsUntil(
            [&] {
                answer += socket.readAll();
                return socket.state() == QTcpSocket::UnconnectedState;
            },
            300ms);
        EXPECT_TRUE(answer.contains("</html>")) << request.constData();
        EXPECT_EQ(answer.contains("Connection: close"), isClosed);
        return isClosed;
    };
    const QByteArray line = "GET /quotes?s=BRWK HTTP/1.1\r\nHost: localhost\r\n";
    EXPECT_TRUE(closes(line + "Connection: close\r\n\r\n"));
    EXPECT_TRUE(closes(line + "connection: Close\r\n\r\n"));
    EXPECT_TRUE(closes("GET /quotes?s=BRWK HTTP/1.0\r\n\r\n"));
    EXPECT_FALSE(closes(line + "\r\n"));
}

TEST_F(PracticeServerTest, KeepsFewConnectionsAndGivesUpTheOneThatWasSilentLongest)
{
    server.Listen(0);
    std::vector<std::unique_ptr<QTcpSocket>> sockets;
    const auto isOpen = [](const std::unique_ptr<QTcpSocket> &socket) {
        return socket->state() == QTcpSocket::ConnectedState;
    };
    for (int i = 0; i < 60; ++i) {
        sockets.push_back(std::make_unique<QTcpSocket>());
        sockets.back()->connectToHost(QHostAddress::LocalHost, server.Port());
        HandleEventsUntil([&] { return isOpen(sockets.back()); }, 2s);
    }
    HandleEventsUntil([] { return false; }, 50ms);
    EXPECT_EQ(std::count_if(sockets.begin(), sockets.end(), isOpen), 16);
    EXPECT_FALSE(isOpen(sockets.front()));
    EXPECT_TRUE(isOpen(sockets.back()));
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, LeavesTheWindowItsTurnsWhileRequestsFloodIn)
{
    server.Listen(0);
    QTcpSocket flood;
    flood.connectToHost(QHostAddress::LocalHost, server.Port());
    flood.write(QByteArray("GET /quotes?s=BRWK HTTP/1.1\r\n\r\n").repeated(200));
    int turns = 0;
    QByteArray answers;
    EXPECT_TRUE(HandleEventsUntil(
        [&] {
            ++turns;
            answers += flood.readAll();
            return answers.count("</html>") >= 200;
        },
        10s));
    EXPECT_GT(turns, 50);
}

TEST_F(PracticeServerTest, StandsWhatIsNoRequest)
{
    server.Listen(0);
    QByteArray allBytes;
    for (int byte = 0; byte < 256; ++byte)
        allBytes += char(byte);
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray("\r\n\r\n"), QByteArray(4096, '\0'), allBytes,
          QByteArray("\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03", 11), // a TLS greeting
          QByteArray("GET\r\n\r\n"), QByteArray("GET  HTTP/1.1\r\n\r\n"),
          QByteArray("GET http://[::1 HTTP/1.1\r\nHost: [\r\n\r\n"),
          QByteArray("GET * HTTP/1.1\r\n\r\n"), QByteArray("GET /quotes HTTP/9.9\r\n\r\n"),
          QByteArray("CONNECT host:443 HTTP/1.1\r\n\r\n"),
          QByteArray("GET /quotes HTTP/1.1\r\nHost: %zz:99999999\r\n\r\n"),
          QByteArray("GET /quotes HTTP/1.1\r\nContent-Length: -5\r\n\r\n"),
          QByteArray("POST /quotes HTTP/1.1\r\nContent-Length: 2147483647\r\n\r\nx"),
          QByteArray("POST /quotes HTTP/1.1\r\nContent-Length: 18446744073709551615\r\n\r\nx"),
          QByteArray("GET /quotes HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n")})
        Send(bytes);
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, StandsARequestThatBreaksOff)
{
    server.Listen(0);
    const QByteArray request = "GET /quotes?s=BRWK HTTP/1.1\r\nHost: x\r\n\r\n";
    for (int length = 0; length < request.size(); length += 5) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, server.Port());
        HandleEventsUntil([&] { return socket.state() == QTcpSocket::ConnectedState; }, 2s);
        socket.write(request.left(length));
        socket.flush();
        HandleEventsUntil([] { return false; }, 2ms);
        socket.abort();
    }
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, StandsOneWhoAsksAndDoesNotWaitForTheAnswer)
{
    server.Listen(0);
    for (int i = 0; i < 20; ++i) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, server.Port());
        HandleEventsUntil([&] { return socket.state() == QTcpSocket::ConnectedState; }, 2s);
        socket.write("GET /d?a=0&b=1&c=2000&d=10&e=20&f=2026&s=BRWK HTTP/1.1\r\nHost: x\r\n\r\n");
        socket.flush();
        socket.abort();
    }
    EXPECT_TRUE(IsWell());
}

TEST_F(PracticeServerTest, AnswersOneAfterTheOtherOnOneConnection)
{
    server.Listen(0);
    const QByteArray one = "GET /quotes?s=BRWK HTTP/1.1\r\nHost: localhost\r\n\r\n";
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, server.Port());
    for (int i = 0; i < 3; ++i) {
        QByteArray answer;
        socket.write(one);
        EXPECT_TRUE(HandleEventsUntil(
            [&] { return (answer += socket.readAll()).contains("</html>"); }, 2s));
        EXPECT_TRUE(answer.contains(">BRWK<"));
    }
}

TEST_F(PracticeServerTest, GoesWhileSomebodyIsConnected)
{
    QTcpSocket socket;
    {
        PracticeServer other(clock);
        other.Listen(0);
        socket.connectToHost(QHostAddress::LocalHost, other.Port());
        HandleEventsUntil([&] { return socket.state() == QTcpSocket::ConnectedState; }, 2s);
        socket.write("GET /quotes?s=BRWK HTTP/1.1\r\n");
        HandleEventsUntil([] { return false; }, 20ms);
    }
    HandleEventsUntil([&] { return socket.state() == QTcpSocket::UnconnectedState; }, 2s);
    EXPECT_EQ(socket.state(), QTcpSocket::UnconnectedState);
    EXPECT_TRUE(IsWell());
}
