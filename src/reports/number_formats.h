#pragma once

/// The number formats that a workbook uses, as codes of the file format: "." and "," in every
/// locale, "m" "d" "y" for dates.
///
///     NumberFormats formats;
///     formats.PlaceOf("#,##0.00")      1; the file format's own number for it is 4
///     formats.PlaceOf("#,##0.0000")    2; a number of ours, 164
///     formats.PlaceOf("General")       0, always

#include <QHash>
#include <QList>
#include <QString>

class NumberFormats
{
public:
    struct Entry
    {
        quint16 Number; ///< in the file; from FirstOwnNumber on the code stands in the file as well
        QString Code;
    };
    static constexpr quint16 FirstOwnNumber = 164;
    static constexpr quint16 General = 0;

    NumberFormats();

    /// The place of a code in the list; one that is not there yet is added.
    quint16 PlaceOf(const QString &code);
    const QList<Entry> &Entries() const { return m_entries; }

private:
    QList<Entry> m_entries;
    QHash<QString, quint16> m_places;
    quint16 m_nextOwnNumber = FirstOwnNumber;
};
