#include "lists/frm_daily_profit_loss.h"

#include "platform/widgets/date_field.h"
#include "platform/widgets/flex_grid.h"
#include "platform/widgets/list_grid.h"
#include "platform/widgets/wrapping_row.h"
#include "program/delete_options.h"
#include "program/select_security.h"
#include "program/wait_cursor.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

/// Column 0 holds the row's ID, out of sight.
enum GridColumn
{
    DateColumn = 1,
    SymbolColumn,
    NameColumn,
    ProfitLossColumn,
    ColumnCount
};

constexpr QStringView AmountFormat = u"###,##0.00";

} // namespace

frmDailyProfitLoss::frmDailyProfitLoss(Program &program)
    : Form(program, QStringLiteral("frmDailyProfitLoss"), QStringLiteral("Daily Profit and Loss"),
           Placement::Child),
      m_range(*this, program, m_pickedFrom, m_pickedTo)
{
    BuildControls();
    BuildLayout();
    ConnectControls();
}

void frmDailyProfitLoss::BuildControls()
{
    MSHFlexGridPL = new FlexGrid(this);
    FlexGrid &grid = *MSHFlexGridPL;
    grid.setObjectName(QStringLiteral("MSHFlexGridPL"));
    grid.setAccessibleName(QStringLiteral("Realized profits and losses"));
    grid.setToolTip(
        QStringLiteral("Right click for popup menu options, click column headings to sort."));
    grid.SetSize(1, ColumnCount);
    grid.SetFont(QStringLiteral("Arial"), 9);
    grid.HideColumn(0);
    grid.SetText(0, DateColumn, QStringLiteral("Date"));
    grid.SetText(0, SymbolColumn, QStringLiteral("Symbol"));
    grid.SetText(0, NameColumn, QStringLiteral("Name"));
    grid.SetText(0, ProfitLossColumn, QStringLiteral("ProfitLoss"));
    grid.SetColumnWidth(DateColumn, 3600);
    grid.SetColumnWidth(SymbolColumn, 1500);
    grid.SetColumnWidth(ProfitLossColumn, 1800);
    grid.SetColumnAlignment(ProfitLossColumn, Qt::AlignRight);
    grid.SetUserResizesColumns(NameColumn);
    grid.SetSelectsRows(true);

    cmdHelp = MakeButton("cmdHelp", "Hel&p"); // Alt+H and Alt+C are the main menu's
    cmdClose = MakeButton("cmdClose", "C&lose");
}

void frmDailyProfitLoss::BuildLayout()
{
    auto *head = new WrappingRow;
    m_range.AddTo(*head);
    head->AddGroup({m_range.cmdOK});
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdHelp);
    buttons->addWidget(cmdClose);
    auto *all = new QVBoxLayout(this);
    all->addLayout(head);
    all->addWidget(MSHFlexGridPL, 1);
    all->addLayout(buttons);
}

void frmDailyProfitLoss::ConnectControls()
{
    OnClick(m_range.cmdOK, [this] { ReloadFlexGrid(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("PLDailyProfitLossView.html")); });
    OnClick(cmdClose, [this] { UnloadMe(); });

    FlexGrid &grid = *MSHFlexGridPL;
    grid.OnMouseUp = [this](Qt::MouseButton) { m_program.UserActed(); };
    grid.OnClick = [this](int, int) { Guarded([this] { MSHFlexGridPL_Click(); }); };
    grid.OnHeaderClick = [this](int column) {
        ByUser([this, column] { MSHFlexGridPL_HeadClick(column); });
    };
    grid.OnContextMenu = [this](const QPoint &where) {
        Guarded([&] {
            MSHFlexGridPL_Click(); // the popup is for the marked row
            m_program.screens.ShowPopup(QStringLiteral("popDailyProfitLoss"), where);
        });
    };
}

QSize frmDailyProfitLoss::sizeHint() const
{
    return TenthsOfMainWindow(7, 8);
}

// --- coming and going ---------------------------------------------------------------------------

void frmDailyProfitLoss::Load()
{
    m_range.Set(NoDate(), m_program.services.clock.Today());
    ApplyGridColor(*MSHFlexGridPL, m_program.settings.DPAllRowColor);
    const ProfitLossOrder newestFirst = *ProfitLossOrderFor(int(ProfitLossGroup::Date), true);
    ProfitLossOrderBy = newestFirst.clause;
    SortColumn = newestFirst.group;
    MSHFlexGridPL->SetSortIndicator(int(SortColumn), true);
    RestoreColumnWidths(*MSHFlexGridPL, m_program.services.settingsStore, objectName());
    ReloadFlexGrid();
    if (m_lines.size() > 1) // the last line is a total
        m_range.Set(m_lines[m_lines.size() - 2].TransDate, m_lines.front().TransDate);
    m_program.UserActed();
}

void frmDailyProfitLoss::OnUnload()
{
    SaveColumnWidths(*MSHFlexGridPL, m_program.services.settingsStore, objectName());
    m_program.UserActed();
    Status(QString());
}

bool frmDailyProfitLoss::RunCommand(const QString &name)
{
    if (name == QLatin1String("popPLDelete"))
        DeleteRowEntry();
    else if (name == QLatin1String("popPLProfitLossColor"))
        ChgMSHFlexGridPLColor();
    else
        return false;
    return true;
}

// --- the rows -----------------------------------------------------------------------------------

void frmDailyProfitLoss::ReloadFlexGrid()
{
    m_readFrom = m_pickedFrom;
    m_readTo = m_pickedTo;
    RefreshList();
}

void frmDailyProfitLoss::RefreshList()
{
    const WaitCursor hourglass;
    std::vector<ProfitLossLine> lines = ReadProfitLoss(m_program.databases.gConnAccount, m_readFrom,
                                                       m_readTo, {SortColumn, ProfitLossOrderBy});
    // The mark goes with its row; where that is gone it stays in its place.
    const ProfitLossLine *marked = CurrentLine();
    int place = std::min(MSHFlexGridPL->CurrentRow(), int(lines.size()) - 1);
    for (size_t i = 0; marked && !marked->IsTotal() && i < lines.size(); ++i)
        if (lines[i].ID == marked->ID)
            place = int(i);
    m_lines = std::move(lines);

    // A colour chosen later is not for the rows that are there.
    const Settings &settings = m_program.settings;
    const QRgb rowColor = ColorOfValue(settings.DPAllRowColor);
    m_rowColor.reset();
    if (settings.DPAllRowColor != 0 && rowColor != MSHFlexGridPL->BackColor())
        m_rowColor = rowColor;
    m_totalColor = settings.DPTotalRowColor == 0 ? MSHFlexGridPL->BackColor()
                                                 : ColorOfValue(settings.DPTotalRowColor);
    MSHFlexGridPL->SetMadeRows(1 + int(m_lines.size()),
                               [this](int row, int column) { return CellOf(row, column); });
    MSHFlexGridPL->SetCurrentRow(place);
    MakeRoomForAmounts();
}

/// The longest texts are those of the largest gain and of the largest loss.
void frmDailyProfitLoss::MakeRoomForAmounts()
{
    const auto [least, most] = std::minmax_element(
        m_lines.begin(), m_lines.end(), [](const ProfitLossLine &one, const ProfitLossLine &other) {
            return one.ProfitLoss < other.ProfitLoss;
        });
    for (const auto &line : {least, most})
        if (line != m_lines.end())
            MSHFlexGridPL->MakeRoomFor(ProfitLossColumn, m_program.services.formats.Format(
                                                             line->ProfitLoss, AmountFormat));
}

FlexCell frmDailyProfitLoss::CellOf(int row, int column) const
{
    const ProfitLossLine &line = m_lines[size_t(row - 1)];
    const Formats &formats = m_program.services.formats;
    FlexCell cell;
    if (line.IsTotal()) {
        cell.back = m_totalColor;
        if (column == SymbolColumn) {
            cell.text = QStringLiteral("T O T A L");
            cell.bold = true;
        } else if (column == NameColumn) { // not under the amounts, which it would pass for
            cell.text = formats.Format(line.ProfitLoss, AmountFormat);
        }
        return cell;
    }
    cell.back = m_rowColor;
    switch (column) {
    case 0:
        cell.text = formats.ToText(line.ID);
        break;
    case DateColumn:
        cell.text = formats.FormatDate(line.TransDate, u"Long Date");
        break;
    case SymbolColumn:
        cell.text = line.Symbol;
        break;
    case NameColumn:
        cell.text = line.Name;
        break;
    case ProfitLossColumn:
        cell.text = formats.Format(line.ProfitLoss, AmountFormat);
        break;
    }
    return cell;
}

const ProfitLossLine *frmDailyProfitLoss::CurrentLine() const
{
    const int row = MSHFlexGridPL->CurrentRow();
    return row >= 0 && row < int(m_lines.size()) ? &m_lines[size_t(row)] : nullptr;
}

void frmDailyProfitLoss::MSHFlexGridPL_Click()
{
    const ProfitLossLine *line = CurrentLine();
    if (!line || line->IsTotal())
        return;
    m_program.selection.SelectedRowID = line->ID;
    SelectSecurity(m_program, line->Symbol, line->Name);
}

void frmDailyProfitLoss::MSHFlexGridPL_HeadClick(int column)
{
    // A heading that cannot be sorted by leaves order and groups as they are.
    const std::optional<ProfitLossOrder> order = ProfitLossOrderFor(column, SortDescending);
    const auto sort = [&](const QString &clause) {
        ProfitLossOrderBy = clause;
        SortColumn = order->group;
        MSHFlexGridPL->SetCurrentRow(-1);
        ReloadFlexGrid();
        MSHFlexGridPL->scrollToTop();
        MSHFlexGridPL->SetSortIndicator(column, SortDescending);
        SortDescending = !SortDescending;
    };
    if (SortByHeading(m_program.services, order ? std::optional(order->clause) : std::nullopt, sort,
                      CaptionEditor()))
        Status(QStringLiteral("Sort complete")); // in the words of this list
}

void frmDailyProfitLoss::ChgMSHFlexGridPLColor()
{
    Settings &settings = m_program.settings;
    Status(QStringLiteral("Select row to apply the selected color..."));
    const std::optional<Rgb> color =
        m_program.services.dialogs.PickColor(ColorOfValue(settings.DPAllRowColor) & RGB_MASK);
    if (!color) {
        Status(QString());
        return;
    }
    const QString title = QStringLiteral("Color Selection option");
    const bool forTotals = MsgBox(QStringLiteral("Apply selected color to the total Row?"),
                                  Box::YesNo, title) == Answer::Yes;
    (forTotals ? settings.DPTotalRowColor : settings.DPAllRowColor) = ValueOfColor(*color);
    MsgBox(QStringLiteral("Close and re-open this screen for colors to take effect"),
           Box::Information, title);
}

void frmDailyProfitLoss::DeleteRowEntry()
{
    MSHFlexGridPL_Click();
    const ProfitLossLine *line = CurrentLine();
    if (!line || line->IsTotal() || m_program.selection.CurrentSymbol.isEmpty()) {
        MsgBox(QStringLiteral("Row is invalid. Select rows containing symbols."), Box::Exclamation,
               CaptionEditor());
        return;
    }
    cmdClose->setFocus();
    OpenDeleteOptions(m_program, QStringLiteral("popPLDelete"));
}
