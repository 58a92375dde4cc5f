#include "base/character_shift.h"

#include "base/runtime_error.h"

namespace
{

QString Shift(const QString &text, int distance)
{
    QString shifted;
    shifted.reserve(text.size());
    for (const QChar character : text) {
        const int code = character.unicode();
        const int moved = code + distance;
        if (code > 255 || moved < 0 || moved > 255)
            throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                               QStringLiteral("Invalid procedure call or argument"));
        shifted.append(QChar(moved));
    }
    return shifted;
}

} // namespace

QString ShiftUp(const QString &text)
{
    return Shift(text, 3);
}

QString ShiftDown(const QString &text)
{
    return Shift(text, -3);
}
