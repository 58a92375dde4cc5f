/// Prices taken out of pages of 30 KB, by the number of symbols, beside the floor: the bare search of
/// the same pages for the same symbols. Then all of a price cycle but its transfers: the copy of the
/// positions, addresses, extraction and the write of prices and times.

#include "bench_account.h"

#include "marketdata/extraction.h"

#include <benchmark/benchmark.h>

namespace
{

constexpr int PageLength = 30 * 1024;

/// A page, and the symbols that are asked of it.
struct Page
{
    QString text;
    QStringList symbols;
};

enum Layout
{
    TwentyAPage, ///< a table, as the practice site writes it
    OneAPage     ///< an object, with the price two thirds down the page
};

QuoteSite SiteOf(Layout layout)
{
    QuoteSite site;
    const bool table = layout == TwentyAPage;
    site.AddressBuildCharacters = QStringLiteral("+");
    site.SymbolBegText =
        table ? QStringLiteral("<td class=\"sym\">") : QStringLiteral("\"symbol\":\"");
    site.SymbolEndText = table ? QStringLiteral("</td>") : QStringLiteral("\"");
    site.PriceBegText =
        table ? QStringLiteral("<td class=\"last\">") : QStringLiteral("\"regularMarketPrice\":");
    site.PriceEndText = table ? QStringLiteral("</td>") : QStringLiteral(",");
    site.CharToPrice = table ? 120 : 900;
    site.UpdateCount = table ? 20 : 1;
    site.OptionPrefix = QStringLiteral("None");
    return site;
}

QString Filled(const QString &text, qsizetype length, const QString &filling)
{
    const qsizetype missing = std::max<qsizetype>(length - text.size(), 0);
    return text + filling.repeated(missing / filling.size() + 1).left(missing);
}

Page TablePage(int first, int count)
{
    Page page;
    for (int i = 0; i < count; ++i) {
        const QString symbol = BenchAccount::Symbol(first + i);
        const QString row =
            QStringLiteral("<tr><td class=\"sym\">%1</td><td class=\"last\">%2.25</td>")
                .arg(symbol)
                .arg(10 + i);
        page.text +=
            Filled(row, PageLength / count, QStringLiteral("<td class=\"num\">1,234.5</td>"));
        page.symbols << symbol;
    }
    return page;
}

Page ObjectPage(int number)
{
    const QString head = Filled(QStringLiteral("{\"chart\":{"), PageLength * 2 / 3,
                                QStringLiteral("\"name\":\"value of it\",\"figure\":12.5,"));
    const QString meta =
        Filled(head + QStringLiteral("\"symbol\":\"%1\",").arg(BenchAccount::Symbol(number)),
               head.size() + 400, QStringLiteral("\"currency\":\"USD\","));
    const QString price = meta + QStringLiteral("\"regularMarketPrice\":%1.37,").arg(20 + number);
    return {Filled(price, PageLength, QStringLiteral("\"volume\":[18734022],")),
            {BenchAccount::Symbol(number)}};
}

std::vector<Page> PagesOf(Layout layout, int symbols)
{
    std::vector<Page> pages;
    for (int i = 0; i < symbols; i += layout == TwentyAPage ? 20 : 1)
        pages.push_back(layout == TwentyAPage ? TablePage(i, std::min(20, symbols - i))
                                              : ObjectPage(i));
    return pages;
}

const Formats English{QLocale(QLocale::English, QLocale::UnitedStates)};

void CountSymbols(benchmark::State &state)
{
    state.counters["per_symbol"] =
        benchmark::Counter(double(state.range(0)), benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

void BM_Extraction(benchmark::State &state, Layout layout)
{
    const std::vector<Page> pages = PagesOf(layout, int(state.range(0)));
    const QuoteSite site = SiteOf(layout);
    int found = 0;
    for (auto step : state) {
        (void)step;
        found = 0;
        for (const Page &page : pages)
            for (const QString &symbol : page.symbols) {
                const ExtractedText text = ExtractPriceText(page.text, symbol, site);
                bool failed = false;
                benchmark::DoNotOptimize(PriceFromText(text.PriceText, English, failed));
                found += text.Found() && !failed;
            }
    }
    if (found != state.range(0))
        state.SkipWithError("a price was not found");
    CountSymbols(state);
}

/// Finds the symbols letter for letter, with nothing around them and no price.
void BM_Floor(benchmark::State &state, Layout layout)
{
    const std::vector<Page> pages = PagesOf(layout, int(state.range(0)));
    for (auto step : state) {
        (void)step;
        for (const Page &page : pages)
            for (const QString &symbol : page.symbols)
                benchmark::DoNotOptimize(page.text.indexOf(symbol));
    }
    CountSymbols(state);
}

/// An account with positions, and the list of securities beside it.
struct Positions : BenchAccount
{
    explicit Positions(int count)
    {
        const QString path = m_folder.filePath(QStringLiteral("ApplControl.mdb"));
        CreateDatabase(path, ReadSchema(QStringLiteral(QUILLON_DATA "/schema/appl_control.sql")));
        gConnApplControl.Open(path);
        Open();
        WriteGuard guard(gConnApplControl);
        for (int i = 0; i < count; ++i) {
            gConnApplControl.Execute(
                QStringLiteral("INSERT INTO SecurityDetail VALUES (?, 'Name', 'Stock')"),
                Symbol(i));
            rows.AddNew(Symbol(i), QStringLiteral("Name"), clock.Today(), QTime(9, 0));
            rows.Edit().Shares = Single::FromFloat(100);
        }
        guard.Commit();
        rows.Requery();
    }

    Connection gConnApplControl;
};

/// As a cycle does it, with pages that are there at once.
void BM_CycleWithoutNetwork(benchmark::State &state, Layout layout)
{
    const std::vector<Page> pages = PagesOf(layout, int(state.range(0)));
    const QuoteSite site = SiteOf(layout);
    Positions positions(int(state.range(0)));
    QTime time(9, 30);
    for (auto step : state) {
        (void)step;
        time = time.addSecs(1);
        PortfolioArray entries = LoadCurrPortfolioArray(positions.rows, positions.gConnApplControl);
        for (const Page &page : pages) {
            const SymbolBatch batch = BuildSymbolString(entries, site);
            const QString list = CommaList(batch.addressSymbols, site);
            for (const size_t index : batch.entries) {
                PortfolioEntry &entry = entries[index];
                if (!IsInBatch(list, entry.Symbol))
                    continue;
                bool failed = false;
                entry.CurrPrice = PriceFromText(
                    ExtractPriceText(page.text, entry.Symbol, site).PriceText, English, failed);
                entry.Time = time;
                entry.IsDealtWith = true;
            }
        }
        UpdateDTRecordset(positions.rows, entries, site.OptionPrefix, site.OptionSuffix);
    }
    if (positions.rows.Current().CurrPrice.IsZero())
        state.SkipWithError("no price was written");
    CountSymbols(state);
}

void Sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Unit(benchmark::kMicrosecond)->Arg(10)->Arg(100)->Arg(1000);
}

} // namespace

BENCHMARK_CAPTURE(BM_Floor, TwentyAPage, TwentyAPage)->Apply(Sizes);
BENCHMARK_CAPTURE(BM_Extraction, TwentyAPage, TwentyAPage)->Apply(Sizes);
BENCHMARK_CAPTURE(BM_Floor, OneAPage, OneAPage)->Apply(Sizes);
BENCHMARK_CAPTURE(BM_Extraction, OneAPage, OneAPage)->Apply(Sizes);
BENCHMARK_CAPTURE(BM_CycleWithoutNetwork, TwentyAPage, TwentyAPage)->Apply(Sizes)->UseRealTime();
BENCHMARK_CAPTURE(BM_CycleWithoutNetwork, OneAPage, OneAPage)->Apply(Sizes)->UseRealTime();

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
