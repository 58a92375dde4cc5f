#include "store/unreadable_value.h"

bool IsKeyColumn(const QString &field)
{
    static const QStringList keys = {QStringLiteral("TableName"),  QStringLiteral("Symbol"),
                                     QStringLiteral("TrackName"),  QStringLiteral("TransDate"),
                                     QStringLiteral("PriceDate"),  QStringLiteral("Time"),
                                     QStringLiteral("AssetClass"), QStringLiteral("WebSiteName")};
    return keys.contains(field, Qt::CaseInsensitive);
}

RuntimeError UnreadableValue(const PlaceOfValue &place, int number)
{
    constexpr qsizetype shown = 40;
    const QString text =
        place.text.size() > shown ? place.text.left(shown) + QStringLiteral("...") : place.text;
    const QString what = number == RuntimeError::OverflowNumber ? QStringLiteral("does not fit")
                                                                : QStringLiteral("is no number");
    return {number,
            QStringLiteral("Table %1, row %2, column %3: '%4' %5.")
                .arg(place.table, place.keys.join(QStringLiteral(", ")), place.column, text, what)};
}
