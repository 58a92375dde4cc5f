#pragma once

/// A program that dies in the middle of one of its writes to a file. Include it in one source file.

#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace DyingWrites
{

inline long left = -1; ///< writes until death; negative: none is planned

inline ssize_t Write(int file, const void *buffer, size_t count, off_t offset)
{
    if (left > 0 && --left == 0) {
        // Half of it reaches the file.
        syscall(SYS_pwrite64, file, buffer, count / 2, offset);
        raise(SIGKILL);
    }
    return syscall(SYS_pwrite64, file, buffer, count, offset);
}

} // namespace DyingWrites

// Every write of the store to a file comes along here.
extern "C" ssize_t pwrite(int file, const void *buffer, size_t count, off_t offset)
{
    return DyingWrites::Write(file, buffer, count, offset);
}
extern "C" ssize_t pwrite64(int file, const void *buffer, size_t count, off64_t offset)
{
    return DyingWrites::Write(file, buffer, count, offset);
}
