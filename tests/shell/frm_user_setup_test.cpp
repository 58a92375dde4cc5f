/// The settings screen in the whole program.

#include "platform/widgets/date_field.h"
#include "platform/widgets/up_down.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTest>

namespace
{

const QString Screen = QStringLiteral("frmUserSetup");

class UserSetup : public testing::Test
{
protected:
    UserSetup()
    {
        folder.Execute(folder.File("WebSites.mdb"),
                       "DELETE FROM WebParameters; "
                       "INSERT INTO WebParameters (ID, WebSiteName, DelayTime, SignUpURL, "
                       "ServiceFlag, DeselectFlagPerm) VALUES "
                       "(1, 'Yahoo Finance (late)', 5, NULL, 0, 0), "
                       "(2, 'Cobalt (paid)', 7, 'http://cobalt.example/join', 1, 1), "
                       "(3, 'Azure (free)', 9, 'http://azure.example/', 0, 0)");
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "0");
        run.GiveBalance(folder.SampleAccount(), "2026-03-02", 3);
    }
    void Open()
    {
        run.App().Launch();
        run.App().Host().Show(Screen);
        ASSERT_TRUE(IsOpen());
        run.App().Host().Find(Screen)->activateWindow();
        QTest::qWait(0); // the focus counts from now on
    }
    bool IsOpen() { return run.App().Host().Loaded(Screen); }
    void Click(const QString &name) { Control<QAbstractButton>(name)->click(); }
    void Type(const QString &name, const QString &text)
    {
        auto *field = Control<QLineEdit>(name);
        field->setFocus();
        field->selectAll();
        field->insert(text);
    }
    std::string Text(const QString &name) { return Control<QLineEdit>(name)->text().toStdString(); }
    bool Checked(const QString &name) { return Control<QAbstractButton>(name)->isChecked(); }
    template <class Widget>
    Widget *Control(const QString &name)
    {
        auto *control = run.Control<Widget>(Screen, name);
        if (!control)
            throw std::runtime_error("no control " + name.toStdString());
        return control;
    }
    /// Picks a site as the user does.
    void Pick(const QString &site)
    {
        auto *combo = Control<QComboBox>("combCurrentWebSite");
        combo->setCurrentText(site);
        emit combo->activated(combo->currentIndex());
    }
    std::string Row(const char *kind, const char *column)
    {
        return folder
            .Value(run.State().settings.CurrentFilePath,
                   QStringLiteral("SELECT %1 FROM DescriptiveTable WHERE TableName = '%2'")
                       .arg(column, kind))
            .toStdString();
    }
    Program &State() { return run.State(); }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

// --- the screen itself ---------------------------------------------------------------------------

TEST_F(UserSetup, IsCalledAfterTheApplicationAndFitsASmallDesktop)
{
    Open();
    Form *screen = run.App().Host().Find(Screen);
    EXPECT_EQ(screen->Caption(), "Quillon Setup");
    EXPECT_LE(screen->width(), 1240);
    EXPECT_LE(screen->height(), 720);
    EXPECT_EQ(Control<QWidget>("cmdOK")->toolTip(), "Apply current settings and exit.");
    EXPECT_EQ(Control<QWidget>("cmdApply")->toolTip(), "Apply current settings.");
}

TEST_F(UserSetup, NamesEveryControlForThoseWhoCannotSeeIt)
{
    Open();
    for (QWidget *control : run.App().Host().Find(Screen)->findChildren<QWidget *>()) {
        const QString name = control->objectName();
        if (QRegularExpression("^(txt|upd|chk|opt|comb|dtp|SSTab)").match(name).hasMatch()) {
            EXPECT_FALSE(control->accessibleName().isEmpty()) << name.toStdString();
        }
    }
}

TEST_F(UserSetup, UsesEachAltKeyOnce)
{
    Open();
    QStringList captions;
    Form *screen = run.App().Host().Find(Screen);
    for (auto *button : screen->findChildren<QAbstractButton *>())
        captions << button->text();
    for (const char *name : {"SSTab", "SSTabCommission"})
        for (int page = 0; page < Control<QTabWidget>(name)->count(); ++page)
            captions << Control<QTabWidget>(name)->tabText(page);
    QSet<QChar> keys;
    for (const QString &caption : captions) {
        const qsizetype at = caption.indexOf(QLatin1Char('&'));
        if (at < 0)
            continue;
        const QChar key = caption[at + 1].toUpper();
        EXPECT_FALSE(keys.contains(key)) << caption.toStdString();
        keys.insert(key);
    }
    EXPECT_EQ(keys.size(), 15);
}

TEST_F(UserSetup, SaysThatTheSignOnHidesAndDoesNotEncrypt)
{
    Open();
    const QString note = Control<QLabel>("lblNotEncrypted")->text();
    EXPECT_TRUE(note.contains("hides"));
    EXPECT_TRUE(note.contains("does not encrypt"));
}

TEST_F(UserSetup, StepsANumberByItsArrowsWithinTheirRange)
{
    Open();
    auto *arrows = Control<UpDown>("updLogoffMinutes");
    arrows->resize(20, 30);
    QTest::mouseClick(arrows, Qt::LeftButton, {}, QPoint(10, 5));
    EXPECT_EQ(Text("txtLogoffMinutes"), "16");
    QTest::mouseClick(arrows, Qt::LeftButton, {}, QPoint(10, 25));
    EXPECT_EQ(Text("txtLogoffMinutes"), "15");
    Type("txtLogoffMinutes", "2");
    QTest::keyClick(Control<QWidget>("txtLogoffMinutes"), Qt::Key_Down);
    EXPECT_EQ(Text("txtLogoffMinutes"), "5");
}

TEST_F(UserSetup, ShowsTheDaysSinceCompactionAndDoesNotLetThemBeEdited)
{
    Open();
    EXPECT_EQ(Text("txtElapsedDays"), "3");
    EXPECT_TRUE(Control<QLineEdit>("txtElapsedDays")->isReadOnly());
}

// --- apply ---------------------------------------------------------------------------------------

TEST_F(UserSetup, WritesWhatWasChangedByOkAndCloses)
{
    Open();
    Type("txtBackupDays", "9");
    Click("chkPurchaseList");
    Click("optCascade");
    Click("optDirect");
    State().run.IdleMinutes = 4;
    Click("cmdOK");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(run.SavedOption("NotifyDays"), "9");
    EXPECT_EQ(run.SavedOption("PurchaseList"), "1");
    EXPECT_TRUE(State().settings.ArgCascade);
    EXPECT_FALSE(State().settings.ArgMaximize);
    EXPECT_EQ(run.SavedOption("AccessType"), "3");
    EXPECT_EQ(State().run.IdleMinutes, 0);
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(UserSetup, StaysAfterApplyWithAnEmptyStatus)
{
    Open();
    Type("txtCompactDays", "20");
    Click("cmdApply");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(run.Panel(1), "");
    EXPECT_EQ(run.SavedOption("CompactDays"), "20");
}

TEST_F(UserSetup, ForgetsByCloseWhatWasNotApplied)
{
    Open();
    Type("txtCompactDays", "20");
    Click("chkStyle2");
    EXPECT_EQ(State().account.CommissionStyle, "Style2");
    Click("cmdClose");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(State().settings.CompactDays, 10);
    EXPECT_EQ(State().account.CommissionStyle, "n/a");
}

TEST_F(UserSetup, GoesToTheFieldInErrorOnItsPage)
{
    Open();
    Click("chkLogoff");
    Type("txtLogoffMinutes", "4");
    Control<QTabWidget>("SSTab")->setCurrentIndex(0);
    Click("cmdOK");
    EXPECT_TRUE(IsOpen());
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Setup Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Exclamation);
    EXPECT_EQ(run.Panel(1), "Errors found, please correct them...");
    EXPECT_EQ(Control<QTabWidget>("SSTab")->currentIndex(), 1);
    EXPECT_EQ(Control<QLineEdit>("txtLogoffMinutes")->selectedText(), "4");
    EXPECT_EQ(State().account.LogoffEnabled, 0);
}

TEST_F(UserSetup, StartsAndStopsTheLogoffAtOnce)
{
    Open();
    EXPECT_FALSE(State().tmrLogoff->Enabled());
    Click("chkLogoff");
    Type("txtLogoffMinutes", "5");
    Click("cmdApply");
    EXPECT_TRUE(State().tmrLogoff->Enabled());
    EXPECT_EQ(Row("Security", "Field06"), "5");
    Click("chkLogoff");
    Click("cmdApply");
    EXPECT_FALSE(State().tmrLogoff->Enabled());
}

TEST_F(UserSetup, AsksForMissingPricesAnewWhenTheMonthsToKeepChange)
{
    Open();
    Type("txtKeepPortfolioData", "6");
    Click("cmdApply");
    EXPECT_FALSE(State().priceUpdate.HistoricalRetryNeeded);
    Type("txtHistPriceMonths", "12");
    State().priceUpdate.MinutesSinceUpdate = Integer::FromWide(3);
    Click("cmdApply");
    EXPECT_TRUE(State().priceUpdate.HistoricalRetryNeeded);
    EXPECT_EQ(State().priceUpdate.MinutesSinceUpdate.Value(), 0);
}

// --- styles --------------------------------------------------------------------------------------

TEST_F(UserSetup, AsksAboutAStyle1CostOf4001AndTakesItByYes)
{
    Open();
    Click("chkStyle1");
    Type("txtStyle1Cost", "40.01");
    run.boxes.Prepare("Transaction cost seems excessive", Answer::No);
    Click("cmdApply");
    EXPECT_EQ(Control<QLineEdit>("txtStyle1Cost")->selectedText(), "40.01");
    EXPECT_EQ(State().account.CommissionCost, Currency());
    run.boxes.Prepare("Transaction cost seems excessive, Is this Ok?", Answer::Yes);
    Click("cmdApply");
    EXPECT_EQ(State().account.CommissionCost, Currency("40.01"));
    EXPECT_EQ(Row("Balance", "Field08"), "Style1");
    EXPECT_EQ(Row("Style1", "Field01"), "400100");
    EXPECT_EQ(run.boxes.boxes.back().buttonsValue, Box::YesNo + Box::Question);
    EXPECT_EQ(run.boxes.boxes.back().title, "Quillon Setup Editor");
}

TEST_F(UserSetup, HasOneStyleInForceAndSaysSoInItsTip)
{
    Open();
    EXPECT_EQ(Control<QWidget>("chkStyle1")->toolTip(), "Check here to select this style option.");
    Click("chkStyle1");
    Click("chkStyle4");
    EXPECT_FALSE(Checked("chkStyle1"));
    EXPECT_TRUE(Checked("chkStyle4"));
    EXPECT_EQ(Control<QWidget>("chkStyle4")->toolTip(), "This commission style is in effect.");
    Click("chkStyle4"); // there is no way back to none
    EXPECT_TRUE(Checked("chkStyle4"));
}

TEST_F(UserSetup, ShowsTheFiguresOfAStyleWithTheirDecimalsOnceApplied)
{
    Open();
    Click("chkStyle5");
    Type("txtStyle5Cost", "0.002");
    Type("txtStyle5FlatCost", "5");
    Click("cmdApply");
    EXPECT_EQ(Text("txtStyle5Cost"), "0.002");
    EXPECT_EQ(Text("txtStyle5FlatCost"), "5.00");
    EXPECT_EQ(Text("txtStyle2Shares"), "1000");
}

// --- at once -------------------------------------------------------------------------------------

TEST_F(UserSetup, WritesTheBalanceWhenItsFieldIsLeft)
{
    Open();
    Control<QTabWidget>("SSTab")->setCurrentIndex(1);
    Type("txtBalance", "12345.6");
    Control<QWidget>("chkNeverReset")->setFocus();
    EXPECT_EQ(Text("txtBalance"), "12,345.60");
    EXPECT_EQ(State().account.AccountBalance, Currency("12345.6"));
    EXPECT_EQ(Row("Balance", "Field01"), "123456000");
}

TEST_F(UserSetup, WritesABalanceThatWasTypedLastByOk)
{
    Open();
    Control<QTabWidget>("SSTab")->setCurrentIndex(1);
    Type("txtBalance", "-7");
    Click("cmdOK");
    EXPECT_EQ(State().account.AccountBalance, Currency("-7"));
}

TEST_F(UserSetup, KeepsTheDecimalsOfABalanceThatIsOnlyLookedAt)
{
    Open();
    State().account.AccountBalance = Currency("1000.1234");
    run.App().Host().Unload(Screen);
    run.App().Host().Show(Screen);
    EXPECT_EQ(Text("txtBalance"), "1,000.12");
    Control<QTabWidget>("SSTab")->setCurrentIndex(1);
    Control<QWidget>("txtBalance")->setFocus();
    Control<QWidget>("chkNeverReset")->setFocus();
    Click("cmdOK");
    EXPECT_EQ(State().account.AccountBalance, Currency("1000.1234"));
}

TEST_F(UserSetup, ClearsTheStoredLoginAtOnceWhenTheProtectionGoes)
{
    run.GiveSecurity(folder.SampleAccount(), 0, 0, 15);
    Open();
    EXPECT_EQ(Text("txtLoginID"), "Ann");
    Click("chkPSWProtected");
    EXPECT_EQ(Text("txtPassword"), "secret");
    Click("chkPSWProtected");
    EXPECT_EQ(Text("txtLoginID") + Text("txtPassword") + Text("txtVerifyPassword"), "");
    EXPECT_EQ(State().account.LoginID, "");
    EXPECT_EQ(Row("Security", "Field08") + Row("Security", "Field09"), "");
    EXPECT_EQ(Row("Security", "Field10"), "0");
}

TEST_F(UserSetup, PicksASiteWithItsIntervalAndEnablesItAgain)
{
    Open();
    State().priceUpdate.NotFoundList = ", ACME, ";
    EXPECT_TRUE(Control<QWidget>("cmdSubscribe")->isHidden());
    Pick("Cobalt (paid)");
    EXPECT_EQ(Text("txtWebTimeUpdate"), "7");
    EXPECT_EQ(folder.Value(folder.File("WebSites.mdb"),
                           "SELECT DeselectFlagPerm FROM WebParameters WHERE ID = 2"),
              "0");
    EXPECT_EQ(State().priceUpdate.NotFoundList, "");
    EXPECT_EQ(Control<QLabel>("lblServiceMsg")->text(),
              "Website requires a Login ID (pay for service), click to apply:");
    Click("cmdSubscribe");
    EXPECT_EQ(run.openedPages, QStringList("http://cobalt.example/join"));
    Pick("Azure (free)");
    EXPECT_EQ(Control<QLabel>("lblServiceMsg")->text(),
              "Website requires a Login ID (free service), click to apply:");
    Pick("Yahoo Finance (late)");
    EXPECT_TRUE(Control<QWidget>("lblServiceMsg")->isHidden());
}

TEST_F(UserSetup, ForgetsTheLoginOfTheSiteBeforeWhenAnotherIsApplied)
{
    Open();
    State().priceUpdate.WebLoginId = "ann";
    Click("cmdApply");
    EXPECT_EQ(State().priceUpdate.WebLoginId, "ann");
    Pick("Azure (free)");
    Click("cmdApply");
    EXPECT_EQ(State().priceUpdate.WebLoginId, "");
    EXPECT_EQ(Row("WebSite", "Field08"), "Azure (free)");
    EXPECT_EQ(Row("WebSite", "Field06"), "9");
}

// --- price update --------------------------------------------------------------------------------

TEST_F(UserSetup, StopsThePriceCycleWhileItIsOpen)
{
    run.SetOption("WebPriceUpdate", "1");
    run.AddScreen("frmInternetTran", Placement::Hidden);
    run.App().Launch();
    State().priceUpdate.PriceUpdateActive = true; // as the real one says
    run.App().Host().Show(Screen);
    EXPECT_EQ(run.Panel(1), "Current price update option temporarily disabled!");
    EXPECT_TRUE(Checked("optPriceUpdEnabled"));
    EXPECT_EQ(run.Unloads(), QStringList("frmInternetTran"));
    Click("cmdClose");
    EXPECT_EQ(run.Panel(1), "Enabling the current price update option");
    EXPECT_TRUE(run.App().Host().Loaded("frmInternetTran"));
}

TEST_F(UserSetup, LoadsAndUnloadsThePriceCycleByItsOptions)
{
    Open();
    EXPECT_TRUE(Checked("optPriceUpdDisabledPerm"));
    Click("optPriceUpdEnabled");
    Click("cmdApply");
    EXPECT_TRUE(run.App().Host().Loaded("frmInternetTran"));
    EXPECT_TRUE(State().settings.WebPriceUpdate);
    Click("optPriceUpdDisabledTemp");
    Click("cmdOK");
    EXPECT_FALSE(run.App().Host().Loaded("frmInternetTran"));
    EXPECT_TRUE(State().settings.WebPriceUpdate);

    run.App().Host().Show(Screen);
    EXPECT_TRUE(Checked("optPriceUpdDisabledTemp"));
    Click("optPriceUpdDisabledPerm");
    Click("cmdOK");
    EXPECT_FALSE(run.App().Host().Loaded("frmInternetTran"));
    EXPECT_EQ(run.SavedOption("WebPriceUpdate"), "False");
}

// --- reset ---------------------------------------------------------------------------------------

TEST_F(UserSetup, OpensTheAccountAnewForAResetThatIsDue)
{
    run.AddScreen("frmDailyTracker", Placement::Child, "mnuVWDailyTracker");
    run.SetOption("DailyTracker", "1");
    run.AddScreen("frmDailyTracker", Placement::Child, "mnuVWDailyTracker");
    Open();
    Click("chkNeverReset");
    Control<DateField>("dtpResetDate")->setDate(QDate(2026, 3, 2));
    Click("cmdApply");
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(run.log, QStringList({"load frmDailyTracker", "unload frmDailyTracker",
                                    "load frmDailyTracker"}));
    Control<DateField>("dtpResetDate")->setDate(QDate(2026, 3, 3));
    Click("cmdOK");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(run.log.size(), 3);
}
