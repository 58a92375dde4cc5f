/// A program to be killed: posts trades on the account it is given, and says "ready" before the
/// first and the number of each behind it.
///
///     crash_poster <account file>                until it is killed
///     crash_poster <account file> <n>            dies in the middle of its nth write to a file

#include "posting_loop.h"

#include <QCoreApplication>

#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace
{

long g_writesLeft = -1; ///< until death; negative: none is planned

ssize_t WriteOrDie(int file, const void *buffer, size_t count, off_t offset)
{
    if (g_writesLeft > 0 && --g_writesLeft == 0) {
        // Half of it reaches the file.
        syscall(SYS_pwrite64, file, buffer, count / 2, offset);
        raise(SIGKILL);
    }
    return syscall(SYS_pwrite64, file, buffer, count, offset);
}

} // namespace

// Every write of the store to a file comes along here.
extern "C" ssize_t pwrite(int file, const void *buffer, size_t count, off_t offset)
{
    return WriteOrDie(file, buffer, count, offset);
}
extern "C" ssize_t pwrite64(int file, const void *buffer, size_t count, off64_t offset)
{
    return WriteOrDie(file, buffer, count, offset);
}

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    PostingLoop loop(QString::fromLocal8Bit(argv[1]));
    if (argc > 2)
        g_writesLeft = std::atol(argv[2]);
    std::printf("ready\n");
    std::fflush(stdout);
    for (int number = 1;; ++number) {
        loop.PostNext();
        std::printf("%d\n", number);
        std::fflush(stdout);
    }
}
