#pragma once

/// The rules for groups of commands: what is enabled while something runs, and which marks go
/// together.

#include "platform/command_states.h"

/// While prices are fetched: New, Open, SaveAs, Setup.
void DisableFileButtons(CommandStates &commands);
/// While prices are fetched: of the menus only screen print, Exit and Help stay in use.
void DisableMenusForPriceUpdate(CommandStates &commands);
/// The buttons above, and Connect and Wizard.
void EnableFileAndServiceButtons(CommandStates &commands);
/// Connect, Wizard, UndoLast.
void DisableServiceButtons(CommandStates &commands);

/// Every menu and popup entry, unless a rebuild is running.
void EnableAllMenus(CommandStates &commands, bool rebuildRunning);
/// After a sign-on that was cancelled: of the menus only screen print, compaction, Exit and Help
/// stay in use.
void DisableMenusForSignOn(CommandStates &commands);

/// The buttons that work on the open account. New and Open lead to another one, also after a sign-on
/// that was cancelled.
void SetAccountButtonsEnabled(CommandStates &commands, bool enabled);

/// Each clears the marks of one group of entries.
void UncheckExcelMenuOptions(CommandStates &commands);
void UncheckInternetMenuOptions(CommandStates &commands);
void UncheckPopMenuOptions(CommandStates &commands);
void UncheckChartMenuOptions(CommandStates &commands);
void UncheckWinMenuOptions(CommandStates &commands);
