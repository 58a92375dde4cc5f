#pragma once

/// The series of amounts over days: realized profits and losses, and the balance series of
/// performance.
///
///     DailyProfitLoss          March 2   ACME 250     March 2   ZETA -50     March 3   ACME 10
///     of the portfolio         Mar-02-26  200         Mar-03-26   10
///     of ACME                  Mar-02-26  250         Mar-03-26   10
///     of March 2 alone         10:15:00 AM  250       11:30:00 AM  -50       each entry by its time
///
/// A load step that finds nothing says so in a box. It then leaves one point of zero, labelled
/// "No Data" on the portfolio's profit and loss and with today's date elsewhere. That point is in
/// the chart alone: no step writes to the account.
///
/// A load step gives false when the store failed; its draw step must not follow then.

#include "charts/chart_work.h"

#include <vector>

class AmountSeries
{
public:
    explicit AmountSeries(const ChartWork &work) : m_work(work) {}

    bool LoadPortfolioProfitLoss(const ChartDates &range);
    ChartGrid DrawPortfolioProfitLoss(const ChartDates &range) const;

    /// Entries of one day are not summed: each is a point.
    bool LoadSecurityProfitLoss(const QString &symbol, const ChartDates &range);
    ChartGrid DrawSecurityProfitLoss(const QString &symbol) const;

    /// The unrealized gain of a symbol by day; "Portfolio" sums those of all symbols, and leaves out
    /// the row of the account's balance, which bears that name.
    bool LoadPerformance(const QString &trackName, const ChartDates &range);
    ChartGrid DrawPerformance(const QString &title) const;

    bool NoDataFound = false; ///< of the last load step
    QDate FirstPointDate;     ///< of the last LoadPerformance
    QDate LastPointDate;
    int PointCount = 0;

private:
    struct AmountRow
    {
        QDate TransDate;
        QTime Time;
        Currency Amount;
    };
    struct GainRow
    {
        Currency DailyGain;
        QDate TransDate;
    };
    void TellNoDataFound();

    ChartWork m_work;
    std::vector<AmountRow> ChartRecordset;
    std::vector<GainRow> PerformanceRecordset;
};
