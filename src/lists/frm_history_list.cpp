#include "lists/frm_history_list.h"

#include "platform/widgets/data_grid.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/wrapping_row.h"
#include "program/delete_options.h"
#include "program/select_security.h"
#include "program/wait_cursor.h"
#include "store/failed_write.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

namespace
{

const QString SplitEntry = QStringLiteral("popHLSplitMode");
const QString EditorBox = QStringLiteral("Transaction History Editor");

constexpr bool Editable = true;
constexpr bool Hidden = true;
constexpr ListColumn historyColumns[] = {
    {"ID", "ID", Qt::AlignRight, u"", "", !Editable, Hidden},
    {"Symbol", "Symbol", Qt::AlignLeft, u"", "MMMMMM"},
    {"Name", "Name", Qt::AlignLeft, u"", "Nnnnnnnnnnnnnnnnnnnnnnnn"},
    {"Description", "Description", Qt::AlignLeft, u"", "Reinvestment"},
    {"Shares", "Shares", Qt::AlignRight, u"0.0000", "-99999.0000"},
    {"Price", "Price", Qt::AlignRight, u"0.0000", "99999.0000"},
    {"Amount", "Amount", Qt::AlignRight, u"0.00", "-9999999.00"},
    {"Trans Cost", "TransactionCost", Qt::AlignRight, u"0.00", "-9999.00"},
    {"Trans Date", "TransDate", Qt::AlignRight, u"", "00/00/0000", Editable},
    {"Time", "Time", Qt::AlignRight, u"", "00:00:00 MM", Editable},
};

} // namespace

frmHistoryList::frmHistoryList(Program &program)
    : Form(program, QStringLiteral("frmHistoryList"), QStringLiteral("Transaction History"),
           Placement::Child),
      m_range(*this, program), m_source(AdodcHistoryList, program.services.formats, historyColumns)
{
    BuildControls();
    BuildLayout();
    ConnectControls();
    ConnectGrid();
}

void frmHistoryList::BuildControls()
{
    DataGridHistoryList = new DataGrid(this);
    DataGridHistoryList->setObjectName(QStringLiteral("DataGridHistoryList"));
    DataGridHistoryList->setAccessibleName(QStringLiteral("Transactions"));
    DataGridHistoryList->SetAllowAddNew(true);
    m_hint.emplace(*DataGridHistoryList,
                   QStringLiteral("Click to select row then right click for popup menu options. "
                                  "Click headings to sort"),
                   QStringLiteral("The transaction Date and time can be changed"));

    lblTransCount = new QLabel(QStringLiteral("Count"), this);
    lblTransCount->setObjectName(QStringLiteral("lblTransCount"));
    txtTransCount = new QLineEdit(this);
    txtTransCount->setObjectName(QStringLiteral("txtTransCount"));
    txtTransCount->setAccessibleName(QStringLiteral("Count of transactions"));
    txtTransCount->setReadOnly(true);
    txtTransCount->setFocusPolicy(Qt::ClickFocus);
    txtTransCount->setAlignment(Qt::AlignRight);
    txtTransCount->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("9999999")) + 16);

    cmdHelp = MakeButton("cmdHelp", "Hel&p"); // Alt+H and Alt+C are the main menu's
    cmdClose = MakeButton("cmdClose", "C&lose");
}

void frmHistoryList::BuildLayout()
{
    auto *head = new WrappingRow;
    m_range.AddTo(*head);
    head->AddGroup({m_range.cmdOK});
    head->AddStretch();
    head->AddGroup({lblTransCount, txtTransCount});
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdClose);
    auto *all = new QVBoxLayout(this);
    all->addLayout(head);
    all->addWidget(DataGridHistoryList, 1);
    all->addLayout(buttons);
}

void frmHistoryList::ConnectControls()
{
    OnClick(m_range.cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdHelp, [this] {
        m_program.screens.ShowHelp(QStringLiteral("THTransactionHistoryView.html"));
    });
    OnClick(cmdClose, [this] { cmdClose_Click(); });
}

void frmHistoryList::ConnectGrid()
{
    DataGrid &grid = *DataGridHistoryList;
    grid.OnRowColChange = [this] { ByUser([this] { DataGridHistoryList_RowColChange(); }); };
    grid.OnHeaderClick = [this](int column) {
        ByUser([this, column] { DataGridHistoryList_HeadClick(column); });
    };
    grid.OnMouseUp = [this](Qt::MouseButton button) {
        m_program.UserActed();
        if (button == Qt::LeftButton)
            m_hint->MouseUp();
    };
    grid.OnContextMenu = [this](const QPoint &where) {
        Guarded([&] {
            DataGridHistoryList_RowColChange(); // the popup is for the marked row
            m_program.screens.ShowPopup(QStringLiteral("popHistoryList"), where);
        });
    };
    grid.OnBeforeUpdate = [this](int) {
        bool allowed = false;
        Guarded([&] { allowed = DataGridHistoryList_BeforeUpdate(); });
        return allowed;
    };
    grid.OnAfterUpdate = [this](int) { Guarded([this] { DataGridHistoryList_AfterUpdate(); }); };
    grid.OnNewRow = [this] { DataGridHistoryList_OnAddNew(); };
    grid.OnDeleteKey = [this](int row) {
        Guarded([this, row] { DataGridHistoryList_BeforeDelete(row); });
    };
    // A new row is a note of a date: it belongs to no security, and moves no position.
    m_source.OnAddNew = [](Recordset &newRow) {
        for (const int column :
             {HistoryColumn::Symbol, HistoryColumn::Name, HistoryColumn::Description})
            newRow.Set(column, QString());
    };
    m_source.OnFailure = [this](const RuntimeError &error) {
        MsgBox(QStringLiteral("The row could not be stored: %1.\nIt stays as you typed it.")
                   .arg(ReasonOf(error)),
               Box::Exclamation, EditorBox);
    };
}

QSize frmHistoryList::sizeHint() const
{
    return TenthsOfMainWindow(8, 8);
}

// --- coming and going ---------------------------------------------------------------------------

void frmHistoryList::Load()
{
    const WaitCursor hourglass;
    m_range.Set(NoDate(), m_program.services.clock.Today());
    ApplyGridColor(*DataGridHistoryList, m_program.settings.THDataGridColor);
    HistoryOrderBy = InitialHistoryOrder();
    SortDescending = true;
    ReadHistory();
    DataGridHistoryList->SetSource(m_source.Columns(), &m_source);
    DataGridHistoryList->SetSortIndicator(HistoryColumn::TransDate, true);
    RestoreColumnWidths(*DataGridHistoryList, m_program.services.settingsStore, objectName());
    if (!AdodcHistoryList.IsEmpty()) {
        m_range.Set(DateOf(AdodcHistoryList.RecordCount() - 1), DateOf(0));
        DataGridHistoryList_RowColChange();
    }
    m_program.UserActed();
    Status(QStringLiteral("The transaction Date and time can be changed on the Grid"));
}

void frmHistoryList::OnUnload()
{
    if (!DataGridHistoryList->CommitRow()) // has told why
        DataGridHistoryList->CancelRow();
    SaveColumnWidths(*DataGridHistoryList, m_program.services.settingsStore, objectName());
    EndSplitMode(m_program.services.commands, SplitEntry);
    m_program.UserActed();
    Status(QString());
}

/// A row that cannot be stored keeps the screen open when its user closes it.
void frmHistoryList::cmdClose_Click()
{
    if (DataGridHistoryList->CommitRow())
        UnloadMe();
}

void frmHistoryList::closeEvent(QCloseEvent *event)
{
    event->ignore();
    Guarded([this] { cmdClose_Click(); });
}

bool frmHistoryList::RunCommand(const QString &name)
{
    if (name == QLatin1String("popHLDelete"))
        DeleteRowEntry();
    else if (name == SplitEntry)
        SplitMode();
    else if (name == QLatin1String("popHLHistoryGridColor"))
        ChgDataGridHistoryListColor();
    else
        return false;
    return true;
}

// --- what is shown ------------------------------------------------------------------------------

void frmHistoryList::ReadHistory()
{
    AdodcHistoryList.Open(m_program.databases.gConnAccount,
                          HistoryQuery(m_range.From(), m_range.To(), HistoryOrderBy));
    ShowHistory();
}

void frmHistoryList::ShowHistory()
{
    m_isStale = false;
    DataGridHistoryList->RefreshRows();
    txtTransCount->setText(QString::number(AdodcHistoryList.RecordCount()));
}

QDate frmHistoryList::DateOf(int row) const
{
    return std::get<QDate>(AdodcHistoryList.ValueAt(row, HistoryColumn::TransDate));
}

void frmHistoryList::cmdOK_Click()
{
    if (!DataGridHistoryList->CommitRow())
        return;
    const WaitCursor hourglass;
    ReadHistory();
    Status(QStringLiteral("New date range selection complete"));
}

void frmHistoryList::RefreshList()
{
    m_isStale = DataGridHistoryList->IsRowEdited();
    if (m_isStale)
        return;
    const int row = DataGridHistoryList->CurrentRow();
    const FieldValue id = row < 0 ? FieldValue() : AdodcHistoryList.ValueAt(row, HistoryColumn::ID);
    // By the statement of before, whatever the pickers show meanwhile: what was posted today is
    // behind the newest transaction that the screen opened on.
    AdodcHistoryList.Requery();
    ShowHistory();
    for (int now = 0; now < AdodcHistoryList.RecordCount(); ++now) {
        if (AdodcHistoryList.ValueAt(now, HistoryColumn::ID) == id) {
            DataGridHistoryList->SetCurrentRow(now);
            return;
        }
    }
    DataGridHistoryList_RowColChange();
}

// --- the grid -----------------------------------------------------------------------------------

void frmHistoryList::DataGridHistoryList_RowColChange()
{
    const int row = DataGridHistoryList->CurrentRow();
    if (row < 0 || row >= AdodcHistoryList.RecordCount())
        return;
    const auto text = [&](int column) {
        const auto *held = std::get_if<QString>(&AdodcHistoryList.ValueAt(row, column));
        return held ? *held : QString();
    };
    m_program.selection.SelectedRowID =
        std::get<qint64>(AdodcHistoryList.ValueAt(row, HistoryColumn::ID));
    SelectSecurity(m_program, text(HistoryColumn::Symbol), text(HistoryColumn::Name));
}

void frmHistoryList::DataGridHistoryList_HeadClick(int column)
{
    const QString dataField = DataGridHistoryList->Columns()[size_t(column)].dataField;
    const bool sorted = SortByHeading(
        m_program.services, HistoryOrderFor(dataField, SortDescending),
        [&](const QString &clause) {
            const WaitCursor hourglass;
            HistoryOrderBy = clause;
            ReadHistory();
            DataGridHistoryList->SetSortIndicator(column, SortDescending);
            DataGridHistoryList->SetCurrentRow(0);
            DataGridHistoryList_RowColChange();
        },
        CaptionEditor());
    if (sorted)
        SortDescending = !SortDescending;
}

bool frmHistoryList::DataGridHistoryList_BeforeUpdate()
{
    const std::optional<QString> refusal = HistoryEditRefusal(
        m_program.services.formats, DataGridHistoryList->EditedText(HistoryColumn::TransDate),
        DataGridHistoryList->EditedText(HistoryColumn::Time));
    if (refusal)
        MsgBox(*refusal, Box::Exclamation, EditorBox);
    return !refusal;
}

void frmHistoryList::DataGridHistoryList_AfterUpdate()
{
    if (m_isStale) {
        RefreshList();
        return;
    }
    ShowHistory();
    DataGridHistoryList_RowColChange();
}

void frmHistoryList::DataGridHistoryList_OnAddNew()
{
    const Services &services = m_program.services;
    const auto fill = [this](int column, const QString &text) {
        if (DataGridHistoryList->EditedText(column).isEmpty())
            DataGridHistoryList->SetEditedText(column, text);
    };
    fill(HistoryColumn::TransDate, services.formats.ToText(services.clock.Today()));
    fill(HistoryColumn::Time, services.formats.ToText(services.clock.TimeOfDay()));
}

void frmHistoryList::DataGridHistoryList_BeforeDelete(int row)
{
    m_program.UserActed();
    if (MsgBox(QStringLiteral("Your are about to delete the selected row.  You will not \n"
                              "be able to undo this action. Continue anyway?"),
               Box::YesNo + Box::Question + Box::SecondDefault, EditorBox) == Answer::No)
        return;
    DataGridHistoryList->CancelRow();
    AdodcHistoryList.MoveTo(row);
    OrFail(QStringLiteral("The deletion of the transaction"), [&] { AdodcHistoryList.Delete(); });
    ShowHistory();
    DataGridHistoryList_RowColChange();
}

void frmHistoryList::SplitMode()
{
    ::SplitMode(*DataGridHistoryList, m_program.services.commands, SplitEntry);
}

void frmHistoryList::ChgDataGridHistoryListColor()
{
    ChooseGridColor(*DataGridHistoryList, m_program.settings.THDataGridColor,
                    m_program.services.dialogs);
}

void frmHistoryList::DeleteRowEntry()
{
    if (!DataGridHistoryList->CommitRow())
        return;
    DataGridHistoryList_RowColChange();
    cmdClose->setFocus();
    OpenDeleteOptions(m_program, QStringLiteral("popHLDelete"));
}
