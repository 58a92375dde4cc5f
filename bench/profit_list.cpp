/// The profit list over 100,000 entries: opening it, going to the last row, sorting by a heading, each
/// until the window is painted; and deleting 10,000 and 100,000 rows of History with their sales
/// matched. The floor of the list is its statement stepped through with nothing done with the rows;
/// that of the delete is the matching for figures only, and one statement that deletes all rows.
///
///     bench_profit_list           (with the application folder beside the build)

#include "ledger.h"
#include "list_run.h"

#include "lists/delete_rows.h"
#include "platform/widgets/flex_grid.h"
#include "transactions/matching.h"

#include <QApplication>

namespace
{

constexpr int Symbols = 50;
constexpr int Days = 2000;

/// Its account holds 100,000 profits.
class ProfitFolder : public ListFolder
{
public:
    ProfitFolder()
    {
        Connection account;
        account.Open(Account());
        WriteGuard guard(account);
        account.Execute(QStringLiteral("DELETE FROM DailyProfitLoss"));
        Statement insert = account.Prepare(QStringLiteral(
            "INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) "
            "VALUES (?, 'Some Company Incorporated', ?, ?, '10:00:00.000')"));
        for (int day = 0; day < Days; ++day)
            for (int symbol = 0; symbol < Symbols; ++symbol) {
                insert.BindAll(BenchAccount::Symbol(symbol),
                               qint64{(day * 104729 + symbol * 7919) % 9000000 - 4000000},
                               QDate(2018, 1, 1).addDays(day));
                insert.Step();
                insert.Reset();
            }
        guard.Commit();
    }
};

constexpr char List[] = "frmDailyProfitLoss";

const ProfitFolder &Folder()
{
    static const ProfitFolder folder;
    return folder;
}

ListRun<FlexGrid> &Run()
{
    static auto *run = new ListRun<FlexGrid>(Folder());
    return *run;
}

void StepProfits(benchmark::State &state, const char *orderBy)
{
    StepAllRows(state, Folder().Account(),
                QStringLiteral("SELECT ID, Symbol, Name, ProfitLoss, TransDate, Time FROM "
                               "DailyProfitLoss ") +
                    QString::fromUtf8(orderBy),
                Symbols * Days);
}

/// With a total for each day.
void Open(benchmark::State &state)
{
    Run().TimeOpening(state, List, Symbols * Days + Days);
}

void ScrollToTheEnd(benchmark::State &state)
{
    Run().TimeScrollingToTheEnd(state, List);
}

void Sort(benchmark::State &state, const char *caption)
{
    Run().TimeSorting(state, List, caption);
}

void DeleteHistory(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        BenchAccount bench;
        WriteLedger(bench, int(state.range(0)), Lots::Shallow);
        Connection account;
        account.Open(bench.Path());
        DeleteChoice all{DeleteTable::History, DeleteOption::AllDate, {}, 0, QDate(2030, 1, 1)};
        state.ResumeTiming();
        state.counters["rows"] = DeleteRows(account, all);
    }
}

void DeleteFloor(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        BenchAccount bench;
        WriteLedger(bench, int(state.range(0)), Lots::Shallow);
        Connection account;
        account.Open(bench.Path());
        state.ResumeTiming();
        GainMatching matching;
        matching.OpenMatchingRecordsets(account);
        for (int sale = 0; sale < matching.SaleCount(); ++sale) {
            MatchResult figures;
            matching.MatchCurrentSale(sale, figures);
        }
        account.Execute(QStringLiteral("DELETE FROM History WHERE Shares < 100"));
    }
}

BENCHMARK_CAPTURE(StepProfits, opening, "ORDER BY TransDate DESC, Symbol ASC")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Open)->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollToTheEnd)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepProfits, by_symbol, "ORDER BY Symbol ASC, TransDate ASC")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_symbol, "Symbol")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_date, "Date")->Unit(benchmark::kMillisecond);
BENCHMARK(DeleteFloor)->Arg(10000)->Arg(100000)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(DeleteHistory)->Arg(10000)->Arg(100000)->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Run(); // not in anybody's time
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
