#pragma once

/// Pieces of the settings screen's pages: named controls with the words around them in a row.
///
///     Row(rows, {chkLogoff, Words(frame, "After"), txtLogoffMinutes, updLogoffMinutes,
///                Words(frame, "minutes of inactivity.")});

#include "base/formats.h"
#include "platform/widgets/field_edit.h"
#include "platform/widgets/up_down.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>

#include <initializer_list>

namespace SetupRows
{

/// A control of the told name on `parent`.
template <class Control>
Control *Named(Control *control, const char *name, const char *accessibleName)
{
    control->setObjectName(QString::fromUtf8(name));
    control->setAccessibleName(QString::fromUtf8(accessibleName));
    return control;
}

QCheckBox *Check(QWidget *parent, const char *name, const char *caption, const char *tip);
QRadioButton *Option(QWidget *parent, const char *name, const char *caption, const char *tip);
/// A field for a whole number.
FieldEdit *Number(QWidget *parent, const char *name, const char *accessibleName, const char *tip);
/// A field for money or a share count of so many characters, typed in the language of `formats`.
FieldEdit *Amount(QWidget *parent, const Formats &formats, const char *name,
                  const char *accessibleName, const char *tip, int characters = 14);
UpDown *Arrows(FieldEdit *buddy, const char *name, int lowest, int highest);
QLabel *Words(QWidget *parent, const char *text);
/// Words that break into lines where the page ends.
QLabel *Note(QWidget *parent, const char *text);

/// A frame of the page whose rows go into its layout.
QGroupBox *Frame(QWidget *page, const char *caption);
QBoxLayout *RowsOf(QGroupBox *frame);
/// Arrows stand close to the field before them.
void Row(QBoxLayout *rows, std::initializer_list<QWidget *> controls);

/// The page in a view that is always as wide as it, and scrolls on a desktop that is too low.
QScrollArea *Scrolled(QWidget *page);

} // namespace SetupRows
