/// A start on a disk that has no room left.

#include "faults/faulty_world.h"

#include <gtest/gtest.h>

TEST(StartOnAFullDisk, ExplainsWhichFileAndWorksWhenThereIsRoom)
{
    TestAppFolder folder;
    const SmallDisk disk(folder.Path());
    if (!disk.IsMounted())
        GTEST_SKIP() << "a small disk is mounted by root alone";
    ShellRun run(folder);
    run.SetOption("ShowTipOfDay", "0").SetOption("DailyTracker", "0");
    run.SetOption("WebPriceUpdate", "0");
    disk.Fill(0);
    run.boxes.Prepare("Quillon cannot open the file", Answer::Yes); // there is no backup either
    run.boxes.Prepare("Quillon cannot open the file", Answer::No);
    run.boxes.files = {folder.Path()};
    EXPECT_FALSE(run.App().Launch());
    ASSERT_FALSE(run.boxes.boxes.empty());
    const QString text = run.boxes.boxes[0].text;
    EXPECT_TRUE(text.contains("WebSites.mdb")) << qPrintable(text);
    EXPECT_TRUE(text.contains("The disk is full. Quit, make room and start again."))
        << qPrintable(text);
    EXPECT_TRUE(run.boxes.Texts().filter("could not be replaced").size() == 1)
        << qPrintable(run.boxes.Texts().join('\n'));
    disk.MakeRoom();
    run.boxes.boxes.clear();
    run.Renew();
    EXPECT_TRUE(run.App().Launch());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}
