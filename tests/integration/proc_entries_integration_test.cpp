#include <gtest/gtest.h>

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "platform/linux/proc_entries.h"

namespace {

using namespace platform::linux_backend;

// A child that renames itself to `name` and then sleeps or exits; reaped by the caller.
pid_t startChild(const char* name, bool exitAtOnce) {
    pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_NAME, name);
        if (exitAtOnce) _exit(0);
        for (;;) pause();
    }
    return child;
}

TEST(ProcEntries, StateAndStartTimeSurviveAProcessNameFullOfParentheses) {
    // A name that fools a parser which splits /proc/<pid>/stat at the first ')' or at blanks.
    pid_t sleeping = startChild("a) R 1 2 (b", false);
    ASSERT_GT(sleeping, 0);
    std::optional<ProcessState> state;
    for (int tries = 0; tries < 200; ++tries) {  // until the rename shows and it sleeps in pause()
        state = readProcessState(sleeping);
        if (state && state->state == 'S') break;
        usleep(5000);
    }
    ASSERT_TRUE(state);
    EXPECT_EQ(state->state, 'S');
    std::optional<ProcessState> self = readProcessState(getpid());
    ASSERT_TRUE(self);
    EXPECT_GE(state->startTime, self->startTime) << "the child started after this process";

    kill(sleeping, SIGKILL);
    siginfo_t info{};
    waitid(P_PID, static_cast<id_t>(sleeping), &info, WEXITED | WNOWAIT);
    std::optional<ProcessState> zombie = readProcessState(sleeping);
    ASSERT_TRUE(zombie);
    EXPECT_EQ(zombie->state, 'Z');
    EXPECT_EQ(zombie->startTime, state->startTime) << "the same process, by its start time";
    EXPECT_FALSE(readExecutablePath(sleeping)) << "a zombie has no executable";
    waitpid(sleeping, nullptr, 0);
    EXPECT_FALSE(readProcessState(sleeping));
}

TEST(ProcEntries, OwnerExecutableAndListingOfThisProcess) {
    std::optional<ProcessOwner> owner = readProcessOwner(getpid());
    ASSERT_TRUE(owner);
    EXPECT_EQ(owner->realUserId, getuid());
    EXPECT_EQ(owner->threadGroup, getpid());
    char self[4096];
    ssize_t length = readlink("/proc/self/exe", self, sizeof self);
    ASSERT_GT(length, 0);
    EXPECT_EQ(readExecutablePath(getpid()), std::string(self, static_cast<std::size_t>(length)));
    std::vector<std::int32_t> all = listProcessIdentifiers();
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
    EXPECT_TRUE(std::binary_search(all.begin(), all.end(), getpid()));
    EXPECT_TRUE(std::binary_search(all.begin(), all.end(), getppid()));
}

}  // namespace
