#pragma once

/// The one screen through which all ten actions are posted. It stays on top of all windows, so that
/// the user can choose one row after the other in the Daily Tracker and enter what happened to it.
///
/// The price cycle stands still while it is open.

#include "program/form.h"
#include "program/rebuild_wizard.h"
#include "program/price_cycle_pause.h"

#include "transactions/posting.h"

class ClickList;
class DateField;
class FieldEdit;
class QLabel;

class frmTransactionUpdate : public Form, public RebuildScreen, private EntryFiller
{
public:
    explicit frmTransactionUpdate(Program &program);

    void Load() override;
    /// Goes over to the selected row when it is another one than that of the entry.
    void Activate() override;
    void OnUnload() override;

    /// Blanks what is typed; symbol, name, action and date stay.
    void ClearObjects() override;
    /// Turns OK, Close and Wizard each to the opposite, before and after a rebuild.
    void DisEnaCommandButtons() override;
    void ShowReplayed(const TransactionEntry &entry) override;
    bool IsPosting() const override { return ActionClickBlocked; }

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // frm_transaction_update_layout.cpp
    void BuildControls();
    void BuildButtons();
    void BuildLayout();
    void ConnectControls();
    void ShowFields();

    Action CurrentAction() const;
    void TakeSelection();
    void FollowSelection();
    bool LookUpType();
    void RefreshSecurity();
    void ShowSecurityScreen();
    void UpdateUndoButton();

    void lstAction_Click();
    bool RefreshEntryFields();
    TransactionEntry ReadEntry() const;
    void ShowEntry(const TransactionEntry &entry);

    // frm_transaction_update_fields.cpp
    void txtNumberOfShares_LostFocus();
    void txtPurchasePrice_GotFocus();
    bool txtPurchasePrice_Validate();
    void txtCommCost_GotFocus();
    void txtCommCost_KeyUp();
    void txtCommCost_LostFocus();
    void ShowProposedCommission(const QString &price);
    void ShowZeroCommission();

    void cmdOK_Click();
    void ReloadPricesLater(const QString &symbol);
    void FinishOK(PostingOutcome outcome);
    void cmdUndoLast_Click();
    bool OpenTracker();

    void Focus(EntryField field) override;
    void SelectAction(Action action) override;

    FieldEdit *txtSymbol = nullptr;
    FieldEdit *txtName = nullptr;
    ClickList *lstAction = nullptr;
    FieldEdit *txtNumberOfShares = nullptr;
    FieldEdit *txtPurchasePrice = nullptr;
    FieldEdit *txtCommCost = nullptr;
    DateField *dtpTransDate = nullptr;
    QLabel *lblSymbol = nullptr;
    QLabel *lblName = nullptr;
    QLabel *lblAction = nullptr;
    QLabel *lblShares = nullptr;
    QLabel *lblPrice = nullptr;
    QLabel *lblCommission = nullptr;
    QLabel *lblTransDate = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdClose = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdUndoLast = nullptr;
    QPushButton *cmdWizard = nullptr;

    bool ActionClickBlocked = false; ///< a posting is under way: the list is the posting's
    PriceCyclePause m_priceCyclePause;
    bool m_typeFound = true;
    bool m_unloading = false; ///< the fields go unchecked
    bool m_placed = false;
    const QObject *m_entered = nullptr; ///< the list or the date, while it is the field in use
};
