/// Commands as state, and the rules for groups of them.

#include "platform/command_groups.h"

#include <gtest/gtest.h>

#include <QStringList>

TEST(CommandStates, OfANameThatWasNeverSetAreEnabledAndUnchecked)
{
    const CommandStates commands;
    EXPECT_TRUE(commands.Enabled("mnuFLNew"));
    EXPECT_FALSE(commands.Checked("mnuFLNew"));
    EXPECT_EQ(commands.Caption("mnuFLNew"), "");
}

TEST(CommandStates, TellOfAChangeOnceWithItsName)
{
    CommandStates commands;
    QStringList changes;
    commands.OnChange = [&changes](const QString &name) { changes << name; };
    commands.SetEnabled("UndoLast", true); // as it is
    commands.SetEnabled("UndoLast", false);
    commands.SetEnabled("UndoLast", false);
    commands.SetChecked("mnuVWHistory", true);
    commands.SetCaption("popDTSplitMode", "Normal Mode");
    EXPECT_EQ(changes, QStringList({"UndoLast", "mnuVWHistory", "popDTSplitMode"}));
    EXPECT_FALSE(commands.Enabled("UndoLast"));
    EXPECT_TRUE(commands.Checked("mnuVWHistory"));
    EXPECT_EQ(commands.Caption("popDTSplitMode"), "Normal Mode");
}

TEST(CommandStates, UncheckAGroupByTheBeginningOfItsNames)
{
    CommandStates commands;
    for (const char *name : {"mnuEXSummary", "mnuEXHistory", "mnuVWHistory"})
        commands.SetChecked(name, true);
    UncheckExcelMenuOptions(commands);
    EXPECT_FALSE(commands.Checked("mnuEXSummary"));
    EXPECT_FALSE(commands.Checked("mnuEXHistory"));
    EXPECT_TRUE(commands.Checked("mnuVWHistory"));
}

TEST(CommandStates, CanBeChangedByWhoeverHearsOfAChange)
{
    CommandStates commands;
    for (int i = 0; i < 100; ++i)
        commands.SetChecked(QString("mnuEX%1").arg(i), true);
    commands.OnChange = [&commands](const QString &name) {
        if (!name.startsWith("new"))
            commands.SetEnabled("new" + name, false);
    };
    UncheckExcelMenuOptions(commands);
    for (int i = 0; i < 100; ++i)
        EXPECT_FALSE(commands.Checked(QString("mnuEX%1").arg(i)));
}

TEST(EnableAllMenus, EnablesMenuAndPopupEntriesButNoButton)
{
    CommandStates commands;
    for (const char *name : {"mnuFLNew", "popDTUndoLast", "UndoLast"})
        commands.SetEnabled(name, false);
    EnableAllMenus(commands, true); // a rebuild is running
    EXPECT_FALSE(commands.Enabled("mnuFLNew"));
    EnableAllMenus(commands, false);
    EXPECT_TRUE(commands.Enabled("mnuFLNew"));
    EXPECT_TRUE(commands.Enabled("popDTUndoLast"));
    EXPECT_FALSE(commands.Enabled("UndoLast"));
}

TEST(DisableMenusForSignOn, LeavesScreenPrintCompactionExitAndHelp)
{
    CommandStates commands;
    DisableMenusForSignOn(commands);
    for (const char *name :
         {"mnuFLNew", "mnuFLOpenExisting", "mnuFLSaveAs", "mnuFLDatabaseOptions", "mnuFLUserSetup",
          "mnuView", "mnuExcel", "mnuCharts", "mnuInternet", "mnuWindow"})
        EXPECT_FALSE(commands.Enabled(name)) << name;
    for (const char *name : {"mnuFile", "mnuFLExit", "mnuHelp"})
        EXPECT_TRUE(commands.Enabled(name)) << name;
}

TEST(ButtonGroups, AreSwitchedTogether)
{
    CommandStates commands;
    DisableFileButtons(commands);
    DisableServiceButtons(commands);
    for (const char *name : {"New", "Open", "SaveAs", "Setup", "Connect", "Wizard", "UndoLast"})
        EXPECT_FALSE(commands.Enabled(name)) << name;
    EnableFileAndServiceButtons(commands);
    for (const char *name : {"New", "Open", "SaveAs", "Setup", "Connect", "Wizard"})
        EXPECT_TRUE(commands.Enabled(name)) << name;
    EXPECT_FALSE(commands.Enabled("UndoLast"));
}
