#pragma once

/// The table of a workbook's texts: each distinct one once, with the number of cells that show any.

#include "reports/workbook_cells.h"

#include <vector>

class BiffStream;

class SharedTexts
{
public:
    /// Takes the texts that the cells use, in the order of their first use.
    explicit SharedTexts(const WorkbookCells &cells);

    /// Where the table holds the text that a cell names.
    quint32 PlaceOf(const WorkbookCell &cell) const { return m_places[cell.Text]; }
    /// The table and the index into it.
    void Write(BiffStream &stream) const;

private:
    std::vector<const QString *> m_texts;
    std::vector<quint32> m_places; ///< of each text of the cells
    quint32 m_cellCount = 0;
};
