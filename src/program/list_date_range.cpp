#include "program/list_date_range.h"

#include "platform/widgets/date_field.h"
#include "platform/widgets/wrapping_row.h"

QString FromIsLaterText()
{
    return QStringLiteral("'From' date can not be greater than 'To' date. \n"
                          "Please make another selection.");
}

ListDateRange::ListDateRange(Form &form, Program &program, QDate &from, QDate &to)
    : m_program(program), m_from(from), m_to(to)
{
    const auto picker = [&](const char *name, const char *labelName, const char *caption,
                            QLabel *&label) {
        auto *field = new DateField(program.services, &form);
        field->setObjectName(QString::fromUtf8(name));
        label = new QLabel(QString::fromUtf8(caption), &form);
        label->setObjectName(QString::fromUtf8(labelName));
        label->setBuddy(field);
        label->setMinimumWidth(label->sizeHint().width() + 3); // else the last letter is cut
        field->setAccessibleName(label->text().remove(QLatin1Char('&')));
        form.On(field, &DateField::dateChanged, [this, field] {
            m_program.UserActed();
            DateChanged(*field);
        });
        return field;
    };
    dtpFrom = picker("dtpFrom", "lblFrom", "F&rom", lblFrom);
    dtpTo = picker("dtpTo", "lblTo", "&To", lblTo);
    cmdOK = form.MakeButton("cmdOK", "&OK");
    cmdOK->setDefault(true);
    cmdOK->setToolTip(QStringLiteral("Select after changing 'From' and 'To' date."));
}

void ListDateRange::AddTo(WrappingRow &head)
{
    head.AddGroup({lblFrom, dtpFrom});
    head.AddGroup({lblTo, dtpTo});
}

QDate ListDateRange::From() const
{
    return dtpFrom->date();
}

QDate ListDateRange::To() const
{
    return dtpTo->date();
}

void ListDateRange::Set(QDate from, QDate to)
{
    dtpFrom->setDate(from);
    dtpTo->setDate(to);
    // A picker that stood on its date already has told nothing.
    DateChanged(*dtpFrom);
    DateChanged(*dtpTo);
}

void ListDateRange::DateChanged(DateField &picker)
{
    picker.setToolTip(m_program.services.formats.ToText(picker.date()));
    m_from = From();
    m_to = To();
}
