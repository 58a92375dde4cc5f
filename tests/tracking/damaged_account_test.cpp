/// Accounts with values that no number of the program can hold: they open, show what they have, and name
/// the rows that they leave out.

#include "tracker_screen_run.h"

#include "platform/widgets/colors.h"

#include <QAbstractItemModel>
#include <QTableView>

namespace
{

/// In SQL; with what each stands for.
const char *const BadValues[] = {"'abc'",
                                 "''",
                                 "x'00ff'",
                                 "9e999",
                                 "-9e999",
                                 "1e300",
                                 "1e30",
                                 "9223372036854775807",
                                 "-9223372036854775807 - 1",
                                 "99999999"};

class DamagedAccount : public TrackerScreenRun
{
protected:
    DamagedAccount()
    {
        for (const char *screen : {"DailyTracker", "PurchaseList", "DailyProfitLoss", "HistoryList",
                                   "ChartScreen", "HistoricalPriceList"})
            run.SetOption(screen, "1");
    }
    void OpenWithoutAWordOfAnInvalidAccount()
    {
        run.boxes.OnBox = [](const ScriptedBoxes::ShownBox &box) {
            if (box.text.contains("is invalid!")) // would ask for another account for ever
                throw std::runtime_error(box.text.toStdString());
        };
        for (int i = 0; i < 500; ++i) // the lots of rows whose count cannot be read
            run.boxes.Prepare("Message number: 100", Answer::No);
        ASSERT_TRUE(run.App().Launch());
        for (const QString &text : run.boxes.Texts())
            EXPECT_FALSE(text.contains("is invalid!")) << qPrintable(text);
        EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
    }
    QString BoxWith(const QString &part)
    {
        for (const QString &text : run.boxes.Texts())
            if (text.contains(part))
                return text;
        return {};
    }
    QVariant CellData(const QString &symbol, const char *caption, int role)
    {
        const QAbstractItemModel &model = *Grid().findChild<QTableView *>()->model();
        const int place = Grid().ColumnByCaption(QString::fromUtf8(caption));
        for (int row = 0; row < model.rowCount(); ++row)
            if (model.index(row, 0).data().toString() == symbol)
                return model.index(row, Grid().ColumnAt(place)).data(role);
        return {};
    }
    /// An account as an earlier version of the program left it: stored at a price that overflows.
    void TooExpensive()
    {
        Position("AAA", 300, "10", "600");
        Position("BBB", 100, "10", "12");
        // 3,450,000,000,000 * 300 is more than money can hold; the gain is that of before.
        Execute("UPDATE DailyTracker SET CurrPrice = 34500000000000000, Basis = 1770000000, "
                "InvestedValue = 1800000000, ProfitLossToday = 70000 WHERE Symbol = 'AAA'");
    }
};

} // namespace

TEST_F(DamagedAccount, WithAPriceThatOverflowsOpensAndLeavesTheRowOutOfTheTotals)
{
    TooExpensive();
    Open();
    EXPECT_EQ(
        run.boxes.Texts(),
        QStringList("These rows of the Daily Tracker cannot be valued, and are left out of the "
                    "totals:\nAAA: Price 3,450,000,000,000.0000, Shares 300.0000\nThe next good "
                    "price brings a row back. 'Clear' and 'Delete' of the popup menu remove its "
                    "amounts."));
    EXPECT_EQ(run.boxes.boxes[0].title, "Daily Tracker Editor");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, 48);
    EXPECT_EQ(Cell("AAA", "Price"), "3450000000000.0000");
    EXPECT_EQ(Cell("AAA", "P&L Today"), "7.00");
    EXPECT_EQ(Total("Gain Total"), "200.00"); // of BBB alone
    EXPECT_EQ(Total("InvestedValue"), "1,200.00");
    EXPECT_EQ(Total("P&L Today"), "0.00");
    EXPECT_EQ(Total("Current Balance*"), "1,000.00");
    for (const char *caption : {"Symbol", "Price", "Gain"})
        EXPECT_EQ(CellData("AAA", caption, Qt::ToolTipRole),
                  "Left out of the totals: its amounts are too large.")
            << caption;
    EXPECT_EQ(CellData("AAA", "Symbol", Qt::AccessibleTextRole),
              "AAA, Left out of the totals: its amounts are too large.");
    EXPECT_FALSE(CellData("BBB", "Price", Qt::ToolTipRole).isValid());
    EXPECT_EQ(Value("SELECT CurrPrice FROM DailyTracker WHERE Symbol = 'AAA'"),
              "34500000000000000");
}

TEST_F(DamagedAccount, TakesTheRowBackAtItsNextGoodPriceWithoutMovingTheBalanceTwice)
{
    TooExpensive();
    Open();
    ASSERT_TRUE(State().AdodcStockHistory.Find("AAA"));
    State().AdodcStockHistory.SetPrice(Currency("601"), QTime(10, 20)); // 600 before: 300 more
    State().ReloadDataGrid();
    EXPECT_EQ(Total("Gain Total"), "177,500.00"); // 300 * 591 + 200
    EXPECT_EQ(Total("Current Balance*"), "1,300.00");
    EXPECT_FALSE(CellData("AAA", "Symbol", Qt::ToolTipRole).isValid());
    EXPECT_EQ(run.boxes.boxes.size(), 1u);
}

TEST_F(DamagedAccount, PostsToTheOtherRowsAndToTheOneThatIsLeftOut)
{
    TooExpensive();
    Open();
    Post(Action::Buy, "BBB", "10", "12");
    EXPECT_EQ(Cell("BBB", "Shares"), "110.0000");
    EXPECT_EQ(Total("InvestedValue"), "1,320.00");
    run.boxes.Prepare("Is this OK?", Answer::Yes); // for a price above 500
    run.boxes.Prepare("Is this OK?", Answer::Yes); // and far from the average
    Post(Action::Sell, "AAA", "100", "600");       // which brings a good price
    EXPECT_EQ(Cell("AAA", "Shares"), "200.0000");
    EXPECT_FALSE(CellData("AAA", "Symbol", Qt::ToolTipRole).isValid());
    EXPECT_EQ(run.timesEnded, 0);
}

TEST_F(DamagedAccount, LeavesOutARowOfTwoWhoseSumOverflows)
{
    Position("AAA", 1, "1", "600000000000000");
    Position("BBB", 1, "1", "600000000000000");
    Open();
    EXPECT_TRUE(BoxWith("BBB: Price 600,000,000,000,000.0000").contains("left out of the totals"));
    EXPECT_FALSE(BoxWith("AAA: Price").contains("AAA: Price"));
    EXPECT_EQ(Total("InvestedValue"), "600,000,000,000,000.00");
}

TEST_F(DamagedAccount, WithAnyValueInAnyColumnOfThePositionsOpensAndNamesTheRow)
{
    int count = 0;
    for (const char *column :
         {"Name", "Shares", "CurrPrice", "Basis", "AvrgPrice", "ProfitLossToday",
          "ProfitLossToDate", "ActualProfitLoss", "TransCostToday", "TransCostToDate",
          "NumberTransToday", "NumberTransToDate", "InvestedValue", "InvestedToDate", "TransDate",
          "Time", "PerCentGainToday"}) {
        for (const char *value : BadValues) {
            const QString symbol = QStringLiteral("S%1").arg(++count);
            Row(symbol, 1, "1", "2");
            Lot(symbol, 1, "1");
            Execute(QStringLiteral("UPDATE DailyTracker SET %1 = %2 WHERE Symbol = '%3'")
                        .arg(column, value, symbol));
        }
    }
    Position("GOOD", 1, "1", "2");
    Execute("UPDATE DailyTracker SET Shares = 'many' WHERE Symbol = 'S1'");
    const QString damaged = "SELECT group_concat(quote(Shares)) FROM DailyTracker WHERE "
                            "typeof(Shares) <> 'real' OR abs(Shares) > 1e10";
    const QString stored = Value(damaged);
    OpenWithoutAWordOfAnInvalidAccount();
    EXPECT_EQ(Grid().RowCount(), count + 1);
    EXPECT_EQ(Cell("GOOD", "Gain"), "1.0000");
    EXPECT_TRUE(BoxWith("\nS1: no usable number in the column Shares").contains("left out"));
    Close();
    EXPECT_EQ(Value(damaged), stored);
}

TEST_F(DamagedAccount, WithAnyValueInAnyColumnOfTheLedgersOpens)
{
    Position("GOOD", 1, "1", "2");
    const struct
    {
        const char *table;
        QStringList columns;
        const char *row; ///< %1 a number of its own
    } tables[] = {
        {"PriceHistory",
         {"Symbol", "Shares", "PurchasePrice", "TransDate", "Time"},
         "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES "
         "('X%1', 1, 10000, '2026-01-05', '09:30:00.000')"},
        {"History",
         {"Symbol", "Name", "Description", "Shares", "TransactionCost", "Price", "Amount",
          "TransDate", "Time"},
         "INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, Amount, "
         "TransDate, Time) VALUES ('X%1', 'X', 'Bought', 1, 0, 10000, 10000, '2026-03-02', "
         "'09:30:00.000')"},
        {"DailyProfitLoss",
         {"Name", "ProfitLoss", "Time"},
         "INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) VALUES ('X%1', "
         "'X', 10000, '2026-03-02', '09:30:00.000')"},
        {"PortfolioDailyBalance",
         {"DailyBalance", "Time"},
         "INSERT INTO PortfolioDailyBalance VALUES (10000, '2026-03-02', '09:30:00.000', 'X%1')"},
    };
    int count = 0;
    for (const auto &[table, columns, row] : tables)
        for (const QString &column : columns)
            for (const char *value : BadValues) {
                Execute(QString(row).arg(++count));
                Execute(
                    QStringLiteral("UPDATE %1 SET %2 = %3 WHERE rowid = (SELECT max(rowid) FROM "
                                   "%1)")
                        .arg(table, column, value));
            }
    OpenWithoutAWordOfAnInvalidAccount();
    EXPECT_EQ(Cell("GOOD", "Gain"), "1.0000");
    EXPECT_EQ(BoxWith("cannot be shown"),
              "A list of this account cannot be shown.\nError number 13\nDescription: Table "
              "DailyProfitLoss, row X151, 2026-03-02, 09:30:00.000, column ProfitLoss: 'abc' is no "
              "number.");
    EXPECT_TRUE(run.App().Host().Loaded("frmHistoryList"));
}

TEST_F(DamagedAccount, WithAnyValueInAnyFieldOfItsControlRowsOpens)
{
    const QString named = QStringLiteral("These values of the account cannot be read");
    int boxes = 0;
    for (int field = 1; field <= 12; ++field) {
        for (const char *value : BadValues) {
            TestAppFolder own;
            ShellRun ownRun(own);
            ownRun.SetOption("ShowTipOfDay", "0").SetOption("WebPriceUpdate", "0");
            ownRun.GiveBalance(own.SampleAccount(), "2026-03-02", 1);
            own.Execute(
                own.SampleAccount(),
                "INSERT INTO DescriptiveTable VALUES ('WebSite', 0, 0, 0, '2026-03-02', "
                "'2026-03-02', '5', 0, 'Quotes', 'n/a', 0, 0, '0'), ('Style1', 10000, 0, 0, "
                "'2026-03-02', '2026-03-02', '5', 0, 'n/a', 'n/a', 0, 0, '0'), ('Security', "
                "0, 0, 0, '2026-03-02', '2026-03-02', '15', 0, 'Ann', 'vhfuhw', 0, 0, '0')");
            own.Execute(own.SampleAccount(),
                        QStringLiteral("UPDATE DescriptiveTable SET Field%1 = %2")
                            .arg(field, 2, 10, QLatin1Char('0'))
                            .arg(value));
            ownRun.AddScreen("frmPassword"); // where a flag asks for it
            ownRun.WhenModal("frmPassword", [&] { ownRun.App().Host().Unload("frmPassword"); });
            ownRun.boxes.OnBox = [&](const ScriptedBoxes::ShownBox &box) {
                if (!box.text.startsWith(named))
                    throw std::runtime_error("Field" + std::to_string(field) + " = " + value +
                                             ": " + box.text.toStdString());
            };
            ASSERT_TRUE(ownRun.App().Launch());
            boxes += int(ownRun.boxes.Texts().size());
        }
    }
    EXPECT_GT(boxes, 10);
}

TEST_F(DamagedAccount, RefusesToPostToARowThatCannotBeRead)
{
    Position("AAA", 300, "10", "12");
    Execute("UPDATE DailyTracker SET AvrgPrice = 'ten'");
    Open();
    run.boxes.boxes.clear();
    Post(Action::Buy, "AAA", "10", "12");
    EXPECT_EQ(run.boxes.Texts(),
              QStringList(
                  "AAA has no usable number in the column AvrgPrice of its row, so nothing can be "
                  "posted to it. Clear or delete the row first."));
    EXPECT_EQ(Value("SELECT AvrgPrice || ' ' || Shares FROM DailyTracker"), "ten 300.0");
    run.boxes.Prepare("clear the content", Answer::Yes);
    Select("AAA");
    Choose("popDTClear");
    EXPECT_EQ(Value("SELECT AvrgPrice || ' ' || Shares FROM DailyTracker"), "0 0.0");
}

// --- the marks in the grid ------------------------------------------------------------------------

TEST_F(DamagedAccount, MarksCanBeReadOnAnyColourOfTheGridAndWithoutColours)
{
    Position("AAA", 1, "10", "12");
    Position("BBB", 1, "10", "12");
    Open();
    for (const QRgb ground : {qRgb(255, 255, 255), qRgb(20, 20, 20), qRgb(255, 255, 138),
                              qRgb(255, 160, 0), qRgb(0, 0, 160), qRgb(128, 128, 128)}) {
        Grid().SetBackColor(ground);
        for (const bool isOld : {false, true}) {
            TrackerRecordset &rows = State().AdodcStockHistory;
            rows.MarkPrice(0, {"50.00 -> 123,456.00, please check this price", isOld});
            rows.MarksChanged();
            Grid().SetCurrentRow(1);
            Grid().resize(900, 300);
            const int place = Grid().ColumnByCaption("Price");
            const ShownGrid::Target target = Grid().CellTarget(0, place);
            const QImage picture = target.widget->grab().toImage();
            const auto &view = *static_cast<QTableView *>(target.widget->parentWidget());
            const QRect cell = view.visualRect(view.model()->index(0, Grid().ColumnAt(place)));
            const QColor marked = picture.pixelColor(cell.center().x(), cell.top() + 1);
            const QColor corner = picture.pixelColor(cell.topLeft() + QPoint(1, 1));
            EXPECT_GE(Contrast(marked, ReadableOn(marked, view.palette())), 4.5);
            EXPECT_GE(Contrast(marked, corner), 2) << ground;
        }
    }
    EXPECT_EQ(Cell("AAA", "Price"), "12.0000"); // the text of the cell stays
    EXPECT_EQ(CellData("AAA", "Price", Qt::AccessibleTextRole),
              "12.0000, 50.00 -> 123,456.00, please check this price");
    EXPECT_FALSE(CellData("AAA", "Gain", Qt::ToolTipRole).isValid());
}
