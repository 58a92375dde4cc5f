/// A price cycle in the whole program, with its windows and on the practice server, less the bare
/// fetch of the same pages in the same run: all of the cycle that is not transfer, from the tick of
/// the timer until the screen shows the prices.
///
///     Time        of a cycle without its transfers
///     cycle_ms    of a whole cycle
///     fetch_ms    of the bare fetches

#include "program_folder.h"

#include "marketdata/quote_sites.h"
#include "platform/inet.h"
#include "shell/application.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>

using namespace std::chrono_literals;

namespace
{

/// The program with nothing but `positions` in its account; the day is updated already.
class ProgramRun
{
public:
    explicit ProgramRun(int positions)
    {
        const QString path = m_folder.path();
        MakeFolder(DeliveredFolder(), path, positions);
        {
            Connection account;
            account.Open(path + QStringLiteral("/Sample Portfolio.mdb"));
            account.Execute(QStringLiteral("DELETE FROM DailyTracker WHERE Name <> 'Name'"));
            account.Execute(QStringLiteral("UPDATE DescriptiveTable SET Field05 = '2026-03-02' "
                                           "WHERE TableName = 'Balance'"));
        }
        SettingsStore settings(path + QStringLiteral("/settings.ini"));
        for (const char *off : {"ShowTipOfDay", "ShowReminderScreen"})
            settings.SaveSetting(QStringLiteral("Options"), QString::fromLatin1(off),
                                 QStringLiteral("0"));
        for (const char *on : {"DailyTracker", "WebPriceUpdate"})
            settings.SaveSetting(QStringLiteral("Options"), QString::fromLatin1(on),
                                 QStringLiteral("1"));
        settings.Flush();
        m_application = std::make_unique<Application>(
            m_clock, m_dialogs, m_lifetime, path + QStringLiteral("/settings.ini"), path,
            QLocale(QLocale::English, QLocale::UnitedStates));
        m_application->Launch();
        m_clock.Advance(5s); // the first cycle listens, connects, fills the caches
        FindAddresses(positions);
    }

    /// Until the events behind the last status text are handled.
    void Cycle()
    {
        m_clock.Advance(65s);
        QCoreApplication::processEvents();
    }
    /// The same pages, and nothing done with them.
    void Fetch()
    {
        for (const QString &address : m_addresses)
            benchmark::DoNotOptimize(m_inet.OpenURL(address));
    }
    /// The last cycle came through, and found the price of the last position.
    bool IsUpToDate()
    {
        TrackerRecordset &rows = m_application->State().AdodcStockHistory;
        const TrackerRow &row = rows.At(rows.RecordCount() - 1);
        return row.Time == m_clock.TimeOfDay() && row.CurrPrice != Currency("21");
    }

private:
    void FindAddresses(int positions)
    {
        const QuoteSite site = CurrentSite(m_application->State().databases.gRsWebParameters);
        for (int i = 0; i < positions; i += site.UpdateCount) {
            QStringList symbols;
            for (int j = i; j < std::min(i + site.UpdateCount, positions); ++j)
                symbols << BenchAccount::Symbol(j);
            m_addresses << site.BegWebAddress + symbols.join(site.AddressBuildCharacters) +
                               site.EndWebAddress;
        }
    }

    QTemporaryDir m_folder;
    SimulatedClock m_clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    AgreeingDialogs m_dialogs;
    ThrowingLifetime m_lifetime;
    std::unique_ptr<Application> m_application;
    Inet m_inet{m_clock};
    QStringList m_addresses;
};

void BM_PriceCycle(benchmark::State &state)
{
    ProgramRun run(int(state.range(0)));
    using Seconds = std::chrono::duration<double>;
    const auto timed = [](const auto &work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        return Seconds(std::chrono::steady_clock::now() - start);
    };
    Seconds cycles{};
    Seconds fetches{};
    for (auto step : state) {
        (void)step;
        const Seconds cycle = timed([&] { run.Cycle(); });
        const Seconds fetch = timed([&] { run.Fetch(); });
        cycles += cycle;
        fetches += fetch;
        state.SetIterationTime(std::max((cycle - fetch).count(), 0.0));
    }
    if (!run.IsUpToDate())
        state.SkipWithError("the prices were not updated");
    state.counters["cycle_ms"] =
        benchmark::Counter(cycles.count() * 1e3, benchmark::Counter::kAvgIterations);
    state.counters["fetch_ms"] =
        benchmark::Counter(fetches.count() * 1e3, benchmark::Counter::kAvgIterations);
}

} // namespace

BENCHMARK(BM_PriceCycle)
    ->Unit(benchmark::kMillisecond)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->UseManualTime();

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
