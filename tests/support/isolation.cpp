#include "support/isolation.h"

#include <unistd.h>

#include <filesystem>

#include "support/command.h"

namespace testing_support {

std::optional<std::string> ownProcessNamespaceMissing() {
    // The namespace's first process is the subreaper that tools/test.sh starts in it.
    std::error_code error;
    if (std::filesystem::equivalent("/proc/1/exe", buildFolder() + "/tests/support/subreaper", error)) {
        return std::nullopt;
    }
    return "it would see every Kelvo on the machine: run it through tools/test.sh as root, which gives "
           "the tests a process namespace of their own";
}

std::optional<std::string> privilegedCommandUnavailable() {
    if (geteuid() != 0) return "the privileged command runs without a prompt only as root";
    if (auto why = ownProcessNamespaceMissing()) return why;
    if (runCommand("/usr/bin/ditto --version").output.find("Kelvo installer project") == std::string::npos) {
        return "/usr/bin/ditto is not this project's";
    }
    return std::nullopt;
}

}  // namespace testing_support
