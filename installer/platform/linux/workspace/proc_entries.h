// Reading what the kernel tells about a process under /proc, as cheaply as a scan of every process
// of the machine needs: each reader makes one or two system calls and parses only what it returns.
//
// Any process may exit between two reads; every reader gives none when the entry is gone or cannot
// be read, and callers treat that as "not this process any more".
//
// None of them waits on the file system a process runs from: the kernel answers from its own
// records (the executable's path included, which it keeps as a name), so a process whose files lie
// on a stalled network mount is read as quickly as any other.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform::linux_backend {

// From /proc/<pid>/stat.
struct ProcessState {
    char state = '?';                // 'R', 'S', 'Z' (zombie), 'X' (dead), …
    std::uint64_t startTime = 0;     // clock ticks after boot: with the pid, names one process for good
};
std::optional<ProcessState> readProcessState(std::int32_t pid);

// From /proc/<pid>/status.
struct ProcessOwner {
    std::int32_t threadGroup = 0;    // the process a thread belongs to; equals the pid for a process
    std::uint32_t realUserId = 0;
};
std::optional<ProcessOwner> readProcessOwner(std::int32_t pid);

// The target of /proc/<pid>/exe, without the " (deleted)" the kernel appends once the file is gone.
// None for a zombie, a kernel thread, or a process of another user that this one may not inspect.
std::optional<std::string> readExecutablePath(std::int32_t pid);

// The identifiers of every process on the machine (the numeric entries of /proc), ascending.
std::vector<std::int32_t> listProcessIdentifiers();

}  // namespace platform::linux_backend
