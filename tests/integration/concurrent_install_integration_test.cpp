// Installers started at the same moment on one destination, each a real process running the whole
// install with the real services from a bundle of its own.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "support/command.h"
#include "support/isolation.h"
#include "support/sample_trees.h"
#include "support/temp_folder.h"

extern char** environ;

namespace {

using namespace testing_support;

constexpr int kRounds = 10;
constexpr int kPayloadFiles = 2000;

// Starts `count` copies of `installer`, which all begin to install once their standard input
// closes; their outputs, in start order.
std::vector<std::string> installTogether(const std::string& installer, const std::vector<std::string>& arguments,
                                         const std::string& outputs, int count) {
    std::vector<char*> argv{const_cast<char*>(installer.c_str())};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    int go[2];
    if (pipe2(go, O_CLOEXEC) != 0) return {};
    std::vector<pid_t> started;
    for (int index = 0; index < count; ++index) {
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, go[0], 0);
        std::string output = outputs + std::to_string(index);
        posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        pid_t pid = 0;
        if (posix_spawn(&pid, installer.c_str(), &actions, nullptr, argv.data(), environ) == 0) started.push_back(pid);
        posix_spawn_file_actions_destroy(&actions);
    }
    close(go[0]);
    close(go[1]);
    std::vector<std::string> results;
    for (pid_t pid : started) waitpid(pid, nullptr, 0);
    for (int index = 0; index < count; ++index) results.push_back(readFile(outputs + std::to_string(index)));
    return results;
}

TEST(ConcurrentInstalls, TwoInstallersOnOneDestinationEachLeaveACompleteBundle) {
    // The installs stop every Kelvo they see: in this test's own process namespace, none.
    if (auto why = privilegedCommandUnavailable()) GTEST_SKIP() << *why;
    TempFolder folder;
    std::string payload = folder / "Setup.app/Contents/Resources/Kelvo.app";
    std::filesystem::create_directories(folder / "Setup.app/Contents/MacOS");
    std::filesystem::copy_file(INSTALL_PROBE, folder / "Setup.app/Contents/MacOS/Setup");
    makeSampleBundle(payload, 4096);
    for (int file = 0; file < kPayloadFiles; ++file) {
        writeFile(payload + "/Contents/Resources/Parts/" + std::to_string(file), "part");
    }
    TreeSnapshot expected = snapshotTree(payload);

    for (int round = 0; round < kRounds; ++round) {
        std::filesystem::remove_all(folder / "Apps");
        std::filesystem::create_directories(folder / "Apps");
        ASSERT_EQ(runCommand("cp -a " + shellWord(payload) + " " + shellWord(folder / "Apps")).exitStatus, 0);
        auto outcomes = installTogether(folder / "Setup.app/Contents/MacOS/Setup",
                                        {"--dest", folder / "Apps", "--no-launch"}, folder / "output", 2);
        EXPECT_EQ(outcomes, (std::vector<std::string>{"installed\n", "installed\n"})) << "round " << round;
        ASSERT_EQ(differences(expected, snapshotTree(folder / "Apps/Kelvo.app")), "") << "round " << round;
    }
}

}  // namespace
