#pragma once

/// What the series of all chart kinds work on, and what they have in common.

#include "platform/chart_grid.h"
#include "platform/services.h"
#include "store/account_state.h"
#include "store/connection.h"

#include <QDate>

/// All references outlive the series.
struct ChartWork
{
    Connection &gConnAccount;
    Connection &gConnApplControl; ///< how securities split over asset classes
    Connection &gConnHistPrices;
    const AccountState &account; ///< AccountBalance
    Services &services;
};

struct ChartDates
{
    QDate From; ///< inclusive
    QDate To;   ///< inclusive; without a point when before From
};

/// Runs a load step; false when the store failed in it, of which nothing is said.
bool LoadStep(const std::function<void()> &step);
/// Says that the range holds nothing for the chart.
void ShowNoDataFound(Services &services);

/// A chart of one series over dates: its legend in bold, its labels empty.
ChartGrid SeriesGrid(const QString &title, int rows);
/// "Mar-02-26"
QString PointLabel(const ChartWork &work, QDate date);
void SetAxisFonts(ChartGrid &grid);
