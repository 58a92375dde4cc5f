/// What the grids of the list screens have in common.

#include "rows.h"

#include "platform/widgets/list_grid.h"
#include "platform/widgets/recordset_source.h"
#include "store/connection.h"
#include "test_app_folder.h"
#include "test_services.h"

namespace
{

const QString Entry = QStringLiteral("popHPLSplitMode");

} // namespace

// --- split mode ---------------------------------------------------------------------------------

TEST(SplitMode, SaysInTheCaptionWhatTheNextCallDoes)
{
    Rows rows(Positions());
    DataGrid grid;
    grid.SetSource(PositionColumns(), &rows);
    CommandStates commands;
    SplitMode(grid, commands, Entry);
    EXPECT_TRUE(grid.IsSplit());
    EXPECT_EQ(grid.MarqueeStyle(), Marquee::Row);
    EXPECT_EQ(commands.Caption(Entry), "Undo Split");
    SplitMode(grid, commands, Entry);
    EXPECT_FALSE(grid.IsSplit());
    EXPECT_EQ(grid.MarqueeStyle(), Marquee::RowAndCell);
    EXPECT_EQ(commands.Caption(Entry), "Split Mode");
    EXPECT_EQ(grid.Captions().count("Symbol"), 1);
}

TEST(SplitMode, IsNotEnteredWithoutASymbolColumn)
{
    Rows rows(Positions());
    DataGrid grid;
    grid.SetSource({{"Name", "Name"}}, &rows);
    CommandStates commands;
    SplitMode(grid, commands, Entry);
    EXPECT_FALSE(grid.IsSplit());
    EXPECT_EQ(commands.Caption(Entry), "Split Mode");
}

TEST(SplitMode, IsTheOtherGridsOwnAffair)
{
    Rows rows(Positions());
    DataGrid one, other;
    one.SetSource(PositionColumns(), &rows);
    other.SetSource(PositionColumns(), &rows);
    CommandStates commands;
    SplitMode(one, commands, Entry);
    SplitMode(other, commands, QStringLiteral("popHLSplitMode"));
    EndSplitMode(commands, Entry);
    EXPECT_EQ(commands.Caption(Entry), "Split Mode");
    EXPECT_EQ(commands.Caption(QStringLiteral("popHLSplitMode")), "Undo Split");
}

// --- colour -------------------------------------------------------------------------------------

TEST(GridColor, IsCapturedOnceAndAppliedFromThenOn)
{
    DataGrid grid;
    double setting = 0;
    ApplyGridColor(grid, setting);
    EXPECT_EQ(setting, ValueOfColor(grid.BackColor()));
    setting = 0xC0E0FF;
    ApplyGridColor(grid, setting);
    EXPECT_EQ(grid.BackColor(), 0xFFFFE0C0);
    EXPECT_EQ(setting, 0xC0E0FF);
}

TEST(GridColor, StaysWhenTheDialogIsCancelled)
{
    DataGrid grid;
    const QRgb before = grid.BackColor();
    double setting = 7;
    TestDialogs dialogs; // cancels
    EXPECT_FALSE(ChooseGridColor(grid, setting, dialogs));
    EXPECT_EQ(grid.BackColor(), before);
    EXPECT_EQ(setting, 7);
}

// --- sorting ------------------------------------------------------------------------------------

TEST(SortByHeading, SortsByTheClauseOfTheColumn)
{
    TestServices test;
    QString sortedBy, statusMeanwhile;
    EXPECT_TRUE(SortByHeading(
        test.services, QStringLiteral("ORDER BY Symbol"),
        [&](const QString &clause) {
            sortedBy = clause;
            statusMeanwhile = QString::fromStdString(test.Status());
        },
        QStringLiteral("List Editor")));
    EXPECT_EQ(sortedBy, "ORDER BY Symbol");
    EXPECT_EQ(statusMeanwhile, "Sorting on selected column, please wait...");
    EXPECT_EQ(test.Status(), "Sort completed");
    EXPECT_TRUE(test.dialogs.Boxes().empty());
}

TEST(SortByHeading, RefusesAColumnWithoutAClause)
{
    TestServices test;
    EXPECT_FALSE(SortByHeading(
        test.services, std::nullopt, [](const QString &) { ADD_FAILURE(); },
        QStringLiteral("Historical Price List Editor")));
    EXPECT_EQ(test.Status(), "The selected column is not available for sorting");
    EXPECT_EQ(test.dialogs.Boxes(),
              std::vector<std::string>({"Historical Price List Editor|48|The selected column is "
                                        "not available for sorting"}));
}

// --- rows of a recordset ------------------------------------------------------------------------

TEST(RecordsetSource, ShowsEachKindOfFieldInThePatternOfItsColumn)
{
    TestAppFolder folder;
    folder.Execute(folder.SampleAccount(),
                   "INSERT INTO History (Symbol, Name, Description, Shares, Price, Amount, "
                   "TransactionCost, TransDate, Time) VALUES ('O''NEIL', 'Müller & Söhne', "
                   "'Bought', 12.5, 123456, 15432000, 0, '2024-02-29', '00:00:00.000')");
    Connection account;
    account.Open(folder.SampleAccount());
    Recordset rows;
    rows.Open(account, {"Symbol, Name, Shares, Price, Amount, NULL AS Missing, TransDate, Time",
                        "History", ""});
    const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    constexpr ListColumn columns[] = {
        {"Symbol", "Symbol", Qt::AlignLeft},
        {"Name", "Name", Qt::AlignLeft},
        {"Shares", "Shares"},
        {"Price", "Price", Qt::AlignRight, u"0.0000"},
        {"Amount", "Amount", Qt::AlignRight, u"###,##0.00"},
        {"Missing", "Missing", Qt::AlignRight, u"0.00"},
        {"Date", "TransDate", Qt::AlignLeft, u"ddd d MMMM yyyy"},
        {"Time", "Time"},
    };
    const RecordsetSource source(rows, formats, columns);
    QStringList cells;
    for (int column = 0; column < int(std::size(columns)); ++column)
        cells << source.Text(0, column);
    EXPECT_EQ(cells, QStringList({"O'NEIL", "Müller & Söhne", "12.5", "12.3456", "1,543.20", "",
                                  "Thu 29 February 2024", "12:00:00 AM"}));
    EXPECT_EQ(source.RowCount(), 1);
    EXPECT_EQ(source.Text(1, 0), "");
    EXPECT_EQ(source.Text(0, 8), "");
    EXPECT_EQ(source.Columns()[3].dataField, "Price");
}

TEST(RecordsetSource, HasNoRowsBeforeTheRecordsetIsOpen)
{
    Recordset rows;
    const Formats formats{QLocale::c()};
    constexpr ListColumn columns[] = {{"Symbol", "Symbol"}};
    const RecordsetSource source(rows, formats, columns);
    EXPECT_EQ(source.RowCount(), 0);
    EXPECT_EQ(source.Text(0, 0), "");
}

TEST(DataGrid, FindsAColumnByItsFieldWhenNoCaptionIsLikeIt)
{
    Rows rows(Positions());
    DataGrid grid;
    grid.SetSource({{"Symbol", "Symbol"}, {"Date", "PriceDate"}, {"Close", "Date"}}, &rows);
    EXPECT_EQ(grid.ColumnByCaption("PriceDate"), 1);
    EXPECT_EQ(grid.ColumnByCaption("Date"), 1); // the caption comes first
    EXPECT_EQ(grid.ColumnByCaption("Missing"), -1);
}
