/// The Internet menu: pages that open in the user's browser.

#include "program/external_browser.h"
#include "shell/browser_plugin.h"
#include "shell/command_table.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QUrl>

namespace
{

/// Every link of the menu, with the page that it opens on its site.
constexpr struct
{
    const char *entry;
    const char *page;
} Links[] = {
    {"mnuIntSmartMoney", "/"},
    {"mnuIntYahooFrontPage", "/?u"},
    {"mnuIntYahooMarketOverview", "/b?u"},
    {"mnuIntETF", "/"},
    {"mnuIntCBSFrontPage", "/news/default.asp"},
    {"mnuIntCBSMarketOverview", "/tools/marketsummary/default.asp?siteid=mktw"},
    {"mnuIntCBSMarketMonitor", "/tools/marketsummary/marketmonitor.asp?siteid=mktw"},
    {"mnuIntLipper", "/"},
    {"mnuIntMFEA", "/"},
    {"mnuIntMorningstarFrontPage", "/"},
    {"mnuIntMorningstarMarkets", "/Cover/Markets.html?topnav=markets"},
    {"mnuIntMorningstarTools", "/Cover/Tools.html?topnav=tools"},
    {"mnuIntReutersFrontPage", "/home.jhtml"},
    {"mnuIntReutersFinanceNews", "/finance.jhtml"},
    {"mnuIntMSNFrontPage", "/"},
    {"mnuIntMSNMarketSummary", "/"},
};

class InternetMenu : public testing::Test
{
protected:
    InternetMenu()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "0");
    }
    /// With the links as they are delivered.
    void Launch()
    {
        QFile links(QStringLiteral(QUILLON_PROJECT "/data/WebLinks.json"));
        ASSERT_TRUE(links.open(QIODevice::ReadOnly));
        LaunchWith(links.readAll());
    }
    void LaunchWith(const QByteArray &links)
    {
        folder.AddFile("WebLinks.json", links);
        ASSERT_TRUE(run.App().Launch());
    }
    QStringList CheckedLinks()
    {
        QStringList names;
        for (const auto &link : Links)
            if (run.Commands().Checked(QString::fromUtf8(link.entry)))
                names << QString::fromUtf8(link.entry);
        return names;
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(InternetMenu, OpensThePageOfEachEntryAndChecksTheEntryAlone)
{
    Launch();
    for (const auto &link : Links) {
        run.openedPages.clear();
        run.Choose(QString::fromUtf8(link.entry));
        ASSERT_EQ(run.openedPages.size(), 1) << link.entry;
        const QUrl url(run.openedPages.first());
        EXPECT_FALSE(url.host().isEmpty()) << link.entry;
        EXPECT_EQ(url.toString(QUrl::RemoveScheme | QUrl::RemoveAuthority), link.page)
            << link.entry;
        EXPECT_EQ(CheckedLinks(), QStringList(link.entry));
        EXPECT_EQ(run.State().WebAddress, run.openedPages.first());
        EXPECT_EQ(run.Panel(1), "Navigating to website...");
        EXPECT_TRUE(run.State().run.BrowserAlive);
    }
    EXPECT_FALSE(run.App().Host().Loaded("frmWebBrowser"));
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(InternetMenu, HasNoOtherLinksThanThese)
{
    QStringList links;
    for (const Command &command : CommandTable())
        if (command.verb == CommandVerb::Link && command.Name().startsWith("mnuInt"))
            links << command.Name();
    QStringList told;
    for (const auto &link : Links)
        told << QString::fromUtf8(link.entry);
    EXPECT_EQ(links, told);
}

TEST_F(InternetMenu, SaysWhichLinkHasNoAddressAndChecksNothing)
{
    LaunchWith(R"({"mnuIntLipper": "", "mnuIntETF": "http://etf.example/"})");
    run.Choose("mnuIntETF");
    run.Choose("mnuIntLipper");
    EXPECT_EQ(run.Panel(1), "No web address is set for Lipper");
    EXPECT_EQ(CheckedLinks(), QStringList("mnuIntETF"));
    EXPECT_EQ(run.openedPages, QStringList("http://etf.example/"));
}

TEST_F(InternetMenu, LivesWithAFileOfLinksThatIsMissingOrBroken)
{
    LaunchWith("{ this is no list of links");
    run.Choose("mnuIntMFEA");
    EXPECT_EQ(run.Panel(1), "No web address is set for Mutual Fund Investor's Center");
    EXPECT_EQ(run.openedPages, QStringList());
}

TEST_F(InternetMenu, ShowsTheAddressThatNoBrowserTook)
{
    run.hasBrowser = false;
    LaunchWith(R"({"mnuIntLipper": "http://lipper.example/"})");
    run.Choose("mnuIntLipper");
    ASSERT_EQ(run.boxes.boxes.size(), 1U);
    EXPECT_TRUE(run.boxes.boxes[0].text.contains("http://lipper.example/"));
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Exclamation);
    EXPECT_FALSE(run.State().run.BrowserAlive);
    EXPECT_EQ(run.Panel(1), "");
}

TEST_F(InternetMenu, HandsNothingButWebPagesToTheBrowser)
{
    LaunchWith("{}");
    for (const char *address : {"file:///etc/passwd", "javascript:alert(1)", "/usr/bin/true",
                                "mailto:a@b.example", "http://", "lipper.example"}) {
        run.boxes.boxes.clear();
        OpenInternetExplorer(run.State(), QString::fromUtf8(address));
        ASSERT_EQ(run.boxes.boxes.size(), 1U) << address;
        EXPECT_TRUE(run.boxes.boxes[0].text.contains(QLatin1String(address)));
    }
    EXPECT_EQ(run.openedPages, QStringList());
}

TEST_F(InternetMenu, OpensAPageOfThePracticeServer)
{
    LaunchWith(R"({"mnuIntLipper": "{practice}/marketmap/"})");
    run.Choose("mnuIntLipper");
    EXPECT_EQ(run.openedPages, QStringList(QStringLiteral("http://127.0.0.1:%1/marketmap/")
                                               .arg(run.State().practiceServer.Port())));
    EXPECT_TRUE(run.State().practiceServer.IsListening());
}

TEST_F(InternetMenu, LosesNoMarkByTheHomePageInTheHelpMenu)
{
    Launch();
    run.Choose("mnuIntETF");
    run.openedPages.clear();
    run.Choose("mnuQuillonHome");
    EXPECT_EQ(run.openedPages, QStringList(QStringLiteral("http://127.0.0.1:%1/Downloads.html")
                                               .arg(run.State().practiceServer.Port())));
    EXPECT_EQ(CheckedLinks(), QStringList("mnuIntETF"));
    EXPECT_FALSE(run.Commands().Checked("mnuQuillonHome"));
}

TEST_F(InternetMenu, LeavesTheBrowserOpenWhenTheProgramEnds)
{
    run.GiveBalance(folder.SampleAccount(), "2026-03-02", 1);
    run.SetOption("CheckNotify", "0").SetOption("CheckAverage", "0");
    LaunchWith(R"({"mnuIntLipper": "http://lipper.example/"})");
    run.Choose("mnuIntLipper");
    EXPECT_TRUE(run.App().Exit());
    EXPECT_TRUE(run.State().run.BrowserAlive);
    EXPECT_EQ(run.openedPages.size(), 1);
}

TEST_F(InternetMenu, CountsAsAnActionOfTheUser)
{
    Launch();
    run.State().run.IdleMinutes = 9;
    run.Choose("mnuIntETF");
    EXPECT_EQ(run.State().run.IdleMinutes, 0);
}

TEST(BrowserPlugin, IsNotLoadedIntoAProgramThatIsNotPreparedForIt)
{
    EXPECT_EQ(CreatePluginView(QStringLiteral("/nowhere"), nullptr), nullptr);
}
