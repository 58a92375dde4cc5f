#include "platform/widgets/whole_text_tip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

bool WholeTextTip::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                             const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const QRect cell = view->visualRect(index);
    QStringList lines;
    if (sizeHint(option, index).width() > cell.width())
        lines << index.data().toString().toHtmlEscaped();
    if (const QString own = index.data(Qt::ToolTipRole).toString(); !own.isEmpty())
        lines << own.toHtmlEscaped();
    if (event->type() != QEvent::ToolTip || lines.isEmpty())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // In markup, so that it is broken into lines, and text that looks like markup stays text.
    QToolTip::showText(event->globalPos(),
                       QStringLiteral("<qt>%1</qt>").arg(lines.join(QStringLiteral("<br>"))), view,
                       cell);
    return true;
}
