#pragma once

/// The open purchase lots, which can be edited, added and deleted.
///
/// Every lot in the file is shown, by symbol and date. What is changed here changes no position: the
/// shares of a security's lots must go on adding up to those of its row in the Daily Tracker, which
/// is for the user to see to. A lot that a posting has changed which can still be undone is not for
/// editing until then.

#include "platform/widgets/list_grid.h"
#include "platform/widgets/recordset_source.h"
#include "program/command_target.h"
#include "program/form.h"
#include "program/list_refresh.h"

class DataGrid;

class frmPurchaseList : public Form, public CommandTarget, public ListScreen
{
public:
    explicit frmPurchaseList(Program &program);

    void Load() override;
    void OnUnload() override;
    bool RunCommand(const QString &name) override;
    /// The lot that was current stays so, if it is still there. While one is being edited the rows
    /// wait until it is stored.
    void RefreshList() override;

    void ChgDataGridPurchaseListColor();
    /// Opens the dialog that deletes rows, for the current one.
    void DeleteRowEntry();

    QSize sizeHint() const override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void BuildControls();
    void ConnectGrid();

    void cmdClose_Click();
    void DataGridPurchaseList_RowColChange();
    bool DataGridPurchaseList_BeforeUpdate(int row);
    void DataGridPurchaseList_AfterUpdate();
    void DataGridPurchaseList_BeforeDelete(int row);
    bool MayChange(int row);
    /// The lots that postings work on follow what was changed in the file.
    void ReloadLots();

    DataGrid *DataGridPurchaseList = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdClose = nullptr;

    Recordset AdodcPurchaseList;
    EditableRecordsetSource m_source;
    bool m_isStale = false; ///< rows were written while one was being edited
};
