#include "platform/widgets/list_grid.h"

#include "platform/widgets/data_grid.h"

void SplitMode(DataGrid &grid, CommandStates &commands, const QString &popupEntry)
{
    if (grid.IsSplit())
        grid.LeaveSplit();
    else
        grid.EnterSplit();
    if (grid.IsSplit())
        commands.SetCaption(popupEntry, QStringLiteral("Undo Split"));
    else
        EndSplitMode(commands, popupEntry);
}

void EndSplitMode(CommandStates &commands, const QString &popupEntry)
{
    commands.SetCaption(popupEntry, QStringLiteral("Split Mode"));
}

bool SortByHeading(Services &services, const std::optional<QString> &clause,
                   const std::function<void(const QString &)> &sort, const QString &boxTitle)
{
    services.status.Post(QStringLiteral("Sorting on selected column, please wait..."));
    if (!clause) {
        const QString refusal = QStringLiteral("The selected column is not available for sorting");
        services.status.Post(refusal);
        services.dialogs.MsgBox(refusal, Box::Exclamation, boxTitle);
        return false;
    }
    sort(*clause);
    services.status.Post(QStringLiteral("Sort completed"));
    return true;
}

GridHint::GridHint(QWidget &grid, const QString &text) : m_grid(grid), m_text(text)
{
    m_grid.setToolTip(m_text);
}

void GridHint::MouseUp()
{
    constexpr int uses = 2;
    m_grid.setToolTip(++m_uses > uses ? QString() : m_text);
}
