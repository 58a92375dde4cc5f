/// The lists of transactions and of purchase lots over 100,000 rows each: opening, going to the last
/// row, sorting by a heading, looking for a text that is not there, each until the window is painted.
/// The floor is the same statement stepped through with nothing done with the rows.
///
///     bench_lists                (with the application folder beside the build)

#include "platform/widgets/data_grid.h"
#include "platform/widgets/grid_find.h"
#include "program_folder.h"
#include "shell/application.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace
{

constexpr int Rows = 100000;
constexpr int Symbols = 500;

struct ListOf
{
    const char *form;
    const char *grid;
};
constexpr ListOf History{"frmHistoryList", "DataGridHistoryList"};
constexpr ListOf Lots{"frmPurchaseList", "DataGridPurchaseList"};

/// An application folder whose sample account holds that many transactions and lots, without
/// positions.
class LedgerFolder
{
public:
    LedgerFolder()
    {
        MakeFolder(DeliveredFolder(), m_folder.path(), 0);
        SettingsStore settings(m_folder.filePath(QStringLiteral("settings.ini")));
        for (const char *option : {"ShowTipOfDay", "WebPriceUpdate"})
            settings.SaveSetting(QStringLiteral("Options"), QString::fromUtf8(option),
                                 QStringLiteral("0"));
        settings.Flush();
        Connection account;
        account.Open(AccountFile());
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
    QString Path() const { return m_folder.path(); }
    QString AccountFile() const
    {
        return m_folder.filePath(QStringLiteral("Sample Portfolio.mdb"));
    }

private:
    QTemporaryDir m_folder;
};

/// The program with its window; the lists can be opened and closed again and again.
class ListsRun
{
public:
    ListsRun()
    {
        m_application.Launch();
        Settle();
    }
    void Open(ListOf list)
    {
        m_application.State().screens.Show(QString::fromUtf8(list.form));
        Settle();
    }
    void Close(ListOf list)
    {
        m_application.State().screens.Unload(QString::fromUtf8(list.form));
        Settle();
    }
    DataGrid &Grid(ListOf list)
    {
        Form *form = m_application.State().screens.Find(QString::fromUtf8(list.form));
        return *form->findChild<DataGrid *>(QString::fromUtf8(list.grid));
    }
    void Settle()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    LedgerFolder folder;

private:
    SimulatedClock m_clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    AgreeingDialogs m_dialogs;
    ThrowingLifetime m_lifetime;
    Application m_application{m_clock,       m_dialogs,
                              m_lifetime,    folder.Path() + QStringLiteral("/settings.ini"),
                              folder.Path(), QLocale(QLocale::English, QLocale::UnitedStates)};
};

ListsRun &Run()
{
    static auto *run = new ListsRun;
    return *run;
}

void StepAllRows(benchmark::State &state, const char *statement)
{
    Connection account;
    account.Open(Run().folder.AccountFile());
    for (auto _ : state) {
        Statement select = account.Prepare(QString::fromUtf8(statement));
        int rows = 0;
        while (select.Step())
            ++rows;
        if (rows != Rows)
            state.SkipWithError("not all rows");
    }
}

void Open(benchmark::State &state, ListOf list)
{
    for (auto _ : state) {
        Run().Open(list);
        state.PauseTiming();
        if (Run().Grid(list).RowCount() != Rows)
            state.SkipWithError("not all rows");
        Run().Close(list);
        state.ResumeTiming();
    }
}

void ScrollToTheEnd(benchmark::State &state, ListOf list)
{
    Run().Open(list);
    DataGrid &grid = Run().Grid(list);
    for (auto _ : state) {
        grid.SetCurrentRow(grid.RowCount() - 1);
        Run().Settle();
        state.PauseTiming();
        grid.SetCurrentRow(0);
        Run().Settle();
        state.ResumeTiming();
    }
    Run().Close(list);
}

/// A click on the heading, in the one direction and the other.
void Sort(benchmark::State &state, const char *caption)
{
    Run().Open(History);
    DataGrid &grid = Run().Grid(History);
    const int place = grid.ColumnByCaption(QString::fromUtf8(caption));
    for (auto _ : state) {
        grid.ClickHeader(place);
        Run().Settle();
    }
    Run().Close(History);
}

void FindInVain(benchmark::State &state)
{
    Run().Open(History);
    DataGrid &grid = Run().Grid(History);
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

BENCHMARK_CAPTURE(StepAllRows, history,
                  HISTORY_STATEMENT "ORDER BY Transdate DESC, Time DESC, Symbol")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Open, history, History)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ScrollToTheEnd, history, History)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAllRows, by_symbol, HISTORY_STATEMENT "ORDER BY Symbol, TransDate, Time")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_symbol, "Symbol")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAllRows, by_amount,
                  HISTORY_STATEMENT "ORDER BY Amount, Symbol, TransDate, Time")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_amount, "Amount")->Unit(benchmark::kMillisecond);
BENCHMARK(FindInVain)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAllRows, lots,
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
