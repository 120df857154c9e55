// The workspace on AppKit's shared workspace: this user's running applications, and opening an
// application bundle the way the Finder does.
#pragma once

#include "platform/workspace.h"

namespace platform::macos {

class MacWorkspace final : public Workspace {
public:
    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override;
    std::shared_ptr<RunningApplication> runningApplicationWithProcessIdentifier(std::int32_t pid) override;

    // `completion` runs on the thread AppKit calls its completion handler on, once the
    // application has been started, or with the error that prevented it.
    void openApplication(const FileURL& url, const OpenConfiguration& configuration,
                         OpenCompletion completion) override;
};

}  // namespace platform::macos
