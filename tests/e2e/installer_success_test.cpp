// The installer's successful endings, run the way a user runs it: from its disk image mounted at
// /Volumes/Install Kelvo, on a real X display, installing the real stand-in Kelvo.
#include "installer_fixture.h"

namespace e2e_tests {
namespace {

using e2e::InstallerRun;
using testing_support::eventsNamed;
using testing_support::readLaunchEvents;
using testing_support::runCommand;
using testing_support::shellWord;

TEST_F(InstallerEndToEnd, InstallsStartsKelvoToEjectTheVolumeAndQuits) {
    InstallerRun run = runFromDiskImage(KELVO_DISK_IMAGE, {});
    EXPECT_NE(windowOf(run), "") << diagnosis();
    auto ended = run.waitForExit(kRunTimeout);
    ASSERT_TRUE(ended) << diagnosis();
    EXPECT_TRUE(run.exitedCleanly()) << diagnosis();

    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
    EXPECT_EQ(runCommand("diff -r --no-dereference " + shellWord(installed) + " " + shellWord(KELVO_APP_BUNDLE)).exitStatus, 0);

    auto started = waitForEvent(record, "started", 0);
    ASSERT_TRUE(started) << diagnosis();
    EXPECT_EQ(eventsNamed(readLaunchEvents(record), "started").size(), 1u) << diagnosis();
    EXPECT_EQ(started->value("executable"), installed + "/Contents/MacOS/Kelvo");
    EXPECT_EQ(started->arguments(), (std::vector<std::string>{"--eject-installer-volume", kVolumePath}));
    EXPECT_EQ(started->value("cwd"), "/") << "an opened app starts in /, off the volume it is to eject";
    EXPECT_NE(getsid(started->pid()), getsid(0)) << "Kelvo runs detached, in a session of its own";
    double afterLaunch = *ended - std::stod(started->value("monotonic").value_or("0"));
    EXPECT_GE(afterLaunch, kAfterLaunchMin);
    EXPECT_LE(afterLaunch, kAfterLaunchMax);

    auto eject = waitForEvent(record, "eject", 20);
    ASSERT_TRUE(eject) << diagnosis();
    EXPECT_EQ(eject->value("volume"), kVolumePath);
    EXPECT_EQ(eject->value("outcome"), "ejected");
    EXPECT_FALSE(e2e::isMountedFor(started->pid(), kVolumePath)) << "still mounted where Kelvo runs";
}

TEST_F(InstallerEndToEnd, WithNoLaunchInstallsStartsNothingAndQuits) {
    InstallerRun run = runFromDiskImage(KELVO_DISK_IMAGE, {"--no-launch"});
    EXPECT_NE(windowOf(run), "") << diagnosis();
    const double deadline = e2e::monotonicNow() + kRunTimeout;
    std::optional<double> copied;
    std::optional<double> ended;
    while (!(ended = run.waitForExit(0)) && e2e::monotonicNow() < deadline) {
        if (!copied && std::filesystem::exists(installed + "/Contents/Info.plist")) copied = e2e::monotonicNow();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ASSERT_TRUE(ended) << diagnosis();
    ASSERT_TRUE(copied) << diagnosis();
    EXPECT_TRUE(run.exitedCleanly()) << diagnosis();
    EXPECT_GE(*ended - *copied, kAfterSkipMin);
    EXPECT_LE(*ended - *copied, kAfterSkipMax);
    EXPECT_EQ(treeListing(installed), treeListing(KELVO_APP_BUNDLE));
    EXPECT_TRUE(readLaunchEvents(record).empty()) << diagnosis();
}

TEST_F(InstallerEndToEnd, FromOutsideVolumesStartsKelvoWithNoArguments) {
    InstallerRun run = InstallerRun::fromBundle(KELVO_INSTALLER_BUNDLE, display->name(), {"--dest", destination}, log);
    EXPECT_NE(windowOf(run), "") << diagnosis();
    ASSERT_TRUE(run.waitForExit(kRunTimeout)) << diagnosis();
    EXPECT_TRUE(run.exitedCleanly()) << diagnosis();

    auto started = eventsNamed(readLaunchEvents(record), "started");
    ASSERT_EQ(started.size(), 1u) << diagnosis();
    EXPECT_EQ(started[0].value("executable"), installed + "/Contents/MacOS/Kelvo");
    EXPECT_EQ(started[0].value("argc"), "0");
    EXPECT_TRUE(started[0].arguments().empty());
}

}  // namespace
}  // namespace e2e_tests
