#include "tracking/frm_daily_tracker_grid.h"

namespace
{

using CellText = QString (*)(const TrackerRow &, const Formats &);

template <auto Field>
QString Plain(const TrackerRow &row, const Formats &formats)
{
    return formats.ToText(row.*Field);
}

template <auto Field>
QString Words(const TrackerRow &row, const Formats &)
{
    return row.*Field;
}

template <auto Field>
QString TwoPlaces(const TrackerRow &row, const Formats &formats)
{
    return formats.Format(row.*Field, u"0.00");
}

template <auto Field>
QString FourPlaces(const TrackerRow &row, const Formats &formats)
{
    return formats.Format(row.*Field, u"0.0000");
}

template <auto Field>
QString Percent(const TrackerRow &row, const Formats &formats)
{
    return formats.Format(row.*Field, u"0.00%");
}

QString Day(const TrackerRow &row, const Formats &formats)
{
    return formats.FormatDate(row.TransDate, u"ddd d MMMM yyyy");
}

QString TimeOfDay(const TrackerRow &row, const Formats &formats)
{
    return formats.FormatTime(row.Time, u"h:mm:ss AMPM");
}

/// The rows carry no security type.
QString Nothing(const TrackerRow &, const Formats &)
{
    return QString();
}

struct TrackerColumn
{
    const char *caption;
    const char *dataField;
    CellText text;
    Qt::AlignmentFlag alignment = Qt::AlignRight;
    const char *sample = ""; ///< amounts grow while the grid is open
};

constexpr const char *LargeCount = "-99999.0000";
constexpr const char *LargeAmount = "-999999.00";

using Row = TrackerRow;
constexpr TrackerColumn trackerColumns[] = {
    {"Symbol", "Symbol", Words<&Row::Symbol>, Qt::AlignLeft},
    {"Shares", "Shares", FourPlaces<&Row::Shares>, Qt::AlignRight, LargeCount},
    {"Avg Price", "AvrgPrice", FourPlaces<&Row::AvrgPrice>, Qt::AlignRight, LargeCount},
    {"Price", "CurrPrice", FourPlaces<&Row::CurrPrice>, Qt::AlignRight, LargeCount},
    {"Gain", "Basis", FourPlaces<&Row::Basis>, Qt::AlignRight, LargeCount},
    {"% Gain ", "PerCentGainToday", Percent<&Row::PerCentGainToday>, Qt::AlignRight, "-100.00%"},
    {"P&L Today", "ProfitLossToday", TwoPlaces<&Row::ProfitLossToday>, Qt::AlignRight, LargeAmount},
    {"P&L To Date ", "ProfitLossToDate", TwoPlaces<&Row::ProfitLossToDate>, Qt::AlignRight,
     LargeAmount},
    {"Actual P&L ", "ActualProfitLoss", TwoPlaces<&Row::ActualProfitLoss>, Qt::AlignRight,
     LargeAmount},
    {"Invested Value", "InvestedValue", TwoPlaces<&Row::InvestedValue>, Qt::AlignRight,
     LargeAmount},
    {"Invested To Date", "InvestedToDate", TwoPlaces<&Row::InvestedToDate>, Qt::AlignRight,
     LargeAmount},
    {"Trans Cost Today", "TransCostToday", TwoPlaces<&Row::TransCostToday>, Qt::AlignRight,
     LargeAmount},
    {"Trans Cost To Date", "TransCostToDate", TwoPlaces<&Row::TransCostToDate>, Qt::AlignRight,
     LargeAmount},
    {"Trans Today ", "NumberTransToday", Plain<&Row::NumberTransToday>},
    {"Trans To Date", "NumberTransToDate", Plain<&Row::NumberTransToDate>},
    {"Name", "Name", Words<&Row::Name>, Qt::AlignLeft},
    {"SecurityType", "SecurityType", Nothing, Qt::AlignLeft},
    {"Trans Date", "TransDate", Day, Qt::AlignLeft},
    {"Time", "Time", TimeOfDay},
};

} // namespace

std::vector<GridColumn> TrackerGridColumns()
{
    std::vector<GridColumn> columns;
    for (const TrackerColumn &column : trackerColumns) {
        GridColumn shown{QString::fromUtf8(column.caption), QString::fromUtf8(column.dataField),
                         column.alignment};
        shown.sample = QString::fromUtf8(column.sample);
        columns.push_back(std::move(shown));
    }
    return columns;
}

QString TrackerGridSource::Text(int row, int column) const
{
    if (row < 0 || row >= m_rows.RecordCount() || column < 0 ||
        column >= int(std::size(trackerColumns)))
        return QString();
    return trackerColumns[column].text(m_rows.At(row), m_formats);
}

CellMark TrackerGridSource::Mark(int row, int column) const
{
    constexpr int PriceColumn = 3;
    if (row < 0 || row >= m_rows.RecordCount())
        return {};
    if (const QString &leftOut = m_rows.LeftOut(row); !leftOut.isEmpty())
        return {leftOut};
    if (column != PriceColumn)
        return {};
    const PriceMark mark = m_rows.MarkOfPrice(row);
    return {mark.why, mark.isOld};
}
