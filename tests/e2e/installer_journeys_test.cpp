// The installer run the way a user runs it, one journey per way it ends: opened from its disk
// image mounted at /Volumes/Install Kelvo, on a real X display, installing the stand-in Kelvo with
// the real services. The fallback's ditto is this build's, behind a wrapper that notes each run.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <sstream>
#include <thread>

#include "support/command.h"
#include "support/isolation.h"
#include "support/temp_folder.h"
#include "support/virtual_display.h"

namespace {

using namespace testing_support;

const std::string kVolume = "/Volumes/" KELVO_VOLUME_NAME;
const std::string kEmbedded = kVolume + "/Install Kelvo.app/Contents/Resources/Kelvo.app";
constexpr int kWindowTimeout = 20;
constexpr double kRunTimeout = 60;

// Run by /bin/sh in the test's own mount namespace: the image on a scratch /Volumes, the wrapper
// over /usr/bin/ditto, then the installer.
constexpr const char* kOpenFromDiskImage = R"(set -e
image=$1 volume=$2 ditto=$3; shift 3
mount -t tmpfs -o size=1m volumes /Volumes
mkdir "$volume"
mount -o loop,ro "$image" "$volume"
mount --bind "$ditto" /usr/bin/ditto
exec "$volume/Install Kelvo.app/Contents/MacOS/Install Kelvo" "$@"
)";

double monotonicNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

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
        if (!KELVO_DISK_IMAGE_BUILT) GTEST_SKIP() << "this build makes no disk image";
        ASSERT_TRUE(display.started()) << "Xvfb did not start";
        std::filesystem::create_directories("/Volumes");
        writeFile(ditto, "#!/bin/sh\necho \"$*\" >> " + shellWord(fallbacks) + "\nexec " + shellWord(DITTO_PROGRAM) +
                             " \"$@\"\n", 0755);
    }

    void start(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"/bin/sh", "-c", kOpenFromDiskImage, "sh", KELVO_DISK_IMAGE, kVolume, ditto});
        std::vector<char*> argv;
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        installer = fork();
        if (installer == 0) {
            setenv("DISPLAY", display.name().c_str(), 1);
            setenv("KELVO_LAUNCH_RECORD", record.c_str(), 1);
            int output = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
            dup2(output, 1);
            dup2(output, 2);
            execv(argv[0], argv.data());
            _exit(127);
        }
    }

    // The monotonic time at which the installer ended with status 0, waiting up to `seconds`.
    std::optional<double> cleanEnd(double seconds) {
        for (const double deadline = monotonicNow() + seconds; monotonicNow() < deadline;) {
            int status = 0;
            if (waitpid(installer, &status, WNOHANG) == installer) {
                if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return monotonicNow();
                ADD_FAILURE() << "the installer ended with wait status " << status << "\n" << diagnosis();
                return std::nullopt;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return std::nullopt;
    }

    // The lines of Kelvo's launch record for `event`, waiting up to `seconds` for the first.
    std::vector<std::string> recorded(const std::string& event, double seconds = 0) {
        const double deadline = monotonicNow() + seconds;
        std::vector<std::string> lines;
        for (; lines.empty(); std::this_thread::sleep_for(std::chrono::milliseconds(20))) {
            std::istringstream text(readFile(record));
            for (std::string line; std::getline(text, line);) {
                if (line.find("\tevent=" + event + "\t") != std::string::npos) lines.push_back(line);
            }
            if (monotonicNow() >= deadline) break;
        }
        return lines;
    }

    std::string diagnosis() { return "installer output:\n" + readFile(log) + "launch record:\n" + readFile(record); }

    TempFolder folder;
    VirtualDisplay display;
    std::string destination = folder / "Applications";
    std::string installed = destination + "/Kelvo.app";
    std::string ditto = folder / "ditto";
    std::string fallbacks = folder / "fallbacks";
    std::string record = folder / "launches";
    std::string log = folder / "output";
    pid_t installer = -1;
};

TEST_F(InstallerJourney, ReplacesTheOldCopyStartsKelvoToEjectTheVolumeAndQuits) {
    writeFile(installed + "/Contents/Old", "from the copy installed before");
    start({"--dest", destination});
    EXPECT_NE(display.waitForWindow("Install Kelvo", kWindowTimeout), "") << diagnosis();
    std::optional<double> ended = cleanEnd(kRunTimeout);
    ASSERT_TRUE(ended) << diagnosis();
    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
    EXPECT_EQ(readFile(fallbacks), "") << "the plain copy should have done";

    std::vector<std::string> started = recorded("started");
    ASSERT_EQ(started.size(), 1u) << diagnosis();
    EXPECT_NE(started[0].find("\texecutable=" + installed + "/Contents/MacOS/Kelvo\t"), std::string::npos);
    EXPECT_TRUE(started[0].ends_with("\targc=2\targ=--eject-installer-volume\targ=" + kVolume)) << started[0];
    double afterLaunch = *ended - std::stod(started[0].substr(started[0].find("monotonic=") + 10));
    EXPECT_GE(afterLaunch, 0.9);
    EXPECT_LE(afterLaunch, 3.0);
    std::vector<std::string> ejected = recorded("eject", 20);
    ASSERT_EQ(ejected.size(), 1u) << diagnosis();
    EXPECT_TRUE(ejected[0].ends_with("\tvolume=" + kVolume + "\toutcome=ejected")) << ejected[0];
}

TEST_F(InstallerJourney, IntoAFolderThatIsNotThereInstallsThroughThePrivilegedFallback) {
    start({"--dest", destination});
    ASSERT_TRUE(cleanEnd(kRunTimeout)) << diagnosis();
    EXPECT_EQ(readFile(fallbacks), "--rsrc " + kEmbedded + " " + installed + "\n");
    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
    EXPECT_EQ(recorded("started").size(), 1u) << diagnosis();
}

TEST_F(InstallerJourney, WithNoLaunchInstallsStartsNothingAndQuitsLater) {
    std::filesystem::create_directories(destination);
    start({"--dest", destination, "--no-launch"});
    std::optional<double> copied;
    std::optional<double> ended;
    for (const double deadline = monotonicNow() + kRunTimeout; !ended && monotonicNow() < deadline;) {
        if (!copied && std::filesystem::exists(installed + "/Contents/Info.plist")) copied = monotonicNow();
        ended = cleanEnd(0.01);
    }
    ASSERT_TRUE(ended && copied) << diagnosis();
    EXPECT_GE(*ended - *copied, 1.3);
    EXPECT_LE(*ended - *copied, 3.5);
    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
    EXPECT_EQ(readFile(record), "");
}

TEST_F(InstallerJourney, AFailureShowsTheAlertUntilReturnPressesQuit) {
    writeFile(folder / "a file", "");
    start({"--dest", folder / "a file/Applications"});
    std::string alert = display.waitForWindow("Installation Problem", kWindowTimeout);
    ASSERT_NE(alert, "") << diagnosis();
    EXPECT_FALSE(cleanEnd(0.5)) << "the installer ended without waiting for the alert";
    ASSERT_TRUE(display.pressKey(alert, "Return"));
    EXPECT_TRUE(cleanEnd(3)) << "Return did not end the installer\n" << diagnosis();
    EXPECT_EQ(readFile(record), "");
}

}  // namespace
