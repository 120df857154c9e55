// The process's own arguments and identity, from Foundation's process information and POSIX.
#pragma once

#include "platform/process_info.h"

namespace platform::macos {

class MacProcessInfo final : public ProcessInfo {
public:
    // NSProcessInfo's list, which AppKit leaves whole: element 0 is the executable's path.
    std::vector<std::string> arguments() override;
    std::int32_t processIdentifier() override;
    std::uint32_t effectiveUserId() override;
};

}  // namespace platform::macos
