/// The real browser engine, in a process of its own: the engine cannot be had after the application
/// is made, and its warnings about the offscreen platform are not ours.

#include "program/browser_view.h"
#include "shell/browser_plugin.h"
#include "shell/shell_run.h"
#include "support/loopback_server.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDirIterator>
#include <QImage>
#include <QTest>

namespace
{

using Page = LoopbackServer::Page;

const QString AppFolder = QStringLiteral(QUILLON_APP);
constexpr int Patience = 30000;

/// A page of one colour, by the style of its body.
Page Colored(const char *color, const QByteArray &content = {})
{
    return Page(QByteArray("<html><body style=\"background:") + color + "\">" + content +
                "</body></html>")
        .Header("Content-Type", "text/html")
        .Header("Cache-Control", "no-store");
}

class BrowserPluginView : public testing::Test
{
protected:
    BrowserPluginView() : view(CreatePluginView(AppFolder, nullptr))
    {
        view->resize(400, 300);
        view->show();
    }
    void Go(const QString &path) { view->Navigate(QUrl(server.Address(path))); }
    QColor Shown() { return view->grab().toImage().pixelColor(200, 280); }
    bool ComesToShow(const char *color)
    {
        return QTest::qWaitFor([&] { return Shown() == QColor(QLatin1String(color)); }, Patience);
    }

    LoopbackServer server;
    std::unique_ptr<BrowserView> view;
};

} // namespace

TEST(BrowserPlugin, IsNotThereInAnotherFolder)
{
    TestAppFolder folder;
    EXPECT_EQ(CreatePluginView(folder.Path(), nullptr), nullptr);
}

TEST(BrowserPlugin, IsNotTakenFromAFileThatIsNoPlugIn)
{
    TestAppFolder folder;
    ASSERT_TRUE(QDir(folder.Path()).mkdir(QStringLiteral("plugins")));
    folder.AddFile("plugins/libquillon_browser.so", "no library");
    EXPECT_EQ(CreatePluginView(folder.Path(), nullptr), nullptr);
}

TEST_F(BrowserPluginView, ShowsThePageThatItIsSentTo)
{
    server.On("/red", Colored("#ff0000"));
    server.On("/blue", Colored("#0000ff"));
    Go("/red");
    EXPECT_TRUE(ComesToShow("#ff0000"));
    Go("/blue");
    EXPECT_TRUE(ComesToShow("#0000ff"));
}

TEST_F(BrowserPluginView, LoadsThePageAnewByRefresh)
{
    server.On("/now", Colored("#ff0000"));
    Go("/now");
    ASSERT_TRUE(ComesToShow("#ff0000"));
    server.On("/now", Colored("#00ff00"));
    view->Refresh();
    EXPECT_TRUE(ComesToShow("#00ff00"));
    EXPECT_EQ(server.Requests("/now"), 2);
}

TEST_F(BrowserPluginView, IsNotHeldUpByTheBoxesOfAPage)
{
    server.On("/boxes", Colored("#ff0000", "<script>alert('a'); confirm('b'); prompt('c');"
                                           "document.body.style.background = '#00ff00'</script>"));
    Go("/boxes");
    EXPECT_TRUE(ComesToShow("#00ff00"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(BrowserPluginView, OpensNoWindowThatThePageWantsByItself)
{
    QList<QUrl> windows;
    view->OnNewWindow = [&](const QUrl &page) { windows << page; };
    server.On("/open", Colored("#ff0000", "<script>window.open('/other');"
                                          "document.body.style.background = '#00ff00'</script>"));
    Go("/open");
    EXPECT_TRUE(ComesToShow("#00ff00"));
    EXPECT_EQ(windows, QList<QUrl>());
    EXPECT_EQ(server.Requests("/other"), 0);
}

TEST_F(BrowserPluginView, TellsOfAWindowThatTheUserWants)
{
    QList<QUrl> windows;
    view->OnNewWindow = [&](const QUrl &page) { windows << page; };
    server.On("/link", Colored("#ff0000", "<a href=\"/other\" target=\"_blank\" style=\"position:"
                                          "fixed;inset:0\">Other</a>"));
    Go("/link");
    ASSERT_TRUE(ComesToShow("#ff0000"));
    QWidget *page = view->childAt(200, 150);
    ASSERT_NE(page, nullptr);
    QTest::mouseClick(page, Qt::LeftButton, {}, page->mapFrom(view.get(), QPoint(200, 150)));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !windows.isEmpty(); }, Patience));
    EXPECT_EQ(windows, QList<QUrl>({QUrl(server.Address("/other"))}));
    EXPECT_EQ(server.Requests("/other"), 0);
}

TEST_F(BrowserPluginView, AsksForNoLogin)
{
    server.On("/member", Colored("#ff0000").AskLogin("me", "secret"));
    Go("/member");
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.Requests("/member") > 0; }, Patience));
    QTest::qWait(300);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(BrowserPluginScreen, ShowsThePracticeChartInsideTheMainWindow)
{
    TestAppFolder folder;
    folder.Execute(folder.File("WebSites.mdb"),
                   QStringLiteral("INSERT INTO WebParameters (WebSiteName, BegWebAddress, "
                                  "DelayTime, UpdateCount) VALUES ('Yahoo Finance, practice', "
                                  "'http://127.0.0.1:8917/quotes?s=', 1, 5)"));
    ShellRun run(folder);
    run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
    run.SetOption("WebPriceUpdate", "0");
    run.State().CreateBrowserView = [](QWidget *parent) {
        return CreatePluginView(AppFolder, parent);
    };
    ASSERT_TRUE(run.App().Launch());
    run.State().selection.CurrentSymbol = "QLLN";
    run.Choose("popDTChartIntraday");
    auto *view = run.Control<BrowserView>("frmWebBrowser", "wbBrowser");
    ASSERT_NE(view, nullptr);
    EXPECT_GT(view->width(), 300);
    // A drawn page has many shades; an empty one has one.
    const auto shades = [&] {
        const QImage picture = view->grab().toImage();
        QSet<QRgb> found;
        for (int y = 0; y < picture.height(); y += 2)
            for (int x = 0; x < picture.width(); x += 2)
                found.insert(picture.pixel(x, y));
        return found.size();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return shades() > 10; }, Patience));
    if (const QString picture = qEnvironmentVariable("QUILLON_PICTURE"); !picture.isEmpty())
        run.App().MainWindow().grab().save(picture);
    run.App().Host().Unload("frmWebBrowser");
    EXPECT_EQ(run.openedPages, QStringList());
}

TEST(BrowserPluginTraces, AreNotLeftInTheUsersFolders)
{
    QStringList files;
    QDirIterator each(qEnvironmentVariable("HOME"), QDir::Files | QDir::Hidden,
                      QDirIterator::Subdirectories);
    while (each.hasNext())
        files << each.next();
    EXPECT_EQ(files, QStringList());
}

int main(int argc, char *argv[])
{
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home;
    for (const char *folder :
         {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
        qputenv(folder, home.path().toLocal8Bit());
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-dev-shm-usage"); // it is small in a container
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QCoreApplication::setAttribute(Qt::AA_DisableShaderDiskCache);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    return RUN_ALL_TESTS();
}
