/// The matching of all sales of 10,000, 100,000 and 1,000,000 rows of History to their purchases,
/// for figures only, with shallow and deep lots, beside its floor in the same run.

#include "ledger_floor.h"

#include "transactions/matching.h"

#include <cstdlib>

namespace
{

double Match(Connection &connection)
{
    const auto start = std::chrono::steady_clock::now();
    GainMatching matching;
    matching.OpenMatchingRecordsets(connection);
    Currency gain;
    for (int sale = 0; sale < matching.SaleCount(); ++sale) {
        MatchResult result;
        matching.MatchCurrentSale(sale, result);
        gain += result.Gain();
    }
    const volatile qint64 kept = gain.Units();
    (void)kept;
    return SecondsSince(start);
}

double Floor(Connection &connection)
{
    const auto start = std::chrono::steady_clock::now();
    std::vector<FloorRow> rows = FloorRead(connection, QStringLiteral("ORDER BY ID"));
    std::vector<std::deque<FloorRow *>> open;
    const volatile double gain = FloorMatch(rows, open);
    (void)gain;
    return SecondsSince(start);
}

} // namespace

int main(int argc, char **argv)
{
    const int most = argc > 1 ? std::atoi(argv[1]) : 1000000;
    std::printf("%9s %8s %10s %10s %7s %8s %9s\n", "rows", "lots", "match s", "floor s", "ratio",
                "growth", "peak MB");
    for (const Lots depth : {Lots::Shallow, Lots::Deep}) {
        double before = 0;
        for (int rows = 10000; rows <= most; rows *= 10) {
            BenchAccount bench;
            WriteLedger(bench, rows, depth);
            Connection connection;
            connection.Open(bench.Path());
            const double floor = Floor(connection);
            const double seconds = Match(connection);
            std::printf("%9d %8d %10.3f %10.3f %7.2f", rows, int(depth), seconds, floor,
                        seconds / floor);
            if (before > 0)
                std::printf(" %8.2f", GrowthExponent(seconds, before, 10));
            else
                std::printf(" %8s", "");
            std::printf(" %9.0f\n", PeakMegabytes());
            std::fflush(stdout);
            before = seconds;
        }
    }
    return 0;
}
