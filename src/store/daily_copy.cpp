#include "store/daily_copy.h"

#include "base/runtime_error.h"
#include "platform/files.h"
#include "store/database_copy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{

constexpr qsizetype CopiesKept = 7;

QString FolderSuffix()
{
    return QStringLiteral(" copies");
}

QString CopyName(QDate day)
{
    return day.toString(Qt::ISODate) + QStringLiteral(".mdb");
}

/// The day of a copy; invalid for a file that is none.
QDate DayOf(const QString &fileName)
{
    const QDate day = QDate::fromString(fileName.left(10), Qt::ISODate);
    return day.isValid() && fileName == CopyName(day) ? day : QDate();
}

bool IsDailyCopy(const QFileInfo &account)
{
    return DayOf(account.fileName()).isValid() && account.dir().dirName().endsWith(FolderSuffix());
}

bool IsOpen(const QString &path)
{
    return QFile::exists(path + QStringLiteral(".lock")) ||
           QFile::exists(path + QStringLiteral("-wal"));
}

/// Copies of days to come stay: the clock may be wrong today, or have been wrong then.
void RemoveOldCopies(const QDir &folder, QDate today)
{
    const QStringList names = folder.entryList(QDir::Files | QDir::NoSymLinks,
                                               QDir::Name | QDir::Reversed); // latest first
    qsizetype kept = 0;
    for (const QString &name : names) {
        const QDate day = DayOf(name);
        if (!day.isValid() || day > today || ++kept <= CopiesKept)
            continue;
        if (const QString path = folder.filePath(name); !IsOpen(path))
            QFile::remove(path);
    }
}

/// Of a run that was killed. The account is ours alone, and so are its copies.
void RemoveUnfinishedCopies(const QDir &folder)
{
    const QString ending = QStringLiteral(".new");
    for (const QString &name : folder.entryList(QDir::Files | QDir::NoSymLinks))
        if (name.endsWith(ending) && DayOf(name.chopped(ending.size())).isValid())
            RemoveDatabase(folder.filePath(name));
}

} // namespace

QString DailyCopyFolder(const QString &accountPath)
{
    const QFileInfo account(QFileInfo(accountPath).canonicalFilePath());
    QString name = account.fileName();
    if (name.endsWith(QLatin1String(".mdb")))
        name.chop(4);
    return account.dir().filePath(name + FolderSuffix());
}

void MakeDailyCopy(Connection &account, QDate today)
{
    if (IsDailyCopy(QFileInfo(QFileInfo(account.Path()).canonicalFilePath())))
        return;
    const QDir folder(DailyCopyFolder(account.Path()));
    const QString copy = folder.filePath(CopyName(today));
    RemoveUnfinishedCopies(folder);
    if (QFileInfo::exists(copy))
        return;
    if (!folder.exists()) {
        if (!QDir().mkpath(folder.path()))
            throw RuntimeError(RuntimeError::PathAccessNumber,
                               QStringLiteral("Path/File access error: ") + folder.path());
        QFile::setPermissions(folder.path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        Files::SyncFolderOf(folder.path());
    }
    CopyDatabase(account, copy);
    RemoveOldCopies(folder, today);
}
