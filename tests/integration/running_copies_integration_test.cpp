// Finding and stopping real copies of Kelvo: real processes, the real /proc scan checked against
// pgrep, real signals, and a whole install() around them.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <future>
#include <set>
#include <sstream>

#include "engine/installer.h"
#include "engine/product_identity.h"
#include "platform/posix/process_signals.h"
#include "platform/services.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/payload_bundle.h"
#include "support/started_process.h"

namespace {

using namespace testing_support;
using namespace std::chrono_literals;

class RunningCopies : public testing::Test {
protected:
    void SetUp() override {
        if (auto why = ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
    }

    // A whole install of a small payload: its error message ("" on success) and its seconds.
    std::pair<std::string, double> timedInstall() {
        writeFile(payload.payload() + "/Contents/Info.plist", "<plist/>");
        auto start = std::chrono::steady_clock::now();
        auto result = engine::Installer({"installer", "--dest", folder.path()}).install();
        return {result ? "" : result.error().localizedDescription(),
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count()};
    }

    TempFolder folder;
    PayloadBundle payload;
};

// Waits until the stand-in Kelvo `pid` has set up its handling of SIGTERM (blocked or ignored).
void waitUntilItTakesSigterm(pid_t pid) {
    for (int tries = 0; tries < 1000; ++tries, usleep(2000)) {
        std::istringstream status(readFile("/proc/" + std::to_string(pid) + "/status"));
        for (std::string line; std::getline(status, line);) {
            bool mask = line.starts_with("SigBlk:\t") || line.starts_with("SigIgn:\t");
            if (mask && (std::stoull(line.substr(8), nullptr, 16) >> (SIGTERM - 1)) & 1) return;
        }
    }
}

std::set<pid_t> pgrepKelvo() {
    std::set<pid_t> found;
    std::istringstream lines(runCommand("/usr/bin/pgrep -x Kelvo").output);
    for (pid_t pid; lines >> pid;) found.insert(pid);
    return found;
}

TEST_F(RunningCopies, TheScanListsTheBundleCopiesAmongWhatPgrepSees) {
    std::filesystem::copy(buildFolder() + "/kelvo/Kelvo.app", folder / "Copy.app", std::filesystem::copy_options::recursive);
    std::string infoPlist = shellWord(folder / "Copy.app/Contents/Info.plist");
    ASSERT_EQ(runCommand("plistutil -f bin -i " + infoPlist + " -o " + infoPlist).exitStatus, 0) << "a binary Info.plist";
    std::filesystem::copy_file("/bin/sleep", folder / "Kelvo");
    StartedProcess first(standInKelvoExecutable(), {});
    StartedProcess second(folder / "Copy.app/Contents/MacOS/Kelvo", {});
    StartedProcess plain(folder / "Kelvo", {"1000"});

    std::set<pid_t> bundled;
    for (const auto& application : platform::workspace().runningApplications()) {
        if (application->bundleIdentifier() == engine::kTargetBundleIdentifier) bundled.insert(application->processIdentifier());
    }
    EXPECT_EQ(bundled, (std::set<pid_t>{first.pid(), second.pid()}));
    EXPECT_EQ(pgrepKelvo(), (std::set<pid_t>{first.pid(), second.pid(), plain.pid()}));
    for (pid_t pid : {getpid(), plain.pid(), 0, -1}) {
        EXPECT_EQ(platform::workspace().runningApplicationWithProcessIdentifier(pid), nullptr) << pid;
    }

    auto handle = platform::workspace().runningApplicationWithProcessIdentifier(first.pid());
    ASSERT_NE(handle, nullptr);
    kill(first.pid(), SIGKILL);
    ASSERT_TRUE(first.waitForExit(1s));
    EXPECT_TRUE(handle->isTerminated());
    EXPECT_FALSE(handle->terminate()) << "a gone copy's number may be another process's by now";
}

TEST_F(RunningCopies, AnApplicationOnAStalledMountHoldsTheScanUpNoLonger) {
    std::string bundle = folder / "Other.app";
    std::filesystem::create_directories(bundle + "/Contents/MacOS");
    std::filesystem::copy_file("/bin/sleep", bundle + "/Contents/MacOS/other");
    StartedProcess other(bundle + "/Contents/MacOS/other", {"1000"});
    // A FUSE file system whose server never answers, as a network mount whose server went away.
    int server = open("/dev/fuse", O_RDWR | O_CLOEXEC);
    std::string options = "fd=" + std::to_string(server) + ",rootmode=40000,user_id=0,group_id=0";
    if (server < 0 || mount("kelvo-test", (bundle + "/Contents").c_str(), "fuse.stalled", 0, options.c_str()) != 0) {
        GTEST_SKIP() << "no FUSE mount here: " << std::strerror(errno);
    }
    auto scan = std::async(std::launch::async, [] { return platform::workspace().runningApplications(); });
    bool quick = scan.wait_for(2s) == std::future_status::ready;
    close(server);  // fails whatever still waits on the mount
    ASSERT_TRUE(quick) << "the scan waited on the stalled mount";
    for (const auto& application : scan.get()) {
        if (application->processIdentifier() == other.pid()) EXPECT_EQ(application->bundleIdentifier(), std::nullopt);
    }
}

TEST_F(RunningCopies, AnInstallAsksThemToQuitThenForcesThem) {
    std::filesystem::copy_file("/bin/sleep", folder / "Kelvo");
    const struct {
        const char* name;
        std::string program;
        std::vector<std::string> arguments;
        int endingSignal;  // 0: it quit by itself
        double atLeast, below;
    } rows[] = {
        {"a copy that quits when asked", standInKelvoExecutable(), {}, 0, 0, 1.5},
        {"a copy that ignores the request", standInKelvoExecutable(), {"--ignore-sigterm"}, SIGKILL, 1.9, 3.5},
        {"a program named Kelvo in no bundle", folder / "Kelvo", {"1000"}, SIGTERM, 0, 1.5},
    };
    for (const auto& row : rows) {
        StartedProcess kelvo(row.program, row.arguments);
        if (row.endingSignal != SIGTERM) waitUntilItTakesSigterm(kelvo.pid());
        auto [error, seconds] = timedInstall();
        EXPECT_EQ(error, "") << row.name;
        EXPECT_GE(seconds, row.atLeast) << row.name;
        EXPECT_LT(seconds, row.below) << row.name;
        std::optional<int> status = kelvo.waitForExit(1s);
        ASSERT_TRUE(status) << row.name;
        EXPECT_EQ(WIFSIGNALED(*status) ? WTERMSIG(*status) : 0, row.endingSignal) << row.name;
    }
}

TEST_F(RunningCopies, AnInstallGivesUpOnACopyThatCannotBeStoppedAndLeavesTheOldOne) {
    writeFile(folder / "Kelvo.app/Contents/Info.plist", "old");
    pid_t zombie = fork();  // exits at once and is not reaped: listed, and no signal ends it
    if (zombie == 0) {
        prctl(PR_SET_NAME, "Kelvo");
        _exit(0);
    }
    siginfo_t exited{};
    waitid(P_PID, static_cast<id_t>(zombie), &exited, WEXITED | WNOWAIT);
    auto [error, seconds] = timedInstall();
    waitpid(zombie, nullptr, 0);
    EXPECT_EQ(error, "Could not close the running Kelvo process (PID " + std::to_string(zombie) +
                         "). Quit Kelvo and try again.");
    EXPECT_GE(seconds, 2.9);
    EXPECT_LT(seconds, 4.5);
    EXPECT_EQ(readFile(folder / "Kelvo.app/Contents/Info.plist"), "old");
}

// kill(2) reads 0 as "my process group" and -1 as "every process I may signal": a pgrep line of
// "0" or "-1" must not become a signal to all of them. Probed with signal 0, which harms nothing.
TEST(ProcessSignals, IdentifiersThatNameNoProcessAreTakenAsGone) {
    for (std::int32_t pid : {0, -1}) EXPECT_EQ(platform::posix::PosixProcessSignals().kill(pid, 0), ESRCH) << pid;
}

}  // namespace
