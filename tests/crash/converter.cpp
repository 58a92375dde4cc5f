/// A program to be killed: opens an old account as the program does, which converts it, and says
/// "ready" before and "done" behind it.
///
///     crash_converter <application folder> <account file>
///     crash_converter <application folder> <account file> <n>     dies in the middle of its nth
///                                                                 write to a file, or before or
///                                                                 behind a renaming or a deletion

#include "dying_writes.h"
#include "test_services.h"

#include "store/control_rows.h"
#include "store/conversion.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <fcntl.h>

#include <cstdio>

namespace
{

/// A change of the folder counts twice: death comes before it, or behind it.
template <class Change>
int DyingChange(Change change)
{
    if (DyingWrites::left > 0 && --DyingWrites::left == 0)
        raise(SIGKILL);
    const int result = change();
    if (DyingWrites::left > 0 && --DyingWrites::left == 0)
        raise(SIGKILL);
    return result;
}

} // namespace

extern "C" int rename(const char *from, const char *to) noexcept
{
    return DyingChange([=] { return int(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to)); });
}
extern "C" int unlink(const char *path) noexcept
{
    return DyingChange([=] { return int(syscall(SYS_unlinkat, AT_FDCWD, path, 0)); });
}

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    TestServices machine(QString::fromLocal8Bit(argv[1]));
    Databases databases;
    Settings settings;
    AccountState account;
    settings.CurrentFilePath = QString::fromLocal8Bit(argv[2]);
    settings.AccountName = QFileInfo(settings.CurrentFilePath).completeBaseName();
    if (argc > 3)
        DyingWrites::left = std::atol(argv[3]);
    std::printf("ready\n");
    std::fflush(stdout);
    OpenDatabases(databases, settings, account, machine.services);
    ConversionWork work{databases, settings, account, machine.services,
                        [&databases] { CloseDatabases(databases); }};
    LoadDescriptiveTable(databases.gConnAccount, account, machine.services.clock.Today(),
                         [&work] { ConvertToVersion5(work); });
    CloseDatabases(databases);
    std::printf("done\n");
    std::fflush(stdout);
}
