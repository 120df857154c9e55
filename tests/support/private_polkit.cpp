#include "support/private_polkit.h"

#include "support/command.h"

namespace testing_support {
namespace {

std::string script() { return shellWord(std::string(KELVO_SOURCE_FOLDER) + "/tests/support/private_polkit.sh"); }

}  // namespace

std::optional<std::string> startPrivatePolkit(const std::string& user, const std::string& result) {
    CommandResult started = runCommand(script() + " start " + shellWord(user) + " " + shellWord(result) + " 2>&1");
    if (started.exitStatus == 0) return std::nullopt;
    return started.output;
}

bool dismissPolkitRequestsFor(pid_t pid) {
    return runCommand(script() + " dismiss " + std::to_string(pid) + " " +
                      shellWord(buildFolder() + "/tests/support/dismissing_polkit_agent")).exitStatus == 0;
}

}  // namespace testing_support
