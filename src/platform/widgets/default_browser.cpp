#include "platform/widgets/default_browser.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

namespace
{

bool OpenOnDesktop(const QUrl &what)
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return false; // there is nobody to see it
    return QDesktopServices::openUrl(what);
}

} // namespace

bool OpenInDefaultBrowser(const QString &address)
{
    return OpenOnDesktop(QUrl(address));
}

bool OpenInDefaultProgram(const QString &path)
{
    return OpenOnDesktop(QUrl::fromLocalFile(path));
}
