/// Reports over 60,000 and 200,000 transactions, until the workbook is saved. The floor of each is the
/// reading of the same rows with nothing done with them, or the matching alone.
///
///     bench_reports

#include "ledger_floor.h"

#include "reports/list_reports.h"
#include "reports/tax_reports.h"
#include "transactions/matching.h"

#include <QTemporaryDir>

namespace
{

using Writer = void (*)(Report &, const Connection &, const ReportChoice &);

double Write(Writer write, const Connection &account, const QString &path)
{
    const Formats formats(QLocale(QLocale::English, QLocale::UnitedStates));
    const auto start = std::chrono::steady_clock::now();
    Report report(formats);
    write(report, account, ReportChoice());
    report.ReportSheet.Save(path);
    return SecondsSince(start);
}

double ReadAlone(const Connection &account)
{
    const auto start = std::chrono::steady_clock::now();
    Statement rows = account.Prepare(
        QStringLiteral("SELECT Symbol, Name, Description, Shares, Price, Amount, TransDate FROM "
                       "History ORDER BY TransDate, Time, Symbol"));
    while (rows.Step()) {
    }
    return SecondsSince(start);
}

double MatchAlone(const Connection &account)
{
    const auto start = std::chrono::steady_clock::now();
    GainMatching sales;
    sales.OpenMatchingRecordsets(account);
    for (int sale = 0; sale < sales.SaleCount(); ++sale) {
        MatchResult result;
        sales.MatchCurrentSale(sale, result);
    }
    return SecondsSince(start);
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Report.xls"));
    std::printf("%8s  %-20s %8s %8s\n", "rows", "report", "s", "floor s");
    for (const int rows : {60000, 200000}) {
        BenchAccount bench;
        WriteLedger(bench, rows, Lots::Shallow);
        Connection account;
        account.Open(bench.Path());
        ReadAlone(account); // the file is in memory from here on
        const double read = ReadAlone(account);
        const double match = MatchAlone(account);
        const struct
        {
            const char *name;
            Writer write;
            double floor;
        } reports[] = {{"Transaction History", WriteTransactionHistory, read},
                       {"Summary", WriteSummary, match},
                       {"Cost Basis", WriteCostBasis, match}};
        for (const auto &report : reports)
            std::printf("%8d  %-20s %8.3f %8.3f\n", rows, report.name,
                        Write(report.write, account, path), report.floor);
    }
    std::printf("peak %.0f MB\n", PeakMegabytes());
}
