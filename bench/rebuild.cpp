/// The rebuild of an account from 10,000, 100,000 and 1,000,000 rows of History, with shallow and
/// deep lots, beside its floor in the same run. An argument limits the number of rows.

#include "ledger_floor.h"

#include "transactions/rebuild.h"

namespace
{

double Rebuild(BenchAccount &bench)
{
    bench.Open();
    bench.entry.RebuildMode = true;
    const auto start = std::chrono::steady_clock::now();
    HistoryReplay replay(bench.Work());
    replay.Begin();
    replay.Run([](qint64) {});
    replay.Commit();
    const double seconds = SecondsSince(start);
    bench.rows.Close();
    bench.lots.Close();
    return seconds;
}

double Floor(BenchAccount &bench)
{
    Connection connection;
    connection.Open(bench.Path());
    const auto start = std::chrono::steady_clock::now();
    std::vector<FloorRow> rows = FloorRead(connection, QStringLiteral("ORDER BY TransDate, Time"));
    std::vector<std::deque<FloorRow *>> open;
    const volatile double gain = FloorMatch(rows, open);
    (void)gain;
    connection.BeginTrans();
    connection.Execute(QStringLiteral("DELETE FROM PriceHistory"));
    Statement lot = connection.Prepare(
        QStringLiteral("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) "
                       "VALUES (?, ?, ?, '2026-03-02', '10:15:00.000')"));
    for (const auto &lots : open) {
        for (const FloorRow *row : lots) {
            lot.BindAll(BenchAccount::Symbol(row->symbol), Single::FromFloat(row->shares),
                        row->price);
            lot.Step();
            lot.Reset();
        }
    }
    // As many rows of daily profit and loss as the rebuild made.
    connection.Execute(QStringLiteral("CREATE TEMP TABLE Kept AS SELECT * FROM DailyProfitLoss"));
    connection.Execute(QStringLiteral("DELETE FROM DailyProfitLoss"));
    Statement read =
        connection.Prepare(QStringLiteral("SELECT Symbol, ProfitLoss, TransDate FROM Kept"));
    Statement day = connection.Prepare(
        QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) "
                       "VALUES (?, 'Name', ?, ?, '10:15:00.000')"));
    while (read.Step()) {
        day.BindAll(read.Text(0), read.Int64(1), read.Text(2));
        day.Step();
        day.Reset();
    }
    connection.CommitTrans();
    return SecondsSince(start);
}

} // namespace

int main(int argc, char **argv)
{
    MeasureSizes("rebuild s", argc, argv, [](BenchAccount &bench) {
        const double seconds = Rebuild(bench); // first: the floor writes what it wrote
        return Measured{seconds, Floor(bench)};
    });
    return 0;
}
