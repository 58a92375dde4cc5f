#include "lists/frm_purchase_list.h"

#include "lists/purchase_list.h"
#include "platform/widgets/data_grid.h"
#include "program/delete_options.h"
#include "program/select_security.h"
#include "program/wait_cursor.h"
#include "store/failed_write.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace
{

constexpr bool Editable = true;
constexpr bool Hidden = true;
constexpr ListColumn purchaseColumns[] = {
    {"ID", "ID", Qt::AlignRight, u"", "", !Editable, Hidden},
    {"Symbol", "Symbol", Qt::AlignLeft, u"", "MMMMMMMM", Editable},
    {"Shares", "Shares", Qt::AlignRight, u"0.0000", "-999999.0000", Editable},
    {"Purchase Price", "PurchasePrice", Qt::AlignRight, u"0.0000", "999999.0000", Editable},
    {"Trans Date", "TransDate", Qt::AlignRight, u"", "00/00/0000", Editable},
    {"Time", "Time", Qt::AlignRight, u"", "00:00:00 MM", Editable},
};

/// What a cell of the column takes, in words.
QString Wanted(int column)
{
    switch (column) {
    case PurchaseColumn::TransDate:
        return QStringLiteral("a date");
    case PurchaseColumn::Time:
        return QStringLiteral("a time of day");
    default:
        return QStringLiteral("a number");
    }
}

} // namespace

frmPurchaseList::frmPurchaseList(Program &program)
    : Form(program, QStringLiteral("frmPurchaseList"), QStringLiteral("Purchase Price List"),
           Placement::Child),
      m_source(AdodcPurchaseList, program.services.formats, purchaseColumns)
{
    BuildControls();
    ConnectGrid();
}

void frmPurchaseList::BuildControls()
{
    DataGridPurchaseList = new DataGrid(this);
    DataGridPurchaseList->setObjectName(QStringLiteral("DataGridPurchaseList"));
    DataGridPurchaseList->setAccessibleName(QStringLiteral("Purchase lots"));
    DataGridPurchaseList->setToolTip(
        QStringLiteral("Click to select row then right click for popup menu options"));
    DataGridPurchaseList->SetAllowAddNew(true);
    cmdHelp = MakeButton("cmdHelp", "Hel&p"); // Alt+H and Alt+C are the main menu's
    cmdClose = MakeButton("cmdClose", "C&lose");
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("PPPurchasePriceList.html")); });
    OnClick(cmdClose, [this] { cmdClose_Click(); });

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdClose);
    auto *all = new QVBoxLayout(this);
    all->addWidget(DataGridPurchaseList, 1);
    all->addLayout(buttons);
}

void frmPurchaseList::ConnectGrid()
{
    DataGrid &grid = *DataGridPurchaseList;
    grid.OnRowColChange = [this] { ByUser([this] { DataGridPurchaseList_RowColChange(); }); };
    grid.OnMouseUp = [this](Qt::MouseButton button) {
        m_program.UserActed();
        if (button == Qt::RightButton)
            DataGridPurchaseList->setToolTip(QString());
    };
    grid.OnContextMenu = [this](const QPoint &where) {
        Guarded([&] {
            DataGridPurchaseList_RowColChange(); // the popup is for the marked row
            m_program.screens.ShowPopup(QStringLiteral("popPPPurchasePrice"), where);
        });
    };
    grid.OnBeforeUpdate = [this](int row) {
        bool allowed = false;
        Guarded([&] { allowed = DataGridPurchaseList_BeforeUpdate(row); });
        return allowed;
    };
    grid.OnAfterUpdate = [this](int) { Guarded([this] { DataGridPurchaseList_AfterUpdate(); }); };
    grid.OnDeleteKey = [this](int row) {
        Guarded([this, row] { DataGridPurchaseList_BeforeDelete(row); });
    };
    m_source.OnFailure = [this](const RuntimeError &error) {
        MsgBox(QStringLiteral("The row could not be stored: %1.\nIt stays as you typed it.")
                   .arg(ReasonOf(error)),
               Box::Exclamation, CaptionEditor());
    };
}

QSize frmPurchaseList::sizeHint() const
{
    return TenthsOfMainWindow(5, 8);
}

// --- coming and going ---------------------------------------------------------------------------

void frmPurchaseList::Load()
{
    const WaitCursor hourglass;
    ApplyGridColor(*DataGridPurchaseList, m_program.settings.PPDataGridColor);
    AdodcPurchaseList.Open(m_program.databases.gConnAccount, PurchaseQuery());
    DataGridPurchaseList->SetSource(m_source.Columns(), &m_source);
    RestoreColumnWidths(*DataGridPurchaseList, m_program.services.settingsStore, objectName());
    DataGridPurchaseList_RowColChange();
    m_program.UserActed();
}

void frmPurchaseList::OnUnload()
{
    if (!DataGridPurchaseList->CommitRow()) // has told why
        DataGridPurchaseList->CancelRow();
    SaveColumnWidths(*DataGridPurchaseList, m_program.services.settingsStore, objectName());
    m_program.UserActed();
    Status(QString());
}

/// A row that cannot be stored keeps the screen open when its user closes it.
void frmPurchaseList::cmdClose_Click()
{
    if (DataGridPurchaseList->CommitRow())
        UnloadMe();
}

void frmPurchaseList::closeEvent(QCloseEvent *event)
{
    event->ignore();
    Guarded([this] { cmdClose_Click(); });
}

bool frmPurchaseList::RunCommand(const QString &name)
{
    if (name == QLatin1String("popPPDelete"))
        DeleteRowEntry();
    else if (name == QLatin1String("popPPPriceGridColor"))
        ChgDataGridPurchaseListColor();
    else
        return false;
    return true;
}

void frmPurchaseList::RefreshList()
{
    m_isStale = DataGridPurchaseList->IsRowEdited();
    if (m_isStale)
        return;
    const int row = DataGridPurchaseList->CurrentRow();
    const FieldValue id =
        row < 0 ? FieldValue() : AdodcPurchaseList.ValueAt(row, PurchaseColumn::ID);
    AdodcPurchaseList.Requery();
    DataGridPurchaseList->RefreshRows();
    for (int now = 0; now < AdodcPurchaseList.RecordCount(); ++now) {
        if (AdodcPurchaseList.ValueAt(now, PurchaseColumn::ID) == id) {
            DataGridPurchaseList->SetCurrentRow(now);
            return;
        }
    }
    DataGridPurchaseList_RowColChange();
}

// --- the grid -----------------------------------------------------------------------------------

void frmPurchaseList::DataGridPurchaseList_RowColChange()
{
    const int row = DataGridPurchaseList->CurrentRow();
    if (row < 0 || row >= AdodcPurchaseList.RecordCount())
        return;
    m_program.selection.SelectedRowID =
        std::get<qint64>(AdodcPurchaseList.ValueAt(row, PurchaseColumn::ID));
    SelectSecurity(m_program,
                   std::get<QString>(AdodcPurchaseList.ValueAt(row, PurchaseColumn::Symbol)));
}

bool frmPurchaseList::MayChange(int row)
{
    if (row >= AdodcPurchaseList.RecordCount() ||
        !IsLotPending(m_program.gRsLots, AdodcPurchaseList, row))
        return true;
    MsgBox(
        QStringLiteral("The last transaction has changed this purchase, and can still be undone.\n"
                       "Undo it, or post the next one, before you change the purchase here."),
        Box::Exclamation, CaptionEditor());
    return false;
}

bool frmPurchaseList::DataGridPurchaseList_BeforeUpdate(int row)
{
    DataGrid &grid = *DataGridPurchaseList;
    if (!MayChange(row))
        return false;
    const Services &services = m_program.services;
    if (grid.EditedText(PurchaseColumn::TransDate).trimmed().isEmpty())
        grid.SetEditedText(PurchaseColumn::TransDate,
                           services.formats.ToText(services.clock.Today()));
    if (grid.EditedText(PurchaseColumn::Time).trimmed().isEmpty())
        grid.SetEditedText(PurchaseColumn::Time,
                           services.formats.ToText(services.clock.TimeOfDay()));

    if (grid.EditedText(PurchaseColumn::Symbol).trimmed().isEmpty()) {
        MsgBox(QStringLiteral("Please enter the symbol of the purchase."), Box::Exclamation,
               CaptionEditor());
        return false;
    }
    for (const int column : {PurchaseColumn::Shares, PurchaseColumn::PurchasePrice,
                             PurchaseColumn::TransDate, PurchaseColumn::Time}) {
        const QString text = grid.EditedText(column);
        const bool isEmpty = text.trimmed().isEmpty();
        if (text == m_source.Text(row, column) || (!isEmpty && m_source.Takes(column, text)))
            continue;
        MsgBox(QStringLiteral("Please enter %1 in the column \"%2\".\n"
                              "The row stays as you typed it; press Esc to take its changes back.")
                   .arg(Wanted(column), grid.Columns()[size_t(column)].caption),
               Box::Exclamation, CaptionEditor());
        return false;
    }
    return true;
}

void frmPurchaseList::DataGridPurchaseList_AfterUpdate()
{
    ReloadLots();
    if (m_isStale)
        RefreshList();
    else
        DataGridPurchaseList_RowColChange();
}

void frmPurchaseList::DataGridPurchaseList_BeforeDelete(int row)
{
    m_program.UserActed();
    if (!MayChange(row))
        return;
    if (MsgBox(QStringLiteral("Caution! Your are about to delete the selected row.  You will not \n"
                              "be able to undo this action. Total shares for this security must \n"
                              "agree with totals shares in Daily tracker screen. Continue anyway?"),
               Box::YesNo + Box::Exclamation + Box::SecondDefault, CaptionEditor()) == Answer::No)
        return;
    DataGridPurchaseList->CancelRow();
    AdodcPurchaseList.MoveTo(row);
    OrFail(QStringLiteral("The deletion of the purchase"), [&] { AdodcPurchaseList.Delete(); });
    DataGridPurchaseList->RefreshRows();
    ReloadLots();
    DataGridPurchaseList_RowColChange();
}

void frmPurchaseList::ReloadLots()
{
    if (m_program.gRsLots.IsOpen())
        m_program.gRsLots.Reload();
}

void frmPurchaseList::ChgDataGridPurchaseListColor()
{
    ChooseGridColor(*DataGridPurchaseList, m_program.settings.PPDataGridColor,
                    m_program.services.dialogs);
}

void frmPurchaseList::DeleteRowEntry()
{
    if (!DataGridPurchaseList->CommitRow())
        return;
    DataGridPurchaseList_RowColChange();
    cmdClose->setFocus();
    OpenDeleteOptions(m_program, QStringLiteral("popPPDelete"));
}
