#pragma once

/// Files as versions before 5 left them: an account whose positions know their security type, and a
/// control file without the list of securities.
///
///     TestAppFolder folder;
///     const QString path = AddOldAccount(folder, "Broker.mdb");
///     MakeControlFileOld(folder);

#include "test_app_folder.h"

#include <QFile>

/// Version "41", tracker day 2026-02-27, balance 12,345.6789, commission Style1 of 9.95; two
/// positions, and ledgers whose rows are not in the order of their dates.
inline QString AddOldAccount(const TestAppFolder &folder, const QString &name)
{
    const QString path = folder.AddAccount(name);
    folder.Execute(path, R"sql(
        ALTER TABLE DailyTracker ADD COLUMN SecurityType TEXT;
        INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, AvrgPrice, NumberTransToDate,
                                  TransDate, Time, PerCentGainToday, SecurityType) VALUES
            ('O''NEIL', 'O''Neil & Café', 100.5, 123456, 100000, 3, '2026-02-27',
             '10:15:00.000', 1.5, 'Stock'),
            ('FUNDX', 'Fund X', -7, 990000, 980000, 1, '2026-02-26', '09:00:00.000', 0, 'Mutual');
        INSERT INTO DailyProfitLoss (ID, Symbol, Name, ProfitLoss, TransDate, Time) VALUES
            (11, 'FUNDX', 'Fund X', -50000, '2026-02-26', '09:00:00.000'),
            (12, 'O''NEIL', 'O''Neil & Café', 120000, '2026-02-25', '10:15:00.000');
        INSERT INTO PortfolioDailyBalance VALUES
            (123456789, '2026-02-27', '16:00:00.000', 'Portfolio'),
            (120000000, '2026-02-26', '16:00:00.000', 'Portfolio');
        INSERT INTO History (ID, Symbol, Name, Description, Shares, TransactionCost, Price, Amount,
                             TransDate, Time) VALUES
            (40, 'FUNDX', 'Fund X', 'Sold short', 7, 99500, 980000, 6860000, '2026-02-26',
             '09:00:00.000'),
            (41, 'O''NEIL', 'O''Neil & Café', 'Bought', 100.5, 99500, 100000, 10050000,
             '2024-02-29', '23:59:59.999'),
            (42, ' ', 'Account Deposit', 'Deposit', 0, 0, 0, 100000000, '2024-02-28',
             '00:00:00.000'),
            (43, ' ', 'Account Deposit', 'Deposit', 0, 0, 0, 200000000, '2024-02-28',
             '00:00:00.000');
        INSERT INTO PriceHistory (ID, Symbol, Shares, PurchasePrice, TransDate, Time) VALUES
            (8, 'FUNDX', -7, 980000, '2026-02-26', '09:00:00.000'),
            (9, 'O''NEIL', 0.5, 100000, '2024-02-29', '23:59:59.999'),
            (30, 'O''NEIL', 100, 100000, '2024-02-29', '10:00:00.000');
        INSERT INTO DescriptiveTable VALUES
            ('Balance', 123456789, 0, 0, '2026-02-27', '2026-02-27', '41', 4, 'Style1', 'n/a',
             0, 0, '0'),
            ('Style1', 99500, 0, 0, '2024-02-28', '2024-02-28', '0', 0, 'n/a', 'n/a', 0, 0, '0'),
            ('Security', 0, 0, 0, '2024-02-28', '2024-02-28', '20', 0, 'Ann', 'vhfuhw', 0, 0, '0');
    )sql");
    return path;
}

/// ApplControl.mdb with two accounts that were opened, an asset class that is delivered with today's
/// file too, and one of the user's own.
inline void MakeControlFileOld(const TestAppFolder &folder)
{
    const QString path = folder.File(QStringLiteral("ApplControl.mdb"));
    const QString pattern = folder.File(QStringLiteral("ApplControl.xxx"));
    QFile::remove(path);
    QFile::copy(pattern, path);
    folder.Execute(path, R"sql(
        DROP TABLE SecurityDetail;
        DROP TABLE SecurityAssetClass;
        INSERT INTO ApplicationTable (TableName, Field04, Field08, Field09, Field10, Field11) VALUES
            ('Portfolio', '2020-01-02', 'Broker', 'N/A', 1, 0),
            ('Portfolio', '2020-01-03', 'Savings', 'N/A', 0, 0),
            ('AssetClass', '2020-01-03', 'Bonds', NULL, NULL, NULL),
            ('AssetClass', '2020-01-03', 'My class', NULL, NULL, NULL);
    )sql");
    folder.Execute(
        pattern, QStringLiteral("INSERT INTO ApplicationTable (TableName, Field04, Field08) VALUES "
                                "('AssetClass', '2026-01-01', 'Bonds'), "
                                "('AssetClass', '2026-01-01', 'Options')"));
}
