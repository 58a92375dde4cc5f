/// How the settings screen looks and takes the keyboard, and money as other countries write it.

#include "platform/widgets/up_down.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <algorithm>

namespace
{

const QString Screen = QStringLiteral("frmUserSetup");

class OpenSetup
{
public:
    explicit OpenSetup(const QLocale &locale = QLocale(QLocale::English, QLocale::UnitedStates))
        : run(folder, locale)
    {
        folder.Execute(folder.File("WebSites.mdb"),
                       "DELETE FROM WebParameters; INSERT INTO WebParameters (ID, WebSiteName, "
                       "DelayTime) VALUES (1, 'Yahoo Finance (late)', 5)");
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "0");
        run.GiveBalance(folder.SampleAccount(), "2026-03-02", 3);
        run.App().Launch();
        run.App().Host().Show(Screen);
        Shown().activateWindow();
        QTest::qWait(0);
    }
    Form &Shown() { return *run.App().Host().Find(Screen); }
    template <class Widget>
    Widget &Control(const QString &name)
    {
        auto *control = run.Control<Widget>(Screen, name);
        if (!control)
            throw std::runtime_error("no control " + name.toStdString());
        return *control;
    }
    QTabWidget &Tabs(const char *name) { return Control<QTabWidget>(name); }
    QString Text(const QString &name) { return Control<QLineEdit>(name).text(); }
    /// With the keys of the keyboard, over what is there.
    void Type(const QString &name, const QString &text)
    {
        auto &field = Control<QLineEdit>(name);
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, text);
    }

    TestAppFolder folder;
    ShellRun run;
};

/// The controls that Tab comes to between the tabs of the page and the buttons below.
QStringList TabOrder(OpenSetup &setup, QWidget &page)
{
    QStringList names;
    setup.Tabs("SSTab").tabBar()->setFocus();
    for (int presses = 0; presses < 40; ++presses) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget *focused = QApplication::focusWidget();
        if (!page.isAncestorOf(focused))
            break;
        if (!qobject_cast<QTabBar *>(focused))
            names << focused->objectName();
    }
    return names;
}

struct Country
{
    const char *name;
    QLocale locale;
    const char *typed; ///< 12345.6
    const char *shown;
    const char *factor; ///< 0.002
};
class SetupIn : public testing::TestWithParam<Country>
{};

} // namespace

TEST(UserSetupKeys, TabComesToTheFieldsOfEachPageAsTheyAreRead)
{
    OpenSetup setup;
    // Of options that go together, the one that is on.
    const QStringList pages[] = {
        {"chkNotify", "txtBackupDays", "chkAverage", "txtAverageTrans", "chkDailyTracker",
         "chkHistoryList", "chkDailyProfitLoss", "chkPurchaseList", "chkChart", "chkBrowserScreen",
         "chkHistoricalPriceList", "optMaximize", "chkShowTips", "chkVersionReminder"},
        {"txtBalance", "chkNeverReset", "txtResetMonths", "dtpResetDate", "chkLogoff",
         "txtLogoffMinutes", "chkPSWProtected", "txtLoginID", "txtPassword", "txtVerifyPassword"},
        {"chkStyle1", "txtStyle1Cost", "txtStyle1PerShare"},
        {"chkCompact", "txtCompactDays", "txtHistPriceMonths", "txtKeepPortfolioData"},
        {"optProxy", "combCurrentWebSite", "txtWebTimeUpdate", "optPriceUpdDisabledPerm"}};
    QTabWidget &tabs = setup.Tabs("SSTab");
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        EXPECT_EQ(TabOrder(setup, *tabs.widget(page)), pages[page]);
    }

    tabs.setCurrentIndex(2);
    QTabWidget &styles = setup.Tabs("SSTabCommission");
    for (const int style : {2, 3, 4}) {
        styles.setCurrentIndex(style - 1);
        const QString field = QStringLiteral("txtStyle%1").arg(style);
        EXPECT_EQ(TabOrder(setup, *tabs.widget(2)),
                  QStringList({QStringLiteral("chkStyle%1").arg(style), field + "Shares",
                               field + "Cost", field + "Shares2", field + "PerShare"}));
    }
    styles.setCurrentIndex(4);
    EXPECT_EQ(TabOrder(setup, *tabs.widget(2)),
              QStringList({"chkStyle5", "txtStyle5Cost", "txtStyle5FlatCost"}));
}

TEST(UserSetupLook, CutsNoWordsOnADesktopThatIsNarrow)
{
    OpenSetup setup;
    setup.Shown().resize(1, 1); // as far as it goes
    for (const char *name : {"SSTab", "SSTabCommission"}) {
        QTabWidget &tabs = setup.Tabs(name);
        for (int page = 0; page < tabs.count(); ++page) {
            setup.Tabs("SSTab").setCurrentIndex(&tabs == &setup.Tabs("SSTab") ? page : 2);
            tabs.setCurrentIndex(page);
            QTest::qWait(0);
            for (auto *control : tabs.widget(page)->findChildren<QWidget *>()) {
                auto *label = qobject_cast<QLabel *>(control);
                const bool hasWords =
                    (label && !label->wordWrap()) || qobject_cast<QAbstractButton *>(control);
                if (!hasWords || !control->isVisible() ||
                    qobject_cast<QTabBar *>(control->parent()))
                    continue;
                EXPECT_GE(control->width(), control->sizeHint().width())
                    << (label ? label->text() : control->objectName()).toStdString();
            }
        }
    }
}

TEST(UserSetupLook, BringsAFieldInErrorIntoViewOnADesktopThatIsLow)
{
    OpenSetup setup;
    setup.Shown().resize(setup.Shown().width(), 250);
    setup.Tabs("SSTab").setCurrentIndex(1);
    QTest::qWait(0);
    auto &login = setup.Control<QLineEdit>("txtLoginID");
    EXPECT_TRUE(login.visibleRegion().isEmpty());
    EXPECT_FALSE(setup.Control<QWidget>("cmdOK").visibleRegion().isEmpty());
    setup.Control<QAbstractButton>("chkPSWProtected").click();
    setup.Control<QAbstractButton>("cmdOK").click();
    EXPECT_EQ(setup.run.boxes.Texts(), QStringList("Please select a signon ID and password"));
    EXPECT_EQ(login.visibleRegion().boundingRect(), login.rect());
}

TEST(UserSetupLook, HasArrowsBesideEachNumberThatCanBeChanged)
{
    OpenSetup setup;
    const struct
    {
        const char *arrows, *field;
    } pairs[] = {{"updBackupDays", "txtBackupDays"},
                 {"updActBkUp", "txtAverageTrans"},
                 {"updResetMonths", "txtResetMonths"},
                 {"updLogoffMinutes", "txtLogoffMinutes"},
                 {"updDBComp", "txtCompactDays"},
                 {"updActPriceHistMonths", "txtHistPriceMonths"},
                 {"updKeepPortfolioData", "txtKeepPortfolioData"},
                 {"updWebTimeUpdate", "txtWebTimeUpdate"}};
    for (const auto &pair : pairs) {
        const int before = setup.Text(pair.field).toInt();
        auto &arrows = setup.Control<UpDown>(pair.arrows);
        QTest::mouseClick(&arrows, Qt::LeftButton, {}, QPoint(5, 3));
        EXPECT_EQ(setup.Text(pair.field).toInt(), before + 1) << pair.arrows;
    }
}

// --- other countries -----------------------------------------------------------------------------

TEST_P(SetupIn, TakesAndShowsMoneyAsItIsWrittenThere)
{
    OpenSetup setup(GetParam().locale);
    setup.Tabs("SSTab").setCurrentIndex(1);
    setup.Type("txtBalance", GetParam().typed);
    setup.Control<QWidget>("chkNeverReset").setFocus();
    EXPECT_EQ(setup.Text("txtBalance"), QString::fromUtf8(GetParam().shown));
    EXPECT_EQ(setup.run.State().account.AccountBalance, Currency("12345.6"));

    setup.Control<QAbstractButton>("chkStyle5").click();
    setup.Type("txtStyle5Cost", GetParam().factor);
    setup.Control<QAbstractButton>("cmdApply").click();
    EXPECT_EQ(setup.run.boxes.Texts(), QStringList());
    EXPECT_EQ(setup.run.State().account.CommissionCost, Currency("0.002"));
    EXPECT_EQ(setup.Text("txtStyle5Cost"), QString(GetParam().factor));

    // What is shown with groups can be applied again, and is the same amount.
    setup.Type("txtBalance", QString());
    setup.Control<QLineEdit>("txtBalance").setText(QString::fromUtf8(GetParam().shown));
    setup.Control<QAbstractButton>("cmdOK").click();
    EXPECT_EQ(setup.run.boxes.Texts(), QStringList());
    EXPECT_EQ(setup.run.State().account.AccountBalance, Currency("12345.6"));
}
INSTANTIATE_TEST_SUITE_P(
    Each, SetupIn,
    testing::Values(Country{"Germany", QLocale(QLocale::German, QLocale::Germany), "12345,6",
                            "12.345,60", "0,002"},
                    Country{"France", QLocale(QLocale::French, QLocale::France), "12 345,6",
                            "12\u202f345,60", "0,002"},
                    Country{"Switzerland", QLocale(QLocale::German, QLocale::Switzerland),
                            "12345.6", "12\u2019345.60", "0.002"},
                    Country{"India", QLocale(QLocale::English, QLocale::India), "12,345.6",
                            "12,345.60", "0.002"}),
    [](const auto &info) { return std::string(info.param.name); });
