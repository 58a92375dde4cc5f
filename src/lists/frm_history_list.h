#pragma once

/// The transactions of the account in a range of dates, where date and time can be corrected.
///
/// It opens on all of them, with the dates of the oldest and the newest in its pickers; other dates
/// take effect with OK and with the next sort. Correcting a transaction moves nothing else: the
/// positions follow when the account is rebuilt from its history.

#include "lists/history_list.h"
#include "platform/widgets/list_grid.h"
#include "platform/widgets/recordset_source.h"
#include "program/command_target.h"
#include "program/form.h"
#include "program/list_date_range.h"
#include "program/list_refresh.h"

class DataGrid;
class QLineEdit;

class frmHistoryList : public Form, public CommandTarget, public ListScreen
{
public:
    explicit frmHistoryList(Program &program);

    void Load() override;
    void OnUnload() override;
    bool RunCommand(const QString &name) override;
    /// The transaction that was current stays so, if it is still there. While one is being edited
    /// the rows wait until it is stored.
    void RefreshList() override;

    void SplitMode();
    void ChgDataGridHistoryListColor();
    /// Opens the dialog that deletes rows, for the current one.
    void DeleteRowEntry();

    QSize sizeHint() const override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void BuildControls();
    void BuildLayout();
    void ConnectControls();
    void ConnectGrid();

    void ReadHistory();
    void ShowHistory();
    QDate DateOf(int row) const;
    void cmdOK_Click();
    void cmdClose_Click();
    void DataGridHistoryList_RowColChange();
    void DataGridHistoryList_HeadClick(int column);
    bool DataGridHistoryList_BeforeUpdate();
    void DataGridHistoryList_AfterUpdate();
    void DataGridHistoryList_OnAddNew();
    void DataGridHistoryList_BeforeDelete(int row);

    ListDateRange m_range;
    DataGrid *DataGridHistoryList = nullptr;
    QLabel *lblTransCount = nullptr;
    QLineEdit *txtTransCount = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdClose = nullptr;
    std::optional<GridHint> m_hint;

    Recordset AdodcHistoryList;
    EditableRecordsetSource m_source;
    QString HistoryOrderBy;     ///< the clause that the rows are sorted by
    bool SortDescending = true; ///< of the next click on a heading
    bool m_isStale = false;     ///< rows were written while one was being edited
};
