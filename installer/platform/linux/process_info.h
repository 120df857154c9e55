// The process's own arguments and identity, from /proc and POSIX.
#pragma once

#include "platform/process_info.h"

namespace platform::linux_backend {

class LinuxProcessInfo final : public ProcessInfo {
public:
    // Read from /proc/self/cmdline, so options a toolkit removed from argv are still there; without
    // /proc, the list recorded at start-up, before any toolkit saw it.
    std::vector<std::string> arguments() override;
    std::int32_t processIdentifier() override;
    std::uint32_t effectiveUserId() override;
};

}  // namespace platform::linux_backend
