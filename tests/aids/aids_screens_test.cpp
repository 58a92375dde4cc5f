/// The tip of the day, and the About screen with the system information behind it.

#include "aids/frm_about.h"
#include "aids/tips.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>

namespace
{

class TipOfDay : public testing::Test
{
protected:
    TipOfDay()
    {
        run.SetOption("DailyTracker", "0").SetOption("WebPriceUpdate", "0");
        folder.AddFile("TIPOFDAY.TXT", "One.\nTwo.\nThree.\n");
    }
    /// Starts the program and acts while the tip is up.
    void LaunchWithTip(const std::function<void()> &act)
    {
        bool cameUp = false;
        run.WhenModal("frmTipOfDay", [&, act] {
            cameUp = true;
            act();
            if (run.App().Host().Loaded("frmTipOfDay"))
                Button("cmdOK")->click();
        });
        run.App().Launch();
        EXPECT_TRUE(cameUp);
        EXPECT_FALSE(run.App().Host().Loaded("frmTipOfDay"));
    }
    QPushButton *Button(const char *name) { return run.Control<QPushButton>("frmTipOfDay", name); }
    QString Tip() { return run.Control<QLabel>("frmTipOfDay", "lblTipText")->text(); }

    TestAppFolder folder;
    ShellRun run{folder};
};

class About : public testing::Test
{
protected:
    About()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "0");
        run.App().Launch();
    }
    /// Opens the screen from its menu and acts while it is up.
    void WithAbout(const std::function<void()> &act)
    {
        bool cameUp = false;
        run.WhenModal("frmAbout", [&, act] {
            cameUp = true;
            act();
            run.Control<QPushButton>("frmAbout", "cmdOK")->click();
        });
        run.Choose("mnuHelpAbout");
        EXPECT_TRUE(cameUp);
        EXPECT_FALSE(run.App().Host().Loaded("frmAbout"));
    }
    QString Label(const char *name) { return run.Control<QLabel>("frmAbout", name)->text(); }
    void ClickSysInfo() { run.Control<QPushButton>("frmAbout", "cmdSysInfo")->click(); }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(TipOfDay, ShowsTheFirstTipAtTheFirstStart)
{
    LaunchWithTip([&] {
        EXPECT_EQ(Tip(), "One.");
        EXPECT_TRUE(run.Control<QCheckBox>("frmTipOfDay", "chkLoadTipsAtStartup")->isChecked());
        EXPECT_EQ(run.Control<QLabel>("frmTipOfDay", "lblDidYouKnow")->text(), "Did you know...");
        EXPECT_EQ(Button("cmdNextTip")->text(), "&Next Tip");
    });
}

TEST_F(TipOfDay, GoesThroughThreeTipsAndBeginsAnew)
{
    LaunchWithTip([&] {
        QStringList tips{Tip()};
        for (int i = 0; i < 3; ++i) {
            Button("cmdNextTip")->click();
            tips << Tip();
        }
        EXPECT_EQ(tips, QStringList({"One.", "Two.", "Three.", "One."}));
    });
    EXPECT_EQ(run.State().settings.CurrentTip, 1);
}

TEST_F(TipOfDay, ShowsTheNextTipAtTheNextStart)
{
    LaunchWithTip([] {});
    EXPECT_TRUE(run.App().Exit());
    EXPECT_EQ(run.SavedOption("CurrentTip"), "1");
    run.Renew();
    LaunchWithTip([&] { EXPECT_EQ(Tip(), "Two."); });
}

TEST_F(TipOfDay, BeginsAnewWhenTheFileHasShrunk)
{
    run.SetOption("CurrentTip", "17");
    LaunchWithTip([&] { EXPECT_EQ(Tip(), "One."); });
    EXPECT_EQ(run.State().settings.CurrentTip, 1);
}

TEST_F(TipOfDay, ShowsHowToMakeTheFileWhenItIsMissingAndTheProgramGoesOn)
{
    QFile::remove(folder.File("TIPOFDAY.TXT"));
    run.SetOption("CurrentTip", "2");
    LaunchWithTip([&] {
        EXPECT_EQ(Tip(), TipsNotFoundText());
        EXPECT_EQ(run.State().settings.CurrentTip, 2);
        Button("cmdNextTip")->click(); // no tip follows
        EXPECT_EQ(Tip(), TipsNotFoundText());
    });
    EXPECT_FALSE(run.App().Ended());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(TipOfDay, ShowsNothingOfAnEmptyFile)
{
    folder.AddFile("TIPOFDAY.TXT", "");
    LaunchWithTip([&] {
        EXPECT_EQ(Tip(), "");
        Button("cmdNextTip")->click();
        EXPECT_EQ(Tip(), "");
    });
    EXPECT_FALSE(run.App().Ended());
}

TEST_F(TipOfDay, ComesNoMoreWhenItIsSwitchedOff)
{
    LaunchWithTip([&] {
        run.Control<QCheckBox>("frmTipOfDay", "chkLoadTipsAtStartup")->click();
        EXPECT_EQ(run.State().settings.ShowTipOfDay, 0);
        run.Control<QCheckBox>("frmTipOfDay", "chkLoadTipsAtStartup")->click();
        EXPECT_EQ(run.State().settings.ShowTipOfDay, 1);
        run.Control<QCheckBox>("frmTipOfDay", "chkLoadTipsAtStartup")->click();
    });
    EXPECT_TRUE(run.App().Exit());
    run.Renew();
    run.App().Launch();
    EXPECT_FALSE(run.App().Host().Loaded("frmTipOfDay"));
    EXPECT_EQ(run.State().settings.CurrentTip, 1);
}

TEST_F(TipOfDay, ShowsMarkupAndLongTipsAsTheyStandWithoutGrowing)
{
    const QByteArray tip =
        "<b>100 &lt; 200</b> " + QByteArray(20000, 'x').replace("xxxxxxxx", "long tip");
    folder.AddFile("TIPOFDAY.TXT", tip);
    LaunchWithTip([&] {
        EXPECT_EQ(Tip(), QString::fromUtf8(tip));
        EXPECT_EQ(run.Control<QLabel>("frmTipOfDay", "lblTipText")->textFormat(), Qt::PlainText);
        EXPECT_LT(run.App().Host().Find("frmTipOfDay")->height(), 500);
    });
}

TEST_F(TipOfDay, GoesWithEscape)
{
    LaunchWithTip([&] {
        Form *tip = run.App().Host().Find("frmTipOfDay");
        ASSERT_TRUE(QTest::qWaitForWindowActive(tip));
        QTest::keyClick(tip, Qt::Key_Escape);
        EXPECT_FALSE(run.App().Host().Loaded("frmTipOfDay"));
    });
}

TEST_F(TipOfDay, CountsAsAnActionOfTheUser)
{
    LaunchWithTip([&] {
        run.State().run.IdleMinutes = 7;
        Button("cmdNextTip")->click();
        EXPECT_EQ(run.State().run.IdleMinutes, 0);
    });
}

TEST_F(About, TellsVersionAndPurpose)
{
    WithAbout([&] {
        EXPECT_EQ(run.App().Host().Find("frmAbout")->Caption(), "About Quillon");
        EXPECT_EQ(Label("lblVersion"), "Version " QUILLON_VERSION);
        EXPECT_EQ(Label("lblDescription"),
                  "An application designed for active traders. With functionalities in charting, "
                  "Excel interfaces and reporting capabilities for year-end tax purposes.");
    });
}

TEST_F(About, ClearsTheStatusTextAndCountsTheUserAsActive)
{
    run.State().services.status.Post("Sort completed");
    run.State().run.IdleMinutes = 7;
    WithAbout([&] {
        EXPECT_EQ(run.Panel(1), "");
        EXPECT_EQ(run.State().run.IdleMinutes, 0);
    });
}

TEST_F(About, ShowsTheSystemInformationForCopying)
{
    WithAbout([&] {
        bool cameUp = false;
        run.WhenModal("frmSystemInfo", [&] {
            cameUp = true;
            const auto *text = run.Control<QPlainTextEdit>("frmSystemInfo", "txtSystemInfo");
            EXPECT_TRUE(text->isReadOnly());
            for (const char *name : {"Program ", "Operating system ", "Kernel ", "Processor ",
                                     "Memory ", "Screen ", "Qt ", "SQLite ", "Application folder "})
                EXPECT_TRUE(text->toPlainText().contains(name)) << name;
            EXPECT_TRUE(text->toPlainText().contains(folder.Path()));
            run.Control<QPushButton>("frmSystemInfo", "cmdCopy")->click();
            EXPECT_EQ(QGuiApplication::clipboard()->text(), text->toPlainText());
            run.Control<QPushButton>("frmSystemInfo", "cmdClose")->click();
        });
        ClickSysInfo();
        EXPECT_TRUE(cameUp);
    });
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(About, SaysWhenTheSystemTellsNothing)
{
    WithAbout([&] {
        auto *about = dynamic_cast<frmAbout *>(run.App().Host().Find("frmAbout"));
        ASSERT_NE(about, nullptr);
        about->SystemFacts = [] { return QList<SystemFact>(); };
        ClickSysInfo();
        EXPECT_FALSE(run.App().Host().Loaded("frmSystemInfo"));
    });
    EXPECT_EQ(run.boxes.Texts(), QStringList("System Information Is Unavailable At This Time"));
}

TEST_F(About, StaysInUseWhenTheSignOnWasCancelled)
{
    run.GiveSecurity(folder.SampleAccount(), 1, 0, 15);
    run.Renew();
    run.WhenModal("frmPassword",
                  [&] { run.Control<QPushButton>("frmPassword", "cmdCancel")->click(); });
    run.App().Launch();
    EXPECT_TRUE(run.State().run.SignOnCancelled);
    WithAbout([&] { EXPECT_EQ(Label("lblVersion"), "Version " QUILLON_VERSION); });
}
