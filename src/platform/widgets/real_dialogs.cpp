#include "platform/widgets/real_dialogs.h"

#include "platform/widgets/on_top.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>

namespace
{

QMessageBox::Icon IconOf(int buttonsValue)
{
    switch (buttonsValue & Box::IconMask) {
    case Box::Stop:
        return QMessageBox::Critical;
    case Box::Question:
        return QMessageBox::Question;
    case Box::Exclamation:
        return QMessageBox::Warning;
    case Box::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// In the order in which the first one is the default.
QList<QMessageBox::StandardButton> ButtonsOf(int buttonsValue)
{
    switch (buttonsValue & Box::ButtonsMask) {
    case Box::OkCancel:
        return {QMessageBox::Ok, QMessageBox::Cancel};
    case Box::YesNoCancel:
        return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
    case Box::YesNo:
        return {QMessageBox::Yes, QMessageBox::No};
    case Box::RetryCancel:
        return {QMessageBox::Retry, QMessageBox::Cancel};
    default:
        return {QMessageBox::Ok};
    }
}

Answer AnswerOf(int button)
{
    switch (button) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Retry:
        return Answer::Retry;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    default:
        return Answer::Ok;
    }
}

/// A short text makes a narrow box, whose title would be cut between the frame's buttons.
void MakeRoomForTitle(QMessageBox &box)
{
    constexpr int frameButtons = 12; // in characters
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    if (!grid)
        return;
    const QFontMetrics metrics = box.fontMetrics();
    const int width = metrics.horizontalAdvance(box.windowTitle()) +
                      frameButtons * metrics.horizontalAdvance(QLatin1Char('M'));
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

int RunAboveAll(QDialog &dialog)
{
    PutOnTop(dialog);
    return dialog.exec();
}

/// A dialog above the hourglass shows the plain pointer.
class PlainPointer
{
public:
    PlainPointer() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~PlainPointer() { QGuiApplication::restoreOverrideCursor(); }
};

} // namespace

QStringList NameFilters(const QString &filter)
{
    QStringList names;
    const QStringList parts = filter.split(QLatin1Char('|'));
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString name = parts[i].section(QStringLiteral(" ("), 0, 0);
        names << QStringLiteral("%1 (%2)").arg(name, QString(parts[i + 1]).replace(';', ' '));
    }
    return names;
}

Answer RealDialogs::MsgBox(const QString &text, int buttonsValue, const QString &title)
{
    const PlainPointer pointer;
    QMessageBox box(IconOf(buttonsValue), title, text, QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    const QList<QMessageBox::StandardButton> buttons = ButtonsOf(buttonsValue);
    for (const QMessageBox::StandardButton button : buttons)
        box.addButton(button);
    const bool second = (buttonsValue & Box::SecondDefault) != 0 && buttons.size() > 1;
    box.setDefaultButton(buttons[second ? 1 : 0]);
    MakeRoomForTitle(box);
    return AnswerOf(RunAboveAll(box));
}

std::optional<QString> RealDialogs::PickFile(const FileRequest &request)
{
    const PlainPointer pointer;
    const QFileInfo initial(request.initial);
    QFileDialog dialog(QApplication::activeWindow(), request.title, initial.path());
    dialog.setNameFilters(NameFilters(request.filter));
    if (request.kind == FileRequest::Kind::Save) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setDefaultSuffix(initial.suffix());
        // What happens to a file that is there is the caller's business.
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
    } else {
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (!initial.fileName().contains(QLatin1Char('*')))
        dialog.selectFile(initial.fileName());
    if (RunAboveAll(dialog) != QDialog::Accepted)
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

std::optional<QString> RealDialogs::PickFolder(const QString &title, const QString &initial)
{
    const PlainPointer pointer;
    QFileDialog dialog(QApplication::activeWindow(), title, initial);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (RunAboveAll(dialog) != QDialog::Accepted)
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

std::optional<Rgb> RealDialogs::PickColor(Rgb initial)
{
    const PlainPointer pointer;
    QColorDialog dialog(QColor::fromRgb(initial), QApplication::activeWindow());
    if (RunAboveAll(dialog) != QDialog::Accepted)
        return std::nullopt;
    return dialog.selectedColor().rgb() & 0xFFFFFF;
}
