#pragma once

/// The realized profits and losses between two dates, by day or by symbol, with a total row behind
/// each group.
///
/// A click on a row selects its security and its ID for the commands that act on them; a click on a
/// total row leaves the security as it was. Colours of the user's choice show from the next reading
/// of the rows on.

#include "lists/profit_loss_list.h"
#include "platform/widgets/flex_cell.h"
#include "program/command_target.h"
#include "program/form.h"
#include "program/list_date_range.h"
#include "program/list_refresh.h"

#include <optional>

class FlexGrid;

class frmDailyProfitLoss : public Form, public CommandTarget, public ListScreen
{
public:
    explicit frmDailyProfitLoss(Program &program);

    void Load() override;
    void OnUnload() override;
    bool RunCommand(const QString &name) override;
    /// Reads the rows of the pickers' range and fills the grid.
    void ReloadFlexGrid();
    /// Those of the range read last, whatever the pickers show meanwhile: what was realized today is
    /// behind the newest row that the screen opened on.
    void RefreshList() override;
    void ChgMSHFlexGridPLColor();
    /// Opens the dialog that deletes rows, for the current row.
    void DeleteRowEntry();

    QSize sizeHint() const override;

private:
    void BuildControls();
    void BuildLayout();
    void ConnectControls();

    FlexCell CellOf(int row, int column) const;
    void MakeRoomForAmounts();
    const ProfitLossLine *CurrentLine() const;
    void MSHFlexGridPL_Click();
    void MSHFlexGridPL_HeadClick(int column);

    QDate m_pickedFrom; ///< its own: days of realized profits say nothing about those of prices
    QDate m_pickedTo;
    ListDateRange m_range;
    FlexGrid *MSHFlexGridPL = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdClose = nullptr;

    QDate m_readFrom; ///< the range of the rows that are shown
    QDate m_readTo;
    std::vector<ProfitLossLine> m_lines;
    std::optional<QRgb> m_rowColor; ///< of the rows as they were filled; none: the grid's
    QRgb m_totalColor = 0;
    QString ProfitLossOrderBy; ///< the clause that the rows are sorted by
    ProfitLossGroup SortColumn = ProfitLossGroup::Date;
    bool SortDescending = false; ///< of the next click on a heading
};
