/// A program to be killed: posts trades on the account it is given, and says "ready" before the
/// first and the number of each behind it.
///
///     crash_poster <account file>                until it is killed
///     crash_poster <account file> <n>            dies at its nth change of the disk

#include "dying_writes.h"
#include "posting_loop.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    PostingLoop loop(QString::fromLocal8Bit(argv[1]));
    if (argc > 2)
        DyingWrites::left = std::atol(argv[2]);
    std::printf("ready\n");
    std::fflush(stdout);
    for (int number = 1;; ++number) {
        loop.PostNext();
        std::printf("%d\n", number);
        std::fflush(stdout);
    }
}
