#pragma once

/// A workbook as one stream of BIFF8 records: the settings of the book (fonts, number formats, styles
/// of cells, names of sheets, texts), then its sheets.
///
///     WriteCompoundFile("Summary.xls", "Workbook", BiffBook(cells, formats));

#include "reports/workbook_cells.h"

class BiffStream;
class NumberFormats;

/// The cells must be tidy.
QByteArray BiffBook(const WorkbookCells &cells, const NumberFormats &formats);

enum class BiffPart : quint16
{
    Globals = 0x0005,
    Sheet = 0x0010
};
/// The record that each part begins with.
void WriteBegin(BiffStream &stream, BiffPart part);

/// The style of a cell with the number format at that place.
quint16 CellStyle(quint16 format);
