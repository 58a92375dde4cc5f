#include "reports/biff_book.h"

#include "reports/biff_sheet.h"
#include "reports/biff_stream.h"
#include "reports/number_formats.h"
#include "reports/shared_texts.h"

#include <algorithm>
#include <vector>

namespace
{

/// Fifteen styles come before those of the cells, as readers expect.
constexpr quint16 StyleCount = 15;

void WriteBookSettings(BiffStream &stream)
{
    constexpr quint16 Utf16 = 0x04B0;
    stream.Words(0x00E1, {Utf16}); // INTERFACEHDR
    stream.Words(0x00C1, {0});     // MMS
    stream.Words(0x00E2, {});      // INTERFACEEND

    stream.Begin(0x005C); // WRITEACCESS: who wrote it, 112 bytes
    const QString writer = QStringLiteral("Quillon").leftJustified(109);
    stream.AddText(writer);
    stream.End();

    stream.Words(0x0042, {Utf16}); // CODEPAGE
    stream.Words(0x0161, {0});     // DSF
    stream.Words(0x009C, {14});    // FNGROUPCOUNT
    stream.Words(0x0019, {0});     // WINDOWPROTECT
    stream.Words(0x0012, {0});     // PROTECT
    stream.Words(0x0013, {0});     // PASSWORD
    stream.Words(0x01AF, {0});     // PROT4REV
    stream.Words(0x01BC, {0});     // PROT4REVPASS
    // WINDOW1: place and size in twentieths of a point, the first sheet open
    stream.Words(0x003D, {0x0168, 0x010E, 0x5C3A, 0x3ABE, 0x0038, 0, 0, 1, 0x0258});
    stream.Words(0x0040, {0}); // BACKUP
    stream.Words(0x008D, {0}); // HIDEOBJ
    stream.Words(0x0022, {0}); // DATEMODE: days from 1900
    stream.Words(0x000E, {1}); // PRECISION: full
    stream.Words(0x01B7, {0}); // REFRESHALL
    stream.Words(0x00DA, {0}); // BOOKBOOL
}

void WriteFonts(BiffStream &stream)
{
    constexpr quint16 FontType = 0x0031;
    constexpr quint16 TenPoints = 200;
    constexpr quint16 WindowText = 0x7FFF;
    constexpr quint16 Normal = 400;
    for (int font = 0; font < 4; ++font) { // the least a book has
        stream.Begin(FontType);
        for (const quint16 word : {TenPoints, quint16{0}, WindowText, Normal, quint16{0}})
            stream.Add16(word);
        stream.Add32(0); // underline, family, character set
        stream.AddShortText(u"Arial");
        stream.End();
    }
}

void WriteNumberFormats(BiffStream &stream, const NumberFormats &formats)
{
    constexpr quint16 FormatType = 0x041E;
    for (const NumberFormats::Entry &entry : formats.Entries()) {
        if (entry.Number < NumberFormats::FirstOwnNumber)
            continue;
        stream.Begin(FormatType);
        stream.Add16(entry.Number);
        stream.AddText(entry.Code);
        stream.End();
    }
}

void WriteStyles(BiffStream &stream, const NumberFormats &formats)
{
    constexpr quint16 XfType = 0x00E0;
    constexpr quint16 StyleType = 0x0293;
    constexpr quint16 OfStyle = 0xFFF5; // locked; no parent
    constexpr quint16 OfCell = 0x0001;  // locked; style 0 is the parent
    constexpr quint16 Bottom = 0x0020;
    constexpr quint16 NoOwnAttributes = 0xF400; // in the high byte of its word
    constexpr quint16 OwnFormat = 0x0400;
    constexpr quint16 NoPattern = 0x20C0;
    const auto style = [&stream](quint16 numberFormat, quint16 kind, quint16 attributes) {
        stream.Words(XfType, {0, numberFormat, kind, Bottom, attributes, 0, 0, 0, 0, NoPattern});
    };
    for (quint16 index = 0; index < StyleCount; ++index)
        style(0, OfStyle, index == 0 ? 0 : NoOwnAttributes);
    for (const NumberFormats::Entry &entry : formats.Entries())
        style(entry.Number, OfCell, entry.Number == 0 ? 0 : OwnFormat);
    stream.Words(StyleType, {0x8000, 0xFF00}); // style 0 is "Normal"
}

} // namespace

quint16 CellStyle(quint16 format)
{
    return StyleCount + format;
}

void WriteBegin(BiffStream &stream, BiffPart part)
{
    constexpr quint16 Bof = 0x0809;
    constexpr quint16 Biff8 = 0x0600;
    stream.Words(Bof, {Biff8, static_cast<quint16>(part), 0x0DBB, 0x07CC, 0x0041, 0, 0x0006, 0});
}

QByteArray BiffBook(const WorkbookCells &cells, const NumberFormats &formats)
{
    constexpr quint16 BoundSheet = 0x0085;
    constexpr quint16 Eof = 0x000A;
    constexpr qsizetype SmallestStream = 4096;
    constexpr qsizetype BytesPerCell = 24; // of the largest, with its share of the row

    const SharedTexts texts(cells);
    const quint32 lastRow = cells.Count() == 0 ? 0 : std::prev(cells.end())->Row;
    const quint32 sheetCount = lastRow / WorkbookCells::SheetRows + 1;

    BiffStream stream;
    stream.Reserve(static_cast<qsizetype>(cells.Count()) * BytesPerCell);
    WriteBegin(stream, BiffPart::Globals);
    WriteBookSettings(stream);
    WriteFonts(stream);
    WriteNumberFormats(stream, formats);
    WriteStyles(stream, formats);
    stream.Words(0x0160, {0}); // USESELFS

    std::vector<quint32> sheetPlaces;
    for (quint32 sheet = 0; sheet < sheetCount; ++sheet) {
        stream.Begin(BoundSheet);
        sheetPlaces.push_back(stream.Position());
        stream.Add32(0);
        stream.Add16(0);
        stream.AddShortText(QStringLiteral("Sheet%1").arg(sheet + 1));
        stream.End();
    }
    stream.Words(0x008C, {1, 1}); // COUNTRY
    texts.Write(stream);
    stream.Words(Eof, {});

    auto begin = cells.begin();
    for (quint32 sheet = 0; sheet < sheetCount; ++sheet) {
        const auto end = std::partition_point(begin, cells.end(), [&](const WorkbookCell &cell) {
            return cell.Row / WorkbookCells::SheetRows <= sheet;
        });
        stream.Put32(sheetPlaces[sheet], stream.Position());
        WriteSheet(stream, begin, end, cells, texts, sheet == 0);
        begin = end;
    }
    // Compound files keep streams of less than 4,096 bytes apart, where not all readers look.
    QByteArray book = stream.Bytes();
    book.resize(std::max(book.size(), SmallestStream), '\0');
    return book;
}
