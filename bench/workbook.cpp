/// A transaction history of seven columns as a workbook: cells set and saved, beside a bare loop that
/// puts records for the same values into memory and writes them to a file. Memory is what the process
/// ever held beyond what it held before.
///
///     bench_workbook                 60,000 rows, 200,000 rows over several sheets
///
/// Each size runs in a process of its own, so that its memory is its own.

#include "reports/workbook.h"
#include "base/formats.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <unordered_map>
#include <vector>

namespace
{

constexpr int Runs = 7;

struct Row
{
    QString Date;
    QString Symbol;
    QString Name;
    QString Description;
    Single Shares;
    QString Price;
    QString Amount;
};

std::vector<Row> MakeRows(const Formats &formats, int count)
{
    constexpr int Symbols = 500;
    std::vector<Row> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) {
        const int symbol = row * 7919 % Symbols;
        const qint64 price = 100000 + row * qint64{104729} % 9000000;
        rows.push_back(
            {formats.ShortDate(QDate(2010, 1, 1).addDays(row / 12)),
             QStringLiteral("S%1").arg(symbol), QStringLiteral("S%1 Incorporated").arg(symbol),
             QStringLiteral("Bought           "), Single::FromFloat(float(row % 997) / 8),
             formats.Format(Currency::FromUnits(price), u"###,##0.00"),
             formats.Format(Currency::FromUnits(-price * (row % 997)), u"###,##0.00")});
    }
    return rows;
}

void WriteBook(const Formats &formats, const std::vector<Row> &rows, const QString &path)
{
    Workbook book(formats);
    int at = 0;
    for (const Row &row : rows) {
        ++at;
        book.SetTyped(at, 1, row.Date);
        book.SetText(at, 2, row.Symbol);
        book.SetText(at, 3, row.Name);
        book.SetText(at, 4, row.Description);
        book.SetNumber(at, 5, row.Shares);
        book.SetTyped(at, 6, row.Price);
        book.SetTyped(at, 7, row.Amount);
    }
    book.Save(path);
}

/// The values of the same cells, ready to be written.
struct BareRow
{
    double Numbers[4];
    quint32 Texts[3];
};

std::vector<BareRow> MakeBareRows(const Formats &formats, const std::vector<Row> &rows)
{
    std::vector<BareRow> bare;
    bare.reserve(rows.size());
    quint32 text = 0;
    for (const Row &row : rows) {
        const QDate date = *formats.DateFromText(row.Date);
        bare.push_back({{double(QDate(1899, 12, 30).daysTo(date)), row.Shares.ToDouble(),
                         formats.NumberFromText(row.Price), formats.NumberFromText(row.Amount)},
                        {text, text + 1, text + 2}});
        text = (text + 3) % 1500;
    }
    return bare;
}

/// The floor: no cell is looked at twice, no text is looked up, numbers are not shortened.
void WriteBare(const std::vector<BareRow> &rows, const QString &path)
{
    constexpr int RowBytes = 20 + 4 * 18 + 3 * 14;
    std::vector<uchar> bytes(rows.size() * RowBytes);
    uchar *to = bytes.data();
    const auto put = [&to](const auto &value) {
        std::memcpy(to, &value, sizeof value);
        to += sizeof value;
    };
    const auto begin = [&](quint16 type, quint16 size, std::size_t row, quint16 column) {
        for (const quint16 word : {type, size, quint16(row), column, quint16{15}})
            put(word);
    };
    for (std::size_t row = 0; row < rows.size(); ++row) {
        begin(0x0208, 16, row, 0);
        for (int word = 0; word < 5; ++word)
            put(quint16{0x00FF});
        quint16 column = 0;
        for (const double number : rows[row].Numbers) {
            begin(0x0203, 14, row, column++);
            put(number);
        }
        for (const quint32 text : rows[row].Texts) {
            begin(0x00FD, 10, row, column++);
            put(text);
        }
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char *>(bytes.data()), qint64(bytes.size())) < 0 ||
        !file.flush() || fsync(file.handle()) != 0)
        std::abort();
}

template <class Work>
double MedianMilliseconds(Work work)
{
    std::vector<double> times;
    for (int run = 0; run < Runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::sort(times.begin(), times.end());
    return times[Runs / 2];
}

double PeakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

void Measure(int count)
{
    const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Report.xls"));
    const std::vector<Row> rows = MakeRows(formats, count);

    const double before = PeakMegabytes();
    const double book = MedianMilliseconds([&] { WriteBook(formats, rows, path); });
    const double peak = PeakMegabytes();
    const double size = double(QFileInfo(path).size()) / 1e6;

    const std::vector<BareRow> bare = MakeBareRows(formats, rows);
    const double floor = MedianMilliseconds([&] { WriteBare(bare, path); });
    std::printf("%7d  %7.2f  %8.1f  %8.1f  %6.2f  %9.1f  %8.1f\n", count, size, book, floor,
                book / floor, peak - before, peak);
}

} // namespace

int main()
{
    std::printf("   rows  file MB   book ms  floor ms   times  memory MB   peak MB\n");
    for (const int count : {60000, 200000}) {
        std::fflush(stdout);
        if (fork() == 0) {
            Measure(count);
            return 0;
        }
        wait(nullptr);
    }
    return 0;
}
