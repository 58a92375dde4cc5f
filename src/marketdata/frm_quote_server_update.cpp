#include "marketdata/frm_quote_server_update.h"

#include "marketdata/quote_site_rows.h"
#include "platform/files.h"
#include "platform/widgets/colors.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/list_grid.h"
#include "program/wait_cursor.h"
#include "store/failed_write.h"

#include <QApplication>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace
{

const QString CharToPriceCaption = QStringLiteral("Characters to Price");
constexpr int ShortestPasted = 4; ///< a text as long as this was pasted to be counted
constexpr int CountMargin = 10;   ///< characters searched beyond the text that was counted

} // namespace

frmQuoteServerUpdate::frmQuoteServerUpdate(Program &program)
    : Form(program, QStringLiteral("frmQuoteServerUpdate"), QStringLiteral("Quote Server Update"),
           Placement::Child),
      m_source(AdodcQuoteServerUpdate, program.services.formats)
{
    BuildGrid();
    ConnectGrid();
    BuildButtons();
}

void frmQuoteServerUpdate::BuildGrid()
{
    m_dataGridQuoteUpdate = new DataGrid(this);
    m_dataGridQuoteUpdate->setObjectName(QStringLiteral("DataGridQuoteUpdate"));
    m_dataGridQuoteUpdate->setAccessibleName(QStringLiteral("Quote sites"));
    m_dataGridQuoteUpdate->setToolTip(
        QStringLiteral("Type into a cell to change it; right click for popup menu options"));
    m_dataGridQuoteUpdate->SetAllowAddNew(true);
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(m_dataGridQuoteUpdate, 1);
}

void frmQuoteServerUpdate::BuildButtons()
{
    cmdTestRow = MakeButton("cmdTestRow", "&Test this row…");
    cmdTestRow->setToolTip(
        QStringLiteral("Asks the selected site for a price and shows what came back"));
    cmdLoadRows = MakeButton("cmdLoadRows", "&Load rows…");
    cmdLoadRows->setToolTip(QStringLiteral("Takes quote sites over from a file"));
    cmdSaveRows = MakeButton("cmdSaveRows", "&Save rows…");
    cmdSaveRows->setToolTip(QStringLiteral("Writes all quote sites to a file"));
    cmdHelp = MakeButton("cmdHelp", "Hel&p");
    m_lblSite = new QLabel(this);
    m_lblSite->setObjectName(QStringLiteral("lblSite"));
    m_lblSite->setTextFormat(Qt::PlainText);
    m_lblSite->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a name may be long
    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(8, 6, 8, 6);
    buttons->setSpacing(6);
    buttons->addWidget(cmdTestRow);
    buttons->addSpacing(16);
    buttons->addWidget(cmdLoadRows);
    buttons->addWidget(cmdSaveRows);
    buttons->addSpacing(16);
    buttons->addWidget(m_lblSite, 1);
    buttons->addWidget(cmdHelp);
    static_cast<QVBoxLayout *>(layout())->addLayout(buttons);

    OnClick(cmdTestRow, [this] { cmdTestRow_Click(); });
    OnClick(cmdLoadRows, [this] { cmdLoadRows_Click(); });
    OnClick(cmdSaveRows, [this] { cmdSaveRows_Click(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("QSQuoteServerUpdate.html")); });
}

void frmQuoteServerUpdate::ConnectGrid()
{
    DataGrid *grid = m_dataGridQuoteUpdate;
    grid->OnKeyPress = [this](int column, QChar typed) {
        return DataGridQuoteUpdate_KeyPress(column, typed);
    };
    grid->OnCellEdited = [this](int, int column) { DataGridQuoteUpdate_CellEdited(column); };
    grid->OnBeforeUpdate = [this](int) {
        bool allowed = false;
        Guarded([&] { allowed = DataGridQuoteUpdate_BeforeUpdate(); });
        return allowed;
    };
    grid->OnAfterUpdate = [this](int) {
        Guarded([this] { LoadSites(); });
        ShowSiteName();
    };
    grid->OnRowColChange = [this] { ShowSiteName(); };
    grid->OnDeleteKey = [this](int row) {
        Guarded([this, row] { DataGridQuoteUpdate_BeforeDelete(row); });
    };
    grid->OnMouseUp = [this](Qt::MouseButton) {
        m_program.UserActed();
        m_dataGridQuoteUpdate->setToolTip(QString());
    };
    grid->OnContextMenu = [this](const QPoint &where) {
        m_program.screens.ShowPopup(QStringLiteral("popQSQuoteServer"), where);
    };
    m_source.OnFailure = [this](const RuntimeError &error) {
        MsgBox(QStringLiteral("The row could not be stored: %1.\nIt stays as you typed it.")
                   .arg(ReasonOf(error)),
               Box::Exclamation, CaptionEditor());
    };
}

QSize frmQuoteServerUpdate::sizeHint() const
{
    return TenthsOfMainWindow(9, 8);
}

// --- load and unload ----------------------------------------------------------------------------

void frmQuoteServerUpdate::Load()
{
    const WaitCursor hourglass;
    Status(QString());
    m_priceCyclePause.Suspend(m_program);
    ApplyColor();
    AdodcQuoteServerUpdate.Open(m_program.databases.gConnWebSites, QuoteServerQuery());
    m_dataGridQuoteUpdate->SetSource(QuoteServerColumns(AdodcQuoteServerUpdate), &m_source);
    ShowSiteName();
}

bool frmQuoteServerUpdate::QueryUnload()
{
    if (m_dataGridQuoteUpdate->CommitRow())
        return true;
    return MsgBox(QStringLiteral("The changes of this row are not stored.\n"
                                 "Close the screen without them?"),
                  Box::YesNo + Box::Question + Box::SecondDefault, CaptionEditor()) == Answer::Yes;
}

void frmQuoteServerUpdate::OnUnload()
{
    m_dataGridQuoteUpdate->CancelRow();
    m_priceCyclePause.Resume(m_program);
    m_program.UserActed();
}

void frmQuoteServerUpdate::LoadSites()
{
    Databases &databases = m_program.databases;
    if (databases.gRsWebParameters.IsOpen())
        databases.gRsWebParameters.Close();
    LoadWebParameters(databases, m_program.settings, m_program.account, m_program.services);
}

void frmQuoteServerUpdate::ReloadRows()
{
    AdodcQuoteServerUpdate.Requery();
    ShowRows();
    LoadSites();
}

void frmQuoteServerUpdate::ShowRows()
{
    m_dataGridQuoteUpdate->RefreshRows();
    ShowSiteName();
}

/// The name is out of view when the columns at the right are worked on.
void frmQuoteServerUpdate::ShowSiteName()
{
    const int row = m_dataGridQuoteUpdate->CurrentRow();
    const int name = AdodcQuoteServerUpdate.Column(QStringLiteral("website Name"));
    m_lblSite->setText(row < 0 ? QString() : m_source.Text(row, name));
    m_lblSite->setToolTip(m_lblSite->text()); // for a name that is cut off
}

// --- cells and rows -----------------------------------------------------------------------------

QChar frmQuoteServerUpdate::DataGridQuoteUpdate_KeyPress(int column, QChar typed)
{
    if (column != AdodcQuoteServerUpdate.Column(CharToPriceCaption))
        return typed;
    switch (typed.unicode()) {
    case 8:   // backspace
    case 9:   // tab
    case 22:  // paste
    case 13:  // Enter, Escape and Delete are no characters: they
    case 27:  // leave the cell, take its text back
    case 127: // and clear it
        return typed;
    default:
        break;
    }
    if (typed >= u'0' && typed <= u'9')
        return typed;
    QApplication::beep();
    return QChar();
}

void frmQuoteServerUpdate::DataGridQuoteUpdate_CellEdited(int column)
{
    if (column != AdodcQuoteServerUpdate.Column(CharToPriceCaption))
        return;
    const qsizetype length = m_dataGridQuoteUpdate->EditedText(column).size();
    if (length >= ShortestPasted)
        m_dataGridQuoteUpdate->SetEditedText(column, QString::number(length + CountMargin));
}

bool frmQuoteServerUpdate::DataGridQuoteUpdate_BeforeUpdate()
{
    for (int column = 0; column < AdodcQuoteServerUpdate.ColumnNames().size(); ++column) {
        const std::optional<QString> refusal =
            m_source.Refusal(column, m_dataGridQuoteUpdate->EditedText(column));
        if (refusal) {
            MsgBox(*refusal, Box::Exclamation, CaptionEditor());
            return false;
        }
    }
    return true;
}

void frmQuoteServerUpdate::DataGridQuoteUpdate_BeforeDelete(int row)
{
    m_program.UserActed();
    if (MsgBox(QStringLiteral("Your are about to delete the selected row.  You will not \n"
                              "be able to undo this action. Continue anyway?"),
               Box::YesNo + Box::Question + Box::SecondDefault,
               QStringLiteral("Transaction History Editor")) == Answer::No)
        return;
    m_dataGridQuoteUpdate->CancelRow();
    AdodcQuoteServerUpdate.MoveTo(row);
    OrFail(QStringLiteral("The deletion of the quote site"),
           [&] { AdodcQuoteServerUpdate.Delete(); });
    ShowRows();
    LoadSites();
}

// --- buttons ------------------------------------------------------------------------------------

void frmQuoteServerUpdate::cmdTestRow_Click()
{
    if (!m_dataGridQuoteUpdate->CommitRow())
        return;
    const int row = m_dataGridQuoteUpdate->CurrentRow();
    if (row < 0) {
        MsgBox(QStringLiteral("Please select the row of a quote site first."), Box::Exclamation,
               CaptionEditor());
        return;
    }
    const FieldValue id = AdodcQuoteServerUpdate.ValueAt(row, 0);
    Recordset &sites = m_program.databases.gRsWebParameters;
    const int idColumn = sites.Column(QStringLiteral("ID"));
    for (sites.MoveFirst(); !sites.AtEnd() && sites.Value(idColumn) != id; sites.MoveNext()) {
    }
    m_program.screens.ShowModal(QStringLiteral("frmQuoteSiteTrial"));
    // The row of the practice site may have followed its server to another port.
    AdodcQuoteServerUpdate.Requery();
    ShowRows();
}

void frmQuoteServerUpdate::cmdLoadRows_Click()
{
    if (!m_dataGridQuoteUpdate->CommitRow())
        return;
    const std::optional<QString> path = PickRows(FileRequest::Kind::Open);
    if (!path)
        return;
    LoadedRows loaded;
    try {
        loaded = LoadQuoteSiteRows(m_program.databases.gConnWebSites, *path);
    } catch (const RuntimeError &error) {
        MsgBox(QStringLiteral("The rows could not be loaded. Nothing was changed.\n") +
                   error.Description(),
               Box::Exclamation, CaptionEditor());
        return;
    }
    ReloadRows();
    MsgBox(QStringLiteral("Quote sites replaced: %1\nQuote sites added: %2")
               .arg(loaded.replaced)
               .arg(loaded.added),
           Box::Information, CaptionEditor());
}

void frmQuoteServerUpdate::cmdSaveRows_Click()
{
    if (!m_dataGridQuoteUpdate->CommitRow())
        return;
    const std::optional<QString> path = PickRows(FileRequest::Kind::Save);
    if (!path || !MayReplace(*path))
        return;
    try {
        SaveQuoteSiteRows(m_program.databases.gConnWebSites, *path);
    } catch (const RuntimeError &error) {
        MsgBox(QStringLiteral("The rows could not be saved.\n") + error.Description(),
               Box::Exclamation, CaptionEditor());
        return;
    }
    Status(QStringLiteral("Quote sites saved to ") + QDir::toNativeSeparators(*path));
}

std::optional<QString> frmQuoteServerUpdate::PickRows(FileRequest::Kind kind)
{
    const bool isLoad = kind == FileRequest::Kind::Open;
    return m_program.services.dialogs.PickFile(
        {kind, isLoad ? QStringLiteral("Load Quote Sites") : QStringLiteral("Save Quote Sites"),
         QStringLiteral("Quote Sites (*.json)|*.json"),
         QDir::homePath() +
             (isLoad ? QStringLiteral("/*.json") : QStringLiteral("/quote_sites.json"))});
}

bool frmQuoteServerUpdate::MayReplace(const QString &path)
{
    return !Files::FileExists(path) ||
           MsgBox(QStringLiteral("The file is there already:\n%1\nReplace it?")
                      .arg(QDir::toNativeSeparators(path)),
                  Box::YesNo + Box::Question + Box::SecondDefault, CaptionEditor()) == Answer::Yes;
}

// --- look ---------------------------------------------------------------------------------------

bool frmQuoteServerUpdate::RunCommand(const QString &name)
{
    if (name != QLatin1String("popQSQuoteGridColor"))
        return false;
    ChgDataGridQuoteUpdateColor();
    return true;
}

void frmQuoteServerUpdate::ApplyColor()
{
    ApplyGridColor(*m_dataGridQuoteUpdate, m_program.settings.QSDataGridColor);
}

void frmQuoteServerUpdate::ChgDataGridQuoteUpdateColor()
{
    const std::optional<Rgb> color =
        m_program.services.dialogs.PickColor(m_dataGridQuoteUpdate->BackColor() & RGB_MASK);
    if (!color)
        return;
    m_dataGridQuoteUpdate->SetBackColor(*color | ~RGB_MASK);
    m_program.settings.QSDataGridColor = ValueOfColor(*color);
}
