#pragma once

/// The grid of the list screens: rows of texts under captions, one of them the current row.
///
///     grid->SetSource({{"Symbol", "Symbol"}, {"% Gain ", "PerCentGainToday"}}, &rows);
///     grid->OnRowColChange = [this] { Guarded([this] { ReadSelection(); }); };
///     ...
///     grid->RefreshRows();     after the rows behind it changed
///
/// It asks its source for the texts in view and keeps none, so that 100,000 rows cost as much as
/// twenty. Columns are indexes of the list given to SetSource, in all routines but those of
/// ShownGrid.
///
/// Editing: typing, F2 or a double click opens an editable cell. What is typed stays with the row
/// until it is left by mouse, key, heading or CommitRow; then OnBeforeUpdate is asked and the
/// source stores all changed cells at once. While one of them refuses, the row stays current and in
/// edit. Escape takes the changes of the row back.
///
/// Ctrl+C copies the selected rows as texts separated by tabs, Ctrl+F looks for a text. Ctrl+Space is a
/// click on the heading of the current column, Ctrl+Shift+Left and Right make it narrower and wider;
/// a line under that heading shows it while the grid has the focus.
///
/// The handlers must not throw; they may unload the grid with deleteLater.

#include "platform/widgets/grid_source.h"
#include "platform/widgets/shown_grid.h"

#include <QMap>
#include <QRgb>
#include <QWidget>

#include <functional>
#include <optional>

class GridFind;
class GridModel;
class GridPane;
class QItemSelectionModel;
class QKeyEvent;

/// How the current row stands out: as a whole, or with a frame around the current cell as well.
enum class Marquee
{
    Row = 3,
    RowAndCell = 4
};

class DataGrid : public QWidget, public ShownGrid
{
public:
    explicit DataGrid(QWidget *parent = nullptr);
    ~DataGrid() override;

    /// Shows the rows of `source`, which stays the caller's and must outlive its use here; nullptr
    /// empties the grid. Row 0 becomes current, without a call of OnRowColChange; split mode ends,
    /// and a row in edit is dropped: CommitRow comes first.
    void SetSource(std::vector<GridColumn> columns, GridSource *source);
    /// Any row may have changed, come or gone. Keeps scroll position and current row (the last one,
    /// when there are fewer now) and calls nobody. A row in edit stays so under its number:
    /// CommitRow comes before the rows are put in another order.
    void RefreshRows();
    const std::vector<GridColumn> &Columns() const;

    int RowCount() const override;
    /// -1 in an empty grid and on the empty row at the end.
    int CurrentRow() const override;
    int CurrentColumn() const; ///< -1 without a current cell
    /// False when a row in edit could not be left, or there is no such row.
    bool SetCurrentRow(int row);

    // --- handlers, all optional -----------------------------------------------------------------

    std::function<void()> OnRowColChange; ///< another current row or column
    std::function<void(int row)> OnClick; ///< left button, on a cell
    /// -1 below the rows. Enter does the same on a row; without a handler Enter is the form's, but in
    /// an open cell, whose typing it ends.
    std::function<void(int row)> OnDoubleClick;
    std::function<void(int column)> OnHeaderClick;  ///< the grid itself never sorts
    std::function<void(Qt::MouseButton)> OnMouseUp; ///< before OnClick and OnContextMenu
    /// The right button went up, or the Menu key: below the rows too. The row under the mouse is
    /// current by then.
    std::function<void(const QPoint &globalPos)> OnContextMenu;
    std::function<void(int row)> OnDeleteKey;
    /// A key typed into a cell, control characters included (8, 9, 22): the character to take in
    /// its place, QChar() for none. Pasted text does not come here.
    std::function<QChar(int column, QChar typed)> OnKeyPress;
    /// The editor of a cell was left with another text; EditedText has it.
    std::function<void(int row, int column)> OnCellEdited;
    std::function<void()> OnNewRow;              ///< first text in the empty row
    std::function<bool(int row)> OnBeforeUpdate; ///< false keeps the row in edit
    std::function<void(int row)> OnAfterUpdate;  ///< the source has stored the row

    // --- editing --------------------------------------------------------------------------------

    /// An empty row at the end, in which a new one can be begun.
    void SetAllowAddNew(bool allowed);
    bool IsRowEdited() const;
    /// A cell of the row in edit, or of the current row: as it would be stored.
    QString EditedText(int column) const;
    void SetEditedText(int column, const QString &text);
    /// Opens the cell of the current row, puts `text` into it as a paste does, and closes it; false
    /// when the column is not editable.
    bool EditCell(int column, const QString &text);
    bool GoToNewRow();
    /// Stores the row in edit; false when it was refused. True without one.
    bool CommitRow();
    void CancelRow();

    // --- look -----------------------------------------------------------------------------------

    QRgb BackColor() const;
    /// Text, alternate rows and selection follow, so that they can be read.
    void SetBackColor(QRgb color);
    /// An arrow in the heading; a column of -1 shows none.
    void SetSortIndicator(int column, bool descending);
    Marquee MarqueeStyle() const { return m_marquee; }
    /// The widths in pixels that the user gave to columns, by field; they stand in for the fitted
    /// ones, of columns that are set later too.
    const QMap<QString, int> &UserWidths() const { return m_userWidths; }
    void SetUserWidths(const QMap<QString, int> &widths);

    /// Two panes side by side: the first column with the field "Symbol" stays put on the left, the
    /// others scroll on the right. Both have the same rows, selection and vertical position. Does
    /// nothing without such a column.
    void EnterSplit();
    void LeaveSplit();
    bool IsSplit() const { return m_isSplit; }

    // --- as shown: see ShownGrid ----------------------------------------------------------------

    QStringList Captions() const override;
    QStringList DataFields() const override;
    QString CellText(int row, int place) const override;
    Target CellTarget(int row, int place) override;
    Target HeaderTarget(int place) override;
    QWidget *Viewport() override;
    /// The column at a place, -1 out of range.
    int ColumnAt(int place) const;
    /// Where a cell of the current row, or of the empty one, is in Viewport(); empty out of view.
    QRect CurrentRowCell(int column) const;

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    friend class GridPane;
    friend class GridCell;

    GridPane *PaneOf(int column) const;
    /// From left to right; the left pane's first.
    const std::vector<int> &ShownColumns() const { return m_shownColumns; }
    void ShowColumns();
    void FitColumns();
    void FitSplit();
    void TakeUserWidth(int column, int width);
    void ApplyColors();
    void ScrollTo(int row, int column);

    bool MayMoveTo(int row);
    bool MoveTo(int row, int column, bool extend = false);
    void MoveSilently(int row);
    bool HandleKey(QKeyEvent *event);
    bool HandleMove(QKeyEvent *event);
    bool HandleColumn(const QKeyEvent &event);
    void MarkCurrentColumn();
    void CopySelection() const;
    void Find();
    void EditNeighbour(int step);
    void HeaderClicked(int column);
    void TellMouseUp(Qt::MouseButton button, QPoint globalPos, int clickedRow);
    void TellDoubleClick(int row);

    GridModel *m_model;
    QItemSelectionModel *m_selection;
    GridPane *m_left;     ///< the Symbol column in split mode, else hidden
    QWidget *m_belowLeft; ///< as high as the scroll bar below the right pane
    GridPane *m_right;
    GridFind *m_find = nullptr; ///< once it was called for
    std::vector<int> m_shownColumns;
    QMap<QString, int> m_userWidths;
    bool m_isFitting = false; ///< the widths that come are not the user's
    std::optional<QRgb> m_backColor;
    Marquee m_marquee = Marquee::RowAndCell;
    int m_sortColumn = -1;
    bool m_sortDescending = false;
    bool m_isSplit = false;
    bool m_isSilent = false;     ///< moves are not told
    bool m_isCommitting = false; ///< a handler of a commit is on
};
