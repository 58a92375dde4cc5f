#include "reports/biff_stream.h"

#include <algorithm>

bool IsNarrow(QStringView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar symbol) { return symbol.unicode() <= 0xFF; });
}

void BiffStream::Begin(quint16 type)
{
    m_record = m_bytes.size();
    Add16(type);
    Add16(0);
}

void BiffStream::End()
{
    const auto length = static_cast<quint16>(RecordOffset() - HeaderSize);
    Q_ASSERT(length <= LargestRecord);
    qToLittleEndian(length, m_bytes.data() + m_record + 2);
}

void BiffStream::AddCharacters(QStringView text, bool wide)
{
    uchar *to = Grow(text.size() * (wide ? 2 : 1));
    if (wide) {
        qToLittleEndian<quint16>(text.utf16(), text.size(), to);
        return;
    }
    for (const QChar symbol : text)
        *to++ = static_cast<uchar>(symbol.unicode());
}

void BiffStream::AddShortText(QStringView text)
{
    const bool wide = !IsNarrow(text);
    Add8(static_cast<quint8>(text.size()));
    Add8(wide ? 1 : 0);
    AddCharacters(text, wide);
}

void BiffStream::AddText(QStringView text)
{
    const bool wide = !IsNarrow(text);
    Add16(static_cast<quint16>(text.size()));
    Add8(wide ? 1 : 0);
    AddCharacters(text, wide);
}

void BiffStream::Words(quint16 type, std::initializer_list<quint16> words)
{
    uchar *to = Record(type, static_cast<quint16>(words.size() * 2));
    for (const quint16 word : words) {
        qToLittleEndian(word, to);
        to += 2;
    }
}
