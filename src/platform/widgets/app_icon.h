#pragma once

/// The drawings delivered with the program.

#include <QFileInfo>
#include <QIcon>

/// "<programPath>/icons/New.svg" for "New"; the null icon when it is not there.
inline QIcon AppIcon(const QString &programPath, const QString &name)
{
    const QString file = programPath + QStringLiteral("/icons/") + name + QStringLiteral(".svg");
    return QFileInfo::exists(file) ? QIcon(file) : QIcon();
}
