/// The copy of each day's first opening, and the check behind a crash, by the rows of the ledger,
/// beside a plain copy of the file. Both stand between the start and the user: a usual account must
/// not be felt.

#include "ledger.h"

#include "platform/files.h"
#include "store/account_care.h"
#include "store/daily_copy.h"

#include <QFileInfo>

#include <algorithm>
#include <chrono>

namespace
{

template <class Work>
double MedianMilliseconds(Work work)
{
    std::vector<double> times;
    for (int run = 0; run < 7; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work(run);
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main()
{
    std::printf("  rows      MB   copy ms   plain ms  times   check ms\n");
    for (const int rows : {1000, 10000, 100000}) {
        BenchAccount bench;
        WriteLedger(bench, rows, Lots::Shallow);
        Connection account;
        account.Open(bench.Path());
        const double copy = MedianMilliseconds(
            [&](int run) { MakeDailyCopy(account, QDate(2026, 11, 21).addDays(run)); });
        const double check = MedianMilliseconds([&](int) { IsInOrder(account); });
        account.Close();
        const double plain = MedianMilliseconds([&](int run) {
            Files::CopyFile(bench.Path(), QStringLiteral("%1.%2").arg(bench.Path()).arg(run), true);
        });
        std::printf("%6d  %6.2f  %8.1f   %8.1f  %5.2f   %8.1f\n", rows,
                    double(QFileInfo(bench.Path()).size()) / 1e6, copy, plain, copy / plain, check);
    }
    return 0;
}
