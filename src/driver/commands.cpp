#include "driver/commands.h"

#include "driver/failure.h"

#include <algorithm>
#include <cstdio>

namespace
{

const QList<ScriptCommand> &AllCommands()
{
    static const QList<ScriptCommand> all = ProgramCommands() + ControlCommands() + GridCommands() +
                                            ChartCommands() + PrintingCommands();
    return all;
}

} // namespace

const ScriptCommand &FindScriptCommand(const QStringList &words)
{
    const auto kind =
        std::find_if(AllCommands().begin(), AllCommands().end(),
                     [&](const ScriptCommand &each) { return words.first() == each.name; });
    if (kind == AllCommands().end())
        throw ScriptWrong(QStringLiteral("no command \"%1\"").arg(words.first()));
    const qsizetype arguments = words.size() - 1;
    if (arguments < kind->least || (kind->most >= 0 && arguments > kind->most))
        throw ScriptWrong(QStringLiteral("usage: %1 %2").arg(kind->name, kind->usage).trimmed());
    return *kind;
}

void RunCommand(Session &session, const ScriptLine &command)
{
    Print(FindScriptCommand(command.words).run(session, command.words.mid(1)));
}

void Print(const QStringList &lines)
{
    for (const QString &line : lines) {
        std::fputs(line.toUtf8().constData(), stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}

void ReportFailure(int line, const QString &reason)
{
    std::fprintf(stderr, "line %d: %s\n", line, reason.toUtf8().constData());
    std::fflush(stderr);
}
