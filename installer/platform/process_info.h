// What the running process knows about itself.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

class ProcessInfo {
public:
    virtual ~ProcessInfo() = default;

    // The whole argument list the process was started with, element 0 (the program) included,
    // untouched by any toolkit that strips its own options.
    virtual std::vector<std::string> arguments() = 0;

    virtual std::int32_t processIdentifier() = 0;

    // The effective user id (geteuid).
    virtual std::uint32_t effectiveUserId() = 0;
};

}  // namespace platform
