// Opening an application bundle with the real workspace: what the started program inherits, and
// what a start that never happened reports.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <grp.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <future>
#include <set>

#include "platform/services.h"
#include "support/command.h"
#include "support/temp_folder.h"

namespace {

using testing_support::TempFolder;

// A bundle at `app` whose executable is a copy of `program`.
void makeBundle(const std::string& app, const std::string& program) {
    testing_support::writeFile(app + "/Contents/Info.plist",
                               "<plist version=\"1.0\"><dict><key>CFBundleExecutable</key><string>run</string>"
                               "</dict></plist>");
    std::filesystem::create_directories(app + "/Contents/MacOS");
    std::filesystem::copy_file(program, app + "/Contents/MacOS/run");
}

// "" when the workspace reports the app started, otherwise its error's description.
std::string openAndWait(const std::string& app, const std::vector<std::string>& arguments) {
    std::promise<std::optional<platform::Error>> outcome;
    platform::workspace().openApplication(platform::FileURL::fileURLWithPath(app), {.arguments = arguments},
                                          [&](std::optional<platform::Error> error) { outcome.set_value(error); });
    std::optional<platform::Error> error = outcome.get_future().get();
    return error ? error->localizedDescription() : "";
}

TEST(OpenApplication, TheStartedAppGetsStandardStreamsAndNoOtherDescriptor) {
    TempFolder folder;
    makeBundle(folder / "Sleeper.app", "/bin/sleep");
    int inherited = open("/dev/null", O_RDONLY);  // without O_CLOEXEC, as an installer may be given one
    ASSERT_EQ(openAndWait(folder / "Sleeper.app", {"30"}), "");
    close(inherited);

    auto pgrep = testing_support::runCommand("pgrep -f " + testing_support::shellWord(folder / "Sleeper.app/"));
    pid_t sleeper = std::atoi(pgrep.output.c_str());
    ASSERT_GT(sleeper, 0) << pgrep.output;
    std::set<std::string> descriptors;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/" + std::to_string(sleeper) + "/fd")) {
        descriptors.insert(entry.path().filename());
    }
    kill(sleeper, SIGKILL);
    EXPECT_EQ(descriptors, (std::set<std::string>{"0", "1", "2"}));
}

// The start forks twice; when the second fork fails (here: its user may run no more processes),
// no app was started, and the workspace must say so.
TEST(OpenApplication, ASecondForkThatFailsIsAFailedStart) {
    if (geteuid() != 0) GTEST_SKIP() << "limiting the processes of a user of its own needs root";
    TempFolder folder;
    chmod(folder.path().c_str(), 0755);
    makeBundle(folder / "True.app", "/bin/true");
    int report[2];
    ASSERT_EQ(pipe(report), 0);
    pid_t child = fork();
    if (child == 0) {
        // A user with no other process: this one, the thread that starts the app and its first
        // fork make three, so the second fork is refused.
        const uid_t kUser = 47111;
        rlimit three{3, 3};
        if (setgroups(0, nullptr) != 0 || setresgid(kUser, kUser, kUser) != 0 ||
            setresuid(kUser, kUser, kUser) != 0 || setrlimit(RLIMIT_NPROC, &three) != 0) {
            _exit(2);
        }
        std::string outcome = openAndWait(folder / "True.app", {});
        _exit(write(report[1], outcome.data(), outcome.size()) < 0);
    }
    close(report[1]);
    char buffer[512];
    ssize_t length = read(report[0], buffer, sizeof buffer);
    close(report[0]);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_EQ(std::string(buffer, length > 0 ? static_cast<std::size_t>(length) : 0),
              "The application \u201CTrue.app\u201D could not be opened: Resource temporarily unavailable.");
}

}  // namespace
