/// The two tax reports beside each other: for any range, the Summary's line of a security is what the
/// Cost Basis report says of its sales together.

#include "random_ledger.h"

#include "datamaker/delivery.h"
#include "reports/tax_reports.h"

#include <QTemporaryDir>

namespace
{

ReportChoice Range(QDate from, QDate to)
{
    ReportChoice choice;
    choice.rows = ReportRows::DateRange;
    choice.from = from;
    choice.to = to;
    return choice;
}

/// Workbooks of the two reports, in pairs; read back together, since a reader takes long to start.
class Pairs
{
public:
    void Write(const Connection &account, const ReportChoice &choice)
    {
        const auto save = [&](auto write, const char *kind) {
            const Formats formats(English());
            Report report(formats);
            write(report, account, choice);
            m_paths << m_folder.filePath(
                QStringLiteral("%1 %2.xls").arg(m_paths.size() / 2).arg(QLatin1String(kind)));
            report.ReportSheet.Save(m_paths.last());
        };
        save(WriteSummary, "Summary");
        save(WriteCostBasis, "Cost Basis");
    }
    struct Pair
    {
        Lines summary;
        Lines costBasis;
    };
    std::vector<Pair> Read() const
    {
        const std::vector<ReadBack> books = ReadBack::All(m_paths, "xlrd");
        std::vector<Pair> pairs;
        for (size_t book = 0; book + 1 < books.size(); book += 2)
            pairs.push_back({books[book].Rows(), books[book + 1].Rows()});
        return pairs;
    }

private:
    QTemporaryDir m_folder;
    QStringList m_paths;
};

bool Starts(const std::string &row, const char *text)
{
    return row.rfind(text, 0) == 0;
}

/// The lines of the securities.
Lines SummaryLines(const Lines &rows)
{
    Lines lines;
    for (size_t row = 2; row < rows.size(); ++row)
        if (!rows[row].empty() && !Starts(rows[row], "G R A N D"))
            lines.push_back(rows[row]);
    return lines;
}

/// The same lines, put together from the sales of each security and its net total: the oldest day
/// acquired, the day of the last sale, and the sums.
Lines SummedSales(const Lines &rows)
{
    Lines lines;
    QStringList first;
    QString acquired;
    QString sold;
    for (size_t row = 2; row < rows.size() && !Starts(rows[row], "G R A N D"); ++row) {
        if (rows[row].empty())
            continue;
        const QStringList cells = QString::fromStdString(rows[row]).split(QLatin1Char('|'));
        if (Starts(rows[row], "N E T")) {
            lines.push_back(QStringList({first[0], acquired, sold, cells[6], cells[7], cells[8]})
                                .join('|')
                                .toStdString());
            first.clear();
            continue;
        }
        if (first.isEmpty()) {
            first = cells;
            acquired = cells[1];
        }
        const bool hasPurchase = cells[1].startsWith(QLatin1Char('@')); // 1/1/1900 is a text
        if (hasPurchase && (!acquired.startsWith(QLatin1Char('@')) || cells[1] < acquired))
            acquired = cells[1];
        sold = cells[2];
    }
    return lines;
}

} // namespace

TEST(TaxReports, AgreeWithEachOtherOnAHundredRandomLedgersWithRanges)
{
    Pairs pairs;
    for (unsigned seed = 1; seed <= 100; ++seed) {
        std::vector<Trade> trades = RandomTrades(seed);
        for (size_t i = 0; i < trades.size(); i += 1 + seed % 7)
            if (trades[i].shares > 0 && !trades[i].isShort)
                trades[i].isReinvested = seed % 2 == 0; // then some sales find no purchase
        ReportAccount account;
        WriteLedger(account, trades);
        const QDate from = trades.front().date.addDays(seed * 3);
        pairs.Write(account.account, Range(from, from.addDays(30 + seed)));
    }
    size_t count = 0;
    size_t unmatched = 0;
    for (const auto &[summary, costBasis] : pairs.Read()) {
        ++count;
        const Lines lines = SummaryLines(summary);
        EXPECT_EQ(lines, SummedSales(costBasis)) << "ledger " << count;
        EXPECT_GT(lines.size(), 1u) << "ledger " << count;
        for (const std::string &line : costBasis)
            unmatched += line.find("|1/1/1900|") != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(count, 100u);
    EXPECT_GT(unmatched, 20u);
}

TEST(TaxReports, AgreeWithEachOtherOnTheSamplePortfolio)
{
    QTemporaryDir folder;
    MakeDeliveredFiles(QStringLiteral(QUILLON_DATA), folder.path(), QDate(2026, 11, 22));
    Connection account;
    account.Open(folder.filePath(QStringLiteral("Sample Portfolio.mdb")));
    Pairs pairs;
    pairs.Write(account, ReportChoice());
    pairs.Write(account, Range(QDate(2026, 1, 1), QDate(2026, 11, 22)));
    for (QDate month(2024, 11, 1); month < QDate(2026, 12, 1); month = month.addMonths(1))
        pairs.Write(account, Range(month, month.addMonths(3).addDays(-1)));
    std::vector<size_t> lines;
    for (const auto &[summary, costBasis] : pairs.Read()) {
        EXPECT_EQ(SummaryLines(summary), SummedSales(costBasis));
        lines.push_back(SummaryLines(summary).size());
    }
    EXPECT_GT(lines[0], 10u);
    EXPECT_GT(lines[1], 10u);
}
