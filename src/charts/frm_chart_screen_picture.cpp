#include "charts/frm_chart_screen_picture.h"

#include "platform/files.h"

#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>

void SaveChartPicture(Program &program, const QImage &picture, const QString &name)
{
    QDir folder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    if (!folder.exists())
        folder = QDir::home();
    std::optional<QString> file = program.services.dialogs.PickFile(
        {FileRequest::Kind::Save, QStringLiteral("Save picture"),
         QStringLiteral("Pictures (*.png)|*.png"), folder.filePath(name + QStringLiteral(".png"))});
    if (!file)
        return;
    if (QFileInfo(*file).suffix().compare(QLatin1String("png"), Qt::CaseInsensitive) != 0)
        *file += QStringLiteral(".png");
    QByteArray content;
    QBuffer buffer(&content);
    picture.save(&buffer, "PNG");
    try {
        Files::WriteFile(*file, content);
    } catch (const RuntimeError &error) {
        program.services.dialogs.MsgBox(QStringLiteral("The picture could not be saved as\n%1.\n")
                                                .arg(QDir::toNativeSeparators(*file)) +
                                            ErrorLines(error),
                                        Box::Exclamation, QStringLiteral("Chart Editor"));
        return;
    }
    program.services.status.Post(QStringLiteral("The picture was saved as ") +
                                 QFileInfo(*file).fileName());
}

void CopyChartPicture(Program &program, const QImage &picture)
{
    QGuiApplication::clipboard()->setImage(picture);
    program.services.status.Post(QStringLiteral("The picture was copied"));
}
