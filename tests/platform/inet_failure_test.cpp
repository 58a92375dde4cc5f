/// Transfers that fail, on the wire or in time, and what else happens while one is under way.

#include "loopback_server.h"
#include "print_qt.h"

#include "base/runtime_error.h"
#include "platform/inet.h"
#include "platform/lifetime.h"
#include "platform/simulated_clock.h"
#include "platform/system_clock.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

using namespace std::chrono_literals;
using Page = LoopbackServer::Page;

namespace
{

/// The states a transfer posts from its begin to its end.
const QList<int> WholeTransfer{1, 2, 3, 4, 5, 6, 7, 8, 12};

template <typename ClockType>
std::unique_ptr<Clock> MakeClock();
template <>
std::unique_ptr<Clock> MakeClock<SystemClock>()
{
    return std::make_unique<SystemClock>();
}
template <>
std::unique_ptr<Clock> MakeClock<SimulatedClock>()
{
    return std::make_unique<SimulatedClock>(QDateTime(QDate(2026, 3, 2), QTime(10, 15)));
}

/// Transfers last as long under a clock that stands still as under the machine's.
template <typename ClockType>
class InetFailure : public testing::Test
{
protected:
    InetFailure()
    {
        m_inet.StateChanged = [this](int state) { m_states.append(state); };
    }

    QString Fetch(const QString &path) { return m_inet.OpenURL(m_server.Address(path)); }
    /// The number of the error that ends the transfer; 0 when there is none.
    int ErrorOf(const QString &path)
    {
        try {
            Fetch(path);
        } catch (const RuntimeError &error) {
            m_description = error.Description();
            return error.Number();
        }
        return 0;
    }
    void ExpectFailure(const QString &page, int code)
    {
        EXPECT_EQ(page, "");
        EXPECT_EQ(m_inet.ResponseCode(), code);
        EXPECT_FALSE(m_inet.ResponseInfo().isEmpty());
        EXPECT_FALSE(m_inet.ResponseInfo().contains("secret")) << "the query is told";
        EXPECT_EQ(m_states.count(11), 1);
        EXPECT_EQ(m_states.isEmpty() ? 0 : m_states.constLast(), 11);
        EXPECT_FALSE(m_inet.StillExecuting());
        m_states.clear();
    }
    void ExpectItStillWorks()
    {
        m_states.clear();
        m_inet.RequestTimeout = 60s;
        m_server.On("/works", Page("ACME 10.50"));
        EXPECT_EQ(Fetch("/works"), "ACME 10.50");
        EXPECT_EQ(m_inet.ResponseCode(), 0);
    }

    std::unique_ptr<Clock> m_clock = MakeClock<ClockType>();
    LoopbackServer m_server;
    Inet m_inet{*m_clock};
    QList<int> m_states;
    QString m_description;
};

using BothClocks = testing::Types<SystemClock, SimulatedClock>;
TYPED_TEST_SUITE(InetFailure, BothClocks);

} // namespace

// --- on the wire -----------------------------------------------------------------------------------

TYPED_TEST(InetFailure, TellsAHostThatIsNotFound)
{
    this->ExpectFailure(this->m_inet.OpenURL("http://no-such-host.invalid/q?s=secret"),
                        Inet::NameNotResolved);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, TellsAPortThatIsClosed)
{
    this->ExpectFailure(this->m_inet.OpenURL(LoopbackServer::RefusedOrigin() + "/q?s=secret"),
                        Inet::CannotConnect);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, TellsAnAddressThatIsNone)
{
    for (const char *address :
         {"", "   ", "http://", "https:///q", "file:///etc/hostname", "ftp://127.0.0.1/q",
          "data:text/plain,ACME 10.50", "qrc:/x", "about:blank", "javascript:1",
          "http://127.0.0.1:99999/q", "http://[::1/q", "http://a b/q", "://", "?", "/q?s=A"}) {
        SCOPED_TRACE(address);
        this->ExpectFailure(this->m_inet.OpenURL(address), Inet::AddressInvalid);
    }
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, HandsBackNothingOfAPageThatWasReset)
{
    this->m_server.On("/quotes", Page("ACME 1024.50").ResetAfter(7)); // "ACME 10" is another price
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    this->m_server.On("/quotes", Page::ResetsAtOnce());
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, HandsBackNothingOfAPageThatEndsBeforeItsLength)
{
    this->m_server.On("/quotes", Page("ACME 1024.50").CloseAfter(7));
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    this->m_server.On("/quotes", Page("ACME 1024.50").CloseAfter(0));
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    this->m_server.On("/quotes", Page("no such symbol").Status(404).CloseAfter(7));
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    this->m_server.On("/quotes", Page(QByteArray(500, 'x') + "1024.50").Gzip().CloseAfter(15));
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, HandsBackNothingOfACompressedPageThatIsCutShort)
{
    // No length is told: only the compressed form says where the page ends.
    const Page page = Page(QByteArray(500, 'x') + "1024.50").Gzip().WithoutLength();
    for (const int bytes : {1, 9, 10, 11, 15, 20, 25}) {
        SCOPED_TRACE(bytes);
        this->m_server.On("/quotes", Page(page).CloseAfter(bytes));
        this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    }
    this->m_server.On("/quotes", page);
    EXPECT_EQ(this->Fetch("/quotes").size(), 507);
}

namespace
{

/// A reply in chunks of `size` bytes.
QByteArray Chunked(const QByteArray &body, int size, const QByteArray &headers = {})
{
    QByteArray reply = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n" + headers + "\r\n";
    for (int at = 0; at < body.size(); at += size) {
        const QByteArray chunk = body.mid(at, size);
        reply += QByteArray::number(chunk.size(), 16) + "\r\n" + chunk + "\r\n";
    }
    return reply + "0\r\n\r\n";
}

} // namespace

TYPED_TEST(InetFailure, HandsBackNothingOfAPageInChunksThatIsCutShort)
{
    const QByteArray body = "<p>[ACME]$612.34;</p> [BOND]$1,024.50;";
    for (const QByteArray &headers : {QByteArray(), QByteArray("Connection: close\r\n")}) {
        for (const int size : {5, 14, 100}) {
            const QByteArray whole = Chunked(body, size, headers);
            const qsizetype head = whole.indexOf("\r\n\r\n") + 4;
            // The last line feed adds nothing: the last chunk has come.
            for (qsizetype cut = head; cut < whole.size() - 1; ++cut) {
                for (const int drip : {0, int(head), 40}) { // at once, head first, in pieces
                    Page page = Page::Raw(whole.first(cut));
                    if (drip > 0)
                        page.Drip(drip, 1ms);
                    this->m_server.On("/quotes", page);
                    SCOPED_TRACE(whole.mid(head, cut - head).constData());
                    SCOPED_TRACE(drip);
                    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
                }
            }
        }
    }
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, HandsBackNothingOfAReplyThatIsCutInItsHead)
{
    const QByteArray head =
        "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nSet-Cookie: id=7\r\n\r\n";
    for (qsizetype cut = 0; cut < head.size() - 2; ++cut) {
        this->m_server.On("/quotes", Page::Raw(head.first(cut)));
        SCOPED_TRACE(cut);
        this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    }
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, TellsAHeadWithoutEnd)
{
    this->m_server.On("/quotes", Page::Raw("HTTP/1.1 200 OK\r\n" +
                                           QByteArray("Set-Cookie: id=7\r\n").repeated(10000)));
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::InvalidReply);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, ReadsAPageInChunksOfAnySize)
{
    const QByteArray body = "<p>[ACME]$612.34;</p> [BOND]$1,024.50;";
    for (const int size : {1, 5, 14, 16, 100}) {
        for (const int drip : {0, 1, 7}) {
            Page page = Page::Raw(Chunked(body, size));
            if (drip > 0)
                page.Drip(drip, 1ms);
            this->m_server.On("/quotes", page);
            EXPECT_EQ(this->Fetch("/quotes"), QString::fromLatin1(body)) << size << ' ' << drip;
            EXPECT_TRUE(this->m_inet.EndIsCertain());
        }
    }
    this->m_server.On("/quotes", Page::Raw("HTTP/1.1 200 OK\r\ntransfer-encoding: Chunked\r\n\r\n"
                                           "0005;name=value\r\nACME \r\n5 \r\n10.50\r\n"
                                           "000\r\nExpires: never\r\n\r\n"));
    EXPECT_EQ(this->Fetch("/quotes"), "ACME 10.50");
}

TYPED_TEST(InetFailure, TellsChunksThatAreNone)
{
    const QByteArray head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (const char *chunks : {"seven\r\nACME \r\n0\r\n\r\n", "\r\n\r\n", "-5\r\nACME \r\n",
                               "3\r\nACME \r\n0\r\n\r\n", "ffffffffffffffffff\r\nACME"}) {
        this->m_server.On("/quotes", Page::Raw(head + chunks));
        SCOPED_TRACE(chunks);
        this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::InvalidReply);
    }
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, TellsAPageInACompressionThatItDidNotAskFor)
{
    this->m_server.On("/quotes", Page("ACME 10.50").Header("Content-Encoding", "br"));
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::InvalidReply);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, TellsASiteThatTakesTheRequestAndCloses)
{
    this->m_server.On("/quotes", Page::ClosesAtOnce());
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, TellsAReplyThatIsNoWebPage)
{
    this->m_server.On("/quotes", Page::Raw("220 mail.example ready\r\n\r\nACME 10.50"));
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::ConnectionReset);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, TellsAPageThatIsNotCompressedAsItSays)
{
    this->m_server.On("/quotes", Page("ACME 10.50").Header("Content-Encoding", "gzip"));
    this->ExpectFailure(this->Fetch("/quotes?s=secret"), Inet::InvalidReply);
    this->ExpectItStillWorks();
}

// --- in time ---------------------------------------------------------------------------------------

TYPED_TEST(InetFailure, TimesOutWhenTheSiteNeverAnswers)
{
    this->m_server.On("/never", Page::NeverAnswers());
    this->m_inet.RequestTimeout = 60ms;
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_EQ(this->ErrorOf("/never"), 35761);
    EXPECT_GE(elapsed.elapsed(), 50);
    EXPECT_EQ(this->m_description, "Request timed out");
    EXPECT_EQ(this->m_inet.ResponseCode(), Inet::TimedOut);
    EXPECT_EQ(this->m_inet.ResponseInfo(), "Request timed out");
    EXPECT_FALSE(this->m_states.contains(11)); // who waits has the error
    EXPECT_FALSE(this->m_inet.StillExecuting());
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, WaitsForAPageThatDripsWithinTheTime)
{
    this->m_server.On("/drip", Page("ACME 10.50").Drip(1, 5ms));
    EXPECT_EQ(this->Fetch("/drip"), "ACME 10.50");
    EXPECT_EQ(this->m_states, WholeTransfer);
}

TYPED_TEST(InetFailure, TimesOutOnAPageThatDripsBeyondTheTime)
{
    this->m_server.On("/drip", Page(QByteArray(1000, 'x')).Drip(1, 5ms)); // 5 seconds
    this->m_inet.RequestTimeout = 80ms;
    EXPECT_EQ(this->ErrorOf("/drip"), 35761); // though something came all the time
    this->ExpectItStillWorks();
}

// --- states ----------------------------------------------------------------------------------------

TYPED_TEST(InetFailure, PostsEachStateOnceInOrder)
{
    this->m_server.On("/quotes", Page("ACME 10.50"));
    this->m_server.On("/old", Page::RedirectTo("/quotes"));
    for (const char *path : {"/quotes", "/quotes", "/old"}) {
        this->m_states.clear();
        this->Fetch(path);
        EXPECT_EQ(this->m_states, WholeTransfer) << path;
    }
}

TYPED_TEST(InetFailure, PostsNoStateBeyondTheOneThatWasReached)
{
    this->m_inet.OpenURL("http://no-such-host.invalid/q");
    EXPECT_EQ(this->m_states, QList<int>({1, 11}));
    this->m_states.clear();
    this->m_inet.OpenURL(LoopbackServer::RefusedOrigin());
    EXPECT_EQ(this->m_states, QList<int>({1, 2, 3, 11}));
    this->m_states.clear();
    this->m_server.On("/closed", Page::ClosesAtOnce());
    this->Fetch("/closed");
    EXPECT_EQ(this->m_states, QList<int>({1, 2, 3, 4, 5, 6, 11}));
}

TYPED_TEST(InetFailure, TellsTheCodeWithTheErrorState)
{
    int code = 0;
    this->m_inet.StateChanged = [&](int state) {
        if (state == 11)
            code = this->m_inet.ResponseCode();
    };
    this->m_inet.OpenURL(LoopbackServer::RefusedOrigin());
    EXPECT_EQ(code, Inet::CannotConnect);
}

TYPED_TEST(InetFailure, LetsTheReceiverOfStatesGoWhileItIsCalled)
{
    this->m_server.On("/quotes", Page("ACME 10.50"));
    int calls = 0;
    const auto witness = std::make_shared<int>(7);
    this->m_inet.StateChanged = [this, &calls, witness](int) {
        this->m_inet.StateChanged = nullptr;
        calls += *witness; // what was caught is still there
    };
    EXPECT_EQ(this->Fetch("/quotes"), "ACME 10.50");
    EXPECT_EQ(calls, 7);
}

TYPED_TEST(InetFailure, GoesOnWhileTheReceiverOfAStateWaits)
{
    this->m_server.On("/quotes", Page("ACME 10.50"));
    this->m_inet.StateChanged = [this](int state) {
        if (state == 3)
            SystemClock().Wait(50ms);
    };
    EXPECT_EQ(this->Fetch("/quotes"), "ACME 10.50");
}

// --- meanwhile -------------------------------------------------------------------------------------

TYPED_TEST(InetFailure, EndsWithNothingWhenItIsCancelled)
{
    this->m_server.On("/never", Page::NeverAnswers());
    this->m_server.OnRequest = [this](const LoopbackServer::Request &) {
        EXPECT_TRUE(this->m_inet.StillExecuting());
        this->m_inet.Cancel();
    };
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_EQ(this->Fetch("/never"), "");
    EXPECT_LT(elapsed.elapsed(), 5000); // at once, not when the time is up
    EXPECT_EQ(this->m_inet.ResponseCode(), Inet::Cancelled);
    EXPECT_FALSE(this->m_states.contains(11)); // nobody wants a box for it
    EXPECT_FALSE(this->m_states.contains(12));
    EXPECT_FALSE(this->m_inet.StillExecuting());
    this->m_server.OnRequest = nullptr;
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, HandsBackNothingOfAPageThatWasCancelledHalfWay)
{
    this->m_server.On("/drip", Page("ACME 1024.50").Drip(1, 5ms));
    this->m_inet.StateChanged = [this](int state) {
        if (state == 7)
            this->m_inet.Cancel();
        EXPECT_LE(state, 7);
    };
    EXPECT_EQ(this->Fetch("/drip"), "");
    EXPECT_EQ(this->m_inet.ResponseCode(), Inet::Cancelled);
}

TYPED_TEST(InetFailure, AsksNothingWhenItIsCancelledAtItsFirstState)
{
    this->m_inet.StateChanged = [this](int) { this->m_inet.Cancel(); };
    EXPECT_EQ(this->Fetch("/quotes"), "");
    EXPECT_EQ(this->m_inet.ResponseCode(), Inet::Cancelled);
}

TYPED_TEST(InetFailure, TakesACancelOfNothingCalmly)
{
    this->m_inet.Cancel();
    EXPECT_EQ(this->m_inet.ResponseCode(), 0);
    this->ExpectItStillWorks();
    this->m_inet.Cancel();
    EXPECT_EQ(this->m_inet.ResponseCode(), 0);
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, RefusesASecondTransferWhileOneIsUnderWay)
{
    this->m_server.On("/quotes", Page("ACME 10.50"));
    int opened = 0;
    int quit = 0;
    this->m_server.OnRequest = [&](const LoopbackServer::Request &) {
        opened = this->ErrorOf("/other");
        try {
            this->m_inet.Execute("QUIT");
        } catch (const RuntimeError &error) {
            quit = error.Number();
        }
    };
    EXPECT_EQ(this->Fetch("/quotes"), "ACME 10.50"); // the first one is not disturbed
    EXPECT_EQ(opened, 35764);
    EXPECT_EQ(quit, 35764);
    EXPECT_EQ(this->m_description, "Still executing last request");
    EXPECT_EQ(this->m_inet.ResponseCode(), 0);
}

TYPED_TEST(InetFailure, LetsTwoTransferControlsWorkAtOnce)
{
    this->m_server.On("/outer", Page("OUTER"));
    this->m_server.On("/inner", Page("INNER"));
    Inet other(*this->m_clock);
    QString inner;
    this->m_inet.StateChanged = [&](int state) {
        if (state == 1)
            inner = other.OpenURL(this->m_server.Address("/inner"));
    };
    EXPECT_EQ(this->Fetch("/outer"), "OUTER");
    EXPECT_EQ(inner, "INNER");
}

TYPED_TEST(InetFailure, LeavesNothingBehindWhenTheProgramEndsInTheMiddle)
{
    /// A wait during which the program ends does not come back.
    struct EndingClock : TypeParam
    {
        using TypeParam::TypeParam;
        bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds) override
        {
            TypeParam::WaitUntil(done, 30ms);
            throw ProgramEnded();
        }
    };
    this->m_server.On("/drip", Page(QByteArray(1000, 'x')).Drip(1, 5ms));
    std::unique_ptr<Clock> clock;
    if constexpr (std::is_same_v<TypeParam, SystemClock>)
        clock = std::make_unique<EndingClock>();
    else
        clock = std::make_unique<EndingClock>(this->m_clock->Now());
    Inet inet(*clock);
    EXPECT_THROW(inet.OpenURL(this->m_server.Address("/drip")), ProgramEnded);
    EXPECT_FALSE(inet.StillExecuting());
}

TYPED_TEST(InetFailure, HandsOnWhatAReceiverOfStatesThrows)
{
    this->m_server.On("/drip", Page(QByteArray(1000, 'x')).Drip(1, 5ms));
    for (const int last : {1, 6, 7}) {
        this->m_inet.StateChanged = [last](int state) {
            if (state == last)
                throw ProgramEnded();
        };
        EXPECT_THROW(this->Fetch("/drip"), ProgramEnded) << last;
        EXPECT_FALSE(this->m_inet.StillExecuting()) << last;
    }
    this->m_inet.StateChanged = nullptr;
    this->ExpectItStillWorks();
}

TYPED_TEST(InetFailure, IsGoneInTheMiddleOfNothing)
{
    auto inet = std::make_unique<Inet>(*this->m_clock);
    this->m_server.On("/drip", Page(QByteArray(1000, 'x')).Drip(1, 5ms));
    inet->RequestTimeout = 30ms;
    EXPECT_THROW(inet->OpenURL(this->m_server.Address("/drip")), RuntimeError);
    inet.reset();
    this->ExpectItStillWorks();
}
