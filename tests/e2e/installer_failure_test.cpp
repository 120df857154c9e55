// The installer's endings that a user does not want: the failure alert, dismissed from the
// keyboard, and the window closed while the install is still running.
#include "installer_fixture.h"

namespace e2e_tests {
namespace {

using e2e::InstallerRun;
using testing_support::readLaunchEvents;
using testing_support::runCommand;
using testing_support::shellWord;

// A copy of the disk image whose installer carries no Kelvo.app: a damaged download.
std::string imageWithoutKelvo(const testing_support::TempFolder& folder) {
    std::string contents = folder / "damaged volume";
    std::string image = folder / "damaged.squashfs";
    auto made = runCommand("cp -a " + shellWord(KELVO_VOLUME_CONTENTS) + " " + shellWord(contents) + " && rm -rf " +
                           shellWord(contents + "/Install Kelvo.app/Contents/Resources/Kelvo.app") + " && mksquashfs " +
                           shellWord(contents) + " " + shellWord(image) + " -quiet -noappend -all-root >/dev/null");
    return made.exitStatus == 0 ? image : "";
}

class InstallerFailure : public InstallerEndToEnd {
protected:
    bool windowGoneWithin(const std::string& window, double seconds) {
        return runCommand("export DISPLAY=" + display->name() + "; for i in $(seq " + std::to_string(int(seconds * 20)) +
                          "); do xdotool search --onlyvisible --name . 2>/dev/null | grep -qx " + window +
                          " || exit 0; sleep 0.05; done; exit 1")
                   .exitStatus == 0;
    }

    // Waits for the alert, checks that it holds the installer until it is answered, presses
    // Return and expects the installer to end at once.
    void expectAlertDismissedWithReturn(InstallerRun& run) {
        std::string alert = alertOf(run);
        ASSERT_NE(alert, "") << diagnosis();
        EXPECT_FALSE(run.waitForExit(0.5)) << "the installer ended without waiting for the alert";
        ASSERT_TRUE(display->pressKey(alert, "Return"));
        const double pressed = e2e::monotonicNow();
        auto ended = run.waitForExit(kDismissedWithin);
        ASSERT_TRUE(ended) << "Return did not end the installer\n" << diagnosis();
        EXPECT_LE(*ended - pressed, kDismissedWithin);
        EXPECT_TRUE(run.exitedCleanly()) << diagnosis();
    }
};

TEST_F(InstallerFailure, ADamagedInstallerShowsTheAlertAndQuitsOnReturn) {
    std::string image = imageWithoutKelvo(folder);
    ASSERT_NE(image, "");
    InstallerRun run = runFromDiskImage(image, {});
    EXPECT_NE(windowOf(run), "") << diagnosis();
    expectAlertDismissedWithReturn(run);
    EXPECT_FALSE(std::filesystem::exists(installed));
    EXPECT_TRUE(readLaunchEvents(record).empty()) << diagnosis();
}

TEST_F(InstallerFailure, AKelvoThatCannotBeStoppedShowsTheAlertAndLeavesTheOldCopy) {
    testing_support::writeFile(installed + "/Contents/Info.plist", "the copy already installed");
    leaveAZombieKelvo();
    InstallerRun run = runFromDiskImage(KELVO_DISK_IMAGE, {});
    EXPECT_NE(windowOf(run), "") << diagnosis();
    // The installer asks, forces, and gives up after its 2 s and 1 s waits.
    expectAlertDismissedWithReturn(run);
    EXPECT_EQ(testing_support::readFile(installed + "/Contents/Info.plist"), "the copy already installed");
    EXPECT_TRUE(readLaunchEvents(record).empty()) << diagnosis();
}

// Closing the window while install() runs takes the window away at once; the installer stays
// until install() has returned (so no half-copied Kelvo.app is left), then ends without an alert.
TEST_F(InstallerFailure, ClosingTheWindowDuringTheInstallEndsWithoutAnAlert) {
    leaveAZombieKelvo();  // keeps install() waiting for it to quit, then failing
    InstallerRun run = runFromDiskImage(KELVO_DISK_IMAGE, {});
    std::string window = windowOf(run);
    ASSERT_NE(window, "") << diagnosis();
    ASSERT_TRUE(display->requestClose(window));
    const double closed = e2e::monotonicNow();
    EXPECT_TRUE(windowGoneWithin(window, kWindowGoneWithin)) << "the window stayed";
    EXPECT_EQ(alertOf(run), "") << "an alert was shown after the window was closed";  // watches until the end
    auto ended = run.waitForExit(kRunTimeout);
    ASSERT_TRUE(ended) << "the installer did not end after its window was closed\n" << diagnosis();
    EXPECT_LE(*ended - closed, kAfterCloseMax);
    EXPECT_TRUE(run.exitedCleanly()) << diagnosis();
    EXPECT_FALSE(std::filesystem::exists(installed)) << "the install went on after the window was closed";
    EXPECT_TRUE(readLaunchEvents(record).empty()) << diagnosis();
}

}  // namespace
}  // namespace e2e_tests
