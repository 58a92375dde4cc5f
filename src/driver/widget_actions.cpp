#include "driver/widget_actions.h"

#include "driver/failure.h"
#include "platform/widgets/date_field.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <algorithm>

namespace WidgetActions
{

namespace
{

bool IsWithin(const QWidget *widget, const QWidget *whole)
{
    return widget && (widget == whole || whole->isAncestorOf(widget));
}

/// The widget that takes what is typed.
QWidget *KeyTarget()
{
    if (QWidget *focused = QApplication::focusWidget())
        return focused;
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *window = QApplication::activeWindow())
        return window;
    // The window in front has gone, and without a desktop none was activated in its place.
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->parentWidget())
            continue;
        window->activateWindow();
        QCoreApplication::processEvents();
        return QApplication::focusWidget() ? QApplication::focusWidget() : window;
    }
    throw Failed(QStringLiteral("no control has the focus"));
}

/// The key that gives `text`, one character, on a keyboard that has all of them.
void TypeCharacter(QWidget *target, const QString &text)
{
    const QChar first = text.front();
    if (first == QLatin1Char('\n'))
        QTest::keyClick(target, Qt::Key_Return);
    else if (first == QLatin1Char('\t'))
        QTest::keyClick(target, Qt::Key_Tab);
    else
        QTest::sendKeyEvent(QTest::Click, target, Qt::Key(first.toUpper().unicode()), text,
                            first.isUpper() ? Qt::ShiftModifier : Qt::NoModifier);
}

/// A button that is pressed by its key goes down first, to be seen, and acts a moment later.
void LetPressedButtonsAct()
{
    const auto isDown = [](const QAbstractButton *button) { return button->isDown(); };
    (void)QTest::qWaitFor(
        [isDown] {
            const QWidgetList windows = QApplication::topLevelWidgets();
            return std::none_of(windows.begin(), windows.end(), [isDown](const QWidget *window) {
                const auto buttons = window->findChildren<QAbstractButton *>();
                return std::any_of(buttons.begin(), buttons.end(), isDown);
            });
        },
        500);
}

void SelectAll(QWidget *control)
{
    // A combination, so that a field that filters its keys by their text lets it pass.
    QTest::sendKeyEvent(QTest::Click, control, Qt::Key_A, QString(), Qt::ControlModifier);
}

/// Where a click presses the control; a check box is pressed at its box, not at the space behind.
QPoint PressPoint(QWidget *control)
{
    auto *button = qobject_cast<QAbstractButton *>(control);
    if (!button || !button->isCheckable() || !button->property("text").isValid())
        return control->rect().center();
    QStyleOptionButton option;
    option.initFrom(button);
    option.text = button->text();
    if (button->inherits("QCheckBox"))
        return button->style()
            ->subElementRect(QStyle::SE_CheckBoxIndicator, &option, button)
            .center();
    if (button->inherits("QRadioButton"))
        return button->style()
            ->subElementRect(QStyle::SE_RadioButtonIndicator, &option, button)
            .center();
    return control->rect().center();
}

QModelIndex ItemWithText(QAbstractItemView *view, const QString &text)
{
    const QAbstractItemModel *model = view->model();
    for (int row = 0; model && row < model->rowCount(view->rootIndex()); ++row) {
        const QModelIndex index = model->index(row, 0, view->rootIndex());
        if (index.data(Qt::DisplayRole).toString() == text)
            return index;
    }
    return {};
}

[[noreturn]] void NoSuchItem(const QWidget *control, const QString &item)
{
    throw Failed(QStringLiteral("%1 has no item \"%2\"").arg(NameOf(control), item));
}

void ChooseFromView(QAbstractItemView *view, const QString &item)
{
    const QModelIndex index = ItemWithText(view, item);
    if (!index.isValid())
        NoSuchItem(view, item);
    view->scrollTo(index);
    ClickAt(view->viewport(), view->visualRect(index));
}

void ChooseFromCombo(QComboBox *combo, const QString &item)
{
    const int row = combo->findText(item, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row < 0)
        NoSuchItem(combo, item);
    Focus(combo);
    combo->showPopup();
    // As in a drop-down list: the item under the pointer is the current one, and is taken.
    combo->view()->setCurrentIndex(
        combo->model()->index(row, combo->modelColumn(), combo->rootModelIndex()));
    QTest::keyClick(combo->view(), Qt::Key_Return);
}

/// A caption without the mark of its short cut.
QString WithoutMnemonic(QString caption)
{
    return caption.remove(QLatin1Char('&'));
}

void ChooseTab(QTabBar *tabs, const QString &item)
{
    for (int tab = 0; tab < tabs->count(); ++tab) {
        if (tabs->tabText(tab) != item && WithoutMnemonic(tabs->tabText(tab)) != item)
            continue;
        if (!tabs->isTabEnabled(tab))
            throw Failed(QStringLiteral("the tab \"%1\" is disabled").arg(item));
        ClickAt(tabs, tabs->tabRect(tab));
        return;
    }
    NoSuchItem(tabs, item);
}

} // namespace

QString NameOf(const QWidget *control)
{
    const QWidget *form = control;
    while (form && !form->objectName().startsWith(QLatin1String("frm")))
        form = form->parentWidget();
    if (!form || form == control)
        return control->objectName();
    return form->objectName() + QLatin1Char('.') + control->objectName();
}

namespace
{

/// A control on another tab of its form: a person turns to that tab first, and to the one that this
/// tab lies on before.
void TurnToTabOf(QWidget *control)
{
    QWidget *parent = control->isWindow() ? nullptr : control->parentWidget();
    if (!parent)
        return;
    TurnToTabOf(parent);
    auto *tabs = qobject_cast<QTabWidget *>(parent->parentWidget());
    const int tab = tabs ? tabs->indexOf(control) : -1;
    if (tab >= 0 && tab != tabs->currentIndex() && tabs->isVisible() && tabs->isTabEnabled(tab))
        ClickAt(tabs->tabBar(), tabs->tabBar()->tabRect(tab));
}

} // namespace

void RequireUsable(QWidget *control)
{
    if (!control->isVisible())
        TurnToTabOf(control);
    const QWidget *modal = QApplication::activeModalWidget();
    if (modal && !IsWithin(control, modal) && !IsWithin(control->window(), modal))
        throw Failed(QStringLiteral("%1 is behind the modal form %2")
                         .arg(NameOf(control), modal->objectName()));
    if (!control->isVisible())
        throw Failed(QStringLiteral("%1 is not visible").arg(NameOf(control)));
    if (!control->isEnabled())
        throw Failed(QStringLiteral("%1 is disabled").arg(NameOf(control)));
}

namespace
{

/// A form may close as it comes to the front, and another one take its place.
void RequireThere(const QPointer<QWidget> &control, const QString &name)
{
    if (!control)
        throw Failed(
            QStringLiteral("%1 cannot be used: its form closed as it came to the front").arg(name));
    RequireUsable(control);
}

/// The form of `control` comes to the front. A child form's frame, when it comes there by a focus
/// that arrives inside, would hand the focus on to another control. Throws Failed when the control
/// cannot be used there.
void BringToFront(QWidget *control)
{
    const QPointer<QWidget> stillThere = control;
    const QString name = NameOf(control);
    if (QApplication::activeWindow() != control->window()) {
        control->window()->raise();
        control->window()->activateWindow();
        QCoreApplication::processEvents();
        RequireThere(stillThere, name);
    }
    for (QWidget *parent = control; parent; parent = parent->parentWidget()) {
        auto *frame = qobject_cast<QMdiSubWindow *>(parent);
        if (!frame || !frame->mdiArea() || frame->mdiArea()->activeSubWindow() == frame)
            continue;
        frame->mdiArea()->setActiveSubWindow(frame);
        QCoreApplication::processEvents();
        RequireThere(stillThere, name);
    }
}

} // namespace

void Focus(QWidget *control)
{
    RequireUsable(control);
    BringToFront(control);
    if (!IsWithin(QApplication::focusWidget(), control)) {
        const QPointer<QWidget> stillThere = control;
        const QString name = NameOf(control);
        control->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
        RequireThere(stillThere, name);
    }
    const QWidget *focused = QApplication::focusWidget();
    if (!IsWithin(focused, control) && focused != control->focusProxy())
        throw Failed(
            QStringLiteral("%1 does not get the focus, which is at %2")
                .arg(NameOf(control), focused ? NameOf(focused) : QStringLiteral("no control")));
}

void Type(QWidget *control, const QString &text)
{
    Focus(control);
    SelectAll(KeyTarget());
    if (text.isEmpty())
        QTest::keyClick(KeyTarget(), Qt::Key_Delete);
    TypeToFocus(text);
}

void TypeToFocus(const QString &text)
{
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype length = text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
        TypeCharacter(KeyTarget(), text.mid(at, length));
        at += length;
    }
}

void PressKey(const QString &name)
{
    const QKeySequence sequence = QKeySequence::fromString(name, QKeySequence::PortableText);
    if (sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown)
        throw ScriptWrong(QStringLiteral("no key \"%1\"").arg(name));
    const Qt::Key key = sequence[0].key();
    const Qt::KeyboardModifiers modifiers = sequence[0].keyboardModifiers();
    const bool isCombination = modifiers & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const bool isCharacter = key < Qt::Key_Escape;
    if (isCombination) {
        // Without a text, which a field would take for a character.
        QTest::sendKeyEvent(QTest::Click, KeyTarget(), key, QString(), modifiers);
        LetPressedButtonsAct();
    } else if (isCharacter) {
        const QString upper{QChar(key)};
        const bool isShifted = modifiers & Qt::ShiftModifier;
        QTest::sendKeyEvent(QTest::Click, KeyTarget(), key, isShifted ? upper : upper.toLower(),
                            modifiers);
    } else {
        QTest::keyClick(KeyTarget(), key, modifiers);
    }
}

void Click(QWidget *control)
{
    RequireUsable(control);
    const QPoint point = PressPoint(control);
    ClickAt(control, QRect(point, QSize(1, 1)));
}

void DoubleClick(QWidget *control)
{
    RequireUsable(control);
    // A grid is made of parts; the mouse meets the one that lies there.
    QWidget *part = control->childAt(control->rect().center());
    QWidget *target = part ? part : control;
    const QPoint point = target->mapFrom(control, control->rect().center());
    DoubleClickAt(target, QRect(point, QSize(1, 1)));
}

void ClickAt(QWidget *target, const QRect &area, Qt::MouseButton button)
{
    RequireUsable(target);
    BringToFront(target);
    const QPointer<QWidget> stillThere = target;
    QTest::mousePress(target, button, Qt::NoModifier, area.center());
    if (stillThere) // the press may close its form
        QTest::mouseRelease(target, button, Qt::NoModifier, area.center());
}

void DoubleClickAt(QWidget *target, const QRect &area)
{
    const QPointer<QWidget> stillThere = target;
    ClickAt(target, area);
    if (!stillThere)
        return;
    QTest::mouseDClick(target, Qt::LeftButton, Qt::NoModifier, area.center());
    if (stillThere)
        QTest::mouseRelease(target, Qt::LeftButton, Qt::NoModifier, area.center());
}

void Choose(QWidget *control, const QString &item)
{
    RequireUsable(control);
    if (auto *combo = qobject_cast<QComboBox *>(control))
        ChooseFromCombo(combo, item);
    else if (auto *view = qobject_cast<QAbstractItemView *>(control))
        ChooseFromView(view, item);
    else if (auto *tabs = qobject_cast<QTabWidget *>(control))
        ChooseTab(tabs->tabBar(), item);
    else if (auto *bar = qobject_cast<QTabBar *>(control))
        ChooseTab(bar, item);
    else
        throw ScriptWrong(
            QStringLiteral("%1 is neither a list nor a combo box").arg(NameOf(control)));
}

void PickDate(QWidget *control, QDate date)
{
    auto *picker = qobject_cast<DateField *>(control);
    if (!picker)
        throw ScriptWrong(QStringLiteral("%1 is no date picker").arg(NameOf(control)));
    Focus(picker);
    picker->setDate(date);
    if (picker->date() != date)
        throw Failed(QStringLiteral("%1 does not take the date %2")
                         .arg(NameOf(control), date.toString(Qt::ISODate)));
}

} // namespace WidgetActions
