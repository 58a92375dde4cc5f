#include "transactions/frm_security_update.h"

#include "platform/command_groups.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/field_edit.h"
#include "program/list_refresh.h"
#include "store/failed_write.h"
#include "transactions/undo.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QTabWidget>

#include <utility>

namespace
{

constexpr int SecurityTab = 0;
constexpr int ClassesTab = 1;

} // namespace

frmSecurityUpdate::frmSecurityUpdate(Program &program)
    : Form(program, QStringLiteral("frmSecurityUpdate"), QString(), Placement::Dialog),
      m_source(AdodcSecurityAssetClass, program.services.formats)
{
    BuildControls();
    ConnectControls();
}

// --- coming and going ---------------------------------------------------------------------------

void frmSecurityUpdate::Load()
{
    m_isEdit = m_program.services.commands.Checked(QStringLiteral("popDTEdit"));
    setWindowTitle(m_isEdit ? QStringLiteral("Security Edit")
                            : QStringLiteral("New Security Update"));
    combSymbolList->setEnabled(m_isEdit);
    m_priceCyclePause.Suspend(m_program);
    OpenTracker();
    PostingWork posting = m_program.Posting();
    CommitUndoTransaction(posting);
    EnableUndoCommands(m_program.services.commands, false);

    m_selection = m_program.selection;
    LoadSymbolList();
    LoadClassNames();
    if (m_isEdit)
        EditSecurityOf(m_selection.CurrentSymbol, m_selection.CurrentName);
    else
        ClearFields();
}

/// The position rows are the Daily Tracker's; one that the user has closed is opened again.
void frmSecurityUpdate::OpenTracker()
{
    if (m_program.AdodcStockHistory.IsOpen())
        return;
    const Selection selected = m_program.selection;
    m_program.screens.Show(QStringLiteral("frmDailyTracker"));
    m_program.selection = selected;
}

void frmSecurityUpdate::showEvent(QShowEvent *event)
{
    Form::showEvent(event);
    txtSymbol->setFocus();
}

bool frmSecurityUpdate::QueryUnload()
{
    return !EntryError ||
           MsgBox(QStringLiteral("You have not corrected all your errors!\n\n"
                                 "You really want to exit?"),
                  Box::YesNo + Box::Question + Box::SecondDefault, EditorTitle()) == Answer::Yes;
}

void frmSecurityUpdate::OnUnload()
{
    m_unloading = true;
    DataGridAssetClass->CancelRow();
    // What was only typed selects nothing; the grid goes to the row that was worked on last.
    m_program.selection = m_selection;
    m_program.AdodcStockHistory.Find(m_selection.CurrentSymbol);
    if (m_program.UpdatePortfolioTotals)
        m_program.UpdatePortfolioTotals();
    UncheckPopMenuOptions(m_program.services.commands);
    m_priceCyclePause.Resume(m_program);
}

bool frmSecurityUpdate::eventFilter(QObject *watched, QEvent *event)
{
    const bool done = Form::eventFilter(watched, event);
    if (watched == combSymbolList && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            Guarded([this] { combSymbolList_LostFocus(); });
    }
    return done;
}

// --- fields -------------------------------------------------------------------------------------

SecurityWork frmSecurityUpdate::Work()
{
    return {m_program.AdodcStockHistory, m_program.gRsLots, m_program.databases.gConnAccount,
            m_program.databases.gConnApplControl, m_program.services.clock};
}

SecurityFields frmSecurityUpdate::ReadFields() const
{
    SecurityFields fields{txtSymbol->text(), txtName->text().trimmed(),
                          combSecurityType->currentText()};
    if (fields.Symbol != m_symbol)
        fields.Symbol = fields.Symbol.trimmed();
    if (m_isEdit && m_symbol.isEmpty())
        fields.Symbol.clear(); // nothing was chosen to be edited
    return fields;
}

void frmSecurityUpdate::ShowFields(const SecurityFields &fields)
{
    txtSymbol->setText(fields.Symbol);
    txtName->setText(fields.Name);
    txtName->setCursorPosition(0);
    combSecurityType->setCurrentIndex(combSecurityType->findText(fields.SecurityType));
}

void frmSecurityUpdate::ClearFields()
{
    m_symbol.clear();
    m_trackerSymbol.clear();
    m_detail = {};
    ShowFields({});
    combSymbolList->setCurrentIndex(-1);
    AdodcSecurityAssetClass.Open(m_program.databases.gConnApplControl, QString());
    ShowClasses();
}

void frmSecurityUpdate::LoadSymbolList()
{
    combSymbolList->clear();
    combSymbolList->addItems(SecurityList(m_program.databases.gConnApplControl));
    combSymbolList->setCurrentIndex(-1);
}

void frmSecurityUpdate::EditSecurityOf(const QString &symbol, const QString &name)
{
    m_program.selection.CurrentSymbol = symbol;
    m_program.selection.CurrentName = name;
    m_symbol = m_trackerSymbol = symbol;
    if (m_program.AdodcStockHistory.Find(symbol))
        m_selection = m_program.selection;
    ShowFields({symbol, name, QString()});
    LoadSecurityRow();
}

void frmSecurityUpdate::LoadSecurityRow()
{
    Connection &gConnApplControl = m_program.databases.gConnApplControl;
    const QString symbol = m_program.selection.CurrentSymbol;
    const std::optional<SecurityFields> row = LoadSecurityDetail(gConnApplControl, symbol);
    const SecurityFields before = std::exchange(m_detail, row.value_or(SecurityFields()));
    if (m_isEdit) {
        combSecurityType->setCurrentIndex(combSecurityType->findText(m_detail.SecurityType));
    } else if (row) {
        ShowFields(*row);
    } else if (!before.Symbol.isEmpty() && txtName->text() == before.Name) {
        ShowFields({symbol, {}, {}}); // what was shown belongs to another security
    }

    // Classes that were entered before the symbol of a new security stay with it.
    SecurityClasses stored;
    stored.Open(gConnApplControl, symbol);
    if (!m_isEdit && stored.RecordCount() == 0 && AdodcSecurityAssetClass.AllNew())
        AdodcSecurityAssetClass.SetSymbol(symbol);
    else
        AdodcSecurityAssetClass = stored;
    ShowClasses();
}

/// Goes over to another security, of the list or typed in; one that nobody knows is left alone.
void frmSecurityUpdate::EditKnownSecurity(const QString &symbol)
{
    const std::optional<SecurityFields> row =
        LoadSecurityDetail(m_program.databases.gConnApplControl, symbol);
    TrackerRecordset &rows = m_program.AdodcStockHistory;
    const bool isHeld = rows.Find(symbol);
    if (!row && !isHeld)
        return;
    const QString name = isHeld ? rows.Current().Name : row->Name;
    EditSecurityOf(symbol, name);
}

// --- leaving a field ----------------------------------------------------------------------------

void frmSecurityUpdate::txtSymbol_LostFocus()
{
    if (m_unloading || txtSymbol->text() == m_symbol)
        return;
    const QString symbol = txtSymbol->text().trimmed();
    txtSymbol->setText(symbol);
    if (symbol.isEmpty() || symbol == m_symbol)
        return;
    if (!m_isEdit) {
        m_program.selection.CurrentSymbol = m_symbol = symbol;
        LoadSecurityRow();
    } else if (m_symbol.isEmpty()) {
        EditKnownSecurity(symbol);
    } else {
        RenameTo(symbol);
    }
}

void frmSecurityUpdate::RenameTo(const QString &symbol)
{
    // The positions of two securities would become one for good; OK says that this cannot be.
    if (IsInPortfolio(m_program.AdodcStockHistory, symbol, m_trackerSymbol))
        return;
    SecurityWork work = Work();
    const bool wasKnown = LoadSecurityDetail(work.gConnApplControl, symbol).has_value();
    if (!Write([&] { RenameSymbol(work, m_symbol, symbol); })) {
        txtSymbol->setText(m_symbol);
        return;
    }
    m_program.selection.CurrentSymbol = m_symbol = symbol;
    FollowRow();
    LoadSymbolList();
    AdodcSecurityAssetClass.SetSymbol(symbol);
    if (wasKnown) // another account has it, with classes of its own
        AdodcSecurityAssetClass.Open(work.gConnApplControl, symbol);
    ShowClasses();
}

void frmSecurityUpdate::txtName_LostFocus()
{
    const QString name = txtName->text().trimmed();
    QString &current = m_program.selection.CurrentName;
    if (m_unloading || !m_isEdit || m_symbol.isEmpty() || name.isEmpty() || name == current)
        return;
    SecurityWork work = Work();
    if (!Write([&] { ChangeName(work, m_symbol, name); })) {
        txtName->setText(current);
        return;
    }
    current = name;
    FollowRow();
    LoadSymbolList();
}

/// False, after a box, when the change was not saved.
bool frmSecurityUpdate::Write(const std::function<void()> &change)
{
    try {
        change();
        return true;
    } catch (const FailedWrite &error) {
        m_isRefused = true;
        MsgBox(error.Text(), Box::Exclamation, EditorTitle());
        return false;
    }
}

/// The position row has taken the new symbol or name over.
void frmSecurityUpdate::FollowRow()
{
    m_trackerSymbol = m_symbol;
    if (m_program.AdodcStockHistory.Find(m_symbol))
        m_selection = m_program.selection;
    RefreshOpenLists(m_program);
}

void frmSecurityUpdate::combSymbolList_LostFocus()
{
    const QString symbol = SymbolOfListEntry(combSymbolList->currentText());
    if (!m_unloading && !symbol.isEmpty() && symbol != m_symbol)
        EditKnownSecurity(symbol);
}

// --- buttons ------------------------------------------------------------------------------------

void frmSecurityUpdate::cmdOK_Click()
{
    m_isRefused = false;
    cmdOK->setFocus(); // the field is left first
    if (m_isRefused)
        return;
    try {
        if (!DataGridAssetClass->CommitRow() || !Validate())
            return;
        const SecurityFields fields = ReadFields();
        if (IsInPortfolio(m_program.AdodcStockHistory, fields.Symbol, m_trackerSymbol)) {
            MsgBox(QStringLiteral("The symbol you're trying to add is already in your portfolio!"),
                   Box::Exclamation, EditorTitle());
            return;
        }
        Save(fields);
    } catch (const RuntimeError &error) {
        MsgBox(QStringLiteral("Error number %1\nDescription ").arg(error.Number()) +
                   error.Description(),
               Box::Stop, EditorTitle());
        m_program.services.lifetime.End();
    }
}

/// False, after a message, when something has to be corrected.
bool frmSecurityUpdate::Validate()
{
    const SecurityError error = ValidateSecurity(ReadFields(), AdodcSecurityAssetClass);
    ShowClasses();
    EntryError = error != SecurityError::None;
    if (!EntryError)
        return true;
    MsgBox(SecurityErrorText(error), Box::Exclamation, EditorTitle());
    GoToError(error);
    if (error == SecurityError::Allocation &&
        MsgBox(QStringLiteral("Would you like to evenly allocate all selected sectors?"),
               Box::YesNo, EditorTitle()) == Answer::Yes) {
        AdodcSecurityAssetClass.AllocateEvenly();
        ShowClasses();
    }
    return false;
}

void frmSecurityUpdate::GoToError(SecurityError error)
{
    SSTabAssetClass->setCurrentIndex(error == SecurityError::Allocation ? ClassesTab : SecurityTab);
    switch (error) {
    case SecurityError::Symbol:
        txtSymbol->setFocus();
        return;
    case SecurityError::Name:
        txtName->setFocus();
        return;
    case SecurityError::SecurityType:
        combSecurityType->setFocus();
        return;
    case SecurityError::Allocation:
        txtPerCentAllocated->setFocus();
        txtPerCentAllocated->selectAll();
        return;
    case SecurityError::None:
        return;
    }
}

void frmSecurityUpdate::Save(const SecurityFields &fields)
{
    SecurityWork work = Work();
    if (m_isEdit)
        SaveSecurity(work, fields, AdodcSecurityAssetClass, m_trackerSymbol);
    else
        SaveNewSecurity(work, fields, AdodcSecurityAssetClass);
    m_program.selection.CurrentSymbol = fields.Symbol;
    m_program.selection.CurrentName = fields.Name;
    if (work.rows.Find(fields.Symbol))
        m_selection = m_program.selection;
    LoadSymbolList();
    if (m_program.UpdatePortfolioTotals)
        m_program.UpdatePortfolioTotals(); // shows the rows anew
    RefreshOpenLists(m_program);
    ClearFields();
    SSTabAssetClass->setCurrentIndex(SecurityTab);
    txtSymbol->setFocus();
}
