/// A run of the program behind one that was killed.

#include "driver_run.h"

#include <gtest/gtest.h>

#include <QDir>

TEST(AfterAKill, TheNextStartSaysThatTheAccountIsInOrderAndTheOneBehindItNothing)
{
    const DriverRun run;
    EXPECT_EQ(run.Run("launch\nkill\n").status, 0);
    EXPECT_TRUE(QFile::exists(run.folder.SampleAccount() + ".lock"));
    const DriverResult next =
        run.Run("launch\nexpect status 1 = \"The account was not closed properly last time; its "
                "file is in order.\"\nexpect nobox\nquit\nlaunch\nexpect status 1 = \"\"\n"
                "expect nobox\nquit\n");
    EXPECT_EQ(next.status, 0) << next.errors;
    EXPECT_EQ(QDir(run.folder.Path()).entryList({"*.lock", "*-wal", "*-shm"}), QStringList());
}

TEST(AfterAKill, TheCopyOfTheDayStaysTheOnlyOne)
{
    const DriverRun run;
    for (int start = 0; start < 3; ++start)
        EXPECT_EQ(run.Run("launch\nkill\n").status, 0);
    EXPECT_EQ(QDir(run.folder.File("Sample Portfolio copies")).entryList(QDir::Files),
              QStringList("2026-03-02.mdb"));
}
