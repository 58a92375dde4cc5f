#include "marketdata/practice_site.h"

#include "platform/simulated_clock.h"
#include "support/test_app_folder.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTcpServer>

namespace
{

/// A port that somebody else has.
class TakenPort
{
public:
    explicit TakenPort(quint16 port = 0) { m_server.listen(QHostAddress::LocalHost, port); }
    quint16 Port() const { return m_server.serverPort(); }

private:
    QTcpServer m_server;
};

quint16 FreePort()
{
    return TakenPort().Port();
}

class PracticeSiteTest : public testing::Test
{
protected:
    PracticeSiteTest() { connection.Open(m_folder.File("WebSites.mdb")); }

    /// The cursor on a row with this address, another one behind it.
    void StandOn(const QString &address)
    {
        connection.Execute(QStringLiteral("DELETE FROM WebParameters"));
        connection.Execute(QStringLiteral("INSERT INTO WebParameters (ID, WebSiteName, "
                                          "BegWebAddress, EndWebAddress) VALUES "
                                          "(10, 'Practice', ?, ''), (11, 'Real', 'real', '')"),
                           address);
        sites.Open(connection, {"*", "WebParameters", "ORDER BY WebSiteName"});
        sites.MoveFirst();
    }
    void StandOn(quint16 port) { StandOn(AddressOn(port)); }
    static QString AddressOn(quint16 port)
    {
        return QStringLiteral("http://127.0.0.1:%1/quotes?s=").arg(port);
    }
    /// As the cursor has it, and as a later run will read it.
    void ExpectAddress(const QString &address)
    {
        EXPECT_EQ(sites.Text("BegWebAddress").toStdString(), address.toStdString());
        EXPECT_EQ(m_folder
                      .Value(m_folder.File("WebSites.mdb"),
                             "SELECT BegWebAddress FROM WebParameters WHERE ID = 10")
                      .toStdString(),
                  address.toStdString());
        EXPECT_EQ(m_folder.Value(m_folder.File("WebSites.mdb"),
                                 "SELECT BegWebAddress FROM WebParameters WHERE ID = 11"),
                  "real");
    }

    SimulatedClock clock{QDateTime(QDate(2026, 11, 20), QTime(12, 0))};
    PracticeServer server{clock};
    Connection connection;
    Recordset sites;

private:
    TestAppFolder m_folder;
};

} // namespace

TEST(PracticeAddress, IsTheServersOnAnyPort)
{
    for (const char *address :
         {"http://127.0.0.1:8917/quotes?s=", "http://127.0.0.1:1/quotes?s=",
          "http://127.0.0.1:65535/quotes?s=", "  http://127.0.0.1:8917/quotes?s= "})
        EXPECT_TRUE(IsPracticeAddress(address)) << address;
    for (const char *address :
         {"", "http://127.0.0.1/quotes?s=", "http://127.0.0.1:0/quotes?s=",
          "http://127.0.0.1:65536/quotes?s=", "http://127.0.0.1:99999/quotes?s=",
          "http://127.0.0.1:8917/quotes?s=A", "http://127.0.0.1:8917/quote?s=",
          "https://127.0.0.1:8917/quotes?s=", "http://localhost:8917/quotes?s=",
          "http://127.0.0.10:8917/quotes?s=", "http://127.0.0.1:8917x/quotes?s=",
          "http://real.example/?http://127.0.0.1:8917/quotes?s=",
          "https://query1.finance.yahoo.com/v8/finance/chart/"})
        EXPECT_FALSE(IsPracticeAddress(address)) << address;
}

TEST_F(PracticeSiteTest, IsServedOnThePortOfItsRowWhenThatIsFree)
{
    const quint16 port = FreePort();
    StandOn(port);
    ServePracticeSite(server, sites);
    EXPECT_EQ(server.Port(), port);
    ExpectAddress(AddressOn(port));
}

TEST_F(PracticeSiteTest, FollowsTheServerWhenTheDeliveredPortIsTaken)
{
    // Whether it is another Quillon that has the port, or anything else.
    const TakenPort taken(PracticeServer::DeliveredPort);
    StandOn(PracticeServer::DeliveredPort);
    ServePracticeSite(server, sites);
    ASSERT_TRUE(server.IsListening());
    EXPECT_NE(server.Port(), PracticeServer::DeliveredPort);
    ExpectAddress(AddressOn(server.Port()));
}

TEST_F(PracticeSiteTest, IsLeftAloneWhenAnotherPortIsTaken)
{
    const TakenPort theirs;
    StandOn(theirs.Port());
    ServePracticeSite(server, sites);
    EXPECT_FALSE(server.IsListening());
    ExpectAddress(AddressOn(theirs.Port()));
}

TEST_F(PracticeSiteTest, IsServedAgainOnceThatPortIsFree)
{
    auto theirs = std::make_unique<TakenPort>();
    const quint16 port = theirs->Port();
    StandOn(port);
    ServePracticeSite(server, sites);
    theirs.reset();
    ServePracticeSite(server, sites);
    EXPECT_EQ(server.Port(), port);
    ExpectAddress(AddressOn(port));
}

TEST_F(PracticeSiteTest, FollowsAServerThatListensAlready)
{
    server.Listen(0);
    const quint16 listening = server.Port();
    for (const quint16 row : {FreePort(), PracticeServer::DeliveredPort, listening}) {
        StandOn(row);
        ServePracticeSite(server, sites);
        EXPECT_EQ(server.Port(), listening);
        ExpectAddress(AddressOn(listening));
    }
}

TEST_F(PracticeSiteTest, OfSomebodyElseStaysWhenTheServerListensElsewhere)
{
    server.Listen(0);
    const TakenPort theirs;
    StandOn(theirs.Port());
    ServePracticeSite(server, sites);
    ExpectAddress(AddressOn(theirs.Port()));
}

TEST_F(PracticeSiteTest, IsServedTwiceWithoutAChange)
{
    StandOn(FreePort());
    ServePracticeSite(server, sites);
    const quint16 port = server.Port();
    ServePracticeSite(server, sites);
    EXPECT_EQ(server.Port(), port);
    ExpectAddress(AddressOn(port));
}

TEST_F(PracticeSiteTest, OfTwoProgramsGoesToWhoeverCameFirst)
{
    const quint16 port = FreePort();
    StandOn(port);
    ServePracticeSite(server, sites);
    PracticeServer second(clock);
    ServePracticeSite(second, sites);
    EXPECT_FALSE(second.IsListening()); // the same prices are there already
    ExpectAddress(AddressOn(port));
}

TEST_F(PracticeSiteTest, IsNoneOfTheRealOnes)
{
    for (const char *address : {"https://query1.finance.yahoo.com/v8/finance/chart/", "",
                                "http://127.0.0.1:8917/other?s="}) {
        StandOn(QString(address));
        ServePracticeSite(server, sites);
        EXPECT_FALSE(server.IsListening()) << address;
        ExpectAddress(address);
    }
}

TEST_F(PracticeSiteTest, StaysAsItIsWhenItsRowCannotBeWritten)
{
    const TakenPort taken(PracticeServer::DeliveredPort);
    StandOn(PracticeServer::DeliveredPort);
    connection.Execute(QStringLiteral("CREATE TRIGGER shut BEFORE UPDATE ON WebParameters BEGIN "
                                      "SELECT RAISE(ABORT, 'shut'); END"));
    EXPECT_THROW(ServePracticeSite(server, sites), RuntimeError);
    ExpectAddress(AddressOn(PracticeServer::DeliveredPort));
    sites.MoveNext(); // nothing is left to be written
    EXPECT_EQ(sites.Text("WebSiteName"), "Real");
}

TEST_F(PracticeSiteTest, IsNoneWithoutARow)
{
    StandOn(FreePort());
    sites.MoveTo(sites.RecordCount());
    EXPECT_THROW(ServePracticeSite(server, sites), RuntimeError);
    EXPECT_FALSE(server.IsListening());
}
