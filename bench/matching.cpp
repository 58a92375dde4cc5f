/// The matching of all sales of 10,000, 100,000 and 1,000,000 rows of History to their purchases,
/// for figures only, with shallow and deep lots, beside its floor in the same run.

#include "ledger_floor.h"

#include "transactions/matching.h"

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
    MeasureSizes("match s", argc, argv, [](BenchAccount &bench) {
        Connection connection;
        connection.Open(bench.Path());
        const double floor = Floor(connection);
        return Measured{Match(connection), floor};
    });
    return 0;
}
