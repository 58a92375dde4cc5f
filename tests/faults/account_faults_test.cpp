/// Whatever makes, copies, converts, saves, brings back or shrinks account files, on a machine that
/// fails it: a full disk, a folder that cannot be written, a file in use, a program that is killed.
/// Afterwards every account opens with all its rows, as they were or as they were to become; what
/// was broken off can be done again, and then leaves nothing behind.
///
///                   New  SaveAs  Conversion  Backup  Restore  Compaction  DailyCopy
///     full disk      x     x         x         x        x         x           x
///     read-only      x     x         x         x        x         x           x
///     in use         x     x         x         x        x         x           x
///     kill -9        x     x         x         x        x         x           x

#include "faults/faulty_world.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

#include <sys/stat.h>

namespace
{

// --- what the user does --------------------------------------------------------------------------

void Click(ShellRun &run, const char *form, const char *control)
{
    if (auto *button = run.Control<QAbstractButton>(form, control))
        button->click();
}

void New(ShellRun &run, const FaultyWorld &world)
{
    run.boxes.files = {world.folder.File("accounts/New.mdb"),
                       world.folder.File("accounts/New 2.mdb"), std::nullopt};
    run.WhenModal("frmUserSetup", [&run] {
        QCoreApplication::processEvents(); // the welcome
        run.Control<QLineEdit>("frmUserSetup", "txtBalance")->setFocus();
        run.Control<QLineEdit>("frmUserSetup", "txtBalance")->setText("2500");
        Click(run, "frmUserSetup", "chkStyle1");
        Click(run, "frmUserSetup", "cmdOK");
    });
    run.Choose("mnuFLNew");
}

void SaveAs(ShellRun &run, const FaultyWorld &world)
{
    run.boxes.files = {world.folder.File("accounts/Copy.mdb"),
                       world.folder.File("accounts/Copy 2.mdb"), std::nullopt};
    run.Choose("mnuFLSaveAs");
}

void Convert(ShellRun &run, const FaultyWorld &world)
{
    run.boxes.files = {world.folder.File("accounts/Old.mdb")};
    run.Choose("mnuFLOpenExisting");
}

void BackUp(ShellRun &run, const FaultyWorld &)
{
    run.boxes.Prepare("Overwrite destination files", Answer::Yes);
    run.Choose("mnuFLBackup");
    Click(run, "frmBackupRestore", "cmdOK");
    Click(run, "frmBackupRestore", "cmdCancel");
}

void Restore(ShellRun &run, const FaultyWorld &)
{
    run.boxes.Prepare("Put last backup", Answer::Ok);
    run.boxes.Prepare("Overwrite destination files", Answer::Yes);
    run.Choose("mnuFLRestore");
    Click(run, "frmBackupRestore", "cmdOK");
    Click(run, "frmBackupRestore", "cmdCancel");
}

void Compact(ShellRun &run, const FaultyWorld &)
{
    run.Choose("mnuFLCompactDBA");
}

/// The first opening of the next day.
void CopyOfTheDay(ShellRun &run, const FaultyWorld &world)
{
    run.clock.Set(QDateTime(QDate(2026, 3, 3), QTime(9, 0)));
    run.boxes.files = {world.folder.SampleAccount()};
    run.Choose("mnuFLOpenExisting");
}

const Operation Operations[] = {
    {"New", New, "app/accounts", "ApplControl.mdb"},
    {"SaveAs", SaveAs, "app/accounts", "Sample Portfolio.mdb"},
    {"Conversion", Convert, "app/accounts", "accounts/Old.mdb"},
    {"Backup", BackUp, "home", "Other.mdb"},
    {"Restore", Restore, "app", "Other.mdb"},
    {"Compaction", Compact, "app", "Sample Portfolio.mdb"},
    {"DailyCopy", CopyOfTheDay, "app/Sample Portfolio copies", "Sample Portfolio.mdb"},
};

// --- what is looked at ---------------------------------------------------------------------------

/// What an operation does on a machine in order; looked up once for each.
struct Expected
{
    FaultyWorld::Databases before;
    FaultyWorld::Databases after;
    long changes = 0; ///< of the disk
};

const Expected &ExpectedOf(const Operation &operation)
{
    static std::map<std::string, Expected> known;
    Expected &expected = known[operation.name];
    if (!expected.before.empty())
        return expected;
    FaultyWorld world;
    expected.before = world.State();
    const RunEnd end = world.Run(operation);
    expected.changes = end.changes;
    expected.after = world.State();
    EXPECT_NE(expected.after, expected.before) << "it does nothing";
    EXPECT_FALSE(end.Told("rror number")) << end.told.join('\n').toStdString();
    EXPECT_EQ(world.LeftOvers(), QStringList());
    return expected;
}

class AccountFault : public testing::TestWithParam<Operation>
{
protected:
    static std::string Line(const QString &name, const std::string &state)
    {
        return name.toStdString() + ": " + state;
    }
    /// Each database is as it was, or as it was to become; true: all of them are that.
    bool ExpectNothingLost(const FaultyWorld &world)
    {
        const FaultyWorld::Databases found = world.State();
        for (const auto &[name, state] : m_expected.before)
            EXPECT_EQ(found.count(name), 1u) << qPrintable(name) << " is gone";
        for (const auto &[name, state] : found)
            EXPECT_TRUE(IsAsIn(m_expected.before, name, state) ||
                        IsAsIn(m_expected.after, name, state))
                << Line(name, state);
        return IsDone(found);
    }
    /// What was broken off is done again, with the machine in order.
    void ExpectDoneNow(FaultyWorld &world)
    {
        const RunEnd end = world.Run(GetParam());
        EXPECT_FALSE(end.Told("rror number")) << end.told.join('\n').toStdString();
        const FaultyWorld::Databases found = world.State();
        for (const auto &[name, state] : m_expected.after)
            EXPECT_TRUE(IsAsIn(found, name, state) || IsAsIn(found, SecondName(name), state))
                << Line(name, state);
        EXPECT_EQ(world.LeftOvers(), QStringList());
    }

    const Expected &m_expected = ExpectedOf(GetParam());

private:
    bool IsDone(const FaultyWorld::Databases &found) const
    {
        // That no copy was made of an account without a row is no loss, and not told.
        return std::all_of(m_expected.after.begin(), m_expected.after.end(), [&](const auto &file) {
            return IsAsIn(found, file.first, file.second) || file.first.contains("New copies");
        });
    }
    /// An account of the name may be there already, whole but not set up.
    static QString SecondName(QString name)
    {
        return name.replace("accounts/New", "accounts/New 2")
            .replace("accounts/Copy", "accounts/Copy 2");
    }
    static bool IsAsIn(const FaultyWorld::Databases &databases, const QString &name,
                       const std::string &state)
    {
        const auto at = databases.find(name);
        return at != databases.end() && at->second == state;
    }
};

} // namespace

TEST_P(AccountFault, FullDiskIsToldAndLosesNothing)
{
    for (const qint64 left : {0, 32768, 131072}) {
        SCOPED_TRACE("bytes left: " + std::to_string(left));
        FaultyWorld world;
        const QString place =
            QLatin1String(GetParam().target) == "home" ? world.home.path() : world.folder.Path();
        const SmallDisk disk(place);
        const RunEnd end = world.Run(GetParam(), [&] { disk.Fill(left); });
        disk.MakeRoom();
        const bool isDone = ExpectNothingLost(world);
        EXPECT_TRUE(isDone || end.Told("rror number") || end.Told("could not be made"))
            << end.told.join('\n').toStdString();
        EXPECT_TRUE(left > 0 || !isDone);
        ExpectDoneNow(world);
        if (HasFailure())
            break;
    }
}

TEST_P(AccountFault, ReadOnlyFolderIsToldAndLosesNothing)
{
    FaultyWorld world;
    const QString target = QString::fromUtf8(GetParam().target);
    const QByteArray folder = (target.startsWith("app") ? world.folder.Path() + target.mid(3)
                                                        : world.home.filePath("Quillon Backup"))
                                  .toUtf8();
    const RunEnd end = world.RunAsNobody(GetParam(), [&] { EXPECT_EQ(chmod(folder, 0555), 0); });
    chmod(folder, 0755);
    // The purge before a compaction needs no new file.
    EXPECT_EQ(ExpectNothingLost(world), std::string(GetParam().name) == "Compaction");
    EXPECT_TRUE(end.Told("rror number") || end.Told("could not be made"))
        << end.told.join('\n').toStdString();
    ExpectDoneNow(world);
}

TEST_P(AccountFault, FileInUseIsToldOrNoObstacle)
{
    for (const auto way :
         {OtherProgram::Way::Reads, OtherProgram::Way::Writes, OtherProgram::Way::Guards}) {
        SCOPED_TRACE("way: " + std::to_string(int(way)));
        FaultyWorld world;
        std::optional<OtherProgram> other(
            std::in_place, world.folder.File(QString::fromUtf8(GetParam().source)), way);
        const RunEnd end = world.Run(GetParam(), [&] { other->Begin(); });
        other.reset();
        const bool isDone = ExpectNothingLost(world);
        EXPECT_TRUE(isDone || end.Told("in use") || end.Told("locked") || end.Told("open already"))
            << end.told.join('\n').toStdString();
        ExpectDoneNow(world);
    }
}

TEST_P(AccountFault, AKilledProgramLeavesNothingBehindAtTheNextStart)
{
    constexpr Operation nothing = {"Start", [](ShellRun &, const FaultyWorld &) {}, "app", ""};
    constexpr int runs = 8;
    int toldOfRestore = 0;
    for (int run = 0; run < runs && !HasFailure(); ++run) {
        const long change = 1 + run * (m_expected.changes - 1) / (runs - 1);
        SCOPED_TRACE("change " + std::to_string(change));
        FaultyWorld world;
        EXPECT_TRUE(world.Run(GetParam(), [change] { DieAtChange(change); }).wasKilled);
        const RunEnd end = world.Run(nothing);
        QStringList found = world.LeftOvers();
        found.removeIf([](const QString &name) { // the log of a new account, with its rows
            return name.startsWith("app/accounts/New.mdb-");
        });
        EXPECT_EQ(found, QStringList());
        EXPECT_EQ(QDir(world.folder.Path()).entryList({"unfinished-*"}), QStringList());
        toldOfRestore += end.Told("was cut off before its end");
    }
    if (std::string(GetParam().name) == "Restore")
        EXPECT_GT(toldOfRestore, 0);
    else
        EXPECT_EQ(toldOfRestore, 0);
}

TEST_P(AccountFault, KillAtAnyChangeOfTheDiskLosesNothing)
{
    constexpr int runs = 6;
    for (int run = 0; run < runs && !HasFailure(); ++run) {
        const long change = 1 + run * (m_expected.changes - 1) / (runs - 1);
        SCOPED_TRACE("change " + std::to_string(change) + " of " +
                     std::to_string(m_expected.changes));
        FaultyWorld world;
        EXPECT_TRUE(world.Run(GetParam(), [change] { DieAtChange(change); }).wasKilled);
        ExpectNothingLost(world);
        ExpectDoneNow(world);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, AccountFault, testing::ValuesIn(Operations),
                         [](const auto &info) { return std::string(info.param.name); });
