// Running a program as a child process and collecting what it wrote.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/expected.h"

namespace platform {

struct ChildProcessResult {
    // The exit status when the program exited; the signal number when a signal ended it.
    std::int32_t terminationStatus = 0;
    std::string standardOutput;  // raw bytes, all of them
    std::string standardError;   // raw bytes, all of them
    bool endedBySignal = false;  // true when a signal ended it
};

class ChildProcesses {
public:
    virtual ~ChildProcesses() = default;

    // Runs the program at the absolute path `executable` with `arguments` (not including the
    // program itself), its standard output and standard error each on a pipe of their own, its
    // environment, working directory and standard input inherited. Blocks until it has exited
    // and both pipes are at end of file; never deadlocks however much the child writes. Fails
    // when the program cannot be started, or when what it wrote cannot be read, with a readable
    // description of why.
    virtual Expected<ChildProcessResult, Error> run(const std::string& executable,
                                                    const std::vector<std::string>& arguments) = 0;
};

}  // namespace platform
