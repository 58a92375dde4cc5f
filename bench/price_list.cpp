/// The historical price list over 100,000 daily prices: opening it, going to the last row, sorting by
/// a heading, each until the window is painted. The floor is the same statement stepped through with
/// nothing done with the rows.
///
///     bench_price_list           (with the application folder beside the build)

#include "list_run.h"
#include "platform/widgets/data_grid.h"

#include <QApplication>

namespace
{

constexpr int Symbols = 50;
constexpr int Days = 2000;

/// Its price file holds 100,000 rows.
class PriceFolder : public ListFolder
{
public:
    PriceFolder()
    {
        QFile::remove(PriceFile());
        CreateDatabase(PriceFile(),
                       ReadSchema(QStringLiteral(QUILLON_DATA "/schema/hist_prices.sql")));
        Connection prices;
        prices.Open(PriceFile());
        WriteGuard guard(prices);
        Statement insert = prices.Prepare(
            QStringLiteral("INSERT INTO HistoricalPrices VALUES (?, ?, ?, ?, ?, ?, ?, ?)"));
        for (int symbol = 0; symbol < Symbols; ++symbol)
            for (int day = 0; day < Days; ++day) {
                const qint64 close = 100000 + (symbol * 7919 + day * 104729) % 900000;
                insert.BindAll(BenchAccount::Symbol(symbol), QDate(2018, 1, 1).addDays(day),
                               close - 50, close + 300, close - 400, close,
                               qint64{1000} * (day * 31 % 977), close);
                insert.Step();
                insert.Reset();
            }
        guard.Commit();
    }
    QString PriceFile() const { return In("HistPrices.mdb"); }
};

constexpr char List[] = "frmHistoricalPriceList";

const PriceFolder &Folder()
{
    static const PriceFolder folder;
    return folder;
}

ListRun<DataGrid> &Run()
{
    static auto *run = new ListRun<DataGrid>(Folder());
    return *run;
}

void StepPrices(benchmark::State &state, const char *orderBy)
{
    StepAllRows(state, Folder().PriceFile(),
                QStringLiteral("SELECT Symbol, PriceDate, PriceOpen, DayHigh, DayLow, PriceClose, "
                               "Volume, AdjClose FROM HistoricalPrices ") +
                    QString::fromUtf8(orderBy),
                Symbols * Days);
}

void Open(benchmark::State &state)
{
    Run().TimeOpening(state, List, Symbols * Days);
}

void ScrollToTheEnd(benchmark::State &state)
{
    Run().TimeScrollingToTheEnd(state, List);
}

void Sort(benchmark::State &state, const char *caption)
{
    Run().TimeSorting(state, List, caption);
}

BENCHMARK_CAPTURE(StepPrices, opening, "ORDER BY Symbol, PriceDate DESC")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Open)->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollToTheEnd)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepPrices, by_date, "ORDER BY PriceDate, Symbol")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_date, "Date")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepPrices, by_close, "ORDER BY PriceClose, Symbol, PriceDate DESC")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_close, "Close")->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Run(); // not in anybody's time
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
