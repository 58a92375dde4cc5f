/// The accounts opened last, in the drop-down of the Open button.

#include "shell/shell_run.h"
#include "store/recent_accounts.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

namespace
{

class RecentAccountsMenu : public testing::Test
{
protected:
    RecentAccountsMenu()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "False");
    }
    void Open(const QString &path)
    {
        run.boxes.files = {path};
        run.Choose("mnuFLOpenExisting");
    }
    QToolButton *Button()
    {
        QToolBar *toolbar = run.App().MainWindow().Toolbar();
        return qobject_cast<QToolButton *>(
            toolbar->widgetForAction(run.App().MainWindow().Action("Open")));
    }
    /// The drop-down as it comes up: "&1 Broker" for each entry, "(open)" or "(gone)" behind it.
    QStringList Entries()
    {
        emit Button()->menu()->aboutToShow();
        QStringList entries;
        for (const QAction *entry : Button()->menu()->actions())
            entries << entry->text() + (entry->isChecked() ? " (open)" : "") +
                           (entry->isEnabled() ? "" : " (gone)");
        return entries;
    }
    void Pick(int place)
    {
        Entries();
        Button()->menu()->actions().at(place)->trigger();
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(RecentAccountsMenu, ShowsTheOpenAccountFirst)
{
    run.App().Launch();
    EXPECT_EQ(Entries(), QStringList("&1 Sample Portfolio (open)"));
    Open(folder.AddAccount("Broker X12.mdb"));
    EXPECT_EQ(Entries(), QStringList({"&1 Broker X12 (open)", "&2 Sample Portfolio"}));
    EXPECT_EQ(Button()->menu()->actions().first()->toolTip(), folder.File("Broker X12.mdb"));
}

TEST_F(RecentAccountsMenu, ShortensANameThatIsVeryLong)
{
    run.App().Launch();
    const QString name = "Broker " + QString("of the family ").repeated(14) + "X12";
    Open(folder.AddAccount(name + ".mdb"));
    EXPECT_TRUE(Entries().first().startsWith("&1 Broker of the family "));
    EXPECT_TRUE(Entries().first().endsWith("X12 (open)"));
    EXPECT_LT(Button()->menu()->sizeHint().width(), 800);
    EXPECT_EQ(Button()->menu()->actions().first()->toolTip(), folder.File(name + ".mdb"));
}

TEST_F(RecentAccountsMenu, GoesOverToTheAccountChosen)
{
    run.App().Launch();
    Open(folder.AddAccount("Ann & Bob's.mdb"));
    Pick(1);
    EXPECT_EQ(run.App().MainWindow().Caption(), "Quillon - Sample Portfolio");
    EXPECT_EQ(run.State().databases.gConnAccount.Path(), folder.SampleAccount());
    EXPECT_EQ(Entries(), QStringList({"&1 Sample Portfolio (open)", "&2 Ann && Bob's"}));
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(RecentAccountsMenu, DoesNothingForTheOpenAccount)
{
    run.AddScreen("frmHistoryList", Placement::Child, "mnuVWHistory");
    run.App().Launch();
    run.Choose("mnuVWHistory");
    Pick(0);
    EXPECT_TRUE(run.App().Host().Loaded("frmHistoryList"));
}

TEST_F(RecentAccountsMenu, KeepsFiveOverTheNextStart)
{
    run.App().Launch();
    for (const char *name : {"A.mdb", "B.mdb", "C.mdb", "D.mdb", "E.mdb"})
        Open(folder.AddAccount(name));
    const QStringList five = {"&1 E (open)", "&2 D", "&3 C", "&4 B", "&5 A"};
    EXPECT_EQ(Entries(), five);
    run.App().Exit();
    run.Renew();
    run.App().Launch();
    EXPECT_EQ(Entries(), five);
    EXPECT_EQ(run.SavedOption("RecentAccount1"), folder.File("E.mdb"));
    EXPECT_EQ(run.SavedOption("RecentAccount5"), folder.File("A.mdb"));
}

TEST_F(RecentAccountsMenu, GreysAnAccountWhoseFileIsGone)
{
    run.App().Launch();
    Open(folder.AddAccount("A.mdb"));
    Open(folder.AddAccount("B.mdb"));
    QFile::remove(folder.File("A.mdb"));
    EXPECT_EQ(Entries(), QStringList({"&1 B (open)", "&2 A (gone)", "&3 Sample Portfolio"}));
}

TEST_F(RecentAccountsMenu, CountsAnAccountOnceThatIsReachedByALink)
{
    run.App().Launch();
    ASSERT_TRUE(QFile::link(folder.AddAccount("A.mdb"), folder.File("Link.mdb")));
    Open(folder.File("A.mdb"));
    Open(folder.File("Link.mdb"));
    EXPECT_EQ(Entries(), QStringList({"&1 Link (open)", "&2 Sample Portfolio"}));
}

TEST_F(RecentAccountsMenu, LeavesOutAFileThatIsNoAccount)
{
    run.App().Launch();
    run.boxes.files = {folder.AddFile("notes.mdb", "Dear diary"), folder.SampleAccount()};
    run.Choose("mnuFLOpenExisting");
    EXPECT_EQ(Entries(), QStringList("&1 Sample Portfolio (open)"));
}

TEST_F(RecentAccountsMenu, LeavesTheButtonItselfToTheDialog)
{
    run.App().Launch();
    run.boxes.files = {std::nullopt};
    Button()->click();
    EXPECT_EQ(run.boxes.fileRequests.size(), 1u);
    EXPECT_EQ(Button()->popupMode(), QToolButton::MenuButtonPopup);
}

TEST_F(RecentAccountsMenu, IsClosedWithItsButton)
{
    run.App().Launch();
    run.Commands().SetEnabled("Open", false);
    EXPECT_FALSE(Button()->isEnabled());
}

TEST(RecentAccounts, SurviveASettingsFileThatCannotBeWritten)
{
    TestAppFolder folder;
    QDir().mkpath(folder.File("settings.ini")); // a folder in its place
    SettingsStore store(folder.SettingsFile());
    RememberAccount(store, folder.SampleAccount());
    EXPECT_EQ(RecentAccounts(store), QStringList(folder.SampleAccount()));
}
