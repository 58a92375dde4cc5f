#pragma once

/// The headings of a grid, and what the keys do with them in place of the mouse. A line under one shows
/// those who use the keys which column they are in. The arrow of a sorted column points up where its
/// values rise from row to row, and down where they fall.

#include <QHeaderView>

class GridHeading : public QHeaderView
{
public:
    explicit GridHeading(QWidget *parent);

    /// The column that the keys are for; -1: none.
    void Mark(int column);

    /// Ctrl+Space: the heading of the current column is clicked.
    static bool IsClick(const QKeyEvent &key);
    /// Ctrl+Shift+Left and Right make the column narrower and wider by a character, where the user may
    /// do so. False: it is no such key, or no such column.
    bool Resize(int column, const QKeyEvent &key);

protected:
    void paintSection(QPainter *painter, const QRect &rect, int column) const override;
    void initStyleOptionForIndex(QStyleOptionHeader *option, int column) const override;

private:
    int m_marked = -1;
};
