#include "driver/printing.h"

#include "driver/failure.h"
#include "driver/widget_actions.h"
#include "platform/widgets/shown_grid.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTextEdit>

namespace Printing
{

QString YesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

QString TextOf(const QWidget *control)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(control)) {
        const bool isState =
            qobject_cast<const QCheckBox *>(button) || qobject_cast<const QRadioButton *>(button);
        return isState ? QString::number(button->isChecked()) : button->text();
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(control))
        return combo->currentText();
    if (const auto *list = qobject_cast<const QAbstractItemView *>(control))
        return list->currentIndex().data(Qt::DisplayRole).toString();
    if (const auto *edit = qobject_cast<const QPlainTextEdit *>(control))
        return edit->toPlainText();
    if (const auto *edit = qobject_cast<const QTextEdit *>(control))
        return edit->toPlainText();
    if (const auto *box = qobject_cast<const QGroupBox *>(control))
        return box->title();
    if (const auto *tabs = qobject_cast<const QTabWidget *>(control))
        return tabs->tabText(tabs->currentIndex());
    // Fields, labels, pickers, spin boxes, progress bars and our own controls have one by this
    // name.
    const QVariant text = control->property("text");
    if (!text.isValid())
        throw ScriptWrong(
            QStringLiteral("%1 has no text to show").arg(WidgetActions::NameOf(control)));
    return text.toString();
}

QStringList GridLines(const ShownGrid &grid)
{
    QStringList cells;
    const QStringList captions = grid.Captions();
    for (const QString &caption : captions)
        cells += CellText(caption);
    QStringList lines{cells.join(QLatin1Char('\t'))};
    for (int row = 0; row < grid.RowCount(); ++row) {
        cells.clear();
        for (int place = 0; place < captions.size(); ++place)
            cells += CellText(grid.CellText(row, place));
        lines += cells.join(QLatin1Char('\t'));
    }
    return lines;
}

QString CellText(QString text)
{
    return text.replace(QLatin1Char('\n'), QLatin1String("\\n"))
        .replace(QLatin1Char('\t'), QLatin1String("\\t"));
}

} // namespace Printing
