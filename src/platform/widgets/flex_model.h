#pragma once

/// The cells of a FlexGrid. Row 0 and column 0 are the headers of the view, so that the view's row
/// and section numbers are one lower than the grid's.

#include <QAbstractTableModel>
#include <QFont>
#include <QPalette>

#include <optional>
#include <vector>

class FlexModel : public QAbstractTableModel
{
public:
    struct Cell
    {
        QString text;
        std::optional<QRgb> back;
        bool bold = false;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void SetSize(int rows, int columns);
    int Rows() const { return static_cast<int>(m_rows.size()); }
    int Columns() const { return m_columns; }
    /// nullptr outside of the grid.
    const Cell *At(int row, int column) const;
    Cell *At(int row, int column);
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
    std::vector<std::vector<Cell>> m_rows{std::vector<Cell>(1)};
    std::vector<Qt::Alignment> m_alignments{Qt::AlignLeft};
};
