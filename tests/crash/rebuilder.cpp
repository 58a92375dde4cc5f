/// A program to be killed: rebuilds the account it is given, over and over, and says "ready" before
/// the first time and the number of each rebuild behind it.
///
///     crash_rebuilder <account file>             until it is killed
///     crash_rebuilder <account file> <n>         dies at its nth change of the disk

#include "dying_writes.h"
#include "test_services.h"

#include "transactions/rebuild.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QString path = QString::fromLocal8Bit(argv[1]);
    TestServices machine;
    Connection gConnAccount;
    Connection gConnUndo;
    TrackerRecordset rows;
    PurchaseLots lots;
    PortfolioTotals totals;
    AccountState account;
    UndoState undo;
    EntryState entry;
    entry.RebuildMode = true;
    gConnAccount.Open(path);
    gConnUndo.Open(path, Durability::WithNextSync);
    if (argc > 2)
        DyingWrites::left = std::atol(argv[2]);
    std::printf("ready\n");
    std::fflush(stdout);
    for (int number = 1;; ++number) {
        rows.Open(gConnAccount, "ORDER BY Symbol");
        lots.Open(gConnUndo);
        HistoryReplay replay(
            {rows, lots, totals, account, undo, entry, gConnAccount, machine.services});
        replay.Begin();
        replay.Run([](qint64) {});
        replay.Commit();
        std::printf("%d\n", number);
        std::fflush(stdout);
    }
}
