#include "transactions/frm_transaction_update.h"

#include "platform/widgets/click_list.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/field_edit.h"
#include "transactions/entry_fields.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

void frmTransactionUpdate::BuildControls()
{
    const auto label = [this](const char *name, const char *caption) {
        auto *made = new QLabel(QString::fromUtf8(caption), this);
        made->setObjectName(QString::fromUtf8(name));
        return made;
    };
    const auto field = [this](const char *name, const QString &keys, const char *tip) {
        auto *made = new FieldEdit(this);
        made->setObjectName(QString::fromUtf8(name));
        made->SetAllowedKeys(keys);
        made->setToolTip(QString::fromUtf8(tip));
        return made;
    };
    lblSymbol = label("lblSymbol", "Symbol");
    lblName = label("lblName", "Name");
    lblAction = label("lblAction", "Transaction type");
    lblShares = label("lblShares", "");
    lblPrice = label("lblPrice", "");
    lblCommission = label("lblCommission", "Commission");
    lblTransDate = label("lblTransDate", "Transaction date");

    const QString digits = m_program.services.formats.NumberKeys();
    txtSymbol = field("txtSymbol", {}, "");
    txtName = field("txtName", {}, "");
    for (FieldEdit *shown : {txtSymbol, txtName}) {
        shown->setReadOnly(true);
        shown->setFocusPolicy(Qt::NoFocus);
    }
    txtNumberOfShares = field("txtNumberOfShares", digits, "");
    txtPurchasePrice = field("txtPurchasePrice", digits + QStringLiteral("/ ,"), "");
    txtCommCost = field("txtCommCost", digits, "Change if different from calculated amount");
    txtNumberOfShares->SetSingleKeys(m_program.services.formats.DecimalSigns());

    lstAction = new ClickList(this);
    lstAction->setObjectName(QStringLiteral("lstAction"));
    lstAction->setToolTip(QStringLiteral("Select action type"));
    lstAction->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    dtpTransDate = new DateField(m_program.services, this);
    dtpTransDate->setObjectName(QStringLiteral("dtpTransDate"));
    dtpTransDate->setToolTip(QStringLiteral("Transaction date"));

    lblSymbol->setBuddy(txtSymbol);
    lblName->setBuddy(txtName);
    lblAction->setBuddy(lstAction);
    lblShares->setBuddy(txtNumberOfShares);
    lblPrice->setBuddy(txtPurchasePrice);
    lblCommission->setBuddy(txtCommCost);
    lblTransDate->setBuddy(dtpTransDate);
    for (const QLabel *named : {lblSymbol, lblName, lblAction, lblCommission, lblTransDate})
        named->buddy()->setAccessibleName(named->text());
}

void frmTransactionUpdate::BuildButtons()
{
    cmdOK = MakeButton("cmdOK", "&OK");
    cmdOK->setDefault(true);
    cmdClose = MakeButton("cmdClose", "&Close");
    cmdHelp = MakeButton("cmdHelp", "&Help");
    cmdUndoLast = MakeButton("cmdUndoLast", "&Undo Last");
    cmdWizard = MakeButton("cmdWizard", "&Wizard");
}

void frmTransactionUpdate::BuildLayout()
{
    auto *list = new QVBoxLayout;
    list->addWidget(lblAction);
    list->addWidget(lstAction, 1);

    auto *fields = new QGridLayout;
    const std::pair<QLabel *, QWidget *> rows[] = {
        {lblSymbol, txtSymbol},       {lblName, txtName},           {lblShares, txtNumberOfShares},
        {lblPrice, txtPurchasePrice}, {lblCommission, txtCommCost}, {lblTransDate, dtpTransDate}};
    int row = 0;
    for (const auto &[label, control] : rows) {
        fields->addWidget(label, row, 0);
        fields->addWidget(control, row++, 1);
    }
    fields->setRowStretch(row, 1);
    fields->setColumnStretch(1, 1);
    // Room for the longest caption of all actions, so that nothing moves from one to the next.
    int captions = lblTransDate->sizeHint().width();
    for (int action = 0; action < ActionTexts().size(); ++action)
        captions = qMax(captions, lblShares->fontMetrics().horizontalAdvance(
                                      FieldsOf(Action(action)).SharesCaption));
    fields->setColumnMinimumWidth(0, captions);
    txtName->setMinimumWidth(fontMetrics().averageCharWidth() * 30);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdClose);
    buttons->addWidget(cmdHelp);
    buttons->addStretch();
    buttons->addWidget(cmdUndoLast);
    buttons->addWidget(cmdWizard);

    auto *entry = new QHBoxLayout;
    entry->addLayout(list);
    entry->addSpacing(6);
    entry->addLayout(fields, 1);
    auto *all = new QVBoxLayout(this);
    all->addLayout(entry, 1);
    all->addSpacing(4);
    all->addLayout(buttons);

    QWidget *order[] = {lstAction, txtNumberOfShares, txtPurchasePrice, txtCommCost, dtpTransDate,
                        cmdOK,     cmdClose,          cmdHelp,          cmdUndoLast, cmdWizard};
    for (size_t at = 1; at < std::size(order); ++at)
        setTabOrder(order[at - 1], order[at]);
}

void frmTransactionUpdate::ConnectControls()
{
    const auto words = [this](QString EntryFields::*text) {
        Status(FieldsOf(CurrentAction()).*text);
    };
    lstAction->OnClick = [this] { Guarded([this] { lstAction_Click(); }); };
    lstAction->installEventFilter(this);
    dtpTransDate->installEventFilter(this);
    txtNumberOfShares->OnGotFocus = [words] { words(&EntryFields::SharesStatus); };
    txtNumberOfShares->OnLostFocus = [this] { txtNumberOfShares_LostFocus(); };
    txtPurchasePrice->OnGotFocus = [this, words] {
        txtPurchasePrice_GotFocus();
        words(&EntryFields::PriceStatus);
    };
    txtPurchasePrice->OnValidate = [this] { return m_unloading || txtPurchasePrice_Validate(); };
    txtCommCost->OnGotFocus = [this] { txtCommCost_GotFocus(); };
    txtCommCost->OnKeyUp = [this](QKeyEvent *) { txtCommCost_KeyUp(); };
    txtCommCost->OnLostFocus = [this] { txtCommCost_LostFocus(); };
    connect(txtCommCost, &QLineEdit::textEdited, this, [this](const QString &text) {
        m_program.entry.Commission =
            AmountFromText(text, m_program.services.formats).value_or(Currency());
    });
    OnClick(cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdClose, [this] { UnloadMe(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("DTTransactionUpdate.html")); });
    OnClick(cmdUndoLast, [this] { cmdUndoLast_Click(); });
    OnClick(cmdWizard, [this] { StartRebuildFromHistory(m_program); });
}

void frmTransactionUpdate::ShowFields()
{
    const EntryFields &fields = FieldsOf(CurrentAction());
    EntryState &entry = m_program.entry;
    entry.NoCommission = IsFreeOfCommission(CurrentAction(), entry.CurrentSecurityType);
    lblShares->setText(fields.SharesCaption);
    lblPrice->setText(fields.PriceCaption);
    txtNumberOfShares->setToolTip(fields.SharesTip);
    txtPurchasePrice->setToolTip(fields.PriceTip);
    txtNumberOfShares->setAccessibleName(fields.SharesCaption);
    txtPurchasePrice->setAccessibleName(fields.PriceCaption);
    for (FieldEdit *field : {txtSymbol, txtName, txtPurchasePrice})
        field->SetOn(fields.SecurityOn);
    txtCommCost->SetOn(fields.CommissionOn && !entry.NoCommission);
}
