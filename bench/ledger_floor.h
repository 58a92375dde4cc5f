#pragma once

/// The floor under rebuild and matching: the same rows read in order by bare SQLite, matched by a
/// bare loop over structs, and written back by bare statements. No dates, texts or rules beyond
/// that.

#include "ledger.h"

#include <chrono>
#include <cstdlib>
#include <deque>
#include <unordered_map>

struct FloorRow
{
    qint64 id;
    int symbol;
    float shares;
    qint64 price;
    qint64 cost;
};

inline double SecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline std::vector<FloorRow> FloorRead(Connection &connection, const QString &order)
{
    std::vector<FloorRow> rows;
    std::unordered_map<std::string, int> symbols;
    Statement statement = connection.Prepare(
        QStringLiteral("SELECT ID, Symbol, Shares, Price, TransactionCost, Description, TransDate, "
                       "Time, Amount FROM History %1")
            .arg(order));
    while (statement.Step()) {
        const auto symbol =
            symbols.emplace(statement.Text(1).toStdString(), int(symbols.size())).first->second;
        rows.push_back({statement.Int64(0), symbol, float(statement.Double(2)), statement.Int64(3),
                        statement.Int64(4)});
    }
    return rows;
}

/// Takes purchases first in, first out; the gain keeps the loop alive.
inline double FloorMatch(std::vector<FloorRow> &rows, std::vector<std::deque<FloorRow *>> &open)
{
    double gain = 0;
    open.assign(1000, {});
    for (FloorRow &row : rows) {
        auto &lots = open[size_t(row.symbol)];
        if (row.shares > 0) {
            lots.push_back(&row);
            continue;
        }
        float left = -row.shares;
        while (left > 0 && !lots.empty()) {
            const float taken = std::min(left, lots.front()->shares);
            gain += double(row.price - lots.front()->price) * double(taken);
            lots.front()->shares -= taken;
            left -= taken;
            if (lots.front()->shares == 0)
                lots.pop_front();
        }
    }
    return gain;
}

/// What one size took, and the floor under it.
struct Measured
{
    double seconds;
    double floor;
};

/// Measures 10,000 rows and each power of ten up to the first argument (1,000,000 without one), with
/// shallow and deep lots, each on a fresh ledger, and prints a line for each.
template <class Measure>
void MeasureSizes(const char *what, int argc, char **argv, Measure measure)
{
    const int most = argc > 1 ? std::atoi(argv[1]) : 1000000;
    std::printf("%9s %8s %10s %10s %7s %8s %9s\n", "rows", "lots", what, "floor s", "ratio",
                "growth", "peak MB");
    for (const Lots depth : {Lots::Shallow, Lots::Deep}) {
        double before = 0;
        for (int rows = 10000; rows <= most; rows *= 10) {
            BenchAccount bench;
            WriteLedger(bench, rows, depth);
            const Measured measured = measure(bench);
            std::printf("%9d %8d %10.3f %10.3f %7.2f", rows, int(depth), measured.seconds,
                        measured.floor, measured.seconds / measured.floor);
            if (before > 0)
                std::printf(" %8.2f", GrowthExponent(measured.seconds, before, 10));
            else
                std::printf(" %8s", "");
            std::printf(" %9.0f\n", PeakMegabytes());
            std::fflush(stdout);
            before = measured.seconds;
        }
    }
}
