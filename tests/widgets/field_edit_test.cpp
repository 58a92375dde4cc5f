#include "platform/widgets/colors.h"
#include "platform/widgets/field_edit.h"
#include "widgets/rows.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QInputMethodEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{

/// A form with a field for a count, a second field and a button.
struct Entry
{
    Entry()
    {
        auto *layout = new QVBoxLayout(&form);
        for (QWidget *widget : {static_cast<QWidget *>(count), static_cast<QWidget *>(price),
                                static_cast<QWidget *>(ok)})
            layout->addWidget(widget);
        count->SetAllowedKeys("0123456789.");
        count->OnRefused = [this] { ++beeps; };
        count->OnGotFocus = [this] { told << "got"; };
        count->OnLostFocus = [this] { told << "lost"; };
        ok->setFocusPolicy(Qt::StrongFocus);
        Show(form);
        ok->setFocus();
        told.clear();
    }
    void Type(const QString &text)
    {
        for (const QChar typed : text)
            Press(count, typed.toUpper().unicode(), typed);
    }

    QWidget form;
    FieldEdit *count = new FieldEdit;
    FieldEdit *price = new FieldEdit;
    QPushButton *ok = new QPushButton("&OK");
    QStringList told;
    int beeps = 0;
};

QRgb Ground(const QWidget *widget)
{
    return widget->palette().color(QPalette::Base).rgb();
}

} // namespace

TEST(FieldEdit, DropsOtherKeysWithABeep)
{
    Entry entry;
    entry.count->setFocus();
    entry.Type("1a2.x5");
    EXPECT_EQ(entry.count->text(), "12.5");
    EXPECT_EQ(entry.beeps, 2);
    Press(entry.count, Qt::Key_Backspace, "\b");
    EXPECT_EQ(entry.count->text(), "12.");
    EXPECT_EQ(entry.beeps, 2);
}

TEST(FieldEdit, TakesOneOfItsSingleKeys)
{
    Entry entry;
    entry.count->SetAllowedKeys("0123456789.,");
    entry.count->SetSingleKeys(".,");
    entry.count->setFocus();
    entry.Type("1.2.3,4");
    EXPECT_EQ(entry.count->text(), "1.234");
    EXPECT_EQ(entry.beeps, 2);
    entry.count->selectAll(); // what is typed over counts no more
    entry.Type(",5");
    EXPECT_EQ(entry.count->text(), ",5");
    EXPECT_EQ(entry.beeps, 2);
}

TEST(FieldEdit, DropsComposedCharactersToo)
{
    Entry entry;
    entry.count->setFocus();
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("\u00fc"));
    QApplication::sendEvent(entry.count, &composed);
    EXPECT_EQ(entry.count->text(), "");
    EXPECT_EQ(entry.beeps, 1);
    QInputMethodEvent digit;
    digit.setCommitString("7");
    QApplication::sendEvent(entry.count, &digit);
    EXPECT_EQ(entry.count->text(), "7");
}

TEST(FieldEdit, AllowsEveryKeyWhenNoneAreNamed)
{
    Entry entry;
    entry.price->setFocus();
    Press(entry.price, Qt::Key_A, "a");
    EXPECT_EQ(entry.price->text(), "a");
}

TEST(FieldEdit, TakesAPastedTextAsItIs)
{
    Entry entry;
    entry.count->setFocus();
    QApplication::clipboard()->setText("12 shares");
    Press(entry.count, Qt::Key_V, "\x16", Qt::ControlModifier);
    EXPECT_EQ(entry.count->text(), "12 shares");
    EXPECT_EQ(entry.beeps, 0);
}

TEST(FieldEdit, SelectsItsTextWhenItIsEntered)
{
    Entry entry;
    entry.count->setText("250");
    entry.count->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(entry.count->selectedText(), "250");
    entry.Type("7");
    EXPECT_EQ(entry.count->text(), "7");
}

TEST(FieldEdit, KeepsTheSelectionOverTheClickThatEnteredIt)
{
    Entry entry;
    entry.count->setText("250");
    const auto click = [&] {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                              Qt::NoModifier);
            QApplication::sendEvent(entry.count, &event);
        }
    };
    entry.count->setFocus(Qt::MouseFocusReason);
    click();
    EXPECT_EQ(entry.count->selectedText(), "250");
    click(); // the second click places the cursor
    EXPECT_EQ(entry.count->selectedText(), "");
}

TEST(FieldEdit, StandsOutWhileItHasTheFocus)
{
    Entry entry;
    const QRgb plain = Ground(entry.price);
    entry.count->setFocus();
    EXPECT_NE(Ground(entry.count), plain);
    EXPECT_GE(Contrast(QColor(Ground(entry.count)), entry.count->palette().color(QPalette::Text)),
              4.5);
    entry.price->setFocus();
    EXPECT_EQ(Ground(entry.count), plain);
    EXPECT_NE(Ground(entry.price), plain);
}

TEST(FieldEdit, IsDisabledInTheColourOfTheFormWhenItIsOff)
{
    Entry entry;
    const QRgb plain = Ground(entry.count);
    entry.count->SetOn(false);
    EXPECT_FALSE(entry.count->isEnabled());
    EXPECT_FALSE(entry.count->IsOn());
    EXPECT_EQ(Ground(entry.count), entry.form.palette().color(QPalette::Window).rgb());
    entry.count->SetOn(true);
    EXPECT_TRUE(entry.count->isEnabled());
    EXPECT_EQ(Ground(entry.count), plain);
}

TEST(FieldEdit, IsPlainAgainAfterItWasTurnedOffWithTheFocus)
{
    Entry entry;
    const QRgb plain = Ground(entry.price);
    entry.count->setFocus();
    entry.count->SetOn(false);
    entry.count->SetOn(true);
    EXPECT_EQ(Ground(entry.count), plain);
    EXPECT_EQ(entry.told, QStringList({"got", "lost"}));
}

TEST(FieldEdit, TellsEnteringAndLeavingOnce)
{
    Entry entry;
    entry.count->setFocus();
    entry.price->setFocus();
    EXPECT_EQ(entry.told, QStringList({"got", "lost"}));
}

TEST(FieldEdit, KeepsTheFocusWhenTheFrameOfItsScreenIsClicked)
{
    QMdiArea area;
    auto *screen = new QWidget;
    auto *field = new FieldEdit(screen);
    QStringList told;
    field->OnValidate = [&] { return told << "validate", true; };
    field->OnLostFocus = [&] { told << "lost"; };
    QMdiSubWindow *frame = area.addSubWindow(screen);
    QMdiSubWindow *other = area.addSubWindow(new QLineEdit);
    Show(area);
    area.setActiveSubWindow(frame);
    field->setFocus();
    frame->setFocus(Qt::MouseFocusReason);
    EXPECT_TRUE(field->hasFocus());
    other->widget()->setFocus(Qt::MouseFocusReason); // another screen is no leaving either
    EXPECT_FALSE(field->hasFocus());
    EXPECT_EQ(told, QStringList());
}

TEST(FieldEdit, CountsABoxInBetweenAsNeitherEnteringNorLeaving)
{
    Entry entry;
    entry.count->setFocus();
    QWidget box;
    Show(box);
    QApplication::setActiveWindow(&entry.form);
    QApplication::processEvents();
    EXPECT_TRUE(entry.count->hasFocus());
    EXPECT_EQ(entry.told, QStringList({"got"}));
}

TEST(FieldEdit, KeepsTheFocusWhileItsCheckFails)
{
    Entry entry;
    bool isValid = false;
    bool hadFocus = false;
    entry.count->OnValidate = [&] {
        entry.told << "validate";
        hadFocus = entry.count->hasFocus();
        return isValid;
    };
    entry.price->OnGotFocus = [&] { entry.told << "price"; };
    entry.count->setFocus();
    entry.price->setFocus();
    EXPECT_TRUE(entry.count->hasFocus());
    EXPECT_TRUE(hadFocus);
    EXPECT_EQ(entry.told, QStringList({"got", "validate"}));
    isValid = true;
    entry.price->setFocus();
    EXPECT_TRUE(entry.price->hasFocus());
    EXPECT_EQ(entry.told, QStringList({"got", "validate", "validate", "lost", "price"}));
}

TEST(FieldEdit, ChecksAgainAtTheNextLeaving)
{
    Entry entry;
    int checks = 0;
    entry.count->OnValidate = [&] { return ++checks > 0; };
    for (int round = 1; round <= 3; ++round) {
        entry.count->setFocus();
        entry.ok->setFocus();
        EXPECT_TRUE(entry.ok->hasFocus());
        EXPECT_EQ(checks, round);
    }
}

TEST(FieldEdit, ChecksOnlyItsOwnTextWhenABoxComesUpInTheCheck)
{
    Entry entry;
    entry.count->OnValidate = [&] {
        entry.told << "validate";
        QWidget box;
        Show(box);
        box.close();
        QApplication::setActiveWindow(&entry.form);
        QApplication::processEvents();
        return false;
    };
    entry.price->OnValidate = [&] {
        entry.told << "price checked";
        return true;
    };
    entry.count->setFocus();
    entry.price->setFocus();
    EXPECT_TRUE(entry.count->hasFocus());
    EXPECT_EQ(entry.told, QStringList({"got", "validate"}));
}

TEST(FieldEdit, LetsItsCheckMoveTheFocusItself)
{
    Entry entry;
    entry.count->OnValidate = [&] {
        entry.ok->setFocus();
        return true;
    };
    entry.count->setFocus();
    entry.price->setFocus();
    EXPECT_FALSE(entry.count->hasFocus());
    EXPECT_EQ(entry.told, QStringList({"got", "lost"}));
}

TEST(FieldEdit, AsksNobodyWhenItIsHidden)
{
    Entry entry;
    int checks = 0;
    entry.count->OnValidate = [&] { return ++checks < 0; };
    entry.count->setFocus();
    entry.form.hide();
    EXPECT_EQ(checks, 0);
}

TEST(FieldEdit, MayBeUnloadedByItsCheck)
{
    auto *form = new QWidget;
    auto *field = new FieldEdit(form);
    auto *next = new FieldEdit(form);
    Show(*form);
    field->setFocus();
    QPointer<QWidget> alive = form;
    field->OnValidate = [form] {
        form->deleteLater();
        return false;
    };
    next->setFocus();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(alive.isNull());
}

TEST(FieldEdit, TellsKeysBeforeAndAfterTheyAreTaken)
{
    Entry entry;
    entry.count->setFocus();
    entry.count->OnKeyPress = [&](QKeyEvent *event) {
        entry.told << "press " + event->text() + " on " + entry.count->text();
        return event->text() == "9";
    };
    entry.count->OnKeyUp = [&](QKeyEvent *event) {
        entry.told << "up " + event->text() + " on " + entry.count->text();
    };
    entry.told.clear();
    entry.Type("19");
    EXPECT_EQ(entry.count->text(), "1"); // the handler kept the 9 for itself
    EXPECT_EQ(entry.told, QStringList({"press 1 on ", "up 1 on 1", "press 9 on 1", "up 9 on 1"}));
}

TEST(FieldEdit, LeavesEnterAndAltToTheForm)
{
    struct Window : QWidget
    {
        void keyPressEvent(QKeyEvent *event) override { keys << event->key(); }
        QList<int> keys;
    } form;
    FieldEdit field(&form);
    field.SetAllowedKeys("0");
    Show(form);
    field.setFocus();
    PressFocused(Qt::Key_Return, "\r");
    PressFocused(Qt::Key_Q, "q", Qt::AltModifier);
    EXPECT_EQ(form.keys, QList<int>({Qt::Key_Return, Qt::Key_Q}));
}
