// Whether a test has the machine to itself: tools/test.sh runs each test program, as root, in a
// process and mount namespace of its own, where it may start, stop and look for Kelvo processes,
// run the privileged install command (which stops every Kelvo it sees) and mount file systems.
#pragma once

#include <optional>
#include <string>

namespace testing_support {

// None inside such a namespace; otherwise why the test must skip, for GTEST_SKIP.
std::optional<std::string> ownProcessNamespaceMissing();

}  // namespace testing_support
