/// From the bytes of a reply to the text of a page: compressed forms, whole, cut and damaged.

#include "platform/inet_text.h"

#include <gtest/gtest.h>

namespace
{

constexpr qint64 NoLimit = 1 << 20;

const QByteArray Page = "<b>ACME</b> 1024.50 " + QByteArray(300, '.');

/// The gzip form of "ACME 10.50".
const QByteArray Gzip =
    QByteArray::fromHex("1f8b08000000000000037374f675553034d0333500009943bb0c0a000000");

QByteArray Zlib(const QByteArray &text)
{
    return qCompress(text).mid(4); // without the length that Qt puts in front
}

struct Outcome
{
    Body state;
    QByteArray bytes;
    bool operator==(const Outcome &) const = default;
};

Outcome Uncompressed(QByteArray body, const QByteArray &encoding, qint64 limit = NoLimit)
{
    const Body state = Uncompress(body, encoding, limit);
    return {state, body};
}

} // namespace

TEST(InetText, LeavesABodyThatIsNotCompressed)
{
    EXPECT_EQ(Uncompressed(Page, ""), (Outcome{Body::Whole, Page}));
    EXPECT_EQ(Uncompressed(Page, "identity"), (Outcome{Body::Whole, Page}));
}

TEST(InetText, UndoesEachCompression)
{
    EXPECT_EQ(Uncompressed(Gzip, "gzip"), (Outcome{Body::Whole, "ACME 10.50"}));
    EXPECT_EQ(Uncompressed(Gzip, " X-GZip"), (Outcome{Body::Whole, "ACME 10.50"}));
    EXPECT_EQ(Uncompressed(Zlib(Page), "deflate"), (Outcome{Body::Whole, Page}));
}

TEST(InetText, TellsEveryPlaceWhereACompressedBodyWasCut)
{
    for (qsizetype length = 1; length < Gzip.size(); ++length)
        EXPECT_EQ(Uncompressed(Gzip.first(length), "gzip").state, Body::CutShort) << length;
}

TEST(InetText, TellsADamagedBody)
{
    QByteArray wrongSum = Gzip;
    wrongSum[wrongSum.size() - 6] = char(wrongSum[wrongSum.size() - 6] + 1);
    EXPECT_EQ(Uncompressed(wrongSum, "gzip").state, Body::Damaged);
    EXPECT_EQ(Uncompressed(Page, "gzip").state, Body::Damaged);
    EXPECT_EQ(Uncompressed(Page, "br").state, Body::Damaged);
}

TEST(InetText, ReadsSeveralMembersAndLeavesPaddingOut)
{
    EXPECT_EQ(Uncompressed(Gzip + Gzip, "gzip"), (Outcome{Body::Whole, "ACME 10.50ACME 10.50"}));
    EXPECT_EQ(Uncompressed(Gzip + QByteArray(5, '\0'), "gzip"),
              (Outcome{Body::Whole, "ACME 10.50"}));
    EXPECT_EQ(Uncompressed(Gzip + Gzip.chopped(1), "gzip").state, Body::CutShort);
}

TEST(InetText, StopsAtTheLimit)
{
    EXPECT_EQ(Uncompressed(Gzip, "gzip", 7), (Outcome{Body::Whole, "ACME 10"}));
    EXPECT_EQ(Uncompressed(Zlib(QByteArray(500000, 'x')), "deflate", 100000),
              (Outcome{Body::Whole, QByteArray(100000, 'x')}));
}

TEST(InetText, TakesAnEmptyBodyAsItIs)
{
    EXPECT_EQ(Uncompressed("", "gzip"), (Outcome{Body::Whole, ""}));
    EXPECT_EQ(TextOf("", "text/html; charset=utf-16"), QString());
}

TEST(InetText, KeepsWhatACutLeftOfAnAccentedLetterOut)
{
    EXPECT_EQ(TextOf("caf\xc3", "text/plain"), "caf");
    EXPECT_EQ(TextOf("caf\xc3 10.50", "text/plain"), QString("caf") + QChar(0xfffd) + " 10.50");
}
