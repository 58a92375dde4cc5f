#pragma once

/// The working screen of an account: a row for each security, the totals below, and the commands
/// that act on the row selected.
///
/// While it is loaded it keeps open what postings and price cycles work on: the position rows
/// (Program::AdodcStockHistory) and the purchase lots (Program::gRsLots). It fills in
/// Program::UpdatePortfolioTotals and Program::ReloadDataGrid, by which they reach the screen, and
/// Program::ShowSelection, by which a list screen does that selects a security.
///
/// The marked row of the grid is that of Selection::CurrentSymbol, in whatever order the rows
/// come. During a price cycle and a posting the selection stays put, and the cursor of the rows is
/// theirs; otherwise it follows the grid. A row without a symbol can be marked and is no selection: the
/// last one stays. Edit, Delete and Clear act on the marked row, all other commands on the selection.

#include "platform/widgets/list_grid.h"
#include "program/command_target.h"
#include "program/form.h"
#include "tracking/frm_daily_tracker_grid.h"
#include "transactions/undo.h"

class DataGrid;
class FlexGrid;
class QLabel;

class frmDailyTracker : public Form, public CommandTarget
{
public:
    explicit frmDailyTracker(Program &program);

    void ShowHelp() override;
    void Load() override;
    /// Unless its entry in the View menu has lost its mark (a reload): offers to take a clear or
    /// delete back, and makes final what is left of it. False, after a box, when that cannot be
    /// written: everything stays pending, and the screen open.
    bool QueryUnload() override;
    /// Likewise unless it is a reload: writes the balances of today.
    void OnUnload() override;
    bool RunCommand(const QString &name) override;

    /// Values the rows, offers the ToDate reset when it is due, and shows rows and totals.
    void ReloadDataGrid();
    void UpdatePortfolioTotals();

    /// Each asks first and leaves its transaction open for Undo Last.
    void ClearRowEntry();
    void DeleteRowEntry();

    void SplitMode();
    void ChgDataGridStockColor();
    void ChgMSHFlexGridTotalsColor();

    QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void BuildGrids();
    void BuildTotals();
    void ApplyColors();
    void ShowDataGridColor();
    void BuildGridQuery();
    void OpenTransactionRecordsets();
    void CloseTransactionRecordsets();
    void SetHooks();
    void ClearHooks();

    bool RowsAreBusy() const;
    void DataGridStock_RowColChange();
    void DataGridStock_DblClick();
    void NewSecurity();
    void EditSecurity();
    void DataGridStock_HeadClick(int column);
    /// Shows the rows anew; the same row stays marked.
    void RefreshRows();
    void ShowSelection();
    bool MarkRowOf(const QString &symbol);

    /// The row that the grid marks; nothing in an empty grid.
    const TrackerRow *MarkedRow() const;
    /// The marked row becomes the current one of the rows, once the user has said Yes to `question`,
    /// which names it by its symbol, or by its name if it has none. Nothing without such a row.
    std::optional<TrackerRow> TakeConfirmedRow(const QString &question);
    void ShowAfter(const std::function<void()> &change);
    UndoOutcome UndoLast();
    void WriteDailyBalances();

    TrackerGridSource m_source;
    DataGrid *m_dataGridStock = nullptr;
    QLabel *m_lblGrandTotal = nullptr;
    FlexGrid *m_flexGridTotals = nullptr;
    bool m_isRefreshing = false; ///< moves of the grid's current row are not the user's
    /// Of the marked row while that has no symbol, but a blank: it is no selection.
    std::optional<QString> m_markedBlank;

    QString GridOrderBy;         ///< the clause that the rows are sorted by
    bool SortDescending = false; ///< turned over by each click on a heading, whatever the column
    bool FormLoading = false;
    std::optional<GridHint> m_hint;
};
