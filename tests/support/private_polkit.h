// A polkit authority of the test's own, so that pkexec really asks for administrator rights and
// really gets an answer without a person: a system D-Bus and polkitd, started on tmpfs mounts over
// /run/dbus and /etc/polkit-1/rules.d that only the test's private mount namespace sees (enter it
// first, see private_mounts.h), with one rule that answers every request of one user the same way.
// Everything it started is stopped, and the mounts go, on destruction.
#pragma once

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>

#include "support/private_mounts.h"
#include "support/started_process.h"
#include "support/temp_folder.h"

namespace testing_support {

class PrivatePolkit {
public:
    // Answers every request of `user` with `result`, the name of a polkit.Result ("YES", "NO",
    // "AUTH_ADMIN"...).
    PrivatePolkit(const std::string& user, const std::string& result);

    // None once polkit answers on the bus, otherwise why it does not (for GTEST_SKIP).
    const std::optional<std::string>& failure() const { return failure_; }

    // Registers an authentication agent for process `pid` that dismisses every request, as a
    // person does who closes the password dialog. False when polkit did not take it.
    bool dismissRequestsFor(pid_t pid);

private:
    std::optional<std::string> start(const std::string& user, const std::string& result);

    // Declared in the order of starting: destroyed the other way round.
    std::optional<std::string> failure_;
    std::unique_ptr<TmpfsMount> busFolder_;
    std::unique_ptr<TmpfsMount> rulesFolder_;
    std::unique_ptr<StartedProcess> bus_;
    std::unique_ptr<StartedProcess> authority_;
    TempFolder agentReports_;
    std::unique_ptr<StartedProcess> agent_;
};

}  // namespace testing_support
