#pragma once

/// What the grids of the list screens have in common: split mode, a colour of the user's choice,
/// sorting by a heading, column widths that are remembered, and a hint that goes away.
///
///     void Load() override   { ... RestoreColumnWidths(*grid, services.settingsStore, objectName()); }
///     void OnUnload() override { ... SaveColumnWidths(*grid, services.settingsStore, objectName()); }

#include "platform/services.h"
#include "platform/widgets/colors.h"

#include <QMap>

#include <functional>
#include <optional>

class DataGrid;
class QWidget;

/// Divides the grid into two panes, its Symbol column on the left, or makes it one again. The
/// caption of the screen's popup entry says what the next call does: "Split Mode" or "Undo Split".
void SplitMode(DataGrid &grid, CommandStates &commands, const QString &popupEntry);
/// When the screen goes: its next opening starts with one pane.
void EndSplitMode(CommandStates &commands, const QString &popupEntry);

/// The grid takes the colour that the setting holds; a setting of 0, not yet chosen, takes the
/// colour that the grid has. Where both are the same, the grid goes on following its desktop.
template <class Grid>
void ApplyGridColor(Grid &grid, double &setting)
{
    if (setting == 0)
        setting = ValueOfColor(grid.BackColor());
    else if (grid.BackColor() != ColorOfValue(setting))
        grid.SetBackColor(ColorOfValue(setting));
}

/// Asks for a colour, for grid and setting; false when the dialog was cancelled.
template <class Grid>
bool ChooseGridColor(Grid &grid, double &setting, Dialogs &dialogs)
{
    const std::optional<Rgb> color = dialogs.PickColor(grid.BackColor() & RGB_MASK);
    if (!color)
        return false;
    grid.SetBackColor(*color | ~RGB_MASK);
    setting = ValueOfColor(*color);
    return true;
}

/// The widths that the user gave to columns, by the names the grid has for them: "Symbol=80;Name=210"
/// in the section ColumnWidths, under the name of the screen.
QMap<QString, int> LoadColumnWidths(const SettingsStore &store, const QString &screen);
void StoreColumnWidths(SettingsStore &store, const QString &screen,
                       const QMap<QString, int> &widths);

/// The grid, once it has its columns, gets the widths that its screen was closed with.
template <class Grid>
void RestoreColumnWidths(Grid &grid, const SettingsStore &store, const QString &screen)
{
    grid.SetUserWidths(LoadColumnWidths(store, screen));
}

template <class Grid>
void SaveColumnWidths(const Grid &grid, SettingsStore &store, const QString &screen)
{
    StoreColumnWidths(store, screen, grid.UserWidths());
}

/// A click on a heading: calls `sort` with the clause that the column sorts by and tells of it in
/// the status bar. Without one, false: the user is told so there and in a box of this title.
bool SortByHeading(Services &services, const std::optional<QString> &clause,
                   const std::function<void(const QString &)> &sort, const QString &boxTitle);

/// A beginner's tool tip: there for the first two mouse clicks, then it goes; whoever has clicked
/// so often knows. Another text may stand there until the first of them.
class GridHint
{
public:
    GridHint(QWidget &grid, const QString &text) : GridHint(grid, text, text) {}
    GridHint(QWidget &grid, const QString &firstText, const QString &text);
    void MouseUp();

private:
    QWidget &m_grid;
    QString m_text;
    int m_uses = 0;
};
