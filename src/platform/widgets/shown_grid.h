#pragma once

/// A grid as its user has it: the cells in view as texts, and the mouse on them.
///
///     const int place = grid.ColumnByCaption("Symbol");
///     if (grid.CellText(2, place) == "ACME")
///         grid.SelectRow(2);                          a click; the screen's handlers run
///
/// A place counts the columns as shown, from the left, 0 the first; hidden columns have none. Rows
/// count from 0 below the captions. What is out of range has an empty text and takes no click.

#include <QPoint>
#include <QStringList>

class QWidget;

class ShownGrid
{
public:
    virtual ~ShownGrid() = default;

    virtual QStringList Captions() const = 0;
    /// The fields behind the columns, place by place, of a grid that has fields.
    virtual QStringList DataFields() const { return {}; }
    /// Rows with content, without the empty one in which a new row is begun.
    virtual int RowCount() const = 0;
    virtual QString CellText(int row, int place) const = 0;
    /// -1 without a current row.
    virtual int CurrentRow() const = 0;

    /// Where a mouse event for a cell or a caption goes; scrolls it into view.
    struct Target
    {
        QWidget *widget = nullptr;
        QPoint center; ///< in `widget`
    };
    virtual Target CellTarget(int row, int place) = 0;
    virtual Target HeaderTarget(int place) = 0;
    /// Where the rows are drawn; takes the mouse below the last row, and in an empty grid.
    virtual QWidget *Viewport() = 0;

    /// The column with this caption, first as it stands, then without the blanks around it, then the
    /// one of this field; -1.
    int ColumnByCaption(const QString &caption) const;

    /// These send mouse events and return false when there is nothing to click on.
    bool SelectRow(int row, int place = 0);
    bool DoubleClickRow(int row, int place = 0);
    bool ClickHeader(int place);
    /// Below the captions when there is no current row.
    bool RightClickCurrentRow();
};
