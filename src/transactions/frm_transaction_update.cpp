#include "transactions/frm_transaction_update.h"

#include "marketdata/historical_rows.h"
#include "platform/widgets/click_list.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/field_edit.h"
#include "program/list_refresh.h"
#include "program/security_screen.h"
#include "program/wait_cursor.h"
#include "transactions/entry_fields.h"
#include "transactions/entry_validation.h"
#include "transactions/securities.h"
#include "transactions/undo.h"

#include <QFocusEvent>
#include <QPointer>

frmTransactionUpdate::frmTransactionUpdate(Program &program)
    : Form(program, QStringLiteral("frmTransactionUpdate"), QStringLiteral("Transaction Update"),
           Placement::OnTop)
{
    BuildControls();
    BuildButtons();
    lstAction->addItems(ActionTexts());
    lstAction->setCurrentRow(0);
    BuildLayout();
    ConnectControls();
}

// --- coming and going ---------------------------------------------------------------------------

void frmTransactionUpdate::Load()
{
    m_program.entry.PostingInProgress = false;
    m_priceCyclePause.Suspend(m_program);
    TakeSelection();
    m_typeFound = LookUpType();
    ShowFields();
    UpdateUndoButton();
    m_program.SelectionChanged = [this] { FollowSelection(); };
}

void frmTransactionUpdate::Activate()
{
    if (m_unloading || ActionClickBlocked || m_program.entry.RebuildMode)
        return;
    UpdateUndoButton();
    const QString &symbol = m_program.selection.CurrentSymbol;
    if (!symbol.trimmed().isEmpty() && symbol != txtSymbol->text()) { // a cash row has a blank
        ClearObjects();
        TakeSelection();
        m_typeFound = LookUpType();
        if (m_typeFound)
            lstAction_Click();
    } else if (m_typeFound) {
        RefreshSecurity();
    }
    if (!m_typeFound)
        ShowSecurityScreen();
}

void frmTransactionUpdate::OnUnload()
{
    m_unloading = true;
    m_program.SelectionChanged = nullptr;
    // A refused entry leaves the tracker's selection where it was; with the screen gone, a double
    // click must not open it for the security of before.
    if (!ActionClickBlocked)
        m_program.entry.PostingInProgress = false;
    m_priceCyclePause.Resume(m_program);
}

bool frmTransactionUpdate::event(QEvent *event)
{
    const bool done = Form::event(event);
    if (event->type() == QEvent::WindowActivate)
        Guarded([this] { Activate(); });
    return done;
}

/// Centred over the main window, at one seventh of its height.
void frmTransactionUpdate::showEvent(QShowEvent *event)
{
    Form::showEvent(event);
    if (m_placed || !parentWidget())
        return;
    m_placed = true;
    const QRect around = parentWidget()->window()->geometry();
    move(around.center().x() - width() / 2, around.top() + around.height() / 7);
}

/// The status words of the list and the date; a box or another window in between enters neither
/// anew.
bool frmTransactionUpdate::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && m_entered != watched) {
        m_entered = watched;
        Status(watched == lstAction ? QStringLiteral("Select action for this transaction")
                                    : QStringLiteral("Enter the transaction date..."));
    } else if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            m_entered = nullptr;
    }
    return Form::eventFilter(watched, event);
}

/// The row is shown at once where that needs no word to the user; whatever has to be said is said when
/// this screen comes to the front.
void frmTransactionUpdate::FollowSelection()
{
    const std::optional<QString> type = GetSecurityType(m_program.databases.gConnApplControl,
                                                        m_program.selection.CurrentSymbol);
    if (type && ActionFitsType(Action::Buy, *type))
        Activate();
}

void frmTransactionUpdate::TakeSelection()
{
    txtSymbol->setText(m_program.selection.CurrentSymbol);
    txtName->setText(m_program.selection.CurrentName);
    txtName->setCursorPosition(0);
    dtpTransDate->setDate(m_program.services.clock.Today());
    lstAction->setCurrentRow(int(Action::Buy));
}

/// False, after a message, when the master list has no type for the symbol.
bool frmTransactionUpdate::LookUpType()
{
    if (m_program.entry.RebuildMode) { // the replay trusts its ledger
        m_program.entry.CurrentSecurityType.clear();
        return true;
    }
    const QString symbol = txtSymbol->text();
    const std::optional<QString> type =
        GetSecurityType(m_program.databases.gConnApplControl, symbol);
    m_program.entry.CurrentSecurityType = type.value_or(QString());
    cmdOK->setEnabled(type.has_value());
    if (!type)
        MsgBox(MissingTypeMessage(symbol), Box::Exclamation, EditorTitle());
    return type.has_value();
}

/// Name and type, which the security screen may have changed meanwhile.
void frmTransactionUpdate::RefreshSecurity()
{
    if (txtSymbol->text() != m_program.selection.CurrentSymbol)
        return;
    if (txtName->text() != m_program.selection.CurrentName) {
        txtName->setText(m_program.selection.CurrentName);
        txtName->setCursorPosition(0);
    }
    QString &type = m_program.entry.CurrentSecurityType;
    type = GetSecurityType(m_program.databases.gConnApplControl, txtSymbol->text()).value_or(type);
}

void frmTransactionUpdate::ShowSecurityScreen()
{
    Program &program = m_program; // this screen may be gone when the other one comes back
    UnloadMe();
    ShowEditSecurityScreen(program);
}

void frmTransactionUpdate::UpdateUndoButton()
{
    cmdUndoLast->setEnabled(!m_program.entry.RebuildMode &&
                            m_program.services.commands.Enabled(QStringLiteral("UndoLast")));
}

void frmTransactionUpdate::ClearObjects()
{
    for (FieldEdit *field : {txtNumberOfShares, txtPurchasePrice, txtCommCost})
        field->clear();
}

void frmTransactionUpdate::DisEnaCommandButtons()
{
    for (QPushButton *button : {cmdOK, cmdClose, cmdWizard})
        button->setEnabled(!button->isEnabled());
}

void frmTransactionUpdate::ShowReplayed(const TransactionEntry &entry)
{
    txtSymbol->setText(entry.Symbol);
    txtName->setText(entry.Name);
    SelectAction(*entry.action);
    dtpTransDate->setDate(entry.TransDate);
    ShowEntry(entry);
}

// --- the entry ----------------------------------------------------------------------------------

Action frmTransactionUpdate::CurrentAction() const
{
    return static_cast<Action>(qMax(0, lstAction->currentRow()));
}

void frmTransactionUpdate::lstAction_Click()
{
    if (ActionClickBlocked || m_program.entry.RebuildMode)
        return;
    m_program.UserActed();
    ClearObjects();
    if (RefreshEntryFields())
        return;
    if (CurrentAction() == Action::BalanceAdjustment &&
        MsgBox(BalanceAdjustmentQuestion(), Box::YesNo + Box::Exclamation + Box::SecondDefault,
               EditorTitle()) != Answer::Yes) {
        lstAction->setCurrentRow(int(Action::Buy));
        lstAction_Click();
        return;
    }
    ShowFields();
    if (CurrentAction() == Action::Split || IsCashAction(CurrentAction()))
        txtNumberOfShares->setFocus();
}

/// Offers what the action has to offer on the position; true when the security cannot take it.
bool frmTransactionUpdate::RefreshEntryFields()
{
    TransactionEntry entry = ReadEntry();
    PostingWork work = m_program.Posting();
    const bool EntryError = ::RefreshEntryFields(work, entry);
    ShowEntry(entry);
    cmdOK->setEnabled(!EntryError);
    return EntryError;
}

TransactionEntry frmTransactionUpdate::ReadEntry() const
{
    TransactionEntry entry;
    entry.action = CurrentAction();
    entry.Symbol = txtSymbol->text();
    entry.Name = txtName->text();
    entry.NumberOfShares = txtNumberOfShares->text();
    entry.PurchasePrice = txtPurchasePrice->text();
    entry.TransDate = dtpTransDate->date();
    return entry;
}

void frmTransactionUpdate::ShowEntry(const TransactionEntry &entry)
{
    const auto show = [](FieldEdit *field, const QString &text) {
        if (field->text() == text)
            return;
        field->setText(text);
        if (field->hasFocus())
            field->selectAll();
    };
    show(txtNumberOfShares, entry.NumberOfShares);
    show(txtPurchasePrice, entry.PurchasePrice);
}

// --- buttons ------------------------------------------------------------------------------------

void frmTransactionUpdate::cmdOK_Click()
{
    if (ActionClickBlocked)
        return;
    cmdOK->setFocus(); // the field is left first; a price that must be corrected keeps the focus
    if (focusWidget() != cmdOK || !OpenTracker())
        return;
    ActionClickBlocked = true;
    TransactionEntry entry = ReadEntry();
    PostingWork work = m_program.Posting();
    const PostingOutcome outcome = PostTransaction(work, entry, *this);
    ShowEntry(entry);
    if (outcome != PostingOutcome::Rejected) {
        if (outcome == PostingOutcome::PostedSplit)
            ReloadPricesLater(entry.Symbol);
        FinishOK(outcome);
        return;
    }
    ActionClickBlocked = false;
    UpdateUndoButton();
    cmdOK->setEnabled(ActionFitsType(CurrentAction(), m_program.entry.CurrentSecurityType));
}

/// The daily prices are those of before the split, and a chart of them would fall off a cliff: the
/// next download loads them anew. The posting stands, whether this can be put down or not.
void frmTransactionUpdate::ReloadPricesLater(const QString &symbol)
{
    Guarded([&] { MarkPricesToReload(m_program.databases.gConnHistPrices, symbol); });
    m_program.priceUpdate.HistoricalRetryNeeded = true;
}

/// What follows a posting. The user may close this screen, or open another account, while the lists
/// are waited for.
void frmTransactionUpdate::FinishOK(PostingOutcome outcome)
{
    const QPointer<frmTransactionUpdate> alive = this;
    Program &program = m_program;
    const QString account = program.settings.CurrentFilePath;
    const WaitCursor hourglass;
    UpdateUndoButton();
    if (outcome == PostingOutcome::Posted && program.UpdatePortfolioTotals)
        program.UpdatePortfolioTotals();
    RefreshListsAfterPosting(program);
    PostingWork work = program.Posting();
    FinishPosting(work,
                  account == program.settings.CurrentFilePath ? outcome : PostingOutcome::Rejected);
    if (!alive)
        return;
    ClearObjects();
    ActionClickBlocked = false;
    UpdateUndoButton();
}

void frmTransactionUpdate::cmdUndoLast_Click()
{
    if (!m_program.services.commands.Enabled(QStringLiteral("UndoLast"))) {
        UpdateUndoButton(); // it was taken back by the main window's command
        return;
    }
    if (ActionClickBlocked || !OpenTracker())
        return;
    const QPointer<frmTransactionUpdate> alive = this;
    Program &program = m_program;
    PostingWork work = program.Posting();
    const UndoOutcome outcome = UndoLastTransaction(work, [&program] {
        if (program.ReloadDataGrid)
            program.ReloadDataGrid();
    });
    if (outcome == UndoOutcome::TakenBack)
        RefreshListsAfterPosting(program);
    if (!alive)
        return;
    if (outcome == UndoOutcome::Failed) { // to be tried again
        if (program.UpdatePortfolioTotals)
            program.UpdatePortfolioTotals();
        return;
    }
    ClearObjects();
    cmdUndoLast->setEnabled(false);
}

/// The positions come from the Daily Tracker; one that the user has closed is opened again.
bool frmTransactionUpdate::OpenTracker()
{
    return m_program.AdodcStockHistory.IsOpen() ||
           (m_program.screens.Show(QStringLiteral("frmDailyTracker")) &&
            m_program.AdodcStockHistory.IsOpen());
}

// --- what the checks ask for --------------------------------------------------------------------

void frmTransactionUpdate::Focus(EntryField field)
{
    switch (field) {
    case EntryField::Action:
        lstAction->setFocus();
        return;
    case EntryField::NumberOfShares:
        txtNumberOfShares->setFocus();
        txtNumberOfShares->selectAll();
        return;
    case EntryField::PurchasePrice:
        txtPurchasePrice->setFocus();
        txtPurchasePrice->selectAll();
        return;
    case EntryField::TransDate:
        dtpTransDate->setFocus();
        return;
    }
}

void frmTransactionUpdate::SelectAction(Action action)
{
    lstAction->setCurrentRow(static_cast<int>(action));
}
