#pragma once

/// The rows of a GridSource for the panes of a DataGrid, with the row that is being edited: what
/// was typed into it is kept here until the grid stores the row.

#include "platform/widgets/grid_source.h"

#include <QAbstractTableModel>

#include <functional>

class GridModel : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetSource(std::vector<GridColumn> columns, GridSource *source);
    const std::vector<GridColumn> &Columns() const { return m_columns; }
    GridSource *Source() const { return m_source; }

    /// Rows of the source at the last refresh; the row after them, if any, is the empty one.
    int Rows() const { return m_rows; }
    void SetHasNewRow(bool hasNewRow);
    void RefreshRows();

    QString Text(int row, int column) const;
    CellMark Mark(int row, int column) const;

    int EditedRow() const { return m_editedRow; } ///< -1: none
    const QMap<int, QString> &EditedTexts() const { return m_editedTexts; }
    void SetEditedText(int row, int column, const QString &text);
    void ForgetEdits();
    /// A cell was edited; the model holds its text.
    std::function<void(int row, int column)> OnEdited;
    /// The first text came into the empty row.
    std::function<void()> OnNewRow;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    std::vector<GridColumn> m_columns;
    GridSource *m_source = nullptr;
    int m_rows = 0;
    bool m_hasNewRow = false;
    int m_editedRow = -1;
    QMap<int, QString> m_editedTexts;
};
