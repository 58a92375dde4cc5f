#pragma once

/// Counts how often the program waits for the disk: every sync of the store, of files and folders,
/// comes along here. Include it in one source file of a program.

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>

namespace SyncCounter
{

inline std::atomic<int> syncs;

inline void Reset()
{
    syncs = 0;
}
inline int Count()
{
    return syncs;
}

} // namespace SyncCounter

extern "C" int fsync(int file)
{
    ++SyncCounter::syncs;
    return int(syscall(SYS_fsync, file));
}
extern "C" int fdatasync(int file)
{
    ++SyncCounter::syncs;
    return int(syscall(SYS_fdatasync, file));
}
