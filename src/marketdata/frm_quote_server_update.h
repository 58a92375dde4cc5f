#pragma once

/// The quote site editor: the rows of WebParameters in a grid, where the empty row at the end takes
/// a new site. Below it a row can be tried out, and rows can be loaded from a file and saved to one.
///
/// The price cycle stands still while the screen is open. What is stored here is read anew for the
/// cycle at once, which gives sites that failed in this run a fresh chance.
///
/// In the column "Characters to Price" a number is typed, or the stretch of a page's text from the
/// symbol to the price is pasted: on leaving the cell a text of four or more characters becomes its
/// length and ten more.

#include "marketdata/frm_quote_server_update_grid.h"
#include "program/command_target.h"
#include "program/form.h"
#include "program/price_cycle_pause.h"

class DataGrid;
class QLabel;

class frmQuoteServerUpdate : public Form, public CommandTarget
{
public:
    explicit frmQuoteServerUpdate(Program &program);

    void Load() override;
    /// Stores the row in edit; asks, when that cannot be.
    bool QueryUnload() override;
    void OnUnload() override;
    bool RunCommand(const QString &name) override;

    void ChgDataGridQuoteUpdateColor();

    QSize sizeHint() const override;

private:
    void BuildGrid();
    void BuildButtons();
    void ConnectGrid();
    void ApplyColor();
    /// Reads the rows anew, and the cycle's as well.
    void ReloadRows();
    void LoadSites();
    void ShowRows();
    void ShowSiteName();

    QChar DataGridQuoteUpdate_KeyPress(int column, QChar typed);
    void DataGridQuoteUpdate_CellEdited(int column);
    bool DataGridQuoteUpdate_BeforeUpdate();
    void DataGridQuoteUpdate_BeforeDelete(int row);
    void cmdTestRow_Click();
    void cmdLoadRows_Click();
    void cmdSaveRows_Click();
    std::optional<QString> PickRows(FileRequest::Kind kind);
    bool MayReplace(const QString &path);

    Recordset AdodcQuoteServerUpdate;
    QuoteServerGridSource m_source;
    DataGrid *m_dataGridQuoteUpdate = nullptr;
    QPushButton *cmdTestRow = nullptr;
    QPushButton *cmdLoadRows = nullptr;
    QPushButton *cmdSaveRows = nullptr;
    QPushButton *cmdHelp = nullptr;
    QLabel *m_lblSite = nullptr; ///< name of the current row's site
    PriceCyclePause m_priceCyclePause;
};
