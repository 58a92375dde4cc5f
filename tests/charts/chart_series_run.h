#pragma once

/// The series of charts on real database files that the test has laid out. Today is 2026-03-02.
///
///     Profit("ACME", "2026-02-27", "250");
///     Close("ACME", "2026-02-27", "10.5");
///     EXPECT_EQ(Points(ChartKind::PortfolioPL, "2026-02-01", "2026-03-02"), "Feb-27-26 250");

#include "charts/chart_series.h"
#include "support/print_qt.h"
#include "support/test_app_folder.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

class ChartSeriesRun : public testing::Test
{
protected:
    ChartSeriesRun()
    {
        gConnAccount.Open(folder.SampleAccount());
        gConnApplControl.Open(folder.File(QStringLiteral("ApplControl.xxx")));
        gConnHistPrices.Open(folder.File(QStringLiteral("HistPrices.xxx")));
    }

    static QDate Day(const char *date)
    {
        return QDate::fromString(QString::fromUtf8(date), Qt::ISODate);
    }

    // The files.

    void Profit(const QString &symbol, const char *date, const char *amount,
                const char *time = "10:15:00")
    {
        gConnAccount.Execute(
            QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, "
                           "Time) VALUES (?, NULL, ?, ?, ?)"),
            symbol, Currency(amount), Day(date),
            QTime::fromString(QString::fromUtf8(time), Qt::ISODate));
    }
    /// A row of the balance series.
    void Balance(const QString &trackName, const char *date, const char *balance)
    {
        gConnAccount.Execute(
            QStringLiteral("INSERT INTO PortfolioDailyBalance VALUES (?, ?, NULL, ?)"),
            Currency(balance), Day(date), trackName);
    }
    void Position(const QString &symbol, const char *invested)
    {
        gConnAccount.Execute(
            QStringLiteral("INSERT INTO DailyTracker (Symbol, InvestedValue) VALUES (?, ?)"),
            symbol, Currency(invested));
    }
    void InClass(const QString &symbol, const QString &assetClass, double fraction)
    {
        gConnApplControl.Execute(QStringLiteral("INSERT INTO SecurityAssetClass VALUES (?, ?, ?)"),
                                 symbol, assetClass, Single::FromDouble(fraction));
    }
    void Close(const QString &symbol, QDate date, Currency price)
    {
        gConnHistPrices.Execute(
            QStringLiteral("INSERT INTO HistoricalPrices (Symbol, PriceDate, PriceClose) "
                           "VALUES (?, ?, ?)"),
            symbol, date, price);
    }
    void Close(const QString &symbol, const char *date, const char *price)
    {
        Close(symbol, Day(date), Currency(price));
    }
    /// The whole content of the account, by which a test knows that nothing was written.
    qint64 ChangeCount()
    {
        Statement changes = gConnAccount.Prepare(QStringLiteral("SELECT total_changes()"));
        changes.Step();
        return changes.Int64(0);
    }

    // The chart.

    std::optional<ChartGrid> Reload(ChartKind kind, const char *from, const char *to,
                                    const QString &symbol = {})
    {
        grid = series.Reload(kind, symbol, {Day(from), Day(to)}, interval);
        return grid;
    }
    /// Label and value of each point of the first series: "Mar-02-26 250, Mar-03-26 -10.5". A point
    /// without a label has "?", one without a value "none".
    QString Points(ChartKind kind, const char *from, const char *to, const QString &symbol = {})
    {
        return Reload(kind, from, to, symbol) ? PointsOf(*grid) : QStringLiteral("(stays)");
    }
    static QString PointsOf(const ChartGrid &grid)
    {
        QStringList points;
        for (int row = 1; row <= grid.RowCount(); ++row)
            points << (grid.RowLabel(row).isEmpty() ? QStringLiteral("?") : grid.RowLabel(row)) +
                          QLatin1Char(' ') +
                          (grid.Data(row, 1).isEmpty() ? QStringLiteral("none")
                                                       : grid.Data(row, 1));
        return points.join(QStringLiteral(", "));
    }
    /// Name and value of each slice.
    QString Slices(ChartKind kind)
    {
        if (!Reload(kind, "2026-03-02", "2026-03-02"))
            return QStringLiteral("(stays)");
        QStringList slices;
        for (int column = 1; column <= grid->ColumnCount(); ++column)
            slices << grid->ColumnLabel(column) + QLatin1Char(' ') + grid->Data(1, column);
        return slices.join(QStringLiteral(", "));
    }
    QString Readout(ChartKind kind, int column, int row)
    {
        return series.Readout(kind, *grid, column, row);
    }
    static constexpr const char *noDataBox =
        "Chart Editor|48|No data was found for selected symbol or in the requested\n"
        "date range.  Please make another selection or increase date \n"
        "range selection.";

    TestAppFolder folder;
    TestServices machine;
    Connection gConnAccount, gConnApplControl, gConnHistPrices;
    AccountState account;
    ChartSeries series{
        {gConnAccount, gConnApplControl, gConnHistPrices, account, machine.services}};
    ChartInterval interval = ChartInterval::None;
    std::optional<ChartGrid> grid; ///< of the last reload
};
