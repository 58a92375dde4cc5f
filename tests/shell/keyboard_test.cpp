/// The program by keyboard and by ear: the usual keys of a desktop, help by F1 on every screen, and a
/// name that a screen reader can say for every control.

#include "keyboard_run.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextEdit>

#include <map>
#include <set>

namespace
{

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
                                            {"frmAbout", "TATipsAbout.html"},
                                            {"frmTipOfDay", "TATipsAbout.html"},
                                            {"frmSystemInfo", "TATipsAbout.html"},
                                            {"frmWebLogin", "PUPriceUpdate.html"},
                                            {"frmPlotSelection", "CHChartScreen.html"}};
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

namespace
{

/// The letters that are taken on a screen as it is now, each with its caption.
class Mnemonics
{
public:
    explicit Mnemonics(QString where) : m_where(std::move(where)) {}

    void Take(const QString &text)
    {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (key.isEmpty())
            return;
        const QChar letter = key.toString().back();
        EXPECT_FALSE(m_taken.contains(letter)) << qPrintable(m_where) << ": " << qPrintable(text)
                                               << " and " << qPrintable(m_taken[letter]);
        m_taken[letter] = text;
    }
    void TakeAllOf(const Form &form)
    {
        for (const QLabel *label : form.findChildren<QLabel *>())
            if (label->buddy() && label->isVisibleTo(&form))
                Take(label->text());
        for (const QAbstractButton *button : form.findChildren<QAbstractButton *>())
            if (button->isVisibleTo(&form))
                Take(button->text());
        for (const QGroupBox *box : form.findChildren<QGroupBox *>())
            if (box->isVisibleTo(&form))
                Take(box->title());
        for (const QTabWidget *tabs : form.findChildren<QTabWidget *>())
            for (int page = 0; page < tabs->count() && tabs->isVisibleTo(&form); ++page)
                Take(tabs->tabText(page));
    }

private:
    QString m_where;
    std::map<QChar, QString> m_taken;
};

} // namespace

TEST_F(Keyboard, GivesNoMnemonicOfAScreenToTwoControlsThatAreSeenTogether)
{
    const QList<QAction *> menus = run.App().MainWindow().menuBar()->actions();
    const QStringList screens = Screens();
    for (const QString &screen : screens) {
        const QPointer<Form> form = Loaded(screen);
        ASSERT_TRUE(form) << qPrintable(screen);
        const auto check = [&](const QString &where) {
            Mnemonics letters(where);
            if (form->Where() == Placement::Child) // under the menus of the main window
                for (const QAction *menu : menus)
                    letters.Take(menu->text());
            letters.TakeAllOf(*form);
        };
        check(screen);
        for (QTabWidget *tabs : form->findChildren<QTabWidget *>())
            for (int page = 0; page < tabs->count(); ++page) {
                tabs->setCurrentIndex(page);
                check(screen + QLatin1Char('/') + tabs->tabText(page));
            }
    }
}

TEST_F(Keyboard, GivesNoMnemonicOfAMenuToTwoEntries)
{
    run.App().Host().Show("frmHistoryList");
    run.App().Host().Show("frmChartScreen");
    const QList<QMenu *> menus = run.App().MainWindow().findChildren<QMenu *>();
    EXPECT_GT(menus.size(), 20);
    for (QMenu *menu : menus) {
        emit menu->aboutToShow(); // which fills those that change
        Mnemonics letters(menu->objectName());
        for (const QAction *entry : menu->actions())
            if (entry->isVisible())
                letters.Take(entry->text());
    }
    Mnemonics letters("menu bar");
    for (const QAction *menu : run.App().MainWindow().menuBar()->actions())
        letters.Take(menu->text());
}

TEST_F(Keyboard, TellsTheTextsOfTheStatusBar)
{
    run.State().services.status.Post(QStringLiteral("Sort completed"));
    const auto panels =
        run.App().MainWindow().statusBar()->findChildren<QLabel *>(QStringLiteral("MDIStatusBar1"));
    ASSERT_EQ(panels.size(), 1);
    const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(panels.first());
    EXPECT_EQ(spoken->text(QAccessible::Description), "Sort completed");
}
