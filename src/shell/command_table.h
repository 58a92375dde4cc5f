#pragma once

/// Every command of the main window as data: the menu tree, the popup menus of the screens, and the
/// toolbar.
///
///     {"mnuVWHistory", "Transaction &History", "mnuView", Entry, Toggle, "frmHistoryList"}
///
/// A row stands behind its parent; rows of one parent are in the order in which they are shown.
/// CommandStates holds what changes (caption, enabled, checked); this table never does.

#include "platform/command_states.h"

#include <QString>

#include <span>

enum class CommandKind
{
    Menu,  ///< of the menu bar, or of the menu it names as parent
    Popup, ///< shown by a screen at the mouse
    Entry,
    Separator,
    Button ///< of the toolbar
};

/// What an entry does; `target` of the row says to what.
enum class CommandVerb
{
    None,        ///< menus and separators
    Own,         ///< has a routine of its own, found by its name
    Toggle,      ///< opens the target screen, checked while it is open
    ModalScreen, ///< shows the target screen modally
    Report,      ///< checks itself and shows the target dialog modally, which reads the check
    Chart,       ///< checks itself and shows the chart screen, which reads the check
    Link,        ///< opens a page in the external browser
    Arrange,     ///< arranges the open screens: target 0, 1 or 2
    ToScreen,    ///< the target screen carries it out
    Forward      ///< does as the target entry
};

struct Command
{
    const char *name;
    const char *caption;
    const char *parent; ///< empty: menu bar or toolbar
    CommandKind kind;
    CommandVerb verb = CommandVerb::None;
    const char *target = "";
    const char *shortcut = ""; ///< "Ctrl+N"; besides the mnemonic

    QString Name() const { return QString::fromUtf8(name); }
    QString Caption() const { return QString::fromUtf8(caption); }
    QString Parent() const { return QString::fromUtf8(parent); }
    QString Target() const { return QString::fromUtf8(target); }
};

std::span<const Command> CommandTable();
/// Nothing when there is no command of this name.
const Command *FindCommand(const QString &name);

/// Enters every command with its caption, unchecked, and enabled but for UndoLast.
void RegisterCommands(CommandStates &states);
/// Whether the user can reach the command: it is enabled, and so are the menus above it.
bool CommandUsable(const CommandStates &states, const QString &name);
/// "&Database Options..." as a text: "Database Options".
QString PlainCaption(const QString &caption);
