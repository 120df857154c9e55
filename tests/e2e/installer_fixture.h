// What the end-to-end tests share: a private X display, a folder to install into, the launch
// record, and the installer started from its disk image mounted at /Volumes/Install Kelvo.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <thread>

#include "installer_run.h"
#include "support/command.h"
#include "support/isolation.h"
#include "support/launch_records.h"
#include "support/temp_folder.h"
#include "x_display.h"

namespace e2e_tests {

using e2e::InstallerRun;
using testing_support::eventsNamed;
using testing_support::readFile;
using testing_support::readLaunchEvents;
using testing_support::runCommand;
using testing_support::shellWord;

inline const std::string kWindowTitle = "Install Kelvo";
inline const std::string kAlertTitle = "Installation Problem";
inline const std::string kVolume = KELVO_VOLUME_NAME;
inline const std::string kVolumePath = "/Volumes/" + kVolume;

// Generous bounds around the installer's fixed endings.
constexpr double kWindowTimeout = 20;
constexpr double kRunTimeout = 60;
constexpr double kAfterLaunchMin = 0.9, kAfterLaunchMax = 3.0;
constexpr double kAfterSkipMin = 1.3, kAfterSkipMax = 3.5;
constexpr double kDismissedWithin = 3.0;
// Closing during the stopping of an unstoppable Kelvo: the installer ends when install() gives up
// after its 2 s and 1 s waits.
constexpr double kAfterCloseMax = 6.0;
constexpr double kWindowGoneWithin = 1.0;

// Every entry below `root` with its type, permissions, size and link target, sorted.
inline std::string treeListing(const std::string& root) {
    return runCommand("cd " + shellWord(root) + " && find . -printf '%P %M %s %l\\n' | sort").output;
}

// The first `event` in the record, waiting up to `timeoutSeconds` for it.
inline std::optional<testing_support::LaunchEvent> waitForEvent(const std::string& record, const std::string& event,
                                                         double timeoutSeconds) {
    const double deadline = e2e::monotonicNow() + timeoutSeconds;
    for (;;) {
        auto found = eventsNamed(readLaunchEvents(record), event);
        if (!found.empty()) return found.front();
        if (e2e::monotonicNow() >= deadline) return std::nullopt;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

class InstallerEndToEnd : public testing::Test {
protected:
    void SetUp() override {
        if (geteuid() != 0) GTEST_SKIP() << "mounting the disk image needs root";
        if (access("/dev/loop-control", F_OK) != 0) GTEST_SKIP() << "no loop devices on this machine";
        if (runCommand("command -v Xvfb xdotool unshare mksquashfs >/dev/null").exitStatus != 0) {
            GTEST_SKIP() << "Xvfb, xdotool, unshare or mksquashfs is missing";
        }
        if (!KELVO_DISK_IMAGE_BUILT) GTEST_SKIP() << "the installer application is not part of this build yet";
        ASSERT_TRUE(std::filesystem::exists(KELVO_DISK_IMAGE)) << "the disk image was not built";
        ASSERT_TRUE(e2e::becomeSubreaper());
        if (auto why = testing_support::ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
        // The one trace on the machine: an empty /Volumes. Each run mounts a scratch folder over it
        // in its own mount namespace, so the volume's mount point is never made here.
        std::filesystem::create_directories("/Volumes");
        setenv("KELVO_LAUNCH_RECORD", record.c_str(), 1);
        display = std::make_unique<e2e::XDisplay>();
        ASSERT_TRUE(display->started()) << "Xvfb did not start";
    }

    void TearDown() override {
        e2e::stopRecordedKelvos(record);
        if (zombie > 0) waitpid(zombie, nullptr, 0);
    }

    InstallerRun runFromDiskImage(const std::string& image, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--dest", destination});
        return InstallerRun::fromDiskImage(image, kVolume, display->name(), arguments, log);
    }

    // A Kelvo that has exited but that nobody has reaped: listed as running, and never stoppable.
    void leaveAZombieKelvo() {
        zombie = fork();
        if (zombie == 0) {
            setenv("KELVO_LAUNCH_RECORD", (folder / "zombie.log").c_str(), 1);
            execl(KELVO_EXECUTABLE, "Kelvo", "--exit-now", nullptr);
            _exit(127);
        }
        ASSERT_GT(zombie, 0);
        ASSERT_EQ(runCommand("for i in $(seq 100); do grep -q zombie /proc/" + std::to_string(zombie) +
                             "/status && exit 0; sleep 0.05; done; exit 1").exitStatus, 0);
    }

    // The installer's window, waiting for it while the installer runs.
    std::string windowOf(InstallerRun& run) {
        return display->waitForWindow(kWindowTitle, e2e::XDisplay::WindowKind::Plain, kWindowTimeout,
                                      [&run] { return !run.waitForExit(0); });
    }

    // The installer's failure alert, waiting for it while the installer runs.
    std::string alertOf(InstallerRun& run) {
        return display->waitForWindow(kAlertTitle, e2e::XDisplay::WindowKind::Dialog, kWindowTimeout,
                                      [&run] { return !run.waitForExit(0); });
    }

    // What went wrong, for a failure message.
    std::string diagnosis() const {
        return "installer output:\n" + readFile(log) + "launch record:\n" + readFile(record) +
               "windows:\n" + display->visibleWindowTitles();
    }

    testing_support::TempFolder folder;
    std::string destination = folder / "Applications";
    std::string installed = destination + "/Kelvo.app";
    std::string record = folder / "launches.log";
    std::string log = folder / "installer.log";
    std::unique_ptr<e2e::XDisplay> display;
    pid_t zombie = -1;
};

}  // namespace e2e_tests
