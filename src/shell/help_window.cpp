#include "shell/help_window.h"

#include <QFileInfo>
#include <QShortcut>
#include <QUrl>

HelpWindow::HelpWindow(const QString &folder) : m_folder(folder)
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(QStringLiteral("Quillon Help"));
    setAccessibleName(windowTitle());
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(760, 560);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::hide);
}

bool HelpWindow::ShowTopic(const QString &topic)
{
    const QString path = m_folder + QLatin1Char('/') + topic;
    if (!QFileInfo(path).isFile())
        return false;
    setSource(QUrl::fromLocalFile(path));
    show();
    raise();
    activateWindow();
    return true;
}
