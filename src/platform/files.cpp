#include "platform/files.h"

#include "base/runtime_error.h"

#include <QFile>
#include <QFileInfo>

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

/// A file that is written beside the one whose place it takes. Its name is always the same: what a
/// program that died has left there is written over by the next one.
class NewFile
{
public:
    explicit NewFile(const QString &path)
        : m_path(QFileInfo::exists(path) ? QFileInfo(path).canonicalFilePath() : path),
          m_file(m_path + QStringLiteral(".new"))
    {
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            throw FromFileError(m_file, m_path);
    }
    ~NewFile()
    {
        if (!m_isInPlace)
            m_file.remove();
    }
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    QFile &File() { return m_file; }

    void Write(QByteArrayView content)
    {
        while (!content.isEmpty()) {
            const qint64 written = m_file.write(content.data(), content.size());
            if (written <= 0) // a disk that fills up takes a part before it fails
                throw FromFileError(m_file, m_path);
            content = content.sliced(written);
        }
    }

    /// All of it is written, and on the disk.
    void Complete()
    {
        m_file.close();
        Files::Sync(m_file.fileName());
    }
    void TakePlace()
    {
        Files::Name(m_file.fileName(), m_path);
        m_isInPlace = true;
    }

private:
    QString m_path; ///< behind any link, which stays
    QFile m_file;
    bool m_isInPlace = false;
};

} // namespace

void Files::RequireFolderOf(const QString &path)
{
    const QFileInfo folder(QFileInfo(path).absolutePath());
    if (!folder.isDir())
        throw RuntimeError(RuntimeError::PathNotFoundNumber,
                           QStringLiteral("Path not found: ") + path);
    if (!folder.isWritable())
        throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                           QStringLiteral("Permission denied: ") + path);
}

bool Files::FileExists(const QString &path)
{
    return QFileInfo(path).isFile();
}

void Files::CopyFile(const QString &from, const QString &to, bool overwrite,
                     const std::function<void(const QString &)> &check, NameSync nameSync)
{
    QFile source(from);
    if (!source.exists())
        throw RuntimeError(RuntimeError::FileNotFoundNumber,
                           QStringLiteral("File not found: ") + from);
    if (!overwrite && QFileInfo::exists(to))
        throw RuntimeError(RuntimeError::FileExistsNumber,
                           QStringLiteral("File already exists: ") + to);
    RequireFolderOf(to);
    if (!source.open(QIODevice::ReadOnly))
        throw FromFileError(source, from);
    NewFile target(to);
    target.File().setPermissions(target.File().permissions() & (source.permissions() | OwnersOwn));
    while (!source.atEnd()) {
        const QByteArray block = source.read(1 << 20);
        if (source.error() != QFileDevice::NoError)
            throw FromFileError(source, from);
        target.Write(block);
    }
    target.Complete();
    if (check)
        check(target.File().fileName());
    target.TakePlace();
    if (nameSync == NameSync::AtOnce)
        SyncFolderOf(to);
}

void Files::WriteFile(const QString &path, QByteArrayView content)
{
    RequireFolderOf(path);
    if (const QFileInfo file(path); file.exists() && !file.isWritable())
        throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                           QStringLiteral("Permission denied: ") + path);
    NewFile target(path);
    target.Write(content);
    target.Complete();
    target.TakePlace();
    SyncFolderOf(path);
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

void Files::SyncFolderOf(const QString &path)
{
    // Behind a link the file lies in another folder.
    const QFileInfo file(path);
    Sync(file.isSymLink() ? QFileInfo(file.canonicalFilePath()).absolutePath()
                          : file.absolutePath());
}

void Files::RestrictToOwner(const QString &path)
{
    const QFile::Permissions wide = QFile::permissions(path);
    if (wide & ~OwnersOwn)
        QFile::setPermissions(path, wide & OwnersOwn);
}
