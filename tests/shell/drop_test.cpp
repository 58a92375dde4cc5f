/// An account's file dropped on the main window.

#include "second_program.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace
{

class DroppedFile : public testing::Test
{
protected:
    DroppedFile()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
        run.SetOption("WebPriceUpdate", "False");
        run.App().Launch();
    }
    /// Drags the files over the window and drops them; whether the window takes them.
    bool Drop(const QStringList &paths)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString &path : paths)
            urls << QUrl::fromLocalFile(path);
        data.setUrls(urls);
        return DropData(data);
    }
    bool DropData(const QMimeData &data)
    {
        frmMDIMain &window = run.App().MainWindow();
        const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(QPoint(200, 200), actions, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&window, &enter);
        if (!enter.isAccepted())
            return false;
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction); // nobody may take the file away as moved
        QDropEvent drop(QPointF(200, 200), actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &drop);
        EXPECT_EQ(Account(), "Sample Portfolio"); // the other program is let go first
        QApplication::processEvents();
        return true;
    }
    QString Account() { return run.State().settings.AccountName; }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(DroppedFile, IsOpenedAsAnAccount)
{
    EXPECT_TRUE(Drop({folder.AddAccount("Ann's Börse X12.mdb")}));
    EXPECT_EQ(Account(), "Ann's Börse X12");
    EXPECT_EQ(run.App().MainWindow().Caption(), "Quillon - Ann's Börse X12");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_F(DroppedFile, MayBearItsExtensionInCapitals)
{
    EXPECT_TRUE(Drop({folder.AddAccount("BROKER.MDB")}));
    EXPECT_EQ(Account(), "BROKER");
}

TEST_F(DroppedFile, CountsAsAnActionOfTheUser)
{
    run.State().run.IdleMinutes = 7;
    Drop({folder.AddAccount("Broker.mdb")});
    EXPECT_EQ(run.State().run.IdleMinutes, 0);
}

TEST_F(DroppedFile, IsRefusedWithTheMessageOfOpenExisting)
{
    EXPECT_TRUE(Drop({folder.File("WebSites.mdb")}));
    EXPECT_EQ(run.boxes.Texts(),
              QStringList("This is an invalid account database, please try again"));
    EXPECT_EQ(Account(), "Sample Portfolio");
}

TEST_F(DroppedFile, IsRefusedWhileAnotherProgramHasItOpen)
{
    const QString broker = folder.AddAccount("Broker.mdb");
    SecondProgram other(broker);
    EXPECT_TRUE(Drop({broker}));
    EXPECT_TRUE(run.boxes.Texts().join(' ').contains("is open already in another Quillon"));
    EXPECT_EQ(Account(), "Sample Portfolio");
}

TEST_F(DroppedFile, IsNotTakenWhenItIsNotOneAccountOnThisMachine)
{
    const QString broker = folder.AddAccount("Broker.mdb");
    EXPECT_FALSE(Drop({}));
    EXPECT_FALSE(Drop({broker, folder.AddAccount("Other.mdb")}));
    EXPECT_FALSE(Drop({folder.AddFile("notes.txt", "Dear diary")}));
    EXPECT_FALSE(Drop({folder.Path()}));
    EXPECT_FALSE(Drop({folder.File("Gone.mdb")}));
    QMimeData web;
    web.setUrls({QUrl("http://example.com/Broker.mdb")});
    EXPECT_FALSE(DropData(web));
    QMimeData text;
    text.setText(broker);
    EXPECT_FALSE(DropData(text));
}

TEST_F(DroppedFile, IsNotTakenWhileNoAccountCanBeOpened)
{
    const QString broker = folder.AddAccount("Broker.mdb");
    run.Commands().SetEnabled("Open", false); // a price update is under way
    EXPECT_FALSE(Drop({broker}));
    run.Commands().SetEnabled("Open", true);
    run.Commands().SetEnabled("mnuFLOpenExisting", false); // the sign-on was cancelled
    EXPECT_FALSE(Drop({broker}));
    run.Commands().SetEnabled("mnuFLOpenExisting", true);
    run.AddScreen("frmAbout");
    run.WhenModal("frmAbout", [&] {
        EXPECT_FALSE(Drop({broker}));
        run.App().Host().Unload("frmAbout");
    });
    run.Choose("mnuHelpAbout");
    EXPECT_TRUE(Drop({broker}));
}
