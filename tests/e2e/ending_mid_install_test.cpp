// Ending the installer while its install still runs, as closing its window does at any moment. The
// process then ends through exit(), whose static destructors run while the copy goes on and while
// the window toolkit is torn down: nothing that the install or the toolkit still uses may be
// destroyed under them. The installer built with AddressSanitizer, closed many times at points
// spread over a long copy and its last steps.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "support/command.h"
#include "support/temp_folder.h"
#include "support/virtual_display.h"

namespace {

using namespace testing_support;
using namespace std::chrono_literals;

constexpr int kRounds = 16;
// Between two rounds the close comes this much later after the window is shown, so the rounds
// together end the installer before, during and after its copy.
constexpr auto kCloseStep = 25ms;
// A payload whose copy takes a good part of a second.
constexpr int kPayloadFiles = 64;
constexpr std::size_t kPayloadFileSize = 4 << 20;

// Starts `program` with `arguments` on `display`, its standard error into `errors`; its pid.
pid_t startInstaller(const std::string& program, const std::vector<std::string>& arguments,
                     const std::string& display, const std::string& errors) {
    pid_t child = fork();
    if (child != 0) return child;
    setenv("DISPLAY", display.c_str(), 1);
    setenv("ASAN_OPTIONS", "detect_leaks=0:abort_on_error=0", 1);
    freopen(errors.c_str(), "w", stderr);
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
}

// The wait status of `child` once it has ended, or none when it runs on after `limit`.
std::optional<int> waitForEnd(pid_t child, std::chrono::milliseconds limit) {
    auto deadline = std::chrono::steady_clock::now() + limit;
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) return std::nullopt;
        std::this_thread::sleep_for(5ms);
    }
    return status;
}

class EndingMidInstall : public testing::Test {
protected:
    void SetUp() override {
        if (std::string why = VirtualDisplay::unavailableReason(); !why.empty()) GTEST_SKIP() << why;
        ASSERT_TRUE(display.started()) << "Xvfb did not start";
        // A bare program is its own bundle: the Kelvo.app beside it is what it installs.
        std::filesystem::copy_file(SANITIZED_INSTALLER, installer);
        std::filesystem::copy(KELVO_APP_BUNDLE, folder / "Kelvo.app", std::filesystem::copy_options::recursive);
        std::string data = runCommand("head -c " + std::to_string(kPayloadFileSize) + " /dev/urandom").output;
        for (int file = 0; file < kPayloadFiles; ++file) {
            std::ofstream(folder / ("Kelvo.app/Contents/Resources/data" + std::to_string(file))) << data;
        }
    }

    TempFolder folder;
    VirtualDisplay display;
    std::string installer = folder / "Install Kelvo";
    std::string destination = folder / "Applications";
};

TEST_F(EndingMidInstall, LeavesNoSanitizerReportAndNoCrash) {
    std::filesystem::create_directories(destination);
    for (int round = 0; round < kRounds; ++round) {
        std::string errors = folder / ("errors" + std::to_string(round));
        pid_t child = startInstaller(installer, {"--dest", destination, "--no-launch"}, display.name(), errors);
        std::string window = display.waitForWindow("Install Kelvo", 30);
        ASSERT_NE(window, "") << "round " << round << ": no window\n" << readFile(errors);
        std::this_thread::sleep_for(round * kCloseStep);
        display.closeWindow(window);
        std::optional<int> status = waitForEnd(child, 10s);
        if (!status) kill(child, SIGKILL);
        ASSERT_TRUE(status) << "round " << round << ": the installer did not end\n" << readFile(errors);
        std::string report = readFile(errors);
        EXPECT_TRUE(WIFEXITED(*status) && WEXITSTATUS(*status) == 0)
            << "round " << round << ": ended with wait status " << *status << "\n" << report;
        EXPECT_EQ(report.find("AddressSanitizer"), std::string::npos) << "round " << round << "\n" << report;
    }
}

}  // namespace
