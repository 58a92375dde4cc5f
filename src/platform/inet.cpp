#include "platform/inet.h"

#include "base/runtime_error.h"
#include "platform/http_exchange.h"
#include "platform/inet_proxies.h"
#include "platform/inet_text.h"

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

/// The address as callers put it together, with nothing escaped: what an address cannot hold is
/// escaped here, what is escaped already stays. A "%" that escapes nothing is escaped first, since one
/// of them makes QUrl escape every other one again. A "#" is a part of what is asked for, such as a
/// symbol: to a transfer a mark within a page means nothing, and to take it for one would cut the
/// address off there. Invalid when it is no web address. A login in the address is left out; only
/// UserName and Password give one.
QUrl UrlOf(const QString &address)
{
    static const QRegularExpression scheme(QStringLiteral("^[a-z][a-z0-9+.-]*:"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression barePercent(QStringLiteral("%(?![0-9A-Fa-f]{2})"));
    QString text = address.trimmed();
    text.replace(barePercent, QStringLiteral("%25"));
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

HttpHeaders UsualHeaders()
{
    return {
        // Some services turn away what does not call itself a browser.
        {"User-Agent", "Mozilla/5.0 (X11; Linux x86_64)"},
        {"Accept", "*/*"},
        {"Accept-Language", "en-US,en,*"}, // pages are read as English ones
        {"Accept-Encoding", "gzip"},
        {"Connection", "Keep-Alive"},
        // The price of now, not one that a proxy has kept.
        {"Pragma", "no-cache"},
        {"Cache-Control", "no-cache"},
    };
}

bool IsOfTheWeb(const QUrl &url)
{
    const bool isWeb =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return url.isValid() && isWeb && !url.host().isEmpty();
}

bool IsSameSite(const QUrl &one, const QUrl &other)
{
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    };
    return one.scheme() == other.scheme() && one.host() == other.host() && port(one) == port(other);
}

/// Seconds, or a date, which counts from the reply's own.
std::optional<std::chrono::seconds> WaitOf(const HttpReply &reply, const QDateTime &now)
{
    const QByteArray text = reply.Header("Retry-After").trimmed();
    bool isNumber = false;
    const qint64 seconds = text.toLongLong(&isNumber);
    if (isNumber)
        return std::chrono::seconds(std::max<qint64>(seconds, 0));
    const auto moment = [](const QByteArray &date) {
        return QDateTime::fromString(
            QString::fromLatin1(date).replace(QLatin1String("GMT"), QLatin1String("+0000")),
            Qt::RFC2822Date);
    };
    const QDateTime until = moment(text);
    if (!until.isValid())
        return std::nullopt;
    const QDateTime sent = moment(reply.Header("Date"));
    return std::chrono::seconds(std::max<qint64>((sent.isValid() ? sent : now).secsTo(until), 0));
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
    int status = 0; ///< HTTP
    bool endIsCertain = true;
    std::optional<std::chrono::seconds> retryAfter;

private:
    class UnderWay;
    void DemandIdle() const;
    void Send(const QUrl &url);
    void TakeReply();
    bool Redirect(const HttpReply &reply);
    void PostStates();
    void Post(int state);
    QString TakePage();
    QString Fail(int failureCode, const QString &words);
    [[noreturn]] void ThrowTimeOut();

    Inet &m_inet;
    Clock &m_clock;
    HttpExchange m_exchange{MaximumPageBytes};
    InetProxies m_proxies;
    QUrl m_url; ///< asked for now: the address, or where it points to
    int m_redirects = 0;
    QString m_redirectFailure;
    bool m_isUnderWay = false;
    bool m_isCancelled = false;
    bool m_isOver = false; ///< the reply has ended, or the page is full
    QUrl m_loginSite;      ///< whose demand gets the login; empty when none does
    int m_reached = 0;     ///< the state
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
        m_transfer.m_reached = m_transfer.m_posted = 0;
        m_transfer.m_redirects = 0;
        m_transfer.m_redirectFailure.clear();
        m_transfer.code = m_transfer.status = 0;
        m_transfer.info.clear();
        m_transfer.endIsCertain = true;
        m_transfer.retryAfter.reset();
    }
    ~UnderWay()
    {
        m_transfer.m_exchange.Abort();
        m_transfer.m_isUnderWay = false;
    }

private:
    Transfer &m_transfer;
};

Inet::Transfer::Transfer(Inet &inet, Clock &clock)
    : m_inet(inet), m_clock(clock), m_proxies(inet.AccessType)
{
    m_exchange.OnOver = [this] { TakeReply(); };
    m_exchange.OnProgress = [this](HttpExchange::Progress progress) {
        const int state = progress == HttpExchange::Connecting ? Connecting
                          : progress == HttpExchange::Sent     ? RequestSent
                                                               : Receiving;
        m_reached = std::max(m_reached, state);
    };
}

QString Inet::Transfer::Fetch(const QString &address, bool givesLogin)
{
    DemandIdle();
    const UnderWay underWay(*this);

    const QUrl url = UrlOf(address);
    if (!url.isValid())
        return Fail(AddressInvalid, QStringLiteral("The address is not valid"));
    m_loginSite = givesLogin ? url : QUrl();
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

/// The login goes to the site of the address alone, not to one that this one points to.
void Inet::Transfer::Send(const QUrl &url)
{
    m_url = url;
    m_reached = std::max<int>(m_reached, LookingUp);
    std::optional<HttpLogin> login;
    if (!m_loginSite.isEmpty() && IsSameSite(url, m_loginSite))
        login = HttpLogin{m_inet.UserName, m_inet.Password};
    m_exchange.Begin(
        {url, m_proxies.queryProxy(QNetworkProxyQuery(url)).value(0), UsualHeaders(), login});
}

/// May be followed by a further request.
void Inet::Transfer::TakeReply()
{
    const HttpReply &reply = m_exchange.Reply();
    m_isOver = reply.error != 0 || !Redirect(reply);
}

bool Inet::Transfer::Redirect(const HttpReply &reply)
{
    constexpr int redirects[] = {301, 302, 303, 307, 308};
    const QByteArray location = reply.Header("Location");
    if (location.isEmpty() ||
        std::find(std::begin(redirects), std::end(redirects), reply.status) == std::end(redirects))
        return false;
    QUrl next = m_url.resolved(QUrl::fromEncoded(location));
    next.setUserInfo({});
    const bool isLessSafe =
        m_url.scheme() == QLatin1String("https") && next.scheme() != QLatin1String("https");
    if (++m_redirects > MaximumRedirects)
        m_redirectFailure = QStringLiteral("The page points to another one too often");
    else if (!IsOfTheWeb(next))
        m_redirectFailure = QStringLiteral("The page points out of the web");
    else if (isLessSafe)
        m_redirectFailure = QStringLiteral("The page points to one that is less safe");
    if (!m_redirectFailure.isEmpty())
        return false;
    Send(next);
    return true;
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
    const HttpReply &reply = m_exchange.Reply();
    status = reply.status;
    if (reply.error == TimedOut)
        ThrowTimeOut(); // of the connection, before ours
    if (!m_redirectFailure.isEmpty())
        return Fail(RedirectFailed, m_redirectFailure);
    if (reply.error != 0)
        return Fail(reply.error, reply.errorText);

    QByteArray page = reply.body;
    const Body body = Uncompress(page, reply.Header("Content-Encoding"), MaximumPageBytes);
    if (body == Body::CutShort && !reply.isFull)
        return Fail(ConnectionReset, QStringLiteral("The page was cut short"));
    if (body == Body::Damaged)
        return Fail(InvalidReply, QStringLiteral("The page came damaged"));
    const QString text = TextOf(page, QString::fromLatin1(reply.Header("Content-Type")));
    if (text.isEmpty() && status >= 400) {
        code = status;
        info = QString::fromLatin1(reply.reason);
    }
    // A compressed form tells its end, too.
    endIsCertain = reply.endIsCertain || !reply.Header("Content-Encoding").isEmpty();
    if (status == 429 || status == 503)
        retryAfter = WaitOf(reply, m_clock.Now());
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
    m_exchange.CloseConnections();
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

int Inet::HttpStatus() const
{
    return m_transfer->status;
}

bool Inet::EndIsCertain() const
{
    return m_transfer->endIsCertain;
}

std::optional<std::chrono::seconds> Inet::RetryAfter() const
{
    return m_transfer->retryAfter;
}
