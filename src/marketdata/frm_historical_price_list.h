#pragma once

/// The daily prices of one security or of all, between two dates.
///
/// It opens on the security selected in the Daily Tracker, if there is one, and takes over another
/// one whenever it comes to the front. RunState::OneSymbolOnly tells whether it is restricted to
/// Selection::CurrentSymbol; combSymbolList says which rows are shown. A From date of today stands
/// for no lower bound.

#include "platform/widgets/list_grid.h"
#include "platform/widgets/recordset_source.h"
#include "program/command_target.h"
#include "program/form.h"
#include "program/list_date_range.h"
#include "program/list_refresh.h"

class DataGrid;
class QComboBox;

class frmHistoricalPriceList : public Form, public CommandTarget, public ListScreen
{
public:
    explicit frmHistoricalPriceList(Program &program);

    void Load() override;
    void Activate() override;
    void OnUnload() override;
    bool RunCommand(const QString &name) override;
    /// As its OK button; the list of the symbols follows too.
    void RefreshList() override;

    void SplitMode();
    void ChgDataGridHistoricalPriceListColor();
    /// Opens the dialog that deletes rows.
    void DeleteRowEntry();

    QSize sizeHint() const override;

private:
    void BuildControls();
    void BuildLayout();
    void ConnectControls();

    RecordsetQuery BuildHistoricalQuery();
    void FillSymbolList();
    void ShowSymbol(const QString &symbol);
    QString ShownSymbol() const;
    void cmdOK_Click();
    void combSymbolList_Click(const QString &text);
    void DataGridHistoricalPriceList_RowColChange();
    void DataGridHistoricalPriceList_HeadClick(int column);

    ListDateRange m_range;
    QComboBox *combSymbolList = nullptr;
    DataGrid *DataGridHistoricalPriceList = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdClose = nullptr;
    std::optional<GridHint> m_hint;

    Recordset AdodcHistoricalPriceList;
    RecordsetSource m_source;
    QString GridOrderBy;         ///< the clause that the rows are sorted by
    bool SortDescending = false; ///< turned over by each click on a heading, whatever the column
};
