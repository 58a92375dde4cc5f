#include "driver/commands.h"
#include "driver/failure.h"

#include <QColor>
#include <QFileInfo>

namespace
{

using Lines = QStringList;

constexpr double mostSeconds = 1e9;

Lines SetClock(Session &session, const QStringList &arguments)
{
    const QString text = arguments.join(QLatin1Char(' '));
    for (const char *format : {"yyyy-MM-dd HH:mm:ss", "yyyy-MM-dd HH:mm:ss.zzz"}) {
        const QDateTime now = QDateTime::fromString(text, QLatin1String(format));
        if (now.isValid()) {
            session.Clock().Set(now);
            return {};
        }
    }
    throw ScriptWrong(QStringLiteral("\"%1\" is no time like 2026-03-02 10:15:00").arg(text));
}

Lines Advance(Session &session, const QStringList &arguments)
{
    bool isNumber = false;
    const double seconds = arguments[0].toDouble(&isNumber);
    if (!isNumber || !(seconds >= 0 && seconds <= mostSeconds))
        throw ScriptWrong(QStringLiteral("\"%1\" is no number of seconds").arg(arguments[0]));
    session.Clock().Advance(std::chrono::milliseconds(std::llround(seconds * 1000)));
    return {};
}

Lines Launch(Session &session, const QStringList &)
{
    session.Launch();
    return {};
}

Lines Set(Session &session, const QStringList &arguments)
{
    session.SaveSetting(arguments[0], arguments[1], arguments[2]);
    return {};
}

Lines AnswerBox(Session &session, const QStringList &arguments)
{
    const std::optional<Answer> answer = AnswerNamed(arguments[0]);
    if (!answer)
        throw ScriptWrong(QStringLiteral("no button \"%1\"").arg(arguments[0]));
    session.Dialogs().QueueAnswer(*answer, arguments.value(1));
    return {};
}

std::optional<QString> PickedPath(const QString &word)
{
    if (word == QLatin1String("cancel"))
        return std::nullopt;
    return QFileInfo(word).absoluteFilePath();
}

Lines AnswerFile(Session &session, const QStringList &arguments)
{
    session.Dialogs().QueueFile(PickedPath(arguments[0]));
    return {};
}

Lines AnswerColor(Session &session, const QStringList &arguments)
{
    if (arguments[0] == QLatin1String("cancel")) {
        session.Dialogs().QueueColor(std::nullopt);
        return {};
    }
    const QColor color(arguments[0]);
    if (arguments[0].size() != 7 || !arguments[0].startsWith(QLatin1Char('#')) || !color.isValid())
        throw ScriptWrong(QStringLiteral("\"%1\" is no colour like #rrggbb").arg(arguments[0]));
    session.Dialogs().QueueColor(color.rgb() & 0xFFFFFF);
    return {};
}

Lines OpenAccountFile(Session &session, const QStringList &arguments)
{
    session.Dialogs().PickNextFile(QFileInfo(arguments[0]).absoluteFilePath());
    session.TriggerMenu(QStringLiteral("mnuFLOpenExisting"));
    return {};
}

Lines Menu(Session &session, const QStringList &arguments)
{
    session.TriggerMenu(arguments[0]);
    return {};
}

Lines Tool(Session &session, const QStringList &arguments)
{
    session.PressTool(arguments[0]);
    return {};
}

Lines Echo(Session &, const QStringList &arguments)
{
    return {arguments.join(QLatin1Char(' '))};
}

Lines Kill(Session &session, const QStringList &)
{
    session.Leave(0);
}

Lines Quit(Session &session, const QStringList &)
{
    session.Quit();
    return {};
}

} // namespace

QList<ScriptCommand> ProgramCommands()
{
    return {
        {"clock", "\"2026-03-02 10:15:00\"", 1, 2, false, SetClock},
        {"advance", "SECONDS", 1, 1, false, Advance},
        {"launch", "", 0, 0, false, Launch},
        {"set", "SECTION KEY VALUE", 3, 3, false, Set},
        {"answer", "BUTTON [\"part\"]", 1, 2, false, AnswerBox},
        {"file", "PATH|cancel", 1, 1, false, AnswerFile},
        {"color", "#rrggbb|cancel", 1, 1, false, AnswerColor},
        {"open", "PATH", 1, 1, false, OpenAccountFile},
        {"menu", "NAME", 1, 1, false, Menu},
        {"tool", "KEY", 1, 1, false, Tool},
        {"echo", "\"text\"", 0, -1, true, Echo},
        {"kill", "", 0, 0, false, Kill},
        {"quit", "", 0, 0, false, Quit},
    };
}
