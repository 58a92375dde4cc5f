/// The lists of transactions and of purchase lots over 100,000 rows each: opening, going to the last
/// row, sorting by a heading, looking for a text that is not there, each until the window is painted.
/// The floor is the same statement stepped through with nothing done with the rows.
///
///     bench_lists                (with the application folder beside the build)

#include "list_run.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/grid_find.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace
{

constexpr int Rows = 100000;
constexpr int Symbols = 500;

constexpr char History[] = "frmHistoryList";
constexpr char Lots[] = "frmPurchaseList";

/// Its sample account holds that many transactions and lots, without positions.
class LedgerFolder : public ListFolder
{
public:
    LedgerFolder()
    {
        Connection account;
        account.Open(Account());
        WriteGuard guard(account);
        for (const char *table : {"DailyTracker", "History", "PriceHistory"})
            account.Execute(QStringLiteral("DELETE FROM ") + QString::fromUtf8(table));
        Statement transaction = account.Prepare(QStringLiteral(
            "INSERT INTO History (Symbol, Name, Description, Shares, Price, Amount, "
            "TransactionCost, TransDate, Time) VALUES (?, ?, 'Bought', 10, ?, ?, -99500, ?, ?)"));
        Statement lot = account.Prepare(QStringLiteral(
            "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES (?, "
            "10, ?, ?, ?)"));
        for (int row = 0; row < Rows; ++row) {
            const QString symbol = BenchAccount::Symbol(row * 7919 % Symbols);
            const qint64 price = 100000 + row * qint64{104729} % 900000;
            const QDate date = QDate(2010, 1, 1).addDays(row / 18);
            const QTime time = QTime(9, 30).addSecs(row % 18 * 600);
            transaction.BindAll(symbol, symbol + QStringLiteral(" Incorporated"), price,
                                -10 * price, date, time);
            transaction.Step();
            transaction.Reset();
            lot.BindAll(symbol, price, date, time);
            lot.Step();
            lot.Reset();
        }
        guard.Commit();
    }
};

const LedgerFolder &Folder()
{
    static const LedgerFolder folder;
    return folder;
}

ListRun<DataGrid> &Run()
{
    static auto *run = new ListRun<DataGrid>(Folder());
    return *run;
}

void StepLedger(benchmark::State &state, const char *statement)
{
    StepAllRows(state, Folder().Account(), QString::fromUtf8(statement), Rows);
}

void Open(benchmark::State &state, const char *form)
{
    Run().TimeOpening(state, form, Rows);
}

void ScrollToTheEnd(benchmark::State &state, const char *form)
{
    Run().TimeScrollingToTheEnd(state, form);
}

void Sort(benchmark::State &state, const char *caption)
{
    Run().TimeSorting(state, History, caption);
}

void FindInVain(benchmark::State &state)
{
    Run().Open(History);
    DataGrid &grid = Run().GridOf(History);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F, Qt::ControlModifier);
    QApplication::sendEvent(grid.focusProxy(), &press);
    auto *find = grid.findChild<GridFind *>(QStringLiteral("GridFind"));
    find->findChild<QLineEdit *>(QStringLiteral("txtFind"))->setText(QStringLiteral("nowhere"));
    for (auto _ : state)
        if (find->FindNext())
            state.SkipWithError("found");
    Run().Close(History);
}

#define HISTORY_STATEMENT                                                                          \
    "SELECT ID, Symbol, Name, Description, Shares, Price, Amount, TransactionCost, TransDate, "    \
    "Time FROM History "

BENCHMARK_CAPTURE(StepLedger, history,
                  HISTORY_STATEMENT "ORDER BY Transdate DESC, Time DESC, Symbol")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, history, History)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScrollToTheEnd, history, History)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepLedger, by_symbol, HISTORY_STATEMENT "ORDER BY Symbol, TransDate, Time")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_symbol, "Symbol")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepLedger, by_amount,
                  HISTORY_STATEMENT "ORDER BY Amount, Symbol, TransDate, Time")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_amount, "Amount")->Unit(benchmark::kMillisecond);
BENCHMARK(FindInVain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepLedger, lots,
                  "SELECT ID, Symbol, Shares, PurchasePrice, TransDate, Time FROM PriceHistory "
                  "ORDER BY Symbol, TransDate, Time")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, lots, Lots)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScrollToTheEnd, lots, Lots)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Run(); // not in anybody's time
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
