// The text table is one long content, cut into records of 8,224 bytes.
//
// The head of a text (length and width of its characters) is never cut; its characters may go on
// in the next record, which then begins with the width again. A pair of surrogates stays together,
// since readers decode each piece on its own.

#include "reports/shared_texts.h"

#include "reports/biff_stream.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr quint16 SstType = 0x00FC;
constexpr quint16 ExtSstType = 0x00FF;

constexpr qsizetype HeadSize = 3;
constexpr qsizetype LargestCharacter = 4; // a pair of surrogates

/// Where a text begins, for readers that look for one of them.
struct TextPosition
{
    quint32 InStream;
    quint16 InRecord;
};

void ContinueRecord(BiffStream &stream)
{
    stream.End();
    stream.Begin(BiffStream::ContinueType);
}

TextPosition WriteText(BiffStream &stream, QStringView text)
{
    if (stream.Room() < HeadSize + LargestCharacter)
        ContinueRecord(stream);
    const TextPosition position{stream.Position(), static_cast<quint16>(stream.RecordOffset())};

    const bool wide = !IsNarrow(text);
    stream.Add16(static_cast<quint16>(text.size()));
    stream.Add8(wide ? 1 : 0);
    for (;;) {
        qsizetype count = std::min(text.size(), stream.Room() / (wide ? 2 : 1));
        if (count < text.size() && text[count - 1].isHighSurrogate())
            --count;
        stream.AddCharacters(text.first(count), wide);
        text = text.sliced(count);
        if (text.isEmpty())
            return position;
        ContinueRecord(stream);
        stream.Add8(wide ? 1 : 0);
    }
}

} // namespace

SharedTexts::SharedTexts(const WorkbookCells &cells)
    : m_places(static_cast<std::size_t>(cells.Texts().size()), std::numeric_limits<quint32>::max())
{
    m_texts.reserve(m_places.size());
    for (const WorkbookCell &cell : cells) {
        if (cell.Kind != WorkbookCell::Kinds::Text)
            continue;
        ++m_cellCount;
        quint32 &place = m_places[cell.Text];
        if (place == std::numeric_limits<quint32>::max()) {
            place = static_cast<quint32>(m_texts.size());
            m_texts.push_back(&cells.Texts()[cell.Text]);
        }
    }
}

void SharedTexts::Write(BiffStream &stream) const
{
    // At most 128 entries in the index, each for 8 texts or more.
    const std::size_t step = std::max<std::size_t>(8, m_texts.size() / 128 + 1);
    std::vector<TextPosition> index;

    stream.Begin(SstType);
    stream.Add32(m_cellCount);
    stream.Add32(static_cast<quint32>(m_texts.size()));
    for (std::size_t text = 0; text < m_texts.size(); ++text) {
        const TextPosition position = WriteText(stream, *m_texts[text]);
        if (text % step == 0)
            index.push_back(position);
    }
    stream.End();

    stream.Begin(ExtSstType);
    stream.Add16(static_cast<quint16>(step));
    for (const TextPosition &position : index) {
        stream.Add32(position.InStream);
        stream.Add16(position.InRecord);
        stream.Add16(0);
    }
    stream.End();
}
