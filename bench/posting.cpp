/// One posting, by the number of positions and of open lots, beside the floor: bare statements that
/// write the same rows in the same number of transactions.

#include "bench_account.h"
#include "sync_counter.h"

#include <benchmark/benchmark.h>

namespace
{

/// Positions of equal size, the lots spread over them.
void Fill(BenchAccount &bench, int positions, int lotCount)
{
    Connection connection;
    connection.Open(bench.Path());
    WriteGuard guard(connection);
    Statement lot = connection.Prepare(
        QStringLiteral("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) "
                       "VALUES (?, ?, ?, ?, ?)"));
    std::vector<int> lotsOf(size_t(positions), 0);
    for (int i = 0; i < lotCount; ++i) {
        const int position = i % positions;
        ++lotsOf[size_t(position)];
        lot.BindAll(BenchAccount::Symbol(position), Single::FromFloat(10), Currency("20"),
                    QDate(2024, 1, 1).addDays(i % 700), QTime(10, 0));
        lot.Step();
        lot.Reset();
    }
    for (int i = 0; i < positions; ++i)
        connection.Execute(
            QStringLiteral("INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, AvrgPrice, "
                           "TransDate, Time) VALUES (?, 'Name', ?, ?, ?, '2026-02-27', "
                           "'10:00:00.000')"),
            BenchAccount::Symbol(i), Single::FromDouble(10.0 * lotsOf[size_t(i)]), Currency("21"),
            Currency("20"));
    guard.Commit();
}

/// Buys and sells the same count in turn, so that the account keeps its size.
void BM_Posting(benchmark::State &state)
{
    BenchAccount bench;
    Fill(bench, int(state.range(0)), int(state.range(1)));
    bench.Open();
    bench.entry.CurrentSecurityType = QStringLiteral("Stock");
    bench.entry.Commission = Currency("9.95");
    PostingWork work = bench.Work();
    NobodyFills filler;
    TransactionEntry entry;
    int number = 0;
    SyncCounter::Reset();
    for (auto step : state) {
        (void)step;
        bench.clock.Set(bench.clock.Now().addMSecs(1500));
        entry.action = number++ % 2 == 0 ? Action::Buy : Action::Sell;
        entry.Symbol = BenchAccount::Symbol(int(state.range(0)) / 2);
        entry.NumberOfShares = QStringLiteral("10");
        entry.PurchasePrice = QStringLiteral("21.5");
        entry.TransDate = bench.clock.Today();
        FinishPosting(work, PostTransaction(work, entry, filler));
    }
    state.counters["syncs"] =
        benchmark::Counter(double(SyncCounter::Count()), benchmark::Counter::kAvgIterations);
}

/// What has to be written in any case: the rows whose gain changed, one History row, one
/// DailyProfitLoss row in one transaction, one lot in another.
void BM_BareStatements(benchmark::State &state)
{
    BenchAccount bench;
    Fill(bench, int(state.range(0)), int(state.range(1)));
    Connection connection;
    connection.Open(bench.Path());
    int number = 0;
    for (auto step : state) {
        (void)step;
        ++number;
        connection.BeginTrans();
        connection.Execute(QStringLiteral("UPDATE DailyTracker SET CurrPrice = ?, Basis = ?, "
                                          "NumberTransToday = ? WHERE Symbol = ?"),
                           Currency("21.5"), Currency("150"), number % 30000,
                           BenchAccount::Symbol(int(state.range(0)) / 2));
        connection.Execute(QStringLiteral("INSERT INTO History (Symbol, Name, Description, Shares, "
                                          "TransactionCost, Price, Amount, TransDate, Time) VALUES "
                                          "(?, 'Name', 'Bought', 10, -99500, 215000, -2249500, "
                                          "'2026-03-02', '10:15:00.000')"),
                           BenchAccount::Symbol(int(state.range(0)) / 2));
        connection.Execute(
            QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) "
                           "VALUES (?, 'Name', ?, '2026-03-02', '10:15:00.000') "
                           "ON CONFLICT (Symbol, TransDate) DO UPDATE SET ProfitLoss = "
                           "excluded.ProfitLoss"),
            BenchAccount::Symbol(int(state.range(0)) / 2), Currency::FromWhole(number % 1000 + 1));
        connection.CommitTrans();
        connection.Execute(QStringLiteral("UPDATE PriceHistory SET Shares = ? WHERE ID = 1"),
                           Single::FromFloat(float(number % 10 + 1)));
    }
}

void Sizes(benchmark::internal::Benchmark *benchmark)
{
    for (const int positions : {10, 100, 1000})
        for (const int lotCount : {100, 1000, 10000, 100000})
            if (lotCount >= positions)
                benchmark->Args({positions, lotCount});
    benchmark->ArgNames({"positions", "lots"})->Unit(benchmark::kMicrosecond);
}

BENCHMARK(BM_Posting)->Apply(Sizes)->MinTime(0.3);
BENCHMARK(BM_BareStatements)->Args({10, 100})->Args({1000, 100000})->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
