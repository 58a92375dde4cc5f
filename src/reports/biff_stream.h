#pragma once

/// The records of a BIFF8 stream as they are written one behind the other: a type, a length and that
/// many bytes, numbers with the low byte first.
///
///     BiffStream stream;
///     stream.Words(0x0022, {0});              a record of one 16-bit word
///     stream.Begin(0x0031);                   a record of any content
///     stream.Add16(200);
///     stream.AddShortText(u"Arial");
///     stream.End();

#include <QByteArray>
#include <QStringView>
#include <QtEndian>

#include <initializer_list>

class BiffStream
{
public:
    /// What a record can hold; longer content goes on in records of the type ContinueType.
    static constexpr qsizetype LargestRecord = 8224;
    static constexpr quint16 ContinueType = 0x003C;
    static constexpr qsizetype HeaderSize = 4;

    /// Makes room at once for what is to come.
    void Reserve(qsizetype bytes) { m_bytes.reserve(bytes); }

    void Begin(quint16 type);
    void End();
    void Add8(quint8 value) { *Grow(1) = value; }
    void Add16(quint16 value) { qToLittleEndian(value, Grow(2)); }
    void Add32(quint32 value) { qToLittleEndian(value, Grow(4)); }
    /// Characters without a length: one byte each, or two when `wide`.
    void AddCharacters(QStringView text, bool wide);
    /// A text with its length in 8 or in 16 bits, of at most 255 or 65,535 characters.
    void AddShortText(QStringView text);
    void AddText(QStringView text);

    /// A whole record of 16-bit words.
    void Words(quint16 type, std::initializer_list<quint16> words);
    /// A whole record; its `size` bytes are for the caller to fill, before the next call.
    uchar *Record(quint16 type, quint16 size)
    {
        uchar *header = Grow(HeaderSize + size);
        qToLittleEndian(type, header);
        qToLittleEndian(size, header + 2);
        return header + HeaderSize;
    }

    /// Where the next byte goes, counted from the begin of the stream.
    quint32 Position() const { return static_cast<quint32>(m_bytes.size()); }
    /// Bytes from the begun record's header on.
    quint32 RecordOffset() const { return Position() - static_cast<quint32>(m_record); }
    /// Bytes that the begun record can still take.
    qsizetype Room() const { return LargestRecord + HeaderSize - RecordOffset(); }
    /// Fills in what was not yet known when it was written.
    void Put32(quint32 position, quint32 value)
    {
        qToLittleEndian(value, m_bytes.data() + position);
    }

    const QByteArray &Bytes() const { return m_bytes; }

private:
    uchar *Grow(qsizetype bytes)
    {
        const qsizetype at = m_bytes.size();
        m_bytes.resize(at + bytes);
        return reinterpret_cast<uchar *>(m_bytes.data()) + at;
    }

    QByteArray m_bytes;
    qsizetype m_record = 0;
};

/// Whether all characters fit a byte.
bool IsNarrow(QStringView text);
