// Signals to processes by identifier, on the real kill(2).
#include "platform/posix/process_signals.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

// kill(2) reads 0 as "my process group" and -1 as "every process I may signal": a pgrep line of
// "0" or "-1" must not become a signal to all of them. Probed with signal 0, which harms nothing.
TEST(ProcessSignals, IdentifiersThatNameNoProcessAreTakenAsGone) {
    for (std::int32_t pid : {0, -1}) {
        auto probe = platform::posix::PosixProcessSignals().kill(pid, 0);
        EXPECT_EQ(probe ? 0 : probe.error().errorNumber(), ESRCH) << pid;
    }
}

}  // namespace
