#pragma once

/// The lock by which one program at a time works on an account file.
///
///     AccountLock lock;
///     lock.Acquire("/home/ann/Broker.mdb")        Outcome::Taken
///     lock.Release();
///
/// It is a lock of the operating system on an empty file beside the account, "Broker.mdb.lock", so
/// that it ends with its process, however that dies. The file goes when the lock is given back: one
/// that lies there unlocked tells that the account was not closed properly.
///
/// An account is known by its real path: two ways to one file through a symbolic link are one
/// account. Two names of one file (a hard link) have two such files beside them, so a name in the kernel
/// that is made of device and inode is taken as well. Two locks exclude each other inside one process as
/// well. Where no lock can be had (a folder that cannot be written, a file system without locks) the
/// account goes without.

#include <QString>

class AccountLock
{
public:
    enum class Outcome
    {
        Taken,
        TakenOver, ///< from a program that died
        OpenElsewhere,
        Unguarded ///< no lock can be had here, or there is no such account
    };

    AccountLock() = default;
    ~AccountLock() { Release(); }
    AccountLock(const AccountLock &) = delete;
    AccountLock &operator=(const AccountLock &) = delete;

    /// Gives back the lock of another account first; the account held already is Taken again.
    Outcome Acquire(const QString &accountPath);
    void Release();
    bool Holds(const QString &accountPath) const;

    /// Whether another lock than this one holds the account.
    bool IsOpenElsewhere(const QString &accountPath) const;

private:
    bool TakeInode(const QString &accountPath);
    void ReleaseInode();

    QString m_path; ///< of the lock file; empty: nothing is held
    int m_file = -1;
    QByteArray m_inode; ///< name of the account's device and inode; empty: not held
    int m_socket = -1;
    int m_account = -1; ///< keeps the inode from being given to another file
};
