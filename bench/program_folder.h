#pragma once

/// A copy of the delivered application folder, for a benchmark of the whole program.

#include "bench_account.h"

#include <QCoreApplication>
#include <QDir>

inline QString DeliveredFolder()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../delivered"));
}

/// Copies the folder; the sample account gets `positions` more, of 10 shares each.
inline void MakeFolder(const QString &from, const QString &to, int positions)
{
    QDir().mkpath(to);
    for (const QFileInfo &file : QDir(from).entryInfoList(QDir::Files))
        QFile::copy(file.filePath(), to + QLatin1Char('/') + file.fileName());
    QDir().mkpath(to + QStringLiteral("/icons"));
    for (const QFileInfo &file : QDir(from + QStringLiteral("/icons")).entryInfoList(QDir::Files))
        QFile::copy(file.filePath(), to + QStringLiteral("/icons/") + file.fileName());
    Connection account;
    account.Open(to + QStringLiteral("/Sample Portfolio.mdb"));
    WriteGuard guard(account);
    for (int i = 0; i < positions; ++i) {
        account.Execute(QStringLiteral("INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, "
                                       "AvrgPrice, TransDate, Time) VALUES (?, 'Name', 10, 210000, "
                                       "200000, '2026-02-27', '10:00:00.000')"),
                        BenchAccount::Symbol(i));
        account.Execute(QStringLiteral("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, "
                                       "TransDate, Time) VALUES (?, 10, 200000, '2026-02-27', "
                                       "'10:00:00.000')"),
                        BenchAccount::Symbol(i));
    }
    guard.Commit();
}
