#include "store/database_copy.h"

#include "platform/files.h"
#include "store/connection.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace
{

constexpr const char *LogSuffixes[] = {"-wal", "-shm", "-journal"};

void RequireRoomFor(const QString &path)
{
    if (QFileInfo(path).exists() || QFileInfo(path).isSymLink())
        throw RuntimeError(RuntimeError::FileExistsNumber,
                           QStringLiteral("File already exists: ") + path);
    Files::RequireFolderOf(path);
}

/// Before the first byte is in it, so that nobody else reads along.
void CreatePrivateFile(const QString &path)
{
    const int file = open(QFile::encodeName(path).constData(), O_CREAT | O_EXCL | O_RDWR, 0600);
    if (file < 0)
        throw RuntimeError(RuntimeError::PathAccessNumber,
                           QStringLiteral("Path/File access error: ") + path);
    close(file);
}

void WriteCopy(const Connection &from, const QString &path)
{
    sqlite3 *opened = nullptr;
    const int result = sqlite3_open_v2(QFile::encodeName(path).constData(), &opened,
                                       SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> target(opened, sqlite3_close);
    const auto fail = [&] { throw RuntimeError::Store(QString::fromUtf8(sqlite3_errmsg(opened))); };
    if (result != SQLITE_OK)
        fail();
    sqlite3_backup *backup = sqlite3_backup_init(opened, "main", from.Handle(), "main");
    if (!backup)
        fail();
    // A file that others hold is no error to the end of a backup, which then has copied nothing.
    const int copied = sqlite3_backup_step(backup, -1);
    if (sqlite3_backup_finish(backup) != SQLITE_OK)
        fail();
    if (copied != SQLITE_DONE)
        throw RuntimeError::Store(QString::fromUtf8(sqlite3_errstr(copied)));
    // The header of the open file says that it has a log; the copy is one file.
    if (sqlite3_exec(opened, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr) != SQLITE_OK)
        fail();
}

} // namespace

void CopyDatabase(const QString &from, const QString &to)
{
    RequireRoomFor(to);
    Connection source;
    source.Open(from);
    CopyDatabase(source, to);
}

void CopyDatabase(const Connection &from, const QString &to)
{
    RequireRoomFor(to);
    const QString beside = to + QStringLiteral(".new");
    RemoveDatabase(beside);
    try {
        CreatePrivateFile(beside);
        WriteCopy(from, beside);
        Files::Name(beside, to);
        Files::SyncFolderOf(to);
    } catch (...) {
        QFile::remove(beside);
        QFile::remove(beside + QStringLiteral("-journal"));
        throw;
    }
}

namespace
{

bool IsTaken(const QString &path)
{
    const auto isThere = [](const QString &name) {
        const QFileInfo file(name);
        return file.exists() || file.isSymLink();
    };
    return isThere(path) ||
           std::any_of(std::begin(LogSuffixes), std::end(LogSuffixes),
                       [&](const char *suffix) { return isThere(path + QLatin1String(suffix)); });
}

} // namespace

QString FreeName(const QString &path)
{
    const QFileInfo file(path);
    QString name = path;
    for (int number = 2; IsTaken(name); ++number)
        name =
            QStringLiteral("%1/%2 %3.%4")
                .arg(file.path(), file.completeBaseName(), QString::number(number), file.suffix());
    return name;
}

void RemoveDatabase(const QString &path)
{
    // The logs first: one that stayed behind would be taken for that of the next file of this name.
    for (const char *suffix : LogSuffixes)
        if (const QString log = path + QLatin1String(suffix); QFileInfo::exists(log))
            Files::Kill(log);
    if (QFileInfo::exists(path))
        Files::Kill(path);
}
