#pragma once

/// The cells of a grid: a text that is cut off is shown in full as a tool tip; else the tool tip is
/// the grid's.

#include <QStyledItemDelegate>

class WholeTextTip : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};
