/// The browser screen, with a view that notes where it is sent, and without one.

#include "marketdata/frm_web_browser.h"

#include "marketdata/practice_site.h"
#include "program/browser_view.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

constexpr auto Tick = 65s;

/// Stands for the plug-in's view.
class NotedView : public BrowserView
{
public:
    NotedView(QWidget *parent, QStringList &log, std::function<void()> onPage)
        : BrowserView(parent), m_log(log), m_onPage(std::move(onPage))
    {}
    void Navigate(const QUrl &page) override
    {
        m_log << page.toString();
        m_onPage();
    }
    void Refresh() override
    {
        m_log << QStringLiteral("refresh");
        m_onPage();
    }

private:
    QStringList &m_log;
    std::function<void()> m_onPage;
};

/// Charts come from chart.example, the map from map.example; prices are updated every 3 minutes.
class WebBrowserScreen : public testing::Test
{
protected:
    WebBrowserScreen()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "0").SetOption("ArgMaximize", "False");
        AddSite("Yahoo Finance (test)", "http://quotes.example/q?s=", 3);
        folder.AddFile("WebLinks.json", R"({"intradayChart": "http://chart.example",
            "mnuIntSmartMoney": "http://map.example/", "mnuIntLipper": "http://lipper.example/"})");
        UseView();
    }

    void AddSite(const QString &name, const QString &address, int minutes)
    {
        folder.Execute(folder.File("WebSites.mdb"),
                       QStringLiteral("INSERT INTO WebParameters (WebSiteName, BegWebAddress, "
                                      "DelayTime, UpdateCount) VALUES ('%1', '%2', %3, 5)")
                           .arg(name, address)
                           .arg(minutes));
    }
    void UseView()
    {
        State().CreateBrowserView = [this](QWidget *parent) {
            return view = new NotedView(parent, pages, [this] {
                       statusAtPage = run.Panel(1);
                       if (OnPage)
                           OnPage();
                   });
        };
    }
    void Launch() { ASSERT_TRUE(run.App().Launch()); }
    void Open()
    {
        Launch();
        ASSERT_TRUE(run.App().Host().Show("frmWebBrowser"));
        QCoreApplication::processEvents();
    }
    /// As by the popup entry, for this symbol.
    void Choose(const char *entry, const QString &symbol)
    {
        State().selection.CurrentSymbol = symbol;
        run.Choose(QString::fromUtf8(entry));
        QCoreApplication::processEvents();
    }
    void Advance(int ticks)
    {
        for (int tick = 0; tick < ticks; ++tick)
            run.clock.Advance(Tick);
    }
    void Click(const char *button)
    {
        run.Control<QPushButton>("frmWebBrowser", QString::fromUtf8(button))->click();
    }
    Program &State() { return run.State(); }
    bool IsOpen() { return run.App().Host().Loaded("frmWebBrowser"); }
    static QString Chart(const QString &symbol)
    {
        return QStringLiteral("http://chart.example/q?s=%1&d=c&k=c1&a=v&p=s&t=1d&l=on&z=m&q=l")
            .arg(symbol);
    }
    QString Note()
    {
        auto *address = run.Control<QLabel>("frmWebBrowser", "lblAddress");
        return address ? address->text() : QStringLiteral("(a page)");
    }

    const QString Map = QStringLiteral("http://map.example/marketmap/");
    const QString Intraday = QStringLiteral("popDTChartIntraday");
    const QString MapEntry = QStringLiteral("popDTChartMapOfMarket");
    TestAppFolder folder;
    ShellRun run{folder};
    QStringList pages; ///< where the view was sent
    NotedView *view = nullptr;
    QString statusAtPage;         ///< while the view was sent there last
    std::function<void()> OnPage; ///< called then
};

/// Without the plug-in.
class WebBrowserScreenWithoutView : public WebBrowserScreen
{
protected:
    WebBrowserScreenWithoutView() { State().CreateBrowserView = nullptr; }
};

} // namespace

// --- load and unload -----------------------------------------------------------------------------

TEST_F(WebBrowserScreen, GoesToTheAddressThatIsSetWhenItLoads)
{
    Launch();
    State().WebAddress = Map;
    run.App().Host().Show("frmWebBrowser");
    EXPECT_EQ(pages, QStringList(Map));
    EXPECT_EQ(statusAtPage, "Browser navigation started...");
    EXPECT_EQ(run.Panel(1), "Browser navigation complete");
    EXPECT_TRUE(State().run.BrowserScreenOpen);
    EXPECT_EQ(run.App().Host().Find("frmWebBrowser")->Caption(), "Web Browser");
}

TEST_F(WebBrowserScreen, GoesToTheIntradayChartWhenNoAddressIsSet)
{
    Launch();
    State().selection.CurrentSymbol = "ACME";
    run.App().Host().Show("frmWebBrowser");
    EXPECT_EQ(pages, QStringList(Chart("ACME")));
    EXPECT_EQ(State().WebAddress, Chart("ACME"));
}

TEST_F(WebBrowserScreen, HasAnEmptySymbolInTheIntradayAddressWithNoRowSelected)
{
    Open();
    EXPECT_EQ(pages, QStringList(Chart("")));
}

TEST_F(WebBrowserScreen, OpensAtTheStartWhenItsSettingSaysSo)
{
    run.SetOption("BrowserScreen", "1");
    UseView();
    Launch();
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(pages, QStringList(Chart("")));
    EXPECT_TRUE(run.Commands().Checked(Intraday));
}

TEST_F(WebBrowserScreen, ChecksTheIntradayEntryUnlessOneOfTheTwoIsChecked)
{
    Launch();
    run.App().Host().Show("frmWebBrowser");
    EXPECT_TRUE(run.Commands().Checked(Intraday));
    run.App().Host().Unload("frmWebBrowser");
    run.Commands().SetChecked(Intraday, false);
    run.Commands().SetChecked(MapEntry, true);
    run.App().Host().Show("frmWebBrowser");
    EXPECT_FALSE(run.Commands().Checked(Intraday));
    EXPECT_TRUE(run.Commands().Checked(MapEntry));
}

TEST_F(WebBrowserScreen, MakesTheChartOfTheSelectedSecurityTheNextAddressWhenItComesToTheFront)
{
    Launch();
    State().WebAddress = Map;
    State().selection.CurrentSymbol = "ACME";
    run.App().Host().Show("frmWebBrowser");
    EXPECT_EQ(pages, QStringList(Map));
    EXPECT_EQ(State().WebAddress, Chart("ACME"));
}

TEST_F(WebBrowserScreen, CountsAsAnActionOfTheUserWhenItLoads)
{
    Launch();
    State().run.IdleMinutes = 7;
    run.App().Host().Show("frmWebBrowser");
    EXPECT_EQ(State().run.IdleMinutes, 0);
}

TEST_F(WebBrowserScreen, ClosesByItsButtonAndItsTimerStops)
{
    Open();
    Click("cmdClose");
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(State().run.BrowserScreenOpen);
    QCoreApplication::processEvents();
    pages.clear();
    Advance(10);
    EXPECT_EQ(pages, QStringList());
}

TEST_F(WebBrowserScreen, StaysOpenWhenAnotherAccountIsOpened)
{
    Open();
    run.boxes.files = {folder.AddAccount("Other.mdb")};
    run.Choose("mnuFLOpenExisting");
    EXPECT_TRUE(IsOpen());
    pages.clear();
    Advance(3);
    EXPECT_EQ(pages, QStringList(Chart("")));
}

// --- refresh -------------------------------------------------------------------------------------

TEST_F(WebBrowserScreen, AsksForTheChartAnewAfterTheMinutesOfThePriceUpdate)
{
    Open();
    Advance(2);
    EXPECT_EQ(pages.size(), 1);
    EXPECT_EQ(run.Panel(1), "Browser navigation complete");
    const QDateTime third = run.clock.Now().addSecs(65);
    Advance(1);
    EXPECT_EQ(pages, QStringList({Chart(""), Chart("")}));
    EXPECT_EQ(statusAtPage, "Browser refresh started...");
    EXPECT_EQ(run.Panel(1), "Refresh complete");
    EXPECT_EQ(run.clock.Now(), third.addMSecs(750));
    Advance(2);
    EXPECT_EQ(pages.size(), 2);
    Advance(1);
    EXPECT_EQ(pages.size(), 3);
}

TEST_F(WebBrowserScreen, RefreshesTheChartOfTheSecurityThatIsSelectedByThen)
{
    Launch();
    Choose("popDTChartIntraday", "ACME");
    State().selection.CurrentSymbol = "ZETA";
    Advance(3);
    EXPECT_EQ(pages, QStringList({Chart("ACME"), Chart("ZETA")}));
}

TEST_F(WebBrowserScreen, RefreshesTheMapWhereItIs)
{
    Launch();
    Choose("popDTChartMapOfMarket", "ACME");
    Advance(3);
    EXPECT_EQ(pages, QStringList({Map, "refresh"}));
    EXPECT_EQ(run.Panel(1), "Refresh complete");
}

TEST_F(WebBrowserScreen, ResetsTheTickCountByTheRefreshButtonAsATimedRefreshDoes)
{
    Open();
    Advance(2);
    Click("cmdRefresh");
    EXPECT_EQ(pages.size(), 2);
    EXPECT_EQ(statusAtPage, "Browser refresh started...");
    EXPECT_EQ(run.Panel(1), "Refresh complete");
    Advance(2); // the third tick since the load, but the second since the refresh
    EXPECT_EQ(pages.size(), 2);
    Advance(1);
    EXPECT_EQ(pages.size(), 3);
}

TEST_F(WebBrowserScreen, RefreshesAtEachTickWithoutAnInterval)
{
    Open();
    State().account.WebUpdateMinutes = Integer();
    Advance(3);
    EXPECT_EQ(pages.size(), 4);
}

TEST_F(WebBrowserScreen, RefreshesAtTheNextTickWhenTheIntervalFellBelowTheCount)
{
    Open();
    Advance(2);
    State().account.WebUpdateMinutes = Integer::FromWide(1);
    Advance(1);
    EXPECT_EQ(pages.size(), 2);
}

TEST_F(WebBrowserScreen, RefreshesByItsButtonAlsoWithTheLongestInterval)
{
    Open();
    State().account.WebUpdateMinutes = Integer::FromWide(32767);
    Click("cmdRefresh");
    EXPECT_EQ(pages.size(), 2);
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(WebBrowserScreen, MayBeClosedWhileARefreshWaits)
{
    Open();
    OnPage = [this] {
        QTimer::singleShot(0, &run.App().MainWindow(),
                           [this] { run.App().Host().Unload("frmWebBrowser"); });
    };
    Click("cmdRefresh");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(run.Panel(1), "Browser refresh started...");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

// --- the ways to it ------------------------------------------------------------------------------

TEST_F(WebBrowserScreen, OpensByThePopupEntriesWithThePageAndTheMarkOfTheEntry)
{
    Launch();
    run.Commands().SetChecked("popDTSplitMode", true);
    Choose("popDTChartMapOfMarket", "ACME");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(pages, QStringList(Map));
    EXPECT_TRUE(run.Commands().Checked(MapEntry));
    EXPECT_FALSE(run.Commands().Checked(Intraday));
    EXPECT_FALSE(run.Commands().Checked("popDTSplitMode")); // the whole group lost its marks
}

TEST_F(WebBrowserScreen, GoesToTheOtherPageWhenItIsOpenAndWaits)
{
    Launch();
    Choose("popDTChartMapOfMarket", "ACME");
    run.AddScreen("frmHistoryList", Placement::Child, "mnuVWHistory", "Transaction History");
    run.App().Host().Show("frmHistoryList");
    const QDateTime before = run.clock.Now();
    Choose("popDTChartIntraday", "ZETA");
    EXPECT_EQ(pages, QStringList({Map, Chart("ZETA")}));
    EXPECT_EQ(run.clock.Now(), before.addMSecs(750));
    EXPECT_TRUE(run.Commands().Checked(Intraday));
    EXPECT_FALSE(run.Commands().Checked(MapEntry));
    EXPECT_EQ(run.App().Host().ActiveChild()->objectName(), "frmWebBrowser");
}

TEST_F(WebBrowserScreen, IsLeftAsItIsByALinkOfTheInternetMenu)
{
    Launch();
    Choose("popDTChartMapOfMarket", "ACME");
    run.Choose("mnuIntLipper");
    EXPECT_EQ(pages, QStringList(Map));
    EXPECT_EQ(run.openedPages, QStringList("http://lipper.example/"));
    EXPECT_TRUE(run.Commands().Checked(MapEntry));
    EXPECT_TRUE(run.Commands().Checked("mnuIntLipper"));
    Advance(3);
    EXPECT_EQ(pages, QStringList({Map, "refresh"}));
}

TEST_F(WebBrowserScreen, OpensNothingForAPageWithoutAnAddress)
{
    folder.AddFile("WebLinks.json", "{}");
    Launch();
    Choose("popDTChartIntraday", "ACME");
    EXPECT_EQ(run.Panel(1), "No web address is set for Intra-day");
    Choose("popDTChartMapOfMarket", "ACME");
    EXPECT_EQ(run.Panel(1), "No web address is set for Map of the Market");
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(run.Commands().Checked(MapEntry));
}

TEST_F(WebBrowserScreen, HandsAPageThatWantsAWindowOfItsOwnToTheUsersBrowser)
{
    Open();
    view->OnNewWindow(QUrl("http://news.example/a%20b"));
    EXPECT_EQ(run.openedPages, QStringList("http://news.example/a%20b"));
    EXPECT_EQ(pages.size(), 1);
}

TEST_F(WebBrowserScreen, ShowsTheHelpOfThePageThatIsShown)
{
    Launch();
    Choose("popDTChartMapOfMarket", "ACME");
    Click("cmdHelp");
    EXPECT_EQ(run.Panel(1), "The help topic WBMapOfMarket.html was not found");
    Choose("popDTChartIntraday", "ACME");
    Click("cmdHelp");
    EXPECT_EQ(run.Panel(1), "The help topic WBIntraDayChart.html was not found");
}

// --- the addresses -------------------------------------------------------------------------------

TEST_F(WebBrowserScreen, NamesAnySymbolInTheAddress)
{
    Launch();
    const struct
    {
        const char *symbol;
        const char *sent;
    } symbols[] = {{"O'NEIL", "s=O'NEIL&d="}, {".PRX", "s=.PRX&d="}, {"A&B", "s=A%26B&d="}};
    for (const auto &each : symbols) {
        State().selection.CurrentSymbol = QString::fromUtf8(each.symbol);
        EXPECT_TRUE(BuildIntradayChartAddress(State()).contains(QLatin1String(each.sent)))
            << qPrintable(BuildIntradayChartAddress(State()));
    }
}

TEST_F(WebBrowserScreen, AsksTheSiteInUseWhereverTheCursorOfTheSitesStands)
{
    AddSite("Practice (simulated)", "http://127.0.0.1:8917/quotes?s=", 1);
    Launch();
    Recordset &sites = State().databases.gRsWebParameters;
    State().account.CurrentWebSiteName = "Practice (simulated)";
    for (const int row : {-1, 0, 1, 2}) {
        sites.MoveTo(row);
        const QString address = BuildIntradayChartAddress(State());
        EXPECT_EQ(sites.Position(), row);
        ASSERT_TRUE(State().practiceServer.IsListening()); // the page can be loaded
        EXPECT_TRUE(address.startsWith(
            QStringLiteral("http://127.0.0.1:%1/q?s=").arg(State().practiceServer.Port())))
            << qPrintable(address);
    }
    EXPECT_EQ(BuildMapOfMarketAddress(State()),
              QStringLiteral("http://127.0.0.1:%1/marketmap/").arg(State().practiceServer.Port()));
}

TEST_F(WebBrowserScreen, AsksTheConfiguredHostWithoutASiteInUse)
{
    Launch();
    State().account.CurrentWebSiteName = "gone";
    EXPECT_EQ(BuildIntradayChartAddress(State()), Chart(""));
    State().databases.gRsWebParameters.Close();
    EXPECT_EQ(BuildIntradayChartAddress(State()), Chart(""));
}

// --- without the plug-in -------------------------------------------------------------------------

TEST_F(WebBrowserScreenWithoutView, NamesThePageAndOpensItInTheUsersBrowser)
{
    Launch();
    Choose("popDTChartIntraday", "ACME");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Note(), Chart("ACME"));
    EXPECT_EQ(run.Control<QWidget>("frmWebBrowser", "wbBrowser")->property("text"), Chart("ACME"));
    EXPECT_EQ(run.openedPages, QStringList(Chart("ACME")));
    EXPECT_EQ(run.Panel(1), "Browser navigation complete");
    Choose("popDTChartMapOfMarket", "ACME");
    EXPECT_EQ(Note(), Map);
    EXPECT_EQ(run.openedPages, QStringList({Chart("ACME"), Map}));
}

TEST_F(WebBrowserScreenWithoutView, HasTheFocusOnRefreshAtFirstAndLaterWhereItWasLeft)
{
    Open();
    Form *form = run.App().Host().Find("frmWebBrowser");
    ASSERT_TRUE(form->focusWidget());
    EXPECT_EQ(form->focusWidget()->objectName(), "cmdRefresh");
    run.Control<QWidget>("frmWebBrowser", "cmdHelp")->setFocus();
    form->parentWidget()->hide(); // as whenever another maximized screen comes to the front
    form->parentWidget()->show();
    EXPECT_EQ(form->focusWidget()->objectName(), "cmdHelp");
}

TEST_F(WebBrowserScreenWithoutView, TakesAPlugInThatGivesNoViewForNone)
{
    State().CreateBrowserView = [](QWidget *) -> BrowserView * { return nullptr; };
    Open();
    EXPECT_EQ(Note(), Chart(""));
    EXPECT_EQ(run.openedPages, QStringList(Chart("")));
}

TEST_F(WebBrowserScreenWithoutView, OpensNoFurtherWindowByItselfButNamesTheChartOfThatTime)
{
    Open();
    State().selection.CurrentSymbol = "ZETA";
    Advance(3);
    EXPECT_EQ(run.Panel(1), "Refresh complete");
    EXPECT_EQ(Note(), Chart("ZETA"));
    EXPECT_EQ(run.openedPages, QStringList(Chart("")));
}

TEST_F(WebBrowserScreenWithoutView, OpensThePageAgainByTheRefreshButton)
{
    Launch();
    Choose("popDTChartMapOfMarket", "ACME");
    Click("cmdRefresh");
    EXPECT_EQ(run.openedPages, QStringList({Map, Map}));
    Choose("popDTChartIntraday", "ACME");
    State().selection.CurrentSymbol = "ZETA";
    Click("cmdRefresh");
    EXPECT_EQ(run.openedPages, QStringList({Map, Map, Chart("ACME"), Chart("ZETA")}));
}

TEST_F(WebBrowserScreenWithoutView, SaysWhichPageNoBrowserTook)
{
    run.SetOption("BrowserScreen", "1");
    run.hasBrowser = false;
    Launch(); // a box here would come up at each start
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_EQ(run.Control<QLabel>("frmWebBrowser", "lblNote")->text(),
              "This page could not be opened in your web browser.\n"
              "You can type its address into the browser yourself:");
    EXPECT_EQ(Note(), Chart(""));
    run.hasBrowser = true;
    Click("cmdRefresh");
    EXPECT_EQ(run.Control<QLabel>("frmWebBrowser", "lblNote")->text(),
              "Web pages are shown in your web browser.\nRefresh opens this one there again:");
}

TEST_F(WebBrowserScreenWithoutView, OpensNothingWhenThereIsNoAddress)
{
    folder.AddFile("WebLinks.json", "{}");
    Open();
    EXPECT_EQ(Note(), "");
    EXPECT_EQ(run.Control<QLabel>("frmWebBrowser", "lblNote")->text(),
              "No web address is set for this page.");
    EXPECT_EQ(run.openedPages, QStringList());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}
