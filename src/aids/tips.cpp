#include "aids/tips.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>

namespace
{

const QString tipFileName = QStringLiteral("TIPOFDAY.TXT");

/// A file of another kind may be one long line, which a label would take minutes to lay out.
constexpr qsizetype LongestTip = 50'000;

/// People write this file with whatever editor they have.
QString Decoded(const QByteArray &bytes)
{
    QStringDecoder decoder(
        QStringConverter::encodingForData(bytes).value_or(QStringConverter::Utf8));
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

} // namespace

QString TipFile(const QString &appPath)
{
    return appPath + QLatin1Char('/') + tipFileName;
}

std::optional<QStringList> LoadTips(const QString &path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QString text = Decoded(file.readAll());
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\n|\r"));
    QStringList tips = text.split(lineEnd);
    if (tips.constLast().isEmpty()) // the last line's end begins no further line
        tips.removeLast();
    for (QString &tip : tips)
        if (tip.size() > LongestTip)
            tip = tip.left(LongestTip) + QChar(0x2026);
    return tips;
}

int NextTip(int currentTip, int count)
{
    return currentTip < 0 || currentTip >= count ? 1 : currentTip + 1;
}

QString TipText(const QStringList &tips, int number)
{
    return tips.value(number - 1);
}

QString TipsNotFoundText()
{
    return QStringLiteral("That the ") + tipFileName +
           QStringLiteral(" file was not found? \nCreate a text file named ") + tipFileName +
           QStringLiteral(" using NotePad with 1 tip per line. "
                          "Then place it in the same directory as the application. ");
}
