#include "program/security_screen.h"

#include "platform/command_groups.h"

namespace
{

void ShowChecked(Program &program, const QString &entry)
{
    CommandStates &commands = program.services.commands;
    UncheckPopMenuOptions(commands);
    commands.SetChecked(entry, true);
    program.screens.ShowModal(QStringLiteral("frmSecurityUpdate"));
    UncheckPopMenuOptions(commands);
}

} // namespace

void ShowNewSecurityScreen(Program &program)
{
    ShowChecked(program, QStringLiteral("popDTNew"));
}

void ShowEditSecurityScreen(Program &program)
{
    ShowChecked(program, QStringLiteral("popDTEdit"));
}
