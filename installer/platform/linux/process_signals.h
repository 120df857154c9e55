// Signals by process identifier with kill(2).
#pragma once

#include "platform/process_signals.h"

namespace platform::linux_backend {

class LinuxProcessSignals final : public ProcessSignals {
public:
    int kill(std::int32_t pid, int signal) override;
};

}  // namespace platform::linux_backend
