#include "platform/widgets/grid_heading.h"

#include <QPainter>

namespace
{

constexpr int lineHeight = 3;

} // namespace

GridHeading::GridHeading(QWidget *parent) : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
    setHighlightSections(false);
    setFocusPolicy(Qt::NoFocus);
}

void GridHeading::Mark(int column)
{
    if (m_marked == column)
        return;
    m_marked = column;
    viewport()->update();
}

void GridHeading::paintSection(QPainter *painter, const QRect &rect, int column) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, column);
    painter->restore();
    if (column == m_marked)
        painter->fillRect(rect.adjusted(0, rect.height() - lineHeight, 0, 0),
                          palette().color(QPalette::Highlight));
}
