#include "lists/frm_delete_options.h"

#include "platform/widgets/date_field.h"
#include "program/list_refresh.h"
#include "program/wait_cursor.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>

using namespace std::chrono_literals;

namespace
{

DeleteTable CheckedTable(const CommandStates &commands)
{
    if (commands.Checked(QStringLiteral("popHLDelete")))
        return DeleteTable::History;
    if (commands.Checked(QStringLiteral("popPPDelete")))
        return DeleteTable::PriceHistory;
    if (commands.Checked(QStringLiteral("popPLDelete")))
        return DeleteTable::DailyProfitLoss;
    return DeleteTable::None;
}

} // namespace

frmDeleteOptions::frmDeleteOptions(Program &program)
    : Form(program, QStringLiteral("frmDeleteOptions"), QStringLiteral("Delete Options"),
           Placement::Dialog)
{
    BuildControls();
    BuildLayout();
    OnClick(cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdCancel, [this] { cmdCancel_Click(); });
    OnClick(cmdHelp, [this] { m_program.screens.ShowHelp(QStringLiteral("DeleteScreen.html")); });
}

void frmDeleteOptions::BuildControls()
{
    fraDeleteOptions = new QGroupBox(QStringLiteral("Delete options"), this);
    fraDeleteOptions->setObjectName(QStringLiteral("fraDeleteOptions"));
    const auto option = [this](const char *name, const char *caption) {
        auto *button = new QRadioButton(QString::fromUtf8(caption), fraDeleteOptions);
        button->setObjectName(QString::fromUtf8(name));
        On(button, &QRadioButton::clicked, [this] { m_program.UserActed(); });
        return button;
    };
    optCurrentRow = option("optCurrentRow", "Current selected row.");
    optAllSelected = option("optAllSelected", "All rows for selected symbol.");
    optSymbolDate =
        option("optSymbolDate", "Selected symbol starting with oldest up to and including:");
    optAllDate = option("optAllDate", "All symbols starting with oldest up to and including:");

    const auto picker = [this](const char *name, QRadioButton *option) {
        auto *field = new DateField(m_program.services, fraDeleteOptions);
        field->setObjectName(QString::fromUtf8(name));
        field->setAccessibleName(option->text());
        On(field, &DateField::dateChanged, [this, option] {
            m_program.UserActed();
            option->setChecked(true); // a date that was picked is meant to count
        });
        return field;
    };
    dtpSelSymTo = picker("dtpSelSymTo", optSymbolDate);
    dtpAllTo = picker("dtpAllTo", optAllDate);

    cmdOK = MakeButton("cmdOK", "&OK");
    cmdOK->setDefault(true);
    cmdCancel = MakeButton("cmdCancel", "&Cancel");
    cmdHelp = MakeButton("cmdHelp", "&Help");
}

void frmDeleteOptions::BuildLayout()
{
    auto *lblSelectedSymbol = new QLabel(QStringLiteral("Selected Symbol "), this);
    lblSelectedSymbol->setObjectName(QStringLiteral("lblSelectedSymbol"));
    txtSelectedSymbol = new QLineEdit(this);
    txtSelectedSymbol->setObjectName(QStringLiteral("txtSelectedSymbol"));
    txtSelectedSymbol->setAccessibleName(QStringLiteral("Selected Symbol"));
    txtSelectedSymbol->setReadOnly(true);
    txtSelectedSymbol->setFocusPolicy(Qt::NoFocus);
    auto *head = new QHBoxLayout;
    head->addWidget(lblSelectedSymbol);
    head->addWidget(txtSelectedSymbol);
    head->addStretch();

    auto *options = new QGridLayout(fraDeleteOptions);
    options->addWidget(optCurrentRow, 0, 0);
    options->addWidget(optAllSelected, 1, 0);
    options->addWidget(optSymbolDate, 2, 0);
    options->addWidget(dtpSelSymTo, 2, 1);
    options->addWidget(optAllDate, 3, 0);
    options->addWidget(dtpAllTo, 3, 1);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton *button : {cmdOK, cmdCancel, cmdHelp})
        buttons->addWidget(button);
    auto *all = new QVBoxLayout(this);
    all->addLayout(head);
    all->addWidget(fraDeleteOptions);
    all->addLayout(buttons);
}

void frmDeleteOptions::Load()
{
    const QDate today = m_program.services.clock.Today();
    dtpSelSymTo->setDate(today);
    dtpAllTo->setDate(today);
    optCurrentRow->setChecked(
        true); // the one that takes the least; after the dates, which choose theirs
    m_table = CheckedTable(m_program.services.commands);
    if (m_table != DeleteTable::None)
        setWindowTitle(DeleteCaption(m_table));
    txtSelectedSymbol->setText(m_program.selection.CurrentSymbol);
    DeleteCanceled = false;
    optCurrentRow->setFocus();
    Status(QStringLiteral("Please select delete option"));
}

DeleteChoice frmDeleteOptions::ReadChoice() const
{
    DeleteChoice choice;
    choice.table = m_table;
    choice.symbol = m_program.selection.CurrentSymbol;
    choice.rowID = m_program.selection.SelectedRowID;
    if (optAllSelected->isChecked()) {
        choice.option = DeleteOption::AllSelected;
    } else if (optSymbolDate->isChecked()) {
        choice.option = DeleteOption::SymbolDate;
        choice.upTo = dtpSelSymTo->date();
    } else if (optAllDate->isChecked()) {
        choice.option = DeleteOption::AllDate;
        choice.upTo = dtpAllTo->date();
    }
    return choice;
}

void frmDeleteOptions::cmdOK_Click()
{
    const DeleteChoice choice = ReadChoice();
    if (!ConfirmDelete(m_program.services, choice))
        return;
    if (choice.table == DeleteTable::None) {
        MsgBox(QStringLiteral("Delete what?"), Box::Exclamation, CaptionEditor());
        return;
    }
    {
        const WaitCursor hourglass;
        const int count = DeleteRows(m_program.databases.gConnAccount, choice);
        if (choice.table == DeleteTable::PriceHistory && m_program.gRsLots.IsOpen())
            m_program.gRsLots.Reload(); // else a posting would go on with lots that are gone
        Status(QStringLiteral("A total of %1 Row(s) were deleted").arg(count));
    }
    // The rows are gone: until the count has been read, nothing here can be pressed once more.
    setEnabled(false);
    const QPointer<frmDeleteOptions> alive = this;
    m_program.services.clock.Wait(3s);
    if (alive)
        UnloadMe();
}

void frmDeleteOptions::cmdCancel_Click()
{
    DeleteCanceled = true;
    UnloadMe();
}

void frmDeleteOptions::OnUnload()
{
    if (!DeleteCanceled) {
        if (const std::optional<QString> reminder = DeleteReminder(ReadChoice()))
            MsgBox(*reminder, Box::Information, CaptionEditor());
        if (m_table == DeleteTable::History && !m_program.run.WizardReminderShown) {
            MsgBox(
                QStringLiteral("REMINDER! When manually deleting transaction history, it may be\n"
                               "nescessary to run the Wizard to get your portfolio in 'sink' with "
                               "buy\nand sell orders."),
                Box::Information, CaptionEditor());
            m_program.run.WizardReminderShown = true;
        }
        RefreshOpenLists(m_program);
    }
    Status(QString());
}
