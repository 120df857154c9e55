// Sending signals to processes by identifier.
#pragma once

#include <cstdint>

#include "platform/error.h"
#include "platform/expected.h"

namespace platform {

class ProcessSignals {
public:
    virtual ~ProcessSignals() = default;

    // kill(pid, signal); a failure carries the error number it set (`Error::errorNumber`). Signal 0
    // delivers nothing and only probes whether the process exists. An identifier of 0 or below
    // names no process (kill(2) would take it for a process group or for every process): nothing
    // is sent and the answer is ESRCH, as for a process that is gone.
    virtual Expected<void, Error> kill(std::int32_t pid, int signal) = 0;
};

}  // namespace platform
