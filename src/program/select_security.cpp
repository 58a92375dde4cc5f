#include "program/select_security.h"

namespace
{

/// The cursor of the rows stays where it is.
QString NameOfPosition(const TrackerRecordset &rows, const QString &symbol)
{
    QString name;
    for (int row = 0; row < rows.RecordCount(); ++row)
        if (rows.At(row).Symbol == symbol)
            name = rows.At(row).Name;
    return name;
}

} // namespace

void SelectSecurity(Program &program, const QString &symbol, const std::optional<QString> &name)
{
    Selection &selection = program.selection;
    const bool isOther = selection.CurrentSymbol != symbol;
    if (name)
        selection.CurrentName = *name;
    if (!isOther)
        return;
    selection.CurrentSymbol = symbol;
    if (!name)
        selection.CurrentName = NameOfPosition(program.AdodcStockHistory, symbol);
    if (program.ShowSelection)
        program.ShowSelection();
    if (program.SelectionChanged)
        program.SelectionChanged();
}
