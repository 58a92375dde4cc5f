// A sheet lists its rows in blocks of 32: the ROW records, the cells of these rows, and a DBCELL
// that says where each row's cells begin. The INDEX at the head of the sheet says where the DBCELLs
// are; its places are filled in when they are known.

#include "reports/biff_sheet.h"

#include "reports/biff_book.h"
#include "reports/biff_stream.h"
#include "reports/shared_texts.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <optional>

namespace
{

constexpr quint32 BlockRows = 32;

quint16 RowOf(const WorkbookCell &cell)
{
    return static_cast<quint16>(cell.Row % WorkbookCells::SheetRows);
}

// --- cells -----------------------------------------------------------------------------------------

/// A number in 32 bits where that loses nothing: a whole number of 30 bits, or a double whose low 34
/// bits are zero; either may count hundredths.
std::optional<quint32> ShortForm(double value)
{
    constexpr quint32 Hundredths = 1;
    constexpr quint32 Whole = 2;
    constexpr double Limit = 1 << 29;

    if (value > -Limit && value < Limit) {
        const auto whole = static_cast<qint32>(value);
        if (whole == value)
            return static_cast<quint32>(whole) << 2 | Whole;
    }
    const auto bits = std::bit_cast<quint64>(value);
    if ((bits & 0x3'FFFF'FFFF) == 0)
        return static_cast<quint32>(bits >> 32);
    const double hundred = value * 100;
    if (hundred > -Limit && hundred < Limit) {
        const auto whole = static_cast<qint32>(std::lround(hundred));
        if (whole / 100.0 == value)
            return static_cast<quint32>(whole) << 2 | Whole | Hundredths;
    }
    return std::nullopt;
}

uchar *CellRecord(BiffStream &stream, quint16 type, quint16 size, const WorkbookCell &cell)
{
    constexpr quint16 PlaceSize = 6;
    uchar *to = stream.Record(type, PlaceSize + size);
    qToLittleEndian(RowOf(cell), to);
    qToLittleEndian<quint16>(cell.Column, to + 2);
    qToLittleEndian(CellStyle(cell.Format), to + 4);
    return to + PlaceSize;
}

void WriteCell(BiffStream &stream, const WorkbookCell &cell, const SharedTexts &texts)
{
    constexpr quint16 LabelSst = 0x00FD;
    constexpr quint16 Number = 0x0203;
    constexpr quint16 Rk = 0x027E;

    if (cell.Kind == WorkbookCell::Kinds::Text)
        qToLittleEndian(texts.PlaceOf(cell), CellRecord(stream, LabelSst, 4, cell));
    else if (const std::optional<quint32> rk = ShortForm(cell.Number))
        qToLittleEndian(*rk, CellRecord(stream, Rk, 4, cell));
    else
        qToLittleEndian(std::bit_cast<quint64>(cell.Number), CellRecord(stream, Number, 8, cell));
}

// --- rows ------------------------------------------------------------------------------------------

/// One row's cells; none for a row between others that is empty.
struct RowCells
{
    WorkbookCells::Iterator Begin;
    WorkbookCells::Iterator End;
};

void WriteRow(BiffStream &stream, quint32 row, const RowCells &cells)
{
    constexpr quint16 RowType = 0x0208;
    constexpr quint16 DefaultHeight = 0x00FF; // twentieths of a point
    constexpr quint16 Plain = 0x0100;
    const bool empty = cells.Begin == cells.End;
    const quint16 firstColumn = empty ? 0 : cells.Begin->Column;
    const quint16 columnsEnd = empty ? 0 : std::prev(cells.End)->Column + 1;
    stream.Words(RowType, {static_cast<quint16>(row), firstColumn, columnsEnd, DefaultHeight, 0, 0,
                           Plain, CellStyle(0)});
}

/// Writes the rows from `row` on, at most 32 of them up to `lastRow`; moves `cell` behind them.
/// Returns the position of the DBCELL.
quint32 WriteBlock(BiffStream &stream, quint32 row, quint32 lastRow, WorkbookCells::Iterator &cell,
                   WorkbookCells::Iterator end, const SharedTexts &texts)
{
    constexpr quint16 DbCellType = 0x00D7;

    std::array<RowCells, BlockRows> rows;
    const quint32 count = std::min(BlockRows, lastRow - row + 1);
    const quint32 firstRecord = stream.Position();
    quint32 secondRecord = 0;
    for (quint32 index = 0; index < count; ++index) {
        RowCells &cells = rows[index];
        cells.Begin = cell;
        while (cell != end && RowOf(*cell) == row + index)
            ++cell;
        cells.End = cell;
        WriteRow(stream, row + index, cells);
        if (index == 0)
            secondRecord = stream.Position();
    }

    std::array<quint16, BlockRows> offsets;
    quint32 before = secondRecord;
    for (quint32 index = 0; index < count; ++index) {
        offsets[index] = static_cast<quint16>(stream.Position() - before);
        before = stream.Position();
        for (auto each = rows[index].Begin; each != rows[index].End; ++each)
            WriteCell(stream, *each, texts);
    }

    const quint32 position = stream.Position();
    stream.Begin(DbCellType);
    stream.Add32(position - firstRecord);
    for (quint32 index = 0; index < count; ++index)
        stream.Add16(offsets[index]);
    stream.End();
    return position;
}

// --- columns ---------------------------------------------------------------------------------------

void WriteColumnWidths(BiffStream &stream, const WorkbookCells &cells)
{
    constexpr quint16 DefaultColumnWidth = 0x0055;
    constexpr quint16 ColumnInfo = 0x007D;
    constexpr int DefaultCharacters = 8;
    constexpr int MostCharacters = 60;

    stream.Words(DefaultColumnWidth, {DefaultCharacters});
    for (quint16 column = 0; column < WorkbookCells::ColumnCount; ++column) {
        const int characters = std::min(cells.Widths()[column], MostCharacters);
        if (characters < DefaultCharacters)
            continue;
        // In 256ths of a digit's width; capitals are wider than digits.
        const auto width = static_cast<quint16>((characters + 2) * 256 + characters * 24);
        stream.Words(ColumnInfo, {column, column, width, CellStyle(0), 0, 0});
    }
}

/// What is the same in every sheet: how it is computed and printed.
void WriteSheetSettings(BiffStream &stream)
{
    stream.Words(0x000D, {1});                              // CALCMODE: as needed
    stream.Words(0x000C, {100});                            // CALCCOUNT
    stream.Words(0x000F, {1});                              // REFMODE: A1
    stream.Words(0x0011, {0});                              // ITERATION: off
    stream.Words(0x0010, {0xA9FC, 0xD2F1, 0x624D, 0x3F50}); // DELTA: 0.001
    stream.Words(0x005F, {1});                              // SAVERECALC
    stream.Words(0x002A, {0});                              // PRINTHEADERS
    stream.Words(0x002B, {0});                              // PRINTGRIDLINES
    stream.Words(0x0082, {1});                              // GRIDSET
    stream.Words(0x0080, {0, 0, 0, 0});                     // GUTS
    stream.Words(0x0225, {0, 0x00FF});                      // DEFAULTROWHEIGHT
    stream.Words(0x0081, {0x04C1});                         // WSBOOL
    stream.Words(0x0014, {});                               // HEADER
    stream.Words(0x0015, {});                               // FOOTER
    stream.Words(0x0083, {0});                              // HCENTER
    stream.Words(0x0084, {0});                              // VCENTER
    // SETUP: the printer's own paper; half an inch for header and footer
    stream.Words(0x00A1, {0, 100, 1, 1, 1, 4, 600, 600, 0, 0, 0, 0x3FE0, 0, 0, 0, 0x3FE0, 1});
}

void WriteView(BiffStream &stream, bool isOpen)
{
    constexpr quint16 Grid = 0x00B6; // lines, headings, zeros
    constexpr quint16 Open = 0x0600;
    stream.Words(0x023E, {static_cast<quint16>(isOpen ? Grid | Open : Grid), 0, 0, 0x0040, 0, 0, 0,
                          0, 0});          // WINDOW2
    uchar *to = stream.Record(0x001D, 15); // SELECTION: the first cell
    std::fill(to, to + 15, uchar{0});
    to[0] = 3;
    to[7] = 1;
}

} // namespace

void WriteSheet(BiffStream &stream, WorkbookCells::Iterator begin, WorkbookCells::Iterator end,
                const WorkbookCells &cells, const SharedTexts &texts, bool isFirst)
{
    constexpr quint16 IndexType = 0x020B;
    constexpr quint16 DimensionsType = 0x0200;
    constexpr quint16 Eof = 0x000A;

    const bool empty = begin == end;
    const quint32 firstRow = empty ? 0 : RowOf(*begin);
    const quint32 rowsEnd = empty ? 0 : RowOf(*std::prev(end)) + 1U;
    const quint32 blockCount = (rowsEnd - firstRow + BlockRows - 1) / BlockRows;

    WriteBegin(stream, BiffPart::Sheet);
    stream.Begin(IndexType);
    stream.Add32(0);
    stream.Add32(firstRow);
    stream.Add32(rowsEnd);
    quint32 place = stream.Position(); // of the column widths, then of each DBCELL
    for (quint32 entry = 0; entry < blockCount + 1; ++entry)
        stream.Add32(0);
    stream.End();

    WriteSheetSettings(stream);
    stream.Put32(place, stream.Position());
    WriteColumnWidths(stream, cells);

    quint16 firstColumn = empty ? 0 : WorkbookCells::ColumnCount - 1;
    quint16 columnsEnd = 0;
    for (auto cell = begin; cell != end; ++cell) {
        firstColumn = std::min<quint16>(firstColumn, cell->Column);
        columnsEnd = std::max<quint16>(columnsEnd, cell->Column + 1);
    }
    stream.Begin(DimensionsType);
    stream.Add32(firstRow);
    stream.Add32(rowsEnd);
    stream.Add16(firstColumn);
    stream.Add16(columnsEnd);
    stream.Add16(0);
    stream.End();

    auto cell = begin;
    for (quint32 row = firstRow; row < rowsEnd; row += BlockRows) {
        place += 4;
        stream.Put32(place, WriteBlock(stream, row, rowsEnd - 1, cell, end, texts));
    }
    WriteView(stream, isFirst);
    stream.Words(Eof, {});
}
