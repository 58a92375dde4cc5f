#include "store/folder_copy.h"

#include "platform/files.h"
#include "store/connection.h"
#include "store/unfinished_work.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <sqlite3.h>

#include <memory>

namespace
{

/// By the mark in the header; a damaged one may still bear it.
bool IsDatabaseOfOurs(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    constexpr int markOffset = 68;
    const QByteArray header = file.read(100);
    return header.size() == 100 && header.startsWith(QByteArray("SQLite format 3\0", 16)) &&
           qFromBigEndian<qint32>(header.constData() + markOffset) == ApplicationMark;
}

RuntimeError Damaged(const QString &path, const QString &why)
{
    return RuntimeError::Store(QStringLiteral("The file is damaged: %1 (%2)").arg(path, why));
}

/// Reads a closed database through, and throws when it does not hold together.
void RequireSound(const QString &path)
{
    sqlite3 *opened = nullptr;
    const int result = sqlite3_open_v2(QFile::encodeName(path).constData(), &opened,
                                       SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
    QString found;
    const auto take = [](void *text, int, char **values, char **) {
        *static_cast<QString *>(text) = QString::fromUtf8(values[0]);
        return 1; // the first finding will do
    };
    if (result == SQLITE_OK)
        sqlite3_exec(opened, "PRAGMA quick_check(1)", take, &found, nullptr);
    if (found != QLatin1String("ok"))
        throw Damaged(path, found.isEmpty() ? QString::fromUtf8(sqlite3_errmsg(opened)) : found);
}

enum class Condition
{
    Free,
    InUse,
    NotWritable, ///< a full disk, or one that fails
    Damaged
};

/// Brings home what a program that died has left in the log. `why` is what the store says.
Condition TakeHome(const QString &path, QString &why)
{
    sqlite3 *opened = nullptr;
    int result = sqlite3_open_v2(QFile::encodeName(path).constData(), &opened,
                                 SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
    if (result == SQLITE_OK)
        result = sqlite3_exec(opened, "PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE; ROLLBACK",
                              nullptr, nullptr, nullptr);
    why = QString::fromUtf8(sqlite3_errmsg(opened));
    switch (result) {
    case SQLITE_OK:
        // With others on the file the store keeps the log, and does not call that an error.
        return QFileInfo::exists(path + QLatin1String("-wal")) ? Condition::InUse : Condition::Free;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_READONLY:
        return Condition::InUse;
    case SQLITE_FULL:
        return Condition::NotWritable;
    case SQLITE_IOERR: {
        const int failed = sqlite3_extended_errcode(opened);
        return failed == SQLITE_IOERR_READ || failed == SQLITE_IOERR_SHORT_READ
                   ? Condition::Damaged
                   : Condition::NotWritable;
    }
    default:
        return Condition::Damaged;
    }
}

/// Error 70 or 61 for a database that another program has open, or that cannot be written; false for
/// one that is damaged.
bool IsSoundAndFree(const QString &path, QString &why)
{
    switch (TakeHome(path, why)) {
    case Condition::Free:
        return true;
    case Condition::Damaged:
        return false;
    case Condition::InUse:
        throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                           QStringLiteral("Permission denied, the file is in use: ") + path);
    case Condition::NotWritable:
        break;
    }
    throw RuntimeError(RuntimeError::DiskFullNumber,
                       QStringLiteral("Disk full or not writable: %1 (%2)").arg(path, why));
}

/// A file to be copied from: all of it must be in the one file.
void RequireSource(const QString &path)
{
    const bool hasLog = QFileInfo::exists(path + QLatin1String("-wal"));
    // Where nothing can be written (a disc) nobody else can be at work either.
    if (!hasLog && !QFileInfo(path).isWritable())
        return;
    if (QString why; !IsSoundAndFree(path, why))
        throw Damaged(path, why);
}

void DropLogs(const QString &path)
{
    for (const char *suffix : {"-wal", "-shm", "-journal"})
        if (const QString log = path + QLatin1String(suffix); QFileInfo::exists(log))
            Files::Kill(log);
}

/// A file to be replaced at once. A log of one that is past opening goes with it: it would be taken
/// for the log of the new one.
void RequireTarget(const QString &path)
{
    if (QString why; !IsSoundAndFree(path, why))
        DropLogs(path);
}

/// The names in the folder of `to` are synced by the caller.
void CopyOne(const QString &from, const QString &to, bool overwrite)
{
    const bool exists = QFileInfo::exists(to);
    if (exists && !overwrite)
        throw RuntimeError(RuntimeError::FileExistsNumber,
                           QStringLiteral("File already exists: ") + to);
    const bool isDatabase = IsDatabaseOfOurs(from);
    if (isDatabase)
        RequireSource(from);
    const auto check = [&](const QString &copy) {
        if (isDatabase) {
            DropLogs(copy); // of another kind of copy, under the same name, that was broken off
            RequireSound(copy);
        }
        // What a program may run stays so; a copy can always be replaced by its owner.
        QFile::setPermissions(copy, QFile::permissions(from) | QFile::WriteOwner);
        // Last of all: until the copy is whole, what is there stays untouched.
        if (exists && IsDatabaseOfOurs(to))
            RequireTarget(to);
    };
    Files::CopyFile(from, to, overwrite, check, Files::NameSync::ByCaller);
}

/// What stands for a program at work on a database and not for its rows: the lock, and the logs,
/// which are brought home before their database is copied.
bool IsTemporary(const QString &path);

bool IsOfARun(const QString &path)
{
    for (const char *suffix : {".lock", "-wal", "-shm", "-journal"})
        if (path.endsWith(QLatin1String(suffix)))
            return IsDatabaseOfOurs(path.chopped(qsizetype(qstrlen(suffix)))) ||
                   IsTemporary(path.chopped(qsizetype(qstrlen(suffix))));
    return false;
}

/// What will have another name when it is complete, of a run that is at work or was killed.
bool IsTemporary(const QString &path)
{
    const QFileInfo file(path);
    if (file.fileName() == QLatin1String("ApplTemp.mdb") ||
        file.fileName() == QLatin1String("TempHistPrices.mdb"))
        return true;
    const QString beside = path.chopped(4);
    return path.endsWith(QLatin1String(".new")) &&
           (beside.endsWith(QLatin1String(".mdb")) || QFileInfo::exists(beside));
}

class FolderCopier
{
public:
    FolderCopier(const QString &folder, const QString &target, bool overwrite,
                 const AfterFile &afterFile)
        : m_target(QFileInfo(target).canonicalFilePath()),
          m_unfinished(UnfinishedWork::Files(folder)), m_overwrite(overwrite),
          m_afterFile(afterFile)
    {}

    void Copy(const QString &from, const QString &to)
    {
        const QString real = QFileInfo(from).canonicalFilePath();
        if (real == m_target || m_above.contains(real)) // a link may lead back up
            return;
        const bool isNew = !QFileInfo::exists(to);
        if (!QDir().mkpath(to))
            throw RuntimeError(RuntimeError::PathAccessNumber,
                               QStringLiteral("Path/File access error: ") + to);
        if (const QFileInfo folder(from); !folder.isReadable() || !folder.isExecutable())
            throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                               QStringLiteral("Permission denied: ") + from);
        m_above.append(real);
        const QFileInfoList entries =
            QDir(from).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        for (const QFileInfo &entry : entries) {
            const QString target = to + QLatin1Char('/') + entry.fileName();
            if (entry.isDir())
                Copy(entry.filePath(), target);
            else if (entry.isFile() && !IsLeftOut(entry.filePath()))
                CopyFile(entry.filePath(), target);
        }
        Files::Sync(to);
        if (isNew)
            Files::SyncFolderOf(to);
        m_above.removeLast();
    }
    const QStringList &Damages() const { return m_damages; }

private:
    bool IsLeftOut(const QString &path) const
    {
        return IsOfARun(path) || IsTemporary(path) || m_unfinished.contains(path);
    }
    void CopyFile(const QString &from, const QString &to)
    {
        try {
            CopyOne(from, to, m_overwrite);
        } catch (const RuntimeError &error) {
            if (error.Number() != RuntimeError::StoreNumber)
                throw;
            m_damages += error.Description();
        }
        m_afterFile();
    }

    QString m_target;
    QStringList m_unfinished;
    bool m_overwrite;
    const AfterFile &m_afterFile;
    QStringList m_above; ///< the folders that are being copied
    QStringList m_damages;
};

} // namespace

void CopyFolder(const QString &folder, const QString &target, bool overwrite,
                const AfterFile &afterFile)
{
    FolderCopier copier(folder, target, overwrite, afterFile);
    copier.Copy(folder, QDir(target).filePath(QFileInfo(folder).fileName()));
    if (!copier.Damages().isEmpty())
        throw RuntimeError::Store(copier.Damages().join(QLatin1Char('\n')));
}

int CopyMatching(const QString &folder, const QString &pattern, const QString &target,
                 bool overwrite, const AfterFile &afterFile)
{
    const QFileInfoList files =
        QDir(folder).entryInfoList({pattern}, QDir::Files | QDir::Hidden); // case plays no part
    if (files.isEmpty())
        throw RuntimeError(RuntimeError::FileNotFoundNumber, QStringLiteral("File not found: ") +
                                                                 folder + QLatin1Char('/') +
                                                                 pattern);
    int copied = 0;
    for (const QFileInfo &file : files) {
        const QString to = target + QLatin1Char('/') + file.fileName();
        try {
            CopyOne(file.filePath(), to, overwrite);
            ++copied;
        } catch (const RuntimeError &error) {
            if (error.Number() != RuntimeError::FileExistsNumber)
                throw;
        }
        afterFile();
    }
    Files::Sync(target);
    return copied;
}
