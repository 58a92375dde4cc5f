#include "tracking/frm_daily_tracker.h"

#include "platform/widgets/colors.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/flex_grid.h"
#include "program/wait_cursor.h"
#include "store/failed_write.h"
#include "tracking/daily_balances.h"
#include "tracking/sort_order.h"
#include "transactions/undo.h"

#include <QKeyEvent>
#include <QLabel>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QVBoxLayout>

frmDailyTracker::frmDailyTracker(Program &program)
    : Form(program, QStringLiteral("frmDailyTracker"), QStringLiteral("Daily Tracker"),
           Placement::Child),
      m_source(program.AdodcStockHistory, program.services.formats)
{
    BuildGrids();
    BuildTotals();
}

void frmDailyTracker::BuildGrids()
{
    m_dataGridStock = new DataGrid(this);
    m_dataGridStock->setObjectName(QStringLiteral("DataGridStock"));
    m_dataGridStock->setAccessibleName(QStringLiteral("Securities"));
    m_hint.emplace(*m_dataGridStock, QStringLiteral("Click to select row then right click for "
                                                    "popup menu options"));

    m_lblGrandTotal = new QLabel(QStringLiteral("P O R T F O L I O     S U M M A R Y"), this);
    m_lblGrandTotal->setObjectName(QStringLiteral("lblGrandTotal"));
    m_lblGrandTotal->setAlignment(Qt::AlignCenter);
    m_lblGrandTotal->setAutoFillBackground(true);
    m_lblGrandTotal->setMargin(3);
    QFont bold = m_lblGrandTotal->font();
    bold.setBold(true);
    m_lblGrandTotal->setFont(bold);

    m_flexGridTotals = new FlexGrid(this);
    m_flexGridTotals->setObjectName(QStringLiteral("MSHFlexGridTotals"));
    m_flexGridTotals->setAccessibleName(QStringLiteral("Portfolio summary"));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_dataGridStock, 1);
    layout->addWidget(m_lblGrandTotal);
    layout->addWidget(m_flexGridTotals);

    m_dataGridStock->OnRowColChange = [this] { Guarded([this] { DataGridStock_RowColChange(); }); };
    m_dataGridStock->OnClick = [this](int) { ByUser([this] { DataGridStock_RowColChange(); }); };
    m_dataGridStock->OnDoubleClick = [this](int) {
        ByUser([this] {
            DataGridStock_RowColChange();
            DataGridStock_DblClick();
        });
    };
    m_dataGridStock->OnHeaderClick = [this](int column) {
        ByUser([this, column] { DataGridStock_HeadClick(column); });
    };
    m_dataGridStock->OnMouseUp = [this](Qt::MouseButton) { m_hint->MouseUp(); };
    m_dataGridStock->OnContextMenu = [this](const QPoint &where) {
        Guarded([&] {
            // A list screen may have selected another security: the popup is for the marked row.
            DataGridStock_RowColChange();
            m_program.screens.ShowPopup(QStringLiteral("popDailyTracker"), where);
        });
    };
}

QSize frmDailyTracker::sizeHint() const
{
    return TenthsOfMainWindow(9, 8);
}

// --- load and unload ----------------------------------------------------------------------------

void frmDailyTracker::Load()
{
    const WaitCursor hourglass;
    FormLoading = true;
    ApplyColors();
    if (m_program.settings.WebPriceUpdate && !m_program.entry.RebuildRunning)
        m_program.screens.Load(QStringLiteral("frmInternetTran"));
    auto close = qScopeGuard([this] { // a screen that failed to load leaves nothing open
        CloseTransactionRecordsets();
        ClearHooks();
    });
    OpenTransactionRecordsets();
    if (m_program.AdodcStockHistory.IsEmpty())
        m_program.selection.CurrentSymbol = m_program.selection.CurrentName = QString();
    ReloadDataGrid();
    m_dataGridStock->SetSource(TrackerGridColumns(), &m_source); // fits the columns to the values
    m_dataGridStock->SetSortIndicator(1, true); // the shares, as InitialGridOrder has them
    DataGridStock_RowColChange();
    UpdateTrackerDay(m_program.databases.gConnAccount, m_program.account,
                     m_program.services.clock.Today());
    SetHooks();
    close.dismiss();
    FormLoading = false;
    EnableUndoCommands(m_program.services.commands, false);
    m_program.UserActed();
    Status(QStringLiteral("Right click on the grid for popup menu selection"));
}

void frmDailyTracker::OpenTransactionRecordsets()
{
    // After a mere reload the lots of the last posting are still pending; opening would drop them.
    if (m_program.gRsLots.IsOpen()) {
        PostingWork work = m_program.Posting();
        CommitUndoTransaction(work);
    }
    GridOrderBy = InitialGridOrder();
    m_program.AdodcStockHistory.Open(m_program.databases.gConnAccount, GridOrderBy);
    m_program.gRsLots.Open(m_program.databases.gConnUndo);
    if (m_program.BeginRebuild) // the screen comes up on emptied rows and lots
        m_program.BeginRebuild();
}

/// The rows come in this order from the next Requery on.
void frmDailyTracker::BuildGridQuery()
{
    m_program.AdodcStockHistory.SetOrderBy(GridOrderBy);
}

void frmDailyTracker::CloseTransactionRecordsets()
{
    m_program.gRsLots.Close();
    m_program.AdodcStockHistory.Close();
}

void frmDailyTracker::SetHooks()
{
    m_program.UpdatePortfolioTotals = [this] {
        UpdatePortfolioTotals();
        RefreshRows();
    };
    m_program.ReloadDataGrid = [this] { ReloadDataGrid(); };
    m_program.ShowSelection = [this] {
        const QScopedValueRollback refreshing(m_isRefreshing, true);
        m_markedBlank.reset();
        ShowSelection();
    };
    m_program.AdodcStockHistory.OnRowsChanged = [this] { RefreshRows(); };
}

void frmDailyTracker::ClearHooks()
{
    m_program.UpdatePortfolioTotals = nullptr;
    m_program.ReloadDataGrid = nullptr;
    m_program.ShowSelection = nullptr;
    m_program.AdodcStockHistory.OnRowsChanged = nullptr;
}

bool frmDailyTracker::QueryUnload()
{
    CommandStates &commands = m_program.services.commands;
    if (!commands.Checked(QStringLiteral("mnuVWDailyTracker")))
        return true;
    if (m_program.undo.RowTransactionOpen && !m_dataGridStock->IsSplit()) {
        EnableUndoCommands(commands, true);
        if (UndoLast() == UndoOutcome::Failed)
            return false;
    }
    try {
        PostingWork work = m_program.Posting();
        CommitUndoTransaction(work); // what was not taken back is final, the last posting too
    } catch (const RuntimeError &error) {
        MsgBox(QStringLiteral("The lots of the last transaction could not be saved: %1.\n"
                              "Nothing is lost. Correct the problem and close the Daily Tracker "
                              "again.")
                   .arg(ReasonOf(error)),
               Box::Exclamation, CaptionEditor());
        return false;
    }
    return true;
}

void frmDailyTracker::OnUnload()
{
    const auto forget = qScopeGuard([this] { ClearHooks(); });
    CommandStates &commands = m_program.services.commands;
    if (!commands.Checked(QStringLiteral("mnuVWDailyTracker")))
        return;
    if (m_program.priceUpdate.PriceUpdateActive)
        m_program.screens.Unload(QStringLiteral("frmInternetTran"));
    if (!m_program.entry.RebuildRunning) // whose own transaction writes them
        WriteDailyBalances();
    CloseTransactionRecordsets();
    EndSplitMode(commands, QStringLiteral("popDTSplitMode"));
    EnableUndoCommands(commands, false);
    Status(QString());
    m_program.UserActed();
}

void frmDailyTracker::WriteDailyBalances()
{
    Connection &account = m_program.databases.gConnAccount;
    Services &services = m_program.services;
    const QDate today = services.clock.Today();
    UpdateDailySecurityBalance(account, m_program.AdodcStockHistory, today, services,
                               CaptionEditor());
    UpdateDailyBalance(account, m_program.account, today, services, CaptionEditor());
}

// --- rows and selection -------------------------------------------------------------------------

void frmDailyTracker::ReloadDataGrid()
{
    RecomputeWork work = m_program.Recompute(CaptionEditor());
    RecomputeRows(work, FormLoading);
    RefreshRows();
    DataGridStock_RowColChange();
    work.rows.MoveFirst(); // the reset begins where the cursor stands
    TestToDateReset(work);
    UpdatePortfolioTotals();
    RefreshRows();
    DataGridStock_RowColChange();
    TellRowsLeftOut(work);
}

void frmDailyTracker::RefreshRows()
{
    const QScopedValueRollback refreshing(m_isRefreshing, true);
    m_dataGridStock->RefreshRows();
    ShowSelection();
}

void frmDailyTracker::ShowSelection()
{
    if (m_markedBlank && MarkRowOf(*m_markedBlank))
        return;
    m_markedBlank.reset();
    MarkRowOf(m_program.selection.CurrentSymbol);
}

bool frmDailyTracker::MarkRowOf(const QString &symbol)
{
    const TrackerRecordset &rows = m_program.AdodcStockHistory;
    const int current = m_dataGridStock->CurrentRow();
    if (current >= 0 && rows.At(current).Symbol == symbol)
        return true;
    for (int row = 0; row < rows.RecordCount(); ++row)
        if (rows.At(row).Symbol == symbol)
            return m_dataGridStock->SetCurrentRow(row);
    return false;
}

bool frmDailyTracker::RowsAreBusy() const
{
    return m_program.priceUpdate.UpdateInProgress || m_program.entry.PostingInProgress;
}

void frmDailyTracker::DataGridStock_RowColChange()
{
    TrackerRecordset &rows = m_program.AdodcStockHistory;
    const int row = m_dataGridStock->CurrentRow();
    if (m_isRefreshing || RowsAreBusy() || row < 0 || row >= rows.RecordCount())
        return;
    rows.MoveTo(row);
    const TrackerRow &current = rows.Current();
    m_markedBlank.reset();
    if (current.Symbol.trimmed().isEmpty()) {
        m_markedBlank = current.Symbol;
        return; // the last selection stays
    }
    const bool isOther = m_program.selection.CurrentSymbol != current.Symbol;
    m_program.selection.CurrentSymbol = current.Symbol;
    m_program.selection.CurrentName = current.Name;
    if (isOther && m_program.SelectionChanged)
        m_program.SelectionChanged();
}

void frmDailyTracker::DataGridStock_HeadClick(int column)
{
    SortDescending = !SortDescending;
    const QString dataField = m_dataGridStock->Columns()[size_t(column)].dataField;
    SortByHeading(
        m_program.services, GridOrderFor(dataField, SortDescending),
        [&](const QString &clause) {
            GridOrderBy = clause;
            BuildGridQuery();
            m_program.AdodcStockHistory.Requery();
            m_dataGridStock->SetSortIndicator(column, SortDescending);
            if (!RowsAreBusy())
                m_dataGridStock->SetCurrentRow(0);
            DataGridStock_RowColChange();
        },
        CaptionEditor());
}

// --- keys ---------------------------------------------------------------------------------------

void frmDailyTracker::ShowHelp()
{
    m_program.screens.ShowHelp(QStringLiteral("DTDailyTrackerScreen.html"));
}

bool frmDailyTracker::event(QEvent *event)
{
    // These keys are this screen's before any mnemonic of the main window can take them.
    if (event->type() == QEvent::ShortcutOverride) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->modifiers() == Qt::AltModifier &&
            (key->key() == Qt::Key_Q || key->key() == Qt::Key_S)) {
            event->accept();
            return true;
        }
    }
    return Form::event(event);
}

void frmDailyTracker::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Q)
        ByUser([this] { m_program.screens.Show(QStringLiteral("frmQuoteServerUpdate")); });
    else if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_S)
        ByUser([this] { m_program.screens.ShowModal(QStringLiteral("frmUserSetup")); });
    else
        Form::keyPressEvent(event);
}
