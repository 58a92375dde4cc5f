#pragma once

/// An application folder with several accounts, the backup of an earlier day, and the faults that can
/// befall the program as it works on them.
///
///     FaultyWorld world;
///     SmallDisk disk(world.folder.Path());
///     const RunEnd end = world.Run(operation, [&] { disk.Fill(4096); });
///     EXPECT_TRUE(end.Told("Disk full"));
///     EXPECT_EQ(world.State(), ...);
///
///     app/Sample Portfolio.mdb     the open account         home/Quillon Backup/Quillon/...
///     app/Other.mdb                another one                  both as they were, with fewer rows
///     app/accounts/Old.mdb         one of a version below 5

#include "shell/shell_run.h"

#include <functional>
#include <map>
#include <string>

#include <sys/types.h>

struct Operation;

/// How a run of the program ended.
struct RunEnd
{
    bool wasKilled = false;
    QStringList told; ///< the boxes, and the status bar when the operation was over
    long changes = 0; ///< of the disk, from the fault to the end

    bool Told(const char *part) const { return !told.filter(QString::fromUtf8(part)).isEmpty(); }
};

class FaultyWorld
{
public:
    FaultyWorld();

    /// Starts the program in a process of its own, brings the fault over it once it is up, runs the
    /// operation and leaves the program.
    RunEnd Run(const Operation &operation, const std::function<void()> &fault = {});
    /// The same as a user whom permissions hold.
    RunEnd RunAsNobody(const Operation &operation, const std::function<void()> &fault);

    /// What each database holds: "app/Other.mdb" -> "ok", and of an account its rows.
    using Databases = std::map<QString, std::string>;
    Databases State() const;
    /// Files that none but a program at work has.
    QStringList LeftOvers() const;

    TestAppFolder folder;
    QTemporaryDir home;

private:
    [[noreturn]] void RunProgram(const Operation &operation, const std::function<void()> &fault,
                                 int told);
    RunEnd RunAs(uid_t user, const Operation &operation, const std::function<void()> &fault);
    QStringList Files() const;
    QString PathOf(const QString &name) const;
};

/// What a user does with accounts in a program that has come up.
struct Operation
{
    const char *name;
    void (*act)(ShellRun &run, const FaultyWorld &world);
    const char *target; ///< the folder that it writes to, below "app" or "home"
    const char *source; ///< a file of the application folder that it needs
};

/// A volume of its own in the place of a folder, with what the folder holds. Where none can be
/// mounted, files cannot grow.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &folder);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    bool IsMounted() const { return m_isMounted; }
    /// Leaves about this many bytes free.
    void Fill(qint64 left) const;
    void MakeRoom() const;

private:
    void Resize(const QByteArray &size) const;

    const QByteArray m_folder;
    bool m_isMounted = false;
};

/// This process dies at that change of the disk, counted from now (crash/dying_writes.h).
void DieAtChange(long change);

/// Another program that works on a database once it is told to, until the end of the object.
class OtherProgram
{
public:
    enum class Way
    {
        Reads, ///< is in the midst of a list
        Writes,
        Guards ///< has the account, its files closed for a while
    };
    OtherProgram(const QString &path, Way way);
    ~OtherProgram();
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;

    /// May be called in another process.
    void Begin() const;

private:
    pid_t m_process;
    int m_begin[2];
    int m_begun[2];
};
