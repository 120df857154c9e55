// Finding and stopping real copies of Kelvo: real processes, the real pgrep, real signals.
#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "platform/posix/child_processes.h"
#include "engine/product_identity.h"
#include "platform/services.h"
#include "support/installer_test_access.h"
#include "support/isolation.h"
#include "support/started_process.h"
#include "support/temp_folder.h"

namespace {

using engine::Installer;
using engine::InstallerTestAccess;
using engine::ProcessIdentifiers;
using testing_support::StartedProcess;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

class RunningCopies : public ::testing::Test {
protected:
    void SetUp() override {
        if (auto why = testing_support::ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
    }

    static platform::Expected<ProcessIdentifiers, engine::InstallError> find() {
        return InstallerTestAccess::runningKelvoProcessIdentifiers(Installer({"installer"}));
    }

    // Runs the stop step, returning its error message ("" on success) and its length in seconds.
    static std::pair<std::string, double> stop() {
        auto start = Clock::now();
        auto result = InstallerTestAccess::stopRunningInstances(Installer({"installer"}));
        return {result ? "" : result.error().localizedDescription(), secondsSince(start)};
    }
};

TEST_F(RunningCopies, NoCopyRunningStopsAtOnce) {
    auto found = find();
    ASSERT_TRUE(found) << found.error().localizedDescription();
    EXPECT_EQ(found.value(), ProcessIdentifiers{});
    auto [error, seconds] = stop();
    EXPECT_EQ(error, "");
    EXPECT_LT(seconds, 1.0);
}

TEST_F(RunningCopies, BundleCopyQuitsWhenAsked) {
    StartedProcess kelvo(testing_support::standInKelvoExecutable(), {});
    ASSERT_GT(kelvo.pid(), 0);
    auto found = find();
    ASSERT_TRUE(found) << found.error().localizedDescription();
    EXPECT_EQ(found.value(), ProcessIdentifiers{kelvo.pid()});

    auto [error, seconds] = stop();
    EXPECT_EQ(error, "");
    EXPECT_LT(seconds, 1.5) << "a copy that quits on request needs no forced pass";
    ASSERT_TRUE(kelvo.waitForExit(std::chrono::seconds(1)));
    EXPECT_TRUE(WIFEXITED(*kelvo.waitStatus())) << "it quit by itself after the request";
}

TEST_F(RunningCopies, CopyIgnoringTheRequestIsKilledInTheForcedPass) {
    StartedProcess kelvo(testing_support::standInKelvoExecutable(), {"--ignore-sigterm"});
    StartedProcess polite(testing_support::standInKelvoExecutable(), {});
    ASSERT_GT(kelvo.pid(), 0);
    auto [error, seconds] = stop();
    EXPECT_EQ(error, "");
    // The whole first wait, then a kill that is seen at once: about 2 s, well short of 3.
    EXPECT_GE(seconds, 1.9);
    EXPECT_LT(seconds, 2.8);
    ASSERT_TRUE(kelvo.waitForExit(std::chrono::seconds(1)));
    EXPECT_TRUE(WIFSIGNALED(*kelvo.waitStatus()) && WTERMSIG(*kelvo.waitStatus()) == SIGKILL);
    ASSERT_TRUE(polite.waitForExit(std::chrono::seconds(1)));
    EXPECT_TRUE(WIFEXITED(*polite.waitStatus()));
}

TEST_F(RunningCopies, PlainExecutableNamedKelvoIsFoundByPgrepAndSignalled) {
    testing_support::TempFolder folder;
    std::filesystem::copy_file("/bin/sleep", folder / "Kelvo");
    StartedProcess kelvo(folder / "Kelvo", {"1000"});
    ASSERT_GT(kelvo.pid(), 0);
    EXPECT_EQ(platform::workspace().runningApplicationWithProcessIdentifier(kelvo.pid()), nullptr)
        << "outside any bundle it is no application";
    auto found = find();
    ASSERT_TRUE(found) << found.error().localizedDescription();
    EXPECT_EQ(found.value(), ProcessIdentifiers{kelvo.pid()});

    auto [error, seconds] = stop();
    EXPECT_EQ(error, "");
    EXPECT_LT(seconds, 1.5);
    ASSERT_TRUE(kelvo.waitForExit(std::chrono::seconds(1)));
    EXPECT_TRUE(WIFSIGNALED(*kelvo.waitStatus()) && WTERMSIG(*kelvo.waitStatus()) == SIGTERM);
}

TEST_F(RunningCopies, ZombieNamedKelvoCannotBeStoppedAndIsReported) {
    pid_t zombie = fork();
    ASSERT_GE(zombie, 0);
    if (zombie == 0) {
        prctl(PR_SET_NAME, "Kelvo");
        _exit(0);
    }
    // Not reaped until the end: it stays listed whatever is sent to it.
    siginfo_t info{};
    waitid(P_PID, static_cast<id_t>(zombie), &info, WEXITED | WNOWAIT);
    auto [error, seconds] = stop();
    waitpid(zombie, nullptr, 0);

    EXPECT_EQ(error, "Could not close the running Kelvo process (PID " + std::to_string(zombie) +
                         "). Quit Kelvo and try again.");
    EXPECT_GE(seconds, 2.9);
    EXPECT_LT(seconds, 4.5);
}

TEST_F(RunningCopies, HandleOfAnExitedCopyReportsTerminatedAndSignalsNothing) {
    std::shared_ptr<platform::RunningApplication> application;
    {
        StartedProcess kelvo(testing_support::standInKelvoExecutable(), {});
        application = platform::workspace().runningApplicationWithProcessIdentifier(kelvo.pid());
        ASSERT_NE(application, nullptr);
        EXPECT_FALSE(application->isTerminated());
        EXPECT_EQ(application->bundleIdentifier(), engine::kTargetBundleIdentifier);
        EXPECT_EQ(application->executableURL()->path(),
                  std::filesystem::canonical(testing_support::standInKelvoExecutable()).string());
    }  // killed and reaped here
    EXPECT_TRUE(application->isTerminated());
    EXPECT_FALSE(application->terminate());
    EXPECT_FALSE(application->forceTerminate());
}

TEST_F(RunningCopies, ZombieHandleReportsTerminated) {
    pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        execl(testing_support::standInKelvoExecutable().c_str(), "Kelvo", nullptr);
        _exit(127);
    }
    std::shared_ptr<platform::RunningApplication> application;
    for (int tries = 0; tries < 200 && !application; ++tries) {
        application = platform::workspace().runningApplicationWithProcessIdentifier(child);
        if (!application) usleep(5000);
    }
    ASSERT_NE(application, nullptr);
    EXPECT_TRUE(application->forceTerminate());
    siginfo_t info{};
    waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT);  // a zombie now
    EXPECT_TRUE(application->isTerminated());
    waitpid(child, nullptr, 0);
}

// A child-process service that runs the real backend with one thing changed, to meet the real
// failures of a missing tool and of a tool that rejects its arguments.
class AlteredToolRun final : public platform::ChildProcesses {
public:
    std::optional<std::string> program;
    std::optional<std::vector<std::string>> arguments;

    platform::Expected<platform::ChildProcessResult, platform::Error> run(
        const std::string& executable, const std::vector<std::string>& given) override {
        return real_.run(program.value_or(executable), arguments.value_or(given));
    }

private:
    platform::posix::PosixChildProcesses real_;
};

TEST_F(RunningCopies, ToolFailuresBecomeReadableInspectionErrors) {
    AlteredToolRun missing;
    missing.program = "/usr/bin/no-such-pgrep";
    AlteredToolRun rejecting;
    rejecting.arguments = std::vector<std::string>{"-x", "-u", "no-such-user-kelvo", "Kelvo"};
    const struct {
        const char* name;
        AlteredToolRun* tool;
        std::string message;
    } rows[] = {
        {"missing tool", &missing,
         "Could not check for running Kelvo processes.\nThe program \u201C/usr/bin/no-such-pgrep\u201D could not "
         "be started: No such file or directory."},
        {"rejected arguments", &rejecting,
         "Could not check for running Kelvo processes.\npgrep: invalid user name: no-such-user-kelvo"},
    };
    for (const auto& row : rows) {
        platform::ScopedServices scope({.childProcesses = row.tool});
        auto found = find();
        ASSERT_FALSE(found) << row.name;
        EXPECT_EQ(found.error().localizedDescription(), row.message) << row.name;
        auto [error, seconds] = stop();
        EXPECT_EQ(error, row.message) << row.name;
    }
}

}  // namespace
