/// A second program on an account: takes its lock, says how that went ("taken", "taken over", "open
/// elsewhere", "unguarded"), and gives it back at the end of its input. Killed, it gives nothing back.
///
///     crash_holder <account file>

#include "store/account_lock.h"

#include <QString>

#include <cstdio>

int main(int, char *argv[])
{
    static const char *const said[] = {"taken", "taken over", "open elsewhere", "unguarded"};
    AccountLock lock;
    std::printf("%s\n", said[int(lock.Acquire(QString::fromLocal8Bit(argv[1])))]);
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
}
