#include <gtest/gtest.h>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include "platform/posix/child_processes.h"
#include "support/temp_folder.h"

namespace {

using platform::posix::PosixChildProcesses;

platform::ChildProcessResult shell(const std::string& script) {
    auto result = PosixChildProcesses().run("/bin/sh", {"-c", script});
    if (!result) {
        ADD_FAILURE() << script << ": " << result.error().localizedDescription();
        return {};
    }
    return result.value();
}

TEST(ChildProcesses, MegabytesOnBothPipesDoNotDeadlock) {
    // Error output first and far beyond a pipe's 64 KiB: a reader that waited on standard output
    // alone would hang here.
    auto result = shell("head -c 4000000 /dev/zero >&2; head -c 3000000 /dev/zero; "
                        "head -c 1000000 /dev/zero >&2; exit 3");
    EXPECT_EQ(result.standardOutput.size(), 3000000u);
    EXPECT_EQ(result.standardError.size(), 5000000u);
    EXPECT_EQ(result.terminationStatus, 3);
}

TEST(ChildProcesses, TerminationStatusIsTheExitStatusOrTheSignalNumber) {
    const struct {
        const char* script;
        std::int32_t status;
    } rows[] = {
        {"exit 0", 0}, {"exit 1", 1}, {"exit 2", 2}, {"exit 255", 255},
        {"kill -TERM $$", 15}, {"kill -KILL $$", 9}, {"kill -SEGV $$", 11},
    };
    for (const auto& row : rows) EXPECT_EQ(shell(row.script).terminationStatus, row.status) << row.script;
}

TEST(ChildProcesses, OutputIsKeptByteForByteOnItsOwnPipe) {
    auto result = shell("printf 'a\\0b\\377\\n'; printf 'err\\r\\n' >&2");
    EXPECT_EQ(result.standardOutput, std::string("a\0b\xFF\n", 5));
    EXPECT_EQ(result.standardError, "err\r\n");
}

TEST(ChildProcesses, ArgumentsGoThroughUnchanged) {
    auto result = PosixChildProcesses().run("/usr/bin/printf", {"[%s]", "two words", "", "*", "$HOME"});
    ASSERT_TRUE(result);
    EXPECT_EQ(result.value().standardOutput, "[two words][][*][$HOME]");
}

TEST(ChildProcesses, EnvironmentAndWorkingDirectoryAreInherited) {
    testing_support::TempFolder folder;
    char previous[4096];
    ASSERT_NE(getcwd(previous, sizeof previous), nullptr);
    ASSERT_EQ(chdir(folder.path().c_str()), 0);
    setenv("KELVO_CHILD_TEST", "inherited value", 1);
    auto result = shell("printf '%s|' \"$KELVO_CHILD_TEST\"; pwd -P");
    unsetenv("KELVO_CHILD_TEST");
    ASSERT_EQ(chdir(previous), 0);
    char real[4096];
    ASSERT_NE(realpath(folder.path().c_str(), real), nullptr);
    EXPECT_EQ(result.standardOutput, std::string("inherited value|") + real + "\n");
}

TEST(ChildProcesses, NoOtherDescriptorReachesTheChild) {
    int inheritable = open("/dev/null", O_RDONLY);  // deliberately without O_CLOEXEC
    ASSERT_GE(inheritable, 3);
    // The shell's own test builtin looks at the shell's own descriptors: no other process runs.
    auto result = shell("for fd in 1 2 " + std::to_string(inheritable) +
                        "; do [ -e /proc/$$/fd/$fd ] && printf '%s ' $fd; done");
    close(inheritable);
    EXPECT_EQ(result.standardOutput, "1 2 ");
}

TEST(ChildProcesses, StartFailureNamesTheProgramAndTheReason) {
    testing_support::TempFolder folder;
    testing_support::writeFile(folder / "not-executable", "#!/bin/sh\n", 0644);
    testing_support::writeFile(folder / "bad-interpreter", "#!/no/such/shell\n", 0755);
    const struct {
        std::string program;
        std::string reason;
    } rows[] = {
        {"/usr/bin/no-such-pgrep", "No such file or directory"},
        {folder / "not-executable", "Permission denied"},
        {folder / "bad-interpreter", "No such file or directory"},
        {folder.path(), "Permission denied"},
    };
    for (const auto& row : rows) {
        auto result = PosixChildProcesses().run(row.program, {"-x"});
        ASSERT_FALSE(result) << row.program;
        EXPECT_EQ(result.error().localizedDescription(),
                  "The program \u201C" + row.program + "\u201D could not be started: " + row.reason + ".");
    }
}

}  // namespace
