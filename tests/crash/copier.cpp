/// A program to be killed: copies the databases of a folder over those of another one, over and
/// over, and says "ready" before.
///
///     crash_copier <folder> <target>

#include "store/folder_copy.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    std::printf("ready\n");
    std::fflush(stdout);
    for (;;)
        CopyMatching(QString::fromLocal8Bit(argv[1]), QStringLiteral("*.mdb"),
                     QString::fromLocal8Bit(argv[2]), argc > 2, [] {});
}
