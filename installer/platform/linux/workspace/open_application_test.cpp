// Opening an application bundle with the real workspace: what the started program inherits, and
// what a start that never happened reports.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <future>

#include "platform/services.h"
#include "support/command.h"
#include "support/other_user.h"
#include "support/signal_state.h"
#include "support/temp_folder.h"

namespace {

using namespace testing_support;

// A bundle at `app` whose executable is a copy of `program`.
void makeBundle(const std::string& app, const std::string& program) {
    writeFile(app + "/Contents/Info.plist",
              "<plist><dict><key>CFBundleExecutable</key><string>run</string></dict></plist>");
    std::filesystem::create_directories(app + "/Contents/MacOS");
    std::filesystem::copy_file(program, app + "/Contents/MacOS/run");
}

// "" when the workspace reports the app started, otherwise its error's description.
std::string openAndWait(const std::string& app, const std::vector<std::string>& arguments) {
    std::promise<std::string> outcome;
    platform::workspace().openApplication(
        platform::FileURL::fileURLWithPath(app), {.arguments = arguments},
        [&](platform::Expected<void, platform::Error> opened) {
            outcome.set_value(opened ? "" : opened.error().localizedDescription());
        });
    return outcome.get_future().get();
}

// Whatever the installer was started with: a descriptor left open, signals ignored or blocked.
TEST(OpenApplication, TheStartedAppGetsTheStandardStreamsAndDefaultSignalHandlingOnly) {
    TempFolder folder;
    makeBundle(folder / "Sleeper.app", "/bin/sleep");
    int inherited = open("/dev/null", O_RDONLY);  // without O_CLOEXEC, as an installer may be given one
    {
        NohupLikeSignals nohup;
        ASSERT_EQ(openAndWait(folder / "Sleeper.app", {"30"}), "");
    }
    close(inherited);
    std::string pid = runCommand("for i in $(seq 200); do pgrep -f " + shellWord(folder / "Sleeper[.]app/") +
                                 " && exit; sleep 0.01; done").output;
    ASSERT_NE(pid, "") << "the app did not start";
    pid_t app = std::stoi(pid);
    EXPECT_EQ(runCommand("ls /proc/" + std::to_string(app) + "/fd").output, "0\n1\n2\n");
    EXPECT_EQ(signalStateOf(app), SignalState{});
    kill(app, SIGKILL);
}

// The start forks twice; when the second fork fails, no app was started, and the workspace must
// say so. Here the user may run no more than three processes: the one asking, the thread that
// starts the app and its first fork.
TEST(OpenApplication, ASecondForkThatFailsIsAFailedStart) {
    if (geteuid() != 0) GTEST_SKIP() << "limiting the processes of a user of its own needs root";
    TempFolder folder;
    chmod(folder.path().c_str(), 0755);
    makeBundle(folder / "True.app", "/bin/true");
    constexpr uid_t kUserWithNoOtherProcess = 47111;
    std::string outcome = asOrdinaryUser(kUserWithNoOtherProcess, [&] {
        rlimit three{3, 3};
        return setrlimit(RLIMIT_NPROC, &three) == 0 ? openAndWait(folder / "True.app", {}) : "no limit";
    });
    EXPECT_EQ(outcome, "The application \u201CTrue.app\u201D could not be opened: Resource temporarily unavailable.");
}

}  // namespace
