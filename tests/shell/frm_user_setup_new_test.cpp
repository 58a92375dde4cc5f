/// The settings screen of a new account.

#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTabWidget>

namespace
{

const QString Screen = QStringLiteral("frmUserSetup");

class NewAccountSetup : public testing::Test
{
protected:
    NewAccountSetup()
    {
        folder.Execute(folder.File("WebSites.mdb"),
                       "DELETE FROM WebParameters; INSERT INTO WebParameters (ID, WebSiteName, "
                       "DelayTime) VALUES (1, 'Yahoo Finance (late)', 5)");
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "0").App().Launch();
        run.boxes.files = {folder.File("Broker.mdb")};
    }
    /// Runs `act` in the settings screen of a new account.
    void MakeAccount(std::function<void()> act)
    {
        run.WhenModal(Screen, [this, act] {
            QCoreApplication::processEvents(); // the welcome
            act();
        });
        run.Choose("mnuFLNew");
    }
    void Click(const char *name) { run.Control<QAbstractButton>(Screen, name)->click(); }
    void EnterBalance(const QString &text)
    {
        auto *balance = run.Control<QLineEdit>(Screen, "txtBalance");
        balance->setFocus();
        balance->setText(text);
        run.Control<QWidget>(Screen, "chkNeverReset")->setFocus();
    }
    QStringList TakeTexts()
    {
        QStringList texts;
        for (const auto &box : run.boxes.boxes)
            texts << box.text;
        run.boxes.boxes.clear();
        return texts;
    }
    int Page() { return run.Control<QTabWidget>(Screen, "SSTab")->currentIndex(); }

    const QString Correct = "Please correct errors encountered before proceeding.";
    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(NewAccountSetup, AsksForBalanceAndStyleOnce)
{
    MakeAccount([&] {
        ASSERT_EQ(run.boxes.boxes.size(), 1u);
        EXPECT_EQ(run.boxes.boxes[0].title, "User Setup Edit");
        EXPECT_EQ(run.boxes.boxes[0].text,
                  "Please enter the current account balance and commission \n"
                  "style for this new account. These options can be changed \n"
                  "later at anytime.");
        EnterBalance("1000");
        Click("chkStyle1");
        Click("cmdOK");
    });
    EXPECT_EQ(run.boxes.boxes.size(), 1u);
}

TEST_F(NewAccountSetup, StandsInAWindowThatBearsTheNewName)
{
    QString caption;
    MakeAccount([&] {
        caption = run.App().MainWindow().windowTitle();
        EnterBalance("1000");
        Click("chkStyle1");
        Click("cmdOK");
    });
    EXPECT_EQ(caption, "Quillon - Broker");
}

TEST_F(NewAccountSetup, CannotBeLeftBeforeEverythingIsThere)
{
    MakeAccount([&] {
        TakeTexts();
        run.Control<QComboBox>(Screen, "combCurrentWebSite")->setCurrentIndex(-1);
        Click("cmdClose");
        EXPECT_EQ(TakeTexts(),
                  QStringList({"Please select a website for current price downloads", Correct}));
        EXPECT_EQ(Page(), 4);
        run.Control<QComboBox>(Screen, "combCurrentWebSite")->setCurrentIndex(0);

        Click("cmdOK");
        EXPECT_EQ(TakeTexts(), QStringList({"You have not entered the current account balance for "
                                            "this account, \nplease enter it now.",
                                            Correct}));
        EXPECT_EQ(Page(), 1);
        EnterBalance("2500");

        Click("chkNeverReset"); // the next date is today
        Click("cmdOK");
        EXPECT_TRUE(TakeTexts().value(0).startsWith("Please select a reset date"));
        EXPECT_TRUE(run.State().run.NewAccount);
        Click("chkNeverReset");

        Click("cmdOK");
        EXPECT_EQ(TakeTexts(),
                  QStringList({"You have not done the commission cost setup or have not \n"
                               "selected a style, please set it now.",
                               Correct}));
        EXPECT_EQ(Page(), 2);
        Click("chkStyle1");
        Click("cmdOK");
        EXPECT_EQ(TakeTexts(), QStringList());
    });
    EXPECT_FALSE(run.App().Host().Loaded(Screen));
    EXPECT_FALSE(run.State().run.NewAccount);
}

TEST_F(NewAccountSetup, WritesTheFirstControlRowsAndOpensTheAccount)
{
    MakeAccount([&] {
        EnterBalance("2500");
        Click("chkStyle2");
        run.Control<QLineEdit>(Screen, "txtStyle2Cost")->setText("14.95");
        Click("cmdOK");
    });
    const AccountState &account = run.State().account;
    EXPECT_EQ(run.State().settings.AccountName, "Broker");
    EXPECT_EQ(account.AccountBalance, Currency("2500"));
    EXPECT_EQ(account.CommissionStyle, "Style2");
    EXPECT_EQ(account.CommissionCost, Currency("14.95"));
    EXPECT_EQ(account.CurrentWebSiteName, "Yahoo Finance (late)");
    EXPECT_EQ(account.LogoffMinutes, 15);
    EXPECT_EQ(folder.Value(folder.File("Broker.mdb"),
                           "SELECT group_concat(TableName) FROM (SELECT TableName FROM "
                           "DescriptiveTable ORDER BY rowid)"),
              "Balance,WebSite,Style2,Security");
    EXPECT_EQ(run.App().MainWindow().windowTitle(), "Quillon - Broker");
}

TEST_F(NewAccountSetup, DoesNotTakeOverTheFiguresOfTheAccountBefore)
{
    run.State().account.LoginID = "Ann";
    run.State().account.CommissionStyle = "Style1";
    MakeAccount([&] {
        EXPECT_EQ(run.Control<QLineEdit>(Screen, "txtLoginID")->text(), "");
        EXPECT_EQ(run.Control<QLineEdit>(Screen, "txtBalance")->text(), "0.00");
        EXPECT_FALSE(run.Control<QAbstractButton>(Screen, "chkStyle1")->isChecked());
        EnterBalance("1");
        Click("chkStyle1");
        Click("cmdOK");
    });
}
