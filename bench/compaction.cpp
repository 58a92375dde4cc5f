/// Purge and compaction of an account of 100,000 rows of History, nine tenths of it older than what is
/// kept, with the sizes of the file, beside a bare VACUUM INTO of the same file.

#include "ledger.h"

#include "store/compaction.h"
#include "transactions/purge.h"

#include <QFileInfo>

#include <chrono>

namespace
{

double Seconds(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Megabytes(const QString &path)
{
    return double(QFileInfo(path).size()) / 1e6;
}

/// Writes the file beside itself, as the store does it alone.
double Floor(const QString &path)
{
    const QString target = path + QStringLiteral(".floor");
    const double seconds = Seconds([&] {
        Connection connection;
        connection.Open(path);
        connection.Execute(QStringLiteral("VACUUM INTO ?"), target);
    });
    QFile::remove(target);
    return seconds;
}

void Measure(int rows)
{
    BenchAccount bench;
    WriteLedger(bench, rows, Lots::Shallow);
    const QString path = bench.Path();
    const double before = Megabytes(path);
    const double purge = Seconds([&] {
        Connection connection;
        connection.Open(path);
        PurgeAccountData(connection, 1, QDate(2023, 3, 3), bench.status);
    });
    const double purged = Megabytes(path);
    const double floor = Floor(path);
    const double compaction = Seconds([&] {
        Compaction run(path, path + QStringLiteral(".new"));
        run.Write();
        run.Replace();
    });
    std::printf("%9d %10.2f %10.2f %10.2f %9.3f %10.3f %9.3f %7.2f\n", rows, before, purged,
                Megabytes(path), purge, compaction, floor, compaction / floor);
    std::fflush(stdout);
}

} // namespace

int main()
{
    std::printf("%9s %10s %10s %10s %9s %10s %9s %7s\n", "rows", "MB before", "MB purged",
                "MB after", "purge s", "compact s", "floor s", "ratio");
    for (const int rows : {10000, 100000})
        Measure(rows);
}
