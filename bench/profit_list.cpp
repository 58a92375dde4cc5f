/// The profit list over 100,000 entries: opening it, going to the last row, sorting by a heading, each
/// until the window is painted; and deleting 10,000 and 100,000 rows of History with their sales
/// matched. The floor of the list is its statement stepped through with nothing done with the rows;
/// that of the delete is the matching for figures only, and one statement that deletes all rows.
///
///     bench_profit_list           (with the application folder beside the build)

#include "ledger.h"
#include "program_folder.h"

#include "lists/delete_rows.h"
#include "platform/widgets/flex_grid.h"
#include "shell/application.h"
#include "transactions/matching.h"

#include <benchmark/benchmark.h>

#include <QApplication>

namespace
{

constexpr int Symbols = 50;
constexpr int Days = 2000;

const QString ListName = QStringLiteral("frmDailyProfitLoss");

/// An application folder of its own whose account holds 100,000 profits.
class ProfitFolder
{
public:
    ProfitFolder()
    {
        MakeFolder(DeliveredFolder(), m_folder.path(), 0);
        SettingsStore settings(m_folder.filePath(QStringLiteral("settings.ini")));
        for (const char *option : {"ShowTipOfDay", "WebPriceUpdate"})
            settings.SaveSetting(QStringLiteral("Options"), QString::fromUtf8(option),
                                 QStringLiteral("0"));
        settings.Flush();
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
    QString Path() const { return m_folder.path(); }
    QString Account() const { return m_folder.filePath(QStringLiteral("Sample Portfolio.mdb")); }

private:
    QTemporaryDir m_folder;
};

/// The program with its window; the list can be opened and closed again and again.
class ProfitListRun
{
public:
    ProfitListRun()
    {
        m_application.Launch();
        Settle();
    }
    void OpenList()
    {
        m_application.State().screens.Show(ListName);
        Settle();
    }
    void CloseList()
    {
        m_application.State().screens.Unload(ListName);
        Settle();
    }
    FlexGrid &Grid()
    {
        Form *list = m_application.State().screens.Find(ListName);
        return *list->findChild<FlexGrid *>(QStringLiteral("MSHFlexGridPL"));
    }
    void Settle()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    ProfitFolder folder;

private:
    SimulatedClock m_clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    AgreeingDialogs m_dialogs;
    ThrowingLifetime m_lifetime;
    Application m_application{m_clock,       m_dialogs,
                              m_lifetime,    folder.Path() + QStringLiteral("/settings.ini"),
                              folder.Path(), QLocale(QLocale::English, QLocale::UnitedStates)};
};

ProfitListRun &Run()
{
    static auto *run = new ProfitListRun;
    return *run;
}

void StepAllRows(benchmark::State &state, const char *orderBy)
{
    Connection account;
    account.Open(Run().folder.Account());
    for (auto _ : state) {
        Statement select = account.Prepare(
            QStringLiteral("SELECT ID, Symbol, Name, ProfitLoss, TransDate, Time FROM "
                           "DailyProfitLoss ") +
            QString::fromUtf8(orderBy));
        int rows = 0;
        while (select.Step())
            ++rows;
        if (rows != Symbols * Days)
            state.SkipWithError("not all rows");
    }
}

void Open(benchmark::State &state)
{
    for (auto _ : state) {
        Run().OpenList();
        state.PauseTiming();
        if (Run().Grid().RowCount() != Symbols * Days + Days) // a total for each day
            state.SkipWithError("not all rows");
        Run().CloseList();
        state.ResumeTiming();
    }
}

void ScrollToTheEnd(benchmark::State &state)
{
    Run().OpenList();
    FlexGrid &grid = Run().Grid();
    for (auto _ : state) {
        grid.SetCurrentRow(grid.RowCount() - 1);
        Run().Settle();
        state.PauseTiming();
        grid.SetCurrentRow(0);
        Run().Settle();
        state.ResumeTiming();
    }
    Run().CloseList();
}

/// A click on the heading, in the one direction and the other.
void Sort(benchmark::State &state, const char *caption)
{
    Run().OpenList();
    FlexGrid &grid = Run().Grid();
    const int place = grid.ColumnByCaption(QString::fromUtf8(caption));
    for (auto _ : state) {
        grid.ClickHeader(place);
        Run().Settle();
    }
    Run().CloseList();
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

BENCHMARK_CAPTURE(StepAllRows, opening, "ORDER BY TransDate DESC, Symbol ASC")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Open)->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollToTheEnd)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAllRows, by_symbol, "ORDER BY Symbol ASC, TransDate ASC")
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
