#include "driver/script.h"

#include "driver/failure.h"

#include <string>

namespace
{

/// The character that `escape` stands for behind a backslash.
QChar Unescaped(QChar escape)
{
    switch (escape.unicode()) {
    case '"':
    case '\\':
        return escape;
    case 'n':
        return QLatin1Char('\n');
    case 't':
        return QLatin1Char('\t');
    default:
        throw ScriptWrong(QStringLiteral("\"\\%1\" is none of \\\" \\\\ \\n and \\t").arg(escape));
    }
}

bool IsBlank(QChar character)
{
    return character == QLatin1Char(' ') || character == QLatin1Char('\t');
}

/// Reads the word that begins at `at` and moves `at` behind it.
QString ReadWord(const QString &line, qsizetype &at)
{
    QString word;
    bool quoted = false;
    for (; at < line.size() && (quoted || !IsBlank(line[at])); ++at) {
        if (line[at] == QLatin1Char('"'))
            quoted = !quoted;
        else if (quoted && line[at] == QLatin1Char('\\') && at + 1 < line.size())
            word += Unescaped(line[++at]);
        else
            word += line[at];
    }
    if (quoted)
        throw ScriptWrong(QStringLiteral("a double quote is not closed"));
    return word;
}

} // namespace

QStringList ParseLine(const QString &line)
{
    QStringList words;
    for (qsizetype at = 0; at < line.size();) {
        if (IsBlank(line[at])) {
            ++at;
            continue;
        }
        // A colour is written #rrggbb.
        const bool colorFollows = words == QStringList{QStringLiteral("color")};
        if (line[at] == QLatin1Char('#') && !colorFollows)
            break;
        words += ReadWord(line, at);
    }
    return words;
}

std::optional<ScriptLine> Script::Next()
{
    std::string bytes;
    while (std::getline(m_input, bytes)) {
        ++m_line;
        QString line = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
        if (m_line == 1 && line.startsWith(QChar::ByteOrderMark))
            line.remove(0, 1);
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        QStringList words = ParseLine(line);
        if (!words.isEmpty())
            return ScriptLine{m_line, std::move(words)};
    }
    return std::nullopt;
}
