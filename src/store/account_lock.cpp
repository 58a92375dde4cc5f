#include "store/account_lock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// Empty when there is no such account.
QString LockPath(const QString &accountPath)
{
    const QString account = QFileInfo(accountPath).canonicalFilePath();
    return account.isEmpty() ? QString() : account + QStringLiteral(".lock");
}

/// The holder may have removed the file between our opening and our locking it: a lock on a file
/// that has lost its name holds nobody off.
bool StillHasItsName(int file, const QByteArray &name)
{
    struct stat opened, named;
    return fstat(file, &opened) == 0 && lstat(name.constData(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

} // namespace

AccountLock::Outcome AccountLock::Acquire(const QString &accountPath)
{
    const QString path = LockPath(accountPath);
    if (!path.isEmpty() && path == m_path)
        return Outcome::Taken;
    Release();
    if (path.isEmpty())
        return Outcome::Unguarded;
    const QByteArray name = QFile::encodeName(path);
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    for (;;) {
        bool wasThere = false;
        int file = open(name.constData(), flags | O_CREAT | O_EXCL, 0600);
        if (file < 0 && errno == EEXIST) {
            wasThere = true;
            file = open(name.constData(), flags);
            if (file < 0 && errno == ENOENT)
                continue; // given back this very moment
        }
        if (file < 0)
            return Outcome::Unguarded;
        if (flock(file, LOCK_EX | LOCK_NB) != 0) {
            const bool isHeld = errno == EWOULDBLOCK;
            if (!isHeld && !wasThere)
                unlink(name.constData());
            close(file);
            return isHeld ? Outcome::OpenElsewhere : Outcome::Unguarded;
        }
        if (!StillHasItsName(file, name)) {
            close(file);
            continue;
        }
        m_path = path;
        m_file = file;
        return wasThere ? Outcome::TakenOver : Outcome::Taken;
    }
}

void AccountLock::Release()
{
    if (m_file < 0)
        return;
    // While it is locked, so that nobody can have taken it over.
    unlink(QFile::encodeName(std::exchange(m_path, {})).constData());
    close(std::exchange(m_file, -1));
}

bool AccountLock::Holds(const QString &accountPath) const
{
    return !m_path.isEmpty() && m_path == LockPath(accountPath);
}

bool AccountLock::IsOpenElsewhere(const QString &accountPath) const
{
    const QString path = LockPath(accountPath);
    if (path.isEmpty() || path == m_path)
        return false;
    const int file = open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (file < 0)
        return false;
    const bool isHeld = flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    close(file);
    return isHeld;
}
