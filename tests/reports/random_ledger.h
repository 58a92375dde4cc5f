#pragma once

/// Random trades of eight securities, two of them always sold short, as rows of the ledger.
///
///     const std::vector<Trade> trades = RandomTrades(7);
///     ReportAccount account;
///     WriteLedger(account, trades);

#include "report_account.h"

#include <map>
#include <random>
#include <vector>

struct Trade
{
    QString symbol;
    int shares; ///< above zero opens, below closes
    int cents;  ///< price
    int cost;   ///< cents
    QDate date;
    bool isShort;
    bool isReinvested = false; ///< opens, and is no purchase that a sale is matched to
};

/// Trades of a symbol never sell more than is open, so that all shares are matched.
inline std::vector<Trade> RandomTrades(unsigned seed)
{
    std::mt19937 random(seed);
    const auto up = [&](int below) { return int(random() % unsigned(below)); };
    std::vector<Trade> trades;
    std::map<QString, int> open;
    QDate date(2024, 1, 2);
    for (int i = 0; i < 400; ++i) {
        date = date.addDays(up(3));
        const int number = up(8);
        const QString symbol = QString(QChar('A' + number));
        const bool isShort = number >= 6; // these two are always sold short
        const bool closes = open[symbol] > 0 && up(2) == 0;
        const int shares = closes ? -(1 + up(open[symbol])) : 1 + up(120);
        open[symbol] += shares;
        trades.push_back({symbol, shares, 100 + up(20000), up(3) * 495, date, isShort, false});
    }
    return trades;
}

inline void WriteLedger(ReportAccount &account, const std::vector<Trade> &trades)
{
    account.account.BeginTrans();
    int second = 0;
    for (const Trade &trade : trades) {
        const int sign = trade.isShort ? -1 : 1;
        const qint64 amount = -qint64(sign) * trade.shares * trade.cents - trade.cost;
        account.account.Execute(
            "INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, "
            "Amount, TransDate, Time) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
            trade.symbol, trade.symbol,
            QString(trade.isReinvested ? "Reinvestment"
                    : trade.isShort    ? (trade.shares > 0 ? " Short  Sale" : " Short Cover")
                                       : (trade.shares > 0 ? "Bought" : "Sold")),
            Single::FromDouble(sign * trade.shares), Currency::FromUnits(-trade.cost * 100),
            Currency::FromUnits(trade.cents * 100), Currency::FromUnits(amount * 100), trade.date,
            QTime(9, 30).addSecs(++second % 20000));
    }
    account.account.CommitTrans();
}
