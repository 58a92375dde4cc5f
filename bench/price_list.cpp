/// The historical price list over 100,000 daily prices: opening it, going to the last row, sorting by
/// a heading, each until the window is painted. The floor is the same statement stepped through with
/// nothing done with the rows.
///
///     bench_price_list           (with the application folder beside the build)

#include "bench_account.h"
#include "platform/widgets/data_grid.h"
#include "shell/application.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QKeyEvent>

namespace
{

constexpr int Symbols = 50;
constexpr int Days = 2000;

/// An application folder of its own whose price file holds 100,000 rows.
class PriceFolder
{
public:
    PriceFolder()
    {
        const QDir from(
            QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../delivered")));
        for (const QString &folder : {QStringLiteral("."), QStringLiteral("icons")}) {
            QDir().mkpath(m_folder.filePath(folder));
            for (const QString &name : QDir(from.filePath(folder)).entryList(QDir::Files))
                QFile::copy(from.filePath(folder + QLatin1Char('/') + name),
                            m_folder.filePath(folder + QLatin1Char('/') + name));
        }
        SettingsStore settings(m_folder.filePath(QStringLiteral("settings.ini")));
        for (const char *option : {"ShowTipOfDay", "WebPriceUpdate"})
            settings.SaveSetting(QStringLiteral("Options"), QString::fromUtf8(option),
                                 QStringLiteral("0"));
        settings.Flush();

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
    QString Path() const { return m_folder.path(); }
    QString PriceFile() const { return m_folder.filePath(QStringLiteral("HistPrices.mdb")); }

private:
    QTemporaryDir m_folder;
};

const QString ListName = QStringLiteral("frmHistoricalPriceList");

/// The program with its window; the list can be opened and closed again and again.
class PriceListRun
{
public:
    PriceListRun()
    {
        m_application.Launch();
        Settle();
    }
    void OpenList()
    {
        m_application.State().selection.CurrentSymbol.clear(); // all symbols
        m_application.State().screens.Show(ListName);
        Settle();
    }
    void CloseList()
    {
        m_application.State().screens.Unload(ListName);
        Settle();
    }
    DataGrid &Grid()
    {
        Form *list = m_application.State().screens.Find(ListName);
        return *list->findChild<DataGrid *>(QStringLiteral("DataGridHistoricalPriceList"));
    }
    void Settle()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    PriceFolder folder;

private:
    SimulatedClock m_clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    AgreeingDialogs m_dialogs;
    ThrowingLifetime m_lifetime;
    Application m_application{m_clock,       m_dialogs,
                              m_lifetime,    folder.Path() + QStringLiteral("/settings.ini"),
                              folder.Path(), QLocale(QLocale::English, QLocale::UnitedStates)};
};

PriceListRun &Run()
{
    static auto *run = new PriceListRun;
    return *run;
}

void StepAllRows(benchmark::State &state, const char *orderBy)
{
    Connection prices;
    prices.Open(Run().folder.PriceFile());
    for (auto _ : state) {
        Statement select = prices.Prepare(
            QStringLiteral("SELECT Symbol, PriceDate, PriceOpen, DayHigh, DayLow, PriceClose, "
                           "Volume, AdjClose FROM HistoricalPrices ") +
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
        if (Run().Grid().RowCount() != Symbols * Days)
            state.SkipWithError("not all rows");
        Run().CloseList();
        state.ResumeTiming();
    }
}

void ScrollToTheEnd(benchmark::State &state)
{
    Run().OpenList();
    DataGrid &grid = Run().Grid();
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
    DataGrid &grid = Run().Grid();
    const int place = grid.ColumnByCaption(QString::fromUtf8(caption));
    for (auto _ : state) {
        grid.ClickHeader(place);
        Run().Settle();
    }
    Run().CloseList();
}

BENCHMARK_CAPTURE(StepAllRows, opening, "ORDER BY Symbol, PriceDate DESC")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Open)->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollToTheEnd)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAllRows, by_date, "ORDER BY PriceDate, Symbol")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, by_date, "Date")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StepAllRows, by_close, "ORDER BY PriceClose, Symbol, PriceDate DESC")
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
