#include "platform/widgets/default_browser.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

bool OpenInDefaultBrowser(const QString &address)
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        return false; // there is nobody to see the page
    return QDesktopServices::openUrl(QUrl(address));
}
