#include "reports/portfolio_files.h"

#include "platform/files.h"

#include <QFileInfo>

QString PortfolioFiles::PathOf(const QString &name) const
{
    const QString fileName = name + QStringLiteral(".mdb");
    QStringList places = recentPaths;
    places << QFileInfo(currentPath).path() + QLatin1Char('/') + fileName;
    for (const QString &path : places)
        if (QFileInfo(path).fileName().compare(fileName, Qt::CaseInsensitive) == 0 &&
            Files::FileExists(path))
            return path;
    return QString();
}
