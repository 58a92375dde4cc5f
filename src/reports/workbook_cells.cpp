#include "reports/workbook_cells.h"

#include <algorithm>

void WorkbookCells::Set(const WorkbookCell &cell)
{
    // Reports fill their rows in order; only another order has to be sorted.
    const bool isNext = m_cells.empty() || m_cells.back().IsBefore(cell);
    if (isNext && m_isTidy && cell.Kind == WorkbookCell::Kinds::Empty)
        return; // there is nothing that it would empty
    m_isTidy = m_isTidy && isNext;
    m_cells.push_back(cell);
}

quint32 WorkbookCells::TextPlace(const QString &text)
{
    const auto place = static_cast<quint32>(m_texts.size());
    const auto found = m_textPlaces.constFind(text);
    if (found != m_textPlaces.constEnd())
        return *found;
    m_texts.append(text);
    m_textPlaces.insert(text, place);
    return place;
}

void WorkbookCells::Widen(int column, qsizetype characters)
{
    int &width = m_widths[static_cast<std::size_t>(column)];
    width = std::max(width, static_cast<int>(std::min<qsizetype>(characters, 255)));
}

void WorkbookCells::Tidy()
{
    if (m_isTidy)
        return;
    std::stable_sort(
        m_cells.begin(), m_cells.end(),
        [](const WorkbookCell &left, const WorkbookCell &right) { return left.IsBefore(right); });
    auto kept = m_cells.begin();
    for (auto cell = m_cells.begin(); cell != m_cells.end(); ++cell) {
        const auto next = cell + 1;
        const bool isLast = next == m_cells.end() || cell->IsBefore(*next);
        if (isLast && cell->Kind != WorkbookCell::Kinds::Empty)
            *kept++ = *cell;
    }
    m_cells.erase(kept, m_cells.end());
    m_isTidy = true;
}
