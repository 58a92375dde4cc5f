#pragma once

/// The program with quote sites that the test has laid out, and the quote site editor in it.
///
///     Site(1, "Quotes (US)", server.Address("/q?s="));
///     OpenEditor();
///     GoTo("Quotes (US)", "Characters to Price");
///     Paste(QString(57, 'x'));

#include "driver/grid_actions.h"
#include "driver/widget_actions.h"
#include "support/loopback_server.h"
#include "tracking/tracker_screen_run.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>

class QuoteEditorRun : public TrackerScreenRun
{
protected:
    // The account and the sites before the program starts.

    QString WebSites() const { return folder.File("WebSites.mdb"); }
    QString InSites(const QString &sql) const { return folder.Value(WebSites(), sql); }
    /// A site that is asked for one symbol a request: "[ACME]$12.50;".
    void Site(int id, const QString &name, const QString &begWebAddress = "http://127.0.0.1:9/")
    {
        folder.Execute(WebSites(),
                       QString("INSERT INTO WebParameters VALUES (%1, %2, %3, '', ',', "
                               "'[', ']', 60, '$', ';', 5, 1, 0, '', 'None', '', 1, 0, "
                               "0)")
                           .arg(QString::number(id), Quoted(name), Quoted(begWebAddress)));
    }
    void SiteInUse(const QString &name)
    {
        Execute(QString("INSERT INTO DescriptiveTable (TableName, Field06, Field08) VALUES "
                        "('WebSite', '5', %1)")
                    .arg(Quoted(name)));
    }
    void OpenEditor()
    {
        Open();
        run.Choose("mnuVWQuoteServerUpdate");
        QCoreApplication::processEvents();
        ASSERT_NE(Editor(), nullptr);
    }

    // The screen.

    Form *Editor() { return run.App().Host().Find("frmQuoteServerUpdate"); }
    DataGrid &Sites()
    {
        return *run.Control<DataGrid>("frmQuoteServerUpdate", "DataGridQuoteUpdate");
    }
    bool CloseEditor() { return run.App().Host().Unload("frmQuoteServerUpdate"); }
    int Place(const QString &caption) { return Sites().ColumnByCaption(caption); }
    int RowOf(const QString &site)
    {
        for (int row = 0; row < Sites().RowCount(); ++row)
            if (Sites().CellText(row, Place("website Name")) == site)
                return row;
        ADD_FAILURE() << "There is no site " << qPrintable(site);
        return 0;
    }
    void GoTo(const QString &site, const QString &caption = "website Name")
    {
        Sites().SelectRow(RowOf(site), Place(caption));
    }
    QString SiteCell(const QString &site, const QString &caption)
    {
        return Sites().CellText(RowOf(site), Place(caption));
    }
    /// The names from top to bottom.
    QStringList SiteNames()
    {
        QStringList names;
        for (int row = 0; row < Sites().RowCount(); ++row)
            names << Sites().CellText(row, Place("website Name"));
        return names;
    }

    // Keys, in the current cell.

    void Press(const char *key)
    {
        WidgetActions::PressKey(key);
        QCoreApplication::processEvents(); // Enter closes a cell a moment later
    }
    QLineEdit *OpenCell()
    {
        Press("F2");
        auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        EXPECT_NE(editor, nullptr) << "the cell does not open";
        return editor;
    }
    void TypeText(const QString &text)
    {
        OpenCell();
        WidgetActions::TypeToFocus(text);
    }
    /// As Ctrl+V, whose key has the character 22.
    void Paste(const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        QWidget *editor = OpenCell();
        QKeyEvent paste(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier, QString(QChar(22)));
        QApplication::sendEvent(editor, &paste);
    }

    QStringList TakeBoxes()
    {
        QStringList boxes;
        for (const ScriptedBoxes::ShownBox &box : run.boxes.boxes)
            boxes << QString("%1|%2|%3").arg(box.title).arg(box.buttonsValue).arg(box.text);
        run.boxes.boxes.clear();
        return boxes;
    }
};
