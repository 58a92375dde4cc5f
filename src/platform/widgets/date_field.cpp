#include "platform/widgets/date_field.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionComboBox>

DateField::DateField(QWidget *parent) : QDateEdit(parent)
{
    QString format = locale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    setDisplayFormat(format);
    setCalendarPopup(true);
}

void DateField::keyPressEvent(QKeyEvent *event)
{
    const bool isAltDown =
        event->modifiers().testFlag(Qt::AltModifier) && event->key() == Qt::Key_Down;
    if (!isAltDown && (event->key() != Qt::Key_F4 || event->modifiers() != Qt::NoModifier)) {
        QDateEdit::keyPressEvent(event);
        return;
    }
    // The arrow alone opens the calendar, so it is pressed.
    QStyleOptionComboBox option;
    option.initFrom(this);
    const QPointF arrow =
        style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this)
            .center();
    QMouseEvent press(QEvent::MouseButtonPress, arrow, mapToGlobal(arrow), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    mousePressEvent(&press);
    event->accept();
}
