#include "platform/widgets/wrapping_row.h"

#include <QHBoxLayout>
#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <limits>

WrappingRow::~WrappingRow()
{
    // A group that goes takes itself out of m_groups.
    while (!m_groups.empty())
        delete takeAt(0);
}

void WrappingRow::AddGroup(std::initializer_list<QWidget *> controls)
{
    auto *group = new QHBoxLayout;
    for (QWidget *control : controls)
        group->addWidget(control);
    addChildLayout(group);
    addItem(group);
}

void WrappingRow::addItem(QLayoutItem *item)
{
    m_groups.push_back({item, m_atRight});
    invalidate();
}

QLayoutItem *WrappingRow::itemAt(int index) const
{
    return index >= 0 && index < count() ? m_groups[size_t(index)].item : nullptr;
}

QLayoutItem *WrappingRow::takeAt(int index)
{
    QLayoutItem *item = itemAt(index);
    if (item)
        m_groups.erase(m_groups.begin() + index);
    return item;
}

int WrappingRow::Gap(Qt::Orientation direction) const
{
    const QWidget *widget = parentWidget();
    if (!widget)
        return 0;
    return widget->style()->pixelMetric(direction == Qt::Horizontal
                                            ? QStyle::PM_LayoutHorizontalSpacing
                                            : QStyle::PM_LayoutVerticalSpacing,
                                        nullptr, widget);
}

std::vector<WrappingRow::Line> WrappingRow::Lines(int width) const
{
    std::vector<Line> lines;
    for (const Group &group : m_groups) {
        if (group.item->isEmpty())
            continue;
        const QSize size = group.item->sizeHint();
        const int wanted = Gap(Qt::Horizontal) + size.width();
        if (lines.empty() || lines.back().width + wanted > width) {
            lines.push_back({{&group}, size.width(), size.height()});
            continue;
        }
        Line &line = lines.back();
        line.groups.push_back(&group);
        line.width += wanted;
        line.height = std::max(line.height, size.height());
    }
    return lines;
}

QSize WrappingRow::sizeHint() const
{
    const std::vector<Line> lines = Lines(std::numeric_limits<int>::max());
    return lines.empty() ? QSize(0, 0) : QSize(lines.front().width, lines.front().height);
}

QSize WrappingRow::minimumSize() const
{
    QSize size(0, 0);
    for (const Group &group : m_groups)
        if (!group.item->isEmpty())
            size = size.expandedTo(group.item->minimumSize());
    return size;
}

int WrappingRow::heightForWidth(int width) const
{
    int height = 0;
    for (const Line &line : Lines(width))
        height += line.height + (height > 0 ? Gap(Qt::Vertical) : 0);
    return height;
}

void WrappingRow::setGeometry(const QRect &area)
{
    QLayout::setGeometry(area);
    int top = area.top();
    for (const Line &line : Lines(area.width())) {
        int left = area.left();
        bool isLeft = true;
        for (const Group *group : line.groups) {
            if (group->atRight && isLeft) {
                left += std::max(0, area.width() - line.width);
                isLeft = false;
            }
            const QSize size = group->item->sizeHint();
            const int width = std::min(size.width(), area.width());
            group->item->setGeometry(
                QRect(left, top + line.height - size.height(), width, size.height()));
            left += size.width() + Gap(Qt::Horizontal);
        }
        top += line.height + Gap(Qt::Vertical);
    }
}
