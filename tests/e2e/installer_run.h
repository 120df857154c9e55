// Running the built installer as a user would, and watching how it ends.
//
// The test program must be a child subreaper (see `becomeSubreaper`): the Kelvo that the installer
// starts is detached from it and is re-parented to the test, which then stops and reaps it.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace e2e {

// Seconds on the monotonic clock, the clock Kelvo stamps its launch record with.
double monotonicNow();

// Makes this process the reaper of its orphaned descendants. False when the system refuses.
bool becomeSubreaper();

class InstallerRun {
public:
    // Mounts `image` read-only at /Volumes/`volume` in a mount namespace of the installer's own
    // and starts the installer bundle at its root from there, on X display `display`, with
    // `arguments`. The installer's output goes to `log`.
    static InstallerRun fromDiskImage(const std::string& image, const std::string& volume, const std::string& display,
                                      const std::vector<std::string>& arguments, const std::string& log);

    // Starts the installer bundle at `bundle` where it lies.
    static InstallerRun fromBundle(const std::string& bundle, const std::string& display,
                                   const std::vector<std::string>& arguments, const std::string& log);

    InstallerRun(InstallerRun&& other) noexcept;
    // Kills the installer if it is still running, and reaps it.
    ~InstallerRun();

    bool started() const { return pid_ > 0; }

    // Waits up to `timeoutSeconds` for the installer to end; the monotonic time at which it had
    // ended, or none when it is still running.
    std::optional<double> waitForExit(double timeoutSeconds);

    // True once it has ended normally with status 0 (the installer sets no status of its own).
    bool exitedCleanly() const { return ended_ && exitStatus_ == 0; }

private:
    explicit InstallerRun(pid_t pid) : pid_(pid) {}

    pid_t pid_ = -1;
    bool ended_ = false;
    int exitStatus_ = -1;
    double endedAt_ = 0;
};

// Stops every Kelvo the record says was started (SIGTERM, then SIGKILL) and reaps it.
void stopRecordedKelvos(const std::string& record);

// True while `mountPoint` is mounted in the mount namespace of process `pid`.
bool isMountedFor(pid_t pid, const std::string& mountPoint);

}  // namespace e2e
