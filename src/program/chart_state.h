#pragma once

/// What a run knows of the chart screen beside its settings.

#include "base/dates.h"

#include <QString>

struct ChartState
{
    bool ChartScreenOpen = false; ///< frmChartScreen is loaded
    /// The range shown last, until the program ends; NoDate: none was shown yet.
    QDate ChartFromDate = NoDate();
    QDate ChartToDate = NoDate();
    QString ChartAreaChosen; ///< "Backdrop", "Base", "Wall"; empty: frmPlotSelection was cancelled
};
