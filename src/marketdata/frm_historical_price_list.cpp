#include "marketdata/frm_historical_price_list.h"

#include "marketdata/price_list.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/wrapping_row.h"
#include "program/select_security.h"
#include "program/wait_cursor.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace
{

const QString AllSymbols = QStringLiteral("**-All");
const QString SplitEntry = QStringLiteral("popHPLSplitMode");

constexpr ListColumn priceColumns[] = {
    {"Symbol", "Symbol", Qt::AlignLeft, u"", "MMMMMM"},
    {"Date", "PriceDate", Qt::AlignRight, u"", "00/00/0000"},
    {"Open", "PriceOpen", Qt::AlignRight, u"0.0000", "99999.0000"},
    {"Day High", "DayHigh", Qt::AlignRight, u"0.0000", "99999.0000"},
    {"Day Low", "DayLow", Qt::AlignRight, u"0.0000", "99999.0000"},
    {"Close", "PriceClose", Qt::AlignRight, u"0.0000", "99999.0000"},
    {"Volume", "Volume", Qt::AlignRight, u"#,##0", "9,999,999,999"},
    {"Adj Close", "AdjClose", Qt::AlignRight, u"0.0000", "99999.0000"},
};

} // namespace

frmHistoricalPriceList::frmHistoricalPriceList(Program &program)
    : Form(program, QStringLiteral("frmHistoricalPriceList"),
           QStringLiteral("Historical Price List"), Placement::Child),
      m_range(*this, program),
      m_source(AdodcHistoricalPriceList, program.services.formats, priceColumns)
{
    BuildControls();
    BuildLayout();
    ConnectControls();
}

void frmHistoricalPriceList::BuildControls()
{
    combSymbolList = new QComboBox(this);
    combSymbolList->setObjectName(QStringLiteral("combSymbolList"));
    combSymbolList->setAccessibleName(QStringLiteral("Symbol"));
    combSymbolList->setMaxVisibleItems(20);
    combSymbolList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combSymbolList->setMinimumContentsLength(12);

    DataGridHistoricalPriceList = new DataGrid(this);
    DataGridHistoricalPriceList->setObjectName(QStringLiteral("DataGridHistoricalPriceList"));
    DataGridHistoricalPriceList->setAccessibleName(QStringLiteral("Daily prices"));
    m_hint.emplace(*DataGridHistoricalPriceList,
                   QStringLiteral("Click on column headings to sort that column."));

    cmdHelp = MakeButton("cmdHelp", "Hel&p"); // the main menu has Alt+H, Alt+C and Alt+F
    cmdClose = MakeButton("cmdClose", "C&lose");
}

void frmHistoricalPriceList::BuildLayout()
{
    auto *lblSymbol = new QLabel(QStringLiteral("&Symbol"), this);
    lblSymbol->setBuddy(combSymbolList);
    auto *head = new WrappingRow;
    m_range.AddTo(*head);
    head->AddGroup({lblSymbol, combSymbolList});
    head->AddGroup({m_range.cmdOK});
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdClose);
    auto *all = new QVBoxLayout(this);
    all->addLayout(head);
    all->addWidget(DataGridHistoricalPriceList, 1);
    all->addLayout(buttons);

    setTabOrder(m_range.dtpTo, combSymbolList);
}

void frmHistoricalPriceList::ConnectControls()
{
    OnClick(m_range.cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("HPHistoricalPriceList.html")); });
    OnClick(cmdClose, [this] { UnloadMe(); });
    On(combSymbolList, &QComboBox::textActivated, [this](const QString &text) {
        m_program.UserActed();
        combSymbolList_Click(text);
    });

    DataGrid &grid = *DataGridHistoricalPriceList;
    grid.OnRowColChange = [this] {
        ByUser([this] { DataGridHistoricalPriceList_RowColChange(); });
    };
    grid.OnHeaderClick = [this](int column) {
        ByUser([this, column] { DataGridHistoricalPriceList_HeadClick(column); });
    };
    grid.OnMouseUp = [this](Qt::MouseButton) {
        m_program.UserActed();
        m_hint->MouseUp();
    };
    grid.OnContextMenu = [this](const QPoint &where) {
        Guarded([&] {
            DataGridHistoricalPriceList_RowColChange(); // the popup is for the marked row
            m_program.screens.ShowPopup(QStringLiteral("popHistoricalPriceList"), where);
        });
    };
}

QSize frmHistoricalPriceList::sizeHint() const
{
    return TenthsOfMainWindow(7, 8);
}

// --- coming and going ---------------------------------------------------------------------------

void frmHistoricalPriceList::Load()
{
    const WaitCursor hourglass;
    RunState &run = m_program.run;
    const bool rangeChosen = run.ListDateFrom != NoDate();
    const QDate today = m_program.services.clock.Today();
    m_range.Set(run.ListDateFrom, rangeChosen ? run.ListDateTo : today);
    ApplyGridColor(*DataGridHistoricalPriceList, m_program.settings.HPDataGridColor);

    if (!m_program.selection.CurrentSymbol.trimmed().isEmpty()) // a cash row has a blank
        run.OneSymbolOnly = true;
    FillSymbolList();
    GridOrderBy = InitialPriceOrder();
    AdodcHistoricalPriceList.Open(m_program.databases.gConnHistPrices, BuildHistoricalQuery());
    DataGridHistoricalPriceList->SetSource(m_source.Columns(), &m_source);
    DataGridHistoricalPriceList->SetSortIndicator(PriceSymbol, false);
    RestoreColumnWidths(*DataGridHistoricalPriceList, m_program.services.settingsStore,
                        objectName());
    m_program.UserActed();
    Status(QStringLiteral("The transaction Date and time can be changed on the Grid"));
}

void frmHistoricalPriceList::Activate()
{
    const QString &symbol = m_program.selection.CurrentSymbol;
    if (symbol.trimmed().isEmpty() || (m_program.run.OneSymbolOnly && symbol == ShownSymbol()))
        return;
    ShowSymbol(symbol);
    combSymbolList_Click(symbol);
}

void frmHistoricalPriceList::OnUnload()
{
    SaveColumnWidths(*DataGridHistoricalPriceList, m_program.services.settingsStore, objectName());
    EndSplitMode(m_program.services.commands, SplitEntry);
    m_program.run.OneSymbolOnly = false;
    m_program.UserActed();
    Status(QString());
}

bool frmHistoricalPriceList::RunCommand(const QString &name)
{
    if (name == SplitEntry)
        SplitMode();
    else if (name == QLatin1String("popHPLHistoricalGridColor"))
        ChgDataGridHistoricalPriceListColor();
    else
        return false;
    return true;
}

// --- what is shown ------------------------------------------------------------------------------

RecordsetQuery frmHistoricalPriceList::BuildHistoricalQuery()
{
    if (m_range.From() == m_program.services.clock.Today())
        m_range.Set(NoDate(), m_range.To());
    // Without a selected security there is none to restrict the list to.
    const QString symbol =
        m_program.run.OneSymbolOnly ? m_program.selection.CurrentSymbol : QString();
    ShowSymbol(symbol);
    return HistoricalQuery(symbol, m_range.From(), m_range.To(), GridOrderBy);
}

void frmHistoricalPriceList::FillSymbolList()
{
    combSymbolList->clear();
    const QStringList symbols = PricedSymbols(m_program.databases.gConnHistPrices);
    if (!symbols.isEmpty())
        combSymbolList->addItems(QStringList(AllSymbols) + symbols);
}

/// An empty symbol stands for all of them. One that has no prices is no entry of the list, which
/// shows it all the same.
void frmHistoricalPriceList::ShowSymbol(const QString &symbol)
{
    const QString text = symbol.isEmpty() ? AllSymbols : symbol;
    combSymbolList->setPlaceholderText(symbol);
    combSymbolList->setCurrentIndex(
        combSymbolList->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

QString frmHistoricalPriceList::ShownSymbol() const
{
    return combSymbolList->currentIndex() < 0 ? combSymbolList->placeholderText()
                                              : combSymbolList->currentText();
}

void frmHistoricalPriceList::cmdOK_Click()
{
    const WaitCursor hourglass;
    AdodcHistoricalPriceList.Open(m_program.databases.gConnHistPrices, BuildHistoricalQuery());
    DataGridHistoricalPriceList->RefreshRows();
    Status(QStringLiteral("New date range selection complete"));
}

void frmHistoricalPriceList::combSymbolList_Click(const QString &text)
{
    m_program.run.OneSymbolOnly = text != AllSymbols;
    if (m_program.run.OneSymbolOnly)
        SelectSecurity(m_program, text);
    cmdOK_Click();
}

void frmHistoricalPriceList::RefreshList()
{
    FillSymbolList();
    cmdOK_Click();
}

// --- the grid -----------------------------------------------------------------------------------

void frmHistoricalPriceList::DataGridHistoricalPriceList_RowColChange()
{
    // A price cycle and a posting work on the selected security: it stays theirs.
    if (m_program.priceUpdate.UpdateInProgress || m_program.entry.PostingInProgress)
        return;
    const int row = DataGridHistoricalPriceList->CurrentRow();
    if (row < 0 || row >= AdodcHistoricalPriceList.RecordCount())
        return;
    const auto *symbol = std::get_if<QString>(&AdodcHistoricalPriceList.ValueAt(row, PriceSymbol));
    if (symbol && !symbol->trimmed().isEmpty())
        SelectSecurity(m_program, *symbol);
}

void frmHistoricalPriceList::DataGridHistoricalPriceList_HeadClick(int column)
{
    SortDescending = !SortDescending;
    const QString dataField = DataGridHistoricalPriceList->Columns()[size_t(column)].dataField;
    SortByHeading(
        m_program.services, PriceOrderFor(dataField, SortDescending),
        [&](const QString &clause) {
            const WaitCursor hourglass;
            GridOrderBy = clause;
            AdodcHistoricalPriceList.Open(m_program.databases.gConnHistPrices,
                                          BuildHistoricalQuery());
            DataGridHistoricalPriceList->RefreshRows();
            DataGridHistoricalPriceList->SetSortIndicator(column, SortDescending);
            DataGridHistoricalPriceList->SetCurrentRow(0);
            DataGridHistoricalPriceList_RowColChange();
        },
        CaptionEditor());
}

void frmHistoricalPriceList::SplitMode()
{
    ::SplitMode(*DataGridHistoricalPriceList, m_program.services.commands, SplitEntry);
}

void frmHistoricalPriceList::ChgDataGridHistoricalPriceListColor()
{
    ChooseGridColor(*DataGridHistoricalPriceList, m_program.settings.HPDataGridColor,
                    m_program.services.dialogs);
}

void frmHistoricalPriceList::DeleteRowEntry()
{
    DataGridHistoricalPriceList_RowColChange();
    cmdClose->setFocus();
    m_program.screens.ShowModal(QStringLiteral("frmDeleteOptions"));
}
