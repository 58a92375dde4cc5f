#pragma once

/// The records of one sheet.

#include "reports/workbook_cells.h"

class BiffStream;
class SharedTexts;

/// Writes a sheet of the cells from `begin` to `end`, tidy and of one sheet's rows. The first sheet
/// of a book is the one that is open.
void WriteSheet(BiffStream &stream, WorkbookCells::Iterator begin, WorkbookCells::Iterator end,
                const WorkbookCells &cells, const SharedTexts &texts, bool isFirst);
