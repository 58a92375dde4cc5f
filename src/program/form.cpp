#include "program/form.h"

#include "platform/widgets/date_field.h"
#include "platform/widgets/focus_frame.h"
#include "store/failed_write.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QRadioButton>

#include <algorithm>

namespace
{

QList<QAbstractButton *> GroupOf(const QRadioButton &radio)
{
    if (radio.group())
        return radio.group()->buttons();
    return radio.parentWidget()->findChildren<QAbstractButton *>(QString(),
                                                                 Qt::FindDirectChildrenOnly);
}

/// Tab goes to the one of a group that is on. Left alone it stops at the first for once, and puts
/// right only then which one it is to be.
void LeadTabToTheChosen(QRadioButton &radio)
{
    if (!radio.isChecked() || !radio.isEnabledTo(radio.parentWidget()))
        return; // nobody could come to the group
    for (QAbstractButton *other : GroupOf(radio))
        if (qobject_cast<QRadioButton *>(other))
            other->setFocusPolicy(other == &radio ? Qt::StrongFocus : Qt::ClickFocus);
}

/// Whether the dates that are typed on `form` have been taken. A button that is clicked leaves no
/// field; those that close the screen or explain it need no dates.
bool DatesAreTaken(const Form &form, const QAbstractButton &button)
{
    const QStringList others{QStringLiteral("cmdCancel"), QStringLiteral("cmdClose"),
                             QStringLiteral("cmdHelp")};
    const QList<DateField *> dates = form.findChildren<DateField *>();
    return others.contains(button.objectName()) ||
           std::all_of(dates.begin(), dates.end(), [](DateField *date) { return date->Commit(); });
}

/// What the Menu key does, for keyboards without one.
void AskForMenu(QWidget &focused)
{
    const QPoint place = focused.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, place, focused.mapToGlobal(place));
    QCoreApplication::sendEvent(&focused, &asked);
}

} // namespace

bool RunGuarded(Program &program, const std::function<void()> &handler)
{
    if (program.run.Ended) // what is still shown is only taken down
        return false;
    try {
        handler();
        return true;
    } catch (const ProgramEnded &) {
        return false; // the lifetime closes what is open
    } catch (const FailedWrite &error) {
        program.services.dialogs.MsgBox(error.Text(), Box::Exclamation, EditorTitle());
        return true;
    } catch (const RuntimeError &error) {
        program.services.dialogs.MsgBox(ErrorLines(error), Box::Stop, EditorTitle());
        return true;
    }
}

Form::Form(Program &program, const QString &name, const QString &caption, Placement placement)
    : m_program(program), m_placement(placement)
{
    setObjectName(name);
    setWindowTitle(caption);
    FrameFocusIn(*this);
}

void Form::OnClick(QAbstractButton *button, std::function<void()> handler)
{
    connect(button, &QAbstractButton::clicked, this, [this, button, handler = std::move(handler)] {
        ByUser([&] {
            if (DatesAreTaken(*this, *button))
                handler();
        });
    });
}

void Form::ByUser(const std::function<void()> &handler)
{
    Guarded([&] {
        m_program.UserActed();
        handler();
    });
}

QSize Form::TextSize(int characters, int lines) const
{
    return {fontMetrics().averageCharWidth() * characters, fontMetrics().height() * lines};
}

QSize Form::TenthsOfMainWindow(int width, int height) const
{
    const RunState &run = m_program.run;
    if (run.ScreenWidth <= 0 || run.ScreenHeight <= 0)
        return QWidget::sizeHint();
    return {run.ScreenWidth * width / 10, run.ScreenHeight * height / 10};
}

QPushButton *Form::MakeButton(const char *name, const char *caption)
{
    auto *button = new QPushButton(QString::fromUtf8(caption), this);
    button->setObjectName(QString::fromUtf8(name));
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoDefault(false);
    return button;
}

void Form::ShowHelp()
{
    auto *cmdHelp = findChild<QPushButton *>(QStringLiteral("cmdHelp"));
    if (cmdHelp && cmdHelp->isEnabled() && cmdHelp->isVisibleTo(this))
        cmdHelp->click();
    else
        m_program.screens.ShowHelp(QStringLiteral("AboutQuillon.htm"));
}

void Form::UnloadMe()
{
    m_program.screens.Unload(objectName());
}

void Form::closeEvent(QCloseEvent *event)
{
    // The frame's close button unloads like the Close button; Screens removes the window then.
    event->ignore();
    Guarded([this] { UnloadMe(); });
}

bool Form::event(QEvent *event)
{
    if (event->type() == QEvent::Polish)
        for (QRadioButton *radio : findChildren<QRadioButton *>()) {
            LeadTabToTheChosen(*radio);
            connect(radio, &QAbstractButton::toggled, this,
                    [radio] { LeadTabToTheChosen(*radio); });
        }
    // The topic of this screen, before the main window takes the key for the contents.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::HelpContents)) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void Form::keyPressEvent(QKeyEvent *event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        if (auto *focused = qobject_cast<QPushButton *>(focusWidget())) {
            focused->click();
            return;
        }
        for (auto *button : findChildren<QPushButton *>()) {
            if (button->isDefault() && button->isEnabled() && button->isVisibleTo(this)) {
                button->setFocus();          // the field is left first, so that its checks run
                if (focusWidget() == button) // else they refused
                    button->click();
                return;
            }
        }
    }
    if (plain && event->key() == Qt::Key_Escape) {
        for (const char *name : {"cmdCancel", "cmdClose"}) {
            auto *button = findChild<QPushButton *>(QLatin1String(name));
            if (button && button->isEnabled() && button->isVisibleTo(this)) {
                button->click();
                return;
            }
        }
    }
    if (event->modifiers() == Qt::ShiftModifier && event->key() == Qt::Key_F10 && focusWidget())
        return AskForMenu(*focusWidget());
    if (event->matches(QKeySequence::HelpContents))
        return ByUser([this] { ShowHelp(); });
    QWidget::keyPressEvent(event);
}
