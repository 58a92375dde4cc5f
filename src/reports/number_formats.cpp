#include "reports/number_formats.h"

#include <array>

namespace
{

struct KnownFormat
{
    quint16 Number;
    const char *Code;
};

/// Those that every reader knows by their number. 14 and 22 follow the reader's locale.
constexpr std::array KnownFormats{
    KnownFormat{0, "General"},   KnownFormat{1, "0"},           KnownFormat{2, "0.00"},
    KnownFormat{3, "#,##0"},     KnownFormat{4, "#,##0.00"},    KnownFormat{9, "0%"},
    KnownFormat{10, "0.00%"},    KnownFormat{11, "0.00E+00"},   KnownFormat{14, "m/d/yyyy"},
    KnownFormat{15, "d-mmm-yy"}, KnownFormat{18, "h:mm AM/PM"}, KnownFormat{19, "h:mm:ss AM/PM"},
    KnownFormat{20, "h:mm"},     KnownFormat{21, "h:mm:ss"},    KnownFormat{22, "m/d/yyyy h:mm"}};

} // namespace

NumberFormats::NumberFormats()
{
    PlaceOf(QStringLiteral("General"));
}

quint16 NumberFormats::PlaceOf(const QString &code)
{
    const auto found = m_places.constFind(code);
    if (found != m_places.constEnd())
        return *found;
    Entry entry{0, code};
    bool known = false;
    for (const KnownFormat &format : KnownFormats) {
        if (code == QLatin1String(format.Code)) {
            entry.Number = format.Number;
            known = true;
        }
    }
    if (!known)
        entry.Number = m_nextOwnNumber++;
    const auto place = static_cast<quint16>(m_entries.size());
    m_entries.append(entry);
    m_places.insert(code, place);
    return place;
}
