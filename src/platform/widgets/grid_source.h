#pragma once

/// What a DataGrid shows: its columns, and the rows as texts.

#include <QMap>
#include <QString>

#include <vector>

struct GridColumn
{
    QString caption;   ///< shown as it stands: blanks at its end and "&" stay
    QString dataField; ///< the column "Symbol" alone stays put in split mode
    Qt::Alignment alignment = Qt::AlignLeft;
    int width = 0; ///< pixels; 0: wide enough for the caption and the first rows
    bool editable = false;
    bool hidden = false;
    QString sample = {};  ///< with no width: the column is wide enough for this text, too
};

/// What a cell wants to be noticed for: shown by its ground, a corner, its tool tip and its text for
/// screen readers. An empty text: nothing.
struct CellMark
{
    QString why;
    bool isMild = false; ///< in a fainter colour
};

/// The rows behind a grid, which it asks for as they come into view. Whoever changes them calls
/// DataGrid::RefreshRows. No routine may throw: they run inside the event loop.
class GridSource
{
public:
    virtual ~GridSource() = default;

    virtual int RowCount() const = 0;
    /// The text shown; `row` is 0 to RowCount() - 1, `column` an index of the grid's columns.
    virtual QString Text(int row, int column) const = 0;
    virtual CellMark Mark(int /*row*/, int /*column*/) const { return {}; }
    /// Takes what the user changed in a row, by column; `row` equal to RowCount() is a new row.
    /// False: refused, nothing is stored and the row stays in edit.
    virtual bool Store(int /*row*/, const QMap<int, QString> & /*texts*/) { return false; }
};
