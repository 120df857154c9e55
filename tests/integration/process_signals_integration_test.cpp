#include <gtest/gtest.h>

#include <cerrno>

#include "platform/posix/process_signals.h"

namespace {

// kill(2) reads 0 as "my process group" and -1 as "every process I may signal": a pgrep line of
// "0" or "-1" must not turn the stopping of Kelvo into a signal to all of them. Probed with
// signal 0, so a fault here reports instead of doing harm.
TEST(ProcessSignals, IdentifiersThatNameNoProcessAreTakenAsGone) {
    for (std::int32_t pid : {0, -1}) {
        EXPECT_EQ(platform::posix::PosixProcessSignals().kill(pid, 0), ESRCH) << pid;
    }
}

}  // namespace
