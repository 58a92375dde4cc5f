#pragma once

/// The transaction entry as a user has it: the whole program on an account of its own, with the
/// Daily Tracker open and the entry screen over it. It is Monday 2026-03-02, 10:15.
///
///     ACME     Stock         100 @ 10, bought 2026-01-05        SHRT    Stock   -100 @ 50,
///     2026-01-05 FUND     Mutual Fund    10 @ 20, bought 2026-01-05        IDX     Index      0
///     O'NEIL   Stock           0                                PART    Stock   0.125 @ 8
///     CREDIT   Stock           0, named "Crédit Écureuil"       BARE    (no type) 0
///
/// The account charges no commission until a test sets a style; its balance is 1,000.

#include "driver/widget_actions.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/field_edit.h"
#include "shell/shell_run.h"
#include "support/print_qt.h"
#include "transactions/frm_transaction_update.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QTest>

class EntryScreen : public testing::Test
{
protected:
    explicit EntryScreen(const QLocale &locale = QLocale(QLocale::English, QLocale::UnitedStates))
        : run(PreparedFolder(), locale)
    {
        run.SetOption("DailyTracker", "1");
        run.SetOption("ShowTipOfDay", "0");
        run.SetOption("WebPriceUpdate", "0");
        EXPECT_TRUE(run.App().Launch());
        State().account.AccountBalance = Currency("1000");
    }

    /// Opens the screen for the row, as a double click in the tracker does.
    void Open(const QString &symbol)
    {
        Select(symbol);
        run.App().Host().Show("frmTransactionUpdate");
        QCoreApplication::processEvents();
    }
    void Select(const QString &symbol)
    {
        ASSERT_TRUE(State().AdodcStockHistory.Find(symbol));
        State().selection = {symbol, State().AdodcStockHistory.Current().Name};
    }

    // What the user does.
    void Choose(const QString &action) { WidgetActions::Choose(List(), action); }
    void Type(const QString &field, const QString &text) { WidgetActions::Type(Edit(field), text); }
    void Press(const QString &key) { WidgetActions::PressKey(key); }
    void Click(const QString &button) { WidgetActions::Click(Button(button)); }
    /// Types an entry and presses OK with the mouse.
    void Post(const QString &action, const QString &count, const QString &price = {})
    {
        Choose(action);
        Type("txtNumberOfShares", count);
        if (!price.isEmpty())
            Type("txtPurchasePrice", price);
        Click("cmdOK");
    }
    void Answer(const QString &part, ::Answer answer) { run.boxes.Prepare(part, answer); }

    // What the user sees.
    frmTransactionUpdate *Screen()
    {
        return static_cast<frmTransactionUpdate *>(run.App().Host().Find("frmTransactionUpdate"));
    }
    template <class Widget>
    Widget *Control(const QString &name)
    {
        return Screen()->findChild<Widget *>(name);
    }
    FieldEdit *Edit(const QString &name) { return Control<FieldEdit>(name); }
    QPushButton *Button(const QString &name) { return Control<QPushButton>(name); }
    QListWidget *List() { return Control<QListWidget>("lstAction"); }
    DateField *Date() { return Control<DateField>("dtpTransDate"); }
    QString Text(const QString &field) { return Edit(field)->text(); }
    QString Caption(const QString &label) { return Control<QLabel>(label)->text(); }
    QString Chosen() { return List()->currentItem()->text(); }
    QString Status() { return run.Panel(1); }
    QString Focused()
    {
        const QWidget *focused = QApplication::focusWidget();
        return focused ? focused->objectName() : QString();
    }
    /// The texts of the boxes since the last call.
    QStringList Boxes()
    {
        const QStringList texts = run.boxes.Texts();
        run.boxes.boxes.clear();
        return texts;
    }

    // What the account then holds.
    Program &State() { return run.State(); }
    EntryState &Entry() { return State().entry; }
    const TrackerRow &Row(const QString &symbol)
    {
        EXPECT_TRUE(State().AdodcStockHistory.Find(symbol));
        return State().AdodcStockHistory.Current();
    }
    QString Stored(const QString &sql) const { return folder.Value(folder.SampleAccount(), sql); }
    int HistoryRows() const { return Stored("SELECT COUNT(*) FROM History").toInt(); }

    TestAppFolder folder;
    ShellRun run;

private:
    TestAppFolder &PreparedFolder()
    {
        folder.Execute(folder.File("ApplControl.xxx"),
                       "INSERT INTO SecurityDetail (Symbol, SecurityType) VALUES "
                       "('ACME', 'Stock'), ('SHRT', 'Stock'), ('FUND', 'Mutual Fund'), "
                       "('IDX', 'Index'), ('O''NEIL', 'Stock'), ('PART', 'Stock'), "
                       "('CREDIT', 'Stock')");
        folder.Execute(
            folder.SampleAccount(),
            QString::fromUtf8(
                "INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, AvrgPrice, TransDate, "
                "Time) VALUES "
                "('ACME', 'Acme Inc.', 100, 100000, 100000, '2026-01-05', '10:00:00.000'), "
                "('SHRT', 'Short Corp.', -100, 500000, 500000, '2026-01-05', '10:00:00.000'), "
                "('FUND', 'A Fund', 10, 200000, 200000, '2026-01-05', '10:00:00.000'), "
                "('IDX', 'An Index', 0, 0, 0, '2026-01-05', '10:00:00.000'), "
                "('O''NEIL', 'O''Neil & Sons', 0, 0, 0, '2026-01-05', '10:00:00.000'), "
                "('PART', 'A Part', 0.125, 80000, 80000, '2026-01-05', '10:00:00.000'), "
                "('CREDIT', 'Crédit Écureuil', 0, 0, 0, '2026-01-05', '10:00:00.000'), "
                "('BARE', 'No Type', 0, 0, 0, '2026-01-05', '10:00:00.000')"));
        folder.Execute(folder.SampleAccount(),
                       "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) "
                       "VALUES ('ACME', 100, 100000, '2026-01-05', '10:00:00.000'), "
                       "('SHRT', -100, 500000, '2026-01-05', '10:00:00.000'), "
                       "('FUND', 10, 200000, '2026-01-05', '10:00:00.000'), "
                       "('PART', 0.125, 80000, '2026-01-05', '10:00:00.000')");
        return folder;
    }
};
