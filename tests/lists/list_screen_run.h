#pragma once

/// The program with a list screen open, on ledgers that the test has laid out.
///
///     Bought("ACME", 100, "10", "2026-02-27", "09:30:00.000");
///     OpenScreen("mnuVWHistory");
///     EXPECT_EQ(Rows({"Symbol", "Trans Date"}), "ACME 2/27/2026");

#include "tracking/tracker_screen_run.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMenu>

class ListScreenRun : public TrackerScreenRun
{
protected:
    ListScreenRun(const char *form, const char *grid, const char *viewEntry)
        : m_form(QString::fromUtf8(form)), m_grid(QString::fromUtf8(grid)), m_viewEntry(viewEntry)
    {}

    /// A History row; `description` is its kind, `amount` in whole units.
    void Transaction(const QString &symbol, const QString &description, double shares,
                     const char *price, const char *amount, const char *date, const char *time)
    {
        Execute(
            QStringLiteral("INSERT INTO History (Symbol, Name, Description, Shares, Price, "
                           "Amount, TransactionCost, TransDate, Time) VALUES (%1, %2, %3, %4, "
                           "%5, %6, -50000, '%7', '%8')")
                .arg(Quoted(symbol), Quoted(symbol + QStringLiteral(" Inc.")), Quoted(description))
                .arg(shares)
                .arg(Money(price), Money(amount), QString::fromUtf8(date),
                     QString::fromUtf8(time)));
    }

    void OpenScreen()
    {
        if (!run.App().MainWindow().isVisible())
            Open();
        Choose(m_viewEntry);
    }
    bool IsOpen() { return run.App().Host().Loaded(m_form); }
    void CloseScreen() { run.App().Host().Unload(m_form); }
    void ClickClose() { Button("cmdClose").click(); }
    QPushButton &Button(const char *name)
    {
        return *run.Control<QPushButton>(m_form, QString::fromUtf8(name));
    }
    Form &Screen() { return *run.App().Host().Find(m_form); }
    DataGrid &List() { return *run.Control<DataGrid>(m_form, m_grid); }
    QString CellOf(int row, const char *caption)
    {
        return List().CellText(row, List().ColumnByCaption(QString::fromUtf8(caption)));
    }
    /// A column of the list from top to bottom: "ACME ZETA".
    QString ListColumnTexts(const char *caption)
    {
        QStringList texts;
        for (int row = 0; row < List().RowCount(); ++row)
            texts << CellOf(row, caption);
        return texts.join(QLatin1Char(' '));
    }
    void ClickListHeader(const char *caption)
    {
        List().ClickHeader(List().ColumnByCaption(QString::fromUtf8(caption)));
    }
    /// Types into a cell of a row and leaves the row.
    bool Type(int row, const char *caption, const QString &text)
    {
        List().SelectRow(row);
        const int place = List().ColumnByCaption(QString::fromUtf8(caption));
        return List().EditCell(List().ColumnAt(place), text) && List().CommitRow();
    }
    bool TypeNew(std::initializer_list<std::pair<const char *, QString>> cells)
    {
        List().GoToNewRow();
        for (const auto &[caption, text] : cells) {
            const int place = List().ColumnByCaption(QString::fromUtf8(caption));
            if (!List().EditCell(List().ColumnAt(place), text))
                return false;
        }
        return List().CommitRow();
    }
    /// The running program's account refuses changes of the table from now on.
    void RefuseWrites(const char *table)
    {
        for (const char *change : {"UPDATE", "DELETE"})
            State().databases.gConnAccount.ExecuteScript(
                QStringLiteral("CREATE TRIGGER Refuse%1 BEFORE %1 ON %2 "
                               "BEGIN SELECT RAISE(ABORT, 'no room'); END")
                    .arg(QString::fromUtf8(change), QString::fromUtf8(table)));
    }
    void Press(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(widget, &press);
    }
    void PressInGrid(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Press(List().focusProxy(), key, modifiers);
    }

private:
    const QString m_form;
    const QString m_grid;
    const char *m_viewEntry;
};
