#include "platform/inet.h"

#include "base/runtime_error.h"
#include "platform/inet_proxies.h"
#include "platform/inet_text.h"

#include <QAuthenticator>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <exception>
#include <utility>

namespace
{

enum States
{
    LookingUp = 1,
    Connecting = 3,
    RequestSent = 6,
    Receiving = 7,
    Received = 8,
    Disconnecting = 9,
    Disconnected = 10,
    Failed = 11,
    Completed = 12
};

constexpr int MaximumRedirects = 20;
constexpr qint64 ChunkBytes = 64 * 1024;

/// The address as callers put it together, with nothing escaped: what an address cannot hold is
/// escaped here, what is escaped already stays. A "#" is a part of what is asked for, such as a
/// symbol: to a transfer a mark within a page means nothing, and to take it for one would cut the
/// address off there. Invalid when it is no web address. A login in the address is left out; only
/// UserName and Password give one.
QUrl UrlOf(const QString &address)
{
    static const QRegularExpression scheme(QStringLiteral("^[a-z][a-z0-9+.-]*:"),
                                           QRegularExpression::CaseInsensitiveOption);
    QString text = address.trimmed();
    text.replace(QLatin1Char('#'), QLatin1String("%23"));
    if (!scheme.match(text).hasMatch())
        text.prepend(QLatin1String("http://"));
    QUrl url(text, QUrl::TolerantMode);
    const bool isWeb =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!url.isValid() || !isWeb || url.host().isEmpty())
        return {};
    url.setUserInfo({});
    return url;
}

QNetworkRequest RequestFor(const QUrl &url)
{
    QNetworkRequest request(url);
    // Some services turn away what does not call itself a browser.
    request.setRawHeader("User-Agent", "Mozilla/5.0 (X11; Linux x86_64)");
    request.setRawHeader("Accept", "*/*");
    // The price of now, not one that a proxy has kept.
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(MaximumRedirects);
    // Asked for here, so that it is undone here: the access manager does not tell when the
    // compressed page was cut short.
    request.setRawHeader("Accept-Encoding", "gzip");
    return request;
}

/// Whether the error only says that the reply has a status of 400 or above. Below
/// ContentAccessDenied are the errors of the connection: such a reply is not whole.
bool IsAboutTheStatus(QNetworkReply::NetworkError error, int status)
{
    return status >= 400 && (error >= QNetworkReply::ContentAccessDenied ||
                             error == QNetworkReply::ProxyAuthenticationRequiredError);
}

int CodeOf(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError: // also a network or host that is out of reach
        return Inet::NameNotResolved;
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::ProxyConnectionRefusedError:
        return Inet::CannotConnect;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ProxyConnectionClosedError:
        return Inet::ConnectionReset;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return Inet::TimedOut;
    case QNetworkReply::TooManyRedirectsError:
    case QNetworkReply::InsecureRedirectError:
        return Inet::RedirectFailed;
    case QNetworkReply::SslHandshakeFailedError:
        return Inet::SecurityFailed;
    case QNetworkReply::ProtocolUnknownError:
        return Inet::AddressInvalid;
    default:
        return Inet::InvalidReply;
    }
}

} // namespace

/// The transfer that is under way, or the outcome of the last one, and the connections.
///
/// What comes from the network only takes notes, at any time while events are handled. The states
/// are posted, and the transfer is ended, from the wait in Fetch: so a receiver may show a box,
/// cancel or throw.
class Inet::Transfer
{
public:
    Transfer(Inet &inet, Clock &clock);

    QString Fetch(const QString &address, bool givesLogin);
    void Cancel() { m_isCancelled = true; }
    void CloseConnections();
    bool IsUnderWay() const { return m_isUnderWay; }

    int code = 0;
    QString info;

private:
    class UnderWay;
    void DemandIdle() const;
    void Send(const QUrl &url);
    void GiveLogin(const QNetworkReply &reply, QAuthenticator &login);
    void Read();
    void PostStates();
    void Post(int state);
    QString TakePage();
    QString Fail(int failureCode, const QString &words);
    [[noreturn]] void ThrowTimeOut();

    Inet &m_inet;
    Clock &m_clock;
    QNetworkAccessManager m_manager;
    std::unique_ptr<QNetworkReply> m_reply;
    QByteArray m_page;
    bool m_isUnderWay = false;
    bool m_isCancelled = false;
    bool m_isOver = false; ///< the reply has ended, or the page is full
    QString m_loginHost;   ///< whose demand gets the login; empty when none does, or it was given
    bool m_loginWasGiven = false;
    int m_reached = 0; ///< the state
    int m_posted = 0;
};

/// However Fetch ends, the reply is aborted and freed, and no login stays behind.
class Inet::Transfer::UnderWay
{
public:
    explicit UnderWay(Transfer &transfer) : m_transfer(transfer)
    {
        m_transfer.m_isUnderWay = true;
        m_transfer.m_isCancelled = m_transfer.m_isOver = false;
        m_transfer.m_loginWasGiven = false;
        m_transfer.m_reached = m_transfer.m_posted = 0;
        m_transfer.m_page.clear();
        m_transfer.code = 0;
        m_transfer.info.clear();
    }
    ~UnderWay()
    {
        m_transfer.m_reply.reset();
        if (m_transfer.m_loginWasGiven)
            m_transfer.m_manager.clearAccessCache();
        m_transfer.m_page.clear();
        m_transfer.m_isUnderWay = false;
    }

private:
    Transfer &m_transfer;
};

Inet::Transfer::Transfer(Inet &inet, Clock &clock) : m_inet(inet), m_clock(clock)
{
    m_manager.setProxyFactory(new InetProxies(inet.AccessType)); // the manager owns it
    QObject::connect(
        &m_manager, &QNetworkAccessManager::authenticationRequired,
        [this](QNetworkReply *reply, QAuthenticator *login) { GiveLogin(*reply, *login); });
}

QString Inet::Transfer::Fetch(const QString &address, bool givesLogin)
{
    DemandIdle();
    const UnderWay underWay(*this);

    const QUrl url = UrlOf(address);
    if (!url.isValid())
        return Fail(AddressInvalid, QStringLiteral("The address is not valid"));
    m_loginHost = givesLogin ? url.host() : QString();
    Send(url);
    std::exception_ptr thrown; // by a receiver of states: it must not pass the event loop
    const auto isDone = [&] {
        try {
            if (!thrown)
                PostStates();
        } catch (...) {
            thrown = std::current_exception();
        }
        return thrown || m_isCancelled || m_isOver;
    };
    const bool isInTime = m_clock.WaitUntil(isDone, m_inet.RequestTimeout);
    if (thrown)
        std::rethrow_exception(thrown);
    if (m_isCancelled) {
        code = Cancelled;
        info = QStringLiteral("The transfer was cancelled");
        return {};
    }
    if (!isInTime)
        ThrowTimeOut();
    return TakePage();
}

void Inet::Transfer::Send(const QUrl &url)
{
    m_reached = LookingUp;
    m_reply.reset(m_manager.get(RequestFor(url)));
    m_reply->setReadBufferSize(MaximumPageBytes);
    const auto onReached = [this](int state) {
        return [this, state] { m_reached = std::max(m_reached, state); };
    };
    QObject::connect(m_reply.get(), &QNetworkReply::socketStartedConnecting, onReached(Connecting));
    QObject::connect(m_reply.get(), &QNetworkReply::requestSent, onReached(RequestSent));
    QObject::connect(m_reply.get(), &QNetworkReply::metaDataChanged, onReached(Receiving));
    QObject::connect(m_reply.get(), &QNetworkReply::readyRead, [this] { Read(); });
    QObject::connect(m_reply.get(), &QNetworkReply::finished, [this] {
        Read();
        m_isOver = true;
    });
}

/// Once, and only to the site of the address, not to one that this one points to. A login that was
/// refused is not given again: then the page that says so comes back.
void Inet::Transfer::GiveLogin(const QNetworkReply &reply, QAuthenticator &login)
{
    const QString host = std::exchange(m_loginHost, {});
    if (host.isEmpty() || reply.url().host() != host)
        return;
    m_loginWasGiven = true;
    login.setUser(m_inet.UserName);
    login.setPassword(m_inet.Password);
}

void Inet::Transfer::Read()
{
    while (m_page.size() < MaximumPageBytes) {
        const QByteArray chunk =
            m_reply->read(std::min<qint64>(ChunkBytes, MaximumPageBytes - m_page.size()));
        if (chunk.isEmpty())
            return;
        m_page += chunk;
    }
    m_isOver = true;
}

void Inet::Transfer::PostStates()
{
    while (m_posted < m_reached && !m_isCancelled)
        Post(++m_posted);
}

void Inet::Transfer::Post(int state)
{
    // The receiver may take itself away.
    if (const std::function<void(int)> receiver = m_inet.StateChanged)
        receiver(state);
}

QString Inet::Transfer::TakePage()
{
    const QNetworkReply::NetworkError error = m_reply->error();
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (CodeOf(error) == TimedOut)
        ThrowTimeOut(); // of the connection, before ours
    const bool isFull = m_page.size() == MaximumPageBytes;
    if (error != QNetworkReply::NoError && !IsAboutTheStatus(error, status) && !isFull)
        return Fail(CodeOf(error), m_reply->errorString());

    // The access manager takes some pages for whole that are not.
    const qint64 length = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    const bool isShort = m_page.size() < length;
    const Body body = Uncompress(m_page, m_reply->rawHeader("Content-Encoding"), MaximumPageBytes);
    if ((isShort || body == Body::CutShort) && !isFull)
        return Fail(ConnectionReset, QStringLiteral("The page was cut short"));
    if (body == Body::Damaged)
        return Fail(InvalidReply, QStringLiteral("The page came damaged"));
    const QString text =
        TextOf(m_page, m_reply->header(QNetworkRequest::ContentTypeHeader).toString());
    if (text.isEmpty() && status >= 400) {
        code = status;
        info = m_reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
    }
    m_reached = Received;
    PostStates();
    Post(Completed);
    return text;
}

QString Inet::Transfer::Fail(int failureCode, const QString &words)
{
    code = failureCode;
    info = words;
    Post(Failed);
    return {};
}

void Inet::Transfer::ThrowTimeOut()
{
    code = TimedOut;
    info = QStringLiteral("Request timed out");
    throw RuntimeError(TimeOutError, info);
}

void Inet::Transfer::DemandIdle() const
{
    if (m_isUnderWay)
        throw RuntimeError(StillExecutingError, QStringLiteral("Still executing last request"));
}

void Inet::Transfer::CloseConnections()
{
    DemandIdle();
    Post(Disconnecting);
    m_manager.clearConnectionCache();
    Post(Disconnected);
}

// --- Inet ------------------------------------------------------------------------------------------

Inet::Inet(Clock &clock) : m_transfer(std::make_unique<Transfer>(*this, clock)) {}

Inet::~Inet() = default;

QString Inet::OpenURL(const QString &address)
{
    return m_transfer->Fetch(address, false);
}

QString Inet::OpenURL()
{
    return m_transfer->Fetch(URL, true);
}

void Inet::Execute(const QString &operation)
{
    if (operation != QLatin1String("QUIT"))
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("Unknown operation: ") + operation);
    m_transfer->CloseConnections();
}

void Inet::Cancel()
{
    m_transfer->Cancel();
}

bool Inet::StillExecuting() const
{
    return m_transfer->IsUnderWay();
}

int Inet::ResponseCode() const
{
    return m_transfer->code;
}

QString Inet::ResponseInfo() const
{
    return m_transfer->info;
}
