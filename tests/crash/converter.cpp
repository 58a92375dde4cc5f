/// A program to be killed: opens an old account as the program does, which converts it, and says
/// "ready" before and "done" behind it.
///
///     crash_converter <application folder> <account file>
///     crash_converter <application folder> <account file> <n>     dies at its nth change of the
///                                                                 disk

#include "dying_writes.h"
#include "test_services.h"

#include "store/control_rows.h"
#include "store/conversion.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cstdio>

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
