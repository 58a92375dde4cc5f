#pragma once

/// The replay of a test account's ledger, and ledgers written by hand.
///
///     TestAccount account;
///     WriteHistory(account, {{"ACME", "Bought", "100", "-5", "10", "-1005", "2026-01-05"}});
///     Replay(account);

#include "test_account.h"

#include "transactions/rebuild.h"

/// One row of History as a person writes it; the name is "<Symbol> Inc.", the time 10:00.
struct LedgerRow
{
    QString symbol;
    const char *description;
    const char *shares;
    const char *cost;
    const char *price;
    const char *amount;
    const char *date;
};

inline void WriteHistory(TestAccount &account, const std::vector<LedgerRow> &rows)
{
    for (const LedgerRow &row : rows)
        account.gConnAccount().Execute(
            QStringLiteral("INSERT INTO History (Symbol, Name, Description, Shares, "
                           "TransactionCost, Price, Amount, TransDate, Time) "
                           "VALUES (?, ?, ?, ?, ?, ?, ?, ?, '10:00:00.000')"),
            row.symbol, row.symbol + QStringLiteral(" Inc."), QString::fromUtf8(row.description),
            Single::FromDouble(QByteArray(row.shares).toDouble()), Currency(row.cost),
            Currency(row.price), Currency(row.amount),
            QDate::fromString(QString::fromLatin1(row.date), Qt::ISODate));
}

/// As the wizard does, without its screens.
inline void Replay(
    TestAccount &account, const std::function<void(qint64)> &progress = [](qint64) {})
{
    EntryState &entry = account.Entry();
    entry.RebuildMode = true;
    {
        HistoryReplay replay(account.Work());
        replay.Begin();
        replay.Run(progress);
        replay.Commit();
    }
    entry.RebuildMode = entry.RebuildNewDay = false;
}
