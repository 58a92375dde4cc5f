/// An account that another program has open, an account left by a crash, and the day's copy, as the
/// user sees them.

#include "second_program.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QDir>

namespace
{

const QString OpenElsewhere =
    QStringLiteral("The account Sample Portfolio is open already in another Quillon.\n"
                   "Please close it there first, or open another account.");

class GuardedAccount : public testing::Test
{
protected:
    GuardedAccount() { run.SetOption("ShowTipOfDay", "0").SetOption("WebPriceUpdate", "False"); }
    QStringList Copies() const
    {
        return QDir(folder.File("Sample Portfolio copies")).entryList(QDir::Files);
    }

    TestAppFolder folder;
    ShellRun run{folder};
};

} // namespace

TEST_F(GuardedAccount, OpenElsewhereLetsTheUserPickAnotherOneAtTheStart)
{
    SecondProgram other(folder.SampleAccount());
    const QString broker = folder.AddAccount("Broker.mdb");
    run.boxes.files = {broker};
    EXPECT_TRUE(run.App().Launch());
    EXPECT_EQ(run.boxes.Texts(), QStringList(OpenElsewhere));
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::Exclamation);
    EXPECT_EQ(run.App().MainWindow().Caption(), "Quillon - Broker");
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_EQ(SecondProgram(broker).said, "open elsewhere");
}

TEST_F(GuardedAccount, OpenElsewhereIsRefusedAsLongAsItIs)
{
    SecondProgram other(folder.SampleAccount());
    run.boxes.files = {folder.SampleAccount(), folder.File("WebSites.mdb"), folder.SampleAccount()};
    run.boxes.OnBox = [&](const ScriptedBoxes::ShownBox &box) {
        if (box.text.startsWith("This is an invalid account"))
            other.Close(); // in the meantime
    };
    EXPECT_TRUE(run.App().Launch());
    EXPECT_EQ(run.boxes.Texts(),
              QStringList({OpenElsewhere, OpenElsewhere,
                           "This is an invalid account database, please try again"}));
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
}

TEST_F(GuardedAccount, OpenElsewhereEndsTheProgramWhenTheUserPicksNoOther)
{
    SecondProgram other(folder.SampleAccount());
    run.boxes.files = {std::nullopt};
    EXPECT_FALSE(run.App().Launch());
    EXPECT_TRUE(run.App().Ended());
    EXPECT_EQ(SecondProgram(folder.SampleAccount()).said, "open elsewhere"); // the other's still
}

TEST_F(GuardedAccount, OpenElsewhereLeavesTheAccountThatIsOpenHere)
{
    const QString broker = folder.AddAccount("Broker.mdb");
    SecondProgram other(broker);
    run.App().Launch();
    run.boxes.files = {broker};
    run.Choose("mnuFLOpenExisting");
    EXPECT_EQ(run.boxes.Texts(), QStringList("The account Broker is open already in another "
                                             "Quillon.\nPlease close it there first, or open "
                                             "another account."));
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_EQ(run.State().databases.gConnAccount.Path(), folder.SampleAccount());
    EXPECT_EQ(run.App().MainWindow().Caption(), "Quillon - Sample Portfolio");
}

TEST_F(GuardedAccount, IsFreeAgainWhenTheProgramGoesOverToAnotherOrEnds)
{
    run.App().Launch();
    const QString broker = folder.AddAccount("Broker.mdb");
    run.boxes.files = {broker};
    run.Choose("mnuFLOpenExisting");
    EXPECT_EQ(SecondProgram(folder.SampleAccount()).said, "taken");
    EXPECT_EQ(SecondProgram(broker).said, "open elsewhere");
    run.App().Exit();
    EXPECT_EQ(SecondProgram(broker).said, "taken");
    EXPECT_EQ(QDir(folder.Path()).entryList({"*.lock"}), QStringList());
}

TEST_F(GuardedAccount, CanBeOpenedAnewWhileItIsOpenHere)
{
    run.App().Launch();
    run.boxes.files = {folder.SampleAccount()};
    run.Choose("mnuFLOpenExisting");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
}

TEST_F(GuardedAccount, IsHeldAgainstAnotherProgramOfTheSameProcess)
{
    run.App().Launch();
    ShellRun second(folder);
    second.boxes.files = {std::nullopt};
    EXPECT_FALSE(second.App().Launch());
    EXPECT_EQ(second.boxes.Texts(), QStringList(OpenElsewhere));
}

TEST_F(GuardedAccount, LeftByACrashIsCheckedAndToldInTheStatusBar)
{
    SecondProgram(folder.SampleAccount()).Kill();
    EXPECT_TRUE(run.App().Launch());
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_EQ(run.Panel(1), "The account was not closed properly last time; its file is in order.");
    run.App().Exit();
    run.Renew();
    run.App().Launch();
    EXPECT_FALSE(run.Panel(1).contains("account")) << qPrintable(run.Panel(1));
}

TEST_F(GuardedAccount, TellsOfTheCrashBehindWhatThePriceUpdateSaysAtTheStart)
{
    run.SetOption("WebPriceUpdate", "True");
    SecondProgram(folder.SampleAccount()).Kill();
    run.App().Launch();
    EXPECT_EQ(run.Panel(1), "The account was not closed properly last time; its file is in order.");
}

TEST_F(GuardedAccount, HasACopyForEachDayItWasOpened)
{
    run.App().Launch();
    EXPECT_EQ(Copies(), QStringList("2026-03-02.mdb"));
    run.App().Exit();
    run.Renew();
    run.App().Launch();
    EXPECT_EQ(Copies(), QStringList("2026-03-02.mdb"));
    run.App().Exit();
    run.clock.Set(QDateTime(QDate(2026, 3, 3), QTime(0, 0, 1)));
    run.Renew();
    run.App().Launch();
    EXPECT_EQ(Copies(), QStringList({"2026-03-02.mdb", "2026-03-03.mdb"}));
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_FALSE(run.Panel(1).contains("account")) << qPrintable(run.Panel(1));
}

TEST_F(GuardedAccount, ComesUpThoughItsCopyCannotBeMade)
{
    folder.AddFile("Sample Portfolio copies", "in the way");
    EXPECT_TRUE(run.App().Launch());
    EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    EXPECT_TRUE(run.Panel(1).startsWith("Today's copy of the account could not be made: "));
}

TEST_F(GuardedAccount, IsNotCopiedForOneWhoCannotSignOn)
{
    run.GiveSecurity(folder.SampleAccount(), 1, 0, 15);
    run.WhenModal("frmPassword",
                  [&] { run.Control<QPushButton>("frmPassword", "cmdCancel")->click(); });
    run.App().Launch();
    EXPECT_EQ(Copies(), QStringList());
}
