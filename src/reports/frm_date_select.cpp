#include "reports/frm_date_select.h"

#include "platform/widgets/data_grid.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/flex_grid.h"
#include "program/daily_gains.h"
#include "program/list_date_range.h"
#include "program/wait_cursor.h"
#include "reports/report_run.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace
{

QString ExcelEditor()
{
    return EditorTitle(QStringLiteral("Excel"));
}

} // namespace

frmDateSelect::frmDateSelect(Program &program)
    : Form(program, QStringLiteral("frmDateSelect"), QString(), Placement::Dialog)
{
    BuildOptions();
    BuildRange();
    BuildSort();
    BuildLayout();
    OnClick(cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdCancel, [this] { UnloadMe(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("DateRangeScreen.html")); });
}

// --- controls -----------------------------------------------------------------------------------

QRadioButton *frmDateSelect::MakeOption(const char *name, const char *caption, QWidget *parent)
{
    auto *option = new QRadioButton(QString::fromUtf8(caption), parent);
    option->setObjectName(QString::fromUtf8(name));
    On(option, &QRadioButton::clicked, [this] { m_program.UserActed(); });
    return option;
}

void frmDateSelect::BuildOptions()
{
    fraOptions = new QGroupBox(QStringLiteral("Rows"), this);
    fraOptions->setObjectName(QStringLiteral("fraOptions"));
    optAll = MakeOption("optAll", "All", fraOptions);
    On(optAll, &QRadioButton::clicked, [this] { CheckTaxOptions(); });
    optSelectedSec = MakeOption("optSelectedSec", "Selected Security", fraOptions);
    On(optSelectedSec, &QRadioButton::clicked, [this] { optSelectedSec_Click(); });
    txtSelectedSec = new QLineEdit(fraOptions);
    txtSelectedSec->setObjectName(QStringLiteral("txtSelectedSec"));
    txtSelectedSec->setAccessibleName(optSelectedSec->text());
    txtSelectedSec->setReadOnly(true);
    txtSelectedSec->setFocusPolicy(Qt::NoFocus);
    chkDateRange = new QCheckBox(QStringLiteral("Date Range"), fraOptions);
    chkDateRange->setObjectName(QStringLiteral("chkDateRange"));
    On(chkDateRange, &QCheckBox::clicked, [this] {
        m_program.UserActed();
        CheckTaxOptions();
    });
    optDateRange = MakeOption("optDateRange", "Date Range", fraOptions);
}

DateField *frmDateSelect::MakePicker(const char *name, const char *labelName, const char *caption)
{
    auto *picker = new DateField(m_program.services, fraOptions);
    picker->setObjectName(QString::fromUtf8(name));
    picker->setAccessibleName(QString::fromUtf8(caption));
    On(picker, &DateField::dateChanged, [this] {
        m_program.UserActed();
        ChooseDateRange();
    });
    auto *label = new QLabel(QString::fromUtf8(caption), fraOptions);
    label->setObjectName(QString::fromUtf8(labelName));
    label->setBuddy(picker);
    return picker;
}

void frmDateSelect::BuildRange()
{
    dtpSelectFrom = MakePicker("dtpSelectFrom", "lblFrom", "From");
    lblFrom = fraOptions->findChild<QLabel *>(QStringLiteral("lblFrom"));
    dtpSelectTo = MakePicker("dtpSelectTo", "lblTo", "To");
    lblTo = fraOptions->findChild<QLabel *>(QStringLiteral("lblTo"));
}

void frmDateSelect::BuildSort()
{
    fraSort = new QGroupBox(QStringLiteral("Sort sequence"), this);
    fraSort->setObjectName(QStringLiteral("fraSort"));
    optSortByDate = MakeOption("optSortByDate", "Date", fraSort);
    optSortBySymbol = MakeOption("optSortBySymbol", "Security", fraSort);
    chkPrintTotals = new QCheckBox(QStringLiteral("Print Totals"), this);
    chkPrintTotals->setObjectName(QStringLiteral("chkPrintTotals"));
    On(chkPrintTotals, &QCheckBox::clicked, [this] { m_program.UserActed(); });
    cmdOK = MakeButton("cmdOK", "&OK");
    cmdOK->setDefault(true);
    cmdCancel = MakeButton("cmdCancel", "&Cancel");
    cmdHelp = MakeButton("cmdHelp", "&Help");
}

void frmDateSelect::BuildLayout()
{
    auto *range = new QHBoxLayout;
    range->addWidget(chkDateRange);
    range->addWidget(optDateRange);
    range->addSpacing(12);
    for (QWidget *widget :
         std::initializer_list<QWidget *>{lblFrom, dtpSelectFrom, lblTo, dtpSelectTo})
        range->addWidget(widget);
    range->addStretch();
    auto *security = new QHBoxLayout;
    security->addWidget(optSelectedSec);
    security->addWidget(txtSelectedSec);
    security->addStretch();
    auto *options = new QVBoxLayout(fraOptions);
    options->addWidget(optAll);
    options->addLayout(security);
    options->addLayout(range);

    auto *sort = new QHBoxLayout(fraSort);
    sort->addWidget(optSortByDate);
    sort->addWidget(optSortBySymbol);
    sort->addStretch();
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(chkPrintTotals);
    buttons->addStretch();
    for (QPushButton *button : {cmdOK, cmdCancel, cmdHelp})
        buttons->addWidget(button);
    auto *all = new QVBoxLayout(this);
    all->addWidget(fraOptions);
    all->addWidget(fraSort);
    all->addLayout(buttons);
}

// --- load and unload ----------------------------------------------------------------------------

void frmDateSelect::Load()
{
    m_program.run.DateSelectOpen = true;
    m_entry = CheckedReport(m_program.services.commands);
    SetDefaults();
    RecordTodaysGains(m_program);
    const bool isTracker = m_entry && m_entry->kind == ReportKind::DailyTracker;
    Status(isTracker ? QStringLiteral("Click OK to create this report")
                     : QStringLiteral("Please select option"));
    if (m_entry)
        setWindowTitle(QString::fromUtf8(m_entry->caption));
    SetControls(m_entry ? m_entry->offers : ReportOffers::AllOptions);
}

void frmDateSelect::SetDefaults()
{
    const QDate today = m_program.services.clock.Today();
    dtpSelectFrom->setDate(QDate(today.year(), 1, 1));
    dtpSelectTo->setDate(today);
    optAll->setChecked(true); // after the dates, which choose the range
    chkDateRange->setChecked(false);
    optSortByDate->setChecked(true);
    txtSelectedSec->setText(m_program.selection.CurrentSymbol);
}

void frmDateSelect::SetControls(ReportOffers offers)
{
    const auto setOff = [](std::initializer_list<QWidget *> controls) {
        for (QWidget *control : controls)
            control->setEnabled(false);
    };
    optDateRange->hide();
    optDateRange->setEnabled(false);
    switch (offers) {
    case ReportOffers::AllOptions:
        break;
    case ReportOffers::AllButTotals:
        setOff({chkPrintTotals});
        break;
    case ReportOffers::TaxOptions:
        setOff({optSelectedSec, optSortByDate, optSortBySymbol, chkPrintTotals, chkDateRange});
        chkDateRange->hide();
        optDateRange->setEnabled(true);
        optDateRange->show();
        break;
    case ReportOffers::Nothing:
        setOff({optAll, optSelectedSec, chkDateRange, chkPrintTotals, optSortByDate,
                optSortBySymbol, dtpSelectFrom, dtpSelectTo, lblFrom, lblTo});
        break;
    }
    txtSelectedSec->setEnabled(optSelectedSec->isEnabled());
    if (offers == ReportOffers::Nothing)
        cmdOK->setFocus();
    else
        optAll->setFocus();
}

void frmDateSelect::OnUnload()
{
    m_program.run.DateSelectOpen = false;
    Status(QString());
}

// --- options ------------------------------------------------------------------------------------

bool frmDateSelect::IsTaxReport() const
{
    return m_entry && m_entry->offers == ReportOffers::TaxOptions;
}

void frmDateSelect::CheckTaxOptions()
{
    if (IsTaxReport() && optAll->isChecked() && chkDateRange->isChecked())
        MsgBox(QStringLiteral("For this type of report only one of the options can be \n"
                              "selected, not both!"),
               Box::Exclamation, ExcelEditor());
}

/// A date that was picked is meant to count.
void frmDateSelect::ChooseDateRange()
{
    if (IsTaxReport())
        optDateRange->setChecked(true);
    else
        chkDateRange->setChecked(true);
}

void frmDateSelect::optSelectedSec_Click()
{
    if (m_program.selection.CurrentSymbol.trimmed().isEmpty())
        MsgBox(QStringLiteral("Please select a symbol by clicking on any row on the screen \n"
                              "before making this selection."),
               Box::Exclamation, ExcelEditor());
}

ReportChoice frmDateSelect::ReadChoice() const
{
    ReportChoice choice;
    choice.kind = m_entry->kind;
    if (optSelectedSec->isChecked())
        choice.rows = ReportRows::SelectedSecurity;
    else if (optDateRange->isChecked())
        choice.rows = ReportRows::DateRange;
    choice.symbol = m_program.selection.CurrentSymbol;
    choice.byDateRange = chkDateRange->isChecked();
    choice.from = dtpSelectFrom->date();
    choice.to = dtpSelectTo->date();
    choice.printTotals = chkPrintTotals->isChecked();
    choice.sort = optSortByDate->isChecked() ? ReportSort::ByDate : ReportSort::BySymbol;
    return choice;
}

// --- the report ---------------------------------------------------------------------------------

void frmDateSelect::cmdOK_Click()
{
    Program &program = m_program;
    bool isWritten = true;
    if (m_entry) {
        const ReportChoice choice = ReadChoice();
        if (choice.RangeIsReversed()) {
            MsgBox(FromIsLaterText(), Box::Exclamation, ExcelEditor());
            dtpSelectFrom->setFocus();
            return;
        }
        TrackerContent tracker;
        if (choice.kind == ReportKind::DailyTracker) {
            tracker = ReadTracker();
            if (!program.unsavedReports)
                program.unsavedReports = std::make_unique<QTemporaryDir>();
        }
        ReportWork work{program.databases,
                        program.settings,
                        program.services,
                        tracker,
                        program.unsavedReports ? program.unsavedReports->path() : QString(),
                        program.run.ExcelServerFound};
        const WaitCursor hourglass;
        isWritten = RunReport(work, choice);
    }
    UnloadMe();
    if (isWritten)
        program.services.status.Post(QStringLiteral("Report completed"));
}

TrackerContent frmDateSelect::ReadTracker()
{
    const QString form = QStringLiteral("frmDailyTracker");
    if (!m_program.screens.Loaded(form))
        m_program.screens.Show(form);
    TrackerContent content;
    const Form *tracker = m_program.screens.Find(form);
    if (!tracker)
        return content;
    if (const auto *grid = tracker->findChild<DataGrid *>(QStringLiteral("DataGridStock")))
        for (const GridColumn &column : grid->Columns())
            content.columns.push_back({column.caption, column.dataField});
    const TrackerRecordset &rows = m_program.AdodcStockHistory;
    for (int row = 0; row < rows.RecordCount(); ++row)
        content.rows.push_back(rows.At(row));
    if (const auto *totals = tracker->findChild<FlexGrid *>(QStringLiteral("MSHFlexGridTotals"))) {
        for (int column = 1; column < totals->Columns(); ++column) {
            content.totalHeadings << totals->Text(0, column);
            content.totals << totals->Text(1, column);
        }
    }
    return content;
}
