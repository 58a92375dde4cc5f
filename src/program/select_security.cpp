#include "program/select_security.h"

void SelectSecurity(Program &program, const QString &symbol)
{
    Selection &selection = program.selection;
    if (selection.CurrentSymbol == symbol)
        return;
    selection.CurrentSymbol = symbol;
    selection.CurrentName.clear();
    const TrackerRecordset &rows = program.AdodcStockHistory; // whose cursor stays where it is
    for (int row = 0; row < rows.RecordCount(); ++row)
        if (rows.At(row).Symbol == symbol)
            selection.CurrentName = rows.At(row).Name;
    if (program.ShowSelection)
        program.ShowSelection();
    if (program.SelectionChanged)
        program.SelectionChanged();
}
