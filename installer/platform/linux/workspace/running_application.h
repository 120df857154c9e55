// One running application on Linux: a process of this user whose executable lies directly in an
// app bundle's "Contents/MacOS/" folder.
//
// A handle names one process for good, by its identifier and its start time: once that process has
// gone the handle reports it terminated and signals nothing, even when a new process has been given
// the same identifier since.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/workspace.h"

namespace platform::linux_backend {

class LinuxRunningApplication final : public RunningApplication {
public:
    LinuxRunningApplication(std::int32_t pid, std::uint64_t startTime, std::string executablePath,
                            std::optional<std::string> bundleIdentifier);

    std::int32_t processIdentifier() const override { return pid_; }
    // True once the process is gone, is a zombie, or its identifier names another process now.
    bool isTerminated() const override;
    std::optional<std::string> bundleIdentifier() const override { return bundleIdentifier_; }
    std::optional<FileURL> executableURL() const override;
    // SIGTERM; true when it was delivered to this very process.
    bool terminate() override;
    // SIGKILL; true when it was delivered to this very process.
    bool forceTerminate() override;

private:
    bool sendSignal(int signal) const;

    std::int32_t pid_;
    std::uint64_t startTime_;
    std::string executablePath_;
    std::optional<std::string> bundleIdentifier_;
};

// Bundle identifiers already read during one scan, by bundle path, so that several copies of one
// app cost one Info.plist read.
using BundleIdentifierCache = std::map<std::string, std::optional<std::string>>;

// The application running as `pid` when it is a live process whose real user is `userId` and whose
// executable lies in a bundle's "Contents/MacOS/"; none otherwise. Its bundle identifier is none
// when the bundle's Info.plist is not a small regular file, or has not been read within half a
// second (a bundle on a stalled mount): the scan of other applications never waits longer.
std::shared_ptr<RunningApplication> inspectRunningApplication(std::int32_t pid, std::uint32_t userId,
                                                              BundleIdentifierCache& cache);

}  // namespace platform::linux_backend
