#pragma once

/// What a chart shows: for each column (a series) and each row (a point) the value as text, with a
/// label for every column and row. Made by an engine, drawn by the chart widget.
///
///     ChartGrid grid(1, 3);                       one series of three points
///     grid.ColumnLabel(1) = "Daily Profit Loss";
///     grid.RowLabel(2) = "Mar-02-26";
///     grid.Data(2, 1) = "1250.5";
///
/// Rows and columns count from 1, as users do. A value left empty is no value: a gap in a line, no
/// bar, no slice. A text that reads as a number in the user's locale counts as that number.

#include <QString>

#include <optional>
#include <vector>

/// Styles, by the numbers that the settings and scripts know.
enum class ChartStyle
{
    Bar3D = 0,
    Bar2D = 1,
    Line3D = 2,
    Line2D = 3,
    Area3D = 4,
    Area2D = 5,
    Pie = 14
};

/// Fixed ends of the value axis.
struct ValueScale
{
    double Minimum = 0;
    double Maximum = 0;

    bool operator==(const ValueScale &) const = default;
};

struct ChartFont
{
    QString Name; ///< empty: the program's own
    int Size = 9; ///< points
    bool Bold = false;

    bool operator==(const ChartFont &) const = default;
};

class ChartGrid
{
public:
    ChartGrid() = default;
    ChartGrid(int columns, int rows)
        : m_columnLabels(size_t(columns)), m_rowLabels(size_t(rows)),
          m_data(size_t(columns) * size_t(rows))
    {}

    int ColumnCount() const { return int(m_columnLabels.size()); }
    int RowCount() const { return int(m_rowLabels.size()); }
    bool IsEmpty() const { return m_data.empty(); }

    QString &ColumnLabel(int column) { return m_columnLabels.at(size_t(column - 1)); }
    const QString &ColumnLabel(int column) const { return m_columnLabels.at(size_t(column - 1)); }
    QString &RowLabel(int row) { return m_rowLabels.at(size_t(row - 1)); }
    const QString &RowLabel(int row) const { return m_rowLabels.at(size_t(row - 1)); }
    QString &Data(int row, int column) { return m_data.at(Place(row, column)); }
    const QString &Data(int row, int column) const { return m_data.at(Place(row, column)); }

    // How it is dressed.
    bool ShowLegend = true; ///< at the bottom
    ChartFont LegendFont;
    ChartFont AxisFonts[3]; ///< of the category axis, the value axis and the second value axis
    std::optional<ValueScale> Scale; ///< nothing: chosen from the values
    bool PercentLabels = false;      ///< each slice bears its share, as "25%"
    int PercentLabelSize = 10;       ///< points

private:
    size_t Place(int row, int column) const
    {
        return size_t(column - 1) * m_rowLabels.size() + size_t(row - 1);
    }

    std::vector<QString> m_columnLabels;
    std::vector<QString> m_rowLabels;
    std::vector<QString> m_data; ///< series by series
};
