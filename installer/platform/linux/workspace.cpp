#include <unistd.h>

#include "platform/linux/workspace/proc_entries.h"
#include "platform/linux/workspace/running_application.h"
#include "platform/linux/workspace.h"

namespace platform::linux_backend {

std::vector<std::shared_ptr<RunningApplication>> LinuxWorkspace::runningApplications() {
    std::uint32_t userId = static_cast<std::uint32_t>(geteuid());
    BundleIdentifierCache cache;
    std::vector<std::shared_ptr<RunningApplication>> applications;
    for (std::int32_t pid : listProcessIdentifiers()) {
        if (auto application = inspectRunningApplication(pid, userId, cache)) {
            applications.push_back(std::move(application));
        }
    }
    return applications;
}

std::shared_ptr<RunningApplication> LinuxWorkspace::runningApplicationWithProcessIdentifier(std::int32_t pid) {
    if (pid <= 0) return nullptr;
    BundleIdentifierCache cache;
    return inspectRunningApplication(pid, static_cast<std::uint32_t>(geteuid()), cache);
}

}  // namespace platform::linux_backend
