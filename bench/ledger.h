#pragma once

/// A History ledger of many trades: 500 symbols, trades in date order, 55 percent buys.

#include "bench_account.h"

#include <QRandomGenerator>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

/// How deep the lots lie at the end of 1,000,000 rows. Shallow: a sale takes a whole lot, and sales
/// come as often as purchases once this many lots are open. Deep: a sale takes three shares of the
/// ten of a lot, so that the open lots grow with the ledger and each sale stands before hundreds.
enum class Lots
{
    Shallow = 30,
    Deep = 850
};

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
    std::vector<int> open(symbols, 0); // shares
    const int sold = depth == Lots::Deep ? 3 : 10;
    const int perDay = std::max(1, rows / 2500);
    for (int i = 0; i < rows; ++i) {
        const int symbol = int(random.bounded(symbols));
        int &held = open[size_t(symbol)];
        const bool evenly = depth == Lots::Shallow && held >= 10 * int(depth);
        const bool buy = held < sold || random.bounded(100) < (evenly ? 50 : 55);
        held += buy ? 10 : -sold;
        const double price = 20 + double(random.bounded(1000)) / 100;
        const Single shares = Single::FromFloat(float(buy ? 10 : -sold));
        const Currency cost("-9.95");
        insert.BindAll(
            BenchAccount::Symbol(symbol), QStringLiteral("Name"),
            buy ? QStringLiteral("Bought") : QStringLiteral("Sold"), shares, cost,
            Currency::FromDouble(price), Currency::FromDouble(-shares.ToDouble() * price) + cost,
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
