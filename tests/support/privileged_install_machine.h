// What running the real privileged install command needs of this machine: root (so the command
// runs without a password prompt), this project's ditto at /usr/bin/ditto, pgrep, and no copy of
// Kelvo running that the command would stop.
#pragma once

#include <optional>
#include <string>

#include "support/command.h"

namespace testing_support {

// None when the command can run here; otherwise why not, for GTEST_SKIP.
inline std::optional<std::string> privilegedInstallUnavailable() {
    if (runCommand("id -u").output != "0\n") return "the privileged command runs without a prompt only as root";
    if (runCommand("/usr/bin/ditto --version 2>/dev/null").output.find("Kelvo installer project") == std::string::npos) {
        return "/usr/bin/ditto is missing or another program (tools/install-ditto.sh puts this project's there)";
    }
    if (runCommand("/usr/bin/pgrep -x Kelvo").exitStatus != 1) return "a Kelvo is running, or pgrep is missing";
    return std::nullopt;
}

}  // namespace testing_support
