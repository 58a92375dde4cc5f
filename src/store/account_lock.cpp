#include "store/account_lock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
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

/// A name in the kernel, of which one socket can be bound at a time; it goes with its process. Empty when
/// there is no such file.
QByteArray InodeName(const QString &accountPath)
{
    struct stat file;
    if (stat(QFile::encodeName(accountPath).constData(), &file) != 0)
        return {};
    return QByteArray("quillon-account-") + QByteArray::number(quint64(file.st_dev), 16) + '-' +
           QByteArray::number(quint64(file.st_ino), 16);
}

/// A socket of this name; -1, with EADDRINUSE, when there is one already.
int BindTo(const QByteArray &inodeName)
{
    const int bound = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (bound < 0)
        return -1;
    sockaddr_un address{};
    address.sun_family = AF_UNIX; // a name that begins with a zero lies in no folder
    std::memcpy(address.sun_path + 1, inodeName.constData(), size_t(inodeName.size()));
    const auto size = socklen_t(offsetof(sockaddr_un, sun_path) + 1 + size_t(inodeName.size()));
    if (bind(bound, reinterpret_cast<const sockaddr *>(&address), size) == 0)
        return bound;
    const int error = errno;
    close(bound);
    errno = error;
    return -1;
}

} // namespace

AccountLock::Outcome AccountLock::Acquire(const QString &accountPath)
{
    const QString path = LockPath(accountPath);
    if (!path.isEmpty() && path == m_path) {
        if (TakeInode(accountPath)) // the file may be another one now, under its old name
            return Outcome::Taken;
        Release();
        return Outcome::OpenElsewhere;
    }
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
        if (!TakeInode(accountPath)) {
            Release();
            return Outcome::OpenElsewhere;
        }
        return wasThere ? Outcome::TakenOver : Outcome::Taken;
    }
}

/// False when another lock has it. Where there are no such names the account goes without.
bool AccountLock::TakeInode(const QString &accountPath)
{
    const QByteArray name = InodeName(accountPath);
    if (name == m_inode)
        return true;
    ReleaseInode();
    m_socket = BindTo(name);
    if (m_socket < 0)
        return errno != EADDRINUSE;
    m_inode = name;
    // While it is held no other file gets the number, even when the account is replaced or deleted. A
    // descriptor of this kind leaves the locks of the store alone when it is closed.
    m_account = open(QFile::encodeName(accountPath).constData(), O_PATH | O_CLOEXEC);
    return true;
}

void AccountLock::ReleaseInode()
{
    if (m_socket >= 0)
        close(std::exchange(m_socket, -1));
    if (m_account >= 0)
        close(std::exchange(m_account, -1));
    m_inode.clear();
}

void AccountLock::Release()
{
    ReleaseInode();
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
    if (const QByteArray inode = InodeName(accountPath); inode != m_inode) {
        const int free = BindTo(inode);
        if (free < 0 && errno == EADDRINUSE)
            return true;
        if (free >= 0)
            close(free);
    }
    const int file = open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (file < 0)
        return false;
    const bool isHeld = flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    close(file);
    return isHeld;
}
