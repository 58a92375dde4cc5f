#pragma once

/// Counts how often the program waits for the disk: every sync of the store, of files and folders,
/// comes along here. It also knows which names a power failure would take. Include it in one source
/// file of a program.

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <set>
#include <string>

namespace SyncCounter
{

inline std::atomic<int> syncs;
/// The folders that got a name by a rename and were not synced since.
inline std::set<std::string> unsyncedFolders;

inline void NoteSync(int file)
{
    char path[4096];
    const ssize_t size =
        readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path, sizeof path);
    if (size > 0)
        unsyncedFolders.erase(std::string(path, size_t(size)));
}

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
    SyncCounter::NoteSync(file);
    return int(syscall(SYS_fsync, file));
}
extern "C" int rename(const char *from, const char *to)
{
    const int result = int(syscall(SYS_rename, from, to));
    if (result == 0) {
        const std::string path = to;
        SyncCounter::unsyncedFolders.insert(path.substr(0, path.rfind('/')));
    }
    return result;
}
extern "C" int fdatasync(int file)
{
    ++SyncCounter::syncs;
    return int(syscall(SYS_fdatasync, file));
}
