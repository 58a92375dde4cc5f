#include "platform/command_groups.h"

#include <initializer_list>

namespace
{

void SetEnabled(CommandStates &commands, std::initializer_list<const char *> names, bool enabled)
{
    for (const char *name : names)
        commands.SetEnabled(QString::fromUtf8(name), enabled);
}

} // namespace

void DisableFileButtons(CommandStates &commands)
{
    SetEnabled(commands, {"New", "Open", "SaveAs", "Setup"}, false);
}

void DisableMenusForPriceUpdate(CommandStates &commands)
{
    DisableMenusForSignOn(commands);
    SetEnabled(commands, {"mnuFLCompactDBA"}, false);
}

void EnableFileAndServiceButtons(CommandStates &commands)
{
    SetEnabled(commands, {"New", "Open", "SaveAs", "Setup", "Connect", "Wizard"}, true);
}

void DisableServiceButtons(CommandStates &commands)
{
    SetEnabled(commands, {"Connect", "Wizard", "UndoLast"}, false);
}

void EnableAllMenus(CommandStates &commands, bool rebuildRunning)
{
    if (!rebuildRunning)
        commands.EnableAllMenuEntries();
}

void DisableMenusForSignOn(CommandStates &commands)
{
    SetEnabled(commands,
               {"mnuFLNew", "mnuFLOpenExisting", "mnuFLSaveAs", "mnuFLDatabaseOptions",
                "mnuFLUserSetup", "mnuView", "mnuExcel", "mnuCharts", "mnuInternet", "mnuWindow"},
               false);
}

void SetAccountButtonsEnabled(CommandStates &commands, bool enabled)
{
    SetEnabled(commands, {"Connect", "SaveAs", "Setup", "Wizard", "SplitScreen"}, enabled);
}

void UncheckExcelMenuOptions(CommandStates &commands)
{
    commands.UncheckGroup(QStringLiteral("mnuEX"));
}

void UncheckInternetMenuOptions(CommandStates &commands)
{
    commands.UncheckGroup(QStringLiteral("mnuInt"));
}

void UncheckPopMenuOptions(CommandStates &commands)
{
    commands.UncheckGroup(QStringLiteral("popDT"));
}

void UncheckChartMenuOptions(CommandStates &commands)
{
    commands.UncheckGroup(QStringLiteral("mnuChart"));
}

void UncheckWinMenuOptions(CommandStates &commands)
{
    commands.UncheckGroup(QStringLiteral("mnuWin"));
}
