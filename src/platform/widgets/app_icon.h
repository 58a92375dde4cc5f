#pragma once

/// The drawings delivered in the application folder.

#include <QFileInfo>
#include <QIcon>

/// "<appPath>/icons/New.svg" for "New"; the null icon when it is not there.
inline QIcon AppIcon(const QString &appPath, const QString &name)
{
    const QString file = appPath + QStringLiteral("/icons/") + name + QStringLiteral(".svg");
    return QFileInfo::exists(file) ? QIcon(file) : QIcon();
}
