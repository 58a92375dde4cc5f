#pragma once

/// The program with its tracker open, and every screen it knows within reach of the keyboard tests.

#include "shell_run.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QTest>
#include <QTextBrowser>

class Keyboard : public testing::Test
{
protected:
    explicit Keyboard(const QLocale &locale = QLocale(QLocale::English, QLocale::UnitedStates))
        : run(folder, locale)
    {
        run.SetOption(QStringLiteral("ShowTipOfDay"), QStringLiteral("0"));
        run.SetOption(QStringLiteral("WebPriceUpdate"), QStringLiteral("0"));
        QFile::link(QStringLiteral(QUILLON_PROJECT "/help"), folder.File(QStringLiteral("help")));
        FillAccount();
        run.App().Launch();
        run.App().Host().Show(QStringLiteral("frmDailyTracker"));
        Recordset &sites = run.State().databases.gRsWebParameters;
        sites.AddNew(); // the trial of a site needs one
        sites.Set(QStringLiteral("WebSiteName"), QStringLiteral("A site"));
        sites.Update();
    }
    ~Keyboard() override { run.App().Host().DestroyAll(); }

    /// Loads a screen without showing it, so that a modal one does not wait for its user.
    Form *Loaded(const QString &screen)
    {
        try {
            run.App().Host().Load(screen);
        } catch (const RuntimeError &error) {
            ADD_FAILURE() << qPrintable(screen) << ": " << qPrintable(error.Description());
            return nullptr;
        }
        return run.App().Host().Find(screen);
    }
    /// Shows it, as a window to work in; the price cycle has nothing to show.
    Form *Shown(const QString &screen)
    {
        Form *form = Loaded(screen);
        if (!form || form->Where() == Placement::Hidden)
            return nullptr;
        run.App().Host().Show(screen);
        form = run.App().Host().Find(screen);
        if (form)
            QApplication::setActiveWindow(form->window());
        QCoreApplication::processEvents();
        return form;
    }
    /// All of them, the one that closes the account last.
    QStringList Screens()
    {
        const QString backup = QStringLiteral("frmBackupRestore");
        QStringList screens = run.App().Host().KnownScreens();
        screens.sort();
        screens.removeOne(backup);
        return screens << backup;
    }
    /// The key goes where the user's would.
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget *target = QApplication::focusWidget();
        if (!target)
            target = QApplication::activeWindow();
        ASSERT_TRUE(target) << "nobody to take the key";
        QTest::keyClick(target, key, modifiers);
        QCoreApplication::processEvents();
    }
    static QTextBrowser *HelpPage()
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() != QLatin1String("HelpWindow") || !window->isVisible())
                continue;
            if (auto *page = qobject_cast<QTextBrowser *>(window))
                return page;
            return window->findChild<QTextBrowser *>();
        }
        return nullptr;
    }
    static QString Topic()
    {
        const QTextBrowser *page = HelpPage();
        return page ? page->source().fileName() : QStringLiteral("(no help)");
    }

    /// Two securities in all lists, so that their grids have rows to stand on.
    void FillAccount()
    {
        const QString account = folder.SampleAccount();
        folder.Execute(folder.File("ApplControl.xxx"),
                       "INSERT INTO SecurityDetail VALUES ('ACME', 'Acme Inc.', 'Stock'), "
                       "('BOLT', 'Bolt Corp.', 'Stock')");
        folder.Execute(account, "INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, "
                                "AvrgPrice, InvestedValue, TransDate, Time) VALUES "
                                "('ACME', 'Acme Inc.', 100, 120000, 100000, 12000000, "
                                "'2026-01-05', '10:00:00.000'), "
                                "('BOLT', 'Bolt Corp.', 50, 300000, 200000, 15000000, "
                                "'2026-01-06', '10:00:00.000')");
        folder.Execute(account, "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, "
                                "TransDate, Time) VALUES "
                                "('ACME', 100, 100000, '2026-01-05', '10:00:00.000'), "
                                "('BOLT', 50, 200000, '2026-01-06', '10:00:00.000')");
        folder.Execute(account, "INSERT INTO History (Symbol, Name, Description, Shares, Price, "
                                "Amount, TransDate, Time) VALUES "
                                "('ACME', 'Acme Inc.', 'Buy', 100, 100000, 10000000, "
                                "'2026-01-05', '10:00:00.000'), "
                                "('BOLT', 'Bolt Corp.', 'Buy', 50, 200000, 10000000, "
                                "'2026-01-06', '10:00:00.000')");
        folder.Execute(account, "INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, "
                                "Time) VALUES "
                                "('ACME', 'Acme Inc.', 2000000, '2026-02-26', '10:00:00.000'), "
                                "('BOLT', 'Bolt Corp.', 5000000, '2026-02-27', '10:00:00.000')");
        folder.Execute(folder.File("HistPrices.xxx"),
                       "INSERT INTO HistoricalPrices (Symbol, PriceDate, PriceClose) VALUES "
                       "('ACME', '2026-01-05', 110000), ('ACME', '2026-02-27', 120000), "
                       "('BOLT', '2026-01-06', 310000), ('BOLT', '2026-02-27', 300000)");
    }

    TestAppFolder folder;
    ShellRun run;
};
