// A polkit authority of the test's own, so that pkexec really asks for administrator rights and
// really gets an answer without a person (see private_polkit.sh). Only in the test's own
// namespaces (isolation.h).
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace testing_support {

// Starts a system bus and polkitd that answer every request of `user` with `result`, the name of
// a polkit.Result ("YES", "NO", "AUTH_ADMIN"...), in place of the test's previous one. None once
// polkit answers, otherwise why it does not (for GTEST_SKIP).
std::optional<std::string> startPrivatePolkit(const std::string& user, const std::string& result);

// Registers an authentication agent for process `pid` that dismisses every request, as a person
// does who closes the password dialog. False when polkit did not take it.
bool dismissPolkitRequestsFor(pid_t pid);

}  // namespace testing_support
