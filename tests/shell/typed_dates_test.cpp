/// Dates typed key by key into every date field of the program, in locales that write them differently.

#include "keyboard_run.h"

#include "driver/widget_actions.h"
#include "platform/widgets/date_field.h"

#include <QCalendarWidget>
#include <QClipboard>
#include <QDateTimeEdit>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>

namespace
{

/// What people of the locale write for a day: short and long, as shown, in ISO.
QStringList Writings(const QLocale &locale, QDate date)
{
    const Formats formats(locale);
    return {locale.toString(date, QLocale::ShortFormat), locale.toString(date, QLocale::LongFormat),
            formats.ShortDate(date), formats.FormatDate(date, u"Long Date"),
            date.toString(Qt::ISODate)};
}

/// The same with a day that the month does not have.
QStringList ImpossibleWritings(const QLocale &locale)
{
    const QDate lastOfFebruary(2026, 2, 28);
    QStringList impossible = Writings(locale, lastOfFebruary);
    for (QString &text : impossible)
        text.replace(QLatin1String("28"), QLatin1String("31"))
            .replace(locale.toString(28), locale.toString(31));
    return impossible << QStringLiteral("soon") << QStringLiteral("13/13/2026") << QString();
}

void BringToSight(QWidget *control)
{
    for (QWidget *page = control; page; page = page->parentWidget())
        if (QWidget *stack = page->parentWidget())
            if (auto *tabs = qobject_cast<QTabWidget *>(stack->parentWidget()))
                if (tabs->indexOf(page) >= 0)
                    tabs->setCurrentIndex(tabs->indexOf(page));
    QCoreApplication::processEvents();
}

} // namespace

class TypedDate : public Keyboard
{
protected:
    explicit TypedDate(const QLocale &spoken = QLocale(QLocale::English, QLocale::UnitedStates))
        : Keyboard(spoken), locale(spoken)
    {
        QLocale::setDefault(locale);
        run.State().selection = {QStringLiteral("ACME"), QStringLiteral("Acme Inc.")};
    }
    ~TypedDate() override { QLocale::setDefault(QLocale::c()); }

    /// Runs `act` with the focus in every date field of every screen.
    template <class Act>
    void InEveryDateField(Act act)
    {
        int fields = 0;
        const QStringList screens = Screens();
        for (const QString &screen : screens) {
            const QPointer<Form> form = Shown(screen);
            if (!form)
                continue;
            for (QDateTimeEdit *other : form->findChildren<QDateTimeEdit *>())
                EXPECT_TRUE(dynamic_cast<DateField *>(other)) << qPrintable(other->objectName());
            for (DateField *field : form->findChildren<DateField *>()) {
                SCOPED_TRACE(qPrintable(screen + QLatin1Char('.') + field->objectName()));
                BringToSight(field);
                field->setVisible(true); // some reports and charts have no range
                field->setEnabled(true);
                form->findChild<QPushButton *>(QStringLiteral("cmdOK"))->setEnabled(true);
                field->setFocus(Qt::TabFocusReason);
                ASSERT_TRUE(field->hasFocus());
                run.boxes.boxes.clear();
                act(screen, *field);
                ++fields;
            }
            run.boxes.boxes.clear();
            if (screen != QLatin1String("frmDailyTracker"))
                run.App().Host().Unload(screen);
        }
        EXPECT_GE(fields, 14);
    }
    static void TypeOver(const QString &text)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        if (text.isEmpty())
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        WidgetActions::TypeToFocus(text);
    }
    static std::string Iso(QDate date) { return date.toString(Qt::ISODate).toStdString(); }

    const QLocale locale;
};

class TypedDates : public TypedDate, public testing::WithParamInterface<const char *>
{
protected:
    TypedDates() : TypedDate(QLocale(QString::fromLatin1(GetParam()))) {}
};

TEST_P(TypedDates, AreTakenInEveryWritingOfTheLocale)
{
    InEveryDateField([this](const QString &, DateField &field) {
        for (const QDate date : {QDate(2026, 2, 1), QDate(2025, 11, 30)})
            for (const QString &text : Writings(locale, date)) {
                field.setDate(QDate(2020, 6, 15));
                field.setFocus();
                TypeOver(text);
                EXPECT_TRUE(field.hasFocus()) << qPrintable(text);
                Press(Qt::Key_Tab);
                EXPECT_FALSE(field.hasFocus()) << qPrintable(text);
                EXPECT_EQ(Iso(field.date()), Iso(date)) << qPrintable(text);
                EXPECT_EQ(field.text(), Formats(locale).ShortDate(date));
                EXPECT_EQ(run.boxes.Texts(), QStringList());
            }
    });
}

TEST_P(TypedDates, AreTakenWhenTheyArePasted)
{
    InEveryDateField([this](const QString &, DateField &field) {
        const QDate date(2026, 2, 1);
        for (const QString &text : Writings(locale, date)) {
            field.setDate(QDate(2020, 6, 15));
            field.setFocus();
            QGuiApplication::clipboard()->setText(text);
            QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
            Press(Qt::Key_Backtab, Qt::ShiftModifier);
            EXPECT_FALSE(field.hasFocus()) << qPrintable(text);
            EXPECT_EQ(Iso(field.date()), Iso(date)) << qPrintable(text);
        }
    });
}

TEST_P(TypedDates, AreRefusedWithASentenceWhenTheCalendarHasNoSuchDay)
{
    InEveryDateField([this](const QString &screen, DateField &field) {
        const QDate before(2026, 2, 15);
        for (const QString &text : ImpossibleWritings(locale))
            for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Return}) {
                field.setDate(before);
                TypeOver(text);
                Press(key);
                ASSERT_TRUE(run.App().Host().Loaded(screen)) << qPrintable(text);
                EXPECT_TRUE(field.hasFocus()) << qPrintable(text);
                EXPECT_EQ(Iso(field.date()), Iso(before)) << qPrintable(text);
                ASSERT_EQ(run.boxes.boxes.size(), 1U) << qPrintable(text);
                EXPECT_TRUE(run.boxes.boxes[0].text.contains(
                    Formats(locale).ShortDate(run.State().services.clock.Today())))
                    << qPrintable(run.boxes.boxes[0].text);
                run.boxes.boxes.clear();
            }
        field.setDate(before);
    });
}

/// Buttons take no focus when they are clicked, so the field is not left.
TEST_F(TypedDate, IsTakenOrRefusedWhenOKIsClicked)
{
    Form *list = Shown("frmHistoryList");
    auto *from = list->findChild<DateField *>("dtpFrom");
    auto *ok = list->findChild<QPushButton *>("cmdOK");
    from->setFocus();
    TypeOver(Formats(locale).ShortDate(QDate(2026, 1, 6)));
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_EQ(Iso(from->date()), "2026-01-06");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    const QString count = list->findChild<QLineEdit *>("txtTransCount")->text();

    TypeOver(QStringLiteral("2026-02-31"));
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_EQ(run.boxes.Texts().join(QLatin1Char('|')),
              "\"2026-02-31\" is not a date. Please enter a date such as 3/2/2026.");
    EXPECT_TRUE(from->hasFocus());
    EXPECT_EQ(Iso(from->date()), "2026-01-06");
    EXPECT_EQ(list->findChild<QLineEdit *>("txtTransCount")->text(), count);
}

TEST_F(TypedDate, KeepsNobodyFromClosingTheScreen)
{
    const QStringList screens = Screens();
    for (const QString &screen : screens) {
        const QPointer<Form> form = Shown(screen);
        DateField *field = form ? form->findChild<DateField *>() : nullptr;
        if (!field)
            continue;
        for (const bool byKey : {true, false}) {
            Form *shown = Shown(screen);
            field = shown->findChild<DateField *>();
            BringToSight(field);
            field->setVisible(true);
            field->setEnabled(true);
            field->setFocus();
            TypeOver(QStringLiteral("31"));
            run.boxes.boxes.clear();
            if (byKey)
                Press(Qt::Key_Escape);
            else
                shown->close();
            EXPECT_FALSE(run.App().Host().Loaded(screen)) << qPrintable(screen);
            for (const QString &text : run.boxes.Texts())
                EXPECT_FALSE(text.contains(QLatin1String("is not a date"))) << qPrintable(text);
            run.App().Host().Unload(screen);
        }
    }
}

TEST_F(TypedDate, StaysWhileAnotherScreenIsUsed)
{
    Form *list = Shown("frmHistoryList");
    auto *from = list->findChild<DateField *>("dtpFrom");
    from->setFocus();
    TypeOver(QStringLiteral("31"));
    Shown("frmDailyTracker")->setFocus();
    EXPECT_EQ(run.boxes.Texts(), QStringList());
    Shown("frmHistoryList");
    EXPECT_EQ(from->text(), "31");
    run.App().Host().Unload("frmHistoryList");
    EXPECT_EQ(run.boxes.Texts(), QStringList());
}

TEST_P(TypedDates, ChangeByThePartAtTheCursorWithTheArrowKeys)
{
    Form *list = Shown("frmHistoryList");
    auto *from = list->findChild<DateField *>("dtpFrom");
    from->setDate(QDate(2003, 11, 25));
    from->setFocus();
    from->selectAll();
    Press(Qt::Key_Up);
    EXPECT_EQ(Iso(from->date()), "2003-11-26");
    EXPECT_EQ(from->selectedText(), "26");
    const QPair<const char *, const char *> parts[] = {
        {"26", "2003-11-25"}, {"11", "2003-10-26"}, {"2003", "2002-11-26"}};
    for (const auto &[part, expected] : parts) {
        from->setDate(QDate(2003, 11, 26));
        from->deselect();
        from->setCursorPosition(int(from->text().indexOf(QLatin1String(part))) + 1);
        Press(Qt::Key_Down);
        EXPECT_EQ(Iso(from->date()), expected);
        EXPECT_TRUE(from->hasSelectedText());
    }
    from->setDate(QDate(2026, 1, 31));
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Iso(from->date()), "2026-02-28");
    EXPECT_TRUE(from->hasFocus());
}

TEST_F(TypedDate, IsPickedFromTheCalendarThatItsArrowOpens)
{
    Form *list = Shown("frmHistoryList");
    auto *from = list->findChild<DateField *>("dtpFrom");
    from->setFocus();
    TypeOver(QStringLiteral("2/10/2026"));
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        QTest::mouseClick(from->findChild<QToolButton *>(), Qt::LeftButton);
        QWidget *popup = QApplication::activePopupWidget();
        ASSERT_TRUE(popup);
        auto *calendar = popup->findChild<QCalendarWidget *>();
        EXPECT_EQ(Iso(calendar->selectedDate()), "2026-02-10");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QTest::keyClick(QApplication::focusWidget(), key);
        QCoreApplication::processEvents();
        EXPECT_FALSE(QApplication::activePopupWidget());
        EXPECT_TRUE(from->hasFocus());
        EXPECT_EQ(from->text(), key == Qt::Key_Escape ? "2/10/2026" : "2/11/2026");
    }
    EXPECT_EQ(Iso(from->date()), "2026-02-11");
    EXPECT_TRUE(run.App().Host().Loaded("frmHistoryList"));
}

INSTANTIATE_TEST_SUITE_P(Locales, TypedDates,
                         testing::Values("en_US", "en_GB", "de_DE", "ja_JP", "C", "ar_EG"),
                         [](const auto &info) { return std::string(info.param); });
