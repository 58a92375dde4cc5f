#pragma once

/// The program with its Daily Tracker open, on an account whose rows and lots the test has laid
/// out.
///
///     tracker.Row("ACME", 100, "10", "12").Lot("ACME", 100, "10");
///     tracker.Open();                          Monday 2026-03-02, 10:15
///     tracker.Select("ACME");
///     tracker.Choose("popDTClear");

#include "platform/widgets/data_grid.h"
#include "platform/widgets/flex_grid.h"
#include "shell/shell_run.h"
#include "transactions/posting.h"
#include "transactions/undo.h"

#include <gtest/gtest.h>

class TrackerScreenRun : public testing::Test
{
protected:
    TrackerScreenRun()
    {
        run.SetOption("ShowTipOfDay", "0").SetOption("WebPriceUpdate", "0");
        run.GiveBalance(folder.SampleAccount(), "2026-03-02", 1);
        Execute("UPDATE DescriptiveTable SET Field01 = 10000000 WHERE TableName = 'Balance'");
    }

    // The account before the program starts.

    void Execute(const QString &sql) { folder.Execute(folder.SampleAccount(), sql); }
    QString Value(const QString &sql) { return folder.Value(folder.SampleAccount(), sql); }
    static QString Money(const char *amount) { return QString::number(Currency(amount).Units()); }
    /// In SQL: a name with an apostrophe is a name like any other.
    static QString Quoted(QString text)
    {
        return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("''")) +
               QLatin1Char('\'');
    }
    void Row(const QString &symbol, double shares, const char *average, const char *price,
             const QString &transDate = QStringLiteral("2026-02-27"),
             const QString &time = QStringLiteral("09:30:00.000"))
    {
        Execute(
            QStringLiteral("INSERT INTO DailyTracker (Symbol, Name, Shares, AvrgPrice, "
                           "CurrPrice, TransDate, Time) VALUES (%1, %2, %3, %4, %5, '%6', '%7')")
                .arg(Quoted(symbol), Quoted(symbol + QStringLiteral(" Inc.")))
                .arg(shares)
                .arg(Money(average), Money(price), transDate, time));
    }
    void Lot(const QString &symbol, double shares, const char *price)
    {
        Execute(
            QStringLiteral("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, "
                           "Time) VALUES (%1, %2, %3, '2026-01-05', '09:30:00.000')")
                .arg(Quoted(symbol))
                .arg(shares)
                .arg(Money(price)));
    }
    /// A row and the one lot that it was bought with.
    void Position(const QString &symbol, double shares, const char *average, const char *price)
    {
        Row(symbol, shares, average, price);
        Lot(symbol, shares, average);
    }
    /// ACME with a gain of 200, ZETA with one of -50.
    void TwoPositions()
    {
        Position("ACME", 100, "10", "12");
        Position("ZETA", 50, "20", "19");
    }

    void Open() { ASSERT_TRUE(run.App().Launch()); }
    void Close() { run.App().Host().Unload("frmDailyTracker"); }

    // The screen.

    DataGrid &Grid() { return *run.Control<DataGrid>("frmDailyTracker", "DataGridStock"); }
    FlexGrid &Totals() { return *run.Control<FlexGrid>("frmDailyTracker", "MSHFlexGridTotals"); }
    Program &State() { return run.State(); }
    void Choose(const char *command) { run.Choose(QString::fromUtf8(command)); }
    void Select(const QString &symbol)
    {
        const int place = Grid().ColumnByCaption("Symbol");
        for (int row = 0; row < Grid().RowCount(); ++row)
            if (Grid().CellText(row, place) == symbol)
                Grid().SelectRow(row, place);
    }
    /// A column of the grid from top to bottom: "ACME ZETA".
    QString Column(const char *caption)
    {
        QStringList texts;
        const int place = Grid().ColumnByCaption(QString::fromUtf8(caption));
        for (int row = 0; row < Grid().RowCount(); ++row)
            texts << Grid().CellText(row, place);
        return texts.join(QLatin1Char(' '));
    }
    QString Cell(const QString &symbol, const char *caption)
    {
        for (int row = 0; row < Grid().RowCount(); ++row)
            if (Grid().CellText(row, Grid().ColumnByCaption("Symbol")) == symbol)
                return Grid().CellText(row, Grid().ColumnByCaption(QString::fromUtf8(caption)));
        return QStringLiteral("(no row)");
    }
    QString Total(const char *heading)
    {
        return Totals().CellText(0, Totals().ColumnByCaption(QString::fromUtf8(heading)));
    }
    void ClickHeader(const char *caption)
    {
        Grid().ClickHeader(Grid().ColumnByCaption(QString::fromUtf8(caption)));
    }
    QString CurrentSymbol() { return State().selection.CurrentSymbol; }
    /// The symbol of the grid's current row.
    QString MarkedSymbol()
    {
        return Grid().CellText(Grid().CurrentRow(), Grid().ColumnByCaption("Symbol"));
    }
    QString Status() { return run.Panel(1); }
    bool UndoEnabled() { return run.Commands().Enabled("UndoLast"); }

    /// Posts as the entry screen does.
    void Post(Action action, const QString &symbol, const QString &count, const QString &price)
    {
        struct NoScreen : EntryFiller
        {
            void Focus(EntryField) override {}
            void SelectAction(Action) override {}
        } noScreen;
        State().entry.CurrentSecurityType = QStringLiteral("Stock");
        TransactionEntry entry{action, symbol, symbol + QStringLiteral(" Inc."),
                               count,  price,  run.clock.Today()};
        PostingWork work = State().Posting();
        const PostingOutcome outcome = PostTransaction(work, entry, noScreen);
        State().UpdatePortfolioTotals();
        FinishPosting(work, outcome);
    }

    TestAppFolder folder;
    ShellRun run{folder};
};
