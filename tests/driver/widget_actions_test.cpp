#include "sample_form.h"

#include "driver/widget_actions.h"

#include "driver/failure.h"
#include "driver/printing.h"
#include "platform/widgets/date_field.h"
#include "platform/widgets/field_edit.h"
#include "support/test_services.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>

namespace
{

/// A window with a form's name, shown and active.
class TheHands : public SampleForm
{
protected:
    void Show()
    {
        form.show();
        form.activateWindow();
        QApplication::processEvents();
    }
    static int StatusOf(const std::function<void()> &action)
    {
        try {
            action();
        } catch (const Failure &failure) {
            return failure.Status();
        }
        return 0;
    }
};

/// Counts the keys that arrive, as a form with key handling sees them.
class KeyForm : public QWidget
{
public:
    using QWidget::QWidget;
    QStringList keys;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() != Qt::Key_Alt) // which comes before its combination
            keys += QKeySequence(event->keyCombination()).toString(QKeySequence::PortableText);
    }
};

TEST_F(TheHands, TypeOverWhatAFieldHolds)
{
    auto *field = Add<QLineEdit>("txtName");
    Show();
    field->setText("old");
    WidgetActions::Type(field, QString::fromUtf8("Žižek O'Neil € 12 3/8"));
    EXPECT_EQ(field->text(), QString::fromUtf8("Žižek O'Neil € 12 3/8"));
    EXPECT_TRUE(field->hasFocus());
}

TEST_F(TheHands, TypeCharactersBeyondTheBasicPlane)
{
    auto *field = Add<QLineEdit>("txtName");
    Show();
    WidgetActions::Type(field, QString::fromUtf8("a😀b"));
    EXPECT_EQ(field->text(), QString::fromUtf8("a😀b"));
}

TEST_F(TheHands, ClearAFieldByTypingNothing)
{
    auto *field = Add<QLineEdit>("txtName");
    Show();
    field->setText("old");
    WidgetActions::Type(field, QString());
    EXPECT_EQ(field->text(), QString());
}

TEST_F(TheHands, MeetTheKeyFilterOfAField)
{
    auto *field = Add<FieldEdit>("txtNumberOfShares");
    int refused = 0;
    field->SetAllowedKeys("0123456789.");
    field->OnRefused = [&] { ++refused; };
    Show();
    WidgetActions::Type(field, "1x2.5");
    EXPECT_EQ(field->text(), "12.5");
    EXPECT_EQ(refused, 1);
}

TEST_F(TheHands, LeaveAFieldAsAPersonDoesWhenTheyEnterAnother)
{
    auto *first = Add<QLineEdit>("txtFirst");
    auto *second = Add<QLineEdit>("txtSecond");
    int left = 0;
    QObject::connect(first, &QLineEdit::editingFinished, [&] { ++left; });
    Show();
    WidgetActions::Type(first, "1");
    WidgetActions::Type(second, "2");
    EXPECT_EQ(left, 1);
    EXPECT_TRUE(second->hasFocus());
}

TEST_F(TheHands, FailWhereAFieldRefusesToBeLeft)
{
    auto *first = Add<FieldEdit>("txtFirst");
    auto *second = Add<FieldEdit>("txtSecond");
    first->OnValidate = [] { return false; };
    Show();
    WidgetActions::Type(first, "1");
    EXPECT_EQ(StatusOf([&] { WidgetActions::Type(second, "2"); }), 1);
    EXPECT_EQ(second->text(), QString());
    EXPECT_TRUE(first->hasFocus());
}

TEST_F(TheHands, MoveOnByTab)
{
    auto *first = Add<QLineEdit>("txtFirst");
    auto *second = Add<QLineEdit>("txtSecond");
    Show();
    WidgetActions::Focus(first);
    WidgetActions::PressKey("Tab");
    EXPECT_TRUE(second->hasFocus());
}

TEST_F(TheHands, PressCombinationsThatTheFormSees)
{
    KeyForm keyForm;
    QVBoxLayout inner(&keyForm);
    auto *field = new QLineEdit;
    inner.addWidget(field);
    keyForm.show();
    WidgetActions::Focus(field);
    WidgetActions::PressKey("Alt+Q");
    WidgetActions::PressKey("Return");
    WidgetActions::PressKey("F1");
    EXPECT_EQ(keyForm.keys, (QStringList{"Alt+Q", "Return", "F1"}));
}

TEST_F(TheHands, WriteTheCharacterOfAPlainKey)
{
    auto *field = Add<QLineEdit>("txtName");
    Show();
    WidgetActions::Focus(field);
    for (const char *key : {"a", "Shift+B", "5", "Space", "Backspace"})
        WidgetActions::PressKey(key);
    EXPECT_EQ(field->text(), "aB5");
}

TEST_F(TheHands, KnowNoKeyThatDoesNotExist)
{
    Show();
    EXPECT_EQ(StatusOf([] { WidgetActions::PressKey("Foo"); }), 2);
    EXPECT_EQ(StatusOf([] { WidgetActions::PressKey(""); }), 2);
    EXPECT_EQ(StatusOf([] { WidgetActions::PressKey("A, B"); }), 2);
}

TEST_F(TheHands, ReachAControlOfAChildFormThatLiesBehindAnother)
{
    QMdiArea *area = Add<QMdiArea>("area");
    QList<QLineEdit *> fields;
    for (const char *name : {"frmBehind", "frmInFront"}) {
        auto *child = new QWidget;
        child->setObjectName(name);
        auto *lines = new QVBoxLayout(child);
        for (const char *field : {"txtFirst", "txtSecond"}) {
            fields.append(new QLineEdit(child));
            fields.back()->setObjectName(field);
            lines->addWidget(fields.back());
        }
        area->addSubWindow(child)->showMaximized();
    }
    Show();
    WidgetActions::Type(fields[2], "front");
    WidgetActions::Type(fields[1], "behind");
    EXPECT_EQ(area->activeSubWindow()->widget()->objectName(), "frmBehind");
    EXPECT_EQ(fields[1]->text(), "behind");
    WidgetActions::Click(fields[3]);
    EXPECT_TRUE(fields[3]->hasFocus());
    EXPECT_EQ(area->activeSubWindow()->widget()->objectName(), "frmInFront");
}

TEST_F(TheHands, PressButtonsThatTakeTheFocus)
{
    auto *field = Add<FieldEdit>("txtName");
    auto *button = Add<QPushButton>("cmdOK");
    QStringList events;
    field->OnLostFocus = [&] { events += "left"; };
    QObject::connect(button, &QPushButton::clicked, [&] { events += "clicked"; });
    Show();
    WidgetActions::Focus(field);
    WidgetActions::Click(button);
    EXPECT_EQ(events, (QStringList{"left", "clicked"}));
}

TEST_F(TheHands, SwitchCheckBoxesAndOptionButtonsHoweverWide)
{
    auto *check = Add<QCheckBox>("chkTips");
    auto *first = Add<QRadioButton>("optDaily");
    auto *second = Add<QRadioButton>("optWeekly");
    form.resize(900, 300);
    Show();
    WidgetActions::Click(check);
    WidgetActions::Click(second);
    EXPECT_EQ(Printing::TextOf(check), "1");
    EXPECT_EQ(Printing::TextOf(first), "0");
    EXPECT_EQ(Printing::TextOf(second), "1");
    WidgetActions::Click(check);
    EXPECT_EQ(Printing::TextOf(check), "0");
}

TEST_F(TheHands, CannotUseWhatIsDisabledOrHidden)
{
    auto *disabled = Add<QPushButton>("cmdOK");
    auto *hidden = Add<QPushButton>("cmdHelp");
    disabled->setEnabled(false);
    hidden->setVisible(false);
    Show();
    EXPECT_EQ(StatusOf([&] { WidgetActions::Click(disabled); }), 1);
    EXPECT_EQ(StatusOf([&] { WidgetActions::Click(hidden); }), 1);
    EXPECT_EQ(StatusOf([&] { WidgetActions::Type(hidden, "x"); }), 1);
}

TEST_F(TheHands, CannotReachBehindAModalForm)
{
    auto *button = Add<QPushButton>("cmdOK");
    Show();
    QWidget modal;
    modal.setWindowModality(Qt::ApplicationModal);
    auto *inside = new QPushButton(&modal);
    modal.show();
    EXPECT_EQ(StatusOf([&] { WidgetActions::Click(button); }), 1);
    EXPECT_EQ(StatusOf([&] { WidgetActions::Click(inside); }), 0);
}

TEST_F(TheHands, ChooseFromAListByClickingTheItem)
{
    auto *list = Add<QListWidget>("lstAction");
    for (int item = 0; item < 50; ++item)
        list->addItem(QString("Item %1").arg(item));
    QStringList clicked;
    QObject::connect(list, &QListWidget::itemClicked,
                     [&](QListWidgetItem *item) { clicked += item->text(); });
    Show();
    WidgetActions::Choose(list, "Item 40");
    WidgetActions::Choose(list, "Item 40");
    EXPECT_EQ(clicked, (QStringList{"Item 40", "Item 40"}));
    EXPECT_EQ(Printing::TextOf(list), "Item 40");
    EXPECT_EQ(StatusOf([&] { WidgetActions::Choose(list, "Item 4x"); }), 1);
}

TEST_F(TheHands, ChooseFromAComboBoxAlsoWhatIsChosen)
{
    auto *combo = Add<QComboBox>("combSymbol");
    combo->addItems({"ACME", "BETA"});
    QStringList activated;
    QObject::connect(combo, &QComboBox::textActivated,
                     [&](const QString &text) { activated += text; });
    Show();
    WidgetActions::Choose(combo, "BETA");
    WidgetActions::Choose(combo, "BETA");
    WidgetActions::Choose(combo, "ACME");
    EXPECT_EQ(activated, (QStringList{"BETA", "BETA", "ACME"}));
    EXPECT_EQ(Printing::TextOf(combo), "ACME");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(StatusOf([&] { WidgetActions::Choose(combo, "acme"); }), 1);
}

TEST_F(TheHands, TypeIntoAnEditableComboBox)
{
    auto *combo = Add<QComboBox>("combSymbol");
    combo->setEditable(true);
    combo->addItem("ACME");
    Show();
    WidgetActions::Type(combo, "ZED");
    EXPECT_EQ(Printing::TextOf(combo), "ZED");
}

TEST_F(TheHands, ChooseATabByItsCaption)
{
    auto *tabs = Add<QTabWidget>("SSTab1");
    tabs->addTab(new QWidget, "&General");
    tabs->addTab(new QWidget, "&Web");
    Show();
    WidgetActions::Choose(tabs, "Web");
    EXPECT_EQ(tabs->currentIndex(), 1);
}

TEST_F(TheHands, TurnToTheTabOfAControlBeforeTheyUseIt)
{
    auto *tabs = Add<QTabWidget>("SSTab1");
    auto *field = new QLineEdit;
    field->setObjectName("txtSecond");
    auto *page = new QWidget;
    (new QVBoxLayout(page))->addWidget(field);
    tabs->addTab(new QWidget, "First");
    tabs->addTab(page, "Second");
    Show();
    WidgetActions::Type(field, "typed");
    EXPECT_EQ(tabs->currentIndex(), 1);
    EXPECT_EQ(field->text(), "typed");

    tabs->setCurrentIndex(0);
    tabs->setTabEnabled(1, false);
    EXPECT_EQ(StatusOf([&] { WidgetActions::Type(field, "more"); }), 1);
    EXPECT_EQ(tabs->currentIndex(), 0);
}

TEST_F(TheHands, PickADate)
{
    TestServices world;
    auto *picker = new DateField(world.services, &form);
    layout->addWidget(picker);
    int changed = 0;
    QObject::connect(picker, &DateField::dateChanged, [&] { ++changed; });
    Show();
    WidgetActions::PickDate(picker, QDate(2024, 2, 29));
    EXPECT_EQ(picker->date(), QDate(2024, 2, 29));
    EXPECT_EQ(Printing::TextOf(picker), "2/29/2024");
    EXPECT_EQ(changed, 1);
    EXPECT_EQ(StatusOf([&] { WidgetActions::PickDate(picker, QDate()); }), 1);
    delete picker; // it uses the services
}

TEST_F(TheHands, TypeADateKeyByKeyAndStayInItsField)
{
    TestServices world;
    auto *picker = new DateField(world.services, &form);
    layout->addWidget(picker);
    auto *next = Add<QLineEdit>("txtNext");
    Show();
    for (const char *text : {"11/05/2025", "November 5, 2025", "2025-11-05", "11/5/25"}) {
        picker->setDate(QDate(2026, 3, 2));
        WidgetActions::Type(picker, text);
        EXPECT_TRUE(picker->hasFocus()) << text;
        EXPECT_EQ(picker->text(), text);
        WidgetActions::Focus(next);
        EXPECT_EQ(picker->date(), QDate(2025, 11, 5)) << text;
        EXPECT_EQ(picker->text(), "11/5/2025");
    }
    WidgetActions::Type(picker, "2/31/2026");
    EXPECT_EQ(StatusOf([&] { WidgetActions::Focus(next); }), 1);
    EXPECT_EQ(picker->date(), QDate(2025, 11, 5));
    delete picker;
}

TEST_F(TheHands, TellKindsOfControlsApart)
{
    auto *label = Add<QLabel>("lblName");
    auto *bare = Add<QWidget>("picLogo");
    Show();
    label->setText("&Name");
    EXPECT_EQ(Printing::TextOf(label), "&Name");
    EXPECT_EQ(StatusOf([&] { Printing::TextOf(bare); }), 2);
    EXPECT_EQ(StatusOf([&] { WidgetActions::Choose(label, "x"); }), 2);
    EXPECT_EQ(StatusOf([&] { WidgetActions::PickDate(label, QDate(2026, 1, 1)); }), 2);
}

} // namespace
