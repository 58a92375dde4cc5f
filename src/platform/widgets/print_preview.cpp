#include "platform/widgets/print_preview.h"

#include "aids/fit_to_page.h"
#include "base/runtime_error.h"
#include "platform/widgets/on_top.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QToolButton>

namespace
{

constexpr QSize PreviewSize(820, 640);

} // namespace

bool PrintPictureToFitPage(QPrinter &printer, const QImage &picture)
{
    QPainter page;
    if (!page.begin(&printer))
        return false;
    const QRectF paper = printer.pageRect(QPrinter::DevicePixel);
    page.setRenderHint(QPainter::SmoothPixmapTransform);
    page.drawImage(QRectF(QPointF(0, 0), FitToPage(picture.size(), paper.size())), picture);
    return page.end() && printer.printerState() != QPrinter::Error;
}

void PreviewPicture(const QImage &picture)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QApplication::applicationName());
    if (picture.width() > picture.height()) // half of an upright page would stay blank
        printer.setPageOrientation(QPageLayout::Landscape);
    QPrintPreviewDialog preview(&printer, QApplication::activeWindow());
    preview.setObjectName(QStringLiteral("PrintPreview"));
    preview.resize(PreviewSize);
    if (auto *zoom = preview.findChild<QComboBox *>())
        zoom->setAccessibleName(QStringLiteral("Zoom"));
    const QList<QLineEdit *> fields = preview.findChildren<QLineEdit *>();
    for (QLineEdit *field : fields)
        if (!qobject_cast<QComboBox *>(field->parentWidget()))
            field->setAccessibleName(QStringLiteral("Page"));
    // Paper, zoom and the printer are on a toolbar, which Tab would pass by.
    const QList<QToolButton *> buttons = preview.findChildren<QToolButton *>();
    for (QToolButton *button : buttons) {
        button->setFocusPolicy(Qt::TabFocus);
        QAction *action = button->defaultAction();
        if (action && action->text() == QPrintPreviewDialog::tr("Print"))
            action->setShortcut(QKeySequence::Print); // once more the key that led here
    }
    PutOnTop(preview);
    bool isPrinted = true;
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, [&](QPrinter *target) {
        isPrinted = PrintPictureToFitPage(*target, picture);
    });
    preview.exec();
    if (!isPrinted)
        throw RuntimeError::Printer();
}
