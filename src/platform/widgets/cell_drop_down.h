#pragma once

/// The drop-down button of a grid column: an arrow at the right end of the current row's cell,
/// which opens a list to pick the cell's text from.
///
///     dtlAssetClass = new CellDropDown(*grid, ClassColumn);
///     dtlAssetClass->addItems(names);
///     dtlAssetClass->OnPicked = [this] (const QString &name) { ... };
///
/// It shows while the current cell's row is in view, the empty row at the end included. The grid
/// keeps what is picked as if it had been typed, and the row stays in edit.

#include <QComboBox>

#include <functional>

class DataGrid;

class CellDropDown : public QComboBox
{
public:
    CellDropDown(DataGrid &grid, int column);

    std::function<void(const QString &)> OnPicked;
    /// Puts the arrow where the current row is now.
    void Follow();

    void showPopup() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    DataGrid &m_grid;
    int m_column;
};
