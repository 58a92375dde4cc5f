#pragma once

/// The cells of a grid: a text that is cut off is shown in full as a tool tip, with the cell's own tip,
/// if it has one; else the tool tip is the grid's.

#include <QStyledItemDelegate>

class WholeTextTip : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};
