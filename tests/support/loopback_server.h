#pragma once

/// A web server on the loopback address that does what a test tells it, good or bad.
///
///     using Page = LoopbackServer::Page;
///     LoopbackServer server;
///     server.On("/quotes", Page("A 10.50"));                      // whatever its query
///     server.On("/quotes?s=B", Page("B 20.00"));                  // this query alone
///     server.On("/gone", Page("no such symbol").Status(404));
///     server.On("/drip", Page("A 10.50").Drip(2, 10ms));          // two bytes every 10 ms
///     server.On("/reset", Page("A 10.50").ResetAfter(3));         // RST within the body
///     server.On("/cut", Page("A 10.50").CloseAfter(3));           // ends before the length told
///     server.On("/shut", Page::ClosesAtOnce());                   // takes the request, says nothing
///     server.On("/never", Page::NeverAnswers());
///     server.On("/mail", Page::Raw("220 ready\r\n"));              // no reply at all
///     server.On("/zip", Page("A 10.50").Gzip());
///     server.On("/moved", Page::RedirectTo("/quotes"));
///     server.On("/loop", Page::RedirectTo("/loop"));
///     server.On("/member", Page("A 10.50").AskLogin("me", "secret"));
///     server.On("/ill", {Page(), Page(), Page("A 10.50")});       // one after the other, last stays
///     server.On("/made", [](const LoopbackServer::Request &request) {
///         return Page(request.Query("s").toUtf8() + " 10.50");
///     });
///
///     inet.OpenURL(server.Address("/quotes?s=A"));
///     EXPECT_EQ(server.Requests("/quotes"), 1);
///     EXPECT_EQ(server.LastRequest().Header("Accept"), "*/*");
///
/// An address that no page was given for is answered with 404 and a body. Connections are kept open
/// for further requests. Everything runs in the event loop of the test's own thread, so the test
/// has to handle events while it waits. The destructor closes the port and all connections.
///
/// It can stand for a proxy as well: a request that names the whole address is looked up under it,
/// On("http://quotes.example/q", ...).

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QSslConfiguration>
#include <QString>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>

class QTcpServer;

class LoopbackServer
{
public:
    struct Request
    {
        QByteArray method;
        QByteArray target; ///< as it was sent, escaped, with its query: "/quotes?s=A%20B"
        QMap<QByteArray, QByteArray> headers; ///< by name in small letters

        QByteArray Path() const;                         ///< target without the query
        QString Query(const QString &key) const;         ///< unescaped; empty when it is not there
        QByteArray Header(const QByteArray &name) const; ///< empty when it was not sent
    };

    /// A reply: 200 with a Content-Length, unless said otherwise. Routines return the page itself.
    class Page
    {
    public:
        explicit Page(const QByteArray &body = {});
        static Page NeverAnswers();
        static Page ClosesAtOnce();
        static Page ResetsAtOnce();
        static Page Raw(const QByteArray &bytes); ///< in place of head and body; then it closes
        static Page RedirectTo(const QByteArray &address, int status = 302);

        Page &Status(int code, const QByteArray &reason = {}); ///< reason: the usual one when empty
        Page &Header(const QByteArray &name, const QByteArray &value); ///< adds one
        Page &Gzip();          ///< compresses the body and says so
        Page &WithoutLength(); ///< the end of the connection is the end of the body
        Page &Drip(int bytes, std::chrono::milliseconds every); ///< the head goes out at once
        Page &CloseAfter(int bytes);                            ///< of the body
        Page &ResetAfter(int bytes);
        /// Basic login; without it, or with another one, the reply is 401 and `refusal`.
        Page &AskLogin(const QByteArray &user, const QByteArray &password,
                       const QByteArray &refusal = "Authorization failed");

    private:
        friend class LoopbackServer;
        enum class End
        {
            Whole,
            Close,
            Reset
        };
        QByteArray Head() const;

        int m_status = 200;
        QByteArray m_reason;
        QList<std::pair<QByteArray, QByteArray>> m_headers;
        QByteArray m_body;
        bool m_tellsLength = true;
        bool m_answers = true; ///< false: not even a head
        End m_end = End::Whole;
        qsizetype m_endAfter = 0; ///< bytes of the body, for the other ends
        int m_dripBytes = 0;
        std::chrono::milliseconds m_dripEvery{0};
        std::optional<QByteArray> m_login; ///< what the Authorization header has to be
        QByteArray m_refusal;
    };
    using Answer = std::function<Page(const Request &)>;

    /// Listens at a free port.
    LoopbackServer();
    /// Speaks https with the certificate and key of `tls`.
    explicit LoopbackServer(const QSslConfiguration &tls);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    /// `path` with or without a query; a further call for it takes the place of the earlier one.
    void On(const QByteArray &path, const Page &page);
    void On(const QByteArray &path, std::initializer_list<Page> pages);
    void On(const QByteArray &path, Answer answer);

    quint16 Port() const { return m_port; }
    QString Origin() const;                             ///< "http://127.0.0.1:41234"
    QString Address(const QString &pathAndQuery) const; ///< origin and path; nothing is escaped

    /// Closes the port and every connection: further requests are refused.
    void Stop();
    /// Listens again, at the same port.
    void Start();

    const QList<Request> &Requests() const { return m_requests; }
    int Requests(const QByteArray &path) const; ///< that came for `path`, whatever their query
    const Request &LastRequest() const { return m_requests.constLast(); }
    int Connections() const { return m_connections; } ///< taken since the beginning
    /// Called with each request before it is answered: a test acts in the middle of a transfer.
    std::function<void(const Request &)> OnRequest;

    /// An address on this machine at whose port nothing listens.
    static QString RefusedOrigin();

private:
    class Connection;
    Page AnswerTo(const Request &request);

    QString m_scheme;
    std::unique_ptr<QTcpServer> m_listener;
    quint16 m_port = 0;
    QMap<QByteArray, Answer> m_answers;
    QList<Request> m_requests;
    int m_connections = 0;
};
