#include "program/delete_options.h"

#include <QScopeGuard>

void OpenDeleteOptions(Program &program, const QString &popupEntry)
{
    CommandStates &commands = program.services.commands;
    commands.SetChecked(popupEntry, true);
    const auto uncheck = qScopeGuard([&] { commands.SetChecked(popupEntry, false); });
    program.screens.ShowModal(QStringLiteral("frmDeleteOptions"));
}
