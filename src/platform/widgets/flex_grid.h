#pragma once

/// A grid that the program fills cell by cell, for totals and for lists with total rows.
///
///     totals->SetSize(2, 12);
///     totals->SetColumnWidth(1, 1800);
///     totals->SetText(0, 1, "Current Balance*");
///     totals->SetText(1, 1, "10,250.00");
///
/// Row 0 is the heading and column 0 the row header: both stay in view when the rest scrolls.
/// Widths and heights are twips, 1440 to the inch of the screen. Nothing can be edited. A row costs
/// its texts and no widgets; a list too long for that has its rows made as they come into view:
///
///     list->SetMadeRows(1 + lines.size(), [this](int row, int column) -> FlexCell { ... });
///
/// Where rows can be selected, Ctrl+C copies them as texts separated by tabs, and Ctrl+F looks for a
/// text; a row that the arrow keys go to is told as a clicked one. Ctrl+Space is a click on the heading
/// of the current column, Ctrl+Shift+Left and Right make it narrower and wider where the user may do so.
///
/// In the routines of ShownGrid row 0 is the row below the heading, and column 0 has no place.

#include "platform/widgets/flex_cell.h"
#include "platform/widgets/shown_grid.h"

#include <QMap>
#include <QTableView>

#include <functional>
#include <optional>

class FlexModel;
class GridHeading;
class GridFind;

class FlexGrid : public QTableView, public ShownGrid
{
public:
    explicit FlexGrid(QWidget *parent = nullptr);

    /// Both counts include row 0 and column 0, and are at least 1. Cells that stay keep their
    /// content.
    void SetSize(int rows, int columns);
    int Rows() const;
    int Columns() const;
    /// Adds an empty row at the end and returns its number.
    int AddRow();

    /// From here on all rows but row 0 are what `make` gives for their cells, until the next SetSize;
    /// writing there does nothing. No row is current afterwards. Call it again when they are others.
    void SetMadeRows(int rows, std::function<FlexCell(int row, int column)> make);

    /// Cells outside of the grid are empty, and writing there does nothing.
    void SetText(int row, int column, const QString &text);
    QString Text(int row, int column) const;
    void SetCellBackColor(int row, int column, QRgb color);
    QRgb CellBackColor(int row, int column) const;
    void SetCellBold(int row, int column, bool bold);

    /// Text colour and selection follow, so that they can be read.
    void SetBackColor(QRgb color);
    QRgb BackColor() const;
    /// All cells and headings; where the family is missing the nearest one of its kind stands in.
    void SetFont(const QString &family, int points);
    void SetColumnWidth(int column, int twips);
    /// The column becomes as wide as `text` needs, never narrower; a width of the user's stays.
    void MakeRoomFor(int column, const QString &text);
    void SetRowHeight(int twips); ///< all rows; never lower than the font
    /// The user may draw columns wider; `stretched` takes what the others leave.
    void SetUserResizesColumns(int stretched);
    /// The widths in pixels that the user gave to columns, by caption.
    const QMap<QString, int> &UserWidths() const { return m_userWidths; }
    void SetUserWidths(const QMap<QString, int> &widths);
    /// The arrow in a heading; 0: none.
    void SetSortIndicator(int column, bool descending);
    void SetColumnAlignment(int column, Qt::Alignment alignment);
    void HideColumn(int column);
    /// Off at first: then no row is marked.
    void SetSelectsRows(bool selects);
    /// In the rows of ShownGrid; -1: none is current.
    void SetCurrentRow(int row);
    /// All rows, and the scroll bar that comes when the window is too narrow.
    int FullHeight() const;

    // Handlers, all optional; they must not throw; they may unload the grid with
    // deleteLater.
    std::function<void(int row, int column)> OnClick; ///< left button, below the heading
    std::function<void(int row, int column)> OnDoubleClick;
    std::function<void(int column)> OnHeaderClick;
    std::function<void(Qt::MouseButton)> OnMouseUp; ///< before OnClick and OnContextMenu
    /// The right button went up, or the Menu key; the row under the mouse is current by then.
    std::function<void(const QPoint &globalPos)> OnContextMenu;

    QStringList Captions() const override;
    int RowCount() const override { return Rows() - 1; }
    QString CellText(int row, int place) const override;
    int CurrentRow() const override { return currentIndex().row(); }
    Target CellTarget(int row, int place) override;
    Target HeaderTarget(int place) override;
    QWidget *Viewport() override { return viewport(); }

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int ColumnAt(int place) const;
    int Pixels(int twips) const;
    void FitRowHeight();
    void ApplyColors();
    bool HandleColumn(const QKeyEvent &event);
    void Move(QKeyEvent *event);
    void HeaderClicked(int section);
    void MarkCurrentColumn();
    void CopySelection() const;
    void Find();

    FlexModel *m_model;
    GridHeading *m_heading;
    GridFind *m_find = nullptr; ///< once it was called for
    QMap<QString, int> m_userWidths;
    bool m_isFitting = false; ///< widths are being set that are not the user's
    std::optional<QRgb> m_backColor;
    int m_rowTwips = 300;
    int m_sortColumn = 0;
    bool m_sortDescending = false;
    QModelIndex m_pressed; ///< compared only
};
