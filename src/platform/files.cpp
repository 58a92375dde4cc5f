#include "platform/files.h"

#include "base/runtime_error.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace
{

RuntimeError FromErrno(int error, const QString &path)
{
    switch (error) {
    case ENOENT:
        return {RuntimeError::FileNotFoundNumber, QStringLiteral("File not found: ") + path};
    case ENOSPC:
    case EDQUOT:
        return {RuntimeError::DiskFullNumber, QStringLiteral("Disk full: ") + path};
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
        return {RuntimeError::PermissionDeniedNumber, QStringLiteral("Permission denied: ") + path};
    default:
        return {RuntimeError::PathAccessNumber, QStringLiteral("Path/File access error: ") + path};
    }
}

RuntimeError FromFileError(const QFileDevice &file, const QString &path)
{
    switch (file.error()) {
    case QFileDevice::ResourceError:
    case QFileDevice::WriteError:
        return {RuntimeError::DiskFullNumber, QStringLiteral("Disk full or not writable: ") + path +
                                                  QStringLiteral(" (") + file.errorString() +
                                                  QLatin1Char(')')};
    case QFileDevice::PermissionsError:
        return {RuntimeError::PermissionDeniedNumber, QStringLiteral("Permission denied: ") + path};
    default:
        return {RuntimeError::PathAccessNumber, QStringLiteral("Path/File access error: ") + path +
                                                    QStringLiteral(" (") + file.errorString() +
                                                    QLatin1Char(')')};
    }
}

constexpr QFile::Permissions OwnersOwn =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;

} // namespace

bool Files::FileExists(const QString &path)
{
    return QFileInfo(path).isFile();
}

void Files::CopyFile(const QString &from, const QString &to, bool overwrite)
{
    QFile source(from);
    if (!source.exists())
        throw RuntimeError(RuntimeError::FileNotFoundNumber,
                           QStringLiteral("File not found: ") + from);
    if (!overwrite && QFileInfo::exists(to))
        throw RuntimeError(RuntimeError::FileExistsNumber,
                           QStringLiteral("File already exists: ") + to);
    const QFileInfo folder(QFileInfo(to).absolutePath());
    if (!folder.isDir())
        throw RuntimeError(RuntimeError::PathNotFoundNumber,
                           QStringLiteral("Path not found: ") + to);
    if (!folder.isWritable())
        throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                           QStringLiteral("Permission denied: ") + to);
    if (!source.open(QIODevice::ReadOnly))
        throw FromFileError(source, from);
    QSaveFile target(to);
    if (!target.open(QIODevice::WriteOnly))
        throw FromFileError(target, to);
    target.setPermissions(target.permissions() & (source.permissions() | OwnersOwn));
    while (!source.atEnd()) {
        const QByteArray block = source.read(1 << 20);
        if (source.error() != QFileDevice::NoError)
            throw FromFileError(source, from);
        for (qint64 written = 0; written < block.size();) {
            const qint64 part = target.write(block.constData() + written, block.size() - written);
            if (part <= 0) // a disk that fills up takes a part before it fails
                throw FromFileError(target, to);
            written += part;
        }
    }
    if (!target.commit())
        throw FromFileError(target, to);
}

void Files::Kill(const QString &path)
{
    if (std::remove(QFile::encodeName(path).constData()) != 0)
        throw FromErrno(errno, path);
}

void Files::Name(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0)
        return;
    const int error = errno;
    if (error == ENOENT && QFileInfo::exists(from))
        throw RuntimeError(RuntimeError::PathNotFoundNumber,
                           QStringLiteral("Path not found: ") + to);
    throw FromErrno(error, from);
}

void Files::Sync(const QString &path)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDONLY);
    if (file < 0)
        throw FromErrno(errno, path);
    const int error = fsync(file) == 0 ? 0 : errno;
    close(file);
    if (error != 0 && error != EINVAL && error != EROFS)
        throw FromErrno(error, path);
}

void Files::RestrictToOwner(const QString &path)
{
    const QFile::Permissions wide = QFile::permissions(path);
    if (wide & ~OwnersOwn)
        QFile::setPermissions(path, wide & OwnersOwn);
}
