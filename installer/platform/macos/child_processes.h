// Child processes with NSTask and an NSPipe each for standard output and standard error.
//
// Both pipes are read to their end while the child runs, standard error on a background queue and
// standard output on the calling thread, so a child that writes more than a pipe holds never
// blocks. A failed read of either fails the run, with the read's error, once the child has ended.
// Safe to call from several threads at once; each call waits only for its own child. Not for the
// main thread: waiting for the child runs the calling thread's run loop.
#pragma once

#include "platform/child_processes.h"

namespace platform::macos {

class MacChildProcesses final : public ChildProcesses {
public:
    Expected<ChildProcessResult, Error> run(const std::string& executable,
                                            const std::vector<std::string>& arguments) override;
};

}  // namespace platform::macos
