#pragma once

/// The Daily Tracker on a sheet: its rows under the captions of its grid, its totals below.

#include "reports/report_sheet.h"
#include "tracking/tracker_rows.h"

#include <QStringList>

/// What the open Daily Tracker shows.
struct TrackerContent
{
    struct Column
    {
        QString caption;
        QString dataField;
    };
    std::vector<Column> columns; ///< of the grid, in its order
    std::vector<TrackerRow> rows;
    QStringList totalHeadings; ///< from the first column of the totals on
    QStringList totals;        ///< as shown: "10,250.00"
};

/// The captions follow the grid; the values below them come in an order of their own, which is that
/// of the grid as delivered. The column "SecurityType", which has no values, is left out.
void WriteDailyTracker(Report &report, const TrackerContent &content, QDate today);
