#pragma once

/// A History ledger of many trades: 500 symbols, trades in date order, 55 percent buys.

#include "bench_account.h"

#include <QRandomGenerator>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

/// How deep the lots lie: open lots a symbol holds before its sales begin.
enum class Lots { Shallow = 30, Deep = 850 };

inline void WriteLedger(BenchAccount &bench, int rows, Lots depth)
{
    constexpr int symbols = 500;
    Connection connection;
    connection.Open(bench.Path());
    WriteGuard guard(connection);
    Statement insert = connection.Prepare(
        QStringLiteral("INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, "
                       "Price, Amount, TransDate, Time) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    QRandomGenerator random(20260302);
    std::vector<int> open(symbols, 0); // lots of 10 shares
    const int perDay = std::max(1, rows / 2500);
    for (int i = 0; i < rows; ++i) {
        const int symbol = int(random.bounded(symbols));
        int &lots = open[size_t(symbol)];
        // Around the depth wanted buys and sales keep the balance; 55 percent buys until then.
        const bool deepEnough = lots >= int(depth);
        const bool buy = lots == 0 || (!deepEnough && random.bounded(100) < 55);
        lots += buy ? 1 : -1;
        const double price = 20 + double(random.bounded(1000)) / 100;
        const Single shares = Single::FromFloat(buy ? 10 : -10);
        const Currency cost("-9.95");
        insert.BindAll(BenchAccount::Symbol(symbol), QStringLiteral("Name"),
                       buy ? QStringLiteral("Bought") : QStringLiteral("Sold"), shares, cost,
                       Currency::FromDouble(price),
                       Currency::FromDouble(-shares.ToDouble() * price) + cost,
                       QDate(2016, 1, 4).addDays(i / perDay), QTime(10, 0).addMSecs(i % perDay * 50));
        insert.Step();
        insert.Reset();
    }
    guard.Commit();
}

/// Peak resident memory of this process in MB; it only grows, so run the sizes in rising order.
inline double PeakMegabytes()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stod(line.substr(6)) / 1024;
    return 0;
}

/// The power of the size by which a time grew: 1 is linear.
inline double GrowthExponent(double time, double timeBefore, double sizeRatio)
{
    return std::log(time / timeBefore) / std::log(sizeRatio);
}
