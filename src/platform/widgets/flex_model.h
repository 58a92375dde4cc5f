#pragma once

/// The cells of a FlexGrid. Row 0 and column 0 are the headers of the view, so that the view's row
/// and section numbers are one lower than the grid's.

#include "platform/widgets/flex_cell.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QPalette>

#include <functional>
#include <vector>

class FlexModel : public QAbstractTableModel
{
public:
    using CellMaker = std::function<FlexCell(int row, int column)>;

    using QAbstractTableModel::QAbstractTableModel;

    /// Drops made rows.
    void SetSize(int rows, int columns);
    /// All rows but row 0 are made, cell by cell, when they are asked for.
    void SetMadeRows(int rows, CellMaker make);
    int Rows() const { return m_make ? m_madeRows : static_cast<int>(m_rows.size()); }
    int Columns() const { return m_columns; }
    /// Empty outside of the grid.
    FlexCell Shown(int row, int column) const;
    /// To be changed; nullptr outside of the grid, and in a row that is made.
    FlexCell *At(int row, int column);
    void TellChanged(int row, int column);
    void SetAlignment(int column, Qt::Alignment alignment);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    QFont font;       ///< of the view, for cells in bold
    QPalette palette; ///< of the view, for text on a cell's own colour

private:
    int m_columns = 1;
    std::vector<std::vector<FlexCell>> m_rows{std::vector<FlexCell>(1)};
    int m_madeRows = 0; ///< counts row 0
    CellMaker m_make;
    std::vector<Qt::Alignment> m_alignments{Qt::AlignLeft};
};
