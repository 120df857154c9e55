// What a test needs of the machine before it may start, stop or look for Kelvo processes, or run
// the privileged install command (which stops every Kelvo it sees): the test command's own
// process namespace, and there this build's ditto at /usr/bin/ditto (see tools/test.sh).
#pragma once

#include <optional>
#include <string>

namespace testing_support {

// None inside the namespace that tools/test.sh gives the tests as root; otherwise why the test
// must skip, for GTEST_SKIP.
std::optional<std::string> ownProcessNamespaceMissing();

// None when the real privileged command can run here without a prompt and without touching
// anything outside the test; otherwise why not.
std::optional<std::string> privilegedCommandUnavailable();

}  // namespace testing_support
