// Child processes on Linux: posix_spawn, with glibc's pipe2 and posix_spawn_file_actions_addclosefrom_np,
// and a pipe each for standard output and standard error.
//
// Only the two pipe ends reach the child besides its inherited standard input: every other
// descriptor is closed in it, whether or not it was opened close-on-exec. It handles every signal
// the default way, with none blocked, whatever this process ignores or blocks. Both pipes are drained
// while the child runs, so a child that writes more than a pipe holds never blocks. Safe to call
// from several threads at once; it waits only for its own child, by identifier.
#pragma once

#include "platform/child_processes.h"

namespace platform::linux_backend {

class LinuxChildProcesses final : public ChildProcesses {
public:
    Expected<ChildProcessResult, Error> run(const std::string& executable,
                                            const std::vector<std::string>& arguments) override;
};

}  // namespace platform::linux_backend
