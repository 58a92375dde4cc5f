#include "platform/widgets/whole_text_tip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

bool WholeTextTip::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                             const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QRect cell = view->visualRect(index);
    if (event->type() != QEvent::ToolTip || sizeHint(option, index).width() <= cell.width())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // In markup, so that it is broken into lines, and text that looks like markup stays text.
    QToolTip::showText(event->globalPos(),
                       QStringLiteral("<qt>%1</qt>").arg(index.data().toString().toHtmlEscaped()),
                       view, cell);
    return true;
}
