#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QTest>

namespace
{

class NewVersionScreen : public testing::Test
{
protected:
    NewVersionScreen()
    {
        run.SetOption("ShowTipOfDay", "0")
            .SetOption("DailyTracker", "0")
            .SetOption("WebPriceUpdate", "0");
        folder.AddFile("WebLinks.json", R"({"makerSite": "https://maker.example/quillon"})");
        run.App().Launch();
        run.State().priceUpdate.WebVersionText = "6.0.19";
    }
    void Open() { run.App().Host().Show("frmNewVersion"); }
    void Press(const QString &button)
    {
        run.Control<QPushButton>("frmNewVersion", button)->click();
    }
    bool IsOpen() { return run.App().Host().Loaded("frmNewVersion"); }
    QCheckBox *Reminder() { return run.Control<QCheckBox>("frmNewVersion", "chkReminderOption"); }
    std::string Message()
    {
        return run.Control<QPlainTextEdit>("frmNewVersion", "txtNewVersionMsg")
            ->toPlainText()
            .toStdString();
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(NewVersionScreen, TellsBothVersionsAndTheDownloadPage)
{
    Open();
    EXPECT_EQ(Message(),
              "A new version of this application is now available. It is recommended that you "
              "download the latest version.\n"
              "\n"
              "YOUR CURRENT VERSION IS: 6.0.18\n"
              "NEW UPDATED VERSION IS.: 6.0.19\n"
              "\n"
              "To begin the download, click the 'Download now' button. The application will launch "
              "internet explorer and take you to the download web page at:\n"
              "\n"
              "https://maker.example/quillon/Downloads.html\n"
              "\n"
              "Download the update version. After completing the download, end this application "
              "and follow the latest installation instructions described on the download page.");
}

TEST_F(NewVersionScreen, NamesThePracticeServerByItsAddress)
{
    folder.AddFile("WebLinks.json", R"({"makerSite": "{practice}"})");
    run.State().webAddresses = WebAddresses::Load(folder.Path());
    Open();
    const QString address = run.State().practiceServer.Origin() + "/Downloads.html";
    EXPECT_NE(Message().find("\n" + address.toStdString() + "\n"), std::string::npos);
    Press("cmdDownloadNow");
    EXPECT_EQ(run.openedPages, QStringList(address));
}

TEST_F(NewVersionScreen, OpensTheDownloadPageAndCloses)
{
    Open();
    Press("cmdDownloadNow");
    EXPECT_EQ(run.openedPages, QStringList("https://maker.example/quillon/Downloads.html"));
    EXPECT_FALSE(IsOpen());
}

TEST_F(NewVersionScreen, OpensTheRevisionHistoryAndStays)
{
    Open();
    Press("cmdViewReviewHist");
    EXPECT_EQ(run.openedPages, QStringList("https://maker.example/quillon/VersionChanges.html"));
    EXPECT_TRUE(IsOpen());
}

TEST_F(NewVersionScreen, ClosesAndLeavesEverythingAsItIs)
{
    Open();
    Press("cmdClose");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(run.State().settings.ShowReminderScreen, 1);
    EXPECT_EQ(run.openedPages, QStringList());
    EXPECT_TRUE(run.boxes.boxes.empty());
}

TEST_F(NewVersionScreen, ClosesWithEscapeAndDownloadsWithEnter)
{
    Open();
    QTest::keyClick(run.App().Host().Find("frmNewVersion"), Qt::Key_Escape);
    EXPECT_FALSE(IsOpen());
    Open();
    QTest::keyClick(run.App().Host().Find("frmNewVersion"), Qt::Key_Return);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(run.openedPages.size(), 1);
}

TEST_F(NewVersionScreen, OpensItsHelp)
{
    Open();
    Press("cmdHelp");
    EXPECT_EQ(run.Panel(1), "The help topic NewVersionScreen.html was not found"); // a bare folder
}

TEST_F(NewVersionScreen, ShowsWhetherTheReminderIsOn)
{
    for (const int isOn : {0, 1}) {
        run.State().settings.ShowReminderScreen = isOn;
        Open();
        EXPECT_EQ(Reminder()->isChecked(), isOn == 1);
        EXPECT_TRUE(run.boxes.boxes.empty()); // nobody has clicked
        Press("cmdClose");
    }
}

TEST_F(NewVersionScreen, SaysWhereAReminderThatIsTurnedOffCanBeTurnedOn)
{
    Open();
    Reminder()->click();
    ASSERT_EQ(run.boxes.boxes.size(), 1u);
    EXPECT_EQ(run.boxes.boxes[0].text,
              "Note: This reminder can be reset again in the setup screen.");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 64);
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_EQ(run.State().settings.ShowReminderScreen, 0);
}

TEST_F(NewVersionScreen, SaysNothingWhenTheReminderIsTurnedOn)
{
    run.State().settings.ShowReminderScreen = 0;
    Open();
    Reminder()->click();
    EXPECT_TRUE(run.boxes.boxes.empty());
    EXPECT_EQ(run.State().settings.ShowReminderScreen, 1);
}

TEST_F(NewVersionScreen, KeepsTheReminderForLaterRuns)
{
    Open();
    Reminder()->click();
    Press("cmdClose");
    run.Choose("mnuFLExit");
    EXPECT_EQ(run.SavedOption("ShowReminderScreen"), "0");
}

TEST_F(NewVersionScreen, ShowsAMessageThatCannotBeChanged)
{
    Open();
    auto *message = run.Control<QPlainTextEdit>("frmNewVersion", "txtNewVersionMsg");
    const std::string before = Message();
    QTest::keyClicks(message, "abc");
    QTest::keyClick(message, Qt::Key_Delete);
    EXPECT_EQ(Message(), before);
}
