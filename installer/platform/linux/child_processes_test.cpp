// The child-process service on real programs: what pgrep and the privileged command's shell are
// run with, and what comes back from them.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/child_processes.h"
#include "support/signal_state.h"
#include "support/temp_folder.h"

namespace {

using platform::linux_backend::LinuxChildProcesses;

TEST(ChildProcesses, OutputStatusAndSignalComeBackWhole) {
    const struct {
        std::string script;
        std::size_t outputSize, errorSize;
        std::int32_t status;
        bool endedBySignal;
    } rows[] = {
        // Error output first and far beyond a pipe's 64 KiB: a reader that waited on standard
        // output alone would hang.
        {"head -c 4000000 /dev/zero >&2; head -c 3000000 /dev/zero; exit 3", 3000000, 4000000, 3, false},
        {"printf 'a\\0b\\377'; printf 'e\\r\\n' >&2; exit 255", 4, 3, 255, false},
        {"kill -KILL $$", 0, 0, 9, true},
    };
    for (const auto& row : rows) {
        auto result = LinuxChildProcesses().run("/bin/sh", {"-c", row.script});
        ASSERT_TRUE(result) << row.script;
        const platform::ChildProcessResult& got = result.value();
        EXPECT_EQ(std::tuple(got.standardOutput.size(), got.standardError.size(), got.terminationStatus, got.endedBySignal),
                  std::tuple(row.outputSize, row.errorSize, row.status, row.endedBySignal))
            << row.script;
    }
}

TEST(ChildProcesses, TheChildGetsItsArgumentsAsTheyAreAndNoOtherDescriptor) {
    int inheritable = open("/dev/null", O_RDONLY);  // deliberately without O_CLOEXEC
    // The shell's own test looks at the shell's own descriptors: no other process runs.
    auto result = LinuxChildProcesses().run(
        "/bin/sh", {"-c", "printf '[%s]' \"$@\"; for fd in 1 2 $0; do [ -e /proc/$$/fd/$fd ] && printf ' %s' $fd; done",
                    std::to_string(inheritable), "two words", "", "$HOME"});
    close(inheritable);
    ASSERT_TRUE(result);
    EXPECT_EQ(result.value().standardOutput, "[two words][][$HOME] 1 2");
}

// pgrep and the privileged command's shell can be stopped, and can stop others, whatever the
// installer ignores or blocks.
TEST(ChildProcesses, TheChildHandlesEverySignalTheDefaultWay) {
    testing_support::NohupLikeSignals nohup;
    auto result = LinuxChildProcesses().run("/bin/cat", {"/proc/self/status"});
    ASSERT_TRUE(result);
    EXPECT_EQ(testing_support::signalStateIn(result.value().standardOutput), testing_support::SignalState{});
}

TEST(ChildProcesses, AProgramThatCannotStartIsNamedWithTheReason) {
    testing_support::TempFolder folder;
    testing_support::writeFile(folder / "not executable", "#!/bin/sh\n", 0644);
    testing_support::writeFile(folder / "bad interpreter", "#!/no/such/shell\n", 0755);
    const std::pair<std::string, std::string> rows[] = {
        {"/usr/bin/no-such-pgrep", "No such file or directory"},
        {folder / "not executable", "Permission denied"},
        {folder / "bad interpreter", "No such file or directory"},
    };
    for (const auto& [program, reason] : rows) {
        auto result = LinuxChildProcesses().run(program, {"-x"});
        EXPECT_EQ(result ? "started" : result.error().localizedDescription(),
                  "The program \u201C" + program + "\u201D could not be started: " + reason + ".");
    }
}

}  // namespace
