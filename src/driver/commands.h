#pragma once

/// The commands of the driver's language, by name.
///
/// A printing command gives lines; any other gives none. Each throws Failure (driver/failure.h),
/// and lets ProgramEnded pass when the program ended in it.

#include "driver/script.h"
#include "driver/session.h"

#include <QList>
#include <QStringList>

struct ScriptCommand
{
    const char *name;
    const char *usage; ///< its arguments, as a reader writes them
    int least;         ///< number of arguments
    int most;          ///< -1: any number
    bool prints;
    QStringList (*run)(Session &session, const QStringList &arguments);
};

/// Clock, start and end, answers, menus and toolbar.
QList<ScriptCommand> ProgramCommands();
/// What is done to single controls and forms.
QList<ScriptCommand> ControlCommands();
QList<ScriptCommand> GridCommands();
QList<ScriptCommand> ChartCommands();
/// What prints, and `expect`.
QList<ScriptCommand> PrintingCommands();

/// Throws ScriptWrong for an unknown name or a wrong number of arguments.
const ScriptCommand &FindScriptCommand(const QStringList &words);

/// Carries out one command and prints its lines.
void RunCommand(Session &session, const ScriptLine &command);

/// Writes lines to standard output at once.
void Print(const QStringList &lines);
/// Writes the reason to standard error with the number of the script's line.
void ReportFailure(int line, const QString &reason);
