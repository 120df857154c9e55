// The installer run the way a user runs it, one journey per way it ends: opened from its disk
// image mounted at /Volumes/Install Kelvo, on a real X display, installing the stand-in Kelvo with
// the real services. The fallback's ditto is this build's, behind a wrapper that notes each run.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <future>
#include <thread>

#include "support/command.h"
#include "support/isolation.h"
#include "support/temp_folder.h"
#include "support/virtual_display.h"

namespace {

using namespace testing_support;
using namespace std::chrono_literals;

const std::string kVolume = "/Volumes/" KELVO_VOLUME_NAME;
const std::string kEmbedded = kVolume + "/Install Kelvo.app/Contents/Resources/Kelvo.app";

// Run by /bin/sh in the test's own mount namespace: the image on a scratch /Volumes and the wrapper
// over /usr/bin/ditto (both once per test), then the installer. With STALL set, a file system whose
// server never answers lies over that folder of the volume, so a copy that reaches it stops there
// for as long as the process whose pid goes to STALL_HOLDER holds the server's end.
constexpr const char* kOpenFromDiskImage = R"(set -e
if ! mountpoint -q "$VOLUME"; then
  mount -t tmpfs -o size=1m volumes /Volumes
  mkdir "$VOLUME"
  mount -o loop,ro "$IMAGE" "$VOLUME"
  mount --bind "$DITTO" /usr/bin/ditto
fi
if [ -n "$STALL" ]; then
  exec 3<>/dev/fuse
  mount -i -t fuse.stalled -o fd=3,rootmode=40000,user_id=0,group_id=0 stalled "$VOLUME/$STALL"
  sleep 600 </dev/null >/dev/null 2>&1 &
  echo $! >"$STALL_HOLDER"
  exec 3>&-
fi
exec "$VOLUME/Install Kelvo.app/Contents/MacOS/Install Kelvo" "$@" >"$LOG" 2>&1
)";

// Every entry below `root` with its permissions, size and link target.
std::string treeListing(const std::string& root) {
    return runCommand("cd " + shellWord(root) + " && find . -printf '%P %M %s %l\\n' | sort").output;
}

class InstallerJourney : public testing::Test {
protected:
    void SetUp() override {
        if (auto why = ownProcessNamespaceMissing()) GTEST_SKIP() << *why;
        if (access("/dev/loop-control", F_OK) != 0) GTEST_SKIP() << "no loop devices to mount the disk image";
        if (std::string why = VirtualDisplay::unavailableReason(); !why.empty()) GTEST_SKIP() << why;
        ASSERT_TRUE(display.started()) << "Xvfb did not start";
        std::filesystem::create_directories("/Volumes");
        writeFile(folder / "ditto",
                  "#!/bin/sh\necho \"$*\" >>" + shellWord(fallbacks) + "\nexec " + shellWord(DITTO_PROGRAM) + " \"$@\"\n", 0755);
    }
    void TearDown() override {
        runCommand("pkill -KILL -f 'Install Kelvo.app/Contents/MacOS'");
        releaseStall();
    }

    // Ends the stalled file system's server, so that nothing waits on it any more, and takes it away.
    void releaseStall() {
        std::string holder = readFile(folder / "holder");
        if (holder.empty()) return;
        runCommand("kill -KILL " + holder.substr(0, holder.find('\n')) + " && umount -l " +
                   shellWord(kVolume + "/" + kStalledFolder));
        std::filesystem::remove(folder / "holder");
    }

    // The folder of the volume where a copy of Kelvo.app is made to stop.
    static constexpr const char* kStalledFolder = "Install Kelvo.app/Contents/Resources/Kelvo.app/Contents/MacOS";

    // Opens the installer from its disk image; `run` then holds the time it ended, if with status 0.
    // `stalled` names a folder of the volume where a copy stops (see kOpenFromDiskImage).
    void start(const std::vector<std::string>& arguments, const std::string& stalled = "") {
        std::string command = "DISPLAY=" + display.name() + " KELVO_LAUNCH_RECORD=" + shellWord(record) +
                              " IMAGE=" + shellWord(KELVO_DISK_IMAGE) + " VOLUME=" + shellWord(kVolume) +
                              " DITTO=" + shellWord(folder / "ditto") + " LOG=" + shellWord(log) +
                              " STALL=" + shellWord(stalled) + " STALL_HOLDER=" + shellWord(folder / "holder") +
                              " sh -c " + shellWord(kOpenFromDiskImage) + " sh";
        for (const std::string& argument : arguments) command += " " + shellWord(argument);
        run = std::async(std::launch::async, [command]() -> std::optional<double> {
            if (runCommand(command).exitStatus != 0) return std::nullopt;
            return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
        });
    }
    std::optional<double> ended(double seconds) {
        return run.wait_for(std::chrono::duration<double>(seconds)) == std::future_status::ready ? run.get() : std::nullopt;
    }

    // The lines of Kelvo's launch record for `event`, waiting up to `seconds` for the first.
    std::string recorded(const std::string& event, int seconds = 0) {
        return runCommand("for i in $(seq 0 " + std::to_string(seconds * 20) + "); do grep -P '\\tevent=" + event +
                          "\\t' " + shellWord(record) + " && exit; sleep 0.05; done").output;
    }

    std::string diagnosis() { return "installer output:\n" + readFile(log) + "launch record:\n" + readFile(record); }

    TempFolder folder;
    VirtualDisplay display;
    std::string destination = folder / "Applications";
    std::string installed = destination + "/Kelvo.app";
    std::string fallbacks = folder / "fallbacks";
    std::string record = folder / "launches";
    std::string log = folder / "output";
    std::future<std::optional<double>> run;
};

TEST_F(InstallerJourney, ReplacesTheOldCopyStartsKelvoToEjectTheVolumeAndQuits) {
    writeFile(installed + "/Contents/Old", "from the copy installed before");
    start({"--dest", destination});
    EXPECT_NE(display.waitForWindow("Install Kelvo", 20), "") << diagnosis();
    std::optional<double> end = ended(60);
    ASSERT_TRUE(end) << diagnosis();
    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
    EXPECT_EQ(readFile(fallbacks), "") << "the plain copy should have done";

    std::string started = recorded("started");
    ASSERT_EQ(std::count(started.begin(), started.end(), '\n'), 1) << diagnosis();
    EXPECT_NE(started.find("\texecutable=" + installed + "/Contents/MacOS/Kelvo\t"), std::string::npos);
    EXPECT_TRUE(started.ends_with("\targc=2\targ=--eject-installer-volume\targ=" + kVolume + "\n")) << started;
    double afterLaunch = *end - std::stod(started.substr(started.find("monotonic=") + 10));
    EXPECT_TRUE(afterLaunch >= 0.9 && afterLaunch <= 3.0) << afterLaunch << " s after Kelvo started";
    EXPECT_TRUE(recorded("eject", 20).ends_with("\tvolume=" + kVolume + "\toutcome=ejected\n")) << diagnosis();
}

TEST_F(InstallerJourney, IntoAFolderThatIsNotThereInstallsThroughThePrivilegedFallback) {
    start({"--dest", destination});
    ASSERT_TRUE(ended(60)) << diagnosis();
    EXPECT_EQ(readFile(fallbacks), "--rsrc " + kEmbedded + " " + installed + "\n");
    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
    EXPECT_NE(recorded("started"), "") << diagnosis();
}

TEST_F(InstallerJourney, WithNoLaunchInstallsAndStartsNothing) {
    std::filesystem::create_directories(destination);
    start({"--dest", destination, "--no-launch"});
    ASSERT_TRUE(ended(60)) << diagnosis();
    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
    EXPECT_EQ(readFile(record), "");
}

// The installer never holds up its ending: closed while it copies, it ends at once, leaving part of
// a Kelvo.app behind, which the next run replaces.
TEST_F(InstallerJourney, ClosingTheWindowMidCopyEndsAtOnceAndTheNextRunReplacesWhatItLeft) {
    if (access("/dev/fuse", R_OK | W_OK) != 0) GTEST_SKIP() << "no /dev/fuse to hold a copy half-way";
    std::filesystem::create_directories(destination);
    start({"--dest", destination}, kStalledFolder);
    std::string window = display.waitForWindow("Install Kelvo", 20);
    ASSERT_NE(window, "") << diagnosis();
    for (int tries = 0; tries < 1000 && !std::filesystem::exists(installed + "/Contents/Info.plist"); ++tries) {
        std::this_thread::sleep_for(10ms);
    }
    ASSERT_TRUE(std::filesystem::exists(installed + "/Contents/Info.plist")) << "the copy did not start\n" << diagnosis();

    ASSERT_TRUE(display.closeWindow(window));
    EXPECT_TRUE(ended(2)) << "the installer did not end at once when its window was closed\n" << diagnosis();
    EXPECT_FALSE(std::filesystem::exists(installed + "/Contents/MacOS")) << "the copy was not cut short";
    EXPECT_EQ(readFile(record), "") << "Kelvo was started";

    releaseStall();
    start({"--dest", destination, "--no-launch"});
    ASSERT_TRUE(ended(60)) << diagnosis();
    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
}

TEST_F(InstallerJourney, AFailureShowsTheAlertUntilReturnPressesQuit) {
    writeFile(folder / "a file", "");
    start({"--dest", folder / "a file/Applications"});
    std::string alert = display.waitForWindow("Installation Problem", 20);
    ASSERT_NE(alert, "") << diagnosis();
    EXPECT_EQ(run.wait_for(500ms), std::future_status::timeout) << "the installer ended without waiting for the alert";
    ASSERT_TRUE(display.pressKey(alert, "Return"));
    EXPECT_TRUE(ended(3)) << "Return did not end the installer\n" << diagnosis();
    EXPECT_EQ(readFile(record), "");
}

}  // namespace
