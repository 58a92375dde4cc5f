/// The commands of the Daily Tracker's popup: entry, clear, delete, undo, split mode, colours.

#include "base/put_back.h"
#include "platform/widgets/colors.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/flex_grid.h"
#include "program/list_refresh.h"
#include "program/security_screen.h"
#include "tracking/frm_daily_tracker.h"
#include "transactions/row_removal.h"
#include "transactions/securities.h"
#include "transactions/undo.h"

#include <QLabel>

namespace
{

QString NameInQuestions(const TrackerRow &row)
{
    return row.Symbol.trimmed().isEmpty() ? row.Name : row.Symbol;
}

} // namespace

bool frmDailyTracker::RunCommand(const QString &name)
{
    static const QHash<QString, void (frmDailyTracker::*)()> commands = {
        {QStringLiteral("popDTNew"), &frmDailyTracker::NewSecurity},
        {QStringLiteral("popDTEdit"), &frmDailyTracker::EditSecurity},
        {QStringLiteral("popDTClear"), &frmDailyTracker::ClearRowEntry},
        {QStringLiteral("popDTDeleteRow"), &frmDailyTracker::DeleteRowEntry},
        {QStringLiteral("popDTTransactionUpdate"), &frmDailyTracker::DataGridStock_DblClick},
        {QStringLiteral("popDTSplitMode"), &frmDailyTracker::SplitMode},
        {QStringLiteral("popDTDailyGridColor"), &frmDailyTracker::ChgDataGridStockColor},
        {QStringLiteral("popDTSummaryGridColor"), &frmDailyTracker::ChgMSHFlexGridTotalsColor},
    };
    if (name == QLatin1String("popDTUndoLast")) {
        UndoLast();
        return true;
    }
    const auto command = commands.constFind(name);
    if (command == commands.constEnd())
        return false;
    (this->**command)();
    return true;
}

void frmDailyTracker::DataGridStock_DblClick()
{
    const QString symbol = m_program.selection.CurrentSymbol;
    if (symbol.isEmpty()) {
        MsgBox(QStringLiteral("You must select a security to enter transactions. \n"
                              "To enter new securities, right click the grid and then select\n"
                              "'New' from the popup menu options."),
               Box::Exclamation, CaptionEditor());
        return;
    }
    Screens &screens = m_program.screens;
    const QString entry = QStringLiteral("frmTransactionUpdate");
    // The entry screen says at its load that the security has no type; that is to be filled in
    // first. One that is open already turns to the other row, and does this itself.
    if (!screens.Loaded(entry) && screens.Load(entry) &&
        !GetSecurityType(m_program.databases.gConnApplControl, symbol)) {
        screens.Unload(entry);
        ShowEditSecurityScreen(m_program);
        return;
    }
    screens.Show(entry);
}

void frmDailyTracker::NewSecurity()
{
    ShowNewSecurityScreen(m_program);
}

void frmDailyTracker::EditSecurity()
{
    const TrackerRow *marked = MarkedRow();
    if (!marked || marked->Symbol.trimmed().isEmpty()) { // a row without a symbol is no security
        MsgBox(QStringLiteral("Please select the security you want to update!"), Box::Exclamation,
               QStringLiteral("Application Editor"));
        return;
    }
    m_program.selection.CurrentSymbol = marked->Symbol;
    m_program.selection.CurrentName = marked->Name;
    ShowEditSecurityScreen(m_program);
}

// --- clear, delete, undo ------------------------------------------------------------------------

const TrackerRow *frmDailyTracker::MarkedRow() const
{
    const TrackerRecordset &rows = m_program.AdodcStockHistory;
    const int row = m_dataGridStock->CurrentRow();
    return row >= 0 && row < rows.RecordCount() ? &rows.At(row) : nullptr;
}

std::optional<TrackerRow> frmDailyTracker::TakeConfirmedRow(const QString &question)
{
    if (!MarkedRow()) {
        MsgBox(QStringLiteral("No row has been selected, please make selection."), Box::Exclamation,
               CaptionEditor());
        return std::nullopt;
    }
    const TrackerRow marked = *MarkedRow(); // the rows and the mark may change behind the box
    if (MsgBox(question + NameInQuestions(marked) + QStringLiteral("\nIs this OK?"),
               Box::YesNo + Box::Question + Box::SecondDefault, CaptionEditor()) == Answer::No ||
        !m_program.AdodcStockHistory.Find(marked.Symbol))
        return std::nullopt;
    return marked;
}

/// Runs a change of the rows; after a failure the grids show what was put back.
void frmDailyTracker::ShowAfter(const std::function<void()> &change)
{
    const auto show = [this] {
        UpdatePortfolioTotals();
        RefreshRows();
    };
    try {
        change();
    } catch (const RuntimeError &) {
        show();
        throw;
    }
    show();
}

void frmDailyTracker::ClearRowEntry()
{
    const std::optional<TrackerRow> marked =
        TakeConfirmedRow(QStringLiteral("You are about to clear the content for symbol "));
    if (!marked)
        return;
    PostingWork work = m_program.Posting();
    ShowAfter([&] { ClearRow(work); });
    DataGridStock_RowColChange();
    Status(QString());
    MsgBox(QStringLiteral("REMINDER! Make sure to delete existing transaction history for ") +
               NameInQuestions(*marked) + QStringLiteral(" if you do not need that information."),
           Box::Information, CaptionEditor());
    EnableUndoCommands(m_program.services.commands, true);
}

void frmDailyTracker::DeleteRowEntry()
{
    const std::optional<TrackerRow> marked =
        TakeConfirmedRow(QStringLiteral("You are about to delete the current row for symbol "));
    if (!marked)
        return;
    PostingWork work = m_program.Posting();
    ShowAfter([&] {
        Selection &selection = m_program.selection;
        PutBack before(selection);
        DeleteRow(work, [&] {
            if (selection.CurrentSymbol == marked->Symbol || work.rows.IsEmpty())
                selection.CurrentSymbol = selection.CurrentName = QString(); // another row is next
            ReloadDataGrid();
        });
        before.Keep();
    });
    Status(QString());
    EnableUndoCommands(m_program.services.commands, true);
}

UndoOutcome frmDailyTracker::UndoLast()
{
    PostingWork work = m_program.Posting();
    const UndoOutcome outcome = UndoLastTransaction(work, [this] { ReloadDataGrid(); });
    if (outcome == UndoOutcome::Failed)
        UpdatePortfolioTotals();
    if (outcome == UndoOutcome::TakenBack)
        RefreshListsAfterPosting(m_program);
    return outcome;
}

// --- totals -------------------------------------------------------------------------------------

namespace
{

struct TotalColumn
{
    const char *heading;
    int width; ///< twips
    QString (*text)(const Program &);
};

constexpr int HeaderWidth = 300;
constexpr int RowHeight = 300;
constexpr int BalanceColumn = 1;

template <auto Total>
QString Money(const Program &program)
{
    return program.services.formats.Format(program.totals.*Total, u"###,##0.00");
}

template <auto Total>
QString Count(const Program &program)
{
    return program.services.formats.ToText(program.totals.*Total);
}

QString Balance(const Program &program)
{
    return program.services.formats.Format(program.account.AccountBalance, u"###,##0.00");
}

using Totals = PortfolioTotals;
constexpr TotalColumn totalColumns[] = {
    {"Current Balance*", 1800, Balance},
    {"Gain Total", 1800, Money<&Totals::PriorBasisTotal>},
    {"P&L Today", 1800, Money<&Totals::ProfitLossTodayTotal>},
    {"P&L ToDate", 1900, Money<&Totals::ProfitLossToDateTotal>},
    {"Actual P&L", 1900, Money<&Totals::ActualProfitLossTotal>},
    {"TransCostToday", 1800, Money<&Totals::TransCostTodayTotal>},
    {"TransCostToDate", 1800, Money<&Totals::TransCostToDateTotal>},
    {"InvestedValue", 1600, Money<&Totals::InvestedValueTotal>},
    {"InvestedToDate", 1900, Money<&Totals::InvestedToDateTotal>},
    {"#TransToday", 1900, Count<&Totals::TransactionsToday>},
    {"#TransToDate", 1900, Count<&Totals::TransactionsToDate>},
};

} // namespace

void frmDailyTracker::BuildTotals()
{
    m_flexGridTotals->SetSize(2, int(std::size(totalColumns)) + 1);
    m_flexGridTotals->SetFont(QStringLiteral("Arial"), 10);
    m_flexGridTotals->SetRowHeight(RowHeight);
    m_flexGridTotals->SetColumnWidth(0, HeaderWidth);
    int column = 0;
    for (const TotalColumn &total : totalColumns) {
        ++column;
        m_flexGridTotals->SetText(0, column, QString::fromUtf8(total.heading));
        m_flexGridTotals->SetColumnWidth(column, total.width);
        m_flexGridTotals->MakeRoomFor(column, QString::fromUtf8(total.heading));
        m_flexGridTotals->SetColumnAlignment(column, Qt::AlignRight);
    }
    m_flexGridTotals->setFixedHeight(m_flexGridTotals->FullHeight());
}

void frmDailyTracker::UpdatePortfolioTotals()
{
    int column = 0;
    for (const TotalColumn &total : totalColumns) {
        const QString text = total.text(m_program);
        m_flexGridTotals->SetText(1, ++column, text);
        m_flexGridTotals->MakeRoomFor(column, text); // an amount with its end cut off would mislead
    }
    m_flexGridTotals->SetCellBackColor(1, BalanceColumn,
                                       ColorOfValue(m_program.settings.DTBalanceColColor));
}

// --- look ---------------------------------------------------------------------------------------

void frmDailyTracker::SplitMode()
{
    ::SplitMode(*m_dataGridStock, m_program.services.commands, QStringLiteral("popDTSplitMode"));
}

void frmDailyTracker::ApplyColors()
{
    Settings &settings = m_program.settings;
    ApplyGridColor(*m_dataGridStock, settings.DTDataGridColor);
    ApplyGridColor(*m_flexGridTotals, settings.DTTotalGridColor);
    ShowDataGridColor();
}

void frmDailyTracker::ShowDataGridColor()
{
    // The label takes the grid's colour, so that the summary reads as a part of it.
    const QColor back(m_dataGridStock->BackColor());
    m_lblGrandTotal->setPalette(back == palette().color(QPalette::Active, QPalette::Base)
                                    ? QPalette() // goes on following the desktop
                                    : PaletteOn(back, palette()));
    m_lblGrandTotal->setBackgroundRole(QPalette::Base);
    m_lblGrandTotal->setForegroundRole(QPalette::Text);
}

void frmDailyTracker::ChgDataGridStockColor()
{
    if (ChooseGridColor(*m_dataGridStock, m_program.settings.DTDataGridColor,
                        m_program.services.dialogs))
        ShowDataGridColor();
}

void frmDailyTracker::ChgMSHFlexGridTotalsColor()
{
    Settings &settings = m_program.settings;
    const std::optional<Rgb> color =
        m_program.services.dialogs.PickColor(m_flexGridTotals->BackColor() & RGB_MASK);
    if (!color)
        return;
    Status(QStringLiteral("Select column to apply the selected color..."));
    if (MsgBox(QStringLiteral("Apply selected color to balance column?"), Box::YesNo,
               QStringLiteral("Color Selection option")) == Answer::Yes) {
        settings.DTBalanceColColor = ValueOfColor(*color);
        m_flexGridTotals->SetCellBackColor(1, BalanceColumn, *color | ~RGB_MASK);
    } else {
        m_flexGridTotals->SetBackColor(*color | ~RGB_MASK);
        settings.DTTotalGridColor = ValueOfColor(*color);
    }
}
