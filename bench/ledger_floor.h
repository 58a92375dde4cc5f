#pragma once

/// The floor under rebuild and matching: the same rows read in order by bare SQLite, matched by a
/// bare loop over structs, and written back by bare statements. No dates, texts or rules beyond
/// that.

#include "ledger.h"

#include <chrono>
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
