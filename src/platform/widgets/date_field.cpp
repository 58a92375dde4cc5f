#include "platform/widgets/date_field.h"

DateField::DateField(QWidget *parent) : QDateEdit(parent)
{
    QString format = locale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy")))
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    setDisplayFormat(format);
    setCalendarPopup(true);
}
