#include "program/progress_display.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTextBrowser>

namespace
{

class ProgressScreen : public testing::Test
{
protected:
    ProgressScreen()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("WebPriceUpdate", "0");
        EXPECT_TRUE(run.App().Launch());
    }

    bool IsOpen() { return run.App().Host().Loaded("frmProgressBar"); }
    Form *Screen() { return run.App().Host().Find("frmProgressBar"); }
    QProgressBar *Bar() { return run.Control<QProgressBar>("frmProgressBar", "ProgressBar"); }
    QString Text() { return run.Control<QLabel>("frmProgressBar", "lblProgressBar")->text(); }
    /// What the question button opens.
    QString TopicOf(const QString &text)
    {
        ShowProgressBar(run.State(), text, 1, 2);
        run.Control<QPushButton>("frmProgressBar", "cmdQuestion")->click();
        for (QWidget *window : QApplication::topLevelWidgets())
            if (window->objectName() == "HelpWindow" && window->isVisible())
                return window->findChild<QTextBrowser *>()->source().fileName();
        return "(none)";
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(ProgressScreen, ShowsATextAndHowFarTheWorkHasCome)
{
    ShowProgressBar(run.State(), "Historical price update...", 1, 7);
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(Screen()->isVisible());
    EXPECT_EQ(Screen()->windowTitle(), "What I'm I doing?");
    EXPECT_EQ(Text(), "Historical price update...");
    EXPECT_EQ(Bar()->minimum(), 1);
    EXPECT_EQ(Bar()->maximum(), 7);
    EXPECT_EQ(Bar()->value(), 1);
    MoveProgressBar(run.State(), 4);
    EXPECT_EQ(Bar()->value(), 4);
    run.App().Host().Unload("frmProgressBar");
    EXPECT_FALSE(IsOpen());
}

TEST_F(ProgressScreen, BeginsAnewWhenItIsOpen)
{
    ShowProgressBar(run.State(), "Historical price update...", 1, 7);
    MoveProgressBar(run.State(), 7);
    ShowProgressBar(run.State(), "Build Portfolio historical data...", 1, 3);
    EXPECT_EQ(Text(), "Build Portfolio historical data...");
    EXPECT_EQ(Bar()->maximum(), 3);
    EXPECT_EQ(Bar()->value(), 1);
}

TEST_F(ProgressScreen, MovesNothingWhenItWasClosed)
{
    ShowProgressBar(run.State(), "Historical price update...", 1, 7);
    Screen()->close();
    EXPECT_FALSE(IsOpen());
    MoveProgressBar(run.State(), 4);
    EXPECT_FALSE(IsOpen());
}

TEST_F(ProgressScreen, StandsInTheMiddleOfTheWidthAtAQuarterOfTheHeightOnTopOfAll)
{
    ShowProgressBar(run.State(), "Historical price update...", 1, 7);
    const QWidget *mainWindow = Screen()->parentWidget()->window();
    EXPECT_NEAR(Screen()->geometry().center().x(), Screen()->screen()->geometry().center().x(), 1);
    EXPECT_EQ(Screen()->pos().y(), mainWindow->geometry().top() + mainWindow->height() / 4);
    EXPECT_TRUE(Screen()->windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(ProgressScreen, ExplainsTheWorkByItsText)
{
    QDir(folder.Path()).mkpath("help");
    folder.AddFile("help/HPWhatImDoing.html", "<title>History</title>");
    folder.AddFile("help/DTWhatImDoing.html", "<title>Build</title>");
    EXPECT_EQ(TopicOf("Busy..."), "(none)");
    EXPECT_EQ(TopicOf("Historical price update..."), "HPWhatImDoing.html");
    EXPECT_EQ(TopicOf("Build Portfolio data..."), "DTWhatImDoing.html");
    // One that has both words is about prices.
    EXPECT_EQ(TopicOf("Build Historical data..."), "HPWhatImDoing.html");
}
