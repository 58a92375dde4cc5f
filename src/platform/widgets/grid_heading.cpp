#include "platform/widgets/grid_heading.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionHeader>

#include <algorithm>

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

bool GridHeading::IsClick(const QKeyEvent &key)
{
    return key.modifiers() == Qt::ControlModifier && key.key() == Qt::Key_Space;
}

bool GridHeading::Resize(int column, const QKeyEvent &key)
{
    const bool wider = key.key() == Qt::Key_Right;
    if (key.modifiers() != (Qt::ControlModifier | Qt::ShiftModifier) ||
        (!wider && key.key() != Qt::Key_Left) || sectionResizeMode(column) != Interactive)
        return false;
    const int step = parentWidget()->fontMetrics().averageCharWidth() * (wider ? 1 : -1);
    resizeSection(column, std::max(minimumSectionSize(), sectionSize(column) + step));
    return true;
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

void GridHeading::initStyleOptionForIndex(QStyleOptionHeader *option, int column) const
{
    QHeaderView::initStyleOptionForIndex(option, column);
    // Qt has it the other way round.
    if (option->sortIndicator == QStyleOptionHeader::SortDown)
        option->sortIndicator = QStyleOptionHeader::SortUp;
    else if (option->sortIndicator == QStyleOptionHeader::SortUp)
        option->sortIndicator = QStyleOptionHeader::SortDown;
}
