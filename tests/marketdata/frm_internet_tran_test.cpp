/// The price update in the whole program: an account of its own, quote sites on a loopback server.
/// It is Monday 2026-03-02, 10:15.

#include "driver/widget_actions.h"
#include "shell/shell_run.h"
#include "support/loopback_server.h"

#include <QCheckBox>
#include <QLineEdit>

#include <gtest/gtest.h>

using Page = LoopbackServer::Page;

namespace
{

Page Acme(const QByteArray &price)
{
    return Page(QByteArray(200, '.') + "[ACME]$" + price + ";");
}

class FrmInternetTran : public testing::Test
{
protected:
    FrmInternetTran()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("ShowReminderScreen", "0");
        run.SetOption("LastBackup", "3/2/2026").SetOption("LastNotify", "3/2/2026");
        const QString account = folder.SampleAccount();
        run.GiveBalance(account, "2026-03-02", 1);
        folder.Execute(account, "UPDATE DescriptiveTable SET Field05 = '2026-03-02'");
        folder.Execute(account, "INSERT INTO DescriptiveTable VALUES ('WebSite', 0, 0, 0, "
                                "'2026-03-02', '2026-03-02', '5', 0, 'Quotes', 'n/a', 0, 0, '0')");
        folder.Execute(account, "INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, "
                                "AvrgPrice, TransDate, Time) VALUES ('ACME', 'Acme Inc.', 100, "
                                "100000, 100000, '2026-01-05', '10:00:00.000')");
        folder.Execute(account, "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, "
                                "TransDate, Time) VALUES ('ACME', 100, 100000, '2026-01-05', "
                                "'10:00:00.000')");
        folder.Execute(folder.File("ApplControl.xxx"),
                       "INSERT INTO SecurityDetail VALUES ('ACME', 'Acme Inc.', 'Stock')");
        AddSite("Quotes", "/q");
        server.On("/q", Acme("12.50"));
    }

    void AddSite(const QString &name, const QString &path, const QString &signUp = {})
    {
        folder.Execute(folder.File("WebSites.mdb"),
                       QStringLiteral("INSERT INTO WebParameters (WebSiteName, BegWebAddress, "
                                      "EndWebAddress, AddressBuildCharacters, SymbolBegText, "
                                      "SymbolEndText, CharToPrice, PriceBegText, PriceEndText, "
                                      "DelayTime, UpdateCount, SignUpURL, OptionPrefix, "
                                      "OptionSuffix, SimilarSite) VALUES ('%1', '%2', '', ',', "
                                      "'[', ']', 60, '$', ';', 5, 20, '%3', 'None', '', 1)")
                           .arg(name, server.Address(path + QStringLiteral("?s=")), signUp));
    }
    void Launch() { ASSERT_TRUE(run.App().Launch()); }
    void Advance(int seconds) { run.clock.Advance(std::chrono::seconds(seconds)); }
    bool IsOn() { return run.App().Host().Loaded("frmInternetTran"); }
    Currency Price()
    {
        EXPECT_TRUE(run.State().AdodcStockHistory.Find("ACME"));
        return run.State().AdodcStockHistory.Current().CurrPrice;
    }

    LoopbackServer server;
    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(FrmInternetTran, SwitchesTheUpdateOnWithTheDailyTracker)
{
    Launch();
    EXPECT_TRUE(IsOn());
    EXPECT_EQ(run.Panel(4), "Connecting.bmp");
    EXPECT_EQ(run.Panel(5), "Update in: 1 minutes");
    Advance(5);
    EXPECT_EQ(Price(), Currency("12.5"));
    EXPECT_EQ(run.Panel(1), "Price update complete");
    EXPECT_EQ(run.Panel(3), "Last update: 3/2/2026");
    EXPECT_EQ(run.Panel(4), "ConnStablished.bmp");
    EXPECT_EQ(run.Panel(5), "Update in: 5 minutes");
    Advance(65);
    EXPECT_EQ(run.Panel(5), "Update in: 4 minutes");
    // The rows are valued with it.
    EXPECT_EQ(run.State().AdodcStockHistory.Current().Basis, Currency("250"));
}

TEST_F(FrmInternetTran, GoesOffAndOnByTheConnectButton)
{
    Launch();
    run.Choose("Connect");
    EXPECT_FALSE(IsOn());
    EXPECT_EQ(run.Panel(4), "ConnDisabled.bmp");
    EXPECT_EQ(run.Panel(5), "Price update disabled");
    Advance(600);
    EXPECT_EQ(server.Requests().size(), 0);
    run.Choose("Connect");
    EXPECT_TRUE(IsOn());
    Advance(5);
    EXPECT_EQ(server.Requests("/q"), 1);
}

TEST_F(FrmInternetTran, IsNotLoadedWhenTheSettingIsOff)
{
    run.SetOption("WebPriceUpdate", "0");
    Launch();
    EXPECT_FALSE(IsOn());
    run.Choose("Connect"); // which switches it on for the next start as well
    EXPECT_TRUE(run.State().settings.WebPriceUpdate);
}

TEST_F(FrmInternetTran, GoesOffWithTheDailyTracker)
{
    Launch();
    run.App().Host().Unload("frmDailyTracker");
    EXPECT_FALSE(IsOn());
    EXPECT_EQ(run.State().settings.LastRunDate, QDate(2026, 3, 2));
}

TEST_F(FrmInternetTran, StandsStillWhileAnEntryScreenIsOpenAndBeginsAnewBehindIt)
{
    Launch();
    Advance(5);
    for (const char *form : {"frmTransactionUpdate", "frmSecurityUpdate", "frmQuoteServerUpdate"}) {
        const int before = server.Requests("/q");
        run.App().Host().Load(form);
        EXPECT_FALSE(IsOn()) << form;
        Advance(600);
        EXPECT_EQ(server.Requests("/q"), before) << form;
        run.App().Host().Unload(form);
        EXPECT_TRUE(IsOn()) << form;
        EXPECT_EQ(run.Panel(1), "Enabling the current price update option") << form;
        Advance(5);
        EXPECT_EQ(server.Requests("/q"), before + 1) << form;
    }
}

TEST_F(FrmInternetTran, LeavesTheRowsToTheEntryThatOpensInTheMidstOfATransfer)
{
    Launch();
    server.OnRequest = [this](const LoopbackServer::Request &) {
        run.App().Host().Show("frmTransactionUpdate");
    };
    Advance(5);
    EXPECT_EQ(Price(), Currency("10"));
    EXPECT_FALSE(IsOn());
    EXPECT_TRUE(run.App().Host().Loaded("frmTransactionUpdate"));
    EXPECT_TRUE(run.Commands().Enabled("mnuFLNew"));
    server.OnRequest = nullptr;
    run.App().Host().Unload("frmTransactionUpdate");
    Advance(5);
    EXPECT_EQ(Price(), Currency("12.5"));
}

TEST_F(FrmInternetTran, LeavesTheRowsToTheEntryThatOpensInAnyWaitOfACycle)
{
    Launch();
    Advance(5);
    bool opened = true;
    int wait = 0;
    for (; opened; ++wait) {
        ASSERT_LT(wait, 200);
        SCOPED_TRACE(wait);
        const Currency before = Price();
        const Currency next(std::to_string(100 + wait).c_str());
        server.On("/q", Acme(QByteArray::number(100 + wait)));
        opened = false;
        int left = wait;
        run.clock.OnWaitEnd = [&] {
            if (left-- == 0) {
                opened = true;
                run.App().Host().Show("frmTransactionUpdate");
            }
        };
        run.Choose("Connect"); // off and on: a cycle comes
        run.Choose("Connect");
        Advance(5);
        run.clock.OnWaitEnd = nullptr;
        EXPECT_EQ(IsOn(), !opened);
        EXPECT_FALSE(run.State().priceUpdate.UpdateInProgress);
        EXPECT_EQ(Price(), opened ? before : next);
        if (opened)
            run.App().Host().Unload("frmTransactionUpdate");
    }
    EXPECT_GT(wait, 2);
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(FrmInternetTran, LetsTheProgramEndInTheMidstOfATransfer)
{
    Launch();
    server.OnRequest = [this](const LoopbackServer::Request &) { run.App().Exit(); };
    Advance(5);
    EXPECT_TRUE(run.App().Ended());
    EXPECT_EQ(run.timesEnded, 1);
    EXPECT_EQ(folder.Value(folder.SampleAccount(), "SELECT CurrPrice FROM DailyTracker"), "100000");
    EXPECT_EQ(run.SavedOption("WebPriceUpdate"), "True");
}

TEST_F(FrmInternetTran, LetsAnotherAccountBeOpenedInTheMidstOfATransfer)
{
    const QString other = folder.AddAccount("Other.mdb");
    run.GiveBalance(other, "2026-03-02", 1);
    Launch();
    bool once = true;
    server.OnRequest = [&](const LoopbackServer::Request &) {
        if (!std::exchange(once, false))
            return;
        run.App().Host().Unload("frmDailyTracker"); // as a change of account does
        run.App().Host().Show("frmDailyTracker");
    };
    Advance(5);
    EXPECT_EQ(Price(), Currency("10"));
    Advance(5);
    EXPECT_EQ(Price(), Currency("12.5"));
    EXPECT_TRUE(IsOn());
}

TEST_F(FrmInternetTran, SwitchesOffForTheNextStartWhenNoSiteIsLeft)
{
    server.On("/q", Page("nothing here"));
    run.boxes.Prepare("Please note", Answer::Ok);
    Launch();
    Advance(5);
    EXPECT_FALSE(IsOn());
    run.App().Exit();
    EXPECT_EQ(run.SavedOption("WebPriceUpdate"), "False");
}

// --- login ----------------------------------------------------------------------------------------

class FrmWebLogin : public FrmInternetTran
{
protected:
    FrmWebLogin()
    {
        AddSite("Members", "/member", "http://127.0.0.1/join");
        AddSite("A", "/a"); // the site that sorts first is taken as it is
        server.On("/member", Acme("13.00").AskLogin("me", "secret"));
        folder.Execute(folder.SampleAccount(),
                       "UPDATE DescriptiveTable SET Field08 = 'Members' WHERE TableName = "
                       "'WebSite'");
    }
    QString StoredLogin()
    {
        return folder.Value(folder.File("ApplControl.mdb"),
                            "SELECT Field08 || '/' || Field09 FROM ApplicationTable WHERE "
                            "TableName = '2'");
    }
    void Enter(const QString &field, const QString &text)
    {
        run.Control<QLineEdit>("frmWebLogin", field)->setText(text);
    }
    void Press(const QString &button) { run.Control<QPushButton>("frmWebLogin", button)->click(); }
    /// Fills the login form in each time that it comes up.
    void AnswerLogin(const QString &login, const QString &password)
    {
        run.WhenModal("frmWebLogin", [=, this] {
            Enter("txtLoginID", login);
            Enter("txtPassword", password);
            Press("cmdLogin");
        });
    }
};

TEST_F(FrmWebLogin, SendsAFirstLoginEmptyAndReadsItBackWhenItComesUpAgain)
{
    // Added behind the first form, so that it meets the second.
    run.WhenModal("frmWebLogin", [this] {
        EXPECT_EQ(run.Panel(1), "Please enter your website login ID and password");
        Enter("txtLoginID", "me");
        Enter("txtPassword", "secret");
        run.boxes.OnBox = [this](const ScriptedBoxes::ShownBox &) {
            run.boxes.OnBox = nullptr;
            run.WhenModal("frmWebLogin", [this] {
                EXPECT_EQ(run.Panel(1), "Click to login");
                EXPECT_EQ(run.Control<QLineEdit>("frmWebLogin", "txtPassword")->text(), "secret");
                Press("cmdLogin");
            });
        };
        Press("cmdLogin");
    });
    Launch();
    Advance(5);
    EXPECT_EQ(run.boxes.Texts().value(0).left(27), "Login authorization failed!");
    EXPECT_EQ(StoredLogin(), "me/vhfuhw");
    EXPECT_EQ(Price(), Currency("13"));
}

TEST_F(FrmWebLogin, IsReadFromTheStoredRowInTheNextRun)
{
    run.State();
    Launch();
    run.App().Host().Unload("frmInternetTran");
    folder.Execute(folder.File("ApplControl.mdb"),
                   "INSERT INTO ApplicationTable (TableName, Field08, Field09) VALUES ('2', 'me', "
                   "'vhfuhw')");
    run.State().databases.gRsApplication.Requery();
    run.Choose("Connect");
    run.WhenModal("frmWebLogin", [this] {
        EXPECT_EQ(run.Panel(1), "Click to login");
        Press("cmdLogin");
    });
    Advance(5);
    EXPECT_EQ(Price(), Currency("13"));
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(FrmWebLogin, LeavesForAnotherSiteWhenItIsCancelled)
{
    server.On("/a", Acme("14.00"));
    run.boxes.Prepare("another website", Answer::Ok);
    run.WhenModal("frmWebLogin", [this] { Press("cmdCancel"); });
    Launch();
    Advance(5);
    EXPECT_EQ(run.State().account.CurrentWebSiteName, "A");
    EXPECT_EQ(Price(), Currency("14"));
}

TEST_F(FrmWebLogin, CountsAsCancelledWhenItsFrameIsClosed)
{
    run.boxes.Prepare("another website", Answer::Cancel);
    run.WhenModal("frmWebLogin", [this] { run.App().Host().Find("frmWebLogin")->close(); });
    Launch();
    Advance(5);
    EXPECT_FALSE(IsOn());
}

TEST_F(FrmWebLogin, TakesThePreferenceForStoringAtOnceAndStoresTheLoginAnyway)
{
    run.boxes.Prepare("another website", Answer::Cancel);
    run.WhenModal("frmWebLogin", [this] {
        run.Control<QCheckBox>("frmWebLogin", "chkStoreLogin")->click();
        EXPECT_EQ(run.State().settings.StoreWebLogin, 0);
        Enter("txtLoginID", "me");
        Enter("txtPassword", "secret");
        run.boxes.OnBox = [this](const ScriptedBoxes::ShownBox &) {
            run.boxes.OnBox = nullptr;
            run.WhenModal("frmWebLogin", [this] { // not read back now
                EXPECT_EQ(run.Control<QLineEdit>("frmWebLogin", "txtLoginID")->text(), "");
                Press("cmdCancel");
            });
        };
        Press("cmdLogin");
    });
    Launch();
    Advance(5);
    EXPECT_EQ(StoredLogin(), "me/vhfuhw");
}

TEST_F(FrmWebLogin, StartsNoSecondCycleWhileItIsOpen)
{
    run.WhenModal("frmWebLogin", [this] {
        Advance(65 * 20);
        EXPECT_EQ(server.Requests().size(), 0);
        Press("cmdCancel");
    });
    run.boxes.Prepare("another website", Answer::Cancel);
    Launch();
    Advance(5);
    EXPECT_EQ(server.Requests().size(), 0);
}

TEST_F(FrmWebLogin, ShowsAMessageForAPasswordThatCannotBeStoredAndStaysOpen)
{
    run.boxes.Prepare("another website", Answer::Cancel);
    run.WhenModal("frmWebLogin", [this] {
        Enter("txtLoginID", "me");
        Enter("txtPassword", QString::fromUtf8("пароль"));
        Press("cmdLogin");
        EXPECT_TRUE(run.App().Host().Loaded("frmWebLogin"));
        Press("cmdCancel");
    });
    Launch();
    Advance(5);
    EXPECT_TRUE(run.boxes.Texts().value(0).contains("cannot be stored"));
    EXPECT_EQ(StoredLogin(), "");
}
