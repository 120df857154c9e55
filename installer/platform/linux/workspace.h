// The workspace on Linux.
//
// Running applications are the processes of this user whose executable lies in an app bundle's
// "Contents/MacOS/" folder; their bundle identifier comes from that bundle's Contents/Info.plist.
// Opening an application starts the executable its Info.plist names, detached from the installer.
#pragma once

#include "platform/workspace.h"

namespace platform::linux_backend {

class LinuxWorkspace final : public Workspace {
public:
    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override;
    std::shared_ptr<RunningApplication> runningApplicationWithProcessIdentifier(std::int32_t pid) override;

    // Starts "<bundle>/Contents/MacOS/<CFBundleExecutable>" with the configured arguments in a
    // session of its own, as a grandchild that is never the installer's child (so it is never the
    // installer's zombie), working folder "/", standard streams on /dev/null and no other
    // descriptor of the installer's, every signal handled the default way and none blocked. `activates` has no counterpart without a window server that
    // brings processes forward, and is not acted on. `completion` runs on a background thread once
    // the program has been started, or with why it could not be.
    void openApplication(const FileURL& url, const OpenConfiguration& configuration,
                         OpenCompletion completion) override;
};

}  // namespace platform::linux_backend
