#include "driver/looks.h"

#include "driver/failure.h"
#include "driver/widget_actions.h"
#include "platform/widgets/shown_grid.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>

#include <optional>

namespace Looks
{

namespace
{

void RequireVisible(const QWidget *widget)
{
    if (!widget->isVisible())
        throw Failed(QStringLiteral("%1 is not visible").arg(WidgetActions::NameOf(widget)));
}

struct Roles
{
    QPalette::ColorRole text;
    QPalette::ColorRole ground;
};

/// Of a control that paints a ground of its own.
std::optional<Roles> OwnRoles(const QWidget *control)
{
    const auto *combo = qobject_cast<const QComboBox *>(control);
    if (qobject_cast<const QPushButton *>(control) || (combo && !combo->isEditable()))
        return Roles{QPalette::ButtonText, QPalette::Button};
    if (combo || qobject_cast<const QLineEdit *>(control) ||
        qobject_cast<const QAbstractSpinBox *>(control) ||
        qobject_cast<const QAbstractItemView *>(control) ||
        qobject_cast<const QPlainTextEdit *>(control) || qobject_cast<const QTextEdit *>(control))
        return Roles{QPalette::Text, QPalette::Base};
    return std::nullopt;
}

/// The first pixel of the control in the picture of its form.
QColor GroundBehind(QWidget *control)
{
    QWidget *form = control;
    while (form->parentWidget() && !form->objectName().startsWith(QLatin1String("frm")))
        form = form->parentWidget();
    const QRect corner(control->mapTo(form, QPoint()), QSize(1, 1));
    return form->grab(corner).toImage().pixelColor(0, 0);
}

/// Where Tab stops, see QWidget::focusNextPrevChild.
bool IsStop(const QWidget *widget, const QWidget *form)
{
    return (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy() && widget->isEnabled() &&
           form->isAncestorOf(widget) && widget->isVisibleTo(form);
}

/// Of the control that a nameless part belongs to.
QString NameOfControl(const QWidget *widget)
{
    while (widget->objectName().isEmpty() || widget->objectName().startsWith(QLatin1String("qt_")))
        widget = widget->parentWidget();
    return widget->objectName();
}

} // namespace

QString Colors(QWidget *control)
{
    RequireVisible(control);
    if (auto *grid = dynamic_cast<ShownGrid *>(control))
        control = grid->Viewport()->parentWidget();
    const std::optional<Roles> own = OwnRoles(control);
    const QPalette &palette = control->palette(); // that of its state: disabled, inactive
    const QColor text = palette.color(own ? own->text : control->foregroundRole());
    const QColor ground = own ? palette.color(own->ground) : GroundBehind(control);
    return text.name() + QLatin1Char(' ') + ground.name();
}

QString Font(const QWidget *control)
{
    const QFont font = control->font();
    return QStringLiteral("%1 %2 %3")
        .arg(font.family(), QString::number(font.pointSizeF()),
             font.bold() ? QStringLiteral("bold") : QStringLiteral("regular"));
}

QString Geometry(const QWidget *form)
{
    RequireVisible(form);
    const auto *frame = qobject_cast<const QMdiSubWindow *>(form->parentWidget());
    const QRect place = frame ? frame->geometry() : form->frameGeometry();
    return QStringLiteral("%1 %2 %3 %4")
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height());
}

QStringList TabOrder(const QWidget *form)
{
    RequireVisible(form);
    QStringList names;
    for (const QWidget *next = form->nextInFocusChain(); next != form;
         next = next->nextInFocusChain()) {
        if (!IsStop(next, form))
            continue;
        if (const QString name = NameOfControl(next); names.isEmpty() || names.last() != name)
            names += name;
    }
    return names;
}

} // namespace Looks
