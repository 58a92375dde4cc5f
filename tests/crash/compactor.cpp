/// A program to be killed: purges and compacts the account it is given, and says "ready" before and
/// "done" behind it.
///
///     crash_compactor <account file> <temporary file>        over and over, until it is killed
///     crash_compactor <account file> <temporary file> <n>    dies at its nth change of the disk
///
/// It leaves with status 1 and the error's number when the store or the file system refuses.

#include "dying_writes.h"

#include "platform/status_line.h"
#include "store/compaction.h"
#include "transactions/purge.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{

struct Silent : StatusLine
{
    void Post(const QString &) override {}
};

void Say(const char *text)
{
    std::printf("%s\n", text);
    std::fflush(stdout);
}

void Run(const QString &path, const QString &target)
{
    {
        Connection account;
        account.Open(path);
        Silent status;
        PurgeAccountData(account, 5, QDate(2026, 3, 2), status);
    }
    Compaction compaction(path, target);
    compaction.Write();
    compaction.Replace();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Say("ready");
    if (argc > 3)
        DyingWrites::left = std::atol(argv[3]);
    try {
        do {
            Run(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
            Say("done");
        } while (argc < 4);
    } catch (const RuntimeError &error) {
        std::printf("%d\n", error.Number());
        return 1;
    }
}
