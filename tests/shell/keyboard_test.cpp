/// The program by keyboard and by ear: the usual keys of a desktop, help by F1 on every screen, and a
/// name that a screen reader can say for every control.

#include "shell_run.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTextBrowser>
#include <QTextEdit>

#include <map>
#include <set>

namespace
{

class Keyboard : public testing::Test
{
protected:
    Keyboard()
    {
        run.SetOption(QStringLiteral("ShowTipOfDay"), QStringLiteral("0"));
        run.SetOption(QStringLiteral("WebPriceUpdate"), QStringLiteral("0"));
        QFile::link(QStringLiteral(QUILLON_PROJECT "/help"), folder.File(QStringLiteral("help")));
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
    /// All of them, the one that closes the account last.
    QStringList Screens()
    {
        const QString backup = QStringLiteral("frmBackupRestore");
        QStringList screens = run.App().Host().KnownScreens();
        screens.sort();
        screens.removeOne(backup);
        return screens << backup;
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

    TestAppFolder folder;
    ShellRun run{folder};
};

/// What the user types into, clicks on or chooses from; not the parts that such a control is made of.
bool IsControl(const QWidget &widget)
{
    if (widget.objectName().startsWith(QLatin1String("qt_")))
        return false;
    const QWidget *parent = widget.parentWidget();
    if (qobject_cast<const QComboBox *>(parent) || qobject_cast<const QAbstractSpinBox *>(parent) ||
        qobject_cast<const QLineEdit *>(parent) || widget.inherits("QComboBoxListView") ||
        widget.inherits("QTableCornerButton") || qobject_cast<const QHeaderView *>(&widget))
        return false;
    return qobject_cast<const QAbstractButton *>(&widget) ||
           qobject_cast<const QLineEdit *>(&widget) || qobject_cast<const QTextEdit *>(&widget) ||
           qobject_cast<const QComboBox *>(&widget) ||
           qobject_cast<const QAbstractSpinBox *>(&widget) ||
           qobject_cast<const QAbstractItemView *>(&widget);
}

QString SpokenName(QWidget &control)
{
    QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&control);
    const QString name = spoken ? spoken->text(QAccessible::Name).trimmed() : QString();
    // The panes of a grid take its name when they are shown.
    return name.isEmpty() && qobject_cast<QAbstractItemView *>(&control)
               ? control.parentWidget()->accessibleName()
               : name;
}

} // namespace

TEST_F(Keyboard, GivesTheUsualKeysToTheirCommands)
{
    const std::map<QString, QString> keys{
        {"mnuFLNew", "Ctrl+N"},  {"mnuFLOpenExisting", "Ctrl+O"}, {"mnuFLSCForm", "Ctrl+P"},
        {"mnuFLExit", "Ctrl+Q"}, {"mnuHelpTopics", "F1"},         {"UndoLast", "Ctrl+Z"}};
    for (const auto &[name, key] : keys)
        EXPECT_EQ(run.App().MainWindow().Action(name)->shortcut(), QKeySequence(key))
            << qPrintable(name);
}

TEST_F(Keyboard, GivesNoKeyToTwoCommands)
{
    std::set<QString> taken;
    for (const QAction *action : run.App().MainWindow().findChildren<QAction *>()) {
        const QString key = action->shortcut().toString();
        EXPECT_TRUE(key.isEmpty() || taken.insert(key).second) << qPrintable(key);
    }
}

TEST_F(Keyboard, OpensTheTopicOfTheScreenInUseByF1)
{
    const std::map<QString, QString> topics{
        {"frmDailyTracker", "DTDailyTrackerScreen.html"},
        {"frmHistoryList", "THTransactionHistoryView.html"},
        {"frmPurchaseList", "PPPurchasePriceList.html"},
        {"frmDailyProfitLoss", "PLDailyProfitLossView.html"},
        {"frmHistoricalPriceList", "HPHistoricalPriceList.html"},
        {"frmQuoteServerUpdate", "QSQuoteServerUpdate.html"},
        {"frmChartScreen", "CHPortfolioPositions.html"}};
    for (const auto &[screen, topic] : topics) {
        run.App().Host().Show(screen);
        Form *form = run.App().Host().Find(screen);
        ASSERT_TRUE(form) << qPrintable(screen);
        QWidget *focused = form->focusWidget() ? form->focusWidget() : form;
        QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_F1, Qt::NoModifier);
        asked.ignore();
        QApplication::sendEvent(focused, &asked);
        EXPECT_TRUE(asked.isAccepted()) << qPrintable(screen);
        QKeyEvent pressed(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
        QApplication::sendEvent(focused, &pressed);
        EXPECT_EQ(Topic(), topic) << qPrintable(screen);
    }
}

TEST_F(Keyboard, OpensTheTopicOfADialogOrAnEntryScreenByF1)
{
    const std::map<QString, QString> topics{{"frmUserSetup", "USUserSetup.html"},
                                            {"frmTransactionUpdate", "DTTransactionUpdate.html"},
                                            {"frmPassword", "SignOn.html"},
                                            {"frmPortfolioSelect", "PSPortfolioSelect.html"},
                                            {"frmSecurityUpdate", "DTSecurityUpdate.html"},
                                            {"frmAbout", "AboutQuillon.htm"}};
    for (const auto &[screen, topic] : topics) {
        Form *form = Loaded(screen);
        ASSERT_TRUE(form) << qPrintable(screen);
        QKeyEvent pressed(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
        QApplication::sendEvent(form, &pressed);
        EXPECT_EQ(Topic(), topic) << qPrintable(screen);
    }
}

TEST_F(Keyboard, HasANameToSayForEveryControlOfEveryScreen)
{
    run.App().Host().ShowHelp(QStringLiteral("AboutQuillon.htm"));
    const QStringList screens = Screens();
    ASSERT_GT(screens.size(), 25);
    int controls = 0;
    for (const QString &screen : screens) {
        const QPointer<Form> form = Loaded(screen);
        ASSERT_TRUE(form) << qPrintable(screen);
        for (QWidget *control : form->findChildren<QWidget *>()) {
            if (!IsControl(*control))
                continue;
            ++controls;
            EXPECT_FALSE(SpokenName(*control).isEmpty())
                << qPrintable(screen) << "." << qPrintable(control->objectName()) << ", a "
                << control->metaObject()->className();
        }
    }
    EXPECT_GT(controls, 150);
}

TEST_F(Keyboard, GivesNoMnemonicOfAScreenToTwoControlsThatAreSeenTogether)
{
    const QStringList screens = Screens();
    for (const QString &screen : screens) {
        const QPointer<Form> form = Loaded(screen);
        ASSERT_TRUE(form) << qPrintable(screen);
        std::map<QChar, QString> taken;
        const auto take = [&](const QWidget &widget, const QString &text) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (key.isEmpty() || !widget.isVisibleTo(form))
                return;
            const QChar letter = key.toString().back();
            EXPECT_FALSE(taken.contains(letter)) << qPrintable(screen) << ": " << qPrintable(text)
                                                 << " and " << qPrintable(taken[letter]);
            taken[letter] = text;
        };
        for (const QLabel *label : form->findChildren<QLabel *>())
            if (label->buddy())
                take(*label, label->text());
        for (const QAbstractButton *button : form->findChildren<QAbstractButton *>())
            take(*button, button->text());
    }
}
