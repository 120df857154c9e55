// Sending signals to processes by identifier.
#pragma once

#include <cstdint>

namespace platform {

class ProcessSignals {
public:
    virtual ~ProcessSignals() = default;

    // kill(pid, signal): 0 when the call succeeded, otherwise the error number it set. Signal 0
    // delivers nothing and only probes whether the process exists.
    virtual int kill(std::int32_t pid, int signal) = 0;
};

}  // namespace platform
