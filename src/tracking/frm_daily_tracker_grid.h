#pragma once

/// The columns of the Daily Tracker's grid, and the position rows as its texts.
///
///     "Avg Price"    AvrgPrice           "12.5000"
///     "% Gain "      PerCentGainToday    "25.00%"
///     "Trans Date"   TransDate           "Mon 2 March 2026"

#include "base/formats.h"
#include "platform/widgets/grid_source.h"
#include "tracking/tracker_rows.h"

/// In the order of the grid; blanks at the end of a caption belong to it.
std::vector<GridColumn> TrackerGridColumns();

class TrackerGridSource : public GridSource
{
public:
    /// Both must outlive the source.
    TrackerGridSource(const TrackerRecordset &rows, const Formats &formats)
        : m_rows(rows), m_formats(formats)
    {}

    int RowCount() const override { return m_rows.RecordCount(); }
    QString Text(int row, int column) const override;
    /// On the price, that it is suspicious or old; on all cells, that the row is left out of the totals.
    CellMark Mark(int row, int column) const override;

private:
    const TrackerRecordset &m_rows;
    const Formats &m_formats;
};
