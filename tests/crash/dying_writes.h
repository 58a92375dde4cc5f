#pragma once

/// A program that dies at one of its changes of the disk: in the middle of a write to a file, or just
/// before a file is renamed, deleted or cut. Include it in one source file.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace DyingWrites
{

inline long left = -1; ///< changes until death; negative: none is planned
inline long done = 0;  ///< changes so far

inline bool IsTheLast()
{
    ++done;
    return left > 0 && --left == 0;
}

/// Pipes and events are no part of the disk.
inline bool IsFile(int file)
{
    struct stat status;
    return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

inline ssize_t Write(int file, const void *buffer, size_t count, off_t offset)
{
    if (IsTheLast()) {
        // Half of it reaches the file.
        syscall(SYS_pwrite64, file, buffer, count / 2, offset);
        raise(SIGKILL);
    }
    return syscall(SYS_pwrite64, file, buffer, count, offset);
}

inline ssize_t Append(int file, const void *buffer, size_t count)
{
    if (IsFile(file) && IsTheLast()) {
        syscall(SYS_write, file, buffer, count / 2);
        raise(SIGKILL);
    }
    return syscall(SYS_write, file, buffer, count);
}

inline void DieIfDue()
{
    if (IsTheLast())
        raise(SIGKILL);
}

inline int Delete(const char *path, int flags)
{
    DieIfDue();
    return int(syscall(SYS_unlinkat, AT_FDCWD, path, flags));
}

} // namespace DyingWrites

// Every change of the store, and of ours, comes along here.
extern "C" ssize_t pwrite(int file, const void *buffer, size_t count, off_t offset)
{
    return DyingWrites::Write(file, buffer, count, offset);
}
extern "C" ssize_t pwrite64(int file, const void *buffer, size_t count, off64_t offset)
{
    return DyingWrites::Write(file, buffer, count, offset);
}
extern "C" ssize_t write(int file, const void *buffer, size_t count)
{
    return DyingWrites::Append(file, buffer, count);
}
extern "C" int ftruncate64(int file, off64_t size) noexcept
{
    DyingWrites::DieIfDue();
    return int(syscall(SYS_ftruncate, file, size));
}
extern "C" int ftruncate(int file, off_t size) noexcept
{
    return ftruncate64(file, size);
}
extern "C" int rename(const char *from, const char *to) noexcept
{
    DyingWrites::DieIfDue();
    return int(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
}
extern "C" int unlink(const char *path) noexcept
{
    return DyingWrites::Delete(path, 0);
}
extern "C" int remove(const char *path) noexcept
{
    const int result = DyingWrites::Delete(path, 0);
    return result == 0 || errno != EISDIR ? result : DyingWrites::Delete(path, AT_REMOVEDIR);
}
// A killed program loses nothing that it has written, whether it waited for the disk or not.
extern "C" int fsync(int)
{
    return 0;
}
extern "C" int fdatasync(int)
{
    return 0;
}
