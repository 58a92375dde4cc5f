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

namespace
{

const QString WidthsSection = QStringLiteral("ColumnWidths");
constexpr int LeastWidth = 10; ///< pixels; a narrower column could not be found again
constexpr int MostWidth = 2000;

} // namespace

QMap<QString, int> LoadColumnWidths(const SettingsStore &store, const QString &screen)
{
    QMap<QString, int> widths;
    for (const QString &entry :
         store.GetSetting(WidthsSection, screen, QString()).split(QLatin1Char(';'))) {
        const int width = entry.section(QLatin1Char('='), -1).toInt();
        if (width >= LeastWidth && width <= MostWidth)
            widths[entry.section(QLatin1Char('='), 0, -2)] = width;
    }
    return widths;
}

void StoreColumnWidths(SettingsStore &store, const QString &screen,
                       const QMap<QString, int> &widths)
{
    QStringList entries;
    for (auto width = widths.begin(); width != widths.end(); ++width)
        entries << QStringLiteral("%1=%2").arg(width.key()).arg(width.value());
    if (entries.isEmpty())
        store.DeleteSetting(WidthsSection, screen);
    else
        store.SaveSetting(WidthsSection, screen, entries.join(QLatin1Char(';')));
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

GridHint::GridHint(QWidget &grid, const QString &firstText, const QString &text)
    : m_grid(grid), m_text(text)
{
    m_grid.setToolTip(firstText);
}

void GridHint::MouseUp()
{
    constexpr int uses = 2;
    m_grid.setToolTip(++m_uses > uses ? QString() : m_text);
}
